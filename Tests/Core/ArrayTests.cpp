#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

namespace
{
// Counts live instances so that tests can prove every element is destroyed exactly once.
struct FTracked
{
	static int32 Live;
	int32 Value = 0;
	FTracked() { ++Live; }
	explicit FTracked(int32 InValue)
		: Value(InValue)
	{
		++Live;
	}
	FTracked(const FTracked& Other)
		: Value(Other.Value)
	{
		++Live;
	}
	FTracked(FTracked&& Other) noexcept
		: Value(Other.Value)
	{
		++Live;
	}
	FTracked& operator=(const FTracked&) = default;
	FTracked& operator=(FTracked&&) = default;
	~FTracked() { --Live; }
	bool operator==(const FTracked& Other) const { return Value == Other.Value; }
};
int32 FTracked::Live = 0;
} // namespace

TEST(ArrayTests, AddReturnsTheNewIndex)
{
	TArray<int32> Numbers;
	EXPECT_TRUE(Numbers.IsEmpty());
	EXPECT_EQ(Numbers.Add(10), 0);
	EXPECT_EQ(Numbers.Add(20), 1);
	EXPECT_EQ(Numbers.Emplace(30), 2);
	EXPECT_EQ(Numbers.Num(), 3);
	EXPECT_EQ(Numbers[2], 30);
	EXPECT_FALSE(Numbers.IsEmpty());
}

TEST(ArrayTests, InitializerListConstruction)
{
	const TArray<int32> Numbers = {1, 2, 3};
	ASSERT_EQ(Numbers.Num(), 3);
	EXPECT_EQ(Numbers[0], 1);
	EXPECT_EQ(Numbers.Last(), 3);
	const TArray<FString> Names = {FString(TEXT("a")), FString(TEXT("b"))};
	EXPECT_TRUE(Names[1].Equals(TEXT("b")));
}

TEST(ArrayTests, AddUniqueSkipsEqualElements)
{
	TArray<FString> Names;
	EXPECT_EQ(Names.AddUnique(FString(TEXT("Hips"))), 0);
	EXPECT_EQ(Names.AddUnique(FString(TEXT("Spine"))), 1);
	// Equality of FString ignores case, so this is the same name.
	EXPECT_EQ(Names.AddUnique(FString(TEXT("HIPS"))), 0);
	EXPECT_EQ(Names.Num(), 2);
}

TEST(ArrayTests, PushPopTopLast)
{
	TArray<int32> Stack;
	Stack.Push(1);
	Stack.Push(2);
	Stack.Push(3);
	EXPECT_EQ(Stack.Top(), 3);
	EXPECT_EQ(Stack.Last(1), 2);
	EXPECT_EQ(Stack.Pop(), 3);
	EXPECT_EQ(Stack.Pop(), 2);
	EXPECT_EQ(Stack.Num(), 1);
	Stack.Last() = 9;
	EXPECT_EQ(Stack[0], 9);
}

TEST(ArrayTests, AddDefaultedValueInitialises)
{
	TArray<int32> Numbers = {5};
	EXPECT_EQ(Numbers.AddDefaulted(3), 1);
	ASSERT_EQ(Numbers.Num(), 4);
	EXPECT_EQ(Numbers[1], 0);
	EXPECT_EQ(Numbers[3], 0);
	TArray<FVector> Vectors;
	Vectors.AddDefaulted();
	EXPECT_EQ(Vectors[0], FVector(0, 0, 0));
}

TEST(ArrayTests, AddZeroedAndAddUninitialized)
{
	TArray<float> Values;
	EXPECT_EQ(Values.AddZeroed(4), 0);
	for (float V : Values)
	{
		EXPECT_EQ(V, 0.f);
	}
	const int32 First = Values.AddUninitialized(2);
	EXPECT_EQ(First, 4);
	EXPECT_EQ(Values.Num(), 6);
	Values[4] = 1.f;
	Values[5] = 2.f;
	EXPECT_EQ(Values[5], 2.f);
}

TEST(ArrayTests, InsertPlacesBeforeTheIndex)
{
	TArray<int32> Numbers = {1, 3};
	EXPECT_EQ(Numbers.Insert(2, 1), 1);
	EXPECT_EQ(Numbers.Insert(0, 0), 0);
	EXPECT_EQ(Numbers.Insert(4, 4), 4);
	EXPECT_EQ(Numbers, (TArray<int32>{0, 1, 2, 3, 4}));
}

TEST(ArrayTests, InsertOfAnOwnElementIsSafe)
{
	TArray<FString> Names = {FString(TEXT("a")), FString(TEXT("b"))};
	Names.Shrink();
	Names.Insert(Names[1], 0);
	EXPECT_TRUE(Names[0].Equals(TEXT("b")));
	EXPECT_EQ(Names.Num(), 3);
}

TEST(ArrayTests, AddOfAnOwnElementWhileGrowingIsSafe)
{
	TArray<FString> Names;
	Names.Add(FString(TEXT("first")));
	Names.Shrink();
	ASSERT_EQ(Names.Max(), 1);
	for (int32 Index = 0; Index < 20; ++Index)
	{
		Names.Add(Names[0]);
	}
	EXPECT_EQ(Names.Num(), 21);
	EXPECT_TRUE(Names.Last().Equals(TEXT("first")));
}

TEST(ArrayTests, RemoveAtKeepsOrder)
{
	TArray<int32> Numbers = {0, 1, 2, 3, 4, 5};
	Numbers.RemoveAt(1);
	EXPECT_EQ(Numbers, (TArray<int32>{0, 2, 3, 4, 5}));
	Numbers.RemoveAt(1, 3);
	EXPECT_EQ(Numbers, (TArray<int32>{0, 5}));
	Numbers.RemoveAt(0, 0);
	EXPECT_EQ(Numbers.Num(), 2);
}

TEST(ArrayTests, RemoveAtSwapMovesTheLastElementsIn)
{
	TArray<int32> Numbers = {0, 1, 2, 3, 4};
	Numbers.RemoveAtSwap(1, 2);
	EXPECT_EQ(Numbers, (TArray<int32>{0, 3, 4}));
	Numbers.RemoveAtSwap(2);
	EXPECT_EQ(Numbers, (TArray<int32>{0, 3}));
}

TEST(ArrayTests, RemoveAllAndRemove)
{
	TArray<int32> Numbers = {1, 2, 3, 2, 4, 2};
	EXPECT_EQ(Numbers.Remove(2), 3);
	EXPECT_EQ(Numbers, (TArray<int32>{1, 3, 4}));
	EXPECT_EQ(Numbers.Remove(9), 0);
	EXPECT_EQ(Numbers.RemoveAll([](int32 N) { return N > 2; }), 2);
	EXPECT_EQ(Numbers, (TArray<int32>{1}));
	TArray<int32> Again = {7, 8, 7};
	EXPECT_EQ(Again.RemoveSingle(7), 1);
	EXPECT_EQ(Again, (TArray<int32>{8, 7}));
}

TEST(ArrayTests, RemoveOfAnOwnElementUsesACopy)
{
	TArray<FString> Names = {FString(TEXT("x")), FString(TEXT("y")), FString(TEXT("x"))};
	EXPECT_EQ(Names.Remove(Names[0]), 2);
	EXPECT_EQ(Names.Num(), 1);
	EXPECT_TRUE(Names[0].Equals(TEXT("y")));
}

TEST(ArrayTests, EmptyResetReserveAndSlack)
{
	TArray<int32> Numbers = {1, 2, 3};
	Numbers.Reserve(100);
	EXPECT_EQ(Numbers.Max(), 100);
	EXPECT_EQ(Numbers.GetSlack(), 97);
	EXPECT_EQ(Numbers.GetAllocatedSize(), 100 * sizeof(int32));
	Numbers.Reset();
	EXPECT_EQ(Numbers.Num(), 0);
	EXPECT_EQ(Numbers.Max(), 100);
	Numbers.Add(1);
	Numbers.Empty(10);
	EXPECT_EQ(Numbers.Num(), 0);
	EXPECT_EQ(Numbers.Max(), 10);
	Numbers.Empty();
	EXPECT_EQ(Numbers.Max(), 0);
	EXPECT_EQ(Numbers.GetData(), nullptr);
	EXPECT_EQ(Numbers.GetAllocatedSize(), 0u);
}

TEST(ArrayTests, SetNumGrowsAndShrinks)
{
	TArray<int32> Numbers = {4, 5};
	Numbers.SetNum(4);
	EXPECT_EQ(Numbers, (TArray<int32>{4, 5, 0, 0}));
	Numbers.SetNum(1);
	EXPECT_EQ(Numbers, (TArray<int32>{4}));
	Numbers.SetNumZeroed(3);
	EXPECT_EQ(Numbers, (TArray<int32>{4, 0, 0}));
	Numbers.SetNumUninitialized(5);
	EXPECT_EQ(Numbers.Num(), 5);
}

TEST(ArrayTests, GetDataIsContiguous)
{
	TArray<uint8> Bytes = {1, 2, 3};
	uint8* Data = Bytes.GetData();
	EXPECT_EQ(Data[0] + Data[1] + Data[2], 6);
	Data[1] = 9;
	EXPECT_EQ(Bytes[1], 9);
}

TEST(ArrayTests, BoolArraysHaveRealStorage)
{
	TArray<bool> Flags = {true, false, true};
	bool* Data = Flags.GetData();
	ASSERT_NE(Data, nullptr);
	EXPECT_TRUE(Data[0]);
	EXPECT_FALSE(Data[1]);
	Data[1] = true;
	EXPECT_TRUE(Flags[1]);
	bool& Ref = Flags[2];
	Ref = false;
	EXPECT_FALSE(Flags[2]);
	EXPECT_EQ(Flags.GetAllocatedSize(), Flags.Max() * sizeof(bool));
}

TEST(ArrayTests, Searching)
{
	const TArray<int32> Numbers = {5, 6, 7, 6};
	EXPECT_EQ(Numbers.Find(6), 1);
	EXPECT_EQ(Numbers.FindLast(6), 3);
	EXPECT_EQ(Numbers.Find(9), INDEX_NONE);
	int32 Index = -5;
	EXPECT_TRUE(Numbers.Find(7, Index));
	EXPECT_EQ(Index, 2);
	EXPECT_EQ(Numbers.IndexOfByKey(7), 2);
	EXPECT_TRUE(Numbers.Contains(5));
	EXPECT_FALSE(Numbers.Contains(50));
	const int32* Found = Numbers.FindByPredicate([](int32 N) { return N > 6; });
	ASSERT_NE(Found, nullptr);
	EXPECT_EQ(*Found, 7);
	EXPECT_EQ(Numbers.FindByPredicate([](int32 N) { return N > 60; }), nullptr);
	EXPECT_TRUE(Numbers.ContainsByPredicate([](int32 N) { return N % 2 == 1; }));
	EXPECT_FALSE(Numbers.ContainsByPredicate([](int32 N) { return N < 0; }));
	EXPECT_EQ(Numbers.IndexOfByPredicate([](int32 N) { return N == 6; }), 1);
	EXPECT_EQ(Numbers.FilterByPredicate([](int32 N) { return N == 6; }).Num(), 2);
}

TEST(ArrayTests, FindByKeyComparesWithTheKeyType)
{
	const TArray<FString> Names = {FString(TEXT("Hips")), FString(TEXT("Spine"))};
	EXPECT_EQ(Names.IndexOfByKey(TEXT("spine")), 1);
	EXPECT_TRUE(Names.Contains(TEXT("HIPS")));
	EXPECT_EQ(Names.FindByKey(TEXT("neck")), nullptr);
}

TEST(ArrayTests, AppendCopiesOrMoves)
{
	TArray<int32> A = {1, 2};
	const TArray<int32> B = {3, 4};
	A.Append(B);
	EXPECT_EQ(A, (TArray<int32>{1, 2, 3, 4}));
	A.Append(A);
	EXPECT_EQ(A.Num(), 8);
	EXPECT_EQ(A[7], 4);
	TArray<FString> Names = {FString(TEXT("a"))};
	TArray<FString> More = {FString(TEXT("b")), FString(TEXT("c"))};
	Names.Append(MoveTemp(More));
	EXPECT_EQ(Names.Num(), 3);
	EXPECT_EQ(More.Num(), 0);
	const int32 Raw[] = {9, 8};
	A.Append(Raw, 2);
	EXPECT_EQ(A.Last(), 8);
	A += B;
	EXPECT_EQ(A.Last(), 4);
	A.Append(A.GetData() + 1, 2);
	EXPECT_EQ(A.Last(1), 2);
	EXPECT_EQ(A.Last(), 3);
}

TEST(ArrayTests, SortUsesLessThan)
{
	TArray<int32> Numbers = {3, 1, 2};
	Numbers.Sort();
	EXPECT_EQ(Numbers, (TArray<int32>{1, 2, 3}));
	Numbers.Sort([](int32 A, int32 B) { return A > B; });
	EXPECT_EQ(Numbers, (TArray<int32>{3, 2, 1}));
	TArray<FString> Names = {FString(TEXT("beta")), FString(TEXT("Alpha")), FString(TEXT("gamma"))};
	Names.Sort();
	EXPECT_TRUE(Names[0].Equals(TEXT("Alpha")));
	EXPECT_TRUE(Names[2].Equals(TEXT("gamma")));
}

TEST(ArrayTests, SortingPointersComparesThePointees)
{
	int32 Values[] = {30, 10, 20};
	TArray<int32*> Pointers = {&Values[0], &Values[1], &Values[2]};
	Pointers.Sort();
	EXPECT_EQ(*Pointers[0], 10);
	EXPECT_EQ(*Pointers[2], 30);
}

TEST(ArrayTests, StableSortKeepsEqualElementsInOrder)
{
	TArray<TPair<int32, int32>> Pairs = {{1, 0}, {0, 1}, {1, 2}, {0, 3}};
	Pairs.StableSort([](const TPair<int32, int32>& A, const TPair<int32, int32>& B) { return A.Key < B.Key; });
	EXPECT_EQ(Pairs[0].Value, 1);
	EXPECT_EQ(Pairs[1].Value, 3);
	EXPECT_EQ(Pairs[2].Value, 0);
	EXPECT_EQ(Pairs[3].Value, 2);
}

TEST(ArrayTests, RangeForAndIndexing)
{
	TArray<int32> Numbers = {1, 2, 3};
	int32 Sum = 0;
	for (int32& N : Numbers)
	{
		N *= 2;
		Sum += N;
	}
	EXPECT_EQ(Sum, 12);
	EXPECT_TRUE(Numbers.IsValidIndex(0));
	EXPECT_TRUE(Numbers.IsValidIndex(2));
	EXPECT_FALSE(Numbers.IsValidIndex(3));
	EXPECT_FALSE(Numbers.IsValidIndex(-1));
}

TEST(ArrayTests, IteratorCanRemoveTheCurrentElement)
{
	TArray<int32> Numbers = {1, 2, 3, 4};
	for (auto It = Numbers.CreateIterator(); It; ++It)
	{
		if (*It % 2 == 0)
		{
			It.RemoveCurrent();
		}
	}
	EXPECT_EQ(Numbers, (TArray<int32>{1, 3}));
	int32 Count = 0;
	for (auto It = Numbers.CreateConstIterator(); It; ++It)
	{
		Count += It.GetIndex() + 1;
	}
	EXPECT_EQ(Count, 3);
}

TEST(ArrayTests, EqualityComparesElements)
{
	EXPECT_EQ((TArray<int32>{1, 2}), (TArray<int32>{1, 2}));
	EXPECT_NE((TArray<int32>{1, 2}), (TArray<int32>{1, 2, 3}));
	EXPECT_NE((TArray<int32>{1, 2}), (TArray<int32>{2, 1}));
	EXPECT_EQ(TArray<int32>(), TArray<int32>());
}

TEST(ArrayTests, CopiesAreDeepAndMovesEmptyTheSource)
{
	TArray<TArray<float>> Frames;
	Frames.Add({1.f, 2.f});
	TArray<TArray<float>> Copy = Frames;
	Copy[0][0] = 9.f;
	EXPECT_EQ(Frames[0][0], 1.f);
	TArray<TArray<float>> Moved = MoveTemp(Frames);
	EXPECT_EQ(Frames.Num(), 0);
	EXPECT_EQ(Moved[0][1], 2.f);
	Copy = Moved;
	EXPECT_EQ(Copy[0][0], 1.f);
	Copy = Copy;
	EXPECT_EQ(Copy.Num(), 1);
}

TEST(ArrayTests, EveryElementIsDestroyedExactlyOnce)
{
	FTracked::Live = 0;
	{
		TArray<FTracked> Items;
		for (int32 Index = 0; Index < 100; ++Index)
		{
			Items.Emplace(Index);
		}
		Items.RemoveAt(10, 20);
		Items.Insert(FTracked(7), 3);
		Items.RemoveAll([](const FTracked& T) { return T.Value % 3 == 0; });
		Items.SetNum(50);
		TArray<FTracked> Copy = Items;
		Copy.Empty();
		Items.Pop();
		Items.RemoveAtSwap(0, 5);
		EXPECT_EQ(FTracked::Live, Items.Num());
	}
	EXPECT_EQ(FTracked::Live, 0);
}

TEST(ArrayTests, ConstructFromPointerAndCount)
{
	const uint8 Raw[] = {0xDE, 0xAD, 0xBE, 0xEF};
	const TArray<uint8> Bytes(Raw, 4);
	ASSERT_EQ(Bytes.Num(), 4);
	EXPECT_EQ(Bytes[3], 0xEF);
	EXPECT_EQ(TArray<uint8>(nullptr, 0).Num(), 0);
}

TEST(ArrayTests, InitFillsWithCopies)
{
	TArray<FString> Names;
	Names.Init(FString(TEXT("x")), 3);
	ASSERT_EQ(Names.Num(), 3);
	EXPECT_TRUE(Names[2].Equals(TEXT("x")));
}

TEST(ArrayTests, GrowthIsAmortised)
{
	TArray<int32> Numbers;
	int32 Reallocations = 0;
	const int32* LastData = nullptr;
	for (int32 Index = 0; Index < 100000; ++Index)
	{
		Numbers.Add(Index);
		if (Numbers.GetData() != LastData)
		{
			++Reallocations;
			LastData = Numbers.GetData();
		}
	}
	EXPECT_LT(Reallocations, 60);
	EXPECT_EQ(Numbers[99999], 99999);
}

TEST(ArrayTests, GetRefAddersReturnTheNewElementAfterGrowing)
{
	TArray<FString> Names;
	FString& First = Names.Emplace_GetRef(TEXT("first"));
	EXPECT_TRUE(First.Equals(TEXT("first")));
	EXPECT_EQ(&First, &Names[0]);
	for (int32 Index = 0; Index < 50; ++Index)
	{
		FString& Added = Names.Add_GetRef(FString::FromInt(Index));
		EXPECT_EQ(&Added, &Names.Last());
		FString& Defaulted = Names.AddDefaulted_GetRef();
		EXPECT_EQ(&Defaulted, &Names.Last());
		EXPECT_TRUE(Defaulted.IsEmpty());
	}
	EXPECT_EQ(Names.Num(), 101);
}

TEST(ArrayTests, InsertZeroedAndDefaulted)
{
	TArray<int32> Numbers;
	Numbers.InsertZeroed(0, 0);
	EXPECT_EQ(Numbers.Num(), 0);
	Numbers = {1, 2};
	Numbers.InsertZeroed(1, 2);
	EXPECT_EQ(Numbers, (TArray<int32>{1, 0, 0, 2}));
	Numbers.InsertDefaulted(0);
	EXPECT_EQ(Numbers, (TArray<int32>{0, 1, 0, 0, 2}));
}
