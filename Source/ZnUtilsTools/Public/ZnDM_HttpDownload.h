// UZnDM_HttpDownload: downloads one file, optionally saves it, and delivers it as text and bytes.
// Created rooted in the transient package; unrooted when its completion has been delivered (see
// UZnDM_HttpRequest for the lifetime rules). Writes no log lines. Game thread only.
// No timeout is set, so the transport's defaults apply: a dead peer fails the download after the
// inactivity limit, while a slow download that keeps receiving is never cut.
#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"
#include "Interfaces/IHttpResponse.h"
#include "UObject/Object.h"
#include "ZnDM_HttpDownload.generated.h"

//~ requestRet: received (and saved, if asked); responseStr: the content as text or an error text;
//~ responseBytes: the content, empty on failure.
DECLARE_DYNAMIC_MULTICAST_DELEGATE_ThreeParams(
	FOnDownloadCompleted, bool, requestRet, FString, responseStr, const TArray<uint8>&, responseBytes);

UCLASS(BlueprintType, meta = (Category = "ZnDM_Functions|UtilsTools"))
class ZNUTILSTOOLS_API UZnDM_HttpDownload : public UObject
{
	GENERATED_BODY()

public:
	//~ A new object, rooted until its first completion.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static UZnDM_HttpDownload* CreateHttpDownload();

	//~ GETs inURL; on status 200..206 writes the content to inSavePath first when inNeedSave
	//~ (creating missing directories, replacing an existing file).
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	void DoDownload(const FString& inURL, bool inNeedSave, FString inSavePath);

	//~ Fired once per download on the game thread.
	UPROPERTY(BlueprintAssignable, Category = "ZnDM_Functions|UtilsTools")
	FOnDownloadCompleted OnCompleted;

	//~ Whether the content is written to SavePath before delivery.
	UPROPERTY()
	bool NeedSave = false;

	//~ Full path of the file to write: directory, name and extension.
	UPROPERTY()
	FString SavePath;

private:
	void OnRequestCompleted(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful);
};
