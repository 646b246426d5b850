// The access tokens the service has issued, each with its app and expiry. Thread-safe.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <random>
#include <string>

enum class EZnTokenCheck : uint8_t
{
	Valid,
	Unknown,
	Expired
};

class FZnTokenTable
{
public:
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

	// Expired tokens are forgotten once the table holds this many, so it cannot grow without bound
	// while tokens keep expiring; a forgotten token is then "unknown" rather than "expired".
	static constexpr size_t PruneAbove = 4096;

	mutable std::mutex Mutex;
	std::map<std::string, FEntry> Tokens;
	std::mt19937_64 Random;
};
