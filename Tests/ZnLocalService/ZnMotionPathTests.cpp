// The motion and speech paths: the token road end to end (token, request, the three hosted files
// read by the module's own parsers and decoders), clip lengths by the words-per-second rule, the
// clip shapes a request selects, voice broadcast of hosted and remote audio, answer collection,
// and every refusal of a malformed body.
#include "ZnServiceTestSupport.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnHuman_Skeleton.h"
#include "ZnServiceCodes.h"

#include <cstring>

using namespace ZnServiceTest;

namespace
{
const char* const TextPath = "/v3.0/api/textBroadcastMotion";
const char* const VoicePath = "/v3.1/api/voiceBroadcastMotion";
const char* const AnswerPath = "/v3.0/api/AnswerCollectMotion";

FString ToFString(const std::string& Utf8)
{
	const FUTF8ToTCHAR Converted(Utf8.data(), static_cast<int32>(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

std::string ToUtf8(const FString& Text)
{
	const FTCHARToUTF8 Converted(*Text);
	return std::string(Converted.Get(), Converted.Length());
}

std::string TextBody(const std::string& Text, int32 Speed = 50, int32 FaceType = 1, int32 BodyMotion = 0)
{
	return ToUtf8(UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(ToFString(Text), TEXT("wav"), TEXT("aixia"), Speed, 50,
		50, FaceType, TEXT("male"), 0, BodyMotion, 15, 3, false, 0, false));
}

uint32_t U32At(const std::string& Bytes, size_t Offset)
{
	uint32_t Value = 0;
	for (int Index = 3; Index >= 0; --Index)
	{
		Value = (Value << 8) | static_cast<unsigned char>(Bytes[Offset + Index]);
	}
	return Value;
}

uint16_t U16At(const std::string& Bytes, size_t Offset)
{
	return uint16_t(static_cast<unsigned char>(Bytes[Offset]) | static_cast<unsigned char>(Bytes[Offset + 1]) << 8);
}

// A WAV file written by hand: PCM, with an optional "LIST" chunk before the data.
std::vector<uint8_t> HandMadeWav(uint32_t Rate, uint16_t Channels, uint16_t Bits, uint32_t Frames, bool bListChunk)
{
	std::string Out = "RIFF____WAVEfmt ";
	const auto Put32 = [&Out](uint32_t V)
	{
		for (int S = 0; S < 32; S += 8)
		{
			Out += char((V >> S) & 0xFF);
		}
	};
	const auto Put16 = [&Out](uint16_t V)
	{
		Out += char(V & 0xFF);
		Out += char(V >> 8);
	};
	Put32(16);
	Put16(1);
	Put16(Channels);
	Put32(Rate);
	Put32(Rate * Channels * Bits / 8);
	Put16(uint16_t(Channels * Bits / 8));
	Put16(Bits);
	if (bListChunk)
	{
		Out += "LIST";
		Put32(5);
		Out += "INFOx";
		Out += '\0'; // pad byte of an odd chunk
	}
	Out += "data";
	const uint32_t DataBytes = Frames * Channels * Bits / 8;
	Put32(DataBytes);
	Out.append(DataBytes, '\x01');
	const uint32_t RiffSize = uint32_t(Out.size() - 8);
	for (int S = 0; S < 4; ++S)
	{
		Out[4 + S] = char((RiffSize >> (8 * S)) & 0xFF);
	}
	return std::vector<uint8_t>(Out.begin(), Out.end());
}

class ZnMotionPath : public FServiceTest
{
protected:
	void SetUp() override { StartService(); }

	std::string Fetch(const std::string& Url)
	{
		EXPECT_EQ(Url.compare(0, Service->BaseUrl().size(), Service->BaseUrl()), 0) << Url;
		const auto Answer = Get(PathOf(Url));
		if (!Answer || Answer->status != 200)
		{
			ADD_FAILURE() << "cannot fetch " << Url;
			return "";
		}
		return Answer->body;
	}

	// The three URLs of a motion answer, read by the module's own parser.
	struct FUrls
	{
		FString Audio, Face, Body, Text;
	};

	FUrls ParseMotion(const std::string& Json, ZnJsonDataType Type, const FString& AudioIn = FString())
	{
		FUrls Urls;
		EXPECT_TRUE(
			UZnDM_BpFuncLib::ParseJsonTmp(ToFString(Json), AudioIn, Type, Urls.Audio, Urls.Face, Urls.Body, Urls.Text))
			<< Json;
		return Urls;
	}

	// The WAV's header fields and its length in sample frames, read independently of the service.
	void ExpectWav(const std::string& Wav, uint32_t Frames)
	{
		ASSERT_GE(Wav.size(), 44u);
		EXPECT_EQ(Wav.compare(0, 4, "RIFF"), 0);
		EXPECT_EQ(Wav.compare(8, 8, "WAVEfmt "), 0);
		EXPECT_EQ(U16At(Wav, 20), 1); // PCM
		EXPECT_EQ(U16At(Wav, 22), 1); // mono
		EXPECT_EQ(U32At(Wav, 24), 24000u); // rate
		EXPECT_EQ(U16At(Wav, 34), 16); // bits
		EXPECT_EQ(Wav.compare(36, 4, "data"), 0);
		EXPECT_EQ(U32At(Wav, 40), Frames * 800u * 2u);
		EXPECT_EQ(Wav.size(), 44u + Frames * 800u * 2u);
		EXPECT_EQ(U32At(Wav, 4), Wav.size() - 8);
	}

	void ExpectV1Clips(const FUrls& Urls, int32 Frames)
	{
		FZnFaceData Face;
		UZnDM_BpFuncLib::ParseJsonToFacedata(ToFString(Fetch(ToUtf8(Urls.Face))), Face);
		ASSERT_EQ(Face.CurveFrames.Num(), 51);
		EXPECT_EQ(Face.CurveFrames[0].Num(), Frames);
		EXPECT_FLOAT_EQ(Face.totalTime, float(Frames / 30.0));
		FZnBodyData Body;
		UZnDM_BpFuncLib::ParseJsonToBodydata(ToFString(Fetch(ToUtf8(Urls.Body))), Body);
		ASSERT_GT(Body.BoneFrames.Num(), 0);
		EXPECT_EQ(Body.BoneFrames[0].Num(), Frames);
		EXPECT_FLOAT_EQ(Body.totalTime, float(Frames / 30.0));
	}
};
} // namespace

TEST_F(ZnMotionPath, TextBroadcastRoadGivesFilesTheDecodersRead)
{
	// Five words at 2.5 words per second: 2 s, 60 frames, 48000 samples.
	const auto Answer = PostWithToken(TextPath, TextBody("one two three four five"));
	ASSERT_TRUE(Answer);
	ASSERT_EQ(Answer->status, 200) << Answer->body;
	EXPECT_EQ(Answer->get_header_value("Content-Type"), "application/json");
	const Json Envelope = ParseJson(Answer->body);
	EXPECT_EQ(Envelope["code"], 0);
	EXPECT_EQ(Envelope["msg"], "success");
	EXPECT_DOUBLE_EQ(Envelope["data"]["ttsSynthesizeData"]["duration"].get<double>(), 2.0);

	const FUrls Urls = ParseMotion(Answer->body, ZnJsonDataType::TextBroadcast);
	const std::string Wav = Fetch(ToUtf8(Urls.Audio));
	ExpectWav(Wav, 60);
	ExpectV1Clips(Urls, 60);

	const auto Audio = Get(PathOf(ToUtf8(Urls.Audio)));
	EXPECT_EQ(Audio->get_header_value("Content-Type"), "audio/wav");
}

TEST_F(ZnMotionPath, SpeedScalesTheLength)
{
	// 5 words at 3.75 words per second (speed 100) take 4/3 s: 40 frames; at 1.25 (speed 0), 4 s.
	ExpectWav(Fetch(ToUtf8(ParseMotion(PostWithToken(TextPath, TextBody("one two three four five", 100))->body,
				  ZnJsonDataType::TextBroadcast)
							   .Audio)),
		40);
	const FUrls Slow = ParseMotion(
		PostWithToken(TextPath, TextBody("one two three four five", 0))->body, ZnJsonDataType::TextBroadcast);
	ExpectWav(Fetch(ToUtf8(Slow.Audio)), 120);
	ExpectV1Clips(Slow, 120);
}

TEST_F(ZnMotionPath, EveryWideCharacterIsAWord)
{
	// Four ideographs and "ok": 5 words, 2 s.
	const FUrls Urls =
		ParseMotion(PostWithToken(TextPath, TextBody("你好世界 ok"))->body, ZnJsonDataType::TextBroadcast);
	ExpectWav(Fetch(ToUtf8(Urls.Audio)), 60);
}

TEST_F(ZnMotionPath, TheSameTextGivesTheSameClips)
{
	const FUrls First =
		ParseMotion(PostWithToken(TextPath, TextBody("say it twice"))->body, ZnJsonDataType::TextBroadcast);
	const FUrls Second =
		ParseMotion(PostWithToken(TextPath, TextBody("say it twice"))->body, ZnJsonDataType::TextBroadcast);
	EXPECT_NE(First.Face, Second.Face);
	EXPECT_EQ(Fetch(ToUtf8(First.Face)), Fetch(ToUtf8(Second.Face)));
	EXPECT_EQ(Fetch(ToUtf8(First.Body)), Fetch(ToUtf8(Second.Body)));
}

TEST_F(ZnMotionPath, FaceTypeAndBodyMotionSelectTheShapes)
{
	// face_type 2 and body_motion 2: V2 frames; 3 words, 1.2 s, 36 frames.
	const FUrls V2 =
		ParseMotion(PostWithToken(TextPath, TextBody("shape two now", 50, 2, 2))->body, ZnJsonDataType::TextBroadcast);
	FZnFaceData Face;
	float FaceTime = -1.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(ToFString(Fetch(ToUtf8(V2.Face))), Face, FaceTime);
	ASSERT_EQ(Face.CurveFrames.Num(), 51);
	EXPECT_EQ(Face.CurveFrames[0].Num(), 36);
	FZnBodyData Body;
	float BodyTime = -1.0f;
	const ZnHuman_Skeleton Skeleton;
	UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(
		ToFString(Fetch(ToUtf8(V2.Body))), Skeleton.DMBodyBonesWithTwist, Body, BodyTime);
	ASSERT_EQ(Body.BoneFrames.Num(), Skeleton.DMBodyBonesWithTwist.Num());
	EXPECT_EQ(Body.BoneFrames[0].Num(), 36);
	EXPECT_EQ(Fetch(ToUtf8(V2.Body)).front(), '[');

	// face_type 3: control-rig curves.
	const FUrls Rig = ParseMotion(
		PostWithToken(TextPath, TextBody("shape three now", 50, 3, 0))->body, ZnJsonDataType::TextBroadcast);
	const Json RigJson = ParseJson(Fetch(ToUtf8(Rig.Face)));
	ASSERT_TRUE(RigJson.contains("curve_names"));
	EXPECT_EQ(RigJson["curve_data"].size(), 36u);
	FZnFaceData RigFace;
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(ToFString(Fetch(ToUtf8(Rig.Face))), RigFace);
	ASSERT_GT(RigFace.CurveFrames.Num(), 0);
	EXPECT_EQ(RigFace.CurveFrames[0].Num(), 36);
}

TEST_F(ZnMotionPath, ShapeMembersOverrideTheNumbers)
{
	const auto Answer = PostWithToken(TextPath,
		R"({"draft_content": "a b c", "face_config": {"face_type": 2}, "face_shape": "v1", "body_shape": "v2"})");
	const FUrls Urls = ParseMotion(Answer->body, ZnJsonDataType::TextBroadcast);
	EXPECT_EQ(Fetch(ToUtf8(Urls.Face)).substr(0, 2), "[[");
	EXPECT_EQ(Fetch(ToUtf8(Urls.Body)).substr(0, 2), "[{");
}

TEST_F(ZnMotionPath, AnswerCollectionSpeaksTheReplyByItsRules)
{
	struct FCase
	{
		const char* Question;
		const char* Reply;
		int32 Frames;
	};
	const FCase Cases[] = {
		// 11 words: 4.4 s.
		{"  What time is it?  ", "You asked: What time is it? I can only repeat questions.", 132},
		// 9 words: 3.6 s.
		{"Hello there", "Hello! This is the local service. Ask me anything.", 108},
		{"你好", "Hello! This is the local service. Ask me anything.", 108},
		// "his" is no greeting; 5 words: 2 s.
		{"his tea", "You said: his tea", 48},
		{"I like tea", "You said: I like tea", 60},
		// The full-width question mark; each wide character is a word: 11 words.
		{"吃了吗？", "You asked: 吃了吗？ I can only repeat questions.", 132},
	};
	for (const FCase& Case : Cases)
	{
		const std::string Body = ToUtf8(UZnDM_BpFuncLib::MakeJsonAnswerCollectMotion(ToFString(Case.Question),
			TEXT("wav"), TEXT("aixia"), 50, 50, 50, 1, TEXT("female"), 0, 0, 15, 3, false, 0, false));
		const auto Answer = PostWithToken(AnswerPath, Body);
		ASSERT_TRUE(Answer);
		ASSERT_EQ(Answer->status, 200) << Answer->body;
		const FUrls Urls = ParseMotion(Answer->body, ZnJsonDataType::AnswerCollect);
		EXPECT_EQ(ToUtf8(Urls.Text), Case.Reply);
		if (Case.Frames > 0)
		{
			ExpectWav(Fetch(ToUtf8(Urls.Audio)), uint32_t(Case.Frames));
		}
	}
}

TEST_F(ZnMotionPath, VoiceBroadcastAnimatesHostedAudioForItsLength)
{
	// 1.5 s at 16 kHz mono: 45 frames.
	const std::string Url = Service->HostFile("voice.wav", HandMadeWav(16000, 1, 16, 24000, false));
	ASSERT_EQ(Url, Service->BaseUrl() + "/files/voice.wav");
	const std::string Body = ToUtf8(UZnDM_BpFuncLib::MakeJsonVoiceBroadcastMotion(
		ToFString(Url), TEXT("wav"), 0, TEXT("male"), 0, 1, 0, 15, 3, false, 0, false));
	const auto Answer = PostWithToken(VoicePath, Body);
	ASSERT_TRUE(Answer);
	ASSERT_EQ(Answer->status, 200) << Answer->body;
	const FUrls Urls = ParseMotion(Answer->body, ZnJsonDataType::VoiceBroadcast, ToFString(Url));
	EXPECT_EQ(ToUtf8(Urls.Audio), Url);
	EXPECT_EQ(ParseJson(Answer->body)["data"]["ttsSynthesizeData"]["audio_url"], Url);
	ExpectV1Clips(Urls, 45);

	// Stereo, 24-bit, 8 kHz with a chunk before the data: 0.5 s, 15 frames.
	const std::string Stereo = Service->HostFile("stereo.wav", HandMadeWav(8000, 2, 24, 4000, true));
	const auto StereoAnswer = PostWithToken(VoicePath, R"({"audio_url": ")" + Stereo + R"("})");
	ASSERT_EQ(StereoAnswer->status, 200) << StereoAnswer->body;
	ExpectV1Clips(ParseMotion(StereoAnswer->body, ZnJsonDataType::VoiceBroadcast), 15);
}

TEST_F(ZnMotionPath, VoiceBroadcastRefusesWhatItCannotAnimate)
{
	ExpectRefusal(PostWithToken(VoicePath, R"({"audio_url": ")" + Service->BaseUrl() + R"(/files/none.wav"})"), 422,
		int(EZnServiceCode::AudioUnavailable), "names no file this service hosts: \"none.wav\"");
	const std::string Text = Service->HostFile("notes.wav", {'h', 'e', 'l', 'l', 'o'});
	ExpectRefusal(PostWithToken(VoicePath, R"({"audio_url": ")" + Text + R"("})"), 422,
		int(EZnServiceCode::AudioNotWav), "not a WAV file");
	// A compressed format is not read.
	std::vector<uint8_t> Compressed = HandMadeWav(8000, 1, 16, 100, false);
	Compressed[20] = 3;
	const std::string Float = Service->HostFile("float.wav", Compressed);
	ExpectRefusal(PostWithToken(VoicePath, R"({"audio_url": ")" + Float + R"("})"), 422,
		int(EZnServiceCode::AudioNotWav), "not integer PCM");
	ExpectRefusal(PostWithToken(VoicePath, R"({"audio_url": "http://127.0.0.1:1/elsewhere.wav"})"), 403,
		int(EZnServiceCode::AudioRefused), "remote audio is off");
	ExpectRefusal(PostWithToken(VoicePath, R"({"audio_url": ""})"), 400, int(EZnServiceCode::MalformedBody),
		"\"audio_url\" is empty");
}

TEST(ZnRemoteAudio, AllowedRemoteAudioIsFetched)
{
	FZnLocalServiceConfig Quiet;
	Quiet.LogLine = [](const std::string&) {};
	FZnLocalService Elsewhere(Quiet);
	FZnLocalServiceConfig Config = Quiet;
	Config.bAllowRemoteAudio = true;
	FZnLocalService Service(Config);
	std::string Error;
	ASSERT_TRUE(Elsewhere.Start(Error)) << Error;
	ASSERT_TRUE(Service.Start(Error)) << Error;
	// 0.2 s: 6 frames.
	const std::string Url = Elsewhere.HostFile("remote.wav", HandMadeWav(10000, 1, 16, 2000, false));
	httplib::Client Client(Service.BaseUrl());
	const httplib::Headers Token = {{"access_token", Service.IssueToken("demo")}};
	const auto Answer = Client.Post(VoicePath, Token, R"({"audio_url": ")" + Url + R"("})", "application/json");
	ASSERT_TRUE(Answer);
	ASSERT_EQ(Answer->status, 200) << Answer->body;
	const Json Envelope = ParseJson(Answer->body);
	EXPECT_DOUBLE_EQ(Envelope["data"]["ttsSynthesizeData"]["duration"].get<double>(), 0.2);
	EXPECT_EQ(Envelope["data"]["ttsSynthesizeData"]["audio_url"], Url);

	const auto Missing = Client.Post(
		VoicePath, Token, R"({"audio_url": ")" + Elsewhere.BaseUrl() + R"(/files/gone.wav"})", "application/json");
	ASSERT_TRUE(Missing);
	EXPECT_EQ(Missing->status, 422);
	EXPECT_EQ(ParseJson(Missing->body)["code"], int(EZnServiceCode::AudioUnavailable));
	EXPECT_NE(ParseJson(Missing->body)["msg"].get<std::string>().find("HTTP 404"), std::string::npos);
	const auto NotHttp = Client.Post(VoicePath, Token, R"({"audio_url": "ftp://127.0.0.1/a.wav"})", "application/json");
	ASSERT_TRUE(NotHttp);
	EXPECT_EQ(NotHttp->status, 422);
	EXPECT_NE(ParseJson(NotHttp->body)["msg"].get<std::string>().find("only http and https"), std::string::npos);
}

TEST_F(ZnMotionPath, SpeechPathAnswersTheSpeechEnvelope)
{
	EXPECT_STREQ(FZnLocalService::SpeechPath, "/v1.0/api/ttsSynthesize");
	// No token: the speech request carries none. Speed "100": 5 words in 4/3 s, 40 frames.
	const std::string Body = ToUtf8(UZnDM_BpFuncLib::TTS_ParamsToJson(
		TEXT("one two three four five"), TEXT("aixia"), TEXT("100"), TEXT("50"), TEXT("50"), TEXT("female"), 3));
	const auto Answer = Post(FZnLocalService::SpeechPath, Body);
	ASSERT_TRUE(Answer);
	ASSERT_EQ(Answer->status, 200) << Answer->body;
	EXPECT_EQ(ParseJson(Answer->body)["code"], 200);
	FString Audio, BodyUrl, Face;
	ASSERT_TRUE(UZnDM_BpFuncLib::TTS_ParseResponseJson(ToFString(Answer->body), Audio, BodyUrl, Face));
	ExpectWav(Fetch(ToUtf8(Audio)), 40);
	ExpectV1Clips(FUrls{Audio, Face, BodyUrl, FString()}, 40);

	// "face_shape" is how a speech request asks for another face shape.
	const auto Rig = Post(FZnLocalService::SpeechPath,
		R"({"text": "a b", "speed": 50, "volume": "0", "pitch": "7", "face_shape": "control_rig"})");
	ASSERT_EQ(Rig->status, 200) << Rig->body;
	EXPECT_TRUE(ParseJson(Fetch(ParseJson(Rig->body)["data"]["faceUrl"])).contains("curve_names"));
}

TEST_F(ZnMotionPath, MalformedBodiesAreRefusedNamingWhatIsWrong)
{
	struct FCase
	{
		const char* Path;
		std::string Body;
		const char* Needle;
	};
	const FCase Cases[] = {
		{TextPath, "{\"draft_content\": ", "not valid JSON"},
		{TextPath, "", "not valid JSON"},
		{TextPath, "[1, 2]", "not a JSON object"},
		{TextPath, "{}", "\"draft_content\" is missing"},
		{TextPath, R"({"draft_content": 5})", "\"draft_content\" must be a string"},
		{TextPath, R"({"draft_content": "   "})", "\"draft_content\" has no words"},
		{TextPath, R"({"draft_content": "a", "tts_config": [1]})", "\"tts_config\" must be an object"},
		{TextPath, R"({"draft_content": "a", "tts_config": {"tts_speed": "fast"}})",
			"\"tts_config.tts_speed\" must be a number"},
		{TextPath, R"({"draft_content": "a", "face_config": {"face_type": 1e300}})",
			"\"face_config.face_type\" is out of range"},
		{TextPath, R"({"draft_content": "a", "face_shape": "v3"})", "\"face_shape\" must be"},
		{TextPath, R"({"draft_content": "a", "body_shape": 2})", "\"body_shape\" must be a string"},
		{AnswerPath, R"({"question": "a"})", "\"text\" is missing"},
		{VoicePath, R"({"audio": "a"})", "\"audio_url\" is missing"},
		{FZnLocalService::SpeechPath, R"({"text": "a", "speed": "quick"})", "\"speed\" must hold a number"},
		{FZnLocalService::SpeechPath, R"({"voiceName": "a"})", "\"text\" is missing"},
	};
	const std::string TokenText = Token();
	for (const FCase& Case : Cases)
	{
		SCOPED_TRACE(Case.Body);
		ExpectRefusal(Post(Case.Path, Case.Body, {{"access_token", TokenText}}), 400,
			int(EZnServiceCode::MalformedBody), Case.Needle);
	}
	// 501 words is one more than a request may say.
	std::string Long;
	for (int Index = 0; Index < 501; ++Index)
	{
		Long += "w ";
	}
	ExpectRefusal(Post(TextPath, R"({"draft_content": ")" + Long + R"("})", {{"access_token", TokenText}}), 400,
		int(EZnServiceCode::MalformedBody), "has 501 words; at most 500");
}

TEST_F(ZnMotionPath, UnknownPathsAndMethodsAreRefused)
{
	ExpectRefusal(Get("/v9/api/nothing"), 404, int(EZnServiceCode::UnknownPath), "unknown path \"/v9/api/nothing\"");
	// Paths match exactly, case included.
	ExpectRefusal(Post("/v3.0/api/answerCollectMotion", "{}"), 404, int(EZnServiceCode::UnknownPath), "unknown path");
	ExpectRefusal(Client()->Put(TextPath, "{}", "application/json"), 405, int(EZnServiceCode::MethodNotAllowed),
		"method PUT is not allowed");
	ExpectRefusal(Client()->Delete("/files/a.wav"), 405, int(EZnServiceCode::MethodNotAllowed), "use GET");
	ExpectRefusal(Post("/files/a.wav", "x"), 405, int(EZnServiceCode::MethodNotAllowed), "use GET");
	ExpectRefusal(Client()->Delete("/users/getAppToken"), 405, int(EZnServiceCode::MethodNotAllowed), "GET or POST");
}

TEST_F(ZnMotionPath, EveryRequestIsOneLogLine)
{
	Get("/users/getAppToken");
	Get("/nowhere");
	PostWithToken(TextPath, TextBody("a b"));
	const std::vector<std::string> Lines = Log();
	// The token fetched for the last request is one more.
	ASSERT_EQ(Lines.size(), 4u);
	EXPECT_EQ(Service->RequestCount(), 4u);
	EXPECT_EQ(Lines[0].rfind("GET /users/getAppToken -> 200 code 10001", 0), 0u) << Lines[0];
	EXPECT_EQ(Lines[1].rfind("GET /nowhere -> 404 code 10011", 0), 0u) << Lines[1];
	EXPECT_EQ(Lines[3].rfind("POST /v3.0/api/textBroadcastMotion -> 200 code 0", 0), 0u) << Lines[3];
}
