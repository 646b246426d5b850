// libFuzzer entry; the target itself lives in ZnFuzzTargets.h so saved crash inputs replay in a test.
#include "ZnFuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
	ZnFuzz::TightNumbers(Data, Size);
	return 0;
}
