// The reflected types and their construction from the generated registration tables.
#include "UObject/Class.h"

#include "UObject/Package.h"
#include "UObject/UnrealType.h"

#include <cstring>
#include <new>
#include <vector>

IMPLEMENT_CORE_INTRINSIC_CLASS(UField, UObject, {})
IMPLEMENT_CORE_INTRINSIC_CLASS(UStruct, UField, {})
IMPLEMENT_CORE_INTRINSIC_CLASS(UScriptStruct, UStruct, {})
IMPLEMENT_CORE_INTRINSIC_CLASS(UFunction, UStruct, {})
IMPLEMENT_CORE_INTRINSIC_CLASS(UDelegateFunction, UFunction, {})
IMPLEMENT_CORE_INTRINSIC_CLASS(UClass, UStruct, {})
IMPLEMENT_CORE_INTRINSIC_CLASS(UEnum, UField, {})
IMPLEMENT_CORE_INTRINSIC_CLASS(UPackage, UObject, {})

namespace
{
const FString& EmptyString()
{
	static const FString Empty;
	return Empty;
}
} // namespace

const FString* FZnMetaData::Find(FName Key) const
{
	for (const FEntry& E : Entries)
	{
		if (E.Key == Key)
		{
			return &E.Value;
		}
	}
	return nullptr;
}

void FZnMetaData::Set(FName Key, const FString& Value)
{
	for (FEntry& E : Entries)
	{
		if (E.Key == Key)
		{
			E.Value = Value;
			return;
		}
	}
	Entries.Add(FEntry{Key, Value});
}

void FZnMetaData::Remove(FName Key)
{
	for (int32 I = 0; I < Entries.Num(); ++I)
	{
		if (Entries[I].Key == Key)
		{
			Entries.RemoveAt(I);
			return;
		}
	}
}

const FString& UField::GetMetaData(const TCHAR* Key) const
{
	const FString* Value = MetaData.Find(FName(Key));
	return Value ? *Value : EmptyString();
}

const FString& UField::GetMetaData(const FName& Key) const
{
	const FString* Value = MetaData.Find(Key);
	return Value ? *Value : EmptyString();
}

UClass* UField::GetOwnerClass() const
{
	for (UObject* O = const_cast<UField*>(this); O; O = O->GetOuter())
	{
		if (O->IsA(UClass::StaticClass()))
		{
			return static_cast<UClass*>(O);
		}
	}
	return nullptr;
}

UStruct* UField::GetOwnerStruct() const
{
	for (UObject* O = const_cast<UField*>(this); O; O = O->GetOuter())
	{
		if (O->IsA(UStruct::StaticClass()))
		{
			return static_cast<UStruct*>(O);
		}
	}
	return nullptr;
}

UStruct::~UStruct()
{
	for (FField* F = ChildProperties; F;)
	{
		FField* Next = F->Next;
		delete F;
		F = Next;
	}
	ChildProperties = nullptr;
}

bool UStruct::IsChildOf(const UStruct* SomeBase) const
{
	for (const UStruct* S = this; S; S = S->GetSuperStruct())
	{
		if (S == SomeBase)
		{
			return true;
		}
	}
	return false;
}

FProperty* UStruct::FindPropertyByName(FName InName) const
{
	for (const UStruct* S = this; S; S = S->GetSuperStruct())
	{
		for (FField* F = S->ChildProperties; F; F = F->Next)
		{
			if (F->GetFName() == InName && F->IsA(FProperty::StaticClass()))
			{
				return static_cast<FProperty*>(F);
			}
		}
	}
	return nullptr;
}

void UStruct::InitializeStruct(void* Dest, int32 ArrayDim) const
{
	for (int32 I = 0; I < ArrayDim; ++I)
	{
		uint8* Block = static_cast<uint8*>(Dest) + I * PropertiesSize;
		for (TFieldIterator<FProperty> It(this); It; ++It)
		{
			It->InitializeValue_InContainer(Block);
		}
	}
}

void UStruct::DestroyStruct(void* Dest, int32 ArrayDim) const
{
	for (int32 I = 0; I < ArrayDim; ++I)
	{
		uint8* Block = static_cast<uint8*>(Dest) + I * PropertiesSize;
		for (TFieldIterator<FProperty> It(this); It; ++It)
		{
			It->DestroyValue_InContainer(Block);
		}
	}
}

void UStruct::AddCppProperty(FProperty* Property)
{
	FField** Tail = &ChildProperties;
	while (*Tail)
	{
		Tail = &(*Tail)->Next;
	}
	*Tail = Property;
	Property->Next = nullptr;
}

FString UScriptStruct::GetStructCPPName() const
{
	return FString(TEXT("F")) + GetName();
}

void UScriptStruct::InitializeStruct(void* Dest, int32 ArrayDim) const
{
	for (int32 I = 0; I < ArrayDim; ++I)
	{
		CppStructOps->Construct(static_cast<uint8*>(Dest) + I * PropertiesSize);
	}
}

void UScriptStruct::DestroyStruct(void* Dest, int32 ArrayDim) const
{
	for (int32 I = 0; I < ArrayDim; ++I)
	{
		CppStructOps->Destruct(static_cast<uint8*>(Dest) + I * PropertiesSize);
	}
}

void UScriptStruct::CopyScriptStruct(void* Dest, const void* Src, int32 ArrayDim) const
{
	for (int32 I = 0; I < ArrayDim; ++I)
	{
		CppStructOps->Copy(
			static_cast<uint8*>(Dest) + I * PropertiesSize, static_cast<const uint8*>(Src) + I * PropertiesSize);
	}
}

FProperty* UFunction::GetReturnProperty() const
{
	for (TFieldIterator<FProperty> It(this); It; ++It)
	{
		if (It->HasAnyPropertyFlags(CPF_ReturnParm))
		{
			return *It;
		}
	}
	return nullptr;
}

void UFunction::Invoke(UObject* Obj, FFrame& Stack, RESULT_DECL)
{
	check(Func);
	Func(Obj, Stack, RESULT_PARAM);
}

UObject* UClass::GetDefaultObject(bool bCreateIfNeeded) const
{
	if (!ClassDefaultObject && bCreateIfNeeded && ClassConstructor && !HasAnyClassFlags(CLASS_Abstract))
	{
		UClass* Self = const_cast<UClass*>(this);
		ClassDefaultObject = StaticConstructObject_Internal(
			Self, GetOutermost(), FName(FString(TEXT("Default__")) + GetName()), RF_ClassDefaultObject | RF_Public);
	}
	return ClassDefaultObject;
}

UFunction* UClass::FindFunctionByName(FName InName, bool bIncludeSuper) const
{
	for (const UClass* C = this; C; C = bIncludeSuper ? C->GetSuperClass() : nullptr)
	{
		for (UFunction* F : C->FunctionList)
		{
			if (F->GetFName() == InName)
			{
				return F;
			}
		}
	}
	return nullptr;
}

void UClass::AddFunctionToFunctionMap(UFunction* Function, FName FuncName)
{
	for (UFunction* F : FunctionList)
	{
		if (F == Function)
		{
			return;
		}
	}
	FunctionList.Add(Function);
	UField** Tail = &Children;
	while (*Tail)
	{
		Tail = &(*Tail)->Next;
	}
	*Tail = Function;
}

void UEnum::SetEnums(const TArray<TPair<FName, int64>>& InNames, ECppForm InCppForm)
{
	Names = InNames;
	CppForm = InCppForm;
}

FName UEnum::GetNameByIndex(int32 Index) const
{
	return Names.IsValidIndex(Index) ? Names[Index].Key : FName();
}

FString UEnum::GetNameStringByIndex(int32 Index) const
{
	if (!Names.IsValidIndex(Index))
	{
		return FString();
	}
	const FString Full = Names[Index].Key.ToString();
	const int32 Colons = Full.Find(TEXT("::"), ESearchCase::CaseSensitive);
	return Colons == INDEX_NONE ? Full : Full.RightChop(Colons + 2);
}

int64 UEnum::GetValueByIndex(int32 Index) const
{
	return Names.IsValidIndex(Index) ? Names[Index].Value : INDEX_NONE;
}

int32 UEnum::GetIndexByValue(int64 Value) const
{
	for (int32 I = 0; I < Names.Num(); ++I)
	{
		if (Names[I].Value == Value)
		{
			return I;
		}
	}
	return INDEX_NONE;
}

FName UEnum::GetNameByValue(int64 Value) const
{
	return GetNameByIndex(GetIndexByValue(Value));
}

FString UEnum::GetNameStringByValue(int64 Value) const
{
	return GetNameStringByIndex(GetIndexByValue(Value));
}

int32 UEnum::GetIndexByName(FName InName) const
{
	for (int32 I = 0; I < Names.Num(); ++I)
	{
		if (Names[I].Key == InName)
		{
			return I;
		}
	}
	// A short name ("EN_US") matches the enumerator whose full name ends with it.
	const FString Short = InName.ToString();
	for (int32 I = 0; I < Names.Num(); ++I)
	{
		if (GetNameStringByIndex(I).Equals(Short, ESearchCase::IgnoreCase))
		{
			return I;
		}
	}
	return INDEX_NONE;
}

int64 UEnum::GetValueByName(FName InName) const
{
	return GetValueByIndex(GetIndexByName(InName));
}

int64 UEnum::GetValueByNameString(const FString& SearchString) const
{
	return GetValueByName(FName(SearchString));
}

int64 UEnum::GetMaxEnumValue() const
{
	int64 Max = 0;
	for (const auto& Pair : Names)
	{
		Max = Pair.Value > Max ? Pair.Value : Max;
	}
	return Max;
}

FString UEnum::GetDisplayNameStringByIndex(int32 Index) const
{
	if (HasMetaData(TEXT("DisplayName"), Index))
	{
		return GetMetaData(TEXT("DisplayName"), Index);
	}
	return GetNameStringByIndex(Index);
}

FString UEnum::GetMetaData(const TCHAR* Key, int32 NameIndex) const
{
	if (NameIndex == INDEX_NONE)
	{
		return UField::GetMetaData(Key);
	}
	if (!Names.IsValidIndex(NameIndex))
	{
		return FString();
	}
	return UField::GetMetaData(FName(GetNameStringByIndex(NameIndex) + TEXT(".") + Key));
}

bool UEnum::HasMetaData(const TCHAR* Key, int32 NameIndex) const
{
	if (NameIndex == INDEX_NONE)
	{
		return UField::HasMetaData(Key);
	}
	return Names.IsValidIndex(NameIndex) &&
		UField::HasMetaData(FName(GetNameStringByIndex(NameIndex) + TEXT(".") + Key));
}

FStructOnScope::FStructOnScope(const UStruct* InStruct)
	: Struct(InStruct)
{
	if (Struct)
	{
		const int32 Size = Struct->GetStructureSize() > 0 ? Struct->GetStructureSize() : 1;
		const size_t Align = Struct->GetMinAlignment() > 16 ? size_t(Struct->GetMinAlignment()) : size_t(16);
		Memory = static_cast<uint8*>(::operator new(size_t(Size), std::align_val_t(Align)));
		std::memset(Memory, 0, size_t(Size));
		Struct->InitializeStruct(Memory);
	}
}

FStructOnScope::~FStructOnScope()
{
	if (Memory)
	{
		Struct->DestroyStruct(Memory);
		const size_t Align = Struct->GetMinAlignment() > 16 ? size_t(Struct->GetMinAlignment()) : size_t(16);
		::operator delete(Memory, std::align_val_t(Align));
	}
}

namespace UECodeGen_Private
{
namespace
{
FName NameFromUTF8(const char* Text)
{
	return FName(FString(UTF8_TO_TCHAR(Text)));
}

template <typename TObject>
TObject* NewReflectionObject(UObject* Outer, const char* Name)
{
	TObject* Object = static_cast<TObject*>(
		StaticConstructObject_Internal(TObject::StaticClass(), Outer, NameFromUTF8(Name), RF_Public | RF_MarkAsNative));
	Object->AddToRoot();
	return Object;
}

template <typename TTarget>
void AddMetaData(TTarget* Target, const FMetaDataPairParam* Array, int32 Num)
{
	for (int32 I = 0; I < Num; ++I)
	{
		Target->SetMetaData(NameFromUTF8(Array[I].NameUTF8), FString(UTF8_TO_TCHAR(Array[I].ValueUTF8)));
	}
}

template <typename TProp, typename TOwner>
TProp* MakeProperty(TOwner* Owner, const FPropertyParams& P)
{
	TProp* Prop = new TProp(Owner, NameFromUTF8(P.NameUTF8), P.PropertyFlags, P.Offset, P.TypeOps);
	return Prop;
}

template <typename TOwner>
FProperty* NewProperty(TOwner* Owner, const FPropertyParams& P)
{
	FProperty* Result = nullptr;
	switch (P.Flags)
	{
		case EPropertyGenFlags::Byte:
		{
			FByteProperty* Prop = MakeProperty<FByteProperty>(Owner, P);
			Prop->Enum = P.EnumFunc ? P.EnumFunc() : nullptr;
			Result = Prop;
			break;
		}
		case EPropertyGenFlags::Int:
			Result = MakeProperty<FIntProperty>(Owner, P);
			break;
		case EPropertyGenFlags::Int64:
			Result = MakeProperty<FInt64Property>(Owner, P);
			break;
		case EPropertyGenFlags::Float:
			Result = MakeProperty<FFloatProperty>(Owner, P);
			break;
		case EPropertyGenFlags::Double:
			Result = MakeProperty<FDoubleProperty>(Owner, P);
			break;
		case EPropertyGenFlags::Bool:
			Result = MakeProperty<FBoolProperty>(Owner, P);
			break;
		case EPropertyGenFlags::Str:
			Result = MakeProperty<FStrProperty>(Owner, P);
			break;
		case EPropertyGenFlags::Name:
			Result = MakeProperty<FNameProperty>(Owner, P);
			break;
		case EPropertyGenFlags::Object:
		{
			FObjectProperty* Prop = MakeProperty<FObjectProperty>(Owner, P);
			Prop->PropertyClass = P.ClassFunc ? P.ClassFunc() : nullptr;
			Result = Prop;
			break;
		}
		case EPropertyGenFlags::Struct:
		{
			FStructProperty* Prop = MakeProperty<FStructProperty>(Owner, P);
			Prop->Struct = P.ScriptStructFunc ? P.ScriptStructFunc() : nullptr;
			Result = Prop;
			break;
		}
		case EPropertyGenFlags::Array:
		{
			FArrayProperty* Prop = MakeProperty<FArrayProperty>(Owner, P);
			check(P.Inner);
			Prop->Inner = NewProperty<FField>(Prop, *P.Inner);
			Result = Prop;
			break;
		}
		case EPropertyGenFlags::Enum:
		{
			FEnumProperty* Prop = MakeProperty<FEnumProperty>(Owner, P);
			check(P.Inner);
			Prop->UnderlyingProp = static_cast<FNumericProperty*>(NewProperty<FField>(Prop, *P.Inner));
			Prop->Enum = P.EnumFunc ? P.EnumFunc() : nullptr;
			Result = Prop;
			break;
		}
		case EPropertyGenFlags::InlineMulticastDelegate:
		{
			FMulticastInlineDelegateProperty* Prop = MakeProperty<FMulticastInlineDelegateProperty>(Owner, P);
			Prop->SignatureFunction = P.SignatureFunctionFunc ? P.SignatureFunctionFunc() : nullptr;
			Result = Prop;
			break;
		}
		case EPropertyGenFlags::Delegate:
		{
			FDelegateProperty* Prop = MakeProperty<FDelegateProperty>(Owner, P);
			Prop->SignatureFunction = P.SignatureFunctionFunc ? P.SignatureFunctionFunc() : nullptr;
			Result = Prop;
			break;
		}
	}
	check(Result);
	Result->ElementSize = P.TypeOps ? P.TypeOps->Size : 0;
	AddMetaData(Result, P.MetaDataArray, P.NumMetaData);
	return Result;
}

void AddProperties(UStruct* Struct, const FPropertyParams* const* Array, int32 Num)
{
	for (int32 I = 0; I < Num; ++I)
	{
		Struct->AddCppProperty(NewProperty<UObject>(Struct, *Array[I]));
	}
}

struct FPendingRegistration
{
	UPackage* (*PackageFunc)();
	UClass* (*const* Classes)();
	int32 NumClasses;
	UScriptStruct* (*const* Structs)();
	int32 NumStructs;
	UEnum* (*const* Enums)();
	int32 NumEnums;
};

std::vector<FPendingRegistration>& PendingRegistrations()
{
	static std::vector<FPendingRegistration>* List = new std::vector<FPendingRegistration>();
	return *List;
}

std::vector<const FPackageParams*>& PackagesWithSingletons()
{
	static std::vector<const FPackageParams*>* List = new std::vector<const FPackageParams*>();
	return *List;
}
} // namespace

void ConstructUEnum(UEnum*& OutEnum, const FEnumParams& P)
{
	UEnum* Enum = NewReflectionObject<UEnum>(P.OuterFunc(), P.NameUTF8);
	OutEnum = Enum;
	Enum->CppType = FString(UTF8_TO_TCHAR(P.CppTypeUTF8));
	TArray<TPair<FName, int64>> Names;
	for (int32 I = 0; I < P.NumEnumerators; ++I)
	{
		Names.Add(TPair<FName, int64>(NameFromUTF8(P.EnumeratorParams[I].NameUTF8), P.EnumeratorParams[I].Value));
	}
	Enum->SetEnums(Names, static_cast<UEnum::ECppForm>(P.CppForm));
	AddMetaData(Enum, P.MetaDataArray, P.NumMetaData);
}

void ConstructUScriptStruct(UScriptStruct*& OutStruct, const FStructParams& P)
{
	UScriptStruct* Struct = NewReflectionObject<UScriptStruct>(P.OuterFunc(), P.NameUTF8);
	OutStruct = Struct;
	if (P.SuperFunc)
	{
		Struct->SetSuperStruct(P.SuperFunc());
	}
	Struct->CppStructOps = P.StructOps;
	Struct->PropertiesSize = P.StructOps->Size;
	Struct->MinAlignment = P.StructOps->Alignment;
	Struct->StructFlags = static_cast<EStructFlags>(P.StructFlags);
	AddProperties(Struct, P.PropertyArray, P.NumProperties);
	AddMetaData(Struct, P.MetaDataArray, P.NumMetaData);
}

namespace
{
void FillFunction(UFunction* Function, const FFunctionParams& P)
{
	Function->FunctionFlags = static_cast<EFunctionFlags>(P.FunctionFlags);
	Function->SetNativeFunc(P.Func);
	Function->PropertiesSize = P.ParmsSize;
	Function->ParmsSize = static_cast<uint16>(P.ParmsSize);
	Function->MinAlignment = P.ParmsAlignment;
	AddProperties(Function, P.PropertyArray, P.NumProperties);
	Function->NumParms = static_cast<uint8>(P.NumProperties);
	for (TFieldIterator<FProperty> It(Function); It; ++It)
	{
		if (It->HasAnyPropertyFlags(CPF_ReturnParm))
		{
			Function->ReturnValueOffset = static_cast<uint16>(It->GetOffset_ForInternal());
		}
	}
	AddMetaData(Function, P.MetaDataArray, P.NumMetaData);
}
} // namespace

void ConstructUFunction(UFunction*& OutFunction, const FFunctionParams& P)
{
	UObject* Outer = P.OuterClassFunc ? static_cast<UObject*>(P.OuterClassFunc()) : P.OuterPackageFunc();
	if (OutFunction)
	{
		return; // built meanwhile while its class was being built
	}
	UFunction* Function = NewReflectionObject<UFunction>(Outer, P.NameUTF8);
	OutFunction = Function;
	FillFunction(Function, P);
}

void ConstructUDelegateFunction(UFunction*& OutFunction, const FFunctionParams& P)
{
	UObject* Outer = P.OuterClassFunc ? static_cast<UObject*>(P.OuterClassFunc()) : P.OuterPackageFunc();
	if (OutFunction)
	{
		return;
	}
	UFunction* Function = NewReflectionObject<UDelegateFunction>(Outer, P.NameUTF8);
	OutFunction = Function;
	FillFunction(Function, P);
}

void ConstructUClass(UClass*& OutClass, const FClassParams& P)
{
	UClass* Class = NewReflectionObject<UClass>(P.OuterFunc(), P.NameUTF8);
	OutClass = Class;
	Class->PrefixCPP = FString(UTF8_TO_TCHAR(P.PrefixCPP));
	Class->ClassFlags = static_cast<EClassFlags>(P.ClassFlags);
	Class->ClassConstructor = P.ClassConstructor;
	Class->PropertiesSize = P.PropertiesSize;
	Class->MinAlignment = P.Alignment;
	Class->SetSuperStruct(P.SuperFunc ? P.SuperFunc() : nullptr);
	AddProperties(Class, P.PropertyArray, P.NumProperties);
	for (int32 I = 0; I < P.NumFunctions; ++I)
	{
		UFunction* Function = P.FunctionArray[I]();
		Class->AddFunctionToFunctionMap(Function, Function->GetFName());
	}
	AddMetaData(Class, P.MetaDataArray, P.NumMetaData);
}

void ConstructUPackage(UPackage*& OutPackage, const FPackageParams& P)
{
	UPackage* Package = CreatePackage(UTF8_TO_TCHAR(P.NameUTF8));
	Package->SetFlags(RF_MarkAsNative);
	OutPackage = Package;
	// Its delegate signatures are built by ProcessNewlyLoadedUObjects: building them here would
	// re-enter the package's own construction through their outer.
	if (P.NumSingletons > 0)
	{
		PackagesWithSingletons().push_back(&P);
	}
}

FRegisterCompiledInInfo::FRegisterCompiledInInfo(UPackage* (*PackageFunc)(), UClass* (*const* Classes)(),
	int32 NumClasses, UScriptStruct* (*const* Structs)(), int32 NumStructs, UEnum* (*const* Enums)(), int32 NumEnums)
{
	PendingRegistrations().push_back({PackageFunc, Classes, NumClasses, Structs, NumStructs, Enums, NumEnums});
}
} // namespace UECodeGen_Private

void ProcessNewlyLoadedUObjects()
{
	using namespace UECodeGen_Private;
	static bool bProcessing = false;
	if (bProcessing)
	{
		return;
	}
	bProcessing = true;
	while (!PendingRegistrations().empty() || !PackagesWithSingletons().empty())
	{
		std::vector<FPendingRegistration> Batch;
		Batch.swap(PendingRegistrations());
		for (const FPendingRegistration& R : Batch)
		{
			R.PackageFunc();
		}
		for (const FPendingRegistration& R : Batch)
		{
			for (int32 I = 0; I < R.NumEnums; ++I)
			{
				R.Enums[I]();
			}
		}
		for (const FPendingRegistration& R : Batch)
		{
			for (int32 I = 0; I < R.NumStructs; ++I)
			{
				R.Structs[I]();
			}
		}
		for (const FPendingRegistration& R : Batch)
		{
			for (int32 I = 0; I < R.NumClasses; ++I)
			{
				R.Classes[I]();
			}
		}
		std::vector<const FPackageParams*> Packages;
		Packages.swap(PackagesWithSingletons());
		for (const FPackageParams* P : Packages)
		{
			for (int32 I = 0; I < P->NumSingletons; ++I)
			{
				P->SingletonFuncArray[I]();
			}
		}
	}
	bProcessing = false;
}
