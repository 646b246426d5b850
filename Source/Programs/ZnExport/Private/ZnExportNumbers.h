// Plain decimal numbers for the text exports: fixed point, "." as the decimal mark whatever the
// locale, and no "-0.000000" for values that round to zero.
#pragma once

#include <string>

namespace ZnExportNumbers
{
void AppendFixed(std::string& Out, double Value, int Decimals);
}
