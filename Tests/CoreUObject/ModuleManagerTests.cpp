#include "Modules/ModuleManager.h"

#include <gtest/gtest.h>

namespace
{
int32 GStartups = 0;
int32 GShutdowns = 0;

class FZnCountingModule : public IModuleInterface
{
public:
	void StartupModule() override { ++GStartups; }
	void ShutdownModule() override { ++GShutdowns; }
};

FStaticallyLinkedModuleRegistrant<FZnCountingModule> CountingRegistrant(TEXT("ZnCountingTestModule"));
} // namespace

TEST(ModuleManagerTests, DefaultModuleIsStatelessWithTheEnginesAnswers)
{
	FDefaultModuleImpl Module;
	IModuleInterface& Interface = Module;
	Interface.StartupModule();
	Interface.ShutdownModule();
	EXPECT_TRUE(Interface.SupportsDynamicReloading());
	EXPECT_TRUE(Interface.SupportsAutomaticShutdown());
	EXPECT_FALSE(Interface.IsGameModule());
}

TEST(ModuleManagerTests, LoadingCreatesAndStartsAModuleOnceAndUnloadingShutsItDown)
{
	const FName Name(TEXT("ZnCountingTestModule"));
	EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(Name));
	IModuleInterface* Module = FModuleManager::Get().LoadModule(Name);
	ASSERT_NE(Module, nullptr);
	EXPECT_EQ(FModuleManager::Get().LoadModule(Name), Module);
	EXPECT_EQ(GStartups, 1);
	EXPECT_TRUE(FModuleManager::Get().IsModuleLoaded(Name));
	EXPECT_TRUE(FModuleManager::Get().UnloadModule(Name));
	EXPECT_EQ(GShutdowns, 1);
	EXPECT_FALSE(FModuleManager::Get().UnloadModule(Name));
}

TEST(ModuleManagerTests, UnknownModuleIsNotLoaded)
{
	EXPECT_EQ(FModuleManager::Get().LoadModule(FName(TEXT("NoSuchModule"))), nullptr);
	EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(FName(TEXT("NoSuchModule"))));
}
