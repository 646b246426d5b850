// The tight-array reader: arrays of numbers written without whitespace, as producers write frames,
// read from the separators of whole 64-byte blocks.
#include "ZnJsonNumberParts.h"
#include "ZnJsonReader.h"

namespace ZnJson
{
namespace
{
using namespace NumberParts;

// What each byte of a 64-byte block of a tight array is, one bit per byte.
struct FTightBlock
{
	uint64 Digits;
	uint64 Zeros;
	uint64 Points;
	uint64 Minus;
	// ',' or ']'
	uint64 Separators;
	uint64 Closes;
};

FORCEINLINE void ClassifyTightBlock(const char* Block, FTightBlock& Out)
{
	using namespace ZnSimd::Native;
	Out = FTightBlock{0, 0, 0, 0, 0, 0};
	for (int32 Part = 0; Part < 4; ++Part)
	{
		const FBytes16 Bytes = Load16(Block + 16 * Part);
		const uint32 CloseBits = EqualMask(Bytes, ']');
		const int32 Shift = 16 * Part;
		Out.Digits |= uint64(DigitMask(Bytes)) << Shift;
		Out.Zeros |= uint64(EqualMask(Bytes, '0')) << Shift;
		Out.Points |= uint64(EqualMask(Bytes, '.')) << Shift;
		Out.Minus |= uint64(EqualMask(Bytes, '-')) << Shift;
		Out.Separators |= uint64(EqualMask(Bytes, ',') | CloseBits) << Shift;
		Out.Closes |= uint64(CloseBits) << Shift;
	}
}

// Whether the numbers of a block that end in it (up to its last separator, or the array's end if
// that comes first) are all of the form -?digits(.digits)? without leading zeros, judged for the
// whole block at once. Only a second point in one number is left for each number to check.
FORCEINLINE bool IsPlainTightBlock(const FTightBlock& Block)
{
	const int32 LastSeparator = 63 - int32(FMath::CountLeadingZeros64(Block.Separators));
	const int32 FirstClose = int32(FMath::CountTrailingZeros64(Block.Closes));
	const int32 Last = FirstClose < LastSeparator ? FirstClose : LastSeparator;
	const uint64 Covered = Last == 63 ? ~uint64(0) : (uint64(2) << Last) - 1;
	// A number starts at the block's start and after each separator; its digits start after its sign.
	const uint64 Starts = (Block.Separators << 1) | 1;
	const uint64 FirstDigits = (Starts & ~Block.Minus) | ((Starts & Block.Minus) << 1);
	const uint64 Odd = ~(Block.Digits | Block.Points | Block.Minus | Block.Separators) | (Block.Minus & ~Starts) |
		(FirstDigits & ~Block.Digits) | (FirstDigits & Block.Zeros & (Block.Digits >> 1)) |
		(Block.Points & ~(Block.Digits >> 1)) | (Block.Points & ~(Block.Digits << 1));
	return (Odd & Covered) == 0;
}

// The number of a plain tight block between Begin and its separator at End, where a sign is
// followed by a digit, a point lies between digits, and the integer part has no leading zero.
// False for numbers this way does not take; the caller reads those the general way. Reads from
// Earliest on.
FORCEINLINE bool ParseTightSpan(
	const char* Block, const FTightBlock& Masks, int32 Begin, int32 End, const char* Earliest, FPlainDecimal& OutNumber)
{
	const uint64 Negative = (Masks.Minus >> Begin) & 1;
	const int32 First = Begin + int32(Negative);
	const int32 Span = End - First;
	const uint64 Points = (Masks.Points >> First) & ((uint64(1) << Span) - 1);
	const int32 IntegerDigits = int32(FMath::CountTrailingZeros64(Points | (uint64(1) << Span)));
	const int32 FractionDigits = Points != 0 ? Span - IntegerDigits - 1 : 0;
	const int32 DigitCount = IntegerDigits + FractionDigits;
	// One point at most, and at most sixteen digits in all.
	if (((Points & (Points - 1)) != 0) | (DigitCount > 16))
	{
		return false;
	}
	uint64 Mantissa;
	if (Block + End - 17 >= Earliest)
	{
		Mantissa = ZnSimd::Native::DigitsEndingAt(Block + End, DigitCount, FractionDigits, Points != 0);
	}
	else
	{
		// Near the start of the text the bytes before the number may not be there to load.
		const char* Digits = Block + First;
		if (IntegerDigits > 8)
		{
			return false;
		}
		Mantissa = DigitsValue(LoadEightBytes(Digits), IntegerDigits);
		Mantissa =
			FractionDigits > 0 ? AppendFractionDigits(Mantissa, Digits + IntegerDigits + 1, FractionDigits) : Mantissa;
	}
	return ComposeNumber(Negative != 0, Mantissa, -FractionDigits, OutNumber);
}

// A tightly written array into Decimals (see ReadTightNumbers). Numbers are found from the
// separators of a whole block at once and checked a block at a time, so where each one starts is
// known without reading the one before, and the numbers of a block are read independently.
FORCEINLINE const char* ReadTightDecimals(const char* Text, FPlainDecimal* Decimals, int32 Limit, int32& OutCount)
{
	if (Text[0] != '[')
	{
		return nullptr;
	}
	if (Text[1] == ']')
	{
		OutCount = 0;
		return Text + 2;
	}
	const char* Block = Text + 1;
	int32 Count = 0;
	for (;;)
	{
		FTightBlock Masks;
		ClassifyTightBlock(Block, Masks);
		uint64 Separators = Masks.Separators;
		// A number as long as a block is no plain number.
		if (Separators == 0)
		{
			return nullptr;
		}
		// Blocks with exponents (which producers print for small weights) or anything odd are read
		// number by number by the general reader, which must end at the separator.
		const bool bPlain = IsPlainTightBlock(Masks);
		int32 Begin = 0;
		do
		{
			const int32 End = int32(FMath::CountTrailingZeros64(Separators));
			if (Count == Limit)
			{
				return nullptr;
			}
			if (!(bPlain && ParseTightSpan(Block, Masks, Begin, End, Text, Decimals[Count])) &&
				ParsePlainNumberByWords(Block + Begin, Decimals[Count]) != Block + End)
			{
				return nullptr;
			}
			++Count;
			if (Block[End] == ']')
			{
				OutCount = Count;
				return Block + End + 1;
			}
			Begin = End + 1;
			Separators &= Separators - 1;
		} while (Separators != 0);
		Block += Begin;
	}
}
} // namespace

const char* ReadTightNumbers(const char* Text, double* OutNumbers, int32 Capacity, int32& OutCount)
{
	FPlainDecimal Decimals[MaxPlainNumbers];
	int32 Count = 0;
	const char* End = ReadTightDecimals(Text, Decimals, Capacity < MaxPlainNumbers ? Capacity : MaxPlainNumbers, Count);
	if (End != nullptr)
	{
		ToDoubles(Decimals, Count, OutNumbers);
		OutCount = Count;
	}
	return End;
}

} // namespace ZnJson
