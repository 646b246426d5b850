// The block number reader: plainly written numbers, arrays of them and small objects of them read
// straight from the text, the common shape of each number found with one 16-byte load.
#include "ZnJsonNumberParts.h"
#include "ZnJsonReader.h"

namespace ZnJson
{
namespace NumberParts
{
const char* ParsePlainNumberByWords(const char* Text, FPlainDecimal& OutNumber)
{
	const bool bNegative = *Text == '-';
	Text += bNegative;
	uint64 Mantissa = 0;
	int32 Digits = 0;
	const char* IntegerPart = Text;
	Text = ReadDigits(Text, Mantissa, Digits);
	// At least one digit, and no leading zero before another digit.
	if (Digits == 0 || (*IntegerPart == '0' && Digits > 1))
	{
		return nullptr;
	}
	int32 Exponent = 0;
	if (*Text == '.')
	{
		const int32 IntegerDigits = Digits;
		Text = ReadDigits(Text + 1, Mantissa, Digits);
		if (Digits == IntegerDigits)
		{
			return nullptr;
		}
		Exponent = IntegerDigits - Digits;
	}
	if (Digits > 19 || !ReadExponent(Text, Exponent))
	{
		return nullptr;
	}
	return ComposeNumber(bNegative, Mantissa, Exponent, OutNumber) ? Text : nullptr;
}
} // namespace NumberParts

namespace
{
using namespace NumberParts;

// The first byte from Text on that is not JSON whitespace; the zeroed padding after a text stops it.
inline const char* SkipPaddedSpace(const char* Text)
{
	while (IsJsonSpace(*Text))
	{
		++Text;
	}
	return Text;
}

// The common shape, "12.345678", with the integer part and the fraction within the sixteen bytes
// from the number's first digit: one load finds where both end, so the next number's position is
// known early and the digits' values are worked out beside the next number's scan. Anything
// else goes the word-by-word way.
FORCEINLINE const char* ParsePlainNumber(const char* Text, const char* Earliest, FPlainDecimal& OutNumber)
{
	const char* Start = Text;
	const bool bNegative = *Text == '-';
	Text += bNegative;
	const uint32 Others = ~ZnSimd::Native::DigitMask(ZnSimd::Native::Load16(Text)) & 0xFFFFu;
	const int32 IntegerDigits = int32(FMath::CountTrailingZeros64(Others));
	if (IntegerDigits == 0 || IntegerDigits > 8 || (Text[0] == '0' && IntegerDigits > 1))
	{
		return ParsePlainNumberByWords(Start, OutNumber);
	}
	const char* End = Text + IntegerDigits;
	int32 FractionDigits = 0;
	if (*End == '.')
	{
		const uint32 AfterPoint = Others & ~((2u << IntegerDigits) - 1u);
		FractionDigits = int32(FMath::CountTrailingZeros64(AfterPoint)) - IntegerDigits - 1;
		// A fraction that reaches the end of the block may go on past it.
		if (FractionDigits <= 0 || AfterPoint == 0 || FractionDigits > 8 + (8 - IntegerDigits) - 1)
		{
			return ParsePlainNumberByWords(Start, OutNumber);
		}
		End += 1 + FractionDigits;
	}
	uint64 Mantissa;
	if (End - 17 >= Earliest)
	{
		Mantissa =
			ZnSimd::Native::DigitsEndingAt(End, IntegerDigits + FractionDigits, FractionDigits, FractionDigits > 0);
	}
	else
	{
		// Near the start of the text the bytes before the number may not be there to load.
		Mantissa = DigitsValue(LoadEightBytes(Text), IntegerDigits);
		Mantissa =
			FractionDigits > 0 ? AppendFractionDigits(Mantissa, Text + IntegerDigits + 1, FractionDigits) : Mantissa;
	}
	int32 Exponent = -FractionDigits;
	if (!ReadExponent(End, Exponent))
	{
		return nullptr;
	}
	return ComposeNumber(bNegative, Mantissa, Exponent, OutNumber) ? End : nullptr;
}

// "[item, item]" or "{item, item}" written plainly, with at most Limit items: ReadItem(Text,
// Index) reads item Index at Text and returns its end, or nullptr when it is not plain. The
// item count, or -1 when anything is not plain.
template <typename ReadItemType>
FORCEINLINE int32 ReadPlainList(const char* Text, char Open, char Close, int32 Limit, ReadItemType&& ReadItem)
{
	if (*Text != Open)
	{
		return -1;
	}
	Text = SkipPaddedSpace(Text + 1);
	if (*Text == Close)
	{
		return 0;
	}
	for (int32 Count = 0; Count < Limit;)
	{
		Text = ReadItem(Text, Count++);
		if (Text == nullptr)
		{
			return -1;
		}
		Text = SkipPaddedSpace(Text);
		if (*Text == Close)
		{
			return Count;
		}
		if (*Text != ',')
		{
			return -1;
		}
		Text = SkipPaddedSpace(Text + 1);
	}
	return -1;
}
} // namespace

int32 ReadPlainNumbers(simdjson::ondemand::value& Value, double* OutNumbers, int32 Capacity)
{
	const char* const Token = Value.raw_json_token().data();
	// Producers write frames without whitespace: those are read from the separators' positions.
	int32 Count = 0;
	if (ReadTightNumbers(Token, OutNumbers, Capacity, Count) != nullptr)
	{
		return Count;
	}
	FPlainDecimal Decimals[MaxPlainNumbers];
	const int32 Limit = Capacity < MaxPlainNumbers ? Capacity : MaxPlainNumbers;
	Count = ReadPlainList(Token, '[', ']', Limit,
		[&Decimals, Token](const char* Text, int32 Index) { return ParsePlainNumber(Text, Token, Decimals[Index]); });
	ToDoubles(Decimals, Count, OutNumbers);
	return Count;
}

int32 ReadPlainNumberMembers(simdjson::ondemand::value& Value, FPlainMember* OutMembers, int32 Capacity)
{
	FPlainDecimal Decimals[MaxPlainMembers];
	const char* const Token = Value.raw_json_token().data();
	const int32 Count = ReadPlainList(Token, '{', '}', Capacity < MaxPlainMembers ? Capacity : MaxPlainMembers,
		[&Decimals, OutMembers, Token](const char* Text, int32 Index) -> const char*
		{
			if (*Text != '"')
			{
				return nullptr;
			}
			const char* Name = ++Text;
			// Escapes and control characters are for the full parser.
			while (*Text != '"')
			{
				if (*Text == '\\' || static_cast<unsigned char>(*Text) < 0x20)
				{
					return nullptr;
				}
				++Text;
			}
			OutMembers[Index].Name = Name;
			OutMembers[Index].NameLength = int32(Text - Name);
			Text = SkipPaddedSpace(Text + 1);
			return *Text == ':' ? ParsePlainNumber(SkipPaddedSpace(Text + 1), Token, Decimals[Index]) : nullptr;
		});
	double Numbers[MaxPlainMembers];
	ToDoubles(Decimals, Count, Numbers);
	for (int32 Index = 0; Index < Count; ++Index)
	{
		OutMembers[Index].Number = Numbers[Index];
	}
	return Count;
}

bool ReadTightLetterMembers(simdjson::ondemand::value& Value, const char* Letters, double* OutNumbers)
{
	constexpr int32 MaxLetters = 4;
	FPlainDecimal Decimals[MaxLetters];
	const char* const Token = Value.raw_json_token().data();
	const char* Cursor = Token;
	int32 Count = 0;
	for (; Letters[Count] != '\0'; ++Count)
	{
		if (Count == MaxLetters)
		{
			return false;
		}
		// '{' or ',', then the quoted letter and the colon: five bytes compared at once.
		const uint64 Lead = Count == 0 ? '{' : ',';
		const uint64 Expected = Lead | (uint64('"') << 8) | (uint64(uint8(Letters[Count])) << 16) |
			(uint64('"') << 24) | (uint64(':') << 32);
		if ((LoadEightBytes(Cursor) & 0xFFFFFFFFFFull) != Expected)
		{
			return false;
		}
		Cursor = ParsePlainNumber(Cursor + 5, Token, Decimals[Count]);
		if (Cursor == nullptr)
		{
			return false;
		}
	}
	if (*Cursor != '}')
	{
		return false;
	}
	ToDoubles(Decimals, Count, OutNumbers);
	return true;
}

} // namespace ZnJson
