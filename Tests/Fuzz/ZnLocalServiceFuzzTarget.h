// The fuzz target body for the local service's request handling, driven without sockets.
//
// Input: byte 0 picks the path (token by GET or POST, the three motion paths, the speech path, a
// hosted file named by the input, or a path taken from the input); byte 1's bits add a valid
// "access_token" header (bit 0), replace the query's "sign" with the true signature of its own
// appid, secret and timestamp (bit 1) and use the method PUT instead of GET/POST (bit 2). The rest
// is split at the first 0x01 byte into the query (or file name, or path) and the body.
//
// What must hold for any input: an answer's status is 200..599; a JSON answer is a JSON object
// whose "code" is non-zero exactly when the status is not 200 (the speech path's success is 200;
// the token path answers its refusals with 200 and a non-zero code, which then marks them);
// a motion success is read by the module's ParseJsonTmp and a speech success by
// TTS_ParseResponseJson; a file is served only under a plain name from the service's folder.
#pragma once

#include "Sha1.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnMotionContentSource.h"
#include "ZnServiceHandler.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>

namespace ZnLocalServiceFuzz
{
inline void Require(bool bCondition)
{
	if (!bCondition)
	{
		__builtin_trap();
	}
}

// The real clip generator and WAV writer, held to a few frames: the handling is under test here,
// and long clips would only slow the search down.
class FShortContent : public IZnContentSource
{
public:
	bool Speak(const FZnSpeechRequest& Request, FZnGeneratedMedia& Out, std::string& Error) override
	{
		if (FZnMotionContentSource::CountWords(Request.Text) == 0)
		{
			Error = "the text has no words to say";
			return false;
		}
		Out.Wav = {};
		FZnMotionContentSource::MakeClips(2, Request, Out);
		return true;
	}

	bool Animate(const std::vector<uint8_t>& Wav, const FZnSpeechRequest& Request, FZnGeneratedMedia& Out,
		std::string& Error) override
	{
		Out.Wav = Wav;
		FZnMotionContentSource::MakeClips(2, Request, Out);
		return true;
	}
};

struct FState
{
	FState()
	{
		Folder = std::filesystem::temp_directory_path() / ("zn-service-fuzz-" + std::to_string(getpid()));
		std::filesystem::create_directories(Folder);
		FZnLocalServiceConfig Config;
		Config.Folder = Folder.string();
		Config.Content = std::make_shared<FShortContent>();
		Handler = std::make_unique<FZnServiceHandler>(Config);
		Handler->SetBaseUrl("http://127.0.0.1:9");
		Handler->NowMilliseconds = [] { return int64_t(1700000000000); };
		// Never leave the process: a remote audio URL is refused before it is fetched anyway.
		Handler->FetchRemoteAudio = [](const std::string&, std::vector<uint8_t>&, std::string& Error)
		{
			Error = "no network while fuzzing";
			return false;
		};
		Token = Handler->IssueToken("demo", 3600);
		Handler->HostFile("seed.wav", {'R', 'I', 'F', 'F'});
	}

	~FState()
	{
		std::error_code Ignored;
		std::filesystem::remove_all(Folder, Ignored);
	}

	std::filesystem::path Folder;
	std::unique_ptr<FZnServiceHandler> Handler;
	std::string Token;
	uint64_t Runs = 0;
};

inline FState& State()
{
	static FState Instance;
	return Instance;
}

// The query with its "sign" value replaced by the signature of its own appid, secret and timestamp.
inline std::string Signed(const std::string& Query)
{
	const auto Value = [&Query](const std::string& Key)
	{
		const std::string Needle = Key + "=";
		size_t At = Query.rfind(Needle, 0) == 0 ? 0 : Query.find("&" + Needle);
		if (At == std::string::npos)
		{
			return std::string();
		}
		At += At == 0 ? Needle.size() : Needle.size() + 1;
		return Query.substr(At, Query.find('&', At) - At);
	};
	return "appid=" + Value("appid") + "&secret=" + Value("secret") + "&timestamp=" + Value("timestamp") +
		"&sign=" + Sha1::GetSha1(Value("appid"), Value("secret"), Value("timestamp"));
}

inline void Request(const uint8_t* Data, size_t Size)
{
	if (Size < 2)
	{
		return;
	}
	FState& Fuzz = State();
	const std::string Rest(reinterpret_cast<const char*>(Data) + 2, Size - 2);
	const size_t Split = Rest.find('\x01');
	const std::string Head = Rest.substr(0, Split);
	const std::string Body = Split == std::string::npos ? std::string() : Rest.substr(Split + 1);
	const uint8_t Flags = Data[1];

	static const char* const Paths[] = {"/users/getAppToken", "/v3.0/api/textBroadcastMotion",
		"/v3.1/api/voiceBroadcastMotion", "/v3.0/api/AnswerCollectMotion", FZnLocalService::SpeechPath,
		FZnLocalService::FilesPath, "", "/users/getAppToken"};
	const int Route = Data[0] % 8;
	FZnServiceRequest Request;
	Request.Method = (Flags & 4) ? "PUT" : Route == 0 || Route == 5 ? "GET" : "POST";
	Request.Path = Route == 6 ? Head : Route == 5 ? Paths[Route] + Head : Paths[Route];
	Request.Query = Route == 0 || Route == 7 ? ((Flags & 2) ? Signed(Head) : Head) : std::string();
	if (Flags & 1)
	{
		Request.Headers.push_back({"access_token", Fuzz.Token});
	}
	else if (Route >= 1 && Route <= 3)
	{
		Request.Headers.push_back({"access_token", Head});
	}
	Request.Body = Body;

	const FZnServiceAnswer Answer = Fuzz.Handler->Handle(Request);
	Require(Answer.Status >= 200 && Answer.Status <= 599);
	const bool bFile = Answer.ContentType != "application/json" ||
		(Request.Path.rfind(FZnLocalService::FilesPath, 0) == 0 && Answer.Status == 200);
	if (bFile)
	{
		Require(Answer.Status == 200);
		Require(FZnServiceHandler::IsPlainFileName(Request.Path.substr(strlen(FZnLocalService::FilesPath))));
	}
	else
	{
		const nlohmann::json Envelope = nlohmann::json::parse(Answer.Body, nullptr, false);
		Require(Envelope.is_object() && Envelope.contains("code") && Envelope["code"].is_number_integer());
		const int64_t Code = Envelope["code"].get<int64_t>();
		const bool bSpeech = Request.Path == FZnLocalService::SpeechPath;
		const bool bToken = Request.Path == "/users/getAppToken" && Request.Method != "PUT";
		Require((Answer.Status == 200) == (Code == (bSpeech ? 200 : 0)) || (bToken && Answer.Status == 200));
		if (Answer.Status == 200 && Route >= 1 && Route <= 3)
		{
			FString Audio, Face, BodyUrl, Text;
			Require(UZnDM_BpFuncLib::ParseJsonTmp(FString(UTF8_TO_TCHAR(Answer.Body.c_str())), FString(),
				ZnJsonDataType(Route == 2 ? 0
						: Route == 1	  ? 1
										  : 2),
				Audio, Face, BodyUrl, Text));
			Require(!Face.IsEmpty() && !BodyUrl.IsEmpty());
		}
		if (Answer.Status == 200 && bSpeech)
		{
			FString Audio, Face, BodyUrl;
			Require(UZnDM_BpFuncLib::TTS_ParseResponseJson(
				FString(UTF8_TO_TCHAR(Answer.Body.c_str())), Audio, BodyUrl, Face));
			Require(!Audio.IsEmpty());
		}
	}

	// Generated files pile up; clear them now and then.
	if (++Fuzz.Runs % 512 == 0)
	{
		std::error_code Ignored;
		for (const auto& Entry : std::filesystem::directory_iterator(Fuzz.Folder, Ignored))
		{
			if (Entry.path().filename() != "seed.wav")
			{
				std::filesystem::remove(Entry.path(), Ignored);
			}
		}
	}
}
} // namespace ZnLocalServiceFuzz
