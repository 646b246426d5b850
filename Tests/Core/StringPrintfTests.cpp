#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace
{
enum class ETestEnum : uint8
{
	First = 3
};
}

TEST(StringPrintfTests, Strings)
{
	EXPECT_EQ(FString::Printf(TEXT("[%s]"), TEXT("abc")), FString(TEXT("[abc]")));
	const FString Name(TEXT("Hips"));
	EXPECT_TRUE(FString::Printf(TEXT("%s:[%d]"), *Name, 7).Equals(TEXT("Hips:[7]")));
	EXPECT_TRUE(FString::Printf(TEXT("[%5s]"), TEXT("ab")).Equals(TEXT("[   ab]")));
	EXPECT_TRUE(FString::Printf(TEXT("[%-5s]"), TEXT("ab")).Equals(TEXT("[ab   ]")));
	EXPECT_TRUE(FString::Printf(TEXT("[%.2s]"), TEXT("abcdef")).Equals(TEXT("[ab]")));
	EXPECT_TRUE(FString::Printf(TEXT("[%hs]"), "narrow").Equals(TEXT("[narrow]")));
}

TEST(StringPrintfTests, NonAsciiStringsPassThrough)
{
	const FString Chinese = UTF8_TO_TCHAR("\xE4\xB8\xAD\xE6\x96\x87");
	const FString Result = FString::Printf(TEXT("<%s>"), *Chinese);
	EXPECT_EQ(Result.Len(), 4);
	EXPECT_TRUE(Result.Equals(FString(TEXT("<")) + Chinese + TEXT(">")));
}

TEST(StringPrintfTests, SignedIntegers)
{
	EXPECT_TRUE(FString::Printf(TEXT("%d"), -42).Equals(TEXT("-42")));
	EXPECT_TRUE(FString::Printf(TEXT("%i"), 42).Equals(TEXT("42")));
	EXPECT_TRUE(FString::Printf(TEXT("%5d|%-5d|%05d"), 42, 42, -42).Equals(TEXT("   42|42   |-0042")));
	EXPECT_TRUE(FString::Printf(TEXT("%+d"), 5).Equals(TEXT("+5")));
	EXPECT_TRUE(FString::Printf(TEXT("%ld"), int64(-9000000000)).Equals(TEXT("-9000000000")));
	EXPECT_TRUE(FString::Printf(TEXT("%lld"), (long long)9223372036854775807LL).Equals(TEXT("9223372036854775807")));
	EXPECT_TRUE(FString::Printf(TEXT("%I64d"), int64(-1)).Equals(TEXT("-1")));
	EXPECT_TRUE(FString::Printf(TEXT("%d"), ETestEnum::First).Equals(TEXT("3")));
}

TEST(StringPrintfTests, UnsignedAndHexIntegers)
{
	EXPECT_TRUE(FString::Printf(TEXT("%u"), 4294967295u).Equals(TEXT("4294967295")));
	EXPECT_TRUE(FString::Printf(TEXT("%lu"), uint64(18446744073709551615ull)).Equals(TEXT("18446744073709551615")));
	EXPECT_TRUE(FString::Printf(TEXT("%llu"), (unsigned long long)12345678901234ull).Equals(TEXT("12345678901234")));
	EXPECT_TRUE(FString::Printf(TEXT("%x"), 0xbeefu).Equals(TEXT("beef")));
	EXPECT_TRUE(FString::Printf(TEXT("%X"), 0xbeefu).Equals(TEXT("BEEF")));
	EXPECT_TRUE(FString::Printf(TEXT("%02X"), uint8(10)).Equals(TEXT("0A")));
	EXPECT_TRUE(FString::Printf(TEXT("%02x%02x"), 0xabu, 1u).Equals(TEXT("ab01")));
	EXPECT_TRUE(FString::Printf(TEXT("%08x"), 0xbeefu).Equals(TEXT("0000beef")));
	EXPECT_TRUE(FString::Printf(TEXT("%llx"), (unsigned long long)0x123456789abcull).Equals(TEXT("123456789abc")));
	EXPECT_TRUE(FString::Printf(TEXT("%#x"), 255u).Equals(TEXT("0xff")));
}

TEST(StringPrintfTests, FloatingPoint)
{
	EXPECT_TRUE(FString::Printf(TEXT("%f"), 1.5).Equals(TEXT("1.500000")));
	EXPECT_TRUE(FString::Printf(TEXT("%lf"), 0.1f).Equals(TEXT("0.100000")));
	EXPECT_TRUE(FString::Printf(TEXT("%.3f"), 3.14159).Equals(TEXT("3.142")));
	EXPECT_TRUE(FString::Printf(TEXT("%8.2f|"), -2.5).Equals(TEXT("   -2.50|")));
	EXPECT_TRUE(FString::Printf(TEXT("%g"), 0.0001).Equals(TEXT("0.0001")));
	EXPECT_TRUE(FString::Printf(TEXT("%g"), 1e20).Equals(TEXT("1e+20")));
	EXPECT_TRUE(FString::Printf(TEXT("%e"), 12345.678).Equals(TEXT("1.234568e+04")));
	EXPECT_TRUE(FString::Printf(TEXT("%E"), 0.5).Equals(TEXT("5.000000E-01")));
	EXPECT_TRUE(FString::Printf(TEXT("%.0f"), 2.5).Equals(TEXT("2")));
	EXPECT_TRUE(FString::Printf(TEXT("%3.3f"), 1.0).Equals(TEXT("1.000")));
}

TEST(StringPrintfTests, HugeFloatIsPrintedInFull)
{
	char Expected[400];
	std::snprintf(Expected, sizeof(Expected), "%f", 1e300);
	const FString Result = FString::Printf(TEXT("%f"), 1e300);
	EXPECT_EQ(Result.Len(), 301 + 7);
	EXPECT_STREQ(TCHAR_TO_UTF8(*Result), Expected);
	EXPECT_TRUE(Result.EndsWith(TEXT(".000000")));
}

TEST(StringPrintfTests, CharactersAndPercent)
{
	EXPECT_TRUE(FString::Printf(TEXT("%c%c"), TEXT('o'), 'k').Equals(TEXT("ok")));
	EXPECT_TRUE(FString::Printf(TEXT("[%3c]"), TEXT('x')).Equals(TEXT("[  x]")));
	EXPECT_TRUE(FString::Printf(TEXT("100%%")).Equals(TEXT("100%")));
	EXPECT_TRUE(FString::Printf(TEXT("%d%%"), 50).Equals(TEXT("50%")));
	const TCHAR Cjk = 0x4E2D;
	const FString Wide = FString::Printf(TEXT("%c"), Cjk);
	ASSERT_EQ(Wide.Len(), 1);
	EXPECT_EQ(Wide[0], Cjk);
}

TEST(StringPrintfTests, Pointers)
{
	EXPECT_TRUE(FString::Printf(TEXT("%p"), reinterpret_cast<void*>(0x1234)).Equals(TEXT("0x1234")));
	int Local = 0;
	EXPECT_TRUE(FString::Printf(TEXT("%p"), &Local).StartsWith(TEXT("0x")));
}

TEST(StringPrintfTests, StarWidthAndPrecision)
{
	EXPECT_TRUE(FString::Printf(TEXT("[%*d]"), 4, 7).Equals(TEXT("[   7]")));
	EXPECT_TRUE(FString::Printf(TEXT("[%.*f]"), 2, 1.0).Equals(TEXT("[1.00]")));
	EXPECT_TRUE(FString::Printf(TEXT("[%*s]"), -4, TEXT("a")).Equals(TEXT("[a   ]")));
}

TEST(StringPrintfTests, LogPrinterFormats)
{
	// The shapes the module's debug printers use.
	EXPECT_TRUE(FString::Printf(TEXT("%s:[%lf]"), TEXT("Speed"), double(2.5f)).Equals(TEXT("Speed:[2.500000]")));
	EXPECT_TRUE(FString::Printf(TEXT("%s:[%lf, %lf, %lf]"), TEXT("Pos"), 1.0, -2.0, 0.25)
					.Equals(TEXT("Pos:[1.000000, -2.000000, 0.250000]")));
	EXPECT_TRUE(FString::Printf(TEXT("%s(wxyz):[%lf, %lf, %lf, %lf]"), TEXT("Q"), 1.0, 0.0, 0.0, 0.0)
					.Equals(TEXT("Q(wxyz):[1.000000, 0.000000, 0.000000, 0.000000]")));
}

TEST(StringPrintfTests, AppendfAddsToTheEnd)
{
	FString Text(TEXT("a"));
	Text.Appendf(TEXT("-%d-%s"), 1, TEXT("b"));
	EXPECT_TRUE(Text.Equals(TEXT("a-1-b")));
}

TEST(StringPrintfTests, OnlyNumbersEnumsAndPointersAreAccepted)
{
	// Passing an FString by value is rejected at compile time, as in the engine.
	EXPECT_FALSE(ZnStandalone::TAllValidPrintfArgs<FString>::Value);
	EXPECT_FALSE((ZnStandalone::TAllValidPrintfArgs<int32, FString>::Value));
	EXPECT_TRUE((ZnStandalone::TAllValidPrintfArgs<int32, double, const TCHAR*, ETestEnum, void*>::Value));
	EXPECT_TRUE(ZnStandalone::TAllValidPrintfArgs<>::Value);
	EXPECT_FALSE(ZnStandalone::TIsTCharArray<const TCHAR*>::Value);
	EXPECT_TRUE(ZnStandalone::TIsTCharArray<const TCHAR[4]>::Value);
}
