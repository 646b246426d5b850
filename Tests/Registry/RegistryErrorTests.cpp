#include "RegistryTestHelpers.h"
#include "ZnDM_BpFuncLib.h"

#include <gtest/gtest.h>

using namespace ZnRegistryTest;

TEST(RegistryErrorTests, OutOfRangeByteHasNoEnumerator)
{
	UEnum* Stat = StaticEnum<ZnDM_StatType>();
	EXPECT_FALSE(Stat->IsValidEnumValue(8));
	EXPECT_TRUE(Stat->GetNameByValue(8).IsNone());
	EXPECT_TRUE(Stat->GetNameStringByValue(8).IsEmpty());
	EXPECT_TRUE(Stat->IsValidEnumValue(7));
	UEnum* PathName = StaticEnum<ZnDM_PathName>();
	EXPECT_FALSE(PathName->IsValidEnumValue(5));
	EXPECT_TRUE(PathName->GetNameStringByValue(255).IsEmpty());
	EXPECT_EQ(PathName->GetMaxEnumValue(), 4);
}

TEST(RegistryErrorTests, UnknownEnumeratorNameHasNoValue)
{
	UEnum* Region = StaticEnum<ZnRegion>();
	EXPECT_EQ(Region->GetValueByName(FName(TEXT("ZnRegion::FR_FR"))), INDEX_NONE);
	EXPECT_EQ(Region->GetValueByName(FName(TEXT("ZnDM_StatType::Fps"))), INDEX_NONE);
	EXPECT_EQ(Region->GetValueByNameString(FString()), INDEX_NONE);
	EXPECT_EQ(Region->GetIndexByName(FName(TEXT("EN_US"))), 0) << "the short name is accepted";
}

TEST(RegistryErrorTests, EnumeratorOutsideTheRangeHasNoMetadata)
{
	UEnum* Region = StaticEnum<ZnRegion>();
	EXPECT_TRUE(Region->GetMetaData(TEXT("Name"), 2).IsEmpty());
	EXPECT_FALSE(Region->HasMetaData(TEXT("Name"), -2));
	EXPECT_EQ(Utf8(Region->GetMetaData(TEXT("Name"), 1)), "ZnRegion::ZH_CN");
}

TEST(RegistryErrorTests, UnknownFunctionOrPropertyIsNotFound)
{
	EXPECT_EQ(UZnDM_BpFuncLib::StaticClass()->FindFunctionByName(FName(TEXT("NoSuchFunction"))), nullptr);
	EXPECT_EQ(FZnAPIConfig::StaticStruct()->FindPropertyByName(FName(TEXT("NoSuchField"))), nullptr);
	UFunction* Function = UZnDM_BpFuncLib::StaticClass()->FindFunctionByName(FName(TEXT("TestUParamRef")));
	ASSERT_NE(Function, nullptr);
	EXPECT_EQ(Function->FindPropertyByName(FName(TEXT("nope"))), nullptr);
}
