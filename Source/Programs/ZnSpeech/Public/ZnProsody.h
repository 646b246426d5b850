// How a request's speed, volume and pitch (0..100, 50 the voice's normal) become the
// synthesiser's parameters. Values outside 0..100 are clamped. Pure; any thread.
#pragma once

#include "HAL/Platform.h"

struct FZnProsody
{
	// Words per minute: 175 * 2^((Speed - 50) / 50), so 0 gives half and 100 twice the normal 175.
	int32 RateWordsPerMinute = 175;
	// Amplitude 0..200 with 100 normal: Volume * 2.
	int32 Amplitude = 100;
	// Base pitch 0..100 with 50 normal: the request's value as it is.
	int32 Pitch = 50;
};

FZnProsody MapProsody(int32 Speed, int32 Volume, int32 Pitch);
