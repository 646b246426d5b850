// Small helpers shared by the service-message tests: engine strings compared as UTF-8 (so a
// failure prints readable text, and comparison is exact where FString's operator== ignores case)
// and golden texts built line by line with the platform line terminator.
#pragma once

#include "CoreMinimal.h"

#include <initializer_list>
#include <string>

namespace ZnServiceTest
{
inline std::string Utf8(const FString& Text)
{
	const FTCHARToUTF8 Converted(*Text, Text.Len());
	return std::string(Converted.Get(), Converted.Length());
}

inline FString FromUtf8(const char* Text)
{
	return FString(UTF8_TO_TCHAR(Text));
}

// Joins lines with LINE_TERMINATOR, the way the body writer ends its lines.
inline FString JoinLines(std::initializer_list<const TCHAR*> Lines)
{
	FString Result;
	bool bFirst = true;
	for (const TCHAR* Line : Lines)
	{
		if (!bFirst)
		{
			Result += LINE_TERMINATOR;
		}
		bFirst = false;
		Result += Line;
	}
	return Result;
}
} // namespace ZnServiceTest
