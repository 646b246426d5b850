// TStrongObjectPtr<T>: keeps an object alive through garbage collection for as long as the
// pointer exists, from code that is not itself a reflected object (tests, hosts, native classes).
#pragma once

#include "UObject/Object.h"

namespace ZnGC
{
/** Counted references from outside the object graph; CollectGarbage treats them as roots. */
COREUOBJECT_API void AddExternalReference(UObject* Object);
COREUOBJECT_API void RemoveExternalReference(UObject* Object);
} // namespace ZnGC

template <class T>
class TStrongObjectPtr
{
public:
	TStrongObjectPtr() = default;
	explicit TStrongObjectPtr(T* InObject) { Reset(InObject); }
	TStrongObjectPtr(const TStrongObjectPtr& Other) { Reset(Other.Object); }
	TStrongObjectPtr& operator=(const TStrongObjectPtr& Other)
	{
		Reset(Other.Object);
		return *this;
	}
	~TStrongObjectPtr() { Reset(); }

	T* Get() const { return Object; }
	T* operator->() const { return Object; }
	T& operator*() const { return *Object; }
	bool IsValid() const { return Object != nullptr; }
	explicit operator bool() const { return IsValid(); }

	void Reset(T* NewObject = nullptr)
	{
		if (NewObject)
		{
			ZnGC::AddExternalReference(NewObject);
		}
		if (Object)
		{
			ZnGC::RemoveExternalReference(Object);
		}
		Object = NewObject;
	}

private:
	T* Object = nullptr;
};
