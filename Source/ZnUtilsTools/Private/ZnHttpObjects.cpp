#include "ZnHttpObjects.h"

#include "ZnDM_Log.h"

namespace ZnHttpObjects
{
void SetVerb(IHttpRequest& Request, ZnDM_HttpVerb Verb)
{
	if (Verb == ZnDM_HttpVerb::GET)
	{
		Request.SetVerb(TEXT("GET"));
	}
	else if (Verb == ZnDM_HttpVerb::POST)
	{
		Request.SetVerb(TEXT("POST"));
	}
}

int32 ResponseCode(const FHttpResponsePtr& Response)
{
	return Response.IsValid() ? Response->GetResponseCode() : 0;
}

FString ResponseText(const FHttpResponsePtr& Response)
{
	return Response.IsValid() ? Response->GetContentAsString() : FString();
}

bool IsAcceptedStatus(const FHttpResponsePtr& Response, bool bWasSuccessful)
{
	const int32 Code = ResponseCode(Response);
	return bWasSuccessful && Response.IsValid() && Code >= 200 && Code <= 206;
}

FString RequestErrorText(int32 Code)
{
	return FString::Printf(TEXT("request error, response code:%d"), Code);
}

FString UniqueIdPrefix(const UObject* Object)
{
	return FString::Printf(TEXT("uniqueId:0x%02X, "), Object->GetUniqueID());
}

void PrintSummary(const FHttpResponsePtr& Response, bool bSuccess)
{
	ZnDM_Log::printString(FString(TEXT("Response IsValid:")) + (Response.IsValid() ? TEXT("true") : TEXT("false")));
	ZnDM_Log::printString(FString(TEXT("IsSuccess:")) + (bSuccess ? TEXT("true") : TEXT("false")));
	ZnDM_Log::printInt(TEXT("ResponseCode"), ResponseCode(Response));
	ZnDM_Log::printString(TEXT("ResponseStr:"));
	ZnDM_Log::printString(ResponseText(Response));
}
} // namespace ZnHttpObjects
