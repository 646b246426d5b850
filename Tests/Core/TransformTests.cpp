#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

TEST(TransformTests, DefaultIsIdentity)
{
	const FTransform T;
	EXPECT_EQ(T.GetRotation(), FQuat::Identity);
	EXPECT_EQ(T.GetLocation(), FVector::ZeroVector);
	EXPECT_EQ(T.GetTranslation(), FVector::ZeroVector);
	EXPECT_EQ(T.GetScale3D(), FVector(1, 1, 1));
	EXPECT_TRUE(T.Equals(FTransform::Identity));
}

TEST(TransformTests, AccessorsAndSetters)
{
	FTransform T(FRotator(0, 90, 0), FVector(1, 2, 3), FVector(2, 2, 2));
	EXPECT_TRUE(T.GetRotation().Equals(FRotator(0, 90, 0).Quaternion(), 1e-12));
	EXPECT_EQ(T.GetLocation(), FVector(1, 2, 3));
	EXPECT_EQ(T.GetScale3D(), FVector(2, 2, 2));
	T.SetLocation(FVector(4, 5, 6));
	T.SetScale3D(FVector(1, 1, 1));
	T.SetRotation(FQuat::Identity);
	EXPECT_EQ(T.GetTranslation(), FVector(4, 5, 6));
	EXPECT_TRUE(T.Rotator().IsNearlyZero());
}

TEST(TransformTests, TransformPositionScalesRotatesThenTranslates)
{
	const FTransform T(FRotator(0, 90, 0).Quaternion(), FVector(10, 0, 0), FVector(2, 2, 2));
	EXPECT_TRUE(T.TransformPosition(FVector(1, 0, 0)).Equals(FVector(10, 2, 0), 1e-7));
	EXPECT_TRUE(T.TransformVector(FVector(1, 0, 0)).Equals(FVector(0, 2, 0), 1e-7));
	EXPECT_TRUE(T.InverseTransformPosition(FVector(10, 2, 0)).Equals(FVector(1, 0, 0), 1e-7));
}

TEST(TransformTests, ProductAppliesTheLeftTransformFirst)
{
	const FTransform Child(FQuat::Identity, FVector(1, 0, 0));
	const FTransform Parent(FRotator(0, 90, 0).Quaternion(), FVector(0, 0, 5));
	const FTransform World = Child * Parent;
	EXPECT_TRUE(World.GetLocation().Equals(FVector(0, 1, 5), 1e-7));
	const FVector P(0, 0, 1);
	EXPECT_TRUE(World.TransformPosition(P).Equals(Parent.TransformPosition(Child.TransformPosition(P)), 1e-7));
}

TEST(TransformTests, InverseUndoesTheTransform)
{
	const FTransform T(FRotator(10, 20, 30).Quaternion(), FVector(1, 2, 3), FVector(2, 2, 2));
	const FVector P(5, -6, 7);
	EXPECT_TRUE(T.Inverse().TransformPosition(T.TransformPosition(P)).Equals(P, 1e-9));
	EXPECT_TRUE((T * T.Inverse()).Equals(FTransform::Identity, 1e-9));
}

TEST(TransformTests, ZeroScaleInvertsToZero)
{
	const FTransform T(FQuat::Identity, FVector(1, 0, 0), FVector(0, 1, 1));
	EXPECT_EQ(T.Inverse().GetScale3D(), FVector(0, 1, 1));
	EXPECT_FALSE(T.InverseTransformPosition(FVector(5, 5, 5)).ContainsNaN());
}

TEST(TransformTests, ToStringFormat)
{
	const FTransform T(FQuat::Identity, FVector(1, 2, 3));
	EXPECT_TRUE(
		T.ToString().Equals(TEXT("1.000000,2.000000,3.000000|0.000000,0.000000,0.000000|1.000000,1.000000,1.000000")));
}
