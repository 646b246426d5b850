// Property descriptors: the type, flags, offset and metadata of each reflected member of a
// record or class and of each parameter of a function, with the type-erased operations a
// generic caller needs (construct, destroy and copy a value; read and resize an array).
#pragma once

#include "UObject/Class.h"

#include <type_traits>

/** The kind of a field, for CastField. */
class COREUOBJECT_API FFieldClass
{
public:
	FFieldClass(const TCHAR* InName, FFieldClass* InSuper)
		: Name(InName)
		, Super(InSuper)
	{
	}
	FName GetFName() const { return Name; }
	FString GetName() const { return Name.ToString(); }
	FFieldClass* GetSuperClass() const { return Super; }
	bool IsChildOf(const FFieldClass* Other) const
	{
		for (const FFieldClass* C = this; C; C = C->Super)
		{
			if (C == Other)
			{
				return true;
			}
		}
		return false;
	}

private:
	FName Name;
	FFieldClass* Super;
};

#define DECLARE_FIELD(TClass, TSuperClass) \
public:                                    \
	typedef TSuperClass Super;             \
	static FFieldClass* StaticClass();     \
	FFieldClass* GetClass() const override \
	{                                      \
		return StaticClass();              \
	}

class COREUOBJECT_API FField
{
public:
	static FFieldClass* StaticClass();
	virtual FFieldClass* GetClass() const { return StaticClass(); }

	FField(UObject* InOwner, FName InName, EObjectFlags InFlags = RF_NoFlags);
	FField(FField* InOwner, FName InName, EObjectFlags InFlags = RF_NoFlags);
	virtual ~FField();
	FField(const FField&) = delete;
	FField& operator=(const FField&) = delete;

	FField* Next = nullptr;

	FName GetFName() const { return NamePrivate; }
	FString GetName() const { return NamePrivate.ToString(); }
	/** The struct, class or function this field belongs to (for an array's element, the array's owner). */
	UStruct* GetOwnerStruct() const;
	UObject* GetOwnerUObject() const;
	FField* GetOwnerField() const { return OwnerField; }
	bool IsA(const FFieldClass* FieldClass) const { return GetClass()->IsChildOf(FieldClass); }
	template <class T>
	bool IsA() const
	{
		return IsA(T::StaticClass());
	}

	bool HasMetaData(const TCHAR* Key) const { return MetaData.Find(FName(Key)) != nullptr; }
	const FString& GetMetaData(const TCHAR* Key) const;
	const FString* FindMetaData(const TCHAR* Key) const { return MetaData.Find(FName(Key)); }
	void SetMetaData(const TCHAR* Key, const TCHAR* Value) { MetaData.Set(FName(Key), FString(Value)); }
	void SetMetaData(const FName& Key, const FString& Value) { MetaData.Set(Key, Value); }
	const FZnMetaData& GetMetaDataStore() const { return MetaData; }

private:
	UObject* OwnerObject = nullptr;
	FField* OwnerField = nullptr;
	FName NamePrivate;
	EObjectFlags FlagsPrivate = RF_NoFlags;
	FZnMetaData MetaData;
};

template <class FieldType>
FieldType* CastField(FField* Src)
{
	return Src && Src->IsA(FieldType::StaticClass()) ? static_cast<FieldType*>(Src) : nullptr;
}

template <class FieldType>
const FieldType* CastField(const FField* Src)
{
	return Src && Src->IsA(FieldType::StaticClass()) ? static_cast<const FieldType*>(Src) : nullptr;
}

template <class FieldType>
FieldType* CastFieldChecked(FField* Src)
{
	FieldType* Result = CastField<FieldType>(Src);
	check(Result);
	return Result;
}

class COREUOBJECT_API FProperty : public FField
{
	DECLARE_FIELD(FProperty, FField)
public:
	FProperty(UObject* InOwner, FName InName, EPropertyFlags InFlags, int32 InOffset,
		const UECodeGen_Private::FPropertyTypeOps* InOps);
	FProperty(FField* InOwner, FName InName, EPropertyFlags InFlags, int32 InOffset,
		const UECodeGen_Private::FPropertyTypeOps* InOps);

	int32 ArrayDim = 1;
	int32 ElementSize = 0;
	EPropertyFlags PropertyFlags = CPF_None;

	/** The C++ type as a parameter block stores it ("FString", "TArray<uint8>", "UZnDM_HttpRequest*"). */
	virtual FString GetCPPType() const = 0;

	EPropertyFlags GetPropertyFlags() const { return PropertyFlags; }
	bool HasAnyPropertyFlags(EPropertyFlags Flags) const { return (PropertyFlags & Flags) != 0; }
	bool HasAllPropertyFlags(EPropertyFlags Flags) const { return (PropertyFlags & Flags) == Flags; }
	int32 GetOffset_ForInternal() const { return Offset_Internal; }
	int32 GetSize() const { return ElementSize * ArrayDim; }
	int32 GetMinAlignment() const { return TypeOps ? TypeOps->Alignment : 1; }
	const UECodeGen_Private::FPropertyTypeOps* GetTypeOps() const { return TypeOps; }

	template <typename ValueType = void>
	ValueType* ContainerPtrToValuePtr(void* Container, int32 ArrayIndex = 0) const
	{
		return reinterpret_cast<ValueType*>(
			static_cast<uint8*>(Container) + Offset_Internal + ElementSize * ArrayIndex);
	}
	template <typename ValueType = void>
	const ValueType* ContainerPtrToValuePtr(const void* Container, int32 ArrayIndex = 0) const
	{
		return reinterpret_cast<const ValueType*>(
			static_cast<const uint8*>(Container) + Offset_Internal + ElementSize * ArrayIndex);
	}

	/** Constructs a value at Dest (a default value: zero, empty, the record's default constructor). */
	void InitializeValue(void* Dest) const { TypeOps->Construct(Dest); }
	void DestroyValue(void* Dest) const { TypeOps->Destruct(Dest); }
	void CopySingleValue(void* Dest, const void* Src) const { TypeOps->Copy(Dest, Src); }
	void CopyCompleteValue(void* Dest, const void* Src) const { TypeOps->Copy(Dest, Src); }
	void InitializeValue_InContainer(void* Container) const
	{
		InitializeValue(ContainerPtrToValuePtr<void>(Container));
	}
	void DestroyValue_InContainer(void* Container) const { DestroyValue(ContainerPtrToValuePtr<void>(Container)); }
	void CopyCompleteValue_InContainer(void* Dest, const void* Src) const
	{
		CopyCompleteValue(ContainerPtrToValuePtr<void>(Dest), ContainerPtrToValuePtr<void>(Src));
	}

protected:
	int32 Offset_Internal = 0;
	const UECodeGen_Private::FPropertyTypeOps* TypeOps = nullptr;
};

class COREUOBJECT_API FNumericProperty : public FProperty
{
	DECLARE_FIELD(FNumericProperty, FProperty)
public:
	using FProperty::FProperty;
	virtual bool IsFloatingPoint() const { return false; }
	virtual bool IsInteger() const { return true; }
	/** The enumeration of a byte property that stands for one (TEnumAsByte), else null. */
	virtual UEnum* GetIntPropertyEnum() const { return nullptr; }
	virtual int64 GetSignedIntPropertyValue(const void* Data) const = 0;
	virtual double GetFloatingPointPropertyValue(const void* Data) const = 0;
	virtual void SetIntPropertyValue(void* Data, int64 Value) const = 0;
	virtual void SetFloatingPointPropertyValue(void* Data, double Value) const = 0;
};

template <typename T, bool bFloat>
class TZnNumericPropertyImpl : public FNumericProperty
{
public:
	using FNumericProperty::FNumericProperty;
	bool IsFloatingPoint() const override { return bFloat; }
	bool IsInteger() const override { return !bFloat; }
	int64 GetSignedIntPropertyValue(const void* Data) const override { return (int64) * static_cast<const T*>(Data); }
	double GetFloatingPointPropertyValue(const void* Data) const override
	{
		return (double)*static_cast<const T*>(Data);
	}
	void SetIntPropertyValue(void* Data, int64 Value) const override { *static_cast<T*>(Data) = (T)Value; }
	void SetFloatingPointPropertyValue(void* Data, double Value) const override { *static_cast<T*>(Data) = (T)Value; }
	T GetPropertyValue(const void* Data) const { return *static_cast<const T*>(Data); }
	void SetPropertyValue(void* Data, T Value) const { *static_cast<T*>(Data) = Value; }
};

class COREUOBJECT_API FByteProperty : public TZnNumericPropertyImpl<uint8, false>
{
	DECLARE_FIELD(FByteProperty, FNumericProperty)
public:
	using TZnNumericPropertyImpl::TZnNumericPropertyImpl;
	UEnum* Enum = nullptr;
	UEnum* GetIntPropertyEnum() const override { return Enum; }
	FString GetCPPType() const override;
};

class COREUOBJECT_API FIntProperty : public TZnNumericPropertyImpl<int32, false>
{
	DECLARE_FIELD(FIntProperty, FNumericProperty)
public:
	using TZnNumericPropertyImpl::TZnNumericPropertyImpl;
	FString GetCPPType() const override { return FString(TEXT("int32")); }
};

class COREUOBJECT_API FInt64Property : public TZnNumericPropertyImpl<int64, false>
{
	DECLARE_FIELD(FInt64Property, FNumericProperty)
public:
	using TZnNumericPropertyImpl::TZnNumericPropertyImpl;
	FString GetCPPType() const override { return FString(TEXT("int64")); }
};

class COREUOBJECT_API FFloatProperty : public TZnNumericPropertyImpl<float, true>
{
	DECLARE_FIELD(FFloatProperty, FNumericProperty)
public:
	using TZnNumericPropertyImpl::TZnNumericPropertyImpl;
	FString GetCPPType() const override { return FString(TEXT("float")); }
};

class COREUOBJECT_API FDoubleProperty : public TZnNumericPropertyImpl<double, true>
{
	DECLARE_FIELD(FDoubleProperty, FNumericProperty)
public:
	using TZnNumericPropertyImpl::TZnNumericPropertyImpl;
	FString GetCPPType() const override { return FString(TEXT("double")); }
};

/** A native C++ bool (one byte, all bits). */
class COREUOBJECT_API FBoolProperty : public FProperty
{
	DECLARE_FIELD(FBoolProperty, FProperty)
public:
	using FProperty::FProperty;
	FString GetCPPType() const override { return FString(TEXT("bool")); }
	bool IsNativeBool() const { return true; }
	bool GetPropertyValue(const void* Data) const { return *static_cast<const bool*>(Data); }
	void SetPropertyValue(void* Data, bool Value) const { *static_cast<bool*>(Data) = Value; }
};

class COREUOBJECT_API FStrProperty : public FProperty
{
	DECLARE_FIELD(FStrProperty, FProperty)
public:
	using FProperty::FProperty;
	FString GetCPPType() const override { return FString(TEXT("FString")); }
	const FString& GetPropertyValue(const void* Data) const { return *static_cast<const FString*>(Data); }
	void SetPropertyValue(void* Data, const FString& Value) const { *static_cast<FString*>(Data) = Value; }
};

class COREUOBJECT_API FNameProperty : public FProperty
{
	DECLARE_FIELD(FNameProperty, FProperty)
public:
	using FProperty::FProperty;
	FString GetCPPType() const override { return FString(TEXT("FName")); }
	FName GetPropertyValue(const void* Data) const { return *static_cast<const FName*>(Data); }
	void SetPropertyValue(void* Data, FName Value) const { *static_cast<FName*>(Data) = Value; }
};

class COREUOBJECT_API FObjectPropertyBase : public FProperty
{
	DECLARE_FIELD(FObjectPropertyBase, FProperty)
public:
	using FProperty::FProperty;
	UClass* PropertyClass = nullptr;
	FString GetCPPType() const override;
	UObject* GetObjectPropertyValue(const void* Data) const { return *static_cast<UObject* const*>(Data); }
	void SetObjectPropertyValue(void* Data, UObject* Value) const { *static_cast<UObject**>(Data) = Value; }
};

class COREUOBJECT_API FObjectProperty : public FObjectPropertyBase
{
	DECLARE_FIELD(FObjectProperty, FObjectPropertyBase)
public:
	using FObjectPropertyBase::FObjectPropertyBase;
};

class COREUOBJECT_API FStructProperty : public FProperty
{
	DECLARE_FIELD(FStructProperty, FProperty)
public:
	using FProperty::FProperty;
	UScriptStruct* Struct = nullptr;
	FString GetCPPType() const override;
};

class COREUOBJECT_API FArrayProperty : public FProperty
{
	DECLARE_FIELD(FArrayProperty, FProperty)
public:
	using FProperty::FProperty;
	~FArrayProperty() override;
	/** The element type; owned by this property. */
	FProperty* Inner = nullptr;
	FString GetCPPType() const override;
};

/** A scoped enumeration stored as its underlying integer (always uint8 here, named "UnderlyingType"). */
class COREUOBJECT_API FEnumProperty : public FProperty
{
	DECLARE_FIELD(FEnumProperty, FProperty)
public:
	using FProperty::FProperty;
	~FEnumProperty() override;
	FNumericProperty* UnderlyingProp = nullptr;
	UEnum* Enum = nullptr;
	FNumericProperty* GetUnderlyingProperty() const { return UnderlyingProp; }
	UEnum* GetEnum() const { return Enum; }
	FString GetCPPType() const override;
};

class COREUOBJECT_API FDelegateProperty : public FProperty
{
	DECLARE_FIELD(FDelegateProperty, FProperty)
public:
	using FProperty::FProperty;
	UFunction* SignatureFunction = nullptr;
	FString GetCPPType() const override;
};

class COREUOBJECT_API FMulticastDelegateProperty : public FProperty
{
	DECLARE_FIELD(FMulticastDelegateProperty, FProperty)
public:
	using FProperty::FProperty;
	UFunction* SignatureFunction = nullptr;
	FString GetCPPType() const override;
};

/** A multicast delegate held by value in its object (the kind a DECLARE_DYNAMIC_MULTICAST_DELEGATE makes). */
class COREUOBJECT_API FMulticastInlineDelegateProperty : public FMulticastDelegateProperty
{
	DECLARE_FIELD(FMulticastInlineDelegateProperty, FMulticastDelegateProperty)
public:
	using FMulticastDelegateProperty::FMulticastDelegateProperty;
};

/** Reads and resizes the TArray that an FArrayProperty describes, whatever its element type. */
class COREUOBJECT_API FScriptArrayHelper
{
public:
	FScriptArrayHelper(const FArrayProperty* InProperty, const void* InArray)
		: Property(InProperty)
		, Array(const_cast<void*>(InArray))
	{
	}
	int32 Num() const { return Property->GetTypeOps()->ArrayNum(Array); }
	bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Num(); }
	/** Address of element Index (Index may equal Num() for the end). */
	uint8* GetRawPtr(int32 Index = 0)
	{
		return static_cast<uint8*>(Property->GetTypeOps()->ArrayData(Array)) + Index * Property->Inner->ElementSize;
	}
	/** New elements are default-constructed; removed ones destroyed. */
	void Resize(int32 NewNum) { Property->GetTypeOps()->ArrayResize(Array, NewNum < 0 ? 0 : NewNum); }
	void EmptyValues() { Resize(0); }
	int32 AddValues(int32 Count)
	{
		const int32 Old = Num();
		Resize(Old + Count);
		return Old;
	}
	int32 AddValue() { return AddValues(1); }

private:
	const FArrayProperty* Property;
	void* Array;
};

namespace EFieldIteratorFlags
{
enum SuperClassFlags
{
	ExcludeSuper = 0,
	IncludeSuper
};
}

/** Iterates the properties (FProperty and subclasses) or functions (UFunction) of a struct, bases first. */
template <class T, bool bIsFField = std::is_base_of<FField, T>::value>
class TFieldIterator;

template <class T>
class TFieldIterator<T, true>
{
public:
	explicit TFieldIterator(
		const UStruct* InStruct, EFieldIteratorFlags::SuperClassFlags Super = EFieldIteratorFlags::IncludeSuper)
	{
		for (const UStruct* S = InStruct; S;
			 S = Super == EFieldIteratorFlags::IncludeSuper ? S->GetSuperStruct() : nullptr)
		{
			Chain.Insert(S, 0);
		}
		for (const UStruct* S : Chain)
		{
			for (FField* F = S->ChildProperties; F; F = F->Next)
			{
				if (F->IsA(T::StaticClass()))
				{
					Fields.Add(static_cast<T*>(F));
				}
			}
		}
	}
	explicit operator bool() const { return Index < Fields.Num(); }
	T* operator*() const { return Fields[Index]; }
	T* operator->() const { return Fields[Index]; }
	TFieldIterator& operator++()
	{
		++Index;
		return *this;
	}

private:
	TArray<const UStruct*> Chain;
	TArray<T*> Fields;
	int32 Index = 0;
};

template <class T>
class TFieldIterator<T, false>
{
public:
	explicit TFieldIterator(
		const UStruct* InStruct, EFieldIteratorFlags::SuperClassFlags Super = EFieldIteratorFlags::IncludeSuper)
	{
		for (const UStruct* S = InStruct; S;
			 S = Super == EFieldIteratorFlags::IncludeSuper ? S->GetSuperStruct() : nullptr)
		{
			for (UField* F = S->Children; F; F = F->Next)
			{
				if (F->IsA(T::StaticClass()))
				{
					Fields.Add(static_cast<T*>(F));
				}
			}
		}
	}
	explicit operator bool() const { return Index < Fields.Num(); }
	T* operator*() const { return Fields[Index]; }
	T* operator->() const { return Fields[Index]; }
	TFieldIterator& operator++()
	{
		++Index;
		return *this;
	}

private:
	TArray<T*> Fields;
	int32 Index = 0;
};

/** Owns an initialised block for a struct or a function's parameters; destroys it when it goes. */
class COREUOBJECT_API FStructOnScope
{
public:
	explicit FStructOnScope(const UStruct* InStruct);
	~FStructOnScope();
	FStructOnScope(const FStructOnScope&) = delete;
	FStructOnScope& operator=(const FStructOnScope&) = delete;
	uint8* GetStructMemory() { return Memory; }
	const uint8* GetStructMemory() const { return Memory; }
	const UStruct* GetStruct() const { return Struct; }

private:
	const UStruct* Struct;
	uint8* Memory = nullptr;
};
