// TMap: a hash map from unique keys to values, hashed with GetTypeHash(Key) and compared with
// Key == Key, so FString keys ignore ASCII case exactly as in the engine.
//
// Iteration visits pairs in insertion order. The engine's map reuses the slots of removed pairs
// for later additions; this one closes the gap instead, so after a Remove the order is still the
// order of insertion (callers must not rely on either). Pointers returned by Find/FindOrAdd/Add
// stay valid only until the next addition or removal.
#pragma once

#include "Containers/Array.h"
#include "CoreTypes.h"
#include "Templates/Tuple.h"
#include "Templates/TypeHash.h"

template <typename InKeyType, typename InValueType>
class TMap
{
public:
	using KeyType = InKeyType;
	using ValueType = InValueType;
	using ElementType = TPair<KeyType, ValueType>;

	TMap() = default;
	TMap(std::initializer_list<ElementType> InitList)
	{
		for (const ElementType& Pair : InitList)
		{
			Add(Pair.Key, Pair.Value);
		}
	}

	FORCEINLINE int32 Num() const { return Pairs.Num(); }
	FORCEINLINE bool IsEmpty() const { return Pairs.Num() == 0; }

	/** Sets the value for Key, replacing the value of an existing equal key (whose stored key is kept). */
	ValueType& Add(const KeyType& InKey, const ValueType& InValue) { return Emplace(InKey, InValue); }
	ValueType& Add(const KeyType& InKey, ValueType&& InValue) { return Emplace(InKey, MoveTemp(InValue)); }
	ValueType& Add(KeyType&& InKey, const ValueType& InValue) { return Emplace(MoveTemp(InKey), InValue); }
	ValueType& Add(KeyType&& InKey, ValueType&& InValue) { return Emplace(MoveTemp(InKey), MoveTemp(InValue)); }
	/** Sets a default-constructed value for Key. */
	ValueType& Add(const KeyType& InKey) { return Emplace(InKey, ValueType()); }
	ValueType& Add(const ElementType& Pair) { return Emplace(Pair.Key, Pair.Value); }

	template <typename KeyArg, typename ValueArg>
	ValueType& Emplace(KeyArg&& InKey, ValueArg&& InValue)
	{
		KeyType Key(Forward<KeyArg>(InKey));
		const uint32 Hash = GetTypeHash(Key);
		const int32 Existing = FindIndex(Key, Hash);
		if (Existing != INDEX_NONE)
		{
			Pairs[Existing].Value = ValueType(Forward<ValueArg>(InValue));
			return Pairs[Existing].Value;
		}
		return AddNew(MoveTemp(Key), ValueType(Forward<ValueArg>(InValue)), Hash);
	}

	template <typename KeyArg>
	ValueType& Emplace(KeyArg&& InKey)
	{
		return Emplace(Forward<KeyArg>(InKey), ValueType());
	}

	/** The value for Key, or nullptr. */
	ValueType* Find(const KeyType& Key)
	{
		const int32 Index = FindIndex(Key, GetTypeHash(Key));
		return Index == INDEX_NONE ? nullptr : &Pairs[Index].Value;
	}
	const ValueType* Find(const KeyType& Key) const
	{
		const int32 Index = FindIndex(Key, GetTypeHash(Key));
		return Index == INDEX_NONE ? nullptr : &Pairs[Index].Value;
	}

	/** A copy of the value for Key, or a default-constructed value. */
	ValueType FindRef(const KeyType& Key) const
	{
		const ValueType* Value = Find(Key);
		return Value ? *Value : ValueType();
	}

	/** The value for Key; adds a default-constructed one first if Key is missing. */
	ValueType& FindOrAdd(const KeyType& Key)
	{
		const uint32 Hash = GetTypeHash(Key);
		const int32 Index = FindIndex(Key, Hash);
		return Index != INDEX_NONE ? Pairs[Index].Value : AddNew(KeyType(Key), ValueType(), Hash);
	}
	ValueType& FindOrAdd(const KeyType& Key, const ValueType& Value)
	{
		const uint32 Hash = GetTypeHash(Key);
		const int32 Index = FindIndex(Key, Hash);
		return Index != INDEX_NONE ? Pairs[Index].Value : AddNew(KeyType(Key), ValueType(Value), Hash);
	}

	/** The value for Key, which must be present (a missing key stops the program through check()). */
	ValueType& FindChecked(const KeyType& Key)
	{
		ValueType* Value = Find(Key);
		check(Value != nullptr);
		return *Value;
	}
	const ValueType& FindChecked(const KeyType& Key) const
	{
		const ValueType* Value = Find(Key);
		check(Value != nullptr);
		return *Value;
	}

	/** Same as FindChecked, as in the engine: the key must be present. */
	ValueType& operator[](const KeyType& Key) { return FindChecked(Key); }
	const ValueType& operator[](const KeyType& Key) const { return FindChecked(Key); }

	/** The key of the first pair whose value equals Value, or nullptr (a linear search). */
	const KeyType* FindKey(const ValueType& Value) const
	{
		for (const ElementType& Pair : Pairs)
		{
			if (Pair.Value == Value)
			{
				return &Pair.Key;
			}
		}
		return nullptr;
	}

	bool Contains(const KeyType& Key) const { return FindIndex(Key, GetTypeHash(Key)) != INDEX_NONE; }

	/** Removes the pair for Key; returns the number of pairs removed (0 or 1). */
	int32 Remove(const KeyType& Key)
	{
		const int32 Index = FindIndex(Key, GetTypeHash(Key));
		if (Index == INDEX_NONE)
		{
			return 0;
		}
		RemoveIndex(Index);
		return 1;
	}

	bool RemoveAndCopyValue(const KeyType& Key, ValueType& OutRemovedValue)
	{
		const int32 Index = FindIndex(Key, GetTypeHash(Key));
		if (Index == INDEX_NONE)
		{
			return false;
		}
		OutRemovedValue = MoveTemp(Pairs[Index].Value);
		RemoveIndex(Index);
		return true;
	}

	ValueType FindAndRemoveChecked(const KeyType& Key)
	{
		const int32 Index = FindIndex(Key, GetTypeHash(Key));
		check(Index != INDEX_NONE);
		ValueType Result = MoveTemp(Pairs[Index].Value);
		RemoveIndex(Index);
		return Result;
	}

	void Empty(int32 ExpectedNumElements = 0)
	{
		Pairs.Empty(ExpectedNumElements);
		NextInBucket.Empty(ExpectedNumElements);
		Buckets.Empty();
	}

	void Reset()
	{
		Pairs.Reset();
		NextInBucket.Reset();
		for (int32& Head : Buckets)
		{
			Head = INDEX_NONE;
		}
	}

	void Reserve(int32 Number)
	{
		Pairs.Reserve(Number);
		NextInBucket.Reserve(Number);
	}

	void Append(const TMap& Other)
	{
		for (const ElementType& Pair : Other.Pairs)
		{
			Add(Pair.Key, Pair.Value);
		}
	}

	/** Replaces OutArray with the keys in iteration order; returns their count. */
	int32 GenerateKeyArray(TArray<KeyType>& OutArray) const
	{
		OutArray.Reset(Pairs.Num());
		for (const ElementType& Pair : Pairs)
		{
			OutArray.Add(Pair.Key);
		}
		return OutArray.Num();
	}

	int32 GetKeys(TArray<KeyType>& OutKeys) const { return GenerateKeyArray(OutKeys); }

	/** Replaces OutArray with the values in iteration order; returns their count. */
	int32 GenerateValueArray(TArray<ValueType>& OutArray) const
	{
		OutArray.Reset(Pairs.Num());
		for (const ElementType& Pair : Pairs)
		{
			OutArray.Add(Pair.Value);
		}
		return OutArray.Num();
	}

	template <typename PredicateType>
	void KeySort(const PredicateType& Predicate)
	{
		Pairs.StableSort([&Predicate](const ElementType& A, const ElementType& B) { return Predicate(A.Key, B.Key); });
		Rehash(Buckets.Num());
	}

	template <typename PredicateType>
	void ValueSort(const PredicateType& Predicate)
	{
		Pairs.StableSort(
			[&Predicate](const ElementType& A, const ElementType& B) { return Predicate(A.Value, B.Value); });
		Rehash(Buckets.Num());
	}

	bool OrderIndependentCompareEqual(const TMap& Other) const
	{
		if (Num() != Other.Num())
		{
			return false;
		}
		for (const ElementType& Pair : Pairs)
		{
			const ValueType* OtherValue = Other.Find(Pair.Key);
			if (!OtherValue || !(*OtherValue == Pair.Value))
			{
				return false;
			}
		}
		return true;
	}

	// Range-for yields ElementType& with .Key and .Value; the map must not change while iterating.
	FORCEINLINE ElementType* begin() { return Pairs.begin(); }
	FORCEINLINE const ElementType* begin() const { return Pairs.begin(); }
	FORCEINLINE ElementType* end() { return Pairs.end(); }
	FORCEINLINE const ElementType* end() const { return Pairs.end(); }

	template <typename MapType, typename PairType>
	class TBaseIterator
	{
	public:
		explicit TBaseIterator(MapType& InMap)
			: Map(InMap)
		{
		}
		TBaseIterator& operator++()
		{
			++Index;
			return *this;
		}
		explicit operator bool() const { return Index >= 0 && Index < Map.Num(); }
		PairType& operator*() const { return Map.Pairs[Index]; }
		PairType* operator->() const { return &Map.Pairs[Index]; }
		auto& Key() const { return Map.Pairs[Index].Key; }
		auto& Value() const { return Map.Pairs[Index].Value; }
		/** Removes the current pair; the next ++ moves on to the pair that followed it. */
		void RemoveCurrent()
		{
			Map.RemoveIndex(Index);
			--Index;
		}

	private:
		MapType& Map;
		int32 Index = 0;
	};
	using TIterator = TBaseIterator<TMap, ElementType>;
	using TConstIterator = TBaseIterator<const TMap, const ElementType>;

	TIterator CreateIterator() { return TIterator(*this); }
	TConstIterator CreateConstIterator() const { return TConstIterator(*this); }

private:
	TArray<ElementType> Pairs;
	TArray<int32> NextInBucket; // per pair: the next pair index in the same bucket
	TArray<int32> Buckets; // per bucket: the first pair index, or INDEX_NONE

	int32 FindIndex(const KeyType& Key, uint32 Hash) const
	{
		if (Buckets.Num() == 0)
		{
			return INDEX_NONE;
		}
		for (int32 Index = Buckets[int32(Hash & uint32(Buckets.Num() - 1))]; Index != INDEX_NONE;
			 Index = NextInBucket[Index])
		{
			if (Pairs[Index].Key == Key)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	ValueType& AddNew(KeyType&& Key, ValueType&& Value, uint32 Hash)
	{
		const int32 Index = Pairs.Emplace(MoveTemp(Key), MoveTemp(Value));
		NextInBucket.Add(INDEX_NONE);
		if (Pairs.Num() > Buckets.Num())
		{
			Rehash(Buckets.Num() ? Buckets.Num() * 2 : 8);
		}
		else
		{
			const int32 Bucket = int32(Hash & uint32(Buckets.Num() - 1));
			NextInBucket[Index] = Buckets[Bucket];
			Buckets[Bucket] = Index;
		}
		return Pairs[Index].Value;
	}

	void RemoveIndex(int32 Index)
	{
		Pairs.RemoveAt(Index);
		NextInBucket.RemoveAt(Index);
		Rehash(Buckets.Num());
	}

	void Rehash(int32 NumBuckets)
	{
		if (NumBuckets == 0)
		{
			return;
		}
		Buckets.SetNumUninitialized(NumBuckets);
		for (int32& Head : Buckets)
		{
			Head = INDEX_NONE;
		}
		for (int32 Index = 0; Index < Pairs.Num(); ++Index)
		{
			const int32 Bucket = int32(GetTypeHash(Pairs[Index].Key) & uint32(NumBuckets - 1));
			NextInBucket[Index] = Buckets[Bucket];
			Buckets[Bucket] = Index;
		}
	}
};
