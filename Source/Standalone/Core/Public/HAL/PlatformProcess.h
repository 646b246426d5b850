// The running process: its executable's directory, dynamic libraries, sleeping.
#pragma once

#include "CoreTypes.h"

struct CORE_API FPlatformProcess
{
	// The absolute directory of the running executable, ending in "/". The text lives until the
	// process ends.
	static const TCHAR* BaseDir();

	// Loads a dynamic library with the path exactly as given (a name without "/" is looked up in
	// the system's library search path). Returns an opaque handle, or null when the library cannot
	// be loaded (the reason is logged). Each successful call must be matched by FreeDllHandle.
	static void* GetDllHandle(const TCHAR* Filename);
	// Releases a handle from GetDllHandle. A null handle is ignored.
	static void FreeDllHandle(void* DllHandle);
	// The address of an exported symbol, or null.
	static void* GetDllExport(void* DllHandle, const TCHAR* ProcName);

	// Blocks the calling thread for at least Seconds (nothing for zero or negative values).
	static void Sleep(float Seconds);
};
