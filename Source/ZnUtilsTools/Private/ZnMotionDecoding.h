// Small pieces shared by the body and face decoders: the time base and the quaternion reading.
#pragma once

#include "CoreMinimal.h"
#include "Animation/AnimCurveTypes.h"
#include "ZnJsonReader.h"
#include "ZnQuatMath.h"

namespace ZnMotion
{
using ZnQuatMath::KeyTimeTolerance;

// Frame j of a 30 fps track, in seconds: the product in double, narrowed once.
inline float FrameTime(uint64 FrameNumber)
{
	return float(double(FrameNumber) * (1.0 / 30.0));
}

// A 1-based streamed frame number in seconds, kept in double. Frame 0 wraps round to an enormous
// time on purpose: the unsigned subtraction is what the format's producers expect.
inline double StreamedFrameTime(uint64 FrameIndex)
{
	return double(FrameIndex - 1) * (1.0 / 30.0);
}

// A service rotation (already narrowed to float) in the engine's frame, normalised.
inline FQuat ConvertRotation(float X, float Y, float Z, float W)
{
	// The engine's X, Y, Z are the service's z, x, y.
	const double QX = double(Z);
	const double QY = double(X);
	const double QZ = double(Y);
	const double QW = double(W);
	return ZnQuatMath::Normalized(QX, QY, QZ, QW);
}

// A service position in metres (already narrowed to float) in engine centimetres.
inline FVector ConvertPosition(float X, float Y, float Z)
{
	const float EngineX = Z * 100.0f;
	const float EngineY = X * 100.0f;
	const float EngineZ = Y * 100.0f;
	return FVector(double(EngineX), double(EngineY), double(EngineZ));
}

// FRichCurve::UpdateOrAddKey for keys that usually arrive in rising time order. A key later than
// the last one by more than the curve's tolerance is exactly what UpdateOrAddKey would append
// (a linear key with default tangents), so it is appended directly, skipping the search; any
// other key goes through UpdateOrAddKey. The curve's key handles are created lazily by the curve
// itself, as for any direct edit of its public key array.
inline void AddCurveKey(FRichCurve& Curve, float Time, float Value)
{
	const int32 Num = Curve.Keys.Num();
	if (Num == 0 ||
		(Time > Curve.Keys[Num - 1].Time && !(std::fabs(Time - Curve.Keys[Num - 1].Time) <= UE_KINDA_SMALL_NUMBER)))
	{
		Curve.Keys.Emplace(Time, Value);
		return;
	}
	Curve.UpdateOrAddKey(Time, Value);
}

inline void AddCurveKey(FVectorCurve& Curve, const FVector& Value, float Time)
{
	AddCurveKey(Curve.FloatCurves[0], Time, float(Value.X));
	AddCurveKey(Curve.FloatCurves[1], Time, float(Value.Y));
	AddCurveKey(Curve.FloatCurves[2], Time, float(Value.Z));
}

// Reads up to Count numbers from the front of an array (non-numbers read 0). Returns how many
// elements the array had available, capped at Count.
template <int32 Count>
inline int32 ReadLeadingNumbers(const FZnJsonArray& Array, double (&OutNumbers)[Count])
{
	int32 Read = 0;
	for (FZnJsonValue Value : Array)
	{
		if (Read == Count)
		{
			break;
		}
		OutNumbers[Read++] = Value.AsNumber();
	}
	return Read;
}
} // namespace ZnMotion
