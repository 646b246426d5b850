// The request and response objects against real loopback servers: verbs, bodies, headers,
// statuses, redirects and requests that cannot be sent.
#include "ZnHttpTestServers.h"

#include "HAL/PlatformTLS.h"

#include <gtest/gtest.h>
#include <httplib.h>

namespace
{
// Answers every path with what it received: the verb, the headers asked about and the body.
void EchoRoutes(httplib::Server& Server)
{
	const auto Echo = [](const httplib::Request& Request, httplib::Response& Response)
	{
		const std::string Text = Request.method + "|" + Request.get_header_value("Content-Type") + "|" +
			Request.get_header_value("access_token") + "|" + Request.body;
		Response.set_content(Text, "text/plain");
	};
	Server.Get("/echo", Echo);
	Server.Post("/echo", Echo);
	Server.Put("/echo", Echo);
	Server.Get("/missing",
		[](const httplib::Request&, httplib::Response& Response)
		{
			Response.status = 404;
			Response.set_content("{\"code\":404,\"message\":\"no such thing\"}", "application/json");
		});
	Server.Get("/hop", [](const httplib::Request&, httplib::Response& Response) { Response.set_redirect("/hop2"); });
	Server.Get("/hop2", [](const httplib::Request&, httplib::Response& Response) { Response.set_redirect("/echo"); });
	Server.Get("/loop", [](const httplib::Request&, httplib::Response& Response) { Response.set_redirect("/loop"); });
	Server.Get("/header",
		[](const httplib::Request&, httplib::Response& Response)
		{
			Response.set_header("X-Zn-Test", "yes");
			Response.set_content("h", "text/plain");
		});
}

std::string Start(IHttpRequest& Request, FZnRecordedCompletion& Recorded)
{
	Recorded.Bind(Request);
	EXPECT_TRUE(Request.ProcessRequest());
	EXPECT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; }));
	return Recorded.Body;
}
} // namespace

TEST(HttpRequestTests, NewRequestDefaultsToGetAndNotStarted)
{
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	EXPECT_EQ(Request->GetVerb(), TEXT("GET"));
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::NotStarted);
	EXPECT_FALSE(Request->GetResponse().IsValid());
	EXPECT_EQ(Request->GetTimeout(), 0.0f);
}

TEST(HttpRequestTests, GetDeliversBodyOnceOnTheGameThread)
{
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/echo"));
	FZnRecordedCompletion Recorded;
	EXPECT_EQ(Start(*Request, Recorded), "GET|||");
	EXPECT_TRUE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 200);
	EXPECT_EQ(Recorded.ThreadId, FPlatformTLS::GetCurrentThreadId());
	EXPECT_EQ(Recorded.StatusInCall, EHttpRequestStatus::Succeeded);
	EXPECT_EQ(Request->GetResponse()->GetContentAsString(), TEXT("GET|||"));
	EXPECT_EQ(Request->GetResponse()->GetContentLength(), 6);
	EXPECT_GE(Request->GetElapsedTime(), 0.0f);
	// Nothing is delivered twice.
	FHttpModule::Get().GetHttpManager().Tick(0.0f);
	EXPECT_EQ(Recorded.Calls, 1);
}

TEST(HttpRequestTests, CompletionWaitsForTheTick)
{
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/echo"));
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Request);
	ASSERT_TRUE(Request->ProcessRequest());
	// The transfer may well finish on the worker meanwhile; without a tick nothing is called.
	std::this_thread::sleep_for(std::chrono::milliseconds(200));
	EXPECT_EQ(Recorded.Calls, 0);
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Processing);
	ASSERT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; }));
	EXPECT_EQ(Recorded.Calls, 1);
}

TEST(HttpRequestTests, PostSendsBodyAndHeaders)
{
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/echo"));
	Request->SetVerb(TEXT("post"));
	Request->SetHeader(TEXT("Content-Type"), TEXT("text/plain"));
	Request->SetHeader(TEXT("content-type"), TEXT("application/json"));
	Request->SetHeader(TEXT("access_token"), TEXT("T-1"));
	const TArray<uint8> Bytes = {'{', '}'};
	Request->SetContent(Bytes);
	EXPECT_EQ(Request->GetVerb(), TEXT("POST"));
	EXPECT_EQ(Request->GetHeader(TEXT("CONTENT-TYPE")), TEXT("application/json"));
	FZnRecordedCompletion Recorded;
	EXPECT_EQ(Start(*Request, Recorded), "POST|application/json|T-1|{}");
}

TEST(HttpRequestTests, GetStillCarriesItsBodyAndOnlyTheHeadersSet)
{
	// Read off the wire: an ordinary server need not look at a GET's body.
	std::mutex Mutex;
	std::string Received;
	FZnRawTestServer Server(
		[&](int Socket, const std::atomic<bool>&)
		{
			const std::string Request = FZnRawTestServer::ReadRequest(Socket);
			{
				std::lock_guard<std::mutex> Lock(Mutex);
				Received = Request;
			}
			FZnRawTestServer::SendAll(Socket, "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok");
		});
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/wire"));
	Request->SetVerb(TEXT("GET"));
	Request->SetHeader(TEXT("Content-Type"), TEXT("application/json"));
	Request->SetHeader(TEXT("access_token"), TEXT("tok"));
	Request->SetHeader(TEXT("X-Empty"), TEXT(""));
	Request->SetContentAsString(TEXT("{\"a\":1}"));
	FZnRecordedCompletion Recorded;
	EXPECT_EQ(Start(*Request, Recorded), "ok");
	std::lock_guard<std::mutex> Lock(Mutex);
	EXPECT_EQ(Received.rfind("GET /wire HTTP/1.1\r\n", 0), 0u) << Received;
	EXPECT_NE(Received.find("\r\nContent-Type: application/json\r\n"), std::string::npos) << Received;
	EXPECT_NE(Received.find("\r\naccess_token: tok\r\n"), std::string::npos) << Received;
	EXPECT_NE(Received.find("\r\nX-Empty:\r\n"), std::string::npos) << "an empty value is still sent";
	EXPECT_NE(Received.find("\r\nContent-Length: 7\r\n"), std::string::npos) << Received;
	EXPECT_EQ(Received.find("Expect:"), std::string::npos) << Received;
	EXPECT_EQ(Received.substr(Received.size() - 7), "{\"a\":1}");
}

TEST(HttpRequestTests, BodyWithoutContentTypeGetsNoneAdded)
{
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/echo"));
	Request->SetVerb(TEXT("POST"));
	Request->SetContentAsString(TEXT("plain"));
	FZnRecordedCompletion Recorded;
	EXPECT_EQ(Start(*Request, Recorded), "POST|||plain");
}

TEST(HttpRequestTests, ContentAsStringIsSentAsUtf8AndReplacesBytes)
{
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/echo"));
	Request->SetVerb(TEXT("PUT"));
	Request->SetContent(TArray<uint8>{'x', 'y'});
	// "héllo 世界" written as UTF-16 units.
	const TCHAR Text[] = {u'h', u'\u00e9', u'l', u'l', u'o', u' ', u'\u4e16', u'\u754c', 0};
	Request->SetContentAsString(Text);
	FZnRecordedCompletion Recorded;
	EXPECT_EQ(Start(*Request, Recorded), "PUT|||h\xC3\xA9llo \xE4\xB8\x96\xE7\x95\x8C");
	EXPECT_EQ(Request->GetResponse()->GetContentAsString(), FString(TEXT("PUT|||")) + Text);
}

TEST(HttpRequestTests, NotFoundWithBodyIsAConnectedResponse)
{
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/missing"));
	FZnRecordedCompletion Recorded;
	EXPECT_EQ(Start(*Request, Recorded), "{\"code\":404,\"message\":\"no such thing\"}");
	EXPECT_TRUE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 404);
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Succeeded);
	EXPECT_EQ(Request->GetResponse()->GetContentType(), TEXT("application/json"));
}

TEST(HttpRequestTests, ResponseHeadersAreReadWithoutRegardToCase)
{
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/header"));
	FZnRecordedCompletion Recorded;
	Start(*Request, Recorded);
	EXPECT_EQ(Request->GetResponse()->GetHeader(TEXT("x-zn-TEST")), TEXT("yes"));
	EXPECT_EQ(Request->GetResponse()->GetHeader(TEXT("X-Absent")), TEXT(""));
}

TEST(HttpRequestTests, RedirectsAreFollowed)
{
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/hop"));
	FZnRecordedCompletion Recorded;
	EXPECT_EQ(Start(*Request, Recorded), "GET|||");
	EXPECT_EQ(Recorded.Code, 200);
	EXPECT_EQ(Request->GetResponse()->GetURL(), UTF8_TO_TCHAR(Server.Url("/echo").c_str()));
}

TEST(HttpRequestTests, EndlessRedirectsFailAfterTheLimit)
{
	FZnScopedTransportSettings Restore;
	FHttpTransportSettings Settings = Restore.Saved;
	Settings.MaxRedirects = 3;
	FHttpModule::Get().SetTransportSettings(Settings);
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/loop"));
	FZnRecordedCompletion Recorded;
	Start(*Request, Recorded);
	EXPECT_EQ(Recorded.Calls, 1);
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 302);
	EXPECT_EQ(Recorded.Body, "");
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed);
}

TEST(HttpRequestTests, EmptyUrlFailsOnTheNextTickWithoutResponse)
{
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	FZnRecordedCompletion Recorded;
	Recorded.Bind(*Request);
	EXPECT_FALSE(Request->ProcessRequest());
	EXPECT_EQ(Recorded.Calls, 0) << "never called from inside ProcessRequest";
	ASSERT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 0; }));
	EXPECT_EQ(Recorded.Calls, 1);
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_FALSE(Recorded.bResponseValid);
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed_ConnectionError);
}

TEST(HttpRequestTests, OtherSchemesAreRefused)
{
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	Request->SetURL(TEXT("file:///etc/hostname"));
	FZnRecordedCompletion Recorded;
	EXPECT_EQ(Start(*Request, Recorded), "");
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 0);
}

TEST(HttpRequestTests, NothingListeningGivesCodeZero)
{
	int Port = 0;
	{
		// A port that was free a moment ago and is closed now.
		FZnRawTestServer Closed([](int, const std::atomic<bool>&) {});
		Port = Closed.Port();
	}
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	Request->SetURL(FString(TEXT("http://127.0.0.1:")) + FString::FromInt(Port) + TEXT("/x"));
	FZnRecordedCompletion Recorded;
	Start(*Request, Recorded);
	EXPECT_EQ(Recorded.Calls, 1);
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_TRUE(Recorded.bResponseValid);
	EXPECT_EQ(Recorded.Code, 0);
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed_ConnectionError);
}

TEST(HttpRequestTests, ClosedWithoutStatusLineGivesCodeZero)
{
	FZnRawTestServer Server([](int Socket, const std::atomic<bool>&) { FZnRawTestServer::ReadRequestHead(Socket); });
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/drop"));
	FZnRecordedCompletion Recorded;
	Start(*Request, Recorded);
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 0);
}

TEST(HttpRequestTests, CutBodyFailsWithTheStatusThatArrived)
{
	FZnRawTestServer Server(
		[](int Socket, const std::atomic<bool>&)
		{
			FZnRawTestServer::ReadRequestHead(Socket);
			FZnRawTestServer::SendAll(Socket, "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly part");
			shutdown(Socket, SHUT_RDWR);
		});
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/cut"));
	FZnRecordedCompletion Recorded;
	Start(*Request, Recorded);
	EXPECT_FALSE(Recorded.bConnected);
	EXPECT_EQ(Recorded.Code, 200);
	EXPECT_EQ(Recorded.Body, "") << "a failed transfer delivers no partial content";
	EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed);
}

TEST(HttpRequestTests, FinishedRequestCanBeStartedAgain)
{
	FZnTestHttpServer Server(EchoRoutes);
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = ZnNewRequest(Server.Url("/echo"));
	FZnRecordedCompletion Recorded;
	Start(*Request, Recorded);
	EXPECT_FALSE(Request->ProcessRequest() && Request->ProcessRequest()) << "not twice while in flight";
	ASSERT_TRUE(ZnTickUntil([&Recorded]() { return Recorded.Calls > 1; }));
	EXPECT_EQ(Recorded.Calls, 2);
	EXPECT_EQ(Recorded.Body, "GET|||");
}
