#include "ZnSpeechContentSource.h"

#include "ZnLoudness.h"
#include "ZnSpeechBody.h"
#include "ZnSpeechFace.h"
#include "ZnSpeechSynthesizer.h"
#include "ZnWav.h"
#include "ZnWavFile.h"

FZnSpeechFaceInputs AnalyseSpeechAudio(const FZnPcmAudio& Audio, const std::vector<FZnPhonemeEvent>* Phonemes,
	const std::vector<FZnWordEvent>* Words, uint64 Seed)
{
	FZnSpeechFaceInputs Analysis;
	Analysis.FrameCount = FrameCountForAudio(Audio.Samples.size(), Audio.SampleRate);
	const std::vector<double> Levels = FrameLevels(Audio, Analysis.FrameCount);
	Analysis.DurationSeconds = Audio.DurationSeconds();
	Analysis.Levels = NormalizeLevels(Levels);
	Analysis.Phonemes = Phonemes;
	Analysis.Accents = Words != nullptr && Phonemes != nullptr
		? AccentsFromWords(*Words, *Phonemes, Levels, Analysis.DurationSeconds)
		: AccentsFromLevels(Analysis.Levels);
	Analysis.Seed = Seed;
	return Analysis;
}

std::string MakeSpeechFaceJson(const FZnSpeechFaceInputs& Analysis, EZnFaceShape Shape)
{
	return FaceToJson(BuildSpeechFace(Analysis), Shape);
}

std::string MakeSpeechBodyJson(const FZnSpeechFaceInputs& Analysis, EZnBodyShape Shape)
{
	return BodyToJson(BuildSpeechBody(Analysis.FrameCount, PlanGestures(Analysis.Accents), Analysis.Seed), Shape);
}

namespace
{
// Everything after the audio: the same for synthesised speech and for given audio.
void AnimateAudio(const FZnPcmAudio& Audio, const std::vector<FZnPhonemeEvent>* Phonemes,
	const std::vector<FZnWordEvent>* Words, const FZnSpeechRequest& Request, FZnGeneratedMedia& Media)
{
	const FZnSpeechFaceInputs Analysis = AnalyseSpeechAudio(Audio, Phonemes, Words, Request.Seed);
	Media.FaceJson = MakeSpeechFaceJson(Analysis, Request.FaceShape);
	Media.BodyJson = MakeSpeechBodyJson(Analysis, Request.BodyShape);
	Media.DurationSeconds = Analysis.DurationSeconds;
	Media.FrameCount = Analysis.FrameCount;
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
