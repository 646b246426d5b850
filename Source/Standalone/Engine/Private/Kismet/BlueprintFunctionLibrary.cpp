#include "Kismet/BlueprintFunctionLibrary.h"

IMPLEMENT_INTRINSIC_CLASS(UBlueprintFunctionLibrary, ENGINE_API, UObject, COREUOBJECT_API, "/Script/Engine", {})
