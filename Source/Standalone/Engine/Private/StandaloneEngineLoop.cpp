#include "Engine/StandaloneEngineLoop.h"

#include "Containers/Ticker.h"

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

namespace
{
// 1 / min(rate, cap when above 0) in double, or 0 for a rate that is not positive.
double NominalFrameSeconds(float FramesPerSecond, float Cap)
{
	if (!(FramesPerSecond > 0.0f))
	{
		return 0.0;
	}
	float Rate = FramesPerSecond;
	if (Cap > 0.0f && Cap < Rate)
	{
		Rate = Cap;
	}
	return 1.0 / static_cast<double>(Rate);
}
} // namespace

float FStandaloneEngineLoop::GetFrameDeltaSeconds(float FramesPerSecond) const
{
	return static_cast<float>(NominalFrameSeconds(FramesPerSecond, Engine->GetMaxFPS()));
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
		// The delta is the difference of two readings of a clock that carries the engine's
		// offset, so it is rounded the way the engine's own frame times are.
		const double NextClockSeconds = ClockSeconds + NominalFrameSeconds(FramesPerSecond, Engine->GetMaxFPS());
		DeltaSeconds = static_cast<float>(NextClockSeconds - ClockSeconds);
		ClockSeconds = NextClockSeconds;
		// Core tickers first, as the engine does: completions of HTTP requests and other
		// queued work reach the game thread before the actors tick.
		FTSTicker::GetCoreTicker().Tick(DeltaSeconds);
		World->Tick(DeltaSeconds);
	}
	return DeltaSeconds;
}
