// zn generate: every kind and shape lands on disk as the motion generator makes it, with the
// shape the decoders expect, and the same options always give the same bytes.
#include "ZnMotionGenerator.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

using namespace ZnTest;

namespace
{
// Each test writes into a folder of its own, so tests that ctest runs side by side never share files.
class ZnGenerateTests : public ZnTest::FZnFolderTest
{
protected:
	// Runs zn generate with Args plus -o PathOf(Name) and returns the file's bytes.
	std::string Generate(const std::string& Name, std::vector<std::string> Args, FRun* OutRun = nullptr)
	{
		Args.insert(Args.begin(), "generate");
		Args.push_back("-o");
		Args.push_back(PathOf(Name));
		const FRun Run = RunZn(Args);
		EXPECT_EQ(Run.Status, 0) << Run.Err;
		EXPECT_EQ(Run.Err, "");
		if (OutRun)
		{
			*OutRun = Run;
		}
		return ReadAll(PathOf(Name));
	}
};

FZnGenBodyClip Body(int32 Frames, uint64 Seed, bool bTwist = true, bool bFingers = true)
{
	return FZnMotionGenerator::GenerateBody({Frames, Seed, bTwist, bFingers});
}

FZnGenFaceClip Face(int32 Frames, uint64 Seed, bool bOvershoot = false)
{
	return FZnMotionGenerator::GenerateFace({Frames, Seed, bOvershoot});
}

std::vector<std::string> BoneNamesOf(const Json& BodyV1)
{
	std::vector<std::string> Names;
	for (const Json& Curve : BodyV1["curves"])
	{
		Names.push_back(Curve["name"].get<std::string>());
	}
	return Names;
}
} // namespace

TEST_F(ZnGenerateTests, BodyVersionOneByDefaultHasEveryBoneAndThirtyFramesASecond)
{
	FRun Run;
	const std::string Text = Generate("body.json", {"--seconds", "10", "--seed", "3"}, &Run);
	const Json Parsed = Json::parse(Text, nullptr, false);
	ASSERT_FALSE(Parsed.is_discarded());
	EXPECT_EQ(Parsed["totalTime"].get<double>(), 10.0);
	ASSERT_EQ(Parsed["curves"].size(), 54u) << "22 body bones, 2 twist bones, 30 finger bones";
	for (const Json& Curve : Parsed["curves"])
	{
		EXPECT_EQ(Curve["rotas"].size(), 300u) << Curve["name"];
		for (const char* Key : {"x", "y", "z", "w"})
		{
			EXPECT_TRUE(Curve["rotas"][0][Key].is_number()) << Curve["name"] << " " << Key;
		}
	}
	EXPECT_EQ(Parsed["Hips"]["pos"].size(), 300u);
	EXPECT_EQ(BoneNamesOf(Parsed), FZnMotionGenerator::ServiceBoneNames(true, true));
	EXPECT_EQ(Text, FZnMotionGenerator::BodyToJson(Body(300, 3)));
	EXPECT_EQ(
		Run.Out, "wrote " + PathOf("body.json") + ": body v1, 300 frames, " + std::to_string(Text.size()) + " bytes\n");
}

TEST_F(ZnGenerateTests, BodyBoneCountsFollowTheTwistAndFingerSwitches)
{
	struct FCase
	{
		std::vector<std::string> Flags;
		bool bTwist;
		bool bFingers;
		size_t Bones;
	};
	const std::vector<FCase> Cases = {{{}, true, true, 54}, {{"--no-twist"}, false, true, 52},
		{{"--no-fingers"}, true, false, 24}, {{"--no-twist", "--no-fingers"}, false, false, 22}};
	for (const FCase& Case : Cases)
	{
		std::vector<std::string> Args = {"--seconds", "1"};
		Args.insert(Args.end(), Case.Flags.begin(), Case.Flags.end());
		const std::string Text = Generate("body.json", Args);
		const Json Parsed = Json::parse(Text, nullptr, false);
		ASSERT_FALSE(Parsed.is_discarded());
		EXPECT_EQ(Parsed["curves"].size(), Case.Bones) << ::testing::PrintToString(Case.Flags);
		EXPECT_EQ(BoneNamesOf(Parsed), FZnMotionGenerator::ServiceBoneNames(Case.bTwist, Case.bFingers));
		EXPECT_EQ(Text, FZnMotionGenerator::BodyToJson(Body(30, 1, Case.bTwist, Case.bFingers)));
		const std::vector<std::string> Names = BoneNamesOf(Parsed);
		EXPECT_EQ(std::count(Names.begin(), Names.end(), "LeftForeArm1"), Case.bTwist ? 1 : 0);
		EXPECT_EQ(std::count(Names.begin(), Names.end(), "RightHandPinky3"), Case.bFingers ? 1 : 0);
	}
}

TEST_F(ZnGenerateTests, BodyVersionTwoIsOneArrayOfFrameObjectsCountedFromOne)
{
	const std::string Text = Generate("body.json", {"--format", "v2", "--seconds", "10", "--no-fingers"});
	const Json Parsed = Json::parse(Text, nullptr, false);
	ASSERT_TRUE(Parsed.is_array());
	ASSERT_EQ(Parsed.size(), 300u);
	for (size_t Frame = 0; Frame < Parsed.size(); ++Frame)
	{
		EXPECT_EQ(Parsed[Frame]["frameIndex"].get<int>(), int(Frame) + 1);
		EXPECT_EQ(Parsed[Frame]["pos"]["Hips"].size(), 3u);
		EXPECT_EQ(Parsed[Frame]["rot"].size(), 24u);
	}
	EXPECT_EQ(Text, FZnMotionGenerator::BodyToJsonV2(Body(300, 1, true, false)));
}

TEST_F(ZnGenerateTests, ShuffledVersionTwoKeepsEveryFrameNumberOnce)
{
	const std::string Text = Generate("body.json", {"--format", "v2", "--seconds", "2", "--shuffle", "--seed", "9"});
	const Json Parsed = Json::parse(Text, nullptr, false);
	ASSERT_TRUE(Parsed.is_array());
	ASSERT_EQ(Parsed.size(), 60u);
	std::vector<int> Indices;
	for (const Json& Frame : Parsed)
	{
		Indices.push_back(Frame["frameIndex"].get<int>());
	}
	std::vector<int> Sorted = Indices;
	std::sort(Sorted.begin(), Sorted.end());
	std::vector<int> Expected(60);
	for (int Index = 0; Index < 60; ++Index)
	{
		Expected[Index] = Index + 1;
	}
	EXPECT_EQ(Sorted, Expected);
	EXPECT_NE(Indices, Expected) << "the frames are out of order";
	EXPECT_EQ(Text, FZnMotionGenerator::BodyToJsonV2(Body(60, 9), FZnMotionGenerator::ShuffledFrameOrder(60, 9)));

	const std::string FaceText =
		Generate("face.json", {"--kind", "face", "--format", "v2", "--seconds", "2", "--shuffle", "--seed", "9"});
	EXPECT_EQ(FaceText, FZnMotionGenerator::FaceToJsonV2(Face(60, 9), FZnMotionGenerator::ShuffledFrameOrder(60, 9)));
}

TEST_F(ZnGenerateTests, BodyFramesFolderHoldsOneFilePerFrame)
{
	const std::string Folder = PathOf("frames");
	const FRun Run = RunZn({"generate", "--format", "v2-frames", "--seconds", "10", "--seed", "4", "-o", Folder});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	EXPECT_EQ(Run.Out, "wrote 300 frame files to " + Folder + "\n");
	size_t Files = 0;
	for (const auto& Entry : std::filesystem::directory_iterator(Folder))
	{
		(void)Entry;
		++Files;
	}
	EXPECT_EQ(Files, 300u);
	const FZnGenBodyClip Clip = Body(300, 4);
	for (int32 Frame = 0; Frame < 300; ++Frame)
	{
		char Name[32];
		std::snprintf(Name, sizeof(Name), "/frame_%05d.json", Frame + 1);
		const std::string Text = ReadAll(Folder + Name);
		ASSERT_EQ(Text, FZnMotionGenerator::BodyFrameToJsonV2(Clip, Frame)) << Name;
		const Json Parsed = Json::parse(Text, nullptr, false);
		ASSERT_TRUE(Parsed.is_object()) << Name;
		EXPECT_EQ(Parsed["frameIndex"].get<int>(), Frame + 1);
		EXPECT_EQ(Parsed["rot"].size(), 54u);
	}
}

TEST_F(ZnGenerateTests, FaceFramesFolderHoldsOneFilePerFrame)
{
	const std::string Folder = PathOf("face frames");
	const FRun Run = RunZn({"generate", "--kind", "face", "--format", "v2-frames", "--seconds", "1", "-o", Folder});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	const FZnGenFaceClip Clip = Face(30, 1);
	size_t Files = 0;
	for (const auto& Entry : std::filesystem::directory_iterator(Folder))
	{
		(void)Entry;
		++Files;
	}
	EXPECT_EQ(Files, 30u);
	for (int32 Frame = 0; Frame < 30; ++Frame)
	{
		char Name[32];
		std::snprintf(Name, sizeof(Name), "/frame_%05d.json", Frame + 1);
		const std::string Text = ReadAll(Folder + Name);
		EXPECT_EQ(Text, FZnMotionGenerator::FaceFrameToJsonV2(Clip, Frame)) << Name;
		const Json Parsed = Json::parse(Text, nullptr, false);
		EXPECT_EQ(Parsed["frameIndex"].get<int>(), Frame + 1);
		EXPECT_EQ(Parsed["bs"].size(), 51u);
	}
}

TEST_F(ZnGenerateTests, ShorterFramesRunIntoTheSameFolderLeavesOnlyItsOwnFrames)
{
	const std::string Folder = PathOf("frames");
	ASSERT_EQ(RunZn({"generate", "--format", "v2-frames", "--seconds", "2", "-o", Folder}).Status, 0);
	WriteAll(Folder + "/notes.txt", "kept");
	WriteAll(Folder + "/frame_notes.json", "kept");
	const FRun Run = RunZn({"generate", "--format", "v2-frames", "--seconds", "1", "--seed", "2", "-o", Folder});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	std::set<std::string> Names;
	for (const auto& Entry : std::filesystem::directory_iterator(Folder))
	{
		Names.insert(Entry.path().filename().string());
	}
	EXPECT_EQ(Names.size(), 32u) << "30 frames of the new clip and the two files that are not frames";
	EXPECT_EQ(Names.count("frame_00030.json"), 1u);
	EXPECT_EQ(Names.count("frame_00031.json"), 0u) << "a frame of the older, longer clip is gone";
	EXPECT_EQ(Names.count("frame_00060.json"), 0u);
	EXPECT_EQ(ReadAll(Folder + "/notes.txt"), "kept");
	EXPECT_EQ(ReadAll(Folder + "/frame_notes.json"), "kept");
	EXPECT_EQ(ReadAll(Folder + "/frame_00001.json"), FZnMotionGenerator::BodyFrameToJsonV2(Body(30, 2), 0));
}

TEST_F(ZnGenerateTests, FaceVersionOneIsFramesOfFiftyOneWeights)
{
	FRun Run;
	const std::string Text = Generate("face.json", {"--kind", "face", "--seconds", "10", "--seed", "5"}, &Run);
	const Json Parsed = Json::parse(Text, nullptr, false);
	ASSERT_TRUE(Parsed.is_array());
	ASSERT_EQ(Parsed.size(), 300u);
	for (const Json& Frame : Parsed)
	{
		ASSERT_EQ(Frame.size(), 51u);
		for (const Json& Weight : Frame)
		{
			ASSERT_TRUE(Weight.is_number());
			EXPECT_GE(Weight.get<double>(), 0.0);
			EXPECT_LE(Weight.get<double>(), 100.0);
		}
	}
	EXPECT_EQ(Text, FZnMotionGenerator::FaceToJson(Face(300, 5)));
	EXPECT_EQ(
		Run.Out, "wrote " + PathOf("face.json") + ": face v1, 300 frames, " + std::to_string(Text.size()) + " bytes\n");
}

TEST_F(ZnGenerateTests, FaceVersionTwoCarriesFrameIndexAndWeights)
{
	const std::string Text = Generate("face.json", {"--kind", "face", "--format", "v2", "--seconds", "10"});
	const Json Parsed = Json::parse(Text, nullptr, false);
	ASSERT_TRUE(Parsed.is_array());
	ASSERT_EQ(Parsed.size(), 300u);
	for (size_t Frame = 0; Frame < Parsed.size(); ++Frame)
	{
		EXPECT_EQ(Parsed[Frame]["frameIndex"].get<int>(), int(Frame) + 1);
		EXPECT_EQ(Parsed[Frame]["bs"].size(), 51u);
	}
	EXPECT_EQ(Text, FZnMotionGenerator::FaceToJsonV2(Face(300, 1)));
}

TEST_F(ZnGenerateTests, OvershootPutsSomeWeightsOutsideZeroToHundred)
{
	const std::string Text = Generate("face.json", {"--kind", "face", "--seconds", "10", "--overshoot"});
	EXPECT_EQ(Text, FZnMotionGenerator::FaceToJson(Face(300, 1, true)));
	const Json Parsed = Json::parse(Text, nullptr, false);
	int Outside = 0;
	for (const Json& Frame : Parsed)
	{
		for (const Json& Weight : Frame)
		{
			Outside += Weight.get<double>() < 0.0 || Weight.get<double>() > 100.0;
		}
	}
	EXPECT_GT(Outside, 0);
	EXPECT_NE(Text, FZnMotionGenerator::FaceToJson(Face(300, 1, false)));
}

TEST_F(ZnGenerateTests, ControlRigHasTheAskedNumberOfCurvesAndIgnoresTheFormat)
{
	FRun Run;
	const std::string Text = Generate("rig.json", {"--kind", "rig", "--seconds", "10", "--rig-curves", "7"}, &Run);
	const Json Parsed = Json::parse(Text, nullptr, false);
	ASSERT_TRUE(Parsed.is_object());
	ASSERT_EQ(Parsed["curve_names"].size(), 7u);
	ASSERT_EQ(Parsed["curve_data"].size(), 300u);
	for (const Json& Frame : Parsed["curve_data"])
	{
		EXPECT_EQ(Frame.size(), 7u);
	}
	EXPECT_EQ(Text, FZnMotionGenerator::ControlRigToJson(FZnMotionGenerator::GenerateControlRig({300, 1, false}, 7)));
	EXPECT_EQ(Run.Out,
		"wrote " + PathOf("rig.json") + ": rig curves, 300 frames, " + std::to_string(Text.size()) + " bytes\n");
	EXPECT_EQ(Generate("rig2.json", {"--kind", "rig", "--format", "v2", "--seconds", "10", "--rig-curves", "7"}), Text);
	EXPECT_EQ(
		Generate("rig3.json", {"--kind", "rig", "--format", "v2-frames", "--seconds", "10", "--rig-curves", "7"}), Text)
		<< "a rig clip is one file whatever the format";
	const Json All = Json::parse(Generate("rig51.json", {"--kind", "rig", "--seconds", "1"}), nullptr, false);
	EXPECT_EQ(All["curve_names"].size(), 51u) << "51 curves by default";
}

TEST_F(ZnGenerateTests, SameSeedSameBytesAnotherSeedOtherBytes)
{
	for (const std::vector<std::string>& Shape :
		std::vector<std::vector<std::string>>{{"--kind", "body"}, {"--kind", "body", "--format", "v2"},
			{"--kind", "face"}, {"--kind", "face", "--format", "v2"}, {"--kind", "rig"}})
	{
		std::vector<std::string> Args = Shape;
		Args.insert(Args.end(), {"--seconds", "3", "--seed", "11"});
		const std::string First = Generate("a.json", Args);
		const std::string Second = Generate("b.json", Args);
		ASSERT_FALSE(First.empty());
		EXPECT_EQ(First, Second) << ::testing::PrintToString(Shape);
		Args.back() = "12";
		EXPECT_NE(Generate("c.json", Args), First) << ::testing::PrintToString(Shape);
	}
}

TEST_F(ZnGenerateTests, DefaultsAreTenSecondsAndSeedOne)
{
	EXPECT_EQ(Generate("body.json", {}), FZnMotionGenerator::BodyToJson(Body(300, 1)));
}

TEST_F(ZnGenerateTests, SecondsAreRoundedToWholeFrames)
{
	const Json Short = Json::parse(Generate("a.json", {"--kind", "face", "--seconds", "1.01"}), nullptr, false);
	EXPECT_EQ(Short.size(), 30u);
	const Json Long = Json::parse(Generate("b.json", {"--kind", "face", "--seconds", "1.02"}), nullptr, false);
	EXPECT_EQ(Long.size(), 31u);
}

TEST_F(ZnGenerateTests, ZeroSecondsWritesAnEmptyClip)
{
	FRun Run;
	const std::string Text = Generate("body.json", {"--seconds", "0"}, &Run);
	EXPECT_EQ(Text, FZnMotionGenerator::BodyToJson(Body(0, 1)));
	const Json Parsed = Json::parse(Text, nullptr, false);
	ASSERT_FALSE(Parsed.is_discarded());
	EXPECT_EQ(Parsed["Hips"]["pos"].size(), 0u);
	EXPECT_NE(Run.Out.find("0 frames"), std::string::npos) << Run.Out;
	EXPECT_EQ(Json::parse(Generate("face.json", {"--kind", "face", "--seconds", "0"}), nullptr, false), Json::array());
}

TEST_F(ZnGenerateTests, LargeSeedsAreDistinct)
{
	const std::string Max = Generate("max.json", {"--seconds", "1", "--seed", "18446744073709551615"});
	EXPECT_EQ(Max, FZnMotionGenerator::BodyToJson(Body(30, 18446744073709551615ull)));
	const std::string Below = Generate("below.json", {"--seconds", "1", "--seed", "18446744073709551614"});
	EXPECT_NE(Below, Max);
	EXPECT_EQ(Generate("zero.json", {"--seconds", "1", "--seed", "0"}), FZnMotionGenerator::BodyToJson(Body(30, 0)));
}

TEST_F(ZnGenerateTests, SeedIsReadInDecimalEvenWithLeadingZeros)
{
	EXPECT_EQ(Generate("a.json", {"--seconds", "1", "--seed", "010"}), FZnMotionGenerator::BodyToJson(Body(30, 10)));
}

TEST_F(ZnGenerateTests, ALongOutputPathIsPrintedWhole)
{
	std::string Name;
	for (int Part = 0; Part < 3; ++Part)
	{
		Name += std::string(200, char('a' + Part)) + "/";
	}
	std::filesystem::create_directories(Folder / Name);
	FRun Run;
	const std::string Text = Generate(Name + "clip.json", {"--kind", "face", "--seconds", "1"}, &Run);
	EXPECT_EQ(Text, FZnMotionGenerator::FaceToJson(Face(30, 1)));
	EXPECT_EQ(Run.Out,
		"wrote " + PathOf(Name + "clip.json") + ": face v1, 30 frames, " + std::to_string(Text.size()) + " bytes\n");
}
