// Buffers a reader keeps per thread, lent to one reader at a time.
#pragma once

#include "CoreMinimal.h"

// Buffers grown past this many bytes are dropped when their reader finishes rather than kept for
// the thread's next text: a text that large is rare, and allocating afresh costs little beside
// parsing it, while keeping the buffers would hold the memory for the rest of the thread's life.
constexpr size_t ZnScratchKeepLimit = size_t(16) << 20;

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
