// The engine's fixed-width types and character type on Linux, where TCHAR is UTF-16.
#pragma once

#include <cstddef>
#include <cstdint>

#define PLATFORM_LINUX 1
#define PLATFORM_WINDOWS 0
#define PLATFORM_LITTLE_ENDIAN 1
#define WITH_EDITOR 0
#define UE_BUILD_SHIPPING 0

using uint8 = std::uint8_t;
using uint16 = std::uint16_t;
using uint32 = std::uint32_t;
using uint64 = std::uint64_t;
using int8 = std::int8_t;
using int16 = std::int16_t;
using int32 = std::int32_t;
using int64 = std::int64_t;
using SIZE_T = std::size_t;
using SSIZE_T = std::ptrdiff_t;
using UPTRINT = std::uintptr_t;
using PTRINT = std::intptr_t;

using ANSICHAR = char;
using WIDECHAR = char16_t;
using UTF8CHAR = char;
using TCHAR = char16_t;

#define TEXT_PASTE(x) u##x
#define TEXT(x) TEXT_PASTE(x)

#define LINE_TERMINATOR TEXT("\n")
#define LINE_TERMINATOR_ANSI "\n"

#define FORCEINLINE inline __attribute__((always_inline))
#define FORCENOINLINE __attribute__((noinline))
#define UNLIKELY(x) __builtin_expect(!!(x), 0)
#define LIKELY(x) __builtin_expect(!!(x), 1)

#define INDEX_NONE (-1)

// The engine silences third-party headers' warnings between these two; nothing to do here.
#define THIRD_PARTY_INCLUDES_START
#define THIRD_PARTY_INCLUDES_END

#ifndef CORE_API
#define CORE_API
#endif
#ifndef COREUOBJECT_API
#define COREUOBJECT_API
#endif
#ifndef ENGINE_API
#define ENGINE_API
#endif
#ifndef HTTP_API
#define HTTP_API
#endif
