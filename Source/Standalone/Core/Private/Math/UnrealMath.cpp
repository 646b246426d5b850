#include "Math/UnrealMathUtility.h"

#include <cstdlib>

namespace
{
// Minimax polynomial for atan on [0, 1] and the quadrant fix-up, evaluated in T; PI here is the
// engine's float constant, which the double version also uses.
template <typename T>
T Atan2Impl(T Y, T X)
{
	const T AbsX = FMath::Abs(X);
	const T AbsY = FMath::Abs(Y);
	const bool bYAbsBigger = (AbsY > AbsX);
	T T0 = bYAbsBigger ? AbsY : AbsX;
	const T T1 = bYAbsBigger ? AbsX : AbsY;
	if (T0 == T(0))
	{
		return T(0);
	}
	T T3 = T1 / T0;
	const T T4 = T3 * T3;

	static const T C[7] = {T(+7.2128853633444123e-03f), T(-3.5059680836411644e-02f), T(+8.1675882859940430e-02f),
		T(-1.3374657325451267e-01f), T(+1.9856563505717162e-01f), T(-3.3324998579202170e-01f), T(+1.0f)};

	T0 = C[0];
	T0 = T0 * T4 + C[1];
	T0 = T0 * T4 + C[2];
	T0 = T0 * T4 + C[3];
	T0 = T0 * T4 + C[4];
	T0 = T0 * T4 + C[5];
	T0 = T0 * T4 + C[6];
	T3 = T0 * T3;

	T3 = bYAbsBigger ? (T(0.5f) * T(UE_PI)) - T3 : T3;
	T3 = (X < T(0)) ? T(UE_PI) - T3 : T3;
	T3 = (Y < T(0)) ? -T3 : T3;
	return T3;
}
} // namespace

float FMath::Atan2(float Y, float X)
{
	return Atan2Impl(Y, X);
}

double FMath::Atan2(double Y, double X)
{
	return Atan2Impl(Y, X);
}

int32 FMath::Rand()
{
	return std::rand();
}

void FMath::RandInit(int32 Seed)
{
	std::srand(unsigned(Seed));
}

float FMath::FRand()
{
	// RAND_MAX + 1 keeps the result below 1.
	const float Result = float(std::rand()) / (float(RAND_MAX) + 1.0f);
	return Result < 1.0f ? Result : 0.99999994f;
}

int32 FMath::RandRange(int32 Min, int32 Max)
{
	const int64 Range = int64(Max) - int64(Min) + 1;
	if (Range <= 1)
	{
		return Min;
	}
	return int32(int64(Min) + int64(FRand() * double(Range)) % Range);
}

float FMath::FRandRange(float InMin, float InMax)
{
	return InMin + (InMax - InMin) * FRand();
}
