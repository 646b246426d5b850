#include "ZnVisemes.h"

#include <cstring>

namespace
{
struct FZnPhonemePrefix
{
	const char* Prefix;
	EZnViseme Viseme;
};

// Checked in order, so affricates and other multi-letter sounds come before their first letter.
const FZnPhonemePrefix PhonemePrefixes[] = {
	{"tʃ", EZnViseme::Postalveolar},
	{"dʒ", EZnViseme::Postalveolar},
	{"tɕ", EZnViseme::Postalveolar},
	{"dʑ", EZnViseme::Postalveolar},
	{"ʈʂ", EZnViseme::Postalveolar},
	{"ʃ", EZnViseme::Postalveolar},
	{"ʒ", EZnViseme::Postalveolar},
	{"ɕ", EZnViseme::Postalveolar},
	{"ʑ", EZnViseme::Postalveolar},
	{"ʂ", EZnViseme::Postalveolar},
	{"ʐ", EZnViseme::Postalveolar},
	{"p", EZnViseme::Bilabial},
	{"b", EZnViseme::Bilabial},
	{"m", EZnViseme::Bilabial},
	{"ɸ", EZnViseme::Bilabial},
	{"β", EZnViseme::Bilabial},
	{"f", EZnViseme::Labiodental},
	{"v", EZnViseme::Labiodental},
	{"ʋ", EZnViseme::Labiodental},
	{"θ", EZnViseme::Dental},
	{"ð", EZnViseme::Dental},
	{"t", EZnViseme::Alveolar},
	{"d", EZnViseme::Alveolar},
	{"n", EZnViseme::Alveolar},
	{"l", EZnViseme::Alveolar},
	{"s", EZnViseme::Alveolar},
	{"z", EZnViseme::Alveolar},
	{"r", EZnViseme::Alveolar},
	{"ɹ", EZnViseme::Alveolar},
	{"ɾ", EZnViseme::Alveolar},
	{"ɫ", EZnViseme::Alveolar},
	{"ɬ", EZnViseme::Alveolar},
	{"ɻ", EZnViseme::Alveolar},
	{"w", EZnViseme::RoundedClose},
	{"ɥ", EZnViseme::RoundedClose},
	{"u", EZnViseme::RoundedClose},
	{"ʊ", EZnViseme::RoundedClose},
	{"y", EZnViseme::RoundedClose},
	{"ʏ", EZnViseme::RoundedClose},
	{"ɯ", EZnViseme::RoundedClose},
	{"ʉ", EZnViseme::RoundedClose},
	{"o", EZnViseme::RoundedOpen},
	{"ɔ", EZnViseme::RoundedOpen},
	{"ø", EZnViseme::RoundedOpen},
	{"œ", EZnViseme::RoundedOpen},
	{"ɤ", EZnViseme::RoundedOpen},
	{"ɵ", EZnViseme::RoundedOpen},
	{"a", EZnViseme::OpenVowel},
	{"ɑ", EZnViseme::OpenVowel},
	{"æ", EZnViseme::OpenVowel},
	{"ɐ", EZnViseme::OpenVowel},
	{"ʌ", EZnViseme::OpenVowel},
	{"ɒ", EZnViseme::OpenVowel},
	{"ɶ", EZnViseme::OpenVowel},
	{"e", EZnViseme::MidVowel},
	{"ɛ", EZnViseme::MidVowel},
	{"ə", EZnViseme::MidVowel},
	{"ɜ", EZnViseme::MidVowel},
	{"ɚ", EZnViseme::MidVowel},
	{"ɘ", EZnViseme::MidVowel},
	{"i", EZnViseme::SpreadVowel},
	{"ɪ", EZnViseme::SpreadVowel},
	{"j", EZnViseme::SpreadVowel},
	{"ɨ", EZnViseme::SpreadVowel},
};

// Jaw, close, funnel, pucker, stretch, smile, lower lip down, upper lip up, roll lower, press.
const FZnMouthPose MouthPoses[] = {
	{0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f}, // Silence
	{0.04f, 0.70f, 0.00f, 0.10f, 0.00f, 0.00f, 0.00f, 0.00f, 0.15f, 0.45f}, // Bilabial
	{0.12f, 0.10f, 0.00f, 0.00f, 0.10f, 0.00f, 0.00f, 0.25f, 0.65f, 0.00f}, // Labiodental
	{0.22f, 0.00f, 0.00f, 0.00f, 0.10f, 0.00f, 0.20f, 0.10f, 0.00f, 0.00f}, // Dental
	{0.25f, 0.00f, 0.00f, 0.00f, 0.18f, 0.05f, 0.10f, 0.05f, 0.00f, 0.00f}, // Alveolar
	{0.20f, 0.00f, 0.45f, 0.25f, 0.00f, 0.00f, 0.05f, 0.15f, 0.00f, 0.00f}, // Postalveolar
	{0.32f, 0.00f, 0.00f, 0.00f, 0.05f, 0.00f, 0.10f, 0.00f, 0.00f, 0.00f}, // Velar
	{0.85f, 0.00f, 0.05f, 0.00f, 0.10f, 0.05f, 0.40f, 0.10f, 0.00f, 0.00f}, // OpenVowel
	{0.55f, 0.00f, 0.00f, 0.00f, 0.20f, 0.10f, 0.25f, 0.05f, 0.00f, 0.00f}, // MidVowel
	{0.35f, 0.00f, 0.00f, 0.00f, 0.50f, 0.35f, 0.10f, 0.10f, 0.00f, 0.00f}, // SpreadVowel
	{0.25f, 0.00f, 0.35f, 0.80f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f}, // RoundedClose
	{0.55f, 0.00f, 0.65f, 0.30f, 0.00f, 0.00f, 0.10f, 0.00f, 0.00f, 0.00f}, // RoundedOpen
};
static_assert(
	sizeof(MouthPoses) / sizeof(MouthPoses[0]) == static_cast<size_t>(EZnViseme::Count), "one pose per viseme");

const char* const VisemeNames[] = {"Silence", "Bilabial", "Labiodental", "Dental", "Alveolar", "Postalveolar", "Velar",
	"OpenVowel", "MidVowel", "SpreadVowel", "RoundedClose", "RoundedOpen"};
static_assert(
	sizeof(VisemeNames) / sizeof(VisemeNames[0]) == static_cast<size_t>(EZnViseme::Count), "one name per viseme");
} // namespace

EZnViseme VisemeOfPhoneme(const std::string& IpaName)
{
	if (IpaName.empty())
	{
		return EZnViseme::Silence;
	}
	for (const FZnPhonemePrefix& Entry : PhonemePrefixes)
	{
		if (IpaName.compare(0, std::strlen(Entry.Prefix), Entry.Prefix) == 0)
		{
			return Entry.Viseme;
		}
	}
	return EZnViseme::Velar;
}

const FZnMouthPose& MouthPoseOf(EZnViseme Viseme)
{
	const size_t Index = static_cast<size_t>(Viseme);
	return MouthPoses[Index < static_cast<size_t>(EZnViseme::Count) ? Index : 0];
}

const char* VisemeName(EZnViseme Viseme)
{
	const size_t Index = static_cast<size_t>(Viseme);
	return Index < static_cast<size_t>(EZnViseme::Count) ? VisemeNames[Index] : "Unknown";
}
