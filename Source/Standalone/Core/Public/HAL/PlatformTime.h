// The high-resolution clock.
//
// The counter is the system's monotonic clock in nanoseconds, so one cycle lasts 1e-9 seconds.
// Seconds() adds the engine's fixed offset of 16,777,216 seconds (2^24) to the counter time;
// the offset keeps early values away from zero, where float time stamps derived from them
// would be most precise and then suddenly coarser. Safe to call from any thread.
#pragma once

#include "CoreTypes.h"

struct CORE_API FPlatformTime
{
	// Counter × seconds per cycle + 16,777,216.0.
	static double Seconds();
	// The counter (nanoseconds of the monotonic clock).
	static uint64 Cycles64();
	// The counter's low 32 bits; wraps about every 4.3 seconds.
	static uint32 Cycles();
	// Seconds per counter cycle (1e-9).
	static double GetSecondsPerCycle();
	static double GetSecondsPerCycle64();
	// Seconds between two Cycles() readings, allowing for one wrap.
	static float ToSeconds(const uint32 Cycles);
	static double ToSeconds64(const uint64 Cycles);
};
