#include "ZnActor_FPS.h"

#include "Engine/StandaloneEngineLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
std::vector<std::string> FpsLines()
{
	std::vector<std::string> Lines;
	for (const FStandaloneScreenMessage& Message : GEngine->GetScreenMessageHistory())
	{
		Lines.push_back(std::string(TCHAR_TO_UTF8(*Message.Message)));
	}
	return Lines;
}
} // namespace

TEST(AZnActor_FPS, StartsWithItsDefaultsAndTicks)
{
	FStandaloneEngineLoop Loop;
	AZnActor_FPS* Actor = Loop.SpawnActor<AZnActor_FPS>();
	EXPECT_FALSE(Actor->EnableCustomFps);
	EXPECT_EQ(Actor->CustomFps, 60);
	EXPECT_TRUE(Actor->PrimaryActorTick.bCanEverTick);
}

TEST(AZnActor_FPS, WithoutCustomFpsTheCapIs120)
{
	FStandaloneEngineLoop Loop;
	AZnActor_FPS* Actor = Loop.SpawnActor<AZnActor_FPS>();
	Actor->CustomFps = 30;
	Loop.BeginPlay();
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 120.0f);
	ASSERT_EQ(GEngine->GetExecutedCommands().Num(), 1);
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*GEngine->GetExecutedCommands()[0])), "t.maxFPS 120");
}

TEST(AZnActor_FPS, CustomFpsBecomesTheCap)
{
	FStandaloneEngineLoop Loop;
	AZnActor_FPS* Actor = Loop.SpawnActor<AZnActor_FPS>();
	Actor->EnableCustomFps = true;
	Actor->CustomFps = 30;
	Loop.BeginPlay();
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 30.0f);
	// The loop honours the cap: a requested 60 runs at 30.
	EXPECT_FLOAT_EQ(Loop.RunFrames(1, 60.0f), 1.0f / 30.0f);
}

TEST(AZnActor_FPS, FirstDisplayAfterTheSixtyFirstFrameAtSixty)
{
	FStandaloneEngineLoop Loop;
	Loop.SpawnActor<AZnActor_FPS>();
	Loop.RunFrames(60, 60.0f);
	EXPECT_TRUE(FpsLines().empty());
	Loop.RunFrames(1, 60.0f);
	const std::vector<std::string> Lines = FpsLines();
	ASSERT_EQ(Lines.size(), 1u);
	ASSERT_EQ(Lines[0].rfind("Fps: ", 0), 0u) << Lines[0];
	EXPECT_NEAR(std::stod(Lines[0].substr(5)), 60.0, 0.01);
	const FStandaloneScreenMessage& Message = GEngine->GetScreenMessageHistory()[0];
	EXPECT_EQ(Message.Key, -1);
	EXPECT_FLOAT_EQ(Message.TimeToDisplay, 1.0f);
	EXPECT_TRUE(Message.DisplayColor == FColor::Cyan);
	EXPECT_TRUE(Message.bNewerOnTop);
	EXPECT_DOUBLE_EQ(Message.TextScale.X, 1.0);
	EXPECT_DOUBLE_EQ(Message.TextScale.Y, 1.0);
}

TEST(AZnActor_FPS, ShowsAboutOncePerSecond)
{
	FStandaloneEngineLoop Loop;
	Loop.SpawnActor<AZnActor_FPS>();
	Loop.RunFrames(61 * 5, 60.0f);
	EXPECT_EQ(FpsLines().size(), 5u);
}

TEST(AZnActor_FPS, WholeNumberRateKeepsOneFractionalDigit)
{
	FStandaloneEngineLoop Loop;
	Loop.SpawnActor<AZnActor_FPS>();
	// Quarter-second frames: the fifth frame passes 1 s with 5 frames in 1.25 s, exactly 4.
	Loop.RunFrames(5, 4.0f);
	const std::vector<std::string> Lines = FpsLines();
	ASSERT_EQ(Lines.size(), 1u);
	EXPECT_EQ(Lines[0], "Fps: 4.0");
}

TEST(AZnActor_FPS, ExactlyOneSecondIsNotYetEnough)
{
	FStandaloneEngineLoop Loop;
	Loop.SpawnActor<AZnActor_FPS>();
	// Half-second frames add up to exactly 1.0 after two frames; only the third passes it.
	Loop.RunFrames(2, 2.0f);
	EXPECT_TRUE(FpsLines().empty());
	Loop.RunFrames(1, 2.0f);
	ASSERT_EQ(FpsLines().size(), 1u);
	EXPECT_EQ(FpsLines()[0], "Fps: 2.0");
}

TEST(AZnActor_FPS, CountersAreNotResetAtPlayStart)
{
	FStandaloneEngineLoop Loop;
	AZnActor_FPS* Actor = Loop.SpawnActor<AZnActor_FPS>();
	// Ticks before play begins still count toward the first display.
	Actor->Tick(0.75f);
	Loop.BeginPlay();
	Loop.RunFrames(1, 2.0f);
	ASSERT_EQ(FpsLines().size(), 1u);
	EXPECT_EQ(FpsLines()[0], "Fps: 1.6");
}
