#include "ZnHuman_Skeleton.h"

#include "ZnDecodeTestHelpers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
// The expected tables are spelled out here on their own, not derived from the module's.
const char* const ExpectedDMBody[] = {"Hips", "LeftUpLeg", "RightUpLeg", "LeftLeg", "RightLeg", "LeftFoot", "RightFoot",
	"Spine", "Spine1", "Neck", "Head", "LeftShoulder", "RightShoulder", "LeftArm", "RightArm", "LeftForeArm",
	"RightForeArm", "LeftHand", "RightHand", "LeftToeBase", "RightToeBase", "Spine2"};
const char* const ExpectedUEBody[] = {"pelvis", "thigh_l", "thigh_r", "calf_l", "calf_r", "foot_l", "foot_r",
	"spine_01", "spine_03", "neck_01", "head", "clavicle_l", "clavicle_r", "upperarm_l", "upperarm_r", "lowerarm_l",
	"lowerarm_r", "hand_l", "hand_r", "ball_l", "ball_r", "spine_05"};
const char* const ExpectedBlendShapes[] = {"blendShape.eyeBlinkRight", "blendShape.eyeLookDownRight",
	"blendShape.eyeLookInRight", "blendShape.eyeLookOutRight", "blendShape.eyeLookUpRight", "blendShape.eyeSquintRight",
	"blendShape.eyeWideRight", "blendShape.eyeBlinkLeft", "blendShape.eyeLookDownLeft", "blendShape.eyeLookInLeft",
	"blendShape.eyeLookOutLeft", "blendShape.eyeLookUpLeft", "blendShape.eyeSquintLeft", "blendShape.eyeWideLeft",
	"blendShape.jawForward", "blendShape.jawRight", "blendShape.jawLeft", "blendShape.jawOpen", "blendShape.mouthClose",
	"blendShape.mouthFunnel", "blendShape.mouthPucker", "blendShape.mouthRight", "blendShape.mouthLeft",
	"blendShape.mouthSmileLeft", "blendShape.mouthSmileRight", "blendShape.mouthFrownRight",
	"blendShape.mouthFrownLeft", "blendShape.mouthDimpleRight", "blendShape.mouthDimpleLeft",
	"blendShape.mouthStretchRight", "blendShape.mouthStretchLeft", "blendShape.mouthRollLower",
	"blendShape.mouthRollUpper", "blendShape.mouthShrugLower", "blendShape.mouthShrugUpper",
	"blendShape.mouthPressRight", "blendShape.mouthPressLeft", "blendShape.mouthLowerDownRight",
	"blendShape.mouthLowerDownLeft", "blendShape.mouthUpperUpRight", "blendShape.mouthUpperUpLeft",
	"blendShape.browDownRight", "blendShape.browDownLeft", "blendShape.browInnerUp", "blendShape.browOuterUpRight",
	"blendShape.browOuterUpLeft", "blendShape.cheekPuff", "blendShape.cheekSquintRight", "blendShape.cheekSquintLeft",
	"blendShape.noseSneerRight", "blendShape.noseSneerLeft"};
const char* const ExpectedFaceCurves[] = {"EyeBlinkRight", "EyeLookDownRight", "EyeLookInRight", "EyeLookOutRight",
	"EyeLookUpRight", "EyeSquintRight", "EyeWideRight", "EyeBlinkLeft", "EyeLookDownLeft", "EyeLookInLeft",
	"EyeLookOutLeft", "EyeLookUpLeft", "EyeSquintLeft", "EyeWideLeft", "JawForward", "JawLeft", "JawRight", "JawOpen",
	"MouthClose", "MouthFunnel", "MouthPucker", "MouthRight", "MouthLeft", "MouthSmileLeft", "MouthSmileRight",
	"MouthFrownRight", "MouthFrownLeft", "MouthDimpleRight", "MouthDimpleLeft", "MouthStretchRight", "MouthStretchLeft",
	"MouthRollLower", "MouthRollUpper", "MouthShrugLower", "MouthShrugUpper", "MouthPressRight", "MouthPressLeft",
	"MouthLowerDownRight", "MouthLowerDownLeft", "MouthUpperUpRight", "MouthUpperUpLeft", "BrowDownRight",
	"BrowDownLeft", "BrowInnerUp", "BrowOuterUpRight", "BrowOuterUpLeft", "CheekPuff", "CheekSquintRight",
	"CheekSquintLeft", "NoseSneerRight", "NoseSneerLeft"};
const char* const ExpectedDMHierarchy[] = {"Hips", "LeftUpLeg", "LeftLeg", "LeftFoot", "LeftToeBase", "RightUpLeg",
	"RightLeg", "RightFoot", "RightToeBase", "Spine", "Spine1", "Spine2", "Neck", "Head", "LeftShoulder", "LeftArm",
	"LeftForeArm", "LeftHand", "LeftHandThumb1", "LeftHandThumb2", "LeftHandThumb3", "LeftHandIndex1", "LeftHandIndex2",
	"LeftHandIndex3", "LeftHandMiddle1", "LeftHandMiddle2", "LeftHandMiddle3", "LeftHandRing1", "LeftHandRing2",
	"LeftHandRing3", "LeftHandPinky1", "LeftHandPinky2", "LeftHandPinky3", "RightShoulder", "RightArm", "RightForeArm",
	"RightHand", "RightHandThumb1", "RightHandThumb2", "RightHandThumb3", "RightHandIndex1", "RightHandIndex2",
	"RightHandIndex3", "RightHandMiddle1", "RightHandMiddle2", "RightHandMiddle3", "RightHandRing1", "RightHandRing2",
	"RightHandRing3", "RightHandPinky1", "RightHandPinky2", "RightHandPinky3"};
const char* const ExpectedUEHierarchy[] = {"pelvis", "thigh_l", "calf_l", "foot_l", "ball_l", "thigh_r", "calf_r",
	"foot_r", "ball_r", "spine_01", "spine_03", "spine_05", "neck_01", "head", "clavicle_l", "upperarm_l", "lowerarm_l",
	"hand_l", "thumb_01_l", "thumb_02_l", "thumb_03_l", "index_01_l", "index_02_l", "index_03_l", "middle_01_l",
	"middle_02_l", "middle_03_l", "ring_01_l", "ring_02_l", "ring_03_l", "pinky_01_l", "pinky_02_l", "pinky_03_l",
	"clavicle_r", "upperarm_r", "lowerarm_r", "hand_r", "thumb_01_r", "thumb_02_r", "thumb_03_r", "index_01_r",
	"index_02_r", "index_03_r", "middle_01_r", "middle_02_r", "middle_03_r", "ring_01_r", "ring_02_r", "ring_03_r",
	"pinky_01_r", "pinky_02_r", "pinky_03_r"};

std::vector<std::string> Names(const TArray<FString>& Array)
{
	std::vector<std::string> Result;
	for (const FString& Name : Array)
	{
		Result.push_back(std::string(FTCHARToUTF8(*Name, Name.Len()).Get()));
	}
	return Result;
}

template <size_t N>
std::vector<std::string> Names(const char* const (&Array)[N])
{
	return std::vector<std::string>(Array, Array + N);
}

// "LeftHand" or "RightHand" + finger + joint, left hand first.
std::vector<std::string> DMFingers()
{
	std::vector<std::string> Result;
	for (const char* Side : {"LeftHand", "RightHand"})
	{
		for (const char* Finger : {"Thumb", "Index", "Middle", "Ring", "Pinky"})
		{
			for (const char* Joint : {"1", "2", "3"})
			{
				Result.push_back(std::string(Side) + Finger + Joint);
			}
		}
	}
	return Result;
}

// finger + "_" + joint + side, left side first.
std::vector<std::string> UEFingers()
{
	std::vector<std::string> Result;
	for (const char* Side : {"_l", "_r"})
	{
		for (const char* Finger : {"thumb", "index", "middle", "ring", "pinky"})
		{
			for (const char* Joint : {"01", "02", "03"})
			{
				Result.push_back(std::string(Finger) + "_" + Joint + Side);
			}
		}
	}
	return Result;
}
} // namespace

TEST(ZnHuman_SkeletonTests, EveryTableHasItsCount)
{
	const ZnHuman_Skeleton Skeleton;
	EXPECT_EQ(Skeleton.DMBodyBones.Num(), 22);
	EXPECT_EQ(Skeleton.DMBodyBonesWithTwist.Num(), 24);
	EXPECT_EQ(Skeleton.DMFingerBones.Num(), 30);
	EXPECT_EQ(Skeleton.UEBodyBones.Num(), 22);
	EXPECT_EQ(Skeleton.UEFingerBones.Num(), 30);
	EXPECT_EQ(Skeleton.UEAllBones.Num(), 52);
	EXPECT_EQ(Skeleton.DMBonesHierarchy.Num(), 52);
	EXPECT_EQ(Skeleton.UEBonesHierarchy.Num(), 52);
	EXPECT_EQ(Skeleton.ExtraFaceBones.Num(), 3);
	EXPECT_EQ(Skeleton.BlendShapeSourceNames.Num(), 51);
	EXPECT_EQ(Skeleton.FaceCurveNames.Num(), 51);
}

TEST(ZnHuman_SkeletonTests, BodyTablesHoldExactlyTheListedNames)
{
	const ZnHuman_Skeleton Skeleton;
	EXPECT_EQ(Names(Skeleton.DMBodyBones), Names(ExpectedDMBody));
	EXPECT_EQ(Names(Skeleton.UEBodyBones), Names(ExpectedUEBody));
	std::vector<std::string> Twist = Names(ExpectedDMBody);
	Twist.insert(Twist.begin() + 16, "LeftForeArm1");
	Twist.insert(Twist.begin() + 18, "RightForeArm1");
	EXPECT_EQ(Names(Skeleton.DMBodyBonesWithTwist), Twist);
	EXPECT_EQ(Skeleton.DMBodyBonesWithTwist[15], FString(TEXT("LeftForeArm")));
	EXPECT_EQ(Skeleton.DMBodyBonesWithTwist[17], FString(TEXT("RightForeArm")));
	EXPECT_EQ(Names(Skeleton.ExtraFaceBones), (std::vector<std::string>{"LeftEye", "RightEye", "Jaw_End"}));
}

TEST(ZnHuman_SkeletonTests, FingerTablesHoldExactlyTheListedNames)
{
	const ZnHuman_Skeleton Skeleton;
	EXPECT_EQ(Names(Skeleton.DMFingerBones), DMFingers());
	EXPECT_EQ(Names(Skeleton.UEFingerBones), UEFingers());
	EXPECT_EQ(Skeleton.DMFingerBones[3], FString(TEXT("LeftHandIndex1")));
	EXPECT_EQ(Skeleton.UEFingerBones[29], FString(TEXT("pinky_03_r")));
}

TEST(ZnHuman_SkeletonTests, AllEngineBonesAreBodyThenFingers)
{
	const ZnHuman_Skeleton Skeleton;
	std::vector<std::string> Expected = Names(ExpectedUEBody);
	const std::vector<std::string> Fingers = UEFingers();
	Expected.insert(Expected.end(), Fingers.begin(), Fingers.end());
	EXPECT_EQ(Names(Skeleton.UEAllBones), Expected);
}

TEST(ZnHuman_SkeletonTests, HierarchiesHoldExactlyTheListedNames)
{
	const ZnHuman_Skeleton Skeleton;
	EXPECT_EQ(Names(Skeleton.DMBonesHierarchy), Names(ExpectedDMHierarchy));
	EXPECT_EQ(Names(Skeleton.UEBonesHierarchy), Names(ExpectedUEHierarchy));
}

TEST(ZnHuman_SkeletonTests, ServiceAndEngineTablesAreIndexAligned)
{
	const ZnHuman_Skeleton Skeleton;
	// Translating by position must agree with translating through the body and finger tables.
	std::vector<std::string> DMAll = Names(Skeleton.DMBodyBones);
	const std::vector<std::string> DMFingerNames = Names(Skeleton.DMFingerBones);
	DMAll.insert(DMAll.end(), DMFingerNames.begin(), DMFingerNames.end());
	const std::vector<std::string> UEAll = Names(Skeleton.UEAllBones);
	const std::vector<std::string> DMHierarchy = Names(Skeleton.DMBonesHierarchy);
	const std::vector<std::string> UEHierarchy = Names(Skeleton.UEBonesHierarchy);
	for (size_t Index = 0; Index < DMHierarchy.size(); ++Index)
	{
		size_t Position = 0;
		while (Position < DMAll.size() && DMAll[Position] != DMHierarchy[Index])
		{
			++Position;
		}
		ASSERT_LT(Position, DMAll.size()) << DMHierarchy[Index];
		EXPECT_EQ(UEAll[Position], UEHierarchy[Index]) << DMHierarchy[Index];
	}
	EXPECT_EQ(Skeleton.DMBodyBones[0], FString(TEXT("Hips")));
	EXPECT_EQ(Skeleton.UEBodyBones[0], FString(TEXT("pelvis")));
	EXPECT_EQ(Skeleton.DMBodyBones[21], FString(TEXT("Spine2")));
	EXPECT_EQ(Skeleton.UEBodyBones[21], FString(TEXT("spine_05")));
}

TEST(ZnHuman_SkeletonTests, FaceTablesHoldExactlyTheListedNamesWithTheJawPairSwapped)
{
	const ZnHuman_Skeleton Skeleton;
	EXPECT_EQ(Names(Skeleton.BlendShapeSourceNames), Names(ExpectedBlendShapes));
	EXPECT_EQ(Names(Skeleton.FaceCurveNames), Names(ExpectedFaceCurves));
	EXPECT_TRUE(Skeleton.FaceCurveNames[15].Equals(TEXT("JawLeft"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Skeleton.FaceCurveNames[16].Equals(TEXT("JawRight"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Skeleton.BlendShapeSourceNames[15].Equals(TEXT("blendShape.jawRight"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Skeleton.BlendShapeSourceNames[16].Equals(TEXT("blendShape.jawLeft"), ESearchCase::CaseSensitive));
	// Everywhere else the two spellings agree position by position.
	for (int32 Index = 0; Index < 51; ++Index)
	{
		if (Index == 15 || Index == 16)
		{
			continue;
		}
		FString Expected = Skeleton.FaceCurveNames[Index];
		EXPECT_TRUE(Skeleton.BlendShapeSourceNames[Index].Equals(
			FString(TEXT("blendShape.")) + Expected, ESearchCase::IgnoreCase))
			<< Index;
	}
}

TEST(ZnHuman_SkeletonTests, CopiesHoldTheSameTables)
{
	const ZnHuman_Skeleton Skeleton;
	ZnHuman_Skeleton Copy(Skeleton);
	EXPECT_EQ(Names(Copy.UEBonesHierarchy), Names(Skeleton.UEBonesHierarchy));
	EXPECT_EQ(Names(Copy.FaceCurveNames), Names(Skeleton.FaceCurveNames));
	Copy.FaceCurveNames[0] = TEXT("Changed");
	EXPECT_TRUE(Skeleton.FaceCurveNames[0].Equals(TEXT("EyeBlinkRight"), ESearchCase::CaseSensitive));
}
