#include "ZnCountingAllocator.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <malloc.h>

extern "C"
{
	void* __libc_malloc(std::size_t Size);
	void __libc_free(void* Pointer);
	void* __libc_calloc(std::size_t Count, std::size_t Size);
	void* __libc_realloc(void* Pointer, std::size_t Size);
	void* __libc_memalign(std::size_t Alignment, std::size_t Size);
}

namespace
{
std::atomic<std::size_t> Live{0};
std::atomic<std::size_t> Peak{0};

void* Counted(void* Pointer)
{
	if (Pointer)
	{
		const std::size_t Size = malloc_usable_size(Pointer);
		const std::size_t Now = Live.fetch_add(Size, std::memory_order_relaxed) + Size;
		std::size_t Seen = Peak.load(std::memory_order_relaxed);
		while (Now > Seen && !Peak.compare_exchange_weak(Seen, Now, std::memory_order_relaxed))
		{
		}
	}
	return Pointer;
}

void Uncounted(void* Pointer)
{
	if (Pointer)
	{
		Live.fetch_sub(malloc_usable_size(Pointer), std::memory_order_relaxed);
	}
}
} // namespace

std::size_t ZnCountingAllocator::LiveBytes()
{
	return Live.load(std::memory_order_relaxed);
}

void ZnCountingAllocator::ResetPeak()
{
	Peak.store(Live.load(std::memory_order_relaxed), std::memory_order_relaxed);
}

std::size_t ZnCountingAllocator::PeakBytes()
{
	return Peak.load(std::memory_order_relaxed);
}

extern "C"
{
	void* malloc(std::size_t Size)
	{
		return Counted(__libc_malloc(Size));
	}

	void free(void* Pointer)
	{
		Uncounted(Pointer);
		__libc_free(Pointer);
	}

	void* calloc(std::size_t Count, std::size_t Size)
	{
		return Counted(__libc_calloc(Count, Size));
	}

	void* realloc(void* Pointer, std::size_t Size)
	{
		const std::size_t Old = Pointer ? malloc_usable_size(Pointer) : 0;
		void* Result = __libc_realloc(Pointer, Size);
		if (Result)
		{
			Live.fetch_sub(Old, std::memory_order_relaxed);
			Counted(Result);
		}
		else if (Size == 0)
		{
			// realloc(p, 0) freed the block.
			Live.fetch_sub(Old, std::memory_order_relaxed);
		}
		return Result;
	}

	void* memalign(std::size_t Alignment, std::size_t Size)
	{
		return Counted(__libc_memalign(Alignment, Size));
	}

	void* aligned_alloc(std::size_t Alignment, std::size_t Size)
	{
		return Counted(__libc_memalign(Alignment, Size));
	}

	int posix_memalign(void** Out, std::size_t Alignment, std::size_t Size)
	{
		if (Alignment < sizeof(void*) || (Alignment & (Alignment - 1)) != 0)
		{
			return EINVAL;
		}
		void* Pointer = Counted(__libc_memalign(Alignment, Size));
		if (!Pointer)
		{
			return ENOMEM;
		}
		*Out = Pointer;
		return 0;
	}
}
