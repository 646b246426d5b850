#include "ZnDM_HttpRequest_TTS.h"

#include "HttpModule.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnHttpObjects.h"
#include "ZnRequestBodies.h"
#include "ZnServiceResponses.h"

UZnDM_HttpRequest_TTS* UZnDM_HttpRequest_TTS::CreateHttpRequest_TTS()
{
	return ZnHttpObjects::CreateRooted<UZnDM_HttpRequest_TTS>();
}

void UZnDM_HttpRequest_TTS::DoRequest(FString url, FString text, FString voiceName, FString speed, FString volume,
	FString pitch, FString gender, int32 tag, bool inShowDebug)
{
	mPrintLog = inShowDebug;
	const TArray<uint8> Body = UZnDM_BpFuncLib::StringToByteArray(
		ZnRequestBodies::TtsParams(text, voiceName, speed, volume, pitch, gender, tag));
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	Request->SetHeader(TEXT("Content-Type"), TEXT("application/json"));
	Request->SetVerb(TEXT("POST"));
	Request->SetURL(url);
	Request->SetContent(Body);
	Request->SetTimeout(5.0f);
	Request->OnProcessRequestComplete().BindUObject(this, &UZnDM_HttpRequest_TTS::OnRequestCompleted);
	Request->ProcessRequest();
}

void UZnDM_HttpRequest_TTS::OnRequestCompleted(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful)
{
	RemoveFromRoot();
	if (Request.IsValid())
	{
		Request->OnProcessRequestComplete().Unbind();
	}
	if (ZnHttpObjects::IsAcceptedStatus(Response, bWasSuccessful))
	{
		FString AudioUrl;
		FString FaceUrl;
		FString BodyUrl;
		bool bHasData = false;
		// "code" 200 without a "data" object is a failure, like any other unusable answer.
		if (ZnServiceResponses::ReadTtsResponse(Response->GetContentAsString(), bHasData, AudioUrl, FaceUrl, BodyUrl) &&
			bHasData)
		{
			OnCompleted.Broadcast(true, AudioUrl, FaceUrl, BodyUrl);
			if (mPrintLog)
			{
				ZnHttpObjects::PrintSummary(Response, true);
			}
			return;
		}
	}
	OnCompleted.Broadcast(false, FString(), FString(), FString());
	if (mPrintLog)
	{
		ZnHttpObjects::PrintSummary(Response, bWasSuccessful);
	}
}
