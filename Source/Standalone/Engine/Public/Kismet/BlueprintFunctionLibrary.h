// UBlueprintFunctionLibrary: the base of classes whose static functions scripts call directly.
#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"

class ENGINE_API UBlueprintFunctionLibrary : public UObject
{
	DECLARE_CLASS_INTRINSIC(UBlueprintFunctionLibrary, UObject, CLASS_Abstract, TEXT("/Script/Engine"))
};
