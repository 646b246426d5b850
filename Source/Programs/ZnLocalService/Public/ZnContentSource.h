// What the local service hosts for an utterance: speech audio and the face and body clips that go
// with it. The service asks one content source for everything it generates, so the source can be
// swapped (motion-generator clips and a plain tone, or synthesised speech with a face that says
// the words) without touching the HTTP side. Standalone only; standard library only.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Which JSON shape a generated face clip is written in.
enum class EZnFaceShape : uint8_t
{
	V1, // an array of frames, each an array of the 51 weights
	V2, // an array of frame objects {"frameIndex","bs"}
	ControlRig // {"curve_names","curve_data"}
};

// Which JSON shape a generated body clip is written in.
enum class EZnBodyShape : uint8_t
{
	V1, // {"totalTime","curves","Hips"}
	V2 // an array of frame objects {"frameIndex","pos","rot"}
};

// One utterance to generate, as the request bodies carry it. Speed, volume and pitch are 0..100
// with 50 the voice's normal.
struct FZnSpeechRequest
{
	std::string Text;
	std::string VoiceName;
	// "male" or "female"; anything else leaves the voice's own.
	std::string Gender;
	int32_t Speed = 50;
	int32_t Volume = 50;
	int32_t Pitch = 50;
	uint64_t Seed = 1;
	EZnFaceShape FaceShape = EZnFaceShape::V1;
	EZnBodyShape BodyShape = EZnBodyShape::V1;
};

// What a source produced: a WAV file (RIFF, 16-bit PCM mono) and the two clips, all of one length.
struct FZnGeneratedMedia
{
	std::vector<uint8_t> Wav;
	std::string FaceJson;
	std::string BodyJson;
	double DurationSeconds = 0.0;
	int32_t FrameCount = 0;
	// The voice that spoke, for logs and summaries (empty when no voice was used).
	std::string Voice;
};

class IZnContentSource
{
public:
	virtual ~IZnContentSource() = default;

	// Speech for Request.Text with a face and body as long as the audio. False with Error set
	// when nothing could be made (an empty text is an error, not a silent clip).
	virtual bool Speak(const FZnSpeechRequest& Request, FZnGeneratedMedia& Out, std::string& Error) = 0;

	// A face and body for existing audio (the bytes of a WAV file), as long as it; Out.Wav is the
	// audio itself. False with Error set when the bytes are not a WAV file this source reads.
	virtual bool Animate(const std::vector<uint8_t>& Wav, const FZnSpeechRequest& Request, FZnGeneratedMedia& Out,
		std::string& Error) = 0;
};
