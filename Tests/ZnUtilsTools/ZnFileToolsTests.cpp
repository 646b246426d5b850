#include "ZnFileTools.h"

#include "HAL/PlatformProcess.h"
#include "Misc/Paths.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnTestLogCapture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
std::string Utf8(const FString& Text)
{
	return std::string(TCHAR_TO_UTF8(*Text));
}

std::string ReadFile(const char* Path)
{
	std::ifstream File(Path, std::ios::binary);
	return std::string(std::istreambuf_iterator<char>(File), std::istreambuf_iterator<char>());
}

std::string Cwd()
{
	char Buffer[4096];
	EXPECT_NE(getcwd(Buffer, sizeof(Buffer)), nullptr);
	return std::string(Buffer) + "/";
}

// Tests that change the project directory put the working-directory rule back.
class ZnFileToolsProjectTest : public ::testing::Test
{
protected:
	void TearDown() override { FPaths::SetProjectDir(FString()); }
};
} // namespace

TEST_F(ZnFileToolsProjectTest, GetDirPicksTheEngineDirectory)
{
	const std::string Project = Cwd();
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetDir(ZnDM_PathName::ProjectDir, ZnDM_PathType::Relative)), Project);
	EXPECT_EQ(
		Utf8(UZnDM_BpFuncLib::GetDir(ZnDM_PathName::ProjectContentDir, ZnDM_PathType::Relative)), Project + "Content/");
	EXPECT_EQ(
		Utf8(UZnDM_BpFuncLib::GetDir(ZnDM_PathName::ProjectConfigDir, ZnDM_PathType::Relative)), Project + "Config/");
	EXPECT_EQ(
		Utf8(UZnDM_BpFuncLib::GetDir(ZnDM_PathName::ProjectPluginsDir, ZnDM_PathType::Relative)), Project + "Plugins/");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetDir(ZnDM_PathName::ExeDir, ZnDM_PathType::Relative)),
		Utf8(FPlatformProcess::BaseDir()));
}

TEST_F(ZnFileToolsProjectTest, CompleteMakesARelativeDirectoryAbsolute)
{
	FPaths::SetProjectDir(TEXT("../Game"));
	EXPECT_EQ(
		Utf8(UZnDM_BpFuncLib::GetDir(ZnDM_PathName::ProjectContentDir, ZnDM_PathType::Relative)), "../Game/Content/");
	std::string Expected = Cwd();
	Expected.erase(Expected.find_last_of('/', Expected.size() - 2) + 1);
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetDir(ZnDM_PathName::ProjectContentDir, ZnDM_PathType::Complete)),
		Expected + "Game/Content/");
}

TEST_F(ZnFileToolsProjectTest, AnyNonZeroPathTypeActsAsRelative)
{
	FPaths::SetProjectDir(TEXT("rel"));
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetDir(ZnDM_PathName::ProjectDir, static_cast<ZnDM_PathType>(7))), "rel/");
}

TEST_F(ZnFileToolsProjectTest, PluginContentDirectoriesAreJoinedAsText)
{
	FPaths::SetProjectDir(TEXT("/game"));
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetProjectPluginContentDir(TEXT("Zenvora"))), "/game/Plugins/Zenvora/Content");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetProjectPluginContentDir(FString())), "/game/Plugins//Content");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetProjectPluginContentDir_Velkaro()), "/game/Plugins/Velkaro/Content");
	FPaths::SetProjectDir(TEXT("rel"));
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetProjectPluginContentDir(TEXT("P"))), "rel/Plugins/P/Content");
}

TEST_F(ZnFileToolsProjectTest, LoadFromPluginContentUsesTheDoubledSeparator)
{
	mkdir("Plugins", 0755);
	mkdir("Plugins/Velkaro", 0755);
	mkdir("Plugins/Velkaro/Content", 0755);
	{
		std::ofstream File("Plugins/Velkaro/Content/raw.json");
		File << "{\"k\":1}";
	}
	FZnTestLogCapture Capture;
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::LoadFileFromPluginContentDir(TEXT("raw.json"))), "{\"k\":1}");
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 1u);
	EXPECT_EQ(Texts[0], "load local rawdata: :[7]");
}

TEST_F(ZnFileToolsProjectTest, LoadFromPluginContentCountsCharactersNotBytes)
{
	mkdir("Plugins", 0755);
	mkdir("Plugins/Velkaro", 0755);
	mkdir("Plugins/Velkaro/Content", 0755);
	{
		std::ofstream File("Plugins/Velkaro/Content/cn.txt");
		File << "\xE5\xB9\xB4\xE6\x9C\x88";
	}
	FZnTestLogCapture Capture;
	EXPECT_EQ(UZnDM_BpFuncLib::LoadFileFromPluginContentDir(TEXT("cn.txt")).Len(), 2);
	EXPECT_EQ(Capture.TextsOf("ZnDM").at(0), "load local rawdata: :[2]");
}

TEST(ZnFileTools, CombineAndSplit)
{
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::CombinePath(TEXT("dir"), TEXT("file.txt"))), "dir/file.txt");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::CombinePath(TEXT("dir/"), TEXT("file.txt"))), "dir/file.txt");
	FString Dir;
	FString Name;
	FString Extension;
	UZnDM_BpFuncLib::SplitFilePath(TEXT("/a/b/clip.face.json"), Dir, Name, Extension);
	EXPECT_EQ(Utf8(Dir), "/a/b");
	EXPECT_EQ(Utf8(Name), "clip.face");
	EXPECT_EQ(Utf8(Extension), "json");
}

TEST(ZnFileTools, ExistenceChecks)
{
	mkdir("ft_dir", 0755);
	{
		std::ofstream File("ft_dir/f.txt");
	}
	EXPECT_TRUE(UZnDM_BpFuncLib::FileExists(TEXT("ft_dir/f.txt")));
	EXPECT_FALSE(UZnDM_BpFuncLib::FileExists(TEXT("ft_dir")));
	EXPECT_TRUE(UZnDM_BpFuncLib::DirExists(TEXT("ft_dir")));
	EXPECT_FALSE(UZnDM_BpFuncLib::DirExists(TEXT("ft_dir/f.txt")));
}

TEST(ZnFileTools, WriteTxtSavesAsciiAsBytesAndOtherTextAsUtf16)
{
	FZnTestLogCapture Capture;
	UZnDM_BpFuncLib::WriteTxt(TEXT("plain"), TEXT("ft_plain.txt"));
	EXPECT_EQ(ReadFile("ft_plain.txt"), "plain");
	UZnDM_BpFuncLib::WriteTxt(TEXT("年"), TEXT("ft_wide.txt"));
	EXPECT_EQ(ReadFile("ft_wide.txt"), std::string("\xFF\xFE\x74\x5E", 4));
	EXPECT_TRUE(Capture.TextsOf("ZnDM").empty());
}

TEST(ZnFileTools, PrefixedFileNameForAFixedTime)
{
	EXPECT_EQ(Utf8(ZnFileTools::PrefixedFileName(TEXT("log"), FDateTime(2024, 1, 2, 3, 4, 5, 678))),
		"log_2024_01_02_03_04_05_678.txt");
	EXPECT_EQ(Utf8(ZnFileTools::PrefixedFileName(FString(), FDateTime(2024, 12, 31, 23, 59, 58, 9))),
		"_2024_12_31_23_59_58_009.txt");
}

TEST(ZnFileTools, WriteTxtFileWithPrefixWritesInTheWorkingDirectory)
{
	mkdir("ft_prefix", 0755);
	char Previous[4096];
	ASSERT_NE(getcwd(Previous, sizeof(Previous)), nullptr);
	ASSERT_EQ(chdir("ft_prefix"), 0);
	UZnDM_BpFuncLib::WriteTxtFileWithPrefix(TEXT("content here"), TEXT("report"));
	const FString Expected = TEXT("report_");
	std::string Found;
	{
		const std::regex Pattern(R"(report_\d{4}_\d{2}_\d{2}_\d{2}_\d{2}_\d{2}_\d{3}\.txt)");
		for (const auto& Entry : std::filesystem::directory_iterator("."))
		{
			const std::string Name = Entry.path().filename().string();
			if (std::regex_match(Name, Pattern))
			{
				Found = Name;
			}
		}
	}
	ASSERT_FALSE(Found.empty());
	EXPECT_EQ(ReadFile(Found.c_str()), "content here");
	ASSERT_EQ(chdir(Previous), 0);
}
