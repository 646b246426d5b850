// From text to a decoded clip sampled every frame, step by step, for one sentence of about ten
// seconds: what the service does (synthesis; the face, from the audio's loudness and the
// phonemes; the body), then what the plugin does (transfer of the three files over loopback
// through UZnDM_TTSHttpDownload, decoding both clips into curves, sampling every curve at 60
// frames per second for the clip's length). Each step is timed on its own over the same data,
// and the table after Google Benchmark's says how the whole divides, with the plugin's share.
//
// The step outputs are checked before anything is timed (the clips as long as the audio to the
// frame, the downloaded files equal to the hosted ones, curves with keys); a mismatch stops the
// program with an error.
//
// Run: ZnTalkingHeadBenchmarks [--benchmark_filter=...]. Times are wall-clock (the transfer waits
// on sockets), best of the repetitions.
#include "ZnBenchDownload.h"
#include "ZnBenchmarkSupport.h"

#include "HttpManager.h"
#include "HttpModule.h"
#include "UObject/GarbageCollection.h"
#include "UObject/Package.h"
#include "UObject/StrongObjectPtr.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnGameLikeAllocator.h"
#include "ZnLoudness.h"
#include "ZnLocalService.h"
#include "ZnSpeechContentSource.h"
#include "ZnSpeechSynthesizer.h"
#include "ZnWav.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace
{
// About ten seconds at the voice's normal speed.
constexpr const char* Sentence =
	"Good morning, and welcome back to the studio. Today we will walk through the new lighting setup, "
	"check the camera angles for the second scene, and record a short greeting for the visitors.";
constexpr double SampleRate = 60.0;

FZnSpeechRequest Request;
std::shared_ptr<FZnSpeechSynthesizer> Synthesizer;
FZnSynthesizedSpeech Speech;
FZnPcmAudio Audio;
FZnSpeechFaceInputs Analysis;
std::vector<uint8_t> Wav;
std::string FaceJson;
std::string BodyJson;
std::unique_ptr<FZnLocalService> Service;
std::string Urls[3];
FString DownloadedFace;
FString DownloadedBody;
FZnFaceData Face;
FZnBodyData Body;

int32 SampleFrameCount(float Length)
{
	return int32(std::floor(double(Length) * SampleRate + 1e-4)) + 1;
}

// Every face curve and every bone at each sampled frame, as a game reads the clip while it plays.
double SampleEveryFrame(const FZnFaceData& InFace, const FZnBodyData& InBody)
{
	const int32 Frames = SampleFrameCount(FMath::Max(InFace.totalTime, InBody.totalTime));
	double Sum = 0.0;
	for (int32 Frame = 0; Frame < Frames; ++Frame)
	{
		const float Time = float(Frame / SampleRate);
		for (const auto& Curve : InFace.Curves)
		{
			Sum += Curve.Evaluate(Time);
		}
		for (const auto& Curve : InBody.BoneCurves)
		{
			Sum += Curve.Evaluate(Time, 0.0001f).W;
		}
	}
	return Sum;
}

bool Synthesise(FZnSynthesizedSpeech& Out)
{
	std::string Error;
	if (!Synthesizer->Synthesize(Request, Out, Error))
	{
		ZnBenchFail("synthesis failed: " + Error);
	}
	return true;
}

// The three-file download through the module; the game keeps what it is handed.
void Download(UZnBenchListener* Listener)
{
	Listener->bKeep = true;
	ZnBenchDownload(Listener, Urls);
	if (!Listener->bAll)
	{
		ZnBenchFail("the three-file download failed");
	}
}

// Runs every step once, in order, checking each output; the timed steps start from these.
void Prepare()
{
	Request.Text = Sentence;
	Request.Seed = 7;
	Synthesizer = FZnSpeechSynthesizer::Shared();
	Synthesise(Speech);
	const double Seconds = Speech.DurationSeconds();
	if (Seconds < 8.0 || Seconds > 12.0)
	{
		ZnBenchFail("the sentence is meant to last about ten seconds, it lasts " + std::to_string(Seconds) + " s");
	}
	Wav = FZnWav::WritePcm16Mono(Speech.Samples, Speech.SampleRate);
	Audio = ToFloatAudio(Speech.Samples, Speech.SampleRate);
	Analysis = AnalyseSpeechAudio(Audio, &Speech.Phonemes, &Speech.Words, Request.Seed);
	FaceJson = MakeSpeechFaceJson(Analysis, Request.FaceShape);
	BodyJson = MakeSpeechBodyJson(Analysis, Request.BodyShape);

	FZnLocalServiceConfig Config;
	Config.LogLine = [](const std::string&) {};
	Service = std::make_unique<FZnLocalService>(Config);
	std::string Error;
	if (!Service->Start(Error))
	{
		ZnBenchFail("the local service did not start: " + Error);
	}
	Urls[0] = Service->HostFile("speech.wav", Wav);
	Urls[1] = Service->HostFile("speech_face.json", std::vector<uint8_t>(FaceJson.begin(), FaceJson.end()));
	Urls[2] = Service->HostFile("speech_body.json", std::vector<uint8_t>(BodyJson.begin(), BodyJson.end()));

	TStrongObjectPtr<UZnBenchListener> Listener(NewObject<UZnBenchListener>(GetTransientPackage()));
	Download(Listener.Get());
	const std::vector<uint8_t> GotWav(Listener->Audio.GetData(), Listener->Audio.GetData() + Listener->Audio.Num());
	if (GotWav != Wav || ZnBenchNarrow(Listener->Face) != FaceJson || ZnBenchNarrow(Listener->Body) != BodyJson)
	{
		ZnBenchFail("the downloaded files differ from the hosted ones");
	}
	DownloadedFace = Listener->Face;
	DownloadedBody = Listener->Body;

	UZnDM_BpFuncLib::ParseJsonToFacedata(DownloadedFace, Face);
	UZnDM_BpFuncLib::ParseJsonToBodydata(DownloadedBody, Body);
	const double FrameSeconds = 1.0 / 30.0;
	if (Face.Curves.Num() == 0 || Body.BoneCurves.Num() == 0)
	{
		ZnBenchFail("the clips decoded to no curves");
	}
	if (std::abs(double(Face.totalTime) - Seconds) > FrameSeconds ||
		std::abs(double(Body.totalTime) - Seconds) > FrameSeconds)
	{
		ZnBenchFail("the decoded clips (face " + std::to_string(Face.totalTime) + " s, body " +
			std::to_string(Body.totalTime) + " s) are not as long as the audio (" + std::to_string(Seconds) + " s)");
	}
}

void Step1_Synthesis(benchmark::State& State)
{
	for (auto _ : State)
	{
		FZnSynthesizedSpeech Out;
		Synthesise(Out);
		std::vector<uint8_t> OutWav = FZnWav::WritePcm16Mono(Out.Samples, Out.SampleRate);
		benchmark::DoNotOptimize(OutWav.data());
	}
}
BENCHMARK(Step1_Synthesis)->UseRealTime()->Unit(benchmark::kMillisecond);

// The loudness and accent analysis belongs here: the mouth is what it is for.
void Step2_Face(benchmark::State& State)
{
	for (auto _ : State)
	{
		const FZnPcmAudio FloatAudio = ToFloatAudio(Speech.Samples, Speech.SampleRate);
		const FZnSpeechFaceInputs Inputs =
			AnalyseSpeechAudio(FloatAudio, &Speech.Phonemes, &Speech.Words, Request.Seed);
		std::string Json = MakeSpeechFaceJson(Inputs, Request.FaceShape);
		benchmark::DoNotOptimize(Json.data());
	}
}
BENCHMARK(Step2_Face)->UseRealTime()->Unit(benchmark::kMillisecond);

void Step3_Body(benchmark::State& State)
{
	for (auto _ : State)
	{
		std::string Json = MakeSpeechBodyJson(Analysis, Request.BodyShape);
		benchmark::DoNotOptimize(Json.data());
	}
}
BENCHMARK(Step3_Body)->UseRealTime()->Unit(benchmark::kMillisecond);

void Step4_Transfer(benchmark::State& State)
{
	TStrongObjectPtr<UZnBenchListener> Listener(NewObject<UZnBenchListener>(GetTransientPackage()));
	for (auto _ : State)
	{
		Download(Listener.Get());
	}
	Listener.Reset();
	CollectGarbage();
}
BENCHMARK(Step4_Transfer)->UseRealTime()->Unit(benchmark::kMillisecond);

void Step5_Decode(benchmark::State& State)
{
	for (auto _ : State)
	{
		FZnFaceData OutFace;
		FZnBodyData OutBody;
		UZnDM_BpFuncLib::ParseJsonToFacedata(DownloadedFace, OutFace);
		UZnDM_BpFuncLib::ParseJsonToBodydata(DownloadedBody, OutBody);
		benchmark::DoNotOptimize(OutFace.Curves.Num() + OutBody.BoneCurves.Num());
	}
}
BENCHMARK(Step5_Decode)->UseRealTime()->Unit(benchmark::kMillisecond);

void Step6_Sampling(benchmark::State& State)
{
	for (auto _ : State)
	{
		benchmark::DoNotOptimize(SampleEveryFrame(Face, Body));
	}
}
BENCHMARK(Step6_Sampling)->UseRealTime()->Unit(benchmark::kMillisecond);

void PrintSplit(const std::map<std::string, double>& Best)
{
	struct FStep
	{
		const char* Benchmark;
		const char* Name;
		bool bPlugin;
	};
	const FStep Steps[] = {{"Step1_Synthesis", "synthesis", false}, {"Step2_Face", "face", false},
		{"Step3_Body", "body", false}, {"Step4_Transfer", "transfer", true}, {"Step5_Decode", "decode", true},
		{"Step6_Sampling", "sampling", true}};
	double Whole = 0.0;
	double Plugin = 0.0;
	for (const FStep& Step : Steps)
	{
		const auto Found = Best.find(Step.Benchmark);
		if (Found == Best.end())
		{
			std::printf("\n(the split needs every step: run without --benchmark_filter)\n");
			return;
		}
		Whole += Found->second;
		Plugin += Step.bPlugin ? Found->second : 0.0;
	}
	std::printf("\nText to decoded clip: %.2f s of speech, %zu + %zu bytes of face and body JSON, %d face curves "
				"and %d bones sampled %d times (60 per second)\n",
		Speech.DurationSeconds(), FaceJson.size(), BodyJson.size(), Face.Curves.Num(), Body.BoneCurves.Num(),
		SampleFrameCount(FMath::Max(Face.totalTime, Body.totalTime)));
	std::printf("%-10s %12s %8s\n", "step", "time (ms)", "share");
	for (const FStep& Step : Steps)
	{
		const double Seconds = Best.at(Step.Benchmark);
		std::printf("%-10s %12.3f %7.1f%%%s\n", Step.Name, Seconds * 1000.0, 100.0 * Seconds / Whole,
			Step.bPlugin ? "  (plugin)" : "");
	}
	std::printf("%-10s %12.3f %7.1f%%\n", "whole", Whole * 1000.0, 100.0);
	std::printf("The plugin's part (transfer, decode, sampling): %.3f ms, %.1f %% of the whole\n", Plugin * 1000.0,
		100.0 * Plugin / Whole);
}
} // namespace

int main(int argc, char** argv)
{
	UseGameLikeAllocator();
	if (!ZnInitializeBenchmarks(argc, argv))
	{
		return 1;
	}
	Prepare();
	FZnBestTimeReporter Reporter(EZnBenchClock::Wall);
	benchmark::RunSpecifiedBenchmarks(&Reporter);
	benchmark::Shutdown();
	PrintSplit(Reporter.SecondsPerIteration);
	Service->Stop();
	return 0;
}
