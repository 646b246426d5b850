// A growable byte buffer for text handed to the parser, which reads past the text's end.
#pragma once

#include "CoreMinimal.h"

#include <cstring>
#include <memory>

#include "ZnSimdjson.h"

struct FZnPaddedBuffer
{
	std::unique_ptr<char[]> Bytes;
	size_t Capacity = 0;

	// Room for Needed bytes plus the parser's padding, keeping the first Keep bytes. Grows by half
	// again at least: a stream of slowly growing texts should not reallocate each time.
	char* Reserve(size_t Needed, size_t Keep = 0)
	{
		const size_t Total = Needed + simdjson::SIMDJSON_PADDING;
		if (Total > Capacity)
		{
			size_t NewCapacity = Capacity + Capacity / 2;
			NewCapacity = NewCapacity < Total ? Total : NewCapacity;
			std::unique_ptr<char[]> NewBytes(new char[NewCapacity]);
			if (Keep > 0)
			{
				std::memcpy(NewBytes.get(), Bytes.get(), Keep);
			}
			Bytes = std::move(NewBytes);
			Capacity = NewCapacity;
		}
		return Bytes.get();
	}

	void Release()
	{
		Bytes.reset();
		Capacity = 0;
	}
};
