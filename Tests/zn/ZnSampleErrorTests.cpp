// zn sample with files and options it cannot use: it exits with a clear message and a non-zero
// status (or prints the documented silent result), and never crashes.
#include "ZnMotionGenerator.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

using namespace ZnTest;

namespace
{
class ZnSampleErrorTests : public ZnTest::FZnFolderTest
{
protected:
	// Runs zn sample with Args and expects it to refuse: non-zero status (Status when given), no
	// output, and Message on standard error (the whole of it when bWhole).
	FRun ExpectRefused(std::vector<std::string> Args, const std::string& Message, int Status = -1, bool bWhole = false)
	{
		Args.insert(Args.begin(), "sample");
		const FRun Run = RunZn(Args);
		const std::string What = ::testing::PrintToString(Args);
		EXPECT_NE(Run.Status, -1) << "zn must exit, not crash: " << What;
		EXPECT_NE(Run.Status, 0) << What;
		if (Status >= 0)
		{
			EXPECT_EQ(Run.Status, Status) << What;
		}
		if (bWhole)
		{
			EXPECT_EQ(Run.Err, Message) << What;
		}
		else
		{
			EXPECT_NE(Run.Err.find(Message), std::string::npos) << What << "\n" << Run.Err;
		}
		EXPECT_EQ(Run.Out, "") << What;
		return Run;
	}

	std::string BodyClip(bool bV2 = false)
	{
		const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody({10, 1, true, true});
		return Write(bV2 ? "body_v2.json" : "body.json",
			bV2 ? FZnMotionGenerator::BodyToJsonV2(Clip) : FZnMotionGenerator::BodyToJson(Clip));
	}

	std::string FaceClip(bool bV2 = false)
	{
		const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({10, 1, false});
		return Write(bV2 ? "face_v2.json" : "face.json",
			bV2 ? FZnMotionGenerator::FaceToJsonV2(Clip) : FZnMotionGenerator::FaceToJson(Clip));
	}
};
} // namespace

TEST_F(ZnSampleErrorTests, NeitherBodyNorFaceIsAnError)
{
	ExpectRefused({"-t", "1"}, "zn sample: give --body FILE, --face FILE or both\n", 2, true);
}

TEST_F(ZnSampleErrorTests, ATimeIsRequired)
{
	ExpectRefused({"--body", BodyClip()}, "--time is required");
}

TEST_F(ZnSampleErrorTests, MissingFilesAndFoldersAreRefusedBeforeDecoding)
{
	const std::string Missing = (Folder / "missing.json").string();
	ExpectRefused({"--body", Missing, "-t", "0"}, "--body: File does not exist: " + Missing);
	ExpectRefused({"--face", Missing, "-t", "0"}, "--face: File does not exist: " + Missing);
	ExpectRefused({"--body", Folder.string(), "-t", "0"}, "--body: File is actually a directory");
	ExpectRefused({"--body", BodyClip(), "--face", Missing, "-t", "0"}, "--face: File does not exist");
}

TEST_F(ZnSampleErrorTests, EmptyFilesDecodeToNothing)
{
	const std::string Empty = Write("empty.json", "");
	ExpectRefused(
		{"--body", Empty, "-t", "0"}, "zn sample: no bones decoded from " + Empty + " (format v1)\n", 1, true);
	ExpectRefused(
		{"--face", Empty, "-t", "0"}, "zn sample: no curves decoded from " + Empty + " (format v1)\n", 1, true);
	const std::string Blank = Write("blank.json", " \n\t ");
	ExpectRefused({"--body", Blank, "-t", "0"}, "zn sample: no bones decoded from " + Blank, 1);
}

TEST_F(ZnSampleErrorTests, UnparsableFilesDecodeToNothing)
{
	for (const std::string& Text : {std::string("{"), std::string("not json at all"), std::string("[{\"frameIndex\":"),
			 std::string("\x01\x02\xFF\xFE garbage\x00\x80", 14), std::string("{\"totalTime\":1,\"curves\":[]")})
	{
		const std::string Path = Write("bad.json", Text);
		ExpectRefused({"--body", Path, "-t", "0"}, "zn sample: no bones decoded from " + Path, 1);
		ExpectRefused({"--face", Path, "-t", "0"}, "zn sample: no curves decoded from " + Path, 1);
	}
	const std::string Face = Write("bad_face.json", "[[1,2,3],[4,5");
	ExpectRefused({"--face", Face, "-t", "0"}, "zn sample: no curves decoded from " + Face + " (format v1)\n", 1, true);
}

TEST_F(ZnSampleErrorTests, AFaceFileGivenAsBodyDecodesNoBones)
{
	for (const std::string& Face : {FaceClip(false), FaceClip(true)})
	{
		ExpectRefused(
			{"--body", Face, "-t", "0"}, "zn sample: no bones decoded from " + Face + " (format v2)\n", 1, true);
	}
	const std::string Rig = Write(
		"rig.json", FZnMotionGenerator::ControlRigToJson(FZnMotionGenerator::GenerateControlRig({10, 1, false}, 4)));
	ExpectRefused({"--body", Rig, "-t", "0"}, "zn sample: no bones decoded from " + Rig + " (format v1)\n", 1, true);
}

TEST_F(ZnSampleErrorTests, ABodyFileGivenAsFaceDecodesNoKeys)
{
	const std::string Body = BodyClip();
	ExpectRefused({"--face", Body, "-t", "0"}, "zn sample: no curves decoded from " + Body + " (format v2)\n", 1, true);
	// Frame objects without "bs" still give the frame decoder's 51 curves, but not one key.
	const std::string BodyV2 = BodyClip(true);
	ExpectRefused(
		{"--face", BodyV2, "-t", "0"}, "zn sample: no keys decoded from " + BodyV2 + " (format v2)\n", 1, true);
}

TEST_F(ZnSampleErrorTests, AFormatThatDoesNotFitTheFileDecodesNothing)
{
	const std::string Body = BodyClip();
	ExpectRefused({"--body", Body, "--body-format", "v2", "-t", "0"},
		"zn sample: no bones decoded from " + Body + " (format v2)\n", 1, true);
	const std::string BodyV2 = BodyClip(true);
	ExpectRefused({"--body", BodyV2, "--body-format", "v1", "-t", "0"},
		"zn sample: no bones decoded from " + BodyV2 + " (format v1)\n", 1, true);
	const std::string Face = FaceClip();
	ExpectRefused({"--face", Face, "--face-format", "v2", "-t", "0"},
		"zn sample: no keys decoded from " + Face + " (format v2)\n", 1, true);
	ExpectRefused({"--face", Face, "--face-format", "rig", "-t", "0"},
		"zn sample: no curves decoded from " + Face + " (format rig)\n", 1, true);
	// Each frame of a version 1 face must be an array; object frames key nothing.
	const std::string FaceV2 = FaceClip(true);
	ExpectRefused({"--face", FaceV2, "--face-format", "v1", "-t", "0"},
		"zn sample: no keys decoded from " + FaceV2 + " (format v1)\n", 1, true);
}

TEST_F(ZnSampleErrorTests, AnEmptyClipHasNothingToSample)
{
	for (const char* Text : {"[]", "  [ ]\n", "[[],[]]"})
	{
		const std::string Path = Write("face.json", Text);
		ExpectRefused(
			{"--face", Path, "-t", "0"}, "zn sample: no keys decoded from " + Path + " (format v1)\n", 1, true);
	}
	const std::string Rig = Write("rig.json", "{\"curve_names\":[\"a\",\"b\"],\"curve_data\":[]}");
	ExpectRefused({"--face", Rig, "-t", "0"}, "zn sample: no keys decoded from " + Rig + " (format rig)\n", 1, true);
	const std::string Body = Write("body.json",
		"{\"totalTime\":0,\"curves\":[{\"name\":\"Hips\",\"path\":\"\",\"rotas\":[]}],\"Hips\":{\"name\":"
		"\"Hips\",\"path\":\"\",\"pos\":[]}}");
	ExpectRefused({"--body", Body, "-t", "0"}, "zn sample: no keys decoded from " + Body + " (format v1)\n", 1, true);
}

TEST_F(ZnSampleErrorTests, ABodyWithoutBonesIsAnError)
{
	const std::string Path =
		Write("body.json", "{\"totalTime\":1,\"curves\":[],\"Hips\":{\"name\":\"Hips\",\"path\":\"\",\"pos\":[]}}");
	ExpectRefused({"--body", Path, "-t", "0"}, "zn sample: no bones decoded from " + Path + " (format v1)\n", 1, true);
}

TEST_F(ZnSampleErrorTests, ABodyMissingMembersTheServiceAlwaysSendsDoesNotCrash)
{
	const std::string Rotation = "{\"x\":0,\"y\":0,\"z\":0,\"w\":1}";
	for (const std::string& Text : std::vector<std::string>{
			 "{\"totalTime\":1,\"curves\":[{\"name\":\"A\",\"path\":\"\",\"rotas\":[" + Rotation + "]}]}",
			 "{\"totalTime\":1,\"curves\":[{\"name\":\"A\",\"path\":\"\",\"rotas\":[1,2]}],\"Hips\":{\"pos\":[]}}",
			 "{\"totalTime\":1,\"curves\":[7],\"Hips\":{\"pos\":[]}}",
			 "{\"totalTime\":1,\"curves\":[{\"name\":\"A\",\"rotas\":[" + Rotation + "]}],\"Hips\":{\"pos\":[3]}}",
			 std::string("[{\"frameIndex\":1,\"rot\":{\"Hips\":[0,0,0,1]}}]"),
			 std::string("[{\"frameIndex\":1,\"pos\":{\"Hips\":[0,0]},\"rot\":{\"Hips\":[0,0,0,1]}}]"),
			 std::string("[{\"frameIndex\":1,\"pos\":{\"Hips\":[0,0,0]},\"rot\":{\"Hips\":[0,0,1]}}]"),
			 std::string("[{\"frameIndex\":1,\"pos\":{\"Hips\":[0,0,0]},\"rot\":[]}]"), std::string("[7,null]")})
	{
		const std::string Path = Write("body.json", Text);
		const FRun Run = RunZn({"sample", "--body", Path, "-t", "0"});
		EXPECT_NE(Run.Status, -1) << Text;
		if (Run.Status != 0)
		{
			EXPECT_EQ(Run.Err.rfind("zn sample: no ", 0), 0u) << Text << "\n" << Run.Err;
			EXPECT_NE(Run.Err.find(" decoded from " + Path), std::string::npos) << Text << "\n" << Run.Err;
		}
	}
}

TEST_F(ZnSampleErrorTests, AFrameWithoutOneOfTheFilesBonesIsLeftOut)
{
	// The second frame lacks "Spine": the frame decoder skips it whole, so the curves run straight
	// from the first frame to the third.
	const std::string Path = Write("body.json",
		"[{\"frameIndex\":1,\"pos\":{\"Hips\":[0,0,0]},\"rot\":{\"Hips\":[0,0,0,1],\"Spine\":[0,0,0,1]}},"
		"{\"frameIndex\":2,\"pos\":{\"Hips\":[5,5,5]},\"rot\":{\"Hips\":[1,0,0,0]}},"
		"{\"frameIndex\":3,\"pos\":{\"Hips\":[0.02,0,0]},\"rot\":{\"Hips\":[0,0,0,1],\"Spine\":[0,0,0,1]}}]");
	const FRun Run = RunZn({"sample", "--body", Path, "-t", "0.0333333351", "--json"});
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	const Json Sample = Run.OutJson()[0];
	EXPECT_EQ(Sample["bones"]["Hips"], Json::parse("[0.0,0.0,0.0,1.0]"));
	EXPECT_NEAR(Sample["root"][1].get<double>(), 1.0, 1e-5) << "half way from 0 to 2 cm";
}

TEST_F(ZnSampleErrorTests, AnUnknownBoneIsNamed)
{
	for (const std::string& Path : {BodyClip(false), BodyClip(true)})
	{
		ExpectRefused(
			{"--body", Path, "--bones", "Head,Tail", "-t", "0"}, "zn sample: no bone Tail in " + Path + "\n", 1, true);
		ExpectRefused({"--body", Path, "--bones", "", "-t", "0"}, "zn sample: no bone  in " + Path + "\n", 1, true);
	}
}

TEST_F(ZnSampleErrorTests, BonesWithoutABodyAreRefused)
{
	ExpectRefused(
		{"--face", FaceClip(), "--bones", "Head", "-t", "0"}, "zn sample: --bones needs --body FILE\n", 2, true);
}

TEST_F(ZnSampleErrorTests, UnknownFormatsAndOptionsAreRefused)
{
	const std::string Body = BodyClip();
	ExpectRefused(
		{"--body", Body, "--body-format", "v3", "-t", "0"}, "--body-format: v3 not in {auto,v1,recommend,v2}");
	ExpectRefused({"--face", Body, "--face-format", "rigs", "-t", "0"}, "--face-format: rigs not in {auto,v1,v2,rig}");
	ExpectRefused({"--body", Body, "--fps", "30", "-t", "0"}, "--fps");
}

TEST_F(ZnSampleErrorTests, TimesMustBeFiniteNumbers)
{
	const std::string Body = BodyClip();
	for (const char* Time : {"soon", "", "1.5s", "nan", "inf", "-inf", "1e39"})
	{
		ExpectRefused({"--body", Body, "-t", "0", "-t", Time},
			std::string("--time: must be a finite number of seconds, not '") + Time + "'", 2);
	}
}
