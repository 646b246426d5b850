// One synthesiser for the whole process: requests from many threads are served one at a time and
// each gets its own result. The synthesiser carries a little state from one utterance to the next
// (its audio for the same text can differ by a few milliseconds), so results are compared by
// voice, words and length rather than byte for byte.
#include "ZnSpeechTestHelpers.h"

#include "ZnSpeechSynthesizer.h"

#include <gtest/gtest.h>

#include <thread>

using namespace ZnSpeechTest;

TEST(ZnSpeechSynthesizerTests, ConcurrentRequestsGetTheirOwnResults)
{
	const std::vector<std::string> Texts = {"One.", "另一个线程说这个。",
		"A third thread speaks a much longer sentence, with a pause in it, and then some more words after that.",
		"And the fourth is short."};
	std::vector<FZnGeneratedMedia> Alone;
	for (const std::string& Text : Texts)
	{
		Alone.push_back(Speak(Text));
	}
	std::vector<FZnGeneratedMedia> Together(Texts.size() * 3);
	std::vector<std::thread> Threads;
	const std::shared_ptr<IZnContentSource> Source = MakeSpeechContentSource();
	for (size_t Index = 0; Index < Together.size(); ++Index)
	{
		Threads.emplace_back(
			[&, Index]
			{
				FZnSpeechRequest Request;
				Request.Text = Texts[Index % Texts.size()];
				std::string Error;
				Source->Speak(Request, Together[Index], Error);
			});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	for (size_t Index = 0; Index < Together.size(); ++Index)
	{
		const FZnGeneratedMedia& Expected = Alone[Index % Texts.size()];
		EXPECT_EQ(Together[Index].Voice, Expected.Voice) << Index;
		EXPECT_NEAR(Together[Index].DurationSeconds, Expected.DurationSeconds, 0.05) << Index;
		EXPECT_NEAR(Together[Index].FrameCount, Expected.FrameCount, 2) << Index;
	}
}

TEST(ZnSpeechSynthesizerTests, EventsAreInTimeOrderInsideTheAudio)
{
	FZnSpeechRequest Request;
	Request.Text = "Events come in order, from start to end.";
	const FZnSynthesizedSpeech Speech = Synthesize(Request);
	EXPECT_EQ(Speech.SampleRate, 22050);
	ASSERT_EQ(Speech.Words.size(), 8u);
	EXPECT_EQ(Speech.Words[0].FirstCharacter, 0);
	EXPECT_EQ(Speech.Words[0].CharacterCount, 6); // "Events"
	EXPECT_EQ(Speech.Words[1].FirstCharacter, 7); // "come"
	ASSERT_GT(Speech.Phonemes.size(), 20u);
	for (size_t Index = 1; Index < Speech.Phonemes.size(); ++Index)
	{
		EXPECT_GE(Speech.Phonemes[Index].Time, Speech.Phonemes[Index - 1].Time);
	}
	EXPECT_LE(Speech.Phonemes.back().Time, Speech.DurationSeconds());
	for (size_t Index = 1; Index < Speech.Words.size(); ++Index)
	{
		EXPECT_GT(Speech.Words[Index].Time, Speech.Words[Index - 1].Time);
	}
}

TEST(ZnSpeechSynthesizerTests, PunctuationAloneIsRefusedOrSilent)
{
	// The synthesiser says nothing for a text of punctuation; the source either refuses it or
	// makes a clip whose mouth stays shut.
	FZnSpeechRequest Request;
	Request.Text = "...";
	FZnGeneratedMedia Media;
	std::string Error;
	if (MakeSpeechContentSource()->Speak(Request, Media, Error))
	{
		for (const float Jaw : Curve(DecodeFace(Media.FaceJson), "JawOpen"))
		{
			EXPECT_LT(Jaw, 0.05f);
		}
	}
	else
	{
		EXPECT_EQ(Error, "the text gave no audio");
	}
}
