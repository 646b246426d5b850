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
// setup function returns before the command line is parsed. The runner returns the exit status.
// A command that needs a library adds a <Name>.cmake file here; it is include()d with
// ${ZnTarget} set to the zn target.
#pragma once

#include <CLI/CLI.hpp>

#include <cstdio>
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
