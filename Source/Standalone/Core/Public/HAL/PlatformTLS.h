// Thread identity.
#pragma once

#include "CoreTypes.h"

struct CORE_API FPlatformTLS
{
	// The operating system's id of the calling thread (the kernel thread id on Linux; the
	// process id on the main thread). Stable for the thread's life; may be reused afterwards.
	static uint32 GetCurrentThreadId();
};
