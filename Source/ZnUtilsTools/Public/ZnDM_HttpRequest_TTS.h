// UZnDM_HttpRequest_TTS: posts a speech-synthesis request and reports the three result URLs.
// Created rooted in the transient package; unrooted when its completion has been delivered (see
// UZnDM_HttpRequest for the lifetime rules). Game thread only.
#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"
#include "Interfaces/IHttpResponse.h"
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
	//~ A new object, rooted until its first completion.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static UZnDM_HttpRequest_TTS* CreateHttpRequest_TTS();

	//~ POSTs the speech body (speed, volume and pitch stay strings) with a 5 s timeout. Succeeds on
	//~ status 200..206 with a JSON "code" that truncates to 200 and a "data" object.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	void DoRequest(FString url, FString text, FString voiceName, FString speed, FString volume, FString pitch,
		FString gender, int32 tag, bool inShowDebug);

	//~ Fired once per request on the game thread.
	UPROPERTY(BlueprintAssignable, Category = "ZnDM_Functions|UtilsTools")
	FOnRequestTTSCompleted OnCompleted;

	//~ When true the completion summary is written through the module logger.
	bool mPrintLog = false;

private:
	void OnRequestCompleted(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful);
};
