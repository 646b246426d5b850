#include "ZnJsonWindowReader.h"

#include "ZnJsonReader.h"
#include "ZnPaddedBuffer.h"

#include "ZnSimd.h"

#include <cstring>
#include <memory>
#include <utility>

// Two window buffers (the one being parsed and the next one, which starts with what followed
// the cut) and the parser, kept per thread: decoding a clip after a clip allocates nothing.
struct FZnJsonWindowScratch
{
	simdjson::ondemand::parser Parser;
	simdjson::ondemand::document Document;
	FZnPaddedBuffer Buffers[2];
	int32 Current = 0;
	bool bBusy = false;

	FZnPaddedBuffer& Filling() { return Buffers[Current]; }
	FZnPaddedBuffer& Spare() { return Buffers[1 - Current]; }

	void ReleaseIfLarge()
	{
		if (Buffers[0].Capacity > ZnScratchKeepLimit || Buffers[1].Capacity > ZnScratchKeepLimit ||
			Parser.capacity() > ZnScratchKeepLimit)
		{
			Document = simdjson::ondemand::document();
			Parser = simdjson::ondemand::parser();
			Buffers[0].Release();
			Buffers[1].Release();
		}
	}
};

namespace
{
using ZnJson::IsJsonSpace;

// Free of separators: what may stand right before a comma that separates two values.
inline bool EndsValue(char Char)
{
	return Char != '[' && Char != '{' && Char != ',' && Char != ':';
}

// Bit i set when an odd number of the bits 0..i are set: the inside of strings from their quotes.
inline uint64 PrefixXor(uint64 Bits)
{
	Bits ^= Bits << 1;
	Bits ^= Bits << 2;
	Bits ^= Bits << 4;
	Bits ^= Bits << 8;
	Bits ^= Bits << 16;
	Bits ^= Bits << 32;
	return Bits;
}

// One bit per byte of a 64-byte block for each kind of byte the scan cares about.
struct FBlockMasks
{
	uint64 Backslashes = 0;
	uint64 Quotes = 0;
	uint64 Opens = 0;
	uint64 Closes = 0;
	uint64 Commas = 0;
};

inline FBlockMasks ClassifyBlock(const char* Bytes)
{
	using namespace ZnSimd::Native;
	FBlockMasks Masks;
	for (int32 Part = 0; Part < 4; ++Part)
	{
		const FBytes16 Block = Load16(Bytes + 16 * Part);
		const int32 Shift = 16 * Part;
		Masks.Backslashes |= uint64(EqualMask(Block, '\\')) << Shift;
		Masks.Quotes |= uint64(EqualMask(Block, '"')) << Shift;
		// '[' and '{' differ only in the 0x20 bit, as do ']' and '}'.
		Masks.Opens |= uint64(FoldedEqualMask(Block, '{')) << Shift;
		Masks.Closes |= uint64(FoldedEqualMask(Block, '}')) << Shift;
		Masks.Commas |= uint64(EqualMask(Block, ',')) << Shift;
	}
	return Masks;
}
} // namespace

FZnJsonWindowReader::FZnJsonWindowReader() = default;

FZnJsonWindowReader::~FZnJsonWindowReader() = default;

size_t FZnJsonWindowReader::WindowBytesFor(size_t TextLength)
{
	// A sixteenth of the text keeps the parser's share of memory well under the text's own size;
	// the floor keeps the count of windows (each with a fixed cost) low for small texts.
	constexpr size_t MinWindow = size_t(8) << 10;
	constexpr size_t MaxWindow = size_t(256) << 10;
	const size_t Window = TextLength / 16;
	return Window < MinWindow ? MinWindow : (Window > MaxWindow ? MaxWindow : Window);
}

bool FZnJsonWindowReader::Begin(const FString& Text, size_t InWindowBytes)
{
	const TCHAR* Chars = *Text;
	size_t Units = size_t(Text.Len());
	ZnJson::SkipByteOrderMark(Chars, Units);
	if (Units == 0)
	{
		return false;
	}
	InputChars = Chars;
	InputBytes = nullptr;
	InputLength = Units;
	Start(InWindowBytes);
	return true;
}

bool FZnJsonWindowReader::BeginUtf8(const char* Utf8, int64 InLength, size_t InWindowBytes)
{
	if (Utf8 == nullptr || InLength <= 0)
	{
		return false;
	}
	size_t Bytes = size_t(InLength);
	ZnJson::SkipByteOrderMark(Utf8, Bytes);
	if (Bytes == 0)
	{
		return false;
	}
	InputChars = nullptr;
	InputBytes = Utf8;
	InputLength = Bytes;
	Start(InWindowBytes);
	return true;
}

void FZnJsonWindowReader::Start(size_t InWindowBytes)
{
	WindowBytes = InWindowBytes > 0 ? InWindowBytes : WindowBytesFor(InputLength);
	// A text that fits one window is parsed as it is, without looking for cuts.
	bStopped = InputLength <= WindowBytes;
	ChunkUnits = bStopped ? InputLength : (WindowBytes + 15) / 16;
}

void FZnJsonWindowReader::Convert(size_t Units)
{
	size_t Count = InputLength - InputPosition;
	Count = Count < Units ? Count : Units;
	FZnPaddedBuffer& Buffer = Scratch->Filling();
	if (InputBytes != nullptr)
	{
		char* Bytes = Buffer.Reserve(Length + Count + 8, Length);
		std::memcpy(Bytes + Length, InputBytes + InputPosition, Count);
		Length += Count;
		InputPosition += Count;
		return;
	}
	// A surrogate pair split between two chunks would turn into two replacement characters.
	if (InputPosition + Count < InputLength)
	{
		const TCHAR Last = InputChars[InputPosition + Count - 1];
		Count += (Last >= 0xD800 && Last <= 0xDBFF) ? 1 : 0;
	}
	char* Bytes = Buffer.Reserve(Length + 3 * Count + 8, Length);
	Length = size_t(ZnJson::ConvertUtf16(InputChars + InputPosition, Count, Bytes + Length) - Bytes);
	InputPosition += Count;
}

bool FZnJsonWindowReader::FindMemberKey(const char* Bytes, size_t Bracket, size_t& OutBegin, size_t& OutEnd) const
{
	size_t Index = Bracket;
	while (Index > 0 && IsJsonSpace(Bytes[Index - 1]))
	{
		--Index;
	}
	if (Index == 0 || Bytes[Index - 1] != ':')
	{
		return false;
	}
	--Index;
	while (Index > 0 && IsJsonSpace(Bytes[Index - 1]))
	{
		--Index;
	}
	if (Index == 0 || Bytes[Index - 1] != '"')
	{
		return false;
	}
	OutEnd = Index;
	// The opening quote is the first quote before the closing one that no backslash escapes.
	for (Index -= 1; Index > 0;)
	{
		--Index;
		if (Bytes[Index] == '"')
		{
			size_t Backslashes = 0;
			while (Backslashes < Index && Bytes[Index - 1 - Backslashes] == '\\')
			{
				++Backslashes;
			}
			if (Backslashes % 2 == 0)
			{
				OutBegin = Index;
				return true;
			}
		}
	}
	return false;
}

bool FZnJsonWindowReader::PrecededByValue(const char* Bytes, size_t Comma) const
{
	for (size_t Index = Comma; Index > 0;)
	{
		--Index;
		if (!IsJsonSpace(Bytes[Index]))
		{
			return EndsValue(Bytes[Index]);
		}
	}
	return false;
}

int32 FZnJsonWindowReader::FollowedByValue(const char* Bytes, size_t Comma) const
{
	for (size_t Index = Comma + 1; Index < Length; ++Index)
	{
		if (!IsJsonSpace(Bytes[Index]))
		{
			const char Char = Bytes[Index];
			return (Char == ']' || Char == '}' || Char == ',' || Char == ':') ? 0 : 1;
		}
	}
	// Not converted yet: unknown, unless the text ends here.
	return InputPosition < InputLength ? -1 : 0;
}

void FZnJsonWindowReader::ScanByte(const char* Bytes, size_t Position)
{
	const char Char = Bytes[Position];
	if (bInString)
	{
		if (bEscaped)
		{
			bEscaped = false;
		}
		else if (Char == '\\')
		{
			bEscaped = true;
		}
		else if (Char == '"')
		{
			bInString = false;
		}
		return;
	}
	switch (Char)
	{
		case '"':
			bInString = true;
			// A string before the root container: the text is no container, nothing to cut.
			bStopped |= Depth == 0;
			return;
		case '{':
		case '[':
		case '}':
		case ']':
		case ',':
			ScanStructural(Bytes, Position);
			return;
		default:
			bStopped |= Depth == 0 && !IsJsonSpace(Char);
			return;
	}
}

void FZnJsonWindowReader::ScanStructural(const char* Bytes, size_t Position)
{
	const char Char = Bytes[Position];
	switch (Char)
	{
		case '{':
		case '[':
			++Depth;
			if (Depth == 1)
			{
				RootOpen = Char;
			}
			else if (Depth == 2)
			{
				bMemberArray = RootOpen == '{' && Char == '[' && FindMemberKey(Bytes, Position, KeyBegin, KeyEnd);
			}
			return;
		case '}':
		case ']':
			// The root closing ends the cutting, and so does a close with nothing open.
			if (Depth <= 1)
			{
				bStopped = true;
				return;
			}
			--Depth;
			bMemberArray &= Depth != 1;
			return;
		default:
			// The last comma before the window's size, or else the first one after it.
			if ((Depth == 1 || (Depth == 2 && bMemberArray)) && (!bHasCut || Position < WindowBytes) &&
				PrecededByValue(Bytes, Position))
			{
				bHasCut = true;
				Cut = Position;
				CutDepth = Depth;
				CutKeyBegin = KeyBegin;
				CutKeyEnd = KeyEnd;
			}
			return;
	}
}

void FZnJsonWindowReader::ScanBlock(const char* Bytes, size_t Position)
{
	// Without backslashes the string state of every byte follows from the quotes alone, and only
	// brackets and commas outside strings matter. Most blocks lie deep inside an element, where
	// no comma can be a cut and no bracket changes what is tracked: there only the depth moves.
	if (!bEscaped && Depth > 0)
	{
		const FBlockMasks Masks = ClassifyBlock(Bytes + Position);
		if (Masks.Backslashes == 0)
		{
			const uint64 Inside = PrefixXor(Masks.Quotes) ^ (bInString ? ~uint64(0) : uint64(0));
			const uint64 Opens = Masks.Opens & ~Inside;
			const uint64 Closes = Masks.Closes & ~Inside;
			const int32 CloseCount = FMath::CountBits(Closes);
			const int32 DeepestCut = RootOpen == '{' ? 2 : 1;
			if (Depth - CloseCount > DeepestCut)
			{
				Depth += FMath::CountBits(Opens) - CloseCount;
			}
			else
			{
				const uint64 Commas = Masks.Commas & ~Inside;
				for (uint64 Events = Opens | Closes | Commas; Events != 0 && !bStopped; Events &= Events - 1)
				{
					// Commas inside an element are most events and can never be cuts.
					const bool bComma = (Commas & Events & (~Events + 1)) != 0;
					if (!bComma || Depth == 1 || (Depth == 2 && bMemberArray))
					{
						ScanStructural(Bytes, Position + size_t(FMath::CountTrailingZeros64(Events)));
					}
				}
			}
			bInString = (Inside >> 63) != 0;
			return;
		}
	}
	for (size_t Index = 0; Index < ScanBlockBytes; ++Index)
	{
		ScanByte(Bytes, Position + Index);
	}
}

void FZnJsonWindowReader::Scan(bool bToEnd)
{
	const char* Bytes = Scratch->Filling().Bytes.get();
	while (!bStopped && ScanPosition + ScanBlockBytes <= Length)
	{
		ScanBlock(Bytes, ScanPosition);
		ScanPosition += ScanBlockBytes;
	}
	while (bToEnd && !bStopped && ScanPosition < Length)
	{
		ScanByte(Bytes, ScanPosition++);
	}
	if (bStopped)
	{
		ScanPosition = Length;
	}
}

void FZnJsonWindowReader::HandOut(char* Bytes, size_t WindowLength)
{
	// Stale bytes past the end could change how a malformed text is read.
	std::memset(Bytes + WindowLength, 0, simdjson::SIMDJSON_PADDING);
	WindowText = Bytes;
	WindowTextLength = WindowLength;
}

bool FZnJsonWindowReader::ParseText(simdjson::ondemand::document*& OutDocument)
{
	if (WindowText == nullptr || bFailed)
	{
		return false;
	}
	// Nothing but whitespace has no root value; the iterator would only notice later.
	const char* const TextEnd = WindowText + WindowTextLength;
	simdjson::ondemand::parser& Parser = Scratch->Parser;
	bool bParsed = ZnJson::SkipJsonSpace(WindowText, TextEnd) != TextEnd;
	if (bParsed && Parser.capacity() < WindowTextLength)
	{
		// Windows vary a little in size; some headroom saves reallocating for each larger one.
		bParsed = Parser.allocate(WindowTextLength + WindowTextLength / 8) == simdjson::SUCCESS;
	}
	bParsed = bParsed &&
		Parser.iterate(WindowText, WindowTextLength, WindowTextLength + simdjson::SIMDJSON_PADDING)
				.get(Scratch->Document) == simdjson::SUCCESS;
	if (!bParsed)
	{
		// A window that does not parse ends the reading, unfinished.
		bFailed = true;
		bComplete = false;
		return false;
	}
	OutDocument = &Scratch->Document;
	return true;
}

bool FZnJsonWindowReader::Next(simdjson::ondemand::document*& OutDocument, bool& bOutContinues)
{
	return NextText(bOutContinues) && ParseText(OutDocument);
}

bool FZnJsonWindowReader::NextText(bool& bOutContinues)
{
	WindowText = nullptr;
	WindowTextLength = 0;
	if (bComplete || bFailed || InputLength == 0)
	{
		return false;
	}
	for (;;)
	{
		const bool bAllConverted = InputPosition == InputLength;
		Scan(bAllConverted);
		// Cut once the scan has seen the whole window, or all there is.
		if (bHasCut && Length >= WindowBytes && (ScanPosition >= WindowBytes || bAllConverted))
		{
			const int32 Follows = FollowedByValue(Scratch->Filling().Bytes.get(), Cut);
			if (Follows > 0)
			{
				break;
			}
			// No value after the comma: the text is malformed there, and the window that holds
			// the comma will say so. Unknown yet: read on.
			bHasCut = Follows < 0;
		}
		if (bAllConverted)
		{
			// The rest of the text is the last window.
			bOutContinues = bContinues;
			HandOut(Scratch->Filling().Bytes.get(), Length);
			bComplete = true;
			return true;
		}
		Convert(ChunkUnits);
	}

	// The next window starts by re-opening what is open at the cut, then takes what followed it.
	char* Bytes = Scratch->Filling().Bytes.get();
	const bool bInMember = CutDepth == 2;
	const size_t KeyLength = bInMember ? CutKeyEnd - CutKeyBegin : 0;
	const size_t PrefixLength = bInMember ? KeyLength + 3 : 1;
	const size_t Rest = Length - (Cut + 1);
	char* NextBytes = Scratch->Spare().Reserve(PrefixLength + Rest + 8, 0);
	if (bInMember)
	{
		NextBytes[0] = '{';
		std::memcpy(NextBytes + 1, Bytes + CutKeyBegin, KeyLength);
		NextBytes[KeyLength + 1] = ':';
		NextBytes[KeyLength + 2] = '[';
	}
	else
	{
		NextBytes[0] = RootOpen;
	}
	std::memcpy(NextBytes + PrefixLength, Bytes + Cut + 1, Rest);
	// The scan goes back to the cut, where its state is known, and reads what followed it again:
	// cuts found there were passed over while one before them was kept.
	Depth = CutDepth;
	bInString = false;
	bEscaped = false;
	bStopped = false;
	bMemberArray = bInMember;
	KeyBegin = 1;
	KeyEnd = 1 + KeyLength;
	ScanPosition = PrefixLength;

	// This window ends by closing what is open at the cut.
	size_t WindowLength = Cut;
	if (bInMember)
	{
		Bytes[WindowLength++] = ']';
	}
	Bytes[WindowLength++] = RootOpen == '{' ? '}' : ']';

	bOutContinues = bContinues;
	bContinues = bInMember;
	bHasCut = false;
	Scratch->Current = 1 - Scratch->Current;
	Length = PrefixLength + Rest;
	HandOut(Bytes, WindowLength);
	return true;
}
