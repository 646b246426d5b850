#include "Curves/RichCurve.h"

#include <atomic>
#include <cmath>

namespace
{
std::atomic<uint32> LastKeyHandleIndex{0};

// Moves Value by whole turns until it lies within 180 degrees of Reference. Written with fmod so
// that huge or non-finite values cannot spin forever.
float UnwindRotation(float Value, float Reference)
{
	if (!std::isfinite(Value) || !std::isfinite(Reference))
	{
		return Value;
	}
	float Diff = std::fmod(Value - Reference, 360.0f);
	if (Diff > 180.0f)
	{
		Diff -= 360.0f;
	}
	else if (Diff < -180.0f)
	{
		Diff += 360.0f;
	}
	return Reference + Diff;
}

float BezierInterp(float P0, float P1, float P2, float P3, float Alpha)
{
	const float P01 = FMath::Lerp(P0, P1, Alpha);
	const float P12 = FMath::Lerp(P1, P2, Alpha);
	const float P23 = FMath::Lerp(P2, P3, Alpha);
	const float P012 = FMath::Lerp(P01, P12, Alpha);
	const float P123 = FMath::Lerp(P12, P23, Alpha);
	return FMath::Lerp(P012, P123, Alpha);
}

float EvalForTwoKeys(const FRichCurveKey& Key1, const FRichCurveKey& Key2, float InTime)
{
	const float Diff = Key2.Time - Key1.Time;
	if (Diff > 0.f && Key1.InterpMode != RCIM_Constant)
	{
		const float Alpha = (InTime - Key1.Time) / Diff;
		const float P0 = Key1.Value;
		const float P3 = Key2.Value;
		if (Key1.InterpMode == RCIM_Linear)
		{
			return FMath::Lerp(P0, P3, Alpha);
		}
		const float OneThird = 1.0f / 3.0f;
		const float P1 = P0 + (Key1.LeaveTangent * Diff * OneThird);
		const float P2 = P3 - (Key2.ArriveTangent * Diff * OneThird);
		return BezierInterp(P0, P1, P2, P3, Alpha);
	}
	return Key1.Value;
}
} // namespace

FKeyHandle::FKeyHandle()
	: Index(LastKeyHandleIndex.fetch_add(1, std::memory_order_relaxed) + 1)
{
	// Index 0 marks the invalid handle; after 2^32 handles the counter wraps past it.
	if (Index == 0)
	{
		Index = LastKeyHandleIndex.fetch_add(1, std::memory_order_relaxed) + 1;
	}
}

void FRichCurve::SetKeys(const TArray<FRichCurveKey>& InKeys)
{
	Keys = InKeys;
	Keys.StableSort([](const FRichCurveKey& A, const FRichCurveKey& B) { return A.Time < B.Time; });
	Handles.Reset(Keys.Num());
	for (int32 Index = 0; Index < Keys.Num(); ++Index)
	{
		Handles.Add(FKeyHandle());
	}
}

void FRichCurve::Reset()
{
	Keys.Empty();
	Handles.Empty();
}

FKeyHandle FRichCurve::AddKey(float InTime, float InValue, const bool bUnwindRotation, FKeyHandle KeyHandle)
{
	// A key without a time would break the time order every search relies on.
	if (FMath::IsNaN(InTime))
	{
		return FKeyHandle::Invalid();
	}
	// Keys may have been edited through the public array; keep the handle list in step.
	while (Handles.Num() < Keys.Num())
	{
		Handles.Add(FKeyHandle());
	}
	Handles.SetNum(Keys.Num());

	// First key that is not earlier than InTime (binary search over sorted keys).
	int32 Lo = 0;
	int32 Hi = Keys.Num();
	while (Lo < Hi)
	{
		const int32 Mid = Lo + (Hi - Lo) / 2;
		if (Keys[Mid].Time < InTime)
		{
			Lo = Mid + 1;
		}
		else
		{
			Hi = Mid;
		}
	}
	const int32 Index = Lo;
	// Keep room for a handle per reserved key, so that a caller's Keys.Reserve also spares the
	// handle list from regrowing.
	if (Handles.Max() < Keys.Max())
	{
		Handles.Reserve(Keys.Max());
	}
	Keys.Insert(FRichCurveKey(InTime, InValue), Index);
	Handles.Insert(KeyHandle, Index);
	if (Index > 0 && bUnwindRotation)
	{
		Keys[Index].Value = UnwindRotation(Keys[Index].Value, Keys[Index - 1].Value);
	}
	return KeyHandle;
}

FKeyHandle FRichCurve::UpdateOrAddKey(float InTime, float InValue, const bool bUnwindRotation, float KeyTimeTolerance)
{
	// Decoders add keys in rising time order: a key clearly after the last one is appended
	// without a search (the same result the search below would give).
	const int32 NumKeys = Keys.Num();
	if (NumKeys > 0 && Handles.Num() == NumKeys && !bUnwindRotation)
	{
		const float LastTime = Keys[NumKeys - 1].Time;
		if (InTime > LastTime && !FMath::IsNearlyEqual(LastTime, InTime, KeyTimeTolerance))
		{
			if (Handles.Max() < Keys.Max())
			{
				Handles.Reserve(Keys.Max());
			}
			Keys.Emplace(InTime, InValue);
			const int32 HandleIndex = Handles.Emplace();
			return Handles[HandleIndex];
		}
	}

	// The first key that is neither earlier than InTime nor near it. Keys before it are all
	// earlier and farther than the tolerance, so the first near key, if any, is exactly this one
	// (the same key a front-to-back scan would stop at).
	int32 Lo = 0;
	int32 Hi = Keys.Num();
	while (Lo < Hi)
	{
		const int32 Mid = Lo + (Hi - Lo) / 2;
		const float KeyTime = Keys[Mid].Time;
		if (KeyTime < InTime && !FMath::IsNearlyEqual(KeyTime, InTime, KeyTimeTolerance))
		{
			Lo = Mid + 1;
		}
		else
		{
			Hi = Mid;
		}
	}
	if (Lo < Keys.Num() && FMath::IsNearlyEqual(Keys[Lo].Time, InTime, KeyTimeTolerance))
	{
		if (bUnwindRotation)
		{
			InValue = UnwindRotation(InValue, Keys[Lo].Value);
		}
		Keys[Lo].Value = InValue;
		return GetKeyHandle(Lo);
	}
	return AddKey(InTime, InValue, bUnwindRotation);
}

void FRichCurve::DeleteKey(FKeyHandle KeyHandle)
{
	const int32 Index = GetIndexSafe(KeyHandle);
	if (Index != INDEX_NONE)
	{
		Keys.RemoveAt(Index);
		Handles.RemoveAt(Index);
	}
}

FKeyHandle FRichCurve::FindKey(float KeyTime, float KeyTimeTolerance) const
{
	int32 Lo = 0;
	int32 Hi = Keys.Num() - 1;
	while (Lo <= Hi)
	{
		const int32 Mid = Lo + (Hi - Lo) / 2;
		const float MidTime = Keys[Mid].Time;
		if (FMath::IsNearlyEqual(MidTime, KeyTime, KeyTimeTolerance))
		{
			return GetKeyHandle(Mid);
		}
		if (KeyTime < MidTime)
		{
			Hi = Mid - 1;
		}
		else
		{
			Lo = Mid + 1;
		}
	}
	return FKeyHandle::Invalid();
}

bool FRichCurve::IsKeyHandleValid(FKeyHandle KeyHandle) const
{
	return GetIndexSafe(KeyHandle) != INDEX_NONE;
}

int32 FRichCurve::GetIndexSafe(FKeyHandle KeyHandle) const
{
	if (!KeyHandle.IsValid())
	{
		return INDEX_NONE;
	}
	const int32 Index = Handles.Find(KeyHandle);
	return Index < Keys.Num() ? Index : INDEX_NONE;
}

float FRichCurve::GetKeyValue(FKeyHandle KeyHandle) const
{
	const int32 Index = GetIndexSafe(KeyHandle);
	return Index == INDEX_NONE ? 0.f : Keys[Index].Value;
}

float FRichCurve::GetKeyTime(FKeyHandle KeyHandle) const
{
	const int32 Index = GetIndexSafe(KeyHandle);
	return Index == INDEX_NONE ? 0.f : Keys[Index].Time;
}

void FRichCurve::SetKeyValue(FKeyHandle KeyHandle, float NewValue)
{
	const int32 Index = GetIndexSafe(KeyHandle);
	if (Index != INDEX_NONE)
	{
		Keys[Index].Value = NewValue;
	}
}

void FRichCurve::SetKeyInterpMode(FKeyHandle KeyHandle, ERichCurveInterpMode NewInterpMode)
{
	const int32 Index = GetIndexSafe(KeyHandle);
	if (Index != INDEX_NONE)
	{
		Keys[Index].InterpMode = NewInterpMode;
	}
}

ERichCurveInterpMode FRichCurve::GetKeyInterpMode(FKeyHandle KeyHandle) const
{
	const int32 Index = GetIndexSafe(KeyHandle);
	return Index == INDEX_NONE ? RCIM_Linear : Keys[Index].InterpMode;
}

void FRichCurve::GetTimeRange(float& MinTime, float& MaxTime) const
{
	if (Keys.Num() == 0)
	{
		MinTime = 0.f;
		MaxTime = 0.f;
		return;
	}
	MinTime = Keys[0].Time;
	MaxTime = Keys.Last().Time;
}

void FRichCurve::GetValueRange(float& MinValue, float& MaxValue) const
{
	if (Keys.Num() == 0)
	{
		MinValue = 0.f;
		MaxValue = 0.f;
		return;
	}
	MinValue = MaxValue = Keys[0].Value;
	for (const FRichCurveKey& Key : Keys)
	{
		MinValue = FMath::Min(MinValue, Key.Value);
		MaxValue = FMath::Max(MaxValue, Key.Value);
	}
}

float FRichCurve::Eval(float InTime, float InDefaultValue) const
{
	const int32 NumKeys = Keys.Num();
	if (NumKeys == 0)
	{
		return DefaultValue == MAX_flt ? InDefaultValue : DefaultValue;
	}
	if (NumKeys < 2 || InTime <= Keys[0].Time)
	{
		if (PreInfinityExtrap == RCCE_Linear && NumKeys > 1)
		{
			const float DT = Keys[1].Time - Keys[0].Time;
			if (FMath::IsNearlyZero(DT))
			{
				return Keys[0].Value;
			}
			const float Slope = (Keys[1].Value - Keys[0].Value) / DT;
			return Slope * (InTime - Keys[0].Time) + Keys[0].Value;
		}
		return Keys[0].Value;
	}
	if (InTime < Keys[NumKeys - 1].Time)
	{
		// Upper bound: the first key after InTime; the segment starts one key earlier.
		int32 First = 1;
		int32 Count = NumKeys - 1 - First;
		while (Count > 0)
		{
			const int32 Step = Count / 2;
			const int32 Middle = First + Step;
			if (InTime >= Keys[Middle].Time)
			{
				First = Middle + 1;
				Count -= Step + 1;
			}
			else
			{
				Count = Step;
			}
		}
		return EvalForTwoKeys(Keys[First - 1], Keys[First], InTime);
	}
	if (PostInfinityExtrap == RCCE_Linear)
	{
		const float DT = Keys[NumKeys - 2].Time - Keys[NumKeys - 1].Time;
		if (FMath::IsNearlyZero(DT))
		{
			return Keys[NumKeys - 1].Value;
		}
		const float Slope = (Keys[NumKeys - 2].Value - Keys[NumKeys - 1].Value) / DT;
		return Slope * (InTime - Keys[NumKeys - 1].Time) + Keys[NumKeys - 1].Value;
	}
	return Keys[NumKeys - 1].Value;
}
