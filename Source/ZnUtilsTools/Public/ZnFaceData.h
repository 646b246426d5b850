// The decoded face animation: one weight track per blend-shape (or control-rig) curve.
#pragma once

#include "CoreMinimal.h"
#include "Animation/AnimCurveTypes.h"
#include "ZnFaceData.generated.h"

//~ Filled by the face decoders of UZnDM_BpFuncLib and owned by the caller. Scripts see only id
//~ and totalTime. Item i of CurveFrames and Curves belongs to CurveNames[i] when names are
//~ present; decoders that leave CurveNames empty still keep the channel order of the face rig.
//~ Copies are deep.
USTRUCT(BlueprintType)
struct ZNUTILSTOOLS_API FZnFaceData
{
	GENERATED_BODY()

	// Stamps id with the current time; everything else empty or zero.
	FZnFaceData();
	FZnFaceData(const FZnFaceData& Other) = default;
	FZnFaceData(FZnFaceData&& Other) = default;
	FZnFaceData& operator=(const FZnFaceData& Other) = default;
	FZnFaceData& operator=(FZnFaceData&& Other) = default;
	virtual ~FZnFaceData();

	//~ Creation stamp: FDateTime::Now() in ticks (100 ns) when the record was built.
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	int64 id;

	//~ Length of the motion in seconds.
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Zenvora")
	float totalTime;

	// Curve names as the face rig knows them.
	TArray<FString> CurveNames;
	// Per curve, the weight of every frame that had one (0..1 for blend shapes, raw for control rigs).
	TArray<TArray<float>> CurveFrames;
	// Per curve, the weight keyed by time in seconds.
	TArray<FFloatCurve> Curves;
};
