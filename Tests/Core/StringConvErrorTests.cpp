#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
std::vector<uint32> UnitsOf(const char* Utf8, int32 Len)
{
	const FUTF8ToTCHAR Wide(Utf8, Len);
	std::vector<uint32> Units;
	for (int32 Index = 0; Index < Wide.Length(); ++Index)
	{
		Units.push_back(uint32(Wide.Get()[Index]));
	}
	return Units;
}

std::vector<uint32> UnitsOf(const char* Utf8)
{
	return UnitsOf(Utf8, int32(std::char_traits<char>::length(Utf8)));
}

constexpr uint32 Bad = 0xFFFD;
} // namespace

TEST(StringConvErrorTests, StrayBytesBecomeReplacementCharacters)
{
	EXPECT_EQ(UnitsOf("\xFF"), (std::vector<uint32>{Bad}));
	EXPECT_EQ(UnitsOf("a\x80z"), (std::vector<uint32>{'a', Bad, 'z'}));
	EXPECT_EQ(UnitsOf("\xF5\xF8\xFE"), (std::vector<uint32>{Bad, Bad, Bad}));
}

TEST(StringConvErrorTests, TruncatedSequenceBecomesOneReplacement)
{
	EXPECT_EQ(UnitsOf("\xE2\x82"), (std::vector<uint32>{Bad}));
	EXPECT_EQ(UnitsOf("A\xE2\x82"
					  "B"),
		(std::vector<uint32>{'A', Bad, 'B'}));
	EXPECT_EQ(UnitsOf("\xF0\x9F\x98"), (std::vector<uint32>{Bad}));
	EXPECT_EQ(UnitsOf("\xC3"), (std::vector<uint32>{Bad}));
}

TEST(StringConvErrorTests, OverlongFormsAreRejected)
{
	// "/" as two and three bytes.
	EXPECT_EQ(UnitsOf("\xC0\xAF"), (std::vector<uint32>{Bad, Bad}));
	EXPECT_EQ(UnitsOf("\xE0\x80\xAF"), (std::vector<uint32>{Bad, Bad, Bad}));
	EXPECT_EQ(UnitsOf("\xF0\x80\x80\xAF"), (std::vector<uint32>{Bad, Bad, Bad, Bad}));
}

TEST(StringConvErrorTests, EncodedSurrogatesAreRejected)
{
	EXPECT_EQ(UnitsOf("\xED\xA0\x80"), (std::vector<uint32>{Bad, Bad, Bad}));
	EXPECT_EQ(UnitsOf("\xED\x9F\xBF"), (std::vector<uint32>{0xD7FF}));
}

TEST(StringConvErrorTests, CodePointsAboveTheUnicodeRangeAreRejected)
{
	EXPECT_EQ(UnitsOf("\xF4\x90\x80\x80"), (std::vector<uint32>{Bad, Bad, Bad, Bad}));
}

TEST(StringConvErrorTests, ValidTextAfterAnErrorIsKept)
{
	EXPECT_EQ(UnitsOf("\xE4\xB8"
					  "\xE4\xB8\xAD"),
		(std::vector<uint32>{Bad, 0x4E2D}));
}

TEST(StringConvErrorTests, UnpairedSurrogatesBecomeReplacementInUtf8)
{
	const TCHAR LoneHigh[] = {TEXT('a'), 0xD83D, TEXT('b'), 0};
	EXPECT_STREQ(TCHAR_TO_UTF8(LoneHigh),
		"a\xEF\xBF\xBD"
		"b");
	const TCHAR LoneLow[] = {0xDE00, 0};
	EXPECT_STREQ(TCHAR_TO_UTF8(LoneLow), "\xEF\xBF\xBD");
	const TCHAR HighAtEnd[] = {0xD83D, 0};
	EXPECT_STREQ(TCHAR_TO_UTF8(HighAtEnd), "\xEF\xBF\xBD");
	const TCHAR Reversed[] = {0xDE00, 0xD83D, 0};
	EXPECT_STREQ(TCHAR_TO_UTF8(Reversed), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(StringConvErrorTests, NullSourcesGiveEmptyText)
{
	const char* NullNarrow = nullptr;
	const TCHAR* NullWide = nullptr;
	const FUTF8ToTCHAR Wide(NullNarrow);
	EXPECT_EQ(Wide.Length(), 0);
	ASSERT_NE(Wide.Get(), nullptr);
	EXPECT_EQ(Wide.Get()[0], TCHAR(0));
	const FTCHARToUTF8 Narrow(NullWide);
	EXPECT_EQ(Narrow.Length(), 0);
	EXPECT_STREQ(Narrow.Get(), "");
	EXPECT_EQ(FUTF8ToTCHAR("abc", -5).Length(), 0);
}

TEST(StringConvErrorTests, EveryByteValueConvertsWithoutCrashing)
{
	// All 256 single bytes and every two-byte pair: each must give text, never stop the program.
	char Pair[2];
	int32 Total = 0;
	for (int32 First = 0; First < 256; ++First)
	{
		Pair[0] = char(First);
		for (int32 Second = 0; Second < 256; ++Second)
		{
			Pair[1] = char(Second);
			const FUTF8ToTCHAR Wide(Pair, 2);
			EXPECT_GE(Wide.Length(), 1);
			EXPECT_LE(Wide.Length(), 2);
			Total += Wide.Length();
		}
	}
	EXPECT_GT(Total, 65536);
}
