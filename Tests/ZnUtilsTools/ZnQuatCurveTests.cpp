#include "ZnQuatCurve.h"

#include "ZnDecodeTestHelpers.h"

#include <gtest/gtest.h>

#include <cmath>

using ZnDecodeTest::SameQuat;

namespace
{
const FQuat QA(0.1, 0.2, 0.3, 0.9273618495495704);
const FQuat QB(0.5, 0.5, 0.5, 0.5);
const FQuat QC(0.0, 0.0, 0.7071067811865476, 0.7071067811865476);

FZnQuatCurve CurveAt(std::initializer_list<float> Times)
{
	const FQuat Values[] = {QA, QB, QC, FQuat(1.0, 0.0, 0.0, 0.0), FQuat(0.0, 1.0, 0.0, 0.0)};
	FZnQuatCurve Curve;
	int32 Index = 0;
	for (float Time : Times)
	{
		Curve.Keys.Emplace(Time, Values[Index++ % 5]);
	}
	return Curve;
}

void ExpectQuatNear(const FQuat& Actual, const FQuat& Expected, double Tolerance)
{
	EXPECT_NEAR(Actual.X, Expected.X, Tolerance);
	EXPECT_NEAR(Actual.Y, Expected.Y, Tolerance);
	EXPECT_NEAR(Actual.Z, Expected.Z, Tolerance);
	EXPECT_NEAR(Actual.W, Expected.W, Tolerance);
}

void ExpectIdentity(const FQuat& Q)
{
	EXPECT_EQ(Q.X, 0.0);
	EXPECT_EQ(Q.Y, 0.0);
	EXPECT_EQ(Q.Z, 0.0);
	EXPECT_EQ(Q.W, 1.0);
}
} // namespace

TEST(ZnQuatCurveTests, EmptyCurveEvaluatesToIdentityAnywhere)
{
	const FZnQuatCurve Curve;
	ExpectIdentity(Curve.Evaluate(0.0f, 0.1f));
	ExpectIdentity(Curve.Evaluate(-5.0f, 0.1f));
	ExpectIdentity(Curve.Evaluate(1.0e6f, 100.0f));
}

TEST(ZnQuatCurveTests, SingleKeyWithinToleranceHoldsItsValueOtherwiseIdentity)
{
	const FZnQuatCurve Curve = CurveAt({2.0f});
	EXPECT_TRUE(SameQuat(Curve.Evaluate(2.05f, 0.1f), QA));
	EXPECT_TRUE(SameQuat(Curve.Evaluate(1.95f, 0.1f), QA));
	EXPECT_TRUE(SameQuat(Curve.Evaluate(2.0f, 0.0f), QA));
	ExpectIdentity(Curve.Evaluate(2.5f, 0.1f));
	ExpectIdentity(Curve.Evaluate(1.5f, 0.1f));
}

TEST(ZnQuatCurveTests, TimesOutsideTheKeysHoldTheFirstKeyAtBothEnds)
{
	const FZnQuatCurve Curve = CurveAt({0.0f, 1.0f, 2.0f});
	EXPECT_TRUE(SameQuat(Curve.Evaluate(-1.0f, 0.1f), QA));
	EXPECT_TRUE(SameQuat(Curve.Evaluate(5.0f, 0.1f), QA));
	EXPECT_TRUE(SameQuat(Curve.Evaluate(2.001f, 0.0f), QA));
}

TEST(ZnQuatCurveTests, TimeWithinATenThousandthOfAKeyReturnsThatKeyExactly)
{
	const FZnQuatCurve Curve = CurveAt({0.0f, 1.0f, 2.0f});
	EXPECT_TRUE(SameQuat(Curve.Evaluate(1.00005f, 0.5f), QB));
	EXPECT_TRUE(SameQuat(Curve.Evaluate(0.99995f, 0.5f), QB));
	EXPECT_TRUE(SameQuat(Curve.Evaluate(1.99995f, 0.5f), QC));
}

TEST(ZnQuatCurveTests, EvaluateAtEveryKeyTimeReturnsThatKey)
{
	FZnQuatCurve Curve;
	for (int32 Frame = 0; Frame < 37; ++Frame)
	{
		const double Angle = 0.05 * Frame;
		Curve.Keys.Emplace(float(Frame * (1.0 / 30.0)), FQuat(0.0, 0.0, std::sin(Angle), std::cos(Angle)));
	}
	for (const FZnQuatCurveKey& Key : Curve.Keys)
	{
		EXPECT_TRUE(SameQuat(Curve.Evaluate(Key.Time, 0.0001f), Key.Value)) << Key.Time;
	}
}

TEST(ZnQuatCurveTests, HalfwayBetweenTwoRotationsIsTheRotationHalfway)
{
	// Identity to 90 degrees about Z; halfway is 45 degrees about Z.
	FZnQuatCurve Curve;
	Curve.Keys.Emplace(0.0f, FQuat(0.0, 0.0, 0.0, 1.0));
	Curve.Keys.Emplace(1.0f, FQuat(0.0, 0.0, std::sin(M_PI / 4.0), std::cos(M_PI / 4.0)));
	ExpectQuatNear(Curve.Evaluate(0.5f, 0.0f), FQuat(0.0, 0.0, std::sin(M_PI / 8.0), std::cos(M_PI / 8.0)), 1e-12);
	ExpectQuatNear(Curve.Evaluate(0.25f, 0.0f), FQuat(0.0, 0.0, std::sin(M_PI / 16.0), std::cos(M_PI / 16.0)), 1e-12);
}

TEST(ZnQuatCurveTests, InterpolationFactorIsComputedInSinglePrecision)
{
	// 1/3 of the way: the factor is the float quotient, widened, not the double one.
	FZnQuatCurve Curve;
	const FQuat Start(0.0, 0.0, 0.0, 1.0);
	const FQuat End(0.0, 0.0, 1.0, 0.0);
	Curve.Keys.Emplace(0.0f, Start);
	Curve.Keys.Emplace(3.0f, End);
	const float Alpha = (1.0f - 0.0f) / (3.0f - 0.0f);
	const double Omega = std::acos(0.0);
	const double Scale0 = std::sin((1.0 - double(Alpha)) * Omega) / std::sin(Omega);
	const double Scale1 = std::sin(double(Alpha) * Omega) / std::sin(Omega);
	const double Length = std::sqrt(Scale0 * Scale0 + Scale1 * Scale1);
	const FQuat Result = Curve.Evaluate(1.0f, 0.0f);
	EXPECT_NEAR(Result.W, Scale0 / Length, 1e-15);
	EXPECT_NEAR(Result.Z, Scale1 / Length, 1e-15);
	EXPECT_EQ(Result.X, 0.0);
	EXPECT_EQ(Result.Y, 0.0);
}

TEST(ZnQuatCurveTests, OppositeSignRotationsInterpolateWithoutADetour)
{
	const FQuat Q = QC;
	const FQuat MinusQ(-Q.X, -Q.Y, -Q.Z, -Q.W);
	FZnQuatCurve Curve;
	Curve.Keys.Emplace(0.0f, Q);
	Curve.Keys.Emplace(1.0f, MinusQ);
	ExpectQuatNear(Curve.Evaluate(0.5f, 0.0f), Q, 1e-15);
	ExpectQuatNear(Curve.Evaluate(0.3f, 0.0f), Q, 1e-15);
}

TEST(ZnQuatCurveTests, NearlyParallelRotationsBlendLinearlyThenNormalise)
{
	const FQuat A(0.0, 0.0, 0.0, 1.0);
	const FQuat B(0.0, 0.0, 0.001, 0.9999995);
	FZnQuatCurve Curve;
	Curve.Keys.Emplace(0.0f, A);
	Curve.Keys.Emplace(1.0f, B);
	const double Z = 0.5 * B.Z;
	const double W = 0.5 * A.W + 0.5 * B.W;
	const double Length = std::sqrt(Z * Z + W * W);
	const FQuat Result = Curve.Evaluate(0.5f, 0.0f);
	EXPECT_DOUBLE_EQ(Result.Z, Z / Length);
	EXPECT_DOUBLE_EQ(Result.W, W / Length);
}

TEST(ZnQuatCurveTests, DegenerateBlendGivesIdentity)
{
	FZnQuatCurve Curve;
	Curve.Keys.Emplace(0.0f, FQuat(0.0, 0.0, 0.0, 0.0));
	Curve.Keys.Emplace(1.0f, FQuat(0.0, 0.0, 0.0, 0.0));
	ExpectIdentity(Curve.Evaluate(0.5f, 0.0f));
}

TEST(ZnQuatCurveTests, DeeperSearchLevelsUseTheFixedTolerance)
{
	const FZnQuatCurve Curve = CurveAt({0.0f, 1.0f, 2.0f, 3.0f, 4.0f});
	// The first level is told to use no tolerance at all; the second level still snaps to the key at 2.
	EXPECT_TRUE(SameQuat(FZnQuatCurve::halfSearch(2.00005f, Curve.Keys, 0, 4, 0.0f), Curve.Keys[2].Value));
	// And the first level does use what it is given.
	EXPECT_TRUE(SameQuat(FZnQuatCurve::halfSearch(0.4f, Curve.Keys, 0, 4, 0.5f), Curve.Keys[0].Value));
	EXPECT_TRUE(SameQuat(FZnQuatCurve::halfSearch(3.6f, Curve.Keys, 0, 4, 0.5f), Curve.Keys[4].Value));
}

TEST(ZnQuatCurveTests, SearchOverAOneKeyRangeHoldsThatKey)
{
	const FZnQuatCurve Curve = CurveAt({0.0f, 1.0f, 2.0f});
	// Before, on and after the key's time, with and without a tolerance: the key, every time.
	for (const float Time : {-3.0f, 0.5f, 1.0f, 1.5f, 7.0f})
	{
		EXPECT_TRUE(SameQuat(FZnQuatCurve::halfSearch(Time, Curve.Keys, 1, 1, 0.0f), Curve.Keys[1].Value)) << Time;
		EXPECT_TRUE(SameQuat(FZnQuatCurve::halfSearch(Time, Curve.Keys, 2, 2, 0.5f), Curve.Keys[2].Value)) << Time;
	}
	EXPECT_TRUE(SameQuat(FZnQuatCurve::halfSearch(NAN, Curve.Keys, 0, 0, 0.0f), Curve.Keys[0].Value));
}

TEST(ZnQuatCurveTests, SearchOverARangeOutsideTheKeysGivesIdentity)
{
	const FZnQuatCurve Curve = CurveAt({0.0f, 1.0f, 2.0f});
	ExpectIdentity(FZnQuatCurve::halfSearch(1.0f, Curve.Keys, 2, 1, 0.0f));
	ExpectIdentity(FZnQuatCurve::halfSearch(1.0f, Curve.Keys, -1, 1, 0.0f));
	ExpectIdentity(FZnQuatCurve::halfSearch(1.0f, Curve.Keys, 0, 3, 0.0f));
	ExpectIdentity(FZnQuatCurve::halfSearch(0.0f, TArray<FZnQuatCurveKey>(), 0, 0, 0.0f));
}

TEST(ZnQuatCurveTests, UpdateOrAddKeyNearAnExistingKeyReplacesTheValueAndKeepsTheTime)
{
	FZnQuatCurve Curve = CurveAt({0.0f, 1.0f, 2.0f});
	Curve.UpdateOrAddKey(1.00005f, QC, 0.0001f);
	ASSERT_EQ(Curve.Keys.Num(), 3);
	EXPECT_EQ(Curve.Keys[1].Time, 1.0f);
	EXPECT_TRUE(SameQuat(Curve.Keys[1].Value, QC));
	// Exactly the tolerance away still counts as near.
	Curve.UpdateOrAddKey(2.5f, QA, 0.5f);
	ASSERT_EQ(Curve.Keys.Num(), 3);
	EXPECT_EQ(Curve.Keys[2].Time, 2.0f);
	EXPECT_TRUE(SameQuat(Curve.Keys[2].Value, QA));
}

TEST(ZnQuatCurveTests, KeyBetweenTwoKeysLandsOnePlaceEarly)
{
	FZnQuatCurve Curve = CurveAt({0.0f, 1.0f});
	Curve.UpdateOrAddKey(0.5f, QC, 0.01f);
	ASSERT_EQ(Curve.Keys.Num(), 3);
	EXPECT_EQ(Curve.Keys[0].Time, 0.5f);
	EXPECT_EQ(Curve.Keys[1].Time, 0.0f);
	EXPECT_EQ(Curve.Keys[2].Time, 1.0f);
	EXPECT_TRUE(SameQuat(Curve.Keys[0].Value, QC));
}

TEST(ZnQuatCurveTests, KeyBetweenLaterKeysLandsInFrontOfTheEarlierNeighbour)
{
	FZnQuatCurve Curve = CurveAt({0.0f, 1.0f, 2.0f, 3.0f});
	Curve.UpdateOrAddKey(2.5f, QC, 0.01f);
	ASSERT_EQ(Curve.Keys.Num(), 5);
	const float Expected[] = {0.0f, 1.0f, 2.5f, 2.0f, 3.0f};
	for (int32 Index = 0; Index < 5; ++Index)
	{
		EXPECT_EQ(Curve.Keys[Index].Time, Expected[Index]);
	}
}

TEST(ZnQuatCurveTests, EarlierAndLaterKeysArePrependedAndAppended)
{
	FZnQuatCurve Curve;
	Curve.UpdateOrAddKey(1.0f, QA, 0.0001f);
	Curve.UpdateOrAddKey(0.0f, QB, 0.0001f);
	Curve.UpdateOrAddKey(2.0f, QC, 0.0001f);
	ASSERT_EQ(Curve.Keys.Num(), 3);
	EXPECT_EQ(Curve.Keys[0].Time, 0.0f);
	EXPECT_EQ(Curve.Keys[1].Time, 1.0f);
	EXPECT_EQ(Curve.Keys[2].Time, 2.0f);
	EXPECT_TRUE(SameQuat(Curve.Keys[0].Value, QB));
}

TEST(ZnQuatCurveTests, KeysAddedInRisingOrderAreAppendedOneAfterAnother)
{
	FZnQuatCurve Curve;
	for (int32 Frame = 0; Frame < 100; ++Frame)
	{
		Curve.UpdateOrAddKey(float(Frame * (1.0 / 30.0)), FQuat(0.0, 0.0, 0.0, 1.0 + Frame), 0.0001f);
	}
	ASSERT_EQ(Curve.Keys.Num(), 100);
	for (int32 Frame = 0; Frame < 100; ++Frame)
	{
		EXPECT_EQ(Curve.Keys[Frame].Time, float(Frame * (1.0 / 30.0)));
		EXPECT_EQ(Curve.Keys[Frame].Value.W, 1.0 + Frame);
	}
}

TEST(ZnQuatCurveTests, KeyInsideTheToleranceOfTheLastKeyReplacesIt)
{
	FZnQuatCurve Curve = CurveAt({0.0f, 1.0f});
	Curve.UpdateOrAddKey(1.00009f, QC, 0.0001f);
	ASSERT_EQ(Curve.Keys.Num(), 2);
	EXPECT_EQ(Curve.Keys[1].Time, 1.0f);
	EXPECT_TRUE(SameQuat(Curve.Keys[1].Value, QC));
}

TEST(ZnQuatCurveTests, CopiesAreIndependent)
{
	FZnQuatCurve Source = CurveAt({0.0f, 1.0f});
	FZnQuatCurve Copy(Source);
	Copy.Keys[0].Value = QC;
	Copy.Keys[1].Time = 9.0f;
	EXPECT_TRUE(SameQuat(Source.Keys[0].Value, QA));
	EXPECT_EQ(Source.Keys[1].Time, 1.0f);

	FZnQuatCurve Assigned;
	Assigned = Source;
	Assigned.UpdateOrAddKey(5.0f, QC, 0.0001f);
	EXPECT_EQ(Source.Keys.Num(), 2);
	EXPECT_EQ(Assigned.Keys.Num(), 3);
}

TEST(ZnQuatCurveTests, MisorderedKeysStillSampleSafely)
{
	FZnQuatCurve Curve = CurveAt({0.0f, 1.0f});
	Curve.UpdateOrAddKey(0.5f, QC, 0.01f); // 0.5, 0, 1
	// Inside [0.5, 1]: the search meets the out-of-order pair; the result is still a unit rotation.
	const FQuat Result = Curve.Evaluate(0.75f, 0.0f);
	EXPECT_NEAR(Result.Size(), 1.0, 1e-12);
	// Before the first key (0.5) the first key's value is held, even though a later key has time 0.
	EXPECT_TRUE(SameQuat(Curve.Evaluate(0.25f, 0.0f), QC));
}
