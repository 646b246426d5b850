#include "ZnJsonWriter.h"

#include "ZnServiceTestHelpers.h"
#include <gtest/gtest.h>

#include <string>

using namespace ZnServiceTest;

namespace
{
FString Quoted(const FString& Text)
{
	FString Out;
	FZnJsonWriter::AppendQuoted(Out, *Text, Text.Len());
	return Out;
}
} // namespace

TEST(ZnJsonWriterTests, OneMemberPerLineWithTabIndent)
{
	FString Out;
	FZnJsonWriter Writer(Out);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("a"), TEXT("x"));
	Writer.WriteValue(TEXT("b"), 7);
	Writer.WriteValue(TEXT("c"), true);
	Writer.WriteValue(TEXT("d"), false);
	Writer.WriteObjectEnd();
	EXPECT_EQ(Utf8(Out),
		Utf8(JoinLines({TEXT("{"), TEXT("\t\"a\": \"x\","), TEXT("\t\"b\": 7,"), TEXT("\t\"c\": true,"),
			TEXT("\t\"d\": false"), TEXT("}")})));
}

TEST(ZnJsonWriterTests, NestedObjectsOpenOnTheirOwnLineAtTheKeysIndent)
{
	FString Out;
	FZnJsonWriter Writer(Out);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("first"), 1);
	Writer.WriteObjectStart(TEXT("outer"));
	Writer.WriteValue(TEXT("x"), 2);
	Writer.WriteObjectStart(TEXT("inner"));
	Writer.WriteValue(TEXT("y"), 3);
	Writer.WriteObjectEnd();
	Writer.WriteObjectEnd();
	Writer.WriteObjectStart(TEXT("last"));
	Writer.WriteValue(TEXT("z"), 4);
	Writer.WriteObjectEnd();
	Writer.WriteObjectEnd();
	EXPECT_EQ(Utf8(Out),
		Utf8(JoinLines({TEXT("{"), TEXT("\t\"first\": 1,"), TEXT("\t\"outer\":"), TEXT("\t{"), TEXT("\t\t\"x\": 2,"),
			TEXT("\t\t\"inner\":"), TEXT("\t\t{"), TEXT("\t\t\t\"y\": 3"), TEXT("\t\t}"), TEXT("\t},"),
			TEXT("\t\"last\":"), TEXT("\t{"), TEXT("\t\t\"z\": 4"), TEXT("\t}"), TEXT("}")})));
}

TEST(ZnJsonWriterTests, EmptyObjects)
{
	FString Out;
	FZnJsonWriter Writer(Out);
	Writer.WriteObjectStart();
	Writer.WriteObjectStart(TEXT("e"));
	Writer.WriteObjectEnd();
	Writer.WriteObjectEnd();
	EXPECT_EQ(Utf8(Out), Utf8(JoinLines({TEXT("{"), TEXT("\t\"e\":"), TEXT("\t{"), TEXT("\t}"), TEXT("}")})));
}

TEST(ZnJsonWriterTests, NoLineTerminatorAfterTheLastBrace)
{
	FString Out;
	FZnJsonWriter Writer(Out);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("k"), 0);
	Writer.WriteObjectEnd();
	ASSERT_FALSE(Out.IsEmpty());
	EXPECT_EQ(Out[Out.Len() - 1], TCHAR('}'));
}

TEST(ZnJsonWriterTests, AppendsToWhatTheStringHeld)
{
	FString Out(TEXT("prefix"));
	FZnJsonWriter Writer(Out);
	Writer.WriteObjectStart();
	Writer.WriteObjectEnd();
	EXPECT_EQ(Utf8(Out), "prefix{" + Utf8(LINE_TERMINATOR) + "}");
}

TEST(ZnJsonWriterTests, IntegersAreDecimal)
{
	FString Out;
	FZnJsonWriter Writer(Out);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("min"), int32(-2147483647 - 1));
	Writer.WriteValue(TEXT("max"), int32(2147483647));
	Writer.WriteValue(TEXT("zero"), int32(0));
	Writer.WriteValue(TEXT("wide"), int64(-9223372036854775807LL - 1));
	Writer.WriteObjectEnd();
	EXPECT_EQ(Utf8(Out),
		Utf8(JoinLines({TEXT("{"), TEXT("\t\"min\": -2147483648,"), TEXT("\t\"max\": 2147483647,"),
			TEXT("\t\"zero\": 0,"), TEXT("\t\"wide\": -9223372036854775808"), TEXT("}")})));
}

TEST(ZnJsonWriterTests, QuotesAndBackslashesAreEscaped)
{
	EXPECT_EQ(Utf8(Quoted(TEXT("say \"hi\" \\ bye"))), "\"say \\\"hi\\\" \\\\ bye\"");
	EXPECT_EQ(Utf8(Quoted(TEXT(""))), "\"\"");
	EXPECT_EQ(Utf8(Quoted(TEXT("/"))), "\"/\"") << "the solidus needs no escape";
}

TEST(ZnJsonWriterTests, ControlCharactersAreEscaped)
{
	EXPECT_EQ(Utf8(Quoted(TEXT("a\nb\rc\td\be\ff"))), "\"a\\nb\\rc\\td\\be\\ff\"");
	const TCHAR Controls[] = {0x01, 0x1F, 0x0B, 0x00, 0x7F, 0};
	EXPECT_EQ(Utf8(Quoted(FString(5, Controls))), std::string("\"\\u0001\\u001f\\u000b\\u0000\x7F\""));
}

TEST(ZnJsonWriterTests, NonAsciiIsKeptAsText)
{
	const FString Text = FString(UTF8_TO_TCHAR("\xE4\xBD\xA0\xE5\xA5\xBD \xC3\xA9 \xF0\x9F\x98\x80"));
	EXPECT_EQ(Utf8(Quoted(Text)), "\"\xE4\xBD\xA0\xE5\xA5\xBD \xC3\xA9 \xF0\x9F\x98\x80\"");
}

TEST(ZnJsonWriterTests, KeysAreEscapedToo)
{
	FString Out;
	FZnJsonWriter Writer(Out);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("a\"b"), 1);
	Writer.WriteObjectEnd();
	EXPECT_EQ(Utf8(Out), Utf8(JoinLines({TEXT("{"), TEXT("\t\"a\\\"b\": 1"), TEXT("}")})));
}

TEST(ZnJsonWriterTests, ALiteralTextValueIsAStringNotABoolean)
{
	FString Out;
	FZnJsonWriter Writer(Out);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("base_name"), TEXT("v005"));
	Writer.WriteObjectEnd();
	EXPECT_EQ(Utf8(Out), Utf8(JoinLines({TEXT("{"), TEXT("\t\"base_name\": \"v005\""), TEXT("}")})));
}
