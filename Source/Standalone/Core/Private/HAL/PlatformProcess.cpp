#include "HAL/PlatformProcess.h"

#include "Containers/UnrealString.h"
#include "HAL/ZnNativeString.h"
#include "Logging/LogMacros.h"

#include <dlfcn.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <string>

DEFINE_LOG_CATEGORY_STATIC(LogPlatformProcess, Log, All);

const TCHAR* FPlatformProcess::BaseDir()
{
	static const FString Directory = []()
	{
		std::string Path(4096, '\0');
		const ssize_t Length = readlink("/proc/self/exe", Path.data(), Path.size());
		if (Length <= 0)
		{
			return FString(TEXT("/"));
		}
		Path.resize(static_cast<size_t>(Length));
		Path.erase(Path.find_last_of('/') + 1);
		return ZnStandalone::FromNative(Path);
	}();
	return *Directory;
}

void* FPlatformProcess::GetDllHandle(const TCHAR* Filename)
{
	if (!Filename || !*Filename)
	{
		return nullptr;
	}
	const std::string Path = ZnStandalone::ToNative(FString(Filename));
	void* Handle = dlopen(Path.c_str(), RTLD_LAZY | RTLD_LOCAL);
	if (!Handle)
	{
		const char* Reason = dlerror();
		UE_LOG(LogPlatformProcess, Log, TEXT("dlopen failed: %s"),
			*ZnStandalone::FromNative(Reason ? Reason : "unknown reason"));
	}
	return Handle;
}

void FPlatformProcess::FreeDllHandle(void* DllHandle)
{
	// dlclose does not accept null, which stands for "nothing loaded" here.
	if (DllHandle)
	{
		dlclose(DllHandle);
	}
}

void* FPlatformProcess::GetDllExport(void* DllHandle, const TCHAR* ProcName)
{
	if (!DllHandle || !ProcName)
	{
		return nullptr;
	}
	return dlsym(DllHandle, ZnStandalone::ToNative(FString(ProcName)).c_str());
}

void FPlatformProcess::Sleep(float Seconds)
{
	if (!(Seconds > 0.0f))
	{
		return;
	}
	// A day is long enough for any caller and keeps the conversion to time_t defined.
	const double Clamped = std::fmin(static_cast<double>(Seconds), 86400.0);
	const double Whole = std::floor(Clamped);
	struct timespec Remaining;
	Remaining.tv_sec = static_cast<time_t>(Whole);
	Remaining.tv_nsec = static_cast<long>((Clamped - Whole) * 1e9);
	while (nanosleep(&Remaining, &Remaining) != 0 && errno == EINTR)
	{
	}
}
