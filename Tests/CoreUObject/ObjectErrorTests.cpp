#include "UObject/GarbageCollection.h"
#include "ZnTestObjects.h"

#include <gtest/gtest.h>

TEST(ObjectErrorTests, AbstractClassCannotBeInstantiated)
{
	testing::internal::CaptureStderr();
	UObject* Object = NewObject<UObject>(nullptr, UZnTestAbstract::StaticClass());
	const std::string Err = testing::internal::GetCapturedStderr();
	EXPECT_EQ(Object, nullptr);
	EXPECT_NE(Err.find("abstract"), std::string::npos);
}

TEST(ObjectErrorTests, NullIsNotValid)
{
	EXPECT_FALSE(IsValid(nullptr));
}

TEST(ObjectErrorTests, FindingAMissingObjectGivesNull)
{
	EXPECT_EQ(FindObject<UZnTestObject>(GetTransientPackage(), TEXT("NoSuchObject")), nullptr);
	EXPECT_EQ(FindPackage(nullptr, TEXT("/No/Such/Package")), nullptr);
}

TEST(ObjectErrorTests, AFunctionThatDoesNotExistIsNotFound)
{
	UZnTestObject* Object = NewObject<UZnTestObject>();
	EXPECT_EQ(Object->FindFunction(FName(TEXT("Nope"))), nullptr);
	CollectGarbage();
}
