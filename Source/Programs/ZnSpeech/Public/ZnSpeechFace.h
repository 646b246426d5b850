// A whole speaking face: mouth, blinks, gaze and brows (ZnLipSync.h, ZnEyeModel.h), and its JSON
// text in the shape a request asks for. Pure and seeded; any thread.
#pragma once

#include "ZnContentSource.h"
#include "ZnMotionGenerator.h"
#include "ZnSpeechAccents.h"

#include <vector>

struct FZnSpeechFaceInputs
{
	int32 FrameCount = 0;
	double DurationSeconds = 0.0;
	// Normalised level per frame (ZnLoudness.h).
	std::vector<double> Levels;
	// Null: the mouth follows loudness alone.
	const std::vector<FZnPhonemeEvent>* Phonemes = nullptr;
	std::vector<FZnWordAccent> Accents;
	uint64 Seed = 1;
};

// FrameCount frames of the 51 channels in percent (0..100), each value as the JSON text will say it.
FZnGenFaceClip BuildSpeechFace(const FZnSpeechFaceInputs& Inputs);

// V1: an array of frames of 51 weights; V2: frame objects {"frameIndex","bs"}; ControlRig:
// {"curve_names","curve_data"} with the generator's control curves (weights as 0..1 amounts).
std::string FaceToJson(const FZnGenFaceClip& Face, EZnFaceShape Shape);
