#include "HAL/PlatformTime.h"

#include <gtest/gtest.h>

#include <time.h>

TEST(FPlatformTime, SecondsIsTheCounterTimePlusTheFixedOffset)
{
	const uint64 Before = FPlatformTime::Cycles64();
	const double Seconds = FPlatformTime::Seconds();
	const uint64 After = FPlatformTime::Cycles64();
	const double Offset = 16777216.0;
	EXPECT_GE(Seconds, static_cast<double>(Before) * FPlatformTime::GetSecondsPerCycle() + Offset);
	EXPECT_LE(Seconds, static_cast<double>(After) * FPlatformTime::GetSecondsPerCycle() + Offset);
}

TEST(FPlatformTime, CounterIsTheMonotonicClockInNanoseconds)
{
	EXPECT_DOUBLE_EQ(FPlatformTime::GetSecondsPerCycle(), 1e-9);
	EXPECT_DOUBLE_EQ(FPlatformTime::GetSecondsPerCycle64(), 1e-9);
	struct timespec Now;
	clock_gettime(CLOCK_MONOTONIC, &Now);
	const double Clock = static_cast<double>(Now.tv_sec) + static_cast<double>(Now.tv_nsec) * 1e-9;
	const double Counter = static_cast<double>(FPlatformTime::Cycles64()) * 1e-9;
	EXPECT_NEAR(Counter, Clock, 0.5);
}

TEST(FPlatformTime, NeverGoesBackwards)
{
	double Previous = FPlatformTime::Seconds();
	for (int Index = 0; Index < 1000; ++Index)
	{
		const double Now = FPlatformTime::Seconds();
		EXPECT_GE(Now, Previous);
		Previous = Now;
	}
}

TEST(FPlatformTime, CycleConversions)
{
	EXPECT_FLOAT_EQ(FPlatformTime::ToSeconds(500000000u), 0.5f);
	EXPECT_DOUBLE_EQ(FPlatformTime::ToSeconds64(2500000000ull), 2.5);
	// Cycles() is the counter's low 32 bits: read right before the full counter, it trails it by
	// far less than a second, modulo 2^32.
	const uint32 Low = FPlatformTime::Cycles();
	const uint64 Full = FPlatformTime::Cycles64();
	EXPECT_LT(static_cast<uint32>(static_cast<uint32>(Full) - Low), 1000000000u);
}
