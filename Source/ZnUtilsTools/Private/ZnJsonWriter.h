// Writes one JSON object into an engine string in the layout of the engine's default pretty
// printer, so request bodies are the same text whichever build produced them:
//
//   {<LT>
//   <tab>"key": value,<LT>
//   <tab>"nested":<LT>
//   <tab>{<LT>
//   <tab><tab>"inner": 1<LT>
//   <tab>}<LT>
//   }
//
// <LT> is the platform's LINE_TERMINATOR. A member is written as a line break, one tab per
// nesting level, the quoted key, a colon, one blank and the value; the comma that separates
// members ends the previous line. A nested object puts its opening brace on a line of its own at
// the key's indent, and every closing brace sits at its parent's indent. Nothing follows the
// final closing brace. Strings are escaped (quote, backslash, \b \f \n \r \t, other control
// characters as \u00xx in lowercase hex); everything else, non-ASCII included, is kept as text.
//
// The writer appends straight to the caller's string: no allocation beyond that string's growth.
// Calls must be balanced (every object started is ended); an unbalanced call is a programmer error.
#pragma once

#include "CoreMinimal.h"

class FZnJsonWriter
{
public:
	// Appends to Out, which must outlive the writer.
	explicit FZnJsonWriter(FString& Out);

	// The root object (only as the first call).
	void WriteObjectStart();
	// A nested object as the member Identifier of the current object.
	void WriteObjectStart(const TCHAR* Identifier);
	void WriteObjectEnd();

	void WriteValue(const TCHAR* Identifier, const FString& Value);
	void WriteValue(const TCHAR* Identifier, const TCHAR* Value);
	void WriteValue(const TCHAR* Identifier, int32 Value);
	void WriteValue(const TCHAR* Identifier, int64 Value);
	void WriteValue(const TCHAR* Identifier, bool Value);

	// Appends Text as a quoted JSON string with the escaping described above.
	static void AppendQuoted(FString& Out, const TCHAR* Text, int32 Length);

private:
	void WriteIdentifier(const TCHAR* Identifier);
	void WriteLineAndIndent();

	FString& Out;
	int32 IndentLevel = 0;
	// True right after an opening brace, where the next member needs no comma.
	bool bAtObjectStart = true;
};
