// The body idles, breathes and gestures on word starts.
#include "ZnSpeechTestHelpers.h"

#include "ZnLoudness.h"
#include "ZnSpeechBody.h"

#include <gtest/gtest.h>

using namespace ZnSpeechTest;

namespace
{
FZnWordAccent Word(double Start, double End, bool bPhraseStart, bool bStressed)
{
	FZnWordAccent Accent;
	Accent.Start = Start;
	Accent.End = End;
	Accent.Prominence = 1.0;
	Accent.bPhraseStart = bPhraseStart;
	Accent.bStressed = bStressed;
	return Accent;
}

double AngleBetweenDegrees(const FZnGenQuat& A, const FZnGenQuat& B)
{
	// The written quaternions went through float: divide by their lengths, or a rotation would
	// seem a few thousandths of a degree away from itself.
	const double SizeA = std::sqrt(A.X * A.X + A.Y * A.Y + A.Z * A.Z + A.W * A.W);
	const double SizeB = std::sqrt(B.X * B.X + B.Y * B.Y + B.Z * B.Z + B.W * B.W);
	const double Dot = std::abs(A.X * B.X + A.Y * B.Y + A.Z * B.Z + A.W * B.W) / (SizeA * SizeB);
	return 2.0 * std::acos(std::min(1.0, Dot)) * 180.0 / 3.14159265358979;
}

size_t BoneIndex(const FZnGenBodyClip& Body, const char* Name)
{
	return static_cast<size_t>(std::find(Body.BoneNames.begin(), Body.BoneNames.end(), Name) - Body.BoneNames.begin());
}
} // namespace

TEST(ZnSpeechBodyTests, BeatsFallOnPhraseStartsAndStressedWordsSpacedApart)
{
	const std::vector<FZnWordAccent> Words = {Word(0.1, 0.4, true, false), Word(0.4, 0.6, false, true),
		Word(0.9, 1.2, false, false), Word(1.5, 1.9, false, true), Word(2.6, 3.0, true, true),
		Word(3.1, 3.4, false, true)};
	const std::vector<FZnGesture> Gestures = PlanGestures(Words);
	std::vector<double> Beats, Nods;
	std::vector<EZnGestureKind> Kinds;
	for (const FZnGesture& Gesture : Gestures)
	{
		(Gesture.Kind == EZnGestureKind::Nod ? Nods : Beats).push_back(Gesture.Time);
		if (Gesture.Kind != EZnGestureKind::Nod)
		{
			Kinds.push_back(Gesture.Kind);
		}
	}
	// 0.4 is within 0.6 s of the beat at 0.1; 3.1 within 0.6 s of 2.6.
	EXPECT_EQ(Beats, (std::vector<double>{0.1, 1.5, 2.6}));
	EXPECT_EQ(Kinds,
		(std::vector<EZnGestureKind>{EZnGestureKind::BeatRight, EZnGestureKind::BeatRight, EZnGestureKind::BeatBoth}));
	// Nods on stressed words 1.2 s apart: 0.4, 1.5 is too close, 2.6, 3.1 too close.
	EXPECT_EQ(Nods, (std::vector<double>{0.4, 2.6}));
}

TEST(ZnSpeechBodyTests, TheThirdBeatIsTheLeftHand)
{
	const std::vector<FZnGesture> Gestures =
		PlanGestures({Word(0.0, 0.3, true, false), Word(1.0, 1.3, true, false), Word(2.0, 2.3, true, false)});
	ASSERT_EQ(Gestures.size(), 3u);
	EXPECT_EQ(Gestures[2].Kind, EZnGestureKind::BeatLeft);
}

TEST(ZnSpeechBodyTests, ABeatBendsTheForearmAtTheWordStartAndSettlesAfter)
{
	const FZnGenBodyClip Still = BuildSpeechBody(90, {}, 4);
	const FZnGenBodyClip Beating = BuildSpeechBody(90, {{1.0, EZnGestureKind::BeatRight}}, 4);
	const size_t ForeArm = BoneIndex(Beating, "RightForeArm");
	const size_t LeftForeArm = BoneIndex(Beating, "LeftForeArm");
	ASSERT_LT(ForeArm, Beating.BoneNames.size());
	// The beat peaks at frame 30 with the full 14 degrees; 0.25 s before and 0.5 s after it is gone.
	EXPECT_NEAR(AngleBetweenDegrees(Still.Rotations[ForeArm][30], Beating.Rotations[ForeArm][30]), 14.0, 0.01);
	EXPECT_LT(AngleBetweenDegrees(Still.Rotations[ForeArm][22], Beating.Rotations[ForeArm][22]), 1e-3);
	EXPECT_LT(AngleBetweenDegrees(Still.Rotations[ForeArm][45], Beating.Rotations[ForeArm][45]), 1e-3);
	// The other hand rests.
	EXPECT_LT(AngleBetweenDegrees(Still.Rotations[LeftForeArm][30], Beating.Rotations[LeftForeArm][30]), 1e-3);
}

TEST(ZnSpeechBodyTests, ANodDipsTheHeadJustAfterTheWordStarts)
{
	const FZnGenBodyClip Still = BuildSpeechBody(60, {}, 4);
	const FZnGenBodyClip Nodding = BuildSpeechBody(60, {{1.0, EZnGestureKind::Nod}}, 4);
	const size_t Head = BoneIndex(Nodding, "Head");
	// Peak 0.1 s after the word start: frame 33.
	EXPECT_NEAR(AngleBetweenDegrees(Still.Rotations[Head][33], Nodding.Rotations[Head][33]), 5.0, 0.01);
	EXPECT_LT(AngleBetweenDegrees(Still.Rotations[Head][25], Nodding.Rotations[Head][25]), 1e-3);
}

TEST(ZnSpeechBodyTests, TheIdleStaysCloseToARestingPose)
{
	const FZnGenBodyClip Idle = BuildSpeechBody(300, {}, 8);
	const FZnGenBodyClip Wander = FZnMotionGenerator::GenerateBody({300, 8, true, true});
	const size_t Hips = BoneIndex(Idle, "Hips");
	double IdleSwing = 0.0, WanderSwing = 0.0;
	for (int32 Frame = 1; Frame < 300; ++Frame)
	{
		IdleSwing = std::max(IdleSwing, AngleBetweenDegrees(Idle.Rotations[Hips][0], Idle.Rotations[Hips][Frame]));
		WanderSwing =
			std::max(WanderSwing, AngleBetweenDegrees(Wander.Rotations[Hips][0], Wander.Rotations[Hips][Frame]));
	}
	EXPECT_GT(IdleSwing, 0.5);
	EXPECT_LT(IdleSwing, WanderSwing / 2);
	// The root stays within a few centimetres and breathes.
	double MinY = 1e9, MaxY = -1e9, MinX = 1e9, MaxX = -1e9;
	for (const FZnGenVec& Root : Idle.RootPositions)
	{
		MinY = std::min(MinY, Root.Y);
		MaxY = std::max(MaxY, Root.Y);
		MinX = std::min(MinX, Root.X);
		MaxX = std::max(MaxX, Root.X);
	}
	EXPECT_GT(MaxY - MinY, 0.002);
	EXPECT_LT(MaxY - MinY, 0.02);
	EXPECT_GT(MaxX - MinX, 0.01);
	EXPECT_LT(MaxX - MinX, 0.15);
}

TEST(ZnSpeechBodyTests, SpeechGivesGesturesAtWordStarts)
{
	FZnSpeechRequest Request;
	Request.Text = "First, we open the door. Then, we walk inside, and finally, we close it again.";
	const FZnSynthesizedSpeech Speech = Synthesize(Request);
	const FZnPcmAudio Audio = ToFloatAudio(Speech.Samples, Speech.SampleRate);
	const int32 Frames = FrameCountForAudio(Audio.Samples.size(), Audio.SampleRate);
	const std::vector<FZnWordAccent> Accents =
		AccentsFromWords(Speech.Words, Speech.Phonemes, FrameLevels(Audio, Frames), Speech.DurationSeconds());
	ASSERT_EQ(Accents.size(), Speech.Words.size());
	const std::vector<FZnGesture> Gestures = PlanGestures(Accents);
	int32 Beats = 0;
	for (const FZnGesture& Gesture : Gestures)
	{
		const bool bOnAWord = std::any_of(Speech.Words.begin(), Speech.Words.end(),
			[&](const FZnWordEvent& Word) { return Word.Time == Gesture.Time; });
		EXPECT_TRUE(bOnAWord) << Gesture.Time;
		Beats += Gesture.Kind != EZnGestureKind::Nod ? 1 : 0;
	}
	// Three phrases after the commas and full stops at least, each opening with a beat.
	EXPECT_GE(Beats, 3);
	// The same seed gives the same body, another seed another idle.
	EXPECT_EQ(BodyToJson(BuildSpeechBody(Frames, Gestures, 3), EZnBodyShape::V1),
		BodyToJson(BuildSpeechBody(Frames, Gestures, 3), EZnBodyShape::V1));
	EXPECT_NE(BodyToJson(BuildSpeechBody(Frames, Gestures, 3), EZnBodyShape::V1),
		BodyToJson(BuildSpeechBody(Frames, Gestures, 4), EZnBodyShape::V1));
}
