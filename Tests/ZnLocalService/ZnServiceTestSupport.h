// A local service per test, a loopback client and the signed token query, for the service's tests.
#pragma once

#include "ZnLocalService.h"

#include <httplib.h>
#include <nlohmann/json.hpp>
#include <openssl/sha.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace ZnServiceTest
{
using Json = nlohmann::ordered_json;

// SHA-1 in lowercase hex by OpenSSL, the reference the service's signature check must agree with.
inline std::string ReferenceSha1(const std::string& Message)
{
	unsigned char Digest[SHA_DIGEST_LENGTH];
	SHA1(reinterpret_cast<const unsigned char*>(Message.data()), Message.size(), Digest);
	std::string Hex;
	char Pair[3];
	for (unsigned char Byte : Digest)
	{
		std::snprintf(Pair, sizeof(Pair), "%02x", Byte);
		Hex += Pair;
	}
	return Hex;
}

inline int64_t NowMs()
{
	return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::system_clock::now().time_since_epoch())
		.count();
}

// The token query as the module sends it: appid, secret, timestamp, sign, unescaped.
inline std::string TokenQuery(const std::string& AppId, const std::string& Secret, const std::string& Timestamp)
{
	return "/users/getAppToken?appid=" + AppId + "&secret=" + Secret + "&timestamp=" + Timestamp +
		"&sign=" + ReferenceSha1(AppId + Timestamp + Secret);
}

inline std::string TokenQueryNow(const std::string& AppId, const std::string& Secret)
{
	return TokenQuery(AppId, Secret, std::to_string(NowMs()));
}

inline Json ParseJson(const std::string& Text)
{
	return Json::parse(Text, nullptr, false);
}

// The path of a URL on the service (what follows scheme and host).
inline std::string PathOf(const std::string& Url)
{
	const size_t Scheme = Url.find("://");
	const size_t Path = Url.find('/', Scheme == std::string::npos ? 0 : Scheme + 3);
	return Path == std::string::npos ? "/" : Url.substr(Path);
}

class FServiceTest : public ::testing::Test
{
protected:
	void TearDown() override
	{
		if (Service)
		{
			Service->Stop();
		}
	}

	// Starts the service with Config (its log captured).
	void StartService()
	{
		Config.LogLine = [this](const std::string& Line)
		{
			std::lock_guard<std::mutex> Lock(LogMutex);
			LogLines.push_back(Line);
		};
		Service = std::make_unique<FZnLocalService>(Config);
		std::string Error;
		ASSERT_TRUE(Service->Start(Error)) << Error;
	}

	std::vector<std::string> Log()
	{
		std::lock_guard<std::mutex> Lock(LogMutex);
		return LogLines;
	}

	std::unique_ptr<httplib::Client> Client()
	{
		auto Result = std::make_unique<httplib::Client>(Service->BaseUrl());
		Result->set_read_timeout(30);
		return Result;
	}

	httplib::Result Get(const std::string& Path, const httplib::Headers& Headers = {})
	{
		return Client()->Get(Path.c_str(), Headers);
	}

	httplib::Result Post(const std::string& Path, const std::string& Body, const httplib::Headers& Headers = {})
	{
		return Client()->Post(Path.c_str(), Headers, Body, "application/json");
	}

	std::string Token()
	{
		const auto Answer = Get(TokenQueryNow("demo", "demo-secret"));
		if (!Answer || Answer->status != 200)
		{
			ADD_FAILURE() << "no token";
			return "";
		}
		return ParseJson(Answer->body)["data"]["access_token"].get<std::string>();
	}

	httplib::Result PostWithToken(const std::string& Path, const std::string& Body)
	{
		return Post(Path, Body, {{"access_token", Token()}});
	}

	// Checks a refusal: its HTTP status, the envelope's code, and that the message holds Needle.
	static void ExpectRefusal(const httplib::Result& Answer, int Status, int Code, const std::string& Needle)
	{
		ASSERT_TRUE(Answer) << httplib::to_string(Answer.error());
		EXPECT_EQ(Answer->status, Status) << Answer->body;
		const Json Envelope = ParseJson(Answer->body);
		ASSERT_TRUE(Envelope.is_object()) << Answer->body;
		EXPECT_EQ(Envelope.value("code", 0), Code) << Answer->body;
		EXPECT_NE(Envelope.value("msg", std::string()).find(Needle), std::string::npos) << Answer->body;
		EXPECT_EQ(Answer->get_header_value("Content-Type"), "application/json");
	}

	FZnLocalServiceConfig Config;
	std::unique_ptr<FZnLocalService> Service;
	std::mutex LogMutex;
	std::vector<std::string> LogLines;
};
} // namespace ZnServiceTest
