// Reading the request bodies the motion and speech paths accept into what the content source
// needs. Each reader names the member that was wrong in Error; unknown members are ignored.
//
// Which shapes a request's clips come in:
// - "face_config"."face_type": 2 gives V2 face frames, 3 control-rig curves, anything else V1;
// - "body_config"."body_motion": 2 gives V2 body frames, anything else V1;
// - an optional top-level "face_shape" ("v1", "v2", "control_rig") or "body_shape" ("v1", "v2")
//   overrides them (the speech body has no face or body config, so it uses only these).
// Prosody members (speed, volume, pitch / fm) are numbers (or, in the speech body, strings of
// one) truncated to integers and clamped to 0..100; a missing member keeps the default 50.
#pragma once

#include "ZnContentSource.h"

#include <string>

class FZnServiceBodies
{
public:
	// At most this many words are said for one request (MalformedBody beyond it).
	static constexpr int32_t MostWords = 500;

	// Text broadcast: "draft_content" (required), "tts_config", "face_config", "body_config".
	static bool ReadTextBroadcast(const std::string& Body, FZnSpeechRequest& Out, std::string& Error);
	// Answer collection: "text" (required, the question), "tts_config", "face_config", "body_config".
	static bool ReadAnswerCollect(const std::string& Body, FZnSpeechRequest& Out, std::string& Error);
	// Voice broadcast: "audio_url" (required), "face_config", "body_config".
	static bool ReadVoiceBroadcast(
		const std::string& Body, std::string& AudioUrl, FZnSpeechRequest& Out, std::string& Error);
	// Speech synthesis: "text" (required), "voiceName", "speed", "volume", "pitch", "gender", "tag".
	static bool ReadSpeech(const std::string& Body, FZnSpeechRequest& Out, std::string& Error);

	// A seed for the clips that depends only on the text (the same text, the same motion).
	static uint64_t SeedOf(const std::string& Text);
};
