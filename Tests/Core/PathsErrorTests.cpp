#include "Misc/Paths.h"

#include <gtest/gtest.h>

#include "Containers/StringConv.h"

#include <string>

// Compares the exact characters (FString's own == ignores case) and prints readable text.
#define EXPECT_TEXT_EQ(A, B) EXPECT_EQ(std::string(TCHAR_TO_UTF8(*FString(A))), std::string(TCHAR_TO_UTF8(*FString(B))))

TEST(FPathsErrors, CollapseRefusesToClimbAboveARelativeStart)
{
	FString Path = TEXT("../outside");
	EXPECT_FALSE(FPaths::CollapseRelativeDirectories(Path));
	EXPECT_TEXT_EQ(Path, FString(TEXT("../outside")));
}

TEST(FPathsErrors, EmptyPathSplitsIntoEmptyParts)
{
	FString Dir = TEXT("x");
	FString Name = TEXT("x");
	FString Extension = TEXT("x");
	FPaths::Split(FString(), Dir, Name, Extension);
	EXPECT_TRUE(Dir.IsEmpty());
	EXPECT_TRUE(Name.IsEmpty());
	EXPECT_TRUE(Extension.IsEmpty());
}

TEST(FPathsErrors, PathsWithEmbeddedOddCharactersDoNotExist)
{
	EXPECT_FALSE(FPaths::FileExists(TEXT("no/such/dir/\x01file")));
	EXPECT_FALSE(FPaths::DirectoryExists(TEXT("no/such/dir")));
}
