// One transfer as the worker thread sees it: a copy of the request's setup, taken when the
// request starts, and the result the worker fills in. The game thread creates it and, once the
// worker has queued it as finished, reads the result and destroys it; in between only the worker
// touches it.
#pragma once

#include "CoreMinimal.h"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

class FCurlHttpRequest;

struct FHttpTransfer
{
	uint64 Id = 0;
	// Keeps the request alive until its completion has been delivered (or dropped at shutdown).
	TSharedPtr<FCurlHttpRequest, ESPMode::ThreadSafe> Request;

	// Setup, read-only for the worker.
	std::string Url;
	std::string Verb;
	std::vector<std::string> HeaderLines;
	TArray<uint8> Body;
	float TimeoutSeconds = 0.0f;
	float ConnectionTimeoutSeconds = 0.0f;
	int32 InactivityTimeoutSeconds = 0;
	int64 MaxResponseBytes = 0;
	int32 MaxRedirects = 0;
	int32 MaxConnectionsPerHost = 0;
	std::string CaFile;
	// Never sent (empty URL): completes at once, without a response.
	bool bNotSent = false;

	// Result, written by the worker.
	int32 ResponseCode = 0;
	bool bSucceeded = false;
	bool bCancelled = false;
	bool bTooLarge = false;
	std::string Error;
	std::vector<std::pair<std::string, std::string>> ResponseHeaders;
	TArray<uint8> ResponseBody;
	std::string EffectiveUrl;
	std::chrono::steady_clock::time_point StartTime;
	std::chrono::steady_clock::time_point EndTime;

	// Worker only: the libcurl handles while the transfer runs.
	void* Easy = nullptr;
	void* HeaderList = nullptr;
	class FCurlTransferThread* Owner = nullptr;
};
