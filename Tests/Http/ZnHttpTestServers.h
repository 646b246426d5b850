// Servers for the transport tests, all bound to 127.0.0.1 on a port the system picks.
#pragma once

#include "CoreMinimal.h"
#include "HttpManager.h"
#include "HttpModule.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace httplib
{
class Server;
}

// cpp-httplib's server on its own thread; Routes is called with the server before it listens.
class FZnTestHttpServer
{
public:
	// Plain HTTP, or HTTPS when both files are given.
	explicit FZnTestHttpServer(const std::function<void(httplib::Server&)>& Routes,
		const std::string& CertFile = std::string(), const std::string& KeyFile = std::string());
	~FZnTestHttpServer();

	int Port() const { return BoundPort; }
	// "http://127.0.0.1:<port>" (or https) followed by Path.
	std::string Url(const std::string& Path) const;

private:
	std::unique_ptr<httplib::Server> Server;
	std::thread Thread;
	int BoundPort = 0;
	bool bTls = false;
};

// A TCP server that hands every accepted connection to Handler on a thread of its own; the
// connection is shut down when the handler returns. The handler sees Stopping turn true when the
// server is destroyed; every connection is shut down then, so a handler blocked on it returns.
class FZnRawTestServer
{
public:
	using FHandler = std::function<void(int Socket, const std::atomic<bool>& Stopping)>;

	explicit FZnRawTestServer(FHandler InHandler);
	~FZnRawTestServer();

	int Port() const { return BoundPort; }
	std::string Url(const std::string& Path) const;
	int Accepted() const { return AcceptedCount.load(); }

	// Reads the request head (up to the blank line) from Socket; empty when the peer closed first.
	static std::string ReadRequestHead(int Socket);
	// Reads a whole request with a Content-Length body (head and body as received).
	static std::string ReadRequest(int Socket);
	static void SendAll(int Socket, const std::string& Bytes);

private:
	void AcceptLoop();

	FHandler Handler;
	int ListenSocket = -1;
	int BoundPort = 0;
	std::atomic<bool> Stopping{false};
	std::atomic<int> AcceptedCount{0};
	std::thread AcceptThread;
	std::mutex Mutex;
	std::vector<int> Connections;
	std::vector<std::thread> Workers;
};

// A certificate authority and a server certificate for the address 127.0.0.1 only, signed by it, made with the
// openssl program in a fresh folder under the working directory.
struct FZnTestCertificates
{
	std::string CaFile;
	std::string CertFile;
	std::string KeyFile;
	bool bMade = false;

	static FZnTestCertificates Make(const std::string& Folder);
};

// What a completion delegate saw.
struct FZnRecordedCompletion
{
	int32 Calls = 0;
	bool bConnected = false;
	bool bResponseValid = false;
	int32 Code = -1;
	std::string Body;
	uint32 ThreadId = 0;
	EHttpRequestStatus::Type StatusInCall = EHttpRequestStatus::NotStarted;

	// Binds Request's completion to record into this object (which must outlive the request's flight).
	void Bind(IHttpRequest& Request);
};

// Ticks the HTTP manager until Done holds or Seconds have passed.
bool ZnTickUntil(const std::function<bool()>& Done, double Seconds = 20.0);

// A new GET request for Url (UTF-8), not started.
TSharedRef<IHttpRequest, ESPMode::ThreadSafe> ZnNewRequest(const std::string& Url);

// Fetches Url with a GET and waits for its completion; what the completion saw.
FZnRecordedCompletion ZnFetch(const std::string& Url);

// Restores the transport's default settings when a test ends.
struct FZnScopedTransportSettings
{
	FHttpTransportSettings Saved = FHttpModule::Get().GetTransportSettings();
	~FZnScopedTransportSettings() { FHttpModule::Get().SetTransportSettings(Saved); }
};
