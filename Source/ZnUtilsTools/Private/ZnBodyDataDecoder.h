// Decodes the service's whole-clip body animation text into an FZnBodyData.
#pragma once

#include "CoreMinimal.h"
#include "ZnBodyData.h"

class FZnBodyDataDecoder
{
public:
	// Decodes the text into OutBodyData, replacing all of it (including id). Returns false and
	// leaves OutBodyData untouched when the text is empty, does not parse, has no object at the
	// root, or lacks the structure every clip has (a "Hips" object; objects as the elements of
	// "curves", "rotas" and "pos"). With bSetRootStartPosition false, RootStartPosition stays zero.
	static bool Decode(const FString& JsonStr, FZnBodyData& OutBodyData, bool bSetRootStartPosition);

	// The same over UTF-8 bytes (for tools and benchmarks that already hold UTF-8).
	static bool DecodeUtf8(const char* Utf8, int64 Length, FZnBodyData& OutBodyData, bool bSetRootStartPosition);
};
