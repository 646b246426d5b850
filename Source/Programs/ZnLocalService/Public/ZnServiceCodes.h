// The "code" values the local service answers with, each with the HTTP status it goes with.
// 0 is success on the token and motion paths; the speech path answers 200 on success, as its
// clients expect. Every refusal has a non-zero code and a "msg" saying what was wrong.
#pragma once

#include <cstdint>

enum class EZnServiceCode : int32_t
{
	Ok = 0,
	SpeechOk = 200,
	MissingParameter = 10001, // 400: the token query lacks appid, secret, timestamp or sign
	UnknownApp = 10002, // 401
	WrongSecret = 10003, // 401
	BadTimestamp = 10004, // 400: not a decimal millisecond count
	StaleTimestamp = 10005, // 401: farther from the service's clock than the tolerance
	BadSignature = 10006, // 401
	MissingToken = 10007, // 401: no "access_token" header
	UnknownToken = 10008, // 401
	ExpiredToken = 10009, // 401
	MalformedBody = 10010, // 400: not JSON, not an object, or a member missing or of the wrong kind
	UnknownPath = 10011, // 404
	MethodNotAllowed = 10012, // 405
	RequestTooLarge = 10013, // 413 (body), 414 (URL), 431 (headers)
	BadRequest = 10014, // 400: the HTTP request itself could not be read
	AudioUnavailable = 10015, // 422: the audio named by a voice request cannot be fetched
	AudioRefused = 10016, // 403: the audio is not hosted here and remote audio is off
	AudioNotWav = 10017, // 422: the audio is not a WAV file the content source reads
	ContentFailed = 10018, // 422: the content source made nothing (an empty text, say)
	FileNotFound = 10019, // 404: no hosted file of that name
	BadFileName = 10020, // 400: a file name that is not plain
	InjectedStatus = 10021, // the envelope of a status=<code> fault
};
