#include "Misc/FileHelper.h"

#include "Containers/StringConv.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <sys/stat.h>

TEST(FFileHelperErrors, MissingFileLeavesTheResultUnchanged)
{
	FString Text = TEXT("unchanged");
	EXPECT_FALSE(FFileHelper::LoadFileToString(Text, TEXT("no_such_file.txt")));
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*Text)), "unchanged");

	TArray<uint8> Bytes;
	Bytes.Add(7);
	EXPECT_FALSE(FFileHelper::LoadFileToArray(Bytes, TEXT("no_such_file.txt")));
	ASSERT_EQ(Bytes.Num(), 1);
	EXPECT_EQ(Bytes[0], 7);
}

TEST(FFileHelperErrors, DirectoryIsNotAFile)
{
	mkdir("load_a_directory", 0755);
	FString Text = TEXT("unchanged");
	EXPECT_FALSE(FFileHelper::LoadFileToString(Text, TEXT("load_a_directory")));
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*Text)), "unchanged");
	EXPECT_FALSE(FFileHelper::SaveStringToFile(TEXT("x"), TEXT("load_a_directory")));
}

TEST(FFileHelperErrors, SavingBelowAFileFails)
{
	{
		std::ofstream Blocker("save_blocker.txt");
		Blocker << "a file where a directory would have to be";
	}
	EXPECT_FALSE(FFileHelper::SaveStringToFile(TEXT("x"), TEXT("save_blocker.txt/inner.txt")));
}

TEST(FFileHelperErrors, EmptyOrNullNamesFail)
{
	EXPECT_FALSE(FFileHelper::SaveStringToFile(TEXT("x"), TEXT("")));
	EXPECT_FALSE(FFileHelper::SaveStringToFile(TEXT("x"), nullptr));
	FString Text;
	EXPECT_FALSE(FFileHelper::LoadFileToString(Text, nullptr));
}

TEST(FFileHelperErrors, OddLengthUtf16KeepsTheWholeCharacters)
{
	{
		std::ofstream File("load_odd.txt", std::ios::binary);
		File << std::string("\xFF\xFE"
							"a\x00"
							"b",
			5);
	}
	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, TEXT("load_odd.txt")));
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*Text)), "a");
}
