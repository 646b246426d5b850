#include "ZnDM_CoordinateTools.h"

FVector ZnDM_CoordinateTools::ConvertUnityPos(float x, float y, float z)
{
	// Multiplied in float on purpose: the decoders store exactly these values.
	const float X = z * 100.0f;
	const float Y = x * 100.0f;
	const float Z = y * 100.0f;
	return FVector(double(X), double(Y), double(Z));
}

FQuat ZnDM_CoordinateTools::ConvertUnityRot(float x, float y, float z, float w)
{
	return FQuat(double(z), double(x), double(y), double(w));
}

FVector ZnDM_CoordinateTools::ConvertUnityScale(float x, float y, float z)
{
	return FVector(double(z), double(x), double(y));
}

FQuat ZnDM_CoordinateTools::ToUnityRot(float x, float y, float z, float w)
{
	// Negated in float so that a zero component comes back as negative zero.
	const float X = -z;
	const float Y = -x;
	const float Z = -y;
	return FQuat(double(X), double(Y), double(Z), double(w));
}
