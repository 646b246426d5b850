#include "HAL/PlatformProcess.h"

#include "Containers/StringConv.h"
#include "HAL/PlatformTime.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <unistd.h>

TEST(FPlatformProcess, BaseDirIsTheExecutablesDirectory)
{
	char Executable[4096] = {};
	ASSERT_GT(readlink("/proc/self/exe", Executable, sizeof(Executable) - 1), 0);
	std::string Expected = Executable;
	Expected.erase(Expected.find_last_of('/') + 1);
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(FPlatformProcess::BaseDir())), Expected);
	EXPECT_EQ(Expected.back(), '/');
}

TEST(FPlatformProcess, SystemLibraryLoadsByNameAndExportsSymbols)
{
	void* Handle = FPlatformProcess::GetDllHandle(TEXT("libm.so.6"));
	ASSERT_NE(Handle, nullptr);
	using FCosine = double (*)(double);
	FCosine Cosine = reinterpret_cast<FCosine>(FPlatformProcess::GetDllExport(Handle, TEXT("cos")));
	ASSERT_NE(Cosine, nullptr);
	EXPECT_DOUBLE_EQ(Cosine(0.0), 1.0);
	EXPECT_EQ(FPlatformProcess::GetDllExport(Handle, TEXT("no_such_symbol_here")), nullptr);
	FPlatformProcess::FreeDllHandle(Handle);
}

TEST(FPlatformProcess, SleepWaitsAtLeastTheTime)
{
	const double Start = FPlatformTime::Seconds();
	FPlatformProcess::Sleep(0.02f);
	EXPECT_GE(FPlatformTime::Seconds() - Start, 0.019);
}

TEST(FPlatformProcessErrors, BadLibraryPathsGiveNull)
{
	EXPECT_EQ(FPlatformProcess::GetDllHandle(TEXT("/no/such/dir/libnothing.so")), nullptr);
	EXPECT_EQ(FPlatformProcess::GetDllHandle(TEXT("")), nullptr);
	EXPECT_EQ(FPlatformProcess::GetDllHandle(nullptr), nullptr);
	// A file that is not a library.
	EXPECT_EQ(FPlatformProcess::GetDllHandle(TEXT("/proc/self/status")), nullptr);
}

TEST(FPlatformProcessErrors, ReleasingNullAndExportsOfNullAreHarmless)
{
	FPlatformProcess::FreeDllHandle(nullptr);
	EXPECT_EQ(FPlatformProcess::GetDllExport(nullptr, TEXT("cos")), nullptr);
}

TEST(FPlatformProcessErrors, SleepIgnoresZeroNegativeAndNaN)
{
	const double Start = FPlatformTime::Seconds();
	FPlatformProcess::Sleep(0.0f);
	FPlatformProcess::Sleep(-5.0f);
	FPlatformProcess::Sleep(std::numeric_limits<float>::quiet_NaN());
	EXPECT_LT(FPlatformTime::Seconds() - Start, 1.0);
}
