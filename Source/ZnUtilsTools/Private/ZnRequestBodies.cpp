#include "ZnRequestBodies.h"

#include "ZnJsonWriter.h"

namespace
{
// Every body is a few hundred characters; one reservation avoids regrowing for the common case.
constexpr int32 BodyReserve = 512;

// The motion messages share these three blocks; the legacy reference-text shapes have blocks of their own.
void WriteTtsConfig(FZnJsonWriter& Writer, const FString& VoiceName, int32 Speed, int32 Volume, int32 Fm)
{
	Writer.WriteObjectStart(TEXT("tts_config"));
	Writer.WriteValue(TEXT("tts_voice_name"), VoiceName);
	Writer.WriteValue(TEXT("tts_speed"), Speed);
	Writer.WriteValue(TEXT("tts_volume"), Volume);
	Writer.WriteValue(TEXT("tts_fm"), Fm);
	Writer.WriteObjectEnd();
}

void WriteTaggedFaceConfig(FZnJsonWriter& Writer, int32 FaceType, const FString& FaceGender, int32 FaceTag)
{
	Writer.WriteObjectStart(TEXT("face_config"));
	Writer.WriteValue(TEXT("face_type"), FaceType);
	Writer.WriteValue(TEXT("face_gender"), FaceGender);
	Writer.WriteValue(TEXT("face_tag"), FaceTag);
	Writer.WriteObjectEnd();
}

void WriteFilteredBodyConfig(FZnJsonWriter& Writer, int32 Motion, int32 FilterWindow, int32 FilterOrder,
	bool bFixedHips, int32 HeadXRot, bool bCompress)
{
	Writer.WriteObjectStart(TEXT("body_config"));
	Writer.WriteValue(TEXT("body_motion"), Motion);
	Writer.WriteValue(TEXT("body_filter_window"), FilterWindow);
	Writer.WriteValue(TEXT("body_filter_order"), FilterOrder);
	Writer.WriteValue(TEXT("body_fixed_hips"), bFixedHips);
	Writer.WriteValue(TEXT("body_head_x_rot"), HeadXRot);
	Writer.WriteValue(TEXT("body_compress"), bCompress);
	Writer.WriteObjectEnd();
}
} // namespace

FString ZnRequestBodies::TextBroadcastMotion(const FString& draft_content, const FString& audio_format,
	const FString& tts_voice_name, int32 tts_speed, int32 tts_volume, int32 tts_fm, int32 face_type,
	const FString& face_gender, int32 face_tag, int32 body_motion, int32 body_filter_window, int32 body_filter_order,
	bool body_fixed_hips, int32 body_head_x_rot, bool body_compress)
{
	FString Body;
	Body.Reserve(BodyReserve + draft_content.Len());
	FZnJsonWriter Writer(Body);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("draft_content"), draft_content);
	Writer.WriteValue(TEXT("compress"), false);
	WriteTtsConfig(Writer, tts_voice_name, tts_speed, tts_volume, tts_fm);
	Writer.WriteObjectStart(TEXT("face_config"));
	Writer.WriteValue(TEXT("face_type"), face_type);
	Writer.WriteValue(TEXT("gender"), face_gender);
	Writer.WriteObjectEnd();
	Writer.WriteObjectStart(TEXT("body_config"));
	Writer.WriteValue(TEXT("body_motion"), body_motion);
	Writer.WriteValue(TEXT("body_head_x_rot"), body_head_x_rot);
	Writer.WriteValue(TEXT("body_compress"), body_compress);
	Writer.WriteObjectEnd();
	Writer.WriteObjectEnd();
	return Body;
}

FString ZnRequestBodies::AnswerCollectMotion(const FString& text, const FString& audio_format,
	const FString& tts_voice_name, int32 tts_speed, int32 tts_volume, int32 tts_fm, int32 face_type,
	const FString& face_gender, int32 face_tag, int32 body_motion, int32 body_filter_window, int32 body_filter_order,
	bool body_fixed_hips, int32 body_head_x_rot, bool body_compress)
{
	FString Body;
	Body.Reserve(BodyReserve + text.Len());
	FZnJsonWriter Writer(Body);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("text"), text);
	Writer.WriteValue(TEXT("audio_format"), audio_format);
	WriteTtsConfig(Writer, tts_voice_name, tts_speed, tts_volume, tts_fm);
	WriteTaggedFaceConfig(Writer, face_type, face_gender, face_tag);
	WriteFilteredBodyConfig(
		Writer, body_motion, body_filter_window, body_filter_order, body_fixed_hips, body_head_x_rot, body_compress);
	Writer.WriteObjectEnd();
	return Body;
}

FString ZnRequestBodies::VoiceBroadcastMotion(const FString& audio_url, const FString& audio_format, int32 is_cache,
	const FString& face_gender, int32 face_tag, int32 face_type, int32 body_motion, int32 body_filter_window,
	int32 body_filter_order, bool body_fixed, int32 body_head_x_rot, bool body_compress)
{
	FString Body;
	Body.Reserve(BodyReserve + audio_url.Len());
	FZnJsonWriter Writer(Body);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("audio_url"), audio_url);
	Writer.WriteValue(TEXT("audio_format"), audio_format);
	Writer.WriteValue(TEXT("is_cache"), is_cache);
	Writer.WriteValue(TEXT("compress"), false);
	WriteTaggedFaceConfig(Writer, face_type, face_gender, face_tag);
	WriteFilteredBodyConfig(
		Writer, body_motion, body_filter_window, body_filter_order, body_fixed, body_head_x_rot, body_compress);
	Writer.WriteObjectEnd();
	return Body;
}

FString ZnRequestBodies::Tmp(const FString& text)
{
	FString Body;
	Body.Reserve(16 + text.Len());
	FZnJsonWriter Writer(Body);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("text"), text);
	Writer.WriteObjectEnd();
	return Body;
}

FString ZnRequestBodies::TmpRefText(const FString& refText, int32 speedRatio, int32 voice_speed, int32 voice_volume,
	int32 voice_fm, bool fixedHips, int32 type, int32 face_type, const FString& voice_name, int32 body_motion,
	const FString& gender, const FString& requestId)
{
	FString Body;
	Body.Reserve(BodyReserve + refText.Len() + requestId.Len());
	FZnJsonWriter Writer(Body);

	const auto WriteFaceConfig = [&]()
	{
		Writer.WriteObjectStart(TEXT("face_config"));
		Writer.WriteValue(TEXT("face_type"), face_type);
		Writer.WriteValue(TEXT("gender"), gender);
		Writer.WriteObjectEnd();
	};
	// The text and question shapes pin the hips and use the v005 base, whatever the caller asked.
	const auto WriteFixedBodyConfig = [&]()
	{
		Writer.WriteObjectStart(TEXT("body_config"));
		Writer.WriteValue(TEXT("body_motion"), body_motion);
		Writer.WriteValue(TEXT("base_name"), TEXT("v005"));
		Writer.WriteValue(TEXT("fixed_hips"), true);
		Writer.WriteValue(TEXT("limit_degree"), 1);
		Writer.WriteValue(TEXT("limit_spine"), true);
		Writer.WriteObjectEnd();
	};

	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("request_id"), requestId);
	if (type == 0)
	{
		Writer.WriteValue(TEXT("audio_url"), refText);
		Writer.WriteValue(TEXT("compress"), false);
		WriteFaceConfig();
		Writer.WriteObjectStart(TEXT("body_config"));
		Writer.WriteValue(TEXT("body_motion"), body_motion);
		Writer.WriteValue(TEXT("fixed_hips"), fixedHips);
		Writer.WriteValue(TEXT("limit_degree"), 1);
		Writer.WriteValue(TEXT("limit_spine"), true);
		Writer.WriteObjectEnd();
	}
	else if (type == 1)
	{
		Writer.WriteValue(TEXT("draft_content"), refText);
		Writer.WriteValue(TEXT("compress"), false);
		Writer.WriteObjectStart(TEXT("tts_config"));
		Writer.WriteValue(TEXT("voice_name"), voice_name);
		Writer.WriteValue(TEXT("speed"), voice_speed);
		Writer.WriteValue(TEXT("volume"), voice_volume);
		Writer.WriteValue(TEXT("fm"), voice_fm);
		Writer.WriteObjectEnd();
		WriteFaceConfig();
		WriteFixedBodyConfig();
	}
	else
	{
		Writer.WriteValue(TEXT("text"), refText);
		Writer.WriteValue(TEXT("compress"), false);
		Writer.WriteObjectStart(TEXT("nlp_config"));
		Writer.WriteValue(TEXT("qa_type"), 2);
		Writer.WriteValue(TEXT("go_chatBot"), true);
		Writer.WriteValue(TEXT("is_random"), true);
		Writer.WriteObjectEnd();
		Writer.WriteObjectStart(TEXT("tts_config"));
		Writer.WriteValue(TEXT("voice_name"), voice_name);
		Writer.WriteValue(TEXT("speed"), voice_speed);
		Writer.WriteObjectEnd();
		WriteFaceConfig();
		WriteFixedBodyConfig();
	}
	Writer.WriteObjectEnd();
	return Body;
}

FString ZnRequestBodies::TtsParams(const FString& text, const FString& voiceName, const FString& speed,
	const FString& volume, const FString& pitch, const FString& gender, int32 tag)
{
	FString Body;
	Body.Reserve(128 + text.Len());
	FZnJsonWriter Writer(Body);
	Writer.WriteObjectStart();
	Writer.WriteValue(TEXT("text"), text);
	Writer.WriteValue(TEXT("voiceName"), voiceName);
	Writer.WriteValue(TEXT("speed"), speed);
	Writer.WriteValue(TEXT("volume"), volume);
	Writer.WriteValue(TEXT("pitch"), pitch);
	Writer.WriteValue(TEXT("gender"), gender);
	Writer.WriteValue(TEXT("tag"), tag);
	Writer.WriteObjectEnd();
	return Body;
}
