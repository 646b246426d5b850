// Audio, face and body come out equally long, in every shape, for short and long English and
// Chinese texts, each clip decoded by the module's own decoders.
#include "ZnSpeechTestHelpers.h"

#include "ZnMotionGenerator.h"

#include <gtest/gtest.h>

using namespace ZnSpeechTest;

namespace
{
constexpr double OneFrame = 1.0 / 30.0;

std::string Repeat(const std::string& Sentence, int32 Times)
{
	std::string Text;
	for (int32 Index = 0; Index < Times; ++Index)
	{
		Text += Sentence;
		Text += ' ';
	}
	return Text;
}

void ExpectLengthsAgree(const FZnGeneratedMedia& Media, double MinSeconds, double MaxSeconds)
{
	const FTestAudio Audio = ReadCanonicalWav(Media.Wav);
	const double Seconds = Audio.Duration();
	EXPECT_GE(Seconds, MinSeconds);
	EXPECT_LE(Seconds, MaxSeconds);
	EXPECT_NEAR(Media.DurationSeconds, Seconds, 1e-9);

	const FZnFaceData Face = DecodeFace(Media.FaceJson);
	ASSERT_EQ(Face.CurveFrames.Num(), 51);
	EXPECT_EQ(Face.CurveFrames[0].Num(), Media.FrameCount);
	EXPECT_NEAR(Face.CurveFrames[0].Num() * OneFrame, Seconds, OneFrame);
	EXPECT_NEAR(Face.totalTime, Seconds, OneFrame);

	const FZnBodyData Body = DecodeBody(Media.BodyJson);
	ASSERT_EQ(Body.BoneFrames.Num(), 54);
	EXPECT_EQ(Body.BoneFrames[0].Num(), Media.FrameCount);
	EXPECT_NEAR(Body.totalTime, Seconds, OneFrame);
}
} // namespace

TEST(ZnSpeechLengthTests, OneSecondOfEnglish)
{
	ExpectLengthsAgree(Speak("Hello there."), 0.6, 2.0);
}

TEST(ZnSpeechLengthTests, TenSecondsOfEnglish)
{
	ExpectLengthsAgree(Speak(Repeat("The quick brown fox jumps over the lazy dog.", 4)), 7.0, 14.0);
}

TEST(ZnSpeechLengthTests, SixtySecondsOfEnglish)
{
	ExpectLengthsAgree(
		Speak(Repeat("Speech, a face and a body are made together so that they always agree.", 15)), 50.0, 75.0);
}

TEST(ZnSpeechLengthTests, OneSecondOfChinese)
{
	ExpectLengthsAgree(Speak("你好。"), 0.4, 2.0);
}

TEST(ZnSpeechLengthTests, ThirtySecondsOfChinese)
{
	ExpectLengthsAgree(Speak(Repeat("我们今天很高兴见到大家，欢迎来到这里。", 8)), 20.0, 45.0);
}

TEST(ZnSpeechLengthTests, VersionTwoShapesKeepTheLength)
{
	FZnSpeechRequest Request;
	Request.Text = "Every shape says the same length.";
	Request.FaceShape = EZnFaceShape::V2;
	Request.BodyShape = EZnBodyShape::V2;
	const FZnGeneratedMedia Media = Speak(Request);
	const double Seconds = ReadCanonicalWav(Media.Wav).Duration();

	FZnFaceData Face;
	float FaceTime = 0.0f;
	UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(ToFString(Media.FaceJson), Face, FaceTime);
	ASSERT_EQ(Face.CurveFrames.Num(), 51);
	EXPECT_EQ(Face.CurveFrames[0].Num(), Media.FrameCount);
	// A version 2 clip's length is its last frame's time.
	EXPECT_NEAR(FaceTime, (Media.FrameCount - 1) * OneFrame, 1e-4);
	EXPECT_NEAR(FaceTime, Seconds, OneFrame * 1.5);

	FZnBodyData Body;
	float BodyTime = 0.0f;
	TArray<FString> Bones;
	for (const std::string& Bone : FZnMotionGenerator::ServiceBoneNames(true, true))
	{
		Bones.Add(ToFString(Bone));
	}
	UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(ToFString(Media.BodyJson), Bones, Body, BodyTime);
	ASSERT_EQ(Body.BoneFrames.Num(), 54);
	EXPECT_EQ(Body.BoneFrames[0].Num(), Media.FrameCount);
	EXPECT_NEAR(BodyTime, (Media.FrameCount - 1) * OneFrame, 1e-4);
}

TEST(ZnSpeechLengthTests, ControlRigShapeHasTheGeneratorsCurves)
{
	FZnSpeechRequest Request;
	Request.Text = "A control rig face.";
	Request.FaceShape = EZnFaceShape::ControlRig;
	const FZnGeneratedMedia Media = Speak(Request);

	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(ToFString(Media.FaceJson), Face);
	ASSERT_EQ(Face.CurveNames.Num(), 51);
	EXPECT_EQ(Face.CurveNames[17], FString(TEXT("ctrl_JawOpen")));
	EXPECT_EQ(Face.CurveFrames[17].Num(), Media.FrameCount);
	EXPECT_NEAR(Face.totalTime, ReadCanonicalWav(Media.Wav).Duration(), OneFrame);
	// Control values are 0..1 amounts: the jaw opens somewhere but never beyond 1.
	float Widest = 0.0f;
	for (const float Value : Face.CurveFrames[17])
	{
		Widest = std::max(Widest, Value);
	}
	EXPECT_GT(Widest, 0.2f);
	EXPECT_LE(Widest, 1.0f);
}
