// zn demo end to end: the in-process service, the module's request objects and decoders, the four
// files it writes, and its failures.
#include "ZnRunner.h"

#include "ZnDM_BpFuncLib.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <cstring>
#include <spawn.h>

using namespace ZnTest;

extern char** environ;

namespace
{
const char* const Sentence = "Hello there. This sentence travels the whole road, from the text to a moving face.";

FString ToFString(const std::string& Utf8)
{
	const FUTF8ToTCHAR Converted(Utf8.data(), static_cast<int32>(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

// The audio length from the canonical WAV header the service writes (PCM, 16 bits).
double WavSeconds(const std::string& Bytes)
{
	if (Bytes.size() < 44 || Bytes.compare(0, 4, "RIFF") != 0 || Bytes.compare(36, 4, "data") != 0)
	{
		return -1.0;
	}
	const auto Le = [&Bytes](size_t At)
	{
		uint32_t Value = 0;
		for (int Byte = 3; Byte >= 0; --Byte)
		{
			Value = (Value << 8) | static_cast<unsigned char>(Bytes[At + static_cast<size_t>(Byte)]);
		}
		return Value;
	};
	const uint32_t Rate = Le(24);
	const uint32_t Channels = Le(22) & 0xFFFF;
	const uint32_t Bits = Le(34) & 0xFFFF;
	return static_cast<double>(Bytes.size() - 44) / (Rate * Channels * Bits / 8);
}

class ZnDemoTests : public FZnFolderTest
{
protected:
	// Runs the demo into the test's folder and checks the four files agree with each other.
	void ExpectFourFilesThatAgree(const FRun& Run)
	{
		ASSERT_EQ(Run.Status, 0) << Run.Err;
		const double Audio = WavSeconds(ReadAll(PathOf("audio.wav")));
		ASSERT_GT(Audio, 1.0);

		FZnFaceData Face;
		UZnDM_BpFuncLib::ParseJsonToFacedata(ToFString(ReadAll(PathOf("face.json"))), Face);
		ASSERT_EQ(Face.CurveFrames.Num(), 51);
		EXPECT_NEAR(Face.CurveFrames[0].Num() / 30.0, Audio, 1.0 / 30.0);

		FZnBodyData Body;
		UZnDM_BpFuncLib::ParseJsonToBodydata(ToFString(ReadAll(PathOf("body.json"))), Body);
		ASSERT_GT(Body.BoneFrames.Num(), 0);
		EXPECT_NEAR(Body.BoneFrames[0].Num() / 30.0, Audio, 1.0 / 30.0);
		EXPECT_NEAR(Body.totalTime, Audio, 1.0 / 30.0);

		const Json Summary = Json::parse(ReadAll(PathOf("summary.json")), nullptr, false);
		ASSERT_TRUE(Summary.is_object());
		EXPECT_EQ(Summary["frames"]["face"], Face.CurveFrames[0].Num());
		EXPECT_EQ(Summary["frames"]["body"], Body.BoneFrames[0].Num());
		EXPECT_NEAR(Summary["durations"]["audio"].get<double>(), Audio, 1e-9);
		EXPECT_EQ(Summary["sizes"]["face"], ReadAll(PathOf("face.json")).size());
		// The token is shortened so the file cannot be used to call the service.
		const std::string Token = Summary["token"].get<std::string>();
		EXPECT_NE(Token.find("..."), std::string::npos) << Token;
		EXPECT_EQ(Token.find(Summary["urls"]["audio"].get<std::string>()), std::string::npos);
		for (const char* Step : {"token", "motion_request", "parse_response", "download", "decode", "sample"})
		{
			EXPECT_TRUE(Summary["seconds"].contains(Step)) << Step;
		}
		// Every bone and face curve was sampled at every frame.
		const int64_t Frames =
			static_cast<int64_t>(std::floor(std::max(Face.totalTime, Body.totalTime) * 30.0f + 1e-4f)) + 1;
		EXPECT_EQ(Summary["samples"].get<int64_t>(), Frames * (51 + Body.BoneCurves.Num()));
		EXPECT_NE(Run.Out.find("Wrote audio.wav, face.json, body.json, body.bvh, face.csv, index.html, summary.json"),
			std::string::npos)
			<< Run.Out;

		// The exports beside them: one BVH line and one CSV row per frame, and the page.
		const std::string Bvh = ReadAll(PathOf("body.bvh"));
		const size_t FramesAt = Bvh.find("Frames: ");
		ASSERT_NE(FramesAt, std::string::npos);
		EXPECT_EQ(std::stoi(Bvh.substr(FramesAt + 8)), Body.BoneFrames[0].Num());
		EXPECT_NE(Bvh.find("Frame Time: 0.0333333"), std::string::npos);
		const std::string Csv = ReadAll(PathOf("face.csv"));
		EXPECT_EQ(std::count(Csv.begin(), Csv.end(), '\n'), Face.CurveFrames[0].Num() + 1);
		EXPECT_EQ(Csv.rfind("Timecode,BlendShapeCount,", 0), 0u);
		const std::string Page = ReadAll(PathOf("index.html"));
		EXPECT_NE(Page.find("data:audio/wav;base64,"), std::string::npos);
		EXPECT_TRUE(Summary["seconds"].contains("export"));
	}
};
} // namespace

TEST_F(ZnDemoTests, FixedSeedWritesFourFilesThatDecodeAndAgree)
{
	const FRun Run = RunZn({"demo", Sentence, "-o", Folder.string(), "--seed", "7"});
	ExpectFourFilesThatAgree(Run);
	const Json Summary = Json::parse(ReadAll(PathOf("summary.json")));
	EXPECT_TRUE(Summary["in_process"].get<bool>());
	EXPECT_EQ(Summary["text"], Sentence);
	// Plain progress lines when the output is not a terminal, one per step.
	EXPECT_NE(Run.Out.find("[2/8] GetAppToken done"), std::string::npos) << Run.Out;
	EXPECT_NE(Run.Out.find("[8/8] sampling every curve at 30 frames per second done"), std::string::npos);
}

TEST_F(ZnDemoTests, TheSameSeedGivesTheSameClipsAndAnotherSeedOthers)
{
	ASSERT_EQ(RunZn({"demo", Sentence, "-o", PathOf("a"), "--seed", "7"}).Status, 0);
	ASSERT_EQ(RunZn({"demo", Sentence, "-o", PathOf("b"), "--seed", "7"}).Status, 0);
	ASSERT_EQ(RunZn({"demo", Sentence, "-o", PathOf("c"), "--seed", "8"}).Status, 0);
	EXPECT_EQ(ReadAll(PathOf("a/audio.wav")), ReadAll(PathOf("b/audio.wav")));
	EXPECT_EQ(ReadAll(PathOf("a/face.json")), ReadAll(PathOf("b/face.json")));
	EXPECT_EQ(ReadAll(PathOf("a/body.json")), ReadAll(PathOf("b/body.json")));
	EXPECT_NE(ReadAll(PathOf("a/face.json")), ReadAll(PathOf("c/face.json")));
	EXPECT_NE(ReadAll(PathOf("a/body.json")), ReadAll(PathOf("c/body.json")));
}

TEST_F(ZnDemoTests, WrongSecretFailsWithTheServicesMessage)
{
	const FRun Run = RunZn({"demo", "Hi.", "-o", Folder.string(), "--secret", "not-the-secret"});
	EXPECT_EQ(Run.Status, 1);
	EXPECT_NE(Run.Err.find("zn demo: step \"GetAppToken\" failed: service code "), std::string::npos) << Run.Err;
	EXPECT_NE(Run.Err.find("wrong secret for appid \"demo\""), std::string::npos) << Run.Err;
	EXPECT_FALSE(std::filesystem::exists(PathOf("summary.json")));
}

TEST_F(ZnDemoTests, UnreachableEndpointNamesTheStep)
{
	// Port 1 on loopback: nothing listens there.
	const FRun Run = RunZn({"demo", "Hi.", "-o", Folder.string(), "--endpoint", "http://127.0.0.1:1"});
	EXPECT_EQ(Run.Status, 1);
	EXPECT_NE(Run.Err.find("zn demo: step \"GetAppToken\" failed"), std::string::npos) << Run.Err;
}

TEST_F(ZnDemoTests, EndpointOfZnServeInAnotherProcess)
{
	// zn serve prints its base URL as the first line of standard output.
	int Pipe[2];
	ASSERT_EQ(pipe(Pipe), 0);
	posix_spawn_file_actions_t Actions;
	posix_spawn_file_actions_init(&Actions);
	posix_spawn_file_actions_adddup2(&Actions, Pipe[1], STDOUT_FILENO);
	posix_spawn_file_actions_addclose(&Actions, Pipe[0]);
	posix_spawn_file_actions_addopen(&Actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
	char* Argv[] = {const_cast<char*>(ZN_BINARY), const_cast<char*>("serve"), nullptr};
	pid_t Server = 0;
	ASSERT_EQ(posix_spawn(&Server, ZN_BINARY, &Actions, nullptr, Argv, environ), 0);
	posix_spawn_file_actions_destroy(&Actions);
	close(Pipe[1]);
	std::string Line;
	char Character = 0;
	while (read(Pipe[0], &Character, 1) == 1 && Character != '\n')
	{
		Line += Character;
	}
	ASSERT_EQ(Line.rfind("http://127.0.0.1:", 0), 0u) << Line;

	const FRun Run = RunZn({"demo", Sentence, "-o", Folder.string(), "--endpoint", Line});
	kill(Server, SIGTERM);
	int Status = 0;
	waitpid(Server, &Status, 0);
	close(Pipe[0]);
	ExpectFourFilesThatAgree(Run);
	EXPECT_FALSE(Json::parse(ReadAll(PathOf("summary.json")))["in_process"].get<bool>());
}
