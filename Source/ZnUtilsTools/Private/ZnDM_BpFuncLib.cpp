#include "ZnDM_BpFuncLib.h"

// ---- Body and face motion decoding ----

// ---- Request bodies and service responses ----

// ---- Signing and bytes ----

// ---- Logging and debugging ----

// ---- Files, paths, time and threads ----

// ---- Engine controls ----

// ---- Script binding examples ----

void UZnDM_BpFuncLib::TestUParamRef(FString& str, FString& otherStr)
{
	str = TEXT("hello UPARAM(ref)");
	otherStr = TEXT("other msg");
}
