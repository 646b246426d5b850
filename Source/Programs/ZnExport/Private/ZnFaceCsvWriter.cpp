#include "ZnFaceCsvWriter.h"

#include "ZnEulerAngles.h"
#include "ZnExportFiles.h"
#include "ZnExportNumbers.h"

#include <algorithm>
#include <cstdio>

namespace
{
constexpr int32 BlendShapeCount = 61;
constexpr int WeightDecimals = 6;
constexpr int AngleDecimals = 6;

std::string Timecode(int64 Frame)
{
	const int64 Fps = FZnClipClock::FramesPerSecond;
	const int64 Seconds = Frame / Fps;
	char Text[48];
	std::snprintf(Text, sizeof(Text), "%02lld:%02lld:%02lld:%02lld.000", static_cast<long long>(Seconds / 3600),
		static_cast<long long>(Seconds / 60 % 60), static_cast<long long>(Seconds % 60),
		static_cast<long long>(Frame % Fps));
	return Text;
}
} // namespace

const std::vector<std::string>& FZnFaceCsvWriter::Columns()
{
	static const std::vector<std::string> Names = {"Timecode", "BlendShapeCount", "EyeBlinkLeft", "EyeLookDownLeft",
		"EyeLookInLeft", "EyeLookOutLeft", "EyeLookUpLeft", "EyeSquintLeft", "EyeWideLeft", "EyeBlinkRight",
		"EyeLookDownRight", "EyeLookInRight", "EyeLookOutRight", "EyeLookUpRight", "EyeSquintRight", "EyeWideRight",
		"JawForward", "JawRight", "JawLeft", "JawOpen", "MouthClose", "MouthFunnel", "MouthPucker", "MouthRight",
		"MouthLeft", "MouthSmileLeft", "MouthSmileRight", "MouthFrownLeft", "MouthFrownRight", "MouthDimpleLeft",
		"MouthDimpleRight", "MouthStretchLeft", "MouthStretchRight", "MouthRollLower", "MouthRollUpper",
		"MouthShrugLower", "MouthShrugUpper", "MouthPressLeft", "MouthPressRight", "MouthLowerDownLeft",
		"MouthLowerDownRight", "MouthUpperUpLeft", "MouthUpperUpRight", "BrowDownLeft", "BrowDownRight", "BrowInnerUp",
		"BrowOuterUpLeft", "BrowOuterUpRight", "CheekPuff", "CheekSquintLeft", "CheekSquintRight", "NoseSneerLeft",
		"NoseSneerRight", "TongueOut", "HeadYaw", "HeadPitch", "HeadRoll", "LeftEyeYaw", "LeftEyePitch", "LeftEyeRoll",
		"RightEyeYaw", "RightEyePitch", "RightEyeRoll"};
	return Names;
}

FVector FZnFaceCsvWriter::HeadYawPitchRoll(const FZnExportMotion& Body, int32 Frame)
{
	const auto Head = std::find_if(
		Body.Joints.begin(), Body.Joints.end(), [](const FZnExportJoint& Joint) { return Joint.Name == "Head"; });
	FQuat World = FQuat::Identity;
	for (int32 Joint = static_cast<int32>(Head - Body.Joints.begin()); Joint != INDEX_NONE;
		 Joint = Body.Joints[static_cast<size_t>(Joint)].Parent)
	{
		World = Body.Rotation(Frame, Joint) * World;
	}
	return FZnEulerAngles::YxzRadians(World.GetNormalized());
}

std::string FZnFaceCsvWriter::ToText(const FZnExportFace& Face, const FZnExportMotion* Body)
{
	const std::vector<std::string>& Names = Columns();
	std::string Out;
	for (size_t Column = 0; Column < Names.size(); ++Column)
	{
		Out += (Column ? "," : "") + Names[Column];
	}
	Out += "\n";

	// Column 2 + k of the layout is our channel ChannelOf[k], or none (TongueOut).
	constexpr size_t FirstShape = 2;
	constexpr size_t ShapeCount = 52;
	std::vector<int32> ChannelOf(ShapeCount, INDEX_NONE);
	for (size_t Shape = 0; Shape < ShapeCount; ++Shape)
	{
		const auto Found = std::find(Face.Names.begin(), Face.Names.end(), Names[FirstShape + Shape]);
		ChannelOf[Shape] = Found == Face.Names.end() ? INDEX_NONE : static_cast<int32>(Found - Face.Names.begin());
	}

	for (int32 Frame = 0; Frame < Face.FrameCount; ++Frame)
	{
		Out += Timecode(Frame) + "," + std::to_string(BlendShapeCount);
		for (const int32 Channel : ChannelOf)
		{
			Out += ',';
			ZnExportNumbers::AppendFixed(
				Out, Channel == INDEX_NONE ? 0.0 : Face.Weight(Frame, Channel), WeightDecimals);
		}
		const FVector Head = Body && Body->FrameCount > 0
			? HeadYawPitchRoll(*Body, std::min(Frame, Body->FrameCount - 1))
			: FVector::ZeroVector;
		for (const double Angle : {Head.X, Head.Y, Head.Z, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0})
		{
			Out += ',';
			ZnExportNumbers::AppendFixed(Out, Angle, AngleDecimals);
		}
		Out += "\n";
	}
	return Out;
}

bool FZnFaceCsvWriter::WriteFile(
	const FZnFaceData& Face, const FZnBodyData* Body, const std::string& Path, std::string& OutError)
{
	FZnExportFace FaceFrames;
	if (!FZnExportFace::FromFace(Face, FaceFrames, OutError))
	{
		return false;
	}
	FZnExportMotion Motion;
	if (Body && !FZnExportMotion::FromBody(*Body, Motion, OutError))
	{
		return false;
	}
	return FZnExportFiles::WriteWhole(Path, ToText(FaceFrames, Body ? &Motion : nullptr), OutError);
}
