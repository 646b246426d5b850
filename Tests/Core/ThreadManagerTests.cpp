#include "HAL/ThreadManager.h"

#include "Containers/StringConv.h"
#include "CoreGlobals.h"
#include "HAL/PlatformTLS.h"

#include <gtest/gtest.h>

#include <string>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace
{
std::string Utf8(const FString& Text)
{
	return std::string(TCHAR_TO_UTF8(*Text));
}
} // namespace

TEST(FPlatformTLS, ThreadIdIsTheKernelThreadId)
{
	EXPECT_EQ(FPlatformTLS::GetCurrentThreadId(), static_cast<uint32>(syscall(SYS_gettid)));
	uint32 Other = 0;
	std::thread Worker([&Other]() { Other = FPlatformTLS::GetCurrentThreadId(); });
	Worker.join();
	EXPECT_NE(Other, 0u);
	EXPECT_NE(Other, FPlatformTLS::GetCurrentThreadId());
}

TEST(CoreGlobals, TheStartingThreadIsTheGameThread)
{
	// The test program's main thread started the process, so it is the game thread.
	EXPECT_EQ(GGameThreadId, static_cast<uint32>(getpid()));
	EXPECT_TRUE(IsInGameThread());
	bool bWorkerInGameThread = true;
	std::thread Worker([&]() { bWorkerInGameThread = IsInGameThread(); });
	Worker.join();
	EXPECT_FALSE(bWorkerInGameThread);
}

TEST(CoreGlobals, NoRenderingOrRhiThreadUnlessOneIsNamed)
{
	EXPECT_FALSE(GIsEditor);
	EXPECT_FALSE(IsInRenderingThread());
	EXPECT_FALSE(IsInRHIThread());

	bool bRendering = false;
	bool bRhi = true;
	std::thread Renderer(
		[&]()
		{
			GRenderThreadId = FPlatformTLS::GetCurrentThreadId();
			bRendering = IsInRenderingThread();
			bRhi = IsInRHIThread();
			GRenderThreadId = 0;
		});
	Renderer.join();
	EXPECT_TRUE(bRendering);
	EXPECT_FALSE(bRhi);

	bool bRhiThread = false;
	std::thread RhiThread(
		[&]()
		{
			GRHIThreadId = FPlatformTLS::GetCurrentThreadId();
			bRhiThread = IsInRHIThread();
			GRHIThreadId = 0;
		});
	RhiThread.join();
	EXPECT_TRUE(bRhiThread);
	EXPECT_FALSE(IsInRenderingThread());
}

TEST(FThreadManager, GameThreadIsNamedGameThread)
{
	EXPECT_EQ(Utf8(FThreadManager::GetThreadName(FPlatformTLS::GetCurrentThreadId())), "GameThread");
	EXPECT_EQ(Utf8(FThreadManager::GetThreadName(GGameThreadId)), "GameThread");
}

TEST(FThreadManager, UnknownThreadsHaveNoName)
{
	std::string Name = "unset";
	std::thread Worker([&]() { Name = Utf8(FThreadManager::GetThreadName(FPlatformTLS::GetCurrentThreadId())); });
	Worker.join();
	EXPECT_EQ(Name, "");
	EXPECT_EQ(Utf8(FThreadManager::GetThreadName(0xFFFFFFF0u)), "");
}

TEST(FThreadManager, AddedThreadsAreNamedUntilRemoved)
{
	FThreadManager::Get().AddThread(424242u, TEXT("AudioThread"));
	EXPECT_EQ(Utf8(FThreadManager::GetThreadName(424242u)), "AudioThread");
	FThreadManager::Get().AddThread(424242u, TEXT("Renamed"));
	EXPECT_EQ(Utf8(FThreadManager::GetThreadName(424242u)), "Renamed");
	FThreadManager::Get().RemoveThread(424242u);
	EXPECT_EQ(Utf8(FThreadManager::GetThreadName(424242u)), "");
}
