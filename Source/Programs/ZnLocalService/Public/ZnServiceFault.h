// A fault the local service puts into an answer on purpose, parsed from its text form (the same
// in the URL form "/_fault/<fault>/...", InjectFault and the command line):
//   delay=<ms>     answer normally after that many milliseconds (0..600000)
//   status=<code>  that HTTP status (100..599) with a JSON error envelope as body
//   drop           close the connection without any answer
//   truncate       announce the full length, send part of the body, close
//   malformed      status 200 with a body that is not valid JSON
//   code=<n>       status 200 with the service envelope whose "code" is n (any 32-bit integer)
//   stall          never answer (until the client gives up or the service stops)
//   restatus=<code> the usual answer and body, but with that HTTP status (100..599)
//   reply=<name>   status 200 with the bytes of the hosted file <name> as a JSON body, whatever
//                  the path and method (for answers no path gives, such as a "code" of 200.7)
// Pure functions; callable from any thread.
#pragma once

#include <cstdint>
#include <string>

enum class EZnFaultKind : uint8_t
{
	None,
	Delay,
	Status,
	Drop,
	Truncate,
	Malformed,
	Code,
	Stall,
	Restatus,
	Reply
};

struct FZnServiceFault
{
	EZnFaultKind Kind = EZnFaultKind::None;
	// Milliseconds for Delay, the HTTP status for Status and Restatus, the envelope code for Code.
	int64_t Value = 0;
	// The hosted file's name for Reply.
	std::string Name;

	// False with Error saying what is wrong for a text that is none of the forms above; Out is
	// then unchanged. An empty text is no fault (true, Kind None).
	static bool Parse(const std::string& Text, FZnServiceFault& Out, std::string& Error);
	// The text form ("" for None).
	std::string ToString() const;
};
