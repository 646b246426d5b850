#include "ZnDM_Log.h"

#include "Components/SkeletalMeshComponent.h"
#include "Engine/StandaloneEngineLoop.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnTestLogCapture.h"
#include "ZnTimeTools.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
std::string ReadFile(const char* Path)
{
	std::ifstream File(Path, std::ios::binary);
	return std::string(std::istreambuf_iterator<char>(File), std::istreambuf_iterator<char>());
}

// Each test writes "dm_ue.txt" in a folder of its own and leaves no logger behind.
class ZnDM_LogFileTest : public ::testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_NE(getcwd(PreviousDir, sizeof(PreviousDir)), nullptr);
		const std::string Dir =
			std::string("LogFile_") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
		mkdir(Dir.c_str(), 0755);
		ASSERT_EQ(chdir(Dir.c_str()), 0);
		unlink("dm_ue.txt");
	}

	void TearDown() override
	{
		ZnDM_Log::GetInstance().Release();
		ASSERT_EQ(chdir(PreviousDir), 0);
	}

	char PreviousDir[4096] = {};
};

const std::regex StampedLine(R"(\[\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}\.\d{3}\] )");
} // namespace

TEST_F(ZnDM_LogFileTest, WriteLogAppendsOneStampedLine)
{
	UZnDM_BpFuncLib::WriteLog(TEXT("hello log"));
	const std::string Text = ReadFile("dm_ue.txt");
	EXPECT_TRUE(std::regex_match(Text, std::regex(R"(\[\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}\.\d{3}\] hello log\n)")))
		<< Text;
}

TEST_F(ZnDM_LogFileTest, EmptyMessageLeavesStampAndOneBlank)
{
	UZnDM_BpFuncLib::WriteLog(FString());
	const std::string Text = ReadFile("dm_ue.txt");
	EXPECT_TRUE(std::regex_match(Text, std::regex(R"(\[\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}\.\d{3}\] \n)"))) << Text;
}

TEST_F(ZnDM_LogFileTest, LinesAreOnDiskBeforeTheLoggerGoes)
{
	ZnDM_Log& Log = ZnDM_Log::GetInstance();
	Log.Log(TEXT("one"));
	// Flushed at once: visible to another reader while the logger still holds the file.
	EXPECT_NE(ReadFile("dm_ue.txt").find("] one\n"), std::string::npos);
	Log.Log(TEXT("two"));
	EXPECT_NE(ReadFile("dm_ue.txt").find("] one\n["), std::string::npos);
	EXPECT_NE(ReadFile("dm_ue.txt").find("] two\n"), std::string::npos);
}

TEST_F(ZnDM_LogFileTest, TextIsWrittenAsUtf8)
{
	UZnDM_BpFuncLib::WriteLog(TEXT("年月日 \u00FC"));
	EXPECT_NE(ReadFile("dm_ue.txt").find("] \xE5\xB9\xB4\xE6\x9C\x88\xE6\x97\xA5 \xC3\xBC\n"), std::string::npos);
}

TEST_F(ZnDM_LogFileTest, ExistingFileIsAppendedNotTruncated)
{
	{
		std::ofstream Earlier("dm_ue.txt");
		Earlier << "earlier line\n";
	}
	UZnDM_BpFuncLib::WriteLog(TEXT("later"));
	const std::string Text = ReadFile("dm_ue.txt");
	EXPECT_EQ(Text.rfind("earlier line\n[", 0), 0u) << Text;
	EXPECT_NE(Text.find("] later\n"), std::string::npos);
}

TEST_F(ZnDM_LogFileTest, GetInstanceReturnsTheSameObjectUntilReleased)
{
	ZnDM_Log* First = &ZnDM_Log::GetInstance();
	EXPECT_EQ(&ZnDM_Log::GetInstance(), First);
	EXPECT_TRUE(First->is_open());
}

TEST_F(ZnDM_LogFileTest, ReleaseThenWriteLogReopensAndAppends)
{
	UZnDM_BpFuncLib::WriteLog(TEXT("before release"));
	ZnDM_Log::GetInstance().Release();
	UZnDM_BpFuncLib::WriteLog(TEXT("after release"));
	EXPECT_TRUE(ZnDM_Log::GetInstance().is_open());
	const std::string Text = ReadFile("dm_ue.txt");
	const size_t Before = Text.find("] before release\n");
	const size_t After = Text.find("] after release\n");
	ASSERT_NE(Before, std::string::npos) << Text;
	ASSERT_NE(After, std::string::npos) << Text;
	EXPECT_LT(Before, After);
}

TEST_F(ZnDM_LogFileTest, TwoProcessesAppendToTheSameFile)
{
	UZnDM_BpFuncLib::WriteLog(TEXT("first run"));
	ZnDM_Log::GetInstance().Release();

	const pid_t Child = fork();
	ASSERT_GE(Child, 0);
	if (Child == 0)
	{
		// A second run of the program: its own logger, its own open of the file.
		UZnDM_BpFuncLib::WriteLog(TEXT("second run"));
		ZnDM_Log::GetInstance().Release();
		_exit(0);
	}
	int Status = 0;
	ASSERT_EQ(waitpid(Child, &Status, 0), Child);
	ASSERT_TRUE(WIFEXITED(Status));
	ASSERT_EQ(WEXITSTATUS(Status), 0);

	UZnDM_BpFuncLib::WriteLog(TEXT("third run"));
	const std::string Text = ReadFile("dm_ue.txt");
	const size_t First = Text.find("] first run\n");
	const size_t Second = Text.find("] second run\n");
	const size_t Third = Text.find("] third run\n");
	ASSERT_NE(First, std::string::npos) << Text;
	ASSERT_NE(Second, std::string::npos) << Text;
	ASSERT_NE(Third, std::string::npos) << Text;
	EXPECT_LT(First, Second);
	EXPECT_LT(Second, Third);
}

TEST_F(ZnDM_LogFileTest, BothProcessesWritingAtOnceLoseNoLine)
{
	const pid_t Child = fork();
	ASSERT_GE(Child, 0);
	if (Child == 0)
	{
		for (int Index = 0; Index < 200; ++Index)
		{
			UZnDM_BpFuncLib::WriteLog(TEXT("child line"));
		}
		ZnDM_Log::GetInstance().Release();
		_exit(0);
	}
	for (int Index = 0; Index < 200; ++Index)
	{
		UZnDM_BpFuncLib::WriteLog(TEXT("parent line"));
	}
	int Status = 0;
	ASSERT_EQ(waitpid(Child, &Status, 0), Child);
	const std::string Text = ReadFile("dm_ue.txt");
	size_t Lines = 0;
	std::sregex_iterator End;
	const std::regex LinePattern(R"(\] (child|parent) line\n)");
	for (std::sregex_iterator Match(Text.begin(), Text.end(), LinePattern); Match != End; ++Match)
	{
		++Lines;
	}
	EXPECT_EQ(Lines, 400u);
}

TEST(ZnDM_LogTime, LineStampFormat)
{
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*ZnTimeTools::FormatLogTime(FDateTime(2024, 1, 2, 3, 4, 5, 678)))),
		"2024-01-02 03:04:05.678");
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*ZnTimeTools::FormatLogTime(FDateTime(1999, 12, 31, 23, 59, 59, 7)))),
		"1999-12-31 23:59:59.007");
}

TEST(ZnDM_LogPrinters, ExactFormatsAtWarning)
{
	FZnTestLogCapture Capture;
	ZnDM_Log::printString(TEXT("plain text"));
	ZnDM_Log::printInt(TEXT("count"), -42);
	ZnDM_Log::printFloat(TEXT("ratio"), 0.5f);
	ZnDM_Log::printVector(TEXT("pos"), FVector(1.0, -2.5, 3.25));
	ZnDM_Log::printQuat(TEXT("rot"), FQuat(0.1, 0.2, 0.3, 0.9));
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 5u);
	EXPECT_EQ(Texts[0], "plain text");
	EXPECT_EQ(Texts[1], "count:[-42]");
	EXPECT_EQ(Texts[2], "ratio:[0.500000]");
	EXPECT_EQ(Texts[3], "pos:[1.000000, -2.500000, 3.250000]");
	EXPECT_EQ(Texts[4], "rot(wxyz):[0.900000, 0.100000, 0.200000, 0.300000]");
	for (const FZnTestLogCapture::FLine& Line : Capture.Lines)
	{
		if (Line.Category == "ZnDM")
		{
			EXPECT_EQ(Line.Verbosity, ELogVerbosity::Warning);
		}
	}
}

TEST(ZnDM_LogPrinters, FloatIsWidenedBeforeFormatting)
{
	FZnTestLogCapture Capture;
	ZnDM_Log::printFloat(TEXT("third"), 1.0f / 3.0f);
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 1u);
	EXPECT_EQ(Texts[0], "third:[0.333333]");
}

TEST(ZnDM_LogPrinters, TransformsShowEulerAnglesAndQuaternion)
{
	FZnTestLogCapture Capture;
	const FTransform Identity = FTransform::Identity;
	const FTransform Yawed(FQuat(FVector(0.0, 0.0, 1.0), PI / 2.0));
	ZnDM_Log::printTransform(TEXT("pair"), TEXT("a"), Identity, TEXT("b"), Yawed);
	ZnDM_Log::printTransform(TEXT("one"), Yawed);
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 2u);
	EXPECT_EQ(Texts[0],
		"pair, a:{rot:[0.000000, 0.000000, 0.000000], quat:[1.000000, 0.000000, 0.000000, 0.000000]}, "
		"b:{rot:[0.000000, 0.000000, 90.000000], quat:[0.707107, 0.000000, 0.000000, 0.707107]}");
	EXPECT_EQ(Texts[1], "one:{rot:[0.000000, 0.000000, 90.000000], quat:[0.707107, 0.000000, 0.000000, 0.707107]}");
}

TEST(ZnDM_LogPrinters, SkeletonListsEveryBoneBetweenSeparators)
{
	FZnTestLogCapture Capture;
	USkeletalMeshComponent* Mesh = NewObject<USkeletalMeshComponent>();
	TArray<FName> Bones;
	Bones.Add(FName(TEXT("root")));
	Bones.Add(FName(TEXT("pelvis")));
	Mesh->SetStandaloneBoneNames(Bones);
	ZnDM_Log::printSkeleton(Mesh);
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 4u);
	EXPECT_EQ(Texts[0], "---------------------------");
	EXPECT_EQ(Texts[1], "-->0: root");
	EXPECT_EQ(Texts[2], "-->1: pelvis");
	EXPECT_EQ(Texts[3], "---------------------------");
}

TEST(ZnDM_LogPrinters, ScreenLogShowsGreenForOneSecond)
{
	FStandaloneEngineLoop Loop;
	ZnDM_Log::printString_ScreenLog(TEXT("on screen"));
	const TArray<FStandaloneScreenMessage>& Messages = GEngine->GetScreenMessageHistory();
	ASSERT_EQ(Messages.Num(), 1);
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*Messages[0].Message)), "on screen");
	EXPECT_EQ(Messages[0].Key, -1);
	EXPECT_FLOAT_EQ(Messages[0].TimeToDisplay, 1.0f);
	EXPECT_TRUE(Messages[0].DisplayColor == FColor::Green);
	EXPECT_TRUE(Messages[0].bNewerOnTop);
	EXPECT_DOUBLE_EQ(Messages[0].TextScale.X, 1.0);
	EXPECT_DOUBLE_EQ(Messages[0].TextScale.Y, 1.0);
}

namespace
{
int GTraceCallLine = 0;

FORCENOINLINE void PrintTraceFromHere(int32 Depth)
{
	GTraceCallLine = __LINE__ + 1;
	UZnDM_BpFuncLib::PrintTraceStack(Depth);
	asm volatile("" ::: "memory");
}
} // namespace

TEST(ZnDM_LogTrace, StackInfoThenOneLinePerFrame)
{
	FZnTestLogCapture Capture;
	PrintTraceFromHere(3);
	const std::vector<std::string> Texts = Capture.TextsOf("LogTemp");
	ASSERT_EQ(Texts.size(), 1u);
	const std::string& Text = Texts[0];
	ASSERT_EQ(Text.rfind("Stack Info:\r\n\t", 0), 0u) << Text;
	size_t Frames = 0;
	for (size_t At = Text.find("\r\n\t"); At != std::string::npos; At = Text.find("\r\n\t", At + 1))
	{
		++Frames;
	}
	EXPECT_EQ(Frames, 3u);
	// The first frame is the caller of PrintTraceStack: its name, file and the calling line, with
	// the parenthesis left open.
	const std::string FirstFrame = Text.substr(14, Text.find("\r\n\t", 14) - 14);
	const std::regex FrameFormat(R"(.*PrintTraceFromHere.* \(.*ZnDM_LogTests\.cpp Line:(\d+))");
	std::smatch Match;
	ASSERT_TRUE(std::regex_match(FirstFrame, Match, FrameFormat)) << FirstFrame;
	EXPECT_EQ(std::stoi(Match[1].str()), GTraceCallLine);
}

TEST(ZnDM_LogTrace, DepthZeroLogsStackInfoAlone)
{
	FZnTestLogCapture Capture;
	UZnDM_BpFuncLib::PrintTraceStack(0);
	const std::vector<std::string> Texts = Capture.TextsOf("LogTemp");
	ASSERT_EQ(Texts.size(), 1u);
	EXPECT_EQ(Texts[0], "Stack Info:");
}

TEST(ZnDM_LogTrace, DefaultDepthIsFiveFrames)
{
	FZnTestLogCapture Capture;
	UZnDM_BpFuncLib::PrintTraceStack();
	const std::vector<std::string> Texts = Capture.TextsOf("LogTemp");
	ASSERT_EQ(Texts.size(), 1u);
	size_t Frames = 0;
	for (size_t At = Texts[0].find("\r\n\t"); At != std::string::npos; At = Texts[0].find("\r\n\t", At + 1))
	{
		++Frames;
	}
	// The test runner's stack is far deeper than five frames.
	EXPECT_EQ(Frames, 5u);
}
