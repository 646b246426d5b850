// TWeakObjectPtr<T>: a typed weak reference (see FWeakObjectPtr).
#pragma once

#include "UObject/WeakObjectPtr.h"

template <class T>
class TWeakObjectPtr
{
public:
	TWeakObjectPtr() = default;
	TWeakObjectPtr(decltype(nullptr)) {}
	TWeakObjectPtr(const T* Object)
		: Weak(Object)
	{
	}
	TWeakObjectPtr& operator=(const T* Object)
	{
		Weak = Object;
		return *this;
	}
	T* Get() const { return static_cast<T*>(Weak.Get()); }
	T* operator->() const { return Get(); }
	T& operator*() const { return *Get(); }
	bool IsValid() const { return Weak.IsValid(); }
	bool IsStale() const { return Weak.IsStale(); }
	bool IsExplicitlyNull() const { return Weak.IsExplicitlyNull(); }
	explicit operator bool() const { return IsValid(); }
	void Reset() { Weak.Reset(); }
	bool operator==(const TWeakObjectPtr& Other) const { return Weak == Other.Weak; }
	bool operator!=(const TWeakObjectPtr& Other) const { return Weak != Other.Weak; }

private:
	FWeakObjectPtr Weak;
};
