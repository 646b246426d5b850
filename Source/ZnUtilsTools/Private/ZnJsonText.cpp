// Text conversion between the engine's UTF-16 strings and the UTF-8 the parser reads.
#include "ZnJsonReader.h"

#include "ZnSimd.h"

namespace
{
constexpr char32_t ReplacementChar = 0xFFFD;

inline char* WriteUtf8(char* Out, char32_t Code)
{
	if (Code < 0x80)
	{
		*Out++ = char(Code);
	}
	else if (Code < 0x800)
	{
		*Out++ = char(0xC0 | (Code >> 6));
		*Out++ = char(0x80 | (Code & 0x3F));
	}
	else if (Code < 0x10000)
	{
		*Out++ = char(0xE0 | (Code >> 12));
		*Out++ = char(0x80 | ((Code >> 6) & 0x3F));
		*Out++ = char(0x80 | (Code & 0x3F));
	}
	else
	{
		*Out++ = char(0xF0 | (Code >> 18));
		*Out++ = char(0x80 | ((Code >> 12) & 0x3F));
		*Out++ = char(0x80 | ((Code >> 6) & 0x3F));
		*Out++ = char(0x80 | (Code & 0x3F));
	}
	return Out;
}

} // namespace

namespace ZnJson
{
size_t ConvertAsciiPrefix(const TCHAR* In, size_t Length, char* Out)
{
	size_t Index = 0;
	while (Index + 16 <= Length && ZnSimd::Native::PackAscii16(In + Index, Out + Index))
	{
		Index += 16;
	}
	while (Index < Length && In[Index] < 0x80)
	{
		Out[Index] = char(In[Index]);
		++Index;
	}
	return Index;
}

// UTF-16 to UTF-8. Out must hold 3 bytes per input unit (a surrogate pair, two units, takes 4).
// Lone surrogates become U+FFFD, as any text converter of the engine does.
char* ConvertUtf16(const TCHAR* In, size_t Length, char* Out)
{
	size_t Index = 0;
	while (Index < Length)
	{
		// Texts from the service are almost entirely ASCII: copy each run of it at once.
		const size_t Ascii = ConvertAsciiPrefix(In + Index, Length - Index, Out);
		Out += Ascii;
		Index += Ascii;
		if (Index >= Length)
		{
			break;
		}
		const char32_t Unit = char32_t(In[Index++]);
		if (Unit >= 0xD800 && Unit <= 0xDBFF)
		{
			if (Index < Length && char32_t(In[Index]) >= 0xDC00 && char32_t(In[Index]) <= 0xDFFF)
			{
				const char32_t Low = char32_t(In[Index++]);
				Out = WriteUtf8(Out, 0x10000 + ((Unit - 0xD800) << 10) + (Low - 0xDC00));
			}
			else
			{
				Out = WriteUtf8(Out, ReplacementChar);
			}
		}
		else if (Unit >= 0xDC00 && Unit <= 0xDFFF)
		{
			Out = WriteUtf8(Out, ReplacementChar);
		}
		else
		{
			Out = WriteUtf8(Out, Unit);
		}
	}
	return Out;
}

void AppendUtf8(FString& Out, std::string_view Utf8)
{
	if (Utf8.empty())
	{
		return;
	}
	TArray<TCHAR>& Chars = Out.GetCharArray();
	// Drop the terminator while appending; one is added back at the end.
	int32 Length = Chars.Num() > 0 ? Chars.Num() - 1 : 0;
	Chars.SetNumUninitialized(Length + int32(Utf8.size()) + 1);
	TCHAR* Dest = Chars.GetData() + Length;
	const unsigned char* In = reinterpret_cast<const unsigned char*>(Utf8.data());
	const unsigned char* End = In + Utf8.size();
	while (In < End)
	{
		const unsigned char Lead = *In;
		if (Lead < 0x80)
		{
			*Dest++ = TCHAR(Lead);
			++In;
			continue;
		}
		// Decode one multi-byte sequence, rejecting overlong forms, surrogates and values past U+10FFFF.
		int32 Extra = 0;
		char32_t Code = 0;
		char32_t Min = 0;
		if ((Lead & 0xE0) == 0xC0)
		{
			Extra = 1;
			Code = Lead & 0x1F;
			Min = 0x80;
		}
		else if ((Lead & 0xF0) == 0xE0)
		{
			Extra = 2;
			Code = Lead & 0x0F;
			Min = 0x800;
		}
		else if ((Lead & 0xF8) == 0xF0)
		{
			Extra = 3;
			Code = Lead & 0x07;
			Min = 0x10000;
		}
		else
		{
			*Dest++ = TCHAR(ReplacementChar);
			++In;
			continue;
		}
		bool bValid = End - In > Extra;
		for (int32 Index = 1; bValid && Index <= Extra; ++Index)
		{
			if ((In[Index] & 0xC0) != 0x80)
			{
				bValid = false;
			}
			else
			{
				Code = (Code << 6) | (In[Index] & 0x3F);
			}
		}
		if (!bValid || Code < Min || Code > 0x10FFFF || (Code >= 0xD800 && Code <= 0xDFFF))
		{
			*Dest++ = TCHAR(ReplacementChar);
			++In;
			continue;
		}
		In += Extra + 1;
		if (Code >= 0x10000)
		{
			Code -= 0x10000;
			*Dest++ = TCHAR(0xD800 + (Code >> 10));
			*Dest++ = TCHAR(0xDC00 + (Code & 0x3FF));
		}
		else
		{
			*Dest++ = TCHAR(Code);
		}
	}
	// UTF-16 never needs more units than UTF-8 has bytes, so the array only shrinks here.
	*Dest = 0;
	Chars.SetNum(int32(Dest - Chars.GetData()) + 1, false);
}

FString ToString(std::string_view Utf8)
{
	FString Result;
	AppendUtf8(Result, Utf8);
	return Result;
}

} // namespace ZnJson
