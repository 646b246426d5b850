// Conversions between TCHAR (UTF-16) text and UTF-8 or ANSI byte strings.
//
// The converter objects own their result; Get() stays valid for the converter's lifetime, so the
// macros below (which build a temporary converter) may only be used within one full expression:
//     FILE* F = fopen(TCHAR_TO_UTF8(*Path), "rb");   // fine
//     const char* P = TCHAR_TO_UTF8(*Path);           // dangling after the semicolon
//
// Malformed input never fails: unpaired surrogates in UTF-16 and invalid UTF-8 sequences
// (overlong forms, surrogates, values above U+10FFFF, truncated sequences, stray continuation
// bytes) become U+FFFD, one replacement per maximal invalid subpart.
#pragma once

#include "Containers/Array.h"
#include "CoreTypes.h"

namespace ZnStandalone
{
/** Appends the UTF-16 form of SrcLen bytes of UTF-8 text to Out (no terminator is added). */
void AppendUtf8ToUtf16(TArray<TCHAR>& Out, const char* Src, int32 SrcLen);
/** Appends the UTF-8 form of SrcLen UTF-16 units to Out (no terminator is added). */
void AppendUtf16ToUtf8(TArray<char>& Out, const TCHAR* Src, int32 SrcLen);
} // namespace ZnStandalone

/** Converts TCHAR text to zero-terminated UTF-8. */
class FTCHARToUTF8
{
public:
	explicit FTCHARToUTF8(const TCHAR* Source);
	FTCHARToUTF8(const TCHAR* Source, int32 SourceLen);

	/** The UTF-8 bytes, zero-terminated; "" for a null source. */
	const char* Get() const { return Buffer.GetData(); }
	/** Length in bytes, without the terminator. */
	int32 Length() const { return Buffer.Num() - 1; }

private:
	TArray<char> Buffer;
};

/** Converts UTF-8 text to zero-terminated TCHAR text. */
class FUTF8ToTCHAR
{
public:
	explicit FUTF8ToTCHAR(const char* Source);
	FUTF8ToTCHAR(const char* Source, int32 SourceLen);

	/** The converted text, zero-terminated; empty for a null source. */
	const TCHAR* Get() const { return Buffer.GetData(); }
	/** Length in UTF-16 units, without the terminator. */
	int32 Length() const { return Buffer.Num() - 1; }

private:
	TArray<TCHAR> Buffer;
};

/**
 * TCHAR to ANSI: characters above U+007F become '?' (the engine's replacement for characters
 * the narrow code page cannot hold).
 */
class FTCHARToANSI
{
public:
	explicit FTCHARToANSI(const TCHAR* Source);
	FTCHARToANSI(const TCHAR* Source, int32 SourceLen);
	const ANSICHAR* Get() const { return Buffer.GetData(); }
	int32 Length() const { return Buffer.Num() - 1; }

private:
	TArray<ANSICHAR> Buffer;
};

/** ANSI to TCHAR: each byte is taken as a Latin-1 code point. */
class FANSIToTCHAR
{
public:
	explicit FANSIToTCHAR(const ANSICHAR* Source);
	FANSIToTCHAR(const ANSICHAR* Source, int32 SourceLen);
	const TCHAR* Get() const { return Buffer.GetData(); }
	int32 Length() const { return Buffer.Num() - 1; }

private:
	TArray<TCHAR> Buffer;
};

#define TCHAR_TO_UTF8(Str) (FTCHARToUTF8((const TCHAR*)(Str)).Get())
#define UTF8_TO_TCHAR(Str) (FUTF8ToTCHAR((const char*)(Str)).Get())
#define TCHAR_TO_ANSI(Str) (FTCHARToANSI((const TCHAR*)(Str)).Get())
#define ANSI_TO_TCHAR(Str) (FANSIToTCHAR((const ANSICHAR*)(Str)).Get())
