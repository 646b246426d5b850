// The reference decoders of the benchmarks: the same work as the module's body and face decoders,
// done the way engine code usually does it, through a document of heap-allocated JSON values
// (nlohmann::json stands in for the engine's own JSON objects). Parse the whole text into the
// document, then walk it and fill the same record with the same conversion rules. Their output is
// the reference every other contender is checked against before it is timed.
#pragma once

#include "ZnBodyData.h"
#include "ZnFaceData.h"

namespace ZnDomBaseline
{
// Body animation text: "totalTime", "curves" of per-bone "rotas", "Hips" with "pos".
void ParseJsonToBodydata(const FString& JsonStr, FZnBodyData& BodyData);
// Face animation text: an array of frames, each an array of percent weights.
void ParseJsonToFacedata(const FString& JsonStr, FZnFaceData& FaceData);
} // namespace ZnDomBaseline
