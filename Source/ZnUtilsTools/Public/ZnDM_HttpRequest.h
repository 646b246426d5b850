// UZnDM_HttpRequest: the asynchronous HTTP request object scripts use to talk to the motion
// service. Created rooted in the transient package by CreateHttpRequest; removes itself from the
// root set when its completion has been delivered. All delegates fire on the game thread.
#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "ZnDM_HttpRequest.generated.h"

//~ The HTTP method of a request.
UENUM(BlueprintType)
enum class ZnDM_HttpVerb : uint8
{
	GET,
	POST
};

//~ requestRet: the engine reported success (any HTTP status counts); responseStr: the body, or an error text.
DECLARE_DYNAMIC_MULTICAST_DELEGATE_TwoParams(FOnRequestCompleted, bool, requestRet, const FString&, responseStr);

//~ One request at a time per call; an object may be reused after completion while the script references it.
UCLASS(BlueprintType, meta = (Category = "ZnDM_Functions|UtilsTools"))
class ZNUTILSTOOLS_API UZnDM_HttpRequest : public UObject
{
	GENERATED_BODY()

public:
	//~ Fired by the request operations with the response text.
	UPROPERTY(BlueprintAssignable, Category = "ZnDM_Functions|UtilsTools")
	FOnRequestCompleted OnCompleted;

	//~ Fired only by the app-token request.
	UPROPERTY(BlueprintAssignable, Category = "ZnDM_Functions|UtilsTools")
	FOnRequestCompleted OnGetAppTokenCompleted;

	//~ When true the object writes its diagnostic lines through the module logger.
	UPROPERTY()
	bool mPrintLog = false;

	//~ URL and body of the last request, shown in error logs.
	FString mUrl;
	FString mContent;
};
