#include "ZnLoudness.h"

#include <algorithm>
#include <cmath>

int32 FrameCountForAudio(size_t SampleCount, int32 SampleRate)
{
	if (SampleCount == 0 || SampleRate <= 0)
	{
		return 0;
	}
	const double Frames = static_cast<double>(SampleCount) * ZnSpeechFrameRate / SampleRate;
	return std::max<int32>(1, static_cast<int32>(std::lround(Frames)));
}

std::vector<double> FrameLevels(const FZnPcmAudio& Audio, int32 FrameCount)
{
	std::vector<double> Levels(static_cast<size_t>(std::max<int32>(0, FrameCount)), 0.0);
	const double Rate = Audio.SampleRate;
	const int64 Total = static_cast<int64>(Audio.Samples.size());
	for (size_t Frame = 0; Frame < Levels.size(); ++Frame)
	{
		const double Centre = static_cast<double>(Frame) / ZnSpeechFrameRate;
		const int64 First =
			std::max<int64>(0, static_cast<int64>(std::floor((Centre - 0.5 / ZnSpeechFrameRate) * Rate)));
		const int64 End =
			std::min<int64>(Total, static_cast<int64>(std::floor((Centre + 0.5 / ZnSpeechFrameRate) * Rate)));
		double Sum = 0.0;
		for (int64 Index = First; Index < End; ++Index)
		{
			const double Sample = Audio.Samples[static_cast<size_t>(Index)];
			Sum += Sample * Sample;
		}
		Levels[Frame] = End > First ? std::sqrt(Sum / static_cast<double>(End - First)) : 0.0;
	}
	return Levels;
}

std::vector<double> NormalizeLevels(const std::vector<double>& Levels)
{
	std::vector<double> Normalized(Levels.size(), 0.0);
	if (Levels.empty())
	{
		return Normalized;
	}
	std::vector<double> Sorted = Levels;
	const size_t Rank = std::min(Sorted.size() - 1, Sorted.size() * 95 / 100);
	std::nth_element(Sorted.begin(), Sorted.begin() + static_cast<std::ptrdiff_t>(Rank), Sorted.end());
	// A short utterance in a long silence has a quiet 95th percentile; its peak still sets the scale.
	const double Peak = *std::max_element(Levels.begin(), Levels.end());
	const double Reference = std::max(Sorted[Rank], 0.3 * Peak);
	constexpr double SilenceLevel = 0.001; // -60 dBFS
	if (Reference < SilenceLevel)
	{
		return Normalized;
	}
	for (size_t Frame = 0; Frame < Levels.size(); ++Frame)
	{
		Normalized[Frame] = std::clamp(Levels[Frame] / Reference, 0.0, 1.0);
	}
	return Normalized;
}

FZnPcmAudio ToFloatAudio(const std::vector<int16>& Samples, int32 SampleRate)
{
	FZnPcmAudio Audio;
	Audio.SampleRate = SampleRate;
	Audio.Samples.reserve(Samples.size());
	for (const int16 Sample : Samples)
	{
		Audio.Samples.push_back(Sample / 32768.0f);
	}
	return Audio;
}
