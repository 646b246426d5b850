// libFuzzer entry; the target itself lives in ZnServiceFuzzTargets.h so saved inputs replay in a test.
#include "ZnServiceFuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
	ZnServiceFuzz::SpeechResponse(Data, Size);
	return 0;
}
