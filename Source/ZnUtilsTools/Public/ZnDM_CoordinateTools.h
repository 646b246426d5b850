// Conversions from the motion service's frame (Unity: Y up, metres) to the engine's (Z up,
// centimetres). The service's z axis becomes the engine's X, its x becomes Y and its y becomes Z.
// Inputs are 32-bit floats; any arithmetic is done in 32 bits and the result then widened, so
// the values equal what the decoders store.
#pragma once

#include "CoreMinimal.h"

class ZNUTILSTOOLS_API ZnDM_CoordinateTools
{
public:
	// A position in metres to engine units: (z, x, y) times 100.
	static FVector ConvertUnityPos(float x, float y, float z);

	// A rotation: (X, Y, Z, W) = (z, x, y, w). Not normalised.
	static FQuat ConvertUnityRot(float x, float y, float z, float w);

	// A scale: (z, x, y), no unit change.
	static FVector ConvertUnityScale(float x, float y, float z);

	// (-z, -x, -y, w): the same axis order as ConvertUnityRot with the vector part negated. It is
	// not the inverse of ConvertUnityRot; callers rely on exactly this mapping.
	static FQuat ToUnityRot(float x, float y, float z, float w);
};
