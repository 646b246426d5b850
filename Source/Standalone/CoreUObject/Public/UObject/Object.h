// UObject: the base of every reflected class. Objects are created with NewObject, live in the
// global object array (their index is GetUniqueID()), and are destroyed by CollectGarbage()
// when nothing keeps them: the root set (AddToRoot), a TStrongObjectPtr, the keep flags of the
// collection, or an object property of a kept object. Single-threaded: create, use and collect
// objects on the game thread only.
#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ScriptMacros.h"

class UClass;
class UFunction;
class UPackage;
class UWorld;

/** The declarations every reflected class needs; the generated body or a hand-written class puts it first. */
#define DECLARE_CLASS(TClass, TSuperClass, TStaticFlags, TStaticCastFlags, TPackage, TRequiredAPI) \
public:                                                                                            \
	typedef TSuperClass Super;                                                                     \
	typedef TClass ThisClass;                                                                      \
	TRequiredAPI static UClass* GetPrivateStaticClass();                                           \
	inline static UClass* StaticClass()                                                            \
	{                                                                                              \
		return GetPrivateStaticClass();                                                            \
	}                                                                                              \
	inline static const TCHAR* StaticPackage()                                                     \
	{                                                                                              \
		return TPackage;                                                                           \
	}                                                                                              \
	/** Used by NewObject through the class; do not call directly. */                              \
	static UObject* __DefaultConstructor()                                                         \
	{                                                                                              \
		return new TClass();                                                                       \
	}

/** For engine classes written by hand (no generated code): put first in the class body. */
#define DECLARE_CLASS_INTRINSIC(TClass, TSuperClass, TStaticFlags, TPackage)           \
	DECLARE_CLASS(TClass, TSuperClass, TStaticFlags, CASTCLASS_None, TPackage, NO_API) \
	static constexpr EClassFlags StaticClassFlags = EClassFlags(TStaticFlags);

/** The matching definition, in one .cpp file. The package comes from the declaration. */
#define IMPLEMENT_INTRINSIC_CLASS(TClass, TRequiredAPI, TSuperClass, TSuperRequiredAPI, TPackage, InitCode)          \
	UClass* TClass::GetPrivateStaticClass()                                                                          \
	{                                                                                                                \
		static UClass* PrivateStaticClass = nullptr;                                                                 \
		if (!PrivateStaticClass)                                                                                     \
		{                                                                                                            \
			::ZnConstructIntrinsicClass(PrivateStaticClass, #TClass, TClass::StaticPackage(), (int32)sizeof(TClass), \
				(int32)alignof(TClass), &TSuperClass::StaticClass, &TClass::__DefaultConstructor,                    \
				TClass::StaticClassFlags);                                                                           \
			InitCode                                                                                                 \
		}                                                                                                            \
		return PrivateStaticClass;                                                                                   \
	}                                                                                                                \
	template <>                                                                                                      \
	UClass* StaticClass<TClass>()                                                                                    \
	{                                                                                                                \
		return TClass::StaticClass();                                                                                \
	}

#define IMPLEMENT_CORE_INTRINSIC_CLASS(TClass, TSuperClass, InitCode) \
	IMPLEMENT_INTRINSIC_CLASS(TClass, COREUOBJECT_API, TSuperClass, COREUOBJECT_API, "/Script/CoreUObject", InitCode)

/** Builds the class object of a hand-written class (see IMPLEMENT_INTRINSIC_CLASS). */
COREUOBJECT_API void ZnConstructIntrinsicClass(UClass*& OutClass, const char* CppName, const TCHAR* PackageName,
	int32 Size, int32 Alignment, UClass* (*SuperFunc)(), UObject* (*Constructor)(), EClassFlags Flags);

class COREUOBJECT_API UObject
{
public:
	typedef UObject ThisClass;
	typedef UObject Super;
	static constexpr EClassFlags StaticClassFlags = CLASS_Abstract;
	static UClass* GetPrivateStaticClass();
	static UClass* StaticClass() { return GetPrivateStaticClass(); }
	static const TCHAR* StaticPackage() { return TEXT("/Script/CoreUObject"); }
	static UObject* __DefaultConstructor() { return new UObject(); }

	/** Registers the object in the object array; NewObject has told it its class, outer, name and flags. */
	UObject();
	virtual ~UObject();
	UObject(const UObject&) = delete;
	UObject& operator=(const UObject&) = delete;

	UClass* GetClass() const { return ClassPrivate; }
	UObject* GetOuter() const { return OuterPrivate; }
	FName GetFName() const { return NamePrivate; }
	FString GetName() const { return NamePrivate.ToString(); }
	/** "/Script/Package.Outer.Name" style path. */
	FString GetPathName() const;
	/** The package at the end of the outer chain (the object itself for a package). */
	UPackage* GetOutermost() const;
	UPackage* GetPackage() const { return GetOutermost(); }

	/** Index in the global object array; a later object may reuse the index of a collected one. */
	uint32 GetUniqueID() const { return static_cast<uint32>(InternalIndex); }

	EObjectFlags GetFlags() const { return ObjectFlags; }
	void SetFlags(EObjectFlags NewFlags) { ObjectFlags |= NewFlags; }
	void ClearFlags(EObjectFlags Flags) { ObjectFlags &= ~Flags; }
	bool HasAnyFlags(EObjectFlags Flags) const { return (ObjectFlags & Flags) != 0; }
	bool HasAllFlags(EObjectFlags Flags) const { return (ObjectFlags & Flags) == Flags; }

	/** Keeps the object (and what it references) alive through garbage collection until RemoveFromRoot. */
	void AddToRoot();
	void RemoveFromRoot();
	bool IsRooted() const;

	/** True for a live object registered in the object array. */
	bool IsValidLowLevel() const;
	bool IsValidLowLevelFast() const { return IsValidLowLevel(); }

	bool IsA(const UClass* SomeBase) const;
	template <class T>
	bool IsA() const
	{
		return IsA(T::StaticClass());
	}

	/** The reflected function of this object's class (or a base) with that name, or null. */
	UFunction* FindFunction(FName InName) const;
	UFunction* FindFunctionChecked(FName InName) const;

	/**
	 * Calls a reflected function with a parameter block laid out by its properties (see FStructOnScope);
	 * the return value and out parameters are written into the block. Static functions run on the
	 * class default object.
	 */
	virtual void ProcessEvent(UFunction* Function, void* Parms);

	/** Called by the garbage collector before the object is deleted. */
	virtual void BeginDestroy() {}
	/** Called once the object has been fully constructed by NewObject. */
	virtual void PostInitProperties() {}

	/** The world the object lives in; none for plain objects. */
	virtual UWorld* GetWorld() const { return nullptr; }

private:
	friend class FUObjectArray;
	friend struct FZnObjectInternals;
	UClass* ClassPrivate = nullptr;
	UObject* OuterPrivate = nullptr;
	FName NamePrivate;
	EObjectFlags ObjectFlags = RF_NoFlags;
	int32 InternalIndex = -1;
};

/** True for a non-null live object. */
COREUOBJECT_API bool IsValid(const UObject* Test);

template <>
COREUOBJECT_API UClass* StaticClass<UObject>();

#include "UObject/Class.h"
#include "UObject/ScriptDelegates.h"
#include "UObject/UObjectGlobals.h"
