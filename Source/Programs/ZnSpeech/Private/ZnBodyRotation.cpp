#include "ZnBodyRotation.h"

#include <cmath>

FZnGenQuat AxisRotation(EZnAxis Axis, double Degrees)
{
	const double Half = Degrees * 3.14159265358979323846 / 360.0;
	FZnGenQuat Q;
	Q.W = std::cos(Half);
	const double S = std::sin(Half);
	Q.X = Axis == EZnAxis::X ? S : 0.0;
	Q.Y = Axis == EZnAxis::Y ? S : 0.0;
	Q.Z = Axis == EZnAxis::Z ? S : 0.0;
	return Q;
}

FZnGenQuat Compose(const FZnGenQuat& A, const FZnGenQuat& B)
{
	FZnGenQuat Q;
	Q.W = A.W * B.W - A.X * B.X - A.Y * B.Y - A.Z * B.Z;
	Q.X = A.W * B.X + A.X * B.W + A.Y * B.Z - A.Z * B.Y;
	Q.Y = A.W * B.Y - A.X * B.Z + A.Y * B.W + A.Z * B.X;
	Q.Z = A.W * B.Z + A.X * B.Y - A.Y * B.X + A.Z * B.W;
	return Q;
}

FZnGenQuat Normalized(const FZnGenQuat& Q)
{
	const double Size = std::sqrt(Q.X * Q.X + Q.Y * Q.Y + Q.Z * Q.Z + Q.W * Q.W);
	if (Size < 1e-12)
	{
		return FZnGenQuat();
	}
	return {Q.X / Size, Q.Y / Size, Q.Z / Size, Q.W / Size};
}

FZnGenQuat Nlerp(const FZnGenQuat& A, const FZnGenQuat& B, double Alpha)
{
	const double Dot = A.X * B.X + A.Y * B.Y + A.Z * B.Z + A.W * B.W;
	const double Sign = Dot < 0.0 ? -1.0 : 1.0;
	const double Keep = 1.0 - Alpha;
	const double Take = Alpha * Sign;
	return Normalized(
		{Keep * A.X + Take * B.X, Keep * A.Y + Take * B.Y, Keep * A.Z + Take * B.Z, Keep * A.W + Take * B.W});
}
