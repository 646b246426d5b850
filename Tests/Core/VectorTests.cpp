#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

TEST(VectorTests, ConstantsAndConstruction)
{
	EXPECT_EQ(FVector::ZeroVector, FVector(0, 0, 0));
	EXPECT_EQ(FVector::OneVector, FVector(1.0));
	EXPECT_EQ(FVector::UpVector, FVector(0, 0, 1));
	EXPECT_EQ(FVector::ForwardVector, FVector(1, 0, 0));
	EXPECT_EQ(FVector::RightVector, FVector(0, 1, 0));
	EXPECT_EQ(FVector(), FVector::ZeroVector);
	EXPECT_EQ(sizeof(FVector().X), sizeof(double));
}

TEST(VectorTests, Arithmetic)
{
	const FVector A(1, 2, 3);
	const FVector B(4, 5, 6);
	EXPECT_EQ(A + B, FVector(5, 7, 9));
	EXPECT_EQ(B - A, FVector(3, 3, 3));
	EXPECT_EQ(A * 2.0, FVector(2, 4, 6));
	EXPECT_EQ(2.0 * A, FVector(2, 4, 6));
	EXPECT_EQ(A * B, FVector(4, 10, 18));
	EXPECT_EQ(B / 2.0, FVector(2, 2.5, 3));
	EXPECT_EQ(-A, FVector(-1, -2, -3));
	EXPECT_DOUBLE_EQ(A | B, 32.0);
	EXPECT_EQ(FVector::CrossProduct(FVector(1, 0, 0), FVector(0, 1, 0)), FVector(0, 0, 1));
	FVector C = A;
	C += B;
	C -= FVector(1, 1, 1);
	C *= 2.0;
	C /= 4.0;
	EXPECT_EQ(C, FVector(2, 3, 4));
}

TEST(VectorTests, SizeAndDistance)
{
	EXPECT_DOUBLE_EQ(FVector(3, 4, 12).Size(), 13.0);
	EXPECT_DOUBLE_EQ(FVector(3, 4, 12).SizeSquared(), 169.0);
	EXPECT_DOUBLE_EQ(FVector(3, 4, 12).Size2D(), 5.0);
	EXPECT_DOUBLE_EQ(FVector::Dist(FVector(1, 1, 1), FVector(4, 5, 1)), 5.0);
	EXPECT_DOUBLE_EQ(FVector::DistSquared(FVector(1, 1, 1), FVector(4, 5, 1)), 25.0);
}

TEST(VectorTests, EqualsUsesAPerComponentTolerance)
{
	EXPECT_TRUE(FVector(1, 2, 3).Equals(FVector(1.00005, 2, 3)));
	EXPECT_FALSE(FVector(1, 2, 3).Equals(FVector(1.001, 2, 3)));
	EXPECT_TRUE(FVector(1, 2, 3).Equals(FVector(1.001, 2, 3), 0.01));
	EXPECT_TRUE(FVector(1e-5, 0, 0).IsNearlyZero());
	EXPECT_FALSE(FVector(1e-5, 0, 0).IsZero());
}

TEST(VectorTests, Normalisation)
{
	FVector V(0, 3, 4);
	EXPECT_TRUE(V.GetSafeNormal().Equals(FVector(0, 0.6, 0.8), 1e-15));
	EXPECT_TRUE(V.Normalize());
	EXPECT_NEAR(V.Size(), 1.0, 1e-15);
	FVector Zero;
	EXPECT_FALSE(Zero.Normalize());
	EXPECT_EQ(Zero, FVector::ZeroVector);
	EXPECT_EQ(FVector::ZeroVector.GetSafeNormal(), FVector::ZeroVector);
	EXPECT_EQ(FVector(1e-9, 0, 0).GetSafeNormal(UE_SMALL_NUMBER, FVector(7, 7, 7)), FVector(7, 7, 7));
}

TEST(VectorTests, ComponentAccess)
{
	FVector V(1, 2, 3);
	EXPECT_EQ(V[0], 1.0);
	EXPECT_EQ(V[2], 3.0);
	V[1] = 9.0;
	EXPECT_EQ(V.Y, 9.0);
	EXPECT_EQ(V.GetMax(), 9.0);
	EXPECT_EQ(V.GetMin(), 1.0);
	EXPECT_EQ(FVector(-4, 2, 3).GetAbsMax(), 4.0);
	EXPECT_EQ(FVector(-4, 2, 3).GetAbs(), FVector(4, 2, 3));
}

TEST(VectorTests, ToStringFormat)
{
	EXPECT_TRUE(FVector(1, -2.5, 1000).ToString().Equals(TEXT("X=1.000 Y=-2.500 Z=1000.000")));
}

TEST(VectorTests, NaNIsDetected)
{
	EXPECT_TRUE(FVector(std::numeric_limits<double>::quiet_NaN(), 0, 0).ContainsNaN());
	EXPECT_FALSE(FVector(1, 2, 3).ContainsNaN());
}
