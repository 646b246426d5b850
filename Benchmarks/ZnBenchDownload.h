// One three-file download through the module (UZnDM_TTSHttpDownload) as the benchmarks drive
// it: a listener object bound to its delegate, and the game-thread ticking that delivers it.
#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"

#include <string>

// Receives a three-file download's delegate.
class UZnBenchListener : public UObject
{
	DECLARE_CLASS_INTRINSIC(UZnBenchListener, UObject, CLASS_None, TEXT("/Script/ZnBenchmarks"))
public:
	int32 Calls = 0;
	bool bAll = false;
	// Whether the files are copied out of the delegate's arguments, as a game keeps what it is
	// handed; otherwise they are only looked at in place.
	bool bKeep = false;
	TArray<uint8> Audio;
	FString Face;
	FString Body;
	void OnThreeFiles(bool audioRet, const TArray<uint8>& audioBytes, bool faceRet, const FString& faceJson,
		bool bodyRet, const FString& bodyJson);
};

// Starts a download of the audio, face and body URLs whose delegate Listener receives.
void ZnBenchStartDownload(UZnBenchListener* Listener, const std::string (&Urls)[3]);

// Starts one and ticks the HTTP manager until its delegate has fired; a download that has not
// completed within 30 s stops the program.
void ZnBenchDownload(UZnBenchListener* Listener, const std::string (&Urls)[3]);
