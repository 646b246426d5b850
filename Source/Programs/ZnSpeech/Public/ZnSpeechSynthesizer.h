// The one owner of the speech synthesiser. espeak-ng keeps its state in globals (voice, parameters,
// output callback), so the whole process shares one synthesis thread that runs requests one at a
// time from a queue; callers on any thread hand a request over and wait for its result.
#pragma once

#include "HAL/Platform.h"
#include "ZnContentSource.h"

#include <memory>
#include <string>
#include <vector>

// A phoneme as the synthesiser reports it: its IPA name ("" for a pause) and the time, in seconds
// from the start of the audio, at which it begins. A phoneme lasts until the next one begins.
struct FZnPhonemeEvent
{
	double Time = 0.0;
	std::string Name;
};

// A word of the text: when it begins in the audio (seconds) and where it is in the text, counted in
// characters (code points), 0-based.
struct FZnWordEvent
{
	double Time = 0.0;
	int32 FirstCharacter = 0;
	int32 CharacterCount = 0;
};

struct FZnSynthesizedSpeech
{
	// 16-bit PCM, mono.
	std::vector<int16> Samples;
	int32 SampleRate = 0;
	// In time order.
	std::vector<FZnPhonemeEvent> Phonemes;
	std::vector<FZnWordEvent> Words;
	// The synthesiser's voice identifier, with the variant when one was chosen ("gmw/en+f3").
	std::string VoiceIdentifier;
	// The voice's language ("en-gb", "cmn-latn-pinyin").
	std::string VoiceLanguage;

	double DurationSeconds() const { return SampleRate > 0 ? static_cast<double>(Samples.size()) / SampleRate : 0.0; }
};

class FZnSpeechSynthesizer
{
public:
	// The process-wide synthesiser; its thread starts on first use and ends with the process.
	static std::shared_ptr<FZnSpeechSynthesizer> Shared();

	virtual ~FZnSpeechSynthesizer() = default;

	// Speaks Request.Text with the voice and prosody the request selects (see ZnVoiceChoice.h and
	// ZnProsody.h). Blocks the calling thread until the synthesis thread has finished this request
	// (and any queued before it). False with Error set for an empty or over-long text, a text that
	// gives no audio, or a synthesiser that could not start (no voice data installed).
	virtual bool Synthesize(const FZnSpeechRequest& Request, FZnSynthesizedSpeech& Out, std::string& Error) = 0;
};

// The longest text one request may carry, in bytes of UTF-8 (about half an hour of speech).
constexpr size_t ZnMaxSpeechTextBytes = 32 * 1024;
