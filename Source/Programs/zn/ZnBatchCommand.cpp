// zn batch [FILE]: runs one call per line (the syntax of zn call, without the word "call") in one
// process, so functions that keep state between calls can be driven in sequence. Prints one
// JSON object per call on its own line; a failed call prints {"error": ..., "line": N} and the
// run continues. Exit status 0 when every call succeeded, 2 otherwise.
#include "ZnCommand.h"
#include "ZnHost.h"

#include <fstream>
#include <iostream>

static ZnCommandRegistrar Registrar("batch",
	"Run one call per line from FILE (or standard input): FUNCTION [name=value ...]; '#' starts a comment line",
	[](CLI::App& Cmd, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		auto File = std::make_shared<std::string>("-");
		Cmd.add_option("file", *File, "File with one call per line; '-' or nothing reads standard input");
		return [File, &Ctx]()
		{
			std::ifstream FileStream;
			std::istream* In = &std::cin;
			if (*File != "-")
			{
				FileStream.open(*File, std::ios::binary);
				if (!FileStream)
				{
					Ctx.Err << "zn batch: cannot read the file '" << *File << "'\n";
					return 2;
				}
				In = &FileStream;
			}
			int Status = 0;
			int LineNumber = 0;
			std::string Line;
			while (std::getline(*In, Line))
			{
				++LineNumber;
				std::vector<std::string> Words;
				std::string Error;
				ZnHost::Json Out;
				bool bOk = ZnHost::SplitCommandLine(Line, Words, Error);
				if (bOk && (Words.empty() || Words[0][0] == '#'))
				{
					continue;
				}
				if (bOk && Words[0] == "call")
				{
					Words.erase(Words.begin());
					if (Words.empty())
					{
						bOk = false;
						Error = "a function name is missing";
					}
				}
				if (bOk)
				{
					const std::string Function = Words[0];
					Words.erase(Words.begin());
					bOk = ZnHost::CallFunction(Function, Words, Out, Error);
				}
				if (!bOk)
				{
					Out = ZnHost::Json::object();
					Out["error"] = Error;
					Out["line"] = LineNumber;
					Ctx.Err << "zn batch: line " << LineNumber << ": " << Error << "\n";
					Status = 2;
				}
				Ctx.Out << Out.dump() << "\n";
				Ctx.Out.flush();
			}
			return Status;
		};
	});
