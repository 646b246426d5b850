// The rules every zn command shares (ZnCommand.h, docs/zn.md): unknown and missing commands,
// --version, unreadable @files, options anywhere on the line, byte-order marks, and the exit
// statuses 0 (done), 1 (the function reported failure) and 2 (usage or input error).
#include "ZnRunner.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using namespace ZnTest;

namespace
{
class ZnCommandLineTests : public FZnFolderTest
{
};

// The commands this folder's tests know; commands added later are listed too, so only these are
// looked for.
void ExpectListsTheCommands(const std::string& Err)
{
	for (const char* Command : {"batch", "call", "functions", "generate", "reflect", "sample"})
	{
		EXPECT_NE(Err.find(Command), std::string::npos) << Command << " in: " << Err;
	}
}

std::string PluginVersionName()
{
	const char* SourceDir = std::getenv("ZN_TEST_SOURCE_DIR");
	const std::filesystem::path Root = SourceDir
		? std::filesystem::path(SourceDir)
		: std::filesystem::path(__FILE__).parent_path().parent_path().parent_path();
	return Json::parse(ReadAll((Root / "Zenvora.uplugin").string()))["VersionName"].get<std::string>();
}
} // namespace

TEST_F(ZnCommandLineTests, AnUnknownSubcommandIsNamedAndTheSubcommandsListed)
{
	const FRun Run = RunZn({"frobnicate", "--compact"});
	EXPECT_EQ(Run.Status, 2);
	EXPECT_EQ(Run.Out, "");
	EXPECT_EQ(Run.Err.rfind("zn: unknown subcommand 'frobnicate'; the subcommands are: ", 0), 0u) << Run.Err;
	ExpectListsTheCommands(Run.Err);
	// Names match exactly.
	EXPECT_EQ(RunZn({"Call", "CombinePath"}).Status, 2);
}

TEST_F(ZnCommandLineTests, NoSubcommandIsAUsageErrorThatListsThem)
{
	for (const std::vector<std::string>& Args : {std::vector<std::string>{}, std::vector<std::string>{"--compact"}})
	{
		const FRun Run = RunZn(Args);
		EXPECT_EQ(Run.Status, 2);
		EXPECT_EQ(Run.Out, "");
		EXPECT_NE(Run.Err.find("zn: a subcommand is required"), std::string::npos) << Run.Err;
		ExpectListsTheCommands(Run.Err);
	}
}

TEST_F(ZnCommandLineTests, VersionPrintsThePluginsVersion)
{
	const FRun Run = RunZn({"--version"});
	EXPECT_EQ(Run.Status, 0) << Run.Err;
	EXPECT_EQ(Run.Out, "zn " + PluginVersionName() + "\n");
	EXPECT_EQ(Run.Err, "");
	const FRun Help = RunZn({"--help"});
	EXPECT_EQ(Help.Status, 0);
	EXPECT_NE(Help.Out.find("--version"), std::string::npos);
}

TEST_F(ZnCommandLineTests, AnAtPathThatCannotBeReadIsAnInputError)
{
	const std::string Missing = PathOf("missing.txt");
	FRun Run = RunZn({"call", "StringToByteArray", "str=@" + Missing});
	EXPECT_EQ(Run.Status, 2);
	EXPECT_EQ(Run.Out, "");
	EXPECT_EQ(Run.Err,
		"zn call: parameter 'str' of StringToByteArray cannot read the file '" + Missing +
			"': there is no such file\n");

	Run = RunZn({"call", "StringToByteArray", "str=@" + Folder.string()});
	EXPECT_EQ(Run.Status, 2);
	EXPECT_EQ(Run.Out, "");
	EXPECT_EQ(Run.Err,
		"zn call: parameter 'str' of StringToByteArray cannot read the file '" + Folder.string() +
			"': it is a folder\n");

	Run = RunZn({"call", "StringToByteArray", "str=@"});
	EXPECT_EQ(Run.Status, 2);
	EXPECT_NE(Run.Err.find("cannot read the file '': there is no such file"), std::string::npos) << Run.Err;

	// An empty file is an empty text, not an error.
	Run = RunZn({"call", "StringToByteArray", "str=@" + Write("empty.txt", ""), "--compact"});
	EXPECT_EQ(Run.Status, 0) << Run.Err;
	EXPECT_EQ(Run.Out, "{\"return\":[]}\n");
}

TEST_F(ZnCommandLineTests, ABatchFileThatCannotBeReadIsAnInputError)
{
	FRun Run = RunZn({"batch", Folder.string()});
	EXPECT_EQ(Run.Status, 2);
	EXPECT_EQ(Run.Out, "");
	EXPECT_EQ(Run.Err, "zn batch: cannot read the file '" + Folder.string() + "': it is a folder\n");
	Run = RunZn({"batch", PathOf("none.txt")});
	EXPECT_EQ(Run.Status, 2);
	EXPECT_EQ(Run.Err, "zn batch: cannot read the file '" + PathOf("none.txt") + "': there is no such file\n");
}

TEST_F(ZnCommandLineTests, CompactIsAcceptedAnywhereOnTheLine)
{
	const std::string Expected = "{\"return\":[104,105]}\n";
	for (const std::vector<std::string>& Args : {
			 std::vector<std::string>{"call", "--compact", "StringToByteArray", "str=hi"},
			 std::vector<std::string>{"call", "StringToByteArray", "--compact", "str=hi"},
			 std::vector<std::string>{"call", "StringToByteArray", "str=hi", "--compact"},
			 std::vector<std::string>{"--compact", "call", "StringToByteArray", "str=hi"},
		 })
	{
		const FRun Run = RunZn(Args);
		EXPECT_EQ(Run.Status, 0) << ::testing::PrintToString(Args) << Run.Err;
		EXPECT_EQ(Run.Out, Expected) << ::testing::PrintToString(Args);
	}
	const FRun Before = RunZn({"--compact", "reflect"});
	const FRun After = RunZn({"reflect", "--compact"});
	EXPECT_EQ(Before.Status, 0);
	EXPECT_EQ(Before.Out, After.Out);
	EXPECT_EQ(std::count(After.Out.begin(), After.Out.end(), '\n'), 1);
}

TEST_F(ZnCommandLineTests, AByteOrderMarkStartingAnAtFileIsNotPartOfTheText)
{
	const std::string Path = Write("bom.txt", "\xEF\xBB\xBFhi\xEF\xBB\xBF");
	const FRun Run = RunZn({"call", "StringToByteArray", "str=@" + Path, "--compact"});
	EXPECT_EQ(Run.Status, 0) << Run.Err;
	// "hi", then the mark that is not at the start, which is text (U+FEFF) and stays.
	EXPECT_EQ(Run.Out, "{\"return\":[104,105,239,187,191]}\n");

	const std::string Calls = Write("calls.txt", "\xEF\xBB\xBFStringToByteArray str=hi\n");
	const FRun Batch = RunZn({"batch", Calls});
	EXPECT_EQ(Batch.Status, 0) << Batch.Err;
	EXPECT_EQ(Batch.Out, "{\"return\":[104,105]}\n");
}

TEST_F(ZnCommandLineTests, ExitStatusesAreTheSameForEveryCommand)
{
	// 0: done as asked.
	EXPECT_EQ(RunZn({"call", "FileExists", "filePath=" + Write("there.txt", "x")}).Status, 0);
	// 1: the function reported failure (returned false); its outputs are printed all the same.
	const FRun False = RunZn({"call", "FileExists", "filePath=" + PathOf("absent.txt"), "--compact"});
	EXPECT_EQ(False.Status, 1);
	EXPECT_EQ(False.Out, "{\"return\":false}\n");
	EXPECT_EQ(RunZn({"call", "ParseJsonToGetDigest", "jsonStr=not json"}).Status, 1);
	EXPECT_EQ(RunZn({"sample", "--body", Write("empty.json", ""), "-t", "0"}).Status, 1);
	// 2: usage or input error, from zn's own checks and from the option parser alike.
	EXPECT_EQ(RunZn({"call", "NoSuchFunction"}).Status, 2);
	EXPECT_EQ(RunZn({"call", "--bogus", "CombinePath"}).Status, 2);
	EXPECT_EQ(RunZn({"call"}).Status, 2);
	EXPECT_EQ(RunZn({"reflect", "extra"}).Status, 2);
	EXPECT_EQ(RunZn({"functions", "--compact"}).Status, 2);
	EXPECT_EQ(RunZn({"generate", "--seconds", "1"}).Status, 2);
	EXPECT_EQ(RunZn({"sample", "--body", PathOf("absent.json"), "-t", "0"}).Status, 2);
	EXPECT_EQ(RunZn({"sample", "--body", Folder.string(), "-t", "0"}).Status, 2);

	// A batch exits with the worst of its lines.
	const std::string FalseLine = "FileExists filePath=" + PathOf("absent.txt") + "\n";
	EXPECT_EQ(RunZn({"batch"}, &FalseLine).Status, 1);
	const std::string Both = FalseLine + "NoSuchFunction\n" + FalseLine;
	const FRun Worst = RunZn({"batch"}, &Both);
	EXPECT_EQ(Worst.Status, 2);
	EXPECT_EQ(Lines(Worst.Out).size(), 3u);
}

TEST_F(ZnCommandLineTests, NumericOptionsRefuseWordsAndEmptyValuesWithOneMessage)
{
	const std::string Out = PathOf("clip.json");
	for (const char* Value : {"", "ten", "1,5"})
	{
		const FRun Seconds = RunZn({"generate", "-o", Out, "--seconds", Value});
		EXPECT_EQ(Seconds.Status, 2);
		EXPECT_NE(
			Seconds.Err.find(std::string("--seconds: must be a number of seconds from 0 to 3600, not '") + Value + "'"),
			std::string::npos)
			<< Seconds.Err;
		const FRun Curves = RunZn({"generate", "-o", Out, "--kind", "rig", "--rig-curves", Value});
		EXPECT_EQ(Curves.Status, 2);
		EXPECT_NE(
			Curves.Err.find(std::string("--rig-curves: must be a whole number from 1 to 51, not '") + Value + "'"),
			std::string::npos)
			<< Curves.Err;
		const FRun Seed = RunZn({"generate", "-o", Out, "--seed", Value});
		EXPECT_EQ(Seed.Status, 2);
		EXPECT_NE(
			Seed.Err.find(std::string("--seed: must be a whole decimal number from 0 to 18446744073709551615, not '") +
				Value + "'"),
			std::string::npos)
			<< Seed.Err;
		const FRun Time = RunZn({"sample", "--body", Write("b.json", "{}"), "-t", Value});
		EXPECT_EQ(Time.Status, 2);
		EXPECT_NE(Time.Err.find(std::string("--time: must be a finite number of seconds, not '") + Value + "'"),
			std::string::npos)
			<< Time.Err;
	}
	EXPECT_FALSE(std::filesystem::exists(Out));
	// Plain decimals in every written form are numbers.
	for (const char* Seconds : {"0.5", ".5", "+1", "5e-1", "1E0"})
	{
		const FRun Run = RunZn({"generate", "-o", Out, "--seconds", Seconds});
		EXPECT_EQ(Run.Status, 0) << Seconds << ": " << Run.Err;
	}
	const FRun Time = RunZn({"sample", "--body", Out, "-t", "-.25", "--json"});
	EXPECT_EQ(Time.Status, 0) << Time.Err;
	EXPECT_EQ(Time.OutJson()[0]["time"], -0.25);
}
