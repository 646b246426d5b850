// UZnDM_HttpDownload: downloads one file, optionally saves it, and delivers it as text and bytes.
// Created rooted in the transient package; unrooted when its completion has been delivered.
#pragma once

#include "CoreMinimal.h"
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
	//~ Fired once per download on the game thread.
	UPROPERTY(BlueprintAssignable, Category = "ZnDM_Functions|UtilsTools")
	FOnDownloadCompleted OnCompleted;

	//~ Whether the content is written to SavePath before delivery.
	UPROPERTY()
	bool NeedSave = false;

	//~ Full path of the file to write: directory, name and extension.
	UPROPERTY()
	FString SavePath;
};
