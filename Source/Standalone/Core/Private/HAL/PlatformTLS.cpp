#include "HAL/PlatformTLS.h"

#include <sys/syscall.h>
#include <unistd.h>

uint32 FPlatformTLS::GetCurrentThreadId()
{
	// Cached per thread: the id never changes while the thread lives.
	thread_local const uint32 ThreadId = static_cast<uint32>(syscall(SYS_gettid));
	return ThreadId;
}
