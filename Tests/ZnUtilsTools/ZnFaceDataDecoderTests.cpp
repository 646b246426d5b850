#include "ZnFaceDataDecoder.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnDecodeTestHelpers.h"
#include "ZnFaceModel.h"
#include "ZnHuman_Skeleton.h"
#include "ZnJsonWindowReader.h"
#include "ZnMotionGenerator.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace ZnDecodeTest;

namespace
{
// Frames of Channels weights: frame i, channel j holds (i + j) mod 101 percent.
std::string Frames(int32 FrameCount, int32 Channels)
{
	std::string Text = "[";
	for (int32 Frame = 0; Frame < FrameCount; ++Frame)
	{
		Text += Frame ? ",[" : "[";
		for (int32 Channel = 0; Channel < Channels; ++Channel)
		{
			Text += (Channel ? "," : "") + std::to_string((Frame + Channel) % 101);
		}
		Text += "]";
	}
	return Text + "]";
}

float Weight(float Percent)
{
	float W = Percent * 0.01f;
	return !(W >= 0.0f) ? 0.0f : (W >= 1.0f ? 1.0f : W);
}

FZnFaceData Decoded(const std::string& Json)
{
	FZnFaceData Face = SentinelFace();
	UZnDM_BpFuncLib::ParseJsonToFacedata(Text(Json), Face);
	return Face;
}
} // namespace

TEST(ZnFaceDataDecoderTests, NoFramesGiveFiftyOneEmptyCurvesWithNames)
{
	const FZnFaceData Face = Decoded("[]");
	EXPECT_NE(Face.id, 4242);
	EXPECT_EQ(Face.totalTime, 0.0f);
	ASSERT_EQ(Face.CurveNames.Num(), 51);
	ASSERT_EQ(Face.CurveFrames.Num(), 51);
	ASSERT_EQ(Face.Curves.Num(), 51);
	const ZnHuman_Skeleton Skeleton;
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		EXPECT_TRUE(Face.CurveNames[Channel].Equals(Skeleton.FaceCurveNames[Channel], ESearchCase::CaseSensitive));
		EXPECT_EQ(Face.CurveFrames[Channel].Num(), 0);
		EXPECT_EQ(Face.Curves[Channel].FloatCurve.Keys.Num(), 0);
	}
	EXPECT_TRUE(Face.CurveNames[15].Equals(TEXT("JawLeft"), ESearchCase::CaseSensitive));
}

TEST(ZnFaceDataDecoderTests, RecommendLeavesNamesEmptyAndReturnsTheLength)
{
	FZnFaceData Face = SentinelFace();
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataRecommend(Text(Frames(3, 51)), Face, TotalTime);
	EXPECT_EQ(Face.CurveNames.Num(), 0);
	EXPECT_EQ(Face.Curves.Num(), 51);
	EXPECT_EQ(TotalTime, float(3.0 / 30.0));
	EXPECT_EQ(Face.totalTime, TotalTime);
	// Apart from the names it is the same decode.
	FZnFaceData Named = Decoded(Frames(3, 51));
	Named.CurveNames.Reset();
	EXPECT_TRUE(SameFaceContents(Face, Named));
}

TEST(ZnFaceDataDecoderTests, OneFrameKeysEveryChannelOnceAtTimeZero)
{
	const FZnFaceData Face = Decoded(Frames(1, 51));
	EXPECT_EQ(Face.totalTime, float(1.0 / 30.0));
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		ASSERT_EQ(Face.Curves[Channel].FloatCurve.Keys.Num(), 1);
		EXPECT_EQ(Face.Curves[Channel].FloatCurve.Keys[0].Time, 0.0f);
		EXPECT_EQ(Face.Curves[Channel].FloatCurve.Keys[0].Value, Weight(float(Channel)));
		ASSERT_EQ(Face.CurveFrames[Channel].Num(), 1);
		EXPECT_EQ(Face.CurveFrames[Channel][0], Weight(float(Channel)));
	}
}

TEST(ZnFaceDataDecoderTests, WeightsArePercentClampedToUnitRange)
{
	const FZnFaceData Face = Decoded("[[150,-20,50,100,0,33.3,-0,1e-300,99.99999]]");
	EXPECT_EQ(Face.CurveFrames[0][0], 1.0f);
	EXPECT_EQ(Face.CurveFrames[1][0], 0.0f);
	EXPECT_EQ(Face.CurveFrames[2][0], 0.5f);
	EXPECT_EQ(Face.CurveFrames[3][0], 1.0f);
	EXPECT_EQ(Face.CurveFrames[4][0], 0.0f);
	// Single precision: the percent is narrowed first, then multiplied by the float 0.01.
	EXPECT_EQ(Face.CurveFrames[5][0], 33.3f * 0.01f);
	EXPECT_EQ(Face.CurveFrames[6][0], 0.0f);
	EXPECT_EQ(Face.CurveFrames[7][0], 0.0f);
	EXPECT_EQ(Face.CurveFrames[8][0], 99.99999f * 0.01f);
	EXPECT_EQ(Face.Curves[0].FloatCurve.Keys[0].Value, 1.0f);
	EXPECT_EQ(Face.Curves[1].FloatCurve.Keys[0].Value, 0.0f);
	EXPECT_EQ(Face.Curves[2].FloatCurve.Keys[0].Value, 0.5f);
}

TEST(ZnFaceDataDecoderTests, PositionsPastFiftyOneAreIgnoredAndShortFramesKeyFewerChannels)
{
	const FZnFaceData Long = Decoded(Frames(1, 60));
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		EXPECT_EQ(Long.Curves[Channel].FloatCurve.Keys.Num(), 1);
	}
	EXPECT_EQ(Long.Curves.Num(), 51);

	const std::string Mixed = "[" + Frames(1, 51).substr(1, Frames(1, 51).size() - 2) + "," +
		Frames(1, 10).substr(1, Frames(1, 10).size() - 2) + "]";
	const FZnFaceData Face = Decoded(Mixed);
	EXPECT_EQ(Face.totalTime, float(2.0 / 30.0));
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		const int32 Expected = Channel < 10 ? 2 : 1;
		EXPECT_EQ(Face.CurveFrames[Channel].Num(), Expected) << Channel;
		EXPECT_EQ(Face.Curves[Channel].FloatCurve.Keys.Num(), Expected) << Channel;
	}
	EXPECT_EQ(Face.Curves[9].FloatCurve.Keys[1].Time, float(1.0 / 30.0));
}

TEST(ZnFaceDataDecoderTests, TopLevelObjectLeavesTheRecordUnchanged)
{
	EXPECT_TRUE(SameFace(Decoded("{}"), SentinelFace()));
	FZnFaceData Face = SentinelFace();
	float TotalTime = 12.5f;
	UZnDM_BpFuncLib::ParseJsonToFacedataRecommend(Text("{}"), Face, TotalTime);
	EXPECT_TRUE(SameFace(Face, SentinelFace()));
	EXPECT_EQ(TotalTime, 12.5f);
}

TEST(ZnFaceDataDecoderTests, EmptyTextLeavesTheRecordUnchanged)
{
	FZnFaceData Face = SentinelFace();
	float TotalTime = 12.5f;
	UZnDM_BpFuncLib::ParseJsonToFacedata(FString(), Face);
	EXPECT_TRUE(SameFace(Face, SentinelFace()));
	UZnDM_BpFuncLib::ParseJsonToFacedataRecommend(FString(), Face, TotalTime);
	EXPECT_TRUE(SameFace(Face, SentinelFace()));
	EXPECT_EQ(TotalTime, 12.5f);
}

TEST(ZnFaceDataDecoderTests, ThreeHundredFramesLastTenSecondsWithTheLastKeyOneFrameEarlier)
{
	const FZnFaceData Face = Decoded(Frames(300, 51));
	EXPECT_EQ(Face.totalTime, 10.0f);
	for (int32 Channel = 0; Channel < 51; ++Channel)
	{
		const TArray<FRichCurveKey>& Keys = Face.Curves[Channel].FloatCurve.Keys;
		ASSERT_EQ(Keys.Num(), 300);
		for (int32 Frame = 0; Frame < 300; ++Frame)
		{
			ASSERT_EQ(Keys[Frame].Time, float(double(Frame) * (1.0 / 30.0)));
			ASSERT_EQ(Keys[Frame].Value, Weight(float((Frame + Channel) % 101)));
			ASSERT_EQ(Face.CurveFrames[Channel][Frame], Keys[Frame].Value);
		}
	}
	EXPECT_EQ(Face.Curves[0].FloatCurve.Keys[299].Time, float(299.0 / 30.0));
}

TEST(ZnFaceDataDecoderTests, SameTextTwiceDiffersOnlyInId)
{
	const FZnFaceData First = Decoded(Frames(40, 51));
	const FZnFaceData Second = Decoded(Frames(40, 51));
	EXPECT_TRUE(SameFaceContents(First, Second));
	EXPECT_GE(Second.id, First.id);
}

TEST(ZnFaceDataDecoderTests, Utf8EntryMatchesTheStringEntry)
{
	const std::string Json = Frames(12, 51);
	FZnFaceData FromString;
	FZnFaceData FromBytes;
	ASSERT_TRUE(FZnFaceDataDecoder::Decode(Text(Json), FromString, true));
	ASSERT_TRUE(FZnFaceDataDecoder::DecodeUtf8(Json.data(), int64(Json.size()), FromBytes, true));
	EXPECT_TRUE(SameFaceContents(FromString, FromBytes));
}

TEST(ZnFaceDataDecoderTests, ControlRigKeysRawValuesUnderTheirNames)
{
	FZnFaceData Face = SentinelFace();
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(
		Text("{\"curve_names\":[\"CTRL_a\",\"CTRL_b\"],\"curve_data\":[[2.5,-1],[0.125,300]]}"), Face);
	EXPECT_NE(Face.id, 4242);
	ASSERT_EQ(Face.CurveNames.Num(), 2);
	EXPECT_TRUE(Face.CurveNames[0].Equals(TEXT("CTRL_a"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Face.CurveNames[1].Equals(TEXT("CTRL_b"), ESearchCase::CaseSensitive));
	ASSERT_EQ(Face.Curves.Num(), 2);
	ASSERT_EQ(Face.CurveFrames.Num(), 2);
	EXPECT_EQ(Face.CurveFrames[0][0], 2.5f);
	EXPECT_EQ(Face.CurveFrames[1][0], -1.0f);
	EXPECT_EQ(Face.CurveFrames[1][1], 300.0f);
	EXPECT_EQ(Face.Curves[0].FloatCurve.Keys[0].Value, 2.5f);
	EXPECT_EQ(Face.Curves[1].FloatCurve.Keys[0].Value, -1.0f);
	EXPECT_EQ(Face.Curves[0].FloatCurve.Keys[1].Value, 0.125f);
	EXPECT_EQ(Face.Curves[0].FloatCurve.Keys[1].Time, float(1.0 / 30.0));
	EXPECT_EQ(Face.totalTime, float(2.0 / 30.0));
}

TEST(ZnFaceDataDecoderTests, ControlRigWithoutMembersGivesAnEmptyRecord)
{
	FZnFaceData Face = SentinelFace();
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(Text("{}"), Face);
	EXPECT_NE(Face.id, 4242);
	EXPECT_EQ(Face.CurveNames.Num(), 0);
	EXPECT_EQ(Face.Curves.Num(), 0);
	EXPECT_EQ(Face.totalTime, 0.0f);
}

TEST(ZnFaceDataDecoderTests, ControlRigLengthCountsEveryFrame)
{
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(
		Text("{\"curve_names\":[\"a\"],\"curve_data\":[[1],[],7,[2]]}"), Face);
	EXPECT_EQ(Face.totalTime, float(4.0 / 30.0));
	ASSERT_EQ(Face.Curves[0].FloatCurve.Keys.Num(), 2);
	EXPECT_EQ(Face.Curves[0].FloatCurve.Keys[1].Time, float(3.0 / 30.0));
}

namespace
{
// A generated clip as producers write it: tight, no whitespace. 120 frames are about 50 KB,
// several windows.
std::string TightClip(int32 FrameCount, bool bOvershoot = false)
{
	return FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace({FrameCount, 5, bOvershoot}));
}

// The clip's frames, each as its own text.
std::vector<std::string> SplitFrames(const std::string& Clip)
{
	std::vector<std::string> Frames;
	size_t Start = 1;
	while (Start < Clip.size() && Clip[Start] == '[')
	{
		const size_t End = Clip.find(']', Start);
		Frames.push_back(Clip.substr(Start, End + 1 - Start));
		Start = End + 2;
	}
	return Frames;
}

std::string JoinFrames(const std::vector<std::string>& Frames)
{
	std::string Text = "[";
	for (size_t Index = 0; Index < Frames.size(); ++Index)
	{
		Text += (Index ? "," : "") + Frames[Index];
	}
	return Text + "]";
}

std::string ExpectDecodesLikeTheModel(const std::string& Json)
{
	FZnFaceData Model;
	if (!ZnFaceModel::Decode(Text(Json), Model))
	{
		return "the model refuses the text";
	}
	FZnFaceData Face = SentinelFace();
	UZnDM_BpFuncLib::ParseJsonToFacedata(Text(Json), Face);
	return ZnFaceModel::Difference(Face, Model);
}
} // namespace

TEST(ZnFaceDataDecoderTests, TightAndSpacedTextsOfOneClipDecodeAlike)
{
	const std::string Tight = TightClip(120, true);
	ASSERT_EQ(Tight.find(' '), std::string::npos);
	ASSERT_GT(Tight.size(), 5 * FZnJsonWindowReader::WindowBytesFor(Tight.size()));
	std::string Spaced;
	for (char Char : Tight)
	{
		Spaced += Char;
		Spaced += Char == ',' ? " " : "";
	}
	const FZnFaceData FromTight = Decoded(Tight);
	const FZnFaceData FromSpaced = Decoded(Spaced);
	EXPECT_TRUE(SameFaceContents(FromTight, FromSpaced));
	EXPECT_EQ(FromTight.CurveFrames[0].Num(), 120);
	EXPECT_EQ(ExpectDecodesLikeTheModel(Tight), "");
	EXPECT_EQ(ExpectDecodesLikeTheModel(Spaced), "");
}

TEST(ZnFaceDataDecoderTests, FramesOfOtherShapesAmongTightOnesDecodeAsTheTreeReaderReadsThem)
{
	const std::vector<std::string> Clip = SplitFrames(TightClip(120));
	ASSERT_EQ(Clip.size(), 120u);
	const char* const OddFrames[] = {"[1, 2,3]", " [4,5]", "null", "[]", "{\"a\":[1]}", "\"[1,2]\"",
		"[1e2,1E-3,-0,0.5,2.5e+1]", "[[1],2]", "[\"7\",true,null,8]", "[12345678901234567890,0.12345678901234567891]",
		"[0.1,0.2,0.3,0.4,0.5,0.6,0.7,0.8,0.9,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,"
		"27,28,29,30,31,32,33,34,35,36,37,38,39,40,41,42,43,44,45,46,47,48,49,50,51,52,53,54,55,56,57,58,59,60]",
		"[\n1\t]", "[-1,200,101,-0.0001]"};
	// Each odd frame in turn first, last and in the middle of windows.
	for (const char* Odd : OddFrames)
	{
		for (size_t Position : {size_t(0), size_t(1), size_t(17), size_t(60), size_t(119)})
		{
			std::vector<std::string> Frames = Clip;
			Frames[Position] = Odd;
			EXPECT_EQ(ExpectDecodesLikeTheModel(JoinFrames(Frames)), "") << Odd << " at frame " << Position;
		}
	}
	// Whitespace between frames, and around the root.
	EXPECT_EQ(ExpectDecodesLikeTheModel(" \n[" + Clip[0] + " , " + Clip[1] + "," + Clip[2] + "]\r\n"), "");
}
