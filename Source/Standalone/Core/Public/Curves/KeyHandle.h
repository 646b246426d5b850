// FKeyHandle: a stable identity for a curve key, unaffected by keys inserted before it.
#pragma once

#include "CoreTypes.h"
#include "Templates/TypeHash.h"

struct FKeyHandle
{
	/** A new handle, distinct from every other handle made in this process. */
	CORE_API FKeyHandle();

	static FKeyHandle Invalid() { return FKeyHandle(0u); }

	bool IsValid() const { return Index != 0; }
	bool operator==(const FKeyHandle& Other) const { return Index == Other.Index; }
	bool operator!=(const FKeyHandle& Other) const { return Index != Other.Index; }
	friend uint32 GetTypeHash(const FKeyHandle& Handle) { return GetTypeHash(Handle.Index); }

private:
	explicit FKeyHandle(uint32 SpecificIndex)
		: Index(SpecificIndex)
	{
	}
	uint32 Index;
};
