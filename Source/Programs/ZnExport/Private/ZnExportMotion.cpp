#include "ZnExportMotion.h"

#include "ZnHuman_Skeleton.h"

#include <algorithm>
#include <cmath>

namespace
{
std::string Utf8(const FString& Text)
{
	const FTCHARToUTF8 Converted(*Text, Text.Len());
	return std::string(Converted.Get(), static_cast<size_t>(Converted.Length()));
}

// The key curve with its keys in time order. A version 2 stream that arrived out of order can
// leave them out of order (the curve's insertion rule), and Evaluate searches them by halving.
FZnQuatCurve SortedCopy(const FZnQuatCurve& Curve)
{
	FZnQuatCurve Sorted = Curve;
	std::stable_sort(Sorted.Keys.begin(), Sorted.Keys.end(),
		[](const FZnQuatCurveKey& A, const FZnQuatCurveKey& B) { return A.Time < B.Time; });
	return Sorted;
}

FQuat SampleRotation(const FZnQuatCurve& Sorted, float Time)
{
	const TArray<FZnQuatCurveKey>& Keys = Sorted.Keys;
	if (Keys.Num() == 0)
	{
		return FQuat::Identity;
	}
	// The curve's own Evaluate holds the first key past the end; a clip that stops early should
	// rather stay where it stopped.
	if (Time <= Keys[0].Time)
	{
		return Keys[0].Value;
	}
	if (Time >= Keys.Last().Time)
	{
		return Keys.Last().Value;
	}
	return Sorted.Evaluate(Time, 0.0001f);
}

double LastKeyTime(const FRichCurve& Curve, double Last)
{
	for (const FRichCurveKey& Key : Curve.GetConstRefOfKeys())
	{
		Last = std::max(Last, double(Key.Time));
	}
	return Last;
}

bool CountFrames(bool bAnyKey, double LastTime, const char* What, int32& OutFrames, std::string& OutError)
{
	if (!bAnyKey)
	{
		OutError = std::string("the ") + What + " clip has no frames";
		return false;
	}
	const int64 Frames = FZnClipClock::FramesUpTo(LastTime);
	if (Frames > FZnClipClock::MaxFrames)
	{
		OutError = std::string("the ") + What + " clip runs past 24 hours (a frame numbered 0?)";
		return false;
	}
	OutFrames = static_cast<int32>(Frames);
	return true;
}
} // namespace

int64 FZnClipClock::FramesUpTo(double LastKeyTime)
{
	if (!(LastKeyTime > 0.0))
	{
		return 1;
	}
	const double Frames = std::floor(LastKeyTime * FramesPerSecond + 0.5) + 1.0;
	return Frames > double(MaxFrames) ? MaxFrames + 1 : static_cast<int64>(Frames);
}

bool FZnExportMotion::FromBody(const FZnBodyData& Body, FZnExportMotion& Out, std::string& OutError)
{
	FZnExportMotion Motion;
	Motion.Joints = FZnExportSkeleton::JointsFor(Body.BoneNames);

	// Which clip bone drives each joint; the first of two names that differ only in case wins.
	std::vector<FZnQuatCurve> JointCurves(Motion.Joints.size());
	std::vector<bool> bJointDriven(Motion.Joints.size(), false);
	bool bAnyKey = false;
	double LastTime = 0.0;
	const int32 BoneCount = std::min(Body.BoneNames.Num(), Body.BoneCurves.Num());
	for (int32 Bone = 0; Bone < BoneCount; ++Bone)
	{
		const FString& Name = Body.BoneNames[Bone];
		const auto Joint = std::find_if(Motion.Joints.begin(), Motion.Joints.end(),
			[&Name](const FZnExportJoint& J) { return Name == FString(J.Name.c_str()); });
		if (Joint == Motion.Joints.end())
		{
			Motion.UnknownBones.push_back(Utf8(Name));
			continue;
		}
		const size_t Index = static_cast<size_t>(Joint - Motion.Joints.begin());
		if (bJointDriven[Index])
		{
			continue;
		}
		bJointDriven[Index] = true;
		JointCurves[Index] = SortedCopy(Body.BoneCurves[Bone]);
		for (const FZnQuatCurveKey& Key : JointCurves[Index].Keys)
		{
			bAnyKey = true;
			LastTime = std::max(LastTime, double(Key.Time));
		}
	}
	const FVectorCurve& Root = Body.RootPositionCurve;
	const bool bRootKeys = Root.FloatCurves[0].GetNumKeys() > 0 || Root.FloatCurves[1].GetNumKeys() > 0 ||
		Root.FloatCurves[2].GetNumKeys() > 0;
	for (const FRichCurve& Channel : Root.FloatCurves)
	{
		LastTime = LastKeyTime(Channel, LastTime);
	}
	if (!CountFrames(bAnyKey || bRootKeys, LastTime, "body", Motion.FrameCount, OutError))
	{
		return false;
	}

	const size_t JointCount = Motion.Joints.size();
	Motion.Rotations.resize(static_cast<size_t>(Motion.FrameCount) * JointCount, FQuat::Identity);
	Motion.RootPositions.reserve(static_cast<size_t>(Motion.FrameCount));
	for (int32 Frame = 0; Frame < Motion.FrameCount; ++Frame)
	{
		const float Time = FZnClipClock::FrameTime(Frame);
		for (size_t Joint = 0; Joint < JointCount; ++Joint)
		{
			if (bJointDriven[Joint])
			{
				Motion.Rotations[static_cast<size_t>(Frame) * JointCount + Joint] =
					FZnExportSkeleton::ToExportFrame(SampleRotation(JointCurves[Joint], Time));
			}
		}
		Motion.RootPositions.push_back(bRootKeys ? FZnExportSkeleton::ToExportFrame(Root.Evaluate(Time, 1.0f))
												 : FVector(0.0, FZnExportSkeleton::RestRootHeight, 0.0));
	}
	Out = std::move(Motion);
	return true;
}

std::vector<std::string> FZnExportFace::ChannelNames(const FZnFaceData& Face)
{
	const ZnHuman_Skeleton Skeleton;
	std::vector<std::string> Names;
	for (int32 Curve = 0; Curve < Face.Curves.Num(); ++Curve)
	{
		if (Curve < Face.CurveNames.Num())
		{
			Names.push_back(Utf8(Face.CurveNames[Curve]));
		}
		else if (Curve < Skeleton.FaceCurveNames.Num())
		{
			Names.push_back(Utf8(Skeleton.FaceCurveNames[Curve]));
		}
		else
		{
			Names.push_back("Channel" + std::to_string(Curve));
		}
	}
	return Names;
}

bool FZnExportFace::FromFace(const FZnFaceData& Face, FZnExportFace& Out, std::string& OutError)
{
	FZnExportFace Result;
	Result.Names = ChannelNames(Face);
	bool bAnyKey = false;
	double LastTime = 0.0;
	for (const FFloatCurve& Curve : Face.Curves)
	{
		bAnyKey = bAnyKey || Curve.FloatCurve.GetNumKeys() > 0;
		LastTime = LastKeyTime(Curve.FloatCurve, LastTime);
	}
	if (!CountFrames(bAnyKey, LastTime, "face", Result.FrameCount, OutError))
	{
		return false;
	}
	Result.Weights.reserve(static_cast<size_t>(Result.FrameCount) * Result.Names.size());
	for (int32 Frame = 0; Frame < Result.FrameCount; ++Frame)
	{
		const float Time = FZnClipClock::FrameTime(Frame);
		for (const FFloatCurve& Curve : Face.Curves)
		{
			// A curve without keys is a channel the clip never moved: neutral.
			const float Weight = Curve.FloatCurve.GetNumKeys() > 0 ? Curve.FloatCurve.Eval(Time) : 0.0f;
			Result.Weights.push_back(std::min(1.0f, std::max(0.0f, Weight)));
		}
	}
	Out = std::move(Result);
	return true;
}
