// Replays every input the fuzzers ever failed on (Tests/Fuzz/Regressions/<Target>/*) through the
// same target code, in the ordinary test build, so a fixed bug stays fixed. Also runs a handful of
// hand-picked hostile inputs through every target, in both text modes.
#include "../Fuzz/ZnFuzzTargetTable.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace
{
// How many saved inputs each target's regression folder holds. A folder that cannot be found,
// or a file left out of the walk, fails the count instead of replaying nothing; a new saved input
// is counted here in the commit that adds it.
const std::map<std::string, int32> SavedInputsPerTarget = {
	{"JsonWindowReaderFuzzer", 6},
};

std::filesystem::path RegressionRoot()
{
	if (const char* SourceDir = std::getenv("ZN_TEST_SOURCE_DIR"))
	{
		return std::filesystem::path(SourceDir) / "Tests" / "Fuzz" / "Regressions";
	}
	return std::filesystem::path(__FILE__).parent_path().parent_path() / "Fuzz" / "Regressions";
}

std::vector<uint8_t> ReadAll(const std::filesystem::path& File)
{
	std::ifstream In(File, std::ios::binary);
	return std::vector<uint8_t>(std::istreambuf_iterator<char>(In), std::istreambuf_iterator<char>());
}
} // namespace

TEST(FuzzRegressionTests, EverySavedCrashInputNowDecodesSafely)
{
	const std::filesystem::path Root = RegressionRoot();
	ASSERT_TRUE(std::filesystem::is_directory(Root)) << Root;
	std::map<std::string, int32> Replayed;
	for (const std::filesystem::directory_entry& Folder : std::filesystem::directory_iterator(Root))
	{
		if (!Folder.is_directory())
		{
			continue;
		}
		const std::string Name = Folder.path().filename().string();
		const auto Target = ZnFuzzTargetTable::Targets().find(Name);
		ASSERT_NE(Target, ZnFuzzTargetTable::Targets().end())
			<< "no replay entry for the fuzz target " << Name << "; add it to ZnFuzzTargetTable.h";
		for (const std::filesystem::directory_entry& File : std::filesystem::directory_iterator(Folder.path()))
		{
			if (!File.is_regular_file())
			{
				continue;
			}
			SCOPED_TRACE(File.path().string());
			const std::vector<uint8_t> Bytes = ReadAll(File.path());
			Target->second(Bytes.data(), Bytes.size());
			++Replayed[Name];
		}
	}
	EXPECT_EQ(Replayed, SavedInputsPerTarget);
}

TEST(FuzzRegressionTests, HostileInputsDecodeSafelyInEveryTarget)
{
	std::string Deep(5000, '[');
	// More weights than any channel table holds.
	std::string LongFrame = R"({"frameIndex":1,"bs":[1)";
	for (int32 Index = 0; Index < 80; ++Index)
	{
		LongFrame += ",250";
	}
	LongFrame += "]}";
	const std::vector<std::string> Inputs = {
		"",
		"{",
		Deep,
		"[[1e400]]",
		"[[NaN, -Infinity]]",
		"[[-1e308, 1e308, 5e-324]]",
		R"({"totalTime":1e39,"curves":[{"name":"Hips","rotas":[{"x":1e39,"y":0,"z":0,"w":0}]}],"Hips":{"pos":[{"x":1e39}]}})",
		R"({"totalTime":1,"curves":[1,"a",null],"Hips":7})",
		R"({"curves":[{"name":"\ud800","rotas":[{}]}]})",
		R"([{"frameIndex":0,"pos":{"Hips":[1]},"rot":{"Hips":[1,2]}}])",
		R"([{"frameIndex":-1,"bs":[1,2,3]},{"frameIndex":1.5,"bs":"x"},{"frameIndex":18446744073709551615,"bs":[]}])",
		LongFrame,
		"[" + LongFrame + "]",
		R"({"curve_names":["a"],"curve_data":[[1,2,3,4],[],5,[[1]]]})",
		R"({"curve_names":7,"curve_data":{"a":1}})",
	};
	int32 Runs = 0;
	for (const auto& Target : ZnFuzzTargetTable::Targets())
	{
		for (const std::string& Text : Inputs)
		{
			for (const uint8_t Mode : {ZnFuzzInput::Utf8Text, ZnFuzzInput::RawUtf16})
			{
				SCOPED_TRACE(
					Target.first + " on " + Text.substr(0, 60) + (Mode == ZnFuzzInput::RawUtf16 ? " as UTF-16" : ""));
				const std::string Bytes = ZnFuzzInput::Encode(Target.first, Text, Mode);
				Target.second(reinterpret_cast<const uint8_t*>(Bytes.data()), Bytes.size());
				++Runs;
			}
		}
	}
	// Thirteen targets, fifteen inputs, two text modes: a target lost from the table is missed here.
	EXPECT_EQ(Runs, 13 * 15 * 2);
}

// Inputs laid out by ZnFuzzInput reach the decoders: a small well-formed text decodes, and the
// text mode byte is honoured both ways.
TEST(FuzzRegressionTests, EncodedInputsReachTheDecoders)
{
	const std::string Face = "[[0,50,100],[100,50,0]]";
	const auto Run = [](const std::string& Target, const std::string& Text, uint8_t Mode)
	{
		const std::string Bytes = ZnFuzzInput::Encode(Target, Text, Mode);
		return ZnFuzzTargetTable::Targets().at(Target)(reinterpret_cast<const uint8_t*>(Bytes.data()), Bytes.size());
	};
	// Three curves of two keys each, read by the plain and the recommended entry.
	EXPECT_EQ(Run("FaceJsonFuzzer", Face, ZnFuzzInput::Utf8Text), 12);
	EXPECT_EQ(Run("FaceJsonFuzzer", Face, ZnFuzzInput::RawUtf16), 0);
	// Outer array, two inner arrays, six numbers.
	EXPECT_EQ(Run("JsonReaderFuzzer", Face, ZnFuzzInput::Utf8Text), 9);
	EXPECT_EQ(Run("JsonReaderFuzzer", Face, ZnFuzzInput::RawUtf16), 0);
	EXPECT_EQ(Run("JsonWindowReaderFuzzer", Face, ZnFuzzInput::Utf8Text), 1);
	EXPECT_EQ(Run("JsonWindowReaderFuzzer", Face, ZnFuzzInput::RawUtf16), 0);
	// Tight arrays take the raw bytes: no mode byte in front.
	EXPECT_EQ(Run("TightNumbersFuzzer", "[0,50,100]", ZnFuzzInput::Utf8Text), 3);
	// Only the lowest bit of the mode byte counts, as the fuzzer mutates whole bytes.
	EXPECT_FALSE(ZnFuzzInput::IsRawUtf16(ZnFuzzInput::Utf8Text));
	EXPECT_TRUE(ZnFuzzInput::IsRawUtf16(ZnFuzzInput::RawUtf16));
	EXPECT_TRUE(ZnFuzzInput::IsRawUtf16('u'));
	EXPECT_FALSE(ZnFuzzInput::IsRawUtf16('t'));
}
