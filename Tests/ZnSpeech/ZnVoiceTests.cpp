// The voice follows the text and the request; speed, volume and pitch reach the synthesiser.
#include "ZnSpeechTestHelpers.h"

#include "ZnProsody.h"
#include "ZnSpeechSynthesizer.h"
#include "ZnVoiceChoice.h"

#include <gtest/gtest.h>

using namespace ZnSpeechTest;

namespace
{

FZnSpeechRequest RequestFor(const std::string& Text)
{
	FZnSpeechRequest Request;
	Request.Text = Text;
	return Request;
}

double PeakAmplitude(const FZnGeneratedMedia& Media)
{
	double Peak = 0.0;
	for (const double Sample : ReadCanonicalWav(Media.Wav).Samples)
	{
		Peak = std::max(Peak, std::abs(Sample));
	}
	return Peak;
}
} // namespace

TEST(ZnVoiceTests, ChineseTextGetsTheMandarinVoice)
{
	const FZnGeneratedMedia Media = Speak("今天天气很好，我们去公园散步吧。");
	EXPECT_EQ(Media.Voice, "sit/cmn-Latn-pinyin");
	const FZnSynthesizedSpeech Speech = Synthesize(RequestFor("今天天气很好，我们去公园散步吧。"));
	EXPECT_EQ(Speech.VoiceLanguage, "cmn-latn-pinyin");
	// One word per character: the synthesiser read the characters as Mandarin syllables.
	EXPECT_EQ(Speech.Words.size(), 14u);
}

TEST(ZnVoiceTests, OtherTextGetsTheEnglishVoice)
{
	EXPECT_EQ(Speak("Good morning.").Voice, "gmw/en");
	// A single Han character among latin letters is enough for Mandarin.
	EXPECT_EQ(Speak("Hello 中").Voice, "sit/cmn-Latn-pinyin");
}

TEST(ZnVoiceTests, FemaleGenderPicksTheFemaleVariant)
{
	FZnSpeechRequest Request = RequestFor("Good morning.");
	Request.Gender = "female";
	EXPECT_EQ(Speak(Request).Voice, "gmw/en+f3");
	Request.Text = "早上好";
	EXPECT_EQ(Speak(Request).Voice, "sit/cmn-Latn-pinyin+f3");
	Request.Gender = "male";
	EXPECT_EQ(Speak(Request).Voice, "sit/cmn-Latn-pinyin");
	Request.Gender = "robot";
	EXPECT_EQ(Speak(Request).Voice, "sit/cmn-Latn-pinyin");
}

TEST(ZnVoiceTests, AnInstalledVoiceNameIsUsedAndOthersAreIgnored)
{
	FZnSpeechRequest Request = RequestFor("Good morning.");
	Request.VoiceName = "en-us";
	EXPECT_EQ(Speak(Request).Voice, "gmw/en-US");
	Request.VoiceName = "aixia";
	EXPECT_EQ(Speak(Request).Voice, "gmw/en");
}

TEST(ZnVoiceTests, FasterSpeedGivesShorterAudio)
{
	FZnSpeechRequest Request = RequestFor("This sentence is spoken once slowly and once quickly.");
	Request.Speed = 20;
	const double Slow = Speak(Request).DurationSeconds;
	Request.Speed = 80;
	const double Fast = Speak(Request).DurationSeconds;
	EXPECT_LT(Fast, Slow);
	// 175 wpm * 2^(-0.6) against 175 wpm * 2^(0.6): about 2.3 times faster, less the fixed pauses.
	EXPECT_LT(Fast, Slow * 0.7);
}

TEST(ZnVoiceTests, VolumeScalesTheAudio)
{
	FZnSpeechRequest Request = RequestFor("Loud and quiet.");
	Request.Volume = 20;
	const double Quiet = PeakAmplitude(Speak(Request));
	Request.Volume = 50;
	const double Normal = PeakAmplitude(Speak(Request));
	EXPECT_GT(Quiet, 0.0);
	EXPECT_LT(Quiet, Normal * 0.6);
}

TEST(ZnVoiceTests, ProsodyMapping)
{
	const FZnProsody Normal = MapProsody(50, 50, 50);
	EXPECT_EQ(Normal.RateWordsPerMinute, 175);
	EXPECT_EQ(Normal.Amplitude, 100);
	EXPECT_EQ(Normal.Pitch, 50);
	const FZnProsody Low = MapProsody(0, 0, 0);
	EXPECT_EQ(Low.RateWordsPerMinute, 88); // 87.5 rounded
	EXPECT_EQ(Low.Amplitude, 0);
	EXPECT_EQ(Low.Pitch, 0);
	const FZnProsody High = MapProsody(100, 100, 100);
	EXPECT_EQ(High.RateWordsPerMinute, 350);
	EXPECT_EQ(High.Amplitude, 200);
	EXPECT_EQ(High.Pitch, 100);
	// 175 * 2^(0.5) = 247.49
	EXPECT_EQ(MapProsody(75, 50, 50).RateWordsPerMinute, 247);
	// Out of range values are clamped.
	const FZnProsody Clamped = MapProsody(-40, 1000, -1);
	EXPECT_EQ(Clamped.RateWordsPerMinute, 88);
	EXPECT_EQ(Clamped.Amplitude, 200);
	EXPECT_EQ(Clamped.Pitch, 0);
}

TEST(ZnVoiceTests, HanDetection)
{
	EXPECT_TRUE(ContainsHanCharacter("中"));
	EXPECT_TRUE(ContainsHanCharacter("abc 㐀")); // extension A
	EXPECT_TRUE(ContainsHanCharacter("\xF0\xA0\x80\x80")); // U+20000, extension B
	EXPECT_FALSE(ContainsHanCharacter("Hello, world"));
	EXPECT_FALSE(ContainsHanCharacter("こんにちは")); // kana only
	EXPECT_FALSE(ContainsHanCharacter(""));
	// A cut-off character at the end and stray continuation bytes are skipped.
	EXPECT_FALSE(ContainsHanCharacter("abc\xE4\xB8"));
	EXPECT_FALSE(ContainsHanCharacter("\x80\x80\xBF"));
	EXPECT_TRUE(ContainsHanCharacter("\xE4\xB8\xE4\xB8\xAD"));
}

TEST(ZnVoiceTests, EmptyAndOverlongTextsAreRefused)
{
	for (const std::string& Text : {std::string(), std::string(" \n\t ")})
	{
		FZnGeneratedMedia Media;
		Media.Voice = "untouched";
		std::string Error;
		EXPECT_FALSE(MakeSpeechContentSource()->Speak(RequestFor(Text), Media, Error));
		EXPECT_EQ(Error, "the text is empty");
		EXPECT_EQ(Media.Voice, "untouched");
	}
	FZnGeneratedMedia Media;
	std::string Error;
	EXPECT_FALSE(
		MakeSpeechContentSource()->Speak(RequestFor(std::string(ZnMaxSpeechTextBytes + 1, 'a')), Media, Error));
	EXPECT_NE(Error.find("longer than"), std::string::npos);
}
