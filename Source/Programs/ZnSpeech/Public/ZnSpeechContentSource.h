// The content source that speaks: espeak-ng speech, a face that says the words and a body that
// moves with them, all as long as the audio to the frame (FrameCount = audio length at 30 frames
// per second, rounded). Hand it to the local service as FZnLocalServiceConfig::Content.
//
// Speak: FZnSpeechRequest::FaceShape selects the face JSON (V1 by default, V2, ControlRig) and
// BodyShape the body JSON (V1 by default, V2); Seed drives blinks, gaze and the idle body; the
// voice and prosody fields are described in ZnVoiceChoice.h and ZnProsody.h. Out.Voice is the
// synthesiser's voice identifier ("gmw/en", "sit/cmn-Latn-pinyin+f3").
//
// Animate: the mouth follows the loudness of the given WAV (ZnWavFile.h lists what it reads),
// with blinks, gaze, brow lifts and beats on loudness onsets; Out.Wav is the input unchanged.
//
// Thread-safe: any number of threads may call it; syntheses run one at a time on the shared
// synthesis thread (ZnSpeechSynthesizer.h) and the rest of the work on the calling thread.
// Failures leave Out unchanged and set Error.
#pragma once

#include "ZnContentSource.h"
#include "ZnSpeechFace.h"
#include "ZnWavFile.h"

#include <memory>

std::shared_ptr<IZnContentSource> MakeSpeechContentSource();

// The source's steps after the audio, one by one, for callers that time or inspect them (the
// source runs exactly these). AnalyseSpeechAudio measures the audio's loudness per frame and the
// word accents both clips move on; Phonemes and Words come from synthesis, or are null for given
// audio (the mouth then follows loudness alone). The result points at Phonemes, which must outlive it.
FZnSpeechFaceInputs AnalyseSpeechAudio(const FZnPcmAudio& Audio, const std::vector<FZnPhonemeEvent>* Phonemes,
	const std::vector<FZnWordEvent>* Words, uint64 Seed);
std::string MakeSpeechFaceJson(const FZnSpeechFaceInputs& Analysis, EZnFaceShape Shape);
std::string MakeSpeechBodyJson(const FZnSpeechFaceInputs& Analysis, EZnBodyShape Shape);
