// The decoded body animation: one rotation track per bone plus the root position track.
#pragma once

#include "CoreMinimal.h"
#include "Animation/AnimCurveTypes.h"
#include "ZnQuatCurve.h"
#include "ZnBodyData.generated.h"

//~ Which bone naming a body record uses: the motion service's (DM) or the engine mannequin's (UE).
UENUM(BlueprintType)
enum class EZNSkeletonType : uint8
{
	DM,
	UE
};

//~ Filled by the body decoders of UZnDM_BpFuncLib and owned by the caller (usually a script
//~ variable). Scripts see only id and totalTime; native code reads the rest. Item i of
//~ BoneFrames and BoneCurves belongs to BoneNames[i]. Copies are deep.
USTRUCT(BlueprintType)
struct ZNUTILSTOOLS_API FZnBodyData
{
	GENERATED_BODY()

	// Stamps id with the current time; everything else empty or zero.
	FZnBodyData();
	FZnBodyData(const FZnBodyData& Other) = default;
	FZnBodyData(FZnBodyData&& Other) = default;
	FZnBodyData& operator=(const FZnBodyData& Other) = default;
	FZnBodyData& operator=(FZnBodyData&& Other) = default;
	virtual ~FZnBodyData();

	//~ Creation stamp: FDateTime::Now() in ticks (100 ns) when the record was built. Decoding
	//~ builds a new record, so it tells two decodes apart.
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	int64 id;

	//~ Length of the motion in seconds.
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	float totalTime;

	// Bone names as the service sends them, in decoding order.
	TArray<FString> BoneNames;
	// Per bone, the rotation of every frame (engine frame, normalised).
	TArray<TArray<FQuat>> BoneFrames;
	// Per bone, the rotation keyed by time in seconds.
	TArray<FZnQuatCurve> BoneCurves;
	// Root position by time, in centimetres.
	FVectorCurve RootPositionCurve;
	// Root position of the first frame, in centimetres (zero when the decoder does not set it).
	FVector RootStartPosition;

	// Every bone name followed by a comma ("Hips,Spine,"); "" without bones.
	FString GetNamesStr() const;
};
