#include "ZnTestObjects.h"

int32 UZnTestObject::LiveCount = 0;
int32 UZnTestObject::DestroyedCount = 0;
int32 UZnTestObject::BeginDestroyCount = 0;

#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
#endif

// The reflected Child reference is described by hand, as generated code would describe it.
IMPLEMENT_INTRINSIC_CLASS(UZnTestObject, NO_API, UObject, COREUOBJECT_API, "/Script/ZnTests", {
	PrivateStaticClass->AddCppProperty(new FObjectProperty(PrivateStaticClass, FName(TEXT("Child")), CPF_None,
		STRUCT_OFFSET(UZnTestObject, Child), &UECodeGen_Private::TPropertyTypeOps<UObject*>::Ops));
})
IMPLEMENT_INTRINSIC_CLASS(UZnTestAbstract, NO_API, UObject, COREUOBJECT_API, "/Script/ZnTests", {})
