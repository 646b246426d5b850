// zn export csv: generated face clips are exported and the file is checked against the Live Link
// Face layout (header, BlendShapeCount, timecodes) and against weights worked out here from the
// generator's numbers with the decoders' percent scaling and clamping.
#include "ZnExportTestHelpers.h"
#include "ZnMotionGenerator.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

using namespace ZnExportTest;
using namespace ZnTest;

namespace
{
// The layout's first line, exactly.
const char* const LiveLinkFaceHeader =
	"Timecode,BlendShapeCount,EyeBlinkLeft,EyeLookDownLeft,EyeLookInLeft,EyeLookOutLeft,EyeLookUpLeft,"
	"EyeSquintLeft,EyeWideLeft,EyeBlinkRight,EyeLookDownRight,EyeLookInRight,EyeLookOutRight,EyeLookUpRight,"
	"EyeSquintRight,EyeWideRight,JawForward,JawRight,JawLeft,JawOpen,MouthClose,MouthFunnel,MouthPucker,MouthRight,"
	"MouthLeft,MouthSmileLeft,MouthSmileRight,MouthFrownLeft,MouthFrownRight,MouthDimpleLeft,MouthDimpleRight,"
	"MouthStretchLeft,MouthStretchRight,MouthRollLower,MouthRollUpper,MouthShrugLower,MouthShrugUpper,"
	"MouthPressLeft,MouthPressRight,MouthLowerDownLeft,MouthLowerDownRight,MouthUpperUpLeft,MouthUpperUpRight,"
	"BrowDownLeft,BrowDownRight,BrowInnerUp,BrowOuterUpLeft,BrowOuterUpRight,CheekPuff,CheekSquintLeft,"
	"CheekSquintRight,NoseSneerLeft,NoseSneerRight,TongueOut,HeadYaw,HeadPitch,HeadRoll,LeftEyeYaw,LeftEyePitch,"
	"LeftEyeRoll,RightEyeYaw,RightEyePitch,RightEyeRoll";

// Version 1 weights: percent times 0.01 in single precision, then held within 0..1.
float DecodedV1(double Percent)
{
	const float Weight = float(Percent) * 0.01f;
	return !(Weight >= 0.0f) ? 0.0f : std::min(Weight, 1.0f);
}

// Version 2 weights: the same in double precision, narrowed afterwards.
float DecodedV2(double Percent)
{
	const double Weight = Percent * 0.01;
	return float(Weight >= 0.0 ? std::min(Weight, 1.0) : 0.0);
}

// Seconds of a timecode HH:MM:SS:FF.mmm at 30 frames per second; -1 when malformed.
double TimecodeSeconds(const std::string& Text)
{
	int Hours = 0, Minutes = 0, Seconds = 0, Frame = 0, Fraction = 0;
	char Tail = 0;
	if (Text.size() != 15 ||
		std::sscanf(Text.c_str(), "%2d:%2d:%2d:%2d.%3d%c", &Hours, &Minutes, &Seconds, &Frame, &Fraction, &Tail) != 5 ||
		Frame >= 30)
	{
		return -1.0;
	}
	return Hours * 3600.0 + Minutes * 60.0 + Seconds + (Frame + Fraction / 1000.0) / 30.0;
}

class ZnFaceCsvExportTest : public FZnFolderTest
{
protected:
	std::vector<std::vector<std::string>> Export(
		const std::string& FaceText, const std::vector<std::string>& Extra = {}, std::string* OutHeader = nullptr)
	{
		const std::string Face = Write("face.json", FaceText);
		std::vector<std::string> Args = {"export", "csv", Face, "-o", PathOf("out.csv")};
		Args.insert(Args.end(), Extra.begin(), Extra.end());
		const FRun Run = RunZn(Args);
		EXPECT_EQ(Run.Status, 0) << Run.Err;
		std::vector<std::string> Lines = ZnTest::Lines(ReadAll(PathOf("out.csv")));
		EXPECT_FALSE(Lines.empty());
		if (OutHeader && !Lines.empty())
		{
			*OutHeader = Lines[0];
		}
		std::vector<std::vector<std::string>> Rows;
		for (size_t Line = 1; Line < Lines.size(); ++Line)
		{
			Rows.push_back(SplitCsvLine(Lines[Line]));
		}
		return Rows;
	}

	// Every row against the layout and the expected weights (Weight(frame, channel name)).
	template <typename WeightType>
	static void ExpectRows(const std::vector<std::vector<std::string>>& Rows, int Frames, WeightType Weight)
	{
		const std::vector<std::string> Columns = SplitCsvLine(LiveLinkFaceHeader);
		ASSERT_EQ(int(Rows.size()), Frames);
		double Previous = -1.0;
		for (int Frame = 0; Frame < Frames; ++Frame)
		{
			const std::vector<std::string>& Row = Rows[size_t(Frame)];
			ASSERT_EQ(Row.size(), 63u) << Frame;
			const double Seconds = TimecodeSeconds(Row[0]);
			EXPECT_GT(Seconds, Previous) << Row[0];
			EXPECT_NEAR(Seconds, Frame / 30.0, 1e-9) << Row[0];
			Previous = Seconds;
			EXPECT_EQ(Row[1], "61");
			for (size_t Column = 2; Column < 54; ++Column)
			{
				const double Expected = Columns[Column] == "TongueOut" ? 0.0 : Weight(Frame, Columns[Column]);
				EXPECT_NEAR(std::stod(Row[Column]), Expected, 5.1e-7) << Columns[Column] << " frame " << Frame;
				EXPECT_GE(std::stod(Row[Column]), 0.0);
				EXPECT_LE(std::stod(Row[Column]), 1.0);
			}
		}
	}

	static size_t ChannelOf(const FZnGenFaceClip& Clip, const std::string& Name)
	{
		return size_t(std::find(Clip.ChannelNames.begin(), Clip.ChannelNames.end(), Name) - Clip.ChannelNames.begin());
	}
};
} // namespace

TEST_F(ZnFaceCsvExportTest, Version1FaceFollowsTheLayoutAndTheDecodedCurves)
{
	FZnGenFaceOptions Options;
	Options.FrameCount = 95;
	Options.Seed = 5;
	Options.bOvershoot = true;
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace(Options);
	std::string Header;
	const auto Rows = Export(FZnMotionGenerator::FaceToJson(Clip), {}, &Header);
	EXPECT_EQ(Header, LiveLinkFaceHeader);
	ExpectRows(Rows, 95,
		[&](int Frame, const std::string& Name)
		{ return DecodedV1(Clip.Weights[size_t(Frame)][ChannelOf(Clip, Name)]); });
	// Past one second the timecode counts seconds and the frame within the second.
	EXPECT_EQ(Rows[31][0], "00:00:01:01.000");
	EXPECT_EQ(Rows[94][0], "00:00:03:04.000");
	// Without a body every rotation column is 0.
	for (const auto& Row : Rows)
	{
		for (size_t Column = 54; Column < 63; ++Column)
		{
			EXPECT_EQ(Row[Column], "0.000000");
		}
	}
}

TEST_F(ZnFaceCsvExportTest, JawAndMouthSidesAreMappedByName)
{
	// One frame whose only non-zero weights are jaw left (channel 15) and mouth right (21).
	std::vector<double> Frame(51, 0.0);
	Frame[15] = 40.0;
	Frame[21] = 70.0;
	std::string Text = "[[";
	for (size_t Channel = 0; Channel < Frame.size(); ++Channel)
	{
		Text += (Channel ? "," : "") + std::to_string(Frame[Channel]);
	}
	Text += "]]";
	const auto Rows = Export(Text);
	ASSERT_EQ(Rows.size(), 1u);
	const std::vector<std::string> Columns = SplitCsvLine(LiveLinkFaceHeader);
	for (size_t Column = 2; Column < 54; ++Column)
	{
		const double Expected = Columns[Column] == "JawLeft" ? 0.4 : Columns[Column] == "MouthRight" ? 0.7 : 0.0;
		EXPECT_NEAR(std::stod(Rows[0][Column]), Expected, 1e-6) << Columns[Column];
	}
}

TEST_F(ZnFaceCsvExportTest, Version2FaceInAnyOrderGivesTheSameRows)
{
	FZnGenFaceOptions Options;
	Options.FrameCount = 45;
	Options.bOvershoot = true;
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace(Options);
	const auto Rows = Export(FZnMotionGenerator::FaceToJsonV2(Clip, FZnMotionGenerator::ShuffledFrameOrder(45, 2)));
	ExpectRows(Rows, 45,
		[&](int Frame, const std::string& Name)
		{ return DecodedV2(Clip.Weights[size_t(Frame)][ChannelOf(Clip, Name)]); });
}

TEST_F(ZnFaceCsvExportTest, HeadColumnsCarryTheBodyClipsHeadRotation)
{
	FZnGenFaceOptions FaceOptions;
	FaceOptions.FrameCount = 40;
	const FZnGenFaceClip Face = FZnMotionGenerator::GenerateFace(FaceOptions);
	// A body shorter than the face: the head holds its last frame.
	FZnGenBodyOptions BodyOptions;
	BodyOptions.FrameCount = 30;
	BodyOptions.bFingers = false;
	const FZnGenBodyClip Body = FZnMotionGenerator::GenerateBody(BodyOptions);
	const std::string BodyPath = Write("body.json", FZnMotionGenerator::BodyToJson(Body));
	const auto Rows = Export(FZnMotionGenerator::FaceToJson(Face), {"--body", BodyPath});
	ASSERT_EQ(Rows.size(), 40u);

	const std::vector<std::string> Chain = {"Hips", "Spine", "Spine1", "Spine2", "Neck", "Head"};
	bool bAnyTurn = false;
	for (int Frame = 0; Frame < 40; ++Frame)
	{
		// The head relative to the world in the export frame (the service's own axes).
		FTestQuat World;
		for (const std::string& Bone : Chain)
		{
			const size_t Index =
				size_t(std::find(Body.BoneNames.begin(), Body.BoneNames.end(), Bone) - Body.BoneNames.begin());
			const FTestQuat Engine = EngineRotation(Body.Rotations[Index][size_t(std::min(Frame, 29))]);
			World = Multiply(World, FTestQuat{Engine.Y, Engine.Z, Engine.X, Engine.W});
		}
		// Rebuilt from the columns: Ry(yaw) * Rx(pitch) * Rz(roll), radians.
		const double Degrees = 180.0 / 3.14159265358979323846;
		const double Yaw = std::stod(Rows[size_t(Frame)][54]);
		const double Pitch = std::stod(Rows[size_t(Frame)][55]);
		const double Roll = std::stod(Rows[size_t(Frame)][56]);
		const FTestQuat Rebuilt =
			Multiply(Multiply(AxisRotation('Y', Yaw * Degrees), AxisRotation('X', Pitch * Degrees)),
				AxisRotation('Z', Roll * Degrees));
		EXPECT_LT(RotationDistance(Rebuilt, World), 5e-6) << Frame;
		bAnyTurn = bAnyTurn || std::fabs(Yaw) > 0.05;
		for (size_t Column = 57; Column < 63; ++Column)
		{
			EXPECT_EQ(Rows[size_t(Frame)][Column], "0.000000");
		}
	}
	EXPECT_TRUE(bAnyTurn);
	EXPECT_EQ(Rows[39][54], Rows[29][54]);
}
