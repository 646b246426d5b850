#include "CurlHttpRequest.h"

#include "Containers/StringConv.h"
#include "CurlHttpResponse.h"
#include "HttpManager.h"
#include "HttpModule.h"
#include "HttpTransfer.h"

FString FCurlHttpRequest::GetHeader(const FString& HeaderName) const
{
	for (const TPair<FString, FString>& Header : Headers)
	{
		if (Header.Key.Equals(HeaderName, ESearchCase::IgnoreCase))
		{
			return Header.Value;
		}
	}
	return FString();
}

TArray<FString> FCurlHttpRequest::GetAllHeaders() const
{
	TArray<FString> All;
	for (const TPair<FString, FString>& Header : Headers)
	{
		All.Add(Header.Key + TEXT(": ") + Header.Value);
	}
	return All;
}

void FCurlHttpRequest::SetContentAsString(const FString& ContentString)
{
	const FTCHARToUTF8 Utf8(*ContentString, ContentString.Len());
	Content.Reset();
	Content.Append(reinterpret_cast<const uint8*>(Utf8.Get()), Utf8.Length());
}

void FCurlHttpRequest::SetHeader(const FString& HeaderName, const FString& HeaderValue)
{
	for (TPair<FString, FString>& Header : Headers)
	{
		if (Header.Key.Equals(HeaderName, ESearchCase::IgnoreCase))
		{
			Header.Value = HeaderValue;
			return;
		}
	}
	Headers.Add(TPair<FString, FString>(HeaderName, HeaderValue));
}

bool FCurlHttpRequest::ProcessRequest()
{
	if (Status == EHttpRequestStatus::Processing)
	{
		return false;
	}
	FHttpModule& Module = FHttpModule::Get();
	if (!Module.IsRunning())
	{
		return false;
	}
	Response.Reset();
	StartTime = std::chrono::steady_clock::now();
	EndTime = StartTime;
	Status = EHttpRequestStatus::Processing;
	const TSharedRef<FCurlHttpRequest, ESPMode::ThreadSafe> Self = AsShared();
	if (Url.IsEmpty())
	{
		Module.GetHttpManager().FailBeforeSending(Self);
		return false;
	}
	return Module.GetHttpManager().StartRequest(Self, Module.GetTransportSettings(), TransferId);
}

void FCurlHttpRequest::CancelRequest()
{
	if (Status == EHttpRequestStatus::Processing && TransferId != 0)
	{
		FHttpModule::Get().GetHttpManager().CancelTransfer(TransferId);
	}
}

float FCurlHttpRequest::GetElapsedTime() const
{
	const std::chrono::steady_clock::time_point End =
		Status == EHttpRequestStatus::Processing ? std::chrono::steady_clock::now() : EndTime;
	return std::chrono::duration<float>(End - StartTime).count();
}

void FCurlHttpRequest::FinishRequest(FHttpTransfer& Transfer)
{
	EndTime = Transfer.EndTime;
	TransferId = 0;
	if (!Transfer.bNotSent)
	{
		const std::string& Where = Transfer.EffectiveUrl.empty() ? Transfer.Url : Transfer.EffectiveUrl;
		Response = MakeShared<FCurlHttpResponse, ESPMode::ThreadSafe>(
			FString(FUTF8ToTCHAR(Where.data(), int32(Where.size())).Get()), Transfer.ResponseCode,
			MoveTemp(Transfer.ResponseHeaders), MoveTemp(Transfer.ResponseBody));
	}
	Status = Transfer.bSucceeded	 ? EHttpRequestStatus::Succeeded
		: Transfer.ResponseCode == 0 ? EHttpRequestStatus::Failed_ConnectionError
									 : EHttpRequestStatus::Failed;
	// The delegate may start this request again or drop the last reference to it; both are safe
	// because the manager holds a reference until the call returns.
	CompleteDelegate.ExecuteIfBound(AsShared(), Response, Transfer.bSucceeded);
}

void FCurlHttpRequest::AbandonRequest()
{
	Status = EHttpRequestStatus::Failed;
	TransferId = 0;
	EndTime = std::chrono::steady_clock::now();
}
