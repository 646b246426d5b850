// FTSTicker: callbacks run once per engine frame (the core ticker), with the engine's names.
//
// A ticker delegate receives the frame's delta time in seconds and returns true to keep ticking or
// false to be removed. Tick runs every delegate whose delay has passed; delegates added or removed
// during a tick take effect from the next one (a removed delegate is never called again, even in
// the tick that removed it). The host calls Tick once per frame; the standalone engine loop does.
// Threads: AddTicker and RemoveTicker may be called from any thread; Tick runs on the game thread.
#pragma once

#include "CoreTypes.h"
#include "Delegates/Delegate.h"

#include <mutex>
#include <vector>

DECLARE_DELEGATE_RetVal_OneParam(bool, FTickerDelegate, float);

class CORE_API FTSTicker
{
public:
	/** Identifies one added delegate; default-constructed handles name none. */
	struct FDelegateHandle
	{
		uint64 Id = 0;
		bool IsValid() const { return Id != 0; }
		void Reset() { Id = 0; }
		bool operator==(const FDelegateHandle& Other) const { return Id == Other.Id; }
	};

	/** The ticker the engine loop ticks every frame. */
	static FTSTicker& GetCoreTicker();

	/** Adds a delegate first called once InDelay seconds of ticks have passed (0: next tick). */
	FDelegateHandle AddTicker(const FTickerDelegate& InDelegate, float InDelay = 0.0f);
	/** Removes the delegate; a handle of one already removed is ignored. */
	void RemoveTicker(FDelegateHandle Handle);
	/** Advances time by DeltaTime seconds and runs the delegates that are due. */
	void Tick(float DeltaTime);

private:
	struct FElement
	{
		uint64 Id = 0;
		double FireTime = 0.0;
		float DelayTime = 0.0f;
		FTickerDelegate Delegate;
	};

	std::mutex Mutex;
	std::vector<FElement> Elements;
	std::vector<uint64> RemovedWhileTicking;
	double CurrentTime = 0.0;
	uint64 NextId = 1;
	bool bTicking = false;
};
