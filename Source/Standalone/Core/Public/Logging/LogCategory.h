// Log categories: a name plus a run-time verbosity level that can be lowered or raised up to the
// level compiled in. Categories are usually declared with the macros in Logging/LogMacros.h.
#pragma once

#include "CoreTypes.h"
#include "Logging/LogVerbosity.h"
#include "UObject/NameTypes.h"

#include <atomic>

struct FLogCategoryBase
{
	CORE_API FLogCategoryBase(
		const TCHAR* CategoryName, ELogVerbosity::Type InDefaultVerbosity, ELogVerbosity::Type InCompileTimeVerbosity);
	CORE_API ~FLogCategoryBase();
	FLogCategoryBase(const FLogCategoryBase&) = delete;
	FLogCategoryBase& operator=(const FLogCategoryBase&) = delete;

	/** True when a message at VerbosityLevel would not be shown. Safe from any thread. */
	FORCEINLINE bool IsSuppressed(ELogVerbosity::Type VerbosityLevel) const
	{
		return !((VerbosityLevel & ELogVerbosity::VerbosityMask) <= Verbosity.load(std::memory_order_relaxed));
	}
	FORCEINLINE const FName& GetCategoryName() const { return CategoryFName; }
	FORCEINLINE ELogVerbosity::Type GetVerbosity() const
	{
		return ELogVerbosity::Type(Verbosity.load(std::memory_order_relaxed));
	}
	FORCEINLINE ELogVerbosity::Type GetCompileTimeVerbosity() const { return CompileTimeVerbosity; }
	/** Sets the run-time level, capped at the compile-time level. */
	CORE_API void SetVerbosity(ELogVerbosity::Type NewVerbosity);
	/** Back to the level given at declaration. */
	CORE_API void ResetToDefault();

private:
	std::atomic<uint8> Verbosity;
	ELogVerbosity::Type DefaultVerbosity;
	ELogVerbosity::Type CompileTimeVerbosity;
	FName CategoryFName;
};

template <ELogVerbosity::Type InDefaultVerbosity, ELogVerbosity::Type InCompileTimeVerbosity>
struct FLogCategory : public FLogCategoryBase
{
	static_assert(
		(InDefaultVerbosity & ELogVerbosity::VerbosityMask) < ELogVerbosity::NumVerbosity, "Bogus default verbosity.");
	static_assert(InCompileTimeVerbosity < ELogVerbosity::NumVerbosity, "Bogus compile time verbosity.");
	static constexpr ELogVerbosity::Type CompileTimeVerbosity = InCompileTimeVerbosity;

	FORCEINLINE FLogCategory(const TCHAR* CategoryName)
		: FLogCategoryBase(CategoryName, InDefaultVerbosity, CompileTimeVerbosity)
	{
	}
};
