// zn demo [TEXT]: says a sentence and brings back a face and body for it the way a game would.
// It starts the local service in-process (speaking with espeak-ng) on a free loopback port, or
// uses --endpoint, then walks the road through the module's own request objects and script
// functions while ticking the engine loop: GetAppToken, MakeJsonTextBroadcastMotion,
// DoRequestEasy, ParseJsonTmp, UZnDM_TTSHttpDownload, ParseJsonToFacedata, ParseJsonToBodydata,
// then samples every bone and face curve at 30 frames per second. Writes audio.wav, face.json,
// body.json (as downloaded) and summary.json into the output folder and prints a summary.
// Exit status 0 on success; otherwise 1 with the failing step and the service's code and message.
#include "ZnCommand.h"
#include "ZnExit.h"

#include "Engine/StandaloneEngineLoop.h"
#include "ZnBvhWriter.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnDM_HttpRequest.h"
#include "ZnDM_TTSHttpDownload.h"
#include "ZnFaceCsvWriter.h"
#include "ZnLocalService.h"
#include "ZnPreviewPage.h"
#include "ZnQuatCurve.h"
#include "ZnSpeechContentSource.h"
#include "ZnWavFile.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{
using FJson = nlohmann::ordered_json;
using FClock = std::chrono::steady_clock;

const char* const DefaultText =
	"Hello! I am a talking head. Every word you hear moves my lips, my eyes and my hands, all made on this machine.";

struct FZnDemoOptions
{
	std::string Text = DefaultText;
	std::string OutputDir = "zn-demo";
	std::string Endpoint;
	std::string AppId = "demo";
	std::string Secret = "demo-secret";
	std::string Voice;
	int Speed = 50;
	std::optional<uint64_t> Seed;
};

std::string ToUtf8(const FString& Text)
{
	const FTCHARToUTF8 Converted(*Text);
	return std::string(Converted.Get(), static_cast<size_t>(Converted.Length()));
}

FString FromUtf8(const std::string& Text)
{
	const FUTF8ToTCHAR Converted(Text.data(), static_cast<int32>(Text.size()));
	return FString(Converted.Length(), Converted.Get());
}

// The path part of one of the module's service URLs ("https://host/users/getAppToken" ->
// "/users/getAppToken"), so the demo asks the same paths a project configured by default would.
std::string PathOf(const FString& Url)
{
	const std::string Text = ToUtf8(Url);
	const size_t Scheme = Text.find("://");
	const size_t Path = Text.find('/', Scheme == std::string::npos ? 0 : Scheme + 3);
	return Path == std::string::npos ? "/" : Text.substr(Path);
}

// The token shortened so the summary cannot be used to call the service.
std::string ShortToken(const std::string& Token)
{
	return Token.size() <= 8 ? std::string(Token.size(), '*')
							 : Token.substr(0, 6) + "..." + " (" + std::to_string(Token.size()) + " characters)";
}

// Fixes the seed of every utterance of the in-process service (the request bodies carry none).
class FZnSeededContent final : public IZnContentSource
{
public:
	FZnSeededContent(std::shared_ptr<IZnContentSource> InInner, uint64_t InSeed)
		: Inner(std::move(InInner))
		, Seed(InSeed)
	{
	}

	bool Speak(const FZnSpeechRequest& Request, FZnGeneratedMedia& Out, std::string& Error) override
	{
		FZnSpeechRequest Seeded = Request;
		Seeded.Seed = Seed;
		return Inner->Speak(Seeded, Out, Error);
	}

	bool Animate(const std::vector<uint8_t>& Wav, const FZnSpeechRequest& Request, FZnGeneratedMedia& Out,
		std::string& Error) override
	{
		FZnSpeechRequest Seeded = Request;
		Seeded.Seed = Seed;
		return Inner->Animate(Wav, Seeded, Out, Error);
	}

private:
	std::shared_ptr<IZnContentSource> Inner;
	uint64_t Seed;
};

// Shows each step and how long it has been waiting: one live line on a terminal, plain lines
// otherwise (a log, a pipe, a test).
class FZnDemoProgress
{
public:
	FZnDemoProgress(std::ostream& InOut, bool bInLive)
		: Out(InOut)
		, bLive(bInLive)
	{
	}

	void Begin(const std::string& InLabel)
	{
		Label = InLabel;
		Start = FClock::now();
		LastShown = -1;
		if (bLive)
		{
			Out << "\r\x1b[K" << Label << " ..." << std::flush;
		}
		else
		{
			Out << Label << " ...\n" << std::flush;
		}
	}

	// Called while waiting; redraws the live line about ten times a second.
	void Waiting()
	{
		const double Seconds = Elapsed();
		const int Tenths = static_cast<int>(Seconds * 10.0);
		if (bLive && Tenths != LastShown)
		{
			LastShown = Tenths;
			ZnPrint(Out, "\r\x1b[K%s ... %.1f s", Label.c_str(), Seconds);
			Out.flush();
		}
	}

	double End(bool bOk)
	{
		const double Seconds = Elapsed();
		if (bLive)
		{
			Out << "\r\x1b[K";
		}
		ZnPrint(Out, "%s %s (%.2f s)\n", Label.c_str(), bOk ? "done" : "FAILED", Seconds);
		Out.flush();
		return Seconds;
	}

	double Elapsed() const { return std::chrono::duration<double>(FClock::now() - Start).count(); }

private:
	std::ostream& Out;
	bool bLive;
	std::string Label;
	FClock::time_point Start;
	int LastShown = -1;
};

// Ticks the engine loop as a game does (frames at 60 per second) until Done or the timeout.
bool TickUntil(
	FStandaloneEngineLoop& Loop, FZnDemoProgress& Progress, const std::function<bool()>& Done, double TimeoutSeconds)
{
	while (!Done())
	{
		if (Progress.Elapsed() > TimeoutSeconds)
		{
			return false;
		}
		Loop.RunFrames(1, 60.0f);
		Progress.Waiting();
		std::this_thread::sleep_for(std::chrono::milliseconds(5));
	}
	return true;
}

// The service's "code" and "msg" (or "message") of a response text, for failure lines.
std::string ServiceVerdict(const std::string& Body)
{
	const FJson Parsed = FJson::parse(Body, nullptr, false);
	if (!Parsed.is_object() || !Parsed.contains("code"))
	{
		return "response: " + (Body.size() > 200 ? Body.substr(0, 200) + "..." : Body);
	}
	std::string Message;
	for (const char* Key : {"msg", "message"})
	{
		if (Parsed.contains(Key) && Parsed[Key].is_string())
		{
			Message = Parsed[Key].get<std::string>();
			break;
		}
	}
	return "service code " + Parsed["code"].dump() + ": " + Message;
}

bool WriteFile(const std::filesystem::path& Path, const void* Data, size_t Size)
{
	std::ofstream File(Path, std::ios::binary | std::ios::trunc);
	File.write(static_cast<const char*>(Data), static_cast<std::streamsize>(Size));
	return static_cast<bool>(File);
}

struct FZnDemoRun
{
	FZnDemoRun(const FZnDemoOptions& InOptions, ZnCommandContext& InCtx, bool bLive)
		: Options(InOptions)
		, Ctx(InCtx)
		, Progress(InCtx.Out, bLive)
	{
	}

	const FZnDemoOptions& Options;
	ZnCommandContext& Ctx;
	FZnDemoProgress Progress;
	FStandaloneEngineLoop Loop;
	FJson Steps = FJson::object();

	int Fail(const std::string& Step, const std::string& Why)
	{
		Progress.End(false);
		ZnPrint(Ctx.Err, "zn demo: step \"%s\" failed: %s\n", Step.c_str(), Why.c_str());
		return ZnExit::Failed;
	}

	int Run()
	{
		std::unique_ptr<FZnLocalService> Service;
		std::string Endpoint = Options.Endpoint;
		std::string Voice;
		if (Endpoint.empty())
		{
			Progress.Begin("[1/8] starting the local service");
			FZnLocalServiceConfig Config;
			Config.Content = MakeSpeechContentSource();
			if (Options.Seed)
			{
				Config.Content = std::make_shared<FZnSeededContent>(Config.Content, *Options.Seed);
			}
			// The in-process service accepts the app "demo" with the secret "demo-secret" only; other
			// credentials are sent unchanged, so a wrong secret fails as it would against a real service.
			Config.LogLine = [](const std::string&) {};
			Service = std::make_unique<FZnLocalService>(std::move(Config));
			std::string Error;
			if (!Service->Start(Error))
			{
				return Fail("service", Error);
			}
			Endpoint = Service->BaseUrl();
			Steps["service"] = Progress.End(true);
		}
		while (!Endpoint.empty() && Endpoint.back() == '/')
		{
			Endpoint.pop_back();
		}
		const FZnAPIConfig Api;

		// Token.
		Progress.Begin("[2/8] GetAppToken");
		UZnDM_HttpRequest* TokenRequest = UZnDM_HttpRequest::CreateHttpRequest();
		bool bTokenDone = false, bTokenOk = false;
		std::string TokenBody;
		TokenRequest->OnGetAppTokenCompleted.AddStandaloneLambda(
			[&](bool bOk, const FString& Body)
			{
				bTokenDone = true;
				bTokenOk = bOk;
				TokenBody = ToUtf8(Body);
			});
		TokenRequest->GetAppToken(FromUtf8(Endpoint + PathOf(Api.TokenAPI_EN_US)), FromUtf8(Options.AppId),
			FromUtf8(Options.Secret), ZnDM_HttpVerb::POST, false, 10);
		if (!TickUntil(
				Loop, Progress, [&] { return bTokenDone; }, 15.0))
		{
			return Fail("GetAppToken", "no answer within 15 s");
		}
		if (!bTokenOk)
		{
			// A refusal arrives as the service's envelope; a transport failure or another status as
			// "request error, response code:N".
			return Fail(
				"GetAppToken", TokenBody.rfind("request error", 0) == 0 ? TokenBody : ServiceVerdict(TokenBody));
		}
		// The request object hands over the token itself, or the whole answer when it has none.
		const std::string Token = TokenBody;
		if (Token.empty() || Token.front() == '{')
		{
			return Fail("GetAppToken", "the answer carries no token: " + ServiceVerdict(TokenBody));
		}
		Steps["token"] = Progress.End(true);

		// Motion request.
		Progress.Begin("[3/8] MakeJsonTextBroadcastMotion + DoRequestEasy");
		const FString Body = UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(FromUtf8(Options.Text), TEXT("wav"),
			Options.Voice.empty() ? FString(TEXT("aixia")) : FromUtf8(Options.Voice), Options.Speed);
		UZnDM_HttpRequest* MotionRequest = UZnDM_HttpRequest::CreateHttpRequest();
		bool bMotionDone = false, bMotionOk = false;
		FString MotionBody;
		MotionRequest->OnCompleted.AddStandaloneLambda(
			[&](bool bOk, const FString& Response)
			{
				bMotionDone = true;
				bMotionOk = bOk;
				MotionBody = Response;
			});
		MotionRequest->DoRequestEasy(FromUtf8(Token), FromUtf8(Endpoint + PathOf(Api.TextBroadcastMotionAPI_EN_US)),
			Body, ZnDM_HttpVerb::POST, false, 120);
		if (!TickUntil(
				Loop, Progress, [&] { return bMotionDone; }, 125.0))
		{
			return Fail("DoRequestEasy", "no answer within 125 s");
		}
		if (!bMotionOk)
		{
			return Fail("DoRequestEasy", "transport: " + ToUtf8(MotionBody));
		}
		Steps["motion_request"] = Progress.End(true);

		Progress.Begin("[4/8] ParseJsonTmp");
		FString AudioUrl, FaceUrl, BodyUrl, Said;
		if (!UZnDM_BpFuncLib::ParseJsonTmp(
				MotionBody, FString(), ZnJsonDataType::TextBroadcast, AudioUrl, FaceUrl, BodyUrl, Said) ||
			AudioUrl.IsEmpty() || FaceUrl.IsEmpty() || BodyUrl.IsEmpty())
		{
			return Fail("ParseJsonTmp", ServiceVerdict(ToUtf8(MotionBody)));
		}
		Steps["parse_response"] = Progress.End(true);

		// Download.
		Progress.Begin("[5/8] UZnDM_TTSHttpDownload");
		UZnDM_TTSHttpDownload* Download = UZnDM_TTSHttpDownload::CreateTTSHttpDownload();
		bool bDownloaded = false, bAudioOk = false, bFaceOk = false, bBodyOk = false;
		TArray<uint8> AudioBytes;
		FString FaceJson, BodyJson;
		Download->OnCompleted.AddStandaloneLambda(
			[&](bool bAudio, const TArray<uint8>& Audio, bool bFace, const FString& Face, bool bBody,
				const FString& Bdy)
			{
				bDownloaded = true;
				bAudioOk = bAudio;
				bFaceOk = bFace;
				bBodyOk = bBody;
				AudioBytes = Audio;
				FaceJson = Face;
				BodyJson = Bdy;
			});
		Download->DoDownload(AudioUrl, FaceUrl, BodyUrl, false);
		if (!TickUntil(
				Loop, Progress, [&] { return bDownloaded; }, 30.0))
		{
			return Fail("UZnDM_TTSHttpDownload", "no answer within 30 s");
		}
		if (!bAudioOk || !bFaceOk || !bBodyOk)
		{
			return Fail("UZnDM_TTSHttpDownload",
				std::string("could not download") + (bAudioOk ? "" : " the audio") + (bFaceOk ? "" : " the face") +
					(bBodyOk ? "" : " the body"));
		}
		Steps["download"] = Progress.End(true);

		Progress.Begin("[6/8] writing the files");
		const std::filesystem::path Dir(Options.OutputDir);
		std::error_code DirError;
		std::filesystem::create_directories(Dir, DirError);
		const std::string FaceText = ToUtf8(FaceJson);
		const std::string BodyText = ToUtf8(BodyJson);
		if (!WriteFile(Dir / "audio.wav", AudioBytes.GetData(), static_cast<size_t>(AudioBytes.Num())) ||
			!WriteFile(Dir / "face.json", FaceText.data(), FaceText.size()) ||
			!WriteFile(Dir / "body.json", BodyText.data(), BodyText.size()))
		{
			return Fail("write", "cannot write into \"" + Options.OutputDir + "\"");
		}
		Steps["write"] = Progress.End(true);

		// Decode.
		Progress.Begin("[7/8] ParseJsonToFacedata + ParseJsonToBodydata");
		FZnFaceData Face;
		FZnBodyData BodyData;
		UZnDM_BpFuncLib::ParseJsonToFacedata(FaceJson, Face);
		UZnDM_BpFuncLib::ParseJsonToBodydata(BodyJson, BodyData);
		if (Face.CurveFrames.Num() == 0 || Face.CurveFrames[0].Num() == 0)
		{
			return Fail("ParseJsonToFacedata", "the face clip decoded to no frames");
		}
		if (BodyData.BoneFrames.Num() == 0 || BodyData.BoneFrames[0].Num() == 0)
		{
			return Fail("ParseJsonToBodydata", "the body clip decoded to no frames");
		}
		Steps["decode"] = Progress.End(true);

		// Sample.
		Progress.Begin("[8/8] sampling every curve at 30 frames per second");
		const float Length = std::max(Face.totalTime, BodyData.totalTime);
		const int32 SampleFrames = static_cast<int32>(std::floor(Length * 30.0f + 1e-4f)) + 1;
		const int32 Jaw = Face.CurveNames.IndexOfByKey(FString(TEXT("JawOpen")));
		const int32 Head = BodyData.BoneNames.IndexOfByKey(FString(TEXT("Head")));
		double JawSum = 0.0, JawPeak = 0.0;
		int64 Samples = 0;
		FJson Sampled = FJson::array();
		for (int32 Frame = 0; Frame < SampleFrames; ++Frame)
		{
			const float Time = static_cast<float>(Frame / 30.0);
			FJson Row;
			for (int32 Curve = 0; Curve < Face.Curves.Num(); ++Curve)
			{
				const float Value = Face.Curves[Curve].Evaluate(Time);
				++Samples;
				if (Curve == Jaw)
				{
					JawSum += Value;
					JawPeak = std::max<double>(JawPeak, Value);
					Row["JawOpen"] = Value;
				}
			}
			for (int32 Bone = 0; Bone < BodyData.BoneCurves.Num(); ++Bone)
			{
				const FQuat Q = BodyData.BoneCurves[Bone].Evaluate(Time, 0.0001f);
				++Samples;
				if (Bone == Head)
				{
					Row["Head"] = {Q.X, Q.Y, Q.Z, Q.W};
				}
			}
			if (Frame % 30 == 0)
			{
				FJson Timed = {{"time", Frame / 30.0}};
				Timed.update(Row);
				Sampled.push_back(Timed);
			}
		}
		Steps["sample"] = Progress.End(true);

		// The same clips for tools outside the engine, and a page to look at them with the sound.
		Progress.Begin("[+] body.bvh, face.csv and index.html");
		std::string ExportError;
		FZnPreviewInput Preview;
		Preview.Body = &BodyData;
		Preview.Face = &Face;
		Preview.Audio = AudioBytes;
		Preview.Title = Options.Text;
		if (!FZnBvhWriter::WriteFile(BodyData, (Dir / "body.bvh").string(), ExportError) ||
			!FZnFaceCsvWriter::WriteFile(Face, &BodyData, (Dir / "face.csv").string(), ExportError) ||
			!FZnPreviewPage::Write(Preview, Dir.string(), ExportError))
		{
			return Fail("export", ExportError);
		}
		Steps["export"] = Progress.End(true);

		// Summary.
		FZnPcmAudio Audio;
		std::string AudioError;
		const std::vector<uint8> WavBytes(AudioBytes.GetData(), AudioBytes.GetData() + AudioBytes.Num());
		const bool bAudioRead = ReadWav(WavBytes, Audio, AudioError);
		const double AudioSeconds = bAudioRead ? Audio.DurationSeconds() : 0.0;
		double Total = 0.0;
		for (const auto& Step : Steps.items())
		{
			Total += Step.value().get<double>();
		}
		FJson Summary = {{"text", Options.Text}, {"endpoint", Endpoint}, {"in_process", Service != nullptr},
			{"app_id", Options.AppId}, {"token", ShortToken(Token)},
			{"urls", {{"audio", ToUtf8(AudioUrl)}, {"face", ToUtf8(FaceUrl)}, {"body", ToUtf8(BodyUrl)}}},
			{"sizes", {{"audio", AudioBytes.Num()}, {"face", FaceText.size()}, {"body", BodyText.size()}}},
			{"durations", {{"audio", AudioSeconds}, {"face", Face.totalTime}, {"body", BodyData.totalTime}}},
			{"frames", {{"face", Face.CurveFrames[0].Num()}, {"body", BodyData.BoneFrames[0].Num()}}},
			{"curves", {{"face", Face.Curves.Num()}, {"bones", BodyData.BoneCurves.Num()}}}, {"samples", Samples},
			{"jaw_open", {{"mean", SampleFrames > 0 ? JawSum / SampleFrames : 0.0}, {"peak", JawPeak}}},
			{"sampled_every_second", Sampled}, {"seconds", Steps}, {"total_seconds", Total}};
		if (!bAudioRead)
		{
			Summary["audio_error"] = AudioError;
		}
		const std::string SummaryText = Summary.dump(2) + "\n";
		if (!WriteFile(Dir / "summary.json", SummaryText.data(), SummaryText.size()))
		{
			ZnPrint(Ctx.Err, "zn demo: step \"write\" failed: cannot write summary.json into \"%s\"\n",
				Options.OutputDir.c_str());
			return ZnExit::Failed;
		}

		ZnPrint(Ctx.Out, "\nSaid: \"%s\"\n", Options.Text.c_str());
		ZnPrint(Ctx.Out, "Service: %s%s\n", Endpoint.c_str(), Service ? " (in-process)" : "");
		ZnPrint(Ctx.Out, "Audio: %.2f s, %d bytes\n", AudioSeconds, AudioBytes.Num());
		ZnPrint(Ctx.Out, "Face:  %d frames, %d curves, %.2f s\n", Face.CurveFrames[0].Num(), Face.Curves.Num(),
			Face.totalTime);
		ZnPrint(Ctx.Out, "Body:  %d frames, %d bones, %.2f s\n", BodyData.BoneFrames[0].Num(),
			BodyData.BoneCurves.Num(), BodyData.totalTime);
		ZnPrint(Ctx.Out, "Sampled %lld values over %d frames; jaw open %.0f %% at most\n",
			static_cast<long long>(Samples), SampleFrames, JawPeak * 100.0);
		ZnPrint(Ctx.Out,
			"Wrote audio.wav, face.json, body.json, body.bvh, face.csv, index.html, summary.json to %s (%.2f s in "
			"all)\n",
			Options.OutputDir.c_str(), Total);
		if (Service)
		{
			Service->Stop();
		}
		return 0;
	}
};

ZnCommandRegistrar Registrar("demo", "Say a sentence and bring back its audio, face and body through the module",
	[](CLI::App& Cmd, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		auto Options = std::make_shared<FZnDemoOptions>();
		auto Seed = std::make_shared<uint64_t>(0);
		Cmd.add_option("text", Options->Text, "What to say (default: a short English greeting)");
		Cmd.add_option("-o,--output", Options->OutputDir,
			   "Folder for audio.wav, face.json, body.json, body.bvh, face.csv, index.html, summary.json")
			->capture_default_str();
		Cmd.add_option("--endpoint", Options->Endpoint,
			"Base URL of a running service (zn serve or a deployment) instead of the in-process one");
		Cmd.add_option("--appid", Options->AppId, "App id for the token")->capture_default_str();
		Cmd.add_option("--secret", Options->Secret, "App secret for the token")->capture_default_str();
		Cmd.add_option("--voice", Options->Voice, "Voice name sent as tts_voice_name (e.g. en-us)");
		CLI::Option* SpeedOption = Cmd.add_option("--speed", Options->Speed, "Speaking speed 0..100, 50 normal");
		SpeedOption->transform(ZnNumberOption("a whole number from 0 to 100", 0, 100, true));
		CLI::Option* SeedOption =
			Cmd.add_option(
				   "--seed", *Seed, "Seed of blinks, gaze and idle of the in-process service (ignored with --endpoint)")
				->transform(ZnNumberOption("a whole number from 0 to 2^53", 0, 9007199254740992.0, true));
		return [Options, Seed, SeedOption, &Ctx]()
		{
			if (SeedOption->count() > 0)
			{
				Options->Seed = *Seed;
			}
			const bool bLive = &Ctx.Out == &std::cout && isatty(STDOUT_FILENO);
			FZnDemoRun Run(*Options, Ctx, bLive);
			return Run.Run();
		};
	});
} // namespace
