#include "ZnJsonFloor.h"

namespace
{
using namespace simdjson;

error_code Touch(ondemand::value Value, FZnJsonFloorResult& Result)
{
	ondemand::json_type Type;
	if (error_code Error = Value.type().get(Type))
	{
		return Error;
	}
	switch (Type)
	{
		case ondemand::json_type::array:
		{
			ondemand::array Array;
			if (error_code Error = Value.get_array().get(Array))
			{
				return Error;
			}
			for (auto Element : Array)
			{
				ondemand::value Child;
				if (error_code Error = Element.get(Child))
				{
					return Error;
				}
				if (error_code Error = Touch(Child, Result))
				{
					return Error;
				}
			}
			return SUCCESS;
		}
		case ondemand::json_type::object:
		{
			ondemand::object Object;
			if (error_code Error = Value.get_object().get(Object))
			{
				return Error;
			}
			for (auto Field : Object)
			{
				ondemand::value Child;
				if (error_code Error = Field.value().get(Child))
				{
					return Error;
				}
				if (error_code Error = Touch(Child, Result))
				{
					return Error;
				}
			}
			return SUCCESS;
		}
		case ondemand::json_type::number:
		{
			double Number = 0.0;
			if (error_code Error = Value.get_double().get(Number))
			{
				return Error;
			}
			Result.Sum += Number;
			++Result.Count;
			return SUCCESS;
		}
		default:
			// Strings, booleans and nulls are skipped over by the parser when the next value is read.
			return SUCCESS;
	}
}
} // namespace

bool ZnTouchEveryNumber(ondemand::parser& Parser, const padded_string& Text, FZnJsonFloorResult& OutResult)
{
	FZnJsonFloorResult Result;
	ondemand::document Document;
	if (Parser.iterate(Text).get(Document))
	{
		return false;
	}
	ondemand::value Root;
	if (Document.get_value().get(Root) || Touch(Root, Result))
	{
		return false;
	}
	OutResult = Result;
	return true;
}
