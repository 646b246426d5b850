// Process-wide flags and thread identities.
#pragma once

#include "CoreTypes.h"
#include "Logging/LogMacros.h"
#include "Misc/OutputDeviceRedirector.h"

// Whether the editor is running. Always false in the standalone build, which is a game.
extern CORE_API bool GIsEditor;

// The operating-system id of the game thread. In the standalone build this is the thread that
// started the process (static initialisation runs on it), the thread a host runs its loop on.
// A host that drives the game from another thread assigns its own id here before doing so.
extern CORE_API uint32 GGameThreadId;
// The rendering thread's id, or 0 while there is none. The standalone build renders nothing and
// starts no rendering thread; a test or host may assign a thread's id to stand for it.
extern CORE_API uint32 GRenderThreadId;
// The RHI thread's id, or 0 while there is none (the standalone build starts none).
extern CORE_API uint32 GRHIThreadId;

// True on the game thread. Any thread may ask.
CORE_API bool IsInGameThread();
// True on the rendering thread; false everywhere while there is none. Any thread may ask.
CORE_API bool IsInRenderingThread();
// True on the RHI thread; false everywhere while there is none. Any thread may ask.
CORE_API bool IsInRHIThread();
