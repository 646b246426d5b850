// The reflected types: UField (with metadata), UStruct (properties), UScriptStruct (records),
// UClass, UEnum and UFunction (with its native thunk). They are built from the generated
// registration tables and live as long as the process; the garbage collector never frees them.
#pragma once

#include "UObject/Object.h"
#include "UObject/UObjectGlobals.h"

class FField;
class FProperty;
class UStruct;
class UClass;

/** Metadata of a reflected type, function or property: key/value text, keys compared without case. */
struct COREUOBJECT_API FZnMetaData
{
	struct FEntry
	{
		FName Key;
		FString Value;
	};

	const FString* Find(FName Key) const;
	void Set(FName Key, const FString& Value);
	void Remove(FName Key);
	/** All entries, sorted by key the way the registration wrote them. */
	const TArray<FEntry>& GetEntries() const { return Entries; }

private:
	TArray<FEntry> Entries;
};

class COREUOBJECT_API UField : public UObject
{
	DECLARE_CLASS_INTRINSIC(UField, UObject, CLASS_Abstract, TEXT("/Script/CoreUObject"))
public:
	UField* Next = nullptr;

	bool HasMetaData(const TCHAR* Key) const { return MetaData.Find(FName(Key)) != nullptr; }
	bool HasMetaData(const FName& Key) const { return MetaData.Find(Key) != nullptr; }
	/** The value, or an empty string when the key is absent. */
	const FString& GetMetaData(const TCHAR* Key) const;
	const FString& GetMetaData(const FName& Key) const;
	const FString* FindMetaData(const TCHAR* Key) const { return MetaData.Find(FName(Key)); }
	const FString* FindMetaData(const FName& Key) const { return MetaData.Find(Key); }
	void SetMetaData(const TCHAR* Key, const TCHAR* Value) { MetaData.Set(FName(Key), FString(Value)); }
	void SetMetaData(const FName& Key, const FString& Value) { MetaData.Set(Key, Value); }
	void RemoveMetaData(const TCHAR* Key) { MetaData.Remove(FName(Key)); }
	const FZnMetaData& GetMetaDataStore() const { return MetaData; }

	/** The class that owns this field (for a function, its class). */
	UClass* GetOwnerClass() const;
	UStruct* GetOwnerStruct() const;

private:
	FZnMetaData MetaData;
};

class COREUOBJECT_API UStruct : public UField
{
	DECLARE_CLASS_INTRINSIC(UStruct, UField, CLASS_None, TEXT("/Script/CoreUObject"))
public:
	/** Properties in declaration order (this type's own; see TFieldIterator for the inherited ones). */
	FField* ChildProperties = nullptr;
	/** Functions (for a class), in declaration order. */
	UField* Children = nullptr;
	int32 PropertiesSize = 0;
	int32 MinAlignment = 1;

	~UStruct() override;

	UStruct* GetSuperStruct() const { return SuperStruct; }
	void SetSuperStruct(UStruct* NewSuperStruct) { SuperStruct = NewSuperStruct; }
	bool IsChildOf(const UStruct* SomeBase) const;
	template <class T>
	bool IsChildOf() const
	{
		return IsChildOf(T::StaticClass());
	}

	int32 GetPropertiesSize() const { return PropertiesSize; }
	int32 GetStructureSize() const { return PropertiesSize; }
	int32 GetMinAlignment() const { return MinAlignment; }

	/** The property of this type or a base with that name, or null. */
	FProperty* FindPropertyByName(FName InName) const;

	/** Constructs the properties of a block of GetStructureSize() bytes (records run their C++ constructor). */
	virtual void InitializeStruct(void* Dest, int32 ArrayDim = 1) const;
	/** Destroys what InitializeStruct constructed. */
	virtual void DestroyStruct(void* Dest, int32 ArrayDim = 1) const;

	/** Appends a property at the end of the list (used while registering). */
	void AddCppProperty(FProperty* Property);

private:
	UStruct* SuperStruct = nullptr;
};

class COREUOBJECT_API UScriptStruct : public UStruct
{
	DECLARE_CLASS_INTRINSIC(UScriptStruct, UStruct, CLASS_None, TEXT("/Script/CoreUObject"))
public:
	EStructFlags StructFlags = STRUCT_NoFlags;
	/** The C++ operations of the record (construct, destroy, copy), native fields included. */
	const UECodeGen_Private::FPropertyTypeOps* CppStructOps = nullptr;

	/** "F" + name, the C++ type name. */
	FString GetStructCPPName() const;
	bool HasAnyStructFlags(EStructFlags Flags) const { return (StructFlags & Flags) != 0; }

	void InitializeStruct(void* Dest, int32 ArrayDim = 1) const override;
	void DestroyStruct(void* Dest, int32 ArrayDim = 1) const override;
	/** Copies the whole record, native fields included. */
	void CopyScriptStruct(void* Dest, const void* Src, int32 ArrayDim = 1) const;
};

class COREUOBJECT_API UFunction : public UStruct
{
	DECLARE_CLASS_INTRINSIC(UFunction, UStruct, CLASS_None, TEXT("/Script/CoreUObject"))
public:
	EFunctionFlags FunctionFlags = FUNC_None;
	uint8 NumParms = 0;
	uint16 ParmsSize = 0;
	/** Offset of the return value in the parameter block; MAX_uint16 when the function returns nothing. */
	uint16 ReturnValueOffset = 0xFFFF;

	bool HasAnyFunctionFlags(EFunctionFlags Flags) const { return (FunctionFlags & Flags) != 0; }
	bool HasAllFunctionFlags(EFunctionFlags Flags) const { return (FunctionFlags & Flags) == Flags; }
	EFunctionFlags GetFunctionFlags() const { return FunctionFlags; }
	FNativeFuncPtr GetNativeFunc() const { return Func; }
	void SetNativeFunc(FNativeFuncPtr InFunc) { Func = InFunc; }
	/** The property flagged CPF_ReturnParm, or null. */
	FProperty* GetReturnProperty() const;

	/** Runs the native thunk on Obj with the frame's parameter block. */
	void Invoke(UObject* Obj, FFrame& Stack, RESULT_DECL);

private:
	FNativeFuncPtr Func = nullptr;
};

/** The signature of a dynamic delegate ("<Name>__DelegateSignature"), owned by the package. */
class COREUOBJECT_API UDelegateFunction : public UFunction
{
	DECLARE_CLASS_INTRINSIC(UDelegateFunction, UFunction, CLASS_None, TEXT("/Script/CoreUObject"))
};

class COREUOBJECT_API UClass : public UStruct
{
	DECLARE_CLASS_INTRINSIC(UClass, UStruct, CLASS_None, TEXT("/Script/CoreUObject"))
public:
	EClassFlags ClassFlags = CLASS_None;
	UObject* (*ClassConstructor)() = nullptr;
	/** "U" or "A": the prefix of the C++ name. */
	FString PrefixCPP = FString(TEXT("U"));

	UClass* GetSuperClass() const { return static_cast<UClass*>(GetSuperStruct()); }
	bool HasAnyClassFlags(EClassFlags Flags) const { return (ClassFlags & Flags) != 0; }
	bool HasAllClassFlags(EClassFlags Flags) const { return (ClassFlags & Flags) == Flags; }
	const TCHAR* GetPrefixCPP() const { return *PrefixCPP; }
	/** The C++ name: prefix + name ("UZnDM_HttpRequest"). */
	FString GetCppName() const { return PrefixCPP + GetName(); }

	/** The class default object, created on first use (with RF_ClassDefaultObject). */
	UObject* GetDefaultObject(bool bCreateIfNeeded = true) const;
	template <class T>
	T* GetDefaultObject() const
	{
		return static_cast<T*>(GetDefaultObject());
	}

	/** The function of this class (or, if asked, a base) with that name, or null. */
	UFunction* FindFunctionByName(FName InName, bool bIncludeSuper = true) const;
	/** Appends a function to the class (used while registering). */
	void AddFunctionToFunctionMap(UFunction* Function, FName FuncName);

private:
	mutable UObject* ClassDefaultObject = nullptr;
	TArray<UFunction*> FunctionList;
};

class COREUOBJECT_API UEnum : public UField
{
	DECLARE_CLASS_INTRINSIC(UEnum, UField, CLASS_None, TEXT("/Script/CoreUObject"))
public:
	enum class ECppForm : uint8
	{
		Regular,
		Namespaced,
		EnumClass
	};

	/** Full enumerator names ("ZnRegion::EN_US") and values, in declaration order. */
	void SetEnums(const TArray<TPair<FName, int64>>& InNames, ECppForm InCppForm);
	ECppForm GetCppForm() const { return CppForm; }
	FString CppType;

	int32 NumEnums() const { return Names.Num(); }
	/** The full name of the enumerator at Index ("ZnRegion::EN_US"), NAME_None outside the range. */
	FName GetNameByIndex(int32 Index) const;
	/** The value name without the type ("EN_US"); empty outside the range. */
	FString GetNameStringByIndex(int32 Index) const;
	int64 GetValueByIndex(int32 Index) const;
	/** The full name of the enumerator with that value, NAME_None if there is none. */
	FName GetNameByValue(int64 Value) const;
	/** The value name without the type of the enumerator with that value; empty if there is none. */
	FString GetNameStringByValue(int64 Value) const;
	/** The value of a full or short enumerator name; INDEX_NONE when there is none. */
	int64 GetValueByName(FName InName) const;
	int64 GetValueByNameString(const FString& SearchString) const;
	int32 GetIndexByName(FName InName) const;
	int32 GetIndexByValue(int64 Value) const;
	bool IsValidEnumValue(int64 Value) const { return GetIndexByValue(Value) != INDEX_NONE; }
	bool IsValidEnumName(FName InName) const { return GetIndexByName(InName) != INDEX_NONE; }
	int64 GetMaxEnumValue() const;
	/** The display name: "DisplayName" metadata of the enumerator, else its value name. */
	FString GetDisplayNameStringByIndex(int32 Index) const;

	/** Enumerator metadata "<Value>.<Key>" when NameIndex is given, else the enumeration's own. */
	FString GetMetaData(const TCHAR* Key, int32 NameIndex = INDEX_NONE) const;
	bool HasMetaData(const TCHAR* Key, int32 NameIndex = INDEX_NONE) const;

private:
	TArray<TPair<FName, int64>> Names;
	ECppForm CppForm = ECppForm::EnumClass;
};

#include "UObject/UnrealType.h"
