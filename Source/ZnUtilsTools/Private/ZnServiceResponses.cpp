#include "ZnServiceResponses.h"

#include "ZnJsonReader.h"

#include <cmath>

namespace
{
// An output that is written only when its enclosing object was in the response.
struct FOptionalText
{
	FString Value;
	bool bSet = false;

	void SetFrom(const FZnJsonObject& Data, std::string_view Holder, std::string_view Member)
	{
		FZnJsonObject Inner;
		if (Data.TryGetObjectField(Holder, Inner))
		{
			Value = Inner.GetStringField(Member);
			bSet = true;
		}
	}

	void MoveTo(FString& Out)
	{
		if (bSet)
		{
			Out = MoveTemp(Value);
		}
	}
};
} // namespace

bool ZnServiceResponses::ParseMotionResponse(const FString& jsonStr, const FString& inAudioStr, ZnJsonDataType type,
	FString& audioUrl, FString& faceUrl, FString& bodyUrl, FString& text)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	if (!Reader.ParseObject(jsonStr, Root))
	{
		return false;
	}
	int32 Code = -1;
	if (!Root.TryGetNumberField("code", Code) || Code != 0)
	{
		return false;
	}
	FZnJsonObject Data;
	if (!Root.TryGetObjectField("data", Data))
	{
		return false;
	}

	FOptionalText Audio;
	FOptionalText Face;
	FOptionalText Body;
	FOptionalText Answer;
	if (type == ZnJsonDataType::VoiceBroadcast)
	{
		// The caller's own audio is what plays; the service does not synthesise one.
		Audio.Value = inAudioStr;
		Audio.bSet = true;
	}
	else
	{
		if (type != ZnJsonDataType::TextBroadcast)
		{
			Answer.SetFrom(Data, "answerDmeasyData", "answer");
		}
		Audio.SetFrom(Data, "ttsSynthesizeData", "audio_url");
	}
	Face.SetFrom(Data, "allfaceData", "oss_url");
	Body.SetFrom(Data, "motionFusionedData", "oss_url");

	Audio.MoveTo(audioUrl);
	Face.MoveTo(faceUrl);
	Body.MoveTo(bodyUrl);
	Answer.MoveTo(text);
	return true;
}

bool ZnServiceResponses::ParseTtsResponse(const FString& jsonStr, FString& audioUrl, FString& bodyUrl, FString& faceUrl)
{
	FString Audio;
	FString Face;
	FString Body;
	bool bHasData = false;
	if (!ReadTtsResponse(jsonStr, bHasData, Audio, Face, Body))
	{
		return false;
	}
	if (bHasData)
	{
		audioUrl = MoveTemp(Audio);
		faceUrl = MoveTemp(Face);
		bodyUrl = MoveTemp(Body);
	}
	return true;
}

bool ZnServiceResponses::ReadTtsResponse(
	const FString& jsonStr, bool& bOutHasData, FString& OutAudioUrl, FString& OutFaceUrl, FString& OutBodyUrl)
{
	bOutHasData = false;
	FZnJsonReader Reader;
	FZnJsonObject Root;
	if (!Reader.ParseObject(jsonStr, Root))
	{
		return false;
	}
	// Truncated toward zero, so 200.9 counts as 200; compared as a double so that no value of
	// the number can overflow an integer conversion.
	if (std::trunc(Root.GetNumberField("code")) != 200.0)
	{
		return false;
	}
	FZnJsonObject Data;
	if (Root.TryGetObjectField("data", Data))
	{
		bOutHasData = true;
		OutAudioUrl = Data.GetStringField("url");
		OutFaceUrl = Data.GetStringField("faceUrl");
		OutBodyUrl = Data.GetStringField("bodyUrl");
	}
	return true;
}

FString ZnServiceResponses::ParseFormResponse(const FString& jsonStr)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	int32 Code = -1;
	if (!Reader.ParseObject(jsonStr, Root) || !Root.TryGetNumberField("code", Code) || Code != 0)
	{
		return FString();
	}
	return Root.GetStringField("oss_url");
}

bool ZnServiceResponses::ParseDigests(const FString& jsonStr, TArray<FString>& outStrs)
{
	FZnJsonReader Reader;
	FZnJsonObject Root;
	if (!Reader.ParseObject(jsonStr, Root))
	{
		return false;
	}
	FZnJsonArray Items;
	if (!Root.TryGetArrayField("T1348647853363", Items) || Items.IsEmpty())
	{
		return true;
	}
	TArray<FString> Found;
	for (const FZnJsonValue Item : Items)
	{
		FString Digest;
		if (Item.AsObject().TryGetStringField("digest", Digest) && !Digest.IsEmpty())
		{
			Found.Add(MoveTemp(Digest));
		}
	}
	outStrs.Append(MoveTemp(Found));
	return true;
}

const FString& ZnServiceResponses::SwitchUrl(
	const FString& audio, const FString& text, const FString& answer, int32 type)
{
	return type == 0 ? audio : (type == 1 ? text : answer);
}
