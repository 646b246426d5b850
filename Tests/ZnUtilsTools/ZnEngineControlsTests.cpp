#include "ZnEngineControls.h"

#include "CoreGlobals.h"
#include "Engine/StandaloneEngineLoop.h"
#include "HAL/PlatformTLS.h"
#include "Misc/App.h"
#include "ZnDM_BpFuncLib.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <thread>

namespace
{
std::string LastCommand()
{
	const TArray<FString>& Commands = GEngine->GetExecutedCommands();
	return Commands.Num() ? std::string(TCHAR_TO_UTF8(*Commands[Commands.Num() - 1])) : std::string();
}
} // namespace

TEST(ZnEngineControls, SetFpsSendsTheCapCommand)
{
	FStandaloneEngineLoop Loop;
	UZnDM_BpFuncLib::SetFps(60);
	EXPECT_EQ(LastCommand(), "t.maxFPS 60");
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 60.0f);
	UZnDM_BpFuncLib::SetFps(0);
	EXPECT_EQ(LastCommand(), "t.maxFPS 0");
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 0.0f);
	UZnDM_BpFuncLib::SetFps(-15);
	EXPECT_EQ(LastCommand(), "t.maxFPS -15");
}

TEST(ZnEngineControls, SetMaxPerGroupSendsTheStatsCommand)
{
	FStandaloneEngineLoop Loop;
	UZnDM_BpFuncLib::SetMaxPerGroupForStat(100);
	EXPECT_EQ(LastCommand(), "stats.MaxPerGroup 100");
	EXPECT_EQ(GEngine->GetStatsMaxPerGroup(), 100);
	UZnDM_BpFuncLib::SetMaxPerGroupForStat(-1);
	EXPECT_EQ(LastCommand(), "stats.MaxPerGroup -1");
}

TEST(ZnEngineControls, EachStatTypeHasItsToggleCommand)
{
	FStandaloneEngineLoop Loop;
	const char* const Expected[] = {"stat fps", "stat unit", "stat unitGraph", "stat engine", "stat game",
		"stat SceneRendering", "stat rhi", "stat gpu"};
	for (uint8 Type = 0; Type < 8; ++Type)
	{
		UZnDM_BpFuncLib::ShowOrHideStat(static_cast<ZnDM_StatType>(Type));
		EXPECT_EQ(LastCommand(), Expected[Type]);
	}
}

TEST(ZnEngineControls, UnknownStatTypeTogglesFps)
{
	FStandaloneEngineLoop Loop;
	UZnDM_BpFuncLib::ShowOrHideStat(static_cast<ZnDM_StatType>(8));
	EXPECT_EQ(LastCommand(), "stat fps");
	UZnDM_BpFuncLib::ShowOrHideStat(static_cast<ZnDM_StatType>(255));
	EXPECT_EQ(LastCommand(), "stat fps");
}

TEST(ZnEngineControls, EveryCallTogglesTheOverlay)
{
	FStandaloneEngineLoop Loop;
	UZnDM_BpFuncLib::ShowOrHideStat(ZnDM_StatType::Unit);
	EXPECT_TRUE(GEngine->IsStatEnabled(TEXT("unit")));
	UZnDM_BpFuncLib::ShowOrHideStat(ZnDM_StatType::Unit);
	EXPECT_FALSE(GEngine->IsStatEnabled(TEXT("unit")));
}

TEST(ZnEngineControls, UnfocusedVolumeIsClampedToOneRange)
{
	const float Before = FApp::GetUnfocusedVolumeMultiplier();
	UZnDM_BpFuncLib::SetUnfocusVolume(1.5f);
	EXPECT_FLOAT_EQ(FApp::GetUnfocusedVolumeMultiplier(), 1.0f);
	UZnDM_BpFuncLib::SetUnfocusVolume(-0.2f);
	EXPECT_FLOAT_EQ(FApp::GetUnfocusedVolumeMultiplier(), 0.0f);
	UZnDM_BpFuncLib::SetUnfocusVolume(0.999f);
	EXPECT_FLOAT_EQ(FApp::GetUnfocusedVolumeMultiplier(), 0.999f);
	UZnDM_BpFuncLib::SetUnfocusVolume(1.0f);
	EXPECT_FLOAT_EQ(FApp::GetUnfocusedVolumeMultiplier(), 1.0f);
	UZnDM_BpFuncLib::SetUnfocusVolume(0.0f);
	EXPECT_FLOAT_EQ(FApp::GetUnfocusedVolumeMultiplier(), 0.0f);
	FApp::SetUnfocusedVolumeMultiplier(Before);
}

TEST(ZnEngineControls, ThreadQueriesOnTheGameThreadAndElsewhere)
{
	EXPECT_FALSE(UZnDM_BpFuncLib::IsInEditor());
	EXPECT_TRUE(UZnDM_BpFuncLib::CurThreadIsInGameThread());
	EXPECT_FALSE(UZnDM_BpFuncLib::CurThreadIsInRenderingThread());
	EXPECT_FALSE(UZnDM_BpFuncLib::CurThreadIsInRhiThread());
	bool bGame = true;
	bool bRendering = false;
	bool bRhi = false;
	std::thread Worker(
		[&]()
		{
			bGame = UZnDM_BpFuncLib::CurThreadIsInGameThread();
			GRenderThreadId = FPlatformTLS::GetCurrentThreadId();
			bRendering = UZnDM_BpFuncLib::CurThreadIsInRenderingThread();
			GRenderThreadId = 0;
			GRHIThreadId = FPlatformTLS::GetCurrentThreadId();
			bRhi = UZnDM_BpFuncLib::CurThreadIsInRhiThread();
			GRHIThreadId = 0;
		});
	Worker.join();
	EXPECT_FALSE(bGame);
	EXPECT_TRUE(bRendering);
	EXPECT_TRUE(bRhi);
}

TEST(ZnEngineControls, DefaultArgumentsAreSixtyAndOneHundred)
{
	FStandaloneEngineLoop Loop;
	UZnDM_BpFuncLib::SetFps();
	EXPECT_EQ(LastCommand(), "t.maxFPS 60");
	UZnDM_BpFuncLib::SetMaxPerGroupForStat();
	EXPECT_EQ(LastCommand(), "stats.MaxPerGroup 100");
}
