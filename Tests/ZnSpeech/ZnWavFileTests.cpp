// Writing and reading WAV files, and animating given audio.
#include "ZnSpeechTestHelpers.h"

#include "ZnWav.h"
#include "ZnWavFile.h"

#include <gtest/gtest.h>

using namespace ZnSpeechTest;

namespace
{
void PutLe(std::vector<uint8>& Out, uint32 Value, int Count)
{
	for (int Byte = 0; Byte < Count; ++Byte)
	{
		Out.push_back(static_cast<uint8>(Value >> (8 * Byte)));
	}
}

void PutTag(std::vector<uint8>& Out, const char* Tag)
{
	Out.insert(Out.end(), Tag, Tag + 4);
}

// A WAV file built byte by byte: format tag, channels, rate, bits, then the raw data bytes.
std::vector<uint8> MakeWav(
	uint16 Tag, uint16 Channels, uint32 Rate, uint16 Bits, const std::vector<uint8>& Data, bool bExtraChunk = false)
{
	std::vector<uint8> Out;
	PutTag(Out, "RIFF");
	PutLe(Out, 0, 4); // patched below
	PutTag(Out, "WAVE");
	if (bExtraChunk)
	{
		PutTag(Out, "LIST");
		PutLe(Out, 3, 4);
		Out.insert(Out.end(), {'a', 'b', 'c', 0}); // odd size, padded
	}
	PutTag(Out, "fmt ");
	PutLe(Out, 16, 4);
	PutLe(Out, Tag, 2);
	PutLe(Out, Channels, 2);
	PutLe(Out, Rate, 4);
	PutLe(Out, Rate * Channels * Bits / 8, 4);
	PutLe(Out, Channels * Bits / 8, 2);
	PutLe(Out, Bits, 2);
	PutTag(Out, "data");
	PutLe(Out, static_cast<uint32>(Data.size()), 4);
	Out.insert(Out.end(), Data.begin(), Data.end());
	const uint32 RiffSize = static_cast<uint32>(Out.size() - 8);
	for (int Byte = 0; Byte < 4; ++Byte)
	{
		Out[4 + Byte] = static_cast<uint8>(RiffSize >> (8 * Byte));
	}
	return Out;
}

// Half a second of a 200 Hz tone, a quarter second of silence, half a second of tone, at 16 kHz.
std::vector<int16> ToneSilenceTone()
{
	std::vector<int16> Samples;
	for (int32 Index = 0; Index < 16000 * 5 / 4; ++Index)
	{
		const bool bSilent = Index >= 8000 && Index < 12000;
		Samples.push_back(
			bSilent ? 0 : static_cast<int16>(12000.0 * std::sin(2.0 * 3.14159265358979 * 200.0 * Index / 16000.0)));
	}
	// Trim to exactly 1.25 s.
	Samples.resize(20000);
	return Samples;
}
} // namespace

TEST(ZnWavFileTests, WrittenFileHasTheCanonicalHeaderAndSamples)
{
	const std::vector<int16> Samples = {0, 1, -1, 32767, -32768, 1234};
	const std::vector<uint8> Bytes = FZnWav::WritePcm16Mono(Samples, 22050);
	ASSERT_EQ(Bytes.size(), 44u + 12u);
	const FTestAudio Audio = ReadCanonicalWav(Bytes);
	EXPECT_EQ(Audio.SampleRate, 22050);
	ASSERT_EQ(Audio.Samples.size(), Samples.size());
	for (size_t Index = 0; Index < Samples.size(); ++Index)
	{
		EXPECT_EQ(Audio.Samples[Index], Samples[Index] / 32768.0);
	}
}

TEST(ZnWavFileTests, ReadsBackWhatItWrites)
{
	const std::vector<int16> Samples = {0, 16384, -16384, 32767, -32768};
	FZnPcmAudio Audio;
	std::string Error;
	ASSERT_TRUE(ReadWav(FZnWav::WritePcm16Mono(Samples, 8000), Audio, Error)) << Error;
	EXPECT_EQ(Audio.SampleRate, 8000);
	ASSERT_EQ(Audio.Samples.size(), 5u);
	EXPECT_FLOAT_EQ(Audio.Samples[1], 0.5f);
	EXPECT_FLOAT_EQ(Audio.Samples[2], -0.5f);
	EXPECT_FLOAT_EQ(Audio.Samples[4], -1.0f);
}

TEST(ZnWavFileTests, ReadsOtherPcmWidthsFloatAndStereoMixedDown)
{
	FZnPcmAudio Audio;
	std::string Error;
	// 8-bit is unsigned with 128 as silence.
	ASSERT_TRUE(ReadWav(MakeWav(1, 1, 8000, 8, {128, 192, 64}), Audio, Error)) << Error;
	EXPECT_FLOAT_EQ(Audio.Samples[0], 0.0f);
	EXPECT_FLOAT_EQ(Audio.Samples[1], 0.5f);
	EXPECT_FLOAT_EQ(Audio.Samples[2], -0.5f);
	// 24-bit: 0x400000 is a half, 0xC00000 minus a half.
	ASSERT_TRUE(ReadWav(MakeWav(1, 1, 8000, 24, {0x00, 0x00, 0x40, 0x00, 0x00, 0xC0}), Audio, Error)) << Error;
	EXPECT_FLOAT_EQ(Audio.Samples[0], 0.5f);
	EXPECT_FLOAT_EQ(Audio.Samples[1], -0.5f);
	// 32-bit float 0.25 (0x3E800000), stereo with -0.75 (0xBF400000) on the right: the mix is -0.25.
	ASSERT_TRUE(ReadWav(MakeWav(3, 2, 48000, 32, {0x00, 0x00, 0x80, 0x3E, 0x00, 0x00, 0x40, 0xBF}), Audio, Error))
		<< Error;
	EXPECT_EQ(Audio.SampleRate, 48000);
	ASSERT_EQ(Audio.Samples.size(), 1u);
	EXPECT_FLOAT_EQ(Audio.Samples[0], -0.25f);
	// Unknown chunks (with their odd-size padding) are skipped.
	ASSERT_TRUE(ReadWav(MakeWav(1, 1, 8000, 16, {0x00, 0x40}, true), Audio, Error)) << Error;
	EXPECT_FLOAT_EQ(Audio.Samples[0], 0.5f);
}

TEST(ZnWavFileTests, DataLongerThanTheFileIsReadAsFarAsItGoes)
{
	std::vector<uint8> Bytes = MakeWav(1, 1, 8000, 16, {0x00, 0x40, 0x00, 0xC0});
	// Streaming writers leave the data size at its largest.
	for (int Byte = 0; Byte < 4; ++Byte)
	{
		Bytes[40 + Byte] = 0xFF;
	}
	Bytes.push_back(0x11); // half a sample: not read
	FZnPcmAudio Audio;
	std::string Error;
	ASSERT_TRUE(ReadWav(Bytes, Audio, Error)) << Error;
	ASSERT_EQ(Audio.Samples.size(), 2u);
	EXPECT_FLOAT_EQ(Audio.Samples[1], -0.5f);
}

TEST(ZnWavFileTests, AnimateFollowsTheLoudnessOfGivenAudio)
{
	const std::vector<uint8> Wav = FZnWav::WritePcm16Mono(ToneSilenceTone(), 16000);
	FZnSpeechRequest Request;
	FZnGeneratedMedia Media;
	std::string Error;
	ASSERT_TRUE(MakeSpeechContentSource()->Animate(Wav, Request, Media, Error)) << Error;
	EXPECT_EQ(Media.Wav, Wav);
	EXPECT_TRUE(Media.Voice.empty());
	EXPECT_DOUBLE_EQ(Media.DurationSeconds, 1.25);
	// 1.25 s at 30 frames per second: 37.5, rounded to 38.
	EXPECT_EQ(Media.FrameCount, 38);
	const std::vector<float> Jaw = Curve(DecodeFace(Media.FaceJson), "JawOpen");
	ASSERT_EQ(Jaw.size(), 38u);
	// Open in the tone (frames 2..13 and 26..35), closed in the silence (0.5..0.75 s: frames 17..21).
	for (size_t Frame = 2; Frame <= 13; ++Frame)
	{
		EXPECT_GT(Jaw[Frame], 0.5f) << Frame;
	}
	for (size_t Frame = 17; Frame <= 21; ++Frame)
	{
		EXPECT_LT(Jaw[Frame], 0.02f) << Frame;
	}
	for (size_t Frame = 26; Frame <= 35; ++Frame)
	{
		EXPECT_GT(Jaw[Frame], 0.5f) << Frame;
	}
	const FZnBodyData Body = DecodeBody(Media.BodyJson);
	ASSERT_EQ(Body.BoneFrames.Num(), 54);
	EXPECT_EQ(Body.BoneFrames[0].Num(), 38);
}

TEST(ZnWavFileTests, AnimateOfSilenceKeepsTheMouthClosed)
{
	const std::vector<uint8> Wav = FZnWav::WritePcm16Mono(std::vector<int16>(16000, 3), 16000);
	FZnGeneratedMedia Media;
	std::string Error;
	ASSERT_TRUE(MakeSpeechContentSource()->Animate(Wav, FZnSpeechRequest(), Media, Error)) << Error;
	for (const float Value : Curve(DecodeFace(Media.FaceJson), "JawOpen"))
	{
		EXPECT_EQ(Value, 0.0f);
	}
}
