// Dynamic delegates: the script-assignable callbacks of reflected classes. A binding made with
// AddDynamic/BindDynamic refers to its object weakly: it never keeps the object alive, and once
// the object has been collected the binding is skipped (and dropped) instead of called.
// Broadcast runs the bindings in the order they were added, on the calling thread.
#pragma once

#include "CoreMinimal.h"
#include "UObject/WeakObjectPtr.h"

#include <functional>
#include <utility>
#include <vector>

class UObject;

namespace ZnDelegateDetail
{
/** "&UMyClass::OnDone" -> "OnDone": the function name a dynamic binding is known by. */
COREUOBJECT_API FName FunctionNameFromText(const TCHAR* Text);
COREUOBJECT_API uint64 NextHandle();
/** The object of a weak binding, or null once it has been collected. */
COREUOBJECT_API UObject* ResolveWeak(const FWeakObjectPtr& Weak);
} // namespace ZnDelegateDetail

template <typename... ParamTypes>
class TBaseDynamicMulticastDelegate
{
public:
	/** Standalone-only: a plain callable, for hosts and tests that are not reflected objects. */
	using FNativeHandler = std::function<void(ParamTypes...)>;
	/** Standalone-only: receives the address of each argument in declaration order (for reflection-driven hosts). */
	using FGenericHandler = std::function<void(void* const* Args)>;

	template <class UserClass>
	void __Internal_AddDynamic(UserClass* InUserObject, void (UserClass::*InFunc)(ParamTypes...), FName InFunctionName)
	{
		FBinding B;
		B.Object = InUserObject;
		B.bHasObject = true;
		B.FunctionName = InFunctionName;
		B.Call = [InFunc](UObject* Obj, ParamTypes... Params) { (static_cast<UserClass*>(Obj)->*InFunc)(Params...); };
		InvocationList.push_back(std::move(B));
	}

	template <class UserClass>
	void __Internal_AddUniqueDynamic(
		UserClass* InUserObject, void (UserClass::*InFunc)(ParamTypes...), FName InFunctionName)
	{
		if (!__Internal_IsAlreadyBound(InUserObject, InFunc, InFunctionName))
		{
			__Internal_AddDynamic(InUserObject, InFunc, InFunctionName);
		}
	}

	template <class UserClass>
	void __Internal_RemoveDynamic(UserClass* InUserObject, void (UserClass::*)(ParamTypes...), FName InFunctionName)
	{
		const FWeakObjectPtr Weak(InUserObject);
		for (size_t I = 0; I < InvocationList.size(); ++I)
		{
			if (InvocationList[I].bHasObject && InvocationList[I].Object == Weak &&
				InvocationList[I].FunctionName == InFunctionName)
			{
				InvocationList.erase(InvocationList.begin() + I);
				return;
			}
		}
	}

	template <class UserClass>
	bool __Internal_IsAlreadyBound(
		UserClass* InUserObject, void (UserClass::*)(ParamTypes...), FName InFunctionName) const
	{
		const FWeakObjectPtr Weak(InUserObject);
		for (const FBinding& B : InvocationList)
		{
			if (B.bHasObject && B.Object == Weak && B.FunctionName == InFunctionName)
			{
				return true;
			}
		}
		return false;
	}

	/** True when at least one binding would run: a live object's function or a standalone handler. */
	bool IsBound() const
	{
		for (const FBinding& B : InvocationList)
		{
			if (!B.bHasObject || ZnDelegateDetail::ResolveWeak(B.Object))
			{
				return true;
			}
		}
		return false;
	}

	/** Removes every binding to Object's functions. */
	void RemoveAll(const UObject* Object)
	{
		const FWeakObjectPtr Weak(Object);
		for (size_t I = InvocationList.size(); I-- > 0;)
		{
			if (InvocationList[I].bHasObject && InvocationList[I].Object == Weak)
			{
				InvocationList.erase(InvocationList.begin() + I);
			}
		}
	}

	void Clear() { InvocationList.clear(); }

	/** Calls every live binding in order; bindings added or removed by a callback take effect next time. */
	void Broadcast(ParamTypes... Params) const
	{
		const std::vector<FBinding> Copy = InvocationList;
		bool bStale = false;
		for (const FBinding& B : Copy)
		{
			if (!B.bHasObject)
			{
				B.Native(Params...);
				continue;
			}
			if (UObject* Obj = ZnDelegateDetail::ResolveWeak(B.Object))
			{
				B.Call(Obj, Params...);
			}
			else
			{
				bStale = true;
			}
		}
		if (bStale)
		{
			CompactInvocationList();
		}
	}

	/** Standalone-only: binds a callable; returns a handle for RemoveStandaloneHandler. */
	uint64 AddStandaloneLambda(FNativeHandler Handler)
	{
		FBinding B;
		B.Handle = ZnDelegateDetail::NextHandle();
		B.Native = std::move(Handler);
		InvocationList.push_back(std::move(B));
		return InvocationList.back().Handle;
	}

	/** Standalone-only: binds a handler that receives the argument addresses (see FGenericHandler). */
	uint64 AddStandaloneGeneric(FGenericHandler Handler)
	{
		return AddStandaloneLambda(
			[H = std::move(Handler)](ParamTypes... Params)
			{
				void* const Args[sizeof...(ParamTypes) + 1] = {
					const_cast<void*>(static_cast<const void*>(std::addressof(Params)))..., nullptr};
				H(Args);
			});
	}

	void RemoveStandaloneHandler(uint64 Handle)
	{
		for (size_t I = 0; I < InvocationList.size(); ++I)
		{
			if (!InvocationList[I].bHasObject && InvocationList[I].Handle == Handle)
			{
				InvocationList.erase(InvocationList.begin() + I);
				return;
			}
		}
	}

private:
	struct FBinding
	{
		FWeakObjectPtr Object;
		bool bHasObject = false;
		FName FunctionName;
		std::function<void(UObject*, ParamTypes...)> Call;
		FNativeHandler Native;
		uint64 Handle = 0;
	};

	void CompactInvocationList() const
	{
		for (size_t I = InvocationList.size(); I-- > 0;)
		{
			if (InvocationList[I].bHasObject && !ZnDelegateDetail::ResolveWeak(InvocationList[I].Object))
			{
				InvocationList.erase(InvocationList.begin() + I);
			}
		}
	}

	mutable std::vector<FBinding> InvocationList;
};

template <typename... ParamTypes>
class TBaseDynamicDelegate
{
public:
	template <class UserClass>
	void __Internal_BindDynamic(UserClass* InUserObject, void (UserClass::*InFunc)(ParamTypes...), FName InFunctionName)
	{
		Object = InUserObject;
		FunctionName = InFunctionName;
		Call = [InFunc](UObject* Obj, ParamTypes... Params) { (static_cast<UserClass*>(Obj)->*InFunc)(Params...); };
	}

	/** Standalone-only: binds a plain callable. */
	void BindStandaloneLambda(std::function<void(ParamTypes...)> Handler)
	{
		Object.Reset();
		FunctionName = FName();
		Call = nullptr;
		Native = std::move(Handler);
	}

	bool IsBound() const { return Native ? true : (Call && ZnDelegateDetail::ResolveWeak(Object) != nullptr); }
	void Unbind()
	{
		Object.Reset();
		Call = nullptr;
		Native = nullptr;
		FunctionName = FName();
	}
	void Clear() { Unbind(); }
	FName GetFunctionName() const { return FunctionName; }

	/** Calls the binding if its object is still alive; returns whether it ran. */
	bool ExecuteIfBound(ParamTypes... Params) const
	{
		if (Native)
		{
			Native(Params...);
			return true;
		}
		if (UObject* Obj = Call ? ZnDelegateDetail::ResolveWeak(Object) : nullptr)
		{
			Call(Obj, Params...);
			return true;
		}
		return false;
	}
	void Execute(ParamTypes... Params) const { ExecuteIfBound(Params...); }

private:
	FWeakObjectPtr Object;
	FName FunctionName;
	std::function<void(UObject*, ParamTypes...)> Call;
	std::function<void(ParamTypes...)> Native;
};

#define AddDynamic(UserObject, FuncName) \
	__Internal_AddDynamic(UserObject, FuncName, ::ZnDelegateDetail::FunctionNameFromText(TEXT(#FuncName)))
#define AddUniqueDynamic(UserObject, FuncName) \
	__Internal_AddUniqueDynamic(UserObject, FuncName, ::ZnDelegateDetail::FunctionNameFromText(TEXT(#FuncName)))
#define RemoveDynamic(UserObject, FuncName) \
	__Internal_RemoveDynamic(UserObject, FuncName, ::ZnDelegateDetail::FunctionNameFromText(TEXT(#FuncName)))
#define IsAlreadyBound(UserObject, FuncName) \
	__Internal_IsAlreadyBound(UserObject, FuncName, ::ZnDelegateDetail::FunctionNameFromText(TEXT(#FuncName)))
#define BindDynamic(UserObject, FuncName) \
	__Internal_BindDynamic(UserObject, FuncName, ::ZnDelegateDetail::FunctionNameFromText(TEXT(#FuncName)))

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE(DelegateName)        \
	class DelegateName : public TBaseDynamicMulticastDelegate<> \
	{                                                           \
	};

#define DECLARE_DYNAMIC_DELEGATE(DelegateName)         \
	class DelegateName : public TBaseDynamicDelegate<> \
	{                                                  \
	};

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE_OneParam(DelegateName, T1, N1) \
	class DelegateName : public TBaseDynamicMulticastDelegate<T1>         \
	{                                                                     \
	};

#define DECLARE_DYNAMIC_DELEGATE_OneParam(DelegateName, T1, N1) \
	class DelegateName : public TBaseDynamicDelegate<T1>        \
	{                                                           \
	};

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE_TwoParams(DelegateName, T1, N1, T2, N2) \
	class DelegateName : public TBaseDynamicMulticastDelegate<T1, T2>              \
	{                                                                              \
	};

#define DECLARE_DYNAMIC_DELEGATE_TwoParams(DelegateName, T1, N1, T2, N2) \
	class DelegateName : public TBaseDynamicDelegate<T1, T2>             \
	{                                                                    \
	};

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE_ThreeParams(DelegateName, T1, N1, T2, N2, T3, N3) \
	class DelegateName : public TBaseDynamicMulticastDelegate<T1, T2, T3>                    \
	{                                                                                        \
	};

#define DECLARE_DYNAMIC_DELEGATE_ThreeParams(DelegateName, T1, N1, T2, N2, T3, N3) \
	class DelegateName : public TBaseDynamicDelegate<T1, T2, T3>                   \
	{                                                                              \
	};

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE_FourParams(DelegateName, T1, N1, T2, N2, T3, N3, T4, N4) \
	class DelegateName : public TBaseDynamicMulticastDelegate<T1, T2, T3, T4>                       \
	{                                                                                               \
	};

#define DECLARE_DYNAMIC_DELEGATE_FourParams(DelegateName, T1, N1, T2, N2, T3, N3, T4, N4) \
	class DelegateName : public TBaseDynamicDelegate<T1, T2, T3, T4>                      \
	{                                                                                     \
	};

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE_FiveParams(DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5) \
	class DelegateName : public TBaseDynamicMulticastDelegate<T1, T2, T3, T4, T5>                           \
	{                                                                                                       \
	};

#define DECLARE_DYNAMIC_DELEGATE_FiveParams(DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5) \
	class DelegateName : public TBaseDynamicDelegate<T1, T2, T3, T4, T5>                          \
	{                                                                                             \
	};

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE_SixParams(DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5, T6, N6) \
	class DelegateName : public TBaseDynamicMulticastDelegate<T1, T2, T3, T4, T5, T6>                              \
	{                                                                                                              \
	};

#define DECLARE_DYNAMIC_DELEGATE_SixParams(DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5, T6, N6) \
	class DelegateName : public TBaseDynamicDelegate<T1, T2, T3, T4, T5, T6>                             \
	{                                                                                                    \
	};

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE_SevenParams(                                   \
	DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5, T6, N6, T7, N7)                 \
	class DelegateName : public TBaseDynamicMulticastDelegate<T1, T2, T3, T4, T5, T6, T7> \
	{                                                                                     \
	};

#define DECLARE_DYNAMIC_DELEGATE_SevenParams(DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5, T6, N6, T7, N7) \
	class DelegateName : public TBaseDynamicDelegate<T1, T2, T3, T4, T5, T6, T7>                                   \
	{                                                                                                              \
	};

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE_EightParams(                                       \
	DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5, T6, N6, T7, N7, T8, N8)             \
	class DelegateName : public TBaseDynamicMulticastDelegate<T1, T2, T3, T4, T5, T6, T7, T8> \
	{                                                                                         \
	};

#define DECLARE_DYNAMIC_DELEGATE_EightParams(                                        \
	DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5, T6, N6, T7, N7, T8, N8)    \
	class DelegateName : public TBaseDynamicDelegate<T1, T2, T3, T4, T5, T6, T7, T8> \
	{                                                                                \
	};

#define DECLARE_DYNAMIC_MULTICAST_DELEGATE_NineParams(                                            \
	DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5, T6, N6, T7, N7, T8, N8, T9, N9)         \
	class DelegateName : public TBaseDynamicMulticastDelegate<T1, T2, T3, T4, T5, T6, T7, T8, T9> \
	{                                                                                             \
	};

#define DECLARE_DYNAMIC_DELEGATE_NineParams(                                              \
	DelegateName, T1, N1, T2, N2, T3, N3, T4, N4, T5, N5, T6, N6, T7, N7, T8, N8, T9, N9) \
	class DelegateName : public TBaseDynamicDelegate<T1, T2, T3, T4, T5, T6, T7, T8, T9>  \
	{                                                                                     \
	};
