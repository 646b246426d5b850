// The face clip decoding rules written out plainly over the tree reader, as a reference for the
// module's window-by-window decoder: whatever text both are given, they must agree on whether it
// decodes and on every weight, key and the length.
#pragma once

#include "ZnFaceData.h"
#include "ZnJsonReader.h"
#include "ZnMotionDecoding.h"

#include <string>

namespace ZnFaceModel
{
constexpr int32 ChannelCount = 51;

// Decodes a face clip (a root array of frames, each an array of weights in percent); false, with
// OutFace untouched, when the text does not parse or its root is not an array.
inline bool Decode(const FString& Text, FZnFaceData& OutFace)
{
	FZnJsonReader Reader;
	FZnJsonArray Frames;
	if (!Reader.ParseArray(Text, Frames))
	{
		return false;
	}
	FZnFaceData Face;
	Face.CurveFrames.SetNum(ChannelCount);
	Face.Curves.SetNum(ChannelCount);
	uint64 FrameNumber = 0;
	for (FZnJsonValue Frame : Frames)
	{
		const float Time = ZnMotion::FrameTime(FrameNumber++);
		if (Frame.GetType() != EZnJsonType::Array)
		{
			continue;
		}
		int32 Channel = 0;
		for (FZnJsonValue Weight : Frame.AsArray())
		{
			if (Channel == ChannelCount)
			{
				break;
			}
			const float Scaled = float(Weight.AsNumber()) * 0.01f;
			const float Clamped = !(Scaled >= 0.0f) ? 0.0f : (Scaled >= 1.0f ? 1.0f : Scaled);
			Face.CurveFrames[Channel].Add(Clamped);
			ZnMotion::AddCurveKey(Face.Curves[Channel].FloatCurve, Time, Clamped);
			++Channel;
		}
	}
	Face.totalTime = ZnMotion::FrameTime(FrameNumber);
	OutFace = MoveTemp(Face);
	return true;
}

// "" when both records hold the same weights, keys and length (names and ids aside; a weight of
// -0 equals 0, as the tree reader reads "-0" as 0), else what differs first.
inline std::string Difference(const FZnFaceData& A, const FZnFaceData& B)
{
	if (A.totalTime != B.totalTime)
	{
		return "total time";
	}
	if (A.CurveFrames.Num() != B.CurveFrames.Num() || A.Curves.Num() != B.Curves.Num())
	{
		return "channel count";
	}
	for (int32 Channel = 0; Channel < A.CurveFrames.Num(); ++Channel)
	{
		const std::string Where = "channel " + std::to_string(Channel);
		if (A.CurveFrames[Channel].Num() != B.CurveFrames[Channel].Num())
		{
			return Where + ": frame count";
		}
		for (int32 Frame = 0; Frame < A.CurveFrames[Channel].Num(); ++Frame)
		{
			if (A.CurveFrames[Channel][Frame] != B.CurveFrames[Channel][Frame])
			{
				return Where + ": weight of frame " + std::to_string(Frame);
			}
		}
		const TArray<FRichCurveKey>& KeysA = A.Curves[Channel].FloatCurve.Keys;
		const TArray<FRichCurveKey>& KeysB = B.Curves[Channel].FloatCurve.Keys;
		if (KeysA.Num() != KeysB.Num())
		{
			return Where + ": key count";
		}
		for (int32 Key = 0; Key < KeysA.Num(); ++Key)
		{
			if (KeysA[Key].Time != KeysB[Key].Time || KeysA[Key].Value != KeysB[Key].Value)
			{
				return Where + ": key " + std::to_string(Key);
			}
		}
	}
	return "";
}
} // namespace ZnFaceModel
