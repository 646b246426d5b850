// FOutputDeviceRedirector (GLog): hands every log message to all registered output devices.
// From program start it holds one device that writes to standard error.
#pragma once

#include "Containers/Array.h"
#include "CoreTypes.h"
#include "Misc/OutputDevice.h"

#include <mutex>

class FOutputDeviceRedirector : public FOutputDevice
{
public:
	/** The process-wide redirector (never destroyed, so logging works during static teardown). */
	static CORE_API FOutputDeviceRedirector* Get();

	/** Registers Device (not owned; it must be removed before it is destroyed). Adding twice is a no-op. */
	CORE_API void AddOutputDevice(FOutputDevice* Device);
	CORE_API void RemoveOutputDevice(FOutputDevice* Device);
	CORE_API bool IsRedirectingTo(FOutputDevice* Device);

	/** Passes the message to every device in registration order. Thread-safe. */
	CORE_API void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override;
	CORE_API void Serialize(
		const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category, const double Time) override;
	CORE_API void Flush() override;
	CORE_API void TearDown() override;
	bool CanBeUsedOnAnyThread() const override { return true; }
	bool CanBeUsedOnMultipleThreads() const override { return true; }

private:
	FOutputDeviceRedirector();
	std::recursive_mutex Mutex;
	TArray<FOutputDevice*> OutputDevices;
};

/** The global log; the same object as FOutputDeviceRedirector::Get(). */
CORE_API extern FOutputDeviceRedirector* GLog;
