#include "Components/SkeletalMeshComponent.h"

IMPLEMENT_INTRINSIC_CLASS(USkeletalMeshComponent, ENGINE_API, UObject, COREUOBJECT_API, "/Script/Engine", {})

FName USkeletalMeshComponent::GetBoneName(int32 BoneIndex) const
{
	return BoneNames.IsValidIndex(BoneIndex) ? BoneNames[BoneIndex] : FName(NAME_None);
}
