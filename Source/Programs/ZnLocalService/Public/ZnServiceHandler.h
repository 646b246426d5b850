// The local service's request handling without sockets: one request in, one answer out. The
// HTTP side (FZnLocalService) and the fuzz target drive it alike. It checks the token query,
// issues and checks tokens, reads the motion and speech bodies, asks the content source for media,
// hosts what it makes in its folder and serves those files back.
//
// Ownership: the handler owns its token table; it writes files into Config.Folder (which must
// exist) and shares Config.Content with the caller. Threads: Handle, HostFile and IssueToken may
// be called from many threads at once; content-source calls are made one at a time.
// Bad input: every request gets an answer; refusals carry a non-zero code (ZnServiceCodes.h).
#pragma once

#include "ZnLocalService.h"
#include "ZnServiceCodes.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

struct FZnServiceRequest
{
	std::string Method;
	// Decoded path, without the query.
	std::string Path;
	// The raw query after '?', undecoded (the token path reads its values verbatim).
	std::string Query;
	// Header names match without regard to ASCII case.
	std::vector<std::pair<std::string, std::string>> Headers;
	std::string Body;
};

struct FZnServiceAnswer
{
	int32_t Status = 200;
	std::string ContentType = "application/json";
	std::string Body;
	// The envelope's code and message (for the log; for files, 0 and the file's name).
	int32_t Code = 0;
	std::string Message;
};

class FZnServiceHandler
{
public:
	// Config.Folder must name an existing folder; Config.Content must be set. Host, Port, TLS
	// and fault settings are the HTTP side's and are ignored here.
	explicit FZnServiceHandler(FZnLocalServiceConfig Config);
	~FZnServiceHandler();

	// The base URL the hosted files' URLs start with (no trailing slash).
	void SetBaseUrl(const std::string& BaseUrl);
	std::string BaseUrl() const;

	FZnServiceAnswer Handle(const FZnServiceRequest& Request);

	// The error envelope {"code": Code, "msg": Message} with Status.
	static FZnServiceAnswer Refusal(int32_t Status, EZnServiceCode Code, const std::string& Message);

	std::string HostFile(const std::string& Name, const std::vector<uint8_t>& Bytes);
	std::string IssueToken(const std::string& AppId, int32_t LifetimeSeconds);

	// True for a name the file host accepts: 1..128 of letters, digits, '.', '-', '_', not
	// starting with '.'.
	static bool IsPlainFileName(const std::string& Name);

	// The clock tokens and timestamps are checked against, milliseconds since the Unix epoch
	// (Sha1::getUnix by default); tests and the fuzz target may fix it.
	std::function<int64_t()> NowMilliseconds;
	// Fetches a remote audio URL (only asked when remote audio is allowed); false with Error set.
	// Default: an HTTP(S) GET with a 10 s limit and Config.MaxAudioBytes at most.
	std::function<bool(const std::string& Url, std::vector<uint8_t>& Out, std::string& Error)> FetchRemoteAudio;

private:
	friend struct FZnServiceRoutes;
	struct FImpl;
	std::unique_ptr<FImpl> Impl;
};
