#include "ZnJsonWriter.h"

namespace
{
// Room for the longest 64-bit decimal with its sign.
constexpr int32 MaxDigits = 21;

int32 FormatInteger(int64 Value, TCHAR (&Buffer)[MaxDigits])
{
	// Work in unsigned so the most negative value has a magnitude.
	uint64 Magnitude = Value < 0 ? uint64(0) - uint64(Value) : uint64(Value);
	int32 Start = MaxDigits;
	do
	{
		Buffer[--Start] = TCHAR('0' + Magnitude % 10);
		Magnitude /= 10;
	} while (Magnitude != 0);
	if (Value < 0)
	{
		Buffer[--Start] = TCHAR('-');
	}
	return Start;
}

int32 TextLength(const TCHAR* Text)
{
	int32 Length = 0;
	if (Text != nullptr)
	{
		while (Text[Length] != 0)
		{
			++Length;
		}
	}
	return Length;
}
} // namespace

FZnJsonWriter::FZnJsonWriter(FString& InOut)
	: Out(InOut)
{
}

void FZnJsonWriter::WriteLineAndIndent()
{
	Out.Append(LINE_TERMINATOR);
	for (int32 Tab = 0; Tab < IndentLevel; ++Tab)
	{
		Out.AppendChar(TCHAR('\t'));
	}
}

void FZnJsonWriter::WriteIdentifier(const TCHAR* Identifier)
{
	check(IndentLevel > 0);
	if (!bAtObjectStart)
	{
		Out.AppendChar(TCHAR(','));
	}
	bAtObjectStart = false;
	WriteLineAndIndent();
	AppendQuoted(Out, Identifier, TextLength(Identifier));
	Out.AppendChar(TCHAR(':'));
}

void FZnJsonWriter::WriteObjectStart()
{
	check(IndentLevel == 0);
	Out.AppendChar(TCHAR('{'));
	++IndentLevel;
	bAtObjectStart = true;
}

void FZnJsonWriter::WriteObjectStart(const TCHAR* Identifier)
{
	WriteIdentifier(Identifier);
	WriteLineAndIndent();
	Out.AppendChar(TCHAR('{'));
	++IndentLevel;
	bAtObjectStart = true;
}

void FZnJsonWriter::WriteObjectEnd()
{
	check(IndentLevel > 0);
	--IndentLevel;
	WriteLineAndIndent();
	Out.AppendChar(TCHAR('}'));
	bAtObjectStart = false;
}

void FZnJsonWriter::WriteValue(const TCHAR* Identifier, const FString& Value)
{
	WriteIdentifier(Identifier);
	Out.AppendChar(TCHAR(' '));
	AppendQuoted(Out, *Value, Value.Len());
}

void FZnJsonWriter::WriteValue(const TCHAR* Identifier, const TCHAR* Value)
{
	WriteIdentifier(Identifier);
	Out.AppendChar(TCHAR(' '));
	AppendQuoted(Out, Value, TextLength(Value));
}

void FZnJsonWriter::WriteValue(const TCHAR* Identifier, int32 Value)
{
	WriteValue(Identifier, int64(Value));
}

void FZnJsonWriter::WriteValue(const TCHAR* Identifier, int64 Value)
{
	WriteIdentifier(Identifier);
	Out.AppendChar(TCHAR(' '));
	TCHAR Digits[MaxDigits];
	const int32 Start = FormatInteger(Value, Digits);
	Out.AppendChars(Digits + Start, MaxDigits - Start);
}

void FZnJsonWriter::WriteValue(const TCHAR* Identifier, bool Value)
{
	WriteIdentifier(Identifier);
	Out.AppendChar(TCHAR(' '));
	Out.Append(Value ? TEXT("true") : TEXT("false"));
}

void FZnJsonWriter::AppendQuoted(FString& Out, const TCHAR* Text, int32 Length)
{
	static const TCHAR HexDigits[] = TEXT("0123456789abcdef");
	Out.AppendChar(TCHAR('"'));
	// Runs of characters that need no escape are appended in one piece.
	int32 RunStart = 0;
	for (int32 Index = 0; Index < Length; ++Index)
	{
		const TCHAR Char = Text[Index];
		if (Char >= 0x20 && Char != TCHAR('"') && Char != TCHAR('\\'))
		{
			continue;
		}
		Out.AppendChars(Text + RunStart, Index - RunStart);
		RunStart = Index + 1;
		switch (Char)
		{
			case TCHAR('"'):
				Out.Append(TEXT("\\\""));
				break;
			case TCHAR('\\'):
				Out.Append(TEXT("\\\\"));
				break;
			case TCHAR('\b'):
				Out.Append(TEXT("\\b"));
				break;
			case TCHAR('\f'):
				Out.Append(TEXT("\\f"));
				break;
			case TCHAR('\n'):
				Out.Append(TEXT("\\n"));
				break;
			case TCHAR('\r'):
				Out.Append(TEXT("\\r"));
				break;
			case TCHAR('\t'):
				Out.Append(TEXT("\\t"));
				break;
			default:
			{
				const TCHAR Escape[6] = {TCHAR('\\'), TCHAR('u'), TCHAR('0'), TCHAR('0'), HexDigits[(Char >> 4) & 0xF],
					HexDigits[Char & 0xF]};
				Out.AppendChars(Escape, 6);
				break;
			}
		}
	}
	Out.AppendChars(Text + RunStart, Length - RunStart);
	Out.AppendChar(TCHAR('"'));
}
