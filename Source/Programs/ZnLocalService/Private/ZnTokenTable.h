// The access tokens the service has issued, each with its app and expiry. Thread-safe.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <utility>

enum class EZnTokenCheck : uint8_t
{
	Valid,
	Unknown,
	Expired
};

class FZnTokenTable
{
public:
	// An expired token is remembered this long, so that it is refused as expired rather than unknown.
	static constexpr int64_t RememberExpiredMs = 60 * 60 * 1000;
	// At most this many tokens are kept: beyond it the one closest to expiring is forgotten, so a
	// client asking for tokens in a loop cannot exhaust the service's memory.
	static constexpr size_t MostTokens = 65536;

	FZnTokenTable();

	// A fresh token for AppId that expires at ExpiresAtMs (milliseconds since the Unix epoch).
	std::string Issue(const std::string& AppId, int64_t ExpiresAtMs, int64_t NowMs);
	// Valid while NowMs is before the expiry; OutExpiredForMs says how long ago it expired.
	EZnTokenCheck Check(const std::string& Token, int64_t NowMs, int64_t& OutExpiredForMs) const;

private:
	struct FEntry
	{
		std::string AppId;
		int64_t ExpiresAtMs = 0;
	};

	void Forget(std::set<std::pair<int64_t, std::string>>::iterator It);

	mutable std::mutex Mutex;
	std::map<std::string, FEntry> Tokens;
	// The same tokens ordered by expiry, so forgetting the oldest costs no scan.
	std::set<std::pair<int64_t, std::string>> ByExpiry;
	std::mt19937_64 Random;
};
