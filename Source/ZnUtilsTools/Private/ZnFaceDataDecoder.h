// Decodes the service's whole-clip face texts into an FZnFaceData: the version 1 file (an array of
// frames of 51 blend-shape weights in percent) and the control-rig file (named curves, raw values).
#pragma once

#include "CoreMinimal.h"
#include "ZnFaceData.h"

class FZnFaceDataDecoder
{
public:
	// Blend-shape channels in a version 1 frame, in the order of ZnHuman_Skeleton::FaceCurveNames.
	static constexpr int32 ChannelCount = 51;

	// Version 1: frame i at i/30 s, weight = percent / 100 clamped to 0..1 (NaN and non-numbers
	// read 0), positions past 51 ignored, totalTime = frames / 30. With bWithNames the 51 channel
	// names are filled in; otherwise CurveNames stays empty. Returns false and leaves OutFaceData
	// untouched when the text is empty, does not parse, or is not an array at the root.
	static bool Decode(const FString& JsonStr, FZnFaceData& OutFaceData, bool bWithNames);
	static bool DecodeUtf8(const char* Utf8, int64 Length, FZnFaceData& OutFaceData, bool bWithNames);

	// Control rig: a "curve_names" array and "curve_data" frames of raw values (no scaling, no
	// clamping), frame i at i/30 s, totalTime = frames / 30. Values past the named curves are
	// ignored. Returns false and leaves OutFaceData untouched when the text is empty, does not
	// parse, or is not an object at the root.
	static bool DecodeControlRig(const FString& JsonStr, FZnFaceData& OutFaceData);
};
