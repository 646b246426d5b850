// The token path: a signed query from a known app gets a token that the motion paths accept;
// every way the query can be wrong is refused with its own code, message and status.
#include "ZnServiceTestSupport.h"

#include "ZnServiceCodes.h"

using namespace ZnServiceTest;

namespace
{
const char* const MotionPath = "/v3.0/api/textBroadcastMotion";
const char* const Body = R"({"draft_content": "one two three"})";

class ZnTokenPath : public FServiceTest
{
protected:
	void SetUp() override
	{
		Config.Apps = {{"studio", "s3cret"}, {"other", "pass"}};
		StartService();
	}
};
} // namespace

TEST_F(ZnTokenPath, SignedQueryGetsATokenTheMotionPathAccepts)
{
	const auto Answer = Get(TokenQueryNow("studio", "s3cret"));
	ASSERT_TRUE(Answer);
	EXPECT_EQ(Answer->status, 200);
	const Json Envelope = ParseJson(Answer->body);
	EXPECT_EQ(Envelope["code"], 0);
	const std::string Token = Envelope["data"]["access_token"];
	EXPECT_FALSE(Token.empty());
	EXPECT_EQ(Envelope["data"]["expires_in"], 7200);

	const auto Motion = Post(MotionPath, Body, {{"access_token", Token}});
	ASSERT_TRUE(Motion);
	EXPECT_EQ(Motion->status, 200);
	EXPECT_EQ(ParseJson(Motion->body)["code"], 0);
}

TEST_F(ZnTokenPath, PostCarriesTheQueryToo)
{
	const auto Answer = Client()->Post(TokenQueryNow("other", "pass").c_str(), "", "application/json");
	ASSERT_TRUE(Answer);
	EXPECT_EQ(Answer->status, 200);
	EXPECT_EQ(ParseJson(Answer->body)["code"], 0);
}

TEST_F(ZnTokenPath, EveryTokenIsNew)
{
	const Json First = ParseJson(Get(TokenQueryNow("studio", "s3cret"))->body);
	const Json Second = ParseJson(Get(TokenQueryNow("studio", "s3cret"))->body);
	EXPECT_NE(First["data"]["access_token"], Second["data"]["access_token"]);
}

TEST_F(ZnTokenPath, EachMissingParameterIsNamed)
{
	const std::string Timestamp = std::to_string(NowMs());
	const std::string Sign = ReferenceSha1("studio" + Timestamp + "s3cret");
	const std::string Parts[4] = {"appid=studio", "secret=s3cret", "timestamp=" + Timestamp, "sign=" + Sign};
	const char* const Names[4] = {"appid", "secret", "timestamp", "sign"};
	for (int Missing = 0; Missing < 4; ++Missing)
	{
		std::string Query;
		for (int Index = 0; Index < 4; ++Index)
		{
			if (Index != Missing)
			{
				Query += (Query.empty() ? "?" : "&") + Parts[Index];
			}
		}
		ExpectRefusal(Get("/users/getAppToken" + Query), 200, int(EZnServiceCode::MissingParameter),
			std::string("missing query parameter \"") + Names[Missing] + "\"");
	}
	ExpectRefusal(Get("/users/getAppToken"), 200, int(EZnServiceCode::MissingParameter), "\"appid\"");
}

TEST_F(ZnTokenPath, UnknownAppIsRefused)
{
	ExpectRefusal(
		Get(TokenQueryNow("nobody", "s3cret")), 200, int(EZnServiceCode::UnknownApp), "unknown appid \"nobody\"");
}

TEST_F(ZnTokenPath, TheDemoAppIsNotAcceptedWhenAppsAreGiven)
{
	ExpectRefusal(Get(TokenQueryNow("demo", "demo-secret")), 200, int(EZnServiceCode::UnknownApp), "\"demo\"");
}

TEST_F(ZnTokenPath, WrongSecretIsRefused)
{
	// Signed correctly over the wrong secret: the secret itself is what is wrong.
	ExpectRefusal(Get(TokenQueryNow("studio", "pass")), 200, int(EZnServiceCode::WrongSecret),
		"wrong secret for appid \"studio\"");
}

TEST_F(ZnTokenPath, BadSignatureIsRefused)
{
	const std::string Timestamp = std::to_string(NowMs());
	// Signed in the order of the arguments rather than of the concatenation.
	const std::string Wrong = ReferenceSha1("studio" + std::string("s3cret") + Timestamp);
	ExpectRefusal(Get("/users/getAppToken?appid=studio&secret=s3cret&timestamp=" + Timestamp + "&sign=" + Wrong), 200,
		int(EZnServiceCode::BadSignature), "bad signature");
	// Upper-case hex is not the signature's text form either.
	std::string Upper = ReferenceSha1("studio" + Timestamp + "s3cret");
	for (char& C : Upper)
	{
		C = char(std::toupper(static_cast<unsigned char>(C)));
	}
	ExpectRefusal(Get("/users/getAppToken?appid=studio&secret=s3cret&timestamp=" + Timestamp + "&sign=" + Upper), 200,
		int(EZnServiceCode::BadSignature), "bad signature");
}

TEST_F(ZnTokenPath, StaleTimestampsAreRefusedBothWays)
{
	// Six minutes away, past and future, against the default tolerance of five.
	const int64_t SixMinutes = 6 * 60 * 1000;
	ExpectRefusal(Get(TokenQuery("studio", "s3cret", std::to_string(NowMs() - SixMinutes))), 200,
		int(EZnServiceCode::StaleTimestamp), "behind the service's clock, more than the 300 s allowed");
	ExpectRefusal(Get(TokenQuery("studio", "s3cret", std::to_string(NowMs() + SixMinutes))), 200,
		int(EZnServiceCode::StaleTimestamp), "ahead of the service's clock");
	// Four minutes is within it.
	const auto Fresh = Get(TokenQuery("studio", "s3cret", std::to_string(NowMs() - 4 * 60 * 1000)));
	ASSERT_TRUE(Fresh);
	EXPECT_EQ(Fresh->status, 200);
}

TEST_F(ZnTokenPath, TimestampMustBeDecimalMilliseconds)
{
	for (const std::string& Timestamp : std::vector<std::string>{"12ab", "-5", "", "99999999999999999999999"})
	{
		ExpectRefusal(Get(TokenQuery("studio", "s3cret", Timestamp)), 200, int(EZnServiceCode::BadTimestamp),
			"is not a decimal count of milliseconds");
	}
}

TEST_F(ZnTokenPath, MotionPathsRefuseMissingUnknownAndExpiredTokens)
{
	ExpectRefusal(Post(MotionPath, Body), 401, int(EZnServiceCode::MissingToken), "missing \"access_token\" header");
	ExpectRefusal(Post(MotionPath, Body, {{"access_token", ""}}), 401, int(EZnServiceCode::MissingToken),
		"missing \"access_token\"");
	ExpectRefusal(Post(MotionPath, Body, {{"access_token", "zn0000"}}), 401, int(EZnServiceCode::UnknownToken),
		"not one this service issued");
	// A lifetime of 0 s: expired the moment it is issued.
	const std::string Expired = Service->IssueToken("studio", 0);
	ExpectRefusal(Post(MotionPath, Body, {{"access_token", Expired}}), 401, int(EZnServiceCode::ExpiredToken),
		"the access token expired");
	for (const char* Path : {"/v3.1/api/voiceBroadcastMotion", "/v3.0/api/AnswerCollectMotion"})
	{
		ExpectRefusal(Post(Path, Body), 401, int(EZnServiceCode::MissingToken), "access_token");
	}
}

TEST_F(ZnTokenPath, IssuedTokensWorkLikeFetchedOnes)
{
	const std::string Token = Service->IssueToken("studio");
	const auto Motion = Post(MotionPath, Body, {{"Access_Token", Token}});
	ASSERT_TRUE(Motion);
	EXPECT_EQ(Motion->status, 200) << Motion->body;
}

TEST(ZnTokenLifetime, AConfiguredLifetimeIsAnnouncedAndKept)
{
	FZnLocalServiceConfig Config;
	Config.TokenLifetimeSeconds = 0;
	Config.LogLine = [](const std::string&) {};
	FZnLocalService Service(Config);
	std::string Error;
	ASSERT_TRUE(Service.Start(Error)) << Error;
	httplib::Client Client(Service.BaseUrl());
	const auto Answer = Client.Get(TokenQueryNow("demo", "demo-secret").c_str());
	ASSERT_TRUE(Answer);
	const Json Envelope = ParseJson(Answer->body);
	EXPECT_EQ(Envelope["data"]["expires_in"], 0);
	const auto Motion = Client.Post(
		MotionPath, {{"access_token", Envelope["data"]["access_token"].get<std::string>()}}, Body, "application/json");
	ASSERT_TRUE(Motion);
	EXPECT_EQ(Motion->status, 401);
	EXPECT_EQ(ParseJson(Motion->body)["code"], int(EZnServiceCode::ExpiredToken));
}
