// The request FHttpModule::CreateRequest makes. Its setup is copied into a transfer when it starts,
// so changing it while in flight affects only a later start.
#pragma once

#include "Interfaces/IHttpRequest.h"
#include "Interfaces/IHttpResponse.h"

#include <chrono>
#include <memory>

struct FHttpTransfer;

class FCurlHttpRequest
	: public IHttpRequest
	, public TSharedFromThis<FCurlHttpRequest, ESPMode::ThreadSafe>
{
public:
	FString GetURL() const override { return Url; }
	FString GetHeader(const FString& HeaderName) const override;
	TArray<FString> GetAllHeaders() const override;
	FString GetContentType() const override { return GetHeader(TEXT("Content-Type")); }
	int32 GetContentLength() const override { return Content.Num(); }
	const TArray<uint8>& GetContent() const override { return Content; }

	FString GetVerb() const override { return Verb; }
	void SetVerb(const FString& InVerb) override { Verb = InVerb.ToUpper(); }
	void SetURL(const FString& InUrl) override { Url = InUrl; }
	void SetContent(const TArray<uint8>& ContentPayload) override { Content = ContentPayload; }
	void SetContent(TArray<uint8>&& ContentPayload) override { Content = MoveTemp(ContentPayload); }
	void SetContentAsString(const FString& ContentString) override;
	void SetHeader(const FString& HeaderName, const FString& HeaderValue) override;
	void SetTimeout(float InTimeoutSecs) override { TimeoutSeconds = InTimeoutSecs > 0.0f ? InTimeoutSecs : 0.0f; }
	void ClearTimeout() override { TimeoutSeconds = 0.0f; }
	float GetTimeout() const override { return TimeoutSeconds; }

	bool ProcessRequest() override;
	FHttpRequestCompleteDelegate& OnProcessRequestComplete() override { return CompleteDelegate; }
	void CancelRequest() override;

	EHttpRequestStatus::Type GetStatus() const override { return Status; }
	const FHttpResponsePtr GetResponse() const override { return Response; }
	float GetElapsedTime() const override;

	// Called by the manager on the game thread with the finished transfer: sets the response and
	// status and calls the completion delegate.
	void FinishRequest(FHttpTransfer& Transfer);
	// Called by the manager when the module shuts down with this request in flight: no completion.
	void AbandonRequest();

private:
	FString Verb = TEXT("GET");
	FString Url;
	TArray<TPair<FString, FString>> Headers;
	TArray<uint8> Content;
	float TimeoutSeconds = 0.0f;
	FHttpRequestCompleteDelegate CompleteDelegate;

	EHttpRequestStatus::Type Status = EHttpRequestStatus::NotStarted;
	FHttpResponsePtr Response;
	uint64 TransferId = 0;
	std::chrono::steady_clock::time_point StartTime;
	std::chrono::steady_clock::time_point EndTime;
};
