// The floor of the decoding benchmarks: simdjson parses the text and every number in it is read
// once as a double, with no output. No decoder that produces a record can beat this by much.
#pragma once

#include <simdjson.h>

#include <cstdint>

struct FZnJsonFloorResult
{
	double Sum = 0.0;
	int64_t Count = 0;
};

// False when the text does not parse. Text must be a simdjson padded string (zeroed padding).
bool ZnTouchEveryNumber(
	simdjson::ondemand::parser& Parser, const simdjson::padded_string& Text, FZnJsonFloorResult& OutResult);
