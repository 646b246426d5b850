// C-string helpers over TCHAR and ANSICHAR (lengths, comparisons, searches, number parsing).
// All functions expect valid zero-terminated input; a null pointer is treated as "" where the
// engine would crash, so a mistake never takes the program down.
#pragma once

#include "CoreTypes.h"
#include "Misc/Char.h"

/** Case sensitivity of string comparisons and searches. */
namespace ESearchCase
{
enum Type
{
	CaseSensitive,
	IgnoreCase,
};
}

/** Direction of string searches. */
namespace ESearchDir
{
enum Type
{
	FromStart,
	FromEnd,
};
}

template <typename CharType>
struct TCString
{
	using CharT = CharType;

	static int32 Strlen(const CharType* String)
	{
		if (!String)
		{
			return 0;
		}
		const CharType* End = String;
		while (*End)
		{
			++End;
		}
		return int32(End - String);
	}

	static int32 Strcmp(const CharType* A, const CharType* B)
	{
		A = Safe(A);
		B = Safe(B);
		for (;; ++A, ++B)
		{
			const int32 Diff = int32(Unsigned(*A)) - int32(Unsigned(*B));
			if (Diff != 0 || !*A)
			{
				return Diff;
			}
		}
	}

	static int32 Strncmp(const CharType* A, const CharType* B, SIZE_T Count)
	{
		A = Safe(A);
		B = Safe(B);
		for (; Count > 0; --Count, ++A, ++B)
		{
			const int32 Diff = int32(Unsigned(*A)) - int32(Unsigned(*B));
			if (Diff != 0 || !*A)
			{
				return Diff;
			}
		}
		return 0;
	}

	/** Compares ignoring ASCII case (both sides folded to lower case, as the engine does). */
	static int32 Stricmp(const CharType* A, const CharType* B)
	{
		A = Safe(A);
		B = Safe(B);
		for (;; ++A, ++B)
		{
			const int32 Diff =
				int32(Unsigned(TChar<CharType>::ToLower(*A))) - int32(Unsigned(TChar<CharType>::ToLower(*B)));
			if (Diff != 0 || !*A)
			{
				return Diff;
			}
		}
	}

	static int32 Strnicmp(const CharType* A, const CharType* B, SIZE_T Count)
	{
		A = Safe(A);
		B = Safe(B);
		for (; Count > 0; --Count, ++A, ++B)
		{
			const int32 Diff =
				int32(Unsigned(TChar<CharType>::ToLower(*A))) - int32(Unsigned(TChar<CharType>::ToLower(*B)));
			if (Diff != 0 || !*A)
			{
				return Diff;
			}
		}
		return 0;
	}

	/**
	 * First occurrence of Find in String, or nullptr. An empty Find matches at the start for the
	 * case-sensitive search and nowhere for the case-insensitive one, as in the engine.
	 */
	static const CharType* Strstr(const CharType* String, const CharType* Find) { return Search(String, Find, false); }
	static const CharType* Stristr(const CharType* String, const CharType* Find) { return Search(String, Find, true); }

	static const CharType* Strchr(const CharType* String, CharType C)
	{
		for (String = Safe(String);; ++String)
		{
			if (*String == C)
			{
				return String;
			}
			if (!*String)
			{
				return nullptr;
			}
		}
	}

	static const CharType* Strrchr(const CharType* String, CharType C)
	{
		const CharType* Found = nullptr;
		for (String = Safe(String);; ++String)
		{
			if (*String == C)
			{
				Found = String;
			}
			if (!*String)
			{
				return Found;
			}
		}
	}

	/** Copies at most DestSize-1 characters and always terminates (when DestSize > 0). */
	static CharType* Strncpy(CharType* Dest, const CharType* Src, int32 DestSize)
	{
		if (DestSize <= 0)
		{
			return Dest;
		}
		Src = Safe(Src);
		int32 Index = 0;
		for (; Index < DestSize - 1 && Src[Index]; ++Index)
		{
			Dest[Index] = Src[Index];
		}
		Dest[Index] = 0;
		return Dest;
	}

	/** Decimal integer with optional leading white space and sign; stops at the first non-digit; 0 if none. */
	static int32 Atoi(const CharType* String) { return int32(Strtoi64(String, nullptr, 10)); }
	static int64 Atoi64(const CharType* String) { return Strtoi64(String, nullptr, 10); }
	/** Like strtod over the longest valid prefix ("1.5e3x" is 1500); 0 if there is none. */
	static float Atof(const CharType* String) { return float(Atod(String)); }
	static double Atod(const CharType* String);
	/** Also accepts "0x" with base 16 or 0, as strtol does. Values outside int64 saturate. */
	static int64 Strtoi64(const CharType* String, const CharType** End, int32 Base);
	static int32 Strtoi(const CharType* String, const CharType** End, int32 Base)
	{
		return int32(Strtoi64(String, End, Base));
	}
	static uint64 Strtoui64(const CharType* String, const CharType** End, int32 Base);
	/** "true", "yes", "on" (any case) and non-zero numbers are true. */
	static bool ToBool(const CharType* String);

	/** True when String is an optional sign, digits, at most one '.', and more digits (e.g. "-1.5", ".5"). */
	static bool IsNumeric(const CharType* String);

private:
	static const CharType* Safe(const CharType* S)
	{
		static const CharType Empty[1] = {0};
		return S ? S : Empty;
	}
	static uint32 Unsigned(CharType C) { return sizeof(CharType) == 1 ? uint32(uint8(C)) : uint32(C); }

	static const CharType* Search(const CharType* String, const CharType* Find, bool bIgnoreCase)
	{
		String = Safe(String);
		Find = Safe(Find);
		const int32 FindLen = Strlen(Find);
		if (FindLen == 0)
		{
			return bIgnoreCase ? nullptr : String;
		}
		for (; *String; ++String)
		{
			if ((bIgnoreCase ? Strnicmp(String, Find, FindLen) : Strncmp(String, Find, FindLen)) == 0)
			{
				return String;
			}
		}
		return nullptr;
	}
};

using FCString = TCString<TCHAR>;
using FCStringAnsi = TCString<ANSICHAR>;

extern template struct TCString<TCHAR>;
extern template struct TCString<ANSICHAR>;
