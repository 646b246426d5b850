#include "ZnFaceDataV2Decoder.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnDecodeTestHelpers.h"

#include <gtest/gtest.h>

#include <string>

using namespace ZnDecodeTest;

namespace
{
const std::string GoodFrame = "{\"frameIndex\":3,\"bs\":[10,20,30]}";

// Streams frame 1 and then Json; true when Json left no trace.
bool FrameIsSkipped(const std::string& Json)
{
	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text("{\"frameIndex\":1,\"bs\":[1,2,3]}"));
	FZnFaceData Before;
	float BeforeTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToFacedataV2(Before, BeforeTime);
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text(Json));
	FZnFaceData After;
	float AfterTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToFacedataV2(After, AfterTime);
	return SameFaceContents(Before, After) && BeforeTime == AfterTime;
}
} // namespace

TEST(ZnFaceDataV2DecoderErrorTests, FrameCutAtAnyByteIsSkipped)
{
	for (size_t Length = 0; Length < GoodFrame.size(); ++Length)
	{
		EXPECT_TRUE(FrameIsSkipped(GoodFrame.substr(0, Length))) << Length;
	}
	EXPECT_FALSE(FrameIsSkipped(GoodFrame));
}

TEST(ZnFaceDataV2DecoderErrorTests, UnusableFrameIndexSkipsTheFrame)
{
	for (const char* Index : {"-1", "\"3\"", "null", "false", "[3]", "{}", "1e30"})
	{
		EXPECT_TRUE(FrameIsSkipped("{\"frameIndex\":" + std::string(Index) + ",\"bs\":[10]}")) << Index;
	}
}

TEST(ZnFaceDataV2DecoderErrorTests, TextsThatAreNotOneObjectAreIgnored)
{
	for (const std::string& Json : {std::string(""), "[" + GoodFrame + "]", GoodFrame + GoodFrame, std::string("7"),
			 std::string(1 << 20, ' '), std::string(100000, '['), std::string("{\"frameIndex\":3,\"bs\":[NaN]}"),
			 std::string("{\"frameIndex\":3,\"bs\":[1e400]}")})
	{
		EXPECT_TRUE(FrameIsSkipped(Json)) << Json.substr(0, 40);
	}
}

TEST(ZnFaceDataV2DecoderErrorTests, WeightsPastTheChannelCountAreIgnored)
{
	std::string Long = "{\"frameIndex\":2,\"bs\":[";
	for (int32 Channel = 0; Channel < 60; ++Channel)
	{
		Long += (Channel ? ",50" : "50");
	}
	Long += "]}";
	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text(Long));
	FZnFaceData Face;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToFacedataV2(Face, TotalTime);
	ASSERT_EQ(Face.Curves.Num(), 52);
	EXPECT_EQ(Face.CurveFrames[51].Num(), 1);
	EXPECT_EQ(Face.Curves[51].FloatCurve.Keys.Num(), 1);

	FZnFaceData Response;
	UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(Text("[" + Long + "]"), Response, TotalTime);
	ASSERT_EQ(Response.Curves.Num(), 51);
	EXPECT_EQ(Response.CurveFrames[50].Num(), 1);
}

TEST(ZnFaceDataV2DecoderErrorTests, NonNumberWeightsReadAsZeroAndBsOfAnotherKindAsNoWeights)
{
	UZnDM_BpFuncLib::BeginParseJsonToFacedataV2();
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text("{\"frameIndex\":1,\"bs\":[\"50\",true,null,{},[]]}"));
	UZnDM_BpFuncLib::ParseJsonToFacedataV2(Text("{\"frameIndex\":2,\"bs\":{\"0\":50}}"));
	FZnFaceData Face;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToFacedataV2(Face, TotalTime);
	for (int32 Channel = 0; Channel < 5; ++Channel)
	{
		ASSERT_EQ(Face.CurveFrames[Channel].Num(), 1);
		EXPECT_EQ(Face.CurveFrames[Channel][0], 0.0f);
	}
	EXPECT_EQ(TotalTime, float(1.0 / 30.0));
}

TEST(ZnFaceDataV2DecoderErrorTests, FramesBeforeAnyBeginFindNoChannels)
{
	FZnFaceDataV2Decoder Fresh;
	EXPECT_TRUE(Fresh.AddFrameText(Text(GoodFrame)));
	FZnFaceData Face;
	float TotalTime = 0.0f;
	Fresh.Assemble(Face, TotalTime);
	EXPECT_EQ(Face.Curves.Num(), 0);
	EXPECT_EQ(Face.CurveFrames.Num(), 0);
	// Only the length moves.
	EXPECT_EQ(TotalTime, float(2.0 / 30.0));
}

TEST(ZnFaceDataV2DecoderErrorTests, ResponseSkipsElementsThatAreNotUsableFrames)
{
	FZnFaceData Face;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(
		Text("[1,\"x\",null,[],{},{\"frameIndex\":-2,\"bs\":[1]}," + GoodFrame + "]"), Face, TotalTime);
	EXPECT_EQ(Face.CurveFrames[0].Num(), 1);
	EXPECT_EQ(TotalTime, float(2.0 / 30.0));
}

TEST(ZnFaceDataV2DecoderErrorTests, ResponseCutAtAnyByteLeavesOutputsAlone)
{
	const std::string Json = "[" + GoodFrame + "," + GoodFrame + "]";
	for (size_t Length = 0; Length < Json.size(); ++Length)
	{
		FZnFaceData Face = SentinelFace();
		float TotalTime = 12.5f;
		UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(Text(Json.substr(0, Length)), Face, TotalTime);
		EXPECT_TRUE(SameFace(Face, SentinelFace())) << Length;
		EXPECT_EQ(TotalTime, 12.5f);
	}
}
