// Rotations as Euler angles for the export formats. Angles are in degrees, matrices act on column
// vectors and a listed order is the order in which the axis rotations are multiplied: "Z, X, Y"
// is Rz * Rx * Ry, which is how BVH readers compose "Zrotation Xrotation Yrotation".
// Pure functions: any thread.
#pragma once

#include "CoreMinimal.h"

struct FZnEulerAngles
{
	// Z, X, Y angles (in that order) of a unit rotation: Q = Rz(Z) * Rx(X) * Ry(Y), with X in
	// -90..90 and Z, Y in -180..180. At X = +-90 (gimbal lock) Y is 0 and Z carries the rest.
	static FVector ZxyDegrees(const FQuat& Rotation);

	// Yaw (about Y), pitch (about X) and roll (about Z) of a unit rotation: Q = Ry(Yaw) * Rx(Pitch)
	// * Rz(Roll), pitch in -90..90, in radians. Returned as (Yaw, Pitch, Roll).
	static FVector YxzRadians(const FQuat& Rotation);
};
