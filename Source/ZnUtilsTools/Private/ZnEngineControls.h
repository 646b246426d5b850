// Console commands and engine settings behind the script functions.
#pragma once

#include "CoreMinimal.h"
#include "ZnDM_BpFuncLib.h"

struct ZnEngineControls
{
	// "t.maxFPS " + the decimal value.
	static FString MaxFpsCommand(int32 fps);
	// "stats.MaxPerGroup " + the decimal value.
	static FString MaxPerGroupCommand(int32 maxNum);
	// The toggle command of the overlay; "stat fps" for an unknown value.
	static FString StatCommand(ZnDM_StatType type);
	// Runs command through the engine object with its world and the global log as output; false
	// when there is no engine object or the engine did not accept the command. Game thread only.
	static bool Exec(const FString& command);
	// val when 0 <= val < 1, 1 when val >= 1, 0 otherwise (also for NaN).
	static float ClampUnfocusedVolume(float val);
};
