// A local stand-in for the cloud motion service, for tests, tools and `zn serve`. It serves the
// token path, the three motion paths, a speech-synthesis path and the files it generates, over
// HTTP or HTTPS, on threads of its own; every answer can be made to fail on purpose (faults).
//
// Ownership: the service owns its listening socket, its worker threads and, when no folder is
// configured, the temporary folder it hosts files from (removed by Stop). The content source is
// shared with the caller; the service calls it from one thread at a time.
// Threads: every member may be called from any thread; Start and Stop from one thread at a time.
// Bad input (requests) never stops the service: each refusal is an answer with a non-zero "code"
// and a "msg" saying what was wrong. docs/local-service.md lists the paths, codes and faults.
#pragma once

#include "ZnContentSource.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct FZnLocalServiceApp
{
	std::string AppId;
	std::string Secret;
};

struct FZnLocalServiceConfig
{
	std::string Host = "127.0.0.1";
	// 0 picks a free port.
	int32_t Port = 0;
	// Empty: the app "demo" with secret "demo-secret".
	std::vector<FZnLocalServiceApp> Apps;
	// Hosted files; empty: a fresh temporary folder, removed by Stop.
	std::string Folder;
	// Both set: HTTPS with this certificate and key (PEM files).
	std::string TlsCertFile, TlsKeyFile;
	int32_t TokenLifetimeSeconds = 7200;
	int32_t TimestampToleranceSeconds = 300;
	// Null: the motion-generator source (clips and a WAV of the text's length).
	std::shared_ptr<IZnContentSource> Content;
	// Null: one line per request to standard error.
	std::function<void(const std::string&)> LogLine;
	// A fault applied to every request (the command line's option); empty: none.
	std::string DefaultFault;
	// Voice requests may name audio URLs not hosted here.
	bool bAllowRemoteAudio = false;
	// Largest request body accepted, bytes; a larger one is refused with status 413.
	int64_t MaxBodyBytes = 1 << 20;
	// Largest audio file a voice request may name (hosted or remote), bytes.
	int64_t MaxAudioBytes = 64 << 20;
	// Connections served at once; more wait for a free worker.
	int32_t WorkerThreads = 32;
};

class FZnLocalService
{
public:
	explicit FZnLocalService(FZnLocalServiceConfig Config = {});
	// Stop().
	~FZnLocalService();

	FZnLocalService(const FZnLocalService&) = delete;
	FZnLocalService& operator=(const FZnLocalService&) = delete;

	// Binds, serves on its own threads, returns once listening. False with Error set when the
	// address cannot be bound, the TLS files cannot be read, the folder cannot be made or the
	// default fault is not a fault.
	bool Start(std::string& Error);
	// Idempotent; ends stalled and delayed answers too.
	void Stop();
	// e.g. "http://127.0.0.1:40123" ("https://..." with TLS), no trailing slash; empty before Start.
	std::string BaseUrl() const;
	int32_t Port() const;
	// The service's paths (token, motion, speech, then the hosted-file prefix "/files/").
	std::vector<std::string> ServedPaths() const;
	// The speech-synthesis path: "/v1.0/api/ttsSynthesize".
	static const char* const SpeechPath;
	// The prefix under which generated and HostFile'd files are served.
	static const char* const FilesPath;

	// Hosts Bytes under Name (a plain file name: letters, digits, '.', '-' and '_', not starting
	// with '.') and returns its full URL; empty when the name is not plain or the file cannot be
	// written, and before Start. Replaces a file of the same name.
	std::string HostFile(const std::string& Name, const std::vector<uint8_t>& Bytes);
	// A token the motion paths accept for AppId, as the token path would issue it;
	// LifetimeSeconds < 0: the configured one (0: already expired). Empty before Start.
	std::string IssueToken(const std::string& AppId, int32_t LifetimeSeconds = -1);
	// The next Count requests whose path starts with PathPrefix get Fault (same text as the URL
	// form). A fault text that is not a fault is ignored (and logged).
	void InjectFault(const std::string& PathPrefix, const std::string& Fault, int32_t Count = 1);
	// Url with the URL form of Fault inserted after its host: WithFault("http://h:1/files/a.wav", "drop")
	// gives "http://h:1/_fault/drop/files/a.wav".
	static std::string WithFault(const std::string& Url, const std::string& Fault);
	// Requests answered (or dropped) since Start, faulted and refused ones included.
	uint64_t RequestCount() const;

private:
	struct FImpl;
	std::unique_ptr<FImpl> Impl;
};
