#include "ZnSpeechAccents.h"

#include "ZnLoudness.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double PhrasePauseSeconds = 0.2;

double PeakLevel(const std::vector<double>& Levels, double Start, double End)
{
	const int64 First = std::max<int64>(0, static_cast<int64>(std::floor(Start * ZnSpeechFrameRate)));
	const int64 Last =
		std::min<int64>(static_cast<int64>(Levels.size()) - 1, static_cast<int64>(std::ceil(End * ZnSpeechFrameRate)));
	double Peak = 0.0;
	for (int64 Frame = First; Frame <= Last; ++Frame)
	{
		Peak = std::max(Peak, Levels[static_cast<size_t>(Frame)]);
	}
	return Peak;
}

// Longer words read as more prominent, up to a point (a 0.4 s word counts 1.15 times a 0.2 s one).
double Prominence(double Peak, double Start, double End)
{
	const double Length = std::clamp(End - Start, 0.05, 0.6);
	return Peak * std::pow(Length / 0.2, 0.2);
}
} // namespace

std::vector<FZnWordAccent> AccentsFromWords(const std::vector<FZnWordEvent>& Words,
	const std::vector<FZnPhonemeEvent>& Phonemes, const std::vector<double>& Levels, double DurationSeconds)
{
	std::vector<FZnWordAccent> Accents;
	size_t Phoneme = 0;
	for (size_t Index = 0; Index < Words.size(); ++Index)
	{
		FZnWordAccent Accent;
		Accent.Start = std::clamp(Words[Index].Time, 0.0, DurationSeconds);
		Accent.End = Index + 1 < Words.size() ? std::max(Accent.Start, Words[Index + 1].Time) : DurationSeconds;
		while (Phoneme < Phonemes.size() && Phonemes[Phoneme].Time <= Accent.Start)
		{
			++Phoneme;
		}
		for (size_t Next = Phoneme; Next < Phonemes.size() && Phonemes[Next].Time < Accent.End; ++Next)
		{
			if (Phonemes[Next].Name.empty())
			{
				Accent.End = Phonemes[Next].Time;
				break;
			}
		}
		Accent.Prominence = Prominence(PeakLevel(Levels, Accent.Start, Accent.End), Accent.Start, Accent.End);
		Accent.bPhraseStart = Accents.empty() || Accent.Start - Accents.back().End >= PhrasePauseSeconds;
		Accents.push_back(Accent);
	}
	MarkStressedWords(Accents);
	return Accents;
}

std::vector<FZnWordAccent> AccentsFromLevels(const std::vector<double>& Levels)
{
	constexpr double OnLevel = 0.3;
	constexpr double OffLevel = 0.12;
	constexpr int32 OffFrames = 3;
	std::vector<FZnWordAccent> Accents;
	bool bInWord = false;
	bool bArmed = true;
	int32 QuietFrames = 0;
	int32 LastLoudFrame = 0;
	for (int32 Frame = 0; Frame < static_cast<int32>(Levels.size()); ++Frame)
	{
		const double Level = Levels[static_cast<size_t>(Frame)];
		if (Level < OffLevel)
		{
			bArmed = true;
			++QuietFrames;
			if (bInWord && QuietFrames >= OffFrames)
			{
				Accents.back().End = (LastLoudFrame + 1.0) / ZnSpeechFrameRate;
				bInWord = false;
			}
			continue;
		}
		QuietFrames = 0;
		LastLoudFrame = Frame;
		if (Level >= OnLevel && bArmed)
		{
			if (bInWord)
			{
				Accents.back().End = static_cast<double>(Frame) / ZnSpeechFrameRate;
			}
			FZnWordAccent Accent;
			Accent.Start = static_cast<double>(Frame) / ZnSpeechFrameRate;
			Accent.bPhraseStart = Accents.empty() || Accent.Start - Accents.back().End >= PhrasePauseSeconds;
			Accents.push_back(Accent);
			bInWord = true;
			bArmed = false;
		}
	}
	if (bInWord)
	{
		Accents.back().End = (LastLoudFrame + 1.0) / ZnSpeechFrameRate;
	}
	for (FZnWordAccent& Accent : Accents)
	{
		Accent.Prominence = Prominence(PeakLevel(Levels, Accent.Start, Accent.End), Accent.Start, Accent.End);
	}
	MarkStressedWords(Accents);
	return Accents;
}

void MarkStressedWords(std::vector<FZnWordAccent>& Accents)
{
	if (Accents.empty())
	{
		return;
	}
	std::vector<double> Values;
	for (const FZnWordAccent& Accent : Accents)
	{
		Values.push_back(Accent.Prominence);
	}
	std::nth_element(Values.begin(), Values.begin() + static_cast<std::ptrdiff_t>(Values.size() / 2), Values.end());
	const double Median = Values[Values.size() / 2];
	double LastStressed = -1e9;
	for (size_t Index = 0; Index < Accents.size(); ++Index)
	{
		FZnWordAccent& Accent = Accents[Index];
		const bool bAbovePrevious = Index == 0 || Accent.Prominence >= Accents[Index - 1].Prominence;
		const bool bAboveNext = Index + 1 == Accents.size() || Accent.Prominence >= Accents[Index + 1].Prominence;
		Accent.bStressed = Accent.Prominence > 0.0 && Accent.Prominence >= 1.1 * Median && bAbovePrevious &&
			bAboveNext && Accent.Start - LastStressed >= 0.7;
		if (Accent.bStressed)
		{
			LastStressed = Accent.Start;
		}
	}
}
