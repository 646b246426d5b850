// Application-wide settings.
#pragma once

#include "CoreTypes.h"

class CORE_API FApp
{
public:
	// The factor applied to the audio volume while the application window is not focused,
	// normally 0..1 (stored as given; callers clamp). Starts at 0 (silent when unfocused).
	// Game thread only.
	static void SetUnfocusedVolumeMultiplier(float InVolumeMultiplier);
	static float GetUnfocusedVolumeMultiplier();

private:
	static float UnfocusedVolumeMultiplier;
};
