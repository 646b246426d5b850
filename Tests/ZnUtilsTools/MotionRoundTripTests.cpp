// Generated clips decoded by every decoder, compared value by value with what the generator wrote,
// converted the way the decoders promise: the service's axes permuted into the engine's (X = z,
// Y = x, Z = y), numbers narrowed to float, rotations normalised, positions scaled to centimetres
// in float, percent weights scaled and clamped (in float for the version 1 face text, in double
// for version 2), and frame times of i/30 s computed in double and narrowed. Comparisons are exact.
#include "ZnMotionGenerator.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnHuman_Skeleton.h"
#include "ZnQuatCurve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace
{
FString ToFString(const std::string& Utf8)
{
	const FUTF8ToTCHAR Converted(Utf8.data(), static_cast<int32>(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

// The rotation a decoder stores for the service quaternion (x, y, z, w).
FQuat ExpectedRotation(const FZnGenQuat& Service)
{
	const double X = static_cast<float>(Service.Z);
	const double Y = static_cast<float>(Service.X);
	const double Z = static_cast<float>(Service.Y);
	const double W = static_cast<float>(Service.W);
	const double SquareSum = X * X + Y * Y + Z * Z + W * W;
	if (SquareSum >= static_cast<double>(1e-8f))
	{
		const double Size = std::sqrt(SquareSum);
		return FQuat(X / Size, Y / Size, Z / Size, W / Size);
	}
	return FQuat(0.0, 0.0, 0.0, 1.0);
}

// The engine position (centimetres) of a service position (metres), each product taken in float.
struct FExpectedPosition
{
	float X, Y, Z;
};

FExpectedPosition ExpectedPosition(const FZnGenVec& Service)
{
	return {static_cast<float>(Service.Z) * 100.0f, static_cast<float>(Service.X) * 100.0f,
		static_cast<float>(Service.Y) * 100.0f};
}

float FrameTimeV1Body(int32 Frame)
{
	return static_cast<float>(Frame * 0.03333333333333333);
}

float FrameTime(int32 Frame)
{
	return static_cast<float>(static_cast<double>(Frame) * (1.0 / 30.0));
}

// Version 2 frames carry frameIndex = Frame + 1; the time is (frameIndex - 1) / 30.
float FrameTimeV2(int32 Frame)
{
	const uint64 FrameIndex = static_cast<uint64>(Frame) + 1;
	return static_cast<float>(static_cast<double>(FrameIndex - 1) * (1.0 / 30.0));
}

float PercentV1(double Written)
{
	float Weight = static_cast<float>(Written) * 0.01f;
	if (!(Weight >= 0.0f))
	{
		return 0.0f;
	}
	return Weight >= 1.0f ? 1.0f : Weight;
}

float PercentV2(double Written)
{
	double Weight = Written * 0.01;
	Weight = Weight >= 0.0 ? std::min(Weight, 1.0) : 0.0;
	return static_cast<float>(Weight);
}

void ExpectSameQuat(const FQuat& Actual, const FQuat& Expected, const std::string& Where)
{
	EXPECT_EQ(Actual.X, Expected.X) << Where;
	EXPECT_EQ(Actual.Y, Expected.Y) << Where;
	EXPECT_EQ(Actual.Z, Expected.Z) << Where;
	EXPECT_EQ(Actual.W, Expected.W) << Where;
}

// An independent model of how a rotation curve places keys fed one by one (the halving search of
// Evaluate depends on this order, so out-of-order streams must reproduce it exactly): a key near
// an existing one replaces its value, one before the first or after the last is prepended or
// appended, and one strictly between two keys lands in front of the earlier neighbour.
struct FKeyOrderModel
{
	std::vector<float> Times;
	std::vector<FQuat> Values;

	void UpdateOrAddKey(float Time, const FQuat& Value, float Tolerance)
	{
		const auto Near = [&](float KeyTime) { return !(std::abs(Time - KeyTime) > Tolerance); };
		const size_t Num = Times.size();
		if (Num == 0)
		{
			Times.push_back(Time);
			Values.push_back(Value);
			return;
		}
		if (!Near(Times[0]) && Time < Times[0])
		{
			Times.insert(Times.begin(), Time);
			Values.insert(Values.begin(), Value);
			return;
		}
		if (!Near(Times[Num - 1]) && Time > Times[Num - 1])
		{
			Times.push_back(Time);
			Values.push_back(Value);
			return;
		}
		for (size_t Index = 0; Index < Num; ++Index)
		{
			if (Near(Times[Index]))
			{
				Values[Index] = Value;
				return;
			}
			if (Index < Num - 1 && Time < Times[Index + 1])
			{
				Times.insert(Times.begin() + static_cast<std::ptrdiff_t>(Index), Time);
				Values.insert(Values.begin() + static_cast<std::ptrdiff_t>(Index), Value);
				return;
			}
		}
	}
};

void ExpectCurveMatchesModel(const FZnQuatCurve& Curve, const FKeyOrderModel& Model, const std::string& Where)
{
	ASSERT_EQ(Curve.Keys.Num(), static_cast<int32>(Model.Times.size())) << Where;
	for (int32 Key = 0; Key < Curve.Keys.Num(); ++Key)
	{
		EXPECT_EQ(Curve.Keys[Key].Time, Model.Times[static_cast<size_t>(Key)]) << Where << " key " << Key;
		ExpectSameQuat(
			Curve.Keys[Key].Value, Model.Values[static_cast<size_t>(Key)], Where + " key " + std::to_string(Key));
	}
}

// A float curve holding one key per frame, in time order, with the given values.
void ExpectFloatKeys(const FRichCurve& Curve, const std::map<float, float>& Expected, const std::string& Where)
{
	ASSERT_EQ(Curve.Keys.Num(), static_cast<int32>(Expected.size())) << Where;
	int32 Key = 0;
	for (const auto& [Time, Value] : Expected)
	{
		EXPECT_EQ(Curve.Keys[Key].Time, Time) << Where << " key " << Key;
		EXPECT_EQ(Curve.Keys[Key].Value, Value) << Where << " key " << Key;
		++Key;
	}
}

void ExpectRootCurve(const FVectorCurve& Curve, const FZnGenBodyClip& Clip, float (*TimeOf)(int32), int32 Frames)
{
	std::map<float, float> X, Y, Z;
	for (int32 Frame = 0; Frame < Frames; ++Frame)
	{
		const FExpectedPosition P = ExpectedPosition(Clip.RootPositions[static_cast<size_t>(Frame)]);
		X[TimeOf(Frame)] = P.X;
		Y[TimeOf(Frame)] = P.Y;
		Z[TimeOf(Frame)] = P.Z;
	}
	ExpectFloatKeys(Curve.FloatCurves[0], X, "root X");
	ExpectFloatKeys(Curve.FloatCurves[1], Y, "root Y");
	ExpectFloatKeys(Curve.FloatCurves[2], Z, "root Z");
}

void ExpectBodyV1(const FZnBodyData& Body, const FZnGenBodyClip& Clip)
{
	EXPECT_EQ(Body.totalTime, static_cast<float>(Clip.TotalTime));
	const int32 Bones = static_cast<int32>(Clip.BoneNames.size());
	ASSERT_EQ(Body.BoneNames.Num(), Bones);
	ASSERT_EQ(Body.BoneFrames.Num(), Bones);
	ASSERT_EQ(Body.BoneCurves.Num(), Bones);
	for (int32 Bone = 0; Bone < Bones; ++Bone)
	{
		const std::string Name = Clip.BoneNames[static_cast<size_t>(Bone)];
		EXPECT_TRUE(Body.BoneNames[Bone].Equals(ToFString(Name))) << Name;
		const std::vector<FZnGenQuat>& Track = Clip.Rotations[static_cast<size_t>(Bone)];
		ASSERT_EQ(Body.BoneFrames[Bone].Num(), static_cast<int32>(Track.size())) << Name;
		ASSERT_EQ(Body.BoneCurves[Bone].Keys.Num(), static_cast<int32>(Track.size())) << Name;
		for (int32 Frame = 0; Frame < static_cast<int32>(Track.size()); ++Frame)
		{
			const FQuat Expected = ExpectedRotation(Track[static_cast<size_t>(Frame)]);
			const std::string Where = Name + " frame " + std::to_string(Frame);
			ExpectSameQuat(Body.BoneFrames[Bone][Frame], Expected, Where);
			EXPECT_EQ(Body.BoneCurves[Bone].Keys[Frame].Time, FrameTimeV1Body(Frame)) << Where;
			ExpectSameQuat(Body.BoneCurves[Bone].Keys[Frame].Value, Expected, Where);
		}
	}
	ExpectRootCurve(Body.RootPositionCurve, Clip, &FrameTimeV1Body, Clip.FrameCount());
}

std::vector<std::string> ToUtf8(const TArray<FString>& Names)
{
	std::vector<std::string> Out;
	for (const FString& Name : Names)
	{
		const FTCHARToUTF8 Converted(*Name, Name.Len());
		Out.emplace_back(Converted.Get(), static_cast<size_t>(Converted.Length()));
	}
	return Out;
}

TArray<FString> ToArray(const std::vector<std::string>& Names)
{
	TArray<FString> Out;
	for (const std::string& Name : Names)
	{
		Out.Add(ToFString(Name));
	}
	return Out;
}

// What a version 2 decoder holds after reading the clip's frames in Order with the bone list.
void ExpectBodyV2(const FZnBodyData& Body, float TotalTime, const FZnGenBodyClip& Clip,
	const std::vector<std::string>& BoneList, const std::vector<int32>& Order)
{
	ASSERT_EQ(Body.BoneNames.Num(), static_cast<int32>(BoneList.size()));
	ASSERT_EQ(Body.BoneFrames.Num(), static_cast<int32>(BoneList.size()));
	ASSERT_EQ(Body.BoneCurves.Num(), static_cast<int32>(BoneList.size()));
	float Largest = 0.0f;
	for (int32 Frame : Order)
	{
		Largest = std::max(Largest, FrameTimeV2(Frame));
	}
	EXPECT_EQ(Body.totalTime, Largest);
	EXPECT_EQ(TotalTime, Largest);
	for (size_t Slot = 0; Slot < BoneList.size(); ++Slot)
	{
		const int32 Index = static_cast<int32>(Slot);
		const std::string& Name = BoneList[Slot];
		EXPECT_TRUE(Body.BoneNames[Index].Equals(ToFString(Name))) << Name;
		const size_t Bone =
			static_cast<size_t>(std::find(Clip.BoneNames.begin(), Clip.BoneNames.end(), Name) - Clip.BoneNames.begin());
		ASSERT_LT(Bone, Clip.BoneNames.size()) << Name;
		ASSERT_EQ(Body.BoneFrames[Index].Num(), static_cast<int32>(Order.size())) << Name;
		FKeyOrderModel Model;
		for (size_t Arrival = 0; Arrival < Order.size(); ++Arrival)
		{
			const FQuat Expected = ExpectedRotation(Clip.Rotations[Bone][static_cast<size_t>(Order[Arrival])]);
			// Frame lists keep arrival order.
			ExpectSameQuat(Body.BoneFrames[Index][static_cast<int32>(Arrival)], Expected,
				Name + " arrival " + std::to_string(Arrival));
			Model.UpdateOrAddKey(FrameTimeV2(Order[Arrival]), Expected, 0.0001f);
		}
		ExpectCurveMatchesModel(Body.BoneCurves[Index], Model, Name);
	}
	ExpectRootCurve(Body.RootPositionCurve, Clip, &FrameTimeV2, Clip.FrameCount());
	EXPECT_EQ(Body.RootStartPosition.X, 0.0);
	EXPECT_EQ(Body.RootStartPosition.Y, 0.0);
	EXPECT_EQ(Body.RootStartPosition.Z, 0.0);
}

void ExpectFaceV1(const FZnFaceData& Face, const FZnGenFaceClip& Clip)
{
	const int32 Frames = Clip.FrameCount();
	EXPECT_EQ(Face.totalTime, static_cast<float>(static_cast<double>(Frames) * (1.0 / 30.0)));
	ASSERT_EQ(Face.CurveFrames.Num(), 51);
	ASSERT_EQ(Face.Curves.Num(), 51);
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		const std::string Where = Clip.ChannelNames[static_cast<size_t>(Channel)];
		ASSERT_EQ(Face.CurveFrames[Channel].Num(), Frames) << Where;
		std::map<float, float> Keys;
		for (int32 Frame = 0; Frame < Frames; ++Frame)
		{
			const float Expected = PercentV1(Clip.Weights[static_cast<size_t>(Frame)][static_cast<size_t>(Channel)]);
			EXPECT_EQ(Face.CurveFrames[Channel][Frame], Expected) << Where << " frame " << Frame;
			Keys[FrameTime(Frame)] = Expected;
		}
		ExpectFloatKeys(Face.Curves[Channel].FloatCurve, Keys, Where);
	}
}

void ExpectFaceV2(const FZnFaceData& Face, float TotalTime, const FZnGenFaceClip& Clip, const std::vector<int32>& Order,
	int32 ChannelCount)
{
	float Largest = 0.0f;
	for (int32 Frame : Order)
	{
		Largest = std::max(Largest, FrameTimeV2(Frame));
	}
	EXPECT_EQ(Face.totalTime, Largest);
	EXPECT_EQ(TotalTime, Largest);
	EXPECT_EQ(Face.CurveNames.Num(), 0);
	ASSERT_EQ(Face.CurveFrames.Num(), ChannelCount);
	ASSERT_EQ(Face.Curves.Num(), ChannelCount);
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		const std::string Where = Clip.ChannelNames[static_cast<size_t>(Channel)];
		ASSERT_EQ(Face.CurveFrames[Channel].Num(), static_cast<int32>(Order.size())) << Where;
		std::map<float, float> Keys;
		for (size_t Arrival = 0; Arrival < Order.size(); ++Arrival)
		{
			const int32 Frame = Order[Arrival];
			const float Expected = PercentV2(Clip.Weights[static_cast<size_t>(Frame)][static_cast<size_t>(Channel)]);
			EXPECT_EQ(Face.CurveFrames[Channel][static_cast<int32>(Arrival)], Expected)
				<< Where << " arrival " << Arrival;
			Keys[FrameTimeV2(Frame)] = Expected;
		}
		ExpectFloatKeys(Face.Curves[Channel].FloatCurve, Keys, Where);
	}
	for (int32 Channel = 51; Channel < ChannelCount; ++Channel)
	{
		// The service sends 51 weights; the stream's extra channel stays empty.
		EXPECT_EQ(Face.CurveFrames[Channel].Num(), 0);
		EXPECT_EQ(Face.Curves[Channel].FloatCurve.Keys.Num(), 0);
	}
}

std::vector<int32> NaturalOrder(int32 Frames)
{
	std::vector<int32> Order(static_cast<size_t>(Frames));
	for (int32 Frame = 0; Frame < Frames; ++Frame)
	{
		Order[static_cast<size_t>(Frame)] = Frame;
	}
	return Order;
}
} // namespace

TEST(MotionRoundTripTests, BodyTextDecodesToTheGeneratedRotationsAndRootTrack)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({90, 21, true, true});
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(ToFString(FZnMotionGenerator::BodyToJson(Clip)), Body);
	ExpectBodyV1(Body, Clip);
	const FExpectedPosition Start = ExpectedPosition(Clip.RootPositions[0]);
	EXPECT_EQ(Body.RootStartPosition.X, static_cast<double>(Start.X));
	EXPECT_EQ(Body.RootStartPosition.Y, static_cast<double>(Start.Y));
	EXPECT_EQ(Body.RootStartPosition.Z, static_cast<double>(Start.Z));
}

TEST(MotionRoundTripTests, TenSecondBenchmarkClipDecodesCompletely)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({300, 7, false, true});
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(ToFString(FZnMotionGenerator::BodyToJson(Clip)), Body);
	ASSERT_EQ(Body.BoneNames.Num(), 52);
	EXPECT_EQ(Body.totalTime, 10.0f);
	ExpectBodyV1(Body, Clip);
}

TEST(MotionRoundTripTests, RecommendBodyDecodingMatchesExceptStartPositionAndReportsTotalTime)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({40, 22, true, true});
	FZnBodyData Body;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToBodydataRecommend(ToFString(FZnMotionGenerator::BodyToJson(Clip)), Body, TotalTime);
	ExpectBodyV1(Body, Clip);
	EXPECT_EQ(TotalTime, static_cast<float>(Clip.TotalTime));
	EXPECT_EQ(Body.RootStartPosition.X, 0.0);
	EXPECT_EQ(Body.RootStartPosition.Y, 0.0);
	EXPECT_EQ(Body.RootStartPosition.Z, 0.0);
}

TEST(MotionRoundTripTests, SampledBodyPoseBetweenFramesInterpolatesTheDecodedKeys)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({30, 23, false, false});
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(ToFString(FZnMotionGenerator::BodyToJson(Clip)), Body);
	ASSERT_EQ(Body.BoneCurves.Num(), 22);
	// On a frame time the curve gives the frame's rotation; halfway it lies between its neighbours.
	const FZnQuatCurve& Head = Body.BoneCurves[10];
	ExpectSameQuat(Head.Evaluate(FrameTimeV1Body(12), 0.0001f), ExpectedRotation(Clip.Rotations[10][12]), "frame 12");
	const FQuat Mid = Head.Evaluate((FrameTimeV1Body(12) + FrameTimeV1Body(13)) * 0.5f, 0.0001f);
	const FQuat A = ExpectedRotation(Clip.Rotations[10][12]);
	const FQuat B = ExpectedRotation(Clip.Rotations[10][13]);
	EXPECT_NEAR(Mid.W, (A.W + B.W) * 0.5, std::abs(A.W - B.W) * 0.01 + 1e-9);
	EXPECT_NEAR(Mid.X, (A.X + B.X) * 0.5, std::abs(A.X - B.X) * 0.01 + 1e-9);
}

TEST(MotionRoundTripTests, V2ResponseInFrameOrderDecodesTheChosenBones)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({45, 31, true, true});
	const ZnHuman_Skeleton Skeleton;
	const std::vector<std::string> BoneList = ToUtf8(Skeleton.DMBodyBonesWithTwist);
	FZnBodyData Body;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(
		ToFString(FZnMotionGenerator::BodyToJsonV2(Clip)), ToArray(BoneList), Body, TotalTime);
	ExpectBodyV2(Body, TotalTime, Clip, BoneList, NaturalOrder(45));
}

TEST(MotionRoundTripTests, V2ResponseOutOfOrderKeepsArrivalOrderInFramesAndTheCurvesInsertionOrder)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({30, 32, true, true});
	const std::vector<int32> Order = FZnMotionGenerator::ShuffledFrameOrder(30, 5);
	const std::vector<std::string> BoneList = {"Hips", "Spine", "LeftHand", "RightHandThumb2", "LeftForeArm1"};
	FZnBodyData Body;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(
		ToFString(FZnMotionGenerator::BodyToJsonV2(Clip, Order)), ToArray(BoneList), Body, TotalTime);
	ExpectBodyV2(Body, TotalTime, Clip, BoneList, Order);
}

TEST(MotionRoundTripTests, V2StreamOfFrameTextsMatchesTheResponseDecoding)
{
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({24, 33, true, true});
	const std::vector<int32> Order = FZnMotionGenerator::ShuffledFrameOrder(24, 6);
	const ZnHuman_Skeleton Skeleton;
	const std::vector<std::string> BoneList = ToUtf8(Skeleton.DMBodyBones);
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	for (int32 Frame : Order)
	{
		UZnDM_BpFuncLib::ParseJsonToBodydataV2(
			ToFString(FZnMotionGenerator::BodyFrameToJsonV2(Clip, Frame)), ToArray(BoneList));
	}
	FZnBodyData Body;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	ExpectBodyV2(Body, TotalTime, Clip, BoneList, Order);

	FZnBodyData Again;
	float AgainTime = -1.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Again, AgainTime);
	ExpectBodyV2(Again, AgainTime, Clip, BoneList, Order);
}

TEST(MotionRoundTripTests, FaceTextDecodesToClampedFractionsOnTheFaceRigNames)
{
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({120, 41, true});
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFacedata(ToFString(FZnMotionGenerator::FaceToJson(Clip)), Face);
	ExpectFaceV1(Face, Clip);
	ASSERT_EQ(Face.CurveNames.Num(), 51);
	EXPECT_EQ(ToUtf8(Face.CurveNames), Clip.ChannelNames);
}

TEST(MotionRoundTripTests, RecommendFaceDecodingHasNoNamesAndReportsTotalTime)
{
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({300, 42, false});
	FZnFaceData Face;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataRecommend(ToFString(FZnMotionGenerator::FaceToJson(Clip)), Face, TotalTime);
	ExpectFaceV1(Face, Clip);
	EXPECT_EQ(Face.CurveNames.Num(), 0);
	EXPECT_EQ(TotalTime, 10.0f);
	EXPECT_EQ(Face.totalTime, 10.0f);
}

TEST(MotionRoundTripTests, FaceV2ResponseOutOfOrderScalesInDoubleAndKeysByFrameTime)
{
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({60, 43, true});
	const std::vector<int32> Order = FZnMotionGenerator::ShuffledFrameOrder(60, 7);
	FZnFaceData Face;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(
		ToFString(FZnMotionGenerator::FaceToJsonV2(Clip, Order)), Face, TotalTime);
	ExpectFaceV2(Face, TotalTime, Clip, Order, 51);
}

TEST(MotionRoundTripTests, FaceV2StreamHoldsFiftyTwoChannelsAndTheLargestFrameTime)
{
	const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({40, 44, true});
	const std::vector<int32> Order = FZnMotionGenerator::ShuffledFrameOrder(40, 8);
	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	for (int32 Frame : Order)
	{
		UZnDM_BpFuncLib::ParseJsonToFacedataV2(ToFString(FZnMotionGenerator::FaceFrameToJsonV2(Clip, Frame)));
	}
	FZnFaceData Face;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::EndParseJsonToFacedataV2(Face, TotalTime);
	ExpectFaceV2(Face, TotalTime, Clip, Order, 52);
}

TEST(MotionRoundTripTests, ControlRigCurvesKeepRawValuesAndTheirNames)
{
	const FZnGenControlRigClip Clip = FZnMotionGenerator::GenerateControlRig({75, 45, false}, 20);
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(ToFString(FZnMotionGenerator::ControlRigToJson(Clip)), Face);
	EXPECT_EQ(ToUtf8(Face.CurveNames), Clip.CurveNames);
	EXPECT_EQ(Face.totalTime, static_cast<float>(75.0 * (1.0 / 30.0)));
	ASSERT_EQ(Face.CurveFrames.Num(), 20);
	ASSERT_EQ(Face.Curves.Num(), 20);
	for (int32 Curve = 0; Curve < 20; ++Curve)
	{
		const std::string Where = Clip.CurveNames[static_cast<size_t>(Curve)];
		ASSERT_EQ(Face.CurveFrames[Curve].Num(), 75) << Where;
		std::map<float, float> Keys;
		for (int32 Frame = 0; Frame < 75; ++Frame)
		{
			const float Expected =
				static_cast<float>(Clip.Values[static_cast<size_t>(Frame)][static_cast<size_t>(Curve)]);
			EXPECT_EQ(Face.CurveFrames[Curve][Frame], Expected) << Where << " frame " << Frame;
			Keys[FrameTime(Frame)] = Expected;
		}
		ExpectFloatKeys(Face.Curves[Curve].FloatCurve, Keys, Where);
	}
}
