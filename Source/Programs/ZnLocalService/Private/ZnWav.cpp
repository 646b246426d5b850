#include "ZnWav.h"

#include <cstring>

namespace
{
void PutU32(std::vector<uint8_t>& Out, uint32_t Value)
{
	for (int Shift = 0; Shift < 32; Shift += 8)
	{
		Out.push_back(uint8_t(Value >> Shift));
	}
}

void PutU16(std::vector<uint8_t>& Out, uint16_t Value)
{
	Out.push_back(uint8_t(Value));
	Out.push_back(uint8_t(Value >> 8));
}

void PutTag(std::vector<uint8_t>& Out, const char* Tag)
{
	Out.insert(Out.end(), Tag, Tag + 4);
}

uint32_t GetU32(const uint8_t* P)
{
	return uint32_t(P[0]) | uint32_t(P[1]) << 8 | uint32_t(P[2]) << 16 | uint32_t(P[3]) << 24;
}

uint16_t GetU16(const uint8_t* P)
{
	return uint16_t(P[0] | P[1] << 8);
}
} // namespace

std::vector<uint8_t> FZnWav::WritePcm16Mono(const std::vector<int16_t>& Samples, int32_t SampleRate)
{
	const uint32_t DataBytes = uint32_t(Samples.size() * 2);
	std::vector<uint8_t> Out;
	Out.reserve(44 + DataBytes);
	PutTag(Out, "RIFF");
	PutU32(Out, 36 + DataBytes);
	PutTag(Out, "WAVE");
	PutTag(Out, "fmt ");
	PutU32(Out, 16);
	PutU16(Out, 1); // integer PCM
	PutU16(Out, 1); // mono
	PutU32(Out, uint32_t(SampleRate));
	PutU32(Out, uint32_t(SampleRate) * 2);
	PutU16(Out, 2);
	PutU16(Out, 16);
	PutTag(Out, "data");
	PutU32(Out, DataBytes);
	for (int16_t Sample : Samples)
	{
		PutU16(Out, uint16_t(Sample));
	}
	return Out;
}

bool FZnWav::ReadInfo(const uint8_t* Data, size_t Size, FZnWavInfo& Out, std::string& Error)
{
	if (Size < 12 || std::memcmp(Data, "RIFF", 4) != 0 || std::memcmp(Data + 8, "WAVE", 4) != 0)
	{
		Error = "not a WAV file (no RIFF/WAVE header)";
		return false;
	}
	FZnWavInfo Info;
	bool bHaveFormat = false;
	size_t Offset = 12;
	while (Offset + 8 <= Size)
	{
		const uint8_t* Chunk = Data + Offset;
		const uint64_t ChunkSize = GetU32(Chunk + 4);
		const size_t BodyOffset = Offset + 8;
		const size_t Available = Size - BodyOffset;
		if (std::memcmp(Chunk, "fmt ", 4) == 0)
		{
			if (ChunkSize < 16 || ChunkSize > Available)
			{
				Error = "the WAV format chunk is cut short";
				return false;
			}
			const uint8_t* Format = Data + BodyOffset;
			const uint16_t Tag = GetU16(Format);
			Info.Channels = GetU16(Format + 2);
			Info.SampleRate = int32_t(GetU32(Format + 4));
			Info.BitsPerSample = GetU16(Format + 14);
			// 0xFFFE (extensible) carries its real format in a sub-format GUID whose first two bytes are the tag.
			const uint16_t RealTag = (Tag == 0xFFFE && ChunkSize >= 26) ? GetU16(Format + 24) : Tag;
			if (RealTag != 1)
			{
				Error = "the WAV file is not integer PCM (format " + std::to_string(RealTag) + ")";
				return false;
			}
			if (Info.Channels == 0 || Info.SampleRate <= 0 ||
				(Info.BitsPerSample != 8 && Info.BitsPerSample != 16 && Info.BitsPerSample != 24 &&
					Info.BitsPerSample != 32))
			{
				Error = "the WAV format has no channels, no sample rate or an unusual sample size";
				return false;
			}
			bHaveFormat = true;
		}
		else if (std::memcmp(Chunk, "data", 4) == 0)
		{
			if (!bHaveFormat)
			{
				Error = "the WAV data chunk comes before its format chunk";
				return false;
			}
			const uint64_t Present = ChunkSize < Available ? ChunkSize : Available;
			const uint64_t FrameBytes = uint64_t(Info.Channels) * (Info.BitsPerSample / 8);
			Info.SampleFrames = int64_t(Present / FrameBytes);
			Out = Info;
			return true;
		}
		else if (ChunkSize > Available)
		{
			Error = "a WAV chunk runs past the end of the file";
			return false;
		}
		// Chunks are padded to an even length.
		Offset = BodyOffset + size_t(ChunkSize) + size_t(ChunkSize & 1);
	}
	Error = bHaveFormat ? "the WAV file has no data chunk" : "the WAV file has no format chunk";
	return false;
}
