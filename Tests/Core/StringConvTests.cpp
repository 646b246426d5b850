#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
std::string Utf8Of(const FString& Text)
{
	const FTCHARToUTF8 Converted(*Text);
	return std::string(Converted.Get(), size_t(Converted.Length()));
}
} // namespace

TEST(StringConvTests, AsciiRoundTrip)
{
	const FString Text = UTF8_TO_TCHAR("Hello, world!");
	EXPECT_TRUE(Text.Equals(TEXT("Hello, world!")));
	EXPECT_EQ(Utf8Of(Text), "Hello, world!");
}

TEST(StringConvTests, ChineseRoundTrip)
{
	// "中文测试": four characters of three bytes each.
	const char* Utf8 = "\xE4\xB8\xAD\xE6\x96\x87\xE6\xB5\x8B\xE8\xAF\x95";
	const FUTF8ToTCHAR Wide(Utf8);
	ASSERT_EQ(Wide.Length(), 4);
	EXPECT_EQ(Wide.Get()[0], TCHAR(0x4E2D));
	EXPECT_EQ(Wide.Get()[1], TCHAR(0x6587));
	EXPECT_EQ(Wide.Get()[2], TCHAR(0x6D4B));
	EXPECT_EQ(Wide.Get()[3], TCHAR(0x8BD5));
	const FTCHARToUTF8 Back(Wide.Get());
	EXPECT_EQ(Back.Length(), 12);
	EXPECT_STREQ(Back.Get(), Utf8);
}

TEST(StringConvTests, EmojiBecomesASurrogatePair)
{
	// U+1F600 GRINNING FACE.
	const FString Emoji = UTF8_TO_TCHAR("a\xF0\x9F\x98\x80z");
	ASSERT_EQ(Emoji.Len(), 4);
	EXPECT_EQ(Emoji[1], TCHAR(0xD83D));
	EXPECT_EQ(Emoji[2], TCHAR(0xDE00));
	EXPECT_EQ(Utf8Of(Emoji), "a\xF0\x9F\x98\x80z");
}

TEST(StringConvTests, SurrogatePairFromUtf16EncodesFourBytes)
{
	const TCHAR Pair[] = {0xD83C, 0xDF89, 0}; // U+1F389 PARTY POPPER
	EXPECT_EQ(Utf8Of(FString(Pair)), "\xF0\x9F\x8E\x89");
}

TEST(StringConvTests, MixedLengthsRoundTrip)
{
	// One, two, three and four byte forms together: $ ¢ € 𐍈
	const char* Utf8 = "$\xC2\xA2\xE2\x82\xAC\xF0\x90\x8D\x88";
	const FString Text = UTF8_TO_TCHAR(Utf8);
	ASSERT_EQ(Text.Len(), 5);
	EXPECT_EQ(Text[0], TCHAR('$'));
	EXPECT_EQ(Text[1], TCHAR(0x00A2));
	EXPECT_EQ(Text[2], TCHAR(0x20AC));
	EXPECT_EQ(Text[3], TCHAR(0xD800));
	EXPECT_EQ(Text[4], TCHAR(0xDF48));
	EXPECT_EQ(Utf8Of(Text), Utf8);
}

TEST(StringConvTests, LargestCodePointsRoundTrip)
{
	const char* Utf8 = "\xEF\xBF\xBF\xF4\x8F\xBF\xBF"; // U+FFFF, U+10FFFF
	const FString Text = UTF8_TO_TCHAR(Utf8);
	ASSERT_EQ(Text.Len(), 3);
	EXPECT_EQ(Text[0], TCHAR(0xFFFF));
	EXPECT_EQ(Text[1], TCHAR(0xDBFF));
	EXPECT_EQ(Text[2], TCHAR(0xDFFF));
	EXPECT_EQ(Utf8Of(Text), Utf8);
}

TEST(StringConvTests, CountedConversionsStopAtTheCount)
{
	const FUTF8ToTCHAR Wide("abcdef", 3);
	EXPECT_EQ(Wide.Length(), 3);
	EXPECT_TRUE(FString(Wide.Get()).Equals(TEXT("abc")));
	const FTCHARToUTF8 Narrow(TEXT("abcdef"), 2);
	EXPECT_EQ(Narrow.Length(), 2);
	EXPECT_STREQ(Narrow.Get(), "ab");
}

TEST(StringConvTests, EmbeddedZeroIsKeptWhenCounted)
{
	const char Bytes[] = {'a', '\0', 'b'};
	const FUTF8ToTCHAR Wide(Bytes, 3);
	ASSERT_EQ(Wide.Length(), 3);
	EXPECT_EQ(Wide.Get()[1], TCHAR(0));
	EXPECT_EQ(Wide.Get()[2], TCHAR('b'));
}

TEST(StringConvTests, AnsiConversions)
{
	EXPECT_STREQ(TCHAR_TO_ANSI(TEXT("plain")), "plain");
	const TCHAR Wide[] = {TEXT('a'), 0x00E9, 0x4E2D, 0};
	EXPECT_STREQ(TCHAR_TO_ANSI(Wide), "a??");
	const FString Latin1 = ANSI_TO_TCHAR("\xE9t\xE9");
	ASSERT_EQ(Latin1.Len(), 3);
	EXPECT_EQ(Latin1[0], TCHAR(0x00E9));
}

TEST(StringConvTests, LongTextConvertsCompletely)
{
	FString Long;
	for (int32 Index = 0; Index < 5000; ++Index)
	{
		Long.AppendChar(TCHAR(Index % 2 ? 0x4E2D : 'a'));
	}
	const FTCHARToUTF8 Narrow(*Long);
	EXPECT_EQ(Narrow.Length(), 2500 + 2500 * 3);
	EXPECT_TRUE(FString(UTF8_TO_TCHAR(Narrow.Get())).Equals(Long, ESearchCase::CaseSensitive));
}

// ASCII runs are widened eight bytes at a time: every run length and every place the first
// non-ASCII byte can fall in a word must give the same units as one character at a time.
TEST(StringConvTests, AsciiRunsOfEveryLengthStopAtTheFirstWideCharacter)
{
	struct FWide
	{
		const char* Utf8;
		std::u16string Utf16;
	};
	const FWide Wides[] = {
		{"\xC3\xA9", u"\u00E9"}, {"\xE4\xB8\xAD", u"\u4E2D"}, {"\xF0\x9F\x98\x80", u"\U0001F600"}, {"\x80", u"\uFFFD"}};
	for (const FWide& Wide : Wides)
	{
		for (int32 Before = 0; Before <= 40; ++Before)
		{
			for (int32 After : {0, 1, 7, 8, 9, 17})
			{
				std::string Utf8;
				std::u16string Expected;
				for (int32 Index = 0; Index < Before; ++Index)
				{
					Utf8 += char('a' + Index % 26);
					Expected += char16_t('a' + Index % 26);
				}
				Utf8 += Wide.Utf8;
				Expected += Wide.Utf16;
				for (int32 Index = 0; Index < After; ++Index)
				{
					Utf8 += char('0' + Index % 10);
					Expected += char16_t('0' + Index % 10);
				}
				const FUTF8ToTCHAR Converted(Utf8.data(), int32(Utf8.size()));
				const std::u16string Got(Converted.Get(), size_t(Converted.Length()));
				EXPECT_EQ(Got, Expected) << "ASCII before: " << Before << ", after: " << After;
			}
		}
	}
}
