// Hand-written reflected classes for the object-system tests (declared the way engine classes
// without generated code are), with counters that show construction, destruction and calls.
#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"

DECLARE_DYNAMIC_MULTICAST_DELEGATE_TwoParams(FZnTestPinged, bool, bOk, const FString&, Text);
DECLARE_DYNAMIC_DELEGATE_OneParam(FZnTestSingle, int32, Value);

class UZnTestObject : public UObject
{
	DECLARE_CLASS_INTRINSIC(UZnTestObject, UObject, CLASS_None, TEXT("/Script/ZnTests"))
public:
	static int32 LiveCount;
	static int32 DestroyedCount;
	static int32 BeginDestroyCount;

	UZnTestObject() { ++LiveCount; }
	~UZnTestObject() override
	{
		--LiveCount;
		++DestroyedCount;
	}
	void BeginDestroy() override { ++BeginDestroyCount; }

	void OnPinged(bool bOk, const FString& Text)
	{
		++Calls;
		LastOk = bOk;
		LastText = Text;
	}
	void OnOther(bool bOk, const FString& Text) { ++OtherCalls; }
	void OnSingle(int32 Value) { LastValue = Value; }

	int32 Calls = 0;
	int32 OtherCalls = 0;
	bool LastOk = false;
	FString LastText;
	int32 LastValue = 0;

	/** A reflected object reference: what it points to stays alive while this object does. */
	UObject* Child = nullptr;
	/** Not reflected: invisible to the garbage collector. */
	UObject* Hidden = nullptr;
	FZnTestPinged OnPing;
};

class UZnTestAbstract : public UObject
{
	DECLARE_CLASS_INTRINSIC(UZnTestAbstract, UObject, CLASS_Abstract, TEXT("/Script/ZnTests"))
};
