// Conversions between engine strings and the UTF-8 byte strings of the operating system's calls.
#pragma once

#include "Containers/UnrealString.h"
#include "Containers/StringConv.h"

#include <string>
#include <string_view>

namespace ZnStandalone
{
inline std::string ToNative(const FString& Text)
{
	FTCHARToUTF8 Converted(*Text);
	return std::string(Converted.Get(), Converted.Length());
}

inline FString FromNative(std::string_view Text)
{
	FUTF8ToTCHAR Converted(Text.data(), static_cast<int32>(Text.size()));
	return FString(Converted.Length(), Converted.Get());
}

inline std::u16string ToUtf16(const FString& Text)
{
	return std::u16string(*Text, Text.Len());
}

inline FString FromUtf16(const std::u16string& Text)
{
	return FString(static_cast<int32>(Text.size()), Text.data());
}
} // namespace ZnStandalone
