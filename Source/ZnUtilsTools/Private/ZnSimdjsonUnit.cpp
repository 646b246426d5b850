// Inside the engine, simdjson is compiled as part of this module from its single-file release
// (see Source/ThirdParty/simdjson/simdjson.Build.cs). The standalone build links the system
// library instead, so this unit is empty there.
#if defined(ZN_SIMDJSON_SINGLE_HEADER) && ZN_SIMDJSON_SINGLE_HEADER
#include "ZnSimdjson.h"

THIRD_PARTY_INCLUDES_START
#include "simdjson.cpp"
THIRD_PARTY_INCLUDES_END
#endif
