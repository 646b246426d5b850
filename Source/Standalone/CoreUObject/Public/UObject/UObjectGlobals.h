// Creating, finding and collecting objects, and the tables the generated reflection code hands
// to the registry (UECodeGen_Private). Everything here runs on the game thread.
#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ScriptMacros.h"

#include <new>

class UObject;
class UClass;
class UEnum;
class UFunction;
class UPackage;
class UScriptStruct;

namespace UECodeGen_Private
{
struct FMetaDataPairParam
{
	const char* NameUTF8;
	const char* ValueUTF8;
};

enum class EPropertyGenFlags : uint8
{
	Byte,
	Int,
	Int64,
	Float,
	Double,
	Bool,
	Str,
	Name,
	Object,
	Struct,
	Array,
	Enum,
	InlineMulticastDelegate,
	Delegate,
};

/** What the registry needs to construct, destroy and copy a value of a reflected C++ type. */
struct FPropertyTypeOps
{
	int32 Size;
	int32 Alignment;
	void (*Construct)(void* Dest);
	void (*Destruct)(void* Dest);
	void (*Copy)(void* Dest, const void* Src);
	// TArray only; null otherwise.
	int32 (*ArrayNum)(const void* Array);
	void* (*ArrayData)(void* Array);
	void (*ArrayResize)(void* Array, int32 NewNum);
};

template <typename T>
struct TPropertyTypeOps
{
	static void Construct(void* Dest) { new (Dest) T(); }
	static void Destruct(void* Dest) { static_cast<T*>(Dest)->~T(); }
	static void Copy(void* Dest, const void* Src) { *static_cast<T*>(Dest) = *static_cast<const T*>(Src); }
	static constexpr FPropertyTypeOps Ops = {
		(int32)sizeof(T), (int32)alignof(T), &Construct, &Destruct, &Copy, nullptr, nullptr, nullptr};
};

template <typename ElementType>
struct TPropertyTypeOps<TArray<ElementType>>
{
	using T = TArray<ElementType>;
	static void Construct(void* Dest) { new (Dest) T(); }
	static void Destruct(void* Dest) { static_cast<T*>(Dest)->~T(); }
	static void Copy(void* Dest, const void* Src) { *static_cast<T*>(Dest) = *static_cast<const T*>(Src); }
	static int32 Num(const void* Array) { return static_cast<const T*>(Array)->Num(); }
	static void* Data(void* Array) { return static_cast<T*>(Array)->GetData(); }
	static void Resize(void* Array, int32 NewNum) { static_cast<T*>(Array)->SetNum(NewNum); }
	static constexpr FPropertyTypeOps Ops = {
		(int32)sizeof(T), (int32)alignof(T), &Construct, &Destruct, &Copy, &Num, &Data, &Resize};
};

struct FPropertyParams
{
	const char* NameUTF8;
	EPropertyGenFlags Flags;
	EPropertyFlags PropertyFlags;
	int32 Offset;
	const FPropertyTypeOps* TypeOps;
	UClass* (*ClassFunc)();
	UScriptStruct* (*ScriptStructFunc)();
	UEnum* (*EnumFunc)();
	UFunction* (*SignatureFunctionFunc)();
	const FPropertyParams* Inner; // array element, or the underlying integer of an enumeration
	const FMetaDataPairParam* MetaDataArray;
	int32 NumMetaData;
};

struct FEnumeratorParam
{
	const char* NameUTF8;
	int64 Value;
};

struct FEnumParams
{
	UPackage* (*OuterFunc)();
	const char* NameUTF8;
	const char* CppTypeUTF8;
	const FEnumeratorParam* EnumeratorParams;
	int32 NumEnumerators;
	uint8 CppForm;
	int32 UnderlyingSize;
	const FMetaDataPairParam* MetaDataArray;
	int32 NumMetaData;
};

struct FStructParams
{
	UPackage* (*OuterFunc)();
	UScriptStruct* (*SuperFunc)();
	const char* NameUTF8;
	const FPropertyTypeOps* StructOps;
	const FPropertyParams* const* PropertyArray;
	int32 NumProperties;
	uint32 StructFlags;
	const FMetaDataPairParam* MetaDataArray;
	int32 NumMetaData;
};

struct FFunctionParams
{
	UClass* (*OuterClassFunc)(); // member functions
	UPackage* (*OuterPackageFunc)(); // delegate signatures
	const char* NameUTF8;
	const FPropertyParams* const* PropertyArray;
	int32 NumProperties;
	int32 ParmsSize;
	int32 ParmsAlignment;
	uint32 FunctionFlags;
	FNativeFuncPtr Func;
	const FMetaDataPairParam* MetaDataArray;
	int32 NumMetaData;
};

struct FClassParams
{
	UPackage* (*OuterFunc)();
	UClass* (*SuperFunc)();
	const char* NameUTF8;
	const char* PrefixCPP;
	int32 PropertiesSize;
	int32 Alignment;
	UObject* (*ClassConstructor)();
	UFunction* (*const* FunctionArray)();
	int32 NumFunctions;
	const FPropertyParams* const* PropertyArray;
	int32 NumProperties;
	uint32 ClassFlags;
	const FMetaDataPairParam* MetaDataArray;
	int32 NumMetaData;
};

struct FPackageParams
{
	const char* NameUTF8;
	UFunction* (*const* SingletonFuncArray)();
	int32 NumSingletons;
};

// Each sets Out to the new object before building its members, so a type that refers back to
// itself (a function returning its own class) sees the object under construction.
COREUOBJECT_API void ConstructUEnum(UEnum*& OutEnum, const FEnumParams& Params);
COREUOBJECT_API void ConstructUScriptStruct(UScriptStruct*& OutStruct, const FStructParams& Params);
COREUOBJECT_API void ConstructUFunction(UFunction*& OutFunction, const FFunctionParams& Params);
COREUOBJECT_API void ConstructUDelegateFunction(UFunction*& OutFunction, const FFunctionParams& Params);
COREUOBJECT_API void ConstructUClass(UClass*& OutClass, const FClassParams& Params);
COREUOBJECT_API void ConstructUPackage(UPackage*& OutPackage, const FPackageParams& Params);

/** A static record of one generated file: its types are constructed by ProcessNewlyLoadedUObjects(). */
struct COREUOBJECT_API FRegisterCompiledInInfo
{
	FRegisterCompiledInInfo(UPackage* (*PackageFunc)(), UClass* (*const* Classes)(), int32 NumClasses,
		UScriptStruct* (*const* Structs)(), int32 NumStructs, UEnum* (*const* Enums)(), int32 NumEnums);
};
} // namespace UECodeGen_Private

/** The package that holds objects which are never saved; the usual outer of runtime objects. */
COREUOBJECT_API UPackage* GetTransientPackage();

/**
 * Creates an object of Class (which must derive from UObject and not be abstract). A null Outer
 * means the transient package; NAME_None gives a unique name "<ClassName>_<N>".
 * Returns null (and logs) for an abstract class.
 */
COREUOBJECT_API UObject* StaticConstructObject_Internal(
	const UClass* Class, UObject* Outer, FName Name = NAME_None, EObjectFlags Flags = RF_NoFlags);

template <class T>
T* NewObject(UObject* Outer = nullptr)
{
	return static_cast<T*>(StaticConstructObject_Internal(T::StaticClass(), Outer, NAME_None, RF_NoFlags));
}

template <class T>
T* NewObject(UObject* Outer, FName Name, EObjectFlags Flags = RF_NoFlags)
{
	return static_cast<T*>(StaticConstructObject_Internal(T::StaticClass(), Outer, Name, Flags));
}

template <class T>
T* NewObject(UObject* Outer, const UClass* Class, FName Name = NAME_None, EObjectFlags Flags = RF_NoFlags)
{
	return static_cast<T*>(StaticConstructObject_Internal(Class, Outer, Name, Flags));
}

/** Finds an object by outer and name (any class deriving from Class when Class is given). */
COREUOBJECT_API UObject* StaticFindObject(
	const UClass* Class, UObject* InOuter, const TCHAR* Name, bool bExactClass = false);

template <class T>
T* FindObject(UObject* Outer, const TCHAR* Name, bool bExactClass = false)
{
	return static_cast<T*>(StaticFindObject(T::StaticClass(), Outer, Name, bExactClass));
}

/** The package named PackageName ("/Script/ZnUtilsTools"), or null. */
COREUOBJECT_API UPackage* FindPackage(UObject* InOuter, const TCHAR* PackageName);
COREUOBJECT_API UPackage* CreatePackage(const TCHAR* PackageName);

/** Every live object whose outer (or, with nesting, an outer's outer) is Outer, in creation order. */
COREUOBJECT_API void GetObjectsWithOuter(
	const UObject* Outer, TArray<UObject*>& Results, bool bIncludeNestedObjects = true);
/** Every live object of the class (and, if asked, of derived classes), in creation order. */
COREUOBJECT_API void GetObjectsOfClass(
	const UClass* ClassToLookFor, TArray<UObject*>& Results, bool bIncludeDerivedClasses = true);

/** Constructs every reflected type registered by generated code so far (safe to call again). */
COREUOBJECT_API void ProcessNewlyLoadedUObjects();

/**
 * Destroys every object not reachable from the roots: the root set, objects held by a
 * TStrongObjectPtr, objects having any of KeepFlags, class default objects and reflection
 * objects. Reachability follows each object's outer and its reflected object properties.
 */
COREUOBJECT_API void CollectGarbage(EObjectFlags KeepFlags = RF_NoFlags, bool bPerformFullPurge = true);

/** Number of live objects in the object array. */
COREUOBJECT_API int32 GetNumLiveObjects();
