// Access to the process's platform file.
#pragma once

#include "CoreTypes.h"
#include "GenericPlatform/GenericPlatformFile.h"

class CORE_API FPlatformFileManager
{
public:
	// The one manager of the process; it lives until the process ends.
	static FPlatformFileManager& Get();

	// The file system of this platform. Safe to use from any thread.
	IPlatformFile& GetPlatformFile();

private:
	FPlatformFileManager() = default;
};
