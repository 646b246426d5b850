// Seeded randomness that gives the same numbers on every standard library: the Mersenne Twister's
// raw output is fixed by the C++ standard, while the standard distributions are not, so the
// mapping to a range is done here.
#pragma once

#include "HAL/Platform.h"

#include <random>

class FZnSpeechRandom
{
public:
	// Salt keeps the streams of different parts (blinks, gaze, body) apart for one request seed.
	FZnSpeechRandom(uint64 Seed, uint64 Salt)
		: Engine(Seed ^ (Salt * 0x9E3779B97F4A7C15ull))
	{
	}

	// Uniform in [0, 1).
	double Unit() { return static_cast<double>(Engine() >> 11) * (1.0 / 9007199254740992.0); }
	double Range(double Lo, double Hi) { return Lo + (Hi - Lo) * Unit(); }
	int32 Between(int32 Lo, int32 Hi) { return Lo + static_cast<int32>(Engine() % static_cast<uint64>(Hi - Lo + 1)); }

private:
	std::mt19937_64 Engine;
};
