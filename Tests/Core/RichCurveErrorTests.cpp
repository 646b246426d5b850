#include "CoreMinimal.h"

#include "Curves/RichCurve.h"

#include <gtest/gtest.h>

#include <limits>

TEST(RichCurveErrorTests, KeysAtTheSameTimeEvaluateWithoutDividingByZero)
{
	FRichCurve Curve;
	Curve.AddKey(1.f, 1.f);
	Curve.AddKey(1.f, 2.f);
	Curve.AddKey(2.f, 4.f);
	EXPECT_FALSE(FMath::IsNaN(Curve.Eval(1.f)));
	EXPECT_FALSE(FMath::IsNaN(Curve.Eval(1.5f)));
	// A key added at an existing time goes before the keys at that time, so the segment from
	// 1 to 2 starts at the first key that was added there.
	EXPECT_EQ(Curve.GetConstRefOfKeys()[0].Value, 2.f);
	EXPECT_FLOAT_EQ(Curve.Eval(1.5f), 2.5f);
}

TEST(RichCurveErrorTests, NaNTimeAddsNoKey)
{
	FRichCurve Curve;
	Curve.UpdateOrAddKey(0.f, 1.f);
	Curve.UpdateOrAddKey(1.f, 2.f);
	const float NaN = std::numeric_limits<float>::quiet_NaN();
	EXPECT_FALSE(Curve.UpdateOrAddKey(NaN, 5.f).IsValid());
	EXPECT_FALSE(Curve.AddKey(NaN, 5.f).IsValid());
	EXPECT_EQ(Curve.GetNumKeys(), 2);
	EXPECT_EQ(Curve.Eval(-1.f), 1.f);
	EXPECT_EQ(Curve.Eval(0.5f), 1.5f);
}

TEST(RichCurveErrorTests, NaNSampleTimeDoesNotCrash)
{
	FRichCurve Curve;
	Curve.UpdateOrAddKey(0.f, 1.f);
	Curve.UpdateOrAddKey(1.f, 2.f);
	Curve.UpdateOrAddKey(2.f, 3.f);
	const float Value = Curve.Eval(std::numeric_limits<float>::quiet_NaN());
	EXPECT_TRUE(Value == 1.f || Value == 2.f || Value == 3.f || FMath::IsNaN(Value));
}

TEST(RichCurveErrorTests, UnknownHandlesAreIgnored)
{
	FRichCurve Curve;
	Curve.AddKey(0.f, 1.f);
	const FKeyHandle Stranger;
	EXPECT_FALSE(Curve.IsKeyHandleValid(Stranger));
	EXPECT_EQ(Curve.GetKeyValue(Stranger), 0.f);
	Curve.SetKeyValue(Stranger, 9.f);
	EXPECT_EQ(Curve.Eval(0.f), 1.f);
}

TEST(RichCurveErrorTests, InfiniteAnglesDoNotHangTheUnwinding)
{
	FRichCurve Curve;
	Curve.AddKey(0.f, 0.f);
	Curve.AddKey(1.f, std::numeric_limits<float>::infinity(), true);
	Curve.AddKey(2.f, 1e30f, true);
	EXPECT_EQ(Curve.GetNumKeys(), 3);
}
