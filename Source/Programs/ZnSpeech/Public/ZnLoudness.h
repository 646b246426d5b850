// Loudness of audio per animation frame. Pure; any thread.
#pragma once

#include "ZnWavFile.h"

#include <vector>

// Frames per second of every clip this library makes.
constexpr int32 ZnSpeechFrameRate = 30;

// The number of frames for audio of SampleCount samples: the duration in frames rounded to the
// nearest whole frame, so the clip's length (FrameCount / 30 s) is within half a frame of the audio.
// At least 1 for any audio, 0 for none.
int32 FrameCountForAudio(size_t SampleCount, int32 SampleRate);

// Root-mean-square level (0..1 of full scale) of the audio around each frame's time: the window
// [Frame/30 - 1/60, Frame/30 + 1/60) clipped to the audio.
std::vector<double> FrameLevels(const FZnPcmAudio& Audio, int32 FrameCount);

// Levels scaled so the loud part of the utterance (its 95th percentile, or 0.3 of its peak when that
// is higher) is 1, clamped to 0..1.
// Audio that never rises above -60 dBFS gives all zeros, so silence keeps the mouth closed
// whatever its absolute level.
std::vector<double> NormalizeLevels(const std::vector<double>& Levels);

// The same audio as floats in -1..1.
FZnPcmAudio ToFloatAudio(const std::vector<int16>& Samples, int32 SampleRate);
