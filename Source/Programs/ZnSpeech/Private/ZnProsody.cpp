#include "ZnProsody.h"

#include <algorithm>
#include <cmath>

FZnProsody MapProsody(int32 Speed, int32 Volume, int32 Pitch)
{
	FZnProsody Prosody;
	// Rate is perceived on a ratio scale: equal steps of the slider scale the tempo by equal factors.
	const double Octaves = (std::clamp<int32>(Speed, 0, 100) - 50) / 50.0;
	Prosody.RateWordsPerMinute = static_cast<int32>(std::lround(175.0 * std::pow(2.0, Octaves)));
	Prosody.Amplitude = std::clamp<int32>(Volume, 0, 100) * 2;
	Prosody.Pitch = std::clamp<int32>(Pitch, 0, 100);
	return Prosody;
}
