// Buffers a reader keeps per thread, lent to one reader at a time.
#pragma once

#include "CoreMinimal.h"

// Lends the calling thread's ScratchType to its holder, so that a stream of texts (one per
// animation frame, say) reuses the same buffers instead of allocating for each. A second holder
// on the same thread while the first is alive gets a private ScratchType, so readers can nest.
// ScratchType needs a bool bBusy and a ReleaseIfLarge() that drops buffers not worth keeping.
template <typename ScratchType>
class TZnThreadScratch
{
public:
	TZnThreadScratch()
	{
		ScratchType& Shared = GetShared();
		if (!Shared.bBusy)
		{
			Scratch = &Shared;
		}
		else
		{
			Scratch = new ScratchType();
			bOwned = true;
		}
		Scratch->bBusy = true;
	}

	~TZnThreadScratch()
	{
		if (bOwned)
		{
			delete Scratch;
		}
		else
		{
			Scratch->ReleaseIfLarge();
			Scratch->bBusy = false;
		}
	}

	TZnThreadScratch(const TZnThreadScratch&) = delete;
	TZnThreadScratch& operator=(const TZnThreadScratch&) = delete;

	ScratchType* operator->() const { return Scratch; }

private:
	static ScratchType& GetShared()
	{
		thread_local ScratchType Shared;
		return Shared;
	}

	ScratchType* Scratch = nullptr;
	bool bOwned = false;
};
