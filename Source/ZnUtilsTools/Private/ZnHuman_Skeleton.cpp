#include "ZnHuman_Skeleton.h"

namespace
{
template <int32 N>
void Fill(TArray<FString>& Names, const TCHAR* const (&Source)[N])
{
	Names.Reserve(N);
	for (const TCHAR* Name : Source)
	{
		Names.Emplace(Name);
	}
}

const TCHAR* const DMBodyBonesSource[] = {TEXT("Hips"), TEXT("LeftUpLeg"), TEXT("RightUpLeg"), TEXT("LeftLeg"),
	TEXT("RightLeg"), TEXT("LeftFoot"), TEXT("RightFoot"), TEXT("Spine"), TEXT("Spine1"), TEXT("Neck"), TEXT("Head"),
	TEXT("LeftShoulder"), TEXT("RightShoulder"), TEXT("LeftArm"), TEXT("RightArm"), TEXT("LeftForeArm"),
	TEXT("RightForeArm"), TEXT("LeftHand"), TEXT("RightHand"), TEXT("LeftToeBase"), TEXT("RightToeBase"),
	TEXT("Spine2")};

const TCHAR* const DMBodyBonesWithTwistSource[] = {TEXT("Hips"), TEXT("LeftUpLeg"), TEXT("RightUpLeg"), TEXT("LeftLeg"),
	TEXT("RightLeg"), TEXT("LeftFoot"), TEXT("RightFoot"), TEXT("Spine"), TEXT("Spine1"), TEXT("Neck"), TEXT("Head"),
	TEXT("LeftShoulder"), TEXT("RightShoulder"), TEXT("LeftArm"), TEXT("RightArm"), TEXT("LeftForeArm"),
	TEXT("LeftForeArm1"), TEXT("RightForeArm"), TEXT("RightForeArm1"), TEXT("LeftHand"), TEXT("RightHand"),
	TEXT("LeftToeBase"), TEXT("RightToeBase"), TEXT("Spine2")};

const TCHAR* const DMFingerBonesSource[] = {TEXT("LeftHandThumb1"), TEXT("LeftHandThumb2"), TEXT("LeftHandThumb3"),
	TEXT("LeftHandIndex1"), TEXT("LeftHandIndex2"), TEXT("LeftHandIndex3"), TEXT("LeftHandMiddle1"),
	TEXT("LeftHandMiddle2"), TEXT("LeftHandMiddle3"), TEXT("LeftHandRing1"), TEXT("LeftHandRing2"),
	TEXT("LeftHandRing3"), TEXT("LeftHandPinky1"), TEXT("LeftHandPinky2"), TEXT("LeftHandPinky3"),
	TEXT("RightHandThumb1"), TEXT("RightHandThumb2"), TEXT("RightHandThumb3"), TEXT("RightHandIndex1"),
	TEXT("RightHandIndex2"), TEXT("RightHandIndex3"), TEXT("RightHandMiddle1"), TEXT("RightHandMiddle2"),
	TEXT("RightHandMiddle3"), TEXT("RightHandRing1"), TEXT("RightHandRing2"), TEXT("RightHandRing3"),
	TEXT("RightHandPinky1"), TEXT("RightHandPinky2"), TEXT("RightHandPinky3")};

const TCHAR* const UEBodyBonesSource[] = {TEXT("pelvis"), TEXT("thigh_l"), TEXT("thigh_r"), TEXT("calf_l"),
	TEXT("calf_r"), TEXT("foot_l"), TEXT("foot_r"), TEXT("spine_01"), TEXT("spine_03"), TEXT("neck_01"), TEXT("head"),
	TEXT("clavicle_l"), TEXT("clavicle_r"), TEXT("upperarm_l"), TEXT("upperarm_r"), TEXT("lowerarm_l"),
	TEXT("lowerarm_r"), TEXT("hand_l"), TEXT("hand_r"), TEXT("ball_l"), TEXT("ball_r"), TEXT("spine_05")};

const TCHAR* const UEFingerBonesSource[] = {TEXT("thumb_01_l"), TEXT("thumb_02_l"), TEXT("thumb_03_l"),
	TEXT("index_01_l"), TEXT("index_02_l"), TEXT("index_03_l"), TEXT("middle_01_l"), TEXT("middle_02_l"),
	TEXT("middle_03_l"), TEXT("ring_01_l"), TEXT("ring_02_l"), TEXT("ring_03_l"), TEXT("pinky_01_l"),
	TEXT("pinky_02_l"), TEXT("pinky_03_l"), TEXT("thumb_01_r"), TEXT("thumb_02_r"), TEXT("thumb_03_r"),
	TEXT("index_01_r"), TEXT("index_02_r"), TEXT("index_03_r"), TEXT("middle_01_r"), TEXT("middle_02_r"),
	TEXT("middle_03_r"), TEXT("ring_01_r"), TEXT("ring_02_r"), TEXT("ring_03_r"), TEXT("pinky_01_r"),
	TEXT("pinky_02_r"), TEXT("pinky_03_r")};

const TCHAR* const DMBonesHierarchySource[] = {TEXT("Hips"), TEXT("LeftUpLeg"), TEXT("LeftLeg"), TEXT("LeftFoot"),
	TEXT("LeftToeBase"), TEXT("RightUpLeg"), TEXT("RightLeg"), TEXT("RightFoot"), TEXT("RightToeBase"), TEXT("Spine"),
	TEXT("Spine1"), TEXT("Spine2"), TEXT("Neck"), TEXT("Head"), TEXT("LeftShoulder"), TEXT("LeftArm"),
	TEXT("LeftForeArm"), TEXT("LeftHand"), TEXT("LeftHandThumb1"), TEXT("LeftHandThumb2"), TEXT("LeftHandThumb3"),
	TEXT("LeftHandIndex1"), TEXT("LeftHandIndex2"), TEXT("LeftHandIndex3"), TEXT("LeftHandMiddle1"),
	TEXT("LeftHandMiddle2"), TEXT("LeftHandMiddle3"), TEXT("LeftHandRing1"), TEXT("LeftHandRing2"),
	TEXT("LeftHandRing3"), TEXT("LeftHandPinky1"), TEXT("LeftHandPinky2"), TEXT("LeftHandPinky3"),
	TEXT("RightShoulder"), TEXT("RightArm"), TEXT("RightForeArm"), TEXT("RightHand"), TEXT("RightHandThumb1"),
	TEXT("RightHandThumb2"), TEXT("RightHandThumb3"), TEXT("RightHandIndex1"), TEXT("RightHandIndex2"),
	TEXT("RightHandIndex3"), TEXT("RightHandMiddle1"), TEXT("RightHandMiddle2"), TEXT("RightHandMiddle3"),
	TEXT("RightHandRing1"), TEXT("RightHandRing2"), TEXT("RightHandRing3"), TEXT("RightHandPinky1"),
	TEXT("RightHandPinky2"), TEXT("RightHandPinky3")};

const TCHAR* const UEBonesHierarchySource[] = {TEXT("pelvis"), TEXT("thigh_l"), TEXT("calf_l"), TEXT("foot_l"),
	TEXT("ball_l"), TEXT("thigh_r"), TEXT("calf_r"), TEXT("foot_r"), TEXT("ball_r"), TEXT("spine_01"), TEXT("spine_03"),
	TEXT("spine_05"), TEXT("neck_01"), TEXT("head"), TEXT("clavicle_l"), TEXT("upperarm_l"), TEXT("lowerarm_l"),
	TEXT("hand_l"), TEXT("thumb_01_l"), TEXT("thumb_02_l"), TEXT("thumb_03_l"), TEXT("index_01_l"), TEXT("index_02_l"),
	TEXT("index_03_l"), TEXT("middle_01_l"), TEXT("middle_02_l"), TEXT("middle_03_l"), TEXT("ring_01_l"),
	TEXT("ring_02_l"), TEXT("ring_03_l"), TEXT("pinky_01_l"), TEXT("pinky_02_l"), TEXT("pinky_03_l"),
	TEXT("clavicle_r"), TEXT("upperarm_r"), TEXT("lowerarm_r"), TEXT("hand_r"), TEXT("thumb_01_r"), TEXT("thumb_02_r"),
	TEXT("thumb_03_r"), TEXT("index_01_r"), TEXT("index_02_r"), TEXT("index_03_r"), TEXT("middle_01_r"),
	TEXT("middle_02_r"), TEXT("middle_03_r"), TEXT("ring_01_r"), TEXT("ring_02_r"), TEXT("ring_03_r"),
	TEXT("pinky_01_r"), TEXT("pinky_02_r"), TEXT("pinky_03_r")};

const TCHAR* const ExtraFaceBonesSource[] = {TEXT("LeftEye"), TEXT("RightEye"), TEXT("Jaw_End")};

const TCHAR* const BlendShapeSourceNamesSource[] = {TEXT("blendShape.eyeBlinkRight"),
	TEXT("blendShape.eyeLookDownRight"), TEXT("blendShape.eyeLookInRight"), TEXT("blendShape.eyeLookOutRight"),
	TEXT("blendShape.eyeLookUpRight"), TEXT("blendShape.eyeSquintRight"), TEXT("blendShape.eyeWideRight"),
	TEXT("blendShape.eyeBlinkLeft"), TEXT("blendShape.eyeLookDownLeft"), TEXT("blendShape.eyeLookInLeft"),
	TEXT("blendShape.eyeLookOutLeft"), TEXT("blendShape.eyeLookUpLeft"), TEXT("blendShape.eyeSquintLeft"),
	TEXT("blendShape.eyeWideLeft"), TEXT("blendShape.jawForward"), TEXT("blendShape.jawRight"),
	TEXT("blendShape.jawLeft"), TEXT("blendShape.jawOpen"), TEXT("blendShape.mouthClose"),
	TEXT("blendShape.mouthFunnel"), TEXT("blendShape.mouthPucker"), TEXT("blendShape.mouthRight"),
	TEXT("blendShape.mouthLeft"), TEXT("blendShape.mouthSmileLeft"), TEXT("blendShape.mouthSmileRight"),
	TEXT("blendShape.mouthFrownRight"), TEXT("blendShape.mouthFrownLeft"), TEXT("blendShape.mouthDimpleRight"),
	TEXT("blendShape.mouthDimpleLeft"), TEXT("blendShape.mouthStretchRight"), TEXT("blendShape.mouthStretchLeft"),
	TEXT("blendShape.mouthRollLower"), TEXT("blendShape.mouthRollUpper"), TEXT("blendShape.mouthShrugLower"),
	TEXT("blendShape.mouthShrugUpper"), TEXT("blendShape.mouthPressRight"), TEXT("blendShape.mouthPressLeft"),
	TEXT("blendShape.mouthLowerDownRight"), TEXT("blendShape.mouthLowerDownLeft"), TEXT("blendShape.mouthUpperUpRight"),
	TEXT("blendShape.mouthUpperUpLeft"), TEXT("blendShape.browDownRight"), TEXT("blendShape.browDownLeft"),
	TEXT("blendShape.browInnerUp"), TEXT("blendShape.browOuterUpRight"), TEXT("blendShape.browOuterUpLeft"),
	TEXT("blendShape.cheekPuff"), TEXT("blendShape.cheekSquintRight"), TEXT("blendShape.cheekSquintLeft"),
	TEXT("blendShape.noseSneerRight"), TEXT("blendShape.noseSneerLeft")};

const TCHAR* const FaceCurveNamesSource[] = {TEXT("EyeBlinkRight"), TEXT("EyeLookDownRight"), TEXT("EyeLookInRight"),
	TEXT("EyeLookOutRight"), TEXT("EyeLookUpRight"), TEXT("EyeSquintRight"), TEXT("EyeWideRight"), TEXT("EyeBlinkLeft"),
	TEXT("EyeLookDownLeft"), TEXT("EyeLookInLeft"), TEXT("EyeLookOutLeft"), TEXT("EyeLookUpLeft"),
	TEXT("EyeSquintLeft"), TEXT("EyeWideLeft"), TEXT("JawForward"), TEXT("JawLeft"), TEXT("JawRight"), TEXT("JawOpen"),
	TEXT("MouthClose"), TEXT("MouthFunnel"), TEXT("MouthPucker"), TEXT("MouthRight"), TEXT("MouthLeft"),
	TEXT("MouthSmileLeft"), TEXT("MouthSmileRight"), TEXT("MouthFrownRight"), TEXT("MouthFrownLeft"),
	TEXT("MouthDimpleRight"), TEXT("MouthDimpleLeft"), TEXT("MouthStretchRight"), TEXT("MouthStretchLeft"),
	TEXT("MouthRollLower"), TEXT("MouthRollUpper"), TEXT("MouthShrugLower"), TEXT("MouthShrugUpper"),
	TEXT("MouthPressRight"), TEXT("MouthPressLeft"), TEXT("MouthLowerDownRight"), TEXT("MouthLowerDownLeft"),
	TEXT("MouthUpperUpRight"), TEXT("MouthUpperUpLeft"), TEXT("BrowDownRight"), TEXT("BrowDownLeft"),
	TEXT("BrowInnerUp"), TEXT("BrowOuterUpRight"), TEXT("BrowOuterUpLeft"), TEXT("CheekPuff"), TEXT("CheekSquintRight"),
	TEXT("CheekSquintLeft"), TEXT("NoseSneerRight"), TEXT("NoseSneerLeft")};

} // namespace

ZnHuman_Skeleton::ZnHuman_Skeleton()
{
	Fill(DMBodyBones, DMBodyBonesSource);
	Fill(DMBodyBonesWithTwist, DMBodyBonesWithTwistSource);
	Fill(DMFingerBones, DMFingerBonesSource);
	Fill(UEBodyBones, UEBodyBonesSource);
	Fill(UEFingerBones, UEFingerBonesSource);
	UEAllBones.Reserve(UEBodyBones.Num() + UEFingerBones.Num());
	UEAllBones.Append(UEBodyBones);
	UEAllBones.Append(UEFingerBones);
	Fill(DMBonesHierarchy, DMBonesHierarchySource);
	Fill(UEBonesHierarchy, UEBonesHierarchySource);
	Fill(ExtraFaceBones, ExtraFaceBonesSource);
	Fill(BlendShapeSourceNames, BlendShapeSourceNamesSource);
	Fill(FaceCurveNames, FaceCurveNamesSource);
}
