#include "Misc/OutputDeviceRedirector.h"

#include "Logging/LogMacros.h"
#include "Misc/DateTime.h"
#include "StringFormat.h"

#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace
{
// Writes engine-style lines to standard error: "[2024.01.02-03.04.05:678][  0]Category: Warning: text".
class FOutputDeviceStdErr final : public FOutputDevice
{
public:
	void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
	{
		FString Line =
			FString::Printf(TEXT("[%s][%3d]"), *FDateTime::UtcNow().ToString(TEXT("%Y.%m.%d-%H.%M.%S:%s")), 0);
		if (!Category.IsNone())
		{
			Line += Category.ToString();
			Line += TEXT(": ");
		}
		if ((Verbosity & ELogVerbosity::VerbosityMask) != ELogVerbosity::Log)
		{
			Line += ToString(Verbosity);
			Line += TEXT(": ");
		}
		Line += V;
		Line.AppendChar(TEXT('\n'));
		const FTCHARToUTF8 Utf8(*Line, Line.Len());
		std::fwrite(Utf8.Get(), 1, size_t(Utf8.Length()), stderr);
	}
	void Flush() override { std::fflush(stderr); }
	bool CanBeUsedOnAnyThread() const override { return true; }
};

double SecondsSinceStart()
{
	static const std::chrono::steady_clock::time_point Start = std::chrono::steady_clock::now();
	return std::chrono::duration<double>(std::chrono::steady_clock::now() - Start).count();
}
} // namespace

FOutputDeviceRedirector* GLog = FOutputDeviceRedirector::Get();

FOutputDeviceRedirector::FOutputDeviceRedirector()
{
	static FOutputDeviceStdErr* StdErr = new FOutputDeviceStdErr();
	OutputDevices.Add(StdErr);
}

FOutputDeviceRedirector* FOutputDeviceRedirector::Get()
{
	// Deliberately leaked: static objects may still log while the program shuts down.
	static FOutputDeviceRedirector* Instance = new FOutputDeviceRedirector();
	return Instance;
}

void FOutputDeviceRedirector::AddOutputDevice(FOutputDevice* Device)
{
	if (!Device)
	{
		return;
	}
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	OutputDevices.AddUnique(Device);
}

void FOutputDeviceRedirector::RemoveOutputDevice(FOutputDevice* Device)
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	OutputDevices.Remove(Device);
}

bool FOutputDeviceRedirector::IsRedirectingTo(FOutputDevice* Device)
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	return OutputDevices.Contains(Device);
}

void FOutputDeviceRedirector::Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category)
{
	Serialize(V, Verbosity, Category, SecondsSinceStart());
}

void FOutputDeviceRedirector::Serialize(
	const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category, const double Time)
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	// Iterate over a copy so that a device may unregister itself (or another) while being called.
	const TArray<FOutputDevice*> Devices = OutputDevices;
	for (FOutputDevice* Device : Devices)
	{
		Device->Serialize(V ? V : TEXT(""), Verbosity, Category, Time);
	}
}

void FOutputDeviceRedirector::Flush()
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	for (FOutputDevice* Device : OutputDevices)
	{
		Device->Flush();
	}
}

void FOutputDeviceRedirector::TearDown()
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	const TArray<FOutputDevice*> Devices = OutputDevices;
	for (FOutputDevice* Device : Devices)
	{
		Device->Flush();
		Device->TearDown();
	}
}

namespace ZnStandalone
{
void LogfImpl(const FLogCategoryBase& Category, ELogVerbosity::Type Verbosity, const TCHAR* Fmt, ...)
{
	FString Message;
	va_list Args;
	va_start(Args, Fmt);
	AppendFormatV(Message, Fmt, Args);
	va_end(Args);
	FOutputDeviceRedirector::Get()->Serialize(*Message, Verbosity, Category.GetCategoryName());
}

void LogFatalStop()
{
	FOutputDeviceRedirector::Get()->Flush();
	std::abort();
}
} // namespace ZnStandalone
