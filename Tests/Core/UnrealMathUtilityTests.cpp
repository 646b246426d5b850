#include "CoreMinimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(UnrealMathUtilityTests, PiConstantsAreFloatAndDouble)
{
	EXPECT_EQ(UE_PI, 3.1415926535897932f);
	EXPECT_EQ(PI, UE_PI);
	EXPECT_EQ(UE_DOUBLE_PI, 3.141592653589793);
	EXPECT_EQ(KINDA_SMALL_NUMBER, 1.e-4f);
	EXPECT_EQ(SMALL_NUMBER, 1.e-8f);
}

TEST(UnrealMathUtilityTests, MinMaxClampAbsSquare)
{
	EXPECT_EQ(FMath::Abs(-3), 3);
	EXPECT_EQ(FMath::Abs(-2.5), 2.5);
	EXPECT_EQ(FMath::Min(2, 3), 2);
	EXPECT_EQ(FMath::Max(2.0, 3.0), 3.0);
	EXPECT_EQ(FMath::Clamp(5, 0, 3), 3);
	EXPECT_EQ(FMath::Clamp(-1, 0, 3), 0);
	EXPECT_EQ(FMath::Clamp(2, 0, 3), 2);
	EXPECT_EQ(FMath::Square(-4), 16);
	EXPECT_EQ(FMath::Lerp(0.0, 10.0, 0.25), 2.5);
	EXPECT_EQ(FMath::Sign(-2.0), -1.0);
	EXPECT_FALSE(std::signbit(FMath::Abs(-0.0)));
	EXPECT_FALSE(std::signbit(FMath::Abs(-0.0f)));
}

TEST(UnrealMathUtilityTests, RootsAndTrigonometry)
{
	EXPECT_DOUBLE_EQ(FMath::Sqrt(16.0), 4.0);
	EXPECT_DOUBLE_EQ(FMath::InvSqrt(4.0), 0.5);
	EXPECT_FLOAT_EQ(FMath::InvSqrt(4.0f), 0.5f);
	EXPECT_NEAR(FMath::Sin(UE_DOUBLE_PI / 2), 1.0, 1e-15);
	EXPECT_NEAR(FMath::Cos(0.0), 1.0, 1e-15);
	EXPECT_NEAR(FMath::Acos(0.5), UE_DOUBLE_PI / 3, 1e-15);
	// Rounding may push a cosine just past 1; the result must not be NaN.
	EXPECT_EQ(FMath::Acos(1.0000001), 0.0);
	EXPECT_FALSE(FMath::IsNaN(FMath::Asin(-1.5)));
}

TEST(UnrealMathUtilityTests, Atan2IsTheEngineApproximation)
{
	EXPECT_EQ(FMath::Atan2(0.0, 0.0), 0.0);
	EXPECT_EQ(FMath::Atan2(0.0, 1.0), 0.0);
	EXPECT_EQ(FMath::Atan2(1.0, 0.0), 0.5 * double(UE_PI));
	EXPECT_EQ(FMath::Atan2(0.0, -1.0), double(UE_PI));
	EXPECT_EQ(FMath::Atan2(-1.0, 0.0), -0.5 * double(UE_PI));
	EXPECT_FALSE(std::signbit(FMath::Atan2(-0.0, 1.0)));
	for (double Angle = -3.1; Angle < 3.1; Angle += 0.05)
	{
		const double Y = std::sin(Angle);
		const double X = std::cos(Angle);
		EXPECT_NEAR(FMath::Atan2(Y, X), std::atan2(Y, X), 3e-6) << Angle;
		EXPECT_NEAR(FMath::Atan2(float(Y), float(X)), std::atan2(Y, X), 3e-6) << Angle;
	}
}

TEST(UnrealMathUtilityTests, FastAsinIsThePolynomial)
{
	EXPECT_EQ(FMath::FastAsin(0.0), 0.0);
	EXPECT_EQ(FMath::FastAsin(1.0), double(FASTASIN_HALF_PI));
	EXPECT_EQ(FMath::FastAsin(-1.0), -double(FASTASIN_HALF_PI));
	// Values outside [-1, 1] count as the ends.
	EXPECT_EQ(FMath::FastAsin(1.5), double(FASTASIN_HALF_PI));
	for (double X = -1.0; X <= 1.0; X += 0.01)
	{
		EXPECT_NEAR(FMath::FastAsin(X), std::asin(X), 2e-7) << X;
	}
	EXPECT_NE(FMath::FastAsin(0.5), std::asin(0.5));
}

TEST(UnrealMathUtilityTests, NearlyEqualAndZero)
{
	EXPECT_TRUE(FMath::IsNearlyEqual(1.0, 1.0 + 1e-9));
	EXPECT_FALSE(FMath::IsNearlyEqual(1.0, 1.0 + 1e-7));
	EXPECT_TRUE(FMath::IsNearlyEqual(1.0f, 1.00005f, KINDA_SMALL_NUMBER));
	EXPECT_TRUE(FMath::IsNearlyZero(1e-9));
	EXPECT_FALSE(FMath::IsNearlyZero(1e-3));
	EXPECT_TRUE(FMath::IsNearlyZero(1e-3, 1e-2));
}

TEST(UnrealMathUtilityTests, FmodKeepsTheSignOfTheDividend)
{
	EXPECT_DOUBLE_EQ(FMath::Fmod(5.5, 2.0), 1.5);
	EXPECT_DOUBLE_EQ(FMath::Fmod(-5.5, 2.0), -1.5);
	EXPECT_DOUBLE_EQ(FMath::Fmod(370.0, 360.0), 10.0);
	EXPECT_EQ(FMath::Fmod(1.0, 0.0), 0.0);
	EXPECT_EQ(FMath::Fmod(1.0f, 1e-9f), 0.0f);
}

TEST(UnrealMathUtilityTests, Rounding)
{
	EXPECT_EQ(FMath::FloorToInt(-0.5), -1);
	EXPECT_EQ(FMath::FloorToInt(2.9f), 2);
	EXPECT_EQ(FMath::CeilToInt(2.1), 3);
	EXPECT_EQ(FMath::RoundToInt(2.5), 3);
	EXPECT_EQ(FMath::RoundToInt(-2.5), -2);
	EXPECT_EQ(FMath::RoundToInt(-2.6f), -3);
	EXPECT_EQ(FMath::TruncToInt(-2.9), -2);
	EXPECT_DOUBLE_EQ(FMath::Frac(2.25), 0.25);
}

TEST(UnrealMathUtilityTests, NaNAndFinite)
{
	const double NaN = std::numeric_limits<double>::quiet_NaN();
	const double Inf = std::numeric_limits<double>::infinity();
	EXPECT_TRUE(FMath::IsNaN(NaN));
	EXPECT_FALSE(FMath::IsNaN(1.0));
	EXPECT_TRUE(FMath::IsNaN(float(NaN)));
	EXPECT_FALSE(FMath::IsFinite(Inf));
	EXPECT_FALSE(FMath::IsFinite(NaN));
	EXPECT_TRUE(FMath::IsFinite(1.0f));
}

TEST(UnrealMathUtilityTests, DegreesAndRadians)
{
	EXPECT_NEAR(FMath::DegreesToRadians(180.0), UE_DOUBLE_PI, 1e-6);
	EXPECT_NEAR(FMath::RadiansToDegrees(UE_DOUBLE_PI), 180.0, 1e-5);
}

TEST(UnrealMathUtilityTests, RandomNumbersStayInRange)
{
	FMath::RandInit(1234);
	for (int32 Index = 0; Index < 1000; ++Index)
	{
		const float F = FMath::FRand();
		EXPECT_GE(F, 0.f);
		EXPECT_LT(F, 1.f);
		const int32 R = FMath::RandRange(-3, 3);
		EXPECT_GE(R, -3);
		EXPECT_LE(R, 3);
	}
	EXPECT_EQ(FMath::RandRange(5, 5), 5);
	EXPECT_EQ(FMath::RandRange(5, 1), 5);
}
