// Read-only JSON access for the module's decoders and response parsers.
//
// A whole text is parsed at once and validated completely, so "does not parse" means the same
// for every caller: malformed syntax anywhere, invalid escapes, trailing content after the root
// value, numbers outside the range of a double (1e400) or integers beyond 64 bits, and literals
// that are not JSON (NaN, Infinity) all fail the parse. A leading byte-order mark is skipped.
//
// On top of the parse the accessors behave like the engine's JSON objects, so code written
// against those reads the same way here:
// - field names are matched without regard to ASCII case, and when a name occurs twice the
//   later member wins;
// - a missing or mistyped number reads 0, string "", array empty, object invalid;
// - the TryGet... forms return false when the member is missing or of another kind.
// Unlike the engine, values are never converted between kinds: the string "12" is not the
// number 12, and true is not 1 (a number accessor on them reads 0 / returns false).
//
// Lifetime: every value, array and object is a view into the reader that produced it and is
// valid until that reader is destroyed or parses again. Nothing here allocates per value; the
// UTF-8 copy of the text and the parser's buffers are reused between parses on the same thread.
// A reader is not thread-safe; readers on different threads are independent.
#pragma once

#include "CoreMinimal.h"
#include "ZnThreadScratch.h"

#include <string_view>

#include "ZnSimdjson.h"

enum class EZnJsonType : uint8
{
	None, // missing member or invalid view
	Null,
	Boolean,
	Number,
	String,
	Array,
	Object
};

class FZnJsonArray;
class FZnJsonObject;

namespace ZnJson
{
// ASCII case-insensitive comparison, the way the engine compares field names.
inline bool EqualsIgnoreCase(std::string_view A, std::string_view B)
{
	if (A.size() != B.size())
	{
		return false;
	}
	for (size_t Index = 0; Index < A.size(); ++Index)
	{
		char CharA = A[Index];
		char CharB = B[Index];
		if (CharA != CharB)
		{
			CharA = (CharA >= 'A' && CharA <= 'Z') ? char(CharA + 32) : CharA;
			CharB = (CharB >= 'A' && CharB <= 'Z') ? char(CharB + 32) : CharB;
			if (CharA != CharB)
			{
				return false;
			}
		}
	}
	return true;
}

// Appends UTF-8 text to an engine string as UTF-16. Invalid sequences become U+FFFD.
void AppendUtf8(FString& Out, std::string_view Utf8);

// An engine string from UTF-8 text.
FString ToString(std::string_view Utf8);

// Copies the leading ASCII units of UTF-16 text as bytes; returns how many there were.
size_t ConvertAsciiPrefix(const TCHAR* In, size_t Length, char* Out);

// UTF-16 to UTF-8; returns the end of what was written. Out must hold 3 bytes per input unit.
// Lone surrogates become U+FFFD.
char* ConvertUtf16(const TCHAR* In, size_t Length, char* Out);

// For single-pass reading (FZnJsonWindowReader). Containers nested deeper than this fail, as they
// do in a whole parse.
constexpr int32 MaxDepth = 1024;

// Reads past one value while checking it as a whole parse would (escapes, number ranges,
// literals, nesting). Depth is the nesting level of the value itself (the root is 1).
bool SkipValue(simdjson::ondemand::value& Value, int32 Depth);

// Checks an integer read as a double whose magnitude says it may lie past 64 bits.
bool CheckLargeNumber(simdjson::ondemand::value& Value);

// A value read as a number: a number gives its value, any other kind is checked and reads 0.
// False when the text is malformed.
// Reads a number's text exactly; for numbers of more than 19 digits (see ReadNumber). False when
// it is too large for a double.
bool ReadLongNumber(std::string_view Token, double& OutNumber);

// A JSON number with a fraction or an exponent, written exactly as JSON allows (trailing
// whitespace aside).
bool IsJsonFraction(std::string_view Token);

inline bool ReadNumber(simdjson::ondemand::value& Value, int32 Depth, double& OutNumber)
{
	const std::string_view Token = Value.raw_json_token();
	if (Value.get_double().get(OutNumber) == simdjson::SUCCESS)
	{
		// This simdjson's single-pass number reader misreads numbers of more than 19 significant
		// digits (-0.16242501000000000445023471 reads as -1.37e-07); a token that long, which no
		// producer writes but a network may deliver, is read again exactly.
		if (Token.size() > 20 && !ReadLongNumber(Token, OutNumber))
		{
			return false;
		}
		// Integers past 64 bits still read as doubles here; a whole parse rejects them, so a
		// magnitude in that range is checked once more the strict way.
		return (OutNumber < 9223372036854775808.0 && OutNumber >= -9223372036854775808.0) || CheckLargeNumber(Value);
	}
	// The same reader refuses a long exponent written with leading zeros ("1e000000000000000000001"),
	// which a whole parse reads.
	if (Token.size() > 20 && IsJsonFraction(Token) && ReadLongNumber(Token, OutNumber))
	{
		return true;
	}
	OutNumber = 0.0;
	return SkipValue(Value, Depth);
}

// A member name, unescaped and checked. Plain names (the usual case) are read in place without
// copying; only names with escapes go through the unescaping path.
inline bool ReadKey(simdjson::ondemand::field& Field, std::string_view& OutKey)
{
	const char* Raw = Field.key().raw();
	size_t Length = 0;
	for (;; ++Length)
	{
		const unsigned char Char = static_cast<unsigned char>(Raw[Length]);
		if (Char == '"')
		{
			OutKey = std::string_view(Raw, Length);
			return true;
		}
		if (Char == '\\' || Char < 0x20)
		{
			return Field.unescaped_key().get(OutKey) == simdjson::SUCCESS;
		}
	}
}

// A byte-order mark belongs to the file, not to the JSON text: these step over a leading one, in
// engine text (UTF-16 units) or in UTF-8 bytes.
inline void SkipByteOrderMark(const TCHAR*& Chars, size_t& Units)
{
	if (Units > 0 && Chars[0] == TCHAR(0xFEFF))
	{
		++Chars;
		--Units;
	}
}

inline void SkipByteOrderMark(const char*& Bytes, size_t& Length)
{
	if (Length >= 3 && Bytes[0] == '\xEF' && Bytes[1] == '\xBB' && Bytes[2] == '\xBF')
	{
		Bytes += 3;
		Length -= 3;
	}
}

// JSON's whitespace: space, line feed, carriage return and tab, nothing else.
inline bool IsJsonSpace(char Char)
{
	return Char == ' ' || Char == '\n' || Char == '\r' || Char == '\t';
}

// The first byte from Text on that is not JSON whitespace, or End.
inline const char* SkipJsonSpace(const char* Text, const char* End)
{
	while (Text != End && IsJsonSpace(*Text))
	{
		++Text;
	}
	return Text;
}

// True when nothing but whitespace follows the root value just read.
bool IsAtEnd(simdjson::ondemand::document& Document);

// The bulk of a clip is flat arrays of numbers and small objects of numbers. These two read such a
// value straight from the text when it is written plainly (numbers of at most 19 digits whose
// value a double holds exactly or rounds once, i.e. at most 2^53 with a power of ten up to 22;
// member names without escapes), several times faster than value by value. For anything else,
// or more than Capacity entries, they return -1 having stored nothing useful, and the caller reads
// the value the ordinary way, which also checks it. Either way the value is left unread for the
// iterator to step over, so a caller that uses the result must not read the value again.
// At most MaxPlainNumbers numbers and MaxPlainMembers members are read plainly, whatever the capacity.
constexpr int32 MaxPlainNumbers = 64;
constexpr int32 MaxPlainMembers = 8;
int32 ReadPlainNumbers(simdjson::ondemand::value& Value, double* OutNumbers, int32 Capacity);

// A tightly written array of plain numbers at Text, as producers write frames: "[1.5,-0.25,0]",
// no whitespace, no exponents, no more than Capacity (and MaxPlainNumbers) numbers. Stores them
// in OutNumbers and OutCount and returns the first byte past the closing bracket; returns nullptr
// for anything else, which decides nothing about the text (the caller reads it the general way).
// Reads up to 64 bytes past any byte of the array it reaches: the padding parser buffers have.
const char* ReadTightNumbers(const char* Text, double* OutNumbers, int32 Capacity, int32& OutCount);

// One member read by ReadPlainNumberMembers: the name's bytes (in the text) and the number.
// Plain data without initialisers, so an array of them costs nothing to declare.
struct FPlainMember
{
	const char* Name;
	int32 NameLength;
	double Number;

	std::string_view GetName() const { return std::string_view(Name, size_t(NameLength)); }
};
int32 ReadPlainNumberMembers(simdjson::ondemand::value& Value, FPlainMember* OutMembers, int32 Capacity);

// A small object of plain numbers written exactly as producers write rotations and positions:
// {"x":0.5,"y":-2} with the one-letter member names of Letters (at most four) in that order and
// no whitespace. Stores the numbers in that order and returns true; false for anything else,
// which decides nothing about the value (the caller reads it the general way). Cheaper than
// ReadPlainNumberMembers by the names it need not scan or match.
bool ReadTightLetterMembers(simdjson::ondemand::value& Value, const char* Letters, double* OutNumbers);
} // namespace ZnJson

// One JSON value, or nothing (a missing member). Cheap to copy.
class FZnJsonValue
{
public:
	FZnJsonValue() = default;
	explicit FZnJsonValue(simdjson::dom::element InElement)
		: Element(InElement)
		, bValid(true)
	{
	}

	bool IsValid() const { return bValid; }
	EZnJsonType GetType() const;
	bool IsNull() const { return bValid && Element.is_null(); }
	bool IsNumber() const { return bValid && Element.is_number(); }
	bool IsString() const { return bValid && Element.is_string(); }
	bool IsBool() const { return bValid && Element.is_bool(); }
	bool IsArray() const { return bValid && Element.is_array(); }
	bool IsObject() const { return bValid && Element.is_object(); }

	// The number as a double; 0 when this is not a number.
	double AsNumber() const
	{
		double Number = 0.0;
		return TryGetNumber(Number) ? Number : 0.0;
	}

	// Numbers only. The integer forms accept a value inside the target's range and round a
	// fraction half away from zero; integers written without a fraction are taken exactly.
	bool TryGetNumber(double& OutNumber) const
	{
		return bValid && Element.get_double().get(OutNumber) == simdjson::SUCCESS;
	}
	bool TryGetNumber(float& OutNumber) const;
	bool TryGetNumber(int32& OutNumber) const;
	bool TryGetNumber(uint32& OutNumber) const;
	bool TryGetNumber(int64& OutNumber) const;
	bool TryGetNumber(uint64& OutNumber) const;

	// The string as an engine string; "" when this is not a string.
	FString AsString() const;
	bool TryGetString(FString& OutString) const;

	// The string's UTF-8 bytes without copying (valid as long as the reader); empty when not a string.
	std::string_view AsUtf8() const
	{
		std::string_view View;
		return TryGetUtf8(View) ? View : std::string_view();
	}
	bool TryGetUtf8(std::string_view& OutView) const
	{
		return bValid && Element.get_string().get(OutView) == simdjson::SUCCESS;
	}

	// The boolean; false when this is not a boolean.
	bool AsBool() const
	{
		bool bValue = false;
		return TryGetBool(bValue) && bValue;
	}
	bool TryGetBool(bool& bOutValue) const { return bValid && Element.get_bool().get(bOutValue) == simdjson::SUCCESS; }

	// Empty array / invalid object when this is of another kind.
	FZnJsonArray AsArray() const;
	FZnJsonObject AsObject() const;
	bool TryGetArray(FZnJsonArray& OutArray) const;
	bool TryGetObject(FZnJsonObject& OutObject) const;

	const simdjson::dom::element& GetElement() const { return Element; }

private:
	simdjson::dom::element Element;
	bool bValid = false;
};

// A JSON array, or an empty one standing for a missing or mistyped member.
class FZnJsonArray
{
public:
	class FIterator
	{
	public:
		FIterator() = default;
		explicit FIterator(simdjson::dom::array::iterator InIt)
			: It(InIt)
		{
		}
		FZnJsonValue operator*() const { return FZnJsonValue(*It); }
		FIterator& operator++()
		{
			++It;
			return *this;
		}
		bool operator!=(const FIterator& Other) const { return It != Other.It; }
		bool operator==(const FIterator& Other) const { return !(It != Other.It); }

	private:
		simdjson::dom::array::iterator It;
	};

	FZnJsonArray() = default;
	explicit FZnJsonArray(simdjson::dom::array InArray)
		: Array(InArray)
		, bValid(true)
	{
	}

	// False for the stand-in of a missing or mistyped member.
	bool IsValid() const { return bValid; }
	// Element count; constant time for any array the service sends (under 16 million elements).
	int32 Num() const { return bValid ? int32(Array.size()) : 0; }
	bool IsEmpty() const { return Num() == 0; }

	// Element by position, linear in Index (walk with begin/end instead in loops); invalid when out of range.
	FZnJsonValue GetValue(int32 Index) const;

	FIterator begin() const { return bValid ? FIterator(Array.begin()) : FIterator(); }
	FIterator end() const { return bValid ? FIterator(Array.end()) : FIterator(); }

private:
	simdjson::dom::array Array;
	bool bValid = false;
};

// One member of an object while iterating: the name as UTF-8 (unescaped) and the value.
struct FZnJsonField
{
	std::string_view Key;
	FZnJsonValue Value;
};

// A JSON object, or an invalid one standing for a missing or mistyped member (every lookup on
// it misses).
class FZnJsonObject
{
public:
	class FIterator
	{
	public:
		FIterator() = default;
		explicit FIterator(simdjson::dom::object::iterator InIt)
			: It(InIt)
		{
		}
		FZnJsonField operator*() const { return FZnJsonField{It.key(), FZnJsonValue(It.value())}; }
		FIterator& operator++()
		{
			++It;
			return *this;
		}
		bool operator!=(const FIterator& Other) const { return It != Other.It; }
		bool operator==(const FIterator& Other) const { return !(It != Other.It); }

	private:
		simdjson::dom::object::iterator It;
	};

	FZnJsonObject() = default;
	explicit FZnJsonObject(simdjson::dom::object InObject)
		: Object(InObject)
		, bValid(true)
	{
	}

	bool IsValid() const { return bValid; }
	// Member count, duplicates included.
	int32 Num() const { return bValid ? int32(Object.size()) : 0; }

	// The member (case-insensitive name, later duplicate wins); invalid when missing.
	FZnJsonValue GetField(std::string_view Name) const
	{
		FZnJsonValue Found;
		if (bValid)
		{
			for (simdjson::dom::key_value_pair Field : Object)
			{
				if (ZnJson::EqualsIgnoreCase(Field.key, Name))
				{
					Found = FZnJsonValue(Field.value);
				}
			}
		}
		return Found;
	}
	bool HasField(std::string_view Name) const { return GetField(Name).IsValid(); }
	// Present and of the given kind.
	bool HasTypedField(std::string_view Name, EZnJsonType Type) const { return GetField(Name).GetType() == Type; }

	// Missing or mistyped members read 0, "", false, an empty array or an invalid object.
	double GetNumberField(std::string_view Name) const { return GetField(Name).AsNumber(); }
	FString GetStringField(std::string_view Name) const { return GetField(Name).AsString(); }
	bool GetBoolField(std::string_view Name) const { return GetField(Name).AsBool(); }
	FZnJsonArray GetArrayField(std::string_view Name) const;
	FZnJsonObject GetObjectField(std::string_view Name) const;

	// False when the member is missing or of another kind; the output is then left alone.
	bool TryGetNumberField(std::string_view Name, double& OutNumber) const
	{
		return GetField(Name).TryGetNumber(OutNumber);
	}
	bool TryGetNumberField(std::string_view Name, float& OutNumber) const
	{
		return GetField(Name).TryGetNumber(OutNumber);
	}
	bool TryGetNumberField(std::string_view Name, int32& OutNumber) const
	{
		return GetField(Name).TryGetNumber(OutNumber);
	}
	bool TryGetNumberField(std::string_view Name, uint32& OutNumber) const
	{
		return GetField(Name).TryGetNumber(OutNumber);
	}
	bool TryGetNumberField(std::string_view Name, int64& OutNumber) const
	{
		return GetField(Name).TryGetNumber(OutNumber);
	}
	bool TryGetNumberField(std::string_view Name, uint64& OutNumber) const
	{
		return GetField(Name).TryGetNumber(OutNumber);
	}
	bool TryGetStringField(std::string_view Name, FString& OutString) const
	{
		return GetField(Name).TryGetString(OutString);
	}
	bool TryGetBoolField(std::string_view Name, bool& bOutValue) const { return GetField(Name).TryGetBool(bOutValue); }
	bool TryGetArrayField(std::string_view Name, FZnJsonArray& OutArray) const;
	bool TryGetObjectField(std::string_view Name, FZnJsonObject& OutObject) const;

	// Reads several number members in one pass over the object (the fast form for small records
	// such as {"x":..,"y":..,"z":..,"w":..}). Same rules as GetNumberField for each name.
	template <int32 N>
	void GetNumberFields(const std::string_view (&Names)[N], double (&OutNumbers)[N]) const
	{
		simdjson::dom::element Found[N];
		bool bFound[N] = {};
		if (bValid)
		{
			for (simdjson::dom::key_value_pair Field : Object)
			{
				for (int32 Index = 0; Index < N; ++Index)
				{
					if (ZnJson::EqualsIgnoreCase(Field.key, Names[Index]))
					{
						Found[Index] = Field.value;
						bFound[Index] = true;
					}
				}
			}
		}
		for (int32 Index = 0; Index < N; ++Index)
		{
			OutNumbers[Index] = bFound[Index] ? FZnJsonValue(Found[Index]).AsNumber() : 0.0;
		}
	}

	FIterator begin() const { return bValid ? FIterator(Object.begin()) : FIterator(); }
	FIterator end() const { return bValid ? FIterator(Object.end()) : FIterator(); }

private:
	simdjson::dom::object Object;
	bool bValid = false;
};

inline FZnJsonArray FZnJsonValue::AsArray() const
{
	FZnJsonArray Array;
	TryGetArray(Array);
	return Array;
}

inline FZnJsonObject FZnJsonValue::AsObject() const
{
	FZnJsonObject Object;
	TryGetObject(Object);
	return Object;
}

inline bool FZnJsonValue::TryGetArray(FZnJsonArray& OutArray) const
{
	simdjson::dom::array Array;
	if (bValid && Element.get_array().get(Array) == simdjson::SUCCESS)
	{
		OutArray = FZnJsonArray(Array);
		return true;
	}
	return false;
}

inline bool FZnJsonValue::TryGetObject(FZnJsonObject& OutObject) const
{
	simdjson::dom::object Object;
	if (bValid && Element.get_object().get(Object) == simdjson::SUCCESS)
	{
		OutObject = FZnJsonObject(Object);
		return true;
	}
	return false;
}

inline FZnJsonArray FZnJsonObject::GetArrayField(std::string_view Name) const
{
	return GetField(Name).AsArray();
}

inline FZnJsonObject FZnJsonObject::GetObjectField(std::string_view Name) const
{
	return GetField(Name).AsObject();
}

inline bool FZnJsonObject::TryGetArrayField(std::string_view Name, FZnJsonArray& OutArray) const
{
	return GetField(Name).TryGetArray(OutArray);
}

inline bool FZnJsonObject::TryGetObjectField(std::string_view Name, FZnJsonObject& OutObject) const
{
	return GetField(Name).TryGetObject(OutObject);
}

struct FZnJsonScratch;

// Parses one text and owns the result. Typical use:
//   FZnJsonReader Reader;
//   FZnJsonObject Root;
//   if (Reader.ParseObject(Text, Root)) { ... Root.GetStringField("url") ... }
class FZnJsonReader
{
public:
	FZnJsonReader();
	~FZnJsonReader();
	FZnJsonReader(const FZnJsonReader&) = delete;
	FZnJsonReader& operator=(const FZnJsonReader&) = delete;

	// Parses the whole text; false when it is empty (or only whitespace) or does not parse (see
	// the top of this file). Views from an earlier parse of this reader become invalid.
	bool Parse(const FString& Text);
	// The same over UTF-8 bytes (no terminator needed; the bytes are copied).
	bool ParseUtf8(const char* Utf8, int64 Length);

	// Parse, then require an object (or array) at the root.
	bool ParseObject(const FString& Text, FZnJsonObject& OutRoot);
	bool ParseArray(const FString& Text, FZnJsonArray& OutRoot);

	// The root of the last successful parse; invalid before one or after a failure.
	FZnJsonValue GetRoot() const { return Root; }

private:
	// Puts the text, without a byte-order mark, into the padded buffer as UTF-8; false when nothing is left.
	bool LoadText(const FString& Text, size_t& OutLength);
	bool LoadUtf8(const char* Utf8, int64 Length, size_t& OutLength);
	bool ParseBuffer(size_t Length);

	TZnThreadScratch<FZnJsonScratch> Scratch;
	FZnJsonValue Root;
};
