#include "ZnBodyDataV2Decoder.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnDecodeTestHelpers.h"
#include "ZnJsonReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace ZnDecodeTest;

namespace
{
// One V2 frame: root position (0.01 f, 1, -0.02 f), rotation of bone b (0.1 b, 0.01 f, 0, 1).
std::string Frame(uint64 FrameIndex, const std::vector<std::string>& Bones)
{
	const double F = double(FrameIndex);
	std::string Text = "{\"frameIndex\":" + std::to_string(FrameIndex) + ",\"pos\":{\"Hips\":[" +
		std::to_string(0.01 * F) + ",1," + std::to_string(-0.02 * F) + "]},\"rot\":{";
	for (size_t Bone = 0; Bone < Bones.size(); ++Bone)
	{
		Text += std::string(Bone ? "," : "") + "\"" + Bones[Bone] + "\":[" + std::to_string(0.1 * double(Bone)) + "," +
			std::to_string(0.01 * F) + ",0,1]";
	}
	return Text + "}}";
}

TArray<FString> BoneList(std::initializer_list<const char*> Names)
{
	TArray<FString> Result;
	for (const char* Name : Names)
	{
		Result.Add(Text(Name));
	}
	return Result;
}

FQuat ExpectedRotation(int32 Bone, uint64 FrameIndex)
{
	const float X = float(std::stod(std::to_string(0.1 * double(Bone))));
	const float Y = float(std::stod(std::to_string(0.01 * double(FrameIndex))));
	const double QX = 0.0;
	const double QY = double(X);
	const double QZ = double(Y);
	const double Length = std::sqrt(QX * QX + QY * QY + QZ * QZ + 1.0);
	return FQuat(QX / Length, QY / Length, QZ / Length, 1.0 / Length);
}

float StreamTime(uint64 FrameIndex)
{
	return float(double(FrameIndex - 1) * (1.0 / 30.0));
}

void Stream(
	std::initializer_list<uint64> FrameIndices, const TArray<FString>& Bones, const std::vector<std::string>& Members)
{
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	for (uint64 FrameIndex : FrameIndices)
	{
		UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text(Frame(FrameIndex, Members)), Bones);
	}
}
} // namespace

TEST(ZnBodyDataV2DecoderTests, ThreeFramesOfTwoBones)
{
	Stream({1, 2, 3}, BoneList({"Hips", "Spine"}), {"Hips", "Spine"});
	FZnBodyData Body = SentinelBody();
	float TotalTime = -1.0f;
	const int64 Before = FDateTime::Now().GetTicks();
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	EXPECT_GE(Body.id, Before);
	ASSERT_EQ(Body.BoneNames.Num(), 2);
	EXPECT_TRUE(Body.GetNamesStr().Equals(TEXT("Hips,Spine,"), ESearchCase::CaseSensitive));
	ASSERT_EQ(Body.BoneFrames.Num(), 2);
	ASSERT_EQ(Body.BoneCurves.Num(), 2);
	for (int32 Bone = 0; Bone < 2; ++Bone)
	{
		ASSERT_EQ(Body.BoneFrames[Bone].Num(), 3);
		ASSERT_EQ(Body.BoneCurves[Bone].Keys.Num(), 3);
		for (uint64 FrameIndex = 1; FrameIndex <= 3; ++FrameIndex)
		{
			EXPECT_TRUE(SameQuat(Body.BoneFrames[Bone][FrameIndex - 1], ExpectedRotation(Bone, FrameIndex)));
			EXPECT_EQ(Body.BoneCurves[Bone].Keys[FrameIndex - 1].Time, StreamTime(FrameIndex));
			EXPECT_TRUE(SameQuat(Body.BoneCurves[Bone].Keys[FrameIndex - 1].Value, ExpectedRotation(Bone, FrameIndex)));
		}
	}
	EXPECT_EQ(Body.BoneCurves[0].Keys[1].Time, float(1.0 / 30.0));
	EXPECT_EQ(Body.BoneCurves[0].Keys[2].Time, float(2.0 / 30.0));
	EXPECT_EQ(TotalTime, float(2.0 / 30.0));
	EXPECT_EQ(Body.totalTime, float(2.0 / 30.0));
	// The root curve has one key per frame; the start position is never set by this format.
	const FRichCurve* Root = Body.RootPositionCurve.FloatCurves;
	ASSERT_EQ(Root[0].Keys.Num(), 3);
	EXPECT_EQ(Root[0].Keys[2].Value, float(std::stod(std::to_string(-0.06))) * 100.0f);
	EXPECT_EQ(Root[1].Keys[2].Value, float(std::stod(std::to_string(0.03))) * 100.0f);
	EXPECT_EQ(Root[2].Keys[2].Value, 100.0f);
	EXPECT_EQ(Root[2].Keys[2].Time, StreamTime(3));
	EXPECT_EQ(Body.RootStartPosition.X, 0.0);
	EXPECT_EQ(Body.RootStartPosition.Z, 0.0);
}

TEST(ZnBodyDataV2DecoderTests, ABoneListedTwiceInAnotherCaseAddsOneNameButIsReadTwice)
{
	Stream({1, 2}, BoneList({"Hips", "hips"}), {"Hips"});
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	EXPECT_TRUE(Body.BoneNames[0].Equals(TEXT("Hips"), ESearchCase::CaseSensitive));
	ASSERT_EQ(Body.BoneCurves.Num(), 1);
	ASSERT_EQ(Body.BoneFrames.Num(), 1);
	// Each read lands in the same bone: the second read of a frame replaces the key at that
	// time with the same value, and the frame list receives the rotation twice.
	EXPECT_EQ(Body.BoneCurves[0].Keys.Num(), 2);
	ASSERT_EQ(Body.BoneFrames[0].Num(), 4);
	EXPECT_TRUE(SameQuat(Body.BoneFrames[0][0], Body.BoneFrames[0][1]));
	EXPECT_TRUE(SameQuat(Body.BoneFrames[0][2], ExpectedRotation(0, 2)));
}

TEST(ZnBodyDataV2DecoderTests, BoneNamesAndMembersMatchWithoutRegardToCase)
{
	Stream({1}, BoneList({"SPINE"}), {"spine"});
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	// The name is stored as the caller spelled it.
	EXPECT_TRUE(Body.BoneNames[0].Equals(TEXT("SPINE"), ESearchCase::CaseSensitive));
	ASSERT_EQ(Body.BoneFrames[0].Num(), 1);
	EXPECT_TRUE(SameQuat(Body.BoneFrames[0][0], ExpectedRotation(0, 1)));
}

TEST(ZnBodyDataV2DecoderTests, FrameWithoutFrameIndexChangesNothing)
{
	Stream({1}, BoneList({"Hips"}), {"Hips"});
	FZnBodyData Before;
	float BeforeTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Before, BeforeTime);

	std::string NoIndex = Frame(5, {"Hips"});
	NoIndex.replace(NoIndex.find("frameIndex"), 10, "frameIndox");
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text(NoIndex), BoneList({"Hips", "Spine"}));
	FZnBodyData After;
	float AfterTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(After, AfterTime);
	EXPECT_TRUE(SameBodyContents(Before, After));
	EXPECT_EQ(BeforeTime, AfterTime);
}

TEST(ZnBodyDataV2DecoderTests, FramesOutOfOrderMeetTheCurvesInsertionRule)
{
	Stream({3, 1, 2}, BoneList({"Hips", "Spine"}), {"Hips", "Spine"});
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	EXPECT_EQ(TotalTime, float(2.0 / 30.0));
	for (int32 Bone = 0; Bone < 2; ++Bone)
	{
		// Frame lists keep arrival order.
		ASSERT_EQ(Body.BoneFrames[Bone].Num(), 3);
		EXPECT_TRUE(SameQuat(Body.BoneFrames[Bone][0], ExpectedRotation(Bone, 3)));
		EXPECT_TRUE(SameQuat(Body.BoneFrames[Bone][1], ExpectedRotation(Bone, 1)));
		EXPECT_TRUE(SameQuat(Body.BoneFrames[Bone][2], ExpectedRotation(Bone, 2)));
		// Frame 1 is earlier than every key and goes first; frame 2 falls strictly between two keys
		// and lands one place early, in front of frame 1. So the keys end up 1/30, 0, 2/30.
		const TArray<FZnQuatCurveKey>& Keys = Body.BoneCurves[Bone].Keys;
		ASSERT_EQ(Keys.Num(), 3);
		EXPECT_EQ(Keys[0].Time, StreamTime(2));
		EXPECT_EQ(Keys[1].Time, StreamTime(1));
		EXPECT_EQ(Keys[2].Time, StreamTime(3));
		EXPECT_TRUE(SameQuat(Keys[0].Value, ExpectedRotation(Bone, 2)));
		EXPECT_TRUE(SameQuat(Keys[1].Value, ExpectedRotation(Bone, 1)));
		EXPECT_TRUE(SameQuat(Keys[2].Value, ExpectedRotation(Bone, 3)));
	}
}

TEST(ZnBodyDataV2DecoderTests, FramesInReverseOrderEndUpInTimeOrder)
{
	// Only prepends: no key ever falls strictly between two others.
	Stream({4, 3, 2, 1}, BoneList({"Hips"}), {"Hips"});
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	ASSERT_EQ(Body.BoneCurves[0].Keys.Num(), 4);
	for (uint64 FrameIndex = 1; FrameIndex <= 4; ++FrameIndex)
	{
		EXPECT_EQ(Body.BoneCurves[0].Keys[FrameIndex - 1].Time, StreamTime(FrameIndex));
	}
	EXPECT_EQ(TotalTime, StreamTime(4));
}

TEST(ZnBodyDataV2DecoderTests, EndTwiceGivesEqualContentsAndLaterFramesContinueTheAnimation)
{
	Stream({1, 2}, BoneList({"Hips"}), {"Hips"});
	FZnBodyData First;
	FZnBodyData Second;
	float FirstTime = 0.0f;
	float SecondTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(First, FirstTime);
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Second, SecondTime);
	EXPECT_TRUE(SameBodyContents(First, Second));
	EXPECT_GE(Second.id, First.id);
	EXPECT_EQ(FirstTime, SecondTime);

	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text(Frame(3, {"Hips"})), BoneList({"Hips"}));
	FZnBodyData Third;
	float ThirdTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Third, ThirdTime);
	EXPECT_EQ(Third.BoneFrames[0].Num(), 3);
	EXPECT_EQ(Third.BoneCurves[0].Keys.Num(), 3);
	EXPECT_EQ(ThirdTime, StreamTime(3));

	// Begin starts over.
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	FZnBodyData Fresh = SentinelBody();
	float FreshTime = 5.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Fresh, FreshTime);
	EXPECT_EQ(Fresh.BoneNames.Num(), 0);
	EXPECT_EQ(Fresh.RootPositionCurve.FloatCurves[0].Keys.Num(), 0);
	EXPECT_EQ(FreshTime, 0.0f);
	EXPECT_EQ(Fresh.totalTime, 0.0f);
}

TEST(ZnBodyDataV2DecoderTests, LaterBonesAreAddedInOrderOfFirstAppearance)
{
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text(Frame(1, {"Spine", "Hips"})), BoneList({"Spine"}));
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text(Frame(2, {"Spine", "Hips"})), BoneList({"Hips", "Spine"}));
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	ASSERT_EQ(Body.BoneNames.Num(), 2);
	EXPECT_TRUE(Body.GetNamesStr().Equals(TEXT("Spine,Hips,"), ESearchCase::CaseSensitive));
	EXPECT_EQ(Body.BoneFrames[0].Num(), 2);
	EXPECT_EQ(Body.BoneFrames[1].Num(), 1);
	EXPECT_EQ(Body.BoneCurves[1].Keys[0].Time, StreamTime(2));
}

TEST(ZnBodyDataV2DecoderTests, EmptyBoneListKeysOnlyTheRootAndLeavesTheLengthAlone)
{
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text(Frame(5, {"Hips"})), TArray<FString>());
	FZnBodyData Body;
	float TotalTime = -1.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	EXPECT_EQ(Body.BoneNames.Num(), 0);
	EXPECT_EQ(Body.RootPositionCurve.FloatCurves[0].Keys.Num(), 1);
	// The length is only moved by bone keys.
	EXPECT_EQ(TotalTime, 0.0f);
}

TEST(ZnBodyDataV2DecoderTests, FrameIndexZeroWrapsToAnEnormousTime)
{
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text(Frame(0, {"Hips"})), BoneList({"Hips"}));
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	const float Expected = float(double(~uint64(0)) * (1.0 / 30.0));
	EXPECT_EQ(TotalTime, Expected);
	ASSERT_EQ(Body.BoneCurves[0].Keys.Num(), 1);
	EXPECT_EQ(Body.BoneCurves[0].Keys[0].Time, Expected);
}

TEST(ZnBodyDataV2DecoderTests, FractionalFrameIndexIsRoundedHalfAwayFromZero)
{
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	std::string Json = Frame(1, {"Hips"});
	Json.replace(Json.find("\"frameIndex\":1"), 14, "\"frameIndex\":2.5");
	UZnDM_BpFuncLib::ParseJsonToBodydataV2(Text(Json), BoneList({"Hips"}));
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	EXPECT_EQ(TotalTime, StreamTime(3));
}

TEST(ZnBodyDataV2DecoderTests, ResponseOfEmptyTextLeavesOutputsAlone)
{
	FZnBodyData Body = SentinelBody();
	float TotalTime = 12.5f;
	UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(FString(), BoneList({"Hips"}), Body, TotalTime);
	EXPECT_TRUE(SameBody(Body, SentinelBody()));
	EXPECT_EQ(TotalTime, 12.5f);
}

TEST(ZnBodyDataV2DecoderTests, ResponseOfTextThatIsNotAnArrayWritesAnEmptyRecord)
{
	for (const char* Json : {"{}", "[", "1", "garbage"})
	{
		FZnBodyData Body = SentinelBody();
		float TotalTime = 12.5f;
		UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(Text(Json), BoneList({"Hips"}), Body, TotalTime);
		EXPECT_NE(Body.id, 4242) << Json;
		EXPECT_EQ(Body.BoneNames.Num(), 0) << Json;
		EXPECT_EQ(Body.BoneCurves.Num(), 0);
		EXPECT_EQ(Body.RootPositionCurve.FloatCurves[0].Keys.Num(), 0);
		EXPECT_EQ(Body.RootStartPosition.X, 0.0);
		EXPECT_EQ(Body.totalTime, 0.0f);
		EXPECT_EQ(TotalTime, 0.0f) << Json;
	}
}

TEST(ZnBodyDataV2DecoderTests, ResponseMatchesTheSameFramesStreamed)
{
	const std::vector<std::string> Members = {"Hips", "Spine", "Neck"};
	const TArray<FString> Bones = BoneList({"Hips", "Spine", "Neck"});
	std::string Json = "[";
	for (uint64 FrameIndex : {2, 1, 3, 5, 4})
	{
		Json += std::string(Json.size() > 1 ? "," : "") + Frame(FrameIndex, Members);
	}
	Json += "]";
	FZnBodyData FromResponse;
	float ResponseTime = 0.0f;
	UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(Text(Json), Bones, FromResponse, ResponseTime);

	Stream({2, 1, 3, 5, 4}, Bones, Members);
	FZnBodyData FromStream;
	float StreamedTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(FromStream, StreamedTime);
	EXPECT_TRUE(SameBodyContents(FromResponse, FromStream));
	EXPECT_EQ(ResponseTime, StreamedTime);
	EXPECT_EQ(ResponseTime, StreamTime(5));
	EXPECT_EQ(FromResponse.BoneNames.Num(), 3);
	EXPECT_EQ(FromResponse.BoneFrames[2].Num(), 5);
}

TEST(ZnBodyDataV2DecoderTests, ResponseDoesNotTouchTheStream)
{
	Stream({1}, BoneList({"Hips"}), {"Hips"});
	FZnBodyData Ignored;
	float IgnoredTime = 0.0f;
	UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(
		Text("[" + Frame(7, {"Spine"}) + "]"), BoneList({"Spine"}), Ignored, IgnoredTime);
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	EXPECT_TRUE(Body.BoneNames[0].Equals(TEXT("Hips"), ESearchCase::CaseSensitive));
	EXPECT_EQ(TotalTime, 0.0f);
}

TEST(ZnBodyDataV2DecoderTests, NativeInstancesAreIndependentStreams)
{
	FZnBodyDataV2Decoder A;
	FZnBodyDataV2Decoder B;
	EXPECT_TRUE(A.AddFrameText(Text(Frame(1, {"Hips"})), BoneList({"Hips"})));
	EXPECT_TRUE(B.AddFrameText(Text(Frame(4, {"Neck"})), BoneList({"Neck"})));
	FZnBodyData BodyA;
	FZnBodyData BodyB;
	float TimeA = 0.0f;
	float TimeB = 0.0f;
	A.Assemble(BodyA, TimeA);
	B.Assemble(BodyB, TimeB);
	EXPECT_TRUE(BodyA.BoneNames[0].Equals(TEXT("Hips"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(BodyB.BoneNames[0].Equals(TEXT("Neck"), ESearchCase::CaseSensitive));
	EXPECT_EQ(TimeB, StreamTime(4));
}
