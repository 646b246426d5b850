#include "UObject/GarbageCollection.h"
#include "UObject/StrongObjectPtr.h"
#include "ZnTestObjects.h"

#include <gtest/gtest.h>

#include <vector>

class ScriptDelegateTests : public testing::Test
{
protected:
	void TearDown() override { CollectGarbage(); }
};

TEST_F(ScriptDelegateTests, BroadcastCallsEveryBindingInOrderWithTheArguments)
{
	TStrongObjectPtr<UZnTestObject> A(NewObject<UZnTestObject>());
	TStrongObjectPtr<UZnTestObject> B(NewObject<UZnTestObject>());
	FZnTestPinged Delegate;
	EXPECT_FALSE(Delegate.IsBound());
	std::vector<int> Order;
	Delegate.AddDynamic(A.Get(), &UZnTestObject::OnPinged);
	Delegate.AddStandaloneLambda([&Order](bool, const FString&) { Order.push_back(2); });
	Delegate.AddDynamic(B.Get(), &UZnTestObject::OnPinged);
	EXPECT_TRUE(Delegate.IsBound());
	Delegate.Broadcast(true, FString(TEXT("hello")));
	EXPECT_EQ(A->Calls, 1);
	EXPECT_EQ(B->Calls, 1);
	EXPECT_TRUE(A->LastOk);
	EXPECT_EQ(A->LastText, FString(TEXT("hello")));
	EXPECT_EQ(Order, std::vector<int>{2});
}

TEST_F(ScriptDelegateTests, BindingDoesNotKeepItsObjectAndADestroyedObjectIsNotCalled)
{
	FZnTestPinged Delegate;
	const int32 Destroyed = UZnTestObject::DestroyedCount;
	UZnTestObject* Object = NewObject<UZnTestObject>();
	Delegate.AddDynamic(Object, &UZnTestObject::OnPinged);
	EXPECT_TRUE(Delegate.IsBound());
	CollectGarbage();
	EXPECT_EQ(UZnTestObject::DestroyedCount, Destroyed + 1) << "the binding must not root its object";
	EXPECT_FALSE(Delegate.IsBound());
	// A new object may take the freed slot; the stale binding still must not reach it.
	TStrongObjectPtr<UZnTestObject> Successor(NewObject<UZnTestObject>());
	Delegate.Broadcast(false, FString(TEXT("after")));
	EXPECT_EQ(Successor->Calls, 0);
}

TEST_F(ScriptDelegateTests, RemoveAllDropsOnlyThatObjectsBindings)
{
	TStrongObjectPtr<UZnTestObject> A(NewObject<UZnTestObject>());
	TStrongObjectPtr<UZnTestObject> B(NewObject<UZnTestObject>());
	FZnTestPinged Delegate;
	Delegate.AddDynamic(A.Get(), &UZnTestObject::OnPinged);
	Delegate.AddDynamic(A.Get(), &UZnTestObject::OnOther);
	Delegate.AddDynamic(B.Get(), &UZnTestObject::OnPinged);
	Delegate.RemoveAll(A.Get());
	Delegate.Broadcast(true, FString(TEXT("x")));
	EXPECT_EQ(A->Calls, 0);
	EXPECT_EQ(A->OtherCalls, 0);
	EXPECT_EQ(B->Calls, 1);
	Delegate.Clear();
	EXPECT_FALSE(Delegate.IsBound());
	Delegate.Broadcast(true, FString(TEXT("y")));
	EXPECT_EQ(B->Calls, 1);
}

TEST_F(ScriptDelegateTests, UniqueAddRemoveAndIsAlreadyBoundGoByObjectAndFunctionName)
{
	TStrongObjectPtr<UZnTestObject> A(NewObject<UZnTestObject>());
	FZnTestPinged Delegate;
	Delegate.AddUniqueDynamic(A.Get(), &UZnTestObject::OnPinged);
	Delegate.AddUniqueDynamic(A.Get(), &UZnTestObject::OnPinged);
	EXPECT_TRUE(Delegate.IsAlreadyBound(A.Get(), &UZnTestObject::OnPinged));
	EXPECT_FALSE(Delegate.IsAlreadyBound(A.Get(), &UZnTestObject::OnOther));
	Delegate.Broadcast(true, FString());
	EXPECT_EQ(A->Calls, 1);
	Delegate.RemoveDynamic(A.Get(), &UZnTestObject::OnPinged);
	EXPECT_FALSE(Delegate.IsBound());
}

TEST_F(ScriptDelegateTests, PlainAddKeepsDuplicates)
{
	TStrongObjectPtr<UZnTestObject> A(NewObject<UZnTestObject>());
	FZnTestPinged Delegate;
	Delegate.AddDynamic(A.Get(), &UZnTestObject::OnPinged);
	Delegate.AddDynamic(A.Get(), &UZnTestObject::OnPinged);
	Delegate.Broadcast(true, FString());
	EXPECT_EQ(A->Calls, 2);
}

TEST_F(ScriptDelegateTests, CallbackThatUnbindsTakesEffectOnTheNextBroadcast)
{
	TStrongObjectPtr<UZnTestObject> A(NewObject<UZnTestObject>());
	FZnTestPinged Delegate;
	uint64 Handle = 0;
	int32 LambdaCalls = 0;
	Handle = Delegate.AddStandaloneLambda(
		[&](bool, const FString&)
		{
			++LambdaCalls;
			Delegate.RemoveStandaloneHandler(Handle);
			Delegate.RemoveAll(A.Get());
		});
	Delegate.AddDynamic(A.Get(), &UZnTestObject::OnPinged);
	Delegate.Broadcast(true, FString());
	EXPECT_EQ(LambdaCalls, 1);
	EXPECT_EQ(A->Calls, 1) << "the list was copied before the first callback ran";
	Delegate.Broadcast(true, FString());
	EXPECT_EQ(LambdaCalls, 1);
	EXPECT_EQ(A->Calls, 1);
}

TEST_F(ScriptDelegateTests, GenericHandlerSeesEveryArgumentByAddress)
{
	FZnTestPinged Delegate;
	bool SeenOk = false;
	FString SeenText;
	Delegate.AddStandaloneGeneric(
		[&](void* const* Args)
		{
			SeenOk = *static_cast<bool*>(Args[0]);
			SeenText = *static_cast<FString*>(Args[1]);
		});
	Delegate.Broadcast(true, FString(TEXT("generic")));
	EXPECT_TRUE(SeenOk);
	EXPECT_EQ(SeenText, FString(TEXT("generic")));
}

TEST_F(ScriptDelegateTests, CopiedDelegateHasTheSameBindings)
{
	TStrongObjectPtr<UZnTestObject> A(NewObject<UZnTestObject>());
	FZnTestPinged Delegate;
	Delegate.AddDynamic(A.Get(), &UZnTestObject::OnPinged);
	const FZnTestPinged Copy = Delegate;
	Copy.Broadcast(true, FString());
	EXPECT_EQ(A->Calls, 1);
}

TEST_F(ScriptDelegateTests, SingleCastDelegateRunsOnlyWhileItsObjectLives)
{
	FZnTestSingle Delegate;
	EXPECT_FALSE(Delegate.ExecuteIfBound(1));
	UZnTestObject* Object = NewObject<UZnTestObject>();
	Delegate.BindDynamic(Object, &UZnTestObject::OnSingle);
	EXPECT_EQ(Delegate.GetFunctionName(), FName(TEXT("OnSingle")));
	EXPECT_TRUE(Delegate.IsBound());
	EXPECT_TRUE(Delegate.ExecuteIfBound(7));
	EXPECT_EQ(Object->LastValue, 7);
	CollectGarbage();
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_FALSE(Delegate.ExecuteIfBound(8));
	int32 Seen = 0;
	Delegate.BindStandaloneLambda([&Seen](int32 V) { Seen = V; });
	EXPECT_TRUE(Delegate.ExecuteIfBound(9));
	EXPECT_EQ(Seen, 9);
	Delegate.Unbind();
	EXPECT_FALSE(Delegate.IsBound());
}

TEST_F(ScriptDelegateTests, RegisteredDelegateMemberIsFoundThroughItsName)
{
	EXPECT_EQ(ZnDelegateDetail::FunctionNameFromText(TEXT("&UZnTestObject::OnPinged")), FName(TEXT("OnPinged")));
	EXPECT_EQ(ZnDelegateDetail::FunctionNameFromText(TEXT("&OnPinged")), FName(TEXT("OnPinged")));
}
