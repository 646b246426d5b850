// Writing and reading the WAV files the local service hosts and animates: RIFF with a "fmt "
// chunk of integer PCM. Pure functions of their inputs; callable from any thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct FZnWavInfo
{
	int32_t SampleRate = 0;
	int32_t Channels = 0;
	int32_t BitsPerSample = 0;
	// Sample frames (one sample per channel each).
	int64_t SampleFrames = 0;

	double DurationSeconds() const { return SampleRate > 0 ? double(SampleFrames) / SampleRate : 0.0; }
};

class FZnWav
{
public:
	// A RIFF/WAVE file of 16-bit PCM, one channel, at SampleRate (44-byte header, then the samples
	// little-endian).
	static std::vector<uint8_t> WritePcm16Mono(const std::vector<int16_t>& Samples, int32_t SampleRate);

	// Reads the format and length of a PCM WAV file (8, 16, 24 or 32 bits, any channel count).
	// Chunks other than "fmt " and "data" are skipped. False with Error saying what is wrong when
	// the bytes are not such a file (no RIFF/WAVE header, no "fmt " before "data", a compressed
	// format, a zero rate, a chunk running past the end); the "data" chunk may be cut short, as a
	// stream being written is, and then counts as long as the bytes present.
	static bool ReadInfo(const uint8_t* Data, size_t Size, FZnWavInfo& Out, std::string& Error);
};
