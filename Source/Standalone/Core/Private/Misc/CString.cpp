#include "Misc/CString.h"

#include <cerrno>
#include <cstdlib>
#include <limits>

namespace
{
// Copies the characters that can belong to a number into a narrow buffer, so that the C library
// parses exactly what it would parse from the same ASCII text. Stops at the first non-ASCII unit.
template <typename CharType>
int32 NarrowNumberPrefix(const CharType* String, char* Buffer, int32 BufferSize)
{
	int32 Count = 0;
	if (String)
	{
		for (; String[Count] && Count < BufferSize - 1; ++Count)
		{
			const uint32 C = sizeof(CharType) == 1 ? uint32(uint8(String[Count])) : uint32(String[Count]);
			if (C == 0 || C > 0x7F)
			{
				break;
			}
			Buffer[Count] = char(C);
		}
	}
	Buffer[Count] = 0;
	return Count;
}
} // namespace

template <typename CharType>
double TCString<CharType>::Atod(const CharType* String)
{
	char Buffer[512];
	NarrowNumberPrefix(String, Buffer, int32(sizeof(Buffer)));
	return std::strtod(Buffer, nullptr);
}

template <typename CharType>
int64 TCString<CharType>::Strtoi64(const CharType* String, const CharType** End, int32 Base)
{
	char Buffer[128];
	NarrowNumberPrefix(String, Buffer, int32(sizeof(Buffer)));
	char* NarrowEnd = Buffer;
	errno = 0;
	const long long Value = (Base == 0 || (Base >= 2 && Base <= 36)) ? std::strtoll(Buffer, &NarrowEnd, Base) : 0;
	if (End)
	{
		*End = Safe(String) + (NarrowEnd - Buffer);
	}
	return int64(Value);
}

template <typename CharType>
uint64 TCString<CharType>::Strtoui64(const CharType* String, const CharType** End, int32 Base)
{
	char Buffer[128];
	NarrowNumberPrefix(String, Buffer, int32(sizeof(Buffer)));
	char* NarrowEnd = Buffer;
	const unsigned long long Value =
		(Base == 0 || (Base >= 2 && Base <= 36)) ? std::strtoull(Buffer, &NarrowEnd, Base) : 0;
	if (End)
	{
		*End = Safe(String) + (NarrowEnd - Buffer);
	}
	return uint64(Value);
}

template <typename CharType>
bool TCString<CharType>::ToBool(const CharType* String)
{
	static const CharType True[] = {'t', 'r', 'u', 'e', 0};
	static const CharType Yes[] = {'y', 'e', 's', 0};
	static const CharType On[] = {'o', 'n', 0};
	if (Stricmp(String, True) == 0 || Stricmp(String, Yes) == 0 || Stricmp(String, On) == 0)
	{
		return true;
	}
	return Atoi(String) != 0;
}

template <typename CharType>
bool TCString<CharType>::IsNumeric(const CharType* String)
{
	String = Safe(String);
	if (*String == CharType('-') || *String == CharType('+'))
	{
		++String;
	}
	bool bHasDot = false;
	bool bHasDigit = false;
	for (; *String; ++String)
	{
		if (*String == CharType('.'))
		{
			if (bHasDot)
			{
				return false;
			}
			bHasDot = true;
		}
		else if (TChar<CharType>::IsDigit(*String))
		{
			bHasDigit = true;
		}
		else
		{
			return false;
		}
	}
	return bHasDigit;
}

template struct TCString<TCHAR>;
template struct TCString<ANSICHAR>;
