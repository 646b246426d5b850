// Call stacks of the running program, resolved to function, file and line.
#pragma once

#include "CoreTypes.h"
#include "Containers/Array.h"

// One resolved stack frame. Texts are UTF-8 and always terminated; they are cut short when longer
// than the buffers.
struct CORE_API FProgramCounterSymbolInfo
{
	enum
	{
		MaxNameLength = 1024
	};

	// The module (executable or shared library) the address belongs to.
	ANSICHAR ModuleName[MaxNameLength];
	// The demangled function name, or "UnknownFunction" without symbols.
	ANSICHAR FunctionName[MaxNameLength];
	// The source file of the call, or "UnknownFile" without debug information.
	ANSICHAR Filename[MaxNameLength];
	// The source line of the call, or 0 without debug information.
	int32 LineNumber;
	// Bytes between the function's start and the address.
	int32 SymbolDisplacement;
	// The address relative to the module's load address.
	uint64 OffsetInModule;
	// The return address itself.
	uint64 ProgramCounter;

	FProgramCounterSymbolInfo();
};

struct CORE_API FPlatformStackWalk
{
	// The calling thread's stack, innermost frame first, as resolved frames. IgnoreCount frames
	// are skipped first, counted from the function that calls GetStack (0 keeps that caller as the
	// first frame, 1 starts at its caller); at most MaxDepth frames follow (none for MaxDepth <= 0).
	// Resolution reads the program's debug information (libdw): slow, meant for diagnostics.
	// Context is accepted for the engine's signature and ignored.
	static TArray<FProgramCounterSymbolInfo> GetStack(int32 IgnoreCount, int32 MaxDepth = 100, void* Context = nullptr);
};
