#include "Misc/Paths.h"

#include <gtest/gtest.h>

#include "Containers/StringConv.h"

#include <string>

// Compares the exact characters (FString's own == ignores case) and prints readable text.
#define EXPECT_TEXT_EQ(A, B) EXPECT_EQ(std::string(TCHAR_TO_UTF8(*FString(A))), std::string(TCHAR_TO_UTF8(*FString(B))))

#include <cstdlib>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
std::string WorkingDirectoryWithSlash()
{
	char Buffer[4096];
	EXPECT_NE(getcwd(Buffer, sizeof(Buffer)), nullptr);
	std::string Dir = Buffer;
	if (Dir.back() != '/')
	{
		Dir += '/';
	}
	return Dir;
}

FString Narrow(const std::string& Text)
{
	return FString(Text.c_str());
}

// Restores the working-directory rule after a test chose another project directory.
class FPathsTest : public ::testing::Test
{
protected:
	void TearDown() override { FPaths::SetProjectDir(FString()); }
};
} // namespace

TEST_F(FPathsTest, ProjectDirIsTheWorkingDirectoryEndingInSlash)
{
	EXPECT_TEXT_EQ(FPaths::ProjectDir(), Narrow(WorkingDirectoryWithSlash()));
	EXPECT_TEXT_EQ(FPaths::ProjectContentDir(), Narrow(WorkingDirectoryWithSlash() + "Content/"));
	EXPECT_TEXT_EQ(FPaths::ProjectConfigDir(), Narrow(WorkingDirectoryWithSlash() + "Config/"));
	EXPECT_TEXT_EQ(FPaths::ProjectPluginsDir(), Narrow(WorkingDirectoryWithSlash() + "Plugins/"));
}

TEST_F(FPathsTest, HostChosenProjectDirGetsATrailingSlashAndForwardSlashes)
{
	FPaths::SetProjectDir(TEXT("Games\\MyGame"));
	EXPECT_TEXT_EQ(FPaths::ProjectDir(), FString(TEXT("Games/MyGame/")));
	EXPECT_TEXT_EQ(FPaths::ProjectPluginsDir(), FString(TEXT("Games/MyGame/Plugins/")));

	FPaths::SetProjectDir(TEXT("/srv/game/"));
	EXPECT_TEXT_EQ(FPaths::ProjectContentDir(), FString(TEXT("/srv/game/Content/")));
}

TEST_F(FPathsTest, EmptyProjectDirGoesBackToTheWorkingDirectory)
{
	FPaths::SetProjectDir(TEXT("/srv/game"));
	FPaths::SetProjectDir(FString());
	EXPECT_TEXT_EQ(FPaths::ProjectDir(), Narrow(WorkingDirectoryWithSlash()));
}

TEST(FPathsCombine, PutsExactlyOneSeparatorBetweenParts)
{
	EXPECT_TEXT_EQ(FPaths::Combine(FString(TEXT("a")), FString(TEXT("b.txt"))), FString(TEXT("a/b.txt")));
	EXPECT_TEXT_EQ(FPaths::Combine(FString(TEXT("a/")), FString(TEXT("b.txt"))), FString(TEXT("a/b.txt")));
	EXPECT_TEXT_EQ(FPaths::Combine(FString(TEXT("a")), FString(TEXT("/b.txt"))), FString(TEXT("a/b.txt")));
	EXPECT_TEXT_EQ(FPaths::Combine(TEXT("a"), TEXT("b"), TEXT("c")), FString(TEXT("a/b/c")));
}

TEST(FPathsCombine, KeepsSeparatorsInsideAPart)
{
	// A doubled separator already inside the left part is not the joint's business.
	EXPECT_TEXT_EQ(FPaths::Combine(FString(TEXT("Plugins//Velkaro/Content")), FString(TEXT("x.json"))),
		FString(TEXT("Plugins//Velkaro/Content/x.json")));
}

TEST(FPathsCombine, SkipsEmptyParts)
{
	EXPECT_TEXT_EQ(FPaths::Combine(FString(), FString(TEXT("b"))), FString(TEXT("b")));
	EXPECT_TEXT_EQ(FPaths::Combine(FString(TEXT("a")), FString()), FString(TEXT("a")));
	EXPECT_TEXT_EQ(FPaths::Combine(FString(), FString()), FString());
}

TEST(FPathsSplit, GivesDirectoryBaseNameAndExtension)
{
	FString Dir;
	FString Name;
	FString Extension;
	FPaths::Split(TEXT("/data/clips/body.v2.json"), Dir, Name, Extension);
	EXPECT_TEXT_EQ(Dir, FString(TEXT("/data/clips")));
	EXPECT_TEXT_EQ(Name, FString(TEXT("body.v2")));
	EXPECT_TEXT_EQ(Extension, FString(TEXT("json")));
}

TEST(FPathsSplit, NameWithoutDirectoryOrExtension)
{
	FString Dir = TEXT("old");
	FString Name;
	FString Extension = TEXT("old");
	FPaths::Split(TEXT("README"), Dir, Name, Extension);
	EXPECT_TEXT_EQ(Dir, FString());
	EXPECT_TEXT_EQ(Name, FString(TEXT("README")));
	EXPECT_TEXT_EQ(Extension, FString());
}

TEST(FPathsSplit, PointInADirectoryNameIsNoExtension)
{
	EXPECT_TEXT_EQ(FPaths::GetExtension(TEXT("dir.d/file")), FString());
	EXPECT_TEXT_EQ(FPaths::GetBaseFilename(TEXT("dir.d/file")), FString(TEXT("file")));
	EXPECT_TEXT_EQ(FPaths::GetBaseFilename(TEXT("dir.d/file"), false), FString(TEXT("dir.d/file")));
	EXPECT_TEXT_EQ(FPaths::GetBaseFilename(TEXT("dir/file.txt"), false), FString(TEXT("dir/file")));
}

TEST(FPathsSplit, BackslashesSeparateToo)
{
	EXPECT_TEXT_EQ(FPaths::GetCleanFilename(TEXT("C:\\Data\\a.wav")), FString(TEXT("a.wav")));
	EXPECT_TEXT_EQ(FPaths::GetPath(TEXT("C:\\Data\\a.wav")), FString(TEXT("C:\\Data")));
}

TEST(FPathsSplit, ExtensionWithDot)
{
	EXPECT_TEXT_EQ(FPaths::GetExtension(TEXT("a/b.tar.gz"), true), FString(TEXT(".gz")));
	EXPECT_TEXT_EQ(FPaths::GetExtension(TEXT("a/b.tar.gz")), FString(TEXT("gz")));
}

TEST(FPathsSplit, TrailingSeparatorMeansNoFileName)
{
	EXPECT_TEXT_EQ(FPaths::GetCleanFilename(TEXT("a/b/")), FString());
	EXPECT_TEXT_EQ(FPaths::GetPath(TEXT("a/b/")), FString(TEXT("a/b")));
}

TEST(FPathsRelative, RootAndDriveLettersAreAbsolute)
{
	EXPECT_FALSE(FPaths::IsRelative(TEXT("/etc")));
	EXPECT_FALSE(FPaths::IsRelative(TEXT("C:/x")));
	EXPECT_FALSE(FPaths::IsRelative(TEXT("\\\\server\\share")));
	EXPECT_TRUE(FPaths::IsRelative(TEXT("a/b")));
	EXPECT_TRUE(FPaths::IsRelative(TEXT("../a")));
	EXPECT_TRUE(FPaths::IsRelative(FString()));
}

TEST(FPathsRelative, FullPathResolvesAgainstTheWorkingDirectory)
{
	const std::string Cwd = WorkingDirectoryWithSlash();
	EXPECT_TEXT_EQ(FPaths::ConvertRelativePathToFull(TEXT("x/y.txt")), Narrow(Cwd + "x/y.txt"));
	EXPECT_TEXT_EQ(FPaths::ConvertRelativePathToFull(TEXT("./x/../y/")), Narrow(Cwd + "y/"));
	EXPECT_TEXT_EQ(FPaths::ConvertRelativePathToFull(TEXT("/a/b/../c")), FString(TEXT("/a/c")));
}

TEST(FPathsRelative, FullFormOfEmptyPathIsTheWorkingDirectory)
{
	EXPECT_TEXT_EQ(FPaths::ConvertRelativePathToFull(FString()), Narrow(WorkingDirectoryWithSlash()));
}

TEST(FPathsRelative, FullPathAgainstAGivenBase)
{
	EXPECT_TEXT_EQ(FPaths::ConvertRelativePathToFull(TEXT("/base"), TEXT("a\\b")), FString(TEXT("/base/a/b")));
	EXPECT_TEXT_EQ(FPaths::ConvertRelativePathToFull(TEXT("/base/"), TEXT("../up")), FString(TEXT("/up")));
}

TEST(FPathsRelative, CollapseFoldsParentsAndDots)
{
	FString Path = TEXT("a/./b/../c/");
	EXPECT_TRUE(FPaths::CollapseRelativeDirectories(Path));
	EXPECT_TEXT_EQ(Path, FString(TEXT("a/c/")));
}

TEST(FPathsRelative, CollapseAboveTheRootStaysAtTheRoot)
{
	FString Path = TEXT("/../x");
	EXPECT_TRUE(FPaths::CollapseRelativeDirectories(Path));
	EXPECT_TEXT_EQ(Path, FString(TEXT("/x")));
}

TEST(FPathsExistence, FilesAndDirectoriesAreTold)
{
	mkdir("PathsExistenceDir", 0755);
	FILE* File = fopen("PathsExistenceDir/file.txt", "w");
	ASSERT_NE(File, nullptr);
	fclose(File);

	EXPECT_TRUE(FPaths::FileExists(TEXT("PathsExistenceDir/file.txt")));
	EXPECT_FALSE(FPaths::DirectoryExists(TEXT("PathsExistenceDir/file.txt")));
	EXPECT_TRUE(FPaths::DirectoryExists(TEXT("PathsExistenceDir")));
	EXPECT_TRUE(FPaths::DirectoryExists(TEXT("PathsExistenceDir/")));
	EXPECT_FALSE(FPaths::FileExists(TEXT("PathsExistenceDir")));
	EXPECT_FALSE(FPaths::FileExists(TEXT("PathsExistenceDir/missing.txt")));
	EXPECT_FALSE(FPaths::FileExists(FString()));
	EXPECT_FALSE(FPaths::DirectoryExists(FString()));
}

TEST(FPathsExistence, NonAsciiNamesWork)
{
	FILE* File = fopen("\xE6\x96\x87\xE4\xBB\xB6.txt", "w");
	ASSERT_NE(File, nullptr);
	fclose(File);
	EXPECT_TRUE(FPaths::FileExists(TEXT("文件.txt")));
}
