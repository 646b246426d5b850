// check() and friends: programmer errors stop the program with a message, as in the engine's
// development builds. Bad input must never reach them; it is handled where it enters.
#pragma once

#include "HAL/Platform.h"

namespace ZnStandalone
{
[[noreturn]] void AssertFailed(const char* Expression, const char* File, int Line, const char* Message = nullptr);
}

#define check(expr)                                                  \
	do                                                               \
	{                                                                \
		if (UNLIKELY(!(expr)))                                       \
		{                                                            \
			::ZnStandalone::AssertFailed(#expr, __FILE__, __LINE__); \
		}                                                            \
	} while (0)

#define checkf(expr, ...) check(expr)
#define checkNoEntry() ::ZnStandalone::AssertFailed("checkNoEntry", __FILE__, __LINE__)
#define verify(expr) check(expr)
#define ensure(expr) (LIKELY(!!(expr)))
#define ensureMsgf(expr, ...) (LIKELY(!!(expr)))
#define checkSlow(expr)
