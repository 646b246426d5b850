// Faults: each kind in its URL form, injected for a number of requests, and for every request;
// each leaves exactly the trace a client must see (no status line, a short body, a given status...).
#include "ZnServiceTestSupport.h"

#include "ZnServiceCodes.h"
#include "ZnServiceFault.h"

#include <curl/curl.h>

#include <future>
#include <thread>

using namespace ZnServiceTest;

namespace
{
const char* const TokenOk = "/users/getAppToken";

class ZnFaults : public FServiceTest
{
protected:
	void SetUp() override { StartService(); }

	std::string Url(const std::string& Path) const { return Service->BaseUrl() + Path; }
};

// What curl saw of one GET: its result, the status (0 without a status line) and the bytes.
struct FCurlResult
{
	CURLcode Result = CURLE_OK;
	long Status = 0;
	std::string Body;
	double AnnouncedLength = -1;
};

size_t Append(char* Data, size_t Size, size_t Count, void* Out)
{
	static_cast<std::string*>(Out)->append(Data, Size * Count);
	return Size * Count;
}

FCurlResult CurlGet(const std::string& Url, long TimeoutMs = 20000)
{
	FCurlResult Out;
	CURL* Curl = curl_easy_init();
	curl_easy_setopt(Curl, CURLOPT_URL, Url.c_str());
	curl_easy_setopt(Curl, CURLOPT_WRITEFUNCTION, Append);
	curl_easy_setopt(Curl, CURLOPT_WRITEDATA, &Out.Body);
	curl_easy_setopt(Curl, CURLOPT_TIMEOUT_MS, TimeoutMs);
	curl_easy_setopt(Curl, CURLOPT_NOSIGNAL, 1L);
	Out.Result = curl_easy_perform(Curl);
	curl_easy_getinfo(Curl, CURLINFO_RESPONSE_CODE, &Out.Status);
	curl_off_t Length = -1;
	curl_easy_getinfo(Curl, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &Length);
	Out.AnnouncedLength = double(Length);
	curl_easy_cleanup(Curl);
	return Out;
}
} // namespace

TEST(ZnServiceFault, ParsesEveryFormAndRefusesTheRest)
{
	FZnServiceFault Fault;
	std::string Error;
	const std::pair<const char*, EZnFaultKind> Plain[] = {{"drop", EZnFaultKind::Drop},
		{"truncate", EZnFaultKind::Truncate}, {"malformed", EZnFaultKind::Malformed}, {"stall", EZnFaultKind::Stall}};
	for (const auto& [Text, Kind] : Plain)
	{
		ASSERT_TRUE(FZnServiceFault::Parse(Text, Fault, Error)) << Text;
		EXPECT_EQ(Fault.Kind, Kind);
		EXPECT_EQ(Fault.ToString(), Text);
	}
	ASSERT_TRUE(FZnServiceFault::Parse("delay=250", Fault, Error));
	EXPECT_EQ(Fault.Kind, EZnFaultKind::Delay);
	EXPECT_EQ(Fault.Value, 250);
	ASSERT_TRUE(FZnServiceFault::Parse("status=503", Fault, Error));
	EXPECT_EQ(Fault.Kind, EZnFaultKind::Status);
	EXPECT_EQ(Fault.Value, 503);
	ASSERT_TRUE(FZnServiceFault::Parse("code=-2147483648", Fault, Error));
	EXPECT_EQ(Fault.Kind, EZnFaultKind::Code);
	EXPECT_EQ(Fault.Value, -2147483648LL);
	EXPECT_EQ(Fault.ToString(), "code=-2147483648");
	ASSERT_TRUE(FZnServiceFault::Parse("restatus=201", Fault, Error));
	EXPECT_EQ(Fault.Kind, EZnFaultKind::Restatus);
	EXPECT_EQ(Fault.Value, 201);
	EXPECT_EQ(Fault.ToString(), "restatus=201");
	ASSERT_TRUE(FZnServiceFault::Parse("reply=odd.json", Fault, Error));
	EXPECT_EQ(Fault.Kind, EZnFaultKind::Reply);
	EXPECT_EQ(Fault.Name, "odd.json");
	EXPECT_EQ(Fault.ToString(), "reply=odd.json");
	ASSERT_TRUE(FZnServiceFault::Parse("", Fault, Error));
	EXPECT_EQ(Fault.Kind, EZnFaultKind::None);

	Fault.Kind = EZnFaultKind::Stall;
	for (const char* Bad : {"delay", "delay=", "delay=-1", "delay=600001", "delay=5ms", "status=99", "status=600",
			 "code=2147483648", "drop=1", "stall=0", "explode", "Drop", "restatus=600", "restatus", "reply=", "reply"})
	{
		Error.clear();
		EXPECT_FALSE(FZnServiceFault::Parse(Bad, Fault, Error)) << Bad;
		EXPECT_FALSE(Error.empty()) << Bad;
		EXPECT_EQ(Fault.Kind, EZnFaultKind::Stall) << "a refused text leaves the fault as it was";
	}
}

TEST(ZnServiceFault, WithFaultInsertsAfterTheHost)
{
	EXPECT_EQ(FZnLocalService::WithFault("http://h:1/files/a.wav", "drop"), "http://h:1/_fault/drop/files/a.wav");
	EXPECT_EQ(FZnLocalService::WithFault("https://h/users/getAppToken?appid=a", "delay=5"),
		"https://h/_fault/delay=5/users/getAppToken?appid=a");
	EXPECT_EQ(FZnLocalService::WithFault("http://h:1", "stall"), "http://h:1/_fault/stall/");
	EXPECT_EQ(FZnLocalService::WithFault("http://h:1?x=1", "stall"), "http://h:1/_fault/stall/?x=1");
}

TEST_F(ZnFaults, DelayAnswersNormallyAfterwards)
{
	const FCurlResult Result = CurlGet(FZnLocalService::WithFault(Url(TokenOk), "delay=50"));
	EXPECT_EQ(Result.Result, CURLE_OK);
	// The token path answers its refusals under 200; the code says what was wrong.
	EXPECT_EQ(Result.Status, 200);
	EXPECT_EQ(ParseJson(Result.Body)["code"], int(EZnServiceCode::MissingParameter));
	EXPECT_NE(Log().back().find("[fault delay=50]"), std::string::npos) << Log().back();
}

TEST_F(ZnFaults, StatusGivesThatStatusWithAnEnvelope)
{
	for (int Status : {201, 207, 404, 500, 503})
	{
		const FCurlResult Result = CurlGet(Url("/_fault/status=" + std::to_string(Status) + "/files/x.json"));
		EXPECT_EQ(Result.Result, CURLE_OK);
		EXPECT_EQ(Result.Status, Status);
		const Json Envelope = ParseJson(Result.Body);
		EXPECT_EQ(Envelope["code"], int(EZnServiceCode::InjectedStatus));
		EXPECT_EQ(Envelope["msg"], "injected fault: status " + std::to_string(Status));
	}
}

TEST_F(ZnFaults, DropClosesWithoutAStatusLine)
{
	const std::string Hosted = Service->HostFile("a.json", {'{', '}'});
	const FCurlResult Result = CurlGet(FZnLocalService::WithFault(Hosted, "drop"));
	EXPECT_EQ(Result.Result, CURLE_GOT_NOTHING);
	EXPECT_EQ(Result.Status, 0);
	EXPECT_TRUE(Result.Body.empty());
	// The service goes on serving.
	const FCurlResult After = CurlGet(Hosted);
	EXPECT_EQ(After.Status, 200);
	EXPECT_EQ(After.Body, "{}");
}

TEST_F(ZnFaults, TruncateAnnouncesAllAndSendsHalf)
{
	std::vector<uint8_t> Bytes(1000);
	for (size_t Index = 0; Index < Bytes.size(); ++Index)
	{
		Bytes[Index] = uint8_t(Index * 7);
	}
	const std::string Hosted = Service->HostFile("long.wav", Bytes);
	const FCurlResult Result = CurlGet(FZnLocalService::WithFault(Hosted, "truncate"));
	EXPECT_EQ(Result.Result, CURLE_PARTIAL_FILE);
	EXPECT_EQ(Result.Status, 200);
	EXPECT_EQ(Result.AnnouncedLength, 1000.0);
	EXPECT_EQ(Result.Body, std::string(Bytes.begin(), Bytes.begin() + 500));
}

TEST_F(ZnFaults, MalformedIsNotJson)
{
	const FCurlResult Result = CurlGet(Url("/_fault/malformed/users/getAppToken"));
	EXPECT_EQ(Result.Status, 200);
	EXPECT_FALSE(Result.Body.empty());
	EXPECT_TRUE(ParseJson(Result.Body).is_discarded()) << Result.Body;
}

TEST_F(ZnFaults, CodeGivesTheEnvelopeWithThatCode)
{
	const FCurlResult Result = CurlGet(Url("/_fault/code=42/v3.0/api/textBroadcastMotion"));
	EXPECT_EQ(Result.Status, 200);
	const Json Envelope = ParseJson(Result.Body);
	EXPECT_EQ(Envelope["code"], 42);
	EXPECT_EQ(Envelope["msg"], "injected fault: code 42");
}

TEST_F(ZnFaults, StallEndsWhenTheClientGivesUp)
{
	const FCurlResult Result = CurlGet(Url("/_fault/stall/users/getAppToken"), 300);
	EXPECT_EQ(Result.Result, CURLE_OPERATION_TIMEDOUT);
	EXPECT_EQ(Result.Status, 0);
	// The stalled handler notices the peer left and frees its worker: it is logged as unanswered.
	for (int Attempt = 0; Attempt < 500 && Log().empty(); ++Attempt)
	{
		std::this_thread::sleep_for(std::chrono::milliseconds(10));
	}
	ASSERT_FALSE(Log().empty());
	EXPECT_NE(Log().back().find("no answer"), std::string::npos) << Log().back();
}

TEST_F(ZnFaults, StopEndsAStall)
{
	auto Pending = std::async(std::launch::async, [this] { return CurlGet(Url("/_fault/stall/files/x"), 0); });
	// Give the request time to reach the stall; if it has not, Stop refuses it instead, and the
	// client sees no answer all the same. Either way Stop must return.
	std::this_thread::sleep_for(std::chrono::milliseconds(200));
	Service->Stop();
	const FCurlResult Result = Pending.get();
	EXPECT_EQ(Result.Status, 0);
	EXPECT_NE(Result.Result, CURLE_OK);
}

TEST_F(ZnFaults, InjectedFaultsHitTheNextRequestsOnTheirPath)
{
	Service->InjectFault("/files/", "status=502", 2);
	const std::string Hosted = Service->HostFile("b.json", {'[', ']'});
	// Another path is untouched.
	EXPECT_EQ(ParseJson(CurlGet(Url(TokenOk)).Body)["code"], int(EZnServiceCode::MissingParameter));
	EXPECT_EQ(CurlGet(Hosted).Status, 502);
	EXPECT_EQ(CurlGet(Hosted).Status, 502);
	const FCurlResult Third = CurlGet(Hosted);
	EXPECT_EQ(Third.Status, 200);
	EXPECT_EQ(Third.Body, "[]");

	// A URL-form fault wins over an injected one, which then stays for the next request.
	Service->InjectFault("/files/", "code=9");
	EXPECT_EQ(CurlGet(FZnLocalService::WithFault(Hosted, "status=418")).Status, 418);
	EXPECT_EQ(ParseJson(CurlGet(Hosted).Body)["code"], 9);
	EXPECT_EQ(CurlGet(Hosted).Body, "[]");

	// A text that is no fault is ignored and said so.
	Service->InjectFault("/files/", "explode");
	EXPECT_EQ(CurlGet(Hosted).Body, "[]");
	bool bSaid = false;
	for (const std::string& Line : Log())
	{
		bSaid = bSaid || Line.find("InjectFault ignored: unknown fault \"explode\"") != std::string::npos;
	}
	EXPECT_TRUE(bSaid);
}

TEST_F(ZnFaults, AnUnknownUrlFaultIsRefused)
{
	const FCurlResult Result = CurlGet(Url("/_fault/explode/users/getAppToken"));
	EXPECT_EQ(Result.Status, 400);
	EXPECT_EQ(ParseJson(Result.Body)["code"], int(EZnServiceCode::BadRequest));
	EXPECT_NE(ParseJson(Result.Body)["msg"].get<std::string>().find("unknown fault \"explode\""), std::string::npos);
}

TEST(ZnDefaultFault, AppliesToEveryRequest)
{
	FZnLocalServiceConfig Config;
	Config.LogLine = [](const std::string&) {};
	Config.DefaultFault = "code=3";
	FZnLocalService Service(Config);
	std::string Error;
	ASSERT_TRUE(Service.Start(Error)) << Error;
	for (const char* Path : {"/users/getAppToken", "/files/a.wav", "/nowhere"})
	{
		const FCurlResult Result = CurlGet(Service.BaseUrl() + Path);
		EXPECT_EQ(Result.Status, 200);
		EXPECT_EQ(ParseJson(Result.Body)["code"], 3);
	}
	// A URL-form fault replaces it for its request.
	EXPECT_EQ(CurlGet(Service.BaseUrl() + "/_fault/status=504/nowhere").Status, 504);
}

TEST(ZnDefaultFault, ABadDefaultFaultStopsStart)
{
	FZnLocalServiceConfig Config;
	Config.DefaultFault = "delay=soon";
	FZnLocalService Service(Config);
	std::string Error;
	EXPECT_FALSE(Service.Start(Error));
	EXPECT_NE(Error.find("\"delay=<value>\" needs milliseconds"), std::string::npos) << Error;
	EXPECT_EQ(Service.BaseUrl(), "");
}

TEST_F(ZnFaults, RestatusKeepsTheAnswerUnderAnotherStatus)
{
	for (int Status : {201, 207, 404})
	{
		const std::string Query = TokenQueryNow("demo", "demo-secret");
		const FCurlResult Result = CurlGet(Url("/_fault/restatus=" + std::to_string(Status) + Query));
		EXPECT_EQ(Result.Status, Status);
		const Json Envelope = ParseJson(Result.Body);
		EXPECT_EQ(Envelope["code"], 0);
		EXPECT_FALSE(Envelope["data"]["access_token"].get<std::string>().empty());
	}
	EXPECT_NE(Log().back().find("-> 404 code 0"), std::string::npos) << Log().back();
}

TEST_F(ZnFaults, ReplyAnswersWithAHostedFile)
{
	const std::string Odd = R"({"code": 200.7, "data": {"url": "u", "faceUrl": "f", "bodyUrl": "b"}})";
	Service->HostFile("odd.json", std::vector<uint8_t>(Odd.begin(), Odd.end()));
	const auto Answer = Client()->Post(
		(std::string("/_fault/reply=odd.json") + FZnLocalService::SpeechPath).c_str(), "{}", "application/json");
	ASSERT_TRUE(Answer);
	EXPECT_EQ(Answer->status, 200);
	EXPECT_EQ(Answer->body, Odd);
	EXPECT_EQ(Answer->get_header_value("Content-Type"), "application/json");
	// Injected, for a request whose URL the test does not build.
	Service->InjectFault(FZnLocalService::SpeechPath, "reply=odd.json");
	EXPECT_EQ(Client()->Post(FZnLocalService::SpeechPath, "{}", "application/json")->body, Odd);
	ExpectRefusal(Client()->Post("/_fault/reply=gone.json/anything", "{}", "application/json"), 404,
		int(EZnServiceCode::FileNotFound), "no hosted file \"gone.json\"");
}
