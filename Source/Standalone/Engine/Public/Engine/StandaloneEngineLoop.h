// Standalone only: a host's engine and game loop without a window.
//
// Creates the engine object (GEngine) when there is none and one world, spawns actors into it and
// runs frames. Time is simulated, not waited for, so a run is deterministic and as fast as the
// machine allows. The simulated clock reads like the engine's (seconds plus the fixed offset of
// 2^24), each frame advances it by 1 / rate, where rate is the requested frames per second capped
// by the engine's "t.maxFPS" when that is above 0, and a frame's delta time is the difference of
// two clock readings, as in the engine. The deltas are therefore quantised the engine's way
// (multiples of 2^-28 s): at 60 frames per second each lasts slightly less than 1/60 s and 60 of
// them add up to just under one second. Game thread only; one loop at a time.
#pragma once

#include "CoreMinimal.h"
#include "Engine/Engine.h"
#include "Engine/World.h"

class ENGINE_API FStandaloneEngineLoop
{
public:
	// Creates the world and, when GEngine is null, the engine object, which the loop then owns.
	FStandaloneEngineLoop();
	// Lets the world's actors go, then the world, and the engine object if the loop created it
	// (GEngine is null again afterwards).
	~FStandaloneEngineLoop();

	FStandaloneEngineLoop(const FStandaloneEngineLoop&) = delete;
	FStandaloneEngineLoop& operator=(const FStandaloneEngineLoop&) = delete;

	UEngine* GetEngine() const { return Engine; }
	UWorld* GetWorld() const { return World; }

	template <class T>
	T* SpawnActor()
	{
		return World->template SpawnActor<T>();
	}

	// Begins play in the world (also done by the first frame).
	void BeginPlay();

	// The nominal frame length for a requested rate: 1 / min(FramesPerSecond, t.maxFPS when above
	// 0). 0 when the requested rate is not a positive number.
	float GetFrameDeltaSeconds(float FramesPerSecond) const;

	// Runs NumFrames frames at the requested rate (see above) and returns the last frame's delta.
	// Each frame ticks the core ticker (FTSTicker::GetCoreTicker()), then the world.
	// Runs nothing and returns 0 for NumFrames <= 0 or a rate that is not a positive number.
	// The cap is read again before every frame, so an actor that sets it takes effect next frame.
	float RunFrames(int32 NumFrames, float FramesPerSecond);

private:
	UEngine* Engine = nullptr;
	UWorld* World = nullptr;
	bool bOwnsEngine = false;
	// The simulated clock in seconds, starting where the engine's clock offset puts it.
	double ClockSeconds = 16777216.0;
};
