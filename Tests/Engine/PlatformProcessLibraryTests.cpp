#include "Containers/UnrealString.h"
#include "HAL/PlatformProcess.h"

#include <gtest/gtest.h>

#include <string>

TEST(FPlatformProcessLibraries, LibraryBuiltByTheTestsLoadsAndReleases)
{
	const FString Path(ZN_TEST_SHARED_LIBRARY);
	void* Handle = FPlatformProcess::GetDllHandle(*Path);
	ASSERT_NE(Handle, nullptr);
	using FAnswer = int (*)();
	FAnswer Answer =
		reinterpret_cast<FAnswer>(FPlatformProcess::GetDllExport(Handle, TEXT("ZnTestSharedLibraryAnswer")));
	ASSERT_NE(Answer, nullptr);
	EXPECT_EQ(Answer(), 42);
	FPlatformProcess::FreeDllHandle(Handle);
}

TEST(FPlatformProcessLibraries, PathNextToTheLibraryThatDoesNotExistGivesNull)
{
	std::string Missing = ZN_TEST_SHARED_LIBRARY;
	Missing.insert(Missing.find_last_of('/') + 1, "missing_");
	EXPECT_EQ(FPlatformProcess::GetDllHandle(*FString(Missing.c_str())), nullptr);
}
