// The mouth of a speaking face. Pure; any thread.
//
// From phonemes: each frame takes the mouth poses of the phonemes that overlap its 1/30 s window,
// weighted by the overlap, then neighbouring frames blend (weights 1/4, 1/2, 1/4) so one sound
// runs into the next. The loudness of the frame scales the result: the jaw opens by
// 100 * G * (0.3 + 0.7 * pose) percent and the lip shapes by 100 * pose * (0.4 + 0.6 * G), with
// G = level^0.7 of the normalised level. Bilabial closures (p, b, m) are applied last and are not
// blended away: every frame whose time is within half a frame of the phoneme, or inside it, gets
// the lips closed (MouthClose at least 70, MouthPress 40, JawOpen at most 6).
//
// From loudness alone (audio without phonemes): the jaw follows 100 * 0.85 * G, the lower lip a
// third of that, smoothed the same way.
#pragma once

#include "ZnMotionGenerator.h"
#include "ZnSpeechSynthesizer.h"

#include <vector>

// Writes the mouth channels of every frame of Face (whose Weights must already have one row of
// FZnFaceChannels::Get().Count zeros per frame). Levels: normalised, one per frame.
void AddMouthFromPhonemes(const std::vector<FZnPhonemeEvent>& Phonemes, double DurationSeconds,
	const std::vector<double>& Levels, FZnGenFaceClip& Face);

void AddMouthFromLevels(const std::vector<double>& Levels, FZnGenFaceClip& Face);
