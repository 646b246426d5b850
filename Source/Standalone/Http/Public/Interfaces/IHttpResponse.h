// IHttpResponse: the answer to one request, handed to its completion delegate. Immutable once
// delivered; owned by whoever holds an FHttpResponsePtr to it.
#pragma once

#include "Interfaces/IHttpBase.h"

class IHttpResponse : public IHttpBase
{
public:
	/** The HTTP status of the final response (after redirects); 0 when no status line arrived. */
	virtual int32 GetResponseCode() const = 0;
	/** The content decoded as UTF-8; invalid sequences become U+FFFD, so binary content reads as noise. */
	virtual FString GetContentAsString() const = 0;
};
