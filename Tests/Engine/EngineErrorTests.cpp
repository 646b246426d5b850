#include "Engine/Engine.h"

#include "Containers/StringConv.h"
#include "Engine/StandaloneEngineLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
class FCollectingOutput : public FOutputDevice
{
public:
	void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
	{
		Lines.push_back(std::string(TCHAR_TO_UTF8(V)));
	}

	std::vector<std::string> Lines;
};
} // namespace

TEST(UEngineExecErrors, UnknownCommandIsReportedAndRefused)
{
	FStandaloneEngineLoop Loop;
	FCollectingOutput Output;
	EXPECT_FALSE(GEngine->Exec(nullptr, TEXT("r.NoSuchThing 1"), Output));
	ASSERT_EQ(Output.Lines.size(), 1u);
	EXPECT_EQ(Output.Lines[0], "Command not recognized: r.NoSuchThing 1");
}

TEST(UEngineExecErrors, EmptyAndNullCommandsAreRefused)
{
	FStandaloneEngineLoop Loop;
	FCollectingOutput Output;
	EXPECT_FALSE(GEngine->Exec(nullptr, TEXT(""), Output));
	EXPECT_FALSE(GEngine->Exec(nullptr, nullptr, Output));
	EXPECT_EQ(GEngine->GetExecutedCommands().Num(), 2);
}

TEST(UEngineExecErrors, NonNumericValuesCountAsZero)
{
	FStandaloneEngineLoop Loop;
	FCollectingOutput Output;
	GEngine->Exec(nullptr, TEXT("t.maxFPS 60"), Output);
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("t.maxFPS fast"), Output));
	EXPECT_FLOAT_EQ(GEngine->GetMaxFPS(), 0.0f);
	GEngine->Exec(nullptr, TEXT("stats.MaxPerGroup 5"), Output);
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("stats.MaxPerGroup many"), Output));
	EXPECT_EQ(GEngine->GetStatsMaxPerGroup(), 0);
}

TEST(UEngineExecErrors, StatWithoutNameChangesNothing)
{
	FStandaloneEngineLoop Loop;
	FCollectingOutput Output;
	GEngine->Exec(nullptr, TEXT("stat fps"), Output);
	EXPECT_TRUE(GEngine->Exec(nullptr, TEXT("stat"), Output));
	EXPECT_TRUE(GEngine->IsStatEnabled(TEXT("fps")));
	EXPECT_EQ(Output.Lines.size(), 1u);
}
