// SHA-1 over narrow byte strings and the signature the motion service expects for an app token.
//
// The digest is computed by this small implementation rather than the engine's hashing because
// the service side is matched to its exact arithmetic: every message byte is sign-extended before
// the words are assembled, so any byte of 0x80 or above (all non-ASCII UTF-8) gives a digest that
// differs from standard SHA-1. Messages of bytes below 0x80 hash to standard SHA-1.
//
// All operations are static and keep no state; they may be called from any thread.
#pragma once

#include "CoreTypes.h"

#include <string>
#include <vector>

class ZNUTILSTOOLS_API Sha1
{
public:
	// The request signature: sha1(appId + timestamp + secret), concatenated without separators.
	// Note that the argument order (id, secret, timestamp) differs from the concatenation order.
	// An empty timestamp is replaced by the current time in milliseconds (getUnixStr), which is then
	// not returned: a caller that must send the timestamp along passes its own.
	static std::string GetSha1(std::string appId, std::string secret, std::string timestamp);

	// 40 lowercase hexadecimal digits of the digest of Message's bytes.
	static std::string sha1(const std::string& Message);

	// Milliseconds since 1970-01-01 00:00 UTC, from the wall clock.
	static int64 getUnix();

	// The same count as decimal digits (a leading "-" only if negative), read from the clock anew.
	static std::string getUnixStr();

private:
	// Builds the padded message with one byte per element (sign-extended) and the block count.
	static void append(const std::string& Message, int& OutBlockCount, std::vector<int>& OutPadded);

	// Expands block BlockIndex of the padded message into the 80-word schedule.
	static void setW(const std::vector<int>& Padded, int BlockIndex, unsigned int OutW[80]);

	// Value rotated left by Shift bits (0 < Shift < 32).
	static unsigned int S(unsigned int Value, int Shift);

	static unsigned int ft(int Round, unsigned int B, unsigned int C, unsigned int D);
	static unsigned int Kt(int Round);

	// printf-style formatting into a string of exactly the formatted length.
	static std::string format(const char* Format, ...);
};
