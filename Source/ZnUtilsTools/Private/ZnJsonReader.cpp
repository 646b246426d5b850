// The tree reader: a whole text parsed and validated at once, read through engine-like accessors.
#include "ZnJsonReader.h"

#include "ZnPaddedBuffer.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

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

	void ReleaseIfLarge()
	{
		if (Text.Capacity > ZnScratchKeepLimit || Parser.capacity() > ZnScratchKeepLimit)
		{
			Parser = simdjson::dom::parser();
			Text.Release();
		}
	}
};

namespace
{
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
	const size_t Ascii = ZnJson::ConvertAsciiPrefix(Chars, Length, Reserve(Length));
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
