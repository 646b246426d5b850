// Rotation rules the decoders and the rotation curve share, so that a key decoded from a clip and
// a key the curve evaluates follow the same tolerance and the same normalisation.
#pragma once

#include "CoreMinimal.h"

#include <cmath>

namespace ZnQuatMath
{
// Keys within this many seconds of each other are one key: a decoded key replaces an existing key
// that close, and the curve's search reads a time that close to a key as that key.
constexpr float KeyTimeTolerance = 0.0001f;

// Below this squared length a rotation is degenerate and read as the identity.
constexpr double MinSquaredLength = double(1e-8f);

// (X, Y, Z, W) scaled to unit length, or the identity when degenerate. Kept to this exact sequence
// of double operations so that results match bit for bit on every platform.
inline FQuat Normalized(double X, double Y, double Z, double W)
{
	const double SquaredLength = X * X + Y * Y + Z * Z + W * W;
	if (SquaredLength >= MinSquaredLength)
	{
		const double Length = std::sqrt(SquaredLength);
		return FQuat(X / Length, Y / Length, Z / Length, W / Length);
	}
	return FQuat(0.0, 0.0, 0.0, 1.0);
}
} // namespace ZnQuatMath
