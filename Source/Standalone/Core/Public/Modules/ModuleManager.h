// The module manager: modules register a factory under their name (IMPLEMENT_MODULE); loading a
// module creates its object once and calls StartupModule. Game thread only.
#pragma once

#include "CoreMinimal.h"
#include "Modules/ModuleInterface.h"

/** A module with no state of its own: start-up and shut-down do nothing. */
class FDefaultModuleImpl : public IModuleInterface
{
};

class CORE_API FModuleManager
{
public:
	typedef IModuleInterface* (*FInitializeStaticallyLinkedModule)();

	static FModuleManager& Get();

	void RegisterStaticallyLinkedModule(const FName InModuleName, FInitializeStaticallyLinkedModule InInitializer);
	/** Creates and starts the module on first call; null for an unknown name. */
	IModuleInterface* LoadModule(const FName InModuleName);
	IModuleInterface& LoadModuleChecked(const FName InModuleName);
	IModuleInterface* GetModule(const FName InModuleName);
	bool IsModuleLoaded(const FName InModuleName) const;
	/** Calls ShutdownModule and destroys the module object; false if it was not loaded. */
	bool UnloadModule(const FName InModuleName);
	/** Names of every module that registered itself, in registration order. */
	void FindModules(const TCHAR* WildcardWithoutExtension, TArray<FName>& OutModules) const;

	template <typename TModuleInterface>
	static TModuleInterface& LoadModuleChecked(const FName ModuleName)
	{
		return static_cast<TModuleInterface&>(Get().LoadModuleChecked(ModuleName));
	}

private:
	struct FModuleEntry
	{
		FName Name;
		FInitializeStaticallyLinkedModule Initializer = nullptr;
		IModuleInterface* Module = nullptr;
	};
	FModuleEntry* Find(const FName InModuleName);
	const FModuleEntry* Find(const FName InModuleName) const;
	TArray<FModuleEntry> Modules;
};

template <class ModuleClass>
class FStaticallyLinkedModuleRegistrant
{
public:
	explicit FStaticallyLinkedModuleRegistrant(const TCHAR* InModuleName)
	{
		FModuleManager::Get().RegisterStaticallyLinkedModule(FName(InModuleName), &InitializeModule);
	}
	static IModuleInterface* InitializeModule() { return new ModuleClass(); }
};

/**
 * Registers the module object class under the module's name, and defines the library's entry
 * point InitializeModule(), which creates the module object (the engine calls it after loading).
 */
#define IMPLEMENT_MODULE(ModuleImplClass, ModuleName)                                                          \
	static FStaticallyLinkedModuleRegistrant<ModuleImplClass> ModuleRegistrant##ModuleName(TEXT(#ModuleName)); \
	extern "C" IModuleInterface* InitializeModule()                                                            \
	{                                                                                                          \
		return new ModuleImplClass();                                                                          \
	}

#define IMPLEMENT_GAME_MODULE(ModuleImplClass, ModuleName) IMPLEMENT_MODULE(ModuleImplClass, ModuleName)
