#include "Engine/Engine.h"

#include "Containers/StringConv.h"
#include "Engine/StandaloneEngineLoop.h"
#include "Engine/World.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
std::string Utf8(const FString& Text)
{
	return std::string(TCHAR_TO_UTF8(*Text));
}

// Collects what a command writes to its output device.
class FCollectingOutput : public FOutputDevice
{
public:
	void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
	{
		Lines.push_back(Utf8(FString(V)));
	}

	std::vector<std::string> Lines;
};
} // namespace

TEST(UEngineExec, MaxFpsSetsTheCap)
{
	FStandaloneEngineLoop Loop;
	FCollectingOutput Output;
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 0.0f);
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("t.maxFPS 60"), Output));
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 60.0f);
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("T.MAXFPS 30.5"), Output));
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 30.5f);
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("t.maxFPS 0"), Output));
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 0.0f);
	EXPECT_TRUE(Output.Lines.empty());
}

TEST(UEngineExec, MaxFpsWithoutValueReportsTheCap)
{
	FStandaloneEngineLoop Loop;
	FCollectingOutput Output;
	GEngine->Exec(nullptr, TEXT("t.maxFPS 45"), Output);
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("t.maxFPS"), Output));
	ASSERT_EQ(Output.Lines.size(), 1u);
	EXPECT_EQ(Output.Lines[0], "t.maxFPS = \"45\"");
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 45.0f);
}

TEST(UEngineExec, StatsMaxPerGroupIsRecorded)
{
	FStandaloneEngineLoop Loop;
	FCollectingOutput Output;
	EXPECT_EQ(GEngine->GetStatsMaxPerGroup(), 0);
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("stats.MaxPerGroup 100"), Output));
	EXPECT_EQ(GEngine->GetStatsMaxPerGroup(), 100);
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("stats.MaxPerGroup -3"), Output));
	EXPECT_EQ(GEngine->GetStatsMaxPerGroup(), -3);
}

TEST(UEngineExec, EachStatCommandToggles)
{
	FStandaloneEngineLoop Loop;
	FCollectingOutput Output;
	EXPECT_FALSE(GEngine->IsStatEnabled(TEXT("fps")));
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("stat fps"), Output));
	EXPECT_TRUE(GEngine->IsStatEnabled(TEXT("fps")));
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("stat FPS"), Output));
	EXPECT_FALSE(GEngine->IsStatEnabled(TEXT("fps")));

	GEngine->Exec(nullptr, TEXT("stat unitGraph"), Output);
	GEngine->Exec(nullptr, TEXT("stat SceneRendering"), Output);
	EXPECT_TRUE(GEngine->IsStatEnabled(TEXT("UnitGraph")));
	EXPECT_TRUE(GEngine->IsStatEnabled(TEXT("scenerendering")));
	GEngine->Exec(nullptr, TEXT("stat none"), Output);
	EXPECT_FALSE(GEngine->IsStatEnabled(TEXT("unitGraph")));
	EXPECT_FALSE(GEngine->IsStatEnabled(TEXT("SceneRendering")));
}

TEST(UEngineExec, EveryCommandTextIsRecordedAsGiven)
{
	FStandaloneEngineLoop Loop;
	FCollectingOutput Output;
	GEngine->Exec(nullptr, TEXT("t.maxFPS 60"), Output);
	GEngine->Exec(nullptr, TEXT("stat unitGraph"), Output);
	GEngine->Exec(nullptr, TEXT("bogus command"), Output);
	const TArray<FString>& Commands = GEngine->GetExecutedCommands();
	ASSERT_EQ(Commands.Num(), 3);
	EXPECT_EQ(Utf8(Commands[0]), "t.maxFPS 60");
	EXPECT_EQ(Utf8(Commands[1]), "stat unitGraph");
	EXPECT_EQ(Utf8(Commands[2]), "bogus command");
	GEngine->ClearStandaloneRecords();
	EXPECT_EQ(GEngine->GetExecutedCommands().Num(), 0);
}

TEST(UEngineScreen, MessagesAreRecordedWithTheirSettings)
{
	FStandaloneEngineLoop Loop;
	GEngine->AddOnScreenDebugMessage(-1, 1.0f, FColor::Green, TEXT("first"), true, FVector2D(1.0f, 1.0f));
	GEngine->AddOnScreenDebugMessage(-1, 2.5f, FColor::Cyan, TEXT("second"), false, FVector2D(2.0f, 3.0f));
	const TArray<FStandaloneScreenMessage>& Shown = GEngine->GetScreenMessages();
	ASSERT_EQ(Shown.Num(), 2);
	EXPECT_EQ(Utf8(Shown[0].Message), "first");
	EXPECT_EQ(Shown[0].Key, -1);
	EXPECT_FLOAT_EQ(Shown[0].TimeToDisplay, 1.0f);
	EXPECT_TRUE(Shown[0].DisplayColor == FColor::Green);
	EXPECT_TRUE(Shown[0].bNewerOnTop);
	EXPECT_EQ(Utf8(Shown[1].Message), "second");
	EXPECT_TRUE(Shown[1].DisplayColor == FColor::Cyan);
	EXPECT_FALSE(Shown[1].bNewerOnTop);
	EXPECT_DOUBLE_EQ(Shown[1].TextScale.X, 2.0);
	EXPECT_DOUBLE_EQ(Shown[1].TextScale.Y, 3.0);
}

TEST(UEngineScreen, AKeyReplacesItsLineAndMinusOneAlwaysAdds)
{
	FStandaloneEngineLoop Loop;
	GEngine->AddOnScreenDebugMessage(7, 1.0f, FColor::Green, TEXT("a"));
	GEngine->AddOnScreenDebugMessage(7, 1.0f, FColor::Green, TEXT("b"));
	GEngine->AddOnScreenDebugMessage(-1, 1.0f, FColor::Green, TEXT("c"));
	GEngine->AddOnScreenDebugMessage(-1, 1.0f, FColor::Green, TEXT("c"));
	ASSERT_EQ(GEngine->GetScreenMessages().Num(), 3);
	EXPECT_EQ(Utf8(GEngine->GetScreenMessages()[0].Message), "b");
	EXPECT_EQ(GEngine->GetScreenMessageHistory().Num(), 4);
	GEngine->ClearOnScreenDebugMessages();
	EXPECT_EQ(GEngine->GetScreenMessages().Num(), 0);
	EXPECT_EQ(GEngine->GetScreenMessageHistory().Num(), 4);
}

TEST(UEngineWorld, EngineReportsTheLoopsWorld)
{
	EXPECT_EQ(GEngine, nullptr);
	{
		FStandaloneEngineLoop Loop;
		ASSERT_NE(GEngine, nullptr);
		EXPECT_EQ(GEngine, Loop.GetEngine());
		EXPECT_EQ(GEngine->GetWorld(), Loop.GetWorld());
	}
	EXPECT_EQ(GEngine, nullptr);
}
