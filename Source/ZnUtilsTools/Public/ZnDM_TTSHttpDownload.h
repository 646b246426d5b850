// UZnDM_TTSHttpDownload: fetches the audio, face and body files of one utterance in parallel and
// reports them together once all three have finished. Created rooted in the transient package;
// unrooted when its completion has been delivered (see UZnDM_HttpRequest for the lifetime rules).
// One object serves one download: a second DoDownload on the same object adds three more
// requests, starts all of them again and reports only when every one has finished.
// Game thread only.
#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"
#include "Interfaces/IHttpResponse.h"
#include "UObject/Object.h"
#include "ZnDM_TTSHttpDownload.generated.h"

//~ One flag and payload per file; a failed file has its flag false and an empty payload.
DECLARE_DYNAMIC_MULTICAST_DELEGATE_SixParams(FOnTtsDownloadCompleted, bool, audioRet, const TArray<uint8>&, audioBytes,
	bool, faceRet, const FString&, faceJson, bool, bodyRet, const FString&, bodyJson);

//~ One file of a download: which request it is, and what arrived for it.
struct FZnDownloadEntry
{
	FHttpRequestPtr Request;
	//~ The audio entry keeps bytes; the face and body entries keep text.
	bool IsBinary = false;
	bool Finished = false;
	bool Succeeded = false;
	TArray<uint8> Bytes;
	FString Text;
};

UCLASS(BlueprintType, meta = (Category = "ZnDM_Functions|ZNTools"))
class ZNUTILSTOOLS_API UZnDM_TTSHttpDownload : public UObject
{
	GENERATED_BODY()

public:
	//~ A new object, rooted until its download has completed.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|ZNTools")
	static UZnDM_TTSHttpDownload* CreateTTSHttpDownload();

	//~ GETs the three files at once, each with a 5 s timeout; a file counts on status 200..206.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|ZNTools")
	void DoDownload(FString audioUrl, FString faceUrl, FString bodyUrl, bool printLog = true);

	//~ Fired once, when all three downloads have finished.
	UPROPERTY(BlueprintAssignable, Category = "ZnDM_Functions|ZNTools")
	FOnTtsDownloadCompleted OnCompleted;

	//~ Diagnostics switch.
	bool mPrintLog = false;

	//~ The three URLs of the last download.
	FString mAudioUrl;
	FString mFaceUrl;
	FString mBodyUrl;

private:
	void OnRequestCompleted(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful);

	//~ Index 0 audio, 1 face, 2 body; appended to by every DoDownload, never cleared.
	TArray<FZnDownloadEntry> mEntries;
};
