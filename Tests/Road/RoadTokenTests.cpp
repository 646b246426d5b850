// GetAppToken: the signed query, the stricter success test and its failure table, and the whole
// road from a token to decoded motion against the local service.
#include "ZnRoadTestSupport.h"

#include "Sha1.h"
#include "ZnBodyData.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnFaceData.h"
#include "ZnHttpTestServers.h"
#include "ZnTestLogCapture.h"

#include <httplib.h>
#include <mutex>
#include <regex>

namespace
{
UZnDM_HttpRequest* NewBoundRequest(UZnRoadListener* Listener)
{
	UZnDM_HttpRequest* Request = UZnDM_HttpRequest::CreateHttpRequest();
	Request->OnCompleted.AddDynamic(Listener, &UZnRoadListener::OnRequest);
	Request->OnGetAppTokenCompleted.AddDynamic(Listener, &UZnRoadListener::OnToken);
	return Request;
}

// A token endpoint that answers with a fixed status and body and remembers the query it got.
struct FCannedToken
{
	int Status;
	std::string Body;
	std::mutex Mutex;
	std::string Target;
	FZnTestHttpServer Server{[this](httplib::Server& S)
		{
			const auto Answer = [this](const httplib::Request& Request, httplib::Response& Response)
			{
				{
					std::lock_guard<std::mutex> Lock(Mutex);
					Target = Request.target;
				}
				Response.status = Status;
				Response.set_content(Body, "application/json");
			};
			S.Get("/users/getAppToken", Answer);
			S.Post("/users/getAppToken", Answer);
		}};

	FCannedToken(int InStatus, std::string InBody)
		: Status(InStatus)
		, Body(MoveTemp(InBody))
	{
	}
	FString Url() const { return ZnText(Server.Url("/users/getAppToken")); }
};

UZnRoadListener::FText FetchToken(UZnRoadListener* Listener, const FString& Url, const FString& AppId = TEXT("app"),
	const FString& Secret = TEXT("sec"))
{
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener);
	const size_t Before = Listener->Tokens.size();
	Request->GetAppToken(Url, AppId, Secret, ZnDM_HttpVerb::GET, false);
	EXPECT_TRUE(ZnRoadTickUntil([&]() { return Listener->Tokens.size() > Before; }));
	EXPECT_TRUE(Listener->Requests.empty()) << "OnCompleted is not fired by GetAppToken";
	return Listener->Tokens.size() > Before ? Listener->Tokens.back() : UZnRoadListener::FText();
}

const std::string GoodBody = "{\"code\":0,\"data\":{\"access_token\":\"T-42\"}}";
} // namespace

TEST_F(FZnRoadTest, TokenQueryIsSignedAndSentUnescaped)
{
	FCannedToken Canned(200, GoodBody);
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	Request->GetAppToken(Canned.Url(), TEXT("a&b"), TEXT(""), ZnDM_HttpVerb::GET, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Tokens.empty(); }));
	std::smatch Match;
	const std::string Target = Canned.Target;
	ASSERT_TRUE(std::regex_match(
		Target, Match, std::regex(R"(/users/getAppToken\?appid=a&b&secret=&timestamp=(\d{13})&sign=([0-9a-f]{40}))")))
		<< Target;
	EXPECT_EQ(Match[2].str(), Sha1::sha1("a&b" + Match[1].str()));
	EXPECT_EQ(ZnUtf8(Request->mContent), ZnUtf8(Canned.Url()) + Target.substr(Target.find('?')));
	EXPECT_EQ(Request->mUrl, Canned.Url());
}

TEST_F(FZnRoadTest, TokenStatus201IsAcceptedAnd207IsNot)
{
	FCannedToken Created(201, GoodBody);
	const UZnRoadListener::FText Accepted = FetchToken(Listener.Get(), Created.Url());
	EXPECT_TRUE(Accepted.bOk);
	EXPECT_EQ(Accepted.Text, TEXT("T-42"));
	FCannedToken MultiStatus(207, GoodBody);
	const UZnRoadListener::FText Refused = FetchToken(Listener.Get(), MultiStatus.Url());
	EXPECT_FALSE(Refused.bOk);
	EXPECT_EQ(Refused.Text, TEXT("request error, response code:207"));
}

TEST_F(FZnRoadTest, TokenFailureTable)
{
	struct FRow
	{
		std::string Body;
		bool bOk;
		bool bWholeBody;
	};
	const FRow Rows[] = {
		{"not json", false, true},
		{"{\"msg\":\"no code\"}", false, true},
		{"{\"code\":5,\"data\":{\"access_token\":\"T\"}}", false, true},
		{"{\"code\":0,\"data\":{}}", true, true},
		{"{\"code\":0,\"data\":{\"access_token\":\"\"}}", true, true},
		{"{\"code\":0}", true, true},
		{"{\"code\":0.5,\"data\":{\"access_token\":\"T\"}}", false, true},
	};
	for (const FRow& Row : Rows)
	{
		FCannedToken Canned(200, Row.Body);
		const UZnRoadListener::FText Got = FetchToken(Listener.Get(), Canned.Url());
		EXPECT_EQ(Got.bOk, Row.bOk) << Row.Body;
		EXPECT_EQ(ZnUtf8(Got.Text), Row.Body);
	}
}

TEST_F(FZnRoadTest, TokenLogLinesGoThroughTheLoggerOnlyWhenAsked)
{
	FCannedToken Canned(500, "{}");
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	char Prefix[32];
	snprintf(Prefix, sizeof(Prefix), "uniqueId:0x%02X, ", Request->GetUniqueID());
	FZnTestLogCapture Log;
	Request->GetAppToken(Canned.Url(), TEXT("app"), TEXT("sec"), ZnDM_HttpVerb::POST, true);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Tokens.empty(); }));
	const std::vector<std::string> Lines = Log.TextsOf("ZnDM");
	ASSERT_EQ(Lines.size(), 10u);
	EXPECT_EQ(Lines[0], "mContent:" + ZnUtf8(Request->mContent));
	EXPECT_EQ(Lines[1], std::string(Prefix) + "ProcessRequest, inURL:" + ZnUtf8(Request->mContent));
	EXPECT_EQ(Lines[2].rfind(std::string(Prefix) + "OnRequestCompleted, elapsedTime:", 0), 0u);
	EXPECT_EQ(Lines[3], std::string(Prefix) + "--request error, response code:500");
	EXPECT_EQ(Lines[4], std::string(Prefix) + "--mUrl:" + ZnUtf8(Canned.Url()));
	EXPECT_EQ(Lines[5], "Response IsValid:true");
	EXPECT_EQ(Lines[6], "IsSuccess:true");
	EXPECT_EQ(Lines[7], "ResponseCode:[500]");
	EXPECT_EQ(Lines[8], "ResponseStr:");
	EXPECT_EQ(Lines[9], "{}");

	FZnTestLogCapture Quiet;
	Request->GetAppToken(Canned.Url(), TEXT("app"), TEXT("sec"), ZnDM_HttpVerb::POST, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Tokens.size() == 2; }));
	ASSERT_EQ(Quiet.TextsOf("ZnDM").size(), 1u) << "only the mContent line";
}

// The road of one utterance against the local service: token, motion request, the three files,
// the decoders.
TEST_F(FZnRoadTest, TokenRoadEndToEnd)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	Request->GetAppToken(
		Local.UrlText("/users/getAppToken"), TEXT("demo"), TEXT("demo-secret"), ZnDM_HttpVerb::GET, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Tokens.empty(); }));
	ASSERT_TRUE(Listener->Tokens[0].bOk) << ZnUtf8(Listener->Tokens[0].Text);
	const FString Token = Listener->Tokens[0].Text;
	EXPECT_FALSE(Token.IsEmpty());
	EXPECT_EQ(ZnUtf8(Token).find('{'), std::string::npos) << "the token itself, not the body";

	// The same object serves the motion request.
	const FString Body = UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(TEXT("Hello from the road test."));
	Request->DoRequestEasy(Token, Local.UrlText("/v3.0/api/textBroadcastMotion"), Body, ZnDM_HttpVerb::POST, false, 20);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }, 30.0));
	ASSERT_TRUE(Listener->Requests[0].bOk);
	FString AudioUrl, FaceUrl, BodyUrl, Text;
	ASSERT_TRUE(UZnDM_BpFuncLib::ParseJsonTmp(
		Listener->Requests[0].Text, FString(), ZnJsonDataType::TextBroadcast, AudioUrl, FaceUrl, BodyUrl, Text))
		<< ZnUtf8(Listener->Requests[0].Text);

	UZnDM_TTSHttpDownload* Download = UZnDM_TTSHttpDownload::CreateTTSHttpDownload();
	Download->OnCompleted.AddDynamic(Listener.Get(), &UZnRoadListener::OnThreeFiles);
	Download->DoDownload(AudioUrl, FaceUrl, BodyUrl, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Downloads.empty(); }, 30.0));
	const UZnRoadListener::FThreeFiles& Files = Listener->Downloads[0];
	ASSERT_TRUE(Files.bAudio && Files.bFace && Files.bBody);
	EXPECT_EQ(ZnBytes(Files.Audio).substr(0, 4), "RIFF");

	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFacedata(Files.Face, Face);
	FZnBodyData BodyData;
	UZnDM_BpFuncLib::ParseJsonToBodydata(Files.Body, BodyData);
	EXPECT_GT(Face.totalTime, 0.5f);
	EXPECT_GT(BodyData.totalTime, 0.5f);
}

TEST_F(FZnRoadTest, ServiceRefusalsReachTheDelegate)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	// The token path answers a refusal under status 200, so GetAppToken delivers the whole envelope.
	const UZnRoadListener::FText Wrong =
		FetchToken(Listener.Get(), Local.UrlText("/users/getAppToken"), TEXT("demo"), TEXT("wrong-secret"));
	EXPECT_FALSE(Wrong.bOk);
	EXPECT_NE(ZnUtf8(Wrong.Text).find("\"code\":10003"), std::string::npos) << ZnUtf8(Wrong.Text);
	EXPECT_NE(ZnUtf8(Wrong.Text).find("wrong secret for appid"), std::string::npos) << ZnUtf8(Wrong.Text);
	const UZnRoadListener::FText Unknown =
		FetchToken(Listener.Get(), Local.UrlText("/users/getAppToken"), TEXT("nobody"), TEXT("demo-secret"));
	EXPECT_FALSE(Unknown.bOk);
	EXPECT_NE(ZnUtf8(Unknown.Text).find("\"code\":10002"), std::string::npos) << ZnUtf8(Unknown.Text);

	// A stale timestamp cannot come from GetAppToken, which stamps the present: the same query
	// built by hand is sent as a plain request, and the service's code and message arrive in full.
	const auto Ask = [&](const std::string& Secret, const std::string& Timestamp)
	{
		const std::string Query = "?appid=demo&secret=" + Secret + "&timestamp=" + Timestamp +
			"&sign=" + Sha1::GetSha1("demo", Secret, Timestamp);
		UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
		const size_t Before = Listener->Requests.size();
		Request->DoRequestEasy(
			TEXT(""), Local.UrlText("/users/getAppToken" + Query), TEXT(""), ZnDM_HttpVerb::GET, false);
		EXPECT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() > Before; }));
		return ZnUtf8(Listener->Requests.back().Text);
	};
	const std::string WrongSecret = Ask("wrong-secret", Sha1::getUnixStr());
	EXPECT_NE(WrongSecret.find("\"code\":10003"), std::string::npos) << WrongSecret;
	EXPECT_NE(WrongSecret.find("\"msg\":"), std::string::npos) << WrongSecret;
	const std::string Stale = Ask("demo-secret", std::to_string(Sha1::getUnix() - 3600 * 1000));
	EXPECT_NE(Stale.find("\"code\":10005"), std::string::npos) << Stale;
	EXPECT_NE(Stale.find("stale timestamp"), std::string::npos) << Stale;

	// A motion request without a token.
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	const size_t Before = Listener->Requests.size();
	Request->DoRequestEasy(TEXT(""), Local.UrlText("/v3.0/api/textBroadcastMotion"),
		UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(TEXT("hi")), ZnDM_HttpVerb::POST, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() > Before; }));
	EXPECT_TRUE(Listener->Requests.back().bOk) << "any status is delivered as success";
	const std::string Missing = ZnUtf8(Listener->Requests.back().Text);
	EXPECT_NE(Missing.find("\"code\":10007"), std::string::npos) << Missing;
	EXPECT_NE(Missing.find("access_token"), std::string::npos) << Missing;
}
