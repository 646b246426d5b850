#include "ZnFaceDataV2Decoder.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnDecodeTestHelpers.h"

#include <gtest/gtest.h>

#include <string>

using namespace ZnDecodeTest;

namespace
{
// Frame n: channel j holds n + j percent.
std::string Frame(uint64 FrameIndex, int32 Channels = 3)
{
	std::string Text = "{\"frameIndex\":" + std::to_string(FrameIndex) + ",\"bs\":[";
	for (int32 Channel = 0; Channel < Channels; ++Channel)
	{
		Text += (Channel ? "," : "") + std::to_string(FrameIndex + Channel);
	}
	return Text + "]}";
}

float StreamTime(uint64 FrameIndex)
{
	return float(double(FrameIndex - 1) * (1.0 / 30.0));
}

float Weight(double Percent)
{
	double W = Percent * 0.01;
	W = W >= 0.0 ? (W < 1.0 ? W : 1.0) : 0.0;
	return float(W);
}

void Stream(std::initializer_list<uint64> FrameIndices)
{
	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	for (uint64 FrameIndex : FrameIndices)
	{
		UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text(Frame(FrameIndex)));
	}
}

FZnFaceData End(float& TotalTime)
{
	FZnFaceData Face = SentinelFace();
	UZnDM_BpFuncLib::EndParseJsonToFacedataV2(Face, TotalTime);
	return Face;
}
} // namespace

TEST(ZnFaceDataV2DecoderTests, ThreeFramesKeyAtTheirTimesAndLastTwoThirtieths)
{
	Stream({1, 2, 3});
	float TotalTime = -1.0f;
	const FZnFaceData Face = End(TotalTime);
	EXPECT_NE(Face.id, 4242);
	EXPECT_EQ(TotalTime, float(2.0 / 30.0));
	EXPECT_EQ(Face.totalTime, float(2.0 / 30.0));
	EXPECT_EQ(Face.CurveNames.Num(), 0);
	ASSERT_EQ(Face.Curves.Num(), 52);
	ASSERT_EQ(Face.CurveFrames.Num(), 52);
	for (int32 Channel = 0; Channel < 3; ++Channel)
	{
		const TArray<FRichCurveKey>& Keys = Face.Curves[Channel].FloatCurve.Keys;
		ASSERT_EQ(Keys.Num(), 3);
		for (uint64 FrameIndex = 1; FrameIndex <= 3; ++FrameIndex)
		{
			EXPECT_EQ(Keys[FrameIndex - 1].Time, StreamTime(FrameIndex));
			EXPECT_EQ(Keys[FrameIndex - 1].Value, Weight(double(FrameIndex + Channel)));
			EXPECT_EQ(Face.CurveFrames[Channel][FrameIndex - 1], Weight(double(FrameIndex + Channel)));
		}
	}
	EXPECT_EQ(Face.Curves[3].FloatCurve.Keys.Num(), 0);
	EXPECT_EQ(Face.Curves[51].FloatCurve.Keys.Num(), 0);
}

TEST(ZnFaceDataV2DecoderTests, FramesOutOfOrderGiveTheSameCurvesAsInOrder)
{
	Stream({1, 2, 3});
	float InOrderTime = 0.0f;
	const FZnFaceData InOrder = End(InOrderTime);
	Stream({3, 1, 2});
	float ShuffledTime = 0.0f;
	const FZnFaceData Shuffled = End(ShuffledTime);
	EXPECT_EQ(ShuffledTime, float(2.0 / 30.0));
	EXPECT_EQ(ShuffledTime, InOrderTime);
	for (int32 Channel = 0; Channel < 52; ++Channel)
	{
		EXPECT_TRUE(SameRichCurve(Shuffled.Curves[Channel].FloatCurve, InOrder.Curves[Channel].FloatCurve)) << Channel;
	}
	// The weight lists keep arrival order.
	EXPECT_EQ(Shuffled.CurveFrames[0][0], Weight(3.0));
	EXPECT_EQ(Shuffled.CurveFrames[0][1], Weight(1.0));
	EXPECT_EQ(Shuffled.CurveFrames[0][2], Weight(2.0));
}

TEST(ZnFaceDataV2DecoderTests, WeightsArePercentInDoubleClampedThenNarrowed)
{
	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text("{\"frameIndex\":1,\"bs\":[250,-5,33.3,100,0,99.99999]}"));
	float TotalTime = 0.0f;
	const FZnFaceData Face = End(TotalTime);
	EXPECT_EQ(Face.CurveFrames[0][0], 1.0f);
	EXPECT_EQ(Face.CurveFrames[1][0], 0.0f);
	EXPECT_EQ(Face.CurveFrames[2][0], float(33.3 * 0.01));
	EXPECT_EQ(Face.CurveFrames[3][0], 1.0f);
	EXPECT_EQ(Face.CurveFrames[4][0], 0.0f);
	EXPECT_EQ(Face.CurveFrames[5][0], float(99.99999 * 0.01));
	EXPECT_EQ(Face.Curves[0].FloatCurve.Keys[0].Value, 1.0f);
	EXPECT_EQ(Face.Curves[1].FloatCurve.Keys[0].Value, 0.0f);
	EXPECT_EQ(TotalTime, 0.0f);
}

TEST(ZnFaceDataV2DecoderTests, FrameWithoutFrameIndexChangesNothing)
{
	Stream({1, 2});
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text("{\"bs\":[100,100,100]}"));
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text("{\"FrameIndex\":9,\"bs\":[100]}"));
	float TotalTime = 0.0f;
	const FZnFaceData Face = End(TotalTime);
	// The second text does count: member names match without regard to case.
	EXPECT_EQ(Face.CurveFrames[0].Num(), 3);
	EXPECT_EQ(Face.CurveFrames[1].Num(), 2);
	EXPECT_EQ(TotalTime, StreamTime(9));
}

TEST(ZnFaceDataV2DecoderTests, EndTwiceGivesEqualContentsAndLaterFramesContinue)
{
	Stream({1, 2});
	float FirstTime = 0.0f;
	float SecondTime = 0.0f;
	const FZnFaceData First = End(FirstTime);
	const FZnFaceData Second = End(SecondTime);
	EXPECT_TRUE(SameFaceContents(First, Second));
	EXPECT_EQ(FirstTime, SecondTime);
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text(Frame(5)));
	float ThirdTime = 0.0f;
	const FZnFaceData Third = End(ThirdTime);
	EXPECT_EQ(Third.CurveFrames[0].Num(), 3);
	EXPECT_EQ(ThirdTime, StreamTime(5));
	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	float FreshTime = 1.0f;
	const FZnFaceData Fresh = End(FreshTime);
	EXPECT_EQ(Fresh.Curves.Num(), 52);
	EXPECT_EQ(Fresh.CurveFrames[0].Num(), 0);
	EXPECT_EQ(FreshTime, 0.0f);
}

TEST(ZnFaceDataV2DecoderTests, FrameWithoutWeightsOnlyMovesTheLength)
{
	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text("{\"frameIndex\":4}"));
	float TotalTime = 0.0f;
	const FZnFaceData Face = End(TotalTime);
	EXPECT_EQ(Face.CurveFrames[0].Num(), 0);
	EXPECT_EQ(TotalTime, StreamTime(4));
}

TEST(ZnFaceDataV2DecoderTests, FrameIndexZeroWrapsToAnEnormousTime)
{
	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text(Frame(0)));
	float TotalTime = 0.0f;
	const FZnFaceData Face = End(TotalTime);
	const float Expected = float(double(~uint64(0)) * (1.0 / 30.0));
	EXPECT_EQ(TotalTime, Expected);
	EXPECT_EQ(Face.Curves[0].FloatCurve.Keys[0].Time, Expected);
}

TEST(ZnFaceDataV2DecoderTests, ResponseOfNoFramesGivesFiftyOneEmptyCurves)
{
	FZnFaceData Face = SentinelFace();
	float TotalTime = 5.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(Text("[]"), Face, TotalTime);
	EXPECT_NE(Face.id, 4242);
	EXPECT_EQ(TotalTime, 0.0f);
	EXPECT_EQ(Face.totalTime, 0.0f);
	EXPECT_EQ(Face.CurveNames.Num(), 0);
	ASSERT_EQ(Face.Curves.Num(), 51);
	ASSERT_EQ(Face.CurveFrames.Num(), 51);
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		EXPECT_EQ(Face.Curves[Channel].FloatCurve.Keys.Num(), 0);
	}
}

TEST(ZnFaceDataV2DecoderTests, ResponseInAnyOrderMatchesTheStreamOnTheFirstFiftyOneChannels)
{
	std::string Json = "[";
	for (uint64 FrameIndex : {4, 2, 1, 3, 6, 5})
	{
		Json += (Json.size() > 1 ? "," : "") + Frame(FrameIndex, 51);
	}
	Json += "]";
	FZnFaceData FromResponse;
	float ResponseTime = 0.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(Text(Json), FromResponse, ResponseTime);
	EXPECT_EQ(ResponseTime, StreamTime(6));
	EXPECT_EQ(FromResponse.totalTime, StreamTime(6));

	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	for (uint64 FrameIndex = 1; FrameIndex <= 6; ++FrameIndex)
	{
		UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text(Frame(FrameIndex, 51)));
	}
	float StreamedTime = 0.0f;
	const FZnFaceData Streamed = End(StreamedTime);
	EXPECT_EQ(StreamedTime, ResponseTime);
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		EXPECT_TRUE(SameRichCurve(FromResponse.Curves[Channel].FloatCurve, Streamed.Curves[Channel].FloatCurve))
			<< Channel;
		ASSERT_EQ(FromResponse.CurveFrames[Channel].Num(), 6);
	}
	EXPECT_EQ(FromResponse.CurveFrames[0][0], Weight(4.0));
}

TEST(ZnFaceDataV2DecoderTests, ResponseOfEmptyOrUnparsableTextLeavesOutputsAlone)
{
	for (const char* Json : {"", "{}", "[", "1"})
	{
		FZnFaceData Face = SentinelFace();
		float TotalTime = 12.5f;
		UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(Text(Json), Face, TotalTime);
		EXPECT_TRUE(SameFace(Face, SentinelFace())) << Json;
		EXPECT_EQ(TotalTime, 12.5f) << Json;
	}
}

TEST(ZnFaceDataV2DecoderTests, ResponseDoesNotTouchTheStream)
{
	Stream({1});
	FZnFaceData Ignored;
	float IgnoredTime = 0.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(Text("[" + Frame(9) + "]"), Ignored, IgnoredTime);
	float TotalTime = 0.0f;
	const FZnFaceData Face = End(TotalTime);
	EXPECT_EQ(Face.CurveFrames[0].Num(), 1);
	EXPECT_EQ(TotalTime, 0.0f);
}
