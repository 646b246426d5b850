// FHttpManager: owns the transfer worker and delivers completions on the game thread.
//
// The worker queues each finished transfer; Tick calls the completion delegates of everything
// queued so far, in the order the transfers finished. Nothing is ever called on the worker thread.
#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"

#include <atomic>
#include <functional>
#include <memory>

struct FHttpTransportSettings;
class FCurlTransferThread;
class FCurlHttpRequest;

/** What the transport holds right now (standalone build). */
struct FHttpTransportStats
{
	/** Requests started and not yet delivered. */
	int32 RequestsInFlight = 0;
	/** Bytes reserved for response bodies not yet handed to a response object. */
	int64 BufferedBytes = 0;
	/** The largest BufferedBytes since the last ResetPeakStats. */
	int64 PeakBufferedBytes = 0;
	/** The largest body buffer any single request held since the last ResetPeakStats. */
	int64 PeakRequestBufferBytes = 0;
};

class FHttpManager
{
public:
	FHttpManager();
	~FHttpManager();

	/** Delivers the completions queued by the worker. Game thread. Returns true (keeps ticking). */
	bool Tick(float DeltaSeconds);

	/**
	 * Ticks until Condition returns true or TimeoutSeconds of wall time have passed, sleeping while
	 * nothing is queued. Condition is checked after every tick. True when it held. Game thread;
	 * for tools and tests that have no engine loop.
	 */
	bool TickUntil(const std::function<bool()>& Condition, double TimeoutSeconds);

	FHttpTransportStats GetTransportStats() const;
	void ResetPeakStats();

private:
	friend class FHttpModule;
	friend class FCurlHttpRequest;

	void Startup();
	void Shutdown();
	bool IsRunning() const { return Worker != nullptr; }

	// Hands a request to the worker; false when the module is shut down.
	bool StartRequest(const TSharedRef<FCurlHttpRequest, ESPMode::ThreadSafe>& Request,
		const FHttpTransportSettings& Settings, uint64& OutTransferId);
	// Fails a request that cannot be sent: its completion follows on the next tick.
	void FailBeforeSending(const TSharedRef<FCurlHttpRequest, ESPMode::ThreadSafe>& Request);
	void CancelTransfer(uint64 TransferId);

	std::unique_ptr<FCurlTransferThread> Worker;
	std::atomic<int32> RequestsInFlight{0};
};
