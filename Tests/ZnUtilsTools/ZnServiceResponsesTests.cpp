#include "ZnDM_BpFuncLib.h"

#include "ZnServiceTestHelpers.h"
#include <gtest/gtest.h>

#include <string>

using namespace ZnServiceTest;

namespace
{
// A complete motion response carrying every member any request type reads.
const char* const FullResponse = R"({
	"code": 0,
	"msg": "success",
	"data": {
		"ttsSynthesizeData": {"audio_url": "https://files.example/speech.wav"},
		"allfaceData": {"oss_url": "https://files.example/face.json"},
		"motionFusionedData": {"oss_url": "https://files.example/body.json"},
		"answerDmeasyData": {"answer": "I am fine."}
	}
})";

struct FOutputs
{
	FString Audio = TEXT("old audio");
	FString Face = TEXT("old face");
	FString Body = TEXT("old body");
	FString Text = TEXT("old text");

	bool Parse(const char* Json, ZnJsonDataType Type, const TCHAR* InAudio = TEXT("https://mine.example/in.wav"))
	{
		return UZnDM_BpFuncLib::ParseJsonTmp(FromUtf8(Json), InAudio, Type, Audio, Face, Body, Text);
	}
};
} // namespace

TEST(ZnServiceResponsesTests, TextBroadcastReadsTheThreeUrls)
{
	FOutputs Out;
	EXPECT_TRUE(Out.Parse(FullResponse, ZnJsonDataType::TextBroadcast));
	EXPECT_EQ(Utf8(Out.Audio), "https://files.example/speech.wav");
	EXPECT_EQ(Utf8(Out.Face), "https://files.example/face.json");
	EXPECT_EQ(Utf8(Out.Body), "https://files.example/body.json");
	EXPECT_EQ(Utf8(Out.Text), "old text");
}

TEST(ZnServiceResponsesTests, VoiceBroadcastPassesTheCallersAudioThrough)
{
	FOutputs Out;
	EXPECT_TRUE(Out.Parse(FullResponse, ZnJsonDataType::VoiceBroadcast));
	EXPECT_EQ(Utf8(Out.Audio), "https://mine.example/in.wav") << "even though ttsSynthesizeData is present";
	EXPECT_EQ(Utf8(Out.Face), "https://files.example/face.json");
	EXPECT_EQ(Utf8(Out.Body), "https://files.example/body.json");
	EXPECT_EQ(Utf8(Out.Text), "old text");
}

TEST(ZnServiceResponsesTests, AnswerCollectAlsoReadsTheAnswer)
{
	FOutputs Out;
	EXPECT_TRUE(Out.Parse(FullResponse, ZnJsonDataType::AnswerCollect));
	EXPECT_EQ(Utf8(Out.Text), "I am fine.");
	EXPECT_EQ(Utf8(Out.Audio), "https://files.example/speech.wav");
	EXPECT_EQ(Utf8(Out.Face), "https://files.example/face.json");
	EXPECT_EQ(Utf8(Out.Body), "https://files.example/body.json");
}

TEST(ZnServiceResponsesTests, AnyOtherTypeValueReadsLikeAnswerCollect)
{
	FOutputs Out;
	EXPECT_TRUE(Out.Parse(FullResponse, static_cast<ZnJsonDataType>(7)));
	EXPECT_EQ(Utf8(Out.Text), "I am fine.");
	EXPECT_EQ(Utf8(Out.Audio), "https://files.example/speech.wav");
}

TEST(ZnServiceResponsesTests, AnswerCollectWithoutAnswerStillFillsTheUrls)
{
	FOutputs Out;
	EXPECT_TRUE(Out.Parse(R"({"code":0,"data":{"ttsSynthesizeData":{"audio_url":"a"},"allfaceData":{"oss_url":"f"},
		"motionFusionedData":{"oss_url":"b"}}})",
		ZnJsonDataType::AnswerCollect));
	EXPECT_EQ(Utf8(Out.Text), "old text");
	EXPECT_EQ(Utf8(Out.Audio), "a");
	EXPECT_EQ(Utf8(Out.Face), "f");
	EXPECT_EQ(Utf8(Out.Body), "b");
}

TEST(ZnServiceResponsesTests, AMissingInnerObjectLeavesOnlyItsOutput)
{
	FOutputs Out;
	EXPECT_TRUE(Out.Parse(R"({"code":0,"data":{"allfaceData":{"oss_url":"f"}}})", ZnJsonDataType::TextBroadcast));
	EXPECT_EQ(Utf8(Out.Face), "f");
	EXPECT_EQ(Utf8(Out.Audio), "old audio");
	EXPECT_EQ(Utf8(Out.Body), "old body");
}

TEST(ZnServiceResponsesTests, AMissingStringInsideAPresentObjectGivesEmpty)
{
	FOutputs Out;
	EXPECT_TRUE(Out.Parse(
		R"({"code":0,"data":{"allfaceData":{},"motionFusionedData":{"url":"x"}}})", ZnJsonDataType::VoiceBroadcast));
	EXPECT_EQ(Utf8(Out.Face), "");
	EXPECT_EQ(Utf8(Out.Body), "");
	EXPECT_EQ(Utf8(Out.Audio), "https://mine.example/in.wav");
}

TEST(ZnServiceResponsesTests, EmptyDataIsStillASuccess)
{
	FOutputs Out;
	EXPECT_TRUE(Out.Parse(R"({"code":0,"data":{}})", ZnJsonDataType::AnswerCollect));
	EXPECT_EQ(Utf8(Out.Audio), "old audio");
	EXPECT_EQ(Utf8(Out.Text), "old text");
}

TEST(ZnServiceResponsesTests, NonAsciiAnswerIsDecoded)
{
	FOutputs Out;
	EXPECT_TRUE(
		Out.Parse("{\"code\":0,\"data\":{\"answerDmeasyData\":{\"answer\":\"\xE4\xBD\xA0\xE5\xA5\xBD\\u0021\"}}}",
			ZnJsonDataType::AnswerCollect));
	EXPECT_EQ(Utf8(Out.Text), "\xE4\xBD\xA0\xE5\xA5\xBD!");
}

TEST(ZnServiceResponsesTests, FieldNamesMatchWithoutRegardToCase)
{
	FOutputs Out;
	EXPECT_TRUE(Out.Parse(R"({"Code":0,"DATA":{"AllFaceData":{"OSS_URL":"f"}}})", ZnJsonDataType::TextBroadcast));
	EXPECT_EQ(Utf8(Out.Face), "f");
}

TEST(ZnServiceResponsesTests, SpeechResponseWithCode200)
{
	FString Audio = TEXT("a0");
	FString Body = TEXT("b0");
	FString Face = TEXT("f0");
	EXPECT_TRUE(UZnDM_BpFuncLib::TTS_ParseResponseJson(
		FromUtf8(R"({"code":200,"data":{"url":"A","faceUrl":"F","bodyUrl":"B"}})"), Audio, Body, Face));
	EXPECT_EQ(Utf8(Audio), "A");
	EXPECT_EQ(Utf8(Face), "F");
	EXPECT_EQ(Utf8(Body), "B");
}

TEST(ZnServiceResponsesTests, SpeechResponseCodeIsTruncated)
{
	FString Audio, Body, Face;
	EXPECT_TRUE(
		UZnDM_BpFuncLib::TTS_ParseResponseJson(FromUtf8(R"({"code":200.9,"data":{"url":"A"}})"), Audio, Body, Face));
	EXPECT_EQ(Utf8(Audio), "A");
	EXPECT_EQ(Utf8(Face), "");
	EXPECT_EQ(Utf8(Body), "");
	EXPECT_FALSE(UZnDM_BpFuncLib::TTS_ParseResponseJson(FromUtf8(R"({"code":199.99})"), Audio, Body, Face));
	EXPECT_FALSE(UZnDM_BpFuncLib::TTS_ParseResponseJson(FromUtf8(R"({"code":201})"), Audio, Body, Face));
}

TEST(ZnServiceResponsesTests, SpeechResponseWithoutDataIsTrueAndTouchesNothing)
{
	FString Audio = TEXT("a0");
	FString Body = TEXT("b0");
	FString Face = TEXT("f0");
	EXPECT_TRUE(UZnDM_BpFuncLib::TTS_ParseResponseJson(FromUtf8(R"({"code":200})"), Audio, Body, Face));
	EXPECT_EQ(Utf8(Audio), "a0");
	EXPECT_EQ(Utf8(Body), "b0");
	EXPECT_EQ(Utf8(Face), "f0");
}

TEST(ZnServiceResponsesTests, FormResponseGivesTheTopLevelUrl)
{
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::ParseJsonForm(FromUtf8(R"({"code":0,"oss_url":"https://files.example/x"})"))),
		"https://files.example/x");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::ParseJsonForm(FromUtf8(R"({"code":0})"))), "");
}

TEST(ZnServiceResponsesTests, DigestsAreAppendedInOrder)
{
	TArray<FString> Digests;
	Digests.Add(TEXT("kept"));
	EXPECT_TRUE(UZnDM_BpFuncLib::ParseJsonToGetDigest(
		FromUtf8(R"({"T1348647853363":[{"digest":"d1"},{"digest":""},{"other":"x"},{"digest":"d2"}]})"), Digests));
	ASSERT_EQ(Digests.Num(), 3);
	EXPECT_EQ(Utf8(Digests[0]), "kept");
	EXPECT_EQ(Utf8(Digests[1]), "d1");
	EXPECT_EQ(Utf8(Digests[2]), "d2");
}

TEST(ZnServiceResponsesTests, DigestsOfAnEmptyObjectAddNothing)
{
	TArray<FString> Digests;
	EXPECT_TRUE(UZnDM_BpFuncLib::ParseJsonToGetDigest(FromUtf8("{}"), Digests));
	EXPECT_EQ(Digests.Num(), 0);
	EXPECT_TRUE(UZnDM_BpFuncLib::ParseJsonToGetDigest(FromUtf8(R"({"T1348647853363":[]})"), Digests));
	EXPECT_EQ(Digests.Num(), 0);
}

TEST(ZnServiceResponsesTests, DigestsUseOnlyTheFixedKey)
{
	TArray<FString> Digests;
	EXPECT_TRUE(UZnDM_BpFuncLib::ParseJsonToGetDigest(FromUtf8(R"({"T1":[{"digest":"d1"}]})"), Digests));
	EXPECT_EQ(Digests.Num(), 0);
}

TEST(ZnServiceResponsesTests, SwitchUrlPicksByIndex)
{
	const FString A = TEXT("a");
	const FString B = TEXT("b");
	const FString C = TEXT("c");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::SwitchUrl(A, B, C)), "a") << "the index defaults to 0";
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::SwitchUrl(A, B, C, 0)), "a");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::SwitchUrl(A, B, C, 1)), "b");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::SwitchUrl(A, B, C, 2)), "c");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::SwitchUrl(A, B, C, 7)), "c");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::SwitchUrl(A, B, C, -1)), "c");
}

TEST(ZnServiceResponsesTests, SwitchUrlChoosesARegionsEndpoint)
{
	const FZnAPIConfig Config;
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::SwitchUrl(
				  Config.TokenAPI_EN_US, Config.TokenAPI_ZH_CN, FString(), static_cast<int32>(ZnRegion::ZH_CN))),
		Utf8(Config.TokenAPI_ZH_CN));
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::SwitchUrl(
				  Config.TokenAPI_EN_US, Config.TokenAPI_ZH_CN, FString(), static_cast<int32>(ZnRegion::EN_US))),
		Utf8(Config.TokenAPI_EN_US));
}
