#include "ZnBodyDataV2Decoder.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnDecodeTestHelpers.h"

#include <gtest/gtest.h>

#include <string>

using namespace ZnDecodeTest;

namespace
{
const std::string GoodFrame =
	"{\"frameIndex\":2,\"pos\":{\"Hips\":[0.1,1,0.2]},\"rot\":{\"Hips\":[0,0,0,1],\"Spine\":[0.1,0,0,1]}}";

TArray<FString> Bones()
{
	TArray<FString> Result;
	Result.Add(TEXT("Hips"));
	Result.Add(TEXT("Spine"));
	return Result;
}

// Streams a valid frame 1 and then Json; true when Json left no trace in the stream.
bool FrameIsSkipped(const FString& Json)
{
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(
		Text("{\"frameIndex\":1,\"pos\":{\"Hips\":[0,1,0]},\"rot\":{\"Hips\":[0,0,0,1],\"Spine\":[0,0,0,1]}}"),
		Bones());
	FZnBodyData Before;
	float BeforeTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Before, BeforeTime);
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Json, Bones());
	FZnBodyData After;
	float AfterTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(After, AfterTime);
	return SameBodyContents(Before, After) && BeforeTime == AfterTime && After.BoneFrames[0].Num() == 1;
}

bool FrameIsSkipped(const std::string& Json)
{
	return FrameIsSkipped(Text(Json));
}

std::string Replaced(std::string Text, const std::string& From, const std::string& To)
{
	const size_t Position = Text.find(From);
	EXPECT_NE(Position, std::string::npos) << From;
	return Text.replace(Position, From.size(), To);
}
} // namespace

TEST(ZnBodyDataV2DecoderErrorTests, TheGoodFrameIsTaken)
{
	EXPECT_FALSE(FrameIsSkipped(GoodFrame));
}

TEST(ZnBodyDataV2DecoderErrorTests, FrameCutAtAnyByteIsSkipped)
{
	for (size_t Length = 0; Length < GoodFrame.size(); ++Length)
	{
		EXPECT_TRUE(FrameIsSkipped(GoodFrame.substr(0, Length))) << Length;
	}
}

TEST(ZnBodyDataV2DecoderErrorTests, FrameWithoutPosHipsOrRotIsSkippedWhole)
{
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "\"pos\"", "\"pas\"")));
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "{\"Hips\":[0.1", "{\"Hops\":[0.1")));
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "\"rot\"", "\"rat\"")));
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "\"pos\":{\"Hips\":[0.1,1,0.2]}", "\"pos\":[0.1,1,0.2]")));
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "\"rot\":{", "\"rot\":[{") + "]"));
}

TEST(ZnBodyDataV2DecoderErrorTests, FrameMissingARequestedBoneIsSkippedWhole)
{
	// Hips would be readable, but a frame is taken all or nothing.
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "\"Spine\":", "\"Spina\":")));
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "\"Spine\":[0.1,0,0,1]", "\"Spine\":{\"x\":0}")));
}

TEST(ZnBodyDataV2DecoderErrorTests, ShortArraysAreSkippedAndLongOnesReadTheirFront)
{
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "[0.1,1,0.2]", "[0.1,1]")));
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "[0.1,0,0,1]", "[0.1,0,0]")));
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "[0.1,0,0,1]", "[]")));
	EXPECT_FALSE(FrameIsSkipped(Replaced(GoodFrame, "[0.1,0,0,1]", "[0.1,0,0,1,9,9]")));
	EXPECT_FALSE(FrameIsSkipped(Replaced(GoodFrame, "[0.1,1,0.2]", "[0.1,1,0.2,7]")));
}

TEST(ZnBodyDataV2DecoderErrorTests, UnusableFrameIndexSkipsTheFrame)
{
	for (const char* Index : {"-1", "\"2\"", "null", "true", "[2]", "{}", "1e300", "18446744073709551616.0"})
	{
		EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "\"frameIndex\":2", "\"frameIndex\":" + std::string(Index))))
			<< Index;
	}
	EXPECT_FALSE(FrameIsSkipped(Replaced(GoodFrame, "\"frameIndex\":2", "\"frameIndex\":18446744073709551615")));
}

TEST(ZnBodyDataV2DecoderErrorTests, TextsThatAreNotOneObjectAreIgnored)
{
	EXPECT_TRUE(FrameIsSkipped(FString()));
	EXPECT_TRUE(FrameIsSkipped(std::string("[") + GoodFrame + "]"));
	EXPECT_TRUE(FrameIsSkipped(GoodFrame + GoodFrame));
	EXPECT_TRUE(FrameIsSkipped(std::string("null")));
	EXPECT_TRUE(FrameIsSkipped(std::string(1 << 20, ' ')));
	EXPECT_TRUE(FrameIsSkipped(std::string(100000, '{')));
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "[0.1,0,0,1]", "[NaN,0,0,1]")));
	EXPECT_TRUE(FrameIsSkipped(Replaced(GoodFrame, "[0.1,0,0,1]", "[1e400,0,0,1]")));
}

TEST(ZnBodyDataV2DecoderErrorTests, NonNumbersInsideTheArraysReadAsZero)
{
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text("{\"frameIndex\":1,\"pos\":{\"Hips\":[\"1\",true,null]},\"rot\":{"
												"\"Hips\":[\"1\",{},[],0],\"Spine\":[0,0,0,1]}}"),
		Bones());
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	ASSERT_EQ(Body.BoneFrames.Num(), 2);
	EXPECT_TRUE(SameQuat(Body.BoneFrames[0][0], FQuat(0.0, 0.0, 0.0, 1.0)));
	EXPECT_EQ(Body.RootPositionCurve.FloatCurves[0].Keys[0].Value, 0.0f);
	EXPECT_EQ(Body.RootPositionCurve.FloatCurves[2].Keys[0].Value, 0.0f);
}

TEST(ZnBodyDataV2DecoderErrorTests, ResponseSkipsElementsThatAreNotUsableFrames)
{
	const std::string Json = "[1,\"x\",null,[]," + Replaced(GoodFrame, "\"rot\"", "\"rat\"") + "," + GoodFrame + ",{}]";
	FZnBodyData Body = SentinelBody();
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(Text(Json), Bones(), Body, TotalTime);
	ASSERT_EQ(Body.BoneNames.Num(), 2);
	EXPECT_EQ(Body.BoneFrames[0].Num(), 1);
	EXPECT_EQ(Body.BoneCurves[1].Keys.Num(), 1);
	EXPECT_EQ(TotalTime, float(1.0 / 30.0));
}

TEST(ZnBodyDataV2DecoderErrorTests, ResponseCutAtAnyByteWritesAnEmptyRecord)
{
	const std::string Json = "[" + GoodFrame + "]";
	for (size_t Length = 1; Length < Json.size(); ++Length)
	{
		FZnBodyData Body = SentinelBody();
		float TotalTime = 12.5f;
		UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(Text(Json.substr(0, Length)), Bones(), Body, TotalTime);
		EXPECT_EQ(Body.BoneNames.Num(), 0) << Length;
		EXPECT_EQ(TotalTime, 0.0f) << Length;
	}
}

TEST(ZnBodyDataV2DecoderErrorTests, FramesBeforeAnyBeginAccumulateInAFreshState)
{
	FZnBodyDataV2Decoder Fresh;
	EXPECT_TRUE(Fresh.AddFrameText(Text(GoodFrame), Bones()));
	FZnBodyData Body;
	float TotalTime = 0.0f;
	Fresh.Assemble(Body, TotalTime);
	EXPECT_EQ(Body.BoneNames.Num(), 2);
	EXPECT_EQ(TotalTime, float(1.0 / 30.0));
}
