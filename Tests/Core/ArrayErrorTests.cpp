#include "CoreMinimal.h"

#include <gtest/gtest.h>

// Indexing outside the array is a programmer error that stops the program, as in the engine.

TEST(ArrayErrorTests, IndexPastTheEndStops)
{
	TArray<int32> Numbers = {1, 2, 3};
	EXPECT_DEATH((void)Numbers[3], "Assertion failed");
}

TEST(ArrayErrorTests, NegativeIndexStops)
{
	TArray<int32> Numbers = {1};
	EXPECT_DEATH((void)Numbers[-1], "Assertion failed");
}

TEST(ArrayErrorTests, LastOfAnEmptyArrayStops)
{
	TArray<int32> Numbers;
	EXPECT_DEATH((void)Numbers.Last(), "Assertion failed");
	EXPECT_DEATH((void)Numbers.Top(), "Assertion failed");
}

TEST(ArrayErrorTests, PopOfAnEmptyArrayStops)
{
	TArray<FString> Names;
	EXPECT_DEATH(Names.Pop(), "Assertion failed");
}

TEST(ArrayErrorTests, RemoveAtOutsideStops)
{
	TArray<int32> Numbers = {1, 2};
	EXPECT_DEATH(Numbers.RemoveAt(1, 2), "Assertion failed");
	EXPECT_DEATH(Numbers.RemoveAt(-1), "Assertion failed");
}

TEST(ArrayErrorTests, InsertPastTheEndStops)
{
	TArray<int32> Numbers = {1};
	EXPECT_DEATH(Numbers.Insert(5, 3), "Assertion failed");
}

TEST(ArrayErrorTests, StringIndexPastTheEndStops)
{
	FString Text(TEXT("ab"));
	EXPECT_DEATH((void)Text[2], "Assertion failed");
	FString Empty;
	EXPECT_DEATH((void)Empty[0], "Assertion failed");
}
