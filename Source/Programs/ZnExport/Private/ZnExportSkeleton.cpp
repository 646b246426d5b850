#include "ZnExportSkeleton.h"

#include "ZnHuman_Skeleton.h"

#include <algorithm>
#include <map>

namespace
{
struct FZnRestBone
{
	const char* Parent;
	FVector Offset;
	FVector EndSite;
};

// The left side and the middle of the figure; the right side mirrors the left across X = 0.
// Hips at 95 cm, hip joints at 89, knees at 47, ankles at 7; shoulders at 141 and 17 cm out;
// upper arm 28, fore-arm 26, hand to the middle finger's tip 19.7; head top at 173 cm.
const std::map<std::string, FZnRestBone>& RestBones()
{
	static const std::map<std::string, FZnRestBone> Bones = {
		{"Hips", {"", {0, 0, 0}, {0, 0, 0}}},
		{"LeftUpLeg", {"Hips", {9, -6, 0}, {0, 0, 0}}},
		{"LeftLeg", {"LeftUpLeg", {0, -42, 0}, {0, 0, 0}}},
		{"LeftFoot", {"LeftLeg", {0, -40, 0}, {0, 0, 0}}},
		{"LeftToeBase", {"LeftFoot", {0, -5, 12}, {0, 0, 6}}},
		{"Spine", {"Hips", {0, 10, 0}, {0, 0, 0}}},
		{"Spine1", {"Spine", {0, 12, 0}, {0, 0, 0}}},
		{"Spine2", {"Spine1", {0, 12, 0}, {0, 0, 0}}},
		{"Neck", {"Spine2", {0, 16, 0}, {0, 0, 0}}},
		{"Head", {"Neck", {0, 10, 0}, {0, 18, 0}}},
		{"LeftShoulder", {"Spine2", {3, 12, 0}, {0, 0, 0}}},
		{"LeftArm", {"LeftShoulder", {14, 0, 0}, {0, 0, 0}}},
		{"LeftForeArm", {"LeftArm", {28, 0, 0}, {0, 0, 0}}},
		{"LeftForeArm1", {"LeftForeArm", {13, 0, 0}, {3, 0, 0}}},
		{"LeftHand", {"LeftForeArm", {26, 0, 0}, {18, 0, 0}}},
		{"LeftHandThumb1", {"LeftHand", {2.5, -1.5, 3}, {0, 0, 0}}},
		{"LeftHandThumb2", {"LeftHandThumb1", {3, -0.5, 1.8}, {0, 0, 0}}},
		{"LeftHandThumb3", {"LeftHandThumb2", {2.5, -0.3, 1.2}, {2, -0.2, 1}}},
		{"LeftHandIndex1", {"LeftHand", {9.5, 0, 2.5}, {0, 0, 0}}},
		{"LeftHandIndex2", {"LeftHandIndex1", {4, 0, 0}, {0, 0, 0}}},
		{"LeftHandIndex3", {"LeftHandIndex2", {2.5, 0, 0}, {2, 0, 0}}},
		{"LeftHandMiddle1", {"LeftHand", {10, 0, 0.8}, {0, 0, 0}}},
		{"LeftHandMiddle2", {"LeftHandMiddle1", {4.5, 0, 0}, {0, 0, 0}}},
		{"LeftHandMiddle3", {"LeftHandMiddle2", {3, 0, 0}, {2.2, 0, 0}}},
		{"LeftHandRing1", {"LeftHand", {9.5, 0, -0.9}, {0, 0, 0}}},
		{"LeftHandRing2", {"LeftHandRing1", {4, 0, 0}, {0, 0, 0}}},
		{"LeftHandRing3", {"LeftHandRing2", {2.8, 0, 0}, {2, 0, 0}}},
		{"LeftHandPinky1", {"LeftHand", {8.8, 0, -2.5}, {0, 0, 0}}},
		{"LeftHandPinky2", {"LeftHandPinky1", {3.2, 0, 0}, {0, 0, 0}}},
		{"LeftHandPinky3", {"LeftHandPinky2", {2.2, 0, 0}, {1.8, 0, 0}}},
	};
	return Bones;
}

bool StartsWith(const std::string& Text, const char* Prefix)
{
	return Text.rfind(Prefix, 0) == 0;
}

// The rest bone of a name: the table's entry, or the mirrored entry of its left twin.
bool FindRestBone(const std::string& Name, FZnRestBone& Out, std::string& OutParent)
{
	const bool bRight = StartsWith(Name, "Right");
	const std::string LeftName = bRight ? "Left" + Name.substr(5) : Name;
	const auto Found = RestBones().find(LeftName);
	if (Found == RestBones().end())
	{
		return false;
	}
	Out = Found->second;
	OutParent = Out.Parent;
	if (bRight)
	{
		Out.Offset.X = -Out.Offset.X;
		Out.EndSite.X = -Out.EndSite.X;
		if (StartsWith(OutParent, "Left"))
		{
			OutParent = "Right" + OutParent.substr(4);
		}
	}
	return true;
}

std::string Utf8(const FString& Text)
{
	const FTCHARToUTF8 Converted(*Text, Text.Len());
	return std::string(Converted.Get(), static_cast<size_t>(Converted.Length()));
}
} // namespace

std::vector<FZnExportJoint> FZnExportSkeleton::Joints(bool bTwist, bool bFingers)
{
	const ZnHuman_Skeleton Names;
	std::vector<std::string> Order;
	for (const FString& Bone : Names.DMBonesHierarchy)
	{
		const std::string Name = Utf8(Bone);
		if (!bFingers && Names.DMFingerBones.Contains(Bone))
		{
			continue;
		}
		Order.push_back(Name);
		// A twist bone is the fore-arm's first child, ahead of the hand.
		if (bTwist && (Name == "LeftForeArm" || Name == "RightForeArm"))
		{
			Order.push_back(Name + "1");
		}
	}

	std::vector<FZnExportJoint> Joints;
	for (const std::string& Name : Order)
	{
		FZnRestBone Rest;
		std::string ParentName;
		if (!FindRestBone(Name, Rest, ParentName))
		{
			continue;
		}
		FZnExportJoint Joint;
		Joint.Name = Name;
		Joint.Offset = Rest.Offset;
		Joint.EndSite = Rest.EndSite;
		for (int32 Index = 0; Index < static_cast<int32>(Joints.size()); ++Index)
		{
			Joint.Parent = Joints[static_cast<size_t>(Index)].Name == ParentName ? Index : Joint.Parent;
		}
		Joints.push_back(Joint);
	}
	for (size_t Index = 0; Index < Joints.size(); ++Index)
	{
		const bool bHasChild = std::any_of(Joints.begin(), Joints.end(),
			[Index](const FZnExportJoint& Other) { return Other.Parent == static_cast<int32>(Index); });
		Joints[Index].bHasEndSite = !bHasChild;
	}
	return Joints;
}

std::vector<FZnExportJoint> FZnExportSkeleton::JointsFor(const TArray<FString>& BoneNames)
{
	// TArray<FString>::Contains compares as FString does: without regard to letter case.
	const ZnHuman_Skeleton Names;
	bool bTwist = false;
	bool bFingers = false;
	for (const FString& Bone : BoneNames)
	{
		bTwist = bTwist || Bone.Equals(TEXT("LeftForeArm1"), ESearchCase::IgnoreCase) ||
			Bone.Equals(TEXT("RightForeArm1"), ESearchCase::IgnoreCase);
		bFingers = bFingers || Names.DMFingerBones.Contains(Bone);
	}
	return Joints(bTwist, bFingers);
}
