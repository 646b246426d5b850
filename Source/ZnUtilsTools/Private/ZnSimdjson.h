// The one place the module includes simdjson, between the engine's third-party markers so that
// the engine's warning settings do not apply to it.
#pragma once

#include "CoreMinimal.h"

#if defined(ZN_SIMDJSON_MISSING) && ZN_SIMDJSON_MISSING
#error \
	"simdjson 3.0.1 is missing: place simdjson.h and simdjson.cpp in Plugins/Zenvora/Source/ThirdParty/simdjson/include (or set ZN_SIMDJSON_DIR to their folder) and build again."
#endif

THIRD_PARTY_INCLUDES_START
#include <simdjson.h>
THIRD_PARTY_INCLUDES_END
