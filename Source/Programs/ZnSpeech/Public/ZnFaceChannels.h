// Indices of the face channels the speech face drives, in the motion generator's channel order
// (FZnMotionGenerator::FaceChannelNames()), resolved by name once. Any thread.
#pragma once

#include "HAL/Platform.h"

struct FZnFaceChannels
{
	int32 JawOpen, MouthClose, MouthFunnel, MouthPucker, MouthStretchLeft, MouthStretchRight, MouthSmileLeft,
		MouthSmileRight, MouthLowerDownLeft, MouthLowerDownRight, MouthUpperUpLeft, MouthUpperUpRight, MouthRollLower,
		MouthPressLeft, MouthPressRight;
	int32 EyeBlinkLeft, EyeBlinkRight, EyeLookUpLeft, EyeLookUpRight, EyeLookDownLeft, EyeLookDownRight, EyeLookInLeft,
		EyeLookInRight, EyeLookOutLeft, EyeLookOutRight;
	int32 BrowInnerUp, BrowOuterUpLeft, BrowOuterUpRight;
	int32 Count;

	static const FZnFaceChannels& Get();
};
