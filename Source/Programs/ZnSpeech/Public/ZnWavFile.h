// Reading WAV files (RIFF/WAVE) down to their samples, for animating given audio. Writing is the
// local service's FZnWav::WritePcm16Mono (ZnWav.h), which also reads a file's format and length
// but not its samples. Pure; any thread.
#pragma once

#include "HAL/Platform.h"

#include <string>
#include <vector>

// Decoded audio: one channel, samples in -1..1.
struct FZnPcmAudio
{
	std::vector<float> Samples;
	int32 SampleRate = 0;

	double DurationSeconds() const { return SampleRate > 0 ? static_cast<double>(Samples.size()) / SampleRate : 0.0; }
};

// Decodes a WAV file of integer PCM (8, 16, 24 or 32 bits) or 32-bit float, any number of
// channels (mixed down to one by averaging), plain or WAVE_FORMAT_EXTENSIBLE. Chunks it does not
// know are skipped. A data chunk that claims more bytes than the file has (as streaming writers
// leave it) is read as far as the file goes. Out is assigned only on success; otherwise false with
// Error saying what is wrong: not a RIFF/WAVE file, no "fmt " or "data" chunk, a compressed or
// otherwise unsupported format, a sample rate outside 1..384000, or no whole sample.
bool ReadWav(const std::vector<uint8>& Bytes, FZnPcmAudio& Out, std::string& Error);
