// The skeleton the exports write and draw: the service's bones in the parent-first order of the
// module's hierarchy table, with a rest pose of our own (an adult of about 1.75 m standing
// upright, arms out sideways) in the export frame.
//
// Export frame: Y up, the figure faces +Z and its left is +X, right-handed, centimetres. It is
// the service's own frame, i.e. the decoders' conversion undone: export X = engine Y, export
// Y = engine Z, export Z = engine X (and the same for a rotation's vector part, W kept).
// Pure functions: any thread.
#pragma once

#include "CoreMinimal.h"

#include <string>
#include <vector>

struct FZnExportJoint
{
	// The service's bone name ("LeftForeArm").
	std::string Name;
	// Index of the parent in the same joint list; INDEX_NONE for the root.
	int32 Parent = INDEX_NONE;
	// Rest offset from the parent joint, centimetres, export frame. The rest rotation of every
	// joint is the identity, so offsets are also directions in the parent's frame.
	FVector Offset = FVector::ZeroVector;
	// Where a joint without children ends (its BVH "End Site"), centimetres from the joint.
	FVector EndSite = FVector::ZeroVector;
	bool bHasEndSite = false;
};

class FZnExportSkeleton
{
public:
	// Height of the root above the floor in the rest pose, centimetres: where a clip without a
	// root track stands.
	static constexpr double RestRootHeight = 95.0;

	// The joints to write, parents before children: the 22 body bones always, the two fore-arm
	// twist bones (each right after its fore-arm) when bTwist, the 30 finger bones when bFingers.
	// End sites are set on the joints that have no child in the list.
	static std::vector<FZnExportJoint> Joints(bool bTwist, bool bFingers);

	// Joints() for a decoded body: twist bones when it has either, fingers when it has any finger
	// bone (names compared without regard to letter case, as the decoders compare them).
	static std::vector<FZnExportJoint> JointsFor(const TArray<FString>& BoneNames);

	// The decoders' engine frame to the export frame, and back.
	static FVector ToExportFrame(const FVector& EngineVector)
	{
		return FVector(EngineVector.Y, EngineVector.Z, EngineVector.X);
	}
	static FQuat ToExportFrame(const FQuat& EngineRotation)
	{
		return FQuat(EngineRotation.Y, EngineRotation.Z, EngineRotation.X, EngineRotation.W);
	}
	static FQuat ToEngineFrame(const FQuat& ExportRotation)
	{
		return FQuat(ExportRotation.Z, ExportRotation.X, ExportRotation.Y, ExportRotation.W);
	}
};
