// UZnDM_TTSHttpDownload: fetches the audio, face and body files of one utterance in parallel and
// reports them together once all three have finished. Created rooted in the transient package;
// unrooted when its completion has been delivered.
#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "ZnDM_TTSHttpDownload.generated.h"

//~ One flag and payload per file; a failed file has its flag false and an empty payload.
DECLARE_DYNAMIC_MULTICAST_DELEGATE_SixParams(FOnTtsDownloadCompleted, bool, audioRet, const TArray<uint8>&, audioBytes,
	bool, faceRet, const FString&, faceJson, bool, bodyRet, const FString&, bodyJson);

UCLASS(BlueprintType, meta = (Category = "ZnDM_Functions|ZNTools"))
class ZNUTILSTOOLS_API UZnDM_TTSHttpDownload : public UObject
{
	GENERATED_BODY()

public:
	//~ Fired once, when all three downloads have finished.
	UPROPERTY(BlueprintAssignable, Category = "ZnDM_Functions|ZNTools")
	FOnTtsDownloadCompleted OnCompleted;

	//~ Diagnostics switch.
	bool mPrintLog = false;

	//~ The three URLs of the last download.
	FString mAudioUrl;
	FString mFaceUrl;
	FString mBodyUrl;
};
