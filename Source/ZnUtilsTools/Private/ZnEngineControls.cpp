#include "ZnEngineControls.h"

#include "CoreGlobals.h"
#include "Engine/Engine.h"

FString ZnEngineControls::MaxFpsCommand(int32 fps)
{
	return TEXT("t.maxFPS ") + FString::FromInt(fps);
}

FString ZnEngineControls::MaxPerGroupCommand(int32 maxNum)
{
	return TEXT("stats.MaxPerGroup ") + FString::FromInt(maxNum);
}

FString ZnEngineControls::StatCommand(ZnDM_StatType type)
{
	switch (type)
	{
		case ZnDM_StatType::Unit:
			return TEXT("stat unit");
		case ZnDM_StatType::UnitGraph:
			return TEXT("stat unitGraph");
		case ZnDM_StatType::Engine:
			return TEXT("stat engine");
		case ZnDM_StatType::Game:
			return TEXT("stat game");
		case ZnDM_StatType::SceneRendering:
			return TEXT("stat SceneRendering");
		case ZnDM_StatType::Rhi:
			return TEXT("stat rhi");
		case ZnDM_StatType::Gpu:
			return TEXT("stat gpu");
		case ZnDM_StatType::Fps:
		default:
			return TEXT("stat fps");
	}
}

bool ZnEngineControls::Exec(const FString& command)
{
	// Scripts may run before the engine object exists (or after it is gone); the command is then dropped.
	if (!GEngine || !GLog)
	{
		return false;
	}
	return GEngine->Exec(GEngine->GetWorld(), *command, *GLog);
}

float ZnEngineControls::ClampUnfocusedVolume(float val)
{
	if (val >= 0.0f && val < 1.0f)
	{
		return val;
	}
	return val >= 1.0f ? 1.0f : 0.0f;
}
