// IHttpBase: what a request and a response have in common (URL, headers, content).
#pragma once

#include "CoreMinimal.h"

class IHttpBase
{
public:
	virtual ~IHttpBase() = default;

	/** The URL as set (request) or as requested (response). */
	virtual FString GetURL() const = 0;
	/** The value of a header, matched without regard to case; empty when absent. */
	virtual FString GetHeader(const FString& HeaderName) const = 0;
	/** Every header as "Name: Value", in the order set or received. */
	virtual TArray<FString> GetAllHeaders() const = 0;
	/** The "Content-Type" header. */
	virtual FString GetContentType() const = 0;
	/** The content's size in bytes. */
	virtual int32 GetContentLength() const = 0;
	/** The content's bytes. */
	virtual const TArray<uint8>& GetContent() const = 0;
};
