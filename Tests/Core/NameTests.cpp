#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

TEST(NameTests, ComparisonIgnoresCase)
{
	EXPECT_EQ(FName(TEXT("Hips")), FName(TEXT("HIPS")));
	EXPECT_NE(FName(TEXT("Hips")), FName(TEXT("Spine")));
	EXPECT_EQ(GetTypeHash(FName(TEXT("Hips"))), GetTypeHash(FName(TEXT("hips"))));
	EXPECT_EQ(FName("narrow"), FName(TEXT("NARROW")));
}

TEST(NameTests, ToStringKeepsTheSpelling)
{
	EXPECT_TRUE(FName(TEXT("jawOpen")).ToString().Equals(TEXT("jawOpen"), ESearchCase::CaseSensitive));
}

TEST(NameTests, NoneIsEmptyOrTheWordNone)
{
	EXPECT_TRUE(FName().IsNone());
	EXPECT_TRUE(FName(NAME_None).IsNone());
	EXPECT_TRUE(FName(TEXT("")).IsNone());
	EXPECT_TRUE(FName(TEXT("none")).IsNone());
	EXPECT_TRUE(FName().ToString().Equals(TEXT("None")));
	EXPECT_TRUE(FName() == NAME_None);
	EXPECT_FALSE(FName(TEXT("x")) == NAME_None);
}

TEST(NameTests, LexicalOrderIgnoresCase)
{
	EXPECT_TRUE(FName(TEXT("alpha")).LexicalLess(FName(TEXT("Beta"))));
	EXPECT_FALSE(FName(TEXT("Beta")).LexicalLess(FName(TEXT("alpha"))));
	EXPECT_EQ(FName(TEXT("abc")).Compare(FName(TEXT("ABC"))), 0);
}

TEST(NameTests, TextFromStringAndName)
{
	const FText Text = FText::FromString(FString(TEXT("Hello")));
	EXPECT_TRUE(Text.ToString().Equals(TEXT("Hello")));
	EXPECT_FALSE(Text.IsEmpty());
	EXPECT_TRUE(FText::GetEmpty().IsEmpty());
	EXPECT_TRUE(FText::FromName(FName(TEXT("Bone"))).ToString().Equals(TEXT("Bone")));
}
