// IModuleInterface: what the module manager knows of a loaded module.
#pragma once

#include "CoreTypes.h"

class IModuleInterface
{
public:
	virtual ~IModuleInterface() = default;

	/** Called right after the module object is created; may do start-up work. */
	virtual void StartupModule() {}
	/** Called before the module is unloaded; may release what StartupModule acquired. */
	virtual void ShutdownModule() {}
	virtual void PreUnloadCallback() {}
	virtual void PostLoadCallback() {}
	virtual bool SupportsDynamicReloading() { return true; }
	virtual bool SupportsAutomaticShutdown() { return true; }
	virtual bool IsGameModule() const { return false; }
};
