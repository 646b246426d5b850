// Names of the engine's threads.
#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"

class CORE_API FThreadManager
{
public:
	// The process's one manager; it lives until the process ends.
	static FThreadManager& Get();

	// The name of the thread with this operating-system id: "GameThread" for the game thread
	// (see GGameThreadId), the registered name for a thread added with AddThread, and, as in the
	// engine, an empty text for any thread the manager does not know. Any thread may call it.
	static const FString& GetThreadName(uint32 ThreadId);

	// Standalone only: gives a thread a name (the engine names the threads it creates itself).
	// Replaces an earlier name of the same id.
	void AddThread(uint32 ThreadId, const FString& Name);
	// Standalone only: forgets the thread's name, for a thread that is about to end.
	void RemoveThread(uint32 ThreadId);

private:
	FThreadManager() = default;
};
