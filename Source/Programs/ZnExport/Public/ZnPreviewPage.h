// A self-contained preview page of a clip: DIR/index.html with the data, the script and the sound
// inside it, so it opens from disk in any current browser and fetches nothing.
//
// The page draws the body as a skeleton posed by forward kinematics on the export skeleton's rest
// pose (the same joints, offsets and rotations a BVH export holds), in perspective, with a camera
// that orbits by dragging and zooms with the wheel; the face channels as a heat map over time
// with a cursor; and plays the sound in step with both. It has play, pause, a scrub bar, a speed
// choice and shows the time and frame. Scripts can drive it through window.znPreview (seek(t),
// play(), pause(), setSpeed(s), orbit(yaw, pitch, distance), joints(), state()).
//
// The records passed in are only read; nothing is kept between calls, so calls may run on any
// thread.
#pragma once

#include "CoreMinimal.h"
#include "ZnBodyData.h"
#include "ZnExportMotion.h"
#include "ZnFaceData.h"

#include <string>

struct FZnPreviewInput
{
	// Either may be null, not both. Only read.
	const FZnBodyData* Body = nullptr;
	const FZnFaceData* Face = nullptr;
	// The speech audio as downloaded (WAV, MP3, Ogg, FLAC or MP4 audio); empty for none.
	TArray<uint8> Audio;
	// Shown as the page's heading.
	std::string Title = "Clip preview";
};

class FZnPreviewPage
{
public:
	// The MIME type of audio bytes from their signature; false for anything else.
	static bool AudioMimeType(const TArray<uint8>& Audio, std::string& OutMimeType);

	// The page for clips already laid out in frames; AudioDataUri is a data: URI or empty.
	static std::string ToHtml(const FZnExportMotion* Body, const FZnExportFace* Face, const std::string& AudioDataUri,
		const std::string& Title);

	// Creates Directory when missing and writes Directory/index.html, whole or not at all. False
	// with a one-line message, nothing written, when neither clip is given, a given clip has no
	// frames, the audio is of no known kind, or the folder or file cannot be made.
	static bool Write(const FZnPreviewInput& Input, const std::string& Directory, std::string& OutError);
};
