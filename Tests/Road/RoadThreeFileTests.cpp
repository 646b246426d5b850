// UZnDM_TTSHttpDownload: three files at once, one delegate call with partial results.
#include "ZnRoadTestSupport.h"

namespace
{
struct FThree
{
	std::string Audio, Face, Body;
};

FThree HostThree(FZnLocalService& Service)
{
	std::vector<uint8_t> Wav = {'R', 'I', 'F', 'F', 0, 1, 2, 0xFF, 0xFE, 'W', 'A', 'V', 'E'};
	const std::string Face = "{\"face\":[1,2,3]}";
	const std::string Body = "{\"body\":\"\xE4\xB8\x96\"}";
	return {Service.HostFile("a.wav", Wav),
		Service.HostFile("face.json", std::vector<uint8_t>(Face.begin(), Face.end())),
		Service.HostFile("body.json", std::vector<uint8_t>(Body.begin(), Body.end()))};
}

UZnDM_TTSHttpDownload* Start(UZnRoadListener* Listener, const std::string& Audio, const std::string& Face,
	const std::string& Body, bool bPrintLog)
{
	UZnDM_TTSHttpDownload* Download = UZnDM_TTSHttpDownload::CreateTTSHttpDownload();
	Download->OnCompleted.AddDynamic(Listener, &UZnRoadListener::OnThreeFiles);
	Download->DoDownload(ZnText(Audio), ZnText(Face), ZnText(Body), bPrintLog);
	return Download;
}
} // namespace

TEST_F(FZnRoadTest, ThreeFilesArrivingBodyAudioFaceFireOnceInTheirSlots)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const FThree Files = HostThree(*Local.Service);
	UZnDM_TTSHttpDownload* Download = Start(Listener.Get(), FZnLocalService::WithFault(Files.Audio, "delay=300"),
		FZnLocalService::WithFault(Files.Face, "delay=700"), Files.Body, false);
	EXPECT_TRUE(Download->IsRooted());
	// The body arrives first, then the audio: still nothing delivered.
	ASSERT_FALSE(ZnRoadTickUntil([&]() { return !Listener->Downloads.empty(); }, 0.5));
	EXPECT_TRUE(Download->IsRooted());
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Downloads.empty(); }));
	FHttpModule::Get().GetHttpManager().TickUntil([]() { return false; }, 0.2);
	ASSERT_EQ(Listener->Downloads.size(), 1u);
	const UZnRoadListener::FThreeFiles& Got = Listener->Downloads[0];
	EXPECT_TRUE(Got.bAudio && Got.bFace && Got.bBody);
	EXPECT_EQ(ZnBytes(Got.Audio), std::string("RIFF\0\1\2\xFF\xFEWAVE", 13));
	EXPECT_EQ(Got.Face, TEXT("{\"face\":[1,2,3]}"));
	EXPECT_EQ(ZnUtf8(Got.Body), "{\"body\":\"\xE4\xB8\x96\"}");
	EXPECT_FALSE(Download->IsRooted());
	EXPECT_EQ(ZnUtf8(Download->mAudioUrl), FZnLocalService::WithFault(Files.Audio, "delay=300"));
}

TEST_F(FZnRoadTest, ThreeFilesWithTheAudioMissingDeliverTheOtherTwo)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const FThree Files = HostThree(*Local.Service);
	const std::string MissingAudio = Local.Url("/files/none.wav");
	FZnLogFileWatch Log;
	Start(Listener.Get(), MissingAudio, Files.Face, Files.Body, true);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Downloads.empty(); }));
	const UZnRoadListener::FThreeFiles& Got = Listener->Downloads[0];
	EXPECT_FALSE(Got.bAudio);
	EXPECT_EQ(Got.Audio.Num(), 0);
	EXPECT_TRUE(Got.bFace && Got.bBody);
	EXPECT_EQ(Got.Face, TEXT("{\"face\":[1,2,3]}"));
	const std::vector<std::string> Lines = Log.NewLines();
	ASSERT_GE(Lines.size(), 8u);
	EXPECT_EQ(Lines[0], "mAudioUrl:" + MissingAudio);
	EXPECT_EQ(Lines[1], "mFaceUrl:" + Files.Face);
	EXPECT_EQ(Lines[2], "mBodyUrl:" + Files.Body);
	for (int Index = 3; Index < 6; ++Index)
	{
		EXPECT_EQ(Lines[Index].rfind("index:", 0), 0u) << Lines[Index];
		EXPECT_NE(Lines[Index].find(", elapsedTime:"), std::string::npos) << Lines[Index];
	}
	ASSERT_EQ(Lines.size(), 8u);
	EXPECT_EQ(Lines[6], "some files cannot be downloaded");
	EXPECT_EQ(Lines[7], "download error, mAudioUrl:" + MissingAudio);
}

TEST_F(FZnRoadTest, ThreeFilesWithAnEmptyUrlStillComplete)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const FThree Files = HostThree(*Local.Service);
	FZnLogFileWatch Log;
	Start(Listener.Get(), Files.Audio, "", Files.Body, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Downloads.empty(); }));
	const UZnRoadListener::FThreeFiles& Got = Listener->Downloads[0];
	EXPECT_TRUE(Got.bAudio);
	EXPECT_FALSE(Got.bFace);
	EXPECT_TRUE(Got.Face.IsEmpty());
	EXPECT_TRUE(Got.bBody);
	EXPECT_TRUE(Log.NewLines().empty()) << "nothing is logged without printLog";
}

TEST_F(FZnRoadTest, ThreeFilesTreatStatusOutsideTheRangeAsFailureAndTextAsText)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const FThree Files = HostThree(*Local.Service);
	// The face file served as the audio stays bytes; the audio served as the body becomes text.
	Start(Listener.Get(), Files.Face, FZnLocalService::WithFault(Files.Face, "status=500"), Files.Audio, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return !Listener->Downloads.empty(); }));
	const UZnRoadListener::FThreeFiles& Got = Listener->Downloads[0];
	EXPECT_TRUE(Got.bAudio);
	EXPECT_EQ(ZnBytes(Got.Audio), "{\"face\":[1,2,3]}");
	EXPECT_FALSE(Got.bFace);
	EXPECT_TRUE(Got.Face.IsEmpty());
	EXPECT_TRUE(Got.bBody);
	EXPECT_EQ(ZnUtf8(Got.Body).substr(0, 4), "RIFF");
}

TEST_F(FZnRoadTest, ASecondDownloadOnOneObjectReportsTheFirstEntries)
{
	FZnRoadService Local;
	ASSERT_TRUE(Local.Service);
	const FThree Files = HostThree(*Local.Service);
	UZnDM_TTSHttpDownload* Download = Start(Listener.Get(), Files.Audio, Files.Face, Files.Body, false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Downloads.size() == 1; }));
	Download->AddToRoot();
	// One object per download: a second call appends three entries and reports entries 0 to 2.
	Download->DoDownload(TEXT(""), TEXT(""), TEXT(""), false);
	ASSERT_TRUE(ZnRoadTickUntil([&]() { return Listener->Downloads.size() == 2; }));
	FHttpModule::Get().GetHttpManager().TickUntil([]() { return false; }, 0.3);
	EXPECT_EQ(Listener->Downloads.size(), 2u);
	EXPECT_TRUE(Listener->Downloads[1].bAudio && Listener->Downloads[1].bFace && Listener->Downloads[1].bBody);
	EXPECT_EQ(Listener->Downloads[1].Face, TEXT("{\"face\":[1,2,3]}"));
	Download->RemoveFromRoot();
}
