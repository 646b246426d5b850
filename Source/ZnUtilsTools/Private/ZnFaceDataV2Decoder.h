// Decodes the service's frame-by-frame face format (V2): each frame object carries its own
// 1-based "frameIndex" and a "bs" array of blend-shape weights in percent.
#pragma once

#include "CoreMinimal.h"
#include "ZnFaceData.h"

class FZnJsonValue;

// A face animation being accumulated from V2 frames: per channel, the weights in arrival order
// and a curve keyed by time. Not thread-safe: drive one instance from one thread.
class FZnFaceDataV2Decoder
{
public:
	// Channels of the streamed state and of the one-shot decode (they differ; both are kept).
	static constexpr int32 StreamChannelCount = 52;
	static constexpr int32 ResponseChannelCount = 51;

	// A state with no channels: frames added before Reset only move the length.
	FZnFaceDataV2Decoder() = default;

	// Forgets every frame and starts over with ChannelCount empty channels.
	void Reset(int32 ChannelCount);

	// Adds one frame object. Weight = percent / 100 in double, clamped to 0..1, then narrowed;
	// positions past the channel count are ignored; a missing "bs" adds no weights. Returns false
	// and changes nothing when the value is not an object or has no usable "frameIndex" (missing,
	// negative, not a number).
	bool AddFrame(const FZnJsonValue& Frame);

	// Parses one frame text and adds it; false when the text is empty or not a JSON object.
	bool AddFrameText(const FString& JsonStr);

	// Writes the animation so far as a new record (new id, no names) and its length: the largest
	// frame time seen (no extra frame added). The accumulated frames stay.
	void Assemble(FZnFaceData& OutFaceData, float& OutTotalTime) const;

	// One-shot decode of a JSON array of frames into 51 channels. Empty text, text that does not
	// parse, or a root that is not an array: outputs untouched. Elements that are not objects or
	// have no usable "frameIndex" are skipped.
	static bool DecodeResponse(const FString& JsonStr, FZnFaceData& OutFaceData, float& OutTotalTime);

	// The module-wide stream behind the script functions (game thread only, one stream at a time).
	static FZnFaceDataV2Decoder& GetStream();

private:
	// Adds the frame's weights and gives its time in seconds; false when the frame is skipped.
	bool AddFrameAt(const FZnJsonValue& FrameValue, double& OutTime);

	TArray<TArray<float>> Weights;
	TArray<FFloatCurve> Curves;
	double LargestTime = 0.0;
};
