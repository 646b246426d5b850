#include "CoreMinimal.h"

#include <gtest/gtest.h>

namespace
{
struct FCounted
{
	static int32 Destroyed;
	int32 Value;
	explicit FCounted(int32 InValue)
		: Value(InValue)
	{
	}
	virtual ~FCounted() { ++Destroyed; }
};
int32 FCounted::Destroyed = 0;

struct FDerived : public FCounted
{
	FDerived()
		: FCounted(42)
	{
	}
};

class FSelfAware : public TSharedFromThis<FSelfAware>
{
public:
	int32 Id = 5;
};
} // namespace

TEST(SharedPointerTests, MakeSharedOwnsTheObject)
{
	FCounted::Destroyed = 0;
	{
		TSharedRef<FCounted> Ref = MakeShared<FCounted>(7);
		EXPECT_EQ(Ref->Value, 7);
		EXPECT_EQ(Ref.GetSharedReferenceCount(), 1);
		TSharedPtr<FCounted> Ptr = Ref;
		EXPECT_EQ(Ref.GetSharedReferenceCount(), 2);
		EXPECT_EQ(Ptr.Get(), &Ref.Get());
	}
	EXPECT_EQ(FCounted::Destroyed, 1);
}

TEST(SharedPointerTests, MakeShareableTakesARawPointer)
{
	FCounted::Destroyed = 0;
	{
		TSharedPtr<FCounted> Ptr = MakeShareable(new FCounted(3));
		ASSERT_TRUE(Ptr.IsValid());
		EXPECT_EQ((*Ptr).Value, 3);
		TSharedRef<FCounted> Ref = MakeShareable(new FCounted(4));
		EXPECT_EQ(Ref->Value, 4);
	}
	EXPECT_EQ(FCounted::Destroyed, 2);
}

TEST(SharedPointerTests, NullPointersAreInvalid)
{
	TSharedPtr<FCounted> Ptr;
	EXPECT_FALSE(Ptr.IsValid());
	EXPECT_FALSE(Ptr);
	EXPECT_EQ(Ptr.Get(), nullptr);
	EXPECT_TRUE(Ptr == nullptr);
	Ptr = MakeShared<FCounted>(1);
	EXPECT_TRUE(Ptr != nullptr);
	Ptr.Reset();
	EXPECT_FALSE(Ptr.IsValid());
	TSharedPtr<FCounted> FromNull = nullptr;
	EXPECT_FALSE(FromNull.IsValid());
}

TEST(SharedPointerTests, ToSharedRefAndBack)
{
	TSharedPtr<FCounted> Ptr = MakeShared<FCounted>(9);
	TSharedRef<FCounted> Ref = Ptr.ToSharedRef();
	EXPECT_EQ(Ref->Value, 9);
	TSharedPtr<FCounted> Again = Ref.ToSharedPtr();
	EXPECT_TRUE(Again == Ptr);
}

TEST(SharedPointerTests, DerivedConvertsToBase)
{
	FCounted::Destroyed = 0;
	{
		TSharedPtr<FCounted> Base = MakeShared<FDerived>();
		EXPECT_EQ(Base->Value, 42);
		TSharedPtr<FDerived> Down = StaticCastSharedPtr<FDerived>(Base);
		EXPECT_EQ(Down.GetSharedReferenceCount(), 2);
		TSharedRef<FCounted> BaseRef = MakeShared<FDerived>();
		TSharedRef<FDerived> DownRef = StaticCastSharedRef<FDerived>(BaseRef);
		EXPECT_EQ(DownRef->Value, 42);
	}
	EXPECT_EQ(FCounted::Destroyed, 2);
}

TEST(SharedPointerTests, WeakPointersDoNotKeepObjectsAlive)
{
	TWeakPtr<FCounted> Weak;
	{
		TSharedPtr<FCounted> Strong = MakeShared<FCounted>(1);
		Weak = Strong;
		EXPECT_TRUE(Weak.IsValid());
		TSharedPtr<FCounted> Pinned = Weak.Pin();
		EXPECT_EQ(Pinned->Value, 1);
	}
	EXPECT_FALSE(Weak.IsValid());
	EXPECT_FALSE(Weak.Pin().IsValid());
}

TEST(SharedPointerTests, SharedFromThisReachesTheOwner)
{
	TSharedRef<FSelfAware> Owner = MakeShared<FSelfAware>();
	TSharedRef<FSelfAware> Self = Owner->AsShared();
	EXPECT_EQ(&Self.Get(), &Owner.Get());
	EXPECT_EQ(Owner.GetSharedReferenceCount(), 2);
	const FSelfAware& ConstOwner = Owner.Get();
	EXPECT_EQ(ConstOwner.AsShared()->Id, 5);
}

TEST(SharedPointerTests, ThreadSafeModeIsTheDefault)
{
	TSharedPtr<FCounted, ESPMode::ThreadSafe> Explicit = MakeShared<FCounted, ESPMode::ThreadSafe>(2);
	TSharedPtr<FCounted> Default = Explicit;
	EXPECT_EQ(Default->Value, 2);
}

TEST(SharedPointerTests, UsableAsMapKeys)
{
	TSharedPtr<FCounted> A = MakeShared<FCounted>(1);
	TSharedPtr<FCounted> B = MakeShared<FCounted>(2);
	TMap<TSharedPtr<FCounted>, int32> Map;
	Map.Add(A, 1);
	Map.Add(B, 2);
	EXPECT_EQ(Map.FindRef(B), 2);
}
