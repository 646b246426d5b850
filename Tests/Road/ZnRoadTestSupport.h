// Shared pieces of the request-object tests: a listener object that records every delegate call,
// a running local service, and helpers to wait for completions and read the module's log file.
#pragma once

#include "CoreMinimal.h"
#include "HttpManager.h"
#include "HttpModule.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/StrongObjectPtr.h"
#include "UObject/UObjectGlobals.h"
#include "ZnDM_HttpDownload.h"
#include "ZnDM_HttpRequest.h"
#include "ZnDM_HttpRequest_TTS.h"
#include "ZnDM_TTSHttpDownload.h"
#include "ZnLocalService.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

// Records what each of the four delegate kinds delivered, in order.
class UZnRoadListener : public UObject
{
	DECLARE_CLASS_INTRINSIC(UZnRoadListener, UObject, CLASS_None, TEXT("/Script/ZnRoadTests"))
public:
	struct FText
	{
		bool bOk = false;
		FString Text;
	};
	struct FUrls
	{
		bool bOk = false;
		FString Audio, Face, Body;
	};
	struct FFile
	{
		bool bOk = false;
		FString Text;
		TArray<uint8> Bytes;
	};
	struct FThreeFiles
	{
		bool bAudio = false;
		TArray<uint8> Audio;
		bool bFace = false;
		FString Face;
		bool bBody = false;
		FString Body;
	};

	std::vector<FText> Requests;
	std::vector<FText> Tokens;
	std::vector<FUrls> Speech;
	std::vector<FFile> Files;
	std::vector<FThreeFiles> Downloads;

	void OnRequest(bool requestRet, const FString& responseStr) { Requests.push_back({requestRet, responseStr}); }
	void OnToken(bool requestRet, const FString& responseStr) { Tokens.push_back({requestRet, responseStr}); }
	void OnSpeech(bool result, const FString& audioUrl, const FString& faceUrl, const FString& bodyUrl)
	{
		Speech.push_back({result, audioUrl, faceUrl, bodyUrl});
	}
	void OnFile(bool requestRet, FString responseStr, const TArray<uint8>& responseBytes)
	{
		Files.push_back({requestRet, responseStr, responseBytes});
	}
	void OnThreeFiles(bool audioRet, const TArray<uint8>& audioBytes, bool faceRet, const FString& faceJson,
		bool bodyRet, const FString& bodyJson)
	{
		Downloads.push_back({audioRet, audioBytes, faceRet, faceJson, bodyRet, bodyJson});
	}
};

// A started local service (demo app) for one test; Service is null when it could not start.
struct FZnRoadService
{
	std::unique_ptr<FZnLocalService> Service;

	explicit FZnRoadService(FZnLocalServiceConfig Config = {});
	std::string Url(const std::string& Path) const { return Service->BaseUrl() + Path; }
	FString UrlText(const std::string& Path) const { return FString(UTF8_TO_TCHAR(Url(Path).c_str())); }
};

// Ticks the HTTP manager until Done holds (true) or Seconds pass (false).
bool ZnRoadTickUntil(const std::function<bool()>& Done, double Seconds = 20.0);

FString ZnText(const std::string& Utf8);
std::string ZnUtf8(const FString& Text);
std::string ZnBytes(const TArray<uint8>& Bytes);
TArray<uint8> ZnByteArray(const std::string& Bytes);

// The lines the module logger appends to "dm_ue.txt" in the working directory from now on,
// without their time stamps.
class FZnLogFileWatch
{
public:
	FZnLogFileWatch();
	std::vector<std::string> NewLines() const;

private:
	long long StartSize = 0;
};

// A listener kept alive for the test; the objects under test bind their delegates to it.
struct FZnRoadTest : ::testing::Test
{
	TStrongObjectPtr<UZnRoadListener> Listener{NewObject<UZnRoadListener>(GetTransientPackage())};
};
