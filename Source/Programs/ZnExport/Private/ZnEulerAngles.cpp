#include "ZnEulerAngles.h"

#include <cmath>

namespace
{
// Below this cosine of the middle angle the first and last axes line up (gimbal lock); the
// split between them is then a free choice and the last one is set to 0.
constexpr double GimbalCosine = 1e-7;

struct FZnRotationMatrix
{
	double M[3][3];

	explicit FZnRotationMatrix(const FQuat& Q)
	{
		const double X = Q.X, Y = Q.Y, Z = Q.Z, W = Q.W;
		M[0][0] = 1.0 - 2.0 * (Y * Y + Z * Z);
		M[0][1] = 2.0 * (X * Y - Z * W);
		M[0][2] = 2.0 * (X * Z + Y * W);
		M[1][0] = 2.0 * (X * Y + Z * W);
		M[1][1] = 1.0 - 2.0 * (X * X + Z * Z);
		M[1][2] = 2.0 * (Y * Z - X * W);
		M[2][0] = 2.0 * (X * Z - Y * W);
		M[2][1] = 2.0 * (Y * Z + X * W);
		M[2][2] = 1.0 - 2.0 * (X * X + Y * Y);
	}
};

double Degrees(double Radians)
{
	return Radians * (180.0 / 3.14159265358979323846);
}
} // namespace

FVector FZnEulerAngles::ZxyDegrees(const FQuat& Rotation)
{
	// Rz(a) Rx(b) Ry(c) = | ca cc - sa sb sc   -sa cb   ca sc + sa sb cc |
	//                     | sa cc + ca sb sc    ca cb   sa sc - ca sb cc |
	//                     | -cb sc              sb      cb cc            |
	// The middle angle comes from atan2 rather than asin, which loses half its digits near +-90.
	const FZnRotationMatrix R(Rotation);
	const double CosX = std::sqrt(R.M[0][1] * R.M[0][1] + R.M[1][1] * R.M[1][1]);
	const double AngleX = std::atan2(R.M[2][1], CosX);
	if (CosX < GimbalCosine)
	{
		return FVector(Degrees(std::atan2(R.M[1][0], R.M[0][0])), Degrees(AngleX), 0.0);
	}
	return FVector(
		Degrees(std::atan2(-R.M[0][1], R.M[1][1])), Degrees(AngleX), Degrees(std::atan2(-R.M[2][0], R.M[2][2])));
}

FVector FZnEulerAngles::YxzRadians(const FQuat& Rotation)
{
	// Ry(y) Rx(p) Rz(r) = | cy cr + sy sp sr   -cy sr + sy sp cr   sy cp |
	//                     | cp sr              cp cr              -sp    |
	//                     | -sy cr + cy sp sr  sy sr + cy sp cr    cy cp |
	const FZnRotationMatrix R(Rotation);
	const double CosPitch = std::sqrt(R.M[0][2] * R.M[0][2] + R.M[2][2] * R.M[2][2]);
	const double Pitch = std::atan2(-R.M[1][2], CosPitch);
	if (CosPitch < GimbalCosine)
	{
		return FVector(std::atan2(-R.M[2][0], R.M[0][0]), Pitch, 0.0);
	}
	return FVector(std::atan2(R.M[0][2], R.M[2][2]), Pitch, std::atan2(R.M[1][0], R.M[1][1]));
}
