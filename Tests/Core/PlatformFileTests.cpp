#include "HAL/PlatformFileManager.h"

#include "Containers/UnrealString.h"

#include <gtest/gtest.h>

#include <memory>

TEST(FPlatformFile, WriteReadSeekAndSize)
{
	IPlatformFile& PlatformFile = FPlatformFileManager::Get().GetPlatformFile();
	{
		std::unique_ptr<IFileHandle> Writer(PlatformFile.OpenWrite(TEXT("pf_data.bin")));
		ASSERT_TRUE(Writer);
		const uint8 Bytes[] = {1, 2, 3, 4, 5};
		EXPECT_TRUE(Writer->Write(Bytes, 5));
		EXPECT_EQ(Writer->Tell(), 5);
		EXPECT_EQ(Writer->Size(), 5);
	}
	std::unique_ptr<IFileHandle> Reader(PlatformFile.OpenRead(TEXT("pf_data.bin")));
	ASSERT_TRUE(Reader);
	EXPECT_EQ(Reader->Size(), 5);
	EXPECT_TRUE(Reader->Seek(3));
	uint8 Two[2] = {};
	EXPECT_TRUE(Reader->Read(Two, 2));
	EXPECT_EQ(Two[0], 4);
	EXPECT_EQ(Two[1], 5);
	EXPECT_FALSE(Reader->Read(Two, 1));
	EXPECT_TRUE(Reader->SeekFromEnd(-5));
	EXPECT_EQ(Reader->Tell(), 0);
	EXPECT_EQ(PlatformFile.FileSize(TEXT("pf_data.bin")), 5);
}

TEST(FPlatformFile, AppendKeepsEarlierBytes)
{
	IPlatformFile& PlatformFile = FPlatformFileManager::Get().GetPlatformFile();
	const uint8 First[] = {'a', 'b'};
	const uint8 Second[] = {'c'};
	{
		std::unique_ptr<IFileHandle> Writer(PlatformFile.OpenWrite(TEXT("pf_append.txt")));
		ASSERT_TRUE(Writer);
		Writer->Write(First, 2);
	}
	{
		std::unique_ptr<IFileHandle> Writer(PlatformFile.OpenWrite(TEXT("pf_append.txt"), true, true));
		ASSERT_TRUE(Writer);
		Writer->Write(Second, 1);
		EXPECT_TRUE(Writer->Flush(true));
		EXPECT_EQ(Writer->Size(), 3);
	}
	{
		std::unique_ptr<IFileHandle> Writer(PlatformFile.OpenWrite(TEXT("pf_append.txt")));
		ASSERT_TRUE(Writer);
		EXPECT_EQ(Writer->Size(), 0);
	}
}

TEST(FPlatformFile, DirectoriesAndDeletion)
{
	IPlatformFile& PlatformFile = FPlatformFileManager::Get().GetPlatformFile();
	EXPECT_TRUE(PlatformFile.CreateDirectoryTree(TEXT("pf_tree/one/two")));
	EXPECT_TRUE(PlatformFile.DirectoryExists(TEXT("pf_tree/one/two")));
	EXPECT_TRUE(PlatformFile.CreateDirectoryTree(TEXT("pf_tree/one/two/")));
	EXPECT_TRUE(PlatformFile.CreateDirectory(TEXT("pf_tree/one")));

	std::unique_ptr<IFileHandle>(PlatformFile.OpenWrite(TEXT("pf_tree/one/two/f.txt")));
	EXPECT_TRUE(PlatformFile.FileExists(TEXT("pf_tree/one/two/f.txt")));
	EXPECT_FALSE(PlatformFile.DeleteDirectory(TEXT("pf_tree/one/two")));
	EXPECT_TRUE(PlatformFile.DeleteFile(TEXT("pf_tree/one/two/f.txt")));
	EXPECT_FALSE(PlatformFile.FileExists(TEXT("pf_tree/one/two/f.txt")));
	EXPECT_TRUE(PlatformFile.DeleteDirectory(TEXT("pf_tree/one/two")));
	EXPECT_FALSE(PlatformFile.DirectoryExists(TEXT("pf_tree/one/two")));
}

TEST(FPlatformFileErrors, MissingFilesAndBadRequests)
{
	IPlatformFile& PlatformFile = FPlatformFileManager::Get().GetPlatformFile();
	EXPECT_EQ(PlatformFile.OpenRead(TEXT("pf_missing.bin")), nullptr);
	EXPECT_EQ(PlatformFile.OpenWrite(TEXT("pf_missing_dir/x.bin")), nullptr);
	EXPECT_EQ(PlatformFile.FileSize(TEXT("pf_missing.bin")), -1);
	EXPECT_FALSE(PlatformFile.DeleteFile(TEXT("pf_missing.bin")));
	EXPECT_FALSE(PlatformFile.CreateDirectoryTree(TEXT("")));

	PlatformFile.CreateDirectory(TEXT("pf_dir_not_file"));
	EXPECT_EQ(PlatformFile.OpenRead(TEXT("pf_dir_not_file")), nullptr);

	std::unique_ptr<IFileHandle> Writer(PlatformFile.OpenWrite(TEXT("pf_seek.bin")));
	ASSERT_TRUE(Writer);
	EXPECT_FALSE(Writer->Seek(-1));
	EXPECT_FALSE(Writer->SeekFromEnd(1));
}
