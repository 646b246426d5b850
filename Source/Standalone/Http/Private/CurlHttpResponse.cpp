#include "CurlHttpResponse.h"

#include "Containers/StringConv.h"

#include <strings.h>

FCurlHttpResponse::FCurlHttpResponse(FString InUrl, int32 InResponseCode,
	std::vector<std::pair<std::string, std::string>> InHeaders, TArray<uint8> InContent)
	: Url(MoveTemp(InUrl))
	, ResponseCode(InResponseCode)
	, Headers(MoveTemp(InHeaders))
	, Content(MoveTemp(InContent))
{
}

FString FCurlHttpResponse::GetHeader(const FString& HeaderName) const
{
	const FTCHARToUTF8 Name(*HeaderName, HeaderName.Len());
	for (const std::pair<std::string, std::string>& Header : Headers)
	{
		if (strcasecmp(Header.first.c_str(), Name.Get()) == 0)
		{
			return FString(FUTF8ToTCHAR(Header.second.data(), int32(Header.second.size())).Get());
		}
	}
	return FString();
}

TArray<FString> FCurlHttpResponse::GetAllHeaders() const
{
	TArray<FString> All;
	for (const std::pair<std::string, std::string>& Header : Headers)
	{
		const std::string Line = Header.first + ": " + Header.second;
		All.Add(FString(FUTF8ToTCHAR(Line.data(), int32(Line.size())).Get()));
	}
	return All;
}

FString FCurlHttpResponse::GetContentAsString() const
{
	// Decoded straight into the string's own buffer: a body may be megabytes of text.
	FString Text;
	TArray<TCHAR>& Chars = Text.GetCharArray();
	ZnStandalone::AppendUtf8ToUtf16(Chars, reinterpret_cast<const char*>(Content.GetData()), Content.Num());
	if (Chars.Num() > 0)
	{
		Chars.Add(TCHAR(0));
	}
	return Text;
}
