// The command registrar of zn. Each command lives in its own .cpp file in this folder (the
// folder is globbed) and registers itself with one static object:
//
//   static ZnCommandRegistrar Registrar("sample", "One-line help shown by zn --help",
//       [](CLI::App& Cmd, ZnCommandContext& Ctx) -> ZnCommandRun {
//           auto File = std::make_shared<std::string>();
//           Cmd.add_option("file", *File, "Input file")->required();
//           return [File, &Ctx]() { Ctx.Out << *File << "\n"; return 0; };
//       });
//
// The setup function adds the command's options and returns the function that runs it after
// parsing; option storage must be owned by that function (a shared_ptr as above), because the
// setup function returns before the command line is parsed. The runner returns one of the
// ZnExit statuses (ZnExit.h). A command that needs a library adds a <Name>.cmake file here; it is
// include()d with ${ZnTarget} set to the zn target.
//
// What main does for every command, so a new command gets it without a line of its own: an
// unknown command name is refused with the list of commands; flags written before the command
// name are read as the command's own; every error of the option parser (unknown option, missing
// or refused value) exits with ZnExit::Usage; --help and --version exit with ZnExit::Success.
#pragma once

#include "ZnExit.h"

#include <CLI/CLI.hpp>

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

/** What every command receives besides its own options. */
struct ZnCommandContext
{
	std::ostream& Out;
	std::ostream& Err;
};

/**
 * A validator for a numeric option: plain decimal text (an optional sign, digits, a fraction and
 * an exponent; whole numbers only when bWhole) with a value from Min to Max. Anything else, the
 * empty word included, is refused with the one message "must be <Must>, not '<text>'", which the
 * option parser prefixes with the option's name. Attach it with transform() (the engine's check()
 * macro would swallow a call named check).
 */
inline CLI::Validator ZnNumberOption(const std::string& Must, double Min, double Max, bool bWhole = false)
{
	return CLI::Validator(
		[Must, Min, Max, bWhole](std::string& Text) -> std::string
		{
			const std::string Refusal = "must be " + Must + ", not '" + Text + "'";
			const size_t Digits = (!Text.empty() && (Text[0] == '-' || Text[0] == '+')) ? 1 : 0;
			const size_t FirstDigit = Digits + (Text.size() > Digits && Text[Digits] == '.' ? 1 : 0);
			if (Text.size() <= FirstDigit || !std::isdigit(static_cast<unsigned char>(Text[FirstDigit])) ||
				Text.find_first_of("xXpP") != std::string::npos)
			{
				return Refusal;
			}
			if (bWhole && Text.find_first_not_of("0123456789", Digits) != std::string::npos)
			{
				return Refusal;
			}
			char* End = nullptr;
			const double Value = std::strtod(Text.c_str(), &End);
			if (End != Text.c_str() + Text.size() || !std::isfinite(Value) || Value < Min || Value > Max)
			{
				return Refusal;
			}
			return std::string();
		},
		bWhole ? "INT" : "NUMBER");
}

using ZnCommandRun = std::function<int()>;
using ZnCommandSetup = std::function<ZnCommandRun(CLI::App& Cmd, ZnCommandContext& Ctx)>;

class ZnCommandRegistrar
{
public:
	struct FEntry
	{
		std::string Name;
		std::string Description;
		ZnCommandSetup Setup;
	};

	ZnCommandRegistrar(const char* Name, const char* Description, ZnCommandSetup Setup);

	/** Every registered command, in registration order (main sorts them by name). */
	static std::vector<FEntry>& Entries();
};

/** printf-style formatting onto a command's stream (which tests may capture). A line longer than
 * the usual buffer is formatted again into one of its own size, so long paths print whole. */
template <typename... ArgTypes>
void ZnPrint(std::ostream& Stream, const char* Format, ArgTypes... Args)
{
	char Buffer[512];
	const int Length = std::snprintf(Buffer, sizeof(Buffer), Format, Args...);
	if (Length < 0)
	{
		return;
	}
	if (static_cast<size_t>(Length) < sizeof(Buffer))
	{
		Stream.write(Buffer, Length);
		return;
	}
	std::string Long(static_cast<size_t>(Length) + 1, '\0');
	std::snprintf(Long.data(), Long.size(), Format, Args...);
	Stream.write(Long.data(), Length);
}
