#include "Containers/StringConv.h"
#include "ZnBodyData.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnMotionGenerator.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>

using namespace ZnTest;

TEST(ZnBatchTests, RunsOneCallPerLineFromAFile)
{
	WriteAll("zn_batch.txt",
		"# a comment\n"
		"TestUParamRef\n"
		"\n"
		"call CombinePath dir='a b' \"fileName=c d\"\n"
		"CombinePath dir=a\n"
		"TickRemainTime remainTime=2 deltaTime=0.5\n");
	const FRun Run = RunZn({"batch", "zn_batch.txt"});
	EXPECT_EQ(Run.Status, 2) << "one call failed";
	const std::vector<std::string> L = Lines(Run.Out);
	ASSERT_EQ(L.size(), 4u) << Run.Out;
	EXPECT_EQ(L[0], "{\"str\":\"hello UPARAM(ref)\",\"otherStr\":\"other msg\"}");
	FTCHARToUTF8 Combined(*UZnDM_BpFuncLib::CombinePath(FString(TEXT("a b")), FString(TEXT("c d"))));
	EXPECT_EQ(Json::parse(L[1])["return"], std::string(Combined.Get(), Combined.Length()));
	const Json Error = Json::parse(L[2]);
	EXPECT_EQ(Error["line"], 5);
	EXPECT_NE(Error["error"].get<std::string>().find("missing parameter 'fileName'"), std::string::npos);
	float Remain = 2.0f;
	UZnDM_BpFuncLib::TickRemainTime(Remain, 0.5f);
	EXPECT_FLOAT_EQ(Json::parse(L[3])["remainTime"].get<float>(), Remain) << "later calls still run";
}

TEST(ZnBatchTests, ReadsStandardInputAndSucceedsWhenEveryCallDoes)
{
	const std::string Calls = "TestUParamRef\nTestUParamRef str=x\n";
	const FRun Run = RunZn({"batch"}, &Calls);
	EXPECT_EQ(Run.Status, 0) << Run.Err;
	EXPECT_EQ(Lines(Run.Out).size(), 2u);
	const FRun Dash = RunZn({"batch", "-"}, &Calls);
	EXPECT_EQ(Dash.Out, Run.Out);
}

TEST(ZnBatchTests, StreamingCallsShareStateWithinOneProcess)
{
	FZnGenBodyOptions Options;
	Options.FrameCount = 3;
	Options.bFingers = false;
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody(Options);
	// The caller names the bones to read; here every bone of the clip.
	Json Names = Json::array();
	TArray<FString> Skeleton;
	for (const std::string& Name : Clip.BoneNames)
	{
		Names.push_back(Name);
		Skeleton.Add(FString(UTF8_TO_TCHAR(Name.c_str())));
	}
	std::string Calls = "BeginParseJsonToBodydataV2\n";
	for (int32 Frame = 0; Frame < Clip.FrameCount(); ++Frame)
	{
		const std::string Path = "zn_batch_frame" + std::to_string(Frame) + ".json";
		WriteAll(Path, FZnMotionGenerator::BodyFrameToJsonV2(Clip, Frame));
		Calls += "ParseJsonToBodydataV2 jsonStr=@" + Path + " " + ShellQuote("SkeletonNoHand=" + Names.dump()) + "\n";
	}
	Calls += "EndParseJsonToBodydataV2\n";
	const FRun Run = RunZn({"batch"}, &Calls);
	ASSERT_EQ(Run.Status, 0) << Run.Err;
	const std::vector<std::string> L = Lines(Run.Out);
	ASSERT_EQ(L.size(), size_t(Clip.FrameCount() + 2));

	// The same sequence in this process.
	UZnDM_BpFuncLib::BeginParseJsonToBodydataV2();
	for (int32 Frame = 0; Frame < Clip.FrameCount(); ++Frame)
	{
		const std::string Text = FZnMotionGenerator::BodyFrameToJsonV2(Clip, Frame);
		UZnDM_BpFuncLib::ParseJsonToBodydataV2(FString(UTF8_TO_TCHAR(Text.c_str())), Skeleton);
	}
	FZnBodyData Body;
	float TotalTime = 0.0f;
	UZnDM_BpFuncLib::EndParseJsonToBodydataV2(Body, TotalTime);
	const Json End = Json::parse(L.back());
	EXPECT_FLOAT_EQ(End["outTotalTime"].get<float>(), TotalTime);
	ASSERT_EQ(End["outBodyData"]["BoneNames"].size(), size_t(Body.BoneNames.Num()));
	ASSERT_GT(Body.BoneNames.Num(), 0) << "the frames reached the stream";
	EXPECT_EQ(End["outBodyData"]["BoneFrames"][0].size(), size_t(Body.BoneFrames[0].Num()));
}

TEST(ZnBatchTests, UnterminatedQuoteIsReportedForThatLine)
{
	const std::string Calls = "CombinePath dir='a fileName=b\nTestUParamRef\n";
	const FRun Run = RunZn({"batch"}, &Calls);
	EXPECT_EQ(Run.Status, 2);
	const std::vector<std::string> L = Lines(Run.Out);
	ASSERT_EQ(L.size(), 2u);
	EXPECT_NE(Json::parse(L[0])["error"].get<std::string>().find("unterminated"), std::string::npos);
	EXPECT_EQ(Json::parse(L[1])["otherStr"], "other msg");
}

TEST(ZnBatchTests, MissingFileIsAnError)
{
	const FRun Run = RunZn({"batch", "no_such_batch.txt"});
	EXPECT_EQ(Run.Status, 2);
	EXPECT_NE(Run.Err.find("cannot read the file"), std::string::npos);
}
