// zn functions: the script functions grouped by category, each with its signature and defaults.
#include "ZnCommand.h"
#include "ZnHost.h"

#include <map>

namespace
{
std::string Signature(const ZnHost::Json& F)
{
	std::string S = F["name"].get<std::string>() + "(";
	bool bFirst = true;
	for (const auto& P : F["parameters"])
	{
		S += bFirst ? "" : ", ";
		bFirst = false;
		const std::string Kind = P["kind"].get<std::string>();
		if (Kind == "out")
		{
			S += "out ";
		}
		else if (Kind == "in/out")
		{
			S += "in/out ";
		}
		S += P["name"].get<std::string>() + ": " + P["type"].get<std::string>();
		if (Kind == "in const ref")
		{
			S += " (const ref)";
		}
		if (P.contains("default"))
		{
			const bool bText = P["type"] == "FString";
			S += " = " + std::string(bText ? "\"" : "") + P["default"].get<std::string>() + (bText ? "\"" : "");
		}
	}
	S += ")";
	if (!F["return"].is_null())
	{
		S += " -> " + F["return"].get<std::string>();
	}
	return S;
}
} // namespace

static ZnCommandRegistrar Registrar("functions", "List the script functions by category with signatures and defaults",
	[](CLI::App& Cmd, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		return [&Ctx]()
		{
			std::map<std::string, std::vector<ZnHost::Json>> ByCategory;
			for (UClass* Class : ZnHost::ModuleClasses())
			{
				for (TFieldIterator<UFunction> It(Class, EFieldIteratorFlags::ExcludeSuper); It; ++It)
				{
					ZnHost::Json F = ZnHost::DescribeFunction(*It);
					ByCategory[F["category"].get<std::string>()].push_back(std::move(F));
				}
			}
			bool bFirstGroup = true;
			for (auto& Group : ByCategory)
			{
				std::sort(Group.second.begin(), Group.second.end(),
					[](const ZnHost::Json& A, const ZnHost::Json& B)
					{
						return std::make_pair(
								   A["class"].get<std::string>() != "UZnDM_BpFuncLib", A["name"].get<std::string>()) <
							std::make_pair(
								B["class"].get<std::string>() != "UZnDM_BpFuncLib", B["name"].get<std::string>());
					});
				Ctx.Out << (bFirstGroup ? "" : "\n") << (Group.first.empty() ? "(no category)" : Group.first) << "\n";
				bFirstGroup = false;
				for (const ZnHost::Json& F : Group.second)
				{
					const std::string Owner = F["class"].get<std::string>();
					Ctx.Out << "  " << (Owner == "UZnDM_BpFuncLib" ? "" : Owner + "::") << Signature(F);
					if (!F["static"].get<bool>())
					{
						Ctx.Out << "  [member]";
					}
					Ctx.Out << "\n";
					const auto& Meta = F["metadata"];
					if (Meta.contains("ToolTip"))
					{
						std::string Tip = Meta["ToolTip"].get<std::string>();
						for (size_t Pos = 0; (Pos = Tip.find('\n', Pos)) != std::string::npos; Pos += 7)
						{
							Tip.replace(Pos, 1, "\n      ");
						}
						Ctx.Out << "      " << Tip << "\n";
					}
				}
			}
			return ZnExit::Success;
		};
	});
