// The printf engine shared by FString::Printf and the log macros.
#pragma once

#include "Containers/UnrealString.h"

#include <cstdarg>

namespace ZnStandalone
{
/** Appends the formatted text to Out; see FString::Printf for the accepted conversions. */
void AppendFormatV(FString& Out, const TCHAR* Fmt, va_list Args);
} // namespace ZnStandalone
