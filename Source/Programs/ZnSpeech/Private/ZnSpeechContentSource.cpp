#include "ZnSpeechContentSource.h"

#include "ZnLoudness.h"
#include "ZnSpeechBody.h"
#include "ZnSpeechFace.h"
#include "ZnSpeechSynthesizer.h"
#include "ZnWav.h"
#include "ZnWavFile.h"

namespace
{
// Everything after the audio: the same for synthesised speech and for given audio.
void AnimateAudio(const FZnPcmAudio& Audio, const std::vector<FZnPhonemeEvent>* Phonemes,
	const std::vector<FZnWordEvent>* Words, const FZnSpeechRequest& Request, FZnGeneratedMedia& Media)
{
	const int32 FrameCount = FrameCountForAudio(Audio.Samples.size(), Audio.SampleRate);
	const std::vector<double> Levels = FrameLevels(Audio, FrameCount);

	FZnSpeechFaceInputs Face;
	Face.FrameCount = FrameCount;
	Face.DurationSeconds = Audio.DurationSeconds();
	Face.Levels = NormalizeLevels(Levels);
	Face.Phonemes = Phonemes;
	Face.Accents = Words != nullptr ? AccentsFromWords(*Words, *Phonemes, Levels, Face.DurationSeconds)
									: AccentsFromLevels(Face.Levels);
	Face.Seed = Request.Seed;

	Media.FaceJson = FaceToJson(BuildSpeechFace(Face), Request.FaceShape);
	Media.BodyJson =
		BodyToJson(BuildSpeechBody(FrameCount, PlanGestures(Face.Accents), Request.Seed), Request.BodyShape);
	Media.DurationSeconds = Face.DurationSeconds;
	Media.FrameCount = FrameCount;
}

class FZnSpeechContentSource final : public IZnContentSource
{
public:
	explicit FZnSpeechContentSource(std::shared_ptr<FZnSpeechSynthesizer> InSynthesizer)
		: Synthesizer(std::move(InSynthesizer))
	{
	}

	bool Speak(const FZnSpeechRequest& Request, FZnGeneratedMedia& Out, std::string& Error) override
	{
		FZnSynthesizedSpeech Speech;
		if (!Synthesizer->Synthesize(Request, Speech, Error))
		{
			return false;
		}
		FZnGeneratedMedia Media;
		AnimateAudio(ToFloatAudio(Speech.Samples, Speech.SampleRate), &Speech.Phonemes, &Speech.Words, Request, Media);
		Media.Wav = FZnWav::WritePcm16Mono(Speech.Samples, Speech.SampleRate);
		Media.Voice = Speech.VoiceIdentifier;
		Out = std::move(Media);
		return true;
	}

	bool Animate(const std::vector<uint8_t>& Wav, const FZnSpeechRequest& Request, FZnGeneratedMedia& Out,
		std::string& Error) override
	{
		FZnPcmAudio Audio;
		if (!ReadWav(Wav, Audio, Error))
		{
			return false;
		}
		FZnGeneratedMedia Media;
		AnimateAudio(Audio, nullptr, nullptr, Request, Media);
		Media.Wav = Wav;
		Out = std::move(Media);
		return true;
	}

private:
	std::shared_ptr<FZnSpeechSynthesizer> Synthesizer;
};
} // namespace

std::shared_ptr<IZnContentSource> MakeSpeechContentSource()
{
	return std::make_shared<FZnSpeechContentSource>(FZnSpeechSynthesizer::Shared());
}
