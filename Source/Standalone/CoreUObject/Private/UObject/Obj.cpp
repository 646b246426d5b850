// The object array, object creation and lookup, garbage collection, weak references and the
// UObject class itself.
#include "UObject/Object.h"

#include "UObject/GarbageCollection.h"
#include "UObject/Package.h"
#include "UObject/ScriptDelegates.h"
#include "UObject/UnrealType.h"

#include <cstdio>
#include <string>
#include <unordered_map>
#include <vector>

namespace
{
struct FObjectItem
{
	UObject* Object = nullptr;
	int32 SerialNumber = 0;
	bool bRooted = false;
};

/** The construction request NewObject hands to the UObject constructor. */
struct FPendingConstruct
{
	const UClass* Class = nullptr;
	UObject* Outer = nullptr;
	FName Name;
	EObjectFlags Flags = RF_NoFlags;
	bool bSet = false;
};

FPendingConstruct GPending;
} // namespace

class FUObjectArray
{
public:
	static FUObjectArray& Get()
	{
		// Never destroyed: objects may still be released by static destructors at exit.
		static FUObjectArray* Array = new FUObjectArray();
		return *Array;
	}

	int32 Allocate(UObject* Object)
	{
		int32 Index;
		if (!FreeList.empty())
		{
			// The most recently freed index is reused first, as the engine's object array does.
			Index = FreeList.back();
			FreeList.pop_back();
		}
		else
		{
			Index = static_cast<int32>(Items.size());
			Items.emplace_back();
		}
		Items[Index].Object = Object;
		Items[Index].bRooted = false;
		++Items[Index].SerialNumber;
		return Index;
	}

	void Free(int32 Index)
	{
		if (Index >= 0 && Index < static_cast<int32>(Items.size()) && Items[Index].Object)
		{
			Items[Index].Object = nullptr;
			Items[Index].bRooted = false;
			FreeList.push_back(Index);
		}
	}

	FObjectItem* Item(int32 Index)
	{
		return Index >= 0 && Index < static_cast<int32>(Items.size()) ? &Items[Index] : nullptr;
	}

	std::vector<FObjectItem> Items;
	std::vector<int32> FreeList;
	std::unordered_map<UObject*, int32> ExternalReferences;
	std::unordered_map<std::u16string, int32> NameCounters;
};

struct FZnObjectInternals
{
	static void SetIdentity(UObject* Object, UClass* Class, UObject* Outer, FName Name)
	{
		Object->ClassPrivate = Class;
		Object->OuterPrivate = Outer;
		Object->NamePrivate = Name;
	}
	static int32 Index(const UObject* Object) { return Object->InternalIndex; }
};

UObject::UObject()
{
	InternalIndex = FUObjectArray::Get().Allocate(this);
	if (GPending.bSet)
	{
		ClassPrivate = const_cast<UClass*>(GPending.Class);
		OuterPrivate = GPending.Outer;
		NamePrivate = GPending.Name;
		ObjectFlags = GPending.Flags;
		GPending = FPendingConstruct();
	}
}

UObject::~UObject()
{
	FUObjectArray::Get().Free(InternalIndex);
	InternalIndex = -1;
}

FString UObject::GetPathName() const
{
	if (!OuterPrivate)
	{
		return GetName();
	}
	const FString OuterPath = OuterPrivate->GetPathName();
	// A package's direct children are joined with '.', deeper ones with ':' after the first level.
	const bool bOuterIsPackage = OuterPrivate->GetOuter() == nullptr;
	return OuterPath + (bOuterIsPackage ? TEXT(".") : TEXT(":")) + GetName();
}

UPackage* UObject::GetOutermost() const
{
	const UObject* Top = this;
	while (Top->OuterPrivate)
	{
		Top = Top->OuterPrivate;
	}
	return static_cast<UPackage*>(const_cast<UObject*>(Top));
}

void UObject::AddToRoot()
{
	if (FObjectItem* Item = FUObjectArray::Get().Item(InternalIndex))
	{
		Item->bRooted = true;
	}
}

void UObject::RemoveFromRoot()
{
	if (FObjectItem* Item = FUObjectArray::Get().Item(InternalIndex))
	{
		Item->bRooted = false;
	}
}

bool UObject::IsRooted() const
{
	const FObjectItem* Item = FUObjectArray::Get().Item(InternalIndex);
	return Item && Item->bRooted;
}

bool UObject::IsValidLowLevel() const
{
	const FObjectItem* Item = FUObjectArray::Get().Item(InternalIndex);
	return Item && Item->Object == this;
}

bool UObject::IsA(const UClass* SomeBase) const
{
	return ClassPrivate && ClassPrivate->IsChildOf(SomeBase);
}

UFunction* UObject::FindFunction(FName InName) const
{
	return ClassPrivate ? ClassPrivate->FindFunctionByName(InName) : nullptr;
}

UFunction* UObject::FindFunctionChecked(FName InName) const
{
	UFunction* Function = FindFunction(InName);
	check(Function);
	return Function;
}

void UObject::ProcessEvent(UFunction* Function, void* Parms)
{
	check(Function);
	if (!Function->GetNativeFunc())
	{
		return;
	}
	FFrame Stack(this, Function, Parms);
	void* Result = nullptr;
	if (Function->ReturnValueOffset != 0xFFFF && Parms)
	{
		Result = static_cast<uint8*>(Parms) + Function->ReturnValueOffset;
	}
	Function->Invoke(this, Stack, Result);
}

bool IsValid(const UObject* Test)
{
	return Test && Test->IsValidLowLevel();
}

UClass* UObject::GetPrivateStaticClass()
{
	static UClass* PrivateStaticClass = nullptr;
	if (!PrivateStaticClass)
	{
		ZnConstructIntrinsicClass(PrivateStaticClass, "UObject", StaticPackage(), (int32)sizeof(UObject),
			(int32)alignof(UObject), nullptr, &UObject::__DefaultConstructor, StaticClassFlags);
	}
	return PrivateStaticClass;
}

template <>
UClass* StaticClass<UObject>()
{
	return UObject::StaticClass();
}

namespace
{
/** "UZnDM_HttpRequest" -> "ZnDM_HttpRequest", as the engine names classes and records. */
FString StripCppPrefix(const FString& CppName, FString* OutPrefix)
{
	if (CppName.Len() > 1 && (CppName[0] == 'U' || CppName[0] == 'A' || CppName[0] == 'F') && CppName[1] >= 'A' &&
		CppName[1] <= 'Z')
	{
		if (OutPrefix)
		{
			*OutPrefix = CppName.Left(1);
		}
		return CppName.RightChop(1);
	}
	if (OutPrefix)
	{
		*OutPrefix = FString();
	}
	return CppName;
}
} // namespace

void ZnConstructIntrinsicClass(UClass*& OutClass, const char* CppName, const TCHAR* PackageName, int32 Size,
	int32 Alignment, UClass* (*SuperFunc)(), UObject* (*Constructor)(), EClassFlags Flags)
{
	UClass* Class = new UClass();
	OutClass = Class;
	Class->SetFlags(RF_Public | RF_MarkAsNative);
	Class->AddToRoot();
	FString Prefix;
	const FString Name = StripCppPrefix(FString(CppName), &Prefix);
	Class->PrefixCPP = Prefix;
	Class->ClassFlags = Flags | CLASS_Native | CLASS_Intrinsic | CLASS_Constructed;
	Class->PropertiesSize = Size;
	Class->MinAlignment = Alignment;
	Class->ClassConstructor = Constructor;
	// The class of a class is UClass; while UClass itself is being built this returns the object above.
	FZnObjectInternals::SetIdentity(Class, UClass::StaticClass(), CreatePackage(PackageName), FName(Name));
	UClass* Super = SuperFunc ? SuperFunc() : nullptr;
	Class->SetSuperStruct(Super != Class ? Super : nullptr);
}

UObject* StaticConstructObject_Internal(const UClass* Class, UObject* Outer, FName Name, EObjectFlags Flags)
{
	check(Class);
	if (Class->HasAnyClassFlags(CLASS_Abstract) || !Class->ClassConstructor)
	{
		std::fprintf(
			stderr, "NewObject: class %s is abstract and cannot be instantiated\n", TCHAR_TO_UTF8(*Class->GetName()));
		return nullptr;
	}
	const bool bIsPackage = Class->IsChildOf(UPackage::StaticClass());
	if (!Outer && !bIsPackage)
	{
		Outer = GetTransientPackage();
	}
	if (Name.IsNone())
	{
		FUObjectArray& Array = FUObjectArray::Get();
		const FString Base = Class->GetName();
		const std::u16string Key(*Base, *Base + Base.Len());
		int32& Counter = Array.NameCounters[Key];
		Name = FName(Base + TEXT("_") + FString::FromInt(Counter++));
	}
	GPending.Class = Class;
	GPending.Outer = Outer;
	GPending.Name = Name;
	GPending.Flags = Flags;
	GPending.bSet = true;
	UObject* Object = Class->ClassConstructor();
	GPending = FPendingConstruct();
	// A class constructor of a base (a hand-written class without its own) leaves the class to fix.
	FZnObjectInternals::SetIdentity(Object, const_cast<UClass*>(Class), Outer, Name);
	Object->PostInitProperties();
	return Object;
}

UObject* StaticFindObject(const UClass* Class, UObject* InOuter, const TCHAR* Name, bool bExactClass)
{
	ProcessNewlyLoadedUObjects();
	const FName Wanted(Name);
	for (const FObjectItem& Item : FUObjectArray::Get().Items)
	{
		UObject* Object = Item.Object;
		if (!Object || Object->GetFName() != Wanted || (InOuter && Object->GetOuter() != InOuter))
		{
			continue;
		}
		if (Class && (bExactClass ? Object->GetClass() != Class : !Object->IsA(Class)))
		{
			continue;
		}
		return Object;
	}
	return nullptr;
}

UPackage* FindPackage(UObject* InOuter, const TCHAR* PackageName)
{
	const FName Wanted(PackageName);
	for (const FObjectItem& Item : FUObjectArray::Get().Items)
	{
		UObject* Object = Item.Object;
		if (Object && !Object->GetOuter() && Object->GetFName() == Wanted && Object->GetClass() &&
			Object->GetClass() == UPackage::StaticClass())
		{
			return static_cast<UPackage*>(Object);
		}
	}
	return nullptr;
}

UPackage* CreatePackage(const TCHAR* PackageName)
{
	if (UPackage* Existing = FindPackage(nullptr, PackageName))
	{
		return Existing;
	}
	UPackage* Package = static_cast<UPackage*>(
		StaticConstructObject_Internal(UPackage::StaticClass(), nullptr, FName(PackageName), RF_Public));
	Package->AddToRoot();
	return Package;
}

UPackage* GetTransientPackage()
{
	static UPackage* Transient = nullptr;
	if (!Transient)
	{
		Transient = CreatePackage(TEXT("/Engine/Transient"));
		Transient->SetFlags(RF_Transient);
	}
	return Transient;
}

void GetObjectsWithOuter(const UObject* Outer, TArray<UObject*>& Results, bool bIncludeNestedObjects)
{
	ProcessNewlyLoadedUObjects();
	for (const FObjectItem& Item : FUObjectArray::Get().Items)
	{
		UObject* Object = Item.Object;
		if (!Object)
		{
			continue;
		}
		for (UObject* O = Object->GetOuter(); O; O = bIncludeNestedObjects ? O->GetOuter() : nullptr)
		{
			if (O == Outer)
			{
				Results.Add(Object);
				break;
			}
		}
	}
}

void GetObjectsOfClass(const UClass* ClassToLookFor, TArray<UObject*>& Results, bool bIncludeDerivedClasses)
{
	ProcessNewlyLoadedUObjects();
	for (const FObjectItem& Item : FUObjectArray::Get().Items)
	{
		UObject* Object = Item.Object;
		if (Object && (bIncludeDerivedClasses ? Object->IsA(ClassToLookFor) : Object->GetClass() == ClassToLookFor))
		{
			Results.Add(Object);
		}
	}
}

int32 GetNumLiveObjects()
{
	int32 Count = 0;
	for (const FObjectItem& Item : FUObjectArray::Get().Items)
	{
		Count += Item.Object != nullptr;
	}
	return Count;
}

namespace ZnGC
{
void AddExternalReference(UObject* Object)
{
	if (Object)
	{
		++FUObjectArray::Get().ExternalReferences[Object];
	}
}

void RemoveExternalReference(UObject* Object)
{
	auto& Refs = FUObjectArray::Get().ExternalReferences;
	auto It = Refs.find(Object);
	if (It != Refs.end() && --It->second <= 0)
	{
		Refs.erase(It);
	}
}
} // namespace ZnGC

namespace
{
template <typename MarkFn>
void MarkStructReferences(const UStruct* Struct, const void* Container, MarkFn& Mark);

template <typename MarkFn>
void MarkValueReferences(const FProperty* Property, const void* Value, MarkFn& Mark)
{
	if (const FObjectPropertyBase* Obj = CastField<FObjectPropertyBase>(Property))
	{
		Mark(Obj->GetObjectPropertyValue(Value));
	}
	else if (const FStructProperty* Struct = CastField<FStructProperty>(Property))
	{
		MarkStructReferences(Struct->Struct, Value, Mark);
	}
	else if (const FArrayProperty* Array = CastField<FArrayProperty>(Property))
	{
		if (!CastField<FObjectPropertyBase>(Array->Inner) && !CastField<FStructProperty>(Array->Inner))
		{
			return;
		}
		FScriptArrayHelper Helper(Array, Value);
		for (int32 I = 0; I < Helper.Num(); ++I)
		{
			MarkValueReferences(Array->Inner, Helper.GetRawPtr(I), Mark);
		}
	}
}

template <typename MarkFn>
void MarkStructReferences(const UStruct* Struct, const void* Container, MarkFn& Mark)
{
	if (!Struct)
	{
		return;
	}
	for (TFieldIterator<FProperty> It(Struct); It; ++It)
	{
		MarkValueReferences(*It, It->ContainerPtrToValuePtr<void>(Container), Mark);
	}
}
} // namespace

void CollectGarbage(EObjectFlags KeepFlags, bool bPerformFullPurge)
{
	FUObjectArray& Array = FUObjectArray::Get();
	std::vector<char> Marked(Array.Items.size(), 0);
	std::vector<UObject*> Pending;
	auto Mark = [&](UObject* Object)
	{
		if (!Object)
		{
			return;
		}
		const int32 Index = FZnObjectInternals::Index(Object);
		if (Index >= 0 && Index < static_cast<int32>(Marked.size()) && !Marked[Index] &&
			Array.Items[Index].Object == Object)
		{
			Marked[Index] = 1;
			Pending.push_back(Object);
		}
	};
	const EObjectFlags AlwaysKeep = KeepFlags | RF_MarkAsNative | RF_ClassDefaultObject;
	for (const FObjectItem& Item : Array.Items)
	{
		if (Item.Object &&
			(Item.bRooted || Item.Object->HasAnyFlags(AlwaysKeep) || Array.ExternalReferences.count(Item.Object)))
		{
			Mark(Item.Object);
		}
	}
	while (!Pending.empty())
	{
		UObject* Object = Pending.back();
		Pending.pop_back();
		Mark(Object->GetOuter());
		Mark(Object->GetClass());
		if (UClass* Class = Object->GetClass())
		{
			MarkStructReferences(Class, Object, Mark);
		}
	}
	std::vector<UObject*> Unreachable;
	for (size_t I = 0; I < Marked.size(); ++I)
	{
		if (!Marked[I] && Array.Items[I].Object)
		{
			Unreachable.push_back(Array.Items[I].Object);
		}
	}
	for (UObject* Object : Unreachable)
	{
		Object->BeginDestroy();
	}
	for (UObject* Object : Unreachable)
	{
		delete Object;
	}
}

FWeakObjectPtr& FWeakObjectPtr::operator=(const UObject* Object)
{
	if (Object && Object->IsValidLowLevel())
	{
		ObjectIndex = FZnObjectInternals::Index(Object);
		ObjectSerialNumber = FUObjectArray::Get().Item(ObjectIndex)->SerialNumber;
	}
	else
	{
		Reset();
	}
	return *this;
}

UObject* FWeakObjectPtr::Get() const
{
	const FObjectItem* Item = FUObjectArray::Get().Item(ObjectIndex);
	return Item && Item->SerialNumber == ObjectSerialNumber ? Item->Object : nullptr;
}

namespace ZnDelegateDetail
{
FName FunctionNameFromText(const TCHAR* Text)
{
	FString Name(Text);
	int32 Colon = INDEX_NONE;
	for (int32 I = Name.Len() - 1; I >= 0; --I)
	{
		if (Name[I] == ':')
		{
			Colon = I;
			break;
		}
	}
	if (Colon != INDEX_NONE)
	{
		Name = Name.RightChop(Colon + 1);
	}
	else if (Name.Len() && Name[0] == '&')
	{
		Name = Name.RightChop(1);
	}
	return FName(Name.TrimStartAndEnd());
}

uint64 NextHandle()
{
	static uint64 Handle = 0;
	return ++Handle;
}

UObject* ResolveWeak(const FWeakObjectPtr& Weak)
{
	return Weak.Get();
}
} // namespace ZnDelegateDetail
