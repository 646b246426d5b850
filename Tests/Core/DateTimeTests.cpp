#include "CoreMinimal.h"

#include "Misc/DateTime.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

#include <ctime>

TEST(DateTimeTests, TicksCountFromTheYearOne)
{
	EXPECT_EQ(FDateTime(1, 1, 1).GetTicks(), 0);
	EXPECT_EQ(FDateTime(1, 1, 2).GetTicks(), ETimespan::TicksPerDay);
	EXPECT_EQ(FDateTime(1970, 1, 1).GetTicks(), 621355968000000000LL);
	EXPECT_EQ(FDateTime(2024, 1, 2, 3, 4, 5, 678).GetTicks(),
		FDateTime(2024, 1, 2).GetTicks() + 3 * ETimespan::TicksPerHour + 4 * ETimespan::TicksPerMinute +
			5 * ETimespan::TicksPerSecond + 678 * ETimespan::TicksPerMillisecond);
	EXPECT_EQ(FDateTime(2000, 1, 1).GetTicks(), 630822816000000000LL);
}

TEST(DateTimeTests, PartsReadBack)
{
	const FDateTime Date(2024, 1, 2, 3, 4, 5, 678);
	EXPECT_EQ(Date.GetYear(), 2024);
	EXPECT_EQ(Date.GetMonth(), 1);
	EXPECT_EQ(Date.GetDay(), 2);
	EXPECT_EQ(Date.GetHour(), 3);
	EXPECT_EQ(Date.GetMinute(), 4);
	EXPECT_EQ(Date.GetSecond(), 5);
	EXPECT_EQ(Date.GetMillisecond(), 678);
	EXPECT_EQ(Date.GetDayOfYear(), 2);
	EXPECT_EQ(Date.GetMonthOfYear(), EMonthOfYear::January);
}

TEST(DateTimeTests, EveryDayOfSeveralYearsRoundTrips)
{
	for (int32 Year : {1, 4, 100, 400, 1900, 1999, 2000, 2023, 2024, 2100, 9999})
	{
		for (int32 Month = 1; Month <= 12; ++Month)
		{
			for (int32 Day = 1; Day <= FDateTime::DaysInMonth(Year, Month); ++Day)
			{
				int32 Y = 0, M = 0, D = 0;
				FDateTime(Year, Month, Day, 23, 59, 59, 999).GetDate(Y, M, D);
				ASSERT_EQ(Y, Year);
				ASSERT_EQ(M, Month);
				ASSERT_EQ(D, Day);
			}
		}
	}
}

TEST(DateTimeTests, DayOfWeekCountsFromMonday)
{
	EXPECT_EQ(FDateTime(2024, 1, 2).GetDayOfWeek(), EDayOfWeek::Tuesday);
	EXPECT_EQ(int32(FDateTime(2024, 1, 2).GetDayOfWeek()), 1);
	EXPECT_EQ(FDateTime(2024, 1, 1).GetDayOfWeek(), EDayOfWeek::Monday);
	EXPECT_EQ(FDateTime(2024, 1, 7, 23, 59).GetDayOfWeek(), EDayOfWeek::Sunday);
	EXPECT_EQ(FDateTime(1970, 1, 1).GetDayOfWeek(), EDayOfWeek::Thursday);
	EXPECT_EQ(FDateTime(1, 1, 1).GetDayOfWeek(), EDayOfWeek::Monday);
}

TEST(DateTimeTests, LeapYears)
{
	EXPECT_TRUE(FDateTime::IsLeapYear(2024));
	EXPECT_TRUE(FDateTime::IsLeapYear(2000));
	EXPECT_FALSE(FDateTime::IsLeapYear(1900));
	EXPECT_FALSE(FDateTime::IsLeapYear(2023));
	EXPECT_EQ(FDateTime::DaysInMonth(2024, 2), 29);
	EXPECT_EQ(FDateTime::DaysInMonth(2023, 2), 28);
	EXPECT_EQ(FDateTime::DaysInYear(2024), 366);
	EXPECT_EQ(FDateTime(2024, 12, 31).GetDayOfYear(), 366);
	EXPECT_EQ(FDateTime(2024, 3, 1).GetDayOfYear(), 61);
}

TEST(DateTimeTests, EngineFormatCodes)
{
	const FDateTime Date(2024, 1, 2, 3, 4, 5, 678);
	EXPECT_TRUE(Date.ToString(TEXT("%Y-%m-%d %H:%M:%S.%s")).Equals(TEXT("2024-01-02 03:04:05.678")));
	EXPECT_TRUE(Date.ToString().Equals(TEXT("2024.01.02-03.04.05")));
	EXPECT_TRUE(Date.ToString(TEXT("%y|%D|%h|%a|%A")).Equals(TEXT("24|002|03|am|AM")));
	const FDateTime Evening(2024, 7, 9, 21, 0, 0, 5);
	EXPECT_TRUE(Evening.ToString(TEXT("%h %a %A %s")).Equals(TEXT("09 pm PM 005")));
	EXPECT_TRUE(FDateTime(2024, 7, 9, 0, 30).ToString(TEXT("%h")).Equals(TEXT("12")));
	EXPECT_TRUE(FDateTime(2024, 7, 9, 12, 30).ToString(TEXT("%h%a")).Equals(TEXT("12pm")));
	EXPECT_TRUE(FDateTime(5, 3, 4).ToString(TEXT("%Y")).Equals(TEXT("0005")));
	EXPECT_TRUE(Date.ToIso8601().Equals(TEXT("2024-01-02T03:04:05.678Z")));
}

TEST(DateTimeTests, UnknownCodesAreCopied)
{
	const FDateTime Date(2024, 1, 2);
	EXPECT_TRUE(Date.ToString(TEXT("100%% %Q")).Equals(TEXT("100% Q")));
	EXPECT_TRUE(Date.ToString(TEXT("end%")).Equals(TEXT("end")));
	EXPECT_TRUE(Date.ToString(TEXT("")).IsEmpty());
	EXPECT_TRUE(Date.ToString(nullptr).IsEmpty());
}

TEST(DateTimeTests, DifferenceIsATimespan)
{
	const FDateTime A(2024, 1, 2, 3, 4, 5, 678);
	const FDateTime B(2024, 1, 1);
	const FTimespan Diff = A - B;
	EXPECT_EQ(Diff.GetTicks(), A.GetTicks() - B.GetTicks());
	EXPECT_EQ(Diff.GetDays(), 1);
	EXPECT_EQ(Diff.GetHours(), 3);
	EXPECT_DOUBLE_EQ(Diff.GetTotalMilliseconds(), 97445678.0);
	EXPECT_EQ(B + Diff, A);
	EXPECT_EQ(A - Diff, B);
	EXPECT_TRUE(B < A);
}

TEST(DateTimeTests, InvalidPartsGiveTheYearOne)
{
	EXPECT_EQ(FDateTime(2023, 2, 29).GetTicks(), 0);
	EXPECT_EQ(FDateTime(2024, 13, 1).GetTicks(), 0);
	EXPECT_EQ(FDateTime(2024, 1, 1, 24).GetTicks(), 0);
	EXPECT_EQ(FDateTime(0, 1, 1).GetTicks(), 0);
	EXPECT_EQ(FDateTime(2024, 1, 1, 0, 0, 0, 1000).GetTicks(), 0);
	EXPECT_FALSE(FDateTime::Validate(2024, 0, 1, 0, 0, 0, 0));
	EXPECT_TRUE(FDateTime::Validate(2024, 2, 29, 23, 59, 59, 999));
}

TEST(DateTimeTests, LimitsAndUnixTime)
{
	EXPECT_TRUE(FDateTime::MaxValue().ToString(TEXT("%Y-%m-%d %H:%M:%S.%s")).Equals(TEXT("9999-12-31 23:59:59.999")));
	EXPECT_EQ(FDateTime::MinValue().GetTicks(), 0);
	EXPECT_EQ(FDateTime(1970, 1, 2).ToUnixTimestamp(), 86400);
	EXPECT_EQ(FDateTime::FromUnixTimestamp(1704164645), FDateTime(2024, 1, 2, 3, 4, 5));
}

TEST(DateTimeTests, UtcNowFollowsTheSystemClock)
{
	const int64 Before = int64(std::time(nullptr));
	const int64 Now = FDateTime::UtcNow().ToUnixTimestamp();
	const int64 After = int64(std::time(nullptr));
	EXPECT_GE(Now, Before - 1);
	EXPECT_LE(Now, After + 1);
	EXPECT_EQ(FDateTime::UtcNow().GetTicks() % ETimespan::TicksPerMillisecond, 0);
}

TEST(DateTimeTests, NowIsLocalTime)
{
	const std::time_t Seconds = std::time(nullptr);
	std::tm Local;
	localtime_r(&Seconds, &Local);
	const FDateTime Now = FDateTime::Now();
	const FDateTime Expected(Local.tm_year + 1900, Local.tm_mon + 1, Local.tm_mday, Local.tm_hour, Local.tm_min,
		Local.tm_sec > 59 ? 59 : Local.tm_sec);
	EXPECT_LE(FMath::Abs((Now - Expected).GetTotalSeconds()), 2.0);
	EXPECT_LE(FMath::Abs((FDateTime::Now() - FDateTime::UtcNow()).GetTotalHours()), 14.5);
}

TEST(DateTimeTests, NowNeverGoesBackwards)
{
	int64 Last = FDateTime::Now().GetTicks();
	for (int32 Index = 0; Index < 20000; ++Index)
	{
		const int64 Ticks = FDateTime::Now().GetTicks();
		ASSERT_GE(Ticks, Last);
		Last = Ticks;
	}
	int64 LastUtc = FDateTime::UtcNow().GetTicks();
	for (int32 Index = 0; Index < 20000; ++Index)
	{
		const int64 Ticks = FDateTime::UtcNow().GetTicks();
		ASSERT_GE(Ticks, LastUtc);
		LastUtc = Ticks;
	}
}

TEST(DateTimeTests, TodayIsMidnight)
{
	const FDateTime Today = FDateTime::Today();
	EXPECT_EQ(Today.GetTicks() % ETimespan::TicksPerDay, 0);
	EXPECT_EQ(Today.GetHour(), 0);
	EXPECT_EQ(FDateTime(2024, 1, 2, 3, 4, 5).GetTimeOfDay(), FTimespan(3, 4, 5));
	EXPECT_EQ(FDateTime(2024, 1, 2, 3, 4, 5).GetDate(), FDateTime(2024, 1, 2));
}
