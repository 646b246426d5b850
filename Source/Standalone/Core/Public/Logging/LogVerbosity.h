// Log verbosity levels: a message is shown when its level is at or below its category's level.
#pragma once

#include "CoreTypes.h"

namespace ELogVerbosity
{
enum Type : uint8
{
	/** Category level only: nothing is logged (Fatal still stops the program). */
	NoLogging = 0,
	/** Always logged; the program stops afterwards. */
	Fatal,
	Error,
	Warning,
	Display,
	Log,
	Verbose,
	VeryVerbose,

	All = VeryVerbose,
	NumVerbosity,
	VerbosityMask = 0xf,
	SetColor = 0x40,
	BreakOnLog = 0x80
};
} // namespace ELogVerbosity

/** "NoLogging", "Fatal", "Error", "Warning", "Display", "Log", "Verbose", "VeryVerbose" or "UnknownVerbosity". */
CORE_API const TCHAR* ToString(ELogVerbosity::Type Verbosity);
