#include "HAL/ThreadManager.h"

#include "CoreGlobals.h"

#include <map>
#include <mutex>

namespace
{
std::mutex& NamesMutex()
{
	static std::mutex Mutex;
	return Mutex;
}

// Names are handed out by reference, so each lives in a node that never moves; a removed
// thread's text stays valid (emptied) for callers that still hold it.
std::map<uint32, FString>& Names()
{
	static std::map<uint32, FString> Map;
	return Map;
}
} // namespace

FThreadManager& FThreadManager::Get()
{
	static FThreadManager Manager;
	return Manager;
}

const FString& FThreadManager::GetThreadName(uint32 ThreadId)
{
	static const FString GameThreadName(TEXT("GameThread"));
	static const FString NoName;
	if (ThreadId == GGameThreadId)
	{
		return GameThreadName;
	}
	std::lock_guard<std::mutex> Lock(NamesMutex());
	const auto Found = Names().find(ThreadId);
	return Found != Names().end() ? Found->second : NoName;
}

void FThreadManager::AddThread(uint32 ThreadId, const FString& Name)
{
	std::lock_guard<std::mutex> Lock(NamesMutex());
	Names()[ThreadId] = Name;
}

void FThreadManager::RemoveThread(uint32 ThreadId)
{
	std::lock_guard<std::mutex> Lock(NamesMutex());
	const auto Found = Names().find(ThreadId);
	if (Found != Names().end())
	{
		Found->second = FString();
	}
}
