// The few quaternion operations the speaking body needs, on the generator's quaternion record.
#pragma once

#include "ZnMotionGenerator.h"

enum class EZnAxis : uint8
{
	X,
	Y,
	Z
};

FZnGenQuat AxisRotation(EZnAxis Axis, double Degrees);
// A then B in B's frame: the rotation B applied in the local frame A leaves.
FZnGenQuat Compose(const FZnGenQuat& A, const FZnGenQuat& B);
FZnGenQuat Normalized(const FZnGenQuat& Q);
// Normalised linear blend from A (Alpha 0) to B (Alpha 1), taking the shorter way round.
FZnGenQuat Nlerp(const FZnGenQuat& A, const FZnGenQuat& B, double Alpha);
