#include "ZnBvhWriter.h"

#include "ZnEulerAngles.h"
#include "ZnExportFiles.h"
#include "ZnExportNumbers.h"

namespace
{
// Enough digits that the rotation read back matches the decoded one to about 1e-8.
constexpr int AngleDecimals = 6;
constexpr int PositionDecimals = 4;

void AppendVector(std::string& Out, const FVector& V, int Decimals)
{
	ZnExportNumbers::AppendFixed(Out, V.X, Decimals);
	Out += ' ';
	ZnExportNumbers::AppendFixed(Out, V.Y, Decimals);
	Out += ' ';
	ZnExportNumbers::AppendFixed(Out, V.Z, Decimals);
}

void AppendJoint(std::string& Out, const FZnExportMotion& Motion, int32 Joint, int32 Depth)
{
	const FZnExportJoint& J = Motion.Joints[static_cast<size_t>(Joint)];
	const std::string Indent(static_cast<size_t>(Depth), '\t');
	Out += Indent + (J.Parent == INDEX_NONE ? "ROOT " : "JOINT ") + J.Name + "\n" + Indent + "{\n";
	Out += Indent + "\tOFFSET ";
	AppendVector(Out, J.Offset, PositionDecimals);
	Out += "\n";
	Out += Indent +
		(J.Parent == INDEX_NONE ? "\tCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
								: "\tCHANNELS 3 Zrotation Xrotation Yrotation\n");
	for (int32 Child = 0; Child < static_cast<int32>(Motion.Joints.size()); ++Child)
	{
		if (Motion.Joints[static_cast<size_t>(Child)].Parent == Joint)
		{
			AppendJoint(Out, Motion, Child, Depth + 1);
		}
	}
	if (J.bHasEndSite)
	{
		Out += Indent + "\tEnd Site\n" + Indent + "\t{\n" + Indent + "\t\tOFFSET ";
		AppendVector(Out, J.EndSite, PositionDecimals);
		Out += "\n" + Indent + "\t}\n";
	}
	Out += Indent + "}\n";
}

// The MOTION section lists joints in the order the HIERARCHY meets them, which is the joint list's
// own order only if that is depth-first; walk the tree to be sure.
void DepthFirst(const FZnExportMotion& Motion, int32 Joint, std::vector<int32>& Order)
{
	Order.push_back(Joint);
	for (int32 Child = 0; Child < static_cast<int32>(Motion.Joints.size()); ++Child)
	{
		if (Motion.Joints[static_cast<size_t>(Child)].Parent == Joint)
		{
			DepthFirst(Motion, Child, Order);
		}
	}
}
} // namespace

std::string FZnBvhWriter::ToText(const FZnExportMotion& Motion)
{
	std::string Out = "HIERARCHY\n";
	std::vector<int32> Order;
	for (int32 Joint = 0; Joint < static_cast<int32>(Motion.Joints.size()); ++Joint)
	{
		if (Motion.Joints[static_cast<size_t>(Joint)].Parent == INDEX_NONE)
		{
			AppendJoint(Out, Motion, Joint, 0);
			DepthFirst(Motion, Joint, Order);
		}
	}
	Out += "MOTION\nFrames: " + std::to_string(Motion.FrameCount) + "\nFrame Time: ";
	ZnExportNumbers::AppendFixed(Out, 1.0 / FZnClipClock::FramesPerSecond, 7);
	Out += "\n";
	for (int32 Frame = 0; Frame < Motion.FrameCount; ++Frame)
	{
		AppendVector(Out, Motion.RootPositions[static_cast<size_t>(Frame)], PositionDecimals);
		for (const int32 Joint : Order)
		{
			Out += ' ';
			AppendVector(Out, FZnEulerAngles::ZxyDegrees(Motion.Rotation(Frame, Joint)), AngleDecimals);
		}
		Out += "\n";
	}
	return Out;
}

bool FZnBvhWriter::WriteFile(
	const FZnBodyData& Body, const std::string& Path, std::string& OutError, std::vector<std::string>* OutUnknownBones)
{
	FZnExportMotion Motion;
	if (!FZnExportMotion::FromBody(Body, Motion, OutError))
	{
		return false;
	}
	if (OutUnknownBones)
	{
		*OutUnknownBones = Motion.UnknownBones;
	}
	return FZnExportFiles::WriteWhole(Path, ToText(Motion), OutError);
}
