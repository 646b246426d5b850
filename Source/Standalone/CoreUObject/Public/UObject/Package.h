// UPackage: the outermost object of a group ("/Script/ZnUtilsTools" for the module's reflected
// types, "/Engine/Transient" for runtime objects that are never saved).
#pragma once

#include "UObject/Object.h"

class COREUOBJECT_API UPackage : public UObject
{
	DECLARE_CLASS_INTRINSIC(UPackage, UObject, CLASS_None, TEXT("/Script/CoreUObject"))
};

COREUOBJECT_API UPackage* GetTransientPackage();
