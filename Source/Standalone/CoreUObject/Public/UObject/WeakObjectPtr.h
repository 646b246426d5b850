// FWeakObjectPtr: refers to an object without keeping it alive. It becomes stale (Get() returns
// null) when the object is collected, even if a new object later takes the same index.
#pragma once

#include "CoreMinimal.h"

class UObject;

struct COREUOBJECT_API FWeakObjectPtr
{
	FWeakObjectPtr() = default;
	FWeakObjectPtr(const UObject* Object) { operator=(Object); }
	FWeakObjectPtr& operator=(const UObject* Object);

	/** The object, or null when it was never set or has been collected. */
	UObject* Get() const;
	bool IsValid() const { return Get() != nullptr; }
	/** True when it was set to an object that no longer exists. */
	bool IsStale() const { return ObjectIndex >= 0 && Get() == nullptr; }
	bool IsExplicitlyNull() const { return ObjectIndex < 0; }
	void Reset()
	{
		ObjectIndex = -1;
		ObjectSerialNumber = 0;
	}
	bool operator==(const FWeakObjectPtr& Other) const
	{
		return ObjectIndex == Other.ObjectIndex && ObjectSerialNumber == Other.ObjectSerialNumber;
	}
	bool operator!=(const FWeakObjectPtr& Other) const { return !(*this == Other); }

private:
	int32 ObjectIndex = -1;
	int32 ObjectSerialNumber = 0;
};
