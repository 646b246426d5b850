#include "Misc/App.h"

#include <gtest/gtest.h>

TEST(FApp, UnfocusedVolumeIsStoredAsGiven)
{
	const float Before = FApp::GetUnfocusedVolumeMultiplier();
	FApp::SetUnfocusedVolumeMultiplier(0.25f);
	EXPECT_FLOAT_EQ(FApp::GetUnfocusedVolumeMultiplier(), 0.25f);
	FApp::SetUnfocusedVolumeMultiplier(Before);
}
