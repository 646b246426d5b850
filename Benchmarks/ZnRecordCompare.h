// Exact comparison of decoded records, used to check every benchmark contender against the
// reference before it is timed. Everything but the creation stamp (id) must be equal bit for bit.
#pragma once

#include "ZnBodyData.h"
#include "ZnFaceData.h"

#include <string>

namespace ZnRecordCompare
{
// True when equal; otherwise false with the first difference described in OutWhy.
bool SameBody(const FZnBodyData& A, const FZnBodyData& B, std::string& OutWhy);
bool SameFace(const FZnFaceData& A, const FZnFaceData& B, std::string& OutWhy);
} // namespace ZnRecordCompare
