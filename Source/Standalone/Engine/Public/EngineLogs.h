// Log categories of the engine layer.
#pragma once

#include "CoreMinimal.h"

DECLARE_LOG_CATEGORY_EXTERN(LogEngine, Log, All);
