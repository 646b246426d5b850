#include "Engine/StandaloneEngineLoop.h"

FStandaloneEngineLoop::FStandaloneEngineLoop()
{
	if (!GEngine)
	{
		GEngine = NewObject<UEngine>();
		GEngine->AddToRoot();
		bOwnsEngine = true;
	}
	Engine = GEngine;
	World = NewObject<UWorld>();
	World->AddToRoot();
	Engine->SetStandaloneWorld(World);
}

FStandaloneEngineLoop::~FStandaloneEngineLoop()
{
	World->DestroyAllActors();
	if (Engine->GetWorld() == World)
	{
		Engine->SetStandaloneWorld(nullptr);
	}
	World->RemoveFromRoot();
	if (bOwnsEngine)
	{
		Engine->RemoveFromRoot();
		if (GEngine == Engine)
		{
			GEngine = nullptr;
		}
	}
}

void FStandaloneEngineLoop::BeginPlay()
{
	World->BeginPlay();
}

float FStandaloneEngineLoop::GetFrameDeltaSeconds(float FramesPerSecond) const
{
	if (!(FramesPerSecond > 0.0f))
	{
		return 0.0f;
	}
	float Rate = FramesPerSecond;
	const float Cap = Engine->GetMaxFPS();
	if (Cap > 0.0f && Cap < Rate)
	{
		Rate = Cap;
	}
	return 1.0f / Rate;
}

float FStandaloneEngineLoop::RunFrames(int32 NumFrames, float FramesPerSecond)
{
	float DeltaSeconds = 0.0f;
	if (NumFrames <= 0 || !(FramesPerSecond > 0.0f))
	{
		return DeltaSeconds;
	}
	World->BeginPlay();
	for (int32 Frame = 0; Frame < NumFrames; ++Frame)
	{
		DeltaSeconds = GetFrameDeltaSeconds(FramesPerSecond);
		World->Tick(DeltaSeconds);
	}
	return DeltaSeconds;
}
