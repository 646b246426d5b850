// FString: the engine's dynamic text, UTF-16 code units (TCHAR) in a TArray<TCHAR> that holds a
// terminating zero whenever the string is not empty. Indices and lengths count UTF-16 units.
//
// Comparison operators (==, !=, <) and GetTypeHash ignore ASCII case, as in the engine, so an
// FString map key "Hips" finds "HIPS". Equals() and Compare() are case-sensitive unless asked
// otherwise; searches (Find, Contains, StartsWith, Replace, Split) ignore case unless asked.
#pragma once

#include "Containers/Array.h"
#include "Containers/StringConv.h"
#include "CoreTypes.h"
#include "Misc/CString.h"

#include <type_traits>

class FString;

namespace ZnStandalone
{
template <typename T>
struct TIsValidPrintfArg
{
	using Decayed = typename std::decay<T>::type;
	static constexpr bool Value = std::is_arithmetic<Decayed>::value || std::is_enum<Decayed>::value ||
		std::is_pointer<Decayed>::value || std::is_same<Decayed, decltype(nullptr)>::value;
};

template <typename... Types>
struct TAllValidPrintfArgs
{
	static constexpr bool Value = true;
};
template <typename First, typename... Rest>
struct TAllValidPrintfArgs<First, Rest...>
{
	static constexpr bool Value = TIsValidPrintfArg<First>::Value && TAllValidPrintfArgs<Rest...>::Value;
};

template <typename T>
struct TIsTCharArray
{
	static constexpr bool Value = false;
};
template <SIZE_T N>
struct TIsTCharArray<TCHAR[N]>
{
	static constexpr bool Value = true;
};
template <SIZE_T N>
struct TIsTCharArray<const TCHAR[N]>
{
	static constexpr bool Value = true;
};
} // namespace ZnStandalone

class FString
{
public:
	using ElementType = TCHAR;

	FString() = default;
	FString(const FString&) = default;
	FString(FString&&) noexcept = default;
	FString& operator=(const FString&) = default;
	FString& operator=(FString&&) noexcept = default;

	/** Copies zero-terminated text; null gives the empty string. */
	FString(const TCHAR* Str);
	/** Narrow text is taken byte by byte as Latin-1 (the engine's ANSI widening); use UTF8_TO_TCHAR for UTF-8. */
	FString(const ANSICHAR* Str);
	/** Copies Count units from Str (which need not be terminated). */
	FString(int32 Count, const TCHAR* Str);
	FString(int32 Count, const ANSICHAR* Str);
	/** Copy with room for ExtraSlack more characters. */
	FString(const FString& Other, int32 ExtraSlack);

	FString& operator=(const TCHAR* Str);

	// Access

	/** The text, zero-terminated; never null (an empty string gives ""). */
	FORCEINLINE const TCHAR* operator*() const { return Data.Num() ? Data.GetData() : EmptyText(); }
	FORCEINLINE int32 Len() const { return Data.Num() ? Data.Num() - 1 : 0; }
	FORCEINLINE bool IsEmpty() const { return Data.Num() <= 1; }
	FORCEINLINE bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Len(); }
	FORCEINLINE TArray<TCHAR>& GetCharArray() { return Data; }
	FORCEINLINE const TArray<TCHAR>& GetCharArray() const { return Data; }
	SIZE_T GetAllocatedSize() const { return Data.GetAllocatedSize(); }

	FORCEINLINE TCHAR& operator[](int32 Index)
	{
		check(IsValidIndex(Index));
		return Data.GetData()[Index];
	}
	FORCEINLINE const TCHAR& operator[](int32 Index) const
	{
		check(IsValidIndex(Index));
		return Data.GetData()[Index];
	}

	// Size management

	void Empty(int32 Slack = 0) { Data.Empty(Slack ? Slack + 1 : 0); }
	void Reset(int32 NewReservedSize = 0) { Data.Reset(NewReservedSize ? NewReservedSize + 1 : 0); }
	void Reserve(int32 CharacterCount) { Data.Reserve(CharacterCount + 1); }
	void Shrink() { Data.Shrink(); }

	// Appending

	FString& AppendChar(TCHAR InChar);
	FString& AppendChars(const TCHAR* Str, int32 Count);
	FString& Append(const TCHAR* Str, int32 Count) { return AppendChars(Str, Count); }
	FString& Append(const TCHAR* Str) { return AppendChars(Str, FCString::Strlen(Str)); }
	FString& Append(const FString& Str) { return AppendChars(*Str, Str.Len()); }
	void AppendInt(int32 InNum);

	FString& operator+=(const TCHAR* Str) { return Append(Str); }
	FString& operator+=(const FString& Str) { return Append(Str); }
	FString& operator+=(TCHAR InChar) { return AppendChar(InChar); }
	FString& operator+=(const ANSICHAR* Str) { return Append(FString(Str)); }

	/** Appends Str with a '/' between when neither side already has one (the engine's path join). */
	void PathAppend(const TCHAR* Str, int32 StrLength);
	FString& operator/=(const TCHAR* Str)
	{
		PathAppend(Str, FCString::Strlen(Str));
		return *this;
	}
	FString& operator/=(const FString& Str)
	{
		PathAppend(*Str, Str.Len());
		return *this;
	}

	// Comparison

	/** Case-sensitive unless IgnoreCase is given. */
	bool Equals(const FString& Other, ESearchCase::Type SearchCase = ESearchCase::CaseSensitive) const;
	/** <0, 0 or >0 like strcmp; case-sensitive unless IgnoreCase is given. */
	int32 Compare(const FString& Other, ESearchCase::Type SearchCase = ESearchCase::CaseSensitive) const;

	// Searching

	/**
	 * Index of the first (or, FromEnd, last) occurrence of SubStr, or INDEX_NONE. StartPosition
	 * limits where the search begins (FromStart) or the end it searches back from (FromEnd).
	 */
	int32 Find(const TCHAR* SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart, int32 StartPosition = INDEX_NONE) const;
	int32 Find(const FString& SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart, int32 StartPosition = INDEX_NONE) const
	{
		return Find(*SubStr, SearchCase, SearchDir, StartPosition);
	}
	bool Contains(const TCHAR* SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart) const
	{
		return Find(SubStr, SearchCase, SearchDir) != INDEX_NONE;
	}
	bool Contains(const FString& SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart) const
	{
		return Find(*SubStr, SearchCase, SearchDir) != INDEX_NONE;
	}
	bool FindChar(TCHAR InChar, int32& Index) const;
	bool FindLastChar(TCHAR InChar, int32& Index) const;

	bool StartsWith(const TCHAR* Prefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;
	bool StartsWith(const FString& Prefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;
	bool EndsWith(const TCHAR* Suffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;
	bool EndsWith(const FString& Suffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;

	// Substrings; counts outside the string are clamped, never an error.

	FString Left(int32 Count) const;
	FString LeftChop(int32 Count) const;
	FString Right(int32 Count) const;
	FString RightChop(int32 Count) const;
	FString Mid(int32 Start, int32 Count = 0x7fffffff) const;
	void LeftInline(int32 Count) { *this = Left(Count); }
	void LeftChopInline(int32 Count) { *this = LeftChop(Count); }
	void RightInline(int32 Count) { *this = Right(Count); }
	void RightChopInline(int32 Count) { *this = RightChop(Count); }
	void MidInline(int32 Start, int32 Count = 0x7fffffff) { *this = Mid(Start, Count); }
	void RemoveAt(int32 Index, int32 Count = 1);
	void InsertAt(int32 Index, const FString& Characters);
	void InsertAt(int32 Index, TCHAR Character);

	/**
	 * Splits at the first (or last) occurrence of InS. Returns false and leaves the outputs
	 * untouched when InS is not found. Either output may be null.
	 */
	bool Split(const FString& InS, FString* LeftS, FString* RightS,
		ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart) const;

	/**
	 * Replaces OutArray with the pieces between occurrences of Delim (case-sensitive). With
	 * InCullEmpty, empty pieces are dropped. An empty string or an empty Delim yields no pieces.
	 * Returns the number of pieces.
	 */
	int32 ParseIntoArray(TArray<FString>& OutArray, const TCHAR* Delim, bool InCullEmpty = true) const;
	/** Splits at "\r\n", "\r" or "\n". */
	int32 ParseIntoArrayLines(TArray<FString>& OutArray, bool InCullEmpty = true) const;
	/** Splits at any of the NumDelims delimiters (longest match first is not attempted: first listed wins). */
	int32 ParseIntoArray(
		TArray<FString>& OutArray, const TCHAR* const* DelimArray, int32 NumDelims, bool InCullEmpty = true) const;

	// Transformations

	/** Replaces every occurrence of From (not searched again inside the replacement); empty From changes nothing. */
	FString Replace(const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;
	/** In-place Replace; returns the number of replacements. */
	int32 ReplaceInline(const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	void ReplaceCharInline(TCHAR From, TCHAR To, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);

	/** ASCII letters only, as the engine. */
	FString ToUpper() const;
	FString ToLower() const;
	void ToUpperInline();
	void ToLowerInline();

	/** White space is FChar::IsWhitespace (ASCII spaces and the Unicode space characters). */
	FString TrimStart() const;
	FString TrimEnd() const;
	FString TrimStartAndEnd() const;
	void TrimStartInline();
	void TrimEndInline();
	void TrimStartAndEndInline();
	/** Removes one leading and one trailing '"' if both are present; sets *bQuotesRemoved. */
	FString TrimQuotes(bool* bQuotesRemoved = nullptr) const;
	void TrimQuotesInline(bool* bQuotesRemoved = nullptr);
	FString TrimChar(TCHAR CharacterToTrim, bool* bCharRemoved = nullptr) const;

	FString Reverse() const;
	void ReverseString();
	FString LeftPad(int32 ChCount) const;
	FString RightPad(int32 ChCount) const;

	/** Optional sign, digits and at most one '.', as FCString::IsNumeric. */
	bool IsNumeric() const { return FCString::IsNumeric(**this); }
	bool ToBool() const { return FCString::ToBool(**this); }

	// Construction helpers

	static FString Chr(TCHAR Ch);
	static FString ChrN(int32 NumCharacters, TCHAR Char);
	static FString FromInt(int32 Num);

	/**
	 * Formats a floating point number the engine's way: "%f", then trailing zeros removed, then
	 * padded back to at least MinFractionalDigits fractional digits. 60.0 gives "60.0", 0.5
	 * "0.5", 1e-5 "0.00001", 1e-7 "0.0", and -0.0 "0.0". Text that is not a plain decimal
	 * (inf, nan) is returned as "%f" printed it.
	 */
	static FString SanitizeFloat(double InFloat, int32 InMinFractionalDigits = 1);

	template <typename T>
	static FString Join(const TArray<T>& Array, const TCHAR* Separator)
	{
		FString Result;
		bool bFirst = true;
		for (const T& Element : Array)
		{
			if (!bFirst)
			{
				Result += Separator;
			}
			Result += Element;
			bFirst = false;
		}
		return Result;
	}

	/**
	 * printf-style formatting into a new string. The format must be a TEXT("...") literal; every
	 * argument must be a number, an enum or a pointer (pass strings as *MyString). %s takes a
	 * const TCHAR*, %hs a narrow const char*. Supported: %d %i %u %x %X %o %c %s %p %f %e %g %%
	 * with flags, width (also *), precision and the length modifiers h, hh, l, ll, z, j, t. An
	 * unknown conversion is copied to the output as written, without taking an argument.
	 */
	template <typename FmtType, typename... Types>
	static FString Printf(const FmtType& Fmt, Types... Args)
	{
		static_assert(ZnStandalone::TIsTCharArray<FmtType>::Value, "Formatting string must be a TCHAR array.");
		static_assert(
			ZnStandalone::TAllValidPrintfArgs<Types...>::Value, "Invalid argument(s) passed to FString::Printf");
		return PrintfImpl(Fmt, Args...);
	}

	template <typename FmtType, typename... Types>
	FString& Appendf(const FmtType& Fmt, Types... Args)
	{
		static_assert(ZnStandalone::TIsTCharArray<FmtType>::Value, "Formatting string must be a TCHAR array.");
		static_assert(
			ZnStandalone::TAllValidPrintfArgs<Types...>::Value, "Invalid argument(s) passed to FString::Appendf");
		return Append(PrintfImpl(Fmt, Args...));
	}

	/** The unchecked C-variadic formatter behind Printf; prefer Printf. */
	static FString PrintfImpl(const TCHAR* Fmt, ...);

	// Iteration over the characters (without the terminator).
	FORCEINLINE TCHAR* begin() { return Data.GetData(); }
	FORCEINLINE const TCHAR* begin() const { return Data.GetData(); }
	FORCEINLINE TCHAR* end() { return Data.GetData() + Len(); }
	FORCEINLINE const TCHAR* end() const { return Data.GetData() + Len(); }

	// Case-insensitive comparisons, as the engine's operators.
	friend bool operator==(const FString& A, const FString& B) { return FCString::Stricmp(*A, *B) == 0; }
	friend bool operator==(const FString& A, const TCHAR* B) { return FCString::Stricmp(*A, B) == 0; }
	friend bool operator==(const TCHAR* A, const FString& B) { return FCString::Stricmp(A, *B) == 0; }
	friend bool operator!=(const FString& A, const FString& B) { return !(A == B); }
	friend bool operator!=(const FString& A, const TCHAR* B) { return !(A == B); }
	friend bool operator!=(const TCHAR* A, const FString& B) { return !(A == B); }
	friend bool operator<(const FString& A, const FString& B) { return FCString::Stricmp(*A, *B) < 0; }
	friend bool operator>(const FString& A, const FString& B) { return FCString::Stricmp(*A, *B) > 0; }
	friend bool operator<=(const FString& A, const FString& B) { return FCString::Stricmp(*A, *B) <= 0; }
	friend bool operator>=(const FString& A, const FString& B) { return FCString::Stricmp(*A, *B) >= 0; }

private:
	TArray<TCHAR> Data;

	static const TCHAR* EmptyText()
	{
		static const TCHAR Empty[1] = {0};
		return Empty;
	}
};

FString operator+(const FString& Lhs, const FString& Rhs);
FString operator+(FString&& Lhs, const FString& Rhs);
FString operator+(const FString& Lhs, const TCHAR* Rhs);
FString operator+(FString&& Lhs, const TCHAR* Rhs);
FString operator+(const TCHAR* Lhs, const FString& Rhs);
FString operator/(const FString& Lhs, const FString& Rhs);
FString operator/(const FString& Lhs, const TCHAR* Rhs);
FString operator/(const TCHAR* Lhs, const FString& Rhs);

/** Ignores ASCII case, so that hashed containers agree with operator==. */
uint32 GetTypeHash(const FString& S);

/** Quoting helper the engine offers for building messages. */
inline FString LexToString(const FString& S)
{
	return S;
}
inline FString LexToString(int32 Value)
{
	return FString::FromInt(Value);
}
