// The three-file download over loopback: the module's UZnDM_TTSHttpDownload (through the HTTP
// module's worker thread and the game-thread tick) against libcurl alone fetching the same three
// files in parallel with a multi handle, both from the local service in this process. Each
// contender's files are compared with the hosted ones before it is timed; a mismatch stops the
// program with an error. Then the heap the module holds is measured with 1 to 200 downloads in
// flight at once.
//
// Run: ZnHttpBenchmarks [--benchmark_filter=...]; the ratio and the memory table follow Google
// Benchmark's table. Times are wall-clock (the work is waiting on sockets).
#include "ZnBenchDownload.h"
#include "ZnBenchmarkSupport.h"
#include "ZnCountingAllocator.h"
#include "ZnGameLikeAllocator.h"

#include "HttpManager.h"
#include "HttpModule.h"
#include "UObject/GarbageCollection.h"
#include "UObject/Package.h"
#include "UObject/StrongObjectPtr.h"
#include "ZnLocalService.h"

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace
{
std::unique_ptr<FZnLocalService> Service;
std::string Urls[3];
std::string Contents[3];

// A speech file of about 5 s (16 kHz, 16 bit) and motion texts of a realistic size.
void PrepareService()
{
	FZnLocalServiceConfig Config;
	Config.LogLine = [](const std::string&) {};
	Config.WorkerThreads = 64;
	Service = std::make_unique<FZnLocalService>(Config);
	std::string Error;
	if (!Service->Start(Error))
	{
		ZnBenchFail("the local service did not start: " + Error);
	}
	std::mt19937 Random(7);
	std::uniform_int_distribution<int> Byte(0, 255);
	Contents[0].resize(160000);
	for (char& Each : Contents[0])
	{
		Each = char(Byte(Random));
	}
	for (int32 Index = 1; Index < 3; ++Index)
	{
		std::string Text = "{\"frames\":[";
		std::uniform_real_distribution<double> Value(-1.0, 1.0);
		while (Text.size() < (Index == 1 ? 120000u : 400000u))
		{
			Text += std::to_string(Value(Random)) + ",";
		}
		Text += "0]}";
		Contents[Index] = Text;
	}
	const char* Names[3] = {"bench.wav", "bench_face.json", "bench_body.json"};
	for (int32 Index = 0; Index < 3; ++Index)
	{
		Urls[Index] =
			Service->HostFile(Names[Index], std::vector<uint8_t>(Contents[Index].begin(), Contents[Index].end()));
	}
}

size_t Append(char* Data, size_t Size, size_t Count, void* User)
{
	static_cast<std::string*>(User)->append(Data, Size * Count);
	return Size * Count;
}

// The baseline: the three files in parallel with libcurl's multi interface on this thread.
void CurlAlone(std::string (&Out)[3])
{
	CURLM* Multi = curl_multi_init();
	CURL* Easy[3];
	for (int32 Index = 0; Index < 3; ++Index)
	{
		Out[Index].clear();
		Easy[Index] = curl_easy_init();
		curl_easy_setopt(Easy[Index], CURLOPT_URL, Urls[Index].c_str());
		curl_easy_setopt(Easy[Index], CURLOPT_WRITEFUNCTION, &Append);
		curl_easy_setopt(Easy[Index], CURLOPT_WRITEDATA, &Out[Index]);
		curl_easy_setopt(Easy[Index], CURLOPT_NOSIGNAL, 1L);
		curl_multi_add_handle(Multi, Easy[Index]);
	}
	int Running = 1;
	while (Running > 0)
	{
		curl_multi_perform(Multi, &Running);
		if (Running > 0)
		{
			curl_multi_poll(Multi, nullptr, 0, 1000, nullptr);
		}
	}
	for (CURL* Each : Easy)
	{
		curl_multi_remove_handle(Multi, Each);
		curl_easy_cleanup(Each);
	}
	curl_multi_cleanup(Multi);
}

void CheckBaseline()
{
	std::string Got[3];
	CurlAlone(Got);
	for (int32 Index = 0; Index < 3; ++Index)
	{
		if (Got[Index] != Contents[Index])
		{
			ZnBenchFail("libcurl alone did not fetch " + Urls[Index] + " exactly");
		}
	}
}

void CheckModule(UZnBenchListener* Listener)
{
	Listener->bKeep = true;
	ZnBenchDownload(Listener, Urls);
	Listener->bKeep = false;
	const std::string Audio(reinterpret_cast<const char*>(Listener->Audio.GetData()), size_t(Listener->Audio.Num()));
	if (!Listener->bAll || Audio != Contents[0] || ZnBenchNarrow(Listener->Face) != Contents[1] ||
		ZnBenchNarrow(Listener->Body) != Contents[2])
	{
		ZnBenchFail("the module's download differs from the hosted files");
	}
}

void ThreeFiles_CurlAlone(benchmark::State& State)
{
	CheckBaseline();
	std::string Got[3];
	for (auto _ : State)
	{
		CurlAlone(Got);
		benchmark::DoNotOptimize(Got[0].data());
	}
	State.SetBytesProcessed(
		int64(State.iterations()) * int64(Contents[0].size() + Contents[1].size() + Contents[2].size()));
}
BENCHMARK(ThreeFiles_CurlAlone)->UseRealTime()->Unit(benchmark::kMillisecond);

// The baseline plus what the module's result must be: the two motion files as engine text.
void ThreeFiles_CurlAloneAsText(benchmark::State& State)
{
	CheckBaseline();
	std::string Got[3];
	for (auto _ : State)
	{
		CurlAlone(Got);
		const FString Face = ZnBenchWiden(Got[1]);
		const FString Body = ZnBenchWiden(Got[2]);
		benchmark::DoNotOptimize(Face.Len() + Body.Len());
	}
	State.SetBytesProcessed(
		int64(State.iterations()) * int64(Contents[0].size() + Contents[1].size() + Contents[2].size()));
}
BENCHMARK(ThreeFiles_CurlAloneAsText)->UseRealTime()->Unit(benchmark::kMillisecond);

void ThreeFiles_Module(benchmark::State& State)
{
	TStrongObjectPtr<UZnBenchListener> Listener(NewObject<UZnBenchListener>(GetTransientPackage()));
	CheckModule(Listener.Get());
	for (auto _ : State)
	{
		ZnBenchDownload(Listener.Get(), Urls);
	}
	State.SetBytesProcessed(
		int64(State.iterations()) * int64(Contents[0].size() + Contents[1].size() + Contents[2].size()));
	CollectGarbage();
}
BENCHMARK(ThreeFiles_Module)->UseRealTime()->Unit(benchmark::kMillisecond);

// Heap held with Count three-file downloads in flight at once, from start to the last delegate.
void PrintMemoryGrowth()
{
	std::printf("\nHeap held with N three-file downloads in flight (files: %zu + %zu + %zu bytes)\n",
		Contents[0].size(), Contents[1].size(), Contents[2].size());
	std::printf("%6s %16s %16s %18s\n", "N", "peak heap (KiB)", "per download", "transport peak");
	for (int32 Count : {1, 10, 50, 100, 200})
	{
		std::vector<TStrongObjectPtr<UZnBenchListener>> Listeners;
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Listeners.emplace_back(NewObject<UZnBenchListener>(GetTransientPackage()));
		}
		CollectGarbage();
		FHttpModule::Get().GetHttpManager().ResetPeakStats();
		const size_t Before = ZnCountingAllocator::LiveBytes();
		ZnCountingAllocator::ResetPeak();
		for (int32 Index = 0; Index < Count; ++Index)
		{
			ZnBenchStartDownload(Listeners[size_t(Index)].Get(), Urls);
		}
		const bool bDone = FHttpModule::Get().GetHttpManager().TickUntil(
			[&]()
			{
				for (const TStrongObjectPtr<UZnBenchListener>& Listener : Listeners)
				{
					if (Listener->Calls == 0)
					{
						return false;
					}
				}
				return true;
			},
			60.0);
		if (!bDone)
		{
			ZnBenchFail("downloads in flight did not complete");
		}
		const double Peak = double(ZnCountingAllocator::PeakBytes() - Before);
		std::printf("%6d %16.0f %16.0f %18lld\n", Count, Peak / 1024.0, Peak / 1024.0 / Count,
			(long long)FHttpModule::Get().GetHttpManager().GetTransportStats().PeakBufferedBytes / 1024);
		Listeners.clear();
		CollectGarbage();
	}
}
} // namespace

int main(int argc, char** argv)
{
	UseGameLikeAllocator();
	if (!ZnInitializeBenchmarks(argc, argv))
	{
		return 1;
	}
	PrepareService();
	FZnBestTimeReporter Reporter(EZnBenchClock::Wall);
	benchmark::RunSpecifiedBenchmarks(&Reporter);
	benchmark::Shutdown();
	const auto AsText = Reporter.SecondsPerIteration.find("ThreeFiles_CurlAloneAsText");
	const auto Module = Reporter.SecondsPerIteration.find("ThreeFiles_Module");
	const auto Curl = Reporter.SecondsPerIteration.find("ThreeFiles_CurlAlone");
	if (Module != Reporter.SecondsPerIteration.end() && Curl != Reporter.SecondsPerIteration.end())
	{
		std::printf(
			"\nThree-file download, module time / libcurl alone: %.3f (target <= 1.2), best of the repetitions: "
			"%.3f ms / %.3f ms\n",
			Module->second / Curl->second, Module->second * 1000.0, Curl->second * 1000.0);
	}
	if (Module != Reporter.SecondsPerIteration.end() && AsText != Reporter.SecondsPerIteration.end())
	{
		std::printf("Three-file download, module time / libcurl alone with the texts widened: %.3f (for "
					"information), %.3f ms\n",
			Module->second / AsText->second, AsText->second * 1000.0);
	}
	PrintMemoryGrowth();
	Service->Stop();
	return 0;
}
