#include "ZnDM_CoordinateTools.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(ZnDM_CoordinateToolsTests, PositionSwapsAxesAndTurnsMetresIntoCentimetres)
{
	const FVector P = ZnDM_CoordinateTools::ConvertUnityPos(1.0f, 2.0f, 3.0f);
	EXPECT_EQ(P.X, 300.0);
	EXPECT_EQ(P.Y, 100.0);
	EXPECT_EQ(P.Z, 200.0);
}

TEST(ZnDM_CoordinateToolsTests, PositionIsMultipliedInSinglePrecisionThenWidened)
{
	const FVector P = ZnDM_CoordinateTools::ConvertUnityPos(0.01f, 0.02f, 0.03f);
	EXPECT_EQ(P.X, double(0.03f * 100.0f));
	EXPECT_EQ(P.Y, double(0.01f * 100.0f));
	EXPECT_EQ(P.Z, double(0.02f * 100.0f));
	// The double product would differ in the last bits.
	EXPECT_NE(P.X, double(0.03f) * 100.0);
}

TEST(ZnDM_CoordinateToolsTests, RotationSwapsAxesKeepsWAndDoesNotNormalise)
{
	const FQuat Q = ZnDM_CoordinateTools::ConvertUnityRot(0.1f, 0.2f, 0.3f, 0.9f);
	EXPECT_EQ(Q.X, double(0.3f));
	EXPECT_EQ(Q.Y, double(0.1f));
	EXPECT_EQ(Q.Z, double(0.2f));
	EXPECT_EQ(Q.W, double(0.9f));
	const FQuat Long = ZnDM_CoordinateTools::ConvertUnityRot(0.0f, 0.0f, 0.0f, 2.0f);
	EXPECT_EQ(Long.W, 2.0);
}

TEST(ZnDM_CoordinateToolsTests, ScaleSwapsAxesWithoutUnitChange)
{
	const FVector S = ZnDM_CoordinateTools::ConvertUnityScale(1.0f, 2.0f, 3.0f);
	EXPECT_EQ(S.X, 3.0);
	EXPECT_EQ(S.Y, 1.0);
	EXPECT_EQ(S.Z, 2.0);
}

TEST(ZnDM_CoordinateToolsTests, ToUnityRotUsesTheSameSwapAndNegatesTheVectorPart)
{
	const FQuat Q = ZnDM_CoordinateTools::ToUnityRot(0.1f, 0.2f, 0.3f, 0.9f);
	EXPECT_EQ(Q.X, -double(0.3f));
	EXPECT_EQ(Q.Y, -double(0.1f));
	EXPECT_EQ(Q.Z, -double(0.2f));
	EXPECT_EQ(Q.W, double(0.9f));
}

TEST(ZnDM_CoordinateToolsTests, ToUnityRotIsNotTheInverseOfConvertUnityRot)
{
	const FQuat There = ZnDM_CoordinateTools::ConvertUnityRot(0.1f, 0.2f, 0.3f, 0.9f);
	const FQuat Back = ZnDM_CoordinateTools::ToUnityRot(float(There.X), float(There.Y), float(There.Z), float(There.W));
	// A true inverse would give back (0.1, 0.2, 0.3); the swap is applied a second time instead.
	EXPECT_EQ(Back.X, -double(0.2f));
	EXPECT_EQ(Back.Y, -double(0.3f));
	EXPECT_EQ(Back.Z, -double(0.1f));
}

TEST(ZnDM_CoordinateToolsTests, ToUnityRotOfIdentityGivesNegativeZeros)
{
	const FQuat Q = ZnDM_CoordinateTools::ToUnityRot(0.0f, 0.0f, 0.0f, 1.0f);
	EXPECT_EQ(Q.X, 0.0);
	EXPECT_TRUE(std::signbit(Q.X));
	EXPECT_TRUE(std::signbit(Q.Y));
	EXPECT_TRUE(std::signbit(Q.Z));
	EXPECT_EQ(Q.W, 1.0);
	EXPECT_FALSE(std::signbit(Q.W));
}

TEST(ZnDM_CoordinateToolsTests, NegativeZeroInputsSurviveTheConversions)
{
	const FVector P = ZnDM_CoordinateTools::ConvertUnityPos(-0.0f, 0.0f, -0.0f);
	EXPECT_TRUE(std::signbit(P.X));
	EXPECT_TRUE(std::signbit(P.Y));
	EXPECT_FALSE(std::signbit(P.Z));
	const FQuat Q = ZnDM_CoordinateTools::ConvertUnityRot(-0.0f, 0.0f, 0.0f, 1.0f);
	EXPECT_TRUE(std::signbit(Q.Y));
}
