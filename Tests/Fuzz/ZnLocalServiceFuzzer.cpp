// libFuzzer entry; the target itself lives in ZnLocalServiceFuzzTarget.h.
#include "ZnLocalServiceFuzzTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
	ZnLocalServiceFuzz::Request(Data, Size);
	return 0;
}
