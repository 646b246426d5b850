// The motion generator feeds the round-trip tests, benchmarks and fuzzers, so its own promises are
// checked here: determinism, the service's bone and channel vocabulary, plausible values, and texts
// that an independent JSON parser reads back as exactly the numbers the clip records.
#include "ZnMotionGenerator.h"

#include "ZnHuman_Skeleton.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace
{
std::string ToUtf8(const FString& Text)
{
	const FTCHARToUTF8 Converted(*Text, Text.Len());
	return std::string(Converted.Get(), static_cast<size_t>(Converted.Length()));
}

std::vector<std::string> ToUtf8(const TArray<FString>& Names)
{
	std::vector<std::string> Out;
	for (const FString& Name : Names)
	{
		Out.push_back(ToUtf8(Name));
	}
	return Out;
}

double Length(const FZnGenQuat& Q)
{
	return std::sqrt(Q.X * Q.X + Q.Y * Q.Y + Q.Z * Q.Z + Q.W * Q.W);
}
} // namespace

TEST(ZnMotionGeneratorTests, SameOptionsGiveIdenticalTextsAndAnotherSeedChangesThem)
{
	const FZnGenBodyOptions Options{45, 99, true, true};
	const std::string First = FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody(Options));
	const std::string Second = FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody(Options));
	EXPECT_EQ(First, Second);
	FZnGenBodyOptions Other = Options;
	Other.Seed = 100;
	EXPECT_NE(First, FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody(Other)));

	const std::string Face1 = FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace({45, 5, false}));
	const std::string Face2 = FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace({45, 5, false}));
	EXPECT_EQ(Face1, Face2);
	EXPECT_NE(Face1, FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace({45, 6, false})));
}

TEST(ZnMotionGeneratorTests, BodyBonesAreTheServiceSkeletonWithTwistAndFingerBones)
{
	const ZnHuman_Skeleton Skeleton;
	std::vector<std::string> WithTwist = ToUtf8(Skeleton.DMBodyBonesWithTwist);
	const std::vector<std::string> Fingers = ToUtf8(Skeleton.DMFingerBones);
	WithTwist.insert(WithTwist.end(), Fingers.begin(), Fingers.end());
	EXPECT_EQ(FZnMotionGenerator::ServiceBoneNames(true, true), WithTwist);
	EXPECT_EQ(WithTwist.size(), 54u);

	std::vector<std::string> Plain = ToUtf8(Skeleton.DMBodyBones);
	Plain.insert(Plain.end(), Fingers.begin(), Fingers.end());
	EXPECT_EQ(FZnMotionGenerator::ServiceBoneNames(false, true), Plain);
	EXPECT_EQ(Plain.size(), 52u);
	EXPECT_EQ(FZnMotionGenerator::ServiceBoneNames(false, false), ToUtf8(Skeleton.DMBodyBones));
}

TEST(ZnMotionGeneratorTests, FaceChannelsAreTheFaceRigNamesInServiceOrder)
{
	const ZnHuman_Skeleton Skeleton;
	EXPECT_EQ(FZnMotionGenerator::FaceChannelNames(), ToUtf8(Skeleton.FaceCurveNames));
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({10, 1, false});
	EXPECT_EQ(Clip.ChannelNames, ToUtf8(Skeleton.FaceCurveNames));
}

TEST(ZnMotionGeneratorTests, BodyPathsRunFromTheRootToTheBone)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({2, 1, true, true});
	ASSERT_EQ(Clip.BonePaths.size(), Clip.BoneNames.size());
	EXPECT_EQ(Clip.BonePaths[0], "Hips");
	const auto Index = [&](const char* Name)
	{ return std::find(Clip.BoneNames.begin(), Clip.BoneNames.end(), Name) - Clip.BoneNames.begin(); };
	EXPECT_EQ(Clip.BonePaths[Index("LeftForeArm1")],
		"Hips/Spine/Spine1/Spine2/LeftShoulder/LeftArm/LeftForeArm/LeftForeArm1");
	EXPECT_EQ(Clip.BonePaths[Index("RightHandIndex3")],
		"Hips/Spine/Spine1/Spine2/RightShoulder/RightArm/RightForeArm/RightHand/RightHandIndex1/RightHandIndex2/"
		"RightHandIndex3");
	EXPECT_EQ(Clip.BonePaths[Index("LeftToeBase")], "Hips/LeftUpLeg/LeftLeg/LeftFoot/LeftToeBase");
}

TEST(ZnMotionGeneratorTests, RotationsAreNearlyUnitAndMoveSmoothly)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({300, 3, true, true});
	ASSERT_EQ(Clip.Rotations.size(), 54u);
	double LargestStep = 0.0;
	double LargestSwing = 0.0;
	for (const std::vector<FZnGenQuat>& Track : Clip.Rotations)
	{
		ASSERT_EQ(Track.size(), 300u);
		for (size_t Frame = 0; Frame < Track.size(); ++Frame)
		{
			// Float components printed with 9 digits: unit length up to float rounding.
			EXPECT_NEAR(Length(Track[Frame]), 1.0, 1e-6);
			LargestSwing = std::max(LargestSwing, 2.0 * std::acos(std::min(1.0, std::abs(Track[Frame].W))));
			if (Frame > 0)
			{
				const FZnGenQuat& A = Track[Frame - 1];
				const FZnGenQuat& B = Track[Frame];
				const double Dot = A.X * B.X + A.Y * B.Y + A.Z * B.Z + A.W * B.W;
				LargestStep = std::max(LargestStep, 2.0 * std::acos(std::min(1.0, std::abs(Dot))));
			}
		}
	}
	// Under 10 degrees between frames at 30 fps, and nothing spun round more than 150 degrees from rest.
	EXPECT_LT(LargestStep, 10.0 * 3.14159265 / 180.0);
	EXPECT_LT(LargestSwing, 150.0 * 3.14159265 / 180.0);
	EXPECT_GT(LargestSwing, 20.0 * 3.14159265 / 180.0);
}

TEST(ZnMotionGeneratorTests, RootStaysAtStandingHeightAndWandersSlowly)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({300, 4, false, false});
	ASSERT_EQ(Clip.RootPositions.size(), 300u);
	for (size_t Frame = 0; Frame < Clip.RootPositions.size(); ++Frame)
	{
		EXPECT_NEAR(Clip.RootPositions[Frame].Y, 0.95, 0.02);
		if (Frame > 0)
		{
			EXPECT_LT(std::abs(Clip.RootPositions[Frame].X - Clip.RootPositions[Frame - 1].X), 0.05);
			EXPECT_LT(std::abs(Clip.RootPositions[Frame].Z - Clip.RootPositions[Frame - 1].Z), 0.05);
		}
	}
	EXPECT_EQ(Clip.TotalTime, 10.0);
}

TEST(ZnMotionGeneratorTests, BodyTextReadsBackAsExactlyTheRecordedNumbers)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({20, 8, true, true});
	const nlohmann::json Root = nlohmann::json::parse(FZnMotionGenerator::BodyToJson(Clip));
	EXPECT_EQ(Root["totalTime"].get<double>(), Clip.TotalTime);
	ASSERT_EQ(Root["curves"].size(), Clip.BoneNames.size());
	for (size_t Bone = 0; Bone < Clip.BoneNames.size(); ++Bone)
	{
		const nlohmann::json& Track = Root["curves"][Bone];
		EXPECT_EQ(Track["name"], Clip.BoneNames[Bone]);
		EXPECT_EQ(Track["path"], Clip.BonePaths[Bone]);
		ASSERT_EQ(Track["rotas"].size(), 20u);
		for (size_t Frame = 0; Frame < 20; ++Frame)
		{
			const nlohmann::json& R = Track["rotas"][Frame];
			const FZnGenQuat& Q = Clip.Rotations[Bone][Frame];
			EXPECT_EQ(R["x"].get<double>(), Q.X);
			EXPECT_EQ(R["y"].get<double>(), Q.Y);
			EXPECT_EQ(R["z"].get<double>(), Q.Z);
			EXPECT_EQ(R["w"].get<double>(), Q.W);
		}
	}
	EXPECT_EQ(Root["Hips"]["name"], "Hips");
	ASSERT_EQ(Root["Hips"]["pos"].size(), 20u);
	for (size_t Frame = 0; Frame < 20; ++Frame)
	{
		EXPECT_EQ(Root["Hips"]["pos"][Frame]["x"].get<double>(), Clip.RootPositions[Frame].X);
		EXPECT_EQ(Root["Hips"]["pos"][Frame]["y"].get<double>(), Clip.RootPositions[Frame].Y);
		EXPECT_EQ(Root["Hips"]["pos"][Frame]["z"].get<double>(), Clip.RootPositions[Frame].Z);
	}
}

TEST(ZnMotionGeneratorTests, RecordedNumbersAreFloatsPrintedWithRoundTripPrecision)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({5, 2, false, false});
	for (const std::vector<FZnGenQuat>& Track : Clip.Rotations)
	{
		for (const FZnGenQuat& Q : Track)
		{
			// Nine significant digits: narrowing the text's value gives back the float that was printed,
			// and printing that float again gives the same text.
			EXPECT_EQ(FZnMotionGenerator::AsWritten(static_cast<float>(Q.X)), Q.X);
			EXPECT_EQ(FZnMotionGenerator::AsWritten(Q.W), Q.W);
		}
	}
	std::string Text;
	FZnMotionGenerator::AppendNumber(Text, 0.1);
	EXPECT_EQ(Text, "0.100000001");
	Text.clear();
	FZnMotionGenerator::AppendNumber(Text, 100.0);
	EXPECT_EQ(Text, "100");
	EXPECT_EQ(FZnMotionGenerator::AsWritten(0.1), 0.100000001);
}

TEST(ZnMotionGeneratorTests, V2BodyFramesCountFromOneAndFollowTheRequestedOrder)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({6, 2, true, false});
	const std::vector<int32> Order = FZnMotionGenerator::ShuffledFrameOrder(6, 11);
	std::vector<int32> Sorted = Order;
	std::sort(Sorted.begin(), Sorted.end());
	EXPECT_EQ(Sorted, (std::vector<int32>{0, 1, 2, 3, 4, 5}));

	const nlohmann::json Frames = nlohmann::json::parse(FZnMotionGenerator::BodyToJsonV2(Clip, Order));
	ASSERT_EQ(Frames.size(), 6u);
	for (size_t Index = 0; Index < 6; ++Index)
	{
		const int32 Frame = Order[Index];
		const nlohmann::json& Object = Frames[Index];
		EXPECT_EQ(Object["frameIndex"].get<uint64>(), static_cast<uint64>(Frame) + 1);
		EXPECT_EQ(Object["pos"]["Hips"][0].get<double>(), Clip.RootPositions[Frame].X);
		EXPECT_EQ(Object["pos"]["Hips"][2].get<double>(), Clip.RootPositions[Frame].Z);
		ASSERT_EQ(Object["rot"].size(), Clip.BoneNames.size());
		const nlohmann::json& Hand = Object["rot"]["LeftForeArm1"];
		const size_t Bone = 16; // LeftForeArm1 in the service order with twist bones
		ASSERT_EQ(Clip.BoneNames[Bone], "LeftForeArm1");
		EXPECT_EQ(Hand[0].get<double>(), Clip.Rotations[Bone][Frame].X);
		EXPECT_EQ(Hand[3].get<double>(), Clip.Rotations[Bone][Frame].W);
	}
	// One text per frame is the same object as the array's element.
	EXPECT_EQ(nlohmann::json::parse(FZnMotionGenerator::BodyFrameToJsonV2(Clip, 3)),
		Frames[static_cast<size_t>(std::find(Order.begin(), Order.end(), 3) - Order.begin())]);
}

TEST(ZnMotionGeneratorTests, FaceWeightsArePercentWithBlinksAndSpeech)
{
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({300, 9, false});
	ASSERT_EQ(Clip.Weights.size(), 300u);
	double MaxBlink = 0.0, MaxJaw = 0.0, MinJaw = 100.0;
	for (const std::vector<double>& Frame : Clip.Weights)
	{
		ASSERT_EQ(Frame.size(), 51u);
		for (double Weight : Frame)
		{
			EXPECT_GE(Weight, 0.0);
			EXPECT_LE(Weight, 100.0);
		}
		MaxBlink = std::max(MaxBlink, Frame[0]);
		MaxJaw = std::max(MaxJaw, Frame[17]);
		MinJaw = std::min(MinJaw, Frame[17]);
	}
	// Someone speaking for 10 s blinks at least once and opens and closes the jaw.
	EXPECT_GT(MaxBlink, 80.0);
	EXPECT_GT(MaxJaw, 25.0);
	EXPECT_LT(MinJaw, 5.0);
}

TEST(ZnMotionGeneratorTests, OvershootAddsWeightsOutsidePercentRange)
{
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({300, 9, true});
	int32 Below = 0, Above = 0;
	for (const std::vector<double>& Frame : Clip.Weights)
	{
		for (double Weight : Frame)
		{
			Below += Weight < 0.0;
			Above += Weight > 100.0;
		}
	}
	EXPECT_GT(Below, 10);
	EXPECT_GT(Above, 10);
}

TEST(ZnMotionGeneratorTests, FaceTextsReadBackAsExactlyTheRecordedNumbers)
{
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({12, 4, true});
	const nlohmann::json V1 = nlohmann::json::parse(FZnMotionGenerator::FaceToJson(Clip));
	const nlohmann::json V2 = nlohmann::json::parse(FZnMotionGenerator::FaceToJsonV2(Clip));
	ASSERT_EQ(V1.size(), 12u);
	ASSERT_EQ(V2.size(), 12u);
	for (size_t Frame = 0; Frame < 12; ++Frame)
	{
		EXPECT_EQ(V2[Frame]["frameIndex"].get<uint64>(), Frame + 1);
		ASSERT_EQ(V1[Frame].size(), 51u);
		for (size_t Channel = 0; Channel < 51; ++Channel)
		{
			EXPECT_EQ(V1[Frame][Channel].get<double>(), Clip.Weights[Frame][Channel]);
			EXPECT_EQ(V2[Frame]["bs"][Channel].get<double>(), Clip.Weights[Frame][Channel]);
		}
	}
}

TEST(ZnMotionGeneratorTests, ControlRigTextHasNamedCurvesOfRawValues)
{
	const FZnGenControlRigClip Clip = FZnMotionGenerator::GenerateControlRig({150, 4, false}, 12);
	ASSERT_EQ(Clip.CurveNames.size(), 12u);
	EXPECT_EQ(Clip.CurveNames[0], "ctrl_EyeBlinkRight");
	const nlohmann::json Root = nlohmann::json::parse(FZnMotionGenerator::ControlRigToJson(Clip));
	ASSERT_EQ(Root["curve_names"].size(), 12u);
	ASSERT_EQ(Root["curve_data"].size(), 150u);
	bool bSigned = false;
	for (size_t Frame = 0; Frame < 150; ++Frame)
	{
		ASSERT_EQ(Root["curve_data"][Frame].size(), 12u);
		for (size_t Curve = 0; Curve < 12; ++Curve)
		{
			const double Value = Clip.Values[Frame][Curve];
			EXPECT_EQ(Root["curve_data"][Frame][Curve].get<double>(), Value);
			EXPECT_GE(Value, -1.0);
			EXPECT_LE(Value, 1.0);
			bSigned |= Value < 0.0;
		}
	}
	EXPECT_TRUE(bSigned) << "the gaze controls should swing both ways within five seconds";
}

TEST(ZnMotionGeneratorTests, EmptyClipsAreValidJson)
{
	const FZnGenBodyClip Body = FZnMotionGenerator::GenerateBody({0, 1, true, true});
	const nlohmann::json Root = nlohmann::json::parse(FZnMotionGenerator::BodyToJson(Body));
	EXPECT_EQ(Root["totalTime"].get<double>(), 0.0);
	EXPECT_EQ(Root["curves"].size(), 54u);
	EXPECT_TRUE(Root["curves"][0]["rotas"].empty());
	EXPECT_TRUE(Root["Hips"]["pos"].empty());
	EXPECT_EQ(FZnMotionGenerator::BodyToJsonV2(Body), "[]");
	const FZnGenFaceClip Face = FZnMotionGenerator::GenerateFace({0, 1, false});
	EXPECT_EQ(FZnMotionGenerator::FaceToJson(Face), "[]");
	EXPECT_EQ(FZnMotionGenerator::FaceToJsonV2(Face), "[]");
	EXPECT_EQ(FZnMotionGenerator::ControlRigToJson(FZnMotionGenerator::GenerateControlRig({0, 1, false}, 2)),
		R"({"curve_names":["ctrl_EyeBlinkRight","ctrl_EyeLookDownRight"],"curve_data":[]})");
}
