#include "ZnTimeTools.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnTestLogCapture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

TEST(ZnTimeToolsErrors, CyclingWithoutAPositiveCycleLeavesTheOffset)
{
	FZnTestLogCapture Capture;
	float offset = 0.5f;
	EXPECT_FALSE(UZnDM_BpFuncLib::GreaterOrEqual_Cycling(0.1f, 0.0f, offset));
	EXPECT_FLOAT_EQ(offset, 0.5f);
	EXPECT_FALSE(UZnDM_BpFuncLib::GreaterOrEqual_Cycling(0.1f, -1.0f, offset));
	EXPECT_FALSE(UZnDM_BpFuncLib::GreaterOrEqual_Cycling(0.1f, std::numeric_limits<float>::quiet_NaN(), offset));
	EXPECT_FLOAT_EQ(offset, 0.5f);
	EXPECT_TRUE(Capture.TextsOf("ZnDM").empty());
}

TEST(ZnTimeToolsErrors, NaNValuesNeverReachAThreshold)
{
	const float NaN = std::numeric_limits<float>::quiet_NaN();
	float val = NaN;
	// NaN >= threhold is false, so TickAdd adds (and stays NaN) and reports false.
	EXPECT_FALSE(UZnDM_BpFuncLib::TickAdd(val, 0.1f, 1.0f));
	EXPECT_TRUE(std::isnan(val));
	// NaN > threhold is false, so TickSubtract leaves it.
	EXPECT_FALSE(UZnDM_BpFuncLib::TickSubtract(val, 0.1f, 0.0f));
	EXPECT_TRUE(std::isnan(val));
	// A NaN remaining time is not above 0 and stays.
	float remain = NaN;
	UZnDM_BpFuncLib::TickRemainTime(remain, 0.1f);
	EXPECT_TRUE(std::isnan(remain));
}

TEST(ZnTimeToolsErrors, NaNDeltaEndsARemainingTimeAtZero)
{
	float remain = 1.0f;
	UZnDM_BpFuncLib::TickRemainTime(remain, std::numeric_limits<float>::quiet_NaN());
	EXPECT_FLOAT_EQ(remain, 0.0f);
}

TEST(ZnTimeToolsErrors, UnknownDateTimePurposeSaysNoContent)
{
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*UZnDM_BpFuncLib::GetCurSystemDateTime(static_cast<ZnDM_DateTimePurpose>(2)))),
		"no content");
	EXPECT_EQ(
		std::string(TCHAR_TO_UTF8(*UZnDM_BpFuncLib::GetCurSystemDateTime(static_cast<ZnDM_DateTimePurpose>(255)))),
		"no content");
}
