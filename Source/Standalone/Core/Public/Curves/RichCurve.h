// FRichCurve: a float curve over time made of keys kept in rising time order.
//
// Evaluation between two keys follows the interpolation mode of the earlier key: linear (the
// mode every key gets from AddKey/UpdateOrAddKey), constant (holds the earlier value) or cubic
// (Bezier through the keys' stored leave/arrive tangents; this build does not compute automatic
// or weighted tangents). Before the first key the curve holds the first key's value and after
// the last key the last key's value; a curve without keys evaluates to its default value.
#pragma once

#include "Containers/Array.h"
#include "CoreTypes.h"
#include "Curves/KeyHandle.h"
#include "Math/UnrealMathUtility.h"

enum ERichCurveInterpMode : uint8
{
	RCIM_Linear,
	RCIM_Constant,
	RCIM_Cubic,
	RCIM_None
};

enum ERichCurveTangentMode : uint8
{
	RCTM_Auto,
	RCTM_User,
	RCTM_Break,
	RCTM_None
};

enum ERichCurveTangentWeightMode : uint8
{
	RCTWM_WeightedNone,
	RCTWM_WeightedArrive,
	RCTWM_WeightedLeave,
	RCTWM_WeightedBoth
};

enum ERichCurveExtrapolation : uint8
{
	RCCE_Cycle,
	RCCE_CycleWithOffset,
	RCCE_Oscillate,
	RCCE_Linear,
	RCCE_Constant,
	RCCE_None
};

/** One key: a value at a time (seconds, or whatever unit the curve's owner uses). */
struct FRichCurveKey
{
	ERichCurveInterpMode InterpMode = RCIM_Linear;
	ERichCurveTangentMode TangentMode = RCTM_Auto;
	ERichCurveTangentWeightMode TangentWeightMode = RCTWM_WeightedNone;
	float Time = 0.f;
	float Value = 0.f;
	float ArriveTangent = 0.f;
	float ArriveTangentWeight = 0.f;
	float LeaveTangent = 0.f;
	float LeaveTangentWeight = 0.f;

	FRichCurveKey() = default;
	FRichCurveKey(float InTime, float InValue)
		: Time(InTime)
		, Value(InValue)
	{
	}
	FRichCurveKey(
		float InTime, float InValue, float InArriveTangent, float InLeaveTangent, ERichCurveInterpMode InInterpMode)
		: InterpMode(InInterpMode)
		, Time(InTime)
		, Value(InValue)
		, ArriveTangent(InArriveTangent)
		, LeaveTangent(InLeaveTangent)
	{
	}

	bool operator==(const FRichCurveKey& Other) const
	{
		return Time == Other.Time && Value == Other.Value && InterpMode == Other.InterpMode &&
			TangentMode == Other.TangentMode && TangentWeightMode == Other.TangentWeightMode &&
			ArriveTangent == Other.ArriveTangent && LeaveTangent == Other.LeaveTangent &&
			ArriveTangentWeight == Other.ArriveTangentWeight && LeaveTangentWeight == Other.LeaveTangentWeight;
	}
	bool operator!=(const FRichCurveKey& Other) const { return !(*this == Other); }
};

/** Copyable value type; copies are deep and keep the key handles. Not thread-safe. */
class FRichCurve
{
public:
	FRichCurve() = default;
	virtual ~FRichCurve() = default;
	FRichCurve(const FRichCurve&) = default;
	FRichCurve& operator=(const FRichCurve&) = default;
	FRichCurve(FRichCurve&&) = default;
	FRichCurve& operator=(FRichCurve&&) = default;

	/** The keys in rising time order. Public as in the engine; edit through the methods to keep the order. */
	TArray<FRichCurveKey> Keys;
	/** Value of a curve without keys; MAX_flt means "not set", so Eval's InDefaultValue is used. */
	float DefaultValue = MAX_flt;
	/** Only RCCE_Linear changes evaluation outside the keys here; every other mode holds the end value. */
	ERichCurveExtrapolation PreInfinityExtrap = RCCE_Constant;
	ERichCurveExtrapolation PostInfinityExtrap = RCCE_Constant;

	int32 GetNumKeys() const { return Keys.Num(); }
	bool IsEmpty() const { return Keys.Num() == 0; }
	bool HasAnyData() const { return DefaultValue != MAX_flt || Keys.Num() > 0; }
	const TArray<FRichCurveKey>& GetConstRefOfKeys() const { return Keys; }
	TArray<FRichCurveKey> GetCopyOfKeys() const { return Keys; }
	/** Replaces every key; the keys are sorted by time (stable for equal times). */
	CORE_API void SetKeys(const TArray<FRichCurveKey>& InKeys);
	/** Removes every key (the default value and extrapolation stay). */
	CORE_API void Reset();

	/**
	 * Inserts a linear key before the first key that is not earlier; returns its handle. A NaN
	 * time adds nothing and returns an invalid handle.
	 */
	CORE_API FKeyHandle AddKey(
		float InTime, float InValue, const bool bUnwindRotation = false, FKeyHandle KeyHandle = FKeyHandle());
	/**
	 * If a key lies within KeyTimeTolerance of InTime (|KeyTime - InTime| <= tolerance), sets that
	 * key's value (its time is kept); otherwise adds a key in time order. With bUnwindRotation
	 * the value is treated as an angle in degrees and moved by whole turns to within 180 of the
	 * replaced key's value. Finding the key is a binary search.
	 */
	CORE_API FKeyHandle UpdateOrAddKey(float InTime, float InValue, const bool bUnwindRotation = false,
		float KeyTimeTolerance = UE_KINDA_SMALL_NUMBER);
	/** Removes the key; an unknown handle is ignored. */
	CORE_API void DeleteKey(FKeyHandle KeyHandle);

	/** The handle of the key within KeyTimeTolerance of KeyTime, or an invalid handle. */
	CORE_API FKeyHandle FindKey(float KeyTime, float KeyTimeTolerance = UE_KINDA_SMALL_NUMBER) const;
	bool KeyExistsAtTime(float KeyTime, float KeyTimeTolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FindKey(KeyTime, KeyTimeTolerance).IsValid();
	}
	CORE_API bool IsKeyHandleValid(FKeyHandle KeyHandle) const;
	/** Index of the key in Keys, or INDEX_NONE. */
	CORE_API int32 GetIndexSafe(FKeyHandle KeyHandle) const;
	FKeyHandle GetKeyHandle(int32 KeyIndex) const
	{
		return Handles.IsValidIndex(KeyIndex) ? Handles[KeyIndex] : FKeyHandle::Invalid();
	}
	/** Value/time of the key, or 0 for an unknown handle. */
	CORE_API float GetKeyValue(FKeyHandle KeyHandle) const;
	CORE_API float GetKeyTime(FKeyHandle KeyHandle) const;
	CORE_API void SetKeyValue(FKeyHandle KeyHandle, float NewValue);
	CORE_API void SetKeyInterpMode(FKeyHandle KeyHandle, ERichCurveInterpMode NewInterpMode);
	CORE_API ERichCurveInterpMode GetKeyInterpMode(FKeyHandle KeyHandle) const;

	/** First and last key times; both 0 without keys. */
	CORE_API void GetTimeRange(float& MinTime, float& MaxTime) const;
	/** Smallest and largest key values; both 0 without keys. */
	CORE_API void GetValueRange(float& MinValue, float& MaxValue) const;
	const FRichCurveKey& GetFirstKey() const { return Keys[0]; }
	const FRichCurveKey& GetLastKey() const { return Keys.Last(); }

	void SetDefaultValue(float InDefaultValue) { DefaultValue = InDefaultValue; }
	float GetDefaultValue() const { return DefaultValue; }
	void ClearDefaultValue() { DefaultValue = MAX_flt; }

	/**
	 * The curve's value at InTime: no keys gives DefaultValue (or InDefaultValue when none is
	 * set); at or before the first key its value; at or after the last key its value; between
	 * keys the earlier key's interpolation. The keys are found by binary search.
	 */
	CORE_API float Eval(float InTime, float InDefaultValue = 0.0f) const;

	bool operator==(const FRichCurve& Other) const
	{
		return Keys == Other.Keys && DefaultValue == Other.DefaultValue &&
			PreInfinityExtrap == Other.PreInfinityExtrap && PostInfinityExtrap == Other.PostInfinityExtrap;
	}
	bool operator!=(const FRichCurve& Other) const { return !(*this == Other); }

private:
	// One handle per key, same index as Keys.
	TArray<FKeyHandle> Handles;
};
