// Path text helpers and the project's well-known directories.
//
// Paths use "/" as separator; a backslash is accepted on input and turned into "/" by
// NormalizeFilename. Every directory returned by the *Dir() functions ends with "/".
//
// In the standalone build the project directory is the host's current working directory
// (absolute, read when first asked for) unless the host chose another with SetProjectDir.
// Relative paths are made full against the current working directory, the directory the
// platform file functions resolve them against; the editor instead starts with the
// executable's directory as working directory, so both rules agree there.
#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"

class CORE_API FPaths
{
public:
	// The project's root directory, ending in "/".
	static FString ProjectDir();
	// ProjectDir() + "Content/".
	static FString ProjectContentDir();
	// ProjectDir() + "Config/".
	static FString ProjectConfigDir();
	// ProjectDir() + "Plugins/".
	static FString ProjectPluginsDir();

	// Standalone only: makes Dir the project directory (a "/" is appended when missing, backslashes
	// become "/"). Dir may be relative; ProjectDir() then returns it relative, as the engine does.
	// An empty Dir goes back to the working directory. Call from the game thread before use.
	static void SetProjectDir(const FString& Dir);

	// The file name with its extension, without the directory.
	static FString GetCleanFilename(const FString& InPath);
	// The file name without directory and without the last extension. With bRemovePath false
	// only the extension is removed.
	static FString GetBaseFilename(const FString& InPath, bool bRemovePath = true);
	// The text after the last "." of the file name (without the point unless bIncludeDot), or
	// empty when the file name has no point.
	static FString GetExtension(const FString& InPath, bool bIncludeDot = false);
	// The directory part, without the trailing separator; empty when the path has no separator.
	static FString GetPath(const FString& InPath);
	// GetPath, GetBaseFilename and GetExtension at once.
	static void Split(const FString& InPath, FString& PathPart, FString& FilenamePart, FString& ExtensionPart);

	// True when a regular file (not a directory) exists at the path.
	static bool FileExists(const FString& InPath);
	// True when a directory exists at the path.
	static bool DirectoryExists(const FString& InPath);

	// True unless the path starts at the root ("/" or a drive letter such as "C:").
	static bool IsRelative(const FString& InPath);
	// Turns every backslash into "/".
	static void NormalizeFilename(FString& InPath);
	// Removes trailing separators (the root "/" stays).
	static void NormalizeDirectoryName(FString& InPath);
	// Removes "." components and folds "dir/.." pairs. Returns false, leaving the path
	// unchanged, when a ".." would climb above the start of a relative path.
	static bool CollapseRelativeDirectories(FString& InPath);
	// The absolute, normalised form of InPath, resolved against the current working directory.
	// An empty path gives the working directory itself, ending in "/".
	static FString ConvertRelativePathToFull(const FString& InPath);
	// As above, resolved against BasePath.
	static FString ConvertRelativePathToFull(const FString& BasePath, const FString& InPath);

	// Joins the parts with one "/" between neighbours: no separator is added where the left part
	// already ends in one or the right part starts with "/"; empty parts are skipped.
	template <typename... PathTypes>
	static FString Combine(const PathTypes&... InPaths)
	{
		FString Result;
		(AppendPart(Result, FString(InPaths)), ...);
		return Result;
	}

private:
	static void AppendPart(FString& Result, const FString& Part);
};
