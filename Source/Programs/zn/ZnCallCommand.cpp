// zn call FUNCTION [name=value ...]: calls a script function of UZnDM_BpFuncLib through the
// registry and prints {"return": ..., <out and in/out parameters>} as JSON. Exits with
// ZnExit::Failed when the function returned false, ZnExit::Usage when it could not be called.
#include "ZnCommand.h"
#include "ZnHost.h"

namespace
{
struct FCallOptions
{
	std::string Function;
	std::vector<std::string> Args;
	bool bCompact = false;
};
} // namespace

static ZnCommandRegistrar Registrar("call", "Call a script function by name: zn call FUNCTION [name=value ...]",
	[](CLI::App& Cmd, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		auto Options = std::make_shared<FCallOptions>();
		Cmd.add_flag("--compact", Options->bCompact, "One line instead of indented output");
		Cmd.add_option("function", Options->Function, "Script function of UZnDM_BpFuncLib")->required();
		Cmd.add_option("args", Options->Args,
			"name=value: text as written, @path for a file's text, numbers, true/false, enumeration value names, "
			"arrays as JSON");
		return [Options, &Ctx]()
		{
			ZnHost::Json Out;
			std::string Error;
			if (!ZnHost::CallFunction(Options->Function, Options->Args, Out, Error))
			{
				Ctx.Err << "zn call: " << Error << "\n";
				return ZnExit::Usage;
			}
			Ctx.Out << Out.dump(Options->bCompact ? -1 : 2) << "\n";
			return ZnHost::CallStatus(Out);
		};
	});
