#include "StringFormat.h"

#include <cstdio>

namespace
{
void AppendAscii(FString& Out, const char* Text, int32 Count)
{
	for (int32 Index = 0; Index < Count; ++Index)
	{
		Out.AppendChar(TCHAR(uint8(Text[Index])));
	}
}

void AppendPadding(FString& Out, int32 Count)
{
	for (int32 Index = 0; Index < Count; ++Index)
	{
		Out.AppendChar(TEXT(' '));
	}
}

// Formats one numeric conversion through the C library, whose output for these is exactly the
// engine's (the engine defers to the platform's printf for numbers as well).
template <typename T>
void AppendNumber(
	FString& Out, const char* Directive, bool bStar, int32 StarWidth, bool bStarPrecision, int32 StarPrecision, T Value)
{
	char Small[128];
	int Needed;
	if (bStar && bStarPrecision)
	{
		Needed = std::snprintf(Small, sizeof(Small), Directive, StarWidth, StarPrecision, Value);
	}
	else if (bStar)
	{
		Needed = std::snprintf(Small, sizeof(Small), Directive, StarWidth, Value);
	}
	else if (bStarPrecision)
	{
		Needed = std::snprintf(Small, sizeof(Small), Directive, StarPrecision, Value);
	}
	else
	{
		Needed = std::snprintf(Small, sizeof(Small), Directive, Value);
	}
	if (Needed < 0)
	{
		return;
	}
	if (Needed < int(sizeof(Small)))
	{
		AppendAscii(Out, Small, Needed);
		return;
	}
	// Very wide fields or huge %f values ("%f" of 1e300 has 300 digits).
	TArray<char> Big;
	Big.SetNumUninitialized(Needed + 1);
	if (bStar && bStarPrecision)
	{
		std::snprintf(Big.GetData(), Big.Num(), Directive, StarWidth, StarPrecision, Value);
	}
	else if (bStar)
	{
		std::snprintf(Big.GetData(), Big.Num(), Directive, StarWidth, Value);
	}
	else if (bStarPrecision)
	{
		std::snprintf(Big.GetData(), Big.Num(), Directive, StarPrecision, Value);
	}
	else
	{
		std::snprintf(Big.GetData(), Big.Num(), Directive, Value);
	}
	AppendAscii(Out, Big.GetData(), Needed);
}
} // namespace

namespace ZnStandalone
{
void AppendFormatV(FString& Out, const TCHAR* Fmt, va_list InArgs)
{
	if (!Fmt)
	{
		return;
	}
	va_list Args;
	va_copy(Args, InArgs);

	const TCHAR* Cursor = Fmt;
	while (*Cursor)
	{
		if (*Cursor != TEXT('%'))
		{
			const TCHAR* RunStart = Cursor;
			while (*Cursor && *Cursor != TEXT('%'))
			{
				++Cursor;
			}
			Out.AppendChars(RunStart, int32(Cursor - RunStart));
			continue;
		}

		const TCHAR* SpecStart = Cursor;
		++Cursor;
		if (*Cursor == TEXT('%'))
		{
			Out.AppendChar(TEXT('%'));
			++Cursor;
			continue;
		}

		// Build a narrow copy of the directive: flags, width, precision, length, type.
		char Directive[64];
		int32 DirectiveLen = 0;
		Directive[DirectiveLen++] = '%';
		bool bLeftJustify = false;
		while (*Cursor == TEXT('-') || *Cursor == TEXT('+') || *Cursor == TEXT(' ') || *Cursor == TEXT('#') ||
			*Cursor == TEXT('0'))
		{
			bLeftJustify |= *Cursor == TEXT('-');
			if (DirectiveLen < 40)
			{
				Directive[DirectiveLen++] = char(*Cursor);
			}
			++Cursor;
		}
		bool bStarWidth = false;
		int32 Width = 0;
		if (*Cursor == TEXT('*'))
		{
			bStarWidth = true;
			Width = va_arg(Args, int);
			Directive[DirectiveLen++] = '*';
			++Cursor;
		}
		else
		{
			while (FChar::IsDigit(*Cursor))
			{
				Width = Width < 100000 ? Width * 10 + (*Cursor - TEXT('0')) : Width;
				if (DirectiveLen < 48)
				{
					Directive[DirectiveLen++] = char(*Cursor);
				}
				++Cursor;
			}
		}
		bool bHasPrecision = false;
		bool bStarPrecision = false;
		int32 Precision = 0;
		if (*Cursor == TEXT('.'))
		{
			bHasPrecision = true;
			Directive[DirectiveLen++] = '.';
			++Cursor;
			if (*Cursor == TEXT('*'))
			{
				bStarPrecision = true;
				Precision = va_arg(Args, int);
				Directive[DirectiveLen++] = '*';
				++Cursor;
			}
			else
			{
				while (FChar::IsDigit(*Cursor))
				{
					Precision = Precision < 100000 ? Precision * 10 + (*Cursor - TEXT('0')) : Precision;
					if (DirectiveLen < 56)
					{
						Directive[DirectiveLen++] = char(*Cursor);
					}
					++Cursor;
				}
			}
		}

		// Length modifiers. "l" and "ll" are 64-bit on Linux; "I64" is accepted for Windows-style formats.
		int32 LongCount = 0;
		bool bHalf = false;
		bool bSizeT = false;
		for (;;)
		{
			if (*Cursor == TEXT('l'))
			{
				++LongCount;
				++Cursor;
			}
			else if (*Cursor == TEXT('h'))
			{
				bHalf = true;
				++Cursor;
			}
			else if (*Cursor == TEXT('z') || *Cursor == TEXT('j') || *Cursor == TEXT('t') || *Cursor == TEXT('L') ||
				*Cursor == TEXT('q'))
			{
				bSizeT = true;
				++Cursor;
			}
			else if (Cursor[0] == TEXT('I') && Cursor[1] == TEXT('6') && Cursor[2] == TEXT('4'))
			{
				LongCount = 2;
				Cursor += 3;
			}
			else
			{
				break;
			}
		}
		const bool b64 = LongCount > 0 || bSizeT;
		const TCHAR Type = *Cursor;

		auto Finish = [&](char Conversion, const char* Length)
		{
			for (const char* L = Length; *L; ++L)
			{
				Directive[DirectiveLen++] = *L;
			}
			Directive[DirectiveLen++] = Conversion;
			Directive[DirectiveLen] = 0;
		};

		switch (Type)
		{
			case TEXT('d'):
			case TEXT('i'):
				Finish(char(Type), b64 ? "ll" : "");
				if (b64)
				{
					AppendNumber(Out, Directive, bStarWidth, Width, bStarPrecision, Precision, va_arg(Args, long long));
				}
				else
				{
					AppendNumber(Out, Directive, bStarWidth, Width, bStarPrecision, Precision, va_arg(Args, int));
				}
				++Cursor;
				break;
			case TEXT('u'):
			case TEXT('x'):
			case TEXT('X'):
			case TEXT('o'):
				Finish(char(Type), b64 ? "ll" : "");
				if (b64)
				{
					AppendNumber(
						Out, Directive, bStarWidth, Width, bStarPrecision, Precision, va_arg(Args, unsigned long long));
				}
				else
				{
					AppendNumber(
						Out, Directive, bStarWidth, Width, bStarPrecision, Precision, va_arg(Args, unsigned int));
				}
				++Cursor;
				break;
			case TEXT('f'):
			case TEXT('F'):
			case TEXT('e'):
			case TEXT('E'):
			case TEXT('g'):
			case TEXT('G'):
			case TEXT('a'):
			case TEXT('A'):
				Finish(char(Type), "");
				AppendNumber(Out, Directive, bStarWidth, Width, bStarPrecision, Precision, va_arg(Args, double));
				++Cursor;
				break;
			case TEXT('p'):
				Finish('p', "");
				AppendNumber(Out, Directive, bStarWidth, Width, bStarPrecision, Precision, va_arg(Args, void*));
				++Cursor;
				break;
			case TEXT('c'):
			{
				const TCHAR Ch = TCHAR(va_arg(Args, int));
				const int32 Pad = Width > 1 ? Width - 1 : 0;
				if (!bLeftJustify)
				{
					AppendPadding(Out, Pad);
				}
				Out.AppendChar(Ch);
				if (bLeftJustify)
				{
					AppendPadding(Out, Pad);
				}
				++Cursor;
				break;
			}
			case TEXT('s'):
			case TEXT('S'):
			{
				// %s takes TCHAR text; %hs (and %S, as on the engine's Linux build) narrow text.
				FString Text;
				if (bHalf || Type == TEXT('S'))
				{
					const char* Narrow = va_arg(Args, const char*);
					Text = Narrow ? FString(UTF8_TO_TCHAR(Narrow)) : FString(TEXT("(null)"));
				}
				else
				{
					const TCHAR* Wide = va_arg(Args, const TCHAR*);
					Text = Wide ? FString(Wide) : FString(TEXT("(null)"));
				}
				if (bHasPrecision && Precision >= 0 && Precision < Text.Len())
				{
					Text.LeftInline(Precision);
				}
				int32 FieldWidth = Width;
				if (bStarWidth && FieldWidth < 0)
				{
					bLeftJustify = true;
					FieldWidth = -FieldWidth;
				}
				const int32 Pad = FieldWidth > Text.Len() ? FieldWidth - Text.Len() : 0;
				if (!bLeftJustify)
				{
					AppendPadding(Out, Pad);
				}
				Out += Text;
				if (bLeftJustify)
				{
					AppendPadding(Out, Pad);
				}
				++Cursor;
				break;
			}
			default:
				// Unknown or missing conversion: copy what was read literally and take no argument,
				// so a bad format can never read past the arguments it was given.
				Out.AppendChars(SpecStart, int32(Cursor - SpecStart));
				break;
		}
	}
	va_end(Args);
}
} // namespace ZnStandalone
