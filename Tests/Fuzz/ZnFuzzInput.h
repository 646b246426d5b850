// How a fuzz target reads its input bytes, in one place for the targets, the seed writer and the
// replay tests, so a seed or a hand-written input cannot be laid out differently from what its
// target expects.
//
// Three layouts exist:
//   - ModeThenText: the first byte is the text mode, the rest the text. Only the mode byte's
//     lowest bit counts (the fuzzer mutates whole bytes): clear means UTF-8 text converted the way
//     network texts are, set means raw little-endian UTF-16 code units (lone surrogates, NULs).
//   - WindowThenModeThenText: a window size in bytes (0: the window reader's own choice), then
//     the ModeThenText layout.
//   - RawBytes: the bytes as they are (tight number arrays, the service-message targets).
// Write inputs with Encode (or the Utf8Text / RawUtf16 constants), never with a literal byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace ZnFuzzInput
{
/** The mode byte values the seeds and tests write; any byte with the same lowest bit reads alike. */
constexpr uint8_t Utf8Text = 0x00;
constexpr uint8_t RawUtf16 = 0x01;

/** True when a mode byte asks for raw UTF-16 code units. */
constexpr bool IsRawUtf16(uint8_t ModeByte)
{
	return (ModeByte & 1) != 0;
}

enum class ELayout
{
	ModeThenText,
	WindowThenModeThenText,
	RawBytes,
};

/** The layout of a target's input, by the target's program name. Unknown names read raw bytes. */
inline ELayout LayoutOf(const std::string& Target)
{
	if (Target == "BodyJsonFuzzer" || Target == "BodyJsonV2Fuzzer" || Target == "FaceJsonFuzzer" ||
		Target == "FaceJsonV2Fuzzer" || Target == "JsonReaderFuzzer")
	{
		return ELayout::ModeThenText;
	}
	if (Target == "JsonWindowReaderFuzzer")
	{
		return ELayout::WindowThenModeThenText;
	}
	return ELayout::RawBytes;
}

/**
 * The input that makes Target read Text (bytes of UTF-8) in the given mode. Mode is Utf8Text or
 * RawUtf16; WindowBytes is used by the windowed layout only.
 */
inline std::string Encode(
	const std::string& Target, const std::string& Text, uint8_t Mode = Utf8Text, uint8_t WindowBytes = 0)
{
	switch (LayoutOf(Target))
	{
		case ELayout::ModeThenText:
			return std::string(1, char(Mode)) + Text;
		case ELayout::WindowThenModeThenText:
			return std::string(1, char(WindowBytes)) + std::string(1, char(Mode)) + Text;
		case ELayout::RawBytes:
		default:
			return Text;
	}
}
} // namespace ZnFuzzInput
