// Shared by the speech tests: speaking a request, decoding the clips with the module's decoders,
// and reading the WAV the library writes without the library's own reader.
#pragma once

#include "ZnBodyData.h"
#include "ZnContentSource.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnFaceData.h"
#include "ZnSpeechContentSource.h"
#include "ZnSpeechSynthesizer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace ZnSpeechTest
{
inline FString ToFString(const std::string& Utf8)
{
	const FUTF8ToTCHAR Converted(Utf8.data(), static_cast<int32>(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

inline FZnGeneratedMedia Speak(const FZnSpeechRequest& Request)
{
	FZnGeneratedMedia Media;
	std::string Error;
	EXPECT_TRUE(MakeSpeechContentSource()->Speak(Request, Media, Error)) << Error;
	return Media;
}

inline FZnGeneratedMedia Speak(const std::string& Text, uint64 Seed = 1)
{
	FZnSpeechRequest Request;
	Request.Text = Text;
	Request.Seed = Seed;
	return Speak(Request);
}

// The synthesiser's own output (audio and events) for Request.
inline FZnSynthesizedSpeech Synthesize(const FZnSpeechRequest& Request)
{
	FZnSynthesizedSpeech Speech;
	std::string Error;
	EXPECT_TRUE(FZnSpeechSynthesizer::Shared()->Synthesize(Request, Speech, Error)) << Error;
	return Speech;
}

inline FZnFaceData DecodeFace(const std::string& Json)
{
	FZnFaceData Face;
	UZnDM_BpFuncLib::ParseJsonToFacedata(ToFString(Json), Face);
	return Face;
}

inline FZnBodyData DecodeBody(const std::string& Json)
{
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(ToFString(Json), Body);
	return Body;
}

// The canonical 44-byte header the library promises (RIFF, PCM, mono, 16 bits), checked field by
// field, then the samples as -1..1.
struct FTestAudio
{
	int32 SampleRate = 0;
	std::vector<double> Samples;

	double Duration() const { return SampleRate > 0 ? static_cast<double>(Samples.size()) / SampleRate : 0.0; }
};

inline uint32 Le(const std::vector<uint8_t>& Bytes, size_t At, int Count)
{
	uint32 Value = 0;
	for (int Byte = Count - 1; Byte >= 0; --Byte)
	{
		Value = (Value << 8) | Bytes[At + static_cast<size_t>(Byte)];
	}
	return Value;
}

inline FTestAudio ReadCanonicalWav(const std::vector<uint8_t>& Bytes)
{
	FTestAudio Audio;
	EXPECT_GE(Bytes.size(), 44u);
	if (Bytes.size() < 44)
	{
		return Audio;
	}
	EXPECT_EQ(0, std::memcmp(Bytes.data(), "RIFF", 4));
	EXPECT_EQ(Le(Bytes, 4, 4), Bytes.size() - 8);
	EXPECT_EQ(0, std::memcmp(Bytes.data() + 8, "WAVEfmt ", 8));
	EXPECT_EQ(Le(Bytes, 16, 4), 16u);
	EXPECT_EQ(Le(Bytes, 20, 2), 1u); // PCM
	EXPECT_EQ(Le(Bytes, 22, 2), 1u); // mono
	EXPECT_EQ(Le(Bytes, 34, 2), 16u);
	EXPECT_EQ(0, std::memcmp(Bytes.data() + 36, "data", 4));
	EXPECT_EQ(Le(Bytes, 40, 4), Bytes.size() - 44);
	Audio.SampleRate = static_cast<int32>(Le(Bytes, 24, 4));
	EXPECT_EQ(Le(Bytes, 28, 4), static_cast<uint32>(Audio.SampleRate) * 2);
	for (size_t At = 44; At + 1 < Bytes.size(); At += 2)
	{
		Audio.Samples.push_back(static_cast<int16>(Le(Bytes, At, 2)) / 32768.0);
	}
	return Audio;
}

// RMS of the audio over each frame's 1/30 s, starting at the frame's time.
inline std::vector<double> ForwardFrameRms(const FTestAudio& Audio, int32 FrameCount)
{
	std::vector<double> Levels;
	for (int32 Frame = 0; Frame < FrameCount; ++Frame)
	{
		const size_t First = static_cast<size_t>(static_cast<double>(Frame) * Audio.SampleRate / 30.0);
		const size_t End = std::min(
			Audio.Samples.size(), static_cast<size_t>(static_cast<double>(Frame + 1) * Audio.SampleRate / 30.0));
		double Sum = 0.0;
		for (size_t Index = First; Index < End; ++Index)
		{
			Sum += Audio.Samples[Index] * Audio.Samples[Index];
		}
		Levels.push_back(End > First ? std::sqrt(Sum / static_cast<double>(End - First)) : 0.0);
	}
	return Levels;
}

inline int32 ChannelIndex(const FZnFaceData& Face, const char* Name)
{
	// The version 1 face text has no names: its curves follow the face rig's order, which the
	// decoder fills into CurveNames.
	for (int32 Index = 0; Index < Face.CurveNames.Num(); ++Index)
	{
		if (Face.CurveNames[Index] == FString(Name))
		{
			return Index;
		}
	}
	return -1;
}

inline std::vector<float> Curve(const FZnFaceData& Face, const char* Name)
{
	std::vector<float> Values;
	const int32 Index = ChannelIndex(Face, Name);
	EXPECT_GE(Index, 0) << Name;
	if (Index >= 0)
	{
		for (const float Value : Face.CurveFrames[Index])
		{
			Values.push_back(Value);
		}
	}
	return Values;
}
} // namespace ZnSpeechTest
