#include "UObject/GarbageCollection.h"
#include "UObject/StrongObjectPtr.h"
#include "UObject/WeakObjectPtrTemplates.h"
#include "ZnTestObjects.h"

#include <gtest/gtest.h>

class GarbageCollectionTests : public testing::Test
{
protected:
	void SetUp() override
	{
		// The first object made in a process also registers the reflected types (the package, classes and
		// records), which stay alive; make that happen before a test counts live objects.
		NewObject<UZnTestObject>();
		CollectGarbage();
	}
	void TearDown() override { CollectGarbage(); }
};

TEST_F(GarbageCollectionTests, UnreferencedObjectIsDestroyed)
{
	const int32 Destroyed = UZnTestObject::DestroyedCount;
	const int32 BeginDestroyed = UZnTestObject::BeginDestroyCount;
	UZnTestObject* Object = NewObject<UZnTestObject>();
	TWeakObjectPtr<UZnTestObject> Weak(Object);
	ASSERT_TRUE(Weak.IsValid());
	CollectGarbage();
	EXPECT_EQ(UZnTestObject::DestroyedCount, Destroyed + 1);
	EXPECT_EQ(UZnTestObject::BeginDestroyCount, BeginDestroyed + 1);
	EXPECT_FALSE(Weak.IsValid());
	EXPECT_TRUE(Weak.IsStale());
}

TEST_F(GarbageCollectionTests, RootedObjectSurvivesUntilRemovedFromRoot)
{
	UZnTestObject* Object = NewObject<UZnTestObject>();
	Object->AddToRoot();
	EXPECT_TRUE(Object->IsRooted());
	TWeakObjectPtr<UZnTestObject> Weak(Object);
	CollectGarbage();
	CollectGarbage();
	ASSERT_TRUE(Weak.IsValid());
	EXPECT_EQ(Weak.Get(), Object);
	Object->RemoveFromRoot();
	EXPECT_FALSE(Object->IsRooted());
	CollectGarbage();
	EXPECT_FALSE(Weak.IsValid());
}

TEST_F(GarbageCollectionTests, StrongPointerKeepsItsObject)
{
	TWeakObjectPtr<UZnTestObject> Weak;
	{
		TStrongObjectPtr<UZnTestObject> Strong(NewObject<UZnTestObject>());
		Weak = Strong.Get();
		CollectGarbage();
		EXPECT_TRUE(Weak.IsValid());
		TStrongObjectPtr<UZnTestObject> Copy(Strong);
		Strong.Reset();
		CollectGarbage();
		EXPECT_TRUE(Weak.IsValid()) << "the copy still holds it";
	}
	CollectGarbage();
	EXPECT_FALSE(Weak.IsValid());
}

TEST_F(GarbageCollectionTests, KeepFlagsKeepMatchingObjects)
{
	UZnTestObject* Object = NewObject<UZnTestObject>(nullptr, NAME_None, RF_Standalone);
	TWeakObjectPtr<UZnTestObject> Weak(Object);
	CollectGarbage(RF_Standalone);
	EXPECT_TRUE(Weak.IsValid());
	CollectGarbage();
	EXPECT_FALSE(Weak.IsValid());
}

TEST_F(GarbageCollectionTests, ReflectedReferenceKeepsTheReferencedObject)
{
	UZnTestObject* Holder = NewObject<UZnTestObject>();
	Holder->AddToRoot();
	UZnTestObject* Child = NewObject<UZnTestObject>();
	UZnTestObject* Hidden = NewObject<UZnTestObject>();
	Holder->Child = Child;
	Holder->Hidden = Hidden;
	TWeakObjectPtr<UZnTestObject> WeakChild(Child);
	TWeakObjectPtr<UZnTestObject> WeakHidden(Hidden);
	CollectGarbage();
	EXPECT_TRUE(WeakChild.IsValid());
	EXPECT_FALSE(WeakHidden.IsValid()) << "a member the registry does not know is no reference";
	Holder->Child = nullptr;
	CollectGarbage();
	EXPECT_FALSE(WeakChild.IsValid());
	Holder->RemoveFromRoot();
}

TEST_F(GarbageCollectionTests, AnObjectKeepsItsOuter)
{
	UZnTestObject* Outer = NewObject<UZnTestObject>();
	UZnTestObject* Inner = NewObject<UZnTestObject>(Outer);
	Inner->AddToRoot();
	TWeakObjectPtr<UZnTestObject> WeakOuter(Outer);
	CollectGarbage();
	EXPECT_TRUE(WeakOuter.IsValid());
	Inner->RemoveFromRoot();
	CollectGarbage();
	EXPECT_FALSE(WeakOuter.IsValid());
}

TEST_F(GarbageCollectionTests, ReflectionObjectsAndPackagesAreNeverCollected)
{
	UClass* Class = UZnTestObject::StaticClass();
	UPackage* Transient = GetTransientPackage();
	CollectGarbage();
	EXPECT_TRUE(IsValid(Class));
	EXPECT_TRUE(IsValid(Transient));
	EXPECT_EQ(UZnTestObject::StaticClass(), Class);
}

TEST_F(GarbageCollectionTests, CollectedIndexIsReusedByTheNextObject)
{
	UZnTestObject* First = NewObject<UZnTestObject>();
	const uint32 Id = First->GetUniqueID();
	TWeakObjectPtr<UZnTestObject> WeakFirst(First);
	CollectGarbage();
	ASSERT_FALSE(WeakFirst.IsValid());
	UZnTestObject* Second = NewObject<UZnTestObject>();
	EXPECT_EQ(Second->GetUniqueID(), Id) << "the freed slot is handed out again";
	EXPECT_FALSE(WeakFirst.IsValid()) << "a weak pointer to the old object stays stale";
	EXPECT_TRUE(WeakFirst.IsStale());
	TWeakObjectPtr<UZnTestObject> WeakSecond(Second);
	EXPECT_EQ(WeakSecond.Get(), Second);
	EXPECT_NE(WeakFirst, WeakSecond);
}

TEST_F(GarbageCollectionTests, LiveObjectsHaveDistinctIds)
{
	UZnTestObject* A = NewObject<UZnTestObject>();
	UZnTestObject* B = NewObject<UZnTestObject>();
	UZnTestObject* C = NewObject<UZnTestObject>();
	EXPECT_NE(A->GetUniqueID(), B->GetUniqueID());
	EXPECT_NE(B->GetUniqueID(), C->GetUniqueID());
	EXPECT_NE(A->GetUniqueID(), C->GetUniqueID());
}

TEST_F(GarbageCollectionTests, CollectionFreesEveryUnreachableObject)
{
	const int32 Before = GetNumLiveObjects();
	for (int32 I = 0; I < 100; ++I)
	{
		NewObject<UZnTestObject>();
	}
	EXPECT_EQ(GetNumLiveObjects(), Before + 100);
	CollectGarbage();
	EXPECT_EQ(GetNumLiveObjects(), Before);
}
