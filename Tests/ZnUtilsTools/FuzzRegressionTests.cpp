// Replays every input the fuzzers ever crashed on (Tests/Fuzz/Regressions/<Target>/*) through the
// same target code, in the ordinary test build, so a fixed bug stays fixed. Also runs a handful of
// hand-picked hostile inputs through every target.
#include "../Fuzz/ZnFuzzTargets.h"
#include "../Fuzz/ZnServiceFuzzTargets.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace
{
using FTarget = std::function<void(const uint8_t*, size_t)>;

const std::map<std::string, FTarget>& Targets()
{
	static const std::map<std::string, FTarget> Table = {
		{"BodyJsonFuzzer", &ZnFuzz::BodyJson},
		{"BodyJsonV2Fuzzer", &ZnFuzz::BodyJsonV2},
		{"FaceJsonFuzzer", &ZnFuzz::FaceJson},
		{"FaceJsonV2Fuzzer", &ZnFuzz::FaceJsonV2},
		{"JsonReaderFuzzer", &ZnFuzz::JsonReader},
		{"JsonWindowReaderFuzzer", &ZnFuzz::JsonWindowReader},
		{"TightNumbersFuzzer", &ZnFuzz::TightNumbers},
		{"ZnMotionResponseFuzzer", &ZnServiceFuzz::MotionResponse},
		{"ZnSpeechResponseFuzzer", &ZnServiceFuzz::SpeechResponse},
		{"ZnFormResponseFuzzer", &ZnServiceFuzz::FormResponse},
		{"ZnDigestResponseFuzzer", &ZnServiceFuzz::DigestResponse},
		{"ZnRequestBodyFuzzer", &ZnServiceFuzz::RequestBody},
		{"ZnByteArrayOpsFuzzer", &ZnServiceFuzz::ByteArrayOps},
	};
	return Table;
}

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

// A mode byte ('u': UTF-8) followed by the text, as the fuzzers see their inputs.
std::vector<uint8_t> AsInput(const std::string& Text)
{
	std::vector<uint8_t> Bytes{'u'};
	Bytes.insert(Bytes.end(), Text.begin(), Text.end());
	return Bytes;
}
} // namespace

TEST(FuzzRegressionTests, EverySavedCrashInputNowDecodesSafely)
{
	const std::filesystem::path Root = RegressionRoot();
	ASSERT_TRUE(std::filesystem::is_directory(Root)) << Root;
	int32 Replayed = 0;
	for (const std::filesystem::directory_entry& Folder : std::filesystem::directory_iterator(Root))
	{
		if (!Folder.is_directory())
		{
			continue;
		}
		const std::string Name = Folder.path().filename().string();
		const auto Target = Targets().find(Name);
		ASSERT_NE(Target, Targets().end())
			<< "no replay entry for the fuzz target " << Name << "; add it to the table in FuzzRegressionTests.cpp";
		for (const std::filesystem::directory_entry& File : std::filesystem::directory_iterator(Folder.path()))
		{
			if (!File.is_regular_file())
			{
				continue;
			}
			SCOPED_TRACE(File.path().string());
			const std::vector<uint8_t> Bytes = ReadAll(File.path());
			Target->second(Bytes.data(), Bytes.size());
			++Replayed;
		}
	}
	RecordProperty("Replayed", Replayed);
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
	for (const auto& Target : Targets())
	{
		for (const std::string& Text : Inputs)
		{
			SCOPED_TRACE(Target.first + " on " + Text.substr(0, 60));
			const std::vector<uint8_t> Bytes = AsInput(Text);
			Target.second(Bytes.data(), Bytes.size());
			// The same bytes as raw UTF-16 code units.
			std::vector<uint8_t> Wide = Bytes;
			Wide[0] = 'w';
			Target.second(Wide.data(), Wide.size());
		}
	}
	SUCCEED();
}
