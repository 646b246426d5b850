// Decoded clips laid out frame by frame at the service's 30 frames per second, ready to be
// written or drawn: the body as local joint rotations of the export skeleton, the face as
// weights per channel. Built from the records the module's decoders fill; the records are only
// read. Not thread-safe to build into one object from several threads; otherwise plain data.
#pragma once

#include "CoreMinimal.h"
#include "ZnBodyData.h"
#include "ZnExportSkeleton.h"
#include "ZnFaceData.h"

#include <string>
#include <vector>

// The frame clock of every clip: frame F is at float(F * (1/30)) seconds, the time the decoders
// give its keys. A clip has as many frames as it takes to reach its last key, so a frame missing
// from a version 2 clip is filled in by its curves rather than shortening the clip.
class FZnClipClock
{
public:
	static constexpr int32 FramesPerSecond = 30;
	// 24 hours. A version 2 frame numbered 0 is keyed at an enormous time; such a clip is refused
	// rather than written out frame by frame.
	static constexpr int64 MaxFrames = int64(FramesPerSecond) * 3600 * 24;

	static float FrameTime(int64 Frame) { return float(double(Frame) * (1.0 / 30.0)); }
	// Frames from 0 up to the frame nearest LastKeyTime, inclusive.
	static int64 FramesUpTo(double LastKeyTime);
};

struct FZnExportMotion
{
	std::vector<FZnExportJoint> Joints;
	int32 FrameCount = 0;
	// Rotations[Frame * Joints.size() + Joint]: the joint's rotation relative to its parent, export
	// frame, unit length. A joint the clip does not have keeps its rest rotation (the identity).
	std::vector<FQuat> Rotations;
	// The root's position every frame, centimetres, export frame. A clip without a root track
	// stands at FZnExportSkeleton::RestRootHeight over the origin.
	std::vector<FVector> RootPositions;
	// Bones of the clip that are not part of the service skeleton; they are left out.
	std::vector<std::string> UnknownBones;

	const FQuat& Rotation(int32 Frame, int32 Joint) const
	{
		return Rotations[static_cast<size_t>(Frame) * Joints.size() + static_cast<size_t>(Joint)];
	}

	// Samples every bone curve and the root curve at every frame time: the key at a key's time,
	// the curves' own interpolation between keys, the first key before it and the last key after
	// it (whatever order the keys were stored in). False with a message, Out unchanged, when the
	// body has no keys at all or runs past MaxFrames.
	static bool FromBody(const FZnBodyData& Body, FZnExportMotion& Out, std::string& OutError);
};

struct FZnExportFace
{
	// Channel names: the record's CurveNames, or for records without names (version 2) the face
	// rig's channel names in channel order, then "Channel<N>".
	std::vector<std::string> Names;
	int32 FrameCount = 0;
	// Weights[Frame * Names.size() + Channel], each curve's value at the frame time held within 0..1.
	std::vector<float> Weights;

	float Weight(int32 Frame, int32 Channel) const
	{
		return Weights[static_cast<size_t>(Frame) * Names.size() + static_cast<size_t>(Channel)];
	}

	// The curve names a face record stands for (see Names).
	static std::vector<std::string> ChannelNames(const FZnFaceData& Face);
	// False with a message, Out unchanged, when the face has no keys or runs past MaxFrames.
	static bool FromFace(const FZnFaceData& Face, FZnExportFace& Out, std::string& OutError);
};
