// TPair: the key/value record that TMap stores and hands out while iterating.
#pragma once

#include "CoreTypes.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

template <typename KeyType, typename ValueType>
struct TPair
{
	KeyType Key;
	ValueType Value;

	TPair() = default;
	template <typename KeyArg, typename ValueArg>
	TPair(KeyArg&& InKey, ValueArg&& InValue)
		: Key(Forward<KeyArg>(InKey))
		, Value(Forward<ValueArg>(InValue))
	{
	}

	bool operator==(const TPair& Other) const { return Key == Other.Key && Value == Other.Value; }
	bool operator!=(const TPair& Other) const { return !(*this == Other); }
};

template <typename KeyType, typename ValueType>
FORCEINLINE uint32 GetTypeHash(const TPair<KeyType, ValueType>& Pair)
{
	return HashCombine(GetTypeHash(Pair.Key), GetTypeHash(Pair.Value));
}

template <typename KeyType, typename ValueType>
FORCEINLINE TPair<typename std::decay<KeyType>::type, typename std::decay<ValueType>::type> MakeTuple(
	KeyType&& Key, ValueType&& Value)
{
	return {Forward<KeyType>(Key), Forward<ValueType>(Value)};
}
