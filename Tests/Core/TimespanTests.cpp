#include "CoreMinimal.h"

#include "Misc/Timespan.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

TEST(TimespanTests, PartsAndTotals)
{
	const FTimespan Span(1, 2, 3, 4, 5000000);
	EXPECT_EQ(Span.GetDays(), 1);
	EXPECT_EQ(Span.GetHours(), 2);
	EXPECT_EQ(Span.GetMinutes(), 3);
	EXPECT_EQ(Span.GetSeconds(), 4);
	EXPECT_EQ(Span.GetFractionMilli(), 5);
	EXPECT_EQ(Span.GetFractionMicro(), 5000);
	EXPECT_EQ(Span.GetFractionNano(), 5000000);
	EXPECT_EQ(Span.GetTicks(), 937840050000LL);
	EXPECT_DOUBLE_EQ(Span.GetTotalMicroseconds(), 93784005000.0);
	EXPECT_DOUBLE_EQ(Span.GetTotalMilliseconds(), 93784005.0);
	EXPECT_DOUBLE_EQ(Span.GetTotalSeconds(), 93784.005);
	EXPECT_DOUBLE_EQ(FTimespan(0, 30, 0).GetTotalHours(), 0.5);
	EXPECT_DOUBLE_EQ(FTimespan(12, 0, 0).GetTotalDays(), 0.5);
}

TEST(TimespanTests, FromUnitsRoundsToTicks)
{
	EXPECT_EQ(FTimespan::FromSeconds(1.5).GetTicks(), 15000000);
	EXPECT_EQ(FTimespan::FromMilliseconds(0.00005).GetTicks(), 1);
	EXPECT_EQ(FTimespan::FromMicroseconds(3).GetTicks(), 30);
	EXPECT_EQ(FTimespan::FromMinutes(2).GetTicks(), 2 * ETimespan::TicksPerMinute);
	EXPECT_EQ(FTimespan::FromHours(-1).GetTicks(), -ETimespan::TicksPerHour);
	EXPECT_EQ(FTimespan::FromDays(1), FTimespan(1, 0, 0, 0));
}

TEST(TimespanTests, OutOfRangeValuesSaturate)
{
	EXPECT_EQ(FTimespan::FromDays(1e300), FTimespan::MaxValue());
	EXPECT_EQ(FTimespan::FromDays(-1e300), FTimespan::MinValue());
	EXPECT_EQ(FTimespan::FromSeconds(std::numeric_limits<double>::quiet_NaN()), FTimespan::MaxValue());
}

TEST(TimespanTests, ArithmeticAndComparison)
{
	const FTimespan A(0, 1, 0);
	const FTimespan B(0, 0, 30);
	EXPECT_EQ(A + B, FTimespan(0, 1, 30));
	EXPECT_EQ(A - B, FTimespan(0, 0, 30));
	EXPECT_EQ(-A, FTimespan(0, -1, 0));
	EXPECT_EQ(A * 2.0, FTimespan(0, 2, 0));
	EXPECT_TRUE(B < A);
	EXPECT_EQ((-A).GetDuration(), A);
	EXPECT_TRUE(FTimespan::Zero().IsZero());
}

TEST(TimespanTests, ToStringFormats)
{
	EXPECT_TRUE(FTimespan(1, 2, 3).ToString().Equals(TEXT("01:02:03.000")));
	EXPECT_TRUE(FTimespan(2, 1, 2, 3, 4000000).ToString().Equals(TEXT("2.01:02:03.004")));
	EXPECT_TRUE((-FTimespan(1, 2, 3)).ToString().Equals(TEXT("-01:02:03.000")));
	EXPECT_TRUE(FTimespan(0, 0, 5).ToString(TEXT("%N%s|%u|%t|%D|%%")).Equals(TEXT("+05|000000|0000000|00000000|%")));
}
