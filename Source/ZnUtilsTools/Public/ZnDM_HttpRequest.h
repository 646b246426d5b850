// UZnDM_HttpRequest: the asynchronous HTTP request object scripts use to talk to the motion
// service and to get its access token.
//
// Lifetime: CreateHttpRequest makes the object in the transient package and adds it to the root
// set, so it survives garbage collection while its request is in flight even when the script
// holds no reference. The completion handler removes it from the root set; from then on the
// script's own references keep it. A later request on the same object works but does not root it
// again. The engine request is owned by the HTTP module until completion; the object is bound to
// it weakly, so a completion for an object that has been destroyed is dropped.
// Threads: call everything on the game thread; delegates fire there, from the HTTP tick.
#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"
#include "Interfaces/IHttpResponse.h"
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
	//~ A new object, rooted until its first completion.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static UZnDM_HttpRequest* CreateHttpRequest();

	//~ POSTs inRequestBody as JSON with a 5 s timeout. Any HTTP status counts as success.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	void DoRequest(const FString& inURL, const TArray<uint8>& inRequestBody, bool inShowDebug);

	//~ Sends content (UTF-8) as JSON with the token in the "access_token" header. timeout in seconds;
	//~ 0 or less leaves the transport's defaults.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	void DoRequestEasy(const FString& token, const FString& inURL, const FString& content, ZnDM_HttpVerb verb,
		bool printLog = true, int32 timeout = 5);

	//~ As DoRequestEasy with the caller's content type.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	void DoRequestForm(const FString& Application, const FString& token, const FString& inURL, const FString& content,
		ZnDM_HttpVerb verb, bool printLog = true, int32 timeout = 5);

	//~ Always POSTs contentUtf8 (verb and contentBytes are accepted and not used).
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	void DoRequestTest(const FString& inURL, ZnDM_HttpVerb verb, const TArray<uint8>& contentBytes,
		const FString& contentUtf8, const float& timeoutInSecond, bool inShowDebug);

	//~ Requests an access token with the signed query; the result arrives in OnGetAppTokenCompleted.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	void GetAppToken(const FString& inURL, const FString& appid, const FString& secret, ZnDM_HttpVerb verb,
		bool printLog = true, int32 timeout = 5);

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

private:
	// The sending part of DoRequestEasy and DoRequestForm: headers, URL, body, timeout, start.
	void SendWithToken(IHttpRequest& Request, const FString& ContentType, const FString& token, const FString& inURL,
		const FString& content, int32 timeout);
	void OnRequestCompleted(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful);
	void OnRequestAppTokenCompleted(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful);
};
