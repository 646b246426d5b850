// UZnDM_HttpRequest_TTS: posts a speech-synthesis request and reports the three result URLs.
// Created rooted in the transient package; unrooted when its completion has been delivered.
#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "ZnDM_HttpRequest_TTS.generated.h"

//~ result: the service accepted the request; the URLs are empty when it did not.
DECLARE_DYNAMIC_MULTICAST_DELEGATE_FourParams(
	FOnRequestTTSCompleted, bool, result, const FString&, audioUrl, const FString&, faceUrl, const FString&, bodyUrl);

UCLASS(BlueprintType, meta = (Category = "ZnDM_Functions|UtilsTools"))
class ZNUTILSTOOLS_API UZnDM_HttpRequest_TTS : public UObject
{
	GENERATED_BODY()

public:
	//~ Fired once per request on the game thread.
	UPROPERTY(BlueprintAssignable, Category = "ZnDM_Functions|UtilsTools")
	FOnRequestTTSCompleted OnCompleted;

	//~ When true the completion summary is written through the module logger.
	bool mPrintLog = false;
};
