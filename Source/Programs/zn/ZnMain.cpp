// zn: the command-line host of ZnUtilsTools. The commands register themselves (ZnCommand.h); this
// file gives every one of them the same command line rules and exit statuses.
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

namespace
{
bool IsMainOption(const std::string& Word)
{
	return Word == "-h" || Word == "--help" || Word == "--version";
}

std::string CommandList(const std::vector<ZnCommandRegistrar::FEntry>& Entries)
{
	std::string List;
	for (const auto& Entry : Entries)
	{
		List += (List.empty() ? "" : ", ") + Entry.Name;
	}
	return List;
}

// Flags written before the command name ("zn --compact call ...") belong to the command: they are
// moved after its name so that the command's own parser reads them wherever they stand. Returns
// the index of the command name in Words, or Words.size() when there is none.
size_t PutFlagsAfterTheCommand(std::vector<std::string>& Words)
{
	size_t Command = 0;
	while (Command < Words.size() && !Words[Command].empty() && Words[Command][0] == '-')
	{
		++Command;
	}
	if (Command == Words.size())
	{
		return Command;
	}
	std::vector<std::string> Leading;
	std::vector<std::string> Kept;
	for (size_t Index = 0; Index < Command; ++Index)
	{
		(IsMainOption(Words[Index]) ? Kept : Leading).push_back(Words[Index]);
	}
	std::vector<std::string> Reordered = Kept;
	Reordered.push_back(Words[Command]);
	Reordered.insert(Reordered.end(), Leading.begin(), Leading.end());
	Reordered.insert(Reordered.end(), Words.begin() + Command + 1, Words.end());
	Words = Reordered;
	return Kept.size();
}
} // namespace

int main(int Argc, char** Argv)
{
	// Load the module the way the engine does, then build every reflected type.
	FModuleManager::Get().LoadModule(FName(TEXT("ZnUtilsTools")));
	ProcessNewlyLoadedUObjects();

	CLI::App App{"zn: call and inspect the script functions of the ZnUtilsTools module"};
	App.set_version_flag("--version", std::string("zn ") + ZN_VERSION);
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

	std::vector<std::string> Words(Argv + 1, Argv + Argc);
	const size_t Command = PutFlagsAfterTheCommand(Words);
	const bool bAsksForHelpOrVersion = std::any_of(Words.begin(), Words.begin() + std::min(Command, Words.size()),
		[](const std::string& Word) { return IsMainOption(Word); });
	if (!bAsksForHelpOrVersion)
	{
		if (Command == Words.size())
		{
			Ctx.Err << "zn: a subcommand is required; the subcommands are: " << CommandList(Entries)
					<< " (zn --help describes them)\n";
			return ZnExit::Usage;
		}
		const bool bKnown = std::any_of(Entries.begin(), Entries.end(),
			[&](const ZnCommandRegistrar::FEntry& Entry) { return Entry.Name == Words[Command]; });
		if (!bKnown)
		{
			Ctx.Err << "zn: unknown subcommand '" << Words[Command]
					<< "'; the subcommands are: " << CommandList(Entries) << "\n";
			return ZnExit::Usage;
		}
	}

	std::vector<char*> Arguments{Argv[0]};
	for (std::string& Word : Words)
	{
		Arguments.push_back(Word.data());
	}
	try
	{
		App.parse(static_cast<int>(Arguments.size()), Arguments.data());
	}
	catch (const CLI::ParseError& Error)
	{
		// The parser's own statuses differ from one kind of mistake to the next; zn has one.
		return App.exit(Error) == 0 ? ZnExit::Success : ZnExit::Usage;
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
	return ZnExit::Usage;
}
