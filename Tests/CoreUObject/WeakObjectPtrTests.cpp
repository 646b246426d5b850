#include "UObject/GarbageCollection.h"
#include "UObject/WeakObjectPtrTemplates.h"
#include "ZnTestObjects.h"

#include <gtest/gtest.h>

TEST(WeakObjectPtrTests, DefaultIsExplicitlyNullNotStale)
{
	TWeakObjectPtr<UZnTestObject> Weak;
	EXPECT_FALSE(Weak.IsValid());
	EXPECT_FALSE(Weak.IsStale());
	EXPECT_TRUE(Weak.IsExplicitlyNull());
	EXPECT_EQ(Weak.Get(), nullptr);
}

TEST(WeakObjectPtrTests, DoesNotKeepItsObjectAlive)
{
	TWeakObjectPtr<UZnTestObject> Weak(NewObject<UZnTestObject>());
	EXPECT_TRUE(Weak.IsValid());
	EXPECT_TRUE(static_cast<bool>(Weak));
	CollectGarbage();
	EXPECT_FALSE(Weak.IsValid());
	EXPECT_TRUE(Weak.IsStale());
	EXPECT_EQ(Weak.Get(), nullptr);
}

TEST(WeakObjectPtrTests, ResetForgetsTheObject)
{
	UZnTestObject* Object = NewObject<UZnTestObject>();
	TWeakObjectPtr<UZnTestObject> Weak(Object);
	TWeakObjectPtr<UZnTestObject> Same(Object);
	EXPECT_EQ(Weak, Same);
	EXPECT_EQ(Weak->GetUniqueID(), Object->GetUniqueID());
	Weak.Reset();
	EXPECT_TRUE(Weak.IsExplicitlyNull());
	EXPECT_NE(Weak, Same);
	CollectGarbage();
}
