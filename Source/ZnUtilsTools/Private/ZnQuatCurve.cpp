#include "ZnQuatCurve.h"

#include "ZnQuatMath.h"

#include <cmath>

namespace
{
// Every level of the halving search below the first decides "on a key" with the keys' tolerance.
constexpr float SearchTolerance = ZnQuatMath::KeyTimeTolerance;

// Spherical interpolation along the shorter arc, then normalisation. Kept to this exact sequence
// of double operations so that results match bit for bit on every platform.
FQuat SlerpNormalized(const FQuat& A, const FQuat& B, double Alpha)
{
	const double RawCos = A.X * B.X + A.Y * B.Y + A.Z * B.Z + A.W * B.W;
	const double Cos = std::fabs(RawCos);
	double Scale0;
	double Scale1;
	if (Cos < 0.9999)
	{
		const double Omega = std::acos(Cos);
		const double InvSin = 1.0 / std::sin(Omega);
		Scale0 = std::sin((1.0 - Alpha) * Omega) * InvSin;
		Scale1 = std::sin(Alpha * Omega) * InvSin;
	}
	else
	{
		// Nearly parallel: the sines are ill-conditioned, a straight blend is as good.
		Scale0 = 1.0 - Alpha;
		Scale1 = Alpha;
	}
	if (RawCos < 0.0)
	{
		Scale1 = -Scale1;
	}
	const double X = Scale0 * A.X + Scale1 * B.X;
	const double Y = Scale0 * A.Y + Scale1 * B.Y;
	const double Z = Scale0 * A.Z + Scale1 * B.Z;
	const double W = Scale0 * A.W + Scale1 * B.W;
	return ZnQuatMath::Normalized(X, Y, Z, W);
}
} // namespace

void FZnQuatCurve::UpdateOrAddKey(float InTime, const FQuat& InValue, float KeyTimeTolerance)
{
	const int32 Num = Keys.Num();
	if (Num == 0)
	{
		Keys.Emplace(InTime, InValue);
		return;
	}
	const float First = Keys[0].Time;
	if (std::fabs(InTime - First) > KeyTimeTolerance && InTime < First)
	{
		Keys.Insert(FZnQuatCurveKey(InTime, InValue), 0);
		return;
	}
	const float Last = Keys[Num - 1].Time;
	if (std::fabs(InTime - Last) > KeyTimeTolerance && InTime > Last)
	{
		Keys.Emplace(InTime, InValue);
		return;
	}
	for (int32 Index = 0; Index < Num; ++Index)
	{
		if (!(std::fabs(InTime - Keys[Index].Time) > KeyTimeTolerance))
		{
			Keys[Index].Value = InValue;
			return;
		}
		if (Index < Num - 1 && InTime < Keys[Index + 1].Time)
		{
			// In front of Keys[Index], one place earlier than time order would put it. Curves
			// already saved and sampled with this order depend on it, so it stays.
			Keys.Insert(FZnQuatCurveKey(InTime, InValue), Index);
			return;
		}
	}
}

FQuat FZnQuatCurve::Evaluate(float InTime, float SingleKeyTolerance) const
{
	const int32 Num = Keys.Num();
	if (Num == 0)
	{
		return FQuat(0.0, 0.0, 0.0, 1.0);
	}
	if (Num == 1 && std::fabs(InTime - Keys[0].Time) > SingleKeyTolerance)
	{
		return FQuat(0.0, 0.0, 0.0, 1.0);
	}
	if (InTime >= Keys[0].Time && InTime <= Keys[Num - 1].Time)
	{
		return halfSearch(InTime, Keys, 0, Num - 1, SearchTolerance);
	}
	// Outside the keys the first rotation is held at both ends; animations rely on the start pose.
	return Keys[0].Value;
}

FQuat FZnQuatCurve::halfSearch(float InTime, const TArray<FZnQuatCurveKey>& Keys, int32 Lo, int32 Hi, float Tolerance)
{
	// Evaluate always passes a range of two keys or more; a direct caller may not. A range that
	// is not inside the keys has nothing to return but the rest pose, and a one-key range can
	// only hold that key (halving it would never end).
	if (Lo < 0 || Hi >= Keys.Num() || Hi < Lo)
	{
		return FQuat(0.0, 0.0, 0.0, 1.0);
	}
	if (Lo == Hi)
	{
		return Keys[Lo].Value;
	}
	const FZnQuatCurveKey& LoKey = Keys[Lo];
	const FZnQuatCurveKey& HiKey = Keys[Hi];
	if (std::fabs(InTime - LoKey.Time) <= Tolerance)
	{
		return LoKey.Value;
	}
	if (std::fabs(InTime - HiKey.Time) <= Tolerance)
	{
		return HiKey.Value;
	}
	if (Hi - Lo == 1)
	{
		const float Alpha = (InTime - LoKey.Time) / (HiKey.Time - LoKey.Time);
		return SlerpNormalized(LoKey.Value, HiKey.Value, double(Alpha));
	}
	const int32 Mid = (Lo + Hi) / 2;
	if (InTime >= Keys[Mid].Time)
	{
		return halfSearch(InTime, Keys, Mid, Hi, SearchTolerance);
	}
	return halfSearch(InTime, Keys, Lo, Mid, SearchTolerance);
}
