// 200 three-file downloads in flight at once against the local service, about one request in ten
// faulted at random with a fixed seed and every kind of fault: every delegate fires exactly once,
// every flag matches what was injected, every delivered body is byte-exact, and the memory the
// transport holds stays within a stated bound.
#include "ZnRoadTestSupport.h"

#include <random>
#include <sys/resource.h>

#if defined(__SANITIZE_ADDRESS__)
#define ZN_UNDER_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZN_UNDER_ADDRESS_SANITIZER 1
#endif
#endif
#ifndef ZN_UNDER_ADDRESS_SANITIZER
#define ZN_UNDER_ADDRESS_SANITIZER 0
#endif

namespace
{
constexpr int32 Downloads = 200;
constexpr uint32 Seed = 20261123;

struct FFault
{
	const char* Text;
	bool bDelivered; // the download of that file succeeds
	bool bFileBody; // what arrives is the hosted file itself
};

// Every kind the service injects; the stall ends at the download's own 5 s timeout.
const FFault Faults[] = {
	{"delay=150", true, true},
	{"status=404", false, false},
	{"status=503", false, false},
	{"drop", false, false},
	{"truncate", false, false},
	{"malformed", true, false},
	{"code=7", true, false},
	{"stall", false, false},
};
constexpr int32 FaultKinds = int32(sizeof(Faults) / sizeof(Faults[0]));

struct FPlannedFile
{
	std::string Content;
	std::string Url;
	int32 Fault = -1; // index into Faults, or -1
};

std::string RandomText(std::mt19937& Random, size_t Size, const std::string& Tag)
{
	std::string Text = "{\"tag\":\"" + Tag + "\",\"v\":[";
	std::uniform_int_distribution<int> Digit(0, 9);
	while (Text.size() + 3 < Size)
	{
		Text += char('0' + Digit(Random));
		Text += ',';
	}
	Text += "0]}";
	return Text;
}

std::string RandomBytes(std::mt19937& Random, size_t Size)
{
	std::string Bytes(Size, '\0');
	std::uniform_int_distribution<int> Byte(0, 255);
	for (char& Each : Bytes)
	{
		Each = char(Byte(Random));
	}
	return Bytes;
}

long PeakResidentKilobytes()
{
	rusage Usage = {};
	getrusage(RUSAGE_SELF, &Usage);
	return Usage.ru_maxrss;
}
} // namespace

TEST(RoadLoadTests, TwoHundredThreeFileDownloadsWithRandomFaults)
{
	FZnLocalServiceConfig Config;
	// Enough connections served at once that stalled and delayed answers hold up no one else.
	Config.WorkerThreads = 160;
	FZnRoadService Local(Config);
	ASSERT_TRUE(Local.Service);

	std::mt19937 Random(Seed);
	std::uniform_real_distribution<double> Chance(0.0, 1.0);
	std::uniform_int_distribution<int32> Kind(0, FaultKinds - 1);
	std::uniform_int_distribution<size_t> AudioSize(2000, 48000);
	std::uniform_int_distribution<size_t> TextSize(500, 24000);

	std::vector<FPlannedFile> Plan(size_t(Downloads) * 3);
	int64 ContentBytes = 0;
	int32 KindCount[FaultKinds] = {};
	for (int32 Index = 0; Index < Downloads * 3; ++Index)
	{
		FPlannedFile& File = Plan[size_t(Index)];
		const int32 Slot = Index % 3;
		const std::string Name = "load_" + std::to_string(Index / 3) +
			(Slot == 0			? ".wav"
					: Slot == 1 ? "_face.json"
								: "_body.json");
		File.Content = Slot == 0 ? RandomBytes(Random, AudioSize(Random)) : RandomText(Random, TextSize(Random), Name);
		ContentBytes += int64(File.Content.size());
		File.Url = Local.Service->HostFile(Name, std::vector<uint8_t>(File.Content.begin(), File.Content.end()));
		ASSERT_FALSE(File.Url.empty());
		if (Chance(Random) < 0.1)
		{
			File.Fault = Kind(Random);
			++KindCount[File.Fault];
			File.Url = FZnLocalService::WithFault(File.Url, Faults[File.Fault].Text);
		}
	}
	for (int32 Each = 0; Each < FaultKinds; ++Each)
	{
		ASSERT_GT(KindCount[Each], 0) << "the seed must give every kind of fault: " << Faults[Each].Text;
	}

	std::vector<TStrongObjectPtr<UZnRoadListener>> Listeners;
	const long ResidentBefore = PeakResidentKilobytes();
	FHttpModule::Get().GetHttpManager().ResetPeakStats();
	for (int32 Index = 0; Index < Downloads; ++Index)
	{
		Listeners.emplace_back(NewObject<UZnRoadListener>(GetTransientPackage()));
		UZnDM_TTSHttpDownload* Download = UZnDM_TTSHttpDownload::CreateTTSHttpDownload();
		Download->OnCompleted.AddDynamic(Listeners.back().Get(), &UZnRoadListener::OnThreeFiles);
		Download->DoDownload(ZnText(Plan[size_t(Index) * 3].Url), ZnText(Plan[size_t(Index) * 3 + 1].Url),
			ZnText(Plan[size_t(Index) * 3 + 2].Url), false);
	}
	EXPECT_EQ(FHttpModule::Get().GetHttpManager().GetTransportStats().RequestsInFlight, Downloads * 3);

	const auto AllDone = [&]()
	{
		for (const TStrongObjectPtr<UZnRoadListener>& Listener : Listeners)
		{
			if (Listener->Downloads.empty())
			{
				return false;
			}
		}
		return true;
	};
	ASSERT_TRUE(ZnRoadTickUntil(AllDone, 25.0));
	// Nothing more arrives afterwards.
	FHttpModule::Get().GetHttpManager().TickUntil([]() { return false; }, 0.3);
	const FHttpTransportStats Stats = FHttpModule::Get().GetHttpManager().GetTransportStats();
	EXPECT_EQ(Stats.RequestsInFlight, 0);
	EXPECT_EQ(Stats.BufferedBytes, 0);

	const std::string MalformedBody =
		"{\"code\": 0, \"msg\": \"injected fault: malformed\", \"data\": {\"allfaceData\": [";
	for (int32 Index = 0; Index < Downloads; ++Index)
	{
		ASSERT_EQ(Listeners[size_t(Index)]->Downloads.size(), 1u) << "download " << Index;
		const UZnRoadListener::FThreeFiles& Got = Listeners[size_t(Index)]->Downloads[0];
		const bool Flags[3] = {Got.bAudio, Got.bFace, Got.bBody};
		const std::string Bodies[3] = {ZnBytes(Got.Audio), ZnUtf8(Got.Face), ZnUtf8(Got.Body)};
		for (int32 Slot = 0; Slot < 3; ++Slot)
		{
			const FPlannedFile& File = Plan[size_t(Index) * 3 + size_t(Slot)];
			const bool bExpected = File.Fault < 0 || Faults[File.Fault].bDelivered;
			EXPECT_EQ(Flags[Slot], bExpected) << File.Url;
			if (!bExpected)
			{
				EXPECT_TRUE(Bodies[Slot].empty()) << File.Url;
			}
			else if (File.Fault < 0 || Faults[File.Fault].bFileBody)
			{
				EXPECT_TRUE(Bodies[Slot] == File.Content) << "not byte-exact: " << File.Url;
			}
			else if (std::string(Faults[File.Fault].Text) == "malformed")
			{
				EXPECT_EQ(Bodies[Slot], MalformedBody) << File.Url;
			}
			else
			{
				EXPECT_NE(Bodies[Slot].find("\"code\":7"), std::string::npos) << Bodies[Slot];
			}
		}
	}

	// The bound: the transport never holds more than every body at once (each reserved at its
	// announced size) plus one growth step of 16 KiB per request; the process grows by less than
	// four times that.
	const int64 Bound = ContentBytes + int64(Downloads) * 3 * 16 * 1024;
	EXPECT_LE(Stats.PeakBufferedBytes, Bound) << "content " << ContentBytes;
#if !ZN_UNDER_ADDRESS_SANITIZER
	// AddressSanitizer keeps freed memory in quarantine, so resident size says nothing under it.
	const long ResidentGrowthKilobytes = PeakResidentKilobytes() - ResidentBefore;
	EXPECT_LE(int64(ResidentGrowthKilobytes) * 1024, 4 * Bound) << "peak resident growth";
#else
	(void)ResidentBefore;
#endif
	CollectGarbage();
}
