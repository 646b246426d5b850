// Keeps external dynamic libraries loaded for as long as the loader lives.
//
// The constructor loads each path in order, exactly as given (no directory or extension is
// added), and keeps one handle per path, null for a path that is empty or failed to load. With
// showDialog it shows one OK box per path, titled "ThirdPartyLibrary", saying
// "Succeed to load third party library:<path>" or "Failed to load third party library:<path>",
// and waits for each box before loading the next library. Nothing is logged.
//
// Ownership: the handles are shared by the loader and every copy made of it (copy construction
// and copy assignment share them without loading again). They are released once, when the last
// loader sharing them is destroyed or assigned over, so a copy keeps the libraries loaded after
// the original is gone. Copying is thread-safe; loading and message boxes are for the game thread
// only (message boxes are modal).
#pragma once

#include "CoreMinimal.h"
#include "Templates/SharedPointer.h"

class ZNUTILSTOOLS_API ZnDllLoader
{
public:
	ZnDllLoader(TArray<FString> paths, bool showDialog);
	ZnDllLoader(const ZnDllLoader& other) = default;
	ZnDllLoader& operator=(const ZnDllLoader& other) = default;
	~ZnDllLoader() = default;

	// One handle per requested path, in order; null where the load failed. Valid while this
	// loader lives.
	const TArray<void*>& GetHandles() const { return mLibraries->Handles; }

private:
	// The handles of one construction; releases every one of them when the last loader sharing
	// it lets go.
	struct FLoadedLibraries
	{
		TArray<void*> Handles;
		FLoadedLibraries() = default;
		FLoadedLibraries(const FLoadedLibraries&) = delete;
		FLoadedLibraries& operator=(const FLoadedLibraries&) = delete;
		~FLoadedLibraries();
	};

	TSharedRef<FLoadedLibraries, ESPMode::ThreadSafe> mLibraries;
};
