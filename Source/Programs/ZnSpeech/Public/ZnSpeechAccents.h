// Where the speech has its words and which of them carry the stress, for the brows, beats and
// nods. Pure; any thread.
#pragma once

#include "ZnSpeechSynthesizer.h"

#include <vector>

struct FZnWordAccent
{
	// Seconds from the start of the audio.
	double Start = 0.0;
	double End = 0.0;
	// The loudest frame level inside the word, weighted up for longer words.
	double Prominence = 0.0;
	// The first word of the utterance or of a phrase after a pause of 200 ms or more.
	bool bPhraseStart = false;
	// Marked by MarkStressedWords.
	bool bStressed = false;
};

// Words as the synthesiser reported them; a word ends where the next begins or at the first pause
// after its start, whichever comes first. Levels are frame levels (ZnLoudness.h), raw or
// normalised: only their ratios matter, and raw ones keep the differences between loud words.
std::vector<FZnWordAccent> AccentsFromWords(const std::vector<FZnWordEvent>& Words,
	const std::vector<FZnPhonemeEvent>& Phonemes, const std::vector<double>& Levels, double DurationSeconds);

// Word-like stretches found in audio alone: an onset where the level rises past 0.3 after having
// been below 0.12, lasting until it falls back below 0.12 for 100 ms.
std::vector<FZnWordAccent> AccentsFromLevels(const std::vector<double>& Levels);

// A word is stressed when it stands out: its prominence is at least 1.1 times the utterance's
// median, at least that of both neighbours, and it begins at least 0.7 s after the previous
// stressed word.
void MarkStressedWords(std::vector<FZnWordAccent>& Accents);
