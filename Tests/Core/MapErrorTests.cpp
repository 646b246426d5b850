#include "CoreMinimal.h"

#include <gtest/gtest.h>

// Asking for a key that must be present is a programmer error, as in the engine.

TEST(MapErrorTests, FindCheckedOfAMissingKeyStops)
{
	TMap<int32, int32> Map;
	Map.Add(1, 1);
	EXPECT_DEATH((void)Map.FindChecked(2), "Assertion failed");
}

TEST(MapErrorTests, IndexOperatorOfAMissingKeyStops)
{
	TMap<FString, int32> Map;
	EXPECT_DEATH((void)Map[FString(TEXT("missing"))], "Assertion failed");
}

TEST(MapErrorTests, MissingKeysAreReportedWithoutStoppingByFind)
{
	TMap<FString, int32> Map;
	EXPECT_EQ(Map.Find(FString()), nullptr);
	EXPECT_EQ(Map.Remove(FString(TEXT("nothing"))), 0);
	EXPECT_FALSE(Map.Contains(FString()));
}
