// A keyed curve of bone rotations, sampled by halving search and spherical interpolation.
#pragma once

#include "CoreMinimal.h"
#include "ZnQuatCurve.generated.h"

//~ One key: a rotation at a time in seconds.
USTRUCT(BlueprintType)
struct ZNUTILSTOOLS_API FZnQuatCurveKey
{
	GENERATED_BODY()

	FZnQuatCurveKey()
		: Time(0.0f)
		, Value(FQuat::Identity)
	{
	}

	FZnQuatCurveKey(float InTime, const FQuat& InValue)
		: Time(InTime)
		, Value(InValue)
	{
	}

	FZnQuatCurveKey(const FZnQuatCurveKey& Other) = default;
	FZnQuatCurveKey& operator=(const FZnQuatCurveKey& Other) = default;
	virtual ~FZnQuatCurveKey() {}

	// Seconds.
	float Time;
	FQuat Value;
};

//~ Rotation keys in rising time order. The curve does not enforce the order: the code that fills
//~ it does (see UpdateOrAddKey for the one case where the curve itself breaks it). Owns its keys by
//~ value; copies are deep. Not thread-safe for writes; concurrent Evaluate calls are fine.
USTRUCT(BlueprintType)
struct ZNUTILSTOOLS_API FZnQuatCurve
{
	GENERATED_BODY()

	FZnQuatCurve() {}
	FZnQuatCurve(const FZnQuatCurve& Other) = default;
	FZnQuatCurve(FZnQuatCurve&& Other) = default;
	FZnQuatCurve& operator=(const FZnQuatCurve& Other) = default;
	FZnQuatCurve& operator=(FZnQuatCurve&& Other) = default;
	virtual ~FZnQuatCurve() {}

	// Replaces the value of a key whose time is within KeyTimeTolerance of InTime (keeping that
	// key's time), or adds a key. A time before the first or after the last key is prepended or
	// appended; a time strictly between two keys is inserted one place too early, in front of the
	// earlier neighbour (existing data depends on this order, so it is kept). Feeding keys in
	// rising time order therefore only ever appends or replaces. Linear in the key count.
	void UpdateOrAddKey(float InTime, const FQuat& InValue, float KeyTimeTolerance);

	// The rotation at InTime. No keys: identity. One key: that key's value within
	// SingleKeyTolerance of its time, identity otherwise. Before the first or after the last key
	// the first key's value is held (not the last one's). Between keys: normalised spherical
	// interpolation along the shorter arc. Logarithmic in the key count; allocates nothing.
	FQuat Evaluate(float InTime, float SingleKeyTolerance) const;

	// The halving search over Keys[Lo..Hi] used by Evaluate (Lo < Hi, InTime within their times).
	// The tolerance decides when InTime counts as exactly on Keys[Lo] or Keys[Hi]; deeper levels
	// of the search always use 0.0001 s whatever was passed here. An empty range (Lo == Hi)
	// returns Keys[Lo].Value whatever the time; a range not inside Keys (Lo < 0, Hi >= Keys.Num()
	// or Hi < Lo) returns the identity rotation.
	static FQuat halfSearch(float InTime, const TArray<FZnQuatCurveKey>& Keys, int32 Lo, int32 Hi, float Tolerance);

	TArray<FZnQuatCurveKey> Keys;
};
