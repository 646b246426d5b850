#include "CoreMinimal.h"

#include "Misc/OutputDeviceRedirector.h"

#include <gtest/gtest.h>

DEFINE_LOG_CATEGORY_STATIC(LogCoreTestErrors, Log, All);

namespace
{
class FCaptureDevice : public FOutputDevice
{
public:
	FCaptureDevice() { GLog->AddOutputDevice(this); }
	~FCaptureDevice() override { GLog->RemoveOutputDevice(this); }
	void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
	{
		Lines.Add(FString(V));
	}
	TArray<FString> Lines;
};
} // namespace

TEST(LogMacrosErrorTests, MalformedFormatIsLoggedAsWritten)
{
	FCaptureDevice Capture;
	UE_LOG(LogCoreTestErrors, Warning, TEXT("bad %q and %"));
	ASSERT_EQ(Capture.Lines.Num(), 1);
	EXPECT_TRUE(Capture.Lines[0].Equals(TEXT("bad %q and %")));
}

TEST(LogMacrosErrorTests, NullStringArgumentIsLoggedAsNull)
{
	FCaptureDevice Capture;
	const TCHAR* Missing = nullptr;
	UE_LOG(LogCoreTestErrors, Warning, TEXT("[%s]"), Missing);
	ASSERT_EQ(Capture.Lines.Num(), 1);
	EXPECT_TRUE(Capture.Lines[0].Equals(TEXT("[(null)]")));
}

TEST(LogMacrosErrorTests, FatalLogsAndStops)
{
	EXPECT_DEATH(UE_LOG(LogTemp, Fatal, TEXT("cannot continue: %d"), 42), "LogTemp: Fatal: cannot continue: 42");
}

TEST(LogMacrosErrorTests, FatalStopsEvenWhenTheCategoryIsSilenced)
{
	LogCoreTestErrors.SetVerbosity(ELogVerbosity::NoLogging);
	EXPECT_DEATH(UE_LOG(LogCoreTestErrors, Fatal, TEXT("still fatal")), "still fatal");
	LogCoreTestErrors.SetVerbosity(ELogVerbosity::Log);
}
