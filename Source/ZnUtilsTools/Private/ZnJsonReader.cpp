#include "ZnJsonReader.h"

#include "ZnPaddedBuffer.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

// The parser's buffers and the UTF-8 copy of the text, kept per thread so that a stream of
// small texts (one per animation frame) does not allocate for each of them.
struct FZnJsonScratch
{
	simdjson::dom::parser Parser;
	FZnPaddedBuffer Text;
	bool bBusy = false;

	char* Reserve(size_t Length, size_t Keep = 0) { return Text.Reserve(Length, Keep); }

	// Converts engine text into the buffer and returns its UTF-8 length. The buffer is sized for
	// ASCII first (one byte per unit); only text that turns out not to be ASCII is measured and
	// given more room, so the copy never takes more memory than it needs.
	size_t ConvertText(const TCHAR* Chars, size_t Length);

	// A text this large is rare; its buffers are not worth keeping for the rest of the thread's life.
	void ReleaseIfLarge()
	{
		constexpr size_t KeepLimit = size_t(64) << 20;
		if (Text.Capacity > KeepLimit || Parser.capacity() > KeepLimit)
		{
			Parser = simdjson::dom::parser();
			Text.Release();
		}
	}
};

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

// Copies the leading ASCII units; returns how many there were.
size_t ConvertAsciiPrefix(const TCHAR* In, size_t Length, char* Out)
{
	size_t Index = 0;
#if defined(__SSE2__) || defined(_M_X64)
	while (Index + 16 <= Length)
	{
		const __m128i Low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(In + Index));
		const __m128i High = _mm_loadu_si128(reinterpret_cast<const __m128i*>(In + Index + 8));
		const __m128i Wide = _mm_and_si128(_mm_or_si128(Low, High), _mm_set1_epi16(int16(0xFF80)));
		if (_mm_movemask_epi8(_mm_cmpeq_epi8(Wide, _mm_setzero_si128())) != 0xFFFF)
		{
			break;
		}
		_mm_storeu_si128(reinterpret_cast<__m128i*>(Out + Index), _mm_packus_epi16(Low, High));
		Index += 16;
	}
#endif
	while (Index < Length && In[Index] < 0x80)
	{
		Out[Index] = char(In[Index]);
		++Index;
	}
	return Index;
}

// Rounds half away from zero, the engine's rule for reading a fractional number as an integer.
inline double RoundHalfFromZero(double Value)
{
	return Value < 0.0 ? -std::floor(-Value + 0.5) : std::floor(Value + 0.5);
}

// Reads a number into an integer type when it fits: integers exactly, fractions rounded.
template <typename IntType>
bool ReadInteger(const simdjson::dom::element& Element, IntType& OutNumber)
{
	constexpr double MinValue = double(std::numeric_limits<IntType>::min());
	// 2^bits (or 2^(bits-1) when signed), exactly: max() itself rounds up to it for 64-bit types.
	constexpr double Limit = double(std::numeric_limits<IntType>::max() / 2 + 1) * 2.0;
	switch (Element.type())
	{
		case simdjson::dom::element_type::INT64:
		{
			const int64 Value = Element.get_int64().value_unsafe();
			if (std::numeric_limits<IntType>::is_signed)
			{
				if (Value < int64(std::numeric_limits<IntType>::min()) ||
					Value > int64(std::numeric_limits<IntType>::max()))
				{
					return false;
				}
			}
			else if (Value < 0 || uint64(Value) > uint64(std::numeric_limits<IntType>::max()))
			{
				return false;
			}
			OutNumber = IntType(Value);
			return true;
		}
		case simdjson::dom::element_type::UINT64:
		{
			// Only values above the signed 64-bit range are stored unsigned.
			const uint64 Value = Element.get_uint64().value_unsafe();
			if (Value > uint64(std::numeric_limits<IntType>::max()))
			{
				return false;
			}
			OutNumber = IntType(Value);
			return true;
		}
		case simdjson::dom::element_type::DOUBLE:
		{
			const double Rounded = RoundHalfFromZero(Element.get_double().value_unsafe());
			// NaN fails both comparisons; the limits keep the cast defined.
			if (!(Rounded >= MinValue && Rounded < Limit))
			{
				return false;
			}
			OutNumber = IntType(Rounded);
			return true;
		}
		default:
			return false;
	}
}
} // namespace

namespace ZnJson
{
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

bool SkipValue(simdjson::ondemand::value& Value, int32 Depth)
{
	using namespace simdjson;
	ondemand::json_type Type;
	if (Value.type().get(Type) != SUCCESS)
	{
		return false;
	}
	switch (Type)
	{
		case ondemand::json_type::array:
		{
			ondemand::array Array;
			if (Depth >= MaxDepth || Value.get_array().get(Array) != SUCCESS)
			{
				return false;
			}
			for (simdjson_result<ondemand::value> Element : Array)
			{
				ondemand::value Child;
				if (Element.get(Child) != SUCCESS || !SkipValue(Child, Depth + 1))
				{
					return false;
				}
			}
			return true;
		}
		case ondemand::json_type::object:
		{
			ondemand::object Object;
			if (Depth >= MaxDepth || Value.get_object().get(Object) != SUCCESS)
			{
				return false;
			}
			for (simdjson_result<ondemand::field> FieldResult : Object)
			{
				ondemand::field Field;
				std::string_view Key;
				if (std::move(FieldResult).get(Field) != SUCCESS || !ReadKey(Field, Key) ||
					!SkipValue(Field.value(), Depth + 1))
				{
					return false;
				}
			}
			return true;
		}
		case ondemand::json_type::number:
		{
			ondemand::number Number;
			return Value.get_number().get(Number) == SUCCESS;
		}
		case ondemand::json_type::string:
		{
			std::string_view String;
			return Value.get_string().get(String) == SUCCESS;
		}
		case ondemand::json_type::boolean:
		{
			bool bValue = false;
			return Value.get_bool().get(bValue) == SUCCESS;
		}
		case ondemand::json_type::null:
		{
			bool bNull = false;
			return Value.is_null().get(bNull) == SUCCESS && bNull;
		}
	}
	return false;
}

bool CheckLargeNumber(simdjson::ondemand::value& Value)
{
	simdjson::ondemand::number Number;
	return Value.get_number().get(Number) == simdjson::SUCCESS;
}

namespace
{
inline bool IsDigit(char Char)
{
	return Char >= '0' && Char <= '9';
}

inline const char* SkipSpace(const char* Text)
{
	while (*Text == ' ' || *Text == '\n' || *Text == '\r' || *Text == '\t')
	{
		++Text;
	}
	return Text;
}

// Powers of ten a double holds exactly.
constexpr double ExactPowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14,
	1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

constexpr uint64 IntegerPowersOfTen[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

// Eight bytes of text as one word, the first byte lowest (the engine's platforms are little-endian).
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
// correctly rounded quotient in each lane, at half the cost.
inline void ToDoubles(const FPlainDecimal* Decimals, int32 Count, double* OutNumbers)
{
	int32 Index = 0;
#if defined(__SSE2__) || defined(_M_X64)
	for (; Index + 1 < Count; Index += 2)
	{
		const FPlainDecimal& First = Decimals[Index];
		const FPlainDecimal& Second = Decimals[Index + 1];
		if (First.Exponent <= 0 && Second.Exponent <= 0)
		{
			const __m128d Mantissas = _mm_set_pd(double(int64(Second.Mantissa)), double(int64(First.Mantissa)));
			const __m128d Powers = _mm_set_pd(ExactPowersOfTen[-Second.Exponent], ExactPowersOfTen[-First.Exponent]);
			const __m128d Signs = _mm_set_pd(Second.bNegative ? -0.0 : 0.0, First.bNegative ? -0.0 : 0.0);
			_mm_storeu_pd(OutNumbers + Index, _mm_xor_pd(_mm_div_pd(Mantissas, Powers), Signs));
		}
		else
		{
			OutNumbers[Index] = ToDouble(First);
			OutNumbers[Index + 1] = ToDouble(Second);
		}
	}
#endif
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

// Sixteen zero bytes, then sixteen 0xFF bytes: loading sixteen of them from offset N gives a mask
// of the last N lanes.
alignas(16) constexpr uint8 LastLanes[32] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF,
	0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

FORCEINLINE __m128i LastLanesMask(int32 Count)
{
	return _mm_loadu_si128(reinterpret_cast<const __m128i*>(LastLanes + Count));
}

// The value of up to sixteen digits that end at End (the byte before it is the last digit), with
// a decimal point FractionDigits before the end when bPoint: sixteen bytes loaded to end with the
// number put its last digit in the last lane; the integer digits come from a load one byte
// earlier, which closes the point's gap; then pairs, fours and eights are combined by
// multiply-adds. Reads the 17 bytes before End.
FORCEINLINE uint64 DigitsEndingAt(const char* End, int32 DigitCount, int32 FractionDigits, bool bPoint)
{
	const __m128i Zero = _mm_set1_epi8('0');
	const __m128i Fraction = _mm_loadu_si128(reinterpret_cast<const __m128i*>(End - 16));
	const __m128i Integer = _mm_loadu_si128(reinterpret_cast<const __m128i*>(End - 17));
	const __m128i FromFraction = LastLanesMask(bPoint ? FractionDigits : 16);
	const __m128i Joined = _mm_or_si128(_mm_and_si128(FromFraction, Fraction), _mm_andnot_si128(FromFraction, Integer));
	const __m128i Digits = _mm_and_si128(_mm_sub_epi8(Joined, Zero), LastLanesMask(DigitCount));
	// Lane 0 holds the most significant digit.
	const __m128i Pairs =
		_mm_packs_epi32(_mm_madd_epi16(_mm_unpacklo_epi8(Digits, _mm_setzero_si128()), _mm_set1_epi32(0x0001000A)),
			_mm_madd_epi16(_mm_unpackhi_epi8(Digits, _mm_setzero_si128()), _mm_set1_epi32(0x0001000A)));
	const __m128i Fours = _mm_madd_epi16(Pairs, _mm_set1_epi32(0x00010064));
	const __m128i Eights = _mm_madd_epi16(_mm_packs_epi32(Fours, Fours), _mm_set1_epi32(0x00012710));
	const uint64 High = uint32(_mm_cvtsi128_si32(Eights));
	const uint64 Low = uint32(_mm_cvtsi128_si32(_mm_srli_si128(Eights, 4)));
	return High * 100000000 + Low;
}

#if defined(__SSE2__) || defined(_M_X64)
// The common shape, "12.345678", with the integer part and the fraction within the sixteen bytes
// from the number's first digit: one load finds where both end, so the next number's position is
// known early and the digits' values are worked out beside the next number's scan. Anything
// else goes the word-by-word way.
FORCEINLINE const char* ParsePlainNumber(const char* Text, const char* Earliest, FPlainDecimal& OutNumber)
{
	const char* Start = Text;
	const bool bNegative = *Text == '-';
	Text += bNegative;
	const __m128i Block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(Text));
	// Bytes at or above 0x80 compare as negative, so only '0' to '9' pass both tests.
	const uint32 DigitBits = uint32(_mm_movemask_epi8(
		_mm_and_si128(_mm_cmpgt_epi8(Block, _mm_set1_epi8('0' - 1)), _mm_cmplt_epi8(Block, _mm_set1_epi8('9' + 1)))));
	const uint32 Others = ~DigitBits & 0xFFFFu;
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
		Mantissa = DigitsEndingAt(End, IntegerDigits + FractionDigits, FractionDigits, FractionDigits > 0);
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
	uint64 Digits = 0;
	uint64 Zeros = 0;
	uint64 Points = 0;
	uint64 Minus = 0;
	uint64 Separators = 0;
	uint64 Closes = 0;
	for (int32 Part = 0; Part < 4; ++Part)
	{
		const __m128i Bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(Block + 16 * Part));
		// Bytes at or above 0x80 compare as negative, so only '0' to '9' pass both tests.
		const __m128i DigitBytes =
			_mm_and_si128(_mm_cmpgt_epi8(Bytes, _mm_set1_epi8('0' - 1)), _mm_cmplt_epi8(Bytes, _mm_set1_epi8('9' + 1)));
		const __m128i CloseBytes = _mm_cmpeq_epi8(Bytes, _mm_set1_epi8(']'));
		const __m128i Ends = _mm_or_si128(_mm_cmpeq_epi8(Bytes, _mm_set1_epi8(',')), CloseBytes);
		const int32 Shift = 16 * Part;
		Digits |= uint64(uint32(_mm_movemask_epi8(DigitBytes))) << Shift;
		Zeros |= uint64(uint32(_mm_movemask_epi8(_mm_cmpeq_epi8(Bytes, _mm_set1_epi8('0'))))) << Shift;
		Points |= uint64(uint32(_mm_movemask_epi8(_mm_cmpeq_epi8(Bytes, _mm_set1_epi8('.'))))) << Shift;
		Minus |= uint64(uint32(_mm_movemask_epi8(_mm_cmpeq_epi8(Bytes, _mm_set1_epi8('-'))))) << Shift;
		Separators |= uint64(uint32(_mm_movemask_epi8(Ends))) << Shift;
		Closes |= uint64(uint32(_mm_movemask_epi8(CloseBytes))) << Shift;
	}
	Out = FTightBlock{Digits, Zeros, Points, Minus, Separators, Closes};
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
		Mantissa = DigitsEndingAt(Block + End, DigitCount, FractionDigits, Points != 0);
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
#else
FORCEINLINE const char* ParsePlainNumber(const char* Text, const char*, FPlainDecimal& OutNumber)
{
	return ParsePlainNumberByWords(Text, OutNumber);
}
#endif

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
	Text = SkipSpace(Text + 1);
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
		Text = SkipSpace(Text);
		if (*Text == Close)
		{
			return Count;
		}
		if (*Text != ',')
		{
			return -1;
		}
		Text = SkipSpace(Text + 1);
	}
	return -1;
}
} // namespace

const char* ReadTightNumbers(const char* Text, double* OutNumbers, int32 Capacity, int32& OutCount)
{
#if defined(__SSE2__) || defined(_M_X64)
	FPlainDecimal Decimals[MaxPlainNumbers];
	int32 Count = 0;
	const char* End = ReadTightDecimals(Text, Decimals, Capacity < MaxPlainNumbers ? Capacity : MaxPlainNumbers, Count);
	if (End != nullptr)
	{
		ToDoubles(Decimals, Count, OutNumbers);
		OutCount = Count;
	}
	return End;
#else
	return nullptr;
#endif
}

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
			Text = SkipSpace(Text + 1);
			return *Text == ':' ? ParsePlainNumber(SkipSpace(Text + 1), Token, Decimals[Index]) : nullptr;
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

bool ReadLongNumber(std::string_view Token, double& OutNumber)
{
	// The token runs on to the next structural byte: trailing whitespace is not the number's.
	size_t Length = Token.size();
	while (Length > 0 &&
		(Token[Length - 1] == ' ' || Token[Length - 1] == '\n' || Token[Length - 1] == '\r' ||
			Token[Length - 1] == '\t'))
	{
		--Length;
	}
	const char* Begin = Token.data();
	const char* End = Begin + Length;
	const std::from_chars_result Result = std::from_chars(Begin, End, OutNumber);
	if (Result.ec == std::errc())
	{
		return Result.ptr == End;
	}
	if (Result.ec != std::errc::result_out_of_range)
	{
		return false;
	}
	// Out of range: too small (reads as zero, as the full parser reads it) or too large (refused).
	// About the power of ten of the digits tells which, with the exponent added.
	int64 Magnitude = 0;
	bool bNonZero = false;
	const char* Cursor = Begin + (*Begin == '-' ? 1 : 0);
	for (; Cursor < End && *Cursor >= '0' && *Cursor <= '9'; ++Cursor)
	{
		bNonZero |= *Cursor != '0';
		Magnitude += bNonZero ? 1 : 0;
	}
	if (Cursor < End && *Cursor == '.')
	{
		for (++Cursor; Cursor < End && *Cursor >= '0' && *Cursor <= '9'; ++Cursor)
		{
			Magnitude -= (!bNonZero && *Cursor == '0') ? 1 : 0;
			bNonZero |= *Cursor != '0';
		}
	}
	int64 Exponent = 0;
	if (Cursor < End)
	{
		++Cursor;
		const bool bNegative = *Cursor == '-';
		Cursor += (*Cursor == '-' || *Cursor == '+') ? 1 : 0;
		for (; Cursor < End; ++Cursor)
		{
			Exponent = Exponent < 100000000 ? Exponent * 10 + (*Cursor - '0') : Exponent;
		}
		Exponent = bNegative ? -Exponent : Exponent;
	}
	if (Magnitude + Exponent > 0)
	{
		return false;
	}
	OutNumber = *Begin == '-' ? -0.0 : 0.0;
	return true;
}

bool IsJsonFraction(std::string_view Token)
{
	size_t Index = 0;
	const size_t Length = Token.size();
	auto Digits = [&]()
	{
		const size_t First = Index;
		while (Index < Length && Token[Index] >= '0' && Token[Index] <= '9')
		{
			++Index;
		}
		return Index - First;
	};
	Index += (Index < Length && Token[Index] == '-') ? 1 : 0;
	const size_t IntegerStart = Index;
	const size_t IntegerDigits = Digits();
	if (IntegerDigits == 0 || (IntegerDigits > 1 && Token[IntegerStart] == '0'))
	{
		return false;
	}
	bool bFraction = false;
	if (Index < Length && Token[Index] == '.')
	{
		++Index;
		if (Digits() == 0)
		{
			return false;
		}
		bFraction = true;
	}
	if (Index < Length && (Token[Index] == 'e' || Token[Index] == 'E'))
	{
		++Index;
		Index += (Index < Length && (Token[Index] == '+' || Token[Index] == '-')) ? 1 : 0;
		if (Digits() == 0)
		{
			return false;
		}
		bFraction = true;
	}
	while (
		Index < Length && (Token[Index] == ' ' || Token[Index] == '\n' || Token[Index] == '\r' || Token[Index] == '\t'))
	{
		++Index;
	}
	return bFraction && Index == Length;
}

bool IsAtEnd(simdjson::ondemand::document& Document)
{
	// Past the last token there is no location left to report.
	return Document.current_location().error() == simdjson::OUT_OF_BOUNDS;
}
} // namespace ZnJson

EZnJsonType FZnJsonValue::GetType() const
{
	if (!bValid)
	{
		return EZnJsonType::None;
	}
	switch (Element.type())
	{
		case simdjson::dom::element_type::ARRAY:
			return EZnJsonType::Array;
		case simdjson::dom::element_type::OBJECT:
			return EZnJsonType::Object;
		case simdjson::dom::element_type::INT64:
		case simdjson::dom::element_type::UINT64:
		case simdjson::dom::element_type::DOUBLE:
			return EZnJsonType::Number;
		case simdjson::dom::element_type::STRING:
			return EZnJsonType::String;
		case simdjson::dom::element_type::BOOL:
			return EZnJsonType::Boolean;
		case simdjson::dom::element_type::NULL_VALUE:
			return EZnJsonType::Null;
	}
	return EZnJsonType::None;
}

bool FZnJsonValue::TryGetNumber(float& OutNumber) const
{
	double Number = 0.0;
	if (!TryGetNumber(Number))
	{
		return false;
	}
	OutNumber = float(Number);
	return true;
}

bool FZnJsonValue::TryGetNumber(int32& OutNumber) const
{
	return bValid && ReadInteger(Element, OutNumber);
}

bool FZnJsonValue::TryGetNumber(uint32& OutNumber) const
{
	return bValid && ReadInteger(Element, OutNumber);
}

bool FZnJsonValue::TryGetNumber(int64& OutNumber) const
{
	return bValid && ReadInteger(Element, OutNumber);
}

bool FZnJsonValue::TryGetNumber(uint64& OutNumber) const
{
	return bValid && ReadInteger(Element, OutNumber);
}

FString FZnJsonValue::AsString() const
{
	FString Result;
	TryGetString(Result);
	return Result;
}

bool FZnJsonValue::TryGetString(FString& OutString) const
{
	std::string_view View;
	if (!TryGetUtf8(View))
	{
		return false;
	}
	OutString.Empty();
	ZnJson::AppendUtf8(OutString, View);
	return true;
}

FZnJsonValue FZnJsonArray::GetValue(int32 Index) const
{
	if (!bValid || Index < 0)
	{
		return FZnJsonValue();
	}
	simdjson::dom::element Element;
	if (Array.at(size_t(Index)).get(Element) != simdjson::SUCCESS)
	{
		return FZnJsonValue();
	}
	return FZnJsonValue(Element);
}

size_t FZnJsonScratch::ConvertText(const TCHAR* Chars, size_t Length)
{
	const size_t Ascii = ConvertAsciiPrefix(Chars, Length, Reserve(Length));
	if (Ascii == Length)
	{
		return Length;
	}
	size_t Bound = Ascii;
	for (size_t Index = Ascii; Index < Length; ++Index)
	{
		const TCHAR Unit = Chars[Index];
		Bound += Unit < 0x80 ? 1 : (Unit < 0x800 ? 2 : 3);
	}
	char* Out = Reserve(Bound, Ascii);
	return size_t(ZnJson::ConvertUtf16(Chars + Ascii, Length - Ascii, Out + Ascii) - Out);
}

FZnJsonReader::FZnJsonReader() = default;

FZnJsonReader::~FZnJsonReader() = default;

bool FZnJsonReader::LoadText(const FString& Text, size_t& OutLength)
{
	Root = FZnJsonValue();
	const TCHAR* Chars = *Text;
	size_t Length = size_t(Text.Len());
	ZnJson::SkipByteOrderMark(Chars, Length);
	if (Length == 0)
	{
		return false;
	}
	OutLength = Scratch->ConvertText(Chars, Length);
	return true;
}

bool FZnJsonReader::LoadUtf8(const char* Utf8, int64 Length, size_t& OutLength)
{
	Root = FZnJsonValue();
	if (Utf8 == nullptr || Length <= 0)
	{
		return false;
	}
	size_t Bytes = size_t(Length);
	ZnJson::SkipByteOrderMark(Utf8, Bytes);
	char* Buffer = Scratch->Reserve(Bytes);
	std::memcpy(Buffer, Utf8, Bytes);
	OutLength = Bytes;
	return true;
}

bool FZnJsonReader::Parse(const FString& Text)
{
	size_t Length = 0;
	return LoadText(Text, Length) && ParseBuffer(Length);
}

bool FZnJsonReader::ParseUtf8(const char* Utf8, int64 Length)
{
	size_t Utf8Length = 0;
	return LoadUtf8(Utf8, Length, Utf8Length) && ParseBuffer(Utf8Length);
}

bool FZnJsonReader::ParseBuffer(size_t Length)
{
	// Stale bytes past the end could change how a malformed text is read.
	std::memset(Scratch->Text.Bytes.get() + Length, 0, simdjson::SIMDJSON_PADDING);
	simdjson::dom::element Element;
	// The parser rejects trailing content after the root value, and validates the whole text.
	if (Scratch->Parser.parse(Scratch->Text.Bytes.get(), Length, false).get(Element) != simdjson::SUCCESS)
	{
		return false;
	}
	Root = FZnJsonValue(Element);
	return true;
}

bool FZnJsonReader::ParseObject(const FString& Text, FZnJsonObject& OutRoot)
{
	return Parse(Text) && Root.TryGetObject(OutRoot);
}

bool FZnJsonReader::ParseArray(const FString& Text, FZnJsonArray& OutRoot)
{
	return Parse(Text) && Root.TryGetArray(OutRoot);
}
