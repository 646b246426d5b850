// FHttpModule: the engine's HTTP module. CreateRequest makes requests; the manager delivers their
// completions on the game thread.
//
// Standalone build: the module starts on first use of Get() (a worker thread with libcurl's multi
// interface moves every transfer; there is no thread per request) and registers the manager's
// Tick with the core ticker, which the engine loop ticks every frame. Tools and tests without an
// engine loop call GetHttpManager().TickUntil(...). ShutdownModule cancels every request in flight
// without calling its completion, and no completion runs afterwards; StartupModule starts it again.
// Threads: game thread only, except where a function says otherwise.
#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"
#include "Interfaces/IHttpResponse.h"
#include "Modules/ModuleInterface.h"

#include <memory>

class FHttpManager;

/**
 * The transport's defaults (standalone build). A request reads them when it starts, so a change
 * affects requests started afterwards.
 */
struct FHttpTransportSettings
{
	/** Seconds allowed to establish the connection (TCP and TLS) when the request's own timeout is not shorter. */
	float ConnectionTimeoutSeconds = 5.0f;
	/**
	 * For requests without SetTimeout: the transfer fails when not one byte has moved for this many
	 * whole seconds (at least 1). A slow download that keeps receiving is never cut.
	 */
	int32 InactivityTimeoutSeconds = 10;
	/** A response body larger than this fails the request, and no more than this is ever held for it. */
	int64 MaxResponseBytes = 64 * 1024 * 1024;
	/**
	 * Connections open at once to one host and port; further requests wait for one to be free,
	 * and their own timeout includes the wait. Keeps a burst of requests from overrunning a
	 * server's accept queue.
	 */
	int32 MaxConnectionsPerHost = 32;
	/** Redirects followed per request; one more fails it. */
	int32 MaxRedirects = 8;
	/** A PEM file of the certificate authorities to trust instead of the system's store; empty: the system's store. */
	FString CaFile;
};

class FHttpModule : public IModuleInterface
{
public:
	/** The module, started on first use. */
	static FHttpModule& Get();

	/** A new request, not started. Any thread may create one; set it up and start it on the game thread. */
	TSharedRef<IHttpRequest, ESPMode::ThreadSafe> CreateRequest();

	FHttpManager& GetHttpManager();

	void StartupModule() override;
	/** Cancels requests in flight without completion and stops the worker; joins it before returning. */
	void ShutdownModule() override;
	bool IsRunning() const;

	const FHttpTransportSettings& GetTransportSettings() const { return Settings; }
	void SetTransportSettings(const FHttpTransportSettings& InSettings) { Settings = InSettings; }

	FHttpModule();
	~FHttpModule() override;

private:
	FHttpTransportSettings Settings;
	std::unique_ptr<FHttpManager> Manager;
};
