#include "CoreMinimal.h"

#include "Misc/OutputDeviceRedirector.h"

#include "CoreTestPrinters.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <regex>
#include <string>
#include <thread>
#include <vector>

DECLARE_LOG_CATEGORY_EXTERN(LogCoreTestExtern, Log, All);
DEFINE_LOG_CATEGORY(LogCoreTestExtern);
DEFINE_LOG_CATEGORY_STATIC(LogCoreTestCapped, Log, Warning);

namespace
{
struct FCapturedLine
{
	FString Text;
	ELogVerbosity::Type Verbosity;
	FName Category;
};

// Collects every message the global log hands out while it is registered.
class FCaptureDevice : public FOutputDevice
{
public:
	FCaptureDevice() { GLog->AddOutputDevice(this); }
	~FCaptureDevice() override { GLog->RemoveOutputDevice(this); }

	void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
	{
		std::lock_guard<std::mutex> Lock(Mutex);
		Lines.Add({FString(V), Verbosity, Category});
	}

	TArray<FCapturedLine> Lines;
	std::mutex Mutex;
};

class FScopedVerbosity
{
public:
	FScopedVerbosity(FLogCategoryBase& InCategory, ELogVerbosity::Type Verbosity)
		: Category(InCategory)
		, Old(InCategory.GetVerbosity())
	{
		Category.SetVerbosity(Verbosity);
	}
	~FScopedVerbosity() { Category.SetVerbosity(Old); }

private:
	FLogCategoryBase& Category;
	ELogVerbosity::Type Old;
};

struct FClassWithCategory
{
	DECLARE_LOG_CATEGORY_CLASS(LogCoreTestClass, Verbose, All);
};
DEFINE_LOG_CATEGORY_CLASS(FClassWithCategory, LogCoreTestClass);

int32 GEvaluations = 0;
int32 CountEvaluation()
{
	return ++GEvaluations;
}
} // namespace

TEST(LogMacrosTests, MessagesReachRegisteredDevices)
{
	FCaptureDevice Capture;
	UE_LOG(LogTemp, Warning, TEXT("Loaded %d keys from %s"), 12, TEXT("body.json"));
	ASSERT_EQ(Capture.Lines.Num(), 1);
	EXPECT_TRUE(Capture.Lines[0].Text.Equals(TEXT("Loaded 12 keys from body.json")));
	EXPECT_EQ(Capture.Lines[0].Verbosity, ELogVerbosity::Warning);
	EXPECT_EQ(Capture.Lines[0].Category, FName(TEXT("LogTemp")));
}

TEST(LogMacrosTests, MessageWithoutArguments)
{
	FCaptureDevice Capture;
	UE_LOG(LogCoreTestExtern, Log, TEXT("plain 100%%"));
	ASSERT_EQ(Capture.Lines.Num(), 1);
	EXPECT_TRUE(Capture.Lines[0].Text.Equals(TEXT("plain 100%")));
	EXPECT_EQ(Capture.Lines[0].Category, FName(TEXT("LogCoreTestExtern")));
}

TEST(LogMacrosTests, CategoryVerbositySuppressesLowerLevels)
{
	FCaptureDevice Capture;
	FScopedVerbosity Scope(LogCoreTestExtern, ELogVerbosity::Error);
	EXPECT_TRUE(LogCoreTestExtern.IsSuppressed(ELogVerbosity::Warning));
	EXPECT_FALSE(LogCoreTestExtern.IsSuppressed(ELogVerbosity::Error));
	EXPECT_FALSE(LogCoreTestExtern.IsSuppressed(ELogVerbosity::Fatal));
	UE_LOG(LogCoreTestExtern, Warning, TEXT("hidden"));
	UE_LOG(LogCoreTestExtern, Log, TEXT("hidden"));
	UE_LOG(LogCoreTestExtern, Error, TEXT("shown"));
	ASSERT_EQ(Capture.Lines.Num(), 1);
	EXPECT_TRUE(Capture.Lines[0].Text.Equals(TEXT("shown")));
}

TEST(LogMacrosTests, DefaultVerbosityIsTheDeclaredOne)
{
	EXPECT_EQ(LogTemp.GetVerbosity(), ELogVerbosity::Log);
	EXPECT_TRUE(LogTemp.IsSuppressed(ELogVerbosity::Verbose));
	EXPECT_FALSE(LogTemp.IsSuppressed(ELogVerbosity::Log));
	EXPECT_EQ(FClassWithCategory::LogCoreTestClass.GetVerbosity(), ELogVerbosity::Verbose);
}

TEST(LogMacrosTests, SetVerbosityIsCappedAtTheCompiledLevel)
{
	FScopedVerbosity Scope(LogCoreTestCapped, ELogVerbosity::VeryVerbose);
	EXPECT_EQ(LogCoreTestCapped.GetVerbosity(), ELogVerbosity::Warning);
	FCaptureDevice Capture;
	UE_LOG(LogCoreTestCapped, Log, TEXT("compiled out"));
	UE_LOG(LogCoreTestCapped, Warning, TEXT("kept"));
	ASSERT_EQ(Capture.Lines.Num(), 1);
	EXPECT_TRUE(Capture.Lines[0].Text.Equals(TEXT("kept")));
}

TEST(LogMacrosTests, SuppressedMessagesDoNotEvaluateTheirArguments)
{
	FCaptureDevice Capture;
	GEvaluations = 0;
	UE_LOG(LogTemp, Verbose, TEXT("%d"), CountEvaluation());
	EXPECT_EQ(GEvaluations, 0);
	UE_LOG(LogTemp, Log, TEXT("%d"), CountEvaluation());
	EXPECT_EQ(GEvaluations, 1);
	EXPECT_EQ(Capture.Lines.Num(), 1);
}

TEST(LogMacrosTests, ConditionalLog)
{
	FCaptureDevice Capture;
	UE_CLOG(false, LogTemp, Warning, TEXT("no"));
	UE_CLOG(true, LogTemp, Warning, TEXT("yes %d"), 1);
	ASSERT_EQ(Capture.Lines.Num(), 1);
	EXPECT_TRUE(Capture.Lines[0].Text.Equals(TEXT("yes 1")));
}

TEST(LogMacrosTests, RemovedDevicesHearNothing)
{
	TArray<FCapturedLine> Kept;
	{
		FCaptureDevice Capture;
		EXPECT_TRUE(GLog->IsRedirectingTo(&Capture));
		UE_LOG(LogTemp, Display, TEXT("one"));
		Kept = Capture.Lines;
	}
	UE_LOG(LogTemp, Display, TEXT("two"));
	EXPECT_EQ(Kept.Num(), 1);
}

TEST(LogMacrosTests, AddingADeviceTwiceDeliversOnce)
{
	FCaptureDevice Capture;
	GLog->AddOutputDevice(&Capture);
	UE_LOG(LogTemp, Warning, TEXT("once"));
	EXPECT_EQ(Capture.Lines.Num(), 1);
	GLog->RemoveOutputDevice(nullptr);
	GLog->AddOutputDevice(nullptr);
}

TEST(LogMacrosTests, StandardErrorLineHasTheEngineShape)
{
	testing::internal::CaptureStderr();
	UE_LOG(LogTemp, Warning, TEXT("text %s"), TEXT("here"));
	UE_LOG(LogCoreTestExtern, Log, TEXT("plain"));
	GLog->Flush();
	const std::string Output = testing::internal::GetCapturedStderr();
	const std::regex Shape(
		"\\[\\d{4}\\.\\d{2}\\.\\d{2}-\\d{2}\\.\\d{2}\\.\\d{2}:\\d{3}\\]\\[  0\\]LogTemp: Warning: text here\n"
		"\\[\\d{4}\\.\\d{2}\\.\\d{2}-\\d{2}\\.\\d{2}\\.\\d{2}:\\d{3}\\]\\[  0\\]LogCoreTestExtern: plain\n");
	EXPECT_TRUE(std::regex_match(Output, Shape)) << Output;
}

TEST(LogMacrosTests, StandardErrorIsUtf8)
{
	testing::internal::CaptureStderr();
	const FString Chinese = UTF8_TO_TCHAR("\xE4\xB8\xAD\xE6\x96\x87");
	UE_LOG(LogTemp, Error, TEXT("%s"), *Chinese);
	GLog->Flush();
	const std::string Output = testing::internal::GetCapturedStderr();
	EXPECT_NE(Output.find("LogTemp: Error: \xE4\xB8\xAD\xE6\x96\x87\n"), std::string::npos) << Output;
}

TEST(LogMacrosTests, LoggingFromManyThreads)
{
	FCaptureDevice Capture;
	FScopedVerbosity Quiet(LogCoreTestExtern, ELogVerbosity::Log);
	testing::internal::CaptureStderr();
	std::vector<std::thread> Threads;
	for (int32 Thread = 0; Thread < 4; ++Thread)
	{
		Threads.emplace_back(
			[Thread]()
			{
				for (int32 Index = 0; Index < 100; ++Index)
				{
					UE_LOG(LogCoreTestExtern, Verbose, TEXT("suppressed %d"), Index);
					UE_LOG(LogCoreTestExtern, Log, TEXT("thread %d line %d"), Thread, Index);
				}
			});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	(void)testing::internal::GetCapturedStderr();
	EXPECT_EQ(Capture.Lines.Num(), 400);
}

TEST(LogMacrosTests, VerbosityNames)
{
	EXPECT_STREQ(TCHAR_TO_UTF8(ToString(ELogVerbosity::Fatal)), "Fatal");
	EXPECT_STREQ(TCHAR_TO_UTF8(ToString(ELogVerbosity::Warning)), "Warning");
	EXPECT_STREQ(TCHAR_TO_UTF8(ToString(ELogVerbosity::VeryVerbose)), "VeryVerbose");
	EXPECT_STREQ(TCHAR_TO_UTF8(ToString(ELogVerbosity::NumVerbosity)), "UnknownVerbosity");
}

TEST(LogMacrosTests, OutputDeviceHelpers)
{
	FCaptureDevice Capture;
	FCaptureDevice Direct;
	GLog->RemoveOutputDevice(&Direct);
	Direct.Logf(TEXT("value %d"), 3);
	Direct.Log(FName(TEXT("Cat")), ELogVerbosity::Error, FString(TEXT("direct")));
	ASSERT_EQ(Direct.Lines.Num(), 2);
	EXPECT_TRUE(Direct.Lines[0].Text.Equals(TEXT("value 3")));
	EXPECT_EQ(Direct.Lines[0].Verbosity, ELogVerbosity::Log);
	EXPECT_EQ(Direct.Lines[1].Category, FName(TEXT("Cat")));
	EXPECT_EQ(Capture.Lines.Num(), 0);
}
