#include "Modules/ModuleManager.h"

FModuleManager& FModuleManager::Get()
{
	// Never destroyed: registrants run during static initialisation in any order.
	static FModuleManager* Manager = new FModuleManager();
	return *Manager;
}

FModuleManager::FModuleEntry* FModuleManager::Find(const FName InModuleName)
{
	for (FModuleEntry& Entry : Modules)
	{
		if (Entry.Name == InModuleName)
		{
			return &Entry;
		}
	}
	return nullptr;
}

const FModuleManager::FModuleEntry* FModuleManager::Find(const FName InModuleName) const
{
	return const_cast<FModuleManager*>(this)->Find(InModuleName);
}

void FModuleManager::RegisterStaticallyLinkedModule(
	const FName InModuleName, FInitializeStaticallyLinkedModule InInitializer)
{
	if (FModuleEntry* Existing = Find(InModuleName))
	{
		Existing->Initializer = InInitializer;
		return;
	}
	FModuleEntry Entry;
	Entry.Name = InModuleName;
	Entry.Initializer = InInitializer;
	Modules.Add(Entry);
}

IModuleInterface* FModuleManager::LoadModule(const FName InModuleName)
{
	FModuleEntry* Entry = Find(InModuleName);
	if (!Entry || !Entry->Initializer)
	{
		return nullptr;
	}
	if (!Entry->Module)
	{
		Entry->Module = Entry->Initializer();
		Entry->Module->StartupModule();
	}
	return Entry->Module;
}

IModuleInterface& FModuleManager::LoadModuleChecked(const FName InModuleName)
{
	IModuleInterface* Module = LoadModule(InModuleName);
	check(Module);
	return *Module;
}

IModuleInterface* FModuleManager::GetModule(const FName InModuleName)
{
	FModuleEntry* Entry = Find(InModuleName);
	return Entry ? Entry->Module : nullptr;
}

bool FModuleManager::IsModuleLoaded(const FName InModuleName) const
{
	const FModuleEntry* Entry = Find(InModuleName);
	return Entry && Entry->Module;
}

bool FModuleManager::UnloadModule(const FName InModuleName)
{
	FModuleEntry* Entry = Find(InModuleName);
	if (!Entry || !Entry->Module)
	{
		return false;
	}
	Entry->Module->ShutdownModule();
	delete Entry->Module;
	Entry->Module = nullptr;
	return true;
}

void FModuleManager::FindModules(const TCHAR* WildcardWithoutExtension, TArray<FName>& OutModules) const
{
	for (const FModuleEntry& Entry : Modules)
	{
		OutModules.Add(Entry.Name);
	}
}
