// Reference-counted ownership with the engine's names: TSharedPtr (nullable), TSharedRef (never
// null), TWeakPtr, TSharedFromThis, MakeShared and MakeShareable. The counts are atomic in both
// modes here; ESPMode is accepted so that engine-style signatures compile unchanged.
#pragma once

#include "CoreTypes.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <memory>
#include <type_traits>

enum class ESPMode : uint8
{
	NotThreadSafe = 0,
	ThreadSafe = 1,
	Fast = ThreadSafe,
};

template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe>
class TSharedRef;
template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe>
class TSharedPtr;
template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe>
class TWeakPtr;
template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe>
class TSharedFromThis;

namespace ZnStandalone
{
template <class ObjectType, ESPMode Mode>
std::shared_ptr<ObjectType>& GetStdPtr(TSharedPtr<ObjectType, Mode>& Ptr);
}

/** Wraps a raw pointer so that it can initialise a TSharedPtr or TSharedRef that takes ownership. */
template <class ObjectType>
struct TRawPtrProxy
{
	ObjectType* Object;
	explicit TRawPtrProxy(ObjectType* InObject)
		: Object(InObject)
	{
	}
};

template <class ObjectType>
FORCEINLINE TRawPtrProxy<ObjectType> MakeShareable(ObjectType* InObject)
{
	return TRawPtrProxy<ObjectType>(InObject);
}

/** A nullable shared owner of an ObjectType. */
template <class ObjectType, ESPMode Mode>
class TSharedPtr
{
public:
	using ElementType = ObjectType;

	TSharedPtr() = default;
	TSharedPtr(decltype(nullptr)) {}

	/** Takes ownership of a raw pointer (prefer MakeShared). */
	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	explicit TSharedPtr(OtherType* InObject)
		: Ptr(InObject)
	{
	}

	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	TSharedPtr(const TRawPtrProxy<OtherType>& Proxy)
		: Ptr(Proxy.Object)
	{
	}

	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	TSharedPtr(const TSharedPtr<OtherType, Mode>& Other)
		: Ptr(Other.Ptr)
	{
	}

	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	TSharedPtr(TSharedPtr<OtherType, Mode>&& Other)
		: Ptr(MoveTemp(Other.Ptr))
	{
	}

	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	TSharedPtr(const TSharedRef<OtherType, Mode>& Other)
		: Ptr(Other.Ptr)
	{
	}

	/** Aliasing: shares OtherOwner's count but points at InObject (e.g. a member of it). */
	template <class OtherType>
	TSharedPtr(const TSharedPtr<OtherType, Mode>& OtherOwner, ObjectType* InObject)
		: Ptr(OtherOwner.Ptr, InObject)
	{
	}

	TSharedPtr& operator=(decltype(nullptr))
	{
		Reset();
		return *this;
	}

	template <class OtherType>
	TSharedPtr& operator=(const TRawPtrProxy<OtherType>& Proxy)
	{
		Ptr.reset(Proxy.Object);
		return *this;
	}

	FORCEINLINE bool IsValid() const { return Ptr != nullptr; }
	FORCEINLINE explicit operator bool() const { return Ptr != nullptr; }
	FORCEINLINE ObjectType* Get() const { return Ptr.get(); }
	/** Must not be null. */
	FORCEINLINE ObjectType* operator->() const
	{
		check(IsValid());
		return Ptr.get();
	}
	template <typename T = ObjectType>
	FORCEINLINE typename std::add_lvalue_reference<T>::type operator*() const
	{
		check(IsValid());
		return *Ptr;
	}

	/** Converts to a TSharedRef; the pointer must not be null. */
	TSharedRef<ObjectType, Mode> ToSharedRef() const
	{
		check(IsValid());
		return TSharedRef<ObjectType, Mode>(Ptr);
	}

	void Reset() { Ptr.reset(); }
	int32 GetSharedReferenceCount() const { return int32(Ptr.use_count()); }
	bool IsUnique() const { return Ptr.use_count() == 1; }

	template <class OtherType>
	bool operator==(const TSharedPtr<OtherType, Mode>& Other) const
	{
		return Get() == Other.Get();
	}
	template <class OtherType>
	bool operator!=(const TSharedPtr<OtherType, Mode>& Other) const
	{
		return Get() != Other.Get();
	}
	bool operator==(decltype(nullptr)) const { return !IsValid(); }
	bool operator!=(decltype(nullptr)) const { return IsValid(); }

private:
	template <class, ESPMode>
	friend class TSharedPtr;
	template <class, ESPMode>
	friend class TSharedRef;
	template <class, ESPMode>
	friend class TWeakPtr;
	template <class, ESPMode>
	friend class TSharedFromThis;
	template <class O, ESPMode M>
	friend std::shared_ptr<O>& ZnStandalone::GetStdPtr(TSharedPtr<O, M>& Ptr);

	explicit TSharedPtr(std::shared_ptr<ObjectType> InPtr)
		: Ptr(MoveTemp(InPtr))
	{
	}

	std::shared_ptr<ObjectType> Ptr;
};

/** A shared owner that always holds an object. */
template <class ObjectType, ESPMode Mode>
class TSharedRef
{
public:
	using ElementType = ObjectType;

	/** Takes ownership of a raw pointer, which must not be null. */
	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	explicit TSharedRef(OtherType* InObject)
		: Ptr(InObject)
	{
		check(InObject != nullptr);
	}

	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	TSharedRef(const TRawPtrProxy<OtherType>& Proxy)
		: Ptr(Proxy.Object)
	{
		check(Proxy.Object != nullptr);
	}

	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	TSharedRef(const TSharedRef<OtherType, Mode>& Other)
		: Ptr(Other.Ptr)
	{
	}

	FORCEINLINE ObjectType* operator->() const { return Ptr.get(); }
	FORCEINLINE ObjectType& Get() const { return *Ptr; }
	FORCEINLINE ObjectType& operator*() const { return *Ptr; }
	/** Always true; exists so that generic code can treat refs and ptrs alike. */
	FORCEINLINE bool IsValid() const { return Ptr != nullptr; }
	TSharedPtr<ObjectType, Mode> ToSharedPtr() const { return TSharedPtr<ObjectType, Mode>(*this); }
	int32 GetSharedReferenceCount() const { return int32(Ptr.use_count()); }
	bool IsUnique() const { return Ptr.use_count() == 1; }

	template <class OtherType>
	bool operator==(const TSharedRef<OtherType, Mode>& Other) const
	{
		return Ptr.get() == Other.Ptr.get();
	}
	template <class OtherType>
	bool operator!=(const TSharedRef<OtherType, Mode>& Other) const
	{
		return Ptr.get() != Other.Ptr.get();
	}

private:
	template <class, ESPMode>
	friend class TSharedPtr;
	template <class, ESPMode>
	friend class TSharedRef;
	template <class, ESPMode>
	friend class TWeakPtr;
	template <class, ESPMode>
	friend class TSharedFromThis;
	template <class O, ESPMode M, typename... A>
	friend TSharedRef<O, M> MakeShared(A&&... Args);
	template <class To, class From, ESPMode M>
	friend TSharedRef<To, M> StaticCastSharedRef(const TSharedRef<From, M>& InRef);

	explicit TSharedRef(std::shared_ptr<ObjectType> InPtr)
		: Ptr(MoveTemp(InPtr))
	{
		check(Ptr != nullptr);
	}

	std::shared_ptr<ObjectType> Ptr;
};

/** A non-owning observer; Pin() gives a TSharedPtr that is null once the object is gone. */
template <class ObjectType, ESPMode Mode>
class TWeakPtr
{
public:
	TWeakPtr() = default;
	TWeakPtr(decltype(nullptr)) {}
	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	TWeakPtr(const TSharedPtr<OtherType, Mode>& Shared)
		: Ptr(Shared.Ptr)
	{
	}
	template <class OtherType,
		typename = typename std::enable_if<std::is_convertible<OtherType*, ObjectType*>::value>::type>
	TWeakPtr(const TSharedRef<OtherType, Mode>& Shared)
		: Ptr(Shared.Ptr)
	{
	}

	TSharedPtr<ObjectType, Mode> Pin() const { return TSharedPtr<ObjectType, Mode>(Ptr.lock()); }
	bool IsValid() const { return !Ptr.expired(); }
	void Reset() { Ptr.reset(); }
	bool HasSameObject(const void* Other) const { return Pin().Get() == Other; }

private:
	std::weak_ptr<ObjectType> Ptr;
};

/**
 * Lets an object reach its own shared owner. AsShared() requires that the object is already
 * owned by a TSharedPtr/TSharedRef (made with MakeShared or MakeShareable).
 */
template <class ObjectType, ESPMode Mode>
class TSharedFromThis : public std::enable_shared_from_this<ObjectType>
{
public:
	TSharedRef<ObjectType, Mode> AsShared() { return TSharedRef<ObjectType, Mode>(this->shared_from_this()); }
	TSharedRef<const ObjectType, Mode> AsShared() const
	{
		return TSharedRef<const ObjectType, Mode>(std::shared_ptr<const ObjectType>(this->shared_from_this()));
	}
	/** Like AsShared() but null when the object has no shared owner. */
	TSharedPtr<ObjectType, Mode> AsWeakShared() { return TSharedPtr<ObjectType, Mode>(this->weak_from_this().lock()); }

protected:
	TSharedFromThis() = default;
	TSharedFromThis(const TSharedFromThis&) {}
	TSharedFromThis& operator=(const TSharedFromThis&) { return *this; }
	~TSharedFromThis() = default;
};

/** Allocates the object and its reference count together. */
template <class ObjectType, ESPMode Mode = ESPMode::ThreadSafe, typename... ArgTypes>
FORCEINLINE TSharedRef<ObjectType, Mode> MakeShared(ArgTypes&&... Args)
{
	return TSharedRef<ObjectType, Mode>(std::make_shared<ObjectType>(Forward<ArgTypes>(Args)...));
}

namespace ZnStandalone
{
template <class ObjectType, ESPMode Mode>
std::shared_ptr<ObjectType>& GetStdPtr(TSharedPtr<ObjectType, Mode>& Ptr)
{
	return Ptr.Ptr;
}
} // namespace ZnStandalone

template <class To, class From, ESPMode Mode>
TSharedPtr<To, Mode> StaticCastSharedPtr(const TSharedPtr<From, Mode>& InPtr)
{
	return TSharedPtr<To, Mode>(InPtr, static_cast<To*>(InPtr.Get()));
}

template <class To, class From, ESPMode Mode>
TSharedRef<To, Mode> StaticCastSharedRef(const TSharedRef<From, Mode>& InRef)
{
	return TSharedRef<To, Mode>(std::static_pointer_cast<To>(InRef.Ptr));
}

template <class To, class From, ESPMode Mode>
TSharedPtr<To, Mode> ConstCastSharedPtr(const TSharedPtr<From, Mode>& InPtr)
{
	return TSharedPtr<To, Mode>(InPtr, const_cast<To*>(InPtr.Get()));
}

template <class ObjectType, ESPMode Mode>
uint32 GetTypeHash(const TSharedPtr<ObjectType, Mode>& Ptr)
{
	return GetTypeHash(static_cast<const void*>(Ptr.Get()));
}

template <class ObjectType, ESPMode Mode>
uint32 GetTypeHash(const TSharedRef<ObjectType, Mode>& Ref)
{
	return GetTypeHash(static_cast<const void*>(&Ref.Get()));
}
