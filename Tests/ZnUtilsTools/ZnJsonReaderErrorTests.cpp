#include "ZnJsonReader.h"

#include "ZnDecodeTestHelpers.h"

#include <gtest/gtest.h>

#include <string>

using ZnDecodeTest::Text;

namespace
{
bool Parses(const std::string& Json)
{
	FZnJsonReader Reader;
	const bool bParsed = Reader.Parse(Text(Json));
	// A failed parse never leaves a root behind.
	EXPECT_EQ(bParsed, Reader.GetRoot().IsValid());
	return bParsed;
}
} // namespace

TEST(ZnJsonReaderErrorTests, EmptyAndWhitespaceOnlyTextsDoNotParse)
{
	EXPECT_FALSE(Parses(""));
	EXPECT_FALSE(Parses(" "));
	EXPECT_FALSE(Parses(std::string(1 << 20, ' ')));
	EXPECT_FALSE(Parses("\xEF\xBB\xBF"));
	FZnJsonReader Reader;
	EXPECT_FALSE(Reader.Parse(FString()));
	EXPECT_FALSE(Reader.ParseUtf8(nullptr, 5));
	EXPECT_FALSE(Reader.ParseUtf8("[1]", 0));
}

TEST(ZnJsonReaderErrorTests, EveryStrictPrefixOfADocumentFails)
{
	const std::string Json = "{\"a\":[1,2.5,-3e2,true,false,null,\"s\\n\"],\"b\":{\"c\":{}}}";
	for (size_t Length = 0; Length < Json.size(); ++Length)
	{
		EXPECT_FALSE(Parses(Json.substr(0, Length))) << Length;
	}
	EXPECT_TRUE(Parses(Json));
}

TEST(ZnJsonReaderErrorTests, TrailingContentFails)
{
	EXPECT_FALSE(Parses("{} {}"));
	EXPECT_FALSE(Parses("[1] 2"));
	EXPECT_FALSE(Parses("[1],"));
	EXPECT_FALSE(Parses("1 2"));
	EXPECT_TRUE(Parses("[1] \n\t\r"));
}

TEST(ZnJsonReaderErrorTests, NumbersBeyondRangeAndNonJsonLiteralsFail)
{
	for (const char* Json :
		{"[1e400]", "[-1e400]", "[NaN]", "[nan]", "[Infinity]", "[-Infinity]", "[18446744073709551616]",
			"[-9223372036854775809]", "[01]", "[1.]", "[.5]", "[+1]", "[0x10]", "[1e]", "[--1]"})
	{
		EXPECT_FALSE(Parses(Json)) << Json;
	}
	for (const char* Json :
		{"[1e-400]", "[1e308]", "[-0]", "[18446744073709551615]", "[-9223372036854775808]", "[1E+2]"})
	{
		EXPECT_TRUE(Parses(Json)) << Json;
	}
}

TEST(ZnJsonReaderErrorTests, MalformedSyntaxFails)
{
	for (const char* Json :
		{"{", "}", "[", "]", "{\"a\"}", "{\"a\":}", "{a:1}", "{'a':1}", "[1,]", "[,1]", "{\"a\":1,}", "[tru]", "[nul]",
			"\"abc", "[\"\\x\"]", "[\"\\u12\"]", "[\"\\ud800\"]", "[\"a\tb\"]", "//c\n[]", "[1]/**/"})
	{
		EXPECT_FALSE(Parses(Json)) << Json;
	}
}

TEST(ZnJsonReaderErrorTests, DeepNestingFailsWithoutHarm)
{
	EXPECT_FALSE(Parses(std::string(100000, '[') + std::string(100000, ']')));
	EXPECT_FALSE(Parses(std::string(5000, '{')));
	std::string Objects;
	for (int32 Level = 0; Level < 2000; ++Level)
	{
		Objects += "{\"a\":";
	}
	Objects += "1" + std::string(2000, '}');
	EXPECT_FALSE(Parses(Objects));
	// Moderate depth is fine.
	EXPECT_TRUE(Parses(std::string(500, '[') + std::string(500, ']')));
}

TEST(ZnJsonReaderErrorTests, LoneSurrogatesInTheEngineTextBecomeReplacementCharacters)
{
	for (TCHAR Lone : {TCHAR(0xD800), TCHAR(0xDBFF), TCHAR(0xDC00), TCHAR(0xDFFF)})
	{
		FString Json = TEXT("[\"ab\"]");
		Json[2] = Lone;
		FZnJsonReader Reader;
		FZnJsonArray Root;
		ASSERT_TRUE(Reader.ParseArray(Json, Root));
		EXPECT_EQ(Root.GetValue(0).AsUtf8(),
			std::string_view("\xEF\xBF\xBD"
							 "b"));
	}
	// A high surrogate at the very end of the text.
	FString Tail = TEXT("[1]");
	Tail.GetCharArray().Insert(TCHAR(0xD800), 3);
	FZnJsonReader Reader;
	EXPECT_FALSE(Reader.Parse(Tail));
}

TEST(ZnJsonReaderErrorTests, NulCharactersFail)
{
	FString Json = TEXT("[1, 2]");
	Json[3] = TCHAR(0);
	FZnJsonReader Reader;
	EXPECT_FALSE(Reader.Parse(Json));
	FString InString = TEXT("[\"ab\"]");
	InString[2] = TCHAR(0);
	EXPECT_FALSE(Reader.Parse(InString));
}

TEST(ZnJsonReaderErrorTests, InvalidUtf8BytesFail)
{
	FZnJsonReader Reader;
	EXPECT_FALSE(Reader.ParseUtf8("[\"\xC3\"]", 5));
	EXPECT_FALSE(Reader.ParseUtf8("[\"\xFF\"]", 5));
	EXPECT_FALSE(Reader.ParseUtf8("[\"\xED\xA0\x80\"]", 7));
}

TEST(ZnJsonReaderErrorTests, StaleBytesFromALongerTextDoNotLeakIntoAShorterOne)
{
	FZnJsonReader Reader;
	ASSERT_TRUE(Reader.Parse(Text("[1111111111, 2222222222, 3333333333]")));
	EXPECT_FALSE(Reader.Parse(Text("[11")));
	EXPECT_FALSE(Reader.Parse(Text("[\"")));
	EXPECT_TRUE(Reader.Parse(Text("[1]")));
	EXPECT_EQ(Reader.GetRoot().AsArray().Num(), 1);
}

TEST(ZnJsonReaderErrorTests, AHugeTextParsesAndItsBuffersAreReleased)
{
	// Larger than the size the thread keeps between parses.
	std::string Json = "[";
	Json.reserve((size_t(70) << 20) + 16);
	while (Json.size() < (size_t(70) << 20))
	{
		Json += "1234567,";
	}
	Json += "0]";
	{
		FZnJsonReader Reader;
		FZnJsonArray Root;
		ASSERT_TRUE(Reader.ParseUtf8(Json.data(), int64(Json.size())));
		EXPECT_GT(Reader.GetRoot().AsArray().Num(), 9000000);
	}
	FZnJsonReader After;
	EXPECT_TRUE(After.Parse(Text("[2]")));
	EXPECT_EQ(After.GetRoot().AsArray().GetValue(0).AsNumber(), 2.0);
}
