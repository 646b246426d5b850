// TArray: the engine's contiguous growable array. Elements live in one heap block that the array
// owns; pointers and references into it are invalidated by any call that adds elements beyond the
// current capacity (Max()) and by removals before them. Indexing outside [0, Num()) is a
// programmer error and stops the program through check().
#pragma once

#include "CoreTypes.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <new>
#include <type_traits>

enum EForceInit
{
	ForceInit,
	ForceInitToZero
};
enum ENoInit
{
	NoInit
};

namespace EAllowShrinking
{
enum Type
{
	No,
	Yes
};
}

template <typename InElementType>
class TArray
{
public:
	using ElementType = InElementType;
	using SizeType = int32;

	TArray() = default;

	TArray(std::initializer_list<ElementType> InitList)
	{
		Reserve(int32(InitList.size()));
		for (const ElementType& Item : InitList)
		{
			new (Data + ArrayNum) ElementType(Item);
			++ArrayNum;
		}
	}

	/** Copies Count elements starting at Ptr. */
	TArray(const ElementType* Ptr, int32 Count)
	{
		check(Count >= 0 && (Ptr != nullptr || Count == 0));
		Append(Ptr, Count);
	}

	TArray(const TArray& Other)
	{
		Reserve(Other.ArrayNum);
		for (int32 Index = 0; Index < Other.ArrayNum; ++Index)
		{
			new (Data + Index) ElementType(Other.Data[Index]);
		}
		ArrayNum = Other.ArrayNum;
	}

	TArray(TArray&& Other) noexcept
		: Data(Other.Data)
		, ArrayNum(Other.ArrayNum)
		, ArrayMax(Other.ArrayMax)
	{
		Other.Data = nullptr;
		Other.ArrayNum = 0;
		Other.ArrayMax = 0;
	}

	~TArray()
	{
		DestructItems(0, ArrayNum);
		Free(Data);
	}

	TArray& operator=(const TArray& Other)
	{
		if (this != &Other)
		{
			TArray Copy(Other);
			SwapWith(Copy);
		}
		return *this;
	}

	TArray& operator=(TArray&& Other) noexcept
	{
		if (this != &Other)
		{
			TArray Moved(MoveTemp(Other));
			SwapWith(Moved);
		}
		return *this;
	}

	TArray& operator=(std::initializer_list<ElementType> InitList)
	{
		TArray Copy(InitList);
		SwapWith(Copy);
		return *this;
	}

	// Sizes

	FORCEINLINE int32 Num() const { return ArrayNum; }
	FORCEINLINE int32 Max() const { return ArrayMax; }
	FORCEINLINE int32 GetSlack() const { return ArrayMax - ArrayNum; }
	FORCEINLINE bool IsEmpty() const { return ArrayNum == 0; }
	FORCEINLINE bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < ArrayNum; }
	FORCEINLINE SIZE_T GetAllocatedSize() const { return SIZE_T(ArrayMax) * sizeof(ElementType); }
	FORCEINLINE static constexpr uint32 GetTypeSize() { return sizeof(ElementType); }

	FORCEINLINE ElementType* GetData() { return Data; }
	FORCEINLINE const ElementType* GetData() const { return Data; }

	// Element access

	FORCEINLINE ElementType& operator[](int32 Index)
	{
		RangeCheck(Index);
		return Data[Index];
	}
	FORCEINLINE const ElementType& operator[](int32 Index) const
	{
		RangeCheck(Index);
		return Data[Index];
	}

	/** The element IndexFromTheEnd places before the end (0 = the last one). */
	ElementType& Last(int32 IndexFromTheEnd = 0)
	{
		RangeCheck(ArrayNum - IndexFromTheEnd - 1);
		return Data[ArrayNum - IndexFromTheEnd - 1];
	}
	const ElementType& Last(int32 IndexFromTheEnd = 0) const
	{
		RangeCheck(ArrayNum - IndexFromTheEnd - 1);
		return Data[ArrayNum - IndexFromTheEnd - 1];
	}
	ElementType& Top() { return Last(); }
	const ElementType& Top() const { return Last(); }

	// Adding

	/** Appends a copy of Item and returns its index. Item may be an element of this array. */
	FORCEINLINE int32 Add(const ElementType& Item) { return Emplace(Item); }
	FORCEINLINE int32 Add(ElementType&& Item) { return Emplace(MoveTemp(Item)); }

	template <typename... ArgsType>
	int32 Emplace(ArgsType&&... Args)
	{
		const int32 Index = ArrayNum;
		if (ArrayNum == ArrayMax)
		{
			// Build the new element in the new block before the old elements move, so that
			// arguments referring into this array stay valid.
			const int32 NewMax = CalculateSlackGrow(ArrayNum + 1);
			ElementType* NewData = Allocate(NewMax);
			new (NewData + Index) ElementType(Forward<ArgsType>(Args)...);
			RelocateTo(NewData);
			ArrayMax = NewMax;
		}
		else
		{
			new (Data + Index) ElementType(Forward<ArgsType>(Args)...);
		}
		++ArrayNum;
		return Index;
	}

	template <typename... ArgsType>
	ElementType& Emplace_GetRef(ArgsType&&... Args)
	{
		// Data must be read after Emplace, which may move the elements to a new block.
		const int32 Index = Emplace(Forward<ArgsType>(Args)...);
		return Data[Index];
	}

	ElementType& Add_GetRef(const ElementType& Item)
	{
		const int32 Index = Emplace(Item);
		return Data[Index];
	}

	template <typename... ArgsType>
	void EmplaceAt(int32 Index, ArgsType&&... Args)
	{
		ElementType Temp(Forward<ArgsType>(Args)...);
		InsertUninitialized(Index, 1);
		new (Data + Index) ElementType(MoveTemp(Temp));
	}

	/** Adds Item unless an equal element is present; returns the index of the element either way. */
	int32 AddUnique(const ElementType& Item)
	{
		const int32 Existing = Find(Item);
		return Existing != INDEX_NONE ? Existing : Add(Item);
	}

	void Push(const ElementType& Item) { Add(Item); }
	void Push(ElementType&& Item) { Add(MoveTemp(Item)); }

	/** Removes and returns the last element; the array must not be empty. */
	ElementType Pop(bool bAllowShrinking = true)
	{
		RangeCheck(0);
		ElementType Result(MoveTemp(Data[ArrayNum - 1]));
		RemoveAt(ArrayNum - 1, 1, bAllowShrinking);
		return Result;
	}

	/** Adds Count value-initialised elements (zero for arithmetic types); returns the first new index. */
	int32 AddDefaulted(int32 Count = 1)
	{
		const int32 Index = AddUninitialized(Count);
		for (int32 I = Index; I < Index + Count; ++I)
		{
			new (Data + I) ElementType();
		}
		return Index;
	}

	ElementType& AddDefaulted_GetRef()
	{
		const int32 Index = AddDefaulted(1);
		return Data[Index];
	}

	/** Adds Count elements whose bytes are all zero; returns the first new index. */
	int32 AddZeroed(int32 Count = 1)
	{
		const int32 Index = AddUninitialized(Count);
		if (Count > 0)
		{
			std::memset(static_cast<void*>(Data + Index), 0, SIZE_T(Count) * sizeof(ElementType));
		}
		return Index;
	}

	/**
	 * Grows the array by Count elements without constructing them; the caller must construct or
	 * overwrite them before use (meant for arithmetic payloads such as bytes).
	 */
	int32 AddUninitialized(int32 Count = 1)
	{
		check(Count >= 0);
		const int32 Index = ArrayNum;
		if (ArrayNum + Count > ArrayMax)
		{
			ResizeTo(CalculateSlackGrow(ArrayNum + Count));
		}
		ArrayNum += Count;
		return Index;
	}

	/** Inserts a copy of Item before Index (0 <= Index <= Num()); returns Index. */
	int32 Insert(const ElementType& Item, int32 Index)
	{
		ElementType Temp(Item);
		InsertUninitialized(Index, 1);
		new (Data + Index) ElementType(MoveTemp(Temp));
		return Index;
	}
	int32 Insert(ElementType&& Item, int32 Index)
	{
		ElementType Temp(MoveTemp(Item));
		InsertUninitialized(Index, 1);
		new (Data + Index) ElementType(MoveTemp(Temp));
		return Index;
	}
	int32 Insert(const TArray& Items, int32 Index)
	{
		TArray Temp(Items);
		InsertUninitialized(Index, Temp.ArrayNum);
		for (int32 I = 0; I < Temp.ArrayNum; ++I)
		{
			new (Data + Index + I) ElementType(MoveTemp(Temp.Data[I]));
		}
		return Index;
	}

	void InsertUninitialized(int32 Index, int32 Count = 1)
	{
		check(Index >= 0 && Index <= ArrayNum && Count >= 0);
		if (ArrayNum + Count > ArrayMax)
		{
			ResizeTo(CalculateSlackGrow(ArrayNum + Count));
		}
		// Shift the tail up by Count, constructing into raw memory from the back.
		for (int32 I = ArrayNum - 1; I >= Index; --I)
		{
			new (Data + I + Count) ElementType(MoveTemp(Data[I]));
			Data[I].~ElementType();
		}
		ArrayNum += Count;
	}

	void InsertZeroed(int32 Index, int32 Count = 1)
	{
		InsertUninitialized(Index, Count);
		if (Count > 0)
		{
			std::memset(static_cast<void*>(Data + Index), 0, SIZE_T(Count) * sizeof(ElementType));
		}
	}

	void InsertDefaulted(int32 Index, int32 Count = 1)
	{
		InsertUninitialized(Index, Count);
		for (int32 I = Index; I < Index + Count; ++I)
		{
			new (Data + I) ElementType();
		}
	}

	void Append(const TArray& Source)
	{
		if (&Source == this)
		{
			TArray Copy(Source);
			Append(Copy.Data, Copy.ArrayNum);
			return;
		}
		Append(Source.Data, Source.ArrayNum);
	}

	void Append(TArray&& Source)
	{
		Reserve(ArrayNum + Source.ArrayNum);
		for (int32 I = 0; I < Source.ArrayNum; ++I)
		{
			new (Data + ArrayNum + I) ElementType(MoveTemp(Source.Data[I]));
		}
		ArrayNum += Source.ArrayNum;
		Source.Empty();
	}

	void Append(const ElementType* Ptr, int32 Count)
	{
		check(Count >= 0 && (Ptr != nullptr || Count == 0));
		if (Count == 0)
		{
			return;
		}
		if (Ptr >= Data && Ptr < Data + ArrayMax)
		{
			TArray Copy(Ptr, Count);
			Append(MoveTemp(Copy));
			return;
		}
		Reserve(ArrayNum + Count);
		for (int32 I = 0; I < Count; ++I)
		{
			new (Data + ArrayNum + I) ElementType(Ptr[I]);
		}
		ArrayNum += Count;
	}

	void Append(std::initializer_list<ElementType> InitList) { Append(InitList.begin(), int32(InitList.size())); }

	TArray& operator+=(const TArray& Other)
	{
		Append(Other);
		return *this;
	}

	// Removing

	/** Removes Count elements starting at Index, keeping the order of the rest. */
	void RemoveAt(int32 Index, int32 Count = 1, bool bAllowShrinking = true)
	{
		check(Count >= 0 && Index >= 0 && Index + Count <= ArrayNum);
		if (Count == 0)
		{
			return;
		}
		for (int32 I = Index; I + Count < ArrayNum; ++I)
		{
			Data[I] = MoveTemp(Data[I + Count]);
		}
		DestructItems(ArrayNum - Count, Count);
		ArrayNum -= Count;
		if (bAllowShrinking)
		{
			ShrinkIfWasteful();
		}
	}

	/** Removes Count elements at Index by moving the last elements into the gap (order not kept). */
	void RemoveAtSwap(int32 Index, int32 Count = 1, bool bAllowShrinking = true)
	{
		check(Count >= 0 && Index >= 0 && Index + Count <= ArrayNum);
		// The last elements fill the hole in their own order.
		const int32 NumAfterHole = ArrayNum - Index - Count;
		const int32 NumToMove = NumAfterHole < Count ? NumAfterHole : Count;
		for (int32 I = 0; I < NumToMove; ++I)
		{
			Data[Index + I] = MoveTemp(Data[ArrayNum - NumToMove + I]);
		}
		DestructItems(ArrayNum - Count, Count);
		ArrayNum -= Count;
		if (bAllowShrinking)
		{
			ShrinkIfWasteful();
		}
	}

	/** Removes every element equal to Item; returns how many were removed. */
	int32 Remove(const ElementType& Item)
	{
		const ElementType Copy(Item); // Item may live in this array
		return RemoveAll([&Copy](const ElementType& Element) { return Element == Copy; });
	}

	/** Removes the first element equal to Item; returns 1 if one was removed, else 0. */
	int32 RemoveSingle(const ElementType& Item)
	{
		const int32 Index = Find(Item);
		if (Index == INDEX_NONE)
		{
			return 0;
		}
		RemoveAt(Index);
		return 1;
	}

	int32 RemoveSwap(const ElementType& Item)
	{
		const ElementType Copy(Item);
		int32 Removed = 0;
		for (int32 Index = 0; Index < ArrayNum;)
		{
			if (Data[Index] == Copy)
			{
				RemoveAtSwap(Index, 1, false);
				++Removed;
			}
			else
			{
				++Index;
			}
		}
		return Removed;
	}

	/** Removes every element for which Predicate is true, keeping order; returns the count removed. */
	template <typename PredicateType>
	int32 RemoveAll(const PredicateType& Predicate)
	{
		int32 WriteIndex = 0;
		for (int32 ReadIndex = 0; ReadIndex < ArrayNum; ++ReadIndex)
		{
			if (!Predicate(Data[ReadIndex]))
			{
				if (WriteIndex != ReadIndex)
				{
					Data[WriteIndex] = MoveTemp(Data[ReadIndex]);
				}
				++WriteIndex;
			}
		}
		const int32 Removed = ArrayNum - WriteIndex;
		DestructItems(WriteIndex, Removed);
		ArrayNum = WriteIndex;
		return Removed;
	}

	/** Destroys every element and keeps capacity for Slack elements (freeing the block when 0). */
	void Empty(int32 Slack = 0)
	{
		DestructItems(0, ArrayNum);
		ArrayNum = 0;
		if (ArrayMax != Slack)
		{
			ResizeTo(Slack);
		}
	}

	/** Destroys every element, keeping the block if it holds at least NewSize elements. */
	void Reset(int32 NewSize = 0)
	{
		if (NewSize <= ArrayMax)
		{
			DestructItems(0, ArrayNum);
			ArrayNum = 0;
		}
		else
		{
			Empty(NewSize);
		}
	}

	void Reserve(int32 Number)
	{
		check(Number >= 0);
		if (Number > ArrayMax)
		{
			ResizeTo(Number);
		}
	}

	void Shrink()
	{
		if (ArrayMax != ArrayNum)
		{
			ResizeTo(ArrayNum);
		}
	}

	/** Resizes to NewNum elements, value-initialising new ones and destroying surplus ones. */
	void SetNum(int32 NewNum, bool bAllowShrinking = true)
	{
		check(NewNum >= 0);
		if (NewNum > ArrayNum)
		{
			AddDefaulted(NewNum - ArrayNum);
		}
		else if (NewNum < ArrayNum)
		{
			RemoveAt(NewNum, ArrayNum - NewNum, bAllowShrinking);
		}
	}

	void SetNumZeroed(int32 NewNum, bool bAllowShrinking = true)
	{
		check(NewNum >= 0);
		if (NewNum > ArrayNum)
		{
			AddZeroed(NewNum - ArrayNum);
		}
		else if (NewNum < ArrayNum)
		{
			RemoveAt(NewNum, ArrayNum - NewNum, bAllowShrinking);
		}
	}

	void SetNumUninitialized(int32 NewNum, bool bAllowShrinking = true)
	{
		check(NewNum >= 0);
		if (NewNum > ArrayNum)
		{
			AddUninitialized(NewNum - ArrayNum);
		}
		else if (NewNum < ArrayNum)
		{
			RemoveAt(NewNum, ArrayNum - NewNum, bAllowShrinking);
		}
	}

	/** Replaces the contents with Number copies of Element. */
	void Init(const ElementType& Element, int32 Number)
	{
		const ElementType Copy(Element);
		Empty(Number);
		for (int32 I = 0; I < Number; ++I)
		{
			new (Data + I) ElementType(Copy);
		}
		ArrayNum = Number;
	}

	void Swap(int32 A, int32 B)
	{
		RangeCheck(A);
		RangeCheck(B);
		if (A != B)
		{
			::Swap(Data[A], Data[B]);
		}
	}

	// Searching

	int32 Find(const ElementType& Item) const
	{
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			if (Data[Index] == Item)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	bool Find(const ElementType& Item, int32& OutIndex) const
	{
		OutIndex = Find(Item);
		return OutIndex != INDEX_NONE;
	}

	int32 FindLast(const ElementType& Item) const
	{
		for (int32 Index = ArrayNum - 1; Index >= 0; --Index)
		{
			if (Data[Index] == Item)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	template <typename KeyType>
	int32 IndexOfByKey(const KeyType& Key) const
	{
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			if (Data[Index] == Key)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	template <typename PredicateType>
	int32 IndexOfByPredicate(PredicateType Pred) const
	{
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			if (Pred(Data[Index]))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	template <typename KeyType>
	ElementType* FindByKey(const KeyType& Key)
	{
		const int32 Index = IndexOfByKey(Key);
		return Index == INDEX_NONE ? nullptr : Data + Index;
	}
	template <typename KeyType>
	const ElementType* FindByKey(const KeyType& Key) const
	{
		const int32 Index = IndexOfByKey(Key);
		return Index == INDEX_NONE ? nullptr : Data + Index;
	}

	/** First element for which Pred is true, or nullptr. */
	template <typename PredicateType>
	ElementType* FindByPredicate(PredicateType Pred)
	{
		const int32 Index = IndexOfByPredicate(Pred);
		return Index == INDEX_NONE ? nullptr : Data + Index;
	}
	template <typename PredicateType>
	const ElementType* FindByPredicate(PredicateType Pred) const
	{
		const int32 Index = IndexOfByPredicate(Pred);
		return Index == INDEX_NONE ? nullptr : Data + Index;
	}

	template <typename PredicateType>
	TArray FilterByPredicate(PredicateType Pred) const
	{
		TArray Result;
		for (const ElementType& Element : *this)
		{
			if (Pred(Element))
			{
				Result.Add(Element);
			}
		}
		return Result;
	}

	template <typename KeyType>
	bool Contains(const KeyType& Item) const
	{
		return IndexOfByKey(Item) != INDEX_NONE;
	}

	template <typename PredicateType>
	bool ContainsByPredicate(PredicateType Pred) const
	{
		return IndexOfByPredicate(Pred) != INDEX_NONE;
	}

	// Ordering

	/** Sorts with operator<; arrays of pointers are sorted by the pointed-to values, as the engine does. */
	void Sort()
	{
		std::sort(begin(), end(), [](const ElementType& A, const ElementType& B) { return Deref(A) < Deref(B); });
	}

	template <typename PredicateType>
	void Sort(const PredicateType& Predicate)
	{
		std::sort(begin(), end(),
			[&Predicate](const ElementType& A, const ElementType& B) { return Predicate(Deref(A), Deref(B)); });
	}

	void StableSort()
	{
		std::stable_sort(
			begin(), end(), [](const ElementType& A, const ElementType& B) { return Deref(A) < Deref(B); });
	}

	template <typename PredicateType>
	void StableSort(const PredicateType& Predicate)
	{
		std::stable_sort(begin(), end(),
			[&Predicate](const ElementType& A, const ElementType& B) { return Predicate(Deref(A), Deref(B)); });
	}

	// Comparison

	bool operator==(const TArray& Other) const
	{
		if (ArrayNum != Other.ArrayNum)
		{
			return false;
		}
		for (int32 Index = 0; Index < ArrayNum; ++Index)
		{
			if (!(Data[Index] == Other.Data[Index]))
			{
				return false;
			}
		}
		return true;
	}
	bool operator!=(const TArray& Other) const { return !(*this == Other); }

	// Iteration (range-for); the array must not change size while iterating.

	FORCEINLINE ElementType* begin() { return Data; }
	FORCEINLINE const ElementType* begin() const { return Data; }
	FORCEINLINE ElementType* end() { return Data + ArrayNum; }
	FORCEINLINE const ElementType* end() const { return Data + ArrayNum; }

	/** Engine-style iterator with an index, used as `for (auto It = A.CreateIterator(); It; ++It)`. */
	template <typename ArrayType, typename RefType>
	class TIndexedIterator
	{
	public:
		explicit TIndexedIterator(ArrayType& InArray, int32 StartIndex = 0)
			: Array(InArray)
			, Index(StartIndex)
		{
		}
		TIndexedIterator& operator++()
		{
			++Index;
			return *this;
		}
		TIndexedIterator& operator--()
		{
			--Index;
			return *this;
		}
		RefType operator*() const { return Array[Index]; }
		auto* operator->() const { return &Array[Index]; }
		explicit operator bool() const { return Array.IsValidIndex(Index); }
		int32 GetIndex() const { return Index; }
		void Reset() { Index = 0; }
		/** Removes the current element; the next ++ moves on to the element that followed it. */
		void RemoveCurrent()
		{
			Array.RemoveAt(Index);
			--Index;
		}

	private:
		ArrayType& Array;
		int32 Index;
	};
	using TIterator = TIndexedIterator<TArray, ElementType&>;
	using TConstIterator = TIndexedIterator<const TArray, const ElementType&>;

	TIterator CreateIterator() { return TIterator(*this); }
	TConstIterator CreateConstIterator() const { return TConstIterator(*this); }

private:
	ElementType* Data = nullptr;
	int32 ArrayNum = 0;
	int32 ArrayMax = 0;

	template <typename U>
	static const U& Deref(const U& Value)
	{
		return Value;
	}
	template <typename U>
	static const U& Deref(U* const& Value)
	{
		return *Value;
	}

	FORCEINLINE void RangeCheck(int32 Index) const { check(Index >= 0 && Index < ArrayNum); }

	static ElementType* Allocate(int32 Count)
	{
		if (Count <= 0)
		{
			return nullptr;
		}
		return static_cast<ElementType*>(
			::operator new(SIZE_T(Count) * sizeof(ElementType), std::align_val_t(alignof(ElementType))));
	}

	static void Free(ElementType* Block)
	{
		if (Block)
		{
			::operator delete(static_cast<void*>(Block), std::align_val_t(alignof(ElementType)));
		}
	}

	void DestructItems(int32 Index, int32 Count)
	{
		if (!std::is_trivially_destructible<ElementType>::value)
		{
			for (int32 I = Index; I < Index + Count; ++I)
			{
				Data[I].~ElementType();
			}
		}
	}

	/** Moves the live elements into NewData, destroys them here and frees the old block. */
	void RelocateTo(ElementType* NewData)
	{
		if (std::is_trivially_copyable<ElementType>::value)
		{
			if (ArrayNum > 0 && NewData != nullptr)
			{
				std::memcpy(static_cast<void*>(NewData), static_cast<const void*>(Data),
					SIZE_T(ArrayNum) * sizeof(ElementType));
			}
		}
		else
		{
			for (int32 I = 0; I < ArrayNum; ++I)
			{
				new (NewData + I) ElementType(MoveTemp(Data[I]));
				Data[I].~ElementType();
			}
		}
		Free(Data);
		Data = NewData;
	}

	void ResizeTo(int32 NewMax)
	{
		check(NewMax >= ArrayNum);
		ElementType* NewData = Allocate(NewMax);
		RelocateTo(NewData);
		ArrayMax = NewMax;
	}

	int32 CalculateSlackGrow(int32 NumElements) const
	{
		// Small arrays jump straight to a few elements; larger ones grow by about 3/8 so that
		// repeated Add stays amortised constant time.
		if (ArrayMax == 0 && NumElements <= 4)
		{
			return 4;
		}
		const int64 Grown = int64(NumElements) + 3 * int64(NumElements) / 8 + 16;
		check(Grown <= 0x7fffffff);
		return int32(Grown);
	}

	void ShrinkIfWasteful()
	{
		// Give memory back only when a large share of the block is unused, like the engine's
		// default shrink policy, so that add/remove cycles do not reallocate every time.
		const int32 Slack = ArrayMax - ArrayNum;
		if ((3 * ArrayNum < 2 * ArrayMax || Slack * int32(sizeof(ElementType)) >= 16384) && Slack > 64)
		{
			ResizeTo(ArrayNum);
		}
		else if (ArrayNum == 0 && ArrayMax > 0 && Slack > 64)
		{
			ResizeTo(0);
		}
	}

	void SwapWith(TArray& Other)
	{
		::Swap(Data, Other.Data);
		::Swap(ArrayNum, Other.ArrayNum);
		::Swap(ArrayMax, Other.ArrayMax);
	}
};

template <typename T>
inline uint32 GetTypeHash(const TArray<T>& Array)
{
	uint32 Hash = 0;
	for (const T& Element : Array)
	{
		Hash = HashCombine(Hash, GetTypeHash(Element));
	}
	return Hash;
}

template <typename T>
struct TIsTArray
{
	static constexpr bool Value = false;
};
template <typename T>
struct TIsTArray<TArray<T>>
{
	static constexpr bool Value = true;
};
