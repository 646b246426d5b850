#include "ZnDM_BpFuncLib.h"
#include "ZnRequestBodies.h"
#include "ZnJsonReader.h"

#include "ZnServiceTestHelpers.h"
#include <gtest/gtest.h>

#include <string>

// Golden texts of every request body. Lines are joined with the platform line terminator, so the
// same goldens hold where it is "\r\n".

using namespace ZnServiceTest;

namespace
{
#define EXPECT_BODY(Actual, ...) EXPECT_EQ(Utf8(Actual), Utf8(JoinLines({__VA_ARGS__})))

// Every body must also read back as a JSON object.
bool ParsesAsObject(const FString& Body)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	return Reader.ParseObject(Body, Root);
}
} // namespace

TEST(ZnRequestBodiesTests, TextBroadcastWithDefaults)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(TEXT("Hello"));
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"draft_content\": \"Hello\","), TEXT("\t\"compress\": false,"),
		TEXT("\t\"tts_config\":"), TEXT("\t{"), TEXT("\t\t\"tts_voice_name\": \"aixia\","),
		TEXT("\t\t\"tts_speed\": 50,"), TEXT("\t\t\"tts_volume\": 50,"), TEXT("\t\t\"tts_fm\": 50"), TEXT("\t},"),
		TEXT("\t\"face_config\":"), TEXT("\t{"), TEXT("\t\t\"face_type\": 1,"), TEXT("\t\t\"gender\": \"male\""),
		TEXT("\t},"), TEXT("\t\"body_config\":"), TEXT("\t{"), TEXT("\t\t\"body_motion\": 0,"),
		TEXT("\t\t\"body_head_x_rot\": 0,"), TEXT("\t\t\"body_compress\": false"), TEXT("\t}"), TEXT("}"));
	EXPECT_TRUE(ParsesAsObject(Body));
}

TEST(ZnRequestBodiesTests, TextBroadcastWithEveryArgumentSet)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(
		TEXT("Hi there"), TEXT("mp3"), TEXT("voiceB"), -3, 70, 0, 2, TEXT("female"), 9, 4, 31, 5, true, -15, true);
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"draft_content\": \"Hi there\","), TEXT("\t\"compress\": false,"),
		TEXT("\t\"tts_config\":"), TEXT("\t{"), TEXT("\t\t\"tts_voice_name\": \"voiceB\","),
		TEXT("\t\t\"tts_speed\": -3,"), TEXT("\t\t\"tts_volume\": 70,"), TEXT("\t\t\"tts_fm\": 0"), TEXT("\t},"),
		TEXT("\t\"face_config\":"), TEXT("\t{"), TEXT("\t\t\"face_type\": 2,"), TEXT("\t\t\"gender\": \"female\""),
		TEXT("\t},"), TEXT("\t\"body_config\":"), TEXT("\t{"), TEXT("\t\t\"body_motion\": 4,"),
		TEXT("\t\t\"body_head_x_rot\": -15,"), TEXT("\t\t\"body_compress\": true"), TEXT("\t}"), TEXT("}"));
}

TEST(ZnRequestBodiesTests, TextBroadcastIgnoresTheParametersItDoesNotCarry)
{
	// audio_format, face_tag, the filter window and order and body_fixed_hips are not sent.
	const FString Plain = UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(TEXT("x"));
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(
				  TEXT("x"), TEXT("pcm"), TEXT("aixia"), 50, 50, 50, 1, TEXT("male"), 7, 0, 99, 42, true, 0, false)),
		Utf8(Plain));
}

TEST(ZnRequestBodiesTests, TextBroadcastWithFixedHipsTrueEqualsFalse)
{
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(
				  TEXT("t"), TEXT("wav"), TEXT("aixia"), 50, 50, 50, 1, TEXT("male"), 0, 0, 15, 3, true)),
		Utf8(UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(
			TEXT("t"), TEXT("wav"), TEXT("aixia"), 50, 50, 50, 1, TEXT("male"), 0, 0, 15, 3, false)));
}

TEST(ZnRequestBodiesTests, AnswerCollectWithDefaults)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonAnswerCollectMotion(TEXT("What is new?"));
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"text\": \"What is new?\","), TEXT("\t\"audio_format\": \"wav\","),
		TEXT("\t\"tts_config\":"), TEXT("\t{"), TEXT("\t\t\"tts_voice_name\": \"aixia\","),
		TEXT("\t\t\"tts_speed\": 50,"), TEXT("\t\t\"tts_volume\": 50,"), TEXT("\t\t\"tts_fm\": 50"), TEXT("\t},"),
		TEXT("\t\"face_config\":"), TEXT("\t{"), TEXT("\t\t\"face_type\": 1,"), TEXT("\t\t\"face_gender\": \"male\","),
		TEXT("\t\t\"face_tag\": 0"), TEXT("\t},"), TEXT("\t\"body_config\":"), TEXT("\t{"),
		TEXT("\t\t\"body_motion\": 0,"), TEXT("\t\t\"body_filter_window\": 15,"), TEXT("\t\t\"body_filter_order\": 3,"),
		TEXT("\t\t\"body_fixed_hips\": false,"), TEXT("\t\t\"body_head_x_rot\": 0,"),
		TEXT("\t\t\"body_compress\": false"), TEXT("\t}"), TEXT("}"));
	EXPECT_TRUE(ParsesAsObject(Body));
}

TEST(ZnRequestBodiesTests, AnswerCollectWritesEveryArgument)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonAnswerCollectMotion(
		TEXT("q"), TEXT("mp3"), TEXT("v2"), 1, 2, 3, 4, TEXT("female"), 5, 6, 7, 8, true, 9, true);
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"text\": \"q\","), TEXT("\t\"audio_format\": \"mp3\","),
		TEXT("\t\"tts_config\":"), TEXT("\t{"), TEXT("\t\t\"tts_voice_name\": \"v2\","), TEXT("\t\t\"tts_speed\": 1,"),
		TEXT("\t\t\"tts_volume\": 2,"), TEXT("\t\t\"tts_fm\": 3"), TEXT("\t},"), TEXT("\t\"face_config\":"),
		TEXT("\t{"), TEXT("\t\t\"face_type\": 4,"), TEXT("\t\t\"face_gender\": \"female\","),
		TEXT("\t\t\"face_tag\": 5"), TEXT("\t},"), TEXT("\t\"body_config\":"), TEXT("\t{"),
		TEXT("\t\t\"body_motion\": 6,"), TEXT("\t\t\"body_filter_window\": 7,"), TEXT("\t\t\"body_filter_order\": 8,"),
		TEXT("\t\t\"body_fixed_hips\": true,"), TEXT("\t\t\"body_head_x_rot\": 9,"),
		TEXT("\t\t\"body_compress\": true"), TEXT("\t}"), TEXT("}"));
}

TEST(ZnRequestBodiesTests, VoiceBroadcastWithDefaults)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonVoiceBroadcastMotion(TEXT("https://files.example/a.wav"));
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"audio_url\": \"https://files.example/a.wav\","),
		TEXT("\t\"audio_format\": \"wav\","), TEXT("\t\"is_cache\": 0,"), TEXT("\t\"compress\": false,"),
		TEXT("\t\"face_config\":"), TEXT("\t{"), TEXT("\t\t\"face_type\": 1,"), TEXT("\t\t\"face_gender\": \"male\","),
		TEXT("\t\t\"face_tag\": 0"), TEXT("\t},"), TEXT("\t\"body_config\":"), TEXT("\t{"),
		TEXT("\t\t\"body_motion\": 0,"), TEXT("\t\t\"body_filter_window\": 15,"), TEXT("\t\t\"body_filter_order\": 3,"),
		TEXT("\t\t\"body_fixed_hips\": false,"), TEXT("\t\t\"body_head_x_rot\": 0,"),
		TEXT("\t\t\"body_compress\": false"), TEXT("\t}"), TEXT("}"));
	EXPECT_TRUE(ParsesAsObject(Body));
}

TEST(ZnRequestBodiesTests, VoiceBroadcastWithEveryArgumentSet)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonVoiceBroadcastMotion(
		TEXT("u"), TEXT("pcm"), 1, TEXT("female"), 2, 3, 4, 5, 6, true, 7, true);
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"audio_url\": \"u\","), TEXT("\t\"audio_format\": \"pcm\","),
		TEXT("\t\"is_cache\": 1,"), TEXT("\t\"compress\": false,"), TEXT("\t\"face_config\":"), TEXT("\t{"),
		TEXT("\t\t\"face_type\": 3,"), TEXT("\t\t\"face_gender\": \"female\","), TEXT("\t\t\"face_tag\": 2"),
		TEXT("\t},"), TEXT("\t\"body_config\":"), TEXT("\t{"), TEXT("\t\t\"body_motion\": 4,"),
		TEXT("\t\t\"body_filter_window\": 5,"), TEXT("\t\t\"body_filter_order\": 6,"),
		TEXT("\t\t\"body_fixed_hips\": true,"), TEXT("\t\t\"body_head_x_rot\": 7,"),
		TEXT("\t\t\"body_compress\": true"), TEXT("\t}"), TEXT("}"));
}

TEST(ZnRequestBodiesTests, VoiceBroadcastCompressStaysFalseWhateverBodyCompressIs)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonVoiceBroadcastMotion(
		TEXT("u"), TEXT("wav"), 0, TEXT("male"), 0, 1, 0, 15, 3, false, 0, true);
	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(Reader.ParseObject(Body, Root));
	bool bCompress = true;
	ASSERT_TRUE(Root.TryGetBoolField("compress", bCompress));
	EXPECT_FALSE(bCompress);
	EXPECT_TRUE(Root.GetObjectField("body_config").GetBoolField("body_compress"));
}

TEST(ZnRequestBodiesTests, PlainTextBody)
{
	EXPECT_BODY(UZnDM_BpFuncLib::MakeJsonTmp(TEXT("hello")), TEXT("{"), TEXT("\t\"text\": \"hello\""), TEXT("}"));
	EXPECT_BODY(UZnDM_BpFuncLib::MakeJsonTmp(TEXT("")), TEXT("{"), TEXT("\t\"text\": \"\""), TEXT("}"));
}

TEST(ZnRequestBodiesTests, RefTextVoiceShape)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonTmpRefText(TEXT("https://files.example/v.wav"), 99, 40, 60, 45, false,
		0, 2, TEXT("aixia"), 3, TEXT("female"), TEXT("req-1"));
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"request_id\": \"req-1\","),
		TEXT("\t\"audio_url\": \"https://files.example/v.wav\","), TEXT("\t\"compress\": false,"),
		TEXT("\t\"face_config\":"), TEXT("\t{"), TEXT("\t\t\"face_type\": 2,"), TEXT("\t\t\"gender\": \"female\""),
		TEXT("\t},"), TEXT("\t\"body_config\":"), TEXT("\t{"), TEXT("\t\t\"body_motion\": 3,"),
		TEXT("\t\t\"fixed_hips\": false,"), TEXT("\t\t\"limit_degree\": 1,"), TEXT("\t\t\"limit_spine\": true"),
		TEXT("\t}"), TEXT("}"));
	EXPECT_TRUE(ParsesAsObject(Body));
}

TEST(ZnRequestBodiesTests, RefTextVoiceShapeSendsFixedHips)
{
	const FString Body =
		UZnDM_BpFuncLib::MakeJsonTmpRefText(TEXT("a"), 0, 0, 0, 0, true, 0, 0, TEXT(""), 0, TEXT(""), TEXT(""));
	EXPECT_NE(Utf8(Body).find("\"fixed_hips\": true"), std::string::npos);
}

TEST(ZnRequestBodiesTests, RefTextTextShape)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonTmpRefText(
		TEXT("Say this"), 99, 40, 60, 45, false, 1, 2, TEXT("aixia"), 3, TEXT("male"), TEXT("req-2"));
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"request_id\": \"req-2\","), TEXT("\t\"draft_content\": \"Say this\","),
		TEXT("\t\"compress\": false,"), TEXT("\t\"tts_config\":"), TEXT("\t{"), TEXT("\t\t\"voice_name\": \"aixia\","),
		TEXT("\t\t\"speed\": 40,"), TEXT("\t\t\"volume\": 60,"), TEXT("\t\t\"fm\": 45"), TEXT("\t},"),
		TEXT("\t\"face_config\":"), TEXT("\t{"), TEXT("\t\t\"face_type\": 2,"), TEXT("\t\t\"gender\": \"male\""),
		TEXT("\t},"), TEXT("\t\"body_config\":"), TEXT("\t{"), TEXT("\t\t\"body_motion\": 3,"),
		TEXT("\t\t\"base_name\": \"v005\","), TEXT("\t\t\"fixed_hips\": true,"), TEXT("\t\t\"limit_degree\": 1,"),
		TEXT("\t\t\"limit_spine\": true"), TEXT("\t}"), TEXT("}"));
}

TEST(ZnRequestBodiesTests, RefTextQuestionShape)
{
	const FString Body = UZnDM_BpFuncLib::MakeJsonTmpRefText(
		TEXT("Who are you?"), 99, 40, 60, 45, false, 2, 2, TEXT("aixia"), 3, TEXT("male"), TEXT("req-3"));
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"request_id\": \"req-3\","), TEXT("\t\"text\": \"Who are you?\","),
		TEXT("\t\"compress\": false,"), TEXT("\t\"nlp_config\":"), TEXT("\t{"), TEXT("\t\t\"qa_type\": 2,"),
		TEXT("\t\t\"go_chatBot\": true,"), TEXT("\t\t\"is_random\": true"), TEXT("\t},"), TEXT("\t\"tts_config\":"),
		TEXT("\t{"), TEXT("\t\t\"voice_name\": \"aixia\","), TEXT("\t\t\"speed\": 40"), TEXT("\t},"),
		TEXT("\t\"face_config\":"), TEXT("\t{"), TEXT("\t\t\"face_type\": 2,"), TEXT("\t\t\"gender\": \"male\""),
		TEXT("\t},"), TEXT("\t\"body_config\":"), TEXT("\t{"), TEXT("\t\t\"body_motion\": 3,"),
		TEXT("\t\t\"base_name\": \"v005\","), TEXT("\t\t\"fixed_hips\": true,"), TEXT("\t\t\"limit_degree\": 1,"),
		TEXT("\t\t\"limit_spine\": true"), TEXT("\t}"), TEXT("}"));
	EXPECT_TRUE(ParsesAsObject(Body));
}

TEST(ZnRequestBodiesTests, RefTextAnyOtherTypeIsTheQuestionShape)
{
	const auto Make = [](int32 Type)
	{
		return Utf8(UZnDM_BpFuncLib::MakeJsonTmpRefText(
			TEXT("q"), 0, 1, 2, 3, false, Type, 4, TEXT("v"), 5, TEXT("g"), TEXT("id")));
	};
	const std::string Question = Make(2);
	EXPECT_NE(Question.find("\"nlp_config\""), std::string::npos);
	EXPECT_EQ(Make(5), Question);
	EXPECT_EQ(Make(-1), Question);
	EXPECT_EQ(Make(255), Question);
}

TEST(ZnRequestBodiesTests, RefTextIgnoresSpeedRatio)
{
	for (int32 Type : {0, 1, 2})
	{
		EXPECT_EQ(Utf8(UZnDM_BpFuncLib::MakeJsonTmpRefText(
					  TEXT("r"), 1, 2, 3, 4, true, Type, 5, TEXT("v"), 6, TEXT("g"), TEXT("id"))),
			Utf8(UZnDM_BpFuncLib::MakeJsonTmpRefText(
				TEXT("r"), 1000, 2, 3, 4, true, Type, 5, TEXT("v"), 6, TEXT("g"), TEXT("id"))))
			<< "type " << Type;
	}
}

TEST(ZnRequestBodiesTests, RefTextTextAndQuestionShapesAlwaysFixTheHips)
{
	for (int32 Type : {1, 2})
	{
		const std::string Body = Utf8(UZnDM_BpFuncLib::MakeJsonTmpRefText(
			TEXT("r"), 0, 0, 0, 0, false, Type, 0, TEXT(""), 0, TEXT(""), TEXT("")));
		EXPECT_NE(Body.find("\"fixed_hips\": true"), std::string::npos) << "type " << Type;
		EXPECT_EQ(Body.find("\"fixed_hips\": false"), std::string::npos) << "type " << Type;
	}
}

TEST(ZnRequestBodiesTests, SpeechSynthesisBodyKeepsNumbersAsStrings)
{
	const FString Body = UZnDM_BpFuncLib::TTS_ParamsToJson(
		TEXT("Good morning"), TEXT("aixia"), TEXT("50"), TEXT("60"), TEXT("1.5"), TEXT("female"), 3);
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"text\": \"Good morning\","), TEXT("\t\"voiceName\": \"aixia\","),
		TEXT("\t\"speed\": \"50\","), TEXT("\t\"volume\": \"60\","), TEXT("\t\"pitch\": \"1.5\","),
		TEXT("\t\"gender\": \"female\","), TEXT("\t\"tag\": 3"), TEXT("}"));
	EXPECT_TRUE(ParsesAsObject(Body));
}

TEST(ZnRequestBodiesTests, EmptyStringsAreWrittenAsEmptyJsonStrings)
{
	const FString Body =
		UZnDM_BpFuncLib::TTS_ParamsToJson(TEXT(""), TEXT(""), TEXT(""), TEXT(""), TEXT(""), TEXT(""), 0);
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"text\": \"\","), TEXT("\t\"voiceName\": \"\","), TEXT("\t\"speed\": \"\","),
		TEXT("\t\"volume\": \"\","), TEXT("\t\"pitch\": \"\","), TEXT("\t\"gender\": \"\","), TEXT("\t\"tag\": 0"),
		TEXT("}"));
}

TEST(ZnRequestBodiesTests, QuotesAndLineBreaksAreEscapedNotCut)
{
	const FString Text = TEXT("He said \"stop\"\nthen left\\");
	const FString Body = UZnDM_BpFuncLib::MakeJsonTmp(Text);
	EXPECT_BODY(Body, TEXT("{"), TEXT("\t\"text\": \"He said \\\"stop\\\"\\nthen left\\\\\""), TEXT("}"));

	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(Reader.ParseObject(Body, Root));
	EXPECT_EQ(Utf8(Root.GetStringField("text")), Utf8(Text));
}

TEST(ZnRequestBodiesTests, NonAsciiTextRoundTrips)
{
	const FString Text =
		FString(UTF8_TO_TCHAR("\xE4\xBD\xA0\xE5\xA5\xBD\xEF\xBC\x8C\xE4\xB8\x96\xE7\x95\x8C \xF0\x9F\x98\x80"));
	const FString Body = UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(Text);
	EXPECT_NE(Utf8(Body).find("\"draft_content\": \"" + Utf8(Text) + "\""), std::string::npos);
	FZnJsonReader Reader;
	FZnJsonObject Root;
	ASSERT_TRUE(Reader.ParseObject(Body, Root));
	EXPECT_EQ(Utf8(Root.GetStringField("draft_content")), Utf8(Text));
}

TEST(ZnRequestBodiesTests, ScriptEntryPointsMatchTheNativeBuilders)
{
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::MakeJsonAnswerCollectMotion(TEXT("a"))),
		Utf8(ZnRequestBodies::AnswerCollectMotion(
			TEXT("a"), TEXT("wav"), TEXT("aixia"), 50, 50, 50, 1, TEXT("male"), 0, 0, 15, 3, false, 0, false)));
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::MakeJsonVoiceBroadcastMotion(TEXT("a"))),
		Utf8(ZnRequestBodies::VoiceBroadcastMotion(
			TEXT("a"), TEXT("wav"), 0, TEXT("male"), 0, 1, 0, 15, 3, false, 0, false)));
}
