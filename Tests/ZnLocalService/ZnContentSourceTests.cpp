// The default content source: the words-per-second rule, the WAV it writes and the WAV files it
// reads, and clips of the requested shapes and length.
#include "ZnMotionContentSource.h"
#include "ZnWav.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

namespace
{
using Json = nlohmann::ordered_json;
}

TEST(ZnMotionContentSource, CountsWordsByTheRule)
{
	EXPECT_EQ(FZnMotionContentSource::CountWords(""), 0);
	EXPECT_EQ(FZnMotionContentSource::CountWords(" \t\r\n "), 0);
	EXPECT_EQ(FZnMotionContentSource::CountWords("one"), 1);
	EXPECT_EQ(FZnMotionContentSource::CountWords("  Hello,   world! "), 2);
	EXPECT_EQ(FZnMotionContentSource::CountWords("don't-stop"), 1);
	// Each ideograph is a word, and ends a Latin run it touches.
	EXPECT_EQ(FZnMotionContentSource::CountWords("你好世界"), 4);
	EXPECT_EQ(FZnMotionContentSource::CountWords("ok你好ok"), 4);
	// The ideographic space separates; accented Latin letters are below U+2E80 and join their word.
	EXPECT_EQ(FZnMotionContentSource::CountWords("café\xE3\x80\x80naïve"), 2);
	// Broken UTF-8 counts as ordinary characters.
	EXPECT_EQ(FZnMotionContentSource::CountWords("\xE4\xBD a \xFF"), 3);
}

TEST(ZnMotionContentSource, FramesFollowTheSpeed)
{
	EXPECT_DOUBLE_EQ(FZnMotionContentSource::WordsPerSecond(50), 2.5);
	EXPECT_DOUBLE_EQ(FZnMotionContentSource::WordsPerSecond(0), 1.25);
	EXPECT_DOUBLE_EQ(FZnMotionContentSource::WordsPerSecond(100), 3.75);
	EXPECT_DOUBLE_EQ(FZnMotionContentSource::WordsPerSecond(-40), 1.25);
	EXPECT_DOUBLE_EQ(FZnMotionContentSource::WordsPerSecond(900), 3.75);
	// 1 word at 2.5 per second: 0.4 s, 12 frames; 7 words at speed 80 (3.25 per second): 64.6 frames.
	EXPECT_EQ(FZnMotionContentSource::FrameCountForText("a", 50), 12);
	EXPECT_EQ(FZnMotionContentSource::FrameCountForText("a b c d e f g", 80), 65);
	EXPECT_EQ(FZnMotionContentSource::FrameCountForText("   ", 50), 0);
	EXPECT_EQ(FZnMotionContentSource::FrameCountForDuration(0.0), 1);
	EXPECT_EQ(FZnMotionContentSource::FrameCountForDuration(0.05), 2);
	EXPECT_EQ(FZnMotionContentSource::FrameCountForDuration(1e12), 108000);
}

TEST(ZnMotionContentSource, SpeakMakesAllThreeOfOneLength)
{
	FZnMotionContentSource Source;
	FZnSpeechRequest Request;
	Request.Text = "a b c";
	Request.FaceShape = EZnFaceShape::V2;
	Request.BodyShape = EZnBodyShape::V2;
	FZnGeneratedMedia Media;
	std::string Error;
	ASSERT_TRUE(Source.Speak(Request, Media, Error)) << Error;
	// 3 words: 1.2 s, 36 frames, 28800 samples.
	EXPECT_EQ(Media.FrameCount, 36);
	EXPECT_DOUBLE_EQ(Media.DurationSeconds, 1.2);
	EXPECT_EQ(Media.Wav.size(), 44u + 28800u * 2u);
	FZnWavInfo Info;
	ASSERT_TRUE(FZnWav::ReadInfo(Media.Wav.data(), Media.Wav.size(), Info, Error));
	EXPECT_EQ(Info.SampleRate, 24000);
	EXPECT_EQ(Info.Channels, 1);
	EXPECT_EQ(Info.BitsPerSample, 16);
	EXPECT_EQ(Info.SampleFrames, 28800);
	const Json Face = Json::parse(Media.FaceJson);
	ASSERT_EQ(Face.size(), 36u);
	EXPECT_EQ(Face[35]["frameIndex"], 36);
	const Json Body = Json::parse(Media.BodyJson);
	ASSERT_EQ(Body.size(), 36u);
	EXPECT_TRUE(Body[0].contains("rot"));
}

TEST(ZnMotionContentSource, VolumeZeroIsSilentAndLouderIsLouder)
{
	FZnMotionContentSource Source;
	FZnSpeechRequest Request;
	Request.Text = "one two";
	const auto Peak = [&](int32_t Volume)
	{
		Request.Volume = Volume;
		FZnGeneratedMedia Media;
		std::string Error;
		EXPECT_TRUE(Source.Speak(Request, Media, Error));
		int Highest = 0;
		for (size_t Offset = 44; Offset + 1 < Media.Wav.size(); Offset += 2)
		{
			const int16_t Sample = int16_t(Media.Wav[Offset] | Media.Wav[Offset + 1] << 8);
			Highest = std::max(Highest, std::abs(int(Sample)));
		}
		return Highest;
	};
	EXPECT_EQ(Peak(0), 0);
	EXPECT_GT(Peak(100), Peak(50));
	EXPECT_LE(Peak(100), 12000);
}

TEST(ZnMotionContentSource, EmptyTextIsAnError)
{
	FZnMotionContentSource Source;
	FZnSpeechRequest Request;
	Request.Text = " ";
	FZnGeneratedMedia Media;
	Media.FrameCount = 7;
	std::string Error;
	EXPECT_FALSE(Source.Speak(Request, Media, Error));
	EXPECT_EQ(Error, "the text has no words to say");
	EXPECT_EQ(Media.FrameCount, 7);
}

TEST(ZnMotionContentSource, AnimateKeepsTheAudioAndMatchesItsLength)
{
	FZnMotionContentSource Source;
	// 0.7 s at 24 kHz: 21 frames.
	const std::vector<uint8_t> Wav = FZnWav::WritePcm16Mono(std::vector<int16_t>(16800, 5), 24000);
	FZnSpeechRequest Request;
	Request.FaceShape = EZnFaceShape::ControlRig;
	FZnGeneratedMedia Media;
	std::string Error;
	ASSERT_TRUE(Source.Animate(Wav, Request, Media, Error)) << Error;
	EXPECT_EQ(Media.Wav, Wav);
	EXPECT_EQ(Media.FrameCount, 21);
	EXPECT_DOUBLE_EQ(Media.DurationSeconds, 0.7);
	EXPECT_EQ(Json::parse(Media.FaceJson)["curve_data"].size(), 21u);
	EXPECT_FLOAT_EQ(float(Json::parse(Media.BodyJson)["totalTime"].get<double>()), 0.7f);

	const std::vector<uint8_t> NotWav = {'R', 'I', 'F', 'F', 0, 0, 0, 0, 'A', 'V', 'I', ' '};
	EXPECT_FALSE(Source.Animate(NotWav, Request, Media, Error));
	EXPECT_EQ(Error, "not a WAV file (no RIFF/WAVE header)");
	EXPECT_EQ(Media.FrameCount, 21);
}

TEST(ZnWav, WritesTheCanonicalHeader)
{
	const std::vector<uint8_t> Wav = FZnWav::WritePcm16Mono({1, -1, 0x1234}, 8000);
	const std::vector<uint8_t> Expected = {'R', 'I', 'F', 'F', 42, 0, 0, 0, 'W', 'A', 'V', 'E', 'f', 'm', 't', ' ', 16,
		0, 0, 0, 1, 0, 1, 0, 0x40, 0x1F, 0, 0, 0x80, 0x3E, 0, 0, 2, 0, 16, 0, 'd', 'a', 't', 'a', 6, 0, 0, 0, 1, 0,
		0xFF, 0xFF, 0x34, 0x12};
	EXPECT_EQ(Wav, Expected);
}

TEST(ZnWav, RefusesWhatIsNotPcmWav)
{
	const std::vector<uint8_t> Good = FZnWav::WritePcm16Mono(std::vector<int16_t>(10, 0), 8000);
	FZnWavInfo Info;
	Info.SampleRate = 123;
	std::string Error;
	const auto Refuse = [&](std::vector<uint8_t> Bytes, const std::string& Needle)
	{
		Error.clear();
		EXPECT_FALSE(FZnWav::ReadInfo(Bytes.data(), Bytes.size(), Info, Error)) << Needle;
		EXPECT_NE(Error.find(Needle), std::string::npos) << Error;
		EXPECT_EQ(Info.SampleRate, 123);
	};
	Refuse({}, "no RIFF/WAVE header");
	Refuse(std::vector<uint8_t>(Good.begin(), Good.begin() + 20), "format chunk is cut short");
	Refuse(std::vector<uint8_t>(Good.begin(), Good.begin() + 12), "no format chunk");
	Refuse(std::vector<uint8_t>(Good.begin(), Good.begin() + 36), "no data chunk");
	std::vector<uint8_t> Bytes = Good;
	Bytes[20] = 3; // IEEE float
	Refuse(Bytes, "not integer PCM (format 3)");
	Bytes = Good;
	Bytes[34] = 12; // 12-bit samples
	Refuse(Bytes, "unusual sample size");
	Bytes = Good;
	Bytes[24] = Bytes[25] = 0; // rate 0
	Refuse(Bytes, "no sample rate");
	Bytes = Good;
	Bytes[22] = 0; // no channels
	Refuse(Bytes, "no channels");
	// "data" before "fmt ".
	Bytes = {'R', 'I', 'F', 'F', 0, 0, 0, 0, 'W', 'A', 'V', 'E', 'd', 'a', 't', 'a', 0, 0, 0, 0};
	Refuse(Bytes, "data chunk comes before its format chunk");
	// A chunk longer than the file.
	Bytes = {'R', 'I', 'F', 'F', 0, 0, 0, 0, 'W', 'A', 'V', 'E', 'L', 'I', 'S', 'T', 0xFF, 0xFF, 0xFF, 0x7F};
	Refuse(Bytes, "runs past the end");

	// A data chunk cut short counts the samples present.
	Bytes = std::vector<uint8_t>(Good.begin(), Good.end() - 5);
	ASSERT_TRUE(FZnWav::ReadInfo(Bytes.data(), Bytes.size(), Info, Error)) << Error;
	EXPECT_EQ(Info.SampleFrames, 7);
}
