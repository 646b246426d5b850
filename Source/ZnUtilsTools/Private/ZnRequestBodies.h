// The JSON bodies of the motion service's requests and of the speech-synthesis request, written
// in the engine's pretty-print layout (see ZnJsonWriter.h). Keys come in a fixed order and are
// written whatever their values; empty strings become empty JSON strings. Pure functions.
//
// The script entry points with their declared defaults are in UZnDM_BpFuncLib; these take every
// parameter explicitly. Parameters that a body does not carry are accepted and ignored on purpose,
// because the service's message versions differ in what they read (noted at each function).
#pragma once

#include "CoreMinimal.h"

class ZnRequestBodies
{
public:
	// Text broadcast. audio_format, face_tag, body_filter_window, body_filter_order and
	// body_fixed_hips are not written; "compress" is always false and the face gender goes under
	// the key "gender".
	static FString TextBroadcastMotion(const FString& draft_content, const FString& audio_format,
		const FString& tts_voice_name, int32 tts_speed, int32 tts_volume, int32 tts_fm, int32 face_type,
		const FString& face_gender, int32 face_tag, int32 body_motion, int32 body_filter_window,
		int32 body_filter_order, bool body_fixed_hips, int32 body_head_x_rot, bool body_compress);

	// Answer collection: every parameter is written; there is no "compress" member.
	static FString AnswerCollectMotion(const FString& text, const FString& audio_format, const FString& tts_voice_name,
		int32 tts_speed, int32 tts_volume, int32 tts_fm, int32 face_type, const FString& face_gender, int32 face_tag,
		int32 body_motion, int32 body_filter_window, int32 body_filter_order, bool body_fixed_hips,
		int32 body_head_x_rot, bool body_compress);

	// Voice broadcast: "compress" is always false; body_compress goes only into "body_config", and
	// body_fixed feeds the key "body_fixed_hips".
	static FString VoiceBroadcastMotion(const FString& audio_url, const FString& audio_format, int32 is_cache,
		const FString& face_gender, int32 face_tag, int32 face_type, int32 body_motion, int32 body_filter_window,
		int32 body_filter_order, bool body_fixed, int32 body_head_x_rot, bool body_compress);

	// {"text": text}
	static FString Tmp(const FString& text);

	// The legacy body in three shapes chosen by type: 0 voice, 1 text, anything else a question.
	// speedRatio is ignored; only the voice shape sends fixedHips, the others always send true.
	static FString TmpRefText(const FString& refText, int32 speedRatio, int32 voice_speed, int32 voice_volume,
		int32 voice_fm, bool fixedHips, int32 type, int32 face_type, const FString& voice_name, int32 body_motion,
		const FString& gender, const FString& requestId);

	// The flat speech-synthesis body; speed, volume and pitch stay strings on the wire.
	static FString TtsParams(const FString& text, const FString& voiceName, const FString& speed, const FString& volume,
		const FString& pitch, const FString& gender, int32 tag);
};
