// The request handling without sockets, on a clock the test sets: tokens expire exactly at their
// lifetime and the timestamp tolerance is inclusive; content sources are called one at a time.
#include "ZnServiceHandler.h"

#include "Sha1.h"
#include "ZnMotionContentSource.h"
#include "ZnTokenTable.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

namespace
{
using Json = nlohmann::ordered_json;

class ZnServiceHandlerTest : public ::testing::Test
{
protected:
	void SetUp() override
	{
		Folder = std::filesystem::absolute("handler_" + std::to_string(getpid()) + "_" +
			::testing::UnitTest::GetInstance()->current_test_info()->name());
		std::filesystem::create_directories(Folder);
		FZnLocalServiceConfig Config;
		Config.Folder = Folder.string();
		Config.Content = Content ? Content : std::make_shared<FZnMotionContentSource>();
		Config.TokenLifetimeSeconds = 60;
		Config.TimestampToleranceSeconds = 10;
		Handler = std::make_unique<FZnServiceHandler>(Config);
		Handler->SetBaseUrl("http://host:1");
		Handler->NowMilliseconds = [this] { return Now; };
	}

	void TearDown() override { std::filesystem::remove_all(Folder); }

	FZnServiceAnswer TokenAt(int64_t Timestamp)
	{
		FZnServiceRequest Request;
		Request.Method = "GET";
		Request.Path = "/users/getAppToken";
		const std::string Stamp = std::to_string(Timestamp);
		Request.Query =
			"appid=demo&secret=demo-secret&timestamp=" + Stamp + "&sign=" + Sha1::GetSha1("demo", "demo-secret", Stamp);
		return Handler->Handle(Request);
	}

	FZnServiceAnswer Motion(const std::string& Token)
	{
		FZnServiceRequest Request;
		Request.Method = "POST";
		Request.Path = "/v3.0/api/textBroadcastMotion";
		Request.Headers = {{"ACCESS_TOKEN", Token}};
		Request.Body = R"({"draft_content": "a"})";
		return Handler->Handle(Request);
	}

	int64_t Now = 1700000000000;
	std::filesystem::path Folder;
	std::shared_ptr<IZnContentSource> Content;
	std::unique_ptr<FZnServiceHandler> Handler;
};
} // namespace

TEST_F(ZnServiceHandlerTest, TimestampToleranceIsInclusive)
{
	EXPECT_EQ(TokenAt(Now - 10000).Code, 0);
	EXPECT_EQ(TokenAt(Now + 10000).Code, 0);
	EXPECT_EQ(TokenAt(Now - 10001).Code, int(EZnServiceCode::StaleTimestamp));
	EXPECT_EQ(TokenAt(Now + 10001).Code, int(EZnServiceCode::StaleTimestamp));
	EXPECT_EQ(
		TokenAt(0).Message, "stale timestamp: 1700000000 s behind the service's clock, more than the 10 s allowed");
}

TEST_F(ZnServiceHandlerTest, TokensExpireAtTheirLifetime)
{
	const std::string Token = Json::parse(TokenAt(Now).Body)["data"]["access_token"];
	Now += 59999;
	EXPECT_EQ(Motion(Token).Code, 0);
	Now += 1;
	const FZnServiceAnswer Expired = Motion(Token);
	EXPECT_EQ(Expired.Status, 401);
	EXPECT_EQ(Expired.Code, int(EZnServiceCode::ExpiredToken));
	Now += 5000;
	EXPECT_EQ(Motion(Token).Message, "the access token expired 5 s ago; get a new one");
	// IssueToken with its own lifetime.
	EXPECT_EQ(Motion(Handler->IssueToken("demo", 1)).Code, 0);
	EXPECT_EQ(Motion(Handler->IssueToken("demo", 0)).Code, int(EZnServiceCode::ExpiredToken));
}

TEST_F(ZnServiceHandlerTest, QueryValuesAreTakenVerbatim)
{
	FZnServiceRequest Request;
	Request.Method = "GET";
	Request.Path = "/users/getAppToken";
	const std::string Stamp = std::to_string(Now);
	// An escaped secret is not unescaped: "demo%2Dsecret" is not "demo-secret".
	Request.Query = "appid=demo&secret=demo%2Dsecret&timestamp=" + Stamp + "&sign=x";
	EXPECT_EQ(Handler->Handle(Request).Code, int(EZnServiceCode::WrongSecret));
	// The first of a repeated key counts; unknown keys are ignored.
	Request.Query = "x=1&appid=demo&appid=other&secret=demo-secret&timestamp=" + Stamp +
		"&sign=" + Sha1::GetSha1("demo", "demo-secret", Stamp);
	EXPECT_EQ(Handler->Handle(Request).Code, 0);
}

TEST_F(ZnServiceHandlerTest, TheEnvelopeStartsWithCode)
{
	const FZnServiceAnswer Answer = Motion("none");
	EXPECT_EQ(Answer.Body, R"({"code":10008,"msg":"the access token is not one this service issued"})");
	// Bytes that are not UTF-8 are replaced, never refused, in a message.
	const FZnServiceAnswer Odd = FZnServiceHandler::Refusal(400, EZnServiceCode::BadFileName, "bad \xFF name");
	EXPECT_TRUE(Json::parse(Odd.Body, nullptr, false).is_object()) << Odd.Body;
}

namespace
{
// Counts how many calls overlap, to show the handler makes them one at a time.
class FOverlapProbe : public IZnContentSource
{
public:
	bool Speak(const FZnSpeechRequest& Request, FZnGeneratedMedia& Out, std::string& Error) override
	{
		const int Inside = ++Active;
		Highest = std::max(Highest.load(), Inside);
		std::this_thread::yield();
		const bool bMade = Inner.Speak(Request, Out, Error);
		--Active;
		return bMade;
	}
	bool Animate(const std::vector<uint8_t>& Wav, const FZnSpeechRequest& Request, FZnGeneratedMedia& Out,
		std::string& Error) override
	{
		return Inner.Animate(Wav, Request, Out, Error);
	}
	std::atomic<int> Active{0};
	std::atomic<int> Highest{0};
	FZnMotionContentSource Inner;
};

class ZnServiceHandlerSerial : public ZnServiceHandlerTest
{
protected:
	void SetUp() override
	{
		Probe = std::make_shared<FOverlapProbe>();
		Content = Probe;
		ZnServiceHandlerTest::SetUp();
	}
	std::shared_ptr<FOverlapProbe> Probe;
};
} // namespace

TEST_F(ZnServiceHandlerSerial, ContentIsAskedOneRequestAtATime)
{
	const std::string Token = Handler->IssueToken("demo", -1);
	std::vector<std::thread> Threads;
	std::atomic<int> Successes{0};
	for (int Index = 0; Index < 4; ++Index)
	{
		Threads.emplace_back(
			[&]
			{
				for (int Round = 0; Round < 5; ++Round)
				{
					Successes += Motion(Token).Code == 0 ? 1 : 0;
				}
			});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	EXPECT_EQ(Successes, 20);
	EXPECT_EQ(Probe->Highest, 1);
	// Every answer named files of its own: 20 utterances of three files each.
	size_t Files = 0;
	for (const auto& Entry : std::filesystem::directory_iterator(Folder))
	{
		Files += Entry.is_regular_file() ? 1 : 0;
	}
	EXPECT_EQ(Files, 60u);
}

TEST(ZnTokenTable, KeepsABoundedNumberOfLiveTokens)
{
	FZnTokenTable Table;
	const int64_t Now = 1000;
	// The first token expires soonest; filling the table past its bound forgets it first.
	const std::string First = Table.Issue("demo", Now + 10, Now);
	std::vector<std::string> Later;
	for (int Index = 0; Index < 65536; ++Index)
	{
		Later.push_back(Table.Issue("demo", Now + 100000 + Index, Now));
	}
	int64_t ExpiredFor = 0;
	EXPECT_EQ(Table.Check(First, Now, ExpiredFor), EZnTokenCheck::Unknown);
	EXPECT_EQ(Table.Check(Later.front(), Now, ExpiredFor), EZnTokenCheck::Valid);
	EXPECT_EQ(Table.Check(Later.back(), Now, ExpiredFor), EZnTokenCheck::Valid);
	// An expired token is told apart from an unknown one for an hour, then forgotten.
	EXPECT_EQ(Table.Check(Later.front(), Now + 100000, ExpiredFor), EZnTokenCheck::Expired);
	EXPECT_EQ(ExpiredFor, 0);
	const std::string Fresh = Table.Issue("demo", Now + 100000 + 3600000 + 10, Now + 100000 + 3600000);
	EXPECT_EQ(Table.Check(Later.front(), Now + 100000 + 3600000, ExpiredFor), EZnTokenCheck::Unknown);
	EXPECT_EQ(Table.Check(Later[1], Now + 100000 + 3600000, ExpiredFor), EZnTokenCheck::Expired);
	EXPECT_EQ(ExpiredFor, 3599999);
	EXPECT_EQ(Table.Check(Fresh, Now + 100000 + 3600000, ExpiredFor), EZnTokenCheck::Valid);
}
