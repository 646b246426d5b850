// zn export and zn preview on input that cannot be exported: a clear message naming the file, a
// non-zero exit status, and no output file (not even a partial one).
#include "ZnMotionGenerator.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using namespace ZnTest;

namespace
{
class ZnExportErrorTest : public FZnFolderTest
{
protected:
	// Runs the command and checks the failure: status, message, and an output folder left empty
	// of anything but the inputs.
	void ExpectFailure(const std::vector<std::string>& Args, int Status, const std::string& Message)
	{
		const auto Before = Entries();
		const FRun Run = RunZn(Args);
		EXPECT_EQ(Run.Status, Status) << Run.Err;
		EXPECT_NE(Run.Err.find(Message), std::string::npos) << Run.Err;
		EXPECT_EQ(Run.Out, "");
		EXPECT_EQ(Entries(), Before);
	}

	std::vector<std::string> Entries() const
	{
		std::vector<std::string> Names;
		for (const auto& Entry : std::filesystem::recursive_directory_iterator(Folder))
		{
			Names.push_back(Entry.path().string());
		}
		std::sort(Names.begin(), Names.end());
		return Names;
	}

	std::string EmptyBody()
	{
		FZnGenBodyOptions Options;
		Options.FrameCount = 0;
		return Write("empty_body.json", FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody(Options)));
	}

	std::string SomeFace()
	{
		FZnGenFaceOptions Options;
		Options.FrameCount = 10;
		return Write("face.json", FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace(Options)));
	}

	std::string SomeBody()
	{
		FZnGenBodyOptions Options;
		Options.FrameCount = 10;
		return Write("body.json", FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody(Options)));
	}
};
} // namespace

TEST_F(ZnExportErrorTest, EmptyBodyClipIsRefusedAndNothingIsWritten)
{
	const std::string Body = EmptyBody();
	ExpectFailure({"export", "bvh", Body, "-o", PathOf("out.bvh")}, 1, "holds an empty body clip (no frames)");
	const std::string EmptyV2 = Write("empty_v2.json", "[]");
	ExpectFailure({"export", "bvh", EmptyV2, "-o", PathOf("out.bvh")}, 1, "empty_v2.json holds an empty body clip");
	ExpectFailure({"preview", "--body", Body, "-o", PathOf("page")}, 1, "holds an empty body clip");
}

TEST_F(ZnExportErrorTest, EmptyFaceClipIsRefusedAndNothingIsWritten)
{
	const std::string Face = Write("empty_face.json", "[]");
	ExpectFailure({"export", "csv", Face, "-o", PathOf("out.csv")}, 1, "empty_face.json holds an empty face clip");
	ExpectFailure({"preview", "--face", Face, "-o", PathOf("page")}, 1, "holds an empty face clip");
	ExpectFailure(
		{"export", "csv", SomeFace(), "--body", EmptyBody(), "-o", PathOf("out.csv")}, 1, "holds an empty body clip");
}

TEST_F(ZnExportErrorTest, FileThatIsNotAClipIsNamedAsSuch)
{
	const std::string Text = Write("notes.txt", "these are not motion data\n");
	ExpectFailure(
		{"export", "bvh", Text, "-o", PathOf("out.bvh")}, 1, "notes.txt is not a body clip (format v1): not JSON");
	ExpectFailure(
		{"export", "csv", Text, "-o", PathOf("out.csv")}, 1, "notes.txt is not a face clip (format v1): not JSON");
	// Each kind of clip given where the other is expected.
	ExpectFailure({"export", "bvh", SomeFace(), "-o", PathOf("out.bvh")}, 1,
		"face.json is not a body clip (format v2): not an array of frames with \"rot\"");
	ExpectFailure({"export", "csv", SomeBody(), "-o", PathOf("out.csv")}, 1,
		"body.json is not a face clip (format v2): not an array of frames with \"bs\"");
	const std::string Object = Write("object.json", "{\"totalTime\":1}");
	ExpectFailure({"export", "bvh", Object, "-o", PathOf("out.bvh")}, 1,
		"object.json is not a body clip (format v1): no \"curves\" array in a JSON object");
	ExpectFailure({"preview", "--body", SomeFace(), "-o", PathOf("page")}, 1, "is not a body clip");
}

TEST_F(ZnExportErrorTest, ControlRigCurvesAreNotBlendShapeWeights)
{
	FZnGenFaceOptions Options;
	Options.FrameCount = 5;
	const std::string Rig =
		Write("rig.json", FZnMotionGenerator::ControlRigToJson(FZnMotionGenerator::GenerateControlRig(Options)));
	ExpectFailure({"export", "csv", Rig, "-o", PathOf("out.csv")}, 1,
		"rig.json holds control-rig curves, not blend-shape weights");
}

TEST_F(ZnExportErrorTest, MissingInputAndUnwritableOutputAreReported)
{
	ExpectFailure({"export", "bvh", PathOf("absent.json"), "-o", PathOf("out.bvh")}, 2, "cannot read");
	ExpectFailure({"export", "bvh", SomeBody(), "-o", PathOf("no/such/folder/out.bvh")}, 1, "cannot write");
	ExpectFailure({"export", "csv", SomeFace(), "-o", PathOf("no/such/folder/out.csv")}, 1, "cannot write");
	// The output is a folder.
	std::filesystem::create_directories(PathOf("taken"));
	ExpectFailure({"export", "bvh", SomeBody(), "-o", PathOf("taken")}, 1, "cannot write");
	ExpectFailure(
		{"preview", "--body", SomeBody(), "--audio", PathOf("absent.wav"), "-o", PathOf("page")}, 2, "cannot read");
	const std::string NotAudio = Write("speech.wav", "plain text, not sound");
	ExpectFailure({"preview", "--body", SomeBody(), "--audio", NotAudio, "-o", PathOf("page")}, 1,
		"the audio is not WAV, MP3, Ogg, FLAC or MP4 audio");
	// The preview's folder is a file.
	const std::string File = Write("page", "x");
	ExpectFailure({"preview", "--body", SomeBody(), "-o", File}, 1, "cannot create");
}

TEST_F(ZnExportErrorTest, FrameNumberedZeroIsRefusedRatherThanWrittenForEver)
{
	// frameIndex 0 puts the frame at an enormous time (the decoder keeps that as it is).
	const std::string Body = Write("zero.json",
		"[{\"frameIndex\":0,\"pos\":{\"Hips\":[0,1,0]},\"rot\":{\"Hips\":[0,0,0,1]}},"
		"{\"frameIndex\":1,\"pos\":{\"Hips\":[0,1,0]},\"rot\":{\"Hips\":[0,0,0,1]}}]");
	ExpectFailure({"export", "bvh", Body, "-o", PathOf("out.bvh")}, 1, "runs past 24 hours");
}

TEST_F(ZnExportErrorTest, UsageErrorsUseTheirOwnStatus)
{
	ExpectFailure({"preview", "-o", PathOf("page")}, 2, "zn preview: give --body FILE, --face FILE or both");
	// The option parser's own errors: a missing -o, an unknown format.
	const FRun NoOutput = RunZn({"export", "bvh", SomeBody()});
	EXPECT_NE(NoOutput.Status, 0);
	EXPECT_NE(NoOutput.Status, 1);
	const FRun BadFormat = RunZn({"export", "bvh", SomeBody(), "-o", PathOf("x.bvh"), "--format", "v3"});
	EXPECT_NE(BadFormat.Status, 0);
	EXPECT_NE(BadFormat.Status, 1);
	EXPECT_FALSE(std::filesystem::exists(PathOf("x.bvh")));
}
