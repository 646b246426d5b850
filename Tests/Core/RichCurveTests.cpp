#include "CoreMinimal.h"

#include "Curves/RichCurve.h"

#include <gtest/gtest.h>

namespace
{
FRichCurve MakeCurve(std::initializer_list<std::pair<float, float>> Keys)
{
	FRichCurve Curve;
	for (const auto& Key : Keys)
	{
		Curve.UpdateOrAddKey(Key.first, Key.second);
	}
	return Curve;
}
} // namespace

TEST(RichCurveTests, EmptyCurveGivesTheDefault)
{
	FRichCurve Curve;
	EXPECT_EQ(Curve.GetNumKeys(), 0);
	EXPECT_EQ(Curve.Eval(1.f), 0.f);
	EXPECT_EQ(Curve.Eval(1.f, 7.f), 7.f);
	Curve.SetDefaultValue(3.f);
	EXPECT_EQ(Curve.Eval(1.f, 7.f), 3.f);
	Curve.ClearDefaultValue();
	EXPECT_EQ(Curve.Eval(1.f, 7.f), 7.f);
}

TEST(RichCurveTests, LinearBetweenKeys)
{
	const FRichCurve Curve = MakeCurve({{0.f, 0.f}, {1.f, 10.f}, {3.f, -10.f}});
	EXPECT_FLOAT_EQ(Curve.Eval(0.5f), 5.f);
	EXPECT_FLOAT_EQ(Curve.Eval(0.25f), 2.5f);
	EXPECT_FLOAT_EQ(Curve.Eval(1.f), 10.f);
	EXPECT_FLOAT_EQ(Curve.Eval(2.f), 0.f);
	EXPECT_FLOAT_EQ(Curve.Eval(2.5f), -5.f);
}

TEST(RichCurveTests, OutsideTheKeysHoldsTheEndValues)
{
	const FRichCurve Curve = MakeCurve({{1.f, 4.f}, {2.f, 8.f}});
	EXPECT_EQ(Curve.Eval(0.f), 4.f);
	EXPECT_EQ(Curve.Eval(-100.f), 4.f);
	EXPECT_EQ(Curve.Eval(2.f), 8.f);
	EXPECT_EQ(Curve.Eval(50.f), 8.f);
}

TEST(RichCurveTests, SingleKeyIsConstant)
{
	const FRichCurve Curve = MakeCurve({{5.f, 2.f}});
	EXPECT_EQ(Curve.Eval(0.f), 2.f);
	EXPECT_EQ(Curve.Eval(5.f), 2.f);
	EXPECT_EQ(Curve.Eval(9.f), 2.f);
}

TEST(RichCurveTests, UpdateWithinToleranceReplacesTheValueAndKeepsTheTime)
{
	FRichCurve Curve = MakeCurve({{0.f, 1.f}, {1.f, 2.f}});
	Curve.UpdateOrAddKey(1.00005f, 9.f);
	ASSERT_EQ(Curve.GetNumKeys(), 2);
	EXPECT_EQ(Curve.GetConstRefOfKeys()[1].Time, 1.f);
	EXPECT_EQ(Curve.GetConstRefOfKeys()[1].Value, 9.f);
	Curve.UpdateOrAddKey(0.f, 3.f);
	EXPECT_EQ(Curve.GetNumKeys(), 2);
	EXPECT_EQ(Curve.GetConstRefOfKeys()[0].Value, 3.f);
}

TEST(RichCurveTests, UpdateOutsideToleranceAddsInTimeOrder)
{
	FRichCurve Curve = MakeCurve({{0.f, 0.f}, {1.f, 1.f}});
	Curve.UpdateOrAddKey(0.5f, 5.f);
	Curve.UpdateOrAddKey(-1.f, -1.f);
	Curve.UpdateOrAddKey(1.0002f, 7.f);
	const TArray<FRichCurveKey>& Keys = Curve.GetConstRefOfKeys();
	ASSERT_EQ(Keys.Num(), 5);
	EXPECT_EQ(Keys[0].Time, -1.f);
	EXPECT_EQ(Keys[1].Time, 0.f);
	EXPECT_EQ(Keys[2].Time, 0.5f);
	EXPECT_EQ(Keys[3].Time, 1.f);
	EXPECT_EQ(Keys[4].Time, 1.0002f);
	EXPECT_EQ(Keys[2].InterpMode, RCIM_Linear);
}

TEST(RichCurveTests, CustomToleranceWidensTheMatch)
{
	FRichCurve Curve = MakeCurve({{1.f, 1.f}});
	Curve.UpdateOrAddKey(1.2f, 5.f, false, 0.5f);
	EXPECT_EQ(Curve.GetNumKeys(), 1);
	EXPECT_EQ(Curve.Eval(1.f), 5.f);
	Curve.UpdateOrAddKey(1.2f, 6.f, false, 0.f);
	EXPECT_EQ(Curve.GetNumKeys(), 2);
}

TEST(RichCurveTests, RisingKeysAreAppended)
{
	FRichCurve Curve;
	for (int32 Frame = 0; Frame < 300; ++Frame)
	{
		Curve.UpdateOrAddKey(float(Frame) / 30.f, float(Frame));
	}
	ASSERT_EQ(Curve.GetNumKeys(), 300);
	for (int32 Frame = 1; Frame < 300; ++Frame)
	{
		EXPECT_LT(Curve.GetConstRefOfKeys()[Frame - 1].Time, Curve.GetConstRefOfKeys()[Frame].Time);
	}
	EXPECT_NEAR(Curve.Eval(1.5f / 30.f), 1.5f, 1e-4f);
	EXPECT_NEAR(Curve.Eval(150.5f / 30.f), 150.5f, 1e-3f);
}

TEST(RichCurveTests, ConstantKeysHoldUntilTheNextKey)
{
	FRichCurve Curve = MakeCurve({{0.f, 1.f}, {1.f, 3.f}});
	Curve.SetKeyInterpMode(Curve.GetKeyHandle(0), RCIM_Constant);
	EXPECT_EQ(Curve.Eval(0.99f), 1.f);
	EXPECT_EQ(Curve.Eval(1.f), 3.f);
}

TEST(RichCurveTests, CubicKeysFollowTheirTangents)
{
	FRichCurve Curve;
	TArray<FRichCurveKey> Keys;
	Keys.Add(FRichCurveKey(0.f, 0.f, 0.f, 0.f, RCIM_Cubic));
	Keys.Add(FRichCurveKey(1.f, 1.f, 0.f, 0.f, RCIM_Cubic));
	Curve.SetKeys(Keys);
	// Flat tangents give the smooth-step shape: halfway is halfway, a quarter is below linear.
	EXPECT_FLOAT_EQ(Curve.Eval(0.5f), 0.5f);
	EXPECT_FLOAT_EQ(Curve.Eval(0.25f), 0.15625f);
}

TEST(RichCurveTests, LinearExtrapolationWhenAsked)
{
	FRichCurve Curve = MakeCurve({{0.f, 0.f}, {1.f, 2.f}});
	Curve.PreInfinityExtrap = RCCE_Linear;
	Curve.PostInfinityExtrap = RCCE_Linear;
	EXPECT_FLOAT_EQ(Curve.Eval(-1.f), -2.f);
	EXPECT_FLOAT_EQ(Curve.Eval(2.f), 4.f);
}

TEST(RichCurveTests, CopiesAreDeep)
{
	FRichCurve Curve = MakeCurve({{0.f, 1.f}});
	FRichCurve Copy = Curve;
	Copy.UpdateOrAddKey(0.f, 5.f);
	Copy.UpdateOrAddKey(1.f, 6.f);
	EXPECT_EQ(Curve.GetNumKeys(), 1);
	EXPECT_EQ(Curve.Eval(0.f), 1.f);
	TArray<FRichCurveKey> Keys = Curve.GetCopyOfKeys();
	Keys[0].Value = 100.f;
	EXPECT_EQ(Curve.Eval(0.f), 1.f);
	Curve = Copy;
	EXPECT_EQ(Curve.GetNumKeys(), 2);
}

TEST(RichCurveTests, ResetRemovesEveryKey)
{
	FRichCurve Curve = MakeCurve({{0.f, 1.f}, {1.f, 2.f}});
	Curve.Reset();
	EXPECT_EQ(Curve.GetNumKeys(), 0);
	EXPECT_EQ(Curve.Eval(0.f, -1.f), -1.f);
	Curve.UpdateOrAddKey(2.f, 3.f);
	EXPECT_EQ(Curve.Eval(0.f), 3.f);
}

TEST(RichCurveTests, HandlesSurviveInsertionsBeforeTheirKey)
{
	FRichCurve Curve;
	const FKeyHandle Late = Curve.AddKey(5.f, 50.f);
	Curve.AddKey(1.f, 10.f);
	Curve.AddKey(2.f, 20.f);
	EXPECT_EQ(Curve.GetKeyValue(Late), 50.f);
	EXPECT_EQ(Curve.GetKeyTime(Late), 5.f);
	EXPECT_EQ(Curve.GetIndexSafe(Late), 2);
	EXPECT_EQ(Curve.FindKey(2.f), Curve.GetKeyHandle(1));
	EXPECT_FALSE(Curve.FindKey(3.f).IsValid());
	Curve.DeleteKey(Curve.FindKey(1.f));
	EXPECT_EQ(Curve.GetNumKeys(), 2);
	EXPECT_EQ(Curve.GetIndexSafe(Late), 1);
	Curve.DeleteKey(FKeyHandle::Invalid());
	EXPECT_EQ(Curve.GetNumKeys(), 2);
}

TEST(RichCurveTests, RangesOfTimeAndValue)
{
	const FRichCurve Curve = MakeCurve({{-1.f, 5.f}, {2.f, -3.f}, {4.f, 1.f}});
	float Min = 0.f, Max = 0.f;
	Curve.GetTimeRange(Min, Max);
	EXPECT_EQ(Min, -1.f);
	EXPECT_EQ(Max, 4.f);
	Curve.GetValueRange(Min, Max);
	EXPECT_EQ(Min, -3.f);
	EXPECT_EQ(Max, 5.f);
	FRichCurve Empty;
	Empty.GetTimeRange(Min, Max);
	EXPECT_EQ(Min, 0.f);
	EXPECT_EQ(Max, 0.f);
}

TEST(RichCurveTests, UnwindRotationKeepsAnglesContinuous)
{
	FRichCurve Curve;
	Curve.AddKey(0.f, 170.f);
	Curve.AddKey(1.f, -170.f, true);
	EXPECT_FLOAT_EQ(Curve.GetConstRefOfKeys()[1].Value, 190.f);
	Curve.UpdateOrAddKey(1.f, -530.f, true);
	EXPECT_FLOAT_EQ(Curve.GetConstRefOfKeys()[1].Value, 190.f);
}

TEST(RichCurveTests, AppendedKeysKeepWorkingHandlesAfterReserve)
{
	FRichCurve Curve;
	Curve.Keys.Reserve(100);
	TArray<FKeyHandle> Added;
	for (int32 Frame = 0; Frame < 100; ++Frame)
	{
		Added.Add(Curve.UpdateOrAddKey(float(Frame) * 0.1f, float(Frame)));
	}
	ASSERT_EQ(Curve.GetNumKeys(), 100);
	for (int32 Frame = 0; Frame < 100; ++Frame)
	{
		EXPECT_EQ(Curve.GetIndexSafe(Added[Frame]), Frame);
	}
	// A repeat of the last time replaces instead of appending.
	EXPECT_EQ(Curve.UpdateOrAddKey(99.f * 0.1f, -1.f), Added.Last());
	EXPECT_EQ(Curve.GetNumKeys(), 100);
	EXPECT_EQ(Curve.Eval(99.f * 0.1f), -1.f);
}

TEST(RichCurveTests, KeysAddedThroughThePublicArrayStillEvaluate)
{
	FRichCurve Curve;
	Curve.Keys.Add(FRichCurveKey(0.f, 0.f));
	Curve.Keys.Add(FRichCurveKey(1.f, 2.f));
	EXPECT_FLOAT_EQ(Curve.Eval(0.5f), 1.f);
	Curve.UpdateOrAddKey(2.f, 4.f);
	EXPECT_EQ(Curve.GetNumKeys(), 3);
	EXPECT_TRUE(Curve.GetKeyHandle(2).IsValid());
	EXPECT_FLOAT_EQ(Curve.Eval(1.5f), 3.f);
}
