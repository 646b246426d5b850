// TDelegate: a single-cast delegate with the engine's names (DECLARE_DELEGATE_*, BindUObject,
// BindSP, BindRaw, BindLambda, BindStatic, Unbind, IsBound, Execute, ExecuteIfBound).
//
// A delegate bound to an object the engine can tell is gone (a UObject through BindUObject, a
// shared object through BindSP) stops counting as bound once that object has been destroyed or
// collected: IsBound() is then false and ExecuteIfBound() does nothing, so a late callback for a
// destroyed object is dropped instead of calling into freed memory. BindRaw and BindLambda keep
// no such watch; their caller guarantees the lifetime.
// The bound function may unbind or rebind the delegate that is calling it.
// Threads: a delegate is an ordinary value; bind, unbind and execute it from one thread at a time.
#pragma once

#include "CoreTypes.h"
#include "Templates/SharedPointer.h"

#include <functional>
#include <utility>

// Declared by CoreUObject; only the UObject binding instantiates it, so a caller of BindUObject
// includes "UObject/WeakObjectPtrTemplates.h".
template <class T>
class TWeakObjectPtr;

template <typename FuncType>
class TDelegate;

template <typename RetType, typename... ParamTypes>
class TDelegate<RetType(ParamTypes...)>
{
public:
	TDelegate() = default;

	template <class UserClass>
	static TDelegate CreateUObject(UserClass* InUserObject, RetType (UserClass::*InFunc)(ParamTypes...))
	{
		TDelegate Result;
		Result.BindUObject(InUserObject, InFunc);
		return Result;
	}
	template <class UserClass>
	static TDelegate CreateUObject(const UserClass* InUserObject, RetType (UserClass::*InFunc)(ParamTypes...) const)
	{
		TDelegate Result;
		Result.BindUObject(InUserObject, InFunc);
		return Result;
	}
	template <class UserClass>
	static TDelegate CreateRaw(UserClass* InUserObject, RetType (UserClass::*InFunc)(ParamTypes...))
	{
		TDelegate Result;
		Result.BindRaw(InUserObject, InFunc);
		return Result;
	}
	template <class UserClass, ESPMode Mode>
	static TDelegate CreateSP(
		const TSharedRef<UserClass, Mode>& InUserObject, RetType (UserClass::*InFunc)(ParamTypes...))
	{
		TDelegate Result;
		Result.BindSP(InUserObject, InFunc);
		return Result;
	}
	template <typename FunctorType>
	static TDelegate CreateLambda(FunctorType&& InFunctor)
	{
		TDelegate Result;
		Result.BindLambda(std::forward<FunctorType>(InFunctor));
		return Result;
	}
	static TDelegate CreateStatic(RetType (*InFunc)(ParamTypes...))
	{
		TDelegate Result;
		Result.BindStatic(InFunc);
		return Result;
	}

	/** Calls InFunc on InUserObject while the object lives; holds no reference that keeps it alive. */
	template <class UserClass>
	void BindUObject(UserClass* InUserObject, RetType (UserClass::*InFunc)(ParamTypes...))
	{
		TWeakObjectPtr<UserClass> Weak(InUserObject);
		Callable = [Weak, InFunc](ParamTypes... Params) -> RetType
		{ return (Weak.Get()->*InFunc)(std::forward<ParamTypes>(Params)...); };
		AliveCheck = [Weak]() { return Weak.IsValid(); };
	}
	template <class UserClass>
	void BindUObject(const UserClass* InUserObject, RetType (UserClass::*InFunc)(ParamTypes...) const)
	{
		TWeakObjectPtr<UserClass> Weak(InUserObject);
		Callable = [Weak, InFunc](ParamTypes... Params) -> RetType
		{ return (Weak.Get()->*InFunc)(std::forward<ParamTypes>(Params)...); };
		AliveCheck = [Weak]() { return Weak.IsValid(); };
	}

	/** Calls InFunc on a plain object whose lifetime the caller guarantees. */
	template <class UserClass>
	void BindRaw(UserClass* InUserObject, RetType (UserClass::*InFunc)(ParamTypes...))
	{
		Callable = [InUserObject, InFunc](ParamTypes... Params) -> RetType
		{ return (InUserObject->*InFunc)(std::forward<ParamTypes>(Params)...); };
		AliveCheck = nullptr;
	}

	/** Calls InFunc on a shared object while any shared reference to it remains. */
	template <class UserClass, ESPMode Mode>
	void BindSP(const TSharedRef<UserClass, Mode>& InUserObject, RetType (UserClass::*InFunc)(ParamTypes...))
	{
		TWeakPtr<UserClass, Mode> Weak(InUserObject);
		Callable = [Weak, InFunc](ParamTypes... Params) -> RetType
		{ return (Weak.Pin().Get()->*InFunc)(std::forward<ParamTypes>(Params)...); };
		AliveCheck = [Weak]() { return Weak.IsValid(); };
	}

	template <typename FunctorType>
	void BindLambda(FunctorType&& InFunctor)
	{
		Callable = std::forward<FunctorType>(InFunctor);
		AliveCheck = nullptr;
	}

	void BindStatic(RetType (*InFunc)(ParamTypes...))
	{
		Callable = InFunc;
		AliveCheck = nullptr;
	}

	void Unbind()
	{
		Callable = nullptr;
		AliveCheck = nullptr;
	}

	/** True when bound to something that can still be called. */
	bool IsBound() const { return Callable && (!AliveCheck || AliveCheck()); }

	/** Calls the bound function; the delegate must be bound (check IsBound first). */
	RetType Execute(ParamTypes... Params) const
	{
		check(IsBound());
		// A copy runs, so that the call may unbind or rebind this delegate.
		const std::function<RetType(ParamTypes...)> Running = Callable;
		return Running(std::forward<ParamTypes>(Params)...);
	}

	/** Calls the bound function when there is one; true when it was called. */
	template <typename R = RetType, typename = typename std::enable_if<std::is_void<R>::value>::type>
	bool ExecuteIfBound(ParamTypes... Params) const
	{
		if (!IsBound())
		{
			return false;
		}
		const std::function<RetType(ParamTypes...)> Running = Callable;
		Running(std::forward<ParamTypes>(Params)...);
		return true;
	}

private:
	std::function<RetType(ParamTypes...)> Callable;
	std::function<bool()> AliveCheck;
};

#define DECLARE_DELEGATE(DelegateName) typedef TDelegate<void()> DelegateName;
#define DECLARE_DELEGATE_OneParam(DelegateName, Param1Type) typedef TDelegate<void(Param1Type)> DelegateName;
#define DECLARE_DELEGATE_TwoParams(DelegateName, Param1Type, Param2Type) \
	typedef TDelegate<void(Param1Type, Param2Type)> DelegateName;
#define DECLARE_DELEGATE_ThreeParams(DelegateName, Param1Type, Param2Type, Param3Type) \
	typedef TDelegate<void(Param1Type, Param2Type, Param3Type)> DelegateName;
#define DECLARE_DELEGATE_RetVal(ReturnValueType, DelegateName) typedef TDelegate<ReturnValueType()> DelegateName;
#define DECLARE_DELEGATE_RetVal_OneParam(ReturnValueType, DelegateName, Param1Type) \
	typedef TDelegate<ReturnValueType(Param1Type)> DelegateName;
