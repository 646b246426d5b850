// Blinks, gaze and brows of the speaking face, read back from the decoded clip.
#include "ZnSpeechTestHelpers.h"

#include "ZnEyeModel.h"

#include <gtest/gtest.h>

using namespace ZnSpeechTest;

namespace
{
struct FRun
{
	int32 First;
	int32 Length;
};

// Runs of frames in which the eyelid is visibly closing (above 5 %).
std::vector<FRun> ClosedRuns(const std::vector<float>& Blink)
{
	std::vector<FRun> Runs;
	for (int32 Frame = 0; Frame < static_cast<int32>(Blink.size()); ++Frame)
	{
		if (Blink[static_cast<size_t>(Frame)] <= 0.05f)
		{
			continue;
		}
		if (!Runs.empty() && Runs.back().First + Runs.back().Length == Frame)
		{
			++Runs.back().Length;
		}
		else
		{
			Runs.push_back({Frame, 1});
		}
	}
	return Runs;
}

std::string TwentySecondText()
{
	return "A twenty second clip lets the eyes blink a few times, at their own irregular pace, while the "
		   "voice goes on talking about nothing in particular. The listener should not notice the blinks at "
		   "all, which is exactly the point of making them look natural and unhurried. So the sentence goes on "
		   "a little longer, with a few more words about the weather, the sea, and the long walk home.";
}
} // namespace

TEST(ZnEyeModelTests, TwentySecondsHaveThreeToFifteenBlinksOfFourToEightFrames)
{
	for (const uint64 Seed : {1ull, 2ull, 77ull})
	{
		const FZnGeneratedMedia Media = Speak(TwentySecondText(), Seed);
		ASSERT_NEAR(Media.DurationSeconds, 20.0, 3.0);
		const FZnFaceData Face = DecodeFace(Media.FaceJson);
		const std::vector<FRun> Left = ClosedRuns(Curve(Face, "EyeBlinkLeft"));
		const std::vector<FRun> Right = ClosedRuns(Curve(Face, "EyeBlinkRight"));
		EXPECT_GE(Left.size(), 3u) << "seed " << Seed;
		EXPECT_LE(Left.size(), 15u) << "seed " << Seed;
		ASSERT_EQ(Left.size(), Right.size());
		for (size_t Index = 0; Index < Left.size(); ++Index)
		{
			EXPECT_GE(Left[Index].Length, 4) << "seed " << Seed;
			EXPECT_LE(Left[Index].Length, 8) << "seed " << Seed;
			EXPECT_EQ(Left[Index].First, Right[Index].First);
			EXPECT_EQ(Left[Index].Length, Right[Index].Length);
		}
	}
}

TEST(ZnEyeModelTests, BlinkGapsAreIrregular)
{
	const std::vector<FZnBlink> Blinks = PlanBlinks(30 * 60, 5);
	ASSERT_GE(Blinks.size(), 8u);
	std::vector<int32> Gaps;
	for (size_t Index = 1; Index < Blinks.size(); ++Index)
	{
		Gaps.push_back(Blinks[Index].FirstFrame - Blinks[Index - 1].FirstFrame);
		// At least 1.4 s and at most 7 s apart.
		EXPECT_GE(Gaps.back(), 41);
		EXPECT_LE(Gaps.back(), 211);
	}
	const auto [Shortest, Longest] = std::minmax_element(Gaps.begin(), Gaps.end());
	EXPECT_GE(*Longest - *Shortest, 30) << "gaps of one length would look mechanical";
}

TEST(ZnEyeModelTests, TheSeedChoosesTheBlinksAndTheSameSeedRepeatsThem)
{
	const std::vector<FZnBlink> A = PlanBlinks(600, 3);
	const std::vector<FZnBlink> B = PlanBlinks(600, 3);
	const std::vector<FZnBlink> C = PlanBlinks(600, 4);
	ASSERT_EQ(A.size(), B.size());
	for (size_t Index = 0; Index < A.size(); ++Index)
	{
		EXPECT_EQ(A[Index].FirstFrame, B[Index].FirstFrame);
		EXPECT_EQ(A[Index].Closure, B[Index].Closure);
	}
	bool bDiffers = A.size() != C.size();
	for (size_t Index = 0; !bDiffers && Index < A.size(); ++Index)
	{
		bDiffers = A[Index].FirstFrame != C[Index].FirstFrame;
	}
	EXPECT_TRUE(bDiffers);
}

TEST(ZnEyeModelTests, EveryBlinkEndsInsideTheClip)
{
	for (uint64 Seed = 1; Seed <= 20; ++Seed)
	{
		for (const FZnBlink& Blink : PlanBlinks(75, Seed))
		{
			EXPECT_LE(Blink.FirstFrame + static_cast<int32>(Blink.Closure.size()), 75);
		}
	}
	EXPECT_TRUE(PlanBlinks(0, 1).empty());
}

TEST(ZnEyeModelTests, EyesMoveALittleAndTogether)
{
	const FZnFaceData Face = DecodeFace(Speak(TwentySecondText(), 9).FaceJson);
	const std::vector<float> OutLeft = Curve(Face, "EyeLookOutLeft");
	const std::vector<float> InRight = Curve(Face, "EyeLookInRight");
	const std::vector<float> UpLeft = Curve(Face, "EyeLookUpLeft");
	const std::vector<float> DownLeft = Curve(Face, "EyeLookDownLeft");
	float Widest = 0.0f;
	int32 Changes = 0;
	for (size_t Frame = 0; Frame < OutLeft.size(); ++Frame)
	{
		// Looking to one side turns one eye out and the other in by the same amount.
		EXPECT_FLOAT_EQ(OutLeft[Frame], InRight[Frame]);
		Widest = std::max({Widest, OutLeft[Frame], UpLeft[Frame], DownLeft[Frame]});
		if (Frame > 0 && (OutLeft[Frame] != OutLeft[Frame - 1] || UpLeft[Frame] != UpLeft[Frame - 1]))
		{
			++Changes;
		}
	}
	EXPECT_GT(Widest, 0.02f);
	EXPECT_LE(Widest, 0.18f + 1e-6f);
	// Saccades: the gaze holds still most of the time.
	EXPECT_GT(Changes, 4);
	EXPECT_LT(Changes, static_cast<int32>(OutLeft.size()) / 4);
}

TEST(ZnEyeModelTests, StressedWordsLiftTheBrows)
{
	std::vector<FZnWordAccent> Accents(3);
	Accents[0] = {0.5, 0.8, 1.0, true, false};
	Accents[1] = {1.0, 1.3, 1.0, false, true};
	Accents[2] = {2.0, 2.4, 1.0, false, false};
	FZnGenFaceClip Face;
	Face.Weights.assign(90, std::vector<double>(51, 0.0));
	AddBrowLifts(Accents, Face);
	const size_t BrowInnerUp = 43;
	// Only the stressed word (1.0..1.3 s): full lift inside it, nothing well before or after.
	EXPECT_DOUBLE_EQ(Face.Weights[33][BrowInnerUp], 35.0);
	EXPECT_DOUBLE_EQ(Face.Weights[36][BrowInnerUp], 35.0);
	EXPECT_DOUBLE_EQ(Face.Weights[20][BrowInnerUp], 0.0);
	EXPECT_DOUBLE_EQ(Face.Weights[60][BrowInnerUp], 0.0);
	EXPECT_GT(Face.Weights[42][BrowInnerUp], 0.0);
	EXPECT_LT(Face.Weights[42][BrowInnerUp], 35.0);
}
