#include "ZnServiceHandler.h"

#include "Sha1.h"
#include "ZnAnswerRules.h"
#include "ZnServiceBodies.h"
#include "ZnTokenTable.h"
#include "ZnWav.h"

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <random>
#include <sstream>

namespace
{
using FJson = nlohmann::ordered_json;

const char* const TokenPath = "/users/getAppToken";
// A token client reads a refusal from the envelope of a 2xx answer and reports any other status by
// its number alone, so the token path refuses under 200 and lets the non-zero code say why.
constexpr int32_t TokenRefusalStatus = 200;
const char* const TextBroadcastPath = "/v3.0/api/textBroadcastMotion";
const char* const VoiceBroadcastPath = "/v3.1/api/voiceBroadcastMotion";
const char* const AnswerCollectPath = "/v3.0/api/AnswerCollectMotion";

// Audio longer than this is not animated (ten minutes is far beyond one utterance).
constexpr double LongestAudioSeconds = 600.0;

bool SameIgnoringCase(const std::string& A, const std::string& B)
{
	if (A.size() != B.size())
	{
		return false;
	}
	for (size_t Index = 0; Index < A.size(); ++Index)
	{
		if (std::tolower(static_cast<unsigned char>(A[Index])) != std::tolower(static_cast<unsigned char>(B[Index])))
		{
			return false;
		}
	}
	return true;
}

const std::string* FindHeader(const FZnServiceRequest& Request, const std::string& Name)
{
	for (const auto& Header : Request.Headers)
	{
		if (SameIgnoringCase(Header.first, Name))
		{
			return &Header.second;
		}
	}
	return nullptr;
}

// The token query's values, verbatim (the module sends them unescaped); the first of a repeated key wins.
bool FindQueryValue(const std::string& Query, const std::string& Key, std::string& Out)
{
	size_t Begin = 0;
	while (Begin <= Query.size())
	{
		size_t End = Query.find('&', Begin);
		if (End == std::string::npos)
		{
			End = Query.size();
		}
		const std::string Pair = Query.substr(Begin, End - Begin);
		const size_t Equals = Pair.find('=');
		if (Pair.substr(0, Equals) == Key)
		{
			Out = Equals == std::string::npos ? std::string() : Pair.substr(Equals + 1);
			return true;
		}
		Begin = End + 1;
	}
	return false;
}

std::string ContentTypeOf(const std::string& Name)
{
	const size_t Dot = Name.rfind('.');
	const std::string Extension = Dot == std::string::npos ? "" : Name.substr(Dot + 1);
	if (SameIgnoringCase(Extension, "wav"))
	{
		return "audio/wav";
	}
	if (SameIgnoringCase(Extension, "json"))
	{
		return "application/json";
	}
	return "application/octet-stream";
}

FZnServiceAnswer Success(FJson Envelope, int32_t Code)
{
	FZnServiceAnswer Answer;
	Answer.Body = Envelope.dump();
	Answer.Code = Code;
	Answer.Message = "success";
	return Answer;
}

bool DefaultFetch(const std::string& Url, int64_t MaxBytes, std::vector<uint8_t>& Out, std::string& Error)
{
	const size_t SchemeEnd = Url.find("://");
	if (SchemeEnd == std::string::npos ||
		(Url.compare(0, SchemeEnd, "http") != 0 && Url.compare(0, SchemeEnd, "https") != 0))
	{
		Error = "only http and https audio URLs can be fetched";
		return false;
	}
	const size_t PathStart = Url.find('/', SchemeEnd + 3);
	const std::string Origin = Url.substr(0, PathStart);
	const std::string Path = PathStart == std::string::npos ? "/" : Url.substr(PathStart);
	httplib::Client Client(Origin);
	Client.set_connection_timeout(5);
	Client.set_read_timeout(10);
	Client.set_follow_location(true);
	std::string Body;
	bool bTooLarge = false;
	const auto Result = Client.Get(Path.c_str(),
		[&](const char* Data, size_t Length)
		{
			if (int64_t(Body.size() + Length) > MaxBytes)
			{
				bTooLarge = true;
				return false;
			}
			Body.append(Data, Length);
			return true;
		});
	if (bTooLarge)
	{
		Error = "the audio is larger than " + std::to_string(MaxBytes) + " bytes";
		return false;
	}
	if (!Result)
	{
		Error = "fetching the audio failed: " + httplib::to_string(Result.error());
		return false;
	}
	if (Result->status < 200 || Result->status > 299)
	{
		Error = "fetching the audio answered HTTP " + std::to_string(Result->status);
		return false;
	}
	Out.assign(Body.begin(), Body.end());
	return true;
}
} // namespace

struct FZnServiceHandler::FImpl
{
	FZnLocalServiceConfig Config;
	std::filesystem::path Folder;
	FZnTokenTable Tokens;
	mutable std::mutex BaseUrlMutex;
	std::string BaseUrl;
	// Content sources need not be thread-safe (a speech engine rarely is): one call at a time.
	std::mutex ContentMutex;
	std::atomic<uint64_t> NextMediaId{1};
	std::string MediaPrefix;

	std::string FileUrl(const std::string& Name) const
	{
		std::lock_guard<std::mutex> Lock(BaseUrlMutex);
		return BaseUrl + FZnLocalService::FilesPath + Name;
	}
};

FZnServiceHandler::FZnServiceHandler(FZnLocalServiceConfig Config)
	: Impl(std::make_unique<FImpl>())
{
	Impl->Config = std::move(Config);
	if (Impl->Config.Apps.empty())
	{
		Impl->Config.Apps.push_back({"demo", "demo-secret"});
	}
	Impl->Folder = Impl->Config.Folder;
	// Generated names differ between runs, so a kept folder never serves an old clip under a new URL.
	std::random_device Device;
	char Prefix[16];
	std::snprintf(Prefix, sizeof(Prefix), "%08x", unsigned(Device()));
	Impl->MediaPrefix = Prefix;
	NowMilliseconds = [] { return int64_t(Sha1::getUnix()); };
	const int64_t MaxAudioBytes = Impl->Config.MaxAudioBytes;
	FetchRemoteAudio = [MaxAudioBytes](const std::string& Url, std::vector<uint8_t>& Out, std::string& Error)
	{ return DefaultFetch(Url, MaxAudioBytes, Out, Error); };
}

FZnServiceHandler::~FZnServiceHandler() = default;

void FZnServiceHandler::SetBaseUrl(const std::string& BaseUrl)
{
	std::lock_guard<std::mutex> Lock(Impl->BaseUrlMutex);
	Impl->BaseUrl = BaseUrl;
}

std::string FZnServiceHandler::BaseUrl() const
{
	std::lock_guard<std::mutex> Lock(Impl->BaseUrlMutex);
	return Impl->BaseUrl;
}

FZnServiceAnswer FZnServiceHandler::Refusal(int32_t Status, EZnServiceCode Code, const std::string& Message)
{
	FZnServiceAnswer Answer;
	Answer.Status = Status;
	Answer.Code = int32_t(Code);
	Answer.Message = Message;
	// Invalid UTF-8 from a request (a file name, say) is replaced rather than refused by the writer.
	Answer.Body =
		FJson{{"code", int32_t(Code)}, {"msg", Message}}.dump(-1, ' ', false, FJson::error_handler_t::replace);
	return Answer;
}

bool FZnServiceHandler::IsPlainFileName(const std::string& Name)
{
	if (Name.empty() || Name.size() > 128 || Name[0] == '.')
	{
		return false;
	}
	for (char C : Name)
	{
		if (!std::isalnum(static_cast<unsigned char>(C)) && C != '.' && C != '-' && C != '_')
		{
			return false;
		}
	}
	return true;
}

std::string FZnServiceHandler::HostFile(const std::string& Name, const std::vector<uint8_t>& Bytes)
{
	if (!IsPlainFileName(Name))
	{
		return "";
	}
	// Written aside and renamed, so a download running meanwhile sees the old file or the new one, whole.
	static std::atomic<uint64_t> Sequence{0};
	const std::filesystem::path Final = Impl->Folder / Name;
	const std::filesystem::path Partial = Impl->Folder / (".part-" + std::to_string(++Sequence) + "-" + Name);
	{
		std::ofstream Out(Partial, std::ios::binary | std::ios::trunc);
		Out.write(reinterpret_cast<const char*>(Bytes.data()), std::streamsize(Bytes.size()));
		if (!Out)
		{
			std::error_code Ignored;
			std::filesystem::remove(Partial, Ignored);
			return "";
		}
	}
	std::error_code Failure;
	std::filesystem::rename(Partial, Final, Failure);
	if (Failure)
	{
		std::filesystem::remove(Partial, Failure);
		return "";
	}
	return Impl->FileUrl(Name);
}

std::string FZnServiceHandler::IssueToken(const std::string& AppId, int32_t LifetimeSeconds)
{
	const int64_t Now = NowMilliseconds();
	const int64_t Lifetime = LifetimeSeconds < 0 ? Impl->Config.TokenLifetimeSeconds : LifetimeSeconds;
	return Impl->Tokens.Issue(AppId, Now + Lifetime * 1000, Now);
}

// The paths' own handlers, with the handler's state; kept out of the header.
struct FZnServiceRoutes
{
	FZnServiceHandler& Handler;
	FZnServiceHandler::FImpl& Impl;

	FZnServiceAnswer Token(const FZnServiceRequest& Request)
	{
		std::string Values[4];
		static const char* const Keys[4] = {"appid", "secret", "timestamp", "sign"};
		for (int Index = 0; Index < 4; ++Index)
		{
			if (!FindQueryValue(Request.Query, Keys[Index], Values[Index]))
			{
				return FZnServiceHandler::Refusal(TokenRefusalStatus, EZnServiceCode::MissingParameter,
					std::string("missing query parameter \"") + Keys[Index] +
						"\" (the token query is appid, secret, timestamp and sign)");
			}
		}
		const std::string& AppId = Values[0];
		const std::string& Secret = Values[1];
		const std::string& Timestamp = Values[2];
		const std::string& Sign = Values[3];

		const FZnLocalServiceApp* App = nullptr;
		for (const FZnLocalServiceApp& Candidate : Impl.Config.Apps)
		{
			if (Candidate.AppId == AppId)
			{
				App = &Candidate;
				break;
			}
		}
		if (!App)
		{
			return FZnServiceHandler::Refusal(
				TokenRefusalStatus, EZnServiceCode::UnknownApp, "unknown appid \"" + AppId + "\"");
		}
		if (App->Secret != Secret)
		{
			return FZnServiceHandler::Refusal(
				TokenRefusalStatus, EZnServiceCode::WrongSecret, "wrong secret for appid \"" + AppId + "\"");
		}
		int64_t Milliseconds = 0;
		const char* End = Timestamp.data() + Timestamp.size();
		const auto Parsed = std::from_chars(Timestamp.data(), End, Milliseconds);
		const bool bDigitsOnly = Timestamp.find_first_not_of("0123456789") == std::string::npos;
		if (Timestamp.empty() || !bDigitsOnly || Parsed.ec != std::errc() || Parsed.ptr != End)
		{
			return FZnServiceHandler::Refusal(TokenRefusalStatus, EZnServiceCode::BadTimestamp,
				"timestamp \"" + Timestamp + "\" is not a decimal count of milliseconds since 1970");
		}
		const std::string Expected = Sha1::GetSha1(AppId, Secret, Timestamp);
		if (Sign != Expected)
		{
			return FZnServiceHandler::Refusal(TokenRefusalStatus, EZnServiceCode::BadSignature,
				"bad signature: sign must be the SHA-1 of appid, timestamp and secret concatenated");
		}
		const int64_t Now = Handler.NowMilliseconds();
		const int64_t ToleranceMs = int64_t(Impl.Config.TimestampToleranceSeconds) * 1000;
		// Subtraction in unsigned arithmetic cannot overflow for any pair of timestamps.
		const uint64_t Distance =
			Milliseconds > Now ? uint64_t(Milliseconds) - uint64_t(Now) : uint64_t(Now) - uint64_t(Milliseconds);
		if (Distance > uint64_t(ToleranceMs))
		{
			return FZnServiceHandler::Refusal(TokenRefusalStatus, EZnServiceCode::StaleTimestamp,
				"stale timestamp: " + std::to_string(Distance / 1000) + " s " +
					(Milliseconds > Now ? "ahead of" : "behind") + " the service's clock, more than the " +
					std::to_string(Impl.Config.TimestampToleranceSeconds) + " s allowed");
		}
		const std::string Token = Handler.IssueToken(AppId, -1);
		return Success(FJson{{"code", 0}, {"msg", "success"},
						   {"data", {{"access_token", Token}, {"expires_in", Impl.Config.TokenLifetimeSeconds}}}},
			0);
	}

	// Null when the request carries a valid token; the refusal otherwise.
	bool CheckToken(const FZnServiceRequest& Request, FZnServiceAnswer& OutRefusal)
	{
		const std::string* Token = FindHeader(Request, "access_token");
		if (!Token || Token->empty())
		{
			OutRefusal = FZnServiceHandler::Refusal(401, EZnServiceCode::MissingToken,
				std::string("missing \"access_token\" header: get a token from ") + TokenPath + " first");
			return false;
		}
		int64_t ExpiredForMs = 0;
		switch (Impl.Tokens.Check(*Token, Handler.NowMilliseconds(), ExpiredForMs))
		{
			case EZnTokenCheck::Unknown:
				OutRefusal = FZnServiceHandler::Refusal(
					401, EZnServiceCode::UnknownToken, "the access token is not one this service issued");
				return false;
			case EZnTokenCheck::Expired:
				OutRefusal = FZnServiceHandler::Refusal(401, EZnServiceCode::ExpiredToken,
					"the access token expired " + std::to_string(ExpiredForMs / 1000) + " s ago; get a new one");
				return false;
			default:
				return true;
		}
	}

	// Hosts the three files of Media; false (with the refusal) when the folder cannot take them.
	bool HostMedia(const FZnGeneratedMedia& Media, std::string Urls[3], FZnServiceAnswer& OutRefusal)
	{
		char Stem[48];
		std::snprintf(Stem, sizeof(Stem), "%s-%06llu", Impl.MediaPrefix.c_str(),
			static_cast<unsigned long long>(Impl.NextMediaId++));
		Urls[0] = Handler.HostFile(std::string(Stem) + "-audio.wav", Media.Wav);
		Urls[1] = Handler.HostFile(
			std::string(Stem) + "-face.json", std::vector<uint8_t>(Media.FaceJson.begin(), Media.FaceJson.end()));
		Urls[2] = Handler.HostFile(
			std::string(Stem) + "-body.json", std::vector<uint8_t>(Media.BodyJson.begin(), Media.BodyJson.end()));
		if (Urls[0].empty() || Urls[1].empty() || Urls[2].empty())
		{
			OutRefusal = FZnServiceHandler::Refusal(
				500, EZnServiceCode::ContentFailed, "the generated files could not be written to the service's folder");
			return false;
		}
		return true;
	}

	bool Speak(const FZnSpeechRequest& Speech, FZnGeneratedMedia& Media, FZnServiceAnswer& OutRefusal)
	{
		std::string Error;
		bool bMade;
		{
			std::lock_guard<std::mutex> Lock(Impl.ContentMutex);
			bMade = Impl.Config.Content->Speak(Speech, Media, Error);
		}
		if (!bMade)
		{
			OutRefusal =
				FZnServiceHandler::Refusal(422, EZnServiceCode::ContentFailed, "no speech could be made: " + Error);
		}
		return bMade;
	}

	static FJson MotionData(const std::string Urls[3], double Duration)
	{
		return FJson{{"ttsSynthesizeData", {{"audio_url", Urls[0]}, {"duration", Duration}}},
			{"allfaceData", {{"oss_url", Urls[1]}}}, {"motionFusionedData", {{"oss_url", Urls[2]}}}};
	}

	using FBodyReaderFunction = bool (*)(const std::string&, FZnSpeechRequest&, std::string&);

	// Reads a body that carries a text to say, lets Reword change the text, speaks it and hosts the
	// three files. False with the refusal in OutAnswer.
	template <typename RewordType>
	bool SpeakBody(const FZnServiceRequest& Request, FBodyReaderFunction Read, RewordType Reword,
		FZnSpeechRequest& Speech, FZnGeneratedMedia& Media, std::string Urls[3], FZnServiceAnswer& OutAnswer)
	{
		std::string Error;
		if (!Read(Request.Body, Speech, Error))
		{
			OutAnswer = FZnServiceHandler::Refusal(400, EZnServiceCode::MalformedBody, "malformed body: " + Error);
			return false;
		}
		Reword(Speech);
		return Speak(Speech, Media, OutAnswer) && HostMedia(Media, Urls, OutAnswer);
	}

	FZnServiceAnswer TextBroadcast(const FZnServiceRequest& Request)
	{
		FZnSpeechRequest Speech;
		FZnGeneratedMedia Media;
		FZnServiceAnswer Answer;
		std::string Urls[3];
		if (!SpeakBody(
				Request, &FZnServiceBodies::ReadTextBroadcast, [](FZnSpeechRequest&) {}, Speech, Media, Urls, Answer))
		{
			return Answer;
		}
		return Success(FJson{{"code", 0}, {"msg", "success"}, {"data", MotionData(Urls, Media.DurationSeconds)}}, 0);
	}

	FZnServiceAnswer AnswerCollect(const FZnServiceRequest& Request)
	{
		FZnSpeechRequest Speech;
		FZnGeneratedMedia Media;
		FZnServiceAnswer Answer;
		std::string Urls[3];
		const auto Reply = [](FZnSpeechRequest& Question) { Question.Text = FZnAnswerRules::Reply(Question.Text); };
		if (!SpeakBody(Request, &FZnServiceBodies::ReadAnswerCollect, Reply, Speech, Media, Urls, Answer))
		{
			return Answer;
		}
		FJson Data = MotionData(Urls, Media.DurationSeconds);
		Data["answerDmeasyData"] = {{"answer", Speech.Text}};
		return Success(FJson{{"code", 0}, {"msg", "success"}, {"data", Data}}, 0);
	}

	// The bytes of the audio a voice request names: a hosted file, or (when allowed) a remote one.
	bool FetchAudio(const std::string& Url, std::vector<uint8_t>& Out, FZnServiceAnswer& OutRefusal)
	{
		const std::string HostedPrefix = Handler.BaseUrl() + FZnLocalService::FilesPath;
		if (Url.compare(0, HostedPrefix.size(), HostedPrefix) == 0)
		{
			std::string Name = Url.substr(HostedPrefix.size());
			Name = Name.substr(0, Name.find_first_of("?#"));
			std::string Bytes;
			if (!FZnServiceHandler::IsPlainFileName(Name) || !ReadHosted(Name, Bytes))
			{
				OutRefusal = FZnServiceHandler::Refusal(422, EZnServiceCode::AudioUnavailable,
					"audio_url names no file this service hosts: \"" + Name + "\"");
				return false;
			}
			Out.assign(Bytes.begin(), Bytes.end());
			return true;
		}
		if (!Impl.Config.bAllowRemoteAudio)
		{
			OutRefusal = FZnServiceHandler::Refusal(403, EZnServiceCode::AudioRefused,
				"audio_url is not a file this service hosts, and remote audio is off (allow it with "
				"--allow-remote-audio)");
			return false;
		}
		std::string Error;
		if (!Handler.FetchRemoteAudio(Url, Out, Error))
		{
			OutRefusal = FZnServiceHandler::Refusal(
				422, EZnServiceCode::AudioUnavailable, "the audio could not be fetched: " + Error);
			return false;
		}
		return true;
	}

	FZnServiceAnswer VoiceBroadcast(const FZnServiceRequest& Request)
	{
		FZnSpeechRequest Speech;
		std::string AudioUrl;
		std::string Error;
		if (!FZnServiceBodies::ReadVoiceBroadcast(Request.Body, AudioUrl, Speech, Error))
		{
			return FZnServiceHandler::Refusal(400, EZnServiceCode::MalformedBody, "malformed body: " + Error);
		}
		std::vector<uint8_t> Audio;
		FZnServiceAnswer Refusal;
		if (!FetchAudio(AudioUrl, Audio, Refusal))
		{
			return Refusal;
		}
		FZnWavInfo Info;
		if (!FZnWav::ReadInfo(Audio.data(), Audio.size(), Info, Error))
		{
			return FZnServiceHandler::Refusal(
				422, EZnServiceCode::AudioNotWav, "the audio cannot be animated: " + Error);
		}
		if (Info.DurationSeconds() > LongestAudioSeconds)
		{
			return FZnServiceHandler::Refusal(422, EZnServiceCode::ContentFailed,
				"the audio lasts " + std::to_string(int64_t(Info.DurationSeconds())) +
					" s; at most 600 s are animated");
		}
		FZnGeneratedMedia Media;
		bool bMade;
		{
			std::lock_guard<std::mutex> Lock(Impl.ContentMutex);
			bMade = Impl.Config.Content->Animate(Audio, Speech, Media, Error);
		}
		if (!bMade)
		{
			return FZnServiceHandler::Refusal(
				422, EZnServiceCode::AudioNotWav, "the audio cannot be animated: " + Error);
		}
		std::string Urls[3];
		if (!HostMedia(Media, Urls, Refusal))
		{
			return Refusal;
		}
		// The caller's own audio is what plays; the copy hosted beside the clips is not named.
		Urls[0] = AudioUrl;
		return Success(FJson{{"code", 0}, {"msg", "success"}, {"data", MotionData(Urls, Media.DurationSeconds)}}, 0);
	}

	FZnServiceAnswer Speech(const FZnServiceRequest& Request)
	{
		FZnSpeechRequest Speech;
		FZnGeneratedMedia Media;
		FZnServiceAnswer Answer;
		std::string Urls[3];
		if (!SpeakBody(
				Request, &FZnServiceBodies::ReadSpeech, [](FZnSpeechRequest&) {}, Speech, Media, Urls, Answer))
		{
			return Answer;
		}
		return Success(FJson{{"code", 200}, {"msg", "success"},
						   {"data",
							   {{"url", Urls[0]}, {"faceUrl", Urls[1]}, {"bodyUrl", Urls[2]},
								   {"duration", Media.DurationSeconds}}}},
			200);
	}

	bool ReadHosted(const std::string& Name, std::string& Out) const
	{
		std::ifstream In(Impl.Folder / Name, std::ios::binary);
		if (!In || std::filesystem::is_directory(Impl.Folder / Name))
		{
			return false;
		}
		std::ostringstream Buffer;
		Buffer << In.rdbuf();
		Out = Buffer.str();
		return true;
	}

	FZnServiceAnswer File(const std::string& Name)
	{
		if (!FZnServiceHandler::IsPlainFileName(Name))
		{
			return FZnServiceHandler::Refusal(400, EZnServiceCode::BadFileName,
				"not a plain file name: \"" + Name + "\" (letters, digits, '.', '-' and '_', not starting with '.')");
		}
		FZnServiceAnswer Answer;
		if (!ReadHosted(Name, Answer.Body))
		{
			return FZnServiceHandler::Refusal(404, EZnServiceCode::FileNotFound, "no hosted file \"" + Name + "\"");
		}
		Answer.ContentType = ContentTypeOf(Name);
		Answer.Message = Name;
		return Answer;
	}
};

FZnServiceAnswer FZnServiceHandler::Handle(const FZnServiceRequest& Request)
{
	FZnServiceRoutes Routes{*this, *Impl};
	const bool bGetOrPost = Request.Method == "GET" || Request.Method == "POST";
	const auto NotAllowed = [&Request](const char* Allowed)
	{
		FZnServiceAnswer Answer = Refusal(405, EZnServiceCode::MethodNotAllowed,
			"method " + Request.Method + " is not allowed on " + Request.Path + " (use " + Allowed + ")");
		return Answer;
	};

	const std::string& Path = Request.Path;
	const std::string Files = FZnLocalService::FilesPath;
	if (Path.compare(0, Files.size(), Files) == 0)
	{
		if (Request.Method != "GET" && Request.Method != "HEAD")
		{
			return NotAllowed("GET");
		}
		return Routes.File(Path.substr(Files.size()));
	}
	if (Path == TokenPath)
	{
		return bGetOrPost ? Routes.Token(Request) : NotAllowed("GET or POST");
	}
	if (Path == FZnLocalService::SpeechPath)
	{
		return bGetOrPost ? Routes.Speech(Request) : NotAllowed("POST");
	}
	const bool bMotion = Path == TextBroadcastPath || Path == VoiceBroadcastPath || Path == AnswerCollectPath;
	if (!bMotion)
	{
		return Refusal(404, EZnServiceCode::UnknownPath, "unknown path \"" + Path + "\"");
	}
	if (!bGetOrPost)
	{
		return NotAllowed("POST");
	}
	FZnServiceAnswer TokenRefusal;
	if (!Routes.CheckToken(Request, TokenRefusal))
	{
		return TokenRefusal;
	}
	if (Path == TextBroadcastPath)
	{
		return Routes.TextBroadcast(Request);
	}
	if (Path == VoiceBroadcastPath)
	{
		return Routes.VoiceBroadcast(Request);
	}
	return Routes.AnswerCollect(Request);
}
