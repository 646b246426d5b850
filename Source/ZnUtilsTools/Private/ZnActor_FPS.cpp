#include "ZnActor_FPS.h"

#include "Engine/Engine.h"
#include "ZnDM_BpFuncLib.h"

AZnActor_FPS::AZnActor_FPS()
{
	PrimaryActorTick.bCanEverTick = true;
}

void AZnActor_FPS::BeginPlay()
{
	Super::BeginPlay();
	UZnDM_BpFuncLib::SetFps(EnableCustomFps ? CustomFps : 120);
}

void AZnActor_FPS::Tick(float DeltaTime)
{
	Super::Tick(DeltaTime);
	mElapsedSeconds += DeltaTime;
	++mFrameCount;
	if (mElapsedSeconds > 1.0)
	{
		const double fps = static_cast<double>(mFrameCount) / mElapsedSeconds;
		if (GEngine)
		{
			GEngine->AddOnScreenDebugMessage(
				-1, 1.0f, FColor::Cyan, TEXT("Fps: ") + FString::SanitizeFloat(fps, 1), true, FVector2D(1.0f, 1.0f));
		}
		mElapsedSeconds = 0.0;
		mFrameCount = 0;
	}
}
