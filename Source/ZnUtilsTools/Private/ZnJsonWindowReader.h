// Reads a large JSON text a window at a time.
//
// A parser indexes every byte it parses (4 bytes of index per byte of text, plus a string
// buffer), so parsing a one-megabyte clip at once needs several megabytes beside the text. The
// clips the service sends keep their bulk in long arrays near the root (the frames of a face
// file, the bones of a body file), so the text is cut between the elements of those arrays and
// each window is parsed on its own, in a buffer the size of a window. Converting the engine
// string to UTF-8 happens window by window as well, so no whole-text copy exists either.
//
// Cuts are made only at the commas of the root container (between its members or elements) and
// at the commas of an array that is the value of a root object's member. Each window is a
// complete JSON text: the windows after the first re-open the root container (and, when the cut
// fell inside a member's array, that member, with its key as written), the windows before the
// last close what is open at the cut. A reader of the windows therefore sees:
// - for a root array: the same root array in every window, its elements spread over them;
// - for a root object: the same root object, its members spread over them; when bContinues is
//   set, the window's first member is the member the previous window ended in, and its array
//   holds the elements that follow the ones already seen.
//
// A text is accepted exactly when a whole parse accepts it, provided every window is read
// completely (every value read or checked with ZnJson::SkipValue, and ZnJson::IsAtEnd at the end
// of each window) and IsComplete() is checked after the last: a cut is made only at a comma that
// separates two values of the container, and the windows' validity together is the text's.
//
// One reader per decode; the buffers and the parser are kept per thread and reused.
#pragma once

#include "CoreMinimal.h"
#include "ZnThreadScratch.h"

#include "ZnSimdjson.h"

struct FZnJsonWindowScratch;

class FZnJsonWindowReader
{
public:
	FZnJsonWindowReader();
	~FZnJsonWindowReader();
	FZnJsonWindowReader(const FZnJsonWindowReader&) = delete;
	FZnJsonWindowReader& operator=(const FZnJsonWindowReader&) = delete;

	// Starts on a text (a leading byte-order mark is skipped); false when nothing is left. The
	// text must stay alive and unchanged until the last window has been read. WindowBytes other
	// than 0 replaces the size chosen from the text's length (tests use tiny ones).
	bool Begin(const FString& Text, size_t InWindowBytes = 0);
	bool BeginUtf8(const char* Utf8, int64 Length, size_t InWindowBytes = 0);

	// The next window, valid until the next call. False after the last window, or when a window
	// does not parse (IsComplete() then stays false).
	bool Next(simdjson::ondemand::document*& OutDocument, bool& bOutContinues);

	// The same in two steps, for readers that can take some windows straight from their text:
	// NextText hands out the next window's text (GetText, GetTextLength; zeroed padding follows it)
	// and ParseText parses it when the reader needs the parser after all. A window read from its
	// text must be checked as strictly as the parser would.
	bool NextText(bool& bOutContinues);
	const char* GetText() const { return WindowText; }
	size_t GetTextLength() const { return WindowTextLength; }
	bool ParseText(simdjson::ondemand::document*& OutDocument);

	// True once the last window has been handed out.
	bool IsComplete() const { return bComplete; }

	// Share of the input handed out in windows so far, about 0 to 1 (what waits for the next window
	// is counted as one unit per byte): lets a decoder size its output from the first window.
	double GetProgress() const
	{
		const size_t Waiting = Length < InputPosition ? Length : InputPosition;
		return InputLength > 0 ? double(InputPosition - Waiting) / double(InputLength) : 1.0;
	}

	// Length of the whole input: UTF-16 units of engine text, or bytes.
	size_t GetInputLength() const { return InputLength; }

	// Bytes of text in a window before a cut is looked for, for a text of the given length.
	static size_t WindowBytesFor(size_t TextLength);

private:
	void Start(size_t InWindowBytes);
	void Convert(size_t Units);
	void Scan(bool bToEnd);
	static constexpr size_t ScanBlockBytes = 64;
	void ScanByte(const char* Bytes, size_t Position);
	void ScanStructural(const char* Bytes, size_t Position);
	void ScanBlock(const char* Bytes, size_t Position);
	bool FindMemberKey(const char* Bytes, size_t Bracket, size_t& OutBegin, size_t& OutEnd) const;
	bool PrecededByValue(const char* Bytes, size_t Comma) const;
	int32 FollowedByValue(const char* Bytes, size_t Comma) const;
	void HandOut(char* Bytes, size_t WindowLength);

	TZnThreadScratch<FZnJsonWindowScratch> Scratch;

	// Input: engine text or UTF-8 bytes.
	const TCHAR* InputChars = nullptr;
	const char* InputBytes = nullptr;
	size_t InputLength = 0;
	size_t InputPosition = 0;
	size_t WindowBytes = 0;
	size_t ChunkUnits = 0;

	// The window handed out last.
	const char* WindowText = nullptr;
	size_t WindowTextLength = 0;

	// The window being filled: Length bytes, scanned up to ScanPosition.
	size_t Length = 0;
	size_t ScanPosition = 0;
	bool bContinues = false;
	bool bComplete = false;
	bool bFailed = false;

	// Where the scan stands.
	int32 Depth = 0;
	bool bInString = false;
	bool bEscaped = false;
	// Set when the root has closed or a close had nothing to close: no cut is made after it.
	bool bStopped = false;
	char RootOpen = 0;
	// The open container at depth 2 is an array that is a root member's value, with its key here.
	bool bMemberArray = false;
	size_t KeyBegin = 0;
	size_t KeyEnd = 0;

	// The last place a window may end: the comma's position, its depth and the member's key.
	bool bHasCut = false;
	size_t Cut = 0;
	int32 CutDepth = 0;
	size_t CutKeyBegin = 0;
	size_t CutKeyEnd = 0;
};
