// The script surface of the module: every function a Blueprint graph calls is a static member
// of UZnDM_BpFuncLib. Each one is a thin entry point; the work lives in the native class named
// in its section, so the logic can be tested and benchmarked without going through scripts.
#pragma once

#include "CoreMinimal.h"
#include "Kismet/BlueprintFunctionLibrary.h"
#include "ZnServiceHosts.h"
#include "ZnBodyData.h"
#include "ZnFaceData.h"
#include "ZnDM_BpFuncLib.generated.h"

// Whether GetDir returns a directory absolute or as the engine gives it.
UENUM()
enum class ZnDM_PathType : uint8
{
	Complete,
	Relative
};

// An engine directory that GetDir can return.
UENUM()
enum class ZnDM_PathName : uint8
{
	ProjectDir,
	ProjectContentDir,
	ProjectConfigDir,
	ProjectPluginsDir,
	ExeDir
};

// The text form of GetCurSystemDateTime: a log line header or a file-name-safe stamp.
UENUM(BlueprintType)
enum class ZnDM_DateTimePurpose : uint8
{
	LogHeader,
	FileName
};

// A statistics overlay that ShowOrHideStat toggles.
UENUM(BlueprintType)
enum class ZnDM_StatType : uint8
{
	Fps,
	Unit,
	UnitGraph,
	Engine,
	Game,
	SceneRendering,
	Rhi,
	Gpu
};

// The kind of motion request whose response ParseJsonTmp reads.
UENUM(BlueprintType)
enum class ZnJsonDataType : uint8
{
	VoiceBroadcast,
	TextBroadcast,
	AnswerCollect
};

//国内、国外
UENUM(BlueprintType)
enum class ZnRegion : uint8
{
	EN_US,
	ZH_CN
};

// The default endpoint of every service per region. The hosts come from ZnServiceHosts.h.
USTRUCT(BlueprintType)
struct ZNUTILSTOOLS_API FZnAPIConfig
{
	GENERATED_BODY()

	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora|EN")
	FString TokenAPI_EN_US = TEXT(ZN_SERVICE_URL_INTERNATIONAL) TEXT("/users/getAppToken");

	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	FString TokenAPI_ZH_CN = TEXT(ZN_SERVICE_URL_CHINA) TEXT("/users/getAppToken");

	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	FString TextBroadcastMotionAPI_EN_US = TEXT(ZN_SERVICE_URL_INTERNATIONAL) TEXT("/v3.0/api/textBroadcastMotion");

	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	FString TextBroadcastMotionAPI_ZH_CN = TEXT(ZN_SERVICE_URL_CHINA) TEXT("/v3.0/api/textBroadcastMotion");

	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	FString VoiceBroadcastMotionAPI_EN_US = TEXT(ZN_SERVICE_URL_INTERNATIONAL) TEXT("/v3.1/api/voiceBroadcastMotion");

	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	FString VoiceBroadcastMotionAPI_ZH_CN = TEXT(ZN_SERVICE_URL_CHINA) TEXT("/v3.1/api/voiceBroadcastMotion");

	// Answer collection has no international endpoint.
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	FString AnswerCollectAPI_EN_US;

	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	FString AnswerCollectAPI_ZH_CN = TEXT(ZN_SERVICE_URL_CHINA) TEXT("/v3.0/api/AnswerCollectMotion");
};

UCLASS()
class ZNUTILSTOOLS_API UZnDM_BpFuncLib : public UBlueprintFunctionLibrary
{
	GENERATED_BODY()

public:
	// ---- Body and face motion decoding (ZnBodyDataDecoder, ZnFaceDataDecoder) ----

	// ---- Request bodies and service responses (ZnRequestBodies, ZnServiceResponses) ----

	// ---- Signing and bytes (Sha1) ----

	// ---- Logging and debugging (ZnDM_Log) ----

	// ---- Files, paths, time and threads (ZnFileTools, ZnTimeTools) ----

	// ---- Engine controls (ZnEngineControls) ----

	// ---- Script binding examples ----

	// Shows a by-reference parameter in scripts: str comes back as "hello UPARAM(ref)".
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Test")
	static void TestUParamRef(UPARAM(ref) FString& str, FString& otherStr);
};
