// Diagnostics of the module: the file log "dm_ue.txt" and the value printers.
//
// The file log is one process-wide object, created by the first GetInstance (or script WriteLog)
// and destroyed by Release. It appends to "dm_ue.txt" in the process's current working directory
// (never truncating it), one time-stamped line per Log call, flushed at once so that lines survive
// a crash and several processes can append to the same file. When the file cannot be opened the
// object still exists but writes nothing until it is released and created again.
// Threads: no lock is taken; create, log and release from the game thread only.
//
// The printers write to the engine log under the category ZnDM at verbosity Warning. Each one
// returns before formatting anything while the category suppresses Warning.
#pragma once

#include "CoreMinimal.h"

#include <fstream>

class USkeletalMeshComponent;

DECLARE_LOG_CATEGORY_EXTERN(ZnDM, Log, All);

class ZNUTILSTOOLS_API ZnDM_Log : public std::ofstream
{
public:
	// The single instance, created (and its file opened) on first call. The reference stays valid
	// until Release.
	static ZnDM_Log& GetInstance();

	// Appends "[YYYY-MM-DD HH:MM:SS.mmm] " + msg (local time) as one UTF-8 line and flushes it.
	// Does nothing when the file is not open.
	void Log(const FString& msg);

	// Closes the file and destroys the instance; the reference from GetInstance dangles afterwards.
	// The next GetInstance creates a new instance and reopens the file for appending.
	void Release();

	// "%s": the message.
	static void printString(FString msg);
	// "%s:[%d]".
	static void printInt(FString name, int32 value);
	// "%s:[%lf]", the value widened to double.
	static void printFloat(FString name, float value);
	// "%s:[%lf, %lf, %lf]" with X, Y, Z.
	static void printVector(FString name, FVector vec);
	// "%s(wxyz):[%lf, %lf, %lf, %lf]" with W first.
	static void printQuat(FString name, FQuat quat);
	// "%s, %s:{rot:[%lf, %lf, %lf], quat:[%lf, %lf, %lf, %lf]}, %s:{...}" with title, then for each
	// transform its name, the Euler angles of its rotation in degrees (X, Y, Z) and its rotation
	// written W, X, Y, Z.
	static void printTransform(
		FString title, FString name1, FTransform transform1, FString name2, FTransform transform2);
	// "%s:{rot:[%lf, %lf, %lf], quat:[%lf, %lf, %lf, %lf]}": one transform as above.
	static void printTransform(FString name, FTransform transform);
	// A separator line of 27 '-', one "-->index: bone name" line per bone of the component's
	// skeleton, and the separator again, each as its own log line. A null component prints the two
	// separators only.
	static void printSkeleton(USkeletalMeshComponent* skeletalMesh);
	// Shows msg on screen for one second, green, newest on top. Like the other printers it does
	// nothing while ZnDM suppresses Warning; nothing happens without an engine object either.
	static void printString_ScreenLog(FString msg);

	ZnDM_Log(const ZnDM_Log&) = delete;
	ZnDM_Log& operator=(const ZnDM_Log&) = delete;

private:
	ZnDM_Log();
	~ZnDM_Log();

	static ZnDM_Log* mInstancePtr;
};
