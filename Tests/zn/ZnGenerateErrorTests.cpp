// zn generate with options it cannot honour: a clear message on standard error, a non-zero
// status, and no file written.
#include "ZnRunner.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

using namespace ZnTest;

namespace
{
class ZnGenerateErrorTests : public ZnTest::FZnFolderTest
{
protected:
	// Runs zn generate -o PathOf("out.json") with Args; expects a failure that names Needle and
	// leaves no output behind.
	void ExpectRefused(std::vector<std::string> Args, const std::string& Needle, int Status = -1)
	{
		Args.insert(Args.begin(), "generate");
		Args.push_back("-o");
		Args.push_back(PathOf("out.json"));
		const FRun Run = RunZn(Args);
		EXPECT_NE(Run.Status, 0) << ::testing::PrintToString(Args);
		EXPECT_NE(Run.Status, -1) << "zn must exit, not crash: " << ::testing::PrintToString(Args);
		if (Status >= 0)
		{
			EXPECT_EQ(Run.Status, Status) << ::testing::PrintToString(Args);
		}
		EXPECT_NE(Run.Err.find(Needle), std::string::npos) << Run.Err;
		EXPECT_EQ(Run.Out, "");
		EXPECT_FALSE(std::filesystem::exists(PathOf("out.json"))) << ::testing::PrintToString(Args);
	}
};
} // namespace

TEST_F(ZnGenerateErrorTests, OutputIsRequired)
{
	const FRun Run = RunZn({"generate", "--seconds", "1"});
	EXPECT_NE(Run.Status, 0);
	EXPECT_NE(Run.Err.find("--output is required"), std::string::npos) << Run.Err;
	EXPECT_EQ(Run.Out, "");
}

TEST_F(ZnGenerateErrorTests, UnknownKindOrFormatIsRefused)
{
	ExpectRefused({"--kind", "hand"}, "--kind: hand not in {body,face,rig}");
	ExpectRefused({"--format", "v3"}, "--format: v3 not in {v1,v2,v2-frames}");
	ExpectRefused({"--kind", ""}, "--kind");
}

TEST_F(ZnGenerateErrorTests, SecondsOutsideZeroToAnHourAreRefused)
{
	// Numbers out of range, words that are no number and the empty word: one message, status 2.
	for (const char* Seconds : {"-1", "-0.001", "3600.5", "1e9", "nan", "inf", "ten", "", "0x10", "5s", " 5"})
	{
		ExpectRefused({"--seconds", Seconds},
			std::string("--seconds: must be a number of seconds from 0 to 3600, not '") + Seconds + "'", 2);
	}
}

TEST_F(ZnGenerateErrorTests, SeedsThatAreNotWholeDecimalNumbersAreRefused)
{
	// The clip of such a seed would quietly be another seed's clip.
	for (const char* Seed :
		{"-1", "18446744073709551616", "99999999999999999999999", "0x10", "1.5", "seven", "", "+3", " 4"})
	{
		ExpectRefused({"--seed", Seed},
			std::string("--seed: must be a whole decimal number from 0 to 18446744073709551615, not '") + Seed + "'",
			2);
	}
}

TEST_F(ZnGenerateErrorTests, RigCurvesOutsideOneToFiftyOneAreRefused)
{
	for (const char* Curves : {"0", "52", "many", "", "1.5", "-3", "1e1"})
	{
		ExpectRefused({"--kind", "rig", "--rig-curves", Curves},
			std::string("--rig-curves: must be a whole number from 1 to 51, not '") + Curves + "'", 2);
	}
}

TEST_F(ZnGenerateErrorTests, UnknownOptionsAreRefused)
{
	ExpectRefused({"--fps", "60"}, "--fps");
	ExpectRefused({"stray"}, "stray");
}

TEST_F(ZnGenerateErrorTests, AFileInAMissingFolderIsNotWritten)
{
	const std::string Path = PathOf("missing/clip.json");
	const FRun Run = RunZn({"generate", "--seconds", "1", "-o", Path});
	EXPECT_EQ(Run.Status, 1);
	EXPECT_EQ(Run.Err, "zn generate: cannot write " + Path + "\n");
	EXPECT_EQ(Run.Out, "");
	EXPECT_FALSE(std::filesystem::exists(Path));
}

TEST_F(ZnGenerateErrorTests, AFolderIsNotOverwrittenByAFile)
{
	std::filesystem::create_directories(PathOf("taken"));
	const FRun Run = RunZn({"generate", "--kind", "face", "--seconds", "1", "-o", PathOf("taken")});
	EXPECT_EQ(Run.Status, 1);
	EXPECT_EQ(Run.Err, "zn generate: cannot write " + PathOf("taken") + "\n");
	EXPECT_TRUE(std::filesystem::is_directory(PathOf("taken")));
}

TEST_F(ZnGenerateErrorTests, FramesNeedAFolderNotAFile)
{
	WriteAll(PathOf("file.json"), "keep me");
	const FRun Run = RunZn({"generate", "--format", "v2-frames", "--seconds", "1", "-o", PathOf("file.json")});
	EXPECT_EQ(Run.Status, 1);
	EXPECT_EQ(Run.Err.rfind("zn generate: cannot create " + PathOf("file.json") + ": ", 0), 0u) << Run.Err;
	EXPECT_EQ(Run.Out, "");
	EXPECT_EQ(ReadAll(PathOf("file.json")), "keep me");
}
