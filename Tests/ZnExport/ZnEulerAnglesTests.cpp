// The Euler splits the exports write, rebuilt with the test's own axis rotations in the declared
// order: every rotation must come back, including at gimbal lock and half turns.
#include "ZnEulerAngles.h"
#include "ZnExportTestHelpers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace ZnExportTest;

namespace
{
std::vector<FTestQuat> Rotations()
{
	std::vector<FTestQuat> Out = {{0, 0, 0, 1}, {1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0},
		// Exactly +-90 degrees about X, alone and combined with turns about Z and Y.
		AxisRotation('X', 90), AxisRotation('X', -90),
		Multiply(Multiply(AxisRotation('Z', 30), AxisRotation('X', 90)), AxisRotation('Y', 40)),
		Multiply(Multiply(AxisRotation('Y', -70), AxisRotation('X', -90)), AxisRotation('Z', 15)),
		// A hair away from the lock.
		AxisRotation('X', 89.9999), Multiply(AxisRotation('Z', 170), AxisRotation('X', -89.99999))};
	// A spread of arbitrary rotations.
	for (int Step = 0; Step < 200; ++Step)
	{
		const double A = Step * 0.731, B = Step * 1.913, C = Step * 2.417;
		FTestQuat Q{std::sin(A), std::cos(B) * 0.7, std::sin(C) * 0.4, std::cos(A + B)};
		const double Length = std::sqrt(Q.X * Q.X + Q.Y * Q.Y + Q.Z * Q.Z + Q.W * Q.W);
		Out.push_back({Q.X / Length, Q.Y / Length, Q.Z / Length, Q.W / Length});
	}
	return Out;
}
} // namespace

TEST(ZnEulerAnglesTest, ZxyDegreesRebuildEveryRotation)
{
	for (const FTestQuat& Q : Rotations())
	{
		const FVector Angles = FZnEulerAngles::ZxyDegrees(FQuat(Q.X, Q.Y, Q.Z, Q.W));
		const FTestQuat Rebuilt =
			Multiply(Multiply(AxisRotation('Z', Angles.X), AxisRotation('X', Angles.Y)), AxisRotation('Y', Angles.Z));
		EXPECT_LT(RotationDistance(Rebuilt, Q), 1e-9) << Q.X << " " << Q.Y << " " << Q.Z << " " << Q.W;
		EXPECT_LE(std::fabs(Angles.Y), 90.0);
		EXPECT_LE(std::fabs(Angles.X), 180.0);
		EXPECT_LE(std::fabs(Angles.Z), 180.0);
	}
}

TEST(ZnEulerAnglesTest, ZxyDegreesOfSimpleTurns)
{
	const FVector AboutZ = FZnEulerAngles::ZxyDegrees(FQuat(0, 0, std::sin(0.25), std::cos(0.25)));
	EXPECT_NEAR(AboutZ.X, 28.6478897565412, 1e-9);
	EXPECT_NEAR(AboutZ.Y, 0.0, 1e-12);
	EXPECT_NEAR(AboutZ.Z, 0.0, 1e-12);
	const FVector AboutY = FZnEulerAngles::ZxyDegrees(FQuat(0, std::sin(-0.5), 0, std::cos(-0.5)));
	EXPECT_NEAR(AboutY.Z, -57.2957795130823, 1e-9);
	// At the lock the last angle is 0 and the first carries the turn.
	const FTestQuat Locked = Multiply(AxisRotation('Z', 30), AxisRotation('X', 90));
	const FVector Angles = FZnEulerAngles::ZxyDegrees(FQuat(Locked.X, Locked.Y, Locked.Z, Locked.W));
	EXPECT_NEAR(Angles.X, 30.0, 1e-6);
	EXPECT_NEAR(Angles.Y, 90.0, 1e-6);
	EXPECT_EQ(Angles.Z, 0.0);
}

TEST(ZnEulerAnglesTest, YxzRadiansRebuildEveryRotation)
{
	const double Degrees = 180.0 / 3.14159265358979323846;
	for (const FTestQuat& Q : Rotations())
	{
		const FVector Angles = FZnEulerAngles::YxzRadians(FQuat(Q.X, Q.Y, Q.Z, Q.W));
		const FTestQuat Rebuilt =
			Multiply(Multiply(AxisRotation('Y', Angles.X * Degrees), AxisRotation('X', Angles.Y * Degrees)),
				AxisRotation('Z', Angles.Z * Degrees));
		EXPECT_LT(RotationDistance(Rebuilt, Q), 1e-9);
		EXPECT_LE(std::fabs(Angles.Y), 3.14159265358979323846 / 2 + 1e-12);
	}
}
