#include "ZnDM_HttpRequest.h"

#include "HttpModule.h"
#include "Sha1.h"
#include "ZnDM_Log.h"
#include "ZnHttpObjects.h"
#include "ZnJsonReader.h"

#include <string>

namespace
{
std::string ToUtf8(const FString& Text)
{
	const FTCHARToUTF8 Utf8(*Text, Text.Len());
	return std::string(Utf8.Get(), size_t(Utf8.Length()));
}

// The token of a token response, and whether the service said yes: "code" 0 gives ok, and the
// token is data.access_token; a body that is not JSON, another code, or no token leaves the
// whole body in its place (with ok as the code said).
void ReadTokenResponse(const FString& ResponseStr, bool& bOutOk, FString& OutToken)
{
	bOutOk = false;
	OutToken.Empty();
	FZnJsonReader Reader;
	FZnJsonObject Root;
	if (Reader.ParseObject(ResponseStr, Root))
	{
		double Code = -1.0;
		if (Root.TryGetNumberField("code", Code) && Code == 0.0)
		{
			bOutOk = true;
			// A missing "data" object reads as a missing token.
			OutToken = Root.GetObjectField("data").GetStringField("access_token");
		}
	}
	if (OutToken.IsEmpty())
	{
		OutToken = ResponseStr;
	}
}
} // namespace

void UZnDM_HttpRequest::SendWithToken(IHttpRequest& Request, const FString& ContentType, const FString& token,
	const FString& inURL, const FString& content, int32 timeout)
{
	// The content type first, then the token: the order the service has always received.
	Request.SetHeader(TEXT("Content-Type"), ContentType);
	Request.SetHeader(TEXT("access_token"), token);
	Request.SetURL(inURL);
	Request.SetContentAsString(content);
	Request.SetTimeout(float(timeout));
	Request.OnProcessRequestComplete().BindUObject(this, &UZnDM_HttpRequest::OnRequestCompleted);
	Request.ProcessRequest();
}

UZnDM_HttpRequest* UZnDM_HttpRequest::CreateHttpRequest()
{
	return ZnHttpObjects::CreateRooted<UZnDM_HttpRequest>();
}

void UZnDM_HttpRequest::DoRequest(const FString& inURL, const TArray<uint8>& inRequestBody, bool inShowDebug)
{
	// mUrl and mContent keep what an earlier call stored; the failure log shows those.
	mPrintLog = inShowDebug;
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	Request->SetHeader(TEXT("Content-Type"), TEXT("application/json"));
	Request->SetVerb(TEXT("POST"));
	Request->SetURL(inURL);
	Request->SetContent(inRequestBody);
	Request->SetTimeout(5.0f);
	Request->OnProcessRequestComplete().BindUObject(this, &UZnDM_HttpRequest::OnRequestCompleted);
	Request->ProcessRequest();
}

void UZnDM_HttpRequest::DoRequestEasy(const FString& token, const FString& inURL, const FString& content,
	ZnDM_HttpVerb verb, bool printLog, int32 timeout)
{
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	ZnHttpObjects::SetVerb(*Request, verb);
	mUrl = inURL;
	mContent = content;
	mPrintLog = printLog;
	UE_LOG(
		ZnDM, Warning, TEXT("uniqueId:0x%02X, ProcessRequest, inURL:%s, content:%s"), GetUniqueID(), *inURL, *content);
	SendWithToken(*Request, TEXT("application/json"), token, inURL, content, timeout);
}

void UZnDM_HttpRequest::DoRequestForm(const FString& Application, const FString& token, const FString& inURL,
	const FString& content, ZnDM_HttpVerb verb, bool printLog, int32 timeout)
{
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	ZnHttpObjects::SetVerb(*Request, verb);
	mUrl = inURL;
	mContent = content;
	mPrintLog = printLog;
	// Unlike DoRequestEasy, this line goes through the module logger and only when asked for.
	if (mPrintLog)
	{
		ZnDM_Log::printString(FString::Printf(
			TEXT("uniqueId:0x%02X, ProcessRequest, inURL:%s, content:%s"), GetUniqueID(), *inURL, *content));
	}
	SendWithToken(*Request, Application, token, inURL, content, timeout);
}

void UZnDM_HttpRequest::DoRequestTest(const FString& inURL, ZnDM_HttpVerb verb, const TArray<uint8>& contentBytes,
	const FString& contentUtf8, const float& timeoutInSecond, bool inShowDebug)
{
	mPrintLog = inShowDebug;
	const FString Url = inURL.TrimStartAndEnd();
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	Request->SetHeader(TEXT("Content-Type"), TEXT("application/json"));
	// Always POST, whatever verb says.
	Request->SetVerb(TEXT("POST"));
	Request->SetURL(Url);
	// The text replaces the bytes: contentUtf8 is what is sent.
	Request->SetContent(contentBytes);
	Request->SetContentAsString(contentUtf8);
	Request->SetTimeout(timeoutInSecond);
	Request->OnProcessRequestComplete().BindUObject(this, &UZnDM_HttpRequest::OnRequestCompleted);
	Request->ProcessRequest();
}

void UZnDM_HttpRequest::GetAppToken(
	const FString& inURL, const FString& appid, const FString& secret, ZnDM_HttpVerb verb, bool printLog, int32 timeout)
{
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> Request = FHttpModule::Get().CreateRequest();
	ZnHttpObjects::SetVerb(*Request, verb);
	mUrl = inURL;
	const std::string AppId = ToUtf8(appid);
	const std::string Secret = ToUtf8(secret);
	const std::string Timestamp = Sha1::getUnixStr();
	const std::string Sign = Sha1::GetSha1(AppId, Secret, Timestamp);
	// Sent as given, not URL-encoded: that is the service's contract.
	const std::string Query = "?appid=" + AppId + "&secret=" + Secret + "&timestamp=" + Timestamp + "&sign=" + Sign;
	mContent = inURL + FString(FUTF8ToTCHAR(Query.data(), int32(Query.size())).Get());
	UE_LOG(ZnDM, Warning, TEXT("mContent:%s"), *mContent);
	mPrintLog = printLog;
	if (mPrintLog)
	{
		ZnDM_Log::printString(
			FString::Printf(TEXT("uniqueId:0x%02X, ProcessRequest, inURL:%s"), GetUniqueID(), *mContent));
	}
	Request->SetHeader(TEXT("Content-Type"), TEXT("application/json"));
	Request->SetURL(mContent);
	Request->SetTimeout(float(timeout));
	Request->OnProcessRequestComplete().BindUObject(this, &UZnDM_HttpRequest::OnRequestAppTokenCompleted);
	Request->ProcessRequest();
}

void UZnDM_HttpRequest::OnRequestCompleted(FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful)
{
	const double ElapsedTime = Request.IsValid() ? double(Request->GetElapsedTime()) : 0.0;
	UE_LOG(ZnDM, Warning, TEXT("uniqueId:0x%02X, OnRequestCompleted, elapsedTime:%lf"), GetUniqueID(), ElapsedTime);
	RemoveFromRoot();
	if (Request.IsValid())
	{
		Request->OnProcessRequestComplete().Unbind();
	}

	const FString Prefix = ZnHttpObjects::UniqueIdPrefix(this);
	// A missing response counts as a failure with code 0.
	if (bWasSuccessful && Response.IsValid())
	{
		const FString responseStr = Response->GetContentAsString();
		OnCompleted.Broadcast(true, responseStr);
		if (mPrintLog)
		{
			ZnDM_Log::printString(Prefix + TEXT("--responseStr:") + responseStr);
		}
	}
	else
	{
		const int32 Code = ZnHttpObjects::ResponseCode(Response);
		OnCompleted.Broadcast(false, ZnHttpObjects::RequestErrorText(Code));
		if (mPrintLog)
		{
			ZnDM_Log::printString(Prefix + TEXT("--") + ZnHttpObjects::RequestErrorText(Code));
			ZnDM_Log::printString(Prefix + TEXT("--mUrl:") + mUrl);
			ZnDM_Log::printString(Prefix + TEXT("--mContent:") + mContent);
		}
	}
	if (mPrintLog)
	{
		ZnHttpObjects::PrintSummary(Response, bWasSuccessful);
	}
}

void UZnDM_HttpRequest::OnRequestAppTokenCompleted(
	FHttpRequestPtr Request, FHttpResponsePtr Response, bool bWasSuccessful)
{
	const FString Prefix = ZnHttpObjects::UniqueIdPrefix(this);
	if (mPrintLog)
	{
		const double ElapsedTime = Request.IsValid() ? double(Request->GetElapsedTime()) : 0.0;
		ZnDM_Log::printString(Prefix + FString::Printf(TEXT("OnRequestCompleted, elapsedTime:%lf"), ElapsedTime));
	}
	RemoveFromRoot();
	if (Request.IsValid())
	{
		Request->OnProcessRequestComplete().Unbind();
	}

	const int32 Code = ZnHttpObjects::ResponseCode(Response);
	if (ZnHttpObjects::IsAcceptedStatus(Response, bWasSuccessful))
	{
		const FString responseStr = Response->GetContentAsString();
		bool bOk = false;
		FString Token;
		ReadTokenResponse(responseStr, bOk, Token);
		OnGetAppTokenCompleted.Broadcast(bOk, Token);
		if (mPrintLog)
		{
			ZnDM_Log::printString(Prefix + TEXT("--responseStr:") + responseStr);
		}
	}
	else
	{
		OnGetAppTokenCompleted.Broadcast(false, ZnHttpObjects::RequestErrorText(Code));
		if (mPrintLog)
		{
			ZnDM_Log::printString(Prefix + TEXT("--") + ZnHttpObjects::RequestErrorText(Code));
			ZnDM_Log::printString(Prefix + TEXT("--mUrl:") + mUrl);
		}
	}
	if (mPrintLog)
	{
		ZnHttpObjects::PrintSummary(Response, bWasSuccessful);
	}
}
