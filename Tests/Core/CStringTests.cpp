#include "CoreMinimal.h"

#include <gtest/gtest.h>

TEST(CStringTests, Lengths)
{
	EXPECT_EQ(FCString::Strlen(TEXT("abc")), 3);
	EXPECT_EQ(FCString::Strlen(TEXT("")), 0);
	EXPECT_EQ(FCString::Strlen(nullptr), 0);
	EXPECT_EQ(FCStringAnsi::Strlen("abcd"), 4);
}

TEST(CStringTests, Comparisons)
{
	EXPECT_EQ(FCString::Strcmp(TEXT("abc"), TEXT("abc")), 0);
	EXPECT_LT(FCString::Strcmp(TEXT("ABC"), TEXT("abc")), 0);
	EXPECT_EQ(FCString::Stricmp(TEXT("ABC"), TEXT("abc")), 0);
	EXPECT_LT(FCString::Stricmp(TEXT("abc"), TEXT("ABD")), 0);
	EXPECT_GT(FCString::Stricmp(TEXT("abcd"), TEXT("ABC")), 0);
	EXPECT_EQ(FCString::Strnicmp(TEXT("HelloX"), TEXT("helloY"), 5), 0);
	EXPECT_NE(FCString::Strncmp(TEXT("HelloX"), TEXT("helloY"), 5), 0);
	EXPECT_EQ(FCString::Stricmp(nullptr, TEXT("")), 0);
	// Non-ASCII units compare by value, above every ASCII letter.
	const TCHAR High[] = {0x4E2D, 0};
	EXPECT_GT(FCString::Stricmp(High, TEXT("z")), 0);
	EXPECT_GT(FCStringAnsi::Strcmp("\xE9", "z"), 0);
}

TEST(CStringTests, Searches)
{
	const TCHAR* Text = TEXT("Hello World");
	EXPECT_EQ(FCString::Strstr(Text, TEXT("World")), Text + 6);
	EXPECT_EQ(FCString::Strstr(Text, TEXT("world")), nullptr);
	EXPECT_EQ(FCString::Stristr(Text, TEXT("WORLD")), Text + 6);
	EXPECT_EQ(FCString::Strchr(Text, TEXT('o')), Text + 4);
	EXPECT_EQ(FCString::Strrchr(Text, TEXT('o')), Text + 7);
	EXPECT_EQ(FCString::Strchr(Text, TEXT('z')), nullptr);
}

TEST(CStringTests, IntegerParsing)
{
	EXPECT_EQ(FCString::Atoi(TEXT("42")), 42);
	EXPECT_EQ(FCString::Atoi(TEXT("  -12abc")), -12);
	EXPECT_EQ(FCString::Atoi(TEXT("abc")), 0);
	EXPECT_EQ(FCString::Atoi(TEXT("")), 0);
	EXPECT_EQ(FCString::Atoi64(TEXT("9000000000")), 9000000000LL);
	EXPECT_EQ(FCString::Strtoi(TEXT("ff"), nullptr, 16), 255);
	EXPECT_EQ(FCString::Strtoi(TEXT("0x10"), nullptr, 0), 16);
	const TCHAR* Text = TEXT("123rest");
	const TCHAR* End = nullptr;
	EXPECT_EQ(FCString::Strtoi64(Text, &End, 10), 123);
	EXPECT_EQ(End, Text + 3);
	EXPECT_EQ(FCString::Strtoui64(TEXT("18446744073709551615"), nullptr, 10), 18446744073709551615ull);
}

TEST(CStringTests, FloatParsing)
{
	EXPECT_FLOAT_EQ(FCString::Atof(TEXT("1.5")), 1.5f);
	EXPECT_DOUBLE_EQ(FCString::Atod(TEXT("1.5e3x")), 1500.0);
	EXPECT_DOUBLE_EQ(FCString::Atod(TEXT("-0.25")), -0.25);
	EXPECT_EQ(FCString::Atod(TEXT("junk")), 0.0);
	EXPECT_EQ(FCString::Atod(nullptr), 0.0);
	// Parsing stops at the first non-ASCII unit.
	const TCHAR Mixed[] = {TEXT('2'), 0x4E2D, TEXT('5'), 0};
	EXPECT_EQ(FCString::Atod(Mixed), 2.0);
}

TEST(CStringTests, BoolParsing)
{
	EXPECT_TRUE(FCString::ToBool(TEXT("True")));
	EXPECT_TRUE(FCString::ToBool(TEXT("yes")));
	EXPECT_TRUE(FCString::ToBool(TEXT("ON")));
	EXPECT_TRUE(FCString::ToBool(TEXT("1")));
	EXPECT_FALSE(FCString::ToBool(TEXT("false")));
	EXPECT_FALSE(FCString::ToBool(TEXT("0")));
	EXPECT_FALSE(FCString::ToBool(TEXT("")));
}

TEST(CStringTests, BoundedCopyAlwaysTerminates)
{
	TCHAR Buffer[4];
	FCString::Strncpy(Buffer, TEXT("abcdef"), 4);
	EXPECT_EQ(FCString::Strcmp(Buffer, TEXT("abc")), 0);
	FCString::Strncpy(Buffer, TEXT("x"), 4);
	EXPECT_EQ(FCString::Strcmp(Buffer, TEXT("x")), 0);
}

TEST(CStringTests, CharacterClasses)
{
	EXPECT_TRUE(FChar::IsWhitespace(TEXT(' ')));
	EXPECT_TRUE(FChar::IsWhitespace(TEXT('\t')));
	EXPECT_TRUE(FChar::IsWhitespace(TCHAR(0x3000)));
	EXPECT_FALSE(FChar::IsWhitespace(TEXT('a')));
	EXPECT_FALSE(FCharAnsi::IsWhitespace(char(0xA0)));
	EXPECT_TRUE(FChar::IsDigit(TEXT('7')));
	EXPECT_TRUE(FChar::IsHexDigit(TEXT('F')));
	EXPECT_EQ(FChar::ToUpper(TEXT('q')), TEXT('Q'));
	EXPECT_EQ(FChar::ToLower(TCHAR(0x00C9)), TCHAR(0x00C9));
}
