// The local service's default content: clips from the motion generator and a WAV tone, all as
// long as the text would take to say. It stands where speech synthesis will stand, so its only
// promise is the length rule below; the clips and the tone carry no meaning.
//
// The length rule: a text's words are its runs of characters between white space, except that
// every character from U+2E80 up (CJK ideographs, kana, Hangul, full-width forms) is a word of
// its own. At speed 50 they are said at 2.5 words per second; speed s (clamped to 0..100) scales
// that by (0.5 + s / 100), so 0 is half as fast and 100 one and a half times. The frame count is
// the duration at 30 frames per second, rounded to the nearest frame and at least one; the WAV has
// exactly 800 samples per frame at 24000 Hz, so audio and clips end together.
//
// Thread: stateless; Speak and Animate may be called from any thread.
#pragma once

#include "ZnContentSource.h"

class FZnMotionContentSource : public IZnContentSource
{
public:
	static constexpr double WordsPerSecondAtNormalSpeed = 2.5;
	static constexpr int32_t FramesPerSecond = 30;
	static constexpr int32_t SampleRate = 24000;
	static constexpr int32_t SamplesPerFrame = SampleRate / FramesPerSecond;

	// Words in a UTF-8 text by the rule above (bytes that are not valid UTF-8 count as characters
	// below U+2E80).
	static int32_t CountWords(const std::string& Utf8Text);
	static double WordsPerSecond(int32_t Speed);
	// The frame count for Text said at Speed: 0 when the text has no words.
	static int32_t FrameCountForText(const std::string& Utf8Text, int32_t Speed);
	// The frame count for audio of DurationSeconds: rounded to the nearest frame, at least one.
	static int32_t FrameCountForDuration(double DurationSeconds);

	// An empty or all-space text is an error. The WAV is a soft tone that swells once per word,
	// louder with Volume (0 silent) and higher with Pitch.
	bool Speak(const FZnSpeechRequest& Request, FZnGeneratedMedia& Out, std::string& Error) override;
	// Reads the WAV's length (FZnWav::ReadInfo); Out.Wav is a copy of Wav.
	bool Animate(const std::vector<uint8_t>& Wav, const FZnSpeechRequest& Request, FZnGeneratedMedia& Out,
		std::string& Error) override;

	// The face and body clips of FrameCount frames in the request's shapes (shared by both operations
	// and by other sources that only replace the audio).
	static void MakeClips(int32_t FrameCount, const FZnSpeechRequest& Request, FZnGeneratedMedia& Out);
};
