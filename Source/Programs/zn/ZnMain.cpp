// zn: the command-line host of ZnUtilsTools. The commands register themselves (ZnCommand.h).
#include "ZnCommand.h"

#include "Modules/ModuleManager.h"
#include "UObject/UObjectGlobals.h"

#include <algorithm>
#include <iostream>

ZnCommandRegistrar::ZnCommandRegistrar(const char* Name, const char* Description, ZnCommandSetup Setup)
{
	Entries().push_back({Name, Description, std::move(Setup)});
}

std::vector<ZnCommandRegistrar::FEntry>& ZnCommandRegistrar::Entries()
{
	static std::vector<FEntry> List;
	return List;
}

int main(int Argc, char** Argv)
{
	// Load the module the way the engine does, then build every reflected type.
	FModuleManager::Get().LoadModule(FName(TEXT("ZnUtilsTools")));
	ProcessNewlyLoadedUObjects();

	CLI::App App{"zn: call and inspect the script functions of the ZnUtilsTools module"};
	App.require_subcommand(1);
	ZnCommandContext Ctx{std::cout, std::cerr};

	std::vector<ZnCommandRegistrar::FEntry> Entries = ZnCommandRegistrar::Entries();
	std::sort(Entries.begin(), Entries.end(), [](const auto& A, const auto& B) { return A.Name < B.Name; });
	std::vector<std::pair<CLI::App*, ZnCommandRun>> Runs;
	for (const auto& Entry : Entries)
	{
		CLI::App* Sub = App.add_subcommand(Entry.Name, Entry.Description);
		Runs.emplace_back(Sub, Entry.Setup(*Sub, Ctx));
	}
	try
	{
		App.parse(Argc, Argv);
	}
	catch (const CLI::ParseError& Error)
	{
		return App.exit(Error);
	}
	for (auto& Run : Runs)
	{
		if (Run.first->parsed())
		{
			const int Status = Run.second();
			std::cout.flush();
			return Status;
		}
	}
	return 2;
}
