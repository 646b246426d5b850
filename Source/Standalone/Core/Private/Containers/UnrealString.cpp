#include "Containers/UnrealString.h"

#include "StringFormat.h"

#include <cstdarg>

FString::FString(const TCHAR* Str)
{
	const int32 Length = FCString::Strlen(Str);
	if (Length > 0)
	{
		Data.AddUninitialized(Length + 1);
		for (int32 Index = 0; Index < Length; ++Index)
		{
			Data.GetData()[Index] = Str[Index];
		}
		Data.GetData()[Length] = 0;
	}
}

FString::FString(const ANSICHAR* Str)
	: FString(FCStringAnsi::Strlen(Str), Str)
{
}

FString::FString(int32 Count, const TCHAR* Str)
{
	if (Count > 0 && Str)
	{
		AppendChars(Str, Count);
	}
}

FString::FString(int32 Count, const ANSICHAR* Str)
{
	if (Count > 0 && Str)
	{
		Data.AddUninitialized(Count + 1);
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Data.GetData()[Index] = TCHAR(uint8(Str[Index]));
		}
		Data.GetData()[Count] = 0;
	}
}

FString::FString(const FString& Other, int32 ExtraSlack)
{
	Data.Reserve(Other.Data.Num() + ExtraSlack);
	Data.Append(Other.Data);
}

FString& FString::operator=(const TCHAR* Str)
{
	// Str may point into this string, so build the copy first.
	FString Copy(Str);
	*this = MoveTemp(Copy);
	return *this;
}

FString& FString::AppendChar(TCHAR InChar)
{
	if (InChar == 0)
	{
		return *this;
	}
	if (Data.Num() == 0)
	{
		Data.Add(InChar);
		Data.Add(0);
	}
	else
	{
		Data.GetData()[Data.Num() - 1] = InChar;
		Data.Add(0);
	}
	return *this;
}

FString& FString::AppendChars(const TCHAR* Str, int32 Count)
{
	if (!Str || Count <= 0)
	{
		return *this;
	}
	// Str may point into this string; copy it aside when the block could move.
	if (Str >= Data.GetData() && Str < Data.GetData() + Data.Max())
	{
		FString Copy(Count, Str);
		return AppendChars(*Copy, Count);
	}
	const int32 OldLen = Len();
	Data.SetNumUninitialized(OldLen + Count + 1, false);
	TCHAR* Dest = Data.GetData() + OldLen;
	for (int32 Index = 0; Index < Count; ++Index)
	{
		Dest[Index] = Str[Index];
	}
	Dest[Count] = 0;
	return *this;
}

void FString::AppendInt(int32 InNum)
{
	Append(FromInt(InNum));
}

void FString::PathAppend(const TCHAR* Str, int32 StrLength)
{
	const int32 OldLen = Len();
	const bool bEndsWithSeparator = OldLen > 0 && (Data[OldLen - 1] == TEXT('/') || Data[OldLen - 1] == TEXT('\\'));
	if (StrLength <= 0)
	{
		if (OldLen > 0 && !bEndsWithSeparator)
		{
			AppendChar(TEXT('/'));
		}
		return;
	}
	if (OldLen > 0 && !bEndsWithSeparator && Str[0] != TEXT('/'))
	{
		AppendChar(TEXT('/'));
	}
	AppendChars(Str, StrLength);
}

bool FString::Equals(const FString& Other, ESearchCase::Type SearchCase) const
{
	if (Len() != Other.Len())
	{
		return false;
	}
	return Compare(Other, SearchCase) == 0;
}

int32 FString::Compare(const FString& Other, ESearchCase::Type SearchCase) const
{
	return SearchCase == ESearchCase::CaseSensitive ? FCString::Strcmp(**this, *Other)
													: FCString::Stricmp(**this, *Other);
}

int32 FString::Find(
	const TCHAR* SubStr, ESearchCase::Type SearchCase, ESearchDir::Type SearchDir, int32 StartPosition) const
{
	if (!SubStr)
	{
		return INDEX_NONE;
	}
	const int32 Length = Len();
	const int32 SubLen = FCString::Strlen(SubStr);
	if (SearchDir == ESearchDir::FromStart)
	{
		const TCHAR* Start = **this;
		if (StartPosition != INDEX_NONE && Length > 0)
		{
			Start += StartPosition < 0 ? 0 : (StartPosition > Length - 1 ? Length - 1 : StartPosition);
		}
		const TCHAR* Found =
			SearchCase == ESearchCase::IgnoreCase ? FCString::Stristr(Start, SubStr) : FCString::Strstr(Start, SubStr);
		return Found ? int32(Found - **this) : INDEX_NONE;
	}

	if (SearchCase == ESearchCase::IgnoreCase && SubLen == 0)
	{
		return INDEX_NONE;
	}
	if (StartPosition == INDEX_NONE || StartPosition >= Length)
	{
		StartPosition = Length;
	}
	const int32 SearchLen = SubLen > 0 ? SubLen : 1;
	const TCHAR* Text = **this;
	for (int32 Index = StartPosition - SearchLen; Index >= 0; --Index)
	{
		const int32 Cmp = SearchCase == ESearchCase::IgnoreCase ? FCString::Strnicmp(Text + Index, SubStr, SubLen)
																: FCString::Strncmp(Text + Index, SubStr, SubLen);
		if (Cmp == 0)
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

bool FString::FindChar(TCHAR InChar, int32& Index) const
{
	for (int32 I = 0; I < Len(); ++I)
	{
		if (Data[I] == InChar)
		{
			Index = I;
			return true;
		}
	}
	Index = INDEX_NONE;
	return false;
}

bool FString::FindLastChar(TCHAR InChar, int32& Index) const
{
	for (int32 I = Len() - 1; I >= 0; --I)
	{
		if (Data[I] == InChar)
		{
			Index = I;
			return true;
		}
	}
	Index = INDEX_NONE;
	return false;
}

bool FString::StartsWith(const TCHAR* Prefix, ESearchCase::Type SearchCase) const
{
	const int32 PrefixLen = FCString::Strlen(Prefix);
	if (PrefixLen == 0 || PrefixLen > Len())
	{
		return false;
	}
	return SearchCase == ESearchCase::IgnoreCase ? FCString::Strnicmp(**this, Prefix, PrefixLen) == 0
												 : FCString::Strncmp(**this, Prefix, PrefixLen) == 0;
}

bool FString::StartsWith(const FString& Prefix, ESearchCase::Type SearchCase) const
{
	return StartsWith(*Prefix, SearchCase);
}

bool FString::EndsWith(const TCHAR* Suffix, ESearchCase::Type SearchCase) const
{
	const int32 SuffixLen = FCString::Strlen(Suffix);
	if (SuffixLen == 0 || SuffixLen > Len())
	{
		return false;
	}
	const TCHAR* Tail = **this + Len() - SuffixLen;
	return SearchCase == ESearchCase::IgnoreCase ? FCString::Stricmp(Tail, Suffix) == 0
												 : FCString::Strcmp(Tail, Suffix) == 0;
}

bool FString::EndsWith(const FString& Suffix, ESearchCase::Type SearchCase) const
{
	return EndsWith(*Suffix, SearchCase);
}

FString FString::Left(int32 Count) const
{
	const int32 Length = Len();
	return FString(Count < 0 ? 0 : (Count > Length ? Length : Count), **this);
}

FString FString::LeftChop(int32 Count) const
{
	const int32 Length = Len();
	const int32 Keep = Length - (Count < 0 ? 0 : (Count > Length ? Length : Count));
	return FString(Keep, **this);
}

FString FString::Right(int32 Count) const
{
	const int32 Length = Len();
	const int32 Keep = Count < 0 ? 0 : (Count > Length ? Length : Count);
	return FString(Keep, **this + Length - Keep);
}

FString FString::RightChop(int32 Count) const
{
	const int32 Length = Len();
	const int32 Skip = Count < 0 ? 0 : (Count > Length ? Length : Count);
	return FString(Length - Skip, **this + Skip);
}

FString FString::Mid(int32 Start, int32 Count) const
{
	if (Count < 0)
	{
		return FString();
	}
	const int32 Length = Len();
	const int32 RequestedStart = Start;
	Start = Start < 0 ? 0 : (Start > Length ? Length : Start);
	int64 End = int64(RequestedStart) + int64(Count);
	End = End < Start ? Start : (End > Length ? Length : End);
	return FString(int32(End) - Start, **this + Start);
}

void FString::RemoveAt(int32 Index, int32 Count)
{
	check(Index >= 0 && Count >= 0 && Index + Count <= Len());
	if (Count == 0)
	{
		return;
	}
	Data.RemoveAt(Index, Count, false);
	if (Data.Num() == 1)
	{
		Data.Reset();
	}
}

void FString::InsertAt(int32 Index, const FString& Characters)
{
	check(Index >= 0 && Index <= Len());
	if (Characters.IsEmpty())
	{
		return;
	}
	if (Data.Num() == 0)
	{
		*this = Characters;
		return;
	}
	Data.Insert(TArray<TCHAR>(*Characters, Characters.Len()), Index);
}

void FString::InsertAt(int32 Index, TCHAR Character)
{
	InsertAt(Index, Chr(Character));
}

bool FString::Split(
	const FString& InS, FString* LeftS, FString* RightS, ESearchCase::Type SearchCase, ESearchDir::Type SearchDir) const
{
	const int32 Pos = Find(InS, SearchCase, SearchDir);
	if (Pos < 0)
	{
		return false;
	}
	// Compute both parts before writing, as either output may be this string.
	FString LeftPart = Left(Pos);
	FString RightPart = Mid(Pos + InS.Len());
	if (LeftS)
	{
		*LeftS = MoveTemp(LeftPart);
	}
	if (RightS)
	{
		*RightS = MoveTemp(RightPart);
	}
	return true;
}

int32 FString::ParseIntoArray(TArray<FString>& OutArray, const TCHAR* Delim, bool InCullEmpty) const
{
	OutArray.Reset();
	const TCHAR* Start = **this;
	const int32 DelimLength = FCString::Strlen(Delim);
	if (*Start && DelimLength)
	{
		while (const TCHAR* At = FCString::Strstr(Start, Delim))
		{
			if (!InCullEmpty || At - Start)
			{
				OutArray.Emplace(int32(At - Start), Start);
			}
			Start = At + DelimLength;
		}
		if (!InCullEmpty || *Start)
		{
			OutArray.Emplace(Start);
		}
	}
	return OutArray.Num();
}

int32 FString::ParseIntoArray(
	TArray<FString>& OutArray, const TCHAR* const* DelimArray, int32 NumDelims, bool InCullEmpty) const
{
	OutArray.Reset();
	const TCHAR* Text = **this;
	if (!*Text || !DelimArray || NumDelims <= 0)
	{
		return 0;
	}
	const TCHAR* SubstringBegin = Text;
	const TCHAR* Cursor = Text;
	while (*Cursor)
	{
		int32 MatchLength = 0;
		for (int32 D = 0; D < NumDelims; ++D)
		{
			const int32 DelimLen = FCString::Strlen(DelimArray[D]);
			if (DelimLen > 0 && FCString::Strncmp(Cursor, DelimArray[D], DelimLen) == 0)
			{
				MatchLength = DelimLen;
				break;
			}
		}
		if (MatchLength > 0)
		{
			if (!InCullEmpty || Cursor > SubstringBegin)
			{
				OutArray.Emplace(int32(Cursor - SubstringBegin), SubstringBegin);
			}
			Cursor += MatchLength;
			SubstringBegin = Cursor;
		}
		else
		{
			++Cursor;
		}
	}
	if (!InCullEmpty || Cursor > SubstringBegin)
	{
		OutArray.Emplace(int32(Cursor - SubstringBegin), SubstringBegin);
	}
	return OutArray.Num();
}

int32 FString::ParseIntoArrayLines(TArray<FString>& OutArray, bool InCullEmpty) const
{
	// "\r\n" is listed first so that a Windows line end counts as one break.
	static const TCHAR* const LineEndings[] = {TEXT("\r\n"), TEXT("\r"), TEXT("\n")};
	return ParseIntoArray(OutArray, LineEndings, 3, InCullEmpty);
}

FString FString::Replace(const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase) const
{
	if (IsEmpty() || !From || !*From)
	{
		return *this;
	}
	const int32 FromLength = FCString::Strlen(From);
	const int32 ToLength = FCString::Strlen(To);
	const TCHAR* Travel = **this;
	FString Result;
	while (const TCHAR* FromLocation =
			   SearchCase == ESearchCase::IgnoreCase ? FCString::Stristr(Travel, From) : FCString::Strstr(Travel, From))
	{
		Result.AppendChars(Travel, int32(FromLocation - Travel));
		Result.AppendChars(To, ToLength);
		Travel = FromLocation + FromLength;
	}
	Result += Travel;
	return Result;
}

int32 FString::ReplaceInline(const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase)
{
	if (IsEmpty() || !From || !*From)
	{
		return 0;
	}
	int32 Count = 0;
	const int32 FromLength = FCString::Strlen(From);
	for (const TCHAR* Travel = **this;
		 (Travel = SearchCase == ESearchCase::IgnoreCase ? FCString::Stristr(Travel, From)
														 : FCString::Strstr(Travel, From));
		 Travel += FromLength)
	{
		++Count;
	}
	if (Count > 0)
	{
		*this = Replace(From, To, SearchCase);
	}
	return Count;
}

void FString::ReplaceCharInline(TCHAR From, TCHAR To, ESearchCase::Type SearchCase)
{
	const bool bFold = SearchCase == ESearchCase::IgnoreCase && FChar::IsAlpha(From);
	const TCHAR FromLower = FChar::ToLower(From);
	for (int32 Index = 0; Index < Len(); ++Index)
	{
		TCHAR& C = Data[Index];
		if (bFold ? FChar::ToLower(C) == FromLower : C == From)
		{
			C = To;
		}
	}
}

FString FString::ToUpper() const
{
	FString Result(*this);
	Result.ToUpperInline();
	return Result;
}

FString FString::ToLower() const
{
	FString Result(*this);
	Result.ToLowerInline();
	return Result;
}

void FString::ToUpperInline()
{
	for (int32 Index = 0; Index < Len(); ++Index)
	{
		Data[Index] = FChar::ToUpper(Data[Index]);
	}
}

void FString::ToLowerInline()
{
	for (int32 Index = 0; Index < Len(); ++Index)
	{
		Data[Index] = FChar::ToLower(Data[Index]);
	}
}

FString FString::TrimStart() const
{
	FString Result(*this);
	Result.TrimStartInline();
	return Result;
}

FString FString::TrimEnd() const
{
	FString Result(*this);
	Result.TrimEndInline();
	return Result;
}

FString FString::TrimStartAndEnd() const
{
	FString Result(*this);
	Result.TrimStartAndEndInline();
	return Result;
}

void FString::TrimStartInline()
{
	int32 Pos = 0;
	while (Pos < Len() && FChar::IsWhitespace(Data[Pos]))
	{
		++Pos;
	}
	RemoveAt(0, Pos);
}

void FString::TrimEndInline()
{
	int32 End = Len();
	while (End > 0 && FChar::IsWhitespace(Data[End - 1]))
	{
		--End;
	}
	RemoveAt(End, Len() - End);
}

void FString::TrimStartAndEndInline()
{
	TrimEndInline();
	TrimStartInline();
}

FString FString::TrimQuotes(bool* bQuotesRemoved) const
{
	FString Result(*this);
	Result.TrimQuotesInline(bQuotesRemoved);
	return Result;
}

void FString::TrimQuotesInline(bool* bQuotesRemoved)
{
	// Quotes are removed from each end independently, as the engine does.
	bool bRemoved = false;
	if (Len() > 0 && Data[Len() - 1] == TEXT('"'))
	{
		RemoveAt(Len() - 1, 1);
		bRemoved = true;
	}
	if (Len() > 0 && Data[0] == TEXT('"'))
	{
		RemoveAt(0, 1);
		bRemoved = true;
	}
	if (bQuotesRemoved)
	{
		*bQuotesRemoved = bRemoved;
	}
}

FString FString::TrimChar(TCHAR CharacterToTrim, bool* bCharRemoved) const
{
	FString Result(*this);
	bool bRemoved = false;
	if (Result.Len() > 0 && Result[Result.Len() - 1] == CharacterToTrim)
	{
		Result.RemoveAt(Result.Len() - 1, 1);
		bRemoved = true;
	}
	if (Result.Len() > 0 && Result[0] == CharacterToTrim)
	{
		Result.RemoveAt(0, 1);
		bRemoved = true;
	}
	if (bCharRemoved)
	{
		*bCharRemoved = bRemoved;
	}
	return Result;
}

FString FString::Reverse() const
{
	FString Result(*this);
	Result.ReverseString();
	return Result;
}

void FString::ReverseString()
{
	for (int32 A = 0, B = Len() - 1; A < B; ++A, --B)
	{
		::Swap(Data[A], Data[B]);
	}
}

FString FString::LeftPad(int32 ChCount) const
{
	const int32 Pad = ChCount - Len();
	return Pad > 0 ? ChrN(Pad, TEXT(' ')) + *this : *this;
}

FString FString::RightPad(int32 ChCount) const
{
	const int32 Pad = ChCount - Len();
	return Pad > 0 ? *this + ChrN(Pad, TEXT(' ')) : *this;
}

FString FString::Chr(TCHAR Ch)
{
	FString Result;
	Result.AppendChar(Ch);
	return Result;
}

FString FString::ChrN(int32 NumCharacters, TCHAR Char)
{
	FString Result;
	if (NumCharacters > 0 && Char != 0)
	{
		Result.Data.Init(Char, NumCharacters + 1);
		Result.Data[NumCharacters] = 0;
	}
	return Result;
}

FString FString::FromInt(int32 Num)
{
	return PrintfImpl(TEXT("%d"), Num);
}

FString FString::SanitizeFloat(double InFloat, int32 InMinFractionalDigits)
{
	if (InFloat == 0.0)
	{
		InFloat = 0.0; // drops the sign of -0.0
	}
	FString Result = PrintfImpl(TEXT("%f"), InFloat);
	if (!Result.IsNumeric())
	{
		return Result;
	}

	// Strip trailing zeros of the fraction, and the point itself when nothing is left after it.
	int32 DotIndex = INDEX_NONE;
	Result.FindChar(TEXT('.'), DotIndex);
	if (DotIndex != INDEX_NONE)
	{
		int32 End = Result.Len();
		while (End > DotIndex + 1 && Result[End - 1] == TEXT('0'))
		{
			--End;
		}
		if (End == DotIndex + 1)
		{
			End = DotIndex;
		}
		Result.RemoveAt(End, Result.Len() - End);
	}

	if (InMinFractionalDigits > 0)
	{
		if (!Result.FindChar(TEXT('.'), DotIndex))
		{
			DotIndex = Result.Len();
			Result.AppendChar(TEXT('.'));
		}
		const int32 FractionalDigits = Result.Len() - DotIndex - 1;
		for (int32 Pad = FractionalDigits; Pad < InMinFractionalDigits; ++Pad)
		{
			Result.AppendChar(TEXT('0'));
		}
	}
	return Result;
}

FString FString::PrintfImpl(const TCHAR* Fmt, ...)
{
	FString Result;
	va_list Args;
	va_start(Args, Fmt);
	ZnStandalone::AppendFormatV(Result, Fmt, Args);
	va_end(Args);
	return Result;
}

FString operator+(const FString& Lhs, const FString& Rhs)
{
	FString Result(Lhs, Rhs.Len());
	Result += Rhs;
	return Result;
}

FString operator+(FString&& Lhs, const FString& Rhs)
{
	FString Result(MoveTemp(Lhs));
	Result += Rhs;
	return Result;
}

FString operator+(const FString& Lhs, const TCHAR* Rhs)
{
	FString Result(Lhs, FCString::Strlen(Rhs));
	Result += Rhs;
	return Result;
}

FString operator+(FString&& Lhs, const TCHAR* Rhs)
{
	FString Result(MoveTemp(Lhs));
	Result += Rhs;
	return Result;
}

FString operator+(const TCHAR* Lhs, const FString& Rhs)
{
	FString Result(Lhs);
	Result += Rhs;
	return Result;
}

FString operator/(const FString& Lhs, const FString& Rhs)
{
	FString Result(Lhs, Rhs.Len() + 1);
	Result /= Rhs;
	return Result;
}

FString operator/(const FString& Lhs, const TCHAR* Rhs)
{
	FString Result(Lhs, FCString::Strlen(Rhs) + 1);
	Result /= Rhs;
	return Result;
}

FString operator/(const TCHAR* Lhs, const FString& Rhs)
{
	FString Result(Lhs);
	Result /= Rhs;
	return Result;
}

uint32 GetTypeHash(const FString& S)
{
	// FNV-1a over the lower-cased units, so that strings equal under operator== hash alike.
	uint32 Hash = 2166136261u;
	for (const TCHAR C : S)
	{
		const uint16 Unit = uint16(FChar::ToLower(C));
		Hash = (Hash ^ (Unit & 0xFF)) * 16777619u;
		Hash = (Hash ^ (Unit >> 8)) * 16777619u;
	}
	return Hash;
}
