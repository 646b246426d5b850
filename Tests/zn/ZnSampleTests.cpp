// zn sample: clips made by the motion generator are written to files, sampled by zn, and the
// printed poses are checked against values worked out here from the generator's own numbers and
// the decoders' conversion rules (axis order, normalisation, centimetres, percent and clamping),
// and against the curves decoded in this process.
#include "Containers/StringConv.h"
#include "ZnBodyData.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnFaceData.h"
#include "ZnMotionGenerator.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

using namespace ZnTest;

namespace
{
struct FQuatValue
{
	double X = 0.0;
	double Y = 0.0;
	double Z = 0.0;
	double W = 1.0;
};

struct FVectorValue
{
	float X = 0.0f;
	float Y = 0.0f;
	float Z = 0.0f;
};

// The key time of frame Frame (0-based) at 30 frames per second.
float KeyTime(int32 Frame)
{
	return float(double(Frame) * (1.0 / 30.0));
}

// A time as zn reads it back to exactly the same float.
std::string TimeArg(float Time)
{
	char Text[32];
	std::snprintf(Text, sizeof(Text), "%.9g", double(Time));
	return Text;
}

// A service rotation (x, y, z, w as written) in the engine's frame: components narrowed to float,
// engine X, Y, Z = service z, x, y, then normalised.
FQuatValue ExpectedRotation(const FZnGenQuat& Q)
{
	FQuatValue R{double(float(Q.Z)), double(float(Q.X)), double(float(Q.Y)), double(float(Q.W))};
	const double SquaredLength = R.X * R.X + R.Y * R.Y + R.Z * R.Z + R.W * R.W;
	if (SquaredLength < double(1e-8f))
	{
		return FQuatValue();
	}
	const double Length = std::sqrt(SquaredLength);
	return {R.X / Length, R.Y / Length, R.Z / Length, R.W / Length};
}

// A service root position (metres) in engine centimetres.
FVectorValue ExpectedPosition(const FZnGenVec& P)
{
	return {float(P.Z) * 100.0f, float(P.X) * 100.0f, float(P.Y) * 100.0f};
}

// Spherical interpolation along the shorter arc, then normalised.
FQuatValue ExpectedSlerp(const FQuatValue& A, const FQuatValue& B, float Alpha32)
{
	const double Alpha = Alpha32;
	const double RawCos = A.X * B.X + A.Y * B.Y + A.Z * B.Z + A.W * B.W;
	const double Cos = std::fabs(RawCos);
	double S1 = 1.0 - Alpha;
	double S2 = Alpha;
	if (Cos < 0.9999)
	{
		const double Omega = std::acos(Cos);
		const double InvSin = 1.0 / std::sin(Omega);
		S1 = std::sin((1.0 - Alpha) * Omega) * InvSin;
		S2 = std::sin(Alpha * Omega) * InvSin;
	}
	if (RawCos < 0.0)
	{
		S2 = -S2;
	}
	FQuatValue R{S1 * A.X + S2 * B.X, S1 * A.Y + S2 * B.Y, S1 * A.Z + S2 * B.Z, S1 * A.W + S2 * B.W};
	const double SquaredLength = R.X * R.X + R.Y * R.Y + R.Z * R.Z + R.W * R.W;
	if (SquaredLength < double(1e-8f))
	{
		return FQuatValue();
	}
	const double Length = std::sqrt(SquaredLength);
	return {R.X / Length, R.Y / Length, R.Z / Length, R.W / Length};
}

float Lerp(float A, float B, float Alpha)
{
	return A + Alpha * (B - A);
}

// Version 1 face weight: percent narrowed to float, scaled in float, clamped to 0..1.
float ExpectedWeightV1(double Percent)
{
	const float W = float(Percent) * 0.01f;
	return !(W >= 0.0f) ? 0.0f : (W >= 1.0f ? 1.0f : W);
}

// Version 2 face weight: scaled and clamped in double, then narrowed.
float ExpectedWeightV2(double Percent)
{
	const double W = Percent * 0.01;
	return float(W >= 0.0 ? std::min(W, 1.0) : 0.0);
}

FQuatValue QuatOf(const Json& Value)
{
	return {Value.at(0).get<double>(), Value.at(1).get<double>(), Value.at(2).get<double>(), Value.at(3).get<double>()};
}

FVectorValue VectorOf(const Json& Value)
{
	return {Value.at(0).get<float>(), Value.at(1).get<float>(), Value.at(2).get<float>()};
}

void ExpectSameQuat(const FQuatValue& Actual, const FQuatValue& Expected, const std::string& What)
{
	EXPECT_EQ(Actual.X, Expected.X) << What;
	EXPECT_EQ(Actual.Y, Expected.Y) << What;
	EXPECT_EQ(Actual.Z, Expected.Z) << What;
	EXPECT_EQ(Actual.W, Expected.W) << What;
}

void ExpectNearQuat(const FQuatValue& Actual, const FQuatValue& Expected, const std::string& What)
{
	EXPECT_NEAR(Actual.X, Expected.X, 1e-9) << What;
	EXPECT_NEAR(Actual.Y, Expected.Y, 1e-9) << What;
	EXPECT_NEAR(Actual.Z, Expected.Z, 1e-9) << What;
	EXPECT_NEAR(Actual.W, Expected.W, 1e-9) << What;
}

void ExpectSameVector(const FVectorValue& Actual, const FVectorValue& Expected, const std::string& What)
{
	EXPECT_EQ(Actual.X, Expected.X) << What;
	EXPECT_EQ(Actual.Y, Expected.Y) << What;
	EXPECT_EQ(Actual.Z, Expected.Z) << What;
}

std::vector<std::string> KeysOf(const Json& Object)
{
	std::vector<std::string> Keys;
	for (auto It = Object.begin(); It != Object.end(); ++It)
	{
		Keys.push_back(It.key());
	}
	return Keys;
}

FString Wide(const std::string& Text)
{
	const FUTF8ToTCHAR Converted(Text.data(), int32(Text.size()));
	return FString(Converted.Length(), Converted.Get());
}

class ZnSampleTests : public ZnTest::FZnFolderTest
{
protected:
	// zn sample Args --json; the printed array of samples.
	Json SampleJson(std::vector<std::string> Args)
	{
		Args.insert(Args.begin(), "sample");
		Args.push_back("--json");
		const FRun Run = RunZn(Args);
		EXPECT_EQ(Run.Status, 0) << Run.Err;
		EXPECT_EQ(Run.Err, "");
		const Json Out = Run.OutJson();
		EXPECT_TRUE(Out.is_array()) << Run.Out;
		return Out;
	}
};

FZnGenBodyClip Body(int32 Frames, uint64 Seed, bool bTwist = true, bool bFingers = true)
{
	return FZnMotionGenerator::GenerateBody({Frames, Seed, bTwist, bFingers});
}

FZnGenFaceClip Face(int32 Frames, uint64 Seed, bool bOvershoot = false)
{
	return FZnMotionGenerator::GenerateFace({Frames, Seed, bOvershoot});
}

// Every bone and the root of Sample equal the clip's frame Frame.
void ExpectBodyFrame(const Json& Sample, const FZnGenBodyClip& Clip, int32 Frame)
{
	const std::string Where = "frame " + std::to_string(Frame);
	ASSERT_EQ(Sample["bones"].size(), Clip.BoneNames.size()) << Where;
	for (size_t Bone = 0; Bone < Clip.BoneNames.size(); ++Bone)
	{
		const std::string& Name = Clip.BoneNames[Bone];
		ASSERT_TRUE(Sample["bones"].contains(Name)) << Name;
		ExpectSameQuat(QuatOf(Sample["bones"][Name]), ExpectedRotation(Clip.Rotations[Bone][size_t(Frame)]),
			Name + " at " + Where);
	}
	ExpectSameVector(VectorOf(Sample["root"]), ExpectedPosition(Clip.RootPositions[size_t(Frame)]), "root at " + Where);
}
} // namespace

TEST_F(ZnSampleTests, BodyAtKeyTimesGivesTheKeys)
{
	const FZnGenBodyClip Clip = Body(30, 5);
	const std::string Path = Write("body.json", FZnMotionGenerator::BodyToJson(Clip));
	const std::vector<int32> Frames = {0, 1, 13, 15, 29};
	std::vector<std::string> Args = {"--body", Path};
	for (int32 Frame : Frames)
	{
		Args.push_back("-t");
		Args.push_back(TimeArg(KeyTime(Frame)));
	}
	const Json Samples = SampleJson(Args);
	ASSERT_EQ(Samples.size(), Frames.size());
	for (size_t Index = 0; Index < Frames.size(); ++Index)
	{
		EXPECT_EQ(Samples[Index]["time"].get<float>(), KeyTime(Frames[Index]));
		EXPECT_FALSE(Samples[Index].contains("face"));
		ExpectBodyFrame(Samples[Index], Clip, Frames[Index]);
	}
}

TEST_F(ZnSampleTests, BodyBetweenKeysInterpolatesRotationsSphericallyAndTheRootLinearly)
{
	const FZnGenBodyClip Clip = Body(30, 8);
	const std::string Text = FZnMotionGenerator::BodyToJson(Clip);
	const std::string Path = Write("body.json", Text);
	struct FCase
	{
		int32 Frame;
		float Fraction;
	};
	const std::vector<FCase> Cases = {{10, 0.25f}, {20, 0.5f}, {0, 0.9f}, {28, 0.1f}};
	std::vector<std::string> Args = {"--body", Path};
	std::vector<float> Times;
	for (const FCase& Case : Cases)
	{
		Times.push_back(Lerp(KeyTime(Case.Frame), KeyTime(Case.Frame + 1), Case.Fraction));
		Args.push_back("-t");
		Args.push_back(TimeArg(Times.back()));
	}
	const Json Samples = SampleJson(Args);
	ASSERT_EQ(Samples.size(), Cases.size());

	FZnBodyData Decoded;
	UZnDM_BpFuncLib::ParseJsonToBodydata(Wide(Text), Decoded);
	ASSERT_EQ(Decoded.BoneCurves.Num(), int32(Clip.BoneNames.size()));
	for (size_t Index = 0; Index < Cases.size(); ++Index)
	{
		const int32 Frame = Cases[Index].Frame;
		const float Time = Times[Index];
		ASSERT_GT(Time, KeyTime(Frame));
		ASSERT_LT(Time, KeyTime(Frame + 1));
		const float Alpha = (Time - KeyTime(Frame)) / (KeyTime(Frame + 1) - KeyTime(Frame));
		const Json& Sample = Samples[Index];
		EXPECT_EQ(Sample["time"].get<float>(), Time);
		for (size_t Bone = 0; Bone < Clip.BoneNames.size(); ++Bone)
		{
			const std::string& Name = Clip.BoneNames[Bone];
			const std::string What = Name + " at " + TimeArg(Time);
			const FQuatValue Printed = QuatOf(Sample["bones"][Name]);
			const FQuatValue From = ExpectedRotation(Clip.Rotations[Bone][size_t(Frame)]);
			const FQuatValue To = ExpectedRotation(Clip.Rotations[Bone][size_t(Frame) + 1]);
			ExpectNearQuat(Printed, ExpectedSlerp(From, To, Alpha), What);
			// The same curve decoded here gives the very same numbers.
			const FQuat Direct = Decoded.BoneCurves[int32(Bone)].Evaluate(Time, 0.0001f);
			ExpectSameQuat(Printed, {Direct.X, Direct.Y, Direct.Z, Direct.W}, What + " (decoded here)");
		}
		const FVectorValue From = ExpectedPosition(Clip.RootPositions[size_t(Frame)]);
		const FVectorValue To = ExpectedPosition(Clip.RootPositions[size_t(Frame) + 1]);
		const FVectorValue Root = VectorOf(Sample["root"]);
		EXPECT_NEAR(Root.X, Lerp(From.X, To.X, Alpha), 1e-4);
		EXPECT_NEAR(Root.Y, Lerp(From.Y, To.Y, Alpha), 1e-4);
		EXPECT_NEAR(Root.Z, Lerp(From.Z, To.Z, Alpha), 1e-4);
		EXPECT_NE(Root.X, From.X) << "the root moves between frames";
	}
}

TEST_F(ZnSampleTests, ATimeWithinATenThousandthOfAKeyGivesThatKeysRotation)
{
	const FZnGenBodyClip Clip = Body(30, 2, false, false);
	const std::string Path = Write("body.json", FZnMotionGenerator::BodyToJson(Clip));
	const Json Samples = SampleJson({"--body", Path, "-t", TimeArg(KeyTime(12) + 0.00005f)});
	ASSERT_EQ(Samples.size(), 1u);
	for (size_t Bone = 0; Bone < Clip.BoneNames.size(); ++Bone)
	{
		ExpectSameQuat(QuatOf(Samples[0]["bones"][Clip.BoneNames[Bone]]), ExpectedRotation(Clip.Rotations[Bone][12]),
			Clip.BoneNames[Bone]);
	}
}

TEST_F(ZnSampleTests, OutsideTheClipBonesHoldTheFirstKeyAndTheRootItsNearestEnd)
{
	const FZnGenBodyClip Clip = Body(30, 6);
	const std::string Path = Write("body.json", FZnMotionGenerator::BodyToJson(Clip));
	const Json Samples = SampleJson({"--body", Path, "-t", "-1", "-t", "5"});
	ASSERT_EQ(Samples.size(), 2u);
	ExpectBodyFrame(Samples[0], Clip, 0);
	// Past the end a rotation curve holds its first key, the root its last.
	for (size_t Bone = 0; Bone < Clip.BoneNames.size(); ++Bone)
	{
		const std::string& Name = Clip.BoneNames[Bone];
		ExpectSameQuat(QuatOf(Samples[1]["bones"][Name]), ExpectedRotation(Clip.Rotations[Bone][0]), Name);
	}
	ExpectSameVector(VectorOf(Samples[1]["root"]), ExpectedPosition(Clip.RootPositions[29]), "root past the end");
}

TEST_F(ZnSampleTests, BonesArePrintedInTheFilesOrder)
{
	const FZnGenBodyClip Clip = Body(3, 1);
	const std::string Path = Write("body.json", FZnMotionGenerator::BodyToJson(Clip));
	const Json Samples = SampleJson({"--body", Path, "-t", "0"});
	ASSERT_EQ(Samples.size(), 1u);
	EXPECT_EQ(KeysOf(Samples[0]), (std::vector<std::string>{"time", "root", "bones"}));
	EXPECT_EQ(KeysOf(Samples[0]["bones"]), Clip.BoneNames);
}

TEST_F(ZnSampleTests, RecommendFormatSamplesLikeVersionOne)
{
	const FZnGenBodyClip Clip = Body(30, 4, true, false);
	const std::string Path = Write("body.json", FZnMotionGenerator::BodyToJson(Clip));
	const Json Samples = SampleJson({"--body", Path, "--body-format", "recommend", "-t", TimeArg(KeyTime(7))});
	ASSERT_EQ(Samples.size(), 1u);
	ExpectBodyFrame(Samples[0], Clip, 7);
	EXPECT_EQ(SampleJson({"--body", Path, "--body-format", "v1", "-t", TimeArg(KeyTime(7))}), Samples);
}

TEST_F(ZnSampleTests, BodyFrameArraySamplesLikeVersionOne)
{
	const FZnGenBodyClip Clip = Body(30, 12);
	const std::string V2 = Write("body_v2.json", FZnMotionGenerator::BodyToJsonV2(Clip));
	const std::string V1 = Write("body_v1.json", FZnMotionGenerator::BodyToJson(Clip));
	const std::vector<std::string> Times = {"-t", TimeArg(KeyTime(0)), "-t", TimeArg(KeyTime(17)), "-t",
		TimeArg(KeyTime(29)), "-t", TimeArg(Lerp(KeyTime(3), KeyTime(4), 0.5f))};
	std::vector<std::string> Args = {"--body", V2};
	Args.insert(Args.end(), Times.begin(), Times.end());
	const Json Samples = SampleJson(Args);
	ASSERT_EQ(Samples.size(), 4u);
	ExpectBodyFrame(Samples[0], Clip, 0);
	ExpectBodyFrame(Samples[1], Clip, 17);
	ExpectBodyFrame(Samples[2], Clip, 29);
	EXPECT_EQ(KeysOf(Samples[0]["bones"]), Clip.BoneNames);
	Args[1] = V1;
	EXPECT_EQ(SampleJson(Args), Samples) << "both shapes of one clip give the same poses";
}

TEST_F(ZnSampleTests, BodyFrameArrayWithoutTwistOrFingerBonesGivesEveryBoneOfTheFile)
{
	struct FCase
	{
		bool bTwist;
		bool bFingers;
		size_t Bones;
	};
	for (const FCase& Case : {FCase{false, true, 52}, FCase{true, false, 24}, FCase{false, false, 22}})
	{
		const FZnGenBodyClip Clip = Body(30, 3, Case.bTwist, Case.bFingers);
		ASSERT_EQ(Clip.BoneNames.size(), Case.Bones);
		const std::string Path = Write("body.json", FZnMotionGenerator::BodyToJsonV2(Clip));
		const Json Samples = SampleJson({"--body", Path, "-t", TimeArg(KeyTime(9))});
		ASSERT_EQ(Samples.size(), 1u) << Case.Bones;
		ExpectBodyFrame(Samples[0], Clip, 9);
		EXPECT_EQ(KeysOf(Samples[0]["bones"]), Clip.BoneNames);
	}
}

TEST_F(ZnSampleTests, BonesOptionPrintsOnlyTheNamedBonesInTheGivenOrder)
{
	const FZnGenBodyClip Clip = Body(30, 7);
	const size_t Head =
		size_t(std::find(Clip.BoneNames.begin(), Clip.BoneNames.end(), "Head") - Clip.BoneNames.begin());
	const size_t LeftArm =
		size_t(std::find(Clip.BoneNames.begin(), Clip.BoneNames.end(), "LeftArm") - Clip.BoneNames.begin());
	ASSERT_LT(Head, Clip.BoneNames.size());
	ASSERT_LT(LeftArm, Clip.BoneNames.size());
	for (const std::string& Text : {FZnMotionGenerator::BodyToJson(Clip), FZnMotionGenerator::BodyToJsonV2(Clip)})
	{
		const std::string Path = Write("body.json", Text);
		const Json Samples = SampleJson({"--body", Path, "--bones", "Head,leftarm", "-t", TimeArg(KeyTime(5))});
		ASSERT_EQ(Samples.size(), 1u);
		EXPECT_EQ(KeysOf(Samples[0]["bones"]), (std::vector<std::string>{"Head", "LeftArm"}));
		ExpectSameQuat(QuatOf(Samples[0]["bones"]["Head"]), ExpectedRotation(Clip.Rotations[Head][5]), "Head");
		ExpectSameQuat(QuatOf(Samples[0]["bones"]["LeftArm"]), ExpectedRotation(Clip.Rotations[LeftArm][5]), "LeftArm");
		ExpectSameVector(VectorOf(Samples[0]["root"]), ExpectedPosition(Clip.RootPositions[5]), "root");

		const Json Repeated =
			SampleJson({"--body", Path, "--bones", "LeftArm", "--bones", "Head,LeftArm", "-t", TimeArg(KeyTime(5))});
		EXPECT_EQ(KeysOf(Repeated[0]["bones"]), (std::vector<std::string>{"LeftArm", "Head"}))
			<< "a bone named twice is printed once";

		const FRun Run = RunZn({"sample", "--body", Path, "--bones", "Head", "-t", "0"});
		ASSERT_EQ(Run.Status, 0) << Run.Err;
		const std::vector<std::string> Lines = ZnTest::Lines(Run.Out);
		const auto BoneLines =
			std::count_if(Lines.begin(), Lines.end(), [](const std::string& Line) { return Line.rfind("  ", 0) == 0; });
		EXPECT_EQ(BoneLines, 3) << "the root line, the column titles and one bone:\n" << Run.Out;
		EXPECT_NE(Run.Out.find("\n  Head "), std::string::npos) << Run.Out;
		EXPECT_EQ(Run.Out.find("LeftArm"), std::string::npos) << Run.Out;
	}
}

TEST_F(ZnSampleTests, FaceAtKeysGivesClampedWeightsAndBetweenKeysALine)
{
	const FZnGenFaceClip Clip = Face(30, 3);
	const std::string Path = Write("face.json", FZnMotionGenerator::FaceToJson(Clip));
	const float Between = Lerp(KeyTime(8), KeyTime(9), 0.3f);
	const Json Samples =
		SampleJson({"--face", Path, "-t", TimeArg(KeyTime(4)), "-t", TimeArg(Between), "-t", "-2", "-t", "100"});
	ASSERT_EQ(Samples.size(), 4u);
	const std::vector<std::string>& Names = FZnMotionGenerator::FaceChannelNames();
	ASSERT_EQ(Names.size(), 51u);
	EXPECT_EQ(KeysOf(Samples[0]), (std::vector<std::string>{"time", "face"}));
	EXPECT_EQ(KeysOf(Samples[0]["face"]), Names);
	const float Alpha = (Between - KeyTime(8)) / (KeyTime(9) - KeyTime(8));
	int Moving = 0;
	for (size_t Channel = 0; Channel < Names.size(); ++Channel)
	{
		const std::string& Name = Names[Channel];
		EXPECT_EQ(Samples[0]["face"][Name].get<float>(), ExpectedWeightV1(Clip.Weights[4][Channel])) << Name;
		const float From = ExpectedWeightV1(Clip.Weights[8][Channel]);
		const float To = ExpectedWeightV1(Clip.Weights[9][Channel]);
		EXPECT_NEAR(Samples[1]["face"][Name].get<float>(), Lerp(From, To, Alpha), 1e-6) << Name;
		Moving += From != To;
		// Before the first frame the first weight holds, after the last frame the last.
		EXPECT_EQ(Samples[2]["face"][Name].get<float>(), ExpectedWeightV1(Clip.Weights[0][Channel])) << Name;
		EXPECT_EQ(Samples[3]["face"][Name].get<float>(), ExpectedWeightV1(Clip.Weights[29][Channel])) << Name;
	}
	EXPECT_GT(Moving, 0);
}

TEST_F(ZnSampleTests, FaceWeightsOutsideZeroToHundredPercentAreClamped)
{
	const FZnGenFaceClip Clip = Face(300, 1, true);
	const std::string Path = Write("face.json", FZnMotionGenerator::FaceToJson(Clip));
	int32 HighFrame = -1, LowFrame = -1;
	size_t HighChannel = 0, LowChannel = 0;
	for (int32 Frame = 0; Frame < 300; ++Frame)
	{
		for (size_t Channel = 0; Channel < 51; ++Channel)
		{
			const double W = Clip.Weights[size_t(Frame)][Channel];
			if (W > 100.0 && HighFrame < 0)
			{
				HighFrame = Frame;
				HighChannel = Channel;
			}
			if (W < 0.0 && LowFrame < 0)
			{
				LowFrame = Frame;
				LowChannel = Channel;
			}
		}
	}
	ASSERT_GE(HighFrame, 0);
	ASSERT_GE(LowFrame, 0);
	const Json Samples =
		SampleJson({"--face", Path, "-t", TimeArg(KeyTime(HighFrame)), "-t", TimeArg(KeyTime(LowFrame))});
	ASSERT_EQ(Samples.size(), 2u);
	const std::vector<std::string>& Names = FZnMotionGenerator::FaceChannelNames();
	EXPECT_EQ(Samples[0]["face"][Names[HighChannel]].get<float>(), 1.0f);
	EXPECT_EQ(Samples[1]["face"][Names[LowChannel]].get<float>(), 0.0f);
}

TEST_F(ZnSampleTests, FaceFrameObjectsScaleInDoubleAndKeepTheirFrameNumbers)
{
	const FZnGenFaceClip Clip = Face(30, 9, true);
	const std::string InOrder = Write("face.json", FZnMotionGenerator::FaceToJsonV2(Clip));
	const std::string Shuffled =
		Write("shuffled.json", FZnMotionGenerator::FaceToJsonV2(Clip, FZnMotionGenerator::ShuffledFrameOrder(30, 4)));
	const std::vector<int32> Frames = {0, 11, 29};
	std::vector<std::string> Args = {"--face", InOrder};
	for (int32 Frame : Frames)
	{
		Args.push_back("-t");
		Args.push_back(TimeArg(KeyTime(Frame)));
	}
	Args.push_back("-t");
	Args.push_back(TimeArg(Lerp(KeyTime(20), KeyTime(21), 0.75f)));
	const Json Samples = SampleJson(Args);
	ASSERT_EQ(Samples.size(), 4u);
	const std::vector<std::string>& Names = FZnMotionGenerator::FaceChannelNames();
	EXPECT_EQ(KeysOf(Samples[0]["face"]), Names) << "frame objects carry no names: the face rig's are used";
	for (size_t Index = 0; Index < Frames.size(); ++Index)
	{
		for (size_t Channel = 0; Channel < Names.size(); ++Channel)
		{
			EXPECT_EQ(Samples[Index]["face"][Names[Channel]].get<float>(),
				ExpectedWeightV2(Clip.Weights[size_t(Frames[Index])][Channel]))
				<< Names[Channel] << " frame " << Frames[Index];
		}
	}
	Args[1] = Shuffled;
	EXPECT_EQ(SampleJson(Args), Samples) << "frames out of order land at their own times";
}

TEST_F(ZnSampleTests, ControlRigCurvesKeepTheirNamesAndRawValues)
{
	const FZnGenControlRigClip Clip = FZnMotionGenerator::GenerateControlRig({30, 5, false}, 6);
	const std::string Path = Write("rig.json", FZnMotionGenerator::ControlRigToJson(Clip));
	const Json Samples = SampleJson({"--face", Path, "-t", TimeArg(KeyTime(14)), "-t", "9"});
	ASSERT_EQ(Samples.size(), 2u);
	EXPECT_EQ(KeysOf(Samples[0]["face"]), Clip.CurveNames);
	bool bAnyOutsideUnit = false;
	for (size_t Curve = 0; Curve < Clip.CurveNames.size(); ++Curve)
	{
		const std::string& Name = Clip.CurveNames[Curve];
		EXPECT_EQ(Samples[0]["face"][Name].get<float>(), float(Clip.Values[14][Curve])) << Name;
		EXPECT_EQ(Samples[1]["face"][Name].get<float>(), float(Clip.Values[29][Curve])) << Name;
		for (const std::vector<double>& Frame : Clip.Values)
		{
			bAnyOutsideUnit |= Frame[Curve] < 0.0;
		}
	}
	EXPECT_TRUE(bAnyOutsideUnit) << "the signed gaze controls are kept unclamped";
	const FRun Forced = RunZn({"sample", "--face", Path, "--face-format", "rig", "-t", TimeArg(KeyTime(14)), "--json"});
	ASSERT_EQ(Forced.Status, 0) << Forced.Err;
	EXPECT_EQ(Forced.OutJson()[0], Samples[0]);
}

TEST_F(ZnSampleTests, BodyAndFaceTogetherShareEachSample)
{
	const FZnGenBodyClip BodyClip = Body(30, 21);
	const FZnGenFaceClip FaceClip = Face(30, 21);
	const std::string BodyPath = Write("body.json", FZnMotionGenerator::BodyToJson(BodyClip));
	const std::string FacePath = Write("face.json", FZnMotionGenerator::FaceToJson(FaceClip));
	const Json Samples = SampleJson({"--body", BodyPath, "--face", FacePath, "-t", TimeArg(KeyTime(6))});
	ASSERT_EQ(Samples.size(), 1u);
	EXPECT_EQ(KeysOf(Samples[0]), (std::vector<std::string>{"time", "root", "bones", "face"}));
	ExpectBodyFrame(Samples[0], BodyClip, 6);
	EXPECT_EQ(Samples[0]["face"]["JawOpen"].get<float>(),
		ExpectedWeightV1(FaceClip.Weights[6][size_t(
			std::find(FaceClip.ChannelNames.begin(), FaceClip.ChannelNames.end(), "JawOpen") -
			FaceClip.ChannelNames.begin())]));
}

TEST_F(ZnSampleTests, SeveralTimesGiveOneSampleEachInTheGivenOrder)
{
	const FZnGenFaceClip Clip = Face(30, 2);
	const std::string Path = Write("face.json", FZnMotionGenerator::FaceToJson(Clip));
	const Json Samples = SampleJson({"--face", Path, "-t", TimeArg(KeyTime(20)), "-t", TimeArg(KeyTime(3)), "--time",
		TimeArg(KeyTime(20)), "-t", TimeArg(KeyTime(10))});
	ASSERT_EQ(Samples.size(), 4u);
	const std::vector<int32> Frames = {20, 3, 20, 10};
	for (size_t Index = 0; Index < Frames.size(); ++Index)
	{
		EXPECT_EQ(Samples[Index]["time"].get<float>(), KeyTime(Frames[Index]));
		EXPECT_EQ(Samples[Index]["face"]["EyeBlinkRight"].get<float>(),
			ExpectedWeightV1(Clip.Weights[size_t(Frames[Index])][0]));
	}
	EXPECT_EQ(Samples[0], Samples[2]);
}

TEST_F(ZnSampleTests, TextFormListsTheClipsAndEveryBoneAndCurveWithItsValues)
{
	const FZnGenBodyClip BodyClip = Body(30, 13);
	const FZnGenFaceClip FaceClip = Face(30, 13);
	const std::string BodyPath = Write("body.json", FZnMotionGenerator::BodyToJson(BodyClip));
	const std::string FacePath = Write("face.json", FZnMotionGenerator::FaceToJson(FaceClip));
	const FRun Run = RunZn({"sample", "--body", BodyPath, "--face", FacePath, "-t", "0.5", "-t", "0"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	EXPECT_EQ(Run.Err, "");
	const std::vector<std::string> Lines = ZnTest::Lines(Run.Out);
	ASSERT_EQ(Lines.size(), 2u + 2u * (1u + 2u + 54u + 1u + 51u)) << Run.Out;
	EXPECT_EQ(Lines[0], "body " + BodyPath + ": v1, 54 bones, totalTime 1 s");
	EXPECT_EQ(Lines[1], "face " + FacePath + ": v1, 51 curves, totalTime 1 s");
	EXPECT_EQ(Lines[2], "time 0.5000 s");
	const FVectorValue Root = ExpectedPosition(BodyClip.RootPositions[15]);
	char Expected[256];
	std::snprintf(Expected, sizeof(Expected), "  root position (cm)  %10.4f %10.4f %10.4f", Root.X, Root.Y, Root.Z);
	EXPECT_EQ(Lines[3], Expected);
	size_t Line = 5;
	for (size_t Bone = 0; Bone < BodyClip.BoneNames.size(); ++Bone, ++Line)
	{
		const FQuatValue Q = ExpectedRotation(BodyClip.Rotations[Bone][15]);
		std::snprintf(Expected, sizeof(Expected), "  %-20s %10.6f %10.6f %10.6f %10.6f",
			BodyClip.BoneNames[Bone].c_str(), Q.X, Q.Y, Q.Z, Q.W);
		EXPECT_EQ(Lines[Line], Expected);
	}
	EXPECT_EQ(Lines[Line++].rfind("  face curve", 0), 0u);
	for (size_t Channel = 0; Channel < 51; ++Channel, ++Line)
	{
		std::snprintf(Expected, sizeof(Expected), "  %-20s %10.6f", FaceClip.ChannelNames[Channel].c_str(),
			double(ExpectedWeightV1(FaceClip.Weights[15][Channel])));
		EXPECT_EQ(Lines[Line], Expected);
	}
	EXPECT_EQ(Lines[Line], "time 0.0000 s");
}

TEST_F(ZnSampleTests, TextFormShowsEachDecodersTotalTime)
{
	// Version 1 faces last N/30 s, frame objects end at their last frame's time, (N-1)/30 s.
	const FZnGenFaceClip Clip = Face(15, 1);
	const std::string V1 = Write("face_v1.json", FZnMotionGenerator::FaceToJson(Clip));
	const std::string V2 = Write("face_v2.json", FZnMotionGenerator::FaceToJsonV2(Clip));
	const FZnGenBodyClip BodyClip = Body(15, 1, false, false);
	const std::string BodyV2 = Write("body_v2.json", FZnMotionGenerator::BodyToJsonV2(BodyClip));
	const FRun Run = RunZn({"sample", "--body", BodyV2, "--face", V1, "-t", "0"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	const std::vector<std::string> Lines = ZnTest::Lines(Run.Out);
	ASSERT_GE(Lines.size(), 2u);
	EXPECT_EQ(Lines[0], "body " + BodyV2 + ": v2, 22 bones, totalTime 0.466667 s");
	EXPECT_EQ(Lines[1], "face " + V1 + ": v1, 51 curves, totalTime 0.5 s");
	const FRun Second = RunZn({"sample", "--face", V2, "-t", "0"});
	ASSERT_EQ(Second.Status, 0) << Second.Err;
	EXPECT_EQ(ZnTest::Lines(Second.Out).at(0), "face " + V2 + ": v2, 51 curves, totalTime 0.466667 s");
}

TEST_F(ZnSampleTests, ALongBoneNameIsPrintedWhole)
{
	const std::string Name(600, 'B');
	const std::string Path = Write("body.json",
		"{\"totalTime\":0.1,\"curves\":[{\"name\":\"" + Name +
			"\",\"path\":\"\",\"rotas\":[{\"x\":1,\"y\":0,\"z\":0,\"w\":0}]}],\"Hips\":{\"name\":\"Hips\","
			"\"path\":\"\",\"pos\":[{\"x\":0.01,\"y\":0.02,\"z\":0.03}]}}");
	const FRun Run = RunZn({"sample", "--body", Path, "-t", "0"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	const std::vector<std::string> Lines = ZnTest::Lines(Run.Out);
	ASSERT_EQ(Lines.size(), 5u) << Run.Out;
	EXPECT_EQ(Lines[4], "  " + Name + "   0.000000   1.000000   0.000000   0.000000");
}

TEST_F(ZnSampleTests, AByteOrderMarkBeforeTheTextIsSkipped)
{
	const FZnGenBodyClip Clip = Body(30, 14);
	const std::string Text = FZnMotionGenerator::BodyToJsonV2(Clip);
	const std::string Plain = Write("plain.json", Text);
	const std::string Marked = Write("marked.json", "\xEF\xBB\xBF" + Text);
	const Json Samples = SampleJson({"--body", Marked, "-t", TimeArg(KeyTime(2))});
	ASSERT_EQ(Samples.size(), 1u);
	ExpectBodyFrame(Samples[0], Clip, 2);
	EXPECT_EQ(SampleJson({"--body", Plain, "-t", TimeArg(KeyTime(2))}), Samples);
}

TEST_F(ZnSampleTests, ClipsWrittenByGenerateSampleAsTheGeneratorMadeThem)
{
	const std::string BodyPath = (Folder / "gen_body.json").string();
	const std::string FacePath = (Folder / "gen_face.json").string();
	ASSERT_EQ(
		RunZn({"generate", "--seconds", "2", "--seed", "31", "--format", "v2", "--no-fingers", "-o", BodyPath}).Status,
		0);
	ASSERT_EQ(RunZn({"generate", "--kind", "face", "--seconds", "2", "--seed", "31", "-o", FacePath}).Status, 0);
	const FZnGenBodyClip BodyClip = Body(60, 31, true, false);
	const FZnGenFaceClip FaceClip = Face(60, 31);
	const Json Samples = SampleJson({"--body", BodyPath, "--face", FacePath, "-t", TimeArg(KeyTime(45))});
	ASSERT_EQ(Samples.size(), 1u);
	ExpectBodyFrame(Samples[0], BodyClip, 45);
	for (size_t Channel = 0; Channel < 51; ++Channel)
	{
		EXPECT_EQ(Samples[0]["face"][FaceClip.ChannelNames[Channel]].get<float>(),
			ExpectedWeightV1(FaceClip.Weights[45][Channel]));
	}
}
