#include "CoreMinimal.h"

#include "Animation/AnimCurveTypes.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

TEST(AnimCurveTypesTests, FloatCurveTakesTheValueFirst)
{
	FFloatCurve Curve;
	Curve.UpdateOrAddKey(0.25f, 1.f);
	ASSERT_EQ(Curve.FloatCurve.GetNumKeys(), 1);
	EXPECT_EQ(Curve.FloatCurve.GetConstRefOfKeys()[0].Time, 1.f);
	EXPECT_EQ(Curve.FloatCurve.GetConstRefOfKeys()[0].Value, 0.25f);
}

TEST(AnimCurveTypesTests, FloatCurveEvaluatesLinearly)
{
	FFloatCurve Curve;
	EXPECT_EQ(Curve.Evaluate(0.f), 0.f);
	Curve.UpdateOrAddKey(0.f, 0.f);
	Curve.UpdateOrAddKey(1.f, 1.f / 30.f);
	EXPECT_NEAR(Curve.Evaluate(0.5f / 30.f), 0.5f, 1e-5f);
	EXPECT_EQ(Curve.Evaluate(10.f), 1.f);
	Curve.UpdateOrAddKey(0.75f, 1.f / 30.f + 0.00001f);
	EXPECT_EQ(Curve.FloatCurve.GetNumKeys(), 2);
	EXPECT_EQ(Curve.Evaluate(10.f), 0.75f);
}

TEST(AnimCurveTypesTests, FloatCurveKeysReadBack)
{
	FFloatCurve Curve;
	Curve.UpdateOrAddKey(5.f, 2.f);
	Curve.UpdateOrAddKey(3.f, 1.f);
	TArray<float> Times, Values;
	Curve.GetKeys(Times, Values);
	EXPECT_EQ(Times, (TArray<float>{1.f, 2.f}));
	EXPECT_EQ(Values, (TArray<float>{3.f, 5.f}));
}

TEST(AnimCurveTypesTests, VectorCurveKeysEveryChannel)
{
	FVectorCurve Curve;
	Curve.UpdateOrAddKey(FVector(0, 10, 20), 0.f);
	Curve.UpdateOrAddKey(FVector(2, 12, -20), 1.f);
	EXPECT_EQ(Curve.GetNumKeys(), 2);
	EXPECT_EQ(Curve.FloatCurves[1].GetNumKeys(), 2);
	EXPECT_TRUE(Curve.Evaluate(0.5f, 1.f).Equals(FVector(1, 11, 0), 1e-6));
	EXPECT_TRUE(Curve.Evaluate(0.5f, 2.f).Equals(FVector(2, 22, 0), 1e-6));
	EXPECT_TRUE(Curve.Evaluate(-3.f, 1.f).Equals(FVector(0, 10, 20), 1e-6));
	EXPECT_TRUE(Curve.Evaluate(3.f, 0.5f).Equals(FVector(1, 6, -10), 1e-6));
}

TEST(AnimCurveTypesTests, VectorCurveNarrowsToFloat)
{
	FVectorCurve Curve;
	Curve.UpdateOrAddKey(FVector(0.1, 0, 0), 0.f);
	EXPECT_EQ(Curve.Evaluate(0.f, 1.f).X, double(0.1f));
}

TEST(AnimCurveTypesTests, EmptyVectorCurveIsZero)
{
	const FVectorCurve Curve;
	EXPECT_FALSE(Curve.DoesContainKey());
	EXPECT_EQ(Curve.Evaluate(1.f, 1.f), FVector::ZeroVector);
}

TEST(AnimCurveTypesTests, CopiesAreDeep)
{
	FFloatCurve Float;
	Float.UpdateOrAddKey(1.f, 0.f);
	FFloatCurve FloatCopy = Float;
	FloatCopy.UpdateOrAddKey(2.f, 0.f);
	EXPECT_EQ(Float.Evaluate(0.f), 1.f);
	EXPECT_EQ(FloatCopy.Evaluate(0.f), 2.f);

	FVectorCurve Vector;
	Vector.UpdateOrAddKey(FVector(1, 1, 1), 0.f);
	FVectorCurve VectorCopy;
	VectorCopy = Vector;
	VectorCopy.UpdateOrAddKey(FVector(5, 5, 5), 0.f);
	EXPECT_EQ(Vector.Evaluate(0.f, 1.f), FVector(1, 1, 1));
	EXPECT_EQ(VectorCopy.Evaluate(0.f, 1.f), FVector(5, 5, 5));

	TArray<FFloatCurve> Curves;
	Curves.Add(Float);
	TArray<FFloatCurve> CurvesCopy = Curves;
	CurvesCopy[0].UpdateOrAddKey(9.f, 0.f);
	EXPECT_EQ(Curves[0].Evaluate(0.f), 1.f);
}
