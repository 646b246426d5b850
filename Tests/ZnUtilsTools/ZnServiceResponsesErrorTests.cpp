#include "ZnDM_BpFuncLib.h"

#include "ZnServiceTestHelpers.h"
#include <gtest/gtest.h>

#include <string>
#include <vector>

// Failures return false (or "") and leave every output exactly as it was.

using namespace ZnServiceTest;

namespace
{
const ZnJsonDataType AllTypes[] = {
	ZnJsonDataType::VoiceBroadcast, ZnJsonDataType::TextBroadcast, ZnJsonDataType::AnswerCollect};

const char* const FullData = R"("data":{"ttsSynthesizeData":{"audio_url":"a"},"allfaceData":{"oss_url":"f"},
	"motionFusionedData":{"oss_url":"b"},"answerDmeasyData":{"answer":"t"}})";

void ExpectMotionFailureLeavesOutputs(const std::string& Json)
{
	for (ZnJsonDataType Type : AllTypes)
	{
		FString Audio = TEXT("A0");
		FString Face = TEXT("F0");
		FString Body = TEXT("B0");
		FString Text = TEXT("T0");
		EXPECT_FALSE(UZnDM_BpFuncLib::ParseJsonTmp(FromUtf8(Json.c_str()), TEXT("in"), Type, Audio, Face, Body, Text))
			<< Json;
		EXPECT_EQ(Utf8(Audio), "A0") << Json;
		EXPECT_EQ(Utf8(Face), "F0") << Json;
		EXPECT_EQ(Utf8(Body), "B0") << Json;
		EXPECT_EQ(Utf8(Text), "T0") << Json;
	}
}
} // namespace

TEST(ZnServiceResponsesErrorTests, NonZeroCodeWithFullDataTouchesNothing)
{
	ExpectMotionFailureLeavesOutputs(std::string(R"({"code":1,)") + FullData + "}");
	ExpectMotionFailureLeavesOutputs(std::string(R"({"code":-1,)") + FullData + "}");
	ExpectMotionFailureLeavesOutputs(std::string(R"({"code":200,)") + FullData + "}");
}

TEST(ZnServiceResponsesErrorTests, MissingCodeFails)
{
	ExpectMotionFailureLeavesOutputs(std::string("{") + FullData + "}");
}

TEST(ZnServiceResponsesErrorTests, CodeOfAnotherKindFails)
{
	ExpectMotionFailureLeavesOutputs(std::string(R"({"code":"0",)") + FullData + "}");
	ExpectMotionFailureLeavesOutputs(std::string(R"({"code":null,)") + FullData + "}");
	ExpectMotionFailureLeavesOutputs(std::string(R"({"code":false,)") + FullData + "}");
	ExpectMotionFailureLeavesOutputs(std::string(R"({"code":[0],)") + FullData + "}");
}

TEST(ZnServiceResponsesErrorTests, CodeOutsideTheIntegerRangeFails)
{
	ExpectMotionFailureLeavesOutputs(std::string(R"({"code":1e300,)") + FullData + "}");
	ExpectMotionFailureLeavesOutputs(std::string(R"({"code":4294967296,)") + FullData + "}");
}

TEST(ZnServiceResponsesErrorTests, SuccessWithoutDataFails)
{
	ExpectMotionFailureLeavesOutputs(R"({"code":0})");
	ExpectMotionFailureLeavesOutputs(R"({"code":0,"data":null})");
	ExpectMotionFailureLeavesOutputs(R"({"code":0,"data":"x"})");
	ExpectMotionFailureLeavesOutputs(R"({"code":0,"data":[]})");
}

TEST(ZnServiceResponsesErrorTests, UnparsableTextFails)
{
	for (const char* Json : {"", " ", "{", "}", "[]", "null", "0", "\"text\"", "{\"code\":0,", "{\"code\":0}}",
			 "{code:0}", "{\"code\":0,\"data\":{}} trailing", "<html>502</html>"})
	{
		ExpectMotionFailureLeavesOutputs(Json);
	}
}

TEST(ZnServiceResponsesErrorTests, InnerMembersOfTheWrongKindAreSkippedOrEmpty)
{
	FString Audio = TEXT("A0");
	FString Face = TEXT("F0");
	FString Body = TEXT("B0");
	FString Text = TEXT("T0");
	// A holder that is not an object leaves its output; a URL that is not a string reads "".
	EXPECT_TRUE(UZnDM_BpFuncLib::ParseJsonTmp(
		FromUtf8(R"({"code":0,"data":{"ttsSynthesizeData":"a","allfaceData":{"oss_url":5},"motionFusionedData":[]}})"),
		TEXT("in"), ZnJsonDataType::TextBroadcast, Audio, Face, Body, Text));
	EXPECT_EQ(Utf8(Audio), "A0");
	EXPECT_EQ(Utf8(Face), "");
	EXPECT_EQ(Utf8(Body), "B0");
	EXPECT_EQ(Utf8(Text), "T0");
}

TEST(ZnServiceResponsesErrorTests, SpeechResponseFailuresTouchNothing)
{
	for (const char* Json : {R"({"code":0,"data":{"url":"A","faceUrl":"F","bodyUrl":"B"}})", R"({"data":{"url":"A"}})",
			 R"({"code":"200","data":{"url":"A"}})", R"({"code":1e308,"data":{"url":"A"}})",
			 R"({"code":-200,"data":{"url":"A"}})", "", "not json", "[200]", R"({"code":200)"})
	{
		FString Audio = TEXT("A0");
		FString Body = TEXT("B0");
		FString Face = TEXT("F0");
		EXPECT_FALSE(UZnDM_BpFuncLib::TTS_ParseResponseJson(FromUtf8(Json), Audio, Body, Face)) << Json;
		EXPECT_EQ(Utf8(Audio), "A0") << Json;
		EXPECT_EQ(Utf8(Body), "B0") << Json;
		EXPECT_EQ(Utf8(Face), "F0") << Json;
	}
}

TEST(ZnServiceResponsesErrorTests, FormResponseFailuresGiveEmpty)
{
	for (const char* Json : {R"({"code":1,"oss_url":"x"})", R"({"oss_url":"x"})", R"({"code":"0","oss_url":"x"})", "",
			 "{", "[]", R"({"code":0,"oss_url":"x"} extra)"})
	{
		EXPECT_EQ(Utf8(UZnDM_BpFuncLib::ParseJsonForm(FromUtf8(Json))), "") << Json;
	}
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::ParseJsonForm(FromUtf8(R"({"code":0,"oss_url":7})"))), "");
}

TEST(ZnServiceResponsesErrorTests, DigestFailuresAddNothing)
{
	TArray<FString> Digests;
	Digests.Add(TEXT("kept"));
	for (const char* Json : {"", "{", "[]", "not json", R"({"T1348647853363":[{"digest":"x"}]} extra)"})
	{
		EXPECT_FALSE(UZnDM_BpFuncLib::ParseJsonToGetDigest(FromUtf8(Json), Digests)) << Json;
	}
	ASSERT_EQ(Digests.Num(), 1);
	EXPECT_EQ(Utf8(Digests[0]), "kept");
}

TEST(ZnServiceResponsesErrorTests, DigestsOfTheWrongKindAreSkipped)
{
	TArray<FString> Digests;
	EXPECT_TRUE(UZnDM_BpFuncLib::ParseJsonToGetDigest(
		FromUtf8(R"({"T1348647853363":[1,"digest",null,[],{"digest":5},{"digest":"ok"}]})"), Digests));
	ASSERT_EQ(Digests.Num(), 1);
	EXPECT_EQ(Utf8(Digests[0]), "ok");
	EXPECT_TRUE(UZnDM_BpFuncLib::ParseJsonToGetDigest(FromUtf8(R"({"T1348647853363":{"digest":"x"}})"), Digests));
	EXPECT_EQ(Digests.Num(), 1);
}

TEST(ZnServiceResponsesErrorTests, DeeplyNestedTextDoesNotCrash)
{
	std::string Json = "{\"code\":0,\"data\":";
	std::string Tail;
	for (int Depth = 0; Depth < 5000; ++Depth)
	{
		Json += "{\"a\":";
		Tail += "}";
	}
	Json += "0" + Tail + "}";
	FString Audio = TEXT("A0"), Face = TEXT("F0"), Body = TEXT("B0"), Text = TEXT("T0");
	UZnDM_BpFuncLib::ParseJsonTmp(
		FromUtf8(Json.c_str()), TEXT("in"), ZnJsonDataType::TextBroadcast, Audio, Face, Body, Text);
	EXPECT_EQ(Utf8(Audio), "A0");
}
