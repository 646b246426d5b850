// Calling script functions generically: a parameter block laid out by the function's
// properties, filled by name, run through ProcessEvent, then read back.
#include "RegistryTestHelpers.h"
#include "UObject/GarbageCollection.h"
#include "ZnDM_BpFuncLib.h"

#include <gtest/gtest.h>

using namespace ZnRegistryTest;

namespace
{
UFunction* LibraryFunction(const TCHAR* Name)
{
	return UZnDM_BpFuncLib::StaticClass()->FindFunctionByName(FName(Name));
}

template <typename T>
T& ParamRef(UFunction* Function, FStructOnScope& Parms, const TCHAR* Name)
{
	FProperty* P = Function->FindPropertyByName(FName(Name));
	check(P);
	return *P->ContainerPtrToValuePtr<T>(Parms.GetStructMemory());
}
} // namespace

TEST(InvocationTests, ByReferenceParameterComesBackChanged)
{
	UFunction* Function = LibraryFunction(TEXT("TestUParamRef"));
	ASSERT_NE(Function, nullptr);
	FStructOnScope Parms(Function);
	ParamRef<FString>(Function, Parms, TEXT("str")) = FString(TEXT("before"));
	UObject* Library = UZnDM_BpFuncLib::StaticClass()->GetDefaultObject();
	ASSERT_NE(Library, nullptr);
	Library->ProcessEvent(Function, Parms.GetStructMemory());
	EXPECT_EQ(ParamRef<FString>(Function, Parms, TEXT("str")), FString(TEXT("hello UPARAM(ref)")));
	EXPECT_EQ(ParamRef<FString>(Function, Parms, TEXT("otherStr")), FString(TEXT("other msg")));
	EXPECT_EQ(Function->ReturnValueOffset, 0xFFFF);
	EXPECT_EQ(Function->GetReturnProperty(), nullptr);
}

TEST(InvocationTests, ParameterBlockStartsFromEveryTypesDefault)
{
	UFunction* Function = LibraryFunction(TEXT("TestUParamRef"));
	ASSERT_NE(Function, nullptr);
	FStructOnScope Parms(Function);
	EXPECT_TRUE(ParamRef<FString>(Function, Parms, TEXT("str")).IsEmpty());
	EXPECT_EQ(Function->ParmsSize, Function->GetStructureSize());
	EXPECT_GE(Function->ParmsSize, int32(2 * sizeof(FString)));
}

TEST(InvocationTests, ReturnValueIsWrittenAtItsOffset)
{
	UFunction* Function = LibraryFunction(TEXT("CombinePath"));
	ASSERT_NE(Function, nullptr);
	FStructOnScope Parms(Function);
	ParamRef<FString>(Function, Parms, TEXT("dir")) = FString(TEXT("a"));
	ParamRef<FString>(Function, Parms, TEXT("fileName")) = FString(TEXT("b.txt"));
	UZnDM_BpFuncLib::StaticClass()->GetDefaultObject()->ProcessEvent(Function, Parms.GetStructMemory());
	FProperty* Return = Function->GetReturnProperty();
	ASSERT_NE(Return, nullptr);
	EXPECT_EQ(Function->ReturnValueOffset, Return->GetOffset_ForInternal());
	FString Direct = UZnDM_BpFuncLib::CombinePath(FString(TEXT("a")), FString(TEXT("b.txt")));
	EXPECT_EQ(*Return->ContainerPtrToValuePtr<FString>(Parms.GetStructMemory()), Direct);
}

TEST(InvocationTests, InOutFloatIsUpdatedInPlace)
{
	UFunction* Function = LibraryFunction(TEXT("TickRemainTime"));
	ASSERT_NE(Function, nullptr);
	FStructOnScope Parms(Function);
	ParamRef<float>(Function, Parms, TEXT("remainTime")) = 1.0f;
	ParamRef<float>(Function, Parms, TEXT("deltaTime")) = 0.25f;
	float Expected = 1.0f;
	UZnDM_BpFuncLib::TickRemainTime(Expected, 0.25f);
	UZnDM_BpFuncLib::StaticClass()->GetDefaultObject()->ProcessEvent(Function, Parms.GetStructMemory());
	EXPECT_FLOAT_EQ(ParamRef<float>(Function, Parms, TEXT("remainTime")), Expected);
}

TEST(InvocationTests, EnumerationParameterHasAByteUnderlyingTypeAndTravelsAsItsValue)
{
	UFunction* Function = LibraryFunction(TEXT("GetDir"));
	ASSERT_NE(Function, nullptr);
	const FEnumProperty* PathName = CastField<FEnumProperty>(Function->FindPropertyByName(FName(TEXT("pathName"))));
	ASSERT_NE(PathName, nullptr);
	EXPECT_EQ(PathName->GetEnum(), StaticEnum<ZnDM_PathName>());
	const FNumericProperty* Underlying = PathName->GetUnderlyingProperty();
	ASSERT_NE(Underlying, nullptr);
	EXPECT_EQ(Utf8(Underlying->GetName()), "UnderlyingType");
	EXPECT_NE(CastField<FByteProperty>(Underlying), nullptr);
	EXPECT_EQ(Utf8(Underlying->GetCPPType()), "uint8");
	EXPECT_EQ(Utf8(PathName->GetCPPType()), "ZnDM_PathName");

	FStructOnScope Parms(Function);
	Underlying->SetIntPropertyValue(PathName->ContainerPtrToValuePtr<void>(Parms.GetStructMemory()),
		StaticEnum<ZnDM_PathName>()->GetValueByName(FName(TEXT("ExeDir"))));
	EXPECT_EQ(ParamRef<ZnDM_PathName>(Function, Parms, TEXT("pathName")), ZnDM_PathName::ExeDir);
	UZnDM_BpFuncLib::StaticClass()->GetDefaultObject()->ProcessEvent(Function, Parms.GetStructMemory());
	EXPECT_EQ(*Function->GetReturnProperty()->ContainerPtrToValuePtr<FString>(Parms.GetStructMemory()),
		UZnDM_BpFuncLib::GetDir(ZnDM_PathName::ExeDir, ZnDM_PathType::Complete));
}

TEST(InvocationTests, DeclaredDefaultsAreKeptAsTheEnginesText)
{
	UFunction* Function = LibraryFunction(TEXT("MakeJsonAnswerCollectMotion"));
	ASSERT_NE(Function, nullptr);
	EXPECT_EQ(Utf8(Function->GetMetaData(TEXT("CPP_Default_audio_format"))), "wav");
	EXPECT_EQ(Utf8(Function->GetMetaData(TEXT("CPP_Default_tts_speed"))), "50");
	EXPECT_EQ(Utf8(Function->GetMetaData(TEXT("CPP_Default_body_fixed_hips"))), "false");
	EXPECT_FALSE(Function->HasMetaData(TEXT("CPP_Default_text")));
	const FProperty* Text = Function->FindPropertyByName(FName(TEXT("text")));
	ASSERT_NE(Text, nullptr);
	EXPECT_TRUE(Text->HasMetaData(TEXT("NativeConst")));
}

TEST(InvocationTests, MemberFunctionOfARequestObjectRunsOnThatObject)
{
	UClass* Class = FindObject<UClass>(ModulePackage(), TEXT("ZnDM_HttpRequest"));
	ASSERT_NE(Class, nullptr);
	UFunction* Create = Class->FindFunctionByName(FName(TEXT("CreateHttpRequest")));
	ASSERT_NE(Create, nullptr);
	FStructOnScope Parms(Create);
	Class->GetDefaultObject()->ProcessEvent(Create, Parms.GetStructMemory());
	UObject* Request = *Create->GetReturnProperty()->ContainerPtrToValuePtr<UObject*>(Parms.GetStructMemory());
	ASSERT_NE(Request, nullptr);
	EXPECT_EQ(Request->GetClass(), Class);
	EXPECT_EQ(Request->GetOuter(), GetTransientPackage());
	EXPECT_TRUE(Request->IsRooted()) << "kept alive while a request is in flight";
	Request->RemoveFromRoot();
	CollectGarbage();
}
