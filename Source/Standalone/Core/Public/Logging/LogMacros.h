// UE_LOG and the log category macros.
//
//   DECLARE_LOG_CATEGORY_EXTERN(LogMyThing, Log, All);   // in a header
//   DEFINE_LOG_CATEGORY(LogMyThing);                      // in one .cpp
//   UE_LOG(LogMyThing, Warning, TEXT("Loaded %d keys from %s"), Count, *Path);
//
// The format must be a TEXT literal and the arguments numbers, enums or pointers, as for
// FString::Printf. A message is formatted only when its category lets it through. Messages go to
// GLog; the standard-error device prints "[2024.01.02-03.04.05:678][  0]LogTemp: Warning: text"
// (UTC time stamp; the verbosity is omitted for Log). Fatal messages are always logged, then the
// program stops.
#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Logging/LogCategory.h"
#include "Logging/LogVerbosity.h"

#include <type_traits>

namespace ZnStandalone
{
/** Formats and sends one message to GLog; the engine-side of UE_LOG. */
CORE_API void LogfImpl(const FLogCategoryBase& Category, ELogVerbosity::Type Verbosity, const TCHAR* Fmt, ...);
/** Flushes the log and stops the program after a Fatal message. */
[[noreturn]] CORE_API void LogFatalStop();

template <typename FmtType, typename... Types>
FORCEINLINE void LogChecked(
	const FLogCategoryBase& Category, ELogVerbosity::Type Verbosity, const FmtType& Fmt, Types... Args)
{
	static_assert(TIsTCharArray<FmtType>::Value, "Formatting string must be a TCHAR array.");
	static_assert(TAllValidPrintfArgs<Types...>::Value, "Invalid argument(s) passed to UE_LOG");
	LogfImpl(Category, Verbosity, Fmt, Args...);
}
} // namespace ZnStandalone

#define DECLARE_LOG_CATEGORY_EXTERN(CategoryName, DefaultVerbosity, CompileTimeVerbosity)           \
	extern struct FLogCategory##CategoryName                                                        \
		: public FLogCategory<ELogVerbosity::DefaultVerbosity, ELogVerbosity::CompileTimeVerbosity> \
	{                                                                                               \
		FORCEINLINE FLogCategory##CategoryName()                                                    \
			: FLogCategory(TEXT(#CategoryName))                                                     \
		{                                                                                           \
		}                                                                                           \
	} CategoryName;

#define DEFINE_LOG_CATEGORY(CategoryName) FLogCategory##CategoryName CategoryName;

#define DEFINE_LOG_CATEGORY_STATIC(CategoryName, DefaultVerbosity, CompileTimeVerbosity)            \
	static struct FLogCategory##CategoryName                                                        \
		: public FLogCategory<ELogVerbosity::DefaultVerbosity, ELogVerbosity::CompileTimeVerbosity> \
	{                                                                                               \
		FORCEINLINE FLogCategory##CategoryName()                                                    \
			: FLogCategory(TEXT(#CategoryName))                                                     \
		{                                                                                           \
		}                                                                                           \
	} CategoryName;

/** Inside a class body; pair with DEFINE_LOG_CATEGORY_CLASS(Class, CategoryName) in one .cpp. */
#define DECLARE_LOG_CATEGORY_CLASS(CategoryName, DefaultVerbosity, CompileTimeVerbosity) \
	DEFINE_LOG_CATEGORY_STATIC(CategoryName, DefaultVerbosity, CompileTimeVerbosity)

#define DEFINE_LOG_CATEGORY_CLASS(Class, CategoryName) Class::FLogCategory##CategoryName Class::CategoryName;

#define UE_LOG_ACTIVE(CategoryName, Verbosity)                                \
	((ELogVerbosity::Verbosity & ELogVerbosity::VerbosityMask) <=             \
			std::decay<decltype(CategoryName)>::type::CompileTimeVerbosity && \
		!CategoryName.IsSuppressed(ELogVerbosity::Verbosity))

#define UE_GET_LOG_VERBOSITY(CategoryName) CategoryName.GetVerbosity()
#define UE_SET_LOG_VERBOSITY(CategoryName, Verbosity) CategoryName.SetVerbosity(ELogVerbosity::Verbosity);

#define UE_LOG(CategoryName, Verbosity, Format, ...)                                                   \
	do                                                                                                 \
	{                                                                                                  \
		if (ELogVerbosity::Verbosity == ELogVerbosity::Fatal)                                          \
		{                                                                                              \
			::ZnStandalone::LogChecked(CategoryName, ELogVerbosity::Verbosity, Format, ##__VA_ARGS__); \
			::ZnStandalone::LogFatalStop();                                                            \
		}                                                                                              \
		else if (UE_LOG_ACTIVE(CategoryName, Verbosity))                                               \
		{                                                                                              \
			::ZnStandalone::LogChecked(CategoryName, ELogVerbosity::Verbosity, Format, ##__VA_ARGS__); \
		}                                                                                              \
	} while (0)

#define UE_CLOG(Condition, CategoryName, Verbosity, Format, ...)    \
	do                                                              \
	{                                                               \
		if (Condition)                                              \
		{                                                           \
			UE_LOG(CategoryName, Verbosity, Format, ##__VA_ARGS__); \
		}                                                           \
	} while (0)

/** The engine's general-purpose category. */
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogTemp, Log, All);
