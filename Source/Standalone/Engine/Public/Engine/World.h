// A world: the actors that play together and the game time.
//
// The standalone world keeps its actors alive (each is in the root set while it belongs to the
// world) and ticks them in spawn order. Game thread only.
#pragma once

#include "CoreMinimal.h"
#include "GameFramework/Actor.h"
#include "UObject/Object.h"

class ENGINE_API UWorld : public UObject
{
	DECLARE_CLASS_INTRINSIC(UWorld, UObject, CLASS_None, TEXT("/Script/Engine"))

public:
	UWorld() = default;

	// Creates an actor of type T in this world. When play has begun, it begins play at once.
	template <class T>
	T* SpawnActor()
	{
		T* Actor = NewObject<T>(this);
		AddActor(Actor);
		return Actor;
	}

	// Begins play: BeginPlay on every actor, in spawn order. Later calls do nothing.
	void BeginPlay();
	bool HasBegunPlay() const { return bBegunPlay; }

	// Advances game time by DeltaSeconds and ticks every actor that can tick. Begins play first
	// when that has not happened yet.
	void Tick(float DeltaSeconds);

	// Game seconds since play began (the sum of the frames' delta times).
	double GetTimeSeconds() const { return TimeSeconds; }
	// The last frame's delta time in seconds.
	float GetDeltaSeconds() const { return DeltaTimeSeconds; }
	// The number of frames ticked.
	uint64 GetFrameCount() const { return FrameCount; }

	// The actors of this world, in spawn order.
	const TArray<AActor*>& GetActors() const { return Actors; }

	// Lets every actor go (out of the root set) so the garbage collector may free them.
	void DestroyAllActors();

	virtual UWorld* GetWorld() const override { return const_cast<UWorld*>(this); }

private:
	void AddActor(AActor* Actor);

	TArray<AActor*> Actors;
	bool bBegunPlay = false;
	double TimeSeconds = 0.0;
	float DeltaTimeSeconds = 0.0f;
	uint64 FrameCount = 0;
};
