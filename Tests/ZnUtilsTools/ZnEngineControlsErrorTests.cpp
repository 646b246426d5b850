#include "ZnEngineControls.h"

#include "Engine/Engine.h"
#include "Misc/App.h"
#include "ZnDM_BpFuncLib.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

TEST(ZnEngineControlsErrors, NotANumberVolumeBecomesZero)
{
	const float Before = FApp::GetUnfocusedVolumeMultiplier();
	FApp::SetUnfocusedVolumeMultiplier(0.5f);
	UZnDM_BpFuncLib::SetUnfocusVolume(std::numeric_limits<float>::quiet_NaN());
	EXPECT_EQ(FApp::GetUnfocusedVolumeMultiplier(), 0.0f);
	UZnDM_BpFuncLib::SetUnfocusVolume(std::numeric_limits<float>::infinity());
	EXPECT_EQ(FApp::GetUnfocusedVolumeMultiplier(), 1.0f);
	UZnDM_BpFuncLib::SetUnfocusVolume(-std::numeric_limits<float>::infinity());
	EXPECT_EQ(FApp::GetUnfocusedVolumeMultiplier(), 0.0f);
	FApp::SetUnfocusedVolumeMultiplier(Before);
}

TEST(ZnEngineControlsErrors, CommandsWithoutAnEngineAreDropped)
{
	ASSERT_EQ(GEngine, nullptr);
	UZnDM_BpFuncLib::SetFps(30);
	UZnDM_BpFuncLib::SetMaxPerGroupForStat(10);
	UZnDM_BpFuncLib::ShowOrHideStat(ZnDM_StatType::Gpu);
	EXPECT_FALSE(ZnEngineControls::Exec(TEXT("t.maxFPS 30")));
	EXPECT_EQ(GEngine, nullptr);
}

TEST(ZnEngineControlsErrors, ExtremeIntegersKeepTheirSign)
{
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*ZnEngineControls::MaxFpsCommand(std::numeric_limits<int32>::min()))),
		"t.maxFPS -2147483648");
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*ZnEngineControls::MaxPerGroupCommand(std::numeric_limits<int32>::max()))),
		"stats.MaxPerGroup 2147483647");
}
