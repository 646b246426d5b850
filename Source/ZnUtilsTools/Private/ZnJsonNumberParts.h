// The parts both plain-number readers share: digits composed eight at a time, the decimal a number
// is read into and its conversion to a double, and the general reading of one plain number.
// Internal to the JSON readers (ZnJsonPlainNumbers.cpp, ZnJsonTightNumbers.cpp).
#pragma once

#include "CoreMinimal.h"
#include "ZnSimd.h"

#include <cstring>

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "The plain-number readers load text eight bytes at a time as little-endian words."
#endif

namespace ZnJson
{
namespace NumberParts
{
inline bool IsDigit(char Char)
{
	return Char >= '0' && Char <= '9';
}

// Powers of ten a double holds exactly.
constexpr double ExactPowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14,
	1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

constexpr uint64 IntegerPowersOfTen[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

// Eight bytes of text as one word, the first byte lowest: every platform the engine runs on is
// little-endian (the check at the top of this file stops a build for any other).
inline uint64 LoadEightBytes(const char* Text)
{
	uint64 Word;
	std::memcpy(&Word, Text, sizeof(Word));
	return Word;
}

// How many of the eight bytes, from the first, are ASCII digits.
inline int32 CountLeadingDigits(uint64 Word)
{
	// A digit byte has 3 in its high nibble both as it is and with 6 added; any other byte differs.
	// Adding 6 can carry out of a byte only from a byte that is no digit, into the bytes after it.
	const uint64 HighNibbles = 0xF0F0F0F0F0F0F0F0ull;
	const uint64 NotDigits =
		((Word & HighNibbles) | (((Word + 0x0606060606060606ull) & HighNibbles) >> 4)) ^ 0x3333333333333333ull;
	return int32(FMath::CountTrailingZeros64(NotDigits) / 8);
}

// The value of the first Count (1 to 8) digit bytes of a word, by three multiplications.
inline uint64 DigitsValue(uint64 Word, int32 Count)
{
	// Moving the digits to the top makes the bytes below them zeros: leading zero digits.
	Word = (Word << (8 * (8 - Count))) & 0x0F0F0F0F0F0F0F0Full;
	Word = (Word * 2561) >> 8;
	Word = ((Word & 0x00FF00FF00FF00FFull) * 6553601) >> 16;
	return ((Word & 0x0000FFFF0000FFFFull) * 42949672960001ull) >> 32;
}

// Mantissa followed by the Count (1 to 16) digits at Digits, whose count is already known.
FORCEINLINE uint64 AppendFractionDigits(uint64 Mantissa, const char* Digits, int32 Count)
{
	if (Count <= 8)
	{
		return Mantissa * IntegerPowersOfTen[Count] + DigitsValue(LoadEightBytes(Digits), Count);
	}
	const int32 Rest = Count - 8;
	return (Mantissa * IntegerPowersOfTen[8] + DigitsValue(LoadEightBytes(Digits), 8)) * IntegerPowersOfTen[Rest] +
		DigitsValue(LoadEightBytes(Digits + 8), Rest);
}

// Appends the digits at Text to Mantissa, eight at a time; returns the first byte past them.
inline const char* ReadDigits(const char* Text, uint64& Mantissa, int32& Digits)
{
	for (;;)
	{
		const uint64 Word = LoadEightBytes(Text);
		const int32 Count = CountLeadingDigits(Word);
		if (Count == 0)
		{
			return Text;
		}
		// Past 19 digits the mantissa may wrap; the caller rejects such numbers by their count.
		Mantissa = Mantissa * IntegerPowersOfTen[Count] + DigitsValue(Word, Count);
		Digits += Count;
		Text += Count;
		if (Count < 8)
		{
			return Text;
		}
	}
}

// A plain number as read, before it becomes a double.
struct FPlainDecimal
{
	uint64 Mantissa;
	int32 Exponent;
	bool bNegative;
};

// Digits that fit 2^53 with a power of ten a double holds exactly.
FORCEINLINE bool ComposeNumber(bool bNegative, uint64 Mantissa, int32 Exponent, FPlainDecimal& OutDecimal)
{
	OutDecimal.Mantissa = Mantissa;
	OutDecimal.Exponent = Exponent;
	OutDecimal.bNegative = bNegative;
	return Mantissa <= (uint64(1) << 53) && Exponent >= -22 && Exponent <= 22;
}

// The double a plain number stands for: one multiplication or division of two exact doubles,
// so the result is the correctly rounded value, the same a full number parser gives. Done for a
// whole array at once after its text is read, so the divisions overlap instead of each one
// holding up the reading of the next number.
FORCEINLINE double ToDouble(const FPlainDecimal& Decimal)
{
	// At most 2^53, so the signed conversion (one instruction) is exact.
	const double Mantissa = double(int64(Decimal.Mantissa));
	const double Value = Decimal.Exponent < 0 ? Mantissa / ExactPowersOfTen[-Decimal.Exponent]
											  : Mantissa * ExactPowersOfTen[Decimal.Exponent];
	return Decimal.bNegative ? -Value : Value;
}

// A run of plain numbers as doubles. Fractions (the usual case) go two to a division: the same
// correctly rounded quotient in each lane, at half the cost where the processor divides two at once.
inline void ToDoubles(const FPlainDecimal* Decimals, int32 Count, double* OutNumbers)
{
	int32 Index = 0;
	for (; Index + 1 < Count; Index += 2)
	{
		const FPlainDecimal& First = Decimals[Index];
		const FPlainDecimal& Second = Decimals[Index + 1];
		if (First.Exponent <= 0 && Second.Exponent <= 0)
		{
			// At most 2^53, so the signed conversions (one instruction each) are exact.
			const double Mantissas[2] = {double(int64(First.Mantissa)), double(int64(Second.Mantissa))};
			const double Powers[2] = {ExactPowersOfTen[-First.Exponent], ExactPowersOfTen[-Second.Exponent]};
			const bool bNegative[2] = {First.bNegative, Second.bNegative};
			ZnSimd::Native::DividePair(Mantissas, Powers, bNegative, OutNumbers + Index);
		}
		else
		{
			OutNumbers[Index] = ToDouble(First);
			OutNumbers[Index + 1] = ToDouble(Second);
		}
	}
	for (; Index < Count; ++Index)
	{
		OutNumbers[Index] = ToDouble(Decimals[Index]);
	}
}

// Reads an exponent part if there is one; false when it is malformed.
FORCEINLINE bool ReadExponent(const char*& Text, int32& Exponent)
{
	if (*Text != 'e' && *Text != 'E')
	{
		return true;
	}
	++Text;
	const bool bNegativeExponent = *Text == '-';
	Text += (*Text == '-' || *Text == '+');
	if (!IsDigit(*Text))
	{
		return false;
	}
	int32 Written = 0;
	for (; IsDigit(*Text); ++Text)
	{
		Written = Written < 10000 ? Written * 10 + (*Text - '0') : Written;
	}
	Exponent += bNegativeExponent ? -Written : Written;
	return true;
}

// A JSON number whose digits fit 2^53 and whose power of ten is exact (see ComposeNumber).
// Returns the end of the number, or nullptr for anything else (malformed numbers included: those
// are left for the full parser to reject). Reads at most sixteen bytes past the start of a digit
// run, which the zeroed padding after a text always provides.
const char* ParsePlainNumberByWords(const char* Text, FPlainDecimal& OutNumber);
} // namespace NumberParts
} // namespace ZnJson
