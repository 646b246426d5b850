// zn reflect: the whole registry of the module as JSON, keys in a fixed order.
#include "ZnCommand.h"
#include "ZnHost.h"

static ZnCommandRegistrar Registrar("reflect",
	"Print the module's reflected classes, records, enumerations and delegates as JSON",
	[](CLI::App& Cmd, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		auto Compact = std::make_shared<bool>(false);
		Cmd.add_flag("--compact", *Compact, "One line instead of indented output");
		return [Compact, &Ctx]()
		{
			Ctx.Out << ZnHost::Reflect().dump(*Compact ? -1 : 2) << "\n";
			return ZnExit::Success;
		};
	});
