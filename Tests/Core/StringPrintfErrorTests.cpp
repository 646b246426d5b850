#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

TEST(StringPrintfErrorTests, UnknownConversionIsCopiedWithoutTakingAnArgument)
{
	EXPECT_TRUE(FString::Printf(TEXT("%q %d"), 5).Equals(TEXT("%q 5")));
	EXPECT_TRUE(FString::Printf(TEXT("%5k|%s"), TEXT("x")).Equals(TEXT("%5k|x")));
}

TEST(StringPrintfErrorTests, PercentAtTheEndIsKept)
{
	EXPECT_TRUE(FString::Printf(TEXT("50%")).Equals(TEXT("50%")));
	EXPECT_TRUE(FString::Printf(TEXT("%")).Equals(TEXT("%")));
	EXPECT_TRUE(FString::Printf(TEXT("a%-08")).Equals(TEXT("a%-08")));
	EXPECT_TRUE(FString::Printf(TEXT("%ll")).Equals(TEXT("%ll")));
}

TEST(StringPrintfErrorTests, NullStringArgumentPrintsNull)
{
	const TCHAR* Null = nullptr;
	const char* NullNarrow = nullptr;
	EXPECT_TRUE(FString::Printf(TEXT("[%s]"), Null).Equals(TEXT("[(null)]")));
	EXPECT_TRUE(FString::Printf(TEXT("[%hs]"), NullNarrow).Equals(TEXT("[(null)]")));
}

TEST(StringPrintfErrorTests, EmptyFormatGivesEmptyText)
{
	EXPECT_TRUE(FString::Printf(TEXT("")).IsEmpty());
	EXPECT_TRUE(FString::PrintfImpl(nullptr).IsEmpty());
}

TEST(StringPrintfErrorTests, VeryWideFieldsDoNotTruncate)
{
	const FString Wide = FString::Printf(TEXT("%300d"), 7);
	EXPECT_EQ(Wide.Len(), 300);
	EXPECT_EQ(Wide[299], TEXT('7'));
	EXPECT_EQ(Wide[0], TEXT(' '));
	const FString WideString = FString::Printf(TEXT("%1000s"), TEXT("z"));
	EXPECT_EQ(WideString.Len(), 1000);
}

TEST(StringPrintfErrorTests, OverlongWidthDigitsAreCapped)
{
	// A field width far beyond any real need must neither crash nor allocate without bound.
	const FString Result = FString::Printf(TEXT("%99999999999999999999d|"), 1);
	EXPECT_TRUE(Result.EndsWith(TEXT("|")));
}
