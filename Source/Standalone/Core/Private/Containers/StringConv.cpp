#include "Containers/StringConv.h"

#include <cstring>

namespace
{
constexpr uint32 ReplacementChar = 0xFFFD;

FORCEINLINE void AppendCodePoint(TArray<TCHAR>& Out, uint32 CodePoint)
{
	if (CodePoint >= 0x10000)
	{
		CodePoint -= 0x10000;
		Out.Add(TCHAR(0xD800 + (CodePoint >> 10)));
		Out.Add(TCHAR(0xDC00 + (CodePoint & 0x3FF)));
	}
	else
	{
		Out.Add(TCHAR(CodePoint));
	}
}
} // namespace

namespace ZnStandalone
{
void AppendUtf8ToUtf16(TArray<TCHAR>& Out, const char* Src, int32 SrcLen)
{
	if (!Src || SrcLen <= 0)
	{
		return;
	}
	const uint8* Bytes = reinterpret_cast<const uint8*>(Src);
	// Every byte yields at most one UTF-16 unit (four bytes yield two), so this never under-reserves.
	Out.Reserve(Out.Num() + SrcLen);
	int32 Index = 0;
	while (Index < SrcLen)
	{
		// Fast path: a run of ASCII bytes is widened in one pass without per-unit growth checks.
		const uint8 Lead = Bytes[Index];
		if (Lead < 0x80)
		{
			// Eight bytes at a time while none has its high bit set: JSON bodies are megabytes of ASCII.
			int32 RunEnd = Index + 1;
			while (RunEnd + 8 <= SrcLen)
			{
				uint64 Word;
				std::memcpy(&Word, Bytes + RunEnd, sizeof(Word));
				if ((Word & 0x8080808080808080ull) != 0)
				{
					break;
				}
				RunEnd += 8;
			}
			while (RunEnd < SrcLen && Bytes[RunEnd] < 0x80)
			{
				++RunEnd;
			}
			const int32 RunLength = RunEnd - Index;
			const int32 First = Out.AddUninitialized(RunLength);
			TCHAR* Dest = Out.GetData() + First;
			for (int32 Offset = 0; Offset < RunLength; ++Offset)
			{
				Dest[Offset] = TCHAR(Bytes[Index + Offset]);
			}
			Index = RunEnd;
			continue;
		}

		int32 Needed;
		uint32 CodePoint;
		uint8 MinSecond = 0x80;
		uint8 MaxSecond = 0xBF;
		if (Lead >= 0xC2 && Lead <= 0xDF)
		{
			Needed = 1;
			CodePoint = Lead & 0x1F;
		}
		else if (Lead >= 0xE0 && Lead <= 0xEF)
		{
			Needed = 2;
			CodePoint = Lead & 0x0F;
			if (Lead == 0xE0)
			{
				MinSecond = 0xA0; // no overlong forms
			}
			else if (Lead == 0xED)
			{
				MaxSecond = 0x9F; // no UTF-16 surrogates
			}
		}
		else if (Lead >= 0xF0 && Lead <= 0xF4)
		{
			Needed = 3;
			CodePoint = Lead & 0x07;
			if (Lead == 0xF0)
			{
				MinSecond = 0x90;
			}
			else if (Lead == 0xF4)
			{
				MaxSecond = 0x8F; // nothing above U+10FFFF
			}
		}
		else
		{
			// Stray continuation byte, overlong lead (C0, C1) or F5..FF.
			Out.Add(TCHAR(ReplacementChar));
			++Index;
			continue;
		}

		// Consume the longest valid prefix of the sequence; an invalid or missing byte ends it
		// with one replacement character and is itself examined again as a possible lead.
		int32 Consumed = 1;
		bool bValid = true;
		for (int32 Trail = 0; Trail < Needed; ++Trail)
		{
			if (Index + Consumed >= SrcLen)
			{
				bValid = false;
				break;
			}
			const uint8 Byte = Bytes[Index + Consumed];
			const uint8 Lo = Trail == 0 ? MinSecond : 0x80;
			const uint8 Hi = Trail == 0 ? MaxSecond : 0xBF;
			if (Byte < Lo || Byte > Hi)
			{
				bValid = false;
				break;
			}
			CodePoint = (CodePoint << 6) | (Byte & 0x3F);
			++Consumed;
		}
		Index += Consumed;
		AppendCodePoint(Out, bValid ? CodePoint : ReplacementChar);
	}
}

void AppendUtf16ToUtf8(TArray<char>& Out, const TCHAR* Src, int32 SrcLen)
{
	if (!Src || SrcLen <= 0)
	{
		return;
	}
	Out.Reserve(Out.Num() + SrcLen);
	for (int32 Index = 0; Index < SrcLen; ++Index)
	{
		uint32 CodePoint = uint32(Src[Index]);
		if (CodePoint < 0x80)
		{
			int32 RunEnd = Index + 1;
			while (RunEnd < SrcLen && uint32(Src[RunEnd]) < 0x80)
			{
				++RunEnd;
			}
			const int32 RunLength = RunEnd - Index;
			const int32 First = Out.AddUninitialized(RunLength);
			char* Dest = Out.GetData() + First;
			for (int32 Offset = 0; Offset < RunLength; ++Offset)
			{
				Dest[Offset] = char(Src[Index + Offset]);
			}
			Index = RunEnd - 1;
			continue;
		}
		if (CodePoint >= 0xD800 && CodePoint <= 0xDBFF)
		{
			if (Index + 1 < SrcLen && uint32(Src[Index + 1]) >= 0xDC00 && uint32(Src[Index + 1]) <= 0xDFFF)
			{
				CodePoint = 0x10000 + ((CodePoint - 0xD800) << 10) + (uint32(Src[Index + 1]) - 0xDC00);
				++Index;
			}
			else
			{
				CodePoint = ReplacementChar;
			}
		}
		else if (CodePoint >= 0xDC00 && CodePoint <= 0xDFFF)
		{
			CodePoint = ReplacementChar;
		}

		if (CodePoint < 0x800)
		{
			Out.Add(char(0xC0 | (CodePoint >> 6)));
			Out.Add(char(0x80 | (CodePoint & 0x3F)));
		}
		else if (CodePoint < 0x10000)
		{
			Out.Add(char(0xE0 | (CodePoint >> 12)));
			Out.Add(char(0x80 | ((CodePoint >> 6) & 0x3F)));
			Out.Add(char(0x80 | (CodePoint & 0x3F)));
		}
		else
		{
			Out.Add(char(0xF0 | (CodePoint >> 18)));
			Out.Add(char(0x80 | ((CodePoint >> 12) & 0x3F)));
			Out.Add(char(0x80 | ((CodePoint >> 6) & 0x3F)));
			Out.Add(char(0x80 | (CodePoint & 0x3F)));
		}
	}
}
} // namespace ZnStandalone

namespace
{
template <typename CharType>
int32 SafeStrlen(const CharType* S)
{
	int32 Len = 0;
	if (S)
	{
		while (S[Len])
		{
			++Len;
		}
	}
	return Len;
}
} // namespace

FTCHARToUTF8::FTCHARToUTF8(const TCHAR* Source)
	: FTCHARToUTF8(Source, SafeStrlen(Source))
{
}

FTCHARToUTF8::FTCHARToUTF8(const TCHAR* Source, int32 SourceLen)
{
	ZnStandalone::AppendUtf16ToUtf8(Buffer, Source, SourceLen);
	Buffer.Add('\0');
}

FUTF8ToTCHAR::FUTF8ToTCHAR(const char* Source)
	: FUTF8ToTCHAR(Source, SafeStrlen(Source))
{
}

FUTF8ToTCHAR::FUTF8ToTCHAR(const char* Source, int32 SourceLen)
{
	ZnStandalone::AppendUtf8ToUtf16(Buffer, Source, SourceLen);
	Buffer.Add(TCHAR(0));
}

FTCHARToANSI::FTCHARToANSI(const TCHAR* Source)
	: FTCHARToANSI(Source, SafeStrlen(Source))
{
}

FTCHARToANSI::FTCHARToANSI(const TCHAR* Source, int32 SourceLen)
{
	Buffer.Reserve(SourceLen > 0 ? SourceLen + 1 : 1);
	for (int32 Index = 0; Index < SourceLen; ++Index)
	{
		const uint32 C = uint32(Source[Index]);
		Buffer.Add(C < 0x80 ? ANSICHAR(C) : '?');
	}
	Buffer.Add('\0');
}

FANSIToTCHAR::FANSIToTCHAR(const ANSICHAR* Source)
	: FANSIToTCHAR(Source, SafeStrlen(Source))
{
}

FANSIToTCHAR::FANSIToTCHAR(const ANSICHAR* Source, int32 SourceLen)
{
	Buffer.Reserve(SourceLen > 0 ? SourceLen + 1 : 1);
	for (int32 Index = 0; Index < SourceLen; ++Index)
	{
		Buffer.Add(TCHAR(uint8(Source[Index])));
	}
	Buffer.Add(TCHAR(0));
}
