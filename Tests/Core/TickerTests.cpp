#include "Containers/Ticker.h"

#include <gtest/gtest.h>

#include <vector>

TEST(TickerTests, DelegateRunsEveryTickUntilItReturnsFalse)
{
	FTSTicker Ticker;
	std::vector<float> Deltas;
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&Deltas](float DeltaTime)
		{
			Deltas.push_back(DeltaTime);
			return Deltas.size() < 3;
		}));
	for (int Frame = 0; Frame < 5; ++Frame)
	{
		Ticker.Tick(0.25f);
	}
	EXPECT_EQ(Deltas, (std::vector<float>{0.25f, 0.25f, 0.25f}));
}

TEST(TickerTests, DelayHoldsTheFirstCall)
{
	FTSTicker Ticker;
	int Calls = 0;
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
						 [&Calls](float)
						 {
							 ++Calls;
							 return true;
						 }),
		1.0f);
	Ticker.Tick(0.5f);
	EXPECT_EQ(Calls, 0);
	Ticker.Tick(0.5f);
	EXPECT_EQ(Calls, 1);
	// Then once per second of ticks again.
	Ticker.Tick(0.5f);
	EXPECT_EQ(Calls, 1);
	Ticker.Tick(0.5f);
	EXPECT_EQ(Calls, 2);
}

TEST(TickerTests, RemovedDelegateIsNotCalledEvenInTheTickThatRemovesIt)
{
	FTSTicker Ticker;
	int FirstCalls = 0;
	int SecondCalls = 0;
	FTSTicker::FDelegateHandle Second;
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&](float)
		{
			++FirstCalls;
			Ticker.RemoveTicker(Second);
			return true;
		}));
	Second = Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&SecondCalls](float)
		{
			++SecondCalls;
			return true;
		}));
	Ticker.Tick(0.1f);
	Ticker.Tick(0.1f);
	EXPECT_EQ(FirstCalls, 2);
	EXPECT_EQ(SecondCalls, 0);
	// Removing an unknown or empty handle is ignored.
	Ticker.RemoveTicker(FTSTicker::FDelegateHandle());
	Ticker.RemoveTicker(Second);
}

TEST(TickerTests, DelegateAddedDuringATickRunsFromTheNext)
{
	FTSTicker Ticker;
	int Added = 0;
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&](float)
		{
			Ticker.AddTicker(FTickerDelegate::CreateLambda(
				[&Added](float)
				{
					++Added;
					return false;
				}));
			return false;
		}));
	Ticker.Tick(0.1f);
	EXPECT_EQ(Added, 0);
	Ticker.Tick(0.1f);
	EXPECT_EQ(Added, 1);
}
