// Animation curves: FFloatCurve (one channel) and FVectorCurve (three channels), each built on
// FRichCurve. Times are in seconds. Both are plain values; copies are deep.
#pragma once

#include "CoreTypes.h"
#include "Curves/RichCurve.h"
#include "Math/Vector.h"

/** What all animation curves share: flags describing how the curve is used. */
struct FAnimCurveBase
{
	FAnimCurveBase() = default;
	explicit FAnimCurveBase(int32 InCurveTypeFlags)
		: CurveTypeFlags(InCurveTypeFlags)
	{
	}
	virtual ~FAnimCurveBase() = default;
	FAnimCurveBase(const FAnimCurveBase&) = default;
	FAnimCurveBase& operator=(const FAnimCurveBase&) = default;

	void SetCurveTypeFlags(int32 NewCurveTypeFlags) { CurveTypeFlags = NewCurveTypeFlags; }
	int32 GetCurveTypeFlags() const { return CurveTypeFlags; }

private:
	int32 CurveTypeFlags = 0;
};

struct FFloatCurve : public FAnimCurveBase
{
	FRichCurve FloatCurve;

	FFloatCurve() = default;
	explicit FFloatCurve(int32 InCurveTypeFlags)
		: FAnimCurveBase(InCurveTypeFlags)
	{
	}

	/** Note the argument order, value first, as in the engine. Keys within 1e-4 s are replaced. */
	void UpdateOrAddKey(float InValue, float InTime) { FloatCurve.UpdateOrAddKey(InTime, InValue); }
	/** The curve's value at CurrentTime (see FRichCurve::Eval; 0 for a curve without keys). */
	float Evaluate(float CurrentTime) const { return FloatCurve.Eval(CurrentTime); }
	void GetKeys(TArray<float>& OutTimes, TArray<float>& OutValues) const
	{
		OutTimes.Reset(FloatCurve.GetNumKeys());
		OutValues.Reset(FloatCurve.GetNumKeys());
		for (const FRichCurveKey& Key : FloatCurve.GetConstRefOfKeys())
		{
			OutTimes.Add(Key.Time);
			OutValues.Add(Key.Value);
		}
	}
	void Resize(float NewLength, bool bInsert = false, float OldStartTime = 0.f, float OldEndTime = 0.f) {}
};

struct FVectorCurve : public FAnimCurveBase
{
	enum class EIndex
	{
		X = 0,
		Y,
		Z,
		Max
	};

	FRichCurve FloatCurves[3];

	FVectorCurve() = default;
	explicit FVectorCurve(int32 InCurveTypeFlags)
		: FAnimCurveBase(InCurveTypeFlags)
	{
	}

	/** Adds or replaces a key in each channel; the components are narrowed to float. */
	void UpdateOrAddKey(const FVector& InVector, float InTime)
	{
		FloatCurves[0].UpdateOrAddKey(InTime, float(InVector.X));
		FloatCurves[1].UpdateOrAddKey(InTime, float(InVector.Y));
		FloatCurves[2].UpdateOrAddKey(InTime, float(InVector.Z));
	}
	/** Each channel evaluated at CurrentTime and multiplied by BlendWeight. */
	FVector Evaluate(float CurrentTime, float BlendWeight) const
	{
		return FVector(double(FloatCurves[0].Eval(CurrentTime) * BlendWeight),
			double(FloatCurves[1].Eval(CurrentTime) * BlendWeight),
			double(FloatCurves[2].Eval(CurrentTime) * BlendWeight));
	}
	/** Number of keys in the X channel (all channels get keys together through UpdateOrAddKey). */
	int32 GetNumKeys() const { return FloatCurves[0].GetNumKeys(); }
	bool DoesContainKey() const
	{
		return FloatCurves[0].GetNumKeys() > 0 || FloatCurves[1].GetNumKeys() > 0 || FloatCurves[2].GetNumKeys() > 0;
	}
};
