#include "Misc/AssertionMacros.h"

#include <cstdio>
#include <cstdlib>

namespace ZnStandalone
{
void AssertFailed(const char* Expression, const char* File, int Line, const char* Message)
{
	std::fprintf(stderr, "Assertion failed: %s [%s:%d]%s%s\n", Expression, File, Line, Message ? " " : "",
		Message ? Message : "");
	std::fflush(stderr);
	std::abort();
}
} // namespace ZnStandalone
