// An object placed in a world that takes part in play: BeginPlay once, Tick every frame.
#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"

class UWorld;

// How an actor ticks. Only bCanEverTick and bStartWithTickEnabled matter in the standalone loop.
struct FActorTickFunction
{
	// Whether the actor ticks at all; set it in the constructor.
	bool bCanEverTick = false;
	// Whether ticking starts enabled when play begins.
	bool bStartWithTickEnabled = true;
	// Seconds between ticks (0: every frame). Accepted and not used by the standalone loop.
	float TickInterval = 0.0f;
};

class ENGINE_API AActor : public UObject
{
	DECLARE_CLASS_INTRINSIC(AActor, UObject, CLASS_None, TEXT("/Script/Engine"))

public:
	AActor() = default;

	FActorTickFunction PrimaryActorTick;

	// Called every frame while play runs, with the frame's duration in seconds, when
	// PrimaryActorTick.bCanEverTick is set. Derived actors call Super::Tick first.
	virtual void Tick(float DeltaSeconds);

	// The world the actor was spawned in, or null.
	virtual UWorld* GetWorld() const override;

	// True once BeginPlay has run.
	bool HasActorBegunPlay() const { return bActorHasBegunPlay; }

	// Runs BeginPlay once; later calls do nothing. Called by the world.
	void DispatchBeginPlay();

	// Standalone only: the world sets itself here when it spawns the actor.
	void SetStandaloneWorld(UWorld* InWorld) { OwningWorld = InWorld; }

protected:
	// Called once when play begins for this actor. Derived actors call Super::BeginPlay first.
	virtual void BeginPlay();

private:
	UWorld* OwningWorld = nullptr;
	bool bActorHasBegunPlay = false;
};
