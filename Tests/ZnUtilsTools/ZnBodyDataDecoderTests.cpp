#include "ZnBodyDataDecoder.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnDecodeTestHelpers.h"
#include "ZnMotionGenerator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace ZnDecodeTest;

namespace
{
// A clip of Bones bones with Frames frames each; rotation of bone b, frame j is a distinct
// non-unit quaternion so that normalisation and ordering are both visible.
std::string Clip(int32 Bones, int32 Frames, float TotalTime)
{
	std::string Text = "{\"totalTime\":" + std::to_string(TotalTime) + ",\"curves\":[";
	for (int32 Bone = 0; Bone < Bones; ++Bone)
	{
		Text += std::string(Bone ? "," : "") + "{\"name\":\"Bone" + std::to_string(Bone) +
			"\",\"path\":\"a/b\",\"rotas\":[";
		for (int32 Frame = 0; Frame < Frames; ++Frame)
		{
			Text += std::string(Frame ? "," : "") + "{\"x\":" + std::to_string(0.01 * Frame) +
				",\"y\":" + std::to_string(0.1 * Bone) + ",\"z\":0.25,\"w\":2}";
		}
		Text += "]}";
	}
	Text += "],\"Hips\":{\"name\":\"Hips\",\"path\":\"\",\"pos\":[";
	for (int32 Frame = 0; Frame < Frames; ++Frame)
	{
		Text += std::string(Frame ? "," : "") + "{\"x\":" + std::to_string(0.001 * Frame) + ",\"y\":0.9,\"z\":-0.5}";
	}
	return Text + "]}}";
}

FQuat Normalised(double X, double Y, double Z, double W)
{
	const double Length = std::sqrt(X * X + Y * Y + Z * Z + W * W);
	return FQuat(X / Length, Y / Length, Z / Length, W / Length);
}

FZnBodyData Decoded(const std::string& Json)
{
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(Text(Json), Body);
	return Body;
}

std::string OneRotation(const std::string& Rotation)
{
	return "{\"totalTime\":1,\"curves\":[{\"name\":\"Hips\",\"path\":\"\",\"rotas\":[" + Rotation +
		"]}],\"Hips\":{\"name\":\"Hips\",\"path\":\"\",\"pos\":[]}}";
}
} // namespace

TEST(ZnBodyDataDecoderTests, EmptyTextLeavesRecordAndTotalTimeUnchanged)
{
	FZnBodyData Body = SentinelBody();
	float TotalTime = 12.5f;
	UZnDM_BpFuncLib::ParseJsonToBodydata(FString(), Body);
	EXPECT_TRUE(SameBody(Body, SentinelBody()));
	UZnDM_BpFuncLib::ParseJsonToBodydataRecommend(FString(), Body, TotalTime);
	EXPECT_TRUE(SameBody(Body, SentinelBody()));
	EXPECT_EQ(TotalTime, 12.5f);
}

TEST(ZnBodyDataDecoderTests, InvalidTextLeavesRecordUnchanged)
{
	FZnBodyData Body = SentinelBody();
	float TotalTime = 12.5f;
	UZnDM_BpFuncLib::ParseJsonToBodydata(Text("{"), Body);
	EXPECT_TRUE(SameBody(Body, SentinelBody()));
	UZnDM_BpFuncLib::ParseJsonToBodydataRecommend(Text("{"), Body, TotalTime);
	EXPECT_TRUE(SameBody(Body, SentinelBody()));
	EXPECT_EQ(TotalTime, 12.5f);
}

TEST(ZnBodyDataDecoderTests, NoCurvesAndNoPositionsGiveAnEmptyRecordWithTheTextsLength)
{
	FZnBodyData Body = SentinelBody();
	const int64 Before = FDateTime::Now().GetTicks();
	UZnDM_BpFuncLib::ParseJsonToBodydata(
		Text("{\"totalTime\":3.5,\"curves\":[],\"Hips\":{\"name\":\"Hips\",\"path\":\"\",\"pos\":[]}}"), Body);
	EXPECT_GE(Body.id, Before);
	EXPECT_EQ(Body.totalTime, 3.5f);
	EXPECT_EQ(Body.BoneNames.Num(), 0);
	EXPECT_EQ(Body.BoneFrames.Num(), 0);
	EXPECT_EQ(Body.BoneCurves.Num(), 0);
	for (int32 Channel = 0; Channel < 3; ++Channel)
	{
		EXPECT_EQ(Body.RootPositionCurve.FloatCurves[Channel].Keys.Num(), 0);
	}
	// Nothing of the previous contents survives, the start position included.
	EXPECT_EQ(Body.RootStartPosition.X, 0.0);
}

TEST(ZnBodyDataDecoderTests, RotationAxesAreSwappedIntoTheEngineFrame)
{
	const FZnBodyData Body = Decoded(OneRotation("{\"x\":1,\"y\":0,\"z\":0,\"w\":0}"));
	ASSERT_EQ(Body.BoneFrames.Num(), 1);
	ASSERT_EQ(Body.BoneFrames[0].Num(), 1);
	EXPECT_TRUE(SameQuat(Body.BoneFrames[0][0], FQuat(0.0, 1.0, 0.0, 0.0)));
	EXPECT_TRUE(SameQuat(Body.BoneCurves[0].Keys[0].Value, FQuat(0.0, 1.0, 0.0, 0.0)));
}

TEST(ZnBodyDataDecoderTests, RotationsAreNormalisedAndDegenerateOnesBecomeIdentity)
{
	const FZnBodyData Long = Decoded(OneRotation("{\"x\":0,\"y\":0,\"z\":0,\"w\":2}"));
	EXPECT_TRUE(SameQuat(Long.BoneFrames[0][0], FQuat(0.0, 0.0, 0.0, 1.0)));
	const FZnBodyData Zero = Decoded(OneRotation("{\"x\":0,\"y\":0,\"z\":0,\"w\":0}"));
	EXPECT_TRUE(SameQuat(Zero.BoneFrames[0][0], FQuat(0.0, 0.0, 0.0, 1.0)));
	const FZnBodyData Tiny = Decoded(OneRotation("{\"x\":0.00001,\"y\":0,\"z\":0,\"w\":0.00001}"));
	EXPECT_TRUE(SameQuat(Tiny.BoneFrames[0][0], FQuat(0.0, 0.0, 0.0, 1.0)));
	const FZnBodyData General = Decoded(OneRotation("{\"x\":0.1,\"y\":0.2,\"z\":0.3,\"w\":0.4}"));
	EXPECT_TRUE(SameQuat(General.BoneFrames[0][0], Normalised(double(0.3f), double(0.1f), double(0.2f), double(0.4f))));
}

TEST(ZnBodyDataDecoderTests, PositionsBecomeCentimetresInTheEngineFrame)
{
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(
		Text("{\"curves\":[],\"Hips\":{\"pos\":[{\"x\":0.01,\"y\":0.02,\"z\":0.03},{\"x\":1,\"y\":2,\"z\":3}]}}"),
		Body);
	const FRichCurve* Channels = Body.RootPositionCurve.FloatCurves;
	ASSERT_EQ(Channels[0].Keys.Num(), 2);
	EXPECT_NEAR(Body.RootStartPosition.X, 3.0, 1e-5);
	EXPECT_NEAR(Body.RootStartPosition.Y, 1.0, 1e-5);
	EXPECT_NEAR(Body.RootStartPosition.Z, 2.0, 1e-5);
	EXPECT_EQ(Body.RootStartPosition.X, double(0.03f * 100.0f));
	EXPECT_EQ(Channels[0].Keys[0].Value, 0.03f * 100.0f);
	EXPECT_EQ(Channels[1].Keys[0].Value, 0.01f * 100.0f);
	EXPECT_EQ(Channels[2].Keys[0].Value, 0.02f * 100.0f);
	EXPECT_EQ(Channels[0].Keys[1].Value, 300.0f);
	EXPECT_EQ(Channels[1].Keys[1].Value, 100.0f);
	EXPECT_EQ(Channels[2].Keys[1].Value, 200.0f);
	EXPECT_EQ(Channels[0].Keys[1].Time, float(1.0 / 30.0));
	// A missing totalTime reads 0.
	EXPECT_EQ(Body.totalTime, 0.0f);
}

TEST(ZnBodyDataDecoderTests, FrameTimesAreFrameNumberOverThirty)
{
	const FZnBodyData Body = Decoded(Clip(1, 31, 1.0f));
	ASSERT_EQ(Body.BoneCurves[0].Keys.Num(), 31);
	EXPECT_EQ(Body.BoneCurves[0].Keys[0].Time, 0.0f);
	EXPECT_EQ(Body.BoneCurves[0].Keys[1].Time, float(1.0 / 30.0));
	EXPECT_EQ(Body.BoneCurves[0].Keys[30].Time, 1.0f);
	for (int32 Frame = 0; Frame < 31; ++Frame)
	{
		EXPECT_EQ(Body.BoneCurves[0].Keys[Frame].Time, float(double(Frame) * 0.03333333333333333));
		EXPECT_EQ(Body.RootPositionCurve.FloatCurves[2].Keys[Frame].Time, float(double(Frame) * 0.03333333333333333));
	}
}

TEST(ZnBodyDataDecoderTests, ThreeBonesOfTenFramesKeepTheirOrderAndAlignment)
{
	const FZnBodyData Body = Decoded(Clip(3, 10, 0.3f));
	ASSERT_EQ(Body.BoneNames.Num(), 3);
	ASSERT_EQ(Body.BoneFrames.Num(), 3);
	ASSERT_EQ(Body.BoneCurves.Num(), 3);
	EXPECT_TRUE(Body.GetNamesStr().Equals(TEXT("Bone0,Bone1,Bone2,"), ESearchCase::CaseSensitive));
	EXPECT_EQ(Body.totalTime, 0.3f);
	for (int32 Bone = 0; Bone < 3; ++Bone)
	{
		ASSERT_EQ(Body.BoneFrames[Bone].Num(), 10);
		ASSERT_EQ(Body.BoneCurves[Bone].Keys.Num(), 10);
		for (int32 Frame = 0; Frame < 10; ++Frame)
		{
			const FQuat Expected =
				Normalised(double(0.25f), double(float(0.01 * Frame)), double(float(0.1 * Bone)), 2.0);
			EXPECT_TRUE(SameQuat(Body.BoneFrames[Bone][Frame], Expected)) << Bone << " " << Frame;
			EXPECT_TRUE(SameQuat(Body.BoneCurves[Bone].Keys[Frame].Value, Expected));
			EXPECT_EQ(Body.BoneCurves[Bone].Keys[Frame].Time, float(Frame * (1.0 / 30.0)));
		}
	}
}

TEST(ZnBodyDataDecoderTests, RecommendLeavesTheStartPositionAtZeroAndReturnsTheLength)
{
	const std::string Json = Clip(2, 5, 4.25f);
	FZnBodyData Plain;
	UZnDM_BpFuncLib::ParseJsonToBodydata(Text(Json), Plain);
	EXPECT_EQ(Plain.RootStartPosition.X, double(-0.5f * 100.0f));
	EXPECT_EQ(Plain.RootStartPosition.Y, 0.0);
	EXPECT_EQ(Plain.RootStartPosition.Z, double(0.9f * 100.0f));

	FZnBodyData Recommended = SentinelBody();
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToBodydataRecommend(Text(Json), Recommended, TotalTime);
	EXPECT_EQ(TotalTime, 4.25f);
	EXPECT_EQ(Recommended.totalTime, 4.25f);
	EXPECT_EQ(Recommended.RootStartPosition.X, 0.0);
	EXPECT_EQ(Recommended.RootStartPosition.Y, 0.0);
	EXPECT_EQ(Recommended.RootStartPosition.Z, 0.0);
	// Apart from the start position the two agree.
	Recommended.RootStartPosition = Plain.RootStartPosition;
	EXPECT_TRUE(SameBodyContents(Recommended, Plain));
}

TEST(ZnBodyDataDecoderTests, SameTextTwiceDiffersOnlyInId)
{
	const std::string Json = Clip(4, 12, 0.4f);
	const FZnBodyData First = Decoded(Json);
	const FZnBodyData Second = Decoded(Json);
	EXPECT_TRUE(SameBodyContents(First, Second));
	EXPECT_GE(Second.id, First.id);
}

TEST(ZnBodyDataDecoderTests, CurvesSampleTheDecodedFrames)
{
	const FZnBodyData Body = Decoded(Clip(2, 20, 0.66f));
	for (int32 Frame = 0; Frame < 20; ++Frame)
	{
		EXPECT_TRUE(
			SameQuat(Body.BoneCurves[1].Evaluate(float(Frame * (1.0 / 30.0)), 0.0001f), Body.BoneFrames[1][Frame]));
	}
}

TEST(ZnBodyDataDecoderTests, MissingMembersReadAsZeroEmptyOrNothing)
{
	// No totalTime, no curves, no name, no rotas, rotation members missing.
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(Text("{\"Hips\":{}}"), Body);
	EXPECT_EQ(Body.totalTime, 0.0f);
	EXPECT_EQ(Body.BoneNames.Num(), 0);
	EXPECT_EQ(Body.RootPositionCurve.FloatCurves[0].Keys.Num(), 0);

	UZnDM_BpFuncLib::ParseJsonToBodydata(Text("{\"curves\":[{},{\"rotas\":[{}]}],\"Hips\":{\"pos\":[{}]}}"), Body);
	ASSERT_EQ(Body.BoneNames.Num(), 2);
	EXPECT_TRUE(Body.BoneNames[0].IsEmpty());
	EXPECT_EQ(Body.BoneFrames[0].Num(), 0);
	EXPECT_EQ(Body.BoneCurves[0].Keys.Num(), 0);
	ASSERT_EQ(Body.BoneFrames[1].Num(), 1);
	EXPECT_TRUE(SameQuat(Body.BoneFrames[1][0], FQuat(0.0, 0.0, 0.0, 1.0)));
	EXPECT_EQ(Body.RootStartPosition.X, 0.0);
	EXPECT_EQ(Body.RootPositionCurve.FloatCurves[0].Keys.Num(), 1);
}

TEST(ZnBodyDataDecoderTests, MemberNamesMatchWithoutRegardToCaseAndTheLastDuplicateWins)
{
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(
		Text("{\"TOTALTIME\":2,\"totalTime\":5,\"Curves\":[{\"NAME\":\"Spine\",\"Rotas\":"
			 "[{\"X\":1,\"x\":0,\"Y\":1,\"z\":0,\"W\":0}]}],\"hips\":{\"POS\":[{\"X\":1}]}}"),
		Body);
	EXPECT_EQ(Body.totalTime, 5.0f);
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	EXPECT_TRUE(Body.BoneNames[0].Equals(TEXT("Spine"), ESearchCase::CaseSensitive));
	// x is 0 (the later duplicate), y is 1: engine (X, Y, Z) = (z, x, y) = (0, 0, 1).
	EXPECT_TRUE(SameQuat(Body.BoneFrames[0][0], FQuat(0.0, 0.0, 1.0, 0.0)));
	EXPECT_EQ(Body.RootStartPosition.Y, 100.0);
}

TEST(ZnBodyDataDecoderTests, NamesKeepNonAsciiCharacters)
{
	const FZnBodyData Body =
		Decoded("{\"curves\":[{\"name\":\"H\\u00fcfte\xF0\x9F\x98\x80\",\"rotas\":[]}],\"Hips\":{}}");
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	const FString& Name = Body.BoneNames[0];
	ASSERT_EQ(Name.Len(), 7);
	EXPECT_EQ(Name[1], TCHAR(0xFC));
	EXPECT_EQ(Name[5], TCHAR(0xD83D));
	EXPECT_EQ(Name[6], TCHAR(0xDE00));
}

TEST(ZnBodyDataDecoderTests, ByteOrderMarkAndSurroundingWhitespaceAreAccepted)
{
	FZnBodyData Body;
	FString Json = Text("\xEF\xBB\xBF \n\t{\"totalTime\":2,\"Hips\":{}}\r\n ");
	UZnDM_BpFuncLib::ParseJsonToBodydata(Json, Body);
	EXPECT_EQ(Body.totalTime, 2.0f);
}

TEST(ZnBodyDataDecoderTests, Utf8EntryMatchesTheStringEntry)
{
	const std::string Json = Clip(3, 7, 0.2f);
	FZnBodyData FromString;
	FZnBodyData FromBytes;
	ASSERT_TRUE(FZnBodyDataDecoder::Decode(Text(Json), FromString, true));
	ASSERT_TRUE(FZnBodyDataDecoder::DecodeUtf8(Json.data(), int64(Json.size()), FromBytes, true));
	EXPECT_TRUE(SameBodyContents(FromString, FromBytes));
}

TEST(ZnBodyDataDecoderTests, RepeatedMembersReplaceWhatTheEarlierOnesProduced)
{
	// A later "curves" replaces the bones of an earlier one, even a malformed one.
	FZnBodyData Body =
		Decoded("{\"curves\":[1,{\"name\":\"A\"}],\"Hips\":{},\"curves\":[{\"name\":\"B\",\"rotas\":[{\"w\":1}]}]}");
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	EXPECT_TRUE(Body.BoneNames[0].Equals(TEXT("B"), ESearchCase::CaseSensitive));
	EXPECT_EQ(Body.BoneFrames[0].Num(), 1);

	// Within a bone the last "rotas" and "name" count.
	Body = Decoded(
		"{\"curves\":[{\"name\":\"A\",\"rotas\":[7],\"rotas\":[{\"w\":1},{\"w\":1}],\"NAME\":\"C\"}],\"Hips\":{}}");
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	EXPECT_TRUE(Body.BoneNames[0].Equals(TEXT("C"), ESearchCase::CaseSensitive));
	EXPECT_EQ(Body.BoneFrames[0].Num(), 2);
	EXPECT_EQ(Body.BoneCurves[0].Keys.Num(), 2);

	// A later "Hips" replaces the positions; a later "pos" too.
	Body = Decoded("{\"Hips\":{\"pos\":[{\"x\":1},{\"x\":2}]},\"Hips\":{\"pos\":[5],\"pos\":[{\"x\":3}]}}");
	EXPECT_EQ(Body.RootPositionCurve.FloatCurves[1].Keys.Num(), 1);
	EXPECT_EQ(Body.RootStartPosition.Y, double(3.0f * 100.0f));
}

TEST(ZnBodyDataDecoderTests, OnlyTheLastHipsDecidesWhetherTheClipHasARoot)
{
	FZnBodyData Body = SentinelBody();
	UZnDM_BpFuncLib::ParseJsonToBodydata(Text("{\"Hips\":1,\"Hips\":{}}"), Body);
	EXPECT_NE(Body.id, 4242);
	Body = SentinelBody();
	UZnDM_BpFuncLib::ParseJsonToBodydata(Text("{\"Hips\":{},\"Hips\":1}"), Body);
	EXPECT_TRUE(SameBody(Body, SentinelBody()));
}

TEST(ZnBodyDataDecoderTests, EscapedMemberNamesMatchTheirUnescapedForm)
{
	const FZnBodyData Body = Decoded("{\"tot\\u0061lTime\":6,\"\\u0048ips\":{\"p\\u006fs\":[{\"\\u0078\":1}]}}");
	EXPECT_EQ(Body.totalTime, 6.0f);
	EXPECT_EQ(Body.RootStartPosition.Y, 100.0);
}

namespace
{
// Replaces every occurrence of From in Text.
std::string ReplaceAll(std::string Text, const std::string& From, const std::string& To)
{
	for (size_t At = Text.find(From); At != std::string::npos; At = Text.find(From, At + To.size()))
	{
		Text.replace(At, From.size(), To);
	}
	return Text;
}
} // namespace

TEST(ZnBodyDataDecoderTests, AxesWrittenInAnyCaseOrderOrSpacingDecodeAsProducersWriteThem)
{
	// Producers write {"x":..,"y":..,"z":..,"w":..}, read the short way; every other way of
	// writing the same members goes the general way and must give the same record.
	const std::string Tight = FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody({40, 3, false, true}));
	const FZnBodyData Expected = Decoded(Tight);
	ASSERT_EQ(Expected.BoneNames.Num(), 52);
	ASSERT_EQ(Expected.BoneFrames[0].Num(), 40);
	const std::string Variants[] = {
		ReplaceAll(Tight, ",", ", "),
		ReplaceAll(ReplaceAll(Tight, "\"x\":", "\"X\":"), "\"w\":", "\"W\":"),
		ReplaceAll(Tight, "{\"x\":", "{ \"x\" :"),
		ReplaceAll(ReplaceAll(Tight, "\"y\":", "\"q\":0,\"y\":"), "\"z\":", "\"z\" : "),
		ReplaceAll(Tight, "}", " }"),
	};
	for (const std::string& Variant : Variants)
	{
		ASSERT_NE(Variant, Tight);
		EXPECT_TRUE(SameBodyContents(Decoded(Variant), Expected)) << Variant.substr(0, 200);
	}
	// Members in another order: the same axes.
	const std::string Reordered = ReplaceAll(Tight, "{\"x\":", "{\"w\":1e9,\"x\":");
	const FZnBodyData FromReordered = Decoded(Reordered);
	EXPECT_TRUE(SameBodyContents(FromReordered, Expected));
}
