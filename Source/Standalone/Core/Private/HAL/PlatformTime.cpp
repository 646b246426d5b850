#include "HAL/PlatformTime.h"

#include <time.h>

namespace
{
constexpr double SecondsPerCycle = 1.0e-9;
// The engine adds 2^24 seconds to every reading of its seconds clock.
constexpr double SecondsOffset = 16777216.0;
} // namespace

uint64 FPlatformTime::Cycles64()
{
	struct timespec Now;
	clock_gettime(CLOCK_MONOTONIC, &Now);
	return static_cast<uint64>(Now.tv_sec) * 1000000000ull + static_cast<uint64>(Now.tv_nsec);
}

uint32 FPlatformTime::Cycles()
{
	return static_cast<uint32>(Cycles64());
}

double FPlatformTime::Seconds()
{
	return static_cast<double>(Cycles64()) * SecondsPerCycle + SecondsOffset;
}

double FPlatformTime::GetSecondsPerCycle()
{
	return SecondsPerCycle;
}

double FPlatformTime::GetSecondsPerCycle64()
{
	return SecondsPerCycle;
}

float FPlatformTime::ToSeconds(const uint32 Cycles)
{
	return static_cast<float>(static_cast<double>(Cycles) * SecondsPerCycle);
}

double FPlatformTime::ToSeconds64(const uint64 Cycles)
{
	return static_cast<double>(Cycles) * SecondsPerCycle;
}
