#include "Delegates/Delegate.h"

#include <gtest/gtest.h>

namespace
{
struct FCounter
{
	int Calls = 0;
	void Add(int Amount) { Calls += Amount; }
};
} // namespace

DECLARE_DELEGATE_OneParam(FZnTestAmount, int);
DECLARE_DELEGATE_RetVal_OneParam(int, FZnTestTwice, int);

TEST(DelegateTests, UnboundDelegateDoesNothing)
{
	FZnTestAmount Delegate;
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_FALSE(Delegate.ExecuteIfBound(3));
}

TEST(DelegateTests, RawLambdaAndStaticBindings)
{
	FCounter Counter;
	FZnTestAmount Delegate = FZnTestAmount::CreateRaw(&Counter, &FCounter::Add);
	EXPECT_TRUE(Delegate.ExecuteIfBound(2));
	Delegate.Execute(3);
	EXPECT_EQ(Counter.Calls, 5);
	const FZnTestTwice Twice = FZnTestTwice::CreateLambda([](int Value) { return 2 * Value; });
	EXPECT_EQ(Twice.Execute(21), 42);
	Delegate.Unbind();
	EXPECT_FALSE(Delegate.IsBound());
}

TEST(DelegateTests, SharedBindingStopsWhenTheObjectIsGone)
{
	FZnTestAmount Delegate;
	{
		TSharedRef<FCounter> Counter = MakeShared<FCounter>();
		Delegate.BindSP(Counter, &FCounter::Add);
		EXPECT_TRUE(Delegate.ExecuteIfBound(1));
		EXPECT_EQ(Counter->Calls, 1);
	}
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_FALSE(Delegate.ExecuteIfBound(1));
}

TEST(DelegateTests, CallMayUnbindItsOwnDelegate)
{
	FZnTestAmount Delegate;
	int Seen = 0;
	Delegate.BindLambda(
		[&Delegate, &Seen](int Value)
		{
			Delegate.Unbind();
			// The captures are still valid after the unbind.
			Seen = Value;
		});
	EXPECT_TRUE(Delegate.ExecuteIfBound(7));
	EXPECT_EQ(Seen, 7);
	EXPECT_FALSE(Delegate.IsBound());
}
