#include "ZnFaceDataDecoder.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnDecodeTestHelpers.h"
#include "ZnFaceModel.h"
#include "ZnMotionGenerator.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace ZnDecodeTest;

namespace
{
const std::string SmallFace = "[[10,20,30],[40,50.5,60],[0,100,-1]]";
const std::string SmallRig = "{\"curve_names\":[\"a\",\"b\"],\"curve_data\":[[1,2],[3,4]]}";

bool FaceLeftAlone(const std::string& Json)
{
	FZnFaceData Face = SentinelFace();
	UZnDM_BpFuncLib::ParseJsonToFacedata(Text(Json), Face);
	FZnFaceData Recommended = SentinelFace();
	float TotalTime = 12.5f;
	UZnDM_BpFuncLib::ParseJsonToFacedataRecommend(Text(Json), Recommended, TotalTime);
	return SameFace(Face, SentinelFace()) && SameFace(Recommended, SentinelFace()) && TotalTime == 12.5f;
}

bool RigLeftAlone(const std::string& Json)
{
	FZnFaceData Face = SentinelFace();
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(Text(Json), Face);
	return SameFace(Face, SentinelFace());
}

FZnFaceData Decoded(const std::string& Json)
{
	FZnFaceData Face = SentinelFace();
	UZnDM_BpFuncLib::ParseJsonToFacedata(Text(Json), Face);
	return Face;
}
} // namespace

TEST(ZnFaceDataDecoderErrorTests, TextCutAtAnyByteLeavesTheRecordUnchanged)
{
	for (size_t Length = 0; Length < SmallFace.size(); ++Length)
	{
		EXPECT_TRUE(FaceLeftAlone(SmallFace.substr(0, Length))) << Length;
	}
	EXPECT_FALSE(FaceLeftAlone(SmallFace));
	for (size_t Length = 0; Length < SmallRig.size(); ++Length)
	{
		EXPECT_TRUE(RigLeftAlone(SmallRig.substr(0, Length))) << Length;
	}
	EXPECT_FALSE(RigLeftAlone(SmallRig));
}

TEST(ZnFaceDataDecoderErrorTests, RootOfAnotherKindLeavesTheRecordUnchanged)
{
	for (const char* Json : {"{}", "1", "\"[]\"", "null", "true"})
	{
		EXPECT_TRUE(FaceLeftAlone(Json)) << Json;
	}
	for (const char* Json : {"[]", "1", "\"{}\"", "null", "[{}]"})
	{
		EXPECT_TRUE(RigLeftAlone(Json)) << Json;
	}
}

TEST(ZnFaceDataDecoderErrorTests, NonNumberWeightsReadAsZero)
{
	const FZnFaceData Face = Decoded("[[\"50\",true,null,[1],{\"a\":1},60]]");
	for (int32 Channel = 0; Channel < 5; ++Channel)
	{
		ASSERT_EQ(Face.CurveFrames[Channel].Num(), 1);
		EXPECT_EQ(Face.CurveFrames[Channel][0], 0.0f) << Channel;
		EXPECT_EQ(Face.Curves[Channel].FloatCurve.Keys[0].Value, 0.0f);
	}
	EXPECT_EQ(Face.CurveFrames[5][0], 60.0f * 0.01f);
}

TEST(ZnFaceDataDecoderErrorTests, FramesThatAreNotArraysKeyNothingButStillCount)
{
	const FZnFaceData Face = Decoded("[[10],5,\"x\",{},null,[20]]");
	EXPECT_EQ(Face.totalTime, float(6.0 / 30.0));
	ASSERT_EQ(Face.CurveFrames[0].Num(), 2);
	EXPECT_EQ(Face.Curves[0].FloatCurve.Keys[1].Time, float(5.0 / 30.0));
	EXPECT_EQ(Face.CurveFrames[1].Num(), 0);
}

TEST(ZnFaceDataDecoderErrorTests, NaNAndHugeNumbersFailTheWholeText)
{
	EXPECT_TRUE(FaceLeftAlone("[[NaN]]"));
	EXPECT_TRUE(FaceLeftAlone("[[1e400]]"));
	EXPECT_TRUE(FaceLeftAlone("[[-1e400]]"));
	EXPECT_TRUE(FaceLeftAlone("[[Infinity]]"));
	EXPECT_TRUE(RigLeftAlone("{\"curve_names\":[\"a\"],\"curve_data\":[[1e999]]}"));
	// Large but representable numbers clamp like any other.
	const FZnFaceData Face = Decoded("[[1e300,-1e300]]");
	EXPECT_EQ(Face.CurveFrames[0][0], 1.0f);
	EXPECT_EQ(Face.CurveFrames[1][0], 0.0f);
}

TEST(ZnFaceDataDecoderErrorTests, DeepNestingAndWhitespaceFloodsAreHarmless)
{
	EXPECT_TRUE(FaceLeftAlone(std::string(100000, '[') + std::string(100000, ']')));
	EXPECT_TRUE(FaceLeftAlone(std::string(1 << 20, ' ')));
	const FZnFaceData Face = Decoded(std::string(1 << 20, '\t') + SmallFace + std::string(1 << 20, '\n'));
	EXPECT_EQ(Face.CurveFrames[1].Num(), 3);
	// Nested arrays inside a frame are values that are not numbers.
	const FZnFaceData Nested = Decoded("[[[[[[[1]]]]]]]");
	EXPECT_EQ(Nested.CurveFrames[0][0], 0.0f);
}

TEST(ZnFaceDataDecoderErrorTests, ControlRigFrameLongerThanTheNamesDropsTheSurplus)
{
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(
		Text("{\"curve_names\":[\"a\"],\"curve_data\":[[1,2,3],[4]]}"), Face);
	ASSERT_EQ(Face.Curves.Num(), 1);
	ASSERT_EQ(Face.CurveFrames[0].Num(), 2);
	EXPECT_EQ(Face.CurveFrames[0][1], 4.0f);
	EXPECT_EQ(Face.totalTime, float(2.0 / 30.0));
}

TEST(ZnFaceDataDecoderErrorTests, ControlRigWrongKindsReadAsEmptyOrZero)
{
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(
		Text("{\"curve_names\":[1,null,\"c\"],\"curve_data\":[[\"1\",true,2]]}"), Face);
	ASSERT_EQ(Face.CurveNames.Num(), 3);
	EXPECT_TRUE(Face.CurveNames[0].IsEmpty());
	EXPECT_TRUE(Face.CurveNames[1].IsEmpty());
	EXPECT_EQ(Face.CurveFrames[0][0], 0.0f);
	EXPECT_EQ(Face.CurveFrames[1][0], 0.0f);
	EXPECT_EQ(Face.CurveFrames[2][0], 2.0f);

	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(Text("{\"curve_names\":\"a\",\"curve_data\":{}}"), Face);
	EXPECT_EQ(Face.CurveNames.Num(), 0);
	EXPECT_EQ(Face.totalTime, 0.0f);
}

TEST(ZnFaceDataDecoderErrorTests, ControlRigFramesWithoutNamesKeyNothing)
{
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(Text("{\"curve_data\":[[1,2],[3]]}"), Face);
	EXPECT_EQ(Face.Curves.Num(), 0);
	EXPECT_EQ(Face.totalTime, float(2.0 / 30.0));
}

TEST(ZnFaceDataDecoderErrorTests, DamageAnywhereInAClipOfManyWindowsGetsTheTreeReadersVerdict)
{
	// About 40 KB: five windows, each read straight from its text until the damage, then by the
	// parser from there.
	const std::string Clip = FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace({90, 9, true}));
	const char Bytes[] = {'0', '5', '-', '.', ',', '[', ']', 'e', ' ', '"', '{', 'x', '\0', '\xC3'};
	std::mt19937_64 Random(3);
	int32 Accepted = 0;
	for (int32 Trial = 0; Trial < 1500; ++Trial)
	{
		std::string Damaged = Clip;
		const size_t Position = size_t(Random() % Clip.size());
		const char Byte = Bytes[Random() % sizeof(Bytes)];
		switch (Trial % 3)
		{
			case 0:
				Damaged[Position] = Byte;
				break;
			case 1:
				Damaged.erase(Position, 1);
				break;
			default:
				Damaged.insert(Position, 1, Byte);
				break;
		}
		FZnFaceData Model;
		const bool bModelReads = ZnFaceModel::Decode(Text(Damaged), Model);
		FZnFaceData Face = SentinelFace();
		UZnDM_BpFuncLib::ParseJsonToFacedata(Text(Damaged), Face);
		if (bModelReads)
		{
			ASSERT_EQ(ZnFaceModel::Difference(Face, Model), "") << "trial " << Trial << " at byte " << Position;
			++Accepted;
		}
		else
		{
			ASSERT_TRUE(SameFace(Face, SentinelFace())) << "trial " << Trial << " at byte " << Position;
		}
	}
	// Both verdicts are well represented.
	EXPECT_GT(Accepted, 300);
	EXPECT_LT(Accepted, 1200);
}

TEST(ZnFaceDataDecoderErrorTests, FramesThatAreNotArraysDoNotMakeTheChannelsReserveMore)
{
	// Half a megabyte of scalar frames: the first window counts many frames, but none of them can
	// hold weights, and the channels are sized by what the text could hold at most.
	std::string Json = "[0";
	while (Json.size() < (size_t(1) << 19))
	{
		Json += ",0";
	}
	Json += "]";
	const FZnFaceData Face = Decoded(Json);
	ASSERT_EQ(Face.CurveFrames.Num(), 51);
	EXPECT_EQ(Face.CurveFrames[0].Num(), 0);
	EXPECT_FLOAT_EQ(Face.totalTime, float(Json.size() / 2) / 30.0f);
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		// A frame of 51 weights takes at least 102 characters.
		EXPECT_LE(Face.CurveFrames[Channel].Max(), int32(Json.size() / 102 + 8));
		EXPECT_LE(Face.Curves[Channel].FloatCurve.Keys.Max(), int32(Json.size() / 102 + 8));
	}
}
