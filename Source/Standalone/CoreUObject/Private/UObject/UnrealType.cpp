#include "UObject/UnrealType.h"

#define IMPLEMENT_FIELD(TClass)                                            \
	FFieldClass* TClass::StaticClass()                                     \
	{                                                                      \
		static FFieldClass Class(TEXT(#TClass) + 1, Super::StaticClass()); \
		return &Class;                                                     \
	}

FFieldClass* FField::StaticClass()
{
	static FFieldClass Class(TEXT("Field"), nullptr);
	return &Class;
}

IMPLEMENT_FIELD(FProperty)
IMPLEMENT_FIELD(FNumericProperty)
IMPLEMENT_FIELD(FByteProperty)
IMPLEMENT_FIELD(FIntProperty)
IMPLEMENT_FIELD(FInt64Property)
IMPLEMENT_FIELD(FFloatProperty)
IMPLEMENT_FIELD(FDoubleProperty)
IMPLEMENT_FIELD(FBoolProperty)
IMPLEMENT_FIELD(FStrProperty)
IMPLEMENT_FIELD(FNameProperty)
IMPLEMENT_FIELD(FObjectPropertyBase)
IMPLEMENT_FIELD(FObjectProperty)
IMPLEMENT_FIELD(FStructProperty)
IMPLEMENT_FIELD(FArrayProperty)
IMPLEMENT_FIELD(FEnumProperty)
IMPLEMENT_FIELD(FDelegateProperty)
IMPLEMENT_FIELD(FMulticastDelegateProperty)
IMPLEMENT_FIELD(FMulticastInlineDelegateProperty)

FField::FField(UObject* InOwner, FName InName, EObjectFlags InFlags)
	: OwnerObject(InOwner)
	, NamePrivate(InName)
	, FlagsPrivate(InFlags)
{
}

FField::FField(FField* InOwner, FName InName, EObjectFlags InFlags)
	: OwnerField(InOwner)
	, NamePrivate(InName)
	, FlagsPrivate(InFlags)
{
}

FField::~FField() = default;

UObject* FField::GetOwnerUObject() const
{
	const FField* F = this;
	while (F->OwnerField)
	{
		F = F->OwnerField;
	}
	return F->OwnerObject;
}

UStruct* FField::GetOwnerStruct() const
{
	UObject* Owner = GetOwnerUObject();
	return Owner && Owner->IsA(UStruct::StaticClass()) ? static_cast<UStruct*>(Owner) : nullptr;
}

const FString& FField::GetMetaData(const TCHAR* Key) const
{
	static const FString Empty;
	const FString* Value = MetaData.Find(FName(Key));
	return Value ? *Value : Empty;
}

FProperty::FProperty(UObject* InOwner, FName InName, EPropertyFlags InFlags, int32 InOffset,
	const UECodeGen_Private::FPropertyTypeOps* InOps)
	: FField(InOwner, InName)
	, ElementSize(InOps ? InOps->Size : 0)
	, PropertyFlags(InFlags)
	, Offset_Internal(InOffset)
	, TypeOps(InOps)
{
}

FProperty::FProperty(FField* InOwner, FName InName, EPropertyFlags InFlags, int32 InOffset,
	const UECodeGen_Private::FPropertyTypeOps* InOps)
	: FField(InOwner, InName)
	, ElementSize(InOps ? InOps->Size : 0)
	, PropertyFlags(InFlags)
	, Offset_Internal(InOffset)
	, TypeOps(InOps)
{
}

FString FByteProperty::GetCPPType() const
{
	return Enum ? FString(TEXT("TEnumAsByte<")) + Enum->CppType + TEXT(">") : FString(TEXT("uint8"));
}

FString FObjectPropertyBase::GetCPPType() const
{
	return (PropertyClass ? PropertyClass->GetCppName() : FString(TEXT("UObject"))) + TEXT("*");
}

FString FStructProperty::GetCPPType() const
{
	return Struct ? Struct->GetStructCPPName() : FString(TEXT("FStruct"));
}

FArrayProperty::~FArrayProperty()
{
	delete Inner;
}

FString FArrayProperty::GetCPPType() const
{
	return FString(TEXT("TArray<")) + (Inner ? Inner->GetCPPType() : FString()) + TEXT(">");
}

FEnumProperty::~FEnumProperty()
{
	delete UnderlyingProp;
}

FString FEnumProperty::GetCPPType() const
{
	return Enum ? Enum->CppType : FString(TEXT("uint8"));
}

namespace
{
FString DelegateTypeName(const UFunction* Signature)
{
	if (!Signature)
	{
		return FString(TEXT("FDelegate"));
	}
	FString Name = Signature->GetName();
	const int32 Suffix = Name.Find(TEXT("__DelegateSignature"), ESearchCase::CaseSensitive);
	if (Suffix != INDEX_NONE)
	{
		Name = Name.Left(Suffix);
	}
	return FString(TEXT("F")) + Name;
}
} // namespace

FString FDelegateProperty::GetCPPType() const
{
	return DelegateTypeName(SignatureFunction);
}

FString FMulticastDelegateProperty::GetCPPType() const
{
	return DelegateTypeName(SignatureFunction);
}
