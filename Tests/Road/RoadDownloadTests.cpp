// UZnDM_HttpDownload: one file, delivered as text and bytes, optionally saved first, with its
// three error texts.
#include "ZnRoadTestSupport.h"

#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
std::string ReadFile(const std::string& Path)
{
	std::ifstream File(Path, std::ios::binary);
	return std::string(std::istreambuf_iterator<char>(File), std::istreambuf_iterator<char>());
}

bool Exists(const std::string& Path)
{
	struct stat Info;
	return stat(Path.c_str(), &Info) == 0;
}

// A scratch folder of this test's own under the working directory.
std::string Scratch()
{
	const std::string Folder =
		std::string("Download_") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
	std::system(("rm -rf '" + Folder + "'").c_str());
	mkdir(Folder.c_str(), 0755);
	char Cwd[4096];
	return std::string(getcwd(Cwd, sizeof(Cwd))) + "/" + Folder;
}

UZnRoadListener::FFile Download(UZnRoadListener* Listener, const FString& Url, bool bSave, const std::string& Path)
{
	UZnDM_HttpDownload* Object = UZnDM_HttpDownload::CreateHttpDownload();
	Object->OnCompleted.AddDynamic(Listener, &UZnRoadListener::OnFile);
	const size_t Before = Listener->Files.size();
	Object->DoDownload(Url, bSave, ZnText(Path));
	EXPECT_EQ(Object->NeedSave, bSave);
	EXPECT_EQ(ZnUtf8(Object->SavePath), Path);
	EXPECT_TRUE(ZnRoadTickUntil([&]() { return Listener->Files.size() > Before; }));
	EXPECT_FALSE(Object->IsRooted());
	return Listener->Files.size() > Before ? Listener->Files.back() : UZnRoadListener::FFile();
}

// Bytes 0..255 four times: not text, so only the bytes can be compared.
std::vector<uint8_t> BinaryContent()
{
	std::vector<uint8_t> Bytes;
	for (int Round = 0; Round < 4; ++Round)
	{
		for (int Value = 0; Value < 256; ++Value)
		{
			Bytes.push_back(uint8_t(Value));
		}
	}
	return Bytes;
}
} // namespace

TEST_F(FZnRoadTest, DownloadWithoutSavingTouchesNoDisk)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const std::string Url = Local.Service->HostFile("plain.json", {'{', '"', 'a', '"', ':', '1', '}'});
	const std::string Folder = Scratch();
	const UZnRoadListener::FFile Got = Download(Listener.Get(), ZnText(Url), false, Folder + "/never/written.json");
	EXPECT_TRUE(Got.bOk);
	EXPECT_EQ(Got.Text, TEXT("{\"a\":1}"));
	EXPECT_EQ(ZnBytes(Got.Bytes), "{\"a\":1}");
	EXPECT_FALSE(Exists(Folder + "/never"));
}

TEST_F(FZnRoadTest, DownloadSavesThreeDirectoriesDeepAndOverwrites)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const std::vector<uint8_t> Content = BinaryContent();
	const std::string Url = Local.Service->HostFile("clip.bin", Content);
	const std::string Path = Scratch() + "/one/two/three/clip.bin";
	const UZnRoadListener::FFile Got = Download(Listener.Get(), ZnText(Url), true, Path);
	ASSERT_TRUE(Got.bOk);
	EXPECT_EQ(ZnBytes(Got.Bytes), std::string(Content.begin(), Content.end()));
	EXPECT_EQ(ReadFile(Path), std::string(Content.begin(), Content.end()));

	Local.Service->HostFile("clip.bin", {'n', 'e', 'w'});
	ASSERT_TRUE(Download(Listener.Get(), ZnText(Url), true, Path).bOk);
	EXPECT_EQ(ReadFile(Path), "new");
}

TEST_F(FZnRoadTest, DownloadIntoADirectoryThatCannotBeCreated)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const std::string Url = Local.Service->HostFile("x.json", {'{', '}'});
	const std::string Folder = Scratch();
	std::ofstream(Folder + "/blocker") << "a file where a directory should go";
	const std::string Path = Folder + "/blocker/sub/x.json";
	const UZnRoadListener::FFile Got = Download(Listener.Get(), ZnText(Url), true, Path);
	EXPECT_FALSE(Got.bOk);
	EXPECT_EQ(ZnUtf8(Got.Text), "error, cannot create directory:" + Folder + "/blocker/sub");
	EXPECT_EQ(Got.Bytes.Num(), 0);
}

TEST_F(FZnRoadTest, DownloadToAFileThatCannotBeWritten)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const std::string Url = Local.Service->HostFile("x.json", {'{', '}'});
	// The path names an existing directory, which cannot be opened as a file.
	const std::string Path = Scratch() + "/taken.json";
	mkdir(Path.c_str(), 0755);
	const UZnRoadListener::FFile Got = Download(Listener.Get(), ZnText(Url), true, Path);
	EXPECT_FALSE(Got.bOk);
	EXPECT_EQ(ZnUtf8(Got.Text), "error, cannot write file:" + Path);
	EXPECT_EQ(Got.Bytes.Num(), 0);
}

TEST_F(FZnRoadTest, DownloadFailuresCarryTheStatus)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const UZnRoadListener::FFile Missing = Download(Listener.Get(), Local.UrlText("/files/absent.json"), false, "");
	EXPECT_FALSE(Missing.bOk);
	EXPECT_EQ(Missing.Text, TEXT("error, response code:404"));
	EXPECT_EQ(Missing.Bytes.Num(), 0);
	const UZnRoadListener::FFile Dropped =
		Download(Listener.Get(), ZnText(FZnLocalService::WithFault(Local.Url("/files/x"), "drop")), false, "");
	EXPECT_EQ(Dropped.Text, TEXT("error, response code:0"));
	const UZnRoadListener::FFile Empty = Download(Listener.Get(), TEXT(""), true, Scratch() + "/x.json");
	EXPECT_FALSE(Empty.bOk);
	EXPECT_EQ(Empty.Text, TEXT("error, response code:0"));
}

TEST_F(FZnRoadTest, DownloadStatus206IsSuccessAnd204IsAnEmptyFile)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const std::string Url = Local.Service->HostFile("x.json", {'{', '}'});
	const UZnRoadListener::FFile Partial =
		Download(Listener.Get(), ZnText(FZnLocalService::WithFault(Url, "status=206")), false, "");
	EXPECT_TRUE(Partial.bOk);
	EXPECT_NE(ZnUtf8(Partial.Text).find("\"code\""), std::string::npos);
	const std::string Path = Scratch() + "/empty.json";
	const UZnRoadListener::FFile NoContent =
		Download(Listener.Get(), ZnText(FZnLocalService::WithFault(Url, "status=204")), true, Path);
	EXPECT_TRUE(NoContent.bOk);
	EXPECT_TRUE(NoContent.Text.IsEmpty());
	EXPECT_EQ(NoContent.Bytes.Num(), 0);
	EXPECT_TRUE(Exists(Path));
	EXPECT_EQ(ReadFile(Path), "");
}
