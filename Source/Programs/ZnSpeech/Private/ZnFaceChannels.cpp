#include "ZnFaceChannels.h"

#include "ZnMotionGenerator.h"

#include <algorithm>
#include <cstdlib>

namespace
{
int32 IndexOf(const char* Name)
{
	const std::vector<std::string>& Names = FZnMotionGenerator::FaceChannelNames();
	const auto Found = std::find(Names.begin(), Names.end(), Name);
	if (Found == Names.end())
	{
		// The rig's channel list is fixed in the generator; a missing name is a programming error.
		std::abort();
	}
	return static_cast<int32>(Found - Names.begin());
}

FZnFaceChannels Resolve()
{
	FZnFaceChannels C;
	C.JawOpen = IndexOf("JawOpen");
	C.MouthClose = IndexOf("MouthClose");
	C.MouthFunnel = IndexOf("MouthFunnel");
	C.MouthPucker = IndexOf("MouthPucker");
	C.MouthStretchLeft = IndexOf("MouthStretchLeft");
	C.MouthStretchRight = IndexOf("MouthStretchRight");
	C.MouthSmileLeft = IndexOf("MouthSmileLeft");
	C.MouthSmileRight = IndexOf("MouthSmileRight");
	C.MouthLowerDownLeft = IndexOf("MouthLowerDownLeft");
	C.MouthLowerDownRight = IndexOf("MouthLowerDownRight");
	C.MouthUpperUpLeft = IndexOf("MouthUpperUpLeft");
	C.MouthUpperUpRight = IndexOf("MouthUpperUpRight");
	C.MouthRollLower = IndexOf("MouthRollLower");
	C.MouthPressLeft = IndexOf("MouthPressLeft");
	C.MouthPressRight = IndexOf("MouthPressRight");
	C.EyeBlinkLeft = IndexOf("EyeBlinkLeft");
	C.EyeBlinkRight = IndexOf("EyeBlinkRight");
	C.EyeLookUpLeft = IndexOf("EyeLookUpLeft");
	C.EyeLookUpRight = IndexOf("EyeLookUpRight");
	C.EyeLookDownLeft = IndexOf("EyeLookDownLeft");
	C.EyeLookDownRight = IndexOf("EyeLookDownRight");
	C.EyeLookInLeft = IndexOf("EyeLookInLeft");
	C.EyeLookInRight = IndexOf("EyeLookInRight");
	C.EyeLookOutLeft = IndexOf("EyeLookOutLeft");
	C.EyeLookOutRight = IndexOf("EyeLookOutRight");
	C.BrowInnerUp = IndexOf("BrowInnerUp");
	C.BrowOuterUpLeft = IndexOf("BrowOuterUpLeft");
	C.BrowOuterUpRight = IndexOf("BrowOuterUpRight");
	C.Count = static_cast<int32>(FZnMotionGenerator::FaceChannelNames().size());
	return C;
}
} // namespace

const FZnFaceChannels& FZnFaceChannels::Get()
{
	static const FZnFaceChannels Channels = Resolve();
	return Channels;
}
