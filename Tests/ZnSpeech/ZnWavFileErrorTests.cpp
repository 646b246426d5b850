// Audio that cannot be read is refused with a message, and nothing is produced.
#include "ZnSpeechTestHelpers.h"

#include "ZnWav.h"
#include "ZnWavFile.h"

#include <gtest/gtest.h>

using namespace ZnSpeechTest;

namespace
{
std::vector<uint8> Canonical()
{
	return FZnWav::WritePcm16Mono({100, -100, 200, -200}, 8000);
}

std::string RefusalOf(const std::vector<uint8>& Bytes)
{
	FZnGeneratedMedia Media;
	Media.Voice = "untouched";
	Media.FrameCount = -7;
	std::string Error;
	EXPECT_FALSE(MakeSpeechContentSource()->Animate(Bytes, FZnSpeechRequest(), Media, Error));
	EXPECT_EQ(Media.Voice, "untouched");
	EXPECT_EQ(Media.FrameCount, -7);
	EXPECT_TRUE(Media.FaceJson.empty());
	return Error;
}

void SetLe16(std::vector<uint8>& Bytes, size_t At, uint16 Value)
{
	Bytes[At] = static_cast<uint8>(Value);
	Bytes[At + 1] = static_cast<uint8>(Value >> 8);
}
} // namespace

TEST(ZnWavFileErrorTests, EmptyAndShortInputs)
{
	EXPECT_EQ(RefusalOf({}), "not a WAV file (no RIFF/WAVE header)");
	EXPECT_EQ(RefusalOf({'R', 'I', 'F', 'F'}), "not a WAV file (no RIFF/WAVE header)");
}

TEST(ZnWavFileErrorTests, OtherFileKinds)
{
	const std::string Mp3 = "ID3\x03\x00\x00\x00\x00\x00\x00 and then mpeg frames";
	EXPECT_EQ(RefusalOf(std::vector<uint8>(Mp3.begin(), Mp3.end())), "not a WAV file (no RIFF/WAVE header)");
	const std::string Json = "{\"code\":0,\"message\":\"ok\"}";
	EXPECT_EQ(RefusalOf(std::vector<uint8>(Json.begin(), Json.end())), "not a WAV file (no RIFF/WAVE header)");
	std::vector<uint8> Avi = Canonical();
	std::copy_n("AVI ", 4, Avi.begin() + 8);
	EXPECT_EQ(RefusalOf(Avi), "not a WAV file (no RIFF/WAVE header)");
}

TEST(ZnWavFileErrorTests, UnsupportedEncodings)
{
	std::vector<uint8> Adpcm = Canonical();
	SetLe16(Adpcm, 20, 2); // Microsoft ADPCM
	EXPECT_EQ(RefusalOf(Adpcm), "unsupported WAV encoding (format 2, 16 bits); only PCM and 32-bit float are read");
	std::vector<uint8> Twelve = Canonical();
	SetLe16(Twelve, 34, 12);
	EXPECT_EQ(RefusalOf(Twelve), "unsupported WAV encoding (format 1, 12 bits); only PCM and 32-bit float are read");
	std::vector<uint8> Double = Canonical();
	SetLe16(Double, 20, 3);
	SetLe16(Double, 34, 64);
	EXPECT_EQ(RefusalOf(Double), "unsupported WAV encoding (format 3, 64 bits); only PCM and 32-bit float are read");
}

TEST(ZnWavFileErrorTests, BrokenFormats)
{
	std::vector<uint8> NoChannels = Canonical();
	SetLe16(NoChannels, 22, 0);
	EXPECT_EQ(RefusalOf(NoChannels), "the WAV file has no channels");
	std::vector<uint8> NoRate = Canonical();
	std::fill_n(NoRate.begin() + 24, 4, 0);
	EXPECT_EQ(RefusalOf(NoRate), "unsupported WAV sample rate 0");
	std::vector<uint8> ShortFormat = Canonical();
	ShortFormat[16] = 10;
	EXPECT_EQ(RefusalOf(ShortFormat), "the WAV format chunk is too short");
}

TEST(ZnWavFileErrorTests, MissingOrEmptyChunks)
{
	// Header and format only.
	std::vector<uint8> NoData = Canonical();
	NoData.resize(36);
	EXPECT_EQ(RefusalOf(NoData), "the WAV file has no data chunk");
	// Header only.
	std::vector<uint8> NoFormat = Canonical();
	NoFormat.resize(12);
	EXPECT_EQ(RefusalOf(NoFormat), "the WAV file has no format chunk");
	// The format chunk claims more than the file has.
	std::vector<uint8> CutFormat = Canonical();
	CutFormat.resize(30);
	EXPECT_EQ(RefusalOf(CutFormat), "the WAV format chunk is cut off");
	// A data chunk with no whole sample.
	std::vector<uint8> Empty = FZnWav::WritePcm16Mono({}, 8000);
	EXPECT_EQ(RefusalOf(Empty), "the WAV file holds no audio");
	Empty.push_back(0x01);
	EXPECT_EQ(RefusalOf(Empty), "the WAV file holds no audio");
	// Data before the format.
	std::vector<uint8> DataFirst = {
		'R', 'I', 'F', 'F', 20, 0, 0, 0, 'W', 'A', 'V', 'E', 'd', 'a', 't', 'a', 2, 0, 0, 0, 1, 2};
	EXPECT_EQ(RefusalOf(DataFirst), "the WAV data comes before its format chunk");
}

TEST(ZnWavFileErrorTests, EveryTruncationOfAFileIsHandled)
{
	// Every prefix of a valid file is either refused with a message or read as far as it goes.
	const std::vector<uint8> Whole = FZnWav::WritePcm16Mono({1000, -1000, 2000, -2000, 3000}, 8000);
	for (size_t Length = 0; Length < Whole.size(); ++Length)
	{
		const std::vector<uint8> Prefix(Whole.begin(), Whole.begin() + static_cast<std::ptrdiff_t>(Length));
		FZnPcmAudio Audio;
		std::string Error;
		if (ReadWav(Prefix, Audio, Error))
		{
			EXPECT_EQ(Audio.Samples.size(), (Length - 44) / 2) << Length;
		}
		else
		{
			EXPECT_FALSE(Error.empty()) << Length;
			EXPECT_LT(Length, 46u);
		}
	}
}
