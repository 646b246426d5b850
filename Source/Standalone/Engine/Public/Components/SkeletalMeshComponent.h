// A component that draws a skinned mesh; the standalone build keeps only its bone names.
#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"

class ENGINE_API USkeletalMeshComponent : public UObject
{
	DECLARE_CLASS_INTRINSIC(USkeletalMeshComponent, UObject, CLASS_None, TEXT("/Script/Engine"))

public:
	USkeletalMeshComponent() = default;

	// The number of bones of the mesh's skeleton (0 without a mesh).
	int32 GetNumBones() const { return BoneNames.Num(); }
	// The bone's name, or NAME_None for an index outside 0..GetNumBones()-1.
	FName GetBoneName(int32 BoneIndex) const;

	// Standalone only: the skeleton's bone names in bone-index order.
	void SetStandaloneBoneNames(const TArray<FName>& InBoneNames) { BoneNames = InBoneNames; }

private:
	TArray<FName> BoneNames;
};
