#include "ZnDM_BpFuncLib.h"

#include "ZnServiceTestHelpers.h"
#include <gtest/gtest.h>

#include <string>

using namespace ZnServiceTest;

namespace
{
const std::string International = ZN_SERVICE_URL_INTERNATIONAL;
const std::string China = ZN_SERVICE_URL_CHINA;
} // namespace

TEST(ZnAPIConfigTests, HostsAreHttpsAndDistinct)
{
	EXPECT_EQ(International.rfind("https://", 0), 0u);
	EXPECT_EQ(China.rfind("https://", 0), 0u);
	EXPECT_NE(International, China);
	// A host ends before the path: no trailing slash, so host + path has exactly one.
	EXPECT_NE(International.back(), '/');
	EXPECT_NE(China.back(), '/');
}

TEST(ZnAPIConfigTests, TokenEndpoints)
{
	const FZnAPIConfig Config;
	EXPECT_EQ(Utf8(Config.TokenAPI_EN_US), International + "/users/getAppToken");
	EXPECT_EQ(Utf8(Config.TokenAPI_ZH_CN), China + "/users/getAppToken");
}

TEST(ZnAPIConfigTests, TextBroadcastIsOnVersion30)
{
	const FZnAPIConfig Config;
	EXPECT_EQ(Utf8(Config.TextBroadcastMotionAPI_EN_US), International + "/v3.0/api/textBroadcastMotion");
	EXPECT_EQ(Utf8(Config.TextBroadcastMotionAPI_ZH_CN), China + "/v3.0/api/textBroadcastMotion");
}

TEST(ZnAPIConfigTests, VoiceBroadcastIsOnVersion31)
{
	const FZnAPIConfig Config;
	EXPECT_EQ(Utf8(Config.VoiceBroadcastMotionAPI_EN_US), International + "/v3.1/api/voiceBroadcastMotion");
	EXPECT_EQ(Utf8(Config.VoiceBroadcastMotionAPI_ZH_CN), China + "/v3.1/api/voiceBroadcastMotion");
}

TEST(ZnAPIConfigTests, AnswerCollectionHasNoInternationalEndpoint)
{
	const FZnAPIConfig Config;
	EXPECT_TRUE(Config.AnswerCollectAPI_EN_US.IsEmpty());
	// Capital A in the path, version 3.0.
	EXPECT_EQ(Utf8(Config.AnswerCollectAPI_ZH_CN), China + "/v3.0/api/AnswerCollectMotion");
}

TEST(ZnAPIConfigTests, FieldsCanBeOverriddenPerInstance)
{
	FZnAPIConfig Config;
	Config.AnswerCollectAPI_EN_US = TEXT("https://mirror.example/v3.0/api/AnswerCollectMotion");
	const FZnAPIConfig Defaults;
	EXPECT_TRUE(Defaults.AnswerCollectAPI_EN_US.IsEmpty());
	EXPECT_EQ(Utf8(Config.AnswerCollectAPI_EN_US), "https://mirror.example/v3.0/api/AnswerCollectMotion");
}
