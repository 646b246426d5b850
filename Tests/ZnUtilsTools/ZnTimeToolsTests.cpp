#include "ZnTimeTools.h"

#include "CoreGlobals.h"
#include "HAL/PlatformTLS.h"
#include "HAL/PlatformTime.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnTestLogCapture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <regex>
#include <string>
#include <thread>

namespace
{
std::string Utf8(const FString& Text)
{
	return std::string(TCHAR_TO_UTF8(*Text));
}
} // namespace

TEST(ZnTimeToolsDates, ChinaFormatForATuesday)
{
	EXPECT_EQ(Utf8(ZnTimeTools::FormatChinaDate(FDateTime(2024, 1, 2))), "2024年1月2日星期二");
}

TEST(ZnTimeToolsDates, ChinaFormatHasNoPaddingAndEveryWeekday)
{
	// 2024-12-09 is a Monday.
	const char* const Expected[] = {"2024年12月9日星期一", "2024年12月10日星期二", "2024年12月11日星期三",
		"2024年12月12日星期四", "2024年12月13日星期五", "2024年12月14日星期六", "2024年12月15日星期日"};
	for (int32 Offset = 0; Offset < 7; ++Offset)
	{
		EXPECT_EQ(Utf8(ZnTimeTools::FormatChinaDate(FDateTime(2024, 12, 9 + Offset))), Expected[Offset]);
	}
}

TEST(ZnTimeToolsDates, WeekdayOutsideTheWeekAddsNoName)
{
	EXPECT_EQ(Utf8(ZnTimeTools::FormatChinaDate(2024, 1, 2, 7)), "2024年1月2日");
	EXPECT_EQ(Utf8(ZnTimeTools::FormatChinaDate(2024, 1, 2, -1)), "2024年1月2日");
	EXPECT_EQ(Utf8(ZnTimeTools::FormatChinaDate(2024, 1, 2, 6)), "2024年1月2日星期日");
}

TEST(ZnTimeToolsDates, TodayInChinaFormatMatchesTodaysDate)
{
	const FDateTime Before = FDateTime::Now();
	const std::string Today = Utf8(UZnDM_BpFuncLib::GetTodayDateInChinaFormat());
	const FDateTime After = FDateTime::Now();
	const std::string First = Utf8(ZnTimeTools::FormatChinaDate(Before));
	const std::string Second = Utf8(ZnTimeTools::FormatChinaDate(After));
	EXPECT_TRUE(Today == First || Today == Second) << Today;
}

TEST(ZnTimeToolsDates, FileNameStampFormat)
{
	EXPECT_EQ(Utf8(ZnTimeTools::FormatFileNameTime(FDateTime(2024, 1, 2, 3, 4, 5, 678))), "2024_01_02_03_04_05_678");
}

TEST(ZnTimeToolsDates, CurrentDateTimeForEachPurpose)
{
	EXPECT_TRUE(std::regex_match(Utf8(UZnDM_BpFuncLib::GetCurSystemDateTime(ZnDM_DateTimePurpose::LogHeader)),
		std::regex(R"(\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}\.\d{3})")));
	EXPECT_TRUE(std::regex_match(Utf8(UZnDM_BpFuncLib::GetCurSystemDateTime(ZnDM_DateTimePurpose::FileName)),
		std::regex(R"(\d{4}_\d{2}_\d{2}_\d{2}_\d{2}_\d{2}_\d{3})")));
}

TEST(ZnTimeToolsStamps, MicrosecondsSince1970InLocalTime)
{
	EXPECT_EQ(ZnTimeTools::MicrosecondsSince1970(FDateTime(1970, 1, 1)), 0);
	EXPECT_EQ(ZnTimeTools::MicrosecondsSince1970(FDateTime(1970, 1, 1, 0, 0, 1, 500)), 1500000);
	EXPECT_EQ(ZnTimeTools::MicrosecondsSince1970(FDateTime(2024, 1, 2, 3, 4, 5, 678)), 1704164645678000);
}

TEST(ZnTimeToolsStamps, TicksBefore1970TruncateTowardZero)
{
	// 15 ticks (1.5 microseconds) before 1970 gives -1, not -2.
	const FDateTime JustBefore(FDateTime(1970, 1, 1).GetTicks() - 15);
	EXPECT_EQ(ZnTimeTools::MicrosecondsSince1970(JustBefore), -1);
}

TEST(ZnTimeToolsStamps, NowStampFollowsTheLocalClock)
{
	const int64 Before = ZnTimeTools::MicrosecondsSince1970(FDateTime::Now());
	const int64 Stamp = UZnDM_BpFuncLib::GetCurTimestampInMicroSecond();
	const int64 After = ZnTimeTools::MicrosecondsSince1970(FDateTime::Now());
	EXPECT_LE(Before, Stamp);
	EXPECT_LE(Stamp, After);
}

TEST(ZnTimeToolsClock, WorldTimeCarriesTheFixedOffset)
{
	const double Before =
		static_cast<double>(FPlatformTime::Cycles64()) * FPlatformTime::GetSecondsPerCycle() + 16777216.0;
	const double Time = UZnDM_BpFuncLib::getWorldTime();
	const double After =
		static_cast<double>(FPlatformTime::Cycles64()) * FPlatformTime::GetSecondsPerCycle() + 16777216.0;
	EXPECT_GE(Time, Before);
	EXPECT_LE(Time, After);
	EXPECT_GT(Time, 16777216.0);
}

TEST(ZnTimeToolsThreads, ThreadIdAndInfoOnTheGameThread)
{
	EXPECT_EQ(UZnDM_BpFuncLib::GetThreadId(), static_cast<int32>(FPlatformTLS::GetCurrentThreadId()));
	int32 Id = 0;
	FString Name;
	FString Info;
	UZnDM_BpFuncLib::GetCurThreadInfo(Id, Name, Info);
	EXPECT_EQ(Id, static_cast<int32>(GGameThreadId));
	EXPECT_EQ(Utf8(Name), "GameThread");
	EXPECT_EQ(Utf8(Info), "GameThread(" + std::to_string(Id) + ")");
}

TEST(ZnTimeToolsThreads, UnnamedThreadHasAnEmptyNameInItsInfo)
{
	int32 Id = 0;
	FString Name = TEXT("unset");
	FString Info;
	std::thread Worker([&]() { UZnDM_BpFuncLib::GetCurThreadInfo(Id, Name, Info); });
	Worker.join();
	EXPECT_NE(Id, static_cast<int32>(GGameThreadId));
	EXPECT_EQ(Utf8(Name), "");
	EXPECT_EQ(Utf8(Info), "(" + std::to_string(Id) + ")");
}

TEST(ZnTimeToolsCounters, TickAddReachesTheThresholdOnce)
{
	float val = 0.9f;
	EXPECT_TRUE(UZnDM_BpFuncLib::TickAdd(val, 0.2f, 1.0f));
	EXPECT_FLOAT_EQ(val, 1.1f);
	EXPECT_FALSE(UZnDM_BpFuncLib::TickAdd(val, 0.2f, 1.0f));
	EXPECT_FLOAT_EQ(val, 1.1f);
}

TEST(ZnTimeToolsCounters, TickAddBelowTheThresholdKeepsCounting)
{
	float val = 0.0f;
	EXPECT_FALSE(UZnDM_BpFuncLib::TickAdd(val, 0.25f, 1.0f));
	EXPECT_FLOAT_EQ(val, 0.25f);
	// Reaching the threshold exactly counts.
	float exact = 0.5f;
	EXPECT_TRUE(UZnDM_BpFuncLib::TickAdd(exact, 0.5f, 1.0f));
}

TEST(ZnTimeToolsCounters, TickSubtractGoesBelowTheThreshold)
{
	float val = 0.1f;
	EXPECT_TRUE(UZnDM_BpFuncLib::TickSubtract(val, 0.2f, 0.0f));
	EXPECT_FLOAT_EQ(val, -0.1f);
	EXPECT_FALSE(UZnDM_BpFuncLib::TickSubtract(val, 0.2f, 0.0f));
	EXPECT_FLOAT_EQ(val, -0.1f);
}

TEST(ZnTimeToolsCounters, TickSubtractAboveTheThresholdKeepsCounting)
{
	float val = 1.0f;
	EXPECT_FALSE(UZnDM_BpFuncLib::TickSubtract(val, 0.25f, 0.0f));
	EXPECT_FLOAT_EQ(val, 0.75f);
	// Equal to the threshold is not above it.
	float equal = 0.0f;
	EXPECT_FALSE(UZnDM_BpFuncLib::TickSubtract(equal, 0.25f, 0.0f));
	EXPECT_FLOAT_EQ(equal, 0.0f);
}

TEST(ZnTimeToolsCounters, TickRemainTimeStopsAtZero)
{
	float remain = 0.1f;
	UZnDM_BpFuncLib::TickRemainTime(remain, 0.5f);
	EXPECT_FLOAT_EQ(remain, 0.0f);
	float some = 1.0f;
	UZnDM_BpFuncLib::TickRemainTime(some, 0.25f);
	EXPECT_FLOAT_EQ(some, 0.75f);
	float none = 0.0f;
	UZnDM_BpFuncLib::TickRemainTime(none, 0.25f);
	EXPECT_FLOAT_EQ(none, 0.0f);
	float negative = -2.0f;
	UZnDM_BpFuncLib::TickRemainTime(negative, 0.25f);
	EXPECT_FLOAT_EQ(negative, -2.0f);
}

TEST(ZnTimeToolsCounters, CyclingDropsTheOvershootAndLogs)
{
	FZnTestLogCapture Capture;
	float offset = 0.95f;
	EXPECT_TRUE(UZnDM_BpFuncLib::GreaterOrEqual_Cycling(0.1f, 1.0f, offset));
	EXPECT_FLOAT_EQ(offset, 0.0f);
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 1u);
	EXPECT_EQ(Texts[0], "cycle true");
}

TEST(ZnTimeToolsCounters, CyclingBelowTheCycleAccumulates)
{
	FZnTestLogCapture Capture;
	float offset = 0.0f;
	EXPECT_FALSE(UZnDM_BpFuncLib::GreaterOrEqual_Cycling(0.25f, 1.0f, offset));
	EXPECT_FLOAT_EQ(offset, 0.25f);
	EXPECT_TRUE(Capture.TextsOf("ZnDM").empty());
	// Exactly one cycle counts.
	float exact = 0.5f;
	EXPECT_TRUE(UZnDM_BpFuncLib::GreaterOrEqual_Cycling(0.5f, 1.0f, exact));
}

TEST(ZnTimeToolsCounters, CyclingAtSixtyFramesFiresOncePerSecondWithDrift)
{
	float offset = 0.0f;
	int Fired = 0;
	int FirstFrame = 0;
	for (int Frame = 1; Frame <= 120; ++Frame)
	{
		if (ZnTimeTools::GreaterOrEqual_Cycling(1.0f / 60.0f, 1.0f, offset))
		{
			++Fired;
			if (FirstFrame == 0)
			{
				FirstFrame = Frame;
			}
		}
	}
	// Sixty float steps of 1/60 sum to just under 1, so the first cycle ends one frame late, on
	// frame 61, and the second would end on frame 122, past the two seconds run here.
	EXPECT_EQ(Fired, 1);
	EXPECT_EQ(FirstFrame, 61);
}
