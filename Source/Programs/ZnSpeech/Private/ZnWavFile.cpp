#include "ZnWavFile.h"

#include <cstring>

namespace
{
uint32 ReadLittleEndian(const uint8* Bytes, int32 ByteCount)
{
	uint32 Value = 0;
	for (int32 Byte = ByteCount - 1; Byte >= 0; --Byte)
	{
		Value = (Value << 8) | Bytes[Byte];
	}
	return Value;
}

constexpr uint16 FormatPcm = 1;
constexpr uint16 FormatFloat = 3;
constexpr uint16 FormatExtensible = 0xFFFE;

struct FZnWavFormat
{
	uint16 Tag = 0;
	uint16 Channels = 0;
	uint32 SampleRate = 0;
	uint16 BitsPerSample = 0;
};

float ReadSample(const uint8* Bytes, const FZnWavFormat& Format)
{
	switch (Format.BitsPerSample)
	{
		case 8:
			return (static_cast<int32>(Bytes[0]) - 128) / 128.0f;
		case 16:
			return static_cast<int16>(ReadLittleEndian(Bytes, 2)) / 32768.0f;
		case 24:
			// Shift the 24 bits to the top of an int32 so the sign comes along.
			return static_cast<int32>(ReadLittleEndian(Bytes, 3) << 8) / 2147483648.0f;
		default:
			if (Format.Tag == FormatFloat)
			{
				const uint32 Bits = ReadLittleEndian(Bytes, 4);
				float Value = 0.0f;
				std::memcpy(&Value, &Bits, sizeof(Value));
				// Non-finite samples carry no loudness.
				return Value == Value && Value - Value == 0.0f ? Value : 0.0f;
			}
			return static_cast<int32>(ReadLittleEndian(Bytes, 4)) / 2147483648.0f;
	}
}

bool ReadFormat(const uint8* Chunk, uint32 Size, FZnWavFormat& Format, std::string& Error)
{
	if (Size < 16)
	{
		Error = "the WAV format chunk is too short";
		return false;
	}
	Format.Tag = static_cast<uint16>(ReadLittleEndian(Chunk, 2));
	Format.Channels = static_cast<uint16>(ReadLittleEndian(Chunk + 2, 2));
	Format.SampleRate = ReadLittleEndian(Chunk + 4, 4);
	Format.BitsPerSample = static_cast<uint16>(ReadLittleEndian(Chunk + 14, 2));
	if (Format.Tag == FormatExtensible && Size >= 26)
	{
		// The real format is the first two bytes of the sub-format GUID.
		Format.Tag = static_cast<uint16>(ReadLittleEndian(Chunk + 24, 2));
	}
	const bool bPcm = Format.Tag == FormatPcm &&
		(Format.BitsPerSample == 8 || Format.BitsPerSample == 16 || Format.BitsPerSample == 24 ||
			Format.BitsPerSample == 32);
	const bool bFloat = Format.Tag == FormatFloat && Format.BitsPerSample == 32;
	if (!bPcm && !bFloat)
	{
		Error = "unsupported WAV encoding (format " + std::to_string(Format.Tag) + ", " +
			std::to_string(Format.BitsPerSample) + " bits); only PCM and 32-bit float are read";
		return false;
	}
	if (Format.Channels == 0)
	{
		Error = "the WAV file has no channels";
		return false;
	}
	if (Format.SampleRate == 0 || Format.SampleRate > 384000)
	{
		Error = "unsupported WAV sample rate " + std::to_string(Format.SampleRate);
		return false;
	}
	return true;
}
} // namespace

bool ReadWav(const std::vector<uint8>& Bytes, FZnPcmAudio& Out, std::string& Error)
{
	if (Bytes.size() < 12 || std::memcmp(Bytes.data(), "RIFF", 4) != 0 || std::memcmp(Bytes.data() + 8, "WAVE", 4) != 0)
	{
		Error = "not a WAV file (no RIFF/WAVE header)";
		return false;
	}
	FZnWavFormat Format;
	bool bHaveFormat = false;
	size_t Position = 12;
	while (Position + 8 <= Bytes.size())
	{
		const uint8* Header = Bytes.data() + Position;
		const uint32 Size = ReadLittleEndian(Header + 4, 4);
		const size_t Available = Bytes.size() - (Position + 8);
		const uint8* Body = Header + 8;
		if (std::memcmp(Header, "fmt ", 4) == 0)
		{
			if (Size > Available || !ReadFormat(Body, Size, Format, Error))
			{
				if (Size > Available)
				{
					Error = "the WAV format chunk is cut off";
				}
				return false;
			}
			bHaveFormat = true;
		}
		else if (std::memcmp(Header, "data", 4) == 0)
		{
			if (!bHaveFormat)
			{
				Error = "the WAV data comes before its format chunk";
				return false;
			}
			const size_t FrameBytes = static_cast<size_t>(Format.Channels) * (Format.BitsPerSample / 8);
			const size_t DataBytes = Size < Available ? Size : Available;
			const size_t FrameCount = DataBytes / FrameBytes;
			if (FrameCount == 0)
			{
				Error = "the WAV file holds no audio";
				return false;
			}
			FZnPcmAudio Audio;
			Audio.SampleRate = static_cast<int32>(Format.SampleRate);
			Audio.Samples.resize(FrameCount);
			const size_t SampleBytes = Format.BitsPerSample / 8;
			for (size_t Frame = 0; Frame < FrameCount; ++Frame)
			{
				float Sum = 0.0f;
				for (size_t Channel = 0; Channel < Format.Channels; ++Channel)
				{
					Sum += ReadSample(Body + Frame * FrameBytes + Channel * SampleBytes, Format);
				}
				Audio.Samples[Frame] = Sum / Format.Channels;
			}
			Out = std::move(Audio);
			return true;
		}
		// Chunks are padded to an even size.
		const size_t Advance = 8 + static_cast<size_t>(Size) + (Size & 1u);
		if (Advance > Bytes.size() - Position)
		{
			break;
		}
		Position += Advance;
	}
	Error = bHaveFormat ? "the WAV file has no data chunk" : "the WAV file has no format chunk";
	return false;
}
