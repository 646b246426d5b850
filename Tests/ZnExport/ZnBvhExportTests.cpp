// zn export bvh: generated clips are exported and read back with the independent reader of
// ZnExportTestHelpers.h; every joint's rotation rebuilt from its Euler angles in the declared
// order, taken back to the engine frame, must match what the decoders make of the clip.
#include "ZnExportTestHelpers.h"
#include "ZnMotionGenerator.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

using namespace ZnExportTest;
using namespace ZnTest;

namespace
{
class ZnBvhExportTest : public FZnFolderTest
{
protected:
	// Exports the text and reads the BVH back.
	FBvhFile Export(const std::string& BodyText, const std::vector<std::string>& Extra = {})
	{
		const std::string Body = Write("body.json", BodyText);
		std::vector<std::string> Args = {"export", "bvh", Body, "-o", PathOf("out.bvh")};
		Args.insert(Args.end(), Extra.begin(), Extra.end());
		const FRun Run = RunZn(Args);
		EXPECT_EQ(Run.Status, 0) << Run.Err;
		const FBvhFile File = ReadBvh(ReadAll(PathOf("out.bvh")));
		EXPECT_EQ(File.Error, "");
		return File;
	}

	// Every frame of every joint the clip has against the generator's rotation as decoded; joints
	// the clip lacks must be at rest (the identity).
	static void ExpectRotations(const FBvhFile& File, const FZnGenBodyClip& Clip)
	{
		std::map<std::string, size_t> ClipBone;
		for (size_t Bone = 0; Bone < Clip.BoneNames.size(); ++Bone)
		{
			ClipBone[Clip.BoneNames[Bone]] = Bone;
		}
		double Worst = 0.0;
		for (int Frame = 0; Frame < Clip.FrameCount(); ++Frame)
		{
			for (int Joint = 0; Joint < int(File.Joints.size()); ++Joint)
			{
				const FTestQuat Export = BvhRotation(File, Frame, Joint);
				// The documented conversion back: engine X, Y, Z = export Z, X, Y.
				const FTestQuat Engine{Export.Z, Export.X, Export.Y, Export.W};
				const auto Found = ClipBone.find(File.Joints[size_t(Joint)].Name);
				const FTestQuat Expected = Found == ClipBone.end()
					? FTestQuat()
					: EngineRotation(Clip.Rotations[Found->second][size_t(Frame)]);
				Worst = std::max(Worst, RotationDistance(Engine, Expected));
				ASSERT_LT(RotationDistance(Engine, Expected), 1e-4)
					<< File.Joints[size_t(Joint)].Name << " frame " << Frame;
			}
		}
		// Six decimals of a degree leave far less than the tolerance.
		EXPECT_LT(Worst, 1e-6);
	}

	// The root's position channels: the service position in centimetres, export axes = service axes.
	static void ExpectRootPositions(const FBvhFile& File, const FZnGenBodyClip& Clip)
	{
		for (int Frame = 0; Frame < Clip.FrameCount(); ++Frame)
		{
			const FZnGenVec& P = Clip.RootPositions[size_t(Frame)];
			const std::vector<double>& Row = File.Motion[size_t(Frame)];
			EXPECT_NEAR(Row[0], double(float(P.X) * 100.0f), 1e-4) << Frame;
			EXPECT_NEAR(Row[1], double(float(P.Y) * 100.0f), 1e-4) << Frame;
			EXPECT_NEAR(Row[2], double(float(P.Z) * 100.0f), 1e-4) << Frame;
		}
	}

	static std::vector<std::string> JointNames(const FBvhFile& File)
	{
		std::vector<std::string> Names;
		for (const FBvhJoint& Joint : File.Joints)
		{
			Names.push_back(Joint.Name);
		}
		return Names;
	}
};

// The module's parent-first hierarchy table, with a twist bone after each fore-arm.
std::vector<std::string> ExpectedOrder(bool bTwist, bool bFingers)
{
	std::vector<std::string> Names = {"Hips", "LeftUpLeg", "LeftLeg", "LeftFoot", "LeftToeBase", "RightUpLeg",
		"RightLeg", "RightFoot", "RightToeBase", "Spine", "Spine1", "Spine2", "Neck", "Head"};
	for (const std::string Side : {"Left", "Right"})
	{
		for (const std::string Bone : {"Shoulder", "Arm", "ForeArm"})
		{
			Names.push_back(Side + Bone);
		}
		if (bTwist)
		{
			Names.push_back(Side + "ForeArm1");
		}
		Names.push_back(Side + "Hand");
		for (const std::string Finger : {"Thumb", "Index", "Middle", "Ring", "Pinky"})
		{
			for (int Joint = 1; Joint <= 3 && bFingers; ++Joint)
			{
				Names.push_back(Side + "Hand" + Finger + std::to_string(Joint));
			}
		}
	}
	return Names;
}
} // namespace

TEST_F(ZnBvhExportTest, RoundTripOfAFullBodyMatchesTheDecodedRotations)
{
	FZnGenBodyOptions Options;
	Options.FrameCount = 75;
	Options.Seed = 7;
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody(Options);
	const FBvhFile File = Export(FZnMotionGenerator::BodyToJson(Clip));

	EXPECT_EQ(JointNames(File), ExpectedOrder(true, true));
	ASSERT_EQ(File.Joints.size(), 54u);
	EXPECT_EQ(File.Frames, 75);
	EXPECT_EQ(File.FrameTime, "0.0333333");
	ASSERT_EQ(File.Motion.size(), 75u);
	const std::vector<std::string> RootChannels = {
		"Xposition", "Yposition", "Zposition", "Zrotation", "Xrotation", "Yrotation"};
	EXPECT_EQ(File.Joints[0].Channels, RootChannels);
	for (size_t Joint = 1; Joint < File.Joints.size(); ++Joint)
	{
		EXPECT_EQ(File.Joints[Joint].Channels, std::vector<std::string>({"Zrotation", "Xrotation", "Yrotation"}));
	}
	for (const std::vector<double>& Row : File.Motion)
	{
		EXPECT_EQ(Row.size(), 6u + 3u * 53u);
	}
	ExpectRotations(File, Clip);
	ExpectRootPositions(File, Clip);
}

TEST_F(ZnBvhExportTest, RestPoseStandsUprightWithAdultProportions)
{
	const FBvhFile File = Export(FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody({})));
	// World positions of the rest pose (every rotation the identity), root at the rest height.
	std::vector<std::array<double, 3>> At(File.Joints.size());
	std::map<std::string, std::array<double, 3>> Named;
	double Lowest = 1e9, Highest = -1e9;
	for (size_t Joint = 0; Joint < File.Joints.size(); ++Joint)
	{
		const FBvhJoint& J = File.Joints[Joint];
		const std::array<double, 3> Base = J.Parent < 0 ? std::array<double, 3>{0, 95, 0} : At[size_t(J.Parent)];
		At[Joint] = {Base[0] + J.Offset[0], Base[1] + J.Offset[1], Base[2] + J.Offset[2]};
		Named[J.Name] = At[Joint];
		Lowest = std::min(Lowest, At[Joint][1]);
		Highest = std::max(Highest, J.bEndSite ? At[Joint][1] + J.EndSite[1] : At[Joint][1]);
	}
	// Feet on the floor, head top at adult height, the head above the hips above the knees.
	EXPECT_GE(Lowest, 0.0);
	EXPECT_LT(Lowest, 5.0);
	EXPECT_GT(Highest, 160.0);
	EXPECT_LT(Highest, 190.0);
	EXPECT_GT(Named["Head"][1], Named["Spine2"][1]);
	EXPECT_GT(Named["Hips"][1], Named["LeftLeg"][1]);
	// Left is +X, right mirrors it; toes point forward (+Z).
	for (const auto& [Name, Position] : Named)
	{
		if (Name.rfind("Left", 0) == 0)
		{
			const std::array<double, 3> Mirror = Named["Right" + Name.substr(4)];
			EXPECT_GT(Position[0], 0.0) << Name;
			EXPECT_DOUBLE_EQ(Mirror[0], -Position[0]) << Name;
			EXPECT_DOUBLE_EQ(Mirror[1], Position[1]) << Name;
		}
	}
	EXPECT_GT(Named["LeftToeBase"][2], Named["LeftFoot"][2]);
	// Arm span (wrist to wrist plus hands) between 150 and 200 cm; legs about half the height.
	const double Span = Named["LeftHandMiddle3"][0] - Named["RightHandMiddle3"][0];
	EXPECT_GT(Span, 150.0);
	EXPECT_LT(Span, 200.0);
	EXPECT_NEAR(Named["LeftUpLeg"][1] / Highest, 0.5, 0.05);
}

TEST_F(ZnBvhExportTest, BodyWithoutFingersWritesOnlyTheBodyJoints)
{
	FZnGenBodyOptions Options;
	Options.FrameCount = 20;
	Options.bFingers = false;
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody(Options);
	const FBvhFile File = Export(FZnMotionGenerator::BodyToJson(Clip));
	EXPECT_EQ(JointNames(File), ExpectedOrder(true, false));
	ASSERT_EQ(File.Joints.size(), 24u);
	// The hands end in an End Site instead of fingers.
	for (const FBvhJoint& Joint : File.Joints)
	{
		if (Joint.Name == "LeftHand" || Joint.Name == "RightHand")
		{
			EXPECT_TRUE(Joint.bEndSite);
		}
	}
	for (const std::vector<double>& Row : File.Motion)
	{
		EXPECT_EQ(Row.size(), 6u + 3u * 23u);
	}
	ExpectRotations(File, Clip);

	Options.bTwistBones = false;
	const FZnGenBodyClip Plain = FZnMotionGenerator::GenerateBody(Options);
	const FBvhFile PlainFile = Export(FZnMotionGenerator::BodyToJson(Plain));
	EXPECT_EQ(JointNames(PlainFile), ExpectedOrder(false, false));
	ExpectRotations(PlainFile, Plain);
}

TEST_F(ZnBvhExportTest, ShuffledVersion2BodyIsWrittenInFrameOrder)
{
	FZnGenBodyOptions Options;
	Options.FrameCount = 40;
	Options.Seed = 3;
	const FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody(Options);
	const std::string Text =
		FZnMotionGenerator::BodyToJsonV2(Clip, FZnMotionGenerator::ShuffledFrameOrder(Options.FrameCount, 11));
	for (const std::string Format : {"auto", "v2"})
	{
		const FBvhFile File = Export(Text, {"--format", Format});
		EXPECT_EQ(File.Frames, 40);
		EXPECT_EQ(JointNames(File), ExpectedOrder(true, true));
		ExpectRotations(File, Clip);
		ExpectRootPositions(File, Clip);
	}
}

TEST_F(ZnBvhExportTest, BonesMissingFromTheClipStayAtRest)
{
	FZnGenBodyOptions Options;
	Options.FrameCount = 15;
	FZnGenBodyClip Clip = FZnMotionGenerator::GenerateBody(Options);
	for (const std::string Missing : {"Neck", "LeftHandIndex2", "RightForeArm1"})
	{
		const size_t Bone =
			size_t(std::find(Clip.BoneNames.begin(), Clip.BoneNames.end(), Missing) - Clip.BoneNames.begin());
		ASSERT_LT(Bone, Clip.BoneNames.size());
		Clip.BoneNames.erase(Clip.BoneNames.begin() + std::ptrdiff_t(Bone));
		Clip.BonePaths.erase(Clip.BonePaths.begin() + std::ptrdiff_t(Bone));
		Clip.Rotations.erase(Clip.Rotations.begin() + std::ptrdiff_t(Bone));
	}
	const FBvhFile File = Export(FZnMotionGenerator::BodyToJson(Clip));
	// Still the whole skeleton: the twist and finger bones the clip has bring their families.
	EXPECT_EQ(JointNames(File), ExpectedOrder(true, true));
	ExpectRotations(File, Clip);
}

TEST_F(ZnBvhExportTest, BoneOutsideTheSkeletonIsLeftOutWithAWarning)
{
	const std::string Text = "{\"totalTime\":0.1,\"curves\":[{\"name\":\"Hips\",\"path\":\"\",\"rotas\":["
							 "{\"x\":0,\"y\":0,\"z\":0,\"w\":1},{\"x\":0,\"y\":0,\"z\":0,\"w\":1}]},"
							 "{\"name\":\"Tail\",\"path\":\"\",\"rotas\":[{\"x\":0,\"y\":0,\"z\":0,\"w\":1}]}],"
							 "\"Hips\":{\"name\":\"Hips\",\"path\":\"\",\"pos\":[{\"x\":0,\"y\":1,\"z\":0}]}}";
	const std::string Body = Write("body.json", Text);
	const FRun Run = RunZn({"export", "bvh", Body, "-o", PathOf("out.bvh")});
	EXPECT_EQ(Run.Status, 0);
	EXPECT_NE(Run.Err.find("bone Tail is not part of the service skeleton; left out"), std::string::npos) << Run.Err;
	const FBvhFile File = ReadBvh(ReadAll(PathOf("out.bvh")));
	EXPECT_EQ(JointNames(File), ExpectedOrder(false, false));
	// Two frames (the longest track); the root holds its only key: 1 m up is 100 cm.
	ASSERT_EQ(File.Frames, 2);
	EXPECT_NEAR(File.Motion[1][1], 100.0, 1e-9);
}
