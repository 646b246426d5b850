#include "Engine/StandaloneEngineLoop.h"

#include "Engine/Engine.h"
#include "Engine/World.h"
#include "GameFramework/Actor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace
{
class FNullOutput : public FOutputDevice
{
public:
	void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override {}
};

// Records what the loop does to an actor.
class ARecordingActor : public AActor
{
	DECLARE_CLASS_INTRINSIC(ARecordingActor, AActor, CLASS_None, TEXT("/Script/EngineTests"))

public:
	ARecordingActor() { PrimaryActorTick.bCanEverTick = true; }

	void Tick(float DeltaSeconds) override
	{
		Super::Tick(DeltaSeconds);
		Deltas.push_back(DeltaSeconds);
	}

	int32 BeginPlayCount = 0;
	std::vector<float> Deltas;

protected:
	void BeginPlay() override
	{
		Super::BeginPlay();
		++BeginPlayCount;
	}
};

// Never ticks, as actors are by default.
class AStillActor : public AActor
{
	DECLARE_CLASS_INTRINSIC(AStillActor, AActor, CLASS_None, TEXT("/Script/EngineTests"))

public:
	void Tick(float DeltaSeconds) override { ++TickCount; }

	int32 TickCount = 0;
};
} // namespace

IMPLEMENT_INTRINSIC_CLASS(ARecordingActor, , AActor, ENGINE_API, "/Script/EngineTests", {})
IMPLEMENT_INTRINSIC_CLASS(AStillActor, , AActor, ENGINE_API, "/Script/EngineTests", {})

TEST(FStandaloneEngineLoop, RunsFramesWithFixedDeltaTimes)
{
	FStandaloneEngineLoop Loop;
	ARecordingActor* Actor = Loop.SpawnActor<ARecordingActor>();
	EXPECT_EQ(Actor->GetWorld(), Loop.GetWorld());
	EXPECT_FLOAT_EQ(Loop.RunFrames(3, 50.0f), 0.02f);
	EXPECT_EQ(Actor->BeginPlayCount, 1);
	ASSERT_EQ(Actor->Deltas.size(), 3u);
	for (float Delta : Actor->Deltas)
	{
		EXPECT_FLOAT_EQ(Delta, 0.02f);
	}
	EXPECT_EQ(Loop.GetWorld()->GetFrameCount(), 3u);
	EXPECT_NEAR(Loop.GetWorld()->GetTimeSeconds(), 0.06, 1e-6);
}

TEST(FStandaloneEngineLoop, MaxFpsCapsTheSimulatedRate)
{
	FStandaloneEngineLoop Loop;
	FNullOutput Output;
	ARecordingActor* Actor = Loop.SpawnActor<ARecordingActor>();
	GEngine->Exec(nullptr, TEXT("t.maxFPS 30"), Output);
	EXPECT_FLOAT_EQ(Loop.RunFrames(2, 120.0f), 1.0f / 30.0f);
	// A cap above the requested rate changes nothing; 0 removes the cap.
	GEngine->Exec(nullptr, TEXT("t.maxFPS 240"), Output);
	EXPECT_FLOAT_EQ(Loop.RunFrames(1, 120.0f), 1.0f / 120.0f);
	GEngine->Exec(nullptr, TEXT("t.maxFPS 0"), Output);
	EXPECT_FLOAT_EQ(Loop.RunFrames(1, 200.0f), 1.0f / 200.0f);
	ASSERT_EQ(Actor->Deltas.size(), 4u);
	EXPECT_FLOAT_EQ(Actor->Deltas[0], 1.0f / 30.0f);
	EXPECT_FLOAT_EQ(Actor->Deltas[3], 1.0f / 200.0f);
}

TEST(FStandaloneEngineLoop, ActorsThatCannotTickAreLeftAlone)
{
	FStandaloneEngineLoop Loop;
	AStillActor* Actor = Loop.SpawnActor<AStillActor>();
	Loop.RunFrames(5, 60.0f);
	EXPECT_EQ(Actor->TickCount, 0);
	EXPECT_TRUE(Actor->HasActorBegunPlay());
}

TEST(FStandaloneEngineLoop, ActorSpawnedDuringPlayBeginsAtOnce)
{
	FStandaloneEngineLoop Loop;
	Loop.BeginPlay();
	ARecordingActor* Late = Loop.SpawnActor<ARecordingActor>();
	EXPECT_EQ(Late->BeginPlayCount, 1);
	Loop.BeginPlay();
	Loop.RunFrames(1, 60.0f);
	EXPECT_EQ(Late->BeginPlayCount, 1);
	EXPECT_EQ(Late->Deltas.size(), 1u);
}

TEST(FStandaloneEngineLoop, BadFrameRequestsRunNothing)
{
	FStandaloneEngineLoop Loop;
	ARecordingActor* Actor = Loop.SpawnActor<ARecordingActor>();
	EXPECT_FLOAT_EQ(Loop.RunFrames(0, 60.0f), 0.0f);
	EXPECT_FLOAT_EQ(Loop.RunFrames(-1, 60.0f), 0.0f);
	EXPECT_FLOAT_EQ(Loop.RunFrames(3, 0.0f), 0.0f);
	EXPECT_FLOAT_EQ(Loop.RunFrames(3, -60.0f), 0.0f);
	EXPECT_FLOAT_EQ(Loop.RunFrames(3, std::numeric_limits<float>::quiet_NaN()), 0.0f);
	EXPECT_TRUE(Actor->Deltas.empty());
	EXPECT_EQ(Actor->BeginPlayCount, 0);
}

TEST(FStandaloneEngineLoop, ExistingEngineIsReusedAndKept)
{
	FStandaloneEngineLoop Outer;
	UEngine* Engine = GEngine;
	{
		FStandaloneEngineLoop Inner;
		EXPECT_EQ(Inner.GetEngine(), Engine);
		EXPECT_EQ(GEngine->GetWorld(), Inner.GetWorld());
	}
	EXPECT_EQ(GEngine, Engine);
}

TEST(FStandaloneEngineLoop, DeltasAreRoundedLikeTheEnginesClock)
{
	FStandaloneEngineLoop Loop;
	ARecordingActor* Actor = Loop.SpawnActor<ARecordingActor>();
	Loop.RunFrames(60, 60.0f);
	ASSERT_EQ(Actor->Deltas.size(), 60u);
	double Sum = 0.0;
	for (float Delta : Actor->Deltas)
	{
		// Readings of a clock near 2^24 seconds differ by whole multiples of 2^-28 seconds.
		const double Units = static_cast<double>(Delta) * 268435456.0;
		EXPECT_EQ(Units, std::floor(Units));
		Sum += Delta;
	}
	// Each 60 Hz frame rounds down a little, so sixty of them stay just under one second.
	EXPECT_LT(Sum, 1.0);
	EXPECT_GT(Sum, 0.9999);
	EXPECT_DOUBLE_EQ(Loop.GetWorld()->GetTimeSeconds(), Sum);
}
