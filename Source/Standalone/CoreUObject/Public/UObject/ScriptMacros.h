// The native thunk of a reflected function. A caller lays the parameters out in a parameter
// block described by the function's properties and calls UObject::ProcessEvent; the thunk reads
// the block, calls the C++ function and writes the return value and the out parameters back.
#pragma once

#include "HAL/Platform.h"

class UObject;
class UFunction;

/** The call frame handed to a native thunk: the function, the object and its parameter block. */
struct FFrame
{
	UFunction* Node = nullptr;
	UObject* Object = nullptr;
	uint8* Locals = nullptr;

	FFrame(UObject* InObject, UFunction* InNode, void* InLocals)
		: Node(InNode)
		, Object(InObject)
		, Locals(static_cast<uint8*>(InLocals))
	{
	}
};

#define RESULT_PARAM Z_Param__Result
#define RESULT_DECL void* const RESULT_PARAM

typedef void (*FNativeFuncPtr)(UObject* Context, FFrame& TheStack, RESULT_DECL);

#define DECLARE_FUNCTION(func) static void func(UObject* Context, FFrame& Stack, RESULT_DECL)
#define DEFINE_FUNCTION(func) void func(UObject* Context, FFrame& Stack, RESULT_DECL)

#define P_FINISH \
	do           \
	{            \
	} while (0)
#define P_NATIVE_BEGIN \
	do                 \
	{                  \
	} while (0)
#define P_NATIVE_END \
	do               \
	{                \
	} while (0)
#define P_THIS_OBJECT (Context)
#define P_THIS_CAST(ClassType) ((ClassType*)P_THIS_OBJECT)
#define P_THIS P_THIS_CAST(ThisClass)
