#include "ZnDM_Log.h"

#include "Components/SkeletalMeshComponent.h"
#include "Engine/StandaloneEngineLoop.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnTestLogCapture.h"

#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
// Runs the test in a folder where "dm_ue.txt" is a directory, so the log file cannot be opened
// (whatever the user's rights, root included).
class ZnDM_LogUnopenableTest : public ::testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_NE(getcwd(PreviousDir, sizeof(PreviousDir)), nullptr);
		mkdir("LogFile_Unopenable", 0755);
		ASSERT_EQ(chdir("LogFile_Unopenable"), 0);
		mkdir("dm_ue.txt", 0755);
	}

	void TearDown() override
	{
		ZnDM_Log::GetInstance().Release();
		ASSERT_EQ(chdir(PreviousDir), 0);
	}

	char PreviousDir[4096] = {};
};

// Sets the ZnDM category's verbosity for one test.
class FScopedZnDMVerbosity
{
public:
	explicit FScopedZnDMVerbosity(ELogVerbosity::Type Verbosity)
		: Previous(ZnDM.GetVerbosity())
	{
		ZnDM.SetVerbosity(Verbosity);
	}

	~FScopedZnDMVerbosity() { ZnDM.SetVerbosity(Previous); }

private:
	ELogVerbosity::Type Previous;
};
} // namespace

TEST_F(ZnDM_LogUnopenableTest, OpenFailureIsLoggedOnceAndLinesAreDropped)
{
	FZnTestLogCapture Capture;
	ZnDM_Log& Log = ZnDM_Log::GetInstance();
	EXPECT_FALSE(Log.is_open());
	UZnDM_BpFuncLib::WriteLog(TEXT("goes nowhere"));
	UZnDM_BpFuncLib::WriteLog(TEXT("neither does this"));
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 1u);
	EXPECT_EQ(Texts[0], "open file error");
	// The same failed instance stays; nothing retries until it is released.
	EXPECT_EQ(&ZnDM_Log::GetInstance(), &Log);
}

TEST_F(ZnDM_LogUnopenableTest, ReleaseAllowsANewAttempt)
{
	ZnDM_Log::GetInstance().Release();
	rmdir("dm_ue.txt");
	UZnDM_BpFuncLib::WriteLog(TEXT("now it works"));
	EXPECT_TRUE(ZnDM_Log::GetInstance().is_open());
	unlink("dm_ue.txt");
}

TEST(ZnDM_LogSuppressed, PrintersStaySilentBelowWarning)
{
	FScopedZnDMVerbosity Quiet(ELogVerbosity::Error);
	FZnTestLogCapture Capture;
	FStandaloneEngineLoop Loop;
	ZnDM_Log::printString(TEXT("x"));
	ZnDM_Log::printInt(TEXT("x"), 1);
	ZnDM_Log::printFloat(TEXT("x"), 1.0f);
	ZnDM_Log::printVector(TEXT("x"), FVector(1.0, 2.0, 3.0));
	ZnDM_Log::printQuat(TEXT("x"), FQuat::Identity);
	ZnDM_Log::printTransform(TEXT("x"), FTransform::Identity);
	ZnDM_Log::printTransform(TEXT("x"), TEXT("a"), FTransform::Identity, TEXT("b"), FTransform::Identity);
	ZnDM_Log::printSkeleton(nullptr);
	ZnDM_Log::printString_ScreenLog(TEXT("x"));
	EXPECT_TRUE(Capture.TextsOf("ZnDM").empty());
	EXPECT_EQ(GEngine->GetScreenMessageHistory().Num(), 0);
}

TEST(ZnDM_LogSuppressed, WarningItselfStillPrints)
{
	FScopedZnDMVerbosity AtWarning(ELogVerbosity::Warning);
	FZnTestLogCapture Capture;
	ZnDM_Log::printString(TEXT("visible"));
	ASSERT_EQ(Capture.TextsOf("ZnDM").size(), 1u);
}

TEST(ZnDM_LogErrors, NullSkeletonPrintsTheSeparatorsOnly)
{
	FZnTestLogCapture Capture;
	ZnDM_Log::printSkeleton(nullptr);
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 2u);
	EXPECT_EQ(Texts[0], "---------------------------");
	EXPECT_EQ(Texts[1], "---------------------------");
}

TEST(ZnDM_LogErrors, ScreenLogWithoutEngineDoesNothing)
{
	ASSERT_EQ(GEngine, nullptr);
	ZnDM_Log::printString_ScreenLog(TEXT("nobody sees this"));
	EXPECT_EQ(GEngine, nullptr);
}

TEST(ZnDM_LogErrors, NegativeTraceDepthLogsStackInfoAlone)
{
	FZnTestLogCapture Capture;
	UZnDM_BpFuncLib::PrintTraceStack(-4);
	const std::vector<std::string> Texts = Capture.TextsOf("LogTemp");
	ASSERT_EQ(Texts.size(), 1u);
	EXPECT_EQ(Texts[0], "Stack Info:");
}
