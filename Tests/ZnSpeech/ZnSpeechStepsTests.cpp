// The source's steps after the audio, called one by one: the benchmarks and tools that time or
// inspect them must see exactly what the source hands the service.
#include "ZnSpeechTestHelpers.h"

#include "ZnLoudness.h"
#include "ZnWav.h"

using namespace ZnSpeechTest;

// Synthesis itself is not repeatable to the sample, so the spoken path is checked on its own
// terms: one accent per spoken word, at the word's time, and clips as long as the audio.
TEST(ZnSpeechStepsTests, SynthesisedSpeechIsAnalysedWordByWord)
{
	FZnSpeechRequest Request;
	Request.Text = "The quick brown fox jumps over the lazy dog.";
	const FZnSynthesizedSpeech Speech = Synthesize(Request);
	const FZnSpeechFaceInputs Analysis = AnalyseSpeechAudio(
		ToFloatAudio(Speech.Samples, Speech.SampleRate), &Speech.Phonemes, &Speech.Words, Request.Seed);
	EXPECT_EQ(Analysis.FrameCount, FrameCountForAudio(Speech.Samples.size(), Speech.SampleRate));
	EXPECT_DOUBLE_EQ(Analysis.DurationSeconds, Speech.DurationSeconds());
	EXPECT_EQ(Analysis.Phonemes, &Speech.Phonemes);
	ASSERT_EQ(Analysis.Levels.size(), size_t(Analysis.FrameCount));
	ASSERT_EQ(Analysis.Accents.size(), Speech.Words.size());
	EXPECT_TRUE(Analysis.Accents.front().bPhraseStart);
	for (size_t Index = 1; Index < Analysis.Accents.size(); ++Index)
	{
		EXPECT_GE(Analysis.Accents[Index].Start, Analysis.Accents[Index - 1].Start);
	}

	const FZnFaceData Face = DecodeFace(MakeSpeechFaceJson(Analysis, EZnFaceShape::V1));
	ASSERT_EQ(Face.CurveFrames.Num(), 51);
	EXPECT_EQ(Face.CurveFrames[0].Num(), Analysis.FrameCount);
	const FZnBodyData Body = DecodeBody(MakeSpeechBodyJson(Analysis, EZnBodyShape::V1));
	ASSERT_GT(Body.BoneFrames.Num(), 0);
	EXPECT_EQ(Body.BoneFrames[0].Num(), Analysis.FrameCount);
}

// Given audio goes through the same steps as synthesised speech, so this also holds the source's
// own composition of the steps to the functions called one by one.
TEST(ZnSpeechStepsTests, StepsOneByOneGiveTheAnimatedClipsByteForByte)
{
	const FZnSynthesizedSpeech Speech = Synthesize(
		[]
		{
			FZnSpeechRequest Request;
			Request.Text = "Hello there, how are you today?";
			return Request;
		}());
	const std::vector<uint8_t> Wav = FZnWav::WritePcm16Mono(Speech.Samples, Speech.SampleRate);
	FZnSpeechRequest Request;
	Request.Seed = 5;
	FZnGeneratedMedia Animated;
	std::string Error;
	ASSERT_TRUE(MakeSpeechContentSource()->Animate(Wav, Request, Animated, Error)) << Error;

	FZnPcmAudio Audio;
	ASSERT_TRUE(ReadWav(Wav, Audio, Error)) << Error;
	const FZnSpeechFaceInputs Analysis = AnalyseSpeechAudio(Audio, nullptr, nullptr, Request.Seed);
	EXPECT_EQ(Analysis.Phonemes, nullptr);
	EXPECT_EQ(Analysis.FrameCount, Animated.FrameCount);
	EXPECT_EQ(MakeSpeechFaceJson(Analysis, Request.FaceShape), Animated.FaceJson);
	EXPECT_EQ(MakeSpeechBodyJson(Analysis, Request.BodyShape), Animated.BodyJson);
}
