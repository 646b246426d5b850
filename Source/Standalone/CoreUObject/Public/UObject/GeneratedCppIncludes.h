// What every generated *.gen.cpp includes first.
#pragma once

#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/ScriptMacros.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"
