// The response the manager builds from a finished transfer.
#pragma once

#include "Interfaces/IHttpResponse.h"

#include <string>
#include <utility>
#include <vector>

class FCurlHttpResponse : public IHttpResponse
{
public:
	FCurlHttpResponse(FString InUrl, int32 InResponseCode, std::vector<std::pair<std::string, std::string>> InHeaders,
		TArray<uint8> InContent);

	FString GetURL() const override { return Url; }
	FString GetHeader(const FString& HeaderName) const override;
	TArray<FString> GetAllHeaders() const override;
	FString GetContentType() const override { return GetHeader(TEXT("Content-Type")); }
	int32 GetContentLength() const override { return Content.Num(); }
	const TArray<uint8>& GetContent() const override { return Content; }
	int32 GetResponseCode() const override { return ResponseCode; }
	FString GetContentAsString() const override;

private:
	FString Url;
	int32 ResponseCode = 0;
	std::vector<std::pair<std::string, std::string>> Headers;
	TArray<uint8> Content;
};
