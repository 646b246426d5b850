// A game's allocator keeps the pages it frees for the next allocation; glibc by default hands
// blocks of a few hundred kilobytes back to the system, so every download would fault in fresh
// pages for its bodies and texts, which no frame of a game pays. Benchmarks that move such blocks
// call this first; every contender in the process then runs under the same setting.
#pragma once

#if defined(__GLIBC__)
#include <malloc.h>
#endif

inline void UseGameLikeAllocator()
{
#if defined(__GLIBC__)
	mallopt(M_MMAP_THRESHOLD, 64 * 1024 * 1024);
	mallopt(M_TRIM_THRESHOLD, 256 * 1024 * 1024);
#endif
}
