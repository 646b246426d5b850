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

//~ Whether GetDir returns a directory absolute or as the engine gives it.
UENUM()
enum class ZnDM_PathType : uint8
{
	Complete,
	Relative
};

//~ An engine directory that GetDir can return.
UENUM()
enum class ZnDM_PathName : uint8
{
	ProjectDir,
	ProjectContentDir,
	ProjectConfigDir,
	ProjectPluginsDir,
	ExeDir
};

//~ The text form of GetCurSystemDateTime: a log line header or a file-name-safe stamp.
UENUM(BlueprintType)
enum class ZnDM_DateTimePurpose : uint8
{
	LogHeader,
	FileName
};

//~ A statistics overlay that ShowOrHideStat toggles.
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

//~ The kind of motion request whose response ParseJsonTmp reads.
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

//~ The default endpoint of every service per region. The hosts come from ZnServiceHosts.h.
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

	//~ Answer collection has no international endpoint.
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
	static void ParseJsonToBodydataRecommend(
		const FString& jsonStr, UPARAM(ref) FZnBodyData& bodyData, float& totalTime);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void BeginParseJsonToBodydataV2();

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToBodydataV2(const FString& jsonStr, TArray<FString> SkeletonNoHand);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void EndParseJsonToBodydataV2(FZnBodyData& outBodyData, float& outTotalTime);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToBodydataV2Response(
		const FString& jsonStr, TArray<FString> SkeletonNoHand, FZnBodyData& outBodyData, float& outTotalTime);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToFacedata(const FString& jsonStr, FZnFaceData& faceData);

	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void ParseJsonToFacedataRecommend(
		const FString& jsonStr, UPARAM(ref) FZnFaceData& faceData, float& totalTime);

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
	static FString TTS_ParamsToJson(
		FString text, FString voiceName, FString speed, FString volume, FString pitch, FString gender, int32 tag);

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

	//~ Appends msg to "dm_ue.txt" as one time-stamped line, creating the file log on first use.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void WriteLog(FString msg);

	//~ Logs "Stack Info:" and one "function (file Line:n" line per frame of the caller's stack, up
	//~ to Depth frames, to LogTemp as one text.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void PrintTraceStack(int32 Depth = 5);

	// ---- Files, paths, time and threads (ZnFileTools, ZnTimeTools) ----

	//~ The engine directory pathName (ends in "/"), absolute for Complete; empty for unknown names.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static FString GetDir(ZnDM_PathName pathName, ZnDM_PathType pathType);

	//~ dir and fileName joined with one "/".
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static FString CombinePath(FString dir, FString fileName);

	//~ Directory (no trailing "/"), base name and extension (no point) of inFilePath.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void SplitFilePath(
		const FString& inFilePath, FString& outDir, FString& outFileName, FString& outExtensionName);

	//~ True when a file (not a directory) exists at filePath.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool FileExists(FString filePath);

	//~ True when a directory exists at dir.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool DirExists(FString dir);

	//~ Saves str to completePath (pure ASCII as bytes, other text as UTF-16 with byte-order mark);
	//~ a failure is logged as "failed to save file: " + path.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void WriteTxt(FString str, FString completePath);

	//~ Saves content to filePrefix_YYYY_MM_DD_hh_mm_ss_mmm.txt in the working directory.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void WriteTxtFileWithPrefix(FString content, FString filePrefix);

	//~ The plugins directory + pluginName + "/Content", not made absolute.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static FString GetProjectPluginContentDir(FString pluginName);

	//~ The plugins directory + "Velkaro/Content".
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static FString GetProjectPluginContentDir_Velkaro();

	//~ The text of a file below the Velkaro plugin's content directory; empty when it is missing.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static FString LoadFileFromPluginContentDir(FString fileRelativePath);

	//~ Local time now as a log header or a file-name stamp; "no content" for other values.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static FString GetCurSystemDateTime(ZnDM_DateTimePurpose purpose);

	//~ Today's local date written the Chinese way, such as 2024\u5E741\u67082\u65E5\u661F\u671F\u4E8C.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static FString GetTodayDateInChinaFormat();

	//~ The engine's high-resolution clock in seconds (with the engine's fixed offset of 2^24 s).
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static double getWorldTime();

	//~ The operating system's id of the calling thread.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static int32 GetThreadId();

	//~ The calling thread's id, engine name ("GameThread" or empty) and name + "(" + id + ")".
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void GetCurThreadInfo(int32& curThreadId, FString& curThreadName, FString& curThreadInfo);

	// Microseconds from 1970-01-01 00:00 to now, both in local time (not UTC, on purpose).
	// Not the service's time stamp. Native only.
	static int64 GetCurTimestampInMicroSecond();

	//~ Counts val up by deltaTime until it reaches threhold; true on the call that reaches it.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool TickAdd(UPARAM(ref) float& val, float deltaTime, float threhold);

	//~ Counts val down by deltaTime while it is above threhold; true on the call that reaches it.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool TickSubtract(UPARAM(ref) float& val, float deltaTime, float threhold);

	//~ Counts a positive remainTime down by deltaTime, stopping at 0.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static void TickRemainTime(UPARAM(ref) float& remainTime, float deltaTime);

	//~ True once every cycleTime seconds of summed deltaTime; offsetTime restarts at 0 each time.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool GreaterOrEqual_Cycling(float deltaTime, float cycleTime, float& offsetTime);

	// ---- Engine controls (ZnEngineControls) ----

	//~ Caps the frame rate with the console command "t.maxFPS <fps>" (0 removes the cap).
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools", meta = (CallableWithoutWorldContext))
	static void SetFps(int32 fps = 60);

	//(const UObject* WorldContextObject, int fps);
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools", meta = (CallableWithoutWorldContext))
	static void SetMaxPerGroupForStat(int32 maxNum = 100);

	//~ Toggles a statistics overlay ("stat fps" for unknown values).
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools", meta = (CallableWithoutWorldContext))
	static void ShowOrHideStat(ZnDM_StatType type);

	//~ Sets the volume factor for an unfocused window, clamped to 0..1 (NaN gives 0).
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools", meta = (AdvancedDisplay = "0.0-1.0"))
	static void SetUnfocusVolume(float val);

	//(const UObject* WorldContextObject);
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool IsInEditor();

	//~ True on the game thread.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool CurThreadIsInGameThread();

	//~ True on the rendering thread.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool CurThreadIsInRenderingThread();

	//~ True on the RHI thread.
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools")
	static bool CurThreadIsInRhiThread();

	// ---- Script binding examples ----

	//~ Shows a by-reference parameter in scripts: str comes back as "hello UPARAM(ref)".
	UFUNCTION(BlueprintCallable, Category = "ZnDM_Functions|UtilsTools|Test")
	static void TestUParamRef(UPARAM(ref) FString& str, FString& otherStr);
};
