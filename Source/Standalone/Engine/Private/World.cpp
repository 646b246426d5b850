#include "Engine/World.h"

IMPLEMENT_INTRINSIC_CLASS(UWorld, ENGINE_API, UObject, COREUOBJECT_API, "/Script/Engine", {})
IMPLEMENT_INTRINSIC_CLASS(AActor, ENGINE_API, UObject, COREUOBJECT_API, "/Script/Engine", {})

void AActor::Tick(float DeltaSeconds) {}

void AActor::BeginPlay() {}

UWorld* AActor::GetWorld() const
{
	return OwningWorld;
}

void AActor::DispatchBeginPlay()
{
	if (bActorHasBegunPlay)
	{
		return;
	}
	bActorHasBegunPlay = true;
	BeginPlay();
}

void UWorld::AddActor(AActor* Actor)
{
	if (!Actor)
	{
		return;
	}
	Actor->AddToRoot();
	Actor->SetStandaloneWorld(this);
	Actors.Add(Actor);
	if (bBegunPlay)
	{
		Actor->DispatchBeginPlay();
	}
}

void UWorld::BeginPlay()
{
	if (bBegunPlay)
	{
		return;
	}
	bBegunPlay = true;
	// An actor's BeginPlay may spawn more actors; those begin play as they are added.
	for (int32 Index = 0; Index < Actors.Num(); ++Index)
	{
		Actors[Index]->DispatchBeginPlay();
	}
}

void UWorld::Tick(float DeltaSeconds)
{
	BeginPlay();
	DeltaTimeSeconds = DeltaSeconds;
	TimeSeconds += DeltaSeconds;
	++FrameCount;
	for (int32 Index = 0; Index < Actors.Num(); ++Index)
	{
		AActor* Actor = Actors[Index];
		if (Actor->PrimaryActorTick.bCanEverTick && Actor->PrimaryActorTick.bStartWithTickEnabled)
		{
			Actor->Tick(DeltaSeconds);
		}
	}
}

void UWorld::DestroyAllActors()
{
	for (AActor* Actor : Actors)
	{
		Actor->SetStandaloneWorld(nullptr);
		Actor->RemoveFromRoot();
	}
	Actors.Empty();
}
