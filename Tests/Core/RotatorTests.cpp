#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

TEST(RotatorTests, ClampAxisGivesZeroTo360)
{
	EXPECT_EQ(FRotator::ClampAxis(-90.0), 270.0);
	EXPECT_EQ(FRotator::ClampAxis(720.0), 0.0);
	EXPECT_EQ(FRotator::ClampAxis(359.5), 359.5);
	EXPECT_EQ(FRotator::ClampAxis(-360.0), 0.0);
	EXPECT_EQ(FRotator::ClampAxis(-720.5), 359.5);
}

TEST(RotatorTests, NormalizeAxisGivesMinus180To180)
{
	EXPECT_EQ(FRotator::NormalizeAxis(190.0), -170.0);
	EXPECT_EQ(FRotator::NormalizeAxis(180.0), 180.0);
	EXPECT_EQ(FRotator::NormalizeAxis(-180.0), 180.0);
	EXPECT_EQ(FRotator::NormalizeAxis(540.0), 180.0);
	EXPECT_EQ(FRotator::NormalizeAxis(-190.0), 170.0);
	EXPECT_EQ(FRotator::NormalizeAxis(-10.0), -10.0);
	EXPECT_EQ(FRotator::NormalizeAxis(0.0), 0.0);
}

TEST(RotatorTests, EulerOrderIsRollPitchYaw)
{
	const FRotator R(1, 2, 3);
	EXPECT_EQ(R.Euler(), FVector(3, 1, 2));
	EXPECT_EQ(FRotator::MakeFromEuler(FVector(3, 1, 2)), R);
}

TEST(RotatorTests, NormalisedCopy)
{
	const FRotator R(370, -190, 180);
	const FRotator N = R.GetNormalized();
	EXPECT_DOUBLE_EQ(N.Pitch, 10.0);
	EXPECT_DOUBLE_EQ(N.Yaw, 170.0);
	EXPECT_DOUBLE_EQ(N.Roll, 180.0);
	EXPECT_TRUE(R.Equals(N));
	EXPECT_TRUE(FRotator(0, 359.99999, 0).IsNearlyZero(1e-3));
}

TEST(RotatorTests, ArithmeticAndComparison)
{
	EXPECT_EQ(FRotator(1, 2, 3) + FRotator(1, 1, 1), FRotator(2, 3, 4));
	EXPECT_EQ(FRotator(1, 2, 3) - FRotator(1, 1, 1), FRotator(0, 1, 2));
	EXPECT_EQ(FRotator(1, 2, 3) * 2.0, FRotator(2, 4, 6));
	EXPECT_NE(FRotator(1, 2, 3), FRotator(1, 2, 4));
	EXPECT_EQ(FRotator::ZeroRotator, FRotator(0, 0, 0));
}

TEST(RotatorTests, DirectionVector)
{
	EXPECT_TRUE(FRotator(0, 90, 0).Vector().Equals(FVector(0, 1, 0), 1e-7));
	EXPECT_TRUE(FRotator(90, 0, 0).Vector().Equals(FVector(0, 0, 1), 1e-7));
	EXPECT_TRUE(FRotator(0, 90, 0).RotateVector(FVector(1, 0, 0)).Equals(FVector(0, 1, 0), 1e-7));
	EXPECT_TRUE(FRotator(0, 90, 0).UnrotateVector(FVector(0, 1, 0)).Equals(FVector(1, 0, 0), 1e-7));
}

TEST(RotatorTests, QuaternionRemovesWholeTurns)
{
	EXPECT_TRUE(FRotator(0, 450, 0).Quaternion().Equals(FRotator(0, 90, 0).Quaternion(), 1e-12));
}

TEST(RotatorTests, ToStringFormat)
{
	EXPECT_TRUE(FRotator(1, 2.5, -3).ToString().Equals(TEXT("P=1.000000 Y=2.500000 R=-3.000000")));
}
