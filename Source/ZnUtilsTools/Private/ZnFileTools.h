// Directories, paths and text files behind the script functions.
#pragma once

#include "CoreMinimal.h"
#include "Misc/DateTime.h"
#include "ZnDM_BpFuncLib.h"

struct ZnFileTools
{
	// The engine directory named by pathName (empty text for an unknown value), made absolute when
	// pathType is Complete and returned as the engine gives it otherwise.
	static FString GetDir(ZnDM_PathName pathName, ZnDM_PathType pathType);

	// Saves str to path with the engine's automatic encoding (pure ASCII as bytes, otherwise UTF-16
	// with byte-order mark). On failure logs "failed to save file: " + path and returns false.
	static bool WriteTxt(const FString& str, const FString& path);

	// prefix + "_" + the time as "%Y_%m_%d_%H_%M_%S_%s" + ".txt", with no directory.
	static FString PrefixedFileName(const FString& prefix, const FDateTime& time);

	// The plugins directory + "/Velkaro/Content" (a doubled separator, kept) joined with
	// relativePath; the file's text, or empty text when it does not exist or cannot be read.
	// Logs "load local rawdata: " with the number of characters either way.
	static FString LoadFileFromPluginContentDir(const FString& relativePath);
};
