#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

TEST(MapTests, AddFindAndContains)
{
	TMap<int32, FString> Map;
	EXPECT_TRUE(Map.IsEmpty());
	Map.Add(1, FString(TEXT("one")));
	Map.Add(2, FString(TEXT("two")));
	EXPECT_EQ(Map.Num(), 2);
	ASSERT_NE(Map.Find(1), nullptr);
	EXPECT_TRUE(Map.Find(1)->Equals(TEXT("one")));
	EXPECT_EQ(Map.Find(3), nullptr);
	EXPECT_TRUE(Map.Contains(2));
	EXPECT_FALSE(Map.Contains(3));
}

TEST(MapTests, AddReplacesTheValueOfAnExistingKey)
{
	TMap<FString, int32> Map;
	Map.Add(FString(TEXT("Hips")), 1);
	int32& Value = Map.Add(FString(TEXT("Hips")), 2);
	EXPECT_EQ(Value, 2);
	EXPECT_EQ(Map.Num(), 1);
	EXPECT_EQ(Map.FindRef(FString(TEXT("Hips"))), 2);
}

TEST(MapTests, StringKeysIgnoreCase)
{
	TMap<FString, int32> Map;
	Map.Add(FString(TEXT("LeftHand")), 1);
	Map.Add(FString(TEXT("LEFTHAND")), 2);
	EXPECT_EQ(Map.Num(), 1);
	EXPECT_EQ(Map.FindRef(FString(TEXT("lefthand"))), 2);
	TArray<FString> Keys;
	Map.GenerateKeyArray(Keys);
	// The stored key keeps the spelling it was first added with.
	EXPECT_TRUE(Keys[0].Equals(TEXT("LeftHand"), ESearchCase::CaseSensitive));
	EXPECT_EQ(Map.Remove(FString(TEXT("LEFThand"))), 1);
	EXPECT_TRUE(Map.IsEmpty());
}

TEST(MapTests, NameKeysIgnoreCase)
{
	TMap<FName, float> Map;
	Map.Add(FName(TEXT("jawOpen")), 0.5f);
	EXPECT_EQ(Map.FindRef(FName(TEXT("JAWOPEN"))), 0.5f);
}

TEST(MapTests, IterationFollowsInsertionOrder)
{
	TMap<FString, int32> Map;
	const TCHAR* Names[] = {TEXT("z"), TEXT("a"), TEXT("m"), TEXT("b"), TEXT("y")};
	for (int32 Index = 0; Index < 5; ++Index)
	{
		Map.Add(FString(Names[Index]), Index);
	}
	int32 Expected = 0;
	for (const TPair<FString, int32>& Pair : Map)
	{
		EXPECT_TRUE(Pair.Key.Equals(Names[Expected]));
		EXPECT_EQ(Pair.Value, Expected);
		++Expected;
	}
	EXPECT_EQ(Expected, 5);
}

TEST(MapTests, RemovalKeepsTheOrderOfTheRest)
{
	TMap<int32, int32> Map;
	for (int32 Index = 0; Index < 6; ++Index)
	{
		Map.Add(Index * 10, Index);
	}
	EXPECT_EQ(Map.Remove(20), 1);
	EXPECT_EQ(Map.Remove(20), 0);
	TArray<int32> Keys;
	EXPECT_EQ(Map.GenerateKeyArray(Keys), 5);
	EXPECT_EQ(Keys, (TArray<int32>{0, 10, 30, 40, 50}));
	EXPECT_EQ(Map.FindRef(40), 4);
	Map.Add(20, 9);
	Map.GenerateKeyArray(Keys);
	EXPECT_EQ(Keys.Last(), 20);
}

TEST(MapTests, FindRefGivesADefaultForMissingKeys)
{
	TMap<int32, FString> Map;
	EXPECT_TRUE(Map.FindRef(5).IsEmpty());
	TMap<FString, float> Floats;
	EXPECT_EQ(Floats.FindRef(FString(TEXT("x"))), 0.f);
}

TEST(MapTests, FindOrAddAddsADefault)
{
	TMap<FString, int32> Counts;
	Counts.FindOrAdd(FString(TEXT("a"))) += 1;
	Counts.FindOrAdd(FString(TEXT("a"))) += 1;
	Counts.FindOrAdd(FString(TEXT("b")));
	EXPECT_EQ(Counts.Num(), 2);
	EXPECT_EQ(Counts.FindRef(FString(TEXT("a"))), 2);
	EXPECT_EQ(Counts.FindRef(FString(TEXT("b"))), 0);
	EXPECT_EQ(Counts.FindOrAdd(FString(TEXT("c")), 7), 7);
	EXPECT_EQ(Counts.FindOrAdd(FString(TEXT("c")), 8), 7);
}

TEST(MapTests, FindCheckedAndIndexOperatorReturnTheValue)
{
	TMap<int32, int32> Map;
	Map.Add(3, 30);
	EXPECT_EQ(Map.FindChecked(3), 30);
	Map[3] = 31;
	EXPECT_EQ(Map[3], 31);
	const TMap<int32, int32>& Const = Map;
	EXPECT_EQ(Const[3], 31);
}

TEST(MapTests, EmplaceConstructsInPlace)
{
	TMap<FString, TArray<float>> Map;
	Map.Emplace(FString(TEXT("curve")), TArray<float>{1.f, 2.f});
	ASSERT_TRUE(Map.Contains(FString(TEXT("curve"))));
	EXPECT_EQ(Map.Find(FString(TEXT("curve")))->Num(), 2);
	Map.Emplace(FString(TEXT("empty")));
	EXPECT_EQ(Map.Find(FString(TEXT("empty")))->Num(), 0);
}

TEST(MapTests, EmptyAndReset)
{
	TMap<int32, int32> Map;
	Map.Add(1, 1);
	Map.Add(2, 2);
	Map.Reset();
	EXPECT_EQ(Map.Num(), 0);
	EXPECT_FALSE(Map.Contains(1));
	Map.Add(3, 3);
	EXPECT_EQ(Map.FindRef(3), 3);
	Map.Empty();
	EXPECT_EQ(Map.Num(), 0);
	EXPECT_EQ(Map.Find(3), nullptr);
	Map.Add(4, 4);
	EXPECT_EQ(Map.FindRef(4), 4);
}

TEST(MapTests, GenerateValueArrayInOrder)
{
	TMap<FString, int32> Map;
	Map.Add(FString(TEXT("x")), 5);
	Map.Add(FString(TEXT("y")), 6);
	TArray<int32> Values = {99};
	EXPECT_EQ(Map.GenerateValueArray(Values), 2);
	EXPECT_EQ(Values, (TArray<int32>{5, 6}));
}

TEST(MapTests, ManyKeysStayFindable)
{
	TMap<int32, int32> Map;
	for (int32 Index = 0; Index < 5000; ++Index)
	{
		Map.Add(Index * 7919, Index);
	}
	EXPECT_EQ(Map.Num(), 5000);
	for (int32 Index = 0; Index < 5000; ++Index)
	{
		ASSERT_NE(Map.Find(Index * 7919), nullptr);
		EXPECT_EQ(*Map.Find(Index * 7919), Index);
	}
	for (int32 Index = 0; Index < 5000; Index += 2)
	{
		Map.Remove(Index * 7919);
	}
	EXPECT_EQ(Map.Num(), 2500);
	EXPECT_EQ(Map.Find(0), nullptr);
	EXPECT_EQ(Map.FindRef(7919), 1);
}

TEST(MapTests, IteratorCanRemoveTheCurrentPair)
{
	TMap<int32, int32> Map;
	for (int32 Index = 0; Index < 6; ++Index)
	{
		Map.Add(Index, Index * Index);
	}
	for (auto It = Map.CreateIterator(); It; ++It)
	{
		if (It.Key() % 2 == 1)
		{
			It.RemoveCurrent();
		}
	}
	TArray<int32> Keys;
	Map.GenerateKeyArray(Keys);
	EXPECT_EQ(Keys, (TArray<int32>{0, 2, 4}));
	EXPECT_EQ(Map.FindRef(4), 16);
	int32 Sum = 0;
	for (auto It = Map.CreateConstIterator(); It; ++It)
	{
		Sum += It.Value();
	}
	EXPECT_EQ(Sum, 20);
}

TEST(MapTests, CopiesAreIndependent)
{
	TMap<FString, TArray<int32>> Map;
	Map.Add(FString(TEXT("a")), {1});
	TMap<FString, TArray<int32>> Copy = Map;
	Copy.FindChecked(FString(TEXT("a"))).Add(2);
	Copy.Add(FString(TEXT("b")), {3});
	EXPECT_EQ(Map.FindChecked(FString(TEXT("a"))).Num(), 1);
	EXPECT_FALSE(Map.Contains(FString(TEXT("b"))));
	EXPECT_TRUE(Copy.Contains(FString(TEXT("B"))));
}

TEST(MapTests, RangeForCanEditValues)
{
	TMap<int32, float> Map;
	Map.Add(1, 1.f);
	Map.Add(2, 2.f);
	for (auto& Pair : Map)
	{
		Pair.Value *= 10.f;
	}
	EXPECT_EQ(Map.FindRef(2), 20.f);
}

TEST(MapTests, FindKeyAndRemoveAndCopyValue)
{
	TMap<FString, int32> Map;
	Map.Add(FString(TEXT("a")), 1);
	Map.Add(FString(TEXT("b")), 2);
	const FString* Key = Map.FindKey(2);
	ASSERT_NE(Key, nullptr);
	EXPECT_TRUE(Key->Equals(TEXT("b")));
	EXPECT_EQ(Map.FindKey(7), nullptr);
	int32 Removed = 0;
	EXPECT_TRUE(Map.RemoveAndCopyValue(FString(TEXT("a")), Removed));
	EXPECT_EQ(Removed, 1);
	EXPECT_FALSE(Map.RemoveAndCopyValue(FString(TEXT("a")), Removed));
}
