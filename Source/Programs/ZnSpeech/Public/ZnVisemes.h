// The viseme table: which mouth shape each phoneme (by its IPA name) is seen as, and the mouth
// pose of each shape. Pure; any thread. docs/speech.md prints the table.
#pragma once

#include "HAL/Platform.h"

#include <string>

enum class EZnViseme : uint8
{
	Silence, // pauses (an empty phoneme name)
	Bilabial, // p b m: lips closed
	Labiodental, // f v: lower lip against the upper teeth
	Dental, // θ ð: tongue between the teeth
	Alveolar, // t d n l s z r and the like: slightly open, a little spread
	Postalveolar, // ʃ ʒ tʃ dʒ ɕ tɕ ʂ ʐ: lips pushed forward
	Velar, // k g ŋ h x and unknown consonants: open, neutral lips
	OpenVowel, // a ɑ æ ɐ ʌ ɒ: jaw wide
	MidVowel, // e ɛ ə ɜ ɚ: jaw half open
	SpreadVowel, // i ɪ j ɨ: lips stretched and a little smile
	RoundedClose, // u ʊ w y ʏ ɯ: lips puckered
	RoundedOpen, // o ɔ ø œ ɤ: lips funnelled, jaw half open
	Count
};

// Mouth channel amounts, 0..1, before loudness scaling.
struct FZnMouthPose
{
	float JawOpen = 0.0f;
	float MouthClose = 0.0f;
	float Funnel = 0.0f;
	float Pucker = 0.0f;
	float Stretch = 0.0f;
	float Smile = 0.0f;
	float LowerDown = 0.0f;
	float UpperUp = 0.0f;
	float RollLower = 0.0f;
	float Press = 0.0f;
};

// The viseme of a phoneme name in IPA as the synthesiser reports it (length marks, stress marks and
// diacritics after the first sound are ignored; a diphthong is seen as its first vowel). Names it
// does not know are Velar: a neutral, slightly open mouth.
EZnViseme VisemeOfPhoneme(const std::string& IpaName);

const FZnMouthPose& MouthPoseOf(EZnViseme Viseme);

// The name used in docs and logs ("Bilabial").
const char* VisemeName(EZnViseme Viseme);
