// Character classification and case mapping for TCHAR and ANSICHAR, ASCII-only like the engine:
// letters outside A-Z/a-z are never case-folded, so every case-insensitive comparison, hash and
// map key in this build treats non-ASCII text case-sensitively.
#pragma once

#include "CoreTypes.h"

template <typename CharType>
struct TChar
{
	static constexpr CharType ToUpper(CharType Char)
	{
		return (Char >= CharType('a') && Char <= CharType('z')) ? CharType(Char - ('a' - 'A')) : Char;
	}
	static constexpr CharType ToLower(CharType Char)
	{
		return (Char >= CharType('A') && Char <= CharType('Z')) ? CharType(Char + ('a' - 'A')) : Char;
	}
	static constexpr bool IsUpper(CharType Char) { return Char >= CharType('A') && Char <= CharType('Z'); }
	static constexpr bool IsLower(CharType Char) { return Char >= CharType('a') && Char <= CharType('z'); }
	static constexpr bool IsAlpha(CharType Char) { return IsUpper(Char) || IsLower(Char); }
	static constexpr bool IsDigit(CharType Char) { return Char >= CharType('0') && Char <= CharType('9'); }
	static constexpr bool IsAlnum(CharType Char) { return IsAlpha(Char) || IsDigit(Char); }
	static constexpr bool IsHexDigit(CharType Char)
	{
		return IsDigit(Char) || (Char >= CharType('a') && Char <= CharType('f')) ||
			(Char >= CharType('A') && Char <= CharType('F'));
	}
	/** Space, tab, line breaks, vertical tab and form feed; for TCHAR also U+0085, U+00A0 and the Unicode spaces. */
	static constexpr bool IsWhitespace(CharType Char)
	{
		const uint32 C = uint32(static_cast<typename TUnsignedOf<CharType>::Type>(Char));
		if (C == ' ' || (C >= 0x09 && C <= 0x0D))
		{
			return true;
		}
		if (sizeof(CharType) == 1)
		{
			return false;
		}
		return C == 0x85 || C == 0xA0 || C == 0x1680 || (C >= 0x2000 && C <= 0x200A) || C == 0x2028 || C == 0x2029 ||
			C == 0x202F || C == 0x205F || C == 0x3000;
	}
	static constexpr bool IsLinebreak(CharType Char)
	{
		return Char == CharType('\n') || Char == CharType('\r') || Char == CharType('\v') || Char == CharType('\f');
	}
	static constexpr int32 ConvertCharDigitToInt(CharType Char) { return int32(Char) - int32('0'); }

private:
	template <typename C, bool Dummy = true>
	struct TUnsignedOf
	{
		using Type = C;
	};
	template <bool Dummy>
	struct TUnsignedOf<char, Dummy>
	{
		using Type = unsigned char;
	};
};

using FChar = TChar<TCHAR>;
using FCharAnsi = TChar<ANSICHAR>;
