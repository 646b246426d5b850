#include "ZnMotionContentSource.h"

#include "ZnMotionGenerator.h"
#include "ZnWav.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr uint32_t FirstWideCodePoint = 0x2E80;

// Decodes one UTF-8 sequence at Text[Index], advancing Index; malformed bytes come back as
// themselves (all below U+2E80), one at a time.
uint32_t NextCodePoint(const std::string& Text, size_t& Index)
{
	const uint8_t Lead = uint8_t(Text[Index]);
	int Length = Lead < 0x80 ? 1 : (Lead >> 5) == 0x6 ? 2 : (Lead >> 4) == 0xE ? 3 : (Lead >> 3) == 0x1E ? 4 : 0;
	if (Length <= 1 || Index + Length > Text.size())
	{
		++Index;
		return Lead;
	}
	uint32_t Value = Lead & (0x7F >> Length);
	for (int Offset = 1; Offset < Length; ++Offset)
	{
		const uint8_t Next = uint8_t(Text[Index + Offset]);
		if ((Next & 0xC0) != 0x80)
		{
			++Index;
			return Lead;
		}
		Value = (Value << 6) | (Next & 0x3F);
	}
	Index += Length;
	return Value;
}

bool IsSpace(uint32_t CodePoint)
{
	return CodePoint == ' ' || CodePoint == '\t' || CodePoint == '\n' || CodePoint == '\r' || CodePoint == '\v' ||
		CodePoint == '\f' || CodePoint == 0x3000;
}

// One swell of the tone per word, so the audio is recognisably speech-shaped in a wave editor.
std::vector<int16_t> ToneSamples(int32_t FrameCount, int32_t Words, int32_t Volume, int32_t Pitch)
{
	const int64_t Count = int64_t(FrameCount) * FZnMotionContentSource::SamplesPerFrame;
	std::vector<int16_t> Samples(size_t(Count), 0);
	const double Amplitude = 12000.0 * std::clamp(Volume, 0, 100) / 100.0;
	const double Frequency = 160.0 + 2.4 * std::clamp(Pitch, 0, 100);
	const double WordLength = double(Count) / std::max(Words, 1);
	constexpr double TwoPi = 6.283185307179586;
	for (int64_t Index = 0; Index < Count; ++Index)
	{
		const double InWord = std::fmod(double(Index), WordLength) / WordLength;
		const double Envelope = std::sin(InWord * TwoPi / 2.0);
		const double Phase = TwoPi * Frequency * double(Index) / FZnMotionContentSource::SampleRate;
		Samples[size_t(Index)] = int16_t(std::lround(Amplitude * Envelope * std::sin(Phase)));
	}
	return Samples;
}
} // namespace

int32_t FZnMotionContentSource::CountWords(const std::string& Utf8Text)
{
	int32_t Words = 0;
	bool bInWord = false;
	for (size_t Index = 0; Index < Utf8Text.size();)
	{
		const uint32_t CodePoint = NextCodePoint(Utf8Text, Index);
		if (IsSpace(CodePoint))
		{
			bInWord = false;
		}
		else if (CodePoint >= FirstWideCodePoint)
		{
			++Words;
			bInWord = false;
		}
		else if (!bInWord)
		{
			++Words;
			bInWord = true;
		}
	}
	return Words;
}

double FZnMotionContentSource::WordsPerSecond(int32_t Speed)
{
	return WordsPerSecondAtNormalSpeed * (0.5 + std::clamp(Speed, 0, 100) / 100.0);
}

int32_t FZnMotionContentSource::FrameCountForText(const std::string& Utf8Text, int32_t Speed)
{
	const int32_t Words = CountWords(Utf8Text);
	if (Words == 0)
	{
		return 0;
	}
	return FrameCountForDuration(Words / WordsPerSecond(Speed));
}

int32_t FZnMotionContentSource::FrameCountForDuration(double DurationSeconds)
{
	const double Frames = std::round(DurationSeconds * FramesPerSecond);
	// Far beyond any utterance; keeps a hostile WAV header from asking for billions of frames.
	constexpr double MostFrames = 30.0 * 60 * 60;
	return int32_t(std::clamp(Frames, 1.0, MostFrames));
}

void FZnMotionContentSource::MakeClips(int32_t FrameCount, const FZnSpeechRequest& Request, FZnGeneratedMedia& Out)
{
	FZnGenFaceOptions FaceOptions;
	FaceOptions.FrameCount = FrameCount;
	FaceOptions.Seed = Request.Seed;
	switch (Request.FaceShape)
	{
		case EZnFaceShape::V2:
			Out.FaceJson = FZnMotionGenerator::FaceToJsonV2(FZnMotionGenerator::GenerateFace(FaceOptions));
			break;
		case EZnFaceShape::ControlRig:
			Out.FaceJson = FZnMotionGenerator::ControlRigToJson(FZnMotionGenerator::GenerateControlRig(FaceOptions));
			break;
		default:
			Out.FaceJson = FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace(FaceOptions));
			break;
	}

	FZnGenBodyOptions BodyOptions;
	BodyOptions.FrameCount = FrameCount;
	BodyOptions.Seed = Request.Seed;
	const FZnGenBodyClip Body = FZnMotionGenerator::GenerateBody(BodyOptions);
	Out.BodyJson = Request.BodyShape == EZnBodyShape::V2 ? FZnMotionGenerator::BodyToJsonV2(Body)
														 : FZnMotionGenerator::BodyToJson(Body);
	Out.FrameCount = FrameCount;
}

bool FZnMotionContentSource::Speak(const FZnSpeechRequest& Request, FZnGeneratedMedia& Out, std::string& Error)
{
	const int32_t Words = CountWords(Request.Text);
	if (Words == 0)
	{
		Error = "the text has no words to say";
		return false;
	}
	const int32_t FrameCount = FrameCountForText(Request.Text, Request.Speed);
	FZnGeneratedMedia Media;
	Media.Wav = FZnWav::WritePcm16Mono(ToneSamples(FrameCount, Words, Request.Volume, Request.Pitch), SampleRate);
	Media.DurationSeconds = double(FrameCount) / FramesPerSecond;
	MakeClips(FrameCount, Request, Media);
	Out = std::move(Media);
	return true;
}

bool FZnMotionContentSource::Animate(
	const std::vector<uint8_t>& Wav, const FZnSpeechRequest& Request, FZnGeneratedMedia& Out, std::string& Error)
{
	FZnWavInfo Info;
	if (!FZnWav::ReadInfo(Wav.data(), Wav.size(), Info, Error))
	{
		return false;
	}
	FZnGeneratedMedia Media;
	Media.Wav = Wav;
	Media.DurationSeconds = Info.DurationSeconds();
	MakeClips(FrameCountForDuration(Info.DurationSeconds()), Request, Media);
	Out = std::move(Media);
	return true;
}
