#include "ZnFileTools.h"

#include "Misc/Paths.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnTestLogCapture.h"

#include <gtest/gtest.h>

#include <fstream>
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

std::string Cwd()
{
	char Buffer[4096];
	EXPECT_NE(getcwd(Buffer, sizeof(Buffer)), nullptr);
	return std::string(Buffer) + "/";
}
} // namespace

TEST(ZnFileToolsErrors, UnknownDirectoryNameIsEmptyOrItsFullForm)
{
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetDir(static_cast<ZnDM_PathName>(5), ZnDM_PathType::Relative)), "");
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetDir(static_cast<ZnDM_PathName>(200), ZnDM_PathType::Relative)), "");
	// The full form of an empty relative path is the directory it is relative to.
	EXPECT_EQ(Utf8(UZnDM_BpFuncLib::GetDir(static_cast<ZnDM_PathName>(5), ZnDM_PathType::Complete)), Cwd());
}

TEST(ZnFileToolsErrors, FailedSaveIsLoggedWithThePath)
{
	mkdir("ft_is_a_dir", 0755);
	FZnTestLogCapture Capture;
	UZnDM_BpFuncLib::WriteTxt(TEXT("x"), TEXT("ft_is_a_dir"));
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 1u);
	EXPECT_EQ(Texts[0], "failed to save file: ft_is_a_dir");
}

TEST(ZnFileToolsErrors, FailedPrefixedSaveIsLoggedWithTheFileName)
{
	FZnTestLogCapture Capture;
	// A prefix that names a missing directory below a file cannot be written.
	{
		std::ofstream Blocker("ft_blocker");
	}
	UZnDM_BpFuncLib::WriteTxtFileWithPrefix(TEXT("x"), TEXT("ft_blocker/sub"));
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 1u);
	EXPECT_TRUE(
		std::regex_match(Texts[0], std::regex(R"(failed to save file: ft_blocker/sub_\d{4}(_\d{2}){5}_\d{3}\.txt)")))
		<< Texts[0];
}

TEST(ZnFileToolsErrors, MissingPluginFileGivesEmptyTextAndLogsZero)
{
	FZnTestLogCapture Capture;
	EXPECT_TRUE(UZnDM_BpFuncLib::LoadFileFromPluginContentDir(TEXT("no/such/file.json")).IsEmpty());
	const std::vector<std::string> Texts = Capture.TextsOf("ZnDM");
	ASSERT_EQ(Texts.size(), 1u);
	EXPECT_EQ(Texts[0], "load local rawdata: :[0]");
}

TEST(ZnFileToolsErrors, EmptyPathsDoNotExist)
{
	EXPECT_FALSE(UZnDM_BpFuncLib::FileExists(FString()));
	EXPECT_FALSE(UZnDM_BpFuncLib::DirExists(FString()));
	FZnTestLogCapture Capture;
	UZnDM_BpFuncLib::WriteTxt(TEXT("x"), FString());
	ASSERT_EQ(Capture.TextsOf("ZnDM").size(), 1u);
	EXPECT_EQ(Capture.TextsOf("ZnDM")[0], "failed to save file: ");
}
