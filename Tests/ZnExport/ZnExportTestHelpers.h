// What the export tests share: a small quaternion type of their own, an independent BVH reader,
// a CSV splitter and the expected rotation of a generated clip.
#pragma once

#include "ZnMotionGenerator.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace ZnExportTest
{
struct FTestQuat
{
	double X = 0.0, Y = 0.0, Z = 0.0, W = 1.0;
};

inline FTestQuat Multiply(const FTestQuat& A, const FTestQuat& B)
{
	return {A.W * B.X + A.X * B.W + A.Y * B.Z - A.Z * B.Y, A.W * B.Y - A.X * B.Z + A.Y * B.W + A.Z * B.X,
		A.W * B.Z + A.X * B.Y - A.Y * B.X + A.Z * B.W, A.W * B.W - A.X * B.X - A.Y * B.Y - A.Z * B.Z};
}

// A rotation of Degrees about the axis 'X', 'Y' or 'Z'.
inline FTestQuat AxisRotation(char Axis, double Degrees)
{
	const double Half = Degrees * 3.14159265358979323846 / 360.0;
	FTestQuat Q{0.0, 0.0, 0.0, std::cos(Half)};
	(Axis == 'X' ? Q.X : Axis == 'Y' ? Q.Y : Q.Z) = std::sin(Half);
	return Q;
}

// Largest component difference between two rotations, taking q and -q as the same rotation.
inline double RotationDistance(const FTestQuat& A, const FTestQuat& B)
{
	const auto Distance = [](const FTestQuat& P, const FTestQuat& Q, double Sign)
	{
		return std::max(std::max(std::fabs(P.X - Sign * Q.X), std::fabs(P.Y - Sign * Q.Y)),
			std::max(std::fabs(P.Z - Sign * Q.Z), std::fabs(P.W - Sign * Q.W)));
	};
	return std::min(Distance(A, B, 1.0), Distance(A, B, -1.0));
}

// The service rotation as the decoders store it in the engine frame: components narrowed to float,
// engine X, Y, Z = service z, x, y, then normalised.
inline FTestQuat EngineRotation(const FZnGenQuat& Q)
{
	FTestQuat R{double(float(Q.Z)), double(float(Q.X)), double(float(Q.Y)), double(float(Q.W))};
	const double Length = std::sqrt(R.X * R.X + R.Y * R.Y + R.Z * R.Z + R.W * R.W);
	return {R.X / Length, R.Y / Length, R.Z / Length, R.W / Length};
}

struct FBvhJoint
{
	std::string Name;
	int Parent = -1;
	double Offset[3] = {0, 0, 0};
	std::vector<std::string> Channels;
	bool bEndSite = false;
	double EndSite[3] = {0, 0, 0};
};

struct FBvhFile
{
	std::vector<FBvhJoint> Joints;
	int Frames = -1;
	std::string FrameTime;
	// One row of numbers per motion line, as many as the line holds.
	std::vector<std::vector<double>> Motion;
	std::string Error;
};

// Reads the BVH layout on its own terms: nested ROOT/JOINT blocks with OFFSET, CHANNELS and End
// Site, then MOTION with "Frames:", "Frame Time:" and one line of numbers per frame.
inline FBvhFile ReadBvh(const std::string& Text)
{
	FBvhFile File;
	const size_t MotionAt = Text.find("\nMOTION\n");
	if (Text.rfind("HIERARCHY\n", 0) != 0 || MotionAt == std::string::npos)
	{
		File.Error = "no HIERARCHY or MOTION";
		return File;
	}
	std::istringstream Words(Text.substr(10, MotionAt - 10));
	std::vector<int> Stack;
	std::string Word;
	bool bPendingEndSite = false;
	while (Words >> Word)
	{
		if (Word == "ROOT" || Word == "JOINT")
		{
			FBvhJoint Joint;
			Words >> Joint.Name;
			Joint.Parent = Stack.empty() ? -1 : Stack.back();
			File.Joints.push_back(Joint);
		}
		else if (Word == "End")
		{
			Words >> Word; // "Site"
			bPendingEndSite = true;
			File.Joints[size_t(Stack.back())].bEndSite = true;
		}
		else if (Word == "{")
		{
			// -2 marks an End Site block; its OFFSET belongs to the joint one level up.
			Stack.push_back(bPendingEndSite ? -2 : int(File.Joints.size()) - 1);
			bPendingEndSite = false;
		}
		else if (Word == "}")
		{
			Stack.pop_back();
		}
		else if (Word == "OFFSET")
		{
			double* Target = Stack.back() == -2 ? File.Joints[size_t(Stack[Stack.size() - 2])].EndSite
												: File.Joints[size_t(Stack.back())].Offset;
			Words >> Target[0] >> Target[1] >> Target[2];
		}
		else if (Word == "CHANNELS")
		{
			int Count = 0;
			Words >> Count;
			for (int Channel = 0; Channel < Count && Words >> Word; ++Channel)
			{
				File.Joints.back().Channels.push_back(Word);
			}
		}
		else
		{
			File.Error = "unexpected word " + Word;
			return File;
		}
	}
	std::istringstream Lines(Text.substr(MotionAt + 8));
	std::string Line;
	std::getline(Lines, Line);
	if (Line.rfind("Frames: ", 0) == 0)
	{
		File.Frames = std::stoi(Line.substr(8));
	}
	std::getline(Lines, Line);
	if (Line.rfind("Frame Time: ", 0) == 0)
	{
		File.FrameTime = Line.substr(12);
	}
	while (std::getline(Lines, Line))
	{
		std::istringstream Numbers(Line);
		std::vector<double> Row;
		double Value;
		while (Numbers >> Value)
		{
			Row.push_back(Value);
		}
		File.Motion.push_back(Row);
	}
	return File;
}

// V rotated by the unit rotation Q.
inline std::array<double, 3> Rotate(const FTestQuat& Q, const std::array<double, 3>& V)
{
	const FTestQuat P = Multiply(Multiply(Q, FTestQuat{V[0], V[1], V[2], 0.0}), FTestQuat{-Q.X, -Q.Y, -Q.Z, Q.W});
	return {P.X, P.Y, P.Z};
}

// A joint's rotation at a frame, rebuilt from its rotation channels in their declared order.
inline FTestQuat BvhRotation(const FBvhFile& File, int Frame, int Joint)
{
	size_t Column = 0;
	for (int Before = 0; Before < Joint; ++Before)
	{
		Column += File.Joints[size_t(Before)].Channels.size();
	}
	FTestQuat Q;
	for (const std::string& Channel : File.Joints[size_t(Joint)].Channels)
	{
		if (Channel.size() == 9 && Channel.compare(1, 8, "rotation") == 0)
		{
			Q = Multiply(Q, AxisRotation(Channel[0], File.Motion[size_t(Frame)][Column]));
		}
		++Column;
	}
	return Q;
}

// Every joint's world position at a frame, by forward kinematics over the file's own hierarchy:
// a joint sits at its parent's position plus the parent's world rotation applied to its offset.
inline std::vector<std::array<double, 3>> BvhWorldPositions(const FBvhFile& File, int Frame)
{
	std::vector<std::array<double, 3>> Positions(File.Joints.size());
	std::vector<FTestQuat> World(File.Joints.size());
	for (size_t Joint = 0; Joint < File.Joints.size(); ++Joint)
	{
		const FBvhJoint& J = File.Joints[Joint];
		const FTestQuat Local = BvhRotation(File, Frame, int(Joint));
		if (J.Parent < 0)
		{
			const std::vector<double>& Row = File.Motion[size_t(Frame)];
			Positions[Joint] = {Row[0] + J.Offset[0], Row[1] + J.Offset[1], Row[2] + J.Offset[2]};
			World[Joint] = Local;
			continue;
		}
		const size_t Parent = size_t(J.Parent);
		const std::array<double, 3> Step = Rotate(World[Parent], {J.Offset[0], J.Offset[1], J.Offset[2]});
		Positions[Joint] = {
			Positions[Parent][0] + Step[0], Positions[Parent][1] + Step[1], Positions[Parent][2] + Step[2]};
		World[Joint] = Multiply(World[Parent], Local);
	}
	return Positions;
}

inline std::vector<std::string> SplitCsvLine(const std::string& Line)
{
	std::vector<std::string> Fields;
	std::stringstream Stream(Line);
	std::string Field;
	while (std::getline(Stream, Field, ','))
	{
		Fields.push_back(Field);
	}
	return Fields;
}
} // namespace ZnExportTest
