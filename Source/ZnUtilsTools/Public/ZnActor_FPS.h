// An actor that caps the frame rate when play begins and shows the measured frame rate on screen
// about once a second ("Fps: " + value, cyan, one second). Place one in a level.
//
// At play start the cap is CustomFps when EnableCustomFps is set and 120 otherwise (not the
// property default of 60: the fall-back is meant to be generous). The cap stays in the engine
// after the actor is gone. Game thread only, like every actor.
#pragma once

#include "CoreMinimal.h"
#include "GameFramework/Actor.h"
#include "ZnActor_FPS.generated.h"

UCLASS()
class ZNUTILSTOOLS_API AZnActor_FPS : public AActor
{
	GENERATED_BODY()

public:
	// Ticks every frame.
	AZnActor_FPS();

	UPROPERTY(EditAnywhere, Category = "DM_FPS")
	bool EnableCustomFps = false;

	UPROPERTY(EditAnywhere, Category = "DM_FPS")
	int32 CustomFps = 60;

	// Counts the frame; once more than one second has gathered, shows frames / seconds and starts over.
	virtual void Tick(float DeltaTime) override;

protected:
	virtual void BeginPlay() override;

private:
	// Seconds since the last display; not reset at play start.
	double mElapsedSeconds = 0.0;
	// Frames since the last display.
	int32 mFrameCount = 0;
};
