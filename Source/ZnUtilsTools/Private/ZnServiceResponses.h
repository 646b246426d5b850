// Reading the motion service's and the speech service's responses, and choosing an endpoint.
//
// Every parser reads into locals and assigns the caller's outputs only when it has finished, so
// a false result never leaves half an answer behind. Outputs a response does not carry keep their
// previous values (callers that must tell a missing value from a left-over one clear them first).
// Field names are matched the engine's way, without regard to ASCII case. Pure functions.
#pragma once

#include "CoreMinimal.h"
#include "ZnDM_BpFuncLib.h"

class ZnServiceResponses
{
public:
	// The motion envelope {"code": 0, "data": {...}}. False when the text is not a JSON object,
	// "code" is missing or not 0, or "data" is not an object; then nothing is written. Otherwise
	// true, and each URL or the answer is written only when its enclosing object is present in
	// "data" (a missing string member inside it gives ""):
	// - VoiceBroadcast: audioUrl = inAudioStr, faceUrl and bodyUrl from the response, text untouched;
	// - TextBroadcast: audioUrl, faceUrl and bodyUrl from the response, text untouched;
	// - AnswerCollect and any other value: text from "answerDmeasyData" too.
	static bool ParseMotionResponse(const FString& jsonStr, const FString& inAudioStr, ZnJsonDataType type,
		FString& audioUrl, FString& faceUrl, FString& bodyUrl, FString& text);

	// The speech response: true when "code" truncated to an integer is 200 (the motion envelope
	// uses 0; the difference is the services'). The three URLs are then set from the flat members
	// "url", "faceUrl" and "bodyUrl" of "data" when "data" is an object, and left alone otherwise.
	static bool ParseTtsResponse(const FString& jsonStr, FString& audioUrl, FString& bodyUrl, FString& faceUrl);
	// The same reading for callers that must know whether "data" was there: true on a "code" of
	// 200 as above; bOutHasData tells whether "data" is an object, and only then are the three
	// URLs (in the speech delegate's order) set.
	static bool ReadTtsResponse(
		const FString& jsonStr, bool& bOutHasData, FString& OutAudioUrl, FString& OutFaceUrl, FString& OutBodyUrl);

	// The top-level "oss_url" when "code" is 0; "" for any other text.
	static FString ParseFormResponse(const FString& jsonStr);

	// Appends the non-empty "digest" strings of the array "T1348647853363" (a fixed key the service
	// uses) to outStrs in order, without clearing it first. False only when the text is not a JSON
	// object; a missing or empty array is true with nothing added.
	static bool ParseDigests(const FString& jsonStr, TArray<FString>& outStrs);

	// First string for 0, second for 1, third for any other value.
	static const FString& SwitchUrl(const FString& audio, const FString& text, const FString& answer, int32 type);
};
