#include "ZnDllLoader.h"

#include "HAL/PlatformProcess.h"
#include "Misc/MessageDialog.h"

ZnDllLoader::ZnDllLoader(TArray<FString> paths, bool showDialog)
{
	for (const FString& path : paths)
	{
		void* handle = path.IsEmpty() ? nullptr : FPlatformProcess::GetDllHandle(*path);
		mDllHandles.Add(handle);
		if (showDialog)
		{
			const FText title = FText::FromString(TEXT("ThirdPartyLibrary"));
			const FString message = handle ? TEXT("Succeed to load third party library:") + path
										   : TEXT("Failed to load third party library:") + path;
			FMessageDialog::Open(EAppMsgType::Ok, FText::FromString(message), &title);
		}
	}
}

ZnDllLoader::ZnDllLoader(const ZnDllLoader& other)
	: mDllHandles(other.mDllHandles)
{
}

ZnDllLoader& ZnDllLoader::operator=(const ZnDllLoader& other)
{
	mDllHandles = other.mDllHandles;
	return *this;
}

ZnDllLoader::~ZnDllLoader()
{
	for (void* handle : mDllHandles)
	{
		// Null entries are skipped by the release call itself.
		FPlatformProcess::FreeDllHandle(handle);
	}
	mDllHandles.Empty();
}
