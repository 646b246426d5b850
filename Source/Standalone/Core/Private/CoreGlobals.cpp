#include "CoreGlobals.h"

#include "HAL/PlatformTLS.h"

bool GIsEditor = false;
uint32 GGameThreadId = FPlatformTLS::GetCurrentThreadId();
uint32 GRenderThreadId = 0;
uint32 GRHIThreadId = 0;

bool IsInGameThread()
{
	return FPlatformTLS::GetCurrentThreadId() == GGameThreadId;
}

bool IsInRenderingThread()
{
	return GRenderThreadId != 0 && FPlatformTLS::GetCurrentThreadId() == GRenderThreadId;
}

bool IsInRHIThread()
{
	return GRHIThreadId != 0 && FPlatformTLS::GetCurrentThreadId() == GRHIThreadId;
}
