// IHttpRequest: one HTTP request, created by FHttpModule::Get().CreateRequest().
//
// Set it up, bind OnProcessRequestComplete, call ProcessRequest. The transfer runs on the HTTP
// worker thread; the completion delegate is called later on the game thread, when the host ticks
// the HTTP manager (every frame through the core ticker), exactly once per ProcessRequest that
// returned true, and also once for a request that could not be sent (empty URL). A delegate bound
// to an object that has been destroyed in the meantime is not called.
//
// bConnectedSuccessfully is true when a complete response arrived, whatever its status (a 404 is
// a success here; look at the response code). It is false for a connection failure, a timeout, a
// cut or oversized response, a refused certificate and a cancel. The response passed on failure
// carries the status if one arrived (0 otherwise) and no content; it is null only when the request
// was never sent.
//
// Threads: create, set up, start, cancel and read a request on the game thread.
#pragma once

#include "CoreMinimal.h"
#include "Delegates/Delegate.h"
#include "Interfaces/IHttpBase.h"
#include "Templates/SharedPointer.h"

class IHttpRequest;
class IHttpResponse;

typedef TSharedPtr<IHttpRequest, ESPMode::ThreadSafe> FHttpRequestPtr;
typedef TSharedPtr<IHttpResponse, ESPMode::ThreadSafe> FHttpResponsePtr;

DECLARE_DELEGATE_ThreeParams(FHttpRequestCompleteDelegate, FHttpRequestPtr /*Request*/, FHttpResponsePtr /*Response*/,
	bool /*bConnectedSuccessfully*/);

namespace EHttpRequestStatus
{
enum Type
{
	/** Set up, not yet started. */
	NotStarted,
	/** Started; the completion has not been delivered yet. */
	Processing,
	/** Finished without a complete response (timeout, cut, too large, cancelled, refused). */
	Failed,
	/** Finished without any response: no connection, or no status line. */
	Failed_ConnectionError,
	/** A complete response arrived (any HTTP status). */
	Succeeded
};

inline const TCHAR* ToString(Type Status)
{
	switch (Status)
	{
		case NotStarted:
			return TEXT("NotStarted");
		case Processing:
			return TEXT("Processing");
		case Failed:
			return TEXT("Failed");
		case Failed_ConnectionError:
			return TEXT("ConnectionError");
		case Succeeded:
			return TEXT("Succeeded");
	}
	return TEXT("Unknown");
}
} // namespace EHttpRequestStatus

class IHttpRequest : public IHttpBase
{
public:
	/** The verb; "GET" until set. */
	virtual FString GetVerb() const = 0;
	/** Any verb the server understands ("GET", "POST", "PUT", "DELETE", ...). */
	virtual void SetVerb(const FString& Verb) = 0;
	/** An http:// or https:// URL; other schemes fail the request. */
	virtual void SetURL(const FString& URL) = 0;
	/** The body as raw bytes; replaces any earlier body. Sent with every verb, GET included. */
	virtual void SetContent(const TArray<uint8>& ContentPayload) = 0;
	virtual void SetContent(TArray<uint8>&& ContentPayload) = 0;
	/** The body as text, sent as UTF-8; replaces any earlier body. */
	virtual void SetContentAsString(const FString& ContentString) = 0;
	/** Sets a header; a second call with the same name (any case) replaces the value. */
	virtual void SetHeader(const FString& HeaderName, const FString& HeaderValue) = 0;
	/**
	 * The limit for the whole request in seconds, connection to last byte. Without one the
	 * transport's defaults apply: a connection timeout and an inactivity timeout (see
	 * FHttpTransportSettings). Zero or less clears it.
	 */
	virtual void SetTimeout(float InTimeoutSecs) = 0;
	virtual void ClearTimeout() = 0;
	/** The limit set by SetTimeout, or 0 when none is set. */
	virtual float GetTimeout() const = 0;

	/**
	 * Starts the request. False when it cannot start: already in flight, the HTTP module shut
	 * down (then no completion follows), or an empty URL (then the completion follows on the
	 * next tick, with a null response and bConnectedSuccessfully false). A finished request may be
	 * started again.
	 */
	virtual bool ProcessRequest() = 0;
	virtual FHttpRequestCompleteDelegate& OnProcessRequestComplete() = 0;
	/** Stops a request in flight; its completion follows with bConnectedSuccessfully false. */
	virtual void CancelRequest() = 0;

	virtual EHttpRequestStatus::Type GetStatus() const = 0;
	/** The response once the completion has been delivered; null before. */
	virtual const FHttpResponsePtr GetResponse() const = 0;
	/** Seconds from ProcessRequest to the end of the transfer (to now while it runs). */
	virtual float GetElapsedTime() const = 0;
};
