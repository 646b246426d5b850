// Small utility templates the engine offers next to its containers.
#pragma once

#include "CoreTypes.h"

#include <type_traits>
#include <utility>

template <typename T>
FORCEINLINE typename std::remove_reference<T>::type&& MoveTemp(T&& Obj)
{
	return static_cast<typename std::remove_reference<T>::type&&>(Obj);
}

template <typename T>
FORCEINLINE T CopyTemp(const T& Val)
{
	return Val;
}

template <typename T>
FORCEINLINE T&& Forward(typename std::remove_reference<T>::type& Obj)
{
	return static_cast<T&&>(Obj);
}

template <typename T>
FORCEINLINE T&& Forward(typename std::remove_reference<T>::type&& Obj)
{
	return static_cast<T&&>(Obj);
}

template <typename T>
FORCEINLINE void Swap(T& A, T& B)
{
	T Temp = MoveTemp(A);
	A = MoveTemp(B);
	B = MoveTemp(Temp);
}

template <typename T, SIZE_T N>
constexpr SIZE_T UE_ARRAY_COUNT_Helper(const T (&)[N])
{
	return N;
}
#define UE_ARRAY_COUNT(Array) (::UE_ARRAY_COUNT_Helper(Array))
#define ARRAY_COUNT(Array) UE_ARRAY_COUNT(Array)

/** Base class for types that must not be copied. */
class FNoncopyable
{
protected:
	FNoncopyable() = default;
	~FNoncopyable() = default;

private:
	FNoncopyable(const FNoncopyable&) = delete;
	FNoncopyable& operator=(const FNoncopyable&) = delete;
};

/** Sets a variable for the lifetime of a scope and restores the old value when it ends. */
template <typename RefType, typename AssignedType = RefType>
class TGuardValue : private FNoncopyable
{
public:
	TGuardValue(RefType& ReferenceValue, const AssignedType& NewValue)
		: RefValue(ReferenceValue)
		, OldValue(ReferenceValue)
	{
		RefValue = NewValue;
	}
	~TGuardValue() { RefValue = OldValue; }

private:
	RefType& RefValue;
	AssignedType OldValue;
};
