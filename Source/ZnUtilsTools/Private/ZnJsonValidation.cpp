// Reading past values while checking them as a whole parse would, and the checks of numbers that
// simdjson's single-pass reader takes differently from its whole parse.
#include "ZnJsonReader.h"

#include <cmath>

#if defined(ZN_FAST_FLOAT_MISSING) && ZN_FAST_FLOAT_MISSING
#error \
	"fast_float is missing: place its fast_float.h as Plugins/Zenvora/Source/ThirdParty/fast_float/include/fast_float/fast_float.h (or set ZN_FAST_FLOAT_DIR) and build again."
#endif
THIRD_PARTY_INCLUDES_START
#include <fast_float/fast_float.h>
THIRD_PARTY_INCLUDES_END

namespace ZnJson
{
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

bool ReadLongNumber(std::string_view Token, double& OutNumber)
{
	// The token runs on to the next structural byte: trailing whitespace is not the number's.
	size_t Length = Token.size();
	while (Length > 0 && IsJsonSpace(Token[Length - 1]))
	{
		--Length;
	}
	const char* const End = Token.data() + Length;
	// Correctly rounded, as a whole parse reads it; a value too small for a double reads as zero
	// with its sign, one too large as infinity, which a whole parse refuses.
	double Number = 0.0;
	const fast_float::from_chars_result Result = fast_float::from_chars(Token.data(), End, Number);
	if (Result.ec != std::errc() || Result.ptr != End || std::isinf(Number))
	{
		return false;
	}
	OutNumber = Number;
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
	while (Index < Length && IsJsonSpace(Token[Index]))
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
