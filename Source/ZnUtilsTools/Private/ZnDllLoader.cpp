#include "ZnDllLoader.h"

#include "HAL/PlatformProcess.h"
#include "Misc/MessageDialog.h"

ZnDllLoader::ZnDllLoader(TArray<FString> paths, bool showDialog)
	: mLibraries(MakeShared<FLoadedLibraries, ESPMode::ThreadSafe>())
{
	for (const FString& path : paths)
	{
		void* handle = path.IsEmpty() ? nullptr : FPlatformProcess::GetDllHandle(*path);
		mLibraries->Handles.Add(handle);
		if (showDialog)
		{
			const FText title = FText::FromString(TEXT("ThirdPartyLibrary"));
			const FString message = handle ? TEXT("Succeed to load third party library:") + path
										   : TEXT("Failed to load third party library:") + path;
			FMessageDialog::Open(EAppMsgType::Ok, FText::FromString(message), &title);
		}
	}
}

ZnDllLoader::FLoadedLibraries::~FLoadedLibraries()
{
	for (void* handle : Handles)
	{
		// Null entries are skipped by the release call itself.
		FPlatformProcess::FreeDllHandle(handle);
	}
	Handles.Empty();
}
