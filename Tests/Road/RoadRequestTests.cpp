// UZnDM_HttpRequest's four request operations over loopback: what goes on the wire, what the
// delegate receives, and which lines go to the engine log and which through the module logger.
#include "ZnRoadTestSupport.h"

#include "ZnHttpTestServers.h"
#include "ZnTestLogCapture.h"

#include <mutex>

namespace
{
// Captures the last request's bytes and answers 200 "ok".
struct FCapture
{
	std::mutex Mutex;
	std::string Received;
	FZnRawTestServer Server{[this](int Socket, const std::atomic<bool>&)
		{
			const std::string Request = FZnRawTestServer::ReadRequest(Socket);
			{
				std::lock_guard<std::mutex> Lock(Mutex);
				Received = Request;
			}
			FZnRawTestServer::SendAll(Socket, "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok");
		}};

	std::string Get()
	{
		std::lock_guard<std::mutex> Lock(Mutex);
		return Received;
	}
	FString Url(const std::string& Path) const { return ZnText(Server.Url(Path)); }
};

UZnDM_HttpRequest* NewBoundRequest(UZnRoadListener* Listener)
{
	UZnDM_HttpRequest* Request = UZnDM_HttpRequest::CreateHttpRequest();
	Request->OnCompleted.AddDynamic(Listener, &UZnRoadListener::OnRequest);
	Request->OnGetAppTokenCompleted.AddDynamic(Listener, &UZnRoadListener::OnToken);
	return Request;
}

std::string Hex2(const UObject* Object)
{
	char Text[32];
	snprintf(Text, sizeof(Text), "uniqueId:0x%02X, ", Object->GetUniqueID());
	return Text;
}

bool Contains(const std::vector<std::string>& Lines, const std::string& Line)
{
	return std::find(Lines.begin(), Lines.end(), Line) != Lines.end();
}
} // namespace

TEST_F(FZnRoadTest, CreationRootsAnObjectInTheTransientPackage)
{
	UZnDM_HttpRequest* Request = UZnDM_HttpRequest::CreateHttpRequest();
	EXPECT_TRUE(Request->IsRooted());
	EXPECT_EQ(Request->GetOuter(), GetTransientPackage());
	EXPECT_FALSE(Request->mPrintLog);
	UZnDM_HttpRequest* Other = UZnDM_HttpRequest::CreateHttpRequest();
	EXPECT_NE(Request->GetUniqueID(), Other->GetUniqueID());
	Request->RemoveFromRoot();
	Other->RemoveFromRoot();
}

TEST_F(FZnRoadTest, DoRequestEasyWithGetStillSendsBodyAndBothHeaders)
{
	FCapture Capture;
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	Request->DoRequestEasy(TEXT("tok-1"), Capture.Url("/easy"), TEXT("{\"text\":\"hi\"}"), ZnDM_HttpVerb::GET, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	const std::string Wire = Capture.Get();
	EXPECT_EQ(Wire.rfind("GET /easy HTTP/1.1\r\n", 0), 0u) << Wire;
	const size_t ContentType = Wire.find("\r\nContent-Type: application/json\r\n");
	const size_t Token = Wire.find("\r\naccess_token: tok-1\r\n");
	ASSERT_NE(ContentType, std::string::npos) << Wire;
	ASSERT_NE(Token, std::string::npos) << Wire;
	EXPECT_LT(ContentType, Token) << "Content-Type is set first";
	EXPECT_EQ(Wire.substr(Wire.size() - 13), "{\"text\":\"hi\"}");
	EXPECT_EQ(Request->mUrl, Capture.Url("/easy"));
	EXPECT_EQ(Request->mContent, TEXT("{\"text\":\"hi\"}"));
	ASSERT_EQ(Listener->Requests.size(), 1u);
	EXPECT_TRUE(Listener->Requests[0].bOk);
	EXPECT_EQ(Listener->Requests[0].Text, TEXT("ok"));
}

TEST_F(FZnRoadTest, DoRequestTestSendsTheTextAndAlwaysPosts)
{
	FCapture Capture;
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	const float Timeout = 3.0f;
	Request->DoRequestTest(TEXT("  ") + Capture.Url("/test") + TEXT(" \t"), ZnDM_HttpVerb::GET,
		ZnByteArray("bytes-not-sent"), TEXT("text-sent"), Timeout, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	const std::string Wire = Capture.Get();
	EXPECT_EQ(Wire.rfind("POST /test HTTP/1.1\r\n", 0), 0u) << Wire;
	EXPECT_NE(Wire.find("\r\nContent-Type: application/json\r\n"), std::string::npos);
	EXPECT_EQ(Wire.substr(Wire.size() - 9), "text-sent");
	EXPECT_EQ(Wire.find("bytes-not-sent"), std::string::npos);
	EXPECT_TRUE(Listener->Requests[0].bOk);
}

TEST_F(FZnRoadTest, DoRequestPostsTheBytesAsJson)
{
	FCapture Capture;
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	Request->DoRequest(Capture.Url("/raw"), ZnByteArray("{\"a\":\"\xC3\xA9\"}"), false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	const std::string Wire = Capture.Get();
	EXPECT_EQ(Wire.rfind("POST /raw HTTP/1.1\r\n", 0), 0u) << Wire;
	EXPECT_NE(Wire.find("\r\nContent-Type: application/json\r\n"), std::string::npos);
	EXPECT_EQ(Wire.substr(Wire.size() - 10), "{\"a\":\"\xC3\xA9\"}");
	EXPECT_TRUE(Request->mUrl.IsEmpty()) << "DoRequest does not store its URL";
}

TEST_F(FZnRoadTest, DoRequestFormSendsTheCallersContentType)
{
	FCapture Capture;
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	Request->DoRequestForm(
		TEXT("multipart/form-data"), TEXT("tok-2"), Capture.Url("/form"), TEXT("a=1"), ZnDM_HttpVerb::POST, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	const std::string Wire = Capture.Get();
	EXPECT_EQ(Wire.rfind("POST /form HTTP/1.1\r\n", 0), 0u) << Wire;
	EXPECT_NE(Wire.find("\r\nContent-Type: multipart/form-data\r\n"), std::string::npos) << Wire;
	EXPECT_NE(Wire.find("\r\naccess_token: tok-2\r\n"), std::string::npos) << Wire;
	EXPECT_EQ(Wire.substr(Wire.size() - 3), "a=1");
}

TEST_F(FZnRoadTest, NotFoundWithABodyIsDeliveredAsSuccess)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	Request->DoRequestEasy(TEXT("t"), Local.UrlText("/no/such/path"), TEXT("{}"), ZnDM_HttpVerb::POST, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	ASSERT_EQ(Listener->Requests.size(), 1u);
	EXPECT_TRUE(Listener->Requests[0].bOk);
	EXPECT_NE(ZnUtf8(Listener->Requests[0].Text).find("\"code\":10011"), std::string::npos)
		<< ZnUtf8(Listener->Requests[0].Text);
	EXPECT_FALSE(Request->IsRooted());
}

TEST_F(FZnRoadTest, TimeoutGivesRequestErrorWithCodeZero)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	const std::string Url = FZnLocalService::WithFault(Local.Url("/v3.0/api/textBroadcastMotion"), "stall");
	Request->DoRequestEasy(TEXT("t"), ZnText(Url), TEXT("{}"), ZnDM_HttpVerb::POST, false, 1);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	ASSERT_EQ(Listener->Requests.size(), 1u);
	EXPECT_FALSE(Listener->Requests[0].bOk);
	EXPECT_EQ(Listener->Requests[0].Text, TEXT("request error, response code:0"));
}

TEST_F(FZnRoadTest, FailureWithAStatusCarriesThatStatus)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	const std::string File = Local.Service->HostFile("long.json", std::vector<uint8_t>(4000, 'x'));
	const std::string Url = FZnLocalService::WithFault(File, "truncate");
	Request->DoRequestEasy(TEXT("t"), ZnText(Url), TEXT(""), ZnDM_HttpVerb::GET, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	EXPECT_FALSE(Listener->Requests[0].bOk);
	EXPECT_EQ(ZnUtf8(Listener->Requests[0].Text), "request error, response code:200");
}

TEST_F(FZnRoadTest, EmptyUrlFailsWithCodeZero)
{
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	Request->DoRequest(TEXT(""), TArray<uint8>(), false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	EXPECT_FALSE(Listener->Requests[0].bOk);
	EXPECT_EQ(Listener->Requests[0].Text, TEXT("request error, response code:0"));
	EXPECT_FALSE(Request->IsRooted());
}

TEST_F(FZnRoadTest, WithoutPrintLogOnlyTheTwoEngineLinesAppear)
{
	FCapture Capture;
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	const std::string Prefix = Hex2(Request);
	FZnTestLogCapture Log;
	FZnLogFileWatch File;
	Request->DoRequestEasy(TEXT("t"), Capture.Url("/quiet"), TEXT("body"), ZnDM_HttpVerb::POST, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	const std::vector<std::string> Lines = Log.TextsOf("ZnDM");
	ASSERT_EQ(Lines.size(), 2u);
	EXPECT_EQ(Lines[0], Prefix + "ProcessRequest, inURL:" + ZnUtf8(Capture.Url("/quiet")) + ", content:body");
	EXPECT_EQ(Lines[1].rfind(Prefix + "OnRequestCompleted, elapsedTime:", 0), 0u) << Lines[1];
	EXPECT_TRUE(File.NewLines().empty());

	// DoRequest writes only the elapsed-time line.
	FZnTestLogCapture Second;
	Request->DoRequest(Capture.Url("/quiet"), TArray<uint8>(), false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() == 2; }));
	ASSERT_EQ(Second.TextsOf("ZnDM").size(), 1u);
}

TEST_F(FZnRoadTest, PrintLogWritesResponseAndSummaryThroughTheLogger)
{
	FCapture Capture;
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	const std::string Prefix = Hex2(Request);
	FZnTestLogCapture Log;
	Request->DoRequestForm(TEXT("text/plain"), TEXT("t"), Capture.Url("/loud"), TEXT("c"), ZnDM_HttpVerb::POST, true);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	const std::vector<std::string> Lines = Log.TextsOf("ZnDM");
	const std::vector<std::string> Expected = {
		Prefix + "ProcessRequest, inURL:" + ZnUtf8(Capture.Url("/loud")) + ", content:c",
		Lines.size() > 1 ? Lines[1] : "",
		Prefix + "--responseStr:ok",
		"Response IsValid:true",
		"IsSuccess:true",
		"ResponseCode:[200]",
		"ResponseStr:",
		"ok",
	};
	EXPECT_EQ(Lines, Expected);
	EXPECT_EQ(Lines.size() > 1 ? Lines[1].rfind(Prefix + "OnRequestCompleted, elapsedTime:", 0) : 1u, 0u);
}

TEST_F(FZnRoadTest, DoRequestFailureLogShowsWhatAnEarlierCallStored)
{
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	const std::string Prefix = Hex2(Request);
	{
		FZnTestLogCapture Log;
		Request->DoRequest(TEXT(""), TArray<uint8>(), true);
		ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() == 1; }));
		const std::vector<std::string> Lines = Log.TextsOf("ZnDM");
		EXPECT_TRUE(Contains(Lines, Prefix + "--request error, response code:0"));
		EXPECT_TRUE(Contains(Lines, Prefix + "--mUrl:")) << "empty on a fresh object";
		EXPECT_TRUE(Contains(Lines, Prefix + "--mContent:"));
		EXPECT_TRUE(Contains(Lines, "Response IsValid:false"));
		EXPECT_TRUE(Contains(Lines, "IsSuccess:false"));
		EXPECT_TRUE(Contains(Lines, "ResponseCode:[0]"));
	}
	Request->DoRequestEasy(TEXT("t"), TEXT(""), TEXT("earlier body"), ZnDM_HttpVerb::POST, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() == 2; }));
	FZnTestLogCapture Log;
	Request->DoRequest(TEXT(""), ZnByteArray("new"), true);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() == 3; }));
	const std::vector<std::string> Lines = Log.TextsOf("ZnDM");
	EXPECT_TRUE(Contains(Lines, Prefix + "--mContent:earlier body"));
}

TEST_F(FZnRoadTest, OverlappingCallsOnOneObjectBothBroadcast)
{
	FCapture Capture;
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	Request->DoRequestEasy(TEXT("t"), Capture.Url("/one"), TEXT("1"), ZnDM_HttpVerb::POST, false);
	Request->DoRequestEasy(TEXT("t"), Capture.Url("/two"), TEXT("2"), ZnDM_HttpVerb::POST, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Requests.size() == 2; }));
	FHttpModule::Get().GetHttpManager().TickUntil([]() { return false; }, 0.2);
	EXPECT_EQ(Listener->Requests.size(), 2u);
}

TEST_F(FZnRoadTest, TimeoutOfZeroSetsNoLimit)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	UZnDM_HttpRequest* Request = NewBoundRequest(Listener.Get());
	// Answered after 1.2 s: a zero timeout does not mean "fail at once", the transport's defaults apply.
	const std::string Url = FZnLocalService::WithFault(Local.Url("/no/path"), "delay=1200");
	Request->DoRequestEasy(TEXT("t"), ZnText(Url), TEXT("{}"), ZnDM_HttpVerb::POST, false, 0);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Requests.empty(); }));
	EXPECT_TRUE(Listener->Requests[0].bOk) << ZnUtf8(Listener->Requests[0].Text);
}
