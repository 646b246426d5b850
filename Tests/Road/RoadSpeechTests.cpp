// UZnDM_HttpRequest_TTS: the speech body, the "code" 200 rule with its truncation, and the
// failures that all read as false with three empty URLs.
#include "ZnRoadTestSupport.h"

#include "ZnHttpTestServers.h"
#include "ZnTestLogCapture.h"

#include <httplib.h>
#include <mutex>

namespace
{
struct FCannedSpeech
{
	int Status;
	std::string Body;
	std::mutex Mutex;
	std::string Received;
	FZnTestHttpServer Server{[this](httplib::Server& S)
		{
			S.Post("/tts",
				[this](const httplib::Request& Request, httplib::Response& Response)
				{
					{
						std::lock_guard<std::mutex> Lock(Mutex);
						Received = Request.body;
					}
					Response.status = Status;
					Response.set_content(Body, "application/json");
				});
		}};
	FCannedSpeech(int InStatus, std::string InBody)
		: Status(InStatus)
		, Body(MoveTemp(InBody))
	{
	}
};

UZnRoadListener::FUrls Speak(UZnRoadListener* Listener, const FString& Url, bool bShowDebug = false)
{
	UZnDM_HttpRequest_TTS* Request = UZnDM_HttpRequest_TTS::CreateHttpRequest_TTS();
	Request->OnCompleted.AddDynamic(Listener, &UZnRoadListener::OnSpeech);
	const size_t Before = Listener->Speech.size();
	Request->DoRequest(
		Url, TEXT("hello"), TEXT("aixia"), TEXT("50"), TEXT("60"), TEXT("70"), TEXT("male"), 3, bShowDebug);
	EXPECT_TRUE(Request->IsRooted());
	EXPECT_TRUE(ZnRoadTickUntil([&]() { return Listener->Speech.size() > Before; }));
	EXPECT_FALSE(Request->IsRooted());
	return Listener->Speech.size() > Before ? Listener->Speech.back() : UZnRoadListener::FUrls();
}

std::string Envelope(const std::string& Code)
{
	return "{\"code\":" + Code + ",\"data\":{\"url\":\"a.wav\",\"faceUrl\":\"f.json\",\"bodyUrl\":\"b.json\"}}";
}
} // namespace

TEST_F(FZnRoadTest, SpeechBodyKeepsProsodyAsStrings)
{
	FCannedSpeech Canned(200, Envelope("200"));
	const UZnRoadListener::FUrls Got = Speak(Listener.Get(), ZnText(Canned.Server.Url("/tts")));
	EXPECT_TRUE(Got.bOk);
	EXPECT_EQ(Got.Audio, TEXT("a.wav"));
	EXPECT_EQ(Got.Face, TEXT("f.json"));
	EXPECT_EQ(Got.Body, TEXT("b.json"));
	std::lock_guard<std::mutex> Lock(Canned.Mutex);
	EXPECT_NE(Canned.Received.find("\"speed\": \"50\""), std::string::npos) << Canned.Received;
	EXPECT_NE(Canned.Received.find("\"volume\": \"60\""), std::string::npos) << Canned.Received;
	EXPECT_NE(Canned.Received.find("\"pitch\": \"70\""), std::string::npos) << Canned.Received;
	EXPECT_NE(Canned.Received.find("\"tag\": 3"), std::string::npos) << Canned.Received;
}

TEST_F(FZnRoadTest, SpeechCodeIsTruncatedTowardZero)
{
	for (const char* Code : {"200.0", "200.7"})
	{
		FCannedSpeech Canned(200, Envelope(Code));
		EXPECT_TRUE(Speak(Listener.Get(), ZnText(Canned.Server.Url("/tts"))).bOk) << Code;
	}
	for (const char* Code : {"199.9", "0", "201"})
	{
		FCannedSpeech Canned(200, Envelope(Code));
		const UZnRoadListener::FUrls Got = Speak(Listener.Get(), ZnText(Canned.Server.Url("/tts")));
		EXPECT_FALSE(Got.bOk) << Code;
		EXPECT_TRUE(Got.Audio.IsEmpty() && Got.Face.IsEmpty() && Got.Body.IsEmpty()) << Code;
	}
}

TEST_F(FZnRoadTest, SpeechFailuresGiveFalseAndEmptyUrls)
{
	const std::pair<int, std::string> Cases[] = {
		{200, "{\"code\":200}"}, // no "data": a failure, not a crash
		{200, "not json"},
		{404, Envelope("200")}, // status outside 200..206
		{207, Envelope("200")},
	};
	for (const auto& Case : Cases)
	{
		FCannedSpeech Canned(Case.first, Case.second);
		const UZnRoadListener::FUrls Got = Speak(Listener.Get(), ZnText(Canned.Server.Url("/tts")));
		EXPECT_FALSE(Got.bOk) << Case.second;
		EXPECT_TRUE(Got.Audio.IsEmpty() && Got.Face.IsEmpty() && Got.Body.IsEmpty());
	}
	const UZnRoadListener::FUrls Unsent = Speak(Listener.Get(), TEXT(""));
	EXPECT_FALSE(Unsent.bOk);
}

TEST_F(FZnRoadTest, SpeechWithoutAUrlFieldSucceedsWithThatUrlEmpty)
{
	FCannedSpeech Canned(206, "{\"code\":200,\"data\":{\"url\":\"a.wav\",\"bodyUrl\":\"b.json\"}}");
	const UZnRoadListener::FUrls Got = Speak(Listener.Get(), ZnText(Canned.Server.Url("/tts")));
	EXPECT_TRUE(Got.bOk);
	EXPECT_EQ(Got.Audio, TEXT("a.wav"));
	EXPECT_TRUE(Got.Face.IsEmpty());
	EXPECT_EQ(Got.Body, TEXT("b.json"));
}

TEST_F(FZnRoadTest, SpeechSummaryOnlyWhenAsked)
{
	FCannedSpeech Canned(500, "{\"code\":500}");
	FZnTestLogCapture Quiet;
	Speak(Listener.Get(), ZnText(Canned.Server.Url("/tts")), false);
	EXPECT_TRUE(Quiet.TextsOf("ZnDM").empty());
	FZnTestLogCapture Loud;
	Speak(Listener.Get(), ZnText(Canned.Server.Url("/tts")), true);
	const std::vector<std::string> Expected = {
		"Response IsValid:true", "IsSuccess:true", "ResponseCode:[500]", "ResponseStr:", "{\"code\":500}"};
	EXPECT_EQ(Loud.TextsOf("ZnDM"), Expected);
}

TEST_F(FZnRoadTest, SpeechAgainstTheLocalService)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const UZnRoadListener::FUrls Got = Speak(Listener.Get(), Local.UrlText(FZnLocalService::SpeechPath));
	ASSERT_TRUE(Got.bOk);
	EXPECT_EQ(ZnUtf8(Got.Audio).rfind(Local.Service->BaseUrl(), 0), 0u) << ZnUtf8(Got.Audio);
	EXPECT_FALSE(Got.Face.IsEmpty());
	EXPECT_FALSE(Got.Body.IsEmpty());
}
