// Reads a text through the window reader and puts the pieces back together, in a canonical form
// that a whole parse can be written in too: the check that windows change nothing, shared by the
// tests and the fuzz target.
#pragma once

#include "ZnJsonReader.h"
#include "ZnJsonWindowReader.h"

#include <cstdio>
#include <string>
#include <vector>

namespace ZnJsonWindowCheck
{
using namespace simdjson;

inline std::string NumberText(double Number)
{
	// The tree stores "-0" as the integer 0 while the iterator keeps its sign (as the engine's
	// reader does); that one known difference is not what this check is about.
	if (Number == 0.0)
	{
		return "0";
	}
	char Buffer[40];
	std::snprintf(Buffer, sizeof(Buffer), "%.17g", Number);
	return Buffer;
}

// A whole parse written out in one canonical form: every value, member names in order.
inline std::string Canonical(const FZnJsonValue& Value)
{
	switch (Value.GetType())
	{
		case EZnJsonType::Null:
			return "null";
		case EZnJsonType::Boolean:
			return Value.AsBool() ? "true" : "false";
		case EZnJsonType::Number:
			return NumberText(Value.AsNumber());
		case EZnJsonType::String:
			return "\"" + std::string(Value.AsUtf8()) + "\"";
		case EZnJsonType::Array:
		{
			std::string Out = "[";
			for (FZnJsonValue Element : Value.AsArray())
			{
				Out += Canonical(Element) + ",";
			}
			return Out + "]";
		}
		case EZnJsonType::Object:
		{
			std::string Out = "{";
			for (FZnJsonField Field : Value.AsObject())
			{
				Out += "\"" + std::string(Field.Key) + "\":" + Canonical(Field.Value) + ",";
			}
			return Out + "}";
		}
		default:
			return "?";
	}
}

// The same form from a window's iterator; false when the window does not read.
inline bool Canonical(ondemand::value Value, std::string& Out)
{
	ondemand::json_type Type;
	if (Value.type().get(Type) != SUCCESS)
	{
		return false;
	}
	switch (Type)
	{
		case ondemand::json_type::null:
		{
			bool bNull = false;
			Out += "null";
			return Value.is_null().get(bNull) == SUCCESS && bNull;
		}
		case ondemand::json_type::boolean:
		{
			bool bValue = false;
			if (Value.get_bool().get(bValue) != SUCCESS)
			{
				return false;
			}
			Out += bValue ? "true" : "false";
			return true;
		}
		case ondemand::json_type::number:
		{
			// The decoders' number reader, which also mends the iterator's reading of long numbers.
			double Number = 0.0;
			if (!ZnJson::ReadNumber(Value, 1, Number))
			{
				return false;
			}
			Out += NumberText(Number);
			return true;
		}
		case ondemand::json_type::string:
		{
			std::string_view String;
			if (Value.get_string().get(String) != SUCCESS)
			{
				return false;
			}
			Out += "\"" + std::string(String) + "\"";
			return true;
		}
		case ondemand::json_type::array:
		{
			ondemand::array Array;
			if (Value.get_array().get(Array) != SUCCESS)
			{
				return false;
			}
			Out += "[";
			for (simdjson_result<ondemand::value> Element : Array)
			{
				ondemand::value Child;
				if (Element.get(Child) != SUCCESS || !Canonical(Child, Out))
				{
					return false;
				}
				Out += ",";
			}
			Out += "]";
			return true;
		}
		case ondemand::json_type::object:
		{
			ondemand::object Object;
			if (Value.get_object().get(Object) != SUCCESS)
			{
				return false;
			}
			Out += "{";
			for (simdjson_result<ondemand::field> FieldResult : Object)
			{
				ondemand::field Field;
				std::string_view Key;
				if (std::move(FieldResult).get(Field) != SUCCESS || Field.unescaped_key().get(Key) != SUCCESS)
				{
					return false;
				}
				Out += "\"" + std::string(Key) + "\":";
				if (!Canonical(Field.value(), Out))
				{
					return false;
				}
				Out += ",";
			}
			Out += "}";
			return true;
		}
	}
	return false;
}

// A document that is a single scalar is read through the document itself.
inline bool CanonicalScalarRoot(ondemand::document& Document, ondemand::json_type Type, std::string& Out)
{
	switch (Type)
	{
		case ondemand::json_type::number:
		{
			// Integers as numbers, so that those past 64 bits are refused as a whole parse refuses
			// them; anything with a fraction or an exponent as a double.
			std::string_view Token;
			if (Document.raw_json_token().get(Token) != SUCCESS)
			{
				return false;
			}
			if (Token.find_first_of(".eE") == std::string_view::npos)
			{
				ondemand::number Number;
				if (Document.get_number().get(Number) != SUCCESS)
				{
					return false;
				}
				Out += NumberText(Number.as_double());
				return true;
			}
			double Number = 0.0;
			if (Document.get_double().get(Number) != SUCCESS ||
				(Token.size() > 20 && !ZnJson::ReadLongNumber(Token, Number)))
			{
				return false;
			}
			Out += NumberText(Number);
			return true;
		}
		case ondemand::json_type::string:
		{
			std::string_view String;
			if (Document.get_string().get(String) != SUCCESS)
			{
				return false;
			}
			Out += "\"" + std::string(String) + "\"";
			return true;
		}
		default:
			return false;
	}
}

struct FWindowed
{
	bool bAccepted = false;
	std::string Text;
	int32 Windows = 0;
	int32 Continued = 0;
	bool bBrokenContinuation = false;
};

// Reads every window and stitches the root back together: the root's members (or elements)
// in order, a continued member's array elements joined to the ones before.
inline FWindowed ReadAllWindows(FZnJsonWindowReader& Reader)
{
	FWindowed Result;
	std::vector<std::string> Members;
	bool bRootIsObject = false;
	bool bScalarRoot = false;
	std::string Scalar;
	ondemand::document* Document = nullptr;
	bool bContinues = false;
	while (Reader.Next(Document, bContinues))
	{
		++Result.Windows;
		Result.Continued += bContinues ? 1 : 0;
		ondemand::json_type Type;
		if (Document->type().get(Type) != SUCCESS)
		{
			return Result;
		}
		if (Type == ondemand::json_type::object)
		{
			bRootIsObject = true;
			ondemand::object Root;
			if (Document->get_object().get(Root) != SUCCESS)
			{
				return Result;
			}
			bool bFirst = true;
			for (simdjson_result<ondemand::field> FieldResult : Root)
			{
				ondemand::field Field;
				std::string_view Key;
				if (std::move(FieldResult).get(Field) != SUCCESS || Field.unescaped_key().get(Key) != SUCCESS)
				{
					return Result;
				}
				std::string Value;
				if (!Canonical(Field.value(), Value))
				{
					return Result;
				}
				if (bFirst && bContinues)
				{
					// The member goes on: its array's elements join the ones already read.
					std::string& Earlier = Members.back();
					const std::string Prefix = "\"" + std::string(Key) + "\":";
					if (Earlier.rfind(Prefix, 0) != 0 || Value.size() < 2 || Value.front() != '[' ||
						Earlier.back() != ']')
					{
						// A continued member must be the array the window before ended in.
						Result.bBrokenContinuation = true;
						return Result;
					}
					Earlier.pop_back();
					Earlier += Value.substr(1);
				}
				else
				{
					Members.push_back("\"" + std::string(Key) + "\":" + Value);
				}
				bFirst = false;
			}
		}
		else if (Type == ondemand::json_type::array)
		{
			ondemand::array Root;
			if (Document->get_array().get(Root) != SUCCESS)
			{
				return Result;
			}
			for (simdjson_result<ondemand::value> Element : Root)
			{
				ondemand::value Child;
				std::string Value;
				if (Element.get(Child) != SUCCESS || !Canonical(Child, Value))
				{
					return Result;
				}
				Members.push_back(Value);
			}
		}
		else if (!CanonicalScalarRoot(*Document, Type, Scalar))
		{
			return Result;
		}
		else
		{
			bScalarRoot = true;
		}
		if (!ZnJson::IsAtEnd(*Document))
		{
			return Result;
		}
	}
	if (!Reader.IsComplete())
	{
		return Result;
	}
	Result.bAccepted = true;
	if (bScalarRoot)
	{
		Result.Text = Scalar;
		return Result;
	}
	Result.Text = bRootIsObject ? "{" : "[";
	for (const std::string& Member : Members)
	{
		Result.Text += Member + ",";
	}
	Result.Text += bRootIsObject ? "}" : "]";
	return Result;
}

inline FWindowed ReadThroughWindows(const FString& Text, size_t WindowBytes)
{
	FZnJsonWindowReader Reader;
	return Reader.Begin(Text, WindowBytes) ? ReadAllWindows(Reader) : FWindowed();
}

inline FString Wide(const std::string& Utf8)
{
	return ZnJson::ToString(Utf8);
}

// Whole parse and windowed reading agree on the verdict and, when accepted, on every value.
// Returns an empty string when they do, else what differs. bOutReadContainer, when given, is set
// when both read an array or an object.
inline std::string CompareWithWholeParse(const FString& Text, size_t WindowBytes, bool* bOutReadContainer = nullptr)
{
	FZnJsonReader Whole;
	const bool bWhole = Whole.Parse(Text);
	// A lone scalar is never cut (cuts fall only inside containers) and no decoder reads one; the
	// single-pass reader leaves a root number it cannot read unconsumed, so the check would only
	// measure itself there.
	const EZnJsonType RootType = Whole.GetRoot().GetType();
	if (bWhole && RootType != EZnJsonType::Array && RootType != EZnJsonType::Object)
	{
		return std::string();
	}
	const FWindowed Windowed = ReadThroughWindows(Text, WindowBytes);
	if (Windowed.bBrokenContinuation)
	{
		return "a continued member that is not the array the window before ended in";
	}
	if (Windowed.bAccepted != bWhole)
	{
		return bWhole ? "the windows refused what a whole parse accepts"
					  : "the windows accepted what a whole parse refuses";
	}
	if (bWhole && Windowed.Text != Canonical(Whole.GetRoot()))
	{
		return "different values: " + Windowed.Text + " against " + Canonical(Whole.GetRoot());
	}
	if (bOutReadContainer)
	{
		*bOutReadContainer = bWhole;
	}
	return std::string();
}
} // namespace ZnJsonWindowCheck
