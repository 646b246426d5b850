// Whole-file reads and writes of text.
#pragma once

#include "CoreTypes.h"
#include "Containers/Array.h"
#include "Containers/UnrealString.h"

struct CORE_API FFileHelper
{
	// How SaveStringToFile writes the characters.
	enum class EEncodingOptions
	{
		// Pure ASCII text (every character below 128) is written one byte per character;
		// any other text is written as UTF-16 little-endian behind the byte-order mark FF FE,
		// so that no character is lost.
		AutoDetect,
		// One byte per character; characters above 255 become '?'.
		ForceAnsi,
		// UTF-16 little-endian behind the byte-order mark FF FE.
		ForceUnicode,
		// UTF-8 behind the byte-order mark EF BB BF.
		ForceUTF8,
		// UTF-8 without a byte-order mark.
		ForceUTF8WithoutBOM
	};

	// Writes String to Filename, replacing the file, and creates missing parent directories.
	// Returns false when the file cannot be opened or not every byte was written.
	static bool SaveStringToFile(
		const FString& String, const TCHAR* Filename, EEncodingOptions EncodingOptions = EEncodingOptions::AutoDetect);

	// Reads the whole file into Result. A byte-order mark selects UTF-8, UTF-16 LE or UTF-16 BE;
	// without one the bytes are read as UTF-8.
	// Returns false, leaving Result unchanged, when the file cannot be read.
	static bool LoadFileToString(FString& Result, const TCHAR* Filename);

	// Reads the whole file's bytes into Result. Returns false, leaving Result unchanged, on failure.
	static bool LoadFileToArray(TArray<uint8>& Result, const TCHAR* Filename);
};
