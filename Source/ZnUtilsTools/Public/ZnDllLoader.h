// Keeps external dynamic libraries loaded for as long as the loader lives.
//
// The constructor loads each path in order, exactly as given (no directory or extension is
// added), and keeps one handle per path, null for a path that is empty or failed to load. With
// showDialog it shows one OK box per path, titled "ThirdPartyLibrary", saying
// "Succeed to load third party library:<path>" or "Failed to load third party library:<path>",
// and waits for each box before loading the next library. Nothing is logged.
//
// Ownership: the destructor releases every handle it holds. Copies share the handles without
// loading again, so two copies must not both be destroyed while holding the same handles unless
// each load was made twice; assigning over a loader drops its own handles without releasing them.
// Game thread only (message boxes are modal).
#pragma once

#include "CoreMinimal.h"

class ZNUTILSTOOLS_API ZnDllLoader
{
public:
	ZnDllLoader(TArray<FString> paths, bool showDialog);
	ZnDllLoader(const ZnDllLoader& other);
	ZnDllLoader& operator=(const ZnDllLoader& other);
	~ZnDllLoader();

	// One handle per requested path, in order; null where the load failed.
	const TArray<void*>& GetHandles() const { return mDllHandles; }

private:
	TArray<void*> mDllHandles;
};
