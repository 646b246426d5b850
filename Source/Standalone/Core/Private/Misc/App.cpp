#include "Misc/App.h"

float FApp::UnfocusedVolumeMultiplier = 0.0f;

void FApp::SetUnfocusedVolumeMultiplier(float InVolumeMultiplier)
{
	UnfocusedVolumeMultiplier = InVolumeMultiplier;
}

float FApp::GetUnfocusedVolumeMultiplier()
{
	return UnfocusedVolumeMultiplier;
}
