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

	//~ All decoders replace the whole output record (including id) when they succeed and leave
	//~ it, and every other output, exactly as it was for an empty or unparsable text. Times are
	//~ seconds at 30 frames per second; positions centimetres; face weights 0..1. Game thread.
	//~ The V2 Begin/frame/End functions share one module-wide stream: one stream at a time.
	//~ docs/decoding.md lists every rule and the handling of malformed input.

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToBodydata(const FString& jsonStr, FZnBodyData& bodyData);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToBodydataRecommend(const FString& jsonStr, UPARAM(ref) FZnBodyData& bodyData, float& totalTime);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void BeginParseJsonToBodydataV2();

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToBodydataV2(const FString& jsonStr, TArray<FString> SkeletonNoHand);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void EndParseJsonToBodydataV2(FZnBodyData& outBodyData, float& outTotalTime);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToBodydataV2Response(const FString& jsonStr, TArray<FString> SkeletonNoHand, FZnBodyData& outBodyData, float& outTotalTime);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToFacedata(const FString& jsonStr, FZnFaceData& faceData);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToFacedataRecommend(const FString& jsonStr, UPARAM(ref) FZnFaceData& faceData, float& totalTime);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void BeginParseJsonToFacedataV2();

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToFacedataV2(const FString& jsonStr);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void EndParseJsonToFacedataV2(FZnFaceData& outBodyData, float& outTotalTime);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToFacedataV2Response(const FString& jsonStr, FZnFaceData& outBodyData, float& outTotalTime);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToFaceControlRigData(const FString& jsonStr, FZnFaceData& faceData);

	// ---- Request bodies and service responses (ZnRequestBodies, ZnServiceResponses) ----

	// The Make... functions return the body of one service request as pretty-printed JSON text,
	// ready to post unchanged; parameters that a body does not carry are accepted and ignored.
	// The Parse... functions read a service response; on failure they return false (or "") and
	// leave every output as it was, so callers that must tell a missing value from a left-over
	// one clear the outputs first. All are pure and callable from any thread.

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Tmp")
	static FString MakeJsonTextBroadcastMotion(const FString& draft_content, const FString& audio_format = TEXT("wav"),
		const FString& tts_voice_name = TEXT("aixia"), int32 tts_speed = 50, int32 tts_volume = 50, int32 tts_fm = 50,
		int32 face_type = 1, const FString& face_gender = TEXT("male"), int32 face_tag = 0, int32 body_motion = 0,
		int32 body_filter_window = 15, int32 body_filter_order = 3, bool body_fixed_hips = false,
		int32 body_head_x_rot = 0, bool body_compress = false);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Tmp")
	static FString MakeJsonAnswerCollectMotion(const FString& text, const FString& audio_format = TEXT("wav"),
		const FString& tts_voice_name = TEXT("aixia"), int32 tts_speed = 50, int32 tts_volume = 50, int32 tts_fm = 50,
		int32 face_type = 1, const FString& face_gender = TEXT("male"), int32 face_tag = 0, int32 body_motion = 0,
		int32 body_filter_window = 15, int32 body_filter_order = 3, bool body_fixed_hips = false,
		int32 body_head_x_rot = 0, bool body_compress = false);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Tmp")
	static FString MakeJsonVoiceBroadcastMotion(const FString& audio_url, const FString& audio_format = TEXT("wav"),
		int32 is_cache = 0, const FString& face_gender = TEXT("male"), int32 face_tag = 0, int32 face_type = 1,
		int32 body_motion = 0, int32 body_filter_window = 15, int32 body_filter_order = 3, bool body_fixed = false,
		int32 body_head_x_rot = 0, bool body_compress = false);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Tmp")
	static FString MakeJsonTmp(const FString& text);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Tmp")
	static FString MakeJsonTmpRefText(const FString& refText, int32 speedRatio, int32 voice_speed, int32 voice_volume,
		int32 voice_fm, bool fixedHips, int32 type, int32 face_type, const FString& voice_name, int32 body_motion,
		const FString& gender, const FString& requestId);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static FString TTS_ParamsToJson(FString text, FString voiceName, FString speed, FString volume, FString pitch,
		FString gender, int32 tag);

	//static bool ParseJsonTmp(FString jsonStr, FString& audioUrl, FString& faceUrl, FString& bodyUrl, FString& text);
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Tmp")
	static bool ParseJsonTmp(FString jsonStr, FString inAudioStr, ZnJsonDataType type, FString& audioUrl,
		FString& faceUrl, FString& bodyUrl, FString& text);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool TTS_ParseResponseJson(FString jsonStr, FString& audioUrl, FString& bodyUrl, FString& faceUrl);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Tmp")
	static FString ParseJsonForm(FString jsonStr);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool ParseJsonToGetDigest(FString jsonStr, TArray<FString>& outStrs);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Tmp")
	static FString SwitchUrl(const FString& audio, const FString& text, const FString& answer, int32 type = 0);

	// ---- Signing and bytes (Sha1) ----

	// Sha1 signs appid + the current millisecond time + secret (UTF-8) and returns 40 lowercase
	// hex digits; the timestamp it used is not returned. StringToByteArray gives the UTF-8 bytes
	// of a string, without a terminating zero.

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Tmp")
	static FString Sha1(FString appid, FString secret);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static TArray<uint8> StringToByteArray(FString str);

	// ---- Logging and debugging (ZnDM_Log) ----

	// ---- Files, paths, time and threads (ZnFileTools, ZnTimeTools) ----

	// ---- Engine controls (ZnEngineControls) ----

	// ---- Script binding examples ----

	// Shows a by-reference parameter in scripts: str comes back as "hello UPARAM(ref)".
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Test")
	static void TestUParamRef(UPARAM(ref) FString& str, FString& otherStr);
};
