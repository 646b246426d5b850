// zn batch [FILE]: runs one call per line (the syntax of zn call, without the word "call") in one
// process, so functions that keep state between calls can be driven in sequence. Prints one
// JSON object per call on its own line; a failed call prints {"error": ..., "line": N} and the
// run continues. The exit status is the worst of its lines': ZnExit::Usage when a line could not
// be called (or FILE cannot be read), else ZnExit::Failed when a function returned false.
#include "ZnCommand.h"
#include "ZnHost.h"

#include <algorithm>
#include <iostream>
#include <sstream>

static ZnCommandRegistrar Registrar("batch",
	"Run one call per line from FILE (or standard input): FUNCTION [name=value ...]; '#' starts a comment line",
	[](CLI::App& Cmd, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		auto File = std::make_shared<std::string>("-");
		Cmd.add_option("file", *File, "File with one call per line; '-' or nothing reads standard input");
		return [File, &Ctx]()
		{
			std::istringstream FileStream;
			std::istream* In = &std::cin;
			if (*File != "-")
			{
				std::string Text;
				std::string Error;
				if (!ZnHost::ReadInputFile(*File, Text, Error))
				{
					Ctx.Err << "zn batch: " << Error << "\n";
					return ZnExit::Usage;
				}
				FileStream.str(Text);
				In = &FileStream;
			}
			int Status = ZnExit::Success;
			int LineNumber = 0;
			std::string Line;
			while (std::getline(*In, Line))
			{
				++LineNumber;
				if (LineNumber == 1)
				{
					ZnHost::DropByteOrderMark(Line);
				}
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
					if (bOk)
					{
						Status = std::max(Status, ZnHost::CallStatus(Out));
					}
				}
				if (!bOk)
				{
					Out = ZnHost::Json::object();
					Out["error"] = Error;
					Out["line"] = LineNumber;
					Ctx.Err << "zn batch: line " << LineNumber << ": " << Error << "\n";
					Status = ZnExit::Usage;
				}
				Ctx.Out << Out.dump() << "\n";
				Ctx.Out.flush();
			}
			return Status;
		};
	});
