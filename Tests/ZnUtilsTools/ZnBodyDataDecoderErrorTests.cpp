#include "ZnBodyDataDecoder.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnDecodeTestHelpers.h"

#include <gtest/gtest.h>

#include <string>

using namespace ZnDecodeTest;

namespace
{
const std::string SmallClip =
	"{\"totalTime\":0.1,\"curves\":[{\"name\":\"Hips\",\"path\":\"p\",\"rotas\":[{\"x\":0.1,\"y\":0.2,"
	"\"z\":0.3,\"w\":0.9},{\"x\":0,\"y\":0,\"z\":0,\"w\":1}]}],\"Hips\":{\"name\":\"Hips\",\"path\":\"p\","
	"\"pos\":[{\"x\":0.1,\"y\":1,\"z\":0},{\"x\":0.2,\"y\":1,\"z\":0}]}}";

// Decodes with both script functions into sentinels; true when neither output changed.
bool LeavesOutputsAlone(const FString& Json)
{
	FZnBodyData Body = SentinelBody();
	UZnDM_BpFuncLib::ParseJsonToBodydata(Json, Body);
	FZnBodyData Recommended = SentinelBody();
	float TotalTime = 12.5f;
	UZnDM_BpFuncLib::ParseJsonToBodydataRecommend(Json, Recommended, TotalTime);
	return SameBody(Body, SentinelBody()) && SameBody(Recommended, SentinelBody()) && TotalTime == 12.5f;
}

bool LeavesOutputsAlone(const std::string& Json)
{
	return LeavesOutputsAlone(Text(Json));
}

FZnBodyData Decoded(const std::string& Json)
{
	FZnBodyData Body = SentinelBody();
	UZnDM_BpFuncLib::ParseJsonToBodydata(Text(Json), Body);
	return Body;
}

std::string Replaced(std::string Text, const std::string& From, const std::string& To)
{
	const size_t Position = Text.find(From);
	EXPECT_NE(Position, std::string::npos) << From;
	return Text.replace(Position, From.size(), To);
}
} // namespace

TEST(ZnBodyDataDecoderErrorTests, TheSmallClipItselfDecodes)
{
	const FZnBodyData Body = Decoded(SmallClip);
	EXPECT_EQ(Body.BoneNames.Num(), 1);
	EXPECT_EQ(Body.BoneFrames[0].Num(), 2);
	EXPECT_EQ(Body.RootPositionCurve.FloatCurves[0].Keys.Num(), 2);
}

TEST(ZnBodyDataDecoderErrorTests, TextCutAtAnyByteLeavesTheRecordUnchanged)
{
	for (size_t Length = 0; Length < SmallClip.size(); ++Length)
	{
		EXPECT_TRUE(LeavesOutputsAlone(SmallClip.substr(0, Length))) << Length;
	}
}

TEST(ZnBodyDataDecoderErrorTests, MissingHipsLeavesTheRecordUnchanged)
{
	EXPECT_TRUE(LeavesOutputsAlone(std::string("{\"totalTime\":1,\"curves\":[]}")));
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"Hips\":{", "\"Hops\":{")));
}

TEST(ZnBodyDataDecoderErrorTests, HipsOfAnotherKindLeavesTheRecordUnchanged)
{
	for (const char* Value : {"1", "\"Hips\"", "[]", "null", "true"})
	{
		EXPECT_TRUE(LeavesOutputsAlone("{\"curves\":[],\"Hips\":" + std::string(Value) + "}")) << Value;
	}
}

TEST(ZnBodyDataDecoderErrorTests, ElementsThatAreNotObjectsLeaveTheRecordUnchanged)
{
	for (const char* Value : {"1", "\"x\"", "[]", "null", "false"})
	{
		EXPECT_TRUE(LeavesOutputsAlone("{\"curves\":[" + std::string(Value) + "],\"Hips\":{}}")) << Value;
		EXPECT_TRUE(LeavesOutputsAlone(
			"{\"curves\":[{\"name\":\"A\",\"rotas\":[{\"w\":1}," + std::string(Value) + "]}],\"Hips\":{}}"))
			<< Value;
		EXPECT_TRUE(LeavesOutputsAlone("{\"curves\":[],\"Hips\":{\"pos\":[{\"x\":1}," + std::string(Value) + "]}}"))
			<< Value;
	}
}

TEST(ZnBodyDataDecoderErrorTests, RootThatIsNotAnObjectLeavesTheRecordUnchanged)
{
	for (const char* Json : {"[]", "[{}]", "1", "\"text\"", "null", "true"})
	{
		EXPECT_TRUE(LeavesOutputsAlone(std::string(Json))) << Json;
	}
}

TEST(ZnBodyDataDecoderErrorTests, WrongKindsElsewhereReadAsZeroEmptyOrNothing)
{
	// totalTime a string, name a number, path an object, rotas an object, pos a number.
	FZnBodyData Body = Decoded("{\"totalTime\":\"12\",\"curves\":[{\"name\":5,\"path\":{},\"rotas\":{\"x\":1}}],"
							   "\"Hips\":{\"name\":[],\"pos\":7}}");
	EXPECT_EQ(Body.totalTime, 0.0f);
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	EXPECT_TRUE(Body.BoneNames[0].IsEmpty());
	EXPECT_EQ(Body.BoneFrames[0].Num(), 0);
	EXPECT_EQ(Body.RootPositionCurve.FloatCurves[0].Keys.Num(), 0);

	// curves of another kind reads as no bones.
	Body = Decoded("{\"curves\":{\"name\":\"A\"},\"Hips\":{}}");
	EXPECT_EQ(Body.BoneNames.Num(), 0);
	EXPECT_EQ(Body.id == 4242, false);
}

TEST(ZnBodyDataDecoderErrorTests, StringsBooleansAndNullsWhereNumbersStandReadAsZero)
{
	const FZnBodyData Body =
		Decoded("{\"curves\":[{\"name\":\"A\",\"rotas\":[{\"x\":\"1\",\"y\":true,\"z\":null,\"w\":\"0.5\"}]}],"
				"\"Hips\":{\"pos\":[{\"x\":\"1\",\"y\":true,\"z\":[1]}]}}");
	ASSERT_EQ(Body.BoneFrames.Num(), 1);
	EXPECT_TRUE(SameQuat(Body.BoneFrames[0][0], FQuat(0.0, 0.0, 0.0, 1.0)));
	EXPECT_EQ(Body.RootStartPosition.X, 0.0);
	EXPECT_EQ(Body.RootStartPosition.Y, 0.0);
	EXPECT_EQ(Body.RootStartPosition.Z, 0.0);
}

TEST(ZnBodyDataDecoderErrorTests, NumbersOutsideTheDoubleRangeAndNonJsonLiteralsFailTheWholeText)
{
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "0.1,\"curves\"", "1e400,\"curves\"")));
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"x\":0.1,\"y\":0.2", "\"x\":-1e400,\"y\":0.2")));
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"x\":0.1,\"y\":0.2", "\"x\":NaN,\"y\":0.2")));
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"x\":0.1,\"y\":0.2", "\"x\":Infinity,\"y\":0.2")));
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"x\":0.1,\"y\":0.2", "\"x\":18446744073709551616,\"y\":0.2")));
	// Tiny numbers are fine: they read as zero.
	const FZnBodyData Body = Decoded(Replaced(SmallClip, "0.1,\"curves\"", "1e-400,\"curves\""));
	EXPECT_EQ(Body.totalTime, 0.0f);
	EXPECT_EQ(Body.BoneNames.Num(), 1);
}

TEST(ZnBodyDataDecoderErrorTests, TrailingContentFailsTheWholeText)
{
	EXPECT_TRUE(LeavesOutputsAlone(SmallClip + "x"));
	EXPECT_TRUE(LeavesOutputsAlone(SmallClip + "{}"));
	EXPECT_TRUE(LeavesOutputsAlone(SmallClip + ","));
	EXPECT_FALSE(LeavesOutputsAlone(SmallClip + " \n"));
}

TEST(ZnBodyDataDecoderErrorTests, DeepNestingFailsWithoutHarm)
{
	std::string Deep = "{\"curves\":[{\"name\":";
	Deep += std::string(100000, '[') + std::string(100000, ']');
	Deep += "}],\"Hips\":{}}";
	EXPECT_TRUE(LeavesOutputsAlone(Deep));
	EXPECT_TRUE(LeavesOutputsAlone(std::string(50000, '[')));
}

TEST(ZnBodyDataDecoderErrorTests, AMegabyteOfWhitespaceIsNotAText)
{
	const std::string Spaces(1 << 20, ' ');
	EXPECT_TRUE(LeavesOutputsAlone(Spaces));
	EXPECT_TRUE(LeavesOutputsAlone(std::string(1 << 20, '\n')));
	// Around a real clip it is just whitespace.
	const FZnBodyData Body = Decoded(Spaces + SmallClip + Spaces);
	EXPECT_EQ(Body.BoneNames.Num(), 1);
}

TEST(ZnBodyDataDecoderErrorTests, EmptyArraysEverywhereGiveAnEmptyRecord)
{
	const FZnBodyData Body =
		Decoded("{\"totalTime\":0,\"curves\":[{\"name\":\"A\",\"rotas\":[]}],\"Hips\":{\"pos\":[]}}");
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	EXPECT_EQ(Body.BoneFrames[0].Num(), 0);
	EXPECT_EQ(Body.BoneCurves[0].Keys.Num(), 0);
	EXPECT_EQ(Body.BoneCurves[0].Evaluate(0.0f, 0.1f).W, 1.0);
}

TEST(ZnBodyDataDecoderErrorTests, InvalidTextInsideStringsFailsTheWholeText)
{
	// A raw control character and an unpaired escaped surrogate are not valid JSON strings.
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"path\":\"p\"", "\"path\":\"a\x01\"")));
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"path\":\"p\"", "\"path\":\"\\ud800\"")));
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"path\":\"p\"", "\"path\":\"\\q\"")));
}

TEST(ZnBodyDataDecoderErrorTests, UnpairedSurrogatesInTheEngineStringBecomeReplacementCharacters)
{
	// The text reaches the decoder as UTF-16; a lone surrogate inside a name must not break it.
	FString Json = Text("{\"curves\":[{\"name\":\"AB\",\"rotas\":[]}],\"Hips\":{}}");
	Json[20] = TCHAR(0xD800);
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(Json, Body);
	ASSERT_EQ(Body.BoneNames.Num(), 1);
	ASSERT_EQ(Body.BoneNames[0].Len(), 2);
	EXPECT_EQ(Body.BoneNames[0][0], TCHAR(0xFFFD));
	EXPECT_EQ(Body.BoneNames[0][1], TCHAR('B'));
}

TEST(ZnBodyDataDecoderErrorTests, EmbeddedNulCharacterFailsTheWholeText)
{
	FString Json = Text(SmallClip);
	Json[1] = TCHAR(0);
	EXPECT_TRUE(LeavesOutputsAlone(Json));
}

TEST(ZnBodyDataDecoderErrorTests, MalformedMemberNamesFailTheWholeText)
{
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"totalTime\"", "\"total\\qTime\"")));
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"totalTime\"", "\"total\x01Time\"")));
	EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "{\"x\":0.1", "{\"\\ud800\":0.1")));
}

TEST(ZnBodyDataDecoderErrorTests, MalformedValuesInMembersNobodyReadsStillFailTheWholeText)
{
	for (const char* Value : {"01", "tru", "\"\\x\"", "[1,]", "{\"a\"}", "1e400", "18446744073709551616", "-"})
	{
		EXPECT_TRUE(LeavesOutputsAlone(Replaced(SmallClip, "\"path\":\"p\"", "\"extra\":" + std::string(Value))))
			<< Value;
		EXPECT_TRUE(LeavesOutputsAlone("{\"unknown\":" + std::string(Value) + ",\"Hips\":{}}")) << Value;
	}
	// Well-formed extras are simply passed over.
	EXPECT_FALSE(
		LeavesOutputsAlone(Replaced(SmallClip, "\"path\":\"p\"", "\"extra\":[{\"a\":[1,\"\\u00e9\",null,true]}]")));
}

TEST(ZnBodyDataDecoderErrorTests, NestingBeyondTheLimitFailsButModerateNestingIsPassedOver)
{
	const std::string Deep = std::string(1100, '[') + std::string(1100, ']');
	EXPECT_TRUE(LeavesOutputsAlone("{\"extra\":" + Deep + ",\"Hips\":{}}"));
	const std::string Moderate = std::string(500, '[') + std::string(500, ']');
	EXPECT_FALSE(LeavesOutputsAlone("{\"extra\":" + Moderate + ",\"Hips\":{}}"));
}
