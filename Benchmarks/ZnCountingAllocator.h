// Counts the bytes the benchmark program holds on the heap, so a benchmark can report the peak
// memory a decoder needs on top of what it started with. The program replaces malloc and its
// siblings (glibc allows this) and forwards to glibc's own allocator, so every allocation is seen:
// operator new, containers of the engine stand-in and third-party parsers alike. Counting costs
// two relaxed atomic operations per call, paid equally by every contender.
#pragma once

#include <cstddef>

namespace ZnCountingAllocator
{
// Bytes currently held (usable sizes, as the allocator hands them out).
std::size_t LiveBytes();
// Forgets the previous peak: the peak restarts at the current live byte count.
void ResetPeak();
// Highest live byte count since the last ResetPeak.
std::size_t PeakBytes();
} // namespace ZnCountingAllocator
