#include "UObject/GarbageCollection.h"
#include "UObject/Package.h"
#include "ZnTestObjects.h"

#include <gtest/gtest.h>

TEST(ObjectTests, NewObjectDefaultsToTheTransientPackage)
{
	UZnTestObject* Object = NewObject<UZnTestObject>();
	ASSERT_NE(Object, nullptr);
	EXPECT_EQ(Object->GetOuter(), GetTransientPackage());
	EXPECT_EQ(Object->GetOutermost(), GetTransientPackage());
	EXPECT_EQ(Object->GetClass(), UZnTestObject::StaticClass());
	EXPECT_TRUE(Object->IsA<UObject>());
	EXPECT_TRUE(Object->IsValidLowLevel());
	EXPECT_TRUE(IsValid(Object));
	EXPECT_EQ(GetTransientPackage()->GetName(), FString(TEXT("/Engine/Transient")));
	CollectGarbage();
}

TEST(ObjectTests, NewObjectWithTheTransientPackageAsOuterIsTheSame)
{
	UZnTestObject* Object = NewObject<UZnTestObject>(GetTransientPackage());
	EXPECT_EQ(Object->GetOuter(), GetTransientPackage());
	EXPECT_FALSE(Object->IsRooted());
	CollectGarbage();
}

TEST(ObjectTests, UnnamedObjectsGetDistinctNamesFromTheirClass)
{
	UZnTestObject* A = NewObject<UZnTestObject>();
	UZnTestObject* B = NewObject<UZnTestObject>();
	EXPECT_TRUE(A->GetName().StartsWith(TEXT("ZnTestObject_")));
	EXPECT_NE(A->GetName(), B->GetName());
	EXPECT_EQ(FindObject<UZnTestObject>(GetTransientPackage(), *A->GetName()), A);
	EXPECT_EQ(A->GetPathName(), FString(TEXT("/Engine/Transient.")) + A->GetName());
	CollectGarbage();
}

TEST(ObjectTests, NamedObjectKeepsItsName)
{
	UZnTestObject* Object = NewObject<UZnTestObject>(nullptr, FName(TEXT("Named")));
	EXPECT_EQ(Object->GetName(), FString(TEXT("Named")));
	CollectGarbage();
}

TEST(ObjectTests, ClassOfAHandWrittenClassKnowsNameBaseAndPackage)
{
	UClass* Class = UZnTestObject::StaticClass();
	EXPECT_EQ(Class->GetName(), FString(TEXT("ZnTestObject")));
	EXPECT_EQ(Class->GetCppName(), FString(TEXT("UZnTestObject")));
	EXPECT_EQ(Class->GetSuperClass(), UObject::StaticClass());
	EXPECT_EQ(Class->GetOutermost()->GetName(), FString(TEXT("/Script/ZnTests")));
	EXPECT_EQ(Class->GetClass(), UClass::StaticClass());
	EXPECT_TRUE(Class->IsChildOf(UObject::StaticClass()));
	EXPECT_FALSE(UObject::StaticClass()->IsChildOf(Class));
	EXPECT_EQ(UObject::StaticClass()->GetSuperClass(), nullptr);
	EXPECT_EQ(StaticClass<UObject>(), UObject::StaticClass());
}

TEST(ObjectTests, ClassDefaultObjectIsCreatedOnceAndKept)
{
	UObject* Default = UZnTestObject::StaticClass()->GetDefaultObject();
	ASSERT_NE(Default, nullptr);
	EXPECT_TRUE(Default->HasAnyFlags(RF_ClassDefaultObject));
	EXPECT_EQ(UZnTestObject::StaticClass()->GetDefaultObject(), Default);
	CollectGarbage();
	EXPECT_TRUE(IsValid(Default));
}

TEST(ObjectTests, PackagesAreFoundByName)
{
	UPackage* Package = CreatePackage(TEXT("/Temp/ZnObjectTests"));
	EXPECT_EQ(FindPackage(nullptr, TEXT("/Temp/ZnObjectTests")), Package);
	EXPECT_EQ(CreatePackage(TEXT("/Temp/ZnObjectTests")), Package);
	EXPECT_EQ(Package->GetOuter(), nullptr);
	UZnTestObject* Object = NewObject<UZnTestObject>(Package);
	TArray<UObject*> Inner;
	GetObjectsWithOuter(Package, Inner);
	ASSERT_EQ(Inner.Num(), 1);
	EXPECT_EQ(Inner[0], Object);
	CollectGarbage();
}

TEST(ObjectTests, ObjectsOfAClassAreListed)
{
	UZnTestObject* A = NewObject<UZnTestObject>();
	TArray<UObject*> Found;
	GetObjectsOfClass(UZnTestObject::StaticClass(), Found);
	bool bFound = false;
	for (UObject* O : Found)
	{
		bFound |= O == A;
		EXPECT_TRUE(O->IsA<UZnTestObject>());
	}
	EXPECT_TRUE(bFound);
	CollectGarbage();
}
