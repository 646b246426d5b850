// Garbage collection: CollectGarbage() (declared in UObjectGlobals.h) and the root helpers.
#pragma once

#include "UObject/StrongObjectPtr.h"
#include "UObject/UObjectGlobals.h"
