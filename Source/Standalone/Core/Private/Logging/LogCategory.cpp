#include "Logging/LogCategory.h"

#include "Logging/LogMacros.h"

DEFINE_LOG_CATEGORY(LogTemp);

FLogCategoryBase::FLogCategoryBase(
	const TCHAR* CategoryName, ELogVerbosity::Type InDefaultVerbosity, ELogVerbosity::Type InCompileTimeVerbosity)
	: Verbosity(uint8(InDefaultVerbosity & ELogVerbosity::VerbosityMask))
	, DefaultVerbosity(InDefaultVerbosity)
	, CompileTimeVerbosity(InCompileTimeVerbosity)
	, CategoryFName(CategoryName)
{
	SetVerbosity(InDefaultVerbosity);
}

FLogCategoryBase::~FLogCategoryBase() = default;

void FLogCategoryBase::SetVerbosity(ELogVerbosity::Type NewVerbosity)
{
	uint8 Level = uint8(NewVerbosity & ELogVerbosity::VerbosityMask);
	if (Level > uint8(CompileTimeVerbosity))
	{
		Level = uint8(CompileTimeVerbosity);
	}
	Verbosity.store(Level, std::memory_order_relaxed);
}

void FLogCategoryBase::ResetToDefault()
{
	SetVerbosity(DefaultVerbosity);
}

const TCHAR* ToString(ELogVerbosity::Type Verbosity)
{
	switch (Verbosity & ELogVerbosity::VerbosityMask)
	{
		case ELogVerbosity::NoLogging:
			return TEXT("NoLogging");
		case ELogVerbosity::Fatal:
			return TEXT("Fatal");
		case ELogVerbosity::Error:
			return TEXT("Error");
		case ELogVerbosity::Warning:
			return TEXT("Warning");
		case ELogVerbosity::Display:
			return TEXT("Display");
		case ELogVerbosity::Log:
			return TEXT("Log");
		case ELogVerbosity::Verbose:
			return TEXT("Verbose");
		case ELogVerbosity::VeryVerbose:
			return TEXT("VeryVerbose");
		default:
			return TEXT("UnknownVerbosity");
	}
}
