#include "ZnExportNumbers.h"

#include <charconv>
#include <cmath>

void ZnExportNumbers::AppendFixed(std::string& Out, double Value, int Decimals)
{
	char Buffer[64];
	// to_chars ignores the locale, unlike printf.
	const auto Result = std::to_chars(
		Buffer, Buffer + sizeof(Buffer), std::isfinite(Value) ? Value : 0.0, std::chars_format::fixed, Decimals);
	std::string Text(Buffer, Result.ptr);
	if (Text[0] == '-' && Text.find_first_not_of("-0.") == std::string::npos)
	{
		Text.erase(0, 1);
	}
	Out += Text;
}
