// FOutputDevice: a destination for log lines (console, file, a test's capture buffer, ...).
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Logging/LogVerbosity.h"
#include "UObject/NameTypes.h"

class FOutputDevice
{
public:
	FOutputDevice() = default;
	FOutputDevice(const FOutputDevice&) = default;
	FOutputDevice& operator=(const FOutputDevice&) = default;
	virtual ~FOutputDevice() = default;

	/**
	 * Receives one message: V is the formatted text without time stamp, category or line end;
	 * it is valid only during the call. Called with the redirector's lock held, from whichever
	 * thread logged; an implementation must not log from inside it.
	 */
	virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) = 0;
	/** Same with the time of the message in seconds since the start of the program. */
	virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category, const double Time)
	{
		Serialize(V, Verbosity, Category);
	}
	virtual void Flush() {}
	virtual void TearDown() {}
	virtual bool CanBeUsedOnAnyThread() const { return false; }
	virtual bool CanBeUsedOnMultipleThreads() const { return false; }
	virtual bool IsMemoryOnly() const { return false; }

	void Log(const TCHAR* S) { Serialize(S, ELogVerbosity::Log, NAME_None); }
	void Log(const FString& S) { Log(*S); }
	void Log(ELogVerbosity::Type Verbosity, const TCHAR* S) { Serialize(S, Verbosity, NAME_None); }
	void Log(const FName& Category, ELogVerbosity::Type Verbosity, const TCHAR* S)
	{
		Serialize(S, Verbosity, Category);
	}
	void Log(const FName& Category, ELogVerbosity::Type Verbosity, const FString& S)
	{
		Serialize(*S, Verbosity, Category);
	}

	template <typename FmtType, typename... Types>
	void Logf(const FmtType& Fmt, Types... Args)
	{
		Log(*FString::Printf(Fmt, Args...));
	}
	template <typename FmtType, typename... Types>
	void Logf(ELogVerbosity::Type Verbosity, const FmtType& Fmt, Types... Args)
	{
		Log(Verbosity, *FString::Printf(Fmt, Args...));
	}
};
