#include "ZnDM_BpFuncLib.h"

// ---- Body and face motion decoding ----

#include "ZnBodyDataDecoder.h"
#include "ZnBodyDataV2Decoder.h"
#include "ZnFaceDataDecoder.h"
#include "ZnFaceDataV2Decoder.h"

void UZnDM_BpFuncLib::ParseJsonToBodydata(const FString& jsonStr, FZnBodyData& bodyData)
{
	FZnBodyDataDecoder::Decode(jsonStr, bodyData, true);
}

void UZnDM_BpFuncLib::ParseJsonToBodydataRecommend(const FString& jsonStr, FZnBodyData& bodyData, float& totalTime)
{
	// This variant leaves the root start position at zero.
	if (FZnBodyDataDecoder::Decode(jsonStr, bodyData, false))
	{
		totalTime = bodyData.totalTime;
	}
}

void UZnDM_BpFuncLib::BeginParseJsonToBodydataV2()
{
	FZnBodyDataV2Decoder::GetStream().Reset();
}

void UZnDM_BpFuncLib::ParseJsonToBodydataV2(const FString& jsonStr, TArray<FString> SkeletonNoHand)
{
	FZnBodyDataV2Decoder::GetStream().AddFrameText(jsonStr, SkeletonNoHand);
}

void UZnDM_BpFuncLib::EndParseJsonToBodydataV2(FZnBodyData& outBodyData, float& outTotalTime)
{
	FZnBodyDataV2Decoder::GetStream().Assemble(outBodyData, outTotalTime);
}

void UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(
	const FString& jsonStr, TArray<FString> SkeletonNoHand, FZnBodyData& outBodyData, float& outTotalTime)
{
	FZnBodyDataV2Decoder::DecodeResponse(jsonStr, SkeletonNoHand, outBodyData, outTotalTime);
}

void UZnDM_BpFuncLib::ParseJsonToFacedata(const FString& jsonStr, FZnFaceData& faceData)
{
	FZnFaceDataDecoder::Decode(jsonStr, faceData, true);
}

void UZnDM_BpFuncLib::ParseJsonToFacedataRecommend(const FString& jsonStr, FZnFaceData& faceData, float& totalTime)
{
	// This variant leaves the curve names empty.
	if (FZnFaceDataDecoder::Decode(jsonStr, faceData, false))
	{
		totalTime = faceData.totalTime;
	}
}

void UZnDM_BpFuncLib::BeginParseJsonToFacedataV2()
{
	FZnFaceDataV2Decoder::GetStream().Reset(FZnFaceDataV2Decoder::StreamChannelCount);
}

void UZnDM_BpFuncLib::ParseJsonToFacedataV2(const FString& jsonStr)
{
	FZnFaceDataV2Decoder::GetStream().AddFrameText(jsonStr);
}

void UZnDM_BpFuncLib::EndParseJsonToFacedataV2(FZnFaceData& outBodyData, float& outTotalTime)
{
	FZnFaceDataV2Decoder::GetStream().Assemble(outBodyData, outTotalTime);
}

void UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(
	const FString& jsonStr, FZnFaceData& outBodyData, float& outTotalTime)
{
	FZnFaceDataV2Decoder::DecodeResponse(jsonStr, outBodyData, outTotalTime);
}

void UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(const FString& jsonStr, FZnFaceData& faceData)
{
	FZnFaceDataDecoder::DecodeControlRig(jsonStr, faceData);
}

// ---- Request bodies and service responses ----

#include "ZnRequestBodies.h"
#include "ZnServiceResponses.h"

FString UZnDM_BpFuncLib::MakeJsonTextBroadcastMotion(const FString& draft_content, const FString& audio_format,
	const FString& tts_voice_name, int32 tts_speed, int32 tts_volume, int32 tts_fm, int32 face_type,
	const FString& face_gender, int32 face_tag, int32 body_motion, int32 body_filter_window, int32 body_filter_order,
	bool body_fixed_hips, int32 body_head_x_rot, bool body_compress)
{
	return ZnRequestBodies::TextBroadcastMotion(draft_content, audio_format, tts_voice_name, tts_speed, tts_volume,
		tts_fm, face_type, face_gender, face_tag, body_motion, body_filter_window, body_filter_order, body_fixed_hips,
		body_head_x_rot, body_compress);
}

FString UZnDM_BpFuncLib::MakeJsonAnswerCollectMotion(const FString& text, const FString& audio_format,
	const FString& tts_voice_name, int32 tts_speed, int32 tts_volume, int32 tts_fm, int32 face_type,
	const FString& face_gender, int32 face_tag, int32 body_motion, int32 body_filter_window, int32 body_filter_order,
	bool body_fixed_hips, int32 body_head_x_rot, bool body_compress)
{
	return ZnRequestBodies::AnswerCollectMotion(text, audio_format, tts_voice_name, tts_speed, tts_volume, tts_fm,
		face_type, face_gender, face_tag, body_motion, body_filter_window, body_filter_order, body_fixed_hips,
		body_head_x_rot, body_compress);
}

FString UZnDM_BpFuncLib::MakeJsonVoiceBroadcastMotion(const FString& audio_url, const FString& audio_format,
	int32 is_cache, const FString& face_gender, int32 face_tag, int32 face_type, int32 body_motion,
	int32 body_filter_window, int32 body_filter_order, bool body_fixed, int32 body_head_x_rot, bool body_compress)
{
	return ZnRequestBodies::VoiceBroadcastMotion(audio_url, audio_format, is_cache, face_gender, face_tag, face_type,
		body_motion, body_filter_window, body_filter_order, body_fixed, body_head_x_rot, body_compress);
}

FString UZnDM_BpFuncLib::MakeJsonTmp(const FString& text)
{
	return ZnRequestBodies::Tmp(text);
}

FString UZnDM_BpFuncLib::MakeJsonTmpRefText(const FString& refText, int32 speedRatio, int32 voice_speed,
	int32 voice_volume, int32 voice_fm, bool fixedHips, int32 type, int32 face_type, const FString& voice_name,
	int32 body_motion, const FString& gender, const FString& requestId)
{
	return ZnRequestBodies::TmpRefText(refText, speedRatio, voice_speed, voice_volume, voice_fm, fixedHips, type,
		face_type, voice_name, body_motion, gender, requestId);
}

FString UZnDM_BpFuncLib::TTS_ParamsToJson(
	FString text, FString voiceName, FString speed, FString volume, FString pitch, FString gender, int32 tag)
{
	return ZnRequestBodies::TtsParams(text, voiceName, speed, volume, pitch, gender, tag);
}

bool UZnDM_BpFuncLib::ParseJsonTmp(FString jsonStr, FString inAudioStr, ZnJsonDataType type, FString& audioUrl,
	FString& faceUrl, FString& bodyUrl, FString& text)
{
	return ZnServiceResponses::ParseMotionResponse(jsonStr, inAudioStr, type, audioUrl, faceUrl, bodyUrl, text);
}

bool UZnDM_BpFuncLib::TTS_ParseResponseJson(FString jsonStr, FString& audioUrl, FString& bodyUrl, FString& faceUrl)
{
	return ZnServiceResponses::ParseTtsResponse(jsonStr, audioUrl, bodyUrl, faceUrl);
}

FString UZnDM_BpFuncLib::ParseJsonForm(FString jsonStr)
{
	return ZnServiceResponses::ParseFormResponse(jsonStr);
}

bool UZnDM_BpFuncLib::ParseJsonToGetDigest(FString jsonStr, TArray<FString>& outStrs)
{
	return ZnServiceResponses::ParseDigests(jsonStr, outStrs);
}

FString UZnDM_BpFuncLib::SwitchUrl(const FString& audio, const FString& text, const FString& answer, int32 type)
{
	return ZnServiceResponses::SwitchUrl(audio, text, answer, type);
}

// ---- Signing and bytes ----

#include "Sha1.h"

FString UZnDM_BpFuncLib::Sha1(FString appid, FString secret)
{
	const FTCHARToUTF8 AppIdUtf8(*appid, appid.Len());
	const FTCHARToUTF8 SecretUtf8(*secret, secret.Len());
	const std::string Signature = ::Sha1::GetSha1(std::string(AppIdUtf8.Get(), AppIdUtf8.Length()),
		std::string(SecretUtf8.Get(), SecretUtf8.Length()), std::string());
	return FString(UTF8_TO_TCHAR(Signature.c_str()));
}

TArray<uint8> UZnDM_BpFuncLib::StringToByteArray(FString str)
{
	const FTCHARToUTF8 Utf8(*str, str.Len());
	TArray<uint8> Bytes;
	Bytes.Append(reinterpret_cast<const uint8*>(Utf8.Get()), Utf8.Length());
	return Bytes;
}

// ---- Logging and debugging ----

#include "HAL/PlatformStackWalk.h"
#include "ZnDM_Log.h"

void UZnDM_BpFuncLib::WriteLog(FString msg)
{
	ZnDM_Log::GetInstance().Log(msg);
}

void UZnDM_BpFuncLib::PrintTraceStack(int32 Depth)
{
	FString stackInfo = TEXT("Stack Info:");
	// One frame skipped: this function itself, so the stack starts at the caller.
	const TArray<FProgramCounterSymbolInfo> stack = FPlatformStackWalk::GetStack(1, Depth);
	for (const FProgramCounterSymbolInfo& frame : stack)
	{
		stackInfo += TEXT("\r\n\t") +
			FString::Printf(TEXT("%s (%s Line:%d"), UTF8_TO_TCHAR(frame.FunctionName), UTF8_TO_TCHAR(frame.Filename),
				frame.LineNumber);
	}
	UE_LOG(LogTemp, Warning, TEXT("%s"), *stackInfo);
}

// ---- Files, paths, time and threads ----

#include "HAL/PlatformTLS.h"
#include "HAL/PlatformTime.h"
#include "HAL/ThreadManager.h"
#include "Misc/Paths.h"
#include "ZnFileTools.h"
#include "ZnTimeTools.h"

FString UZnDM_BpFuncLib::GetDir(ZnDM_PathName pathName, ZnDM_PathType pathType)
{
	return ZnFileTools::GetDir(pathName, pathType);
}

FString UZnDM_BpFuncLib::CombinePath(FString dir, FString fileName)
{
	return FPaths::Combine(dir, fileName);
}

void UZnDM_BpFuncLib::SplitFilePath(
	const FString& inFilePath, FString& outDir, FString& outFileName, FString& outExtensionName)
{
	FPaths::Split(inFilePath, outDir, outFileName, outExtensionName);
}

bool UZnDM_BpFuncLib::FileExists(FString filePath)
{
	return FPaths::FileExists(filePath);
}

bool UZnDM_BpFuncLib::DirExists(FString dir)
{
	return FPaths::DirectoryExists(dir);
}

void UZnDM_BpFuncLib::WriteTxt(FString str, FString completePath)
{
	ZnFileTools::WriteTxt(str, completePath);
}

void UZnDM_BpFuncLib::WriteTxtFileWithPrefix(FString content, FString filePrefix)
{
	ZnFileTools::WriteTxt(content, ZnFileTools::PrefixedFileName(filePrefix, FDateTime::Now()));
}

FString UZnDM_BpFuncLib::GetProjectPluginContentDir(FString pluginName)
{
	return FPaths::ProjectPluginsDir() + pluginName + TEXT("/Content");
}

FString UZnDM_BpFuncLib::GetProjectPluginContentDir_Velkaro()
{
	return FPaths::ProjectPluginsDir() + TEXT("Velkaro/Content");
}

FString UZnDM_BpFuncLib::LoadFileFromPluginContentDir(FString fileRelativePath)
{
	return ZnFileTools::LoadFileFromPluginContentDir(fileRelativePath);
}

FString UZnDM_BpFuncLib::GetCurSystemDateTime(ZnDM_DateTimePurpose purpose)
{
	switch (purpose)
	{
		case ZnDM_DateTimePurpose::LogHeader:
			return ZnTimeTools::FormatLogTime(FDateTime::Now());
		case ZnDM_DateTimePurpose::FileName:
			return ZnTimeTools::FormatFileNameTime(FDateTime::Now());
		default:
			return TEXT("no content");
	}
}

FString UZnDM_BpFuncLib::GetTodayDateInChinaFormat()
{
	return ZnTimeTools::FormatChinaDate(FDateTime::Now());
}

double UZnDM_BpFuncLib::getWorldTime()
{
	return FPlatformTime::Seconds();
}

int32 UZnDM_BpFuncLib::GetThreadId()
{
	return static_cast<int32>(FPlatformTLS::GetCurrentThreadId());
}

void UZnDM_BpFuncLib::GetCurThreadInfo(int32& curThreadId, FString& curThreadName, FString& curThreadInfo)
{
	const uint32 threadId = FPlatformTLS::GetCurrentThreadId();
	curThreadId = static_cast<int32>(threadId);
	curThreadName = FThreadManager::GetThreadName(threadId);
	curThreadInfo = curThreadName + TEXT("(") + FString::FromInt(curThreadId) + TEXT(")");
}

int64 UZnDM_BpFuncLib::GetCurTimestampInMicroSecond()
{
	return ZnTimeTools::MicrosecondsSince1970(FDateTime::Now());
}

bool UZnDM_BpFuncLib::TickAdd(float& val, float deltaTime, float threhold)
{
	return ZnTimeTools::TickAdd(val, deltaTime, threhold);
}

bool UZnDM_BpFuncLib::TickSubtract(float& val, float deltaTime, float threhold)
{
	return ZnTimeTools::TickSubtract(val, deltaTime, threhold);
}

void UZnDM_BpFuncLib::TickRemainTime(float& remainTime, float deltaTime)
{
	ZnTimeTools::TickRemainTime(remainTime, deltaTime);
}

bool UZnDM_BpFuncLib::GreaterOrEqual_Cycling(float deltaTime, float cycleTime, float& offsetTime)
{
	return ZnTimeTools::GreaterOrEqual_Cycling(deltaTime, cycleTime, offsetTime);
}

// ---- Engine controls ----

#include "CoreGlobals.h"
#include "Misc/App.h"
#include "ZnEngineControls.h"

void UZnDM_BpFuncLib::SetFps(int32 fps)
{
	ZnEngineControls::Exec(ZnEngineControls::MaxFpsCommand(fps));
}

void UZnDM_BpFuncLib::SetMaxPerGroupForStat(int32 maxNum)
{
	ZnEngineControls::Exec(ZnEngineControls::MaxPerGroupCommand(maxNum));
}

void UZnDM_BpFuncLib::ShowOrHideStat(ZnDM_StatType type)
{
	ZnEngineControls::Exec(ZnEngineControls::StatCommand(type));
}

void UZnDM_BpFuncLib::SetUnfocusVolume(float val)
{
	FApp::SetUnfocusedVolumeMultiplier(ZnEngineControls::ClampUnfocusedVolume(val));
}

bool UZnDM_BpFuncLib::IsInEditor()
{
	return GIsEditor;
}

bool UZnDM_BpFuncLib::CurThreadIsInGameThread()
{
	return IsInGameThread();
}

bool UZnDM_BpFuncLib::CurThreadIsInRenderingThread()
{
	return IsInRenderingThread();
}

bool UZnDM_BpFuncLib::CurThreadIsInRhiThread()
{
	return IsInRHIThread();
}

// ---- Script binding examples ----

void UZnDM_BpFuncLib::TestUParamRef(FString& str, FString& otherStr)
{
	str = TEXT("hello UPARAM(ref)");
	otherStr = TEXT("other msg");
}
