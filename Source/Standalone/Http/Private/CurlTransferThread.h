// The one worker thread that moves every HTTP transfer through a libcurl multi handle.
//
// The game thread hands transfers in (Submit) and asks for cancels (Cancel); the worker wakes,
// adds or removes them, drives the sockets, and queues each finished transfer for the game thread
// (TakeFinished). Stop cancels what is in flight and joins the thread; the unfinished transfers
// come back to the caller so that they are released on the game thread, without completion.
#pragma once

#include "HttpTransfer.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

typedef void CURLM;

class FCurlTransferThread
{
public:
	FCurlTransferThread();
	~FCurlTransferThread();

	void Submit(std::unique_ptr<FHttpTransfer> Transfer);
	void Cancel(uint64 TransferId);
	// Queues a transfer as finished without giving it to libcurl (a request that cannot be sent).
	void FinishWithoutSending(std::unique_ptr<FHttpTransfer> Transfer);

	// Moves the finished transfers, in the order they finished, into Out.
	void TakeFinished(std::vector<std::unique_ptr<FHttpTransfer>>& Out);
	// Waits until something is queued as finished or Seconds have passed.
	void WaitForFinished(double Seconds);

	// Ends the thread; returns every transfer not yet taken, finished or not.
	std::vector<std::unique_ptr<FHttpTransfer>> Stop();

	// Body bytes reserved by transfers not yet taken, and the peaks (see FHttpTransportStats).
	int64 GetBufferedBytes() const { return BufferedBytes.load(); }
	int64 GetPeakBufferedBytes() const { return PeakBufferedBytes.load(); }
	int64 GetPeakRequestBufferBytes() const { return PeakRequestBufferBytes.load(); }
	void ResetPeaks();
	// Called when a finished transfer's body has left the transport.
	void ReleaseBuffered(int64 Bytes);

	// Used by the transfer callbacks on the worker thread.
	void NoteReserved(int64 DeltaBytes, int64 RequestBytes);

private:
	void Run();
	void AddPending();
	void ReadDone();
	void Finish(FHttpTransfer* Transfer, int Result);

	CURLM* Multi = nullptr;
	std::thread Thread;

	std::mutex Mutex;
	std::condition_variable FinishedSignal;
	std::vector<std::unique_ptr<FHttpTransfer>> Pending;
	std::vector<uint64> PendingCancels;
	std::deque<std::unique_ptr<FHttpTransfer>> Finished;
	bool bStopping = false;

	// Worker thread only: the per-host connection limit in force, and the transfers libcurl is moving.
	int32 MaxConnectionsPerHost = 0;
	std::vector<std::unique_ptr<FHttpTransfer>> Active;

	std::atomic<int64> BufferedBytes{0};
	std::atomic<int64> PeakBufferedBytes{0};
	std::atomic<int64> PeakRequestBufferBytes{0};
};
