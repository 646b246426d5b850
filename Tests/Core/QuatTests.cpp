#include "CoreMinimal.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
constexpr double HalfPi = UE_DOUBLE_PI / 2.0;

FQuat AboutAxis(double X, double Y, double Z, double Degrees)
{
	return FQuat(FVector(X, Y, Z), Degrees * UE_DOUBLE_PI / 180.0);
}

void ExpectQuatNear(const FQuat& Actual, const FQuat& Expected, double Tolerance)
{
	EXPECT_NEAR(Actual.X, Expected.X, Tolerance);
	EXPECT_NEAR(Actual.Y, Expected.Y, Tolerance);
	EXPECT_NEAR(Actual.Z, Expected.Z, Tolerance);
	EXPECT_NEAR(Actual.W, Expected.W, Tolerance);
}
} // namespace

TEST(QuatTests, IdentityIsTheDefault)
{
	const FQuat Q;
	EXPECT_EQ(Q, FQuat::Identity);
	EXPECT_EQ(FQuat::Identity, FQuat(0, 0, 0, 1));
	EXPECT_EQ(FQuat(ForceInitToZero), FQuat(0, 0, 0, 0));
	EXPECT_EQ(FQuat::Identity.Euler(), FVector(0, 0, 0));
}

TEST(QuatTests, AxisAngleConstruction)
{
	const FQuat Q(FVector(0, 0, 1), HalfPi);
	EXPECT_NEAR(Q.Z, std::sqrt(0.5), 1e-15);
	EXPECT_NEAR(Q.W, std::sqrt(0.5), 1e-15);
	EXPECT_EQ(Q.X, 0.0);
	EXPECT_EQ(Q.Y, 0.0);
	EXPECT_NEAR(Q.GetAngle(), HalfPi, 1e-12);
	EXPECT_TRUE(Q.GetRotationAxis().Equals(FVector(0, 0, 1), 1e-12));
}

TEST(QuatTests, QuarterTurnAboutUpIsYaw)
{
	const FVector Euler = AboutAxis(0, 0, 1, 90).Euler();
	EXPECT_NEAR(Euler.X, 0.0, 1e-9);
	EXPECT_NEAR(Euler.Y, 0.0, 1e-9);
	EXPECT_NEAR(Euler.Z, 90.0, 1e-5);
	// The engine's float pi shows in the sixth decimal of a printed angle.
	EXPECT_TRUE(FString::Printf(TEXT("%lf"), Euler.Z).Equals(TEXT("89.999998")));
}

TEST(QuatTests, QuarterTurnAboutForwardIsNegativeRoll)
{
	const FRotator R = AboutAxis(1, 0, 0, 90).Rotator();
	EXPECT_NEAR(R.Roll, -90.0, 1e-5);
	EXPECT_NEAR(R.Pitch, 0.0, 1e-9);
	EXPECT_NEAR(R.Yaw, 0.0, 1e-9);
	const FVector Euler = AboutAxis(1, 0, 0, 90).Euler();
	EXPECT_NEAR(Euler.X, -90.0, 1e-5);
}

TEST(QuatTests, QuarterTurnAboutRightHitsThePole)
{
	// Z*X - W*Y = -0.5 lies past the singularity threshold, so the pitch is exactly -90.
	// Yaw and roll then share one degree of freedom; which split comes out depends on rounding,
	// but together they must give the same rotation.
	const FQuat Down = AboutAxis(0, 1, 0, 90);
	const FRotator R = Down.Rotator();
	EXPECT_EQ(R.Pitch, -90.0);
	EXPECT_TRUE(FQuat(R).Equals(Down, 1e-6));
	const FQuat Up = AboutAxis(0, 1, 0, -90);
	EXPECT_EQ(Up.Rotator().Pitch, 90.0);
	EXPECT_TRUE(FQuat(Up.Rotator()).Equals(Up, 1e-6));
	EXPECT_EQ(FRotator(-90, 0, 0).Quaternion().Rotator().Pitch, -90.0);
}

TEST(QuatTests, PoleKeepsTheRotationInYawAndRoll)
{
	const FQuat Q = FRotator(90, 30, 10).Quaternion();
	const FRotator R = Q.Rotator();
	EXPECT_EQ(R.Pitch, 90.0);
	EXPECT_GE(R.Roll, -180.0);
	EXPECT_LE(R.Roll, 180.0);
	EXPECT_TRUE(FQuat(R).Equals(Q, 1e-5));
}

TEST(QuatTests, SingularityThresholdDecidesThePitch)
{
	// sin(pitch)/2 > 0.4999995 from about 89.919 degrees on.
	const FRotator Below = FRotator(89.9, 0, 0).Quaternion().Rotator();
	EXPECT_NEAR(Below.Pitch, 89.9, 1e-3);
	EXPECT_NE(Below.Pitch, 90.0);
	const FRotator Above = FRotator(89.95, 0, 0).Quaternion().Rotator();
	EXPECT_EQ(Above.Pitch, 90.0);
	const FRotator AboveNegative = FRotator(-89.95, 0, 0).Quaternion().Rotator();
	EXPECT_EQ(AboveNegative.Pitch, -90.0);
}

TEST(QuatTests, RotatorRoundTripIsClose)
{
	const FRotator Source(10, 20, 30);
	const FRotator Back = Source.Quaternion().Rotator();
	EXPECT_NEAR(Back.Pitch, 10.0, 1e-3);
	EXPECT_NEAR(Back.Yaw, 20.0, 1e-3);
	EXPECT_NEAR(Back.Roll, 30.0, 1e-3);
	const FRotator Negative(-45, -120, 170);
	EXPECT_TRUE(Negative.Quaternion().Rotator().Equals(Negative, 1e-3));
}

TEST(QuatTests, EulerIsRollPitchYaw)
{
	const FVector Euler = FRotator(10, 20, 30).Quaternion().Euler();
	EXPECT_NEAR(Euler.X, 30.0, 1e-3);
	EXPECT_NEAR(Euler.Y, 10.0, 1e-3);
	EXPECT_NEAR(Euler.Z, 20.0, 1e-3);
	ExpectQuatNear(FQuat::MakeFromEuler(FVector(30, 10, 20)), FRotator(10, 20, 30).Quaternion(), 1e-12);
}

TEST(QuatTests, RotatorToQuaternionSigns)
{
	// Positive pitch, yaw and roll in the engine's left-handed frame.
	ExpectQuatNear(FRotator(0, 90, 0).Quaternion(), FQuat(0, 0, std::sqrt(0.5), std::sqrt(0.5)), 1e-7);
	ExpectQuatNear(FRotator(90, 0, 0).Quaternion(), FQuat(0, -std::sqrt(0.5), 0, std::sqrt(0.5)), 1e-7);
	ExpectQuatNear(FRotator(0, 0, 90).Quaternion(), FQuat(-std::sqrt(0.5), 0, 0, std::sqrt(0.5)), 1e-7);
}

TEST(QuatTests, ProductComposesRotations)
{
	const FQuat Quarter = AboutAxis(0, 0, 1, 90);
	const FQuat Half = Quarter * Quarter;
	ExpectQuatNear(Half, AboutAxis(0, 0, 1, 180), 1e-12);
	// A * B applies B first.
	const FQuat Yaw = AboutAxis(0, 0, 1, 90);
	const FQuat Roll = AboutAxis(1, 0, 0, 90);
	const FVector V(0, 1, 0);
	EXPECT_TRUE((Yaw * Roll).RotateVector(V).Equals(Yaw.RotateVector(Roll.RotateVector(V)), 1e-12));
}

TEST(QuatTests, RotateAndUnrotateVectors)
{
	const FQuat Yaw = AboutAxis(0, 0, 1, 90);
	EXPECT_TRUE(Yaw.RotateVector(FVector(1, 0, 0)).Equals(FVector(0, 1, 0), 1e-12));
	EXPECT_TRUE(Yaw.UnrotateVector(FVector(0, 1, 0)).Equals(FVector(1, 0, 0), 1e-12));
	EXPECT_TRUE((Yaw * FVector(0, 2, 0)).Equals(FVector(-2, 0, 0), 1e-12));
	EXPECT_TRUE(Yaw.GetForwardVector().Equals(FVector(0, 1, 0), 1e-12));
	EXPECT_TRUE(Yaw.Inverse().RotateVector(FVector(0, 1, 0)).Equals(FVector(1, 0, 0), 1e-12));
}

TEST(QuatTests, SizeAndNormalisation)
{
	FQuat Q(1, 2, 2, 4);
	EXPECT_DOUBLE_EQ(Q.SizeSquared(), 25.0);
	EXPECT_DOUBLE_EQ(Q.Size(), 5.0);
	EXPECT_FALSE(Q.IsNormalized());
	const FQuat N = Q.GetNormalized();
	EXPECT_NEAR(N.Size(), 1.0, 1e-15);
	EXPECT_DOUBLE_EQ(N.W, 0.8);
	Q.Normalize();
	EXPECT_EQ(Q, N);
	EXPECT_TRUE(Q.IsNormalized());
}

TEST(QuatTests, TinyQuaternionNormalisesToIdentity)
{
	FQuat Tiny(1e-5, 0, 0, 0);
	Tiny.Normalize();
	EXPECT_EQ(Tiny, FQuat::Identity);
	EXPECT_EQ(FQuat(0, 0, 0, 0).GetNormalized(), FQuat::Identity);
}

TEST(QuatTests, EqualsTreatsOppositeSignsAsTheSameRotation)
{
	const FQuat Q = AboutAxis(0, 1, 0, 30);
	EXPECT_TRUE(Q.Equals(-Q));
	EXPECT_TRUE(Q.Equals(Q * 1.00001, 1e-4));
	EXPECT_FALSE(Q.Equals(AboutAxis(0, 1, 0, 31)));
	EXPECT_FALSE(Q == -Q);
}

TEST(QuatTests, SlerpHalfwayIsHalfTheAngle)
{
	const FQuat Result = FQuat::Slerp(FQuat::Identity, AboutAxis(0, 0, 1, 90), 0.5);
	ExpectQuatNear(Result, AboutAxis(0, 0, 1, 45), 1e-12);
	EXPECT_NEAR(Result.Size(), 1.0, 1e-15);
}

TEST(QuatTests, SlerpEndsAreTheInputs)
{
	const FQuat A = AboutAxis(1, 0, 0, 20);
	const FQuat B = AboutAxis(0, 1, 0, 70);
	ExpectQuatNear(FQuat::Slerp(A, B, 0.0), A, 1e-12);
	ExpectQuatNear(FQuat::Slerp(A, B, 1.0), B, 1e-12);
}

TEST(QuatTests, SlerpTakesTheShorterArc)
{
	const FQuat Q = AboutAxis(0, 0, 1, 40);
	// q and -q are the same rotation: the halfway point is q itself, not a detour.
	ExpectQuatNear(FQuat::Slerp(Q, -Q, 0.5), Q, 1e-12);
	// Opposite hemispheres: the result follows the short way and stays on q's side.
	const FQuat Far = -AboutAxis(0, 0, 1, 80);
	ExpectQuatNear(FQuat::Slerp(Q, Far, 0.5), AboutAxis(0, 0, 1, 60), 1e-12);
}

TEST(QuatTests, SlerpOfNearlyEqualRotationsBlendsLinearly)
{
	// Within about 0.8 degrees the engine blends linearly and only the normalised version is unit length.
	const FQuat A = FQuat::Identity;
	const FQuat B = AboutAxis(0, 0, 1, 1.0);
	const FQuat Raw = FQuat::Slerp_NotNormalized(A, B, 0.5);
	ExpectQuatNear(Raw, FQuat(0, 0, 0.5 * B.Z, 0.5 * (1.0 + B.W)), 1e-15);
	EXPECT_LT(Raw.Size(), 1.0);
	EXPECT_NEAR(FQuat::Slerp(A, B, 0.5).Size(), 1.0, 1e-15);
}

TEST(QuatTests, SlerpNotNormalizedOfUnitInputsIsUnitLengthOnTheArc)
{
	const FQuat Raw = FQuat::Slerp_NotNormalized(AboutAxis(1, 0, 0, 10), AboutAxis(1, 0, 0, 110), 0.25);
	EXPECT_NEAR(Raw.Size(), 1.0, 1e-12);
	ExpectQuatNear(Raw, AboutAxis(1, 0, 0, 35), 1e-12);
}

TEST(QuatTests, FindBetweenNormals)
{
	const FQuat Q = FQuat::FindBetweenNormals(FVector(1, 0, 0), FVector(0, 1, 0));
	EXPECT_TRUE(Q.RotateVector(FVector(1, 0, 0)).Equals(FVector(0, 1, 0), 1e-12));
	const FQuat Opposite = FQuat::FindBetweenNormals(FVector(1, 0, 0), FVector(-1, 0, 0));
	EXPECT_TRUE(Opposite.RotateVector(FVector(1, 0, 0)).Equals(FVector(-1, 0, 0), 1e-12));
}

TEST(QuatTests, AngularDistance)
{
	EXPECT_NEAR(FQuat::Identity.AngularDistance(AboutAxis(0, 1, 0, 60)), UE_DOUBLE_PI / 3.0, 1e-7);
	EXPECT_NEAR(AboutAxis(0, 1, 0, 60).AngularDistance(-AboutAxis(0, 1, 0, 60)), 0.0, 1e-7);
}

TEST(QuatTests, ToStringShowsNineDecimals)
{
	EXPECT_TRUE(FQuat::Identity.ToString().Equals(TEXT("X=0.000000000 Y=0.000000000 Z=0.000000000 W=1.000000000")));
}
