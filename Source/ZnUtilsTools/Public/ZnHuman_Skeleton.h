// The module's fixed vocabulary of bone and face-curve names: the motion service's skeleton
// (DM), the engine mannequin's (UE) and the two spellings of the 51 face channels. Several lists
// are index-aligned so a bone can be translated from one naming to the other by position.
#pragma once

#include "CoreMinimal.h"

// Build one where a list is needed; the fields are public and read directly. Not reflected.
class ZNUTILSTOOLS_API ZnHuman_Skeleton
{
public:
	ZnHuman_Skeleton();
	ZnHuman_Skeleton(const ZnHuman_Skeleton& Other) = default;
	ZnHuman_Skeleton& operator=(const ZnHuman_Skeleton& Other) = default;
	~ZnHuman_Skeleton() = default;

	// The service's body bones without fingers. (22)
	TArray<FString> DMBodyBones;
	// DMBodyBones plus the two fore-arm twist bones, each after its fore-arm. (24)
	TArray<FString> DMBodyBonesWithTwist;
	// The service's finger bones: left hand then right, thumb to pinky, joints 1 to 3. (30)
	TArray<FString> DMFingerBones;
	// The engine mannequin's body bones; entry i is the same bone as DMBodyBones[i]. (22)
	TArray<FString> UEBodyBones;
	// The mannequin's finger bones; entry i is the same bone as DMFingerBones[i]. (30)
	TArray<FString> UEFingerBones;
	// UEBodyBones followed by UEFingerBones. (52)
	TArray<FString> UEAllBones;
	// Every service bone, parents before children. (52)
	TArray<FString> DMBonesHierarchy;
	// Every mannequin bone in the same order; entry i is the same bone as DMBonesHierarchy[i]. (52)
	TArray<FString> UEBonesHierarchy;
	// Eye and jaw bones. (3)
	TArray<FString> ExtraFaceBones;
	// The 51 face channels as the service names them. (51)
	TArray<FString> BlendShapeSourceNames;
	// The 51 face channels as the face rig names them, in the order of the values in the service's
	// face frames. Unlike BlendShapeSourceNames it has jaw left before jaw right (positions 15 and 16);
	// the frames follow this order, so it must not be "fixed". (51)
	TArray<FString> FaceCurveNames;
};
