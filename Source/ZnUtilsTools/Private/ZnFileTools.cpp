#include "ZnFileTools.h"

#include "HAL/PlatformProcess.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "ZnDM_Log.h"

FString ZnFileTools::GetDir(ZnDM_PathName pathName, ZnDM_PathType pathType)
{
	FString dir;
	switch (pathName)
	{
		case ZnDM_PathName::ProjectDir:
			dir = FPaths::ProjectDir();
			break;
		case ZnDM_PathName::ProjectContentDir:
			dir = FPaths::ProjectContentDir();
			break;
		case ZnDM_PathName::ProjectConfigDir:
			dir = FPaths::ProjectConfigDir();
			break;
		case ZnDM_PathName::ProjectPluginsDir:
			dir = FPaths::ProjectPluginsDir();
			break;
		case ZnDM_PathName::ExeDir:
			dir = FPlatformProcess::BaseDir();
			break;
		default:
			break;
	}
	if (pathType == ZnDM_PathType::Complete)
	{
		return FPaths::ConvertRelativePathToFull(dir);
	}
	return dir;
}

bool ZnFileTools::WriteTxt(const FString& str, const FString& path)
{
	if (!FFileHelper::SaveStringToFile(str, *path))
	{
		ZnDM_Log::printString(TEXT("failed to save file: ") + path);
		return false;
	}
	return true;
}

FString ZnFileTools::PrefixedFileName(const FString& prefix, const FDateTime& time)
{
	return prefix + TEXT("_") + time.ToString(TEXT("%Y_%m_%d_%H_%M_%S_%s")) + TEXT(".txt");
}

FString ZnFileTools::LoadFileFromPluginContentDir(const FString& relativePath)
{
	const FString path = FPaths::Combine(FPaths::ProjectPluginsDir() + TEXT("/Velkaro/Content"), relativePath);
	FString text;
	if (FPaths::FileExists(path))
	{
		FFileHelper::LoadFileToString(text, *path);
	}
	ZnDM_Log::printInt(TEXT("load local rawdata: "), text.Len());
	return text;
}
