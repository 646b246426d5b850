// Synthetic but plausible motion clips in every JSON shape the motion service sends, for tests,
// benchmarks, fuzzing seeds and the local stand-in service. Nothing here belongs to the plugin
// module: it is a standalone-only tool and uses the standard library only.
//
// Every clip is a pure function of its options (the seed included): the same options give the
// same numbers and byte-identical texts on every machine. The clip records hold the numbers
// exactly as the texts spell them, i.e. each double is the value a correct JSON parser reads
// back from the text, so a test can apply a decoder's conversion rules to them and compare
// bit for bit.
#pragma once

#include "HAL/Platform.h"

#include <string>
#include <vector>

// A quaternion in the service's coordinates (Unity: Y up), components as written.
struct FZnGenQuat
{
	double X = 0.0;
	double Y = 0.0;
	double Z = 0.0;
	double W = 1.0;
};

// A position in the service's coordinates, metres, as written.
struct FZnGenVec
{
	double X = 0.0;
	double Y = 0.0;
	double Z = 0.0;
};

struct FZnGenBodyOptions
{
	// Frames at 30 per second; 0 gives an empty clip.
	int32 FrameCount = 300;
	uint64 Seed = 1;
	// The two fore-arm twist bones ("LeftForeArm1", "RightForeArm1"): 54 bones with fingers, 52 without.
	bool bTwistBones = true;
	bool bFingers = true;
};

struct FZnGenBodyClip
{
	// Service ("DM") bone names in the order they are written; index-aligned with BonePaths and Rotations.
	std::vector<std::string> BoneNames;
	// Slash-separated chain from the root, written as each track's "path".
	std::vector<std::string> BonePaths;
	// Rotations[Bone][Frame], not exactly unit length (they went through float and decimal text).
	std::vector<std::vector<FZnGenQuat>> Rotations;
	// Root ("Hips") position of every frame, metres.
	std::vector<FZnGenVec> RootPositions;
	// The "totalTime" of the version 1 text: FrameCount / 30, as written.
	double TotalTime = 0.0;

	int32 FrameCount() const { return static_cast<int32>(RootPositions.size()); }
};

struct FZnGenFaceOptions
{
	int32 FrameCount = 300;
	uint64 Seed = 1;
	// Adds occasional weights below 0 and above 100 (as solvers sometimes emit) to exercise clamping.
	bool bOvershoot = false;
};

struct FZnGenFaceClip
{
	// The 51 channel names of the face rig, in the order the service writes the channels.
	std::vector<std::string> ChannelNames;
	// Weights[Frame][Channel] in percent (0 neutral, 100 full shape), as written.
	std::vector<std::vector<double>> Weights;

	int32 FrameCount() const { return static_cast<int32>(Weights.size()); }
};

struct FZnGenControlRigClip
{
	std::vector<std::string> CurveNames;
	// Values[Frame][Curve], raw rig values (mostly 0..1, a few signed -1..1), as written.
	std::vector<std::vector<double>> Values;
};

class FZnMotionGenerator
{
public:
	// The service's body bone names: 22 body bones (24 with the twist bones) then 30 finger bones.
	static std::vector<std::string> ServiceBoneNames(bool bTwistBones, bool bFingers);
	// The 51 face channel names in the service's channel order (the face rig's spelling).
	static const std::vector<std::string>& FaceChannelNames();

	static FZnGenBodyClip GenerateBody(const FZnGenBodyOptions& Options);
	static FZnGenFaceClip GenerateFace(const FZnGenFaceOptions& Options);
	// Control-rig curves driven by the same face motion, with CurveCount curves (at most 51).
	static FZnGenControlRigClip GenerateControlRig(const FZnGenFaceOptions& Options, int32 CurveCount = 51);
	// The control-rig curves ("ctrl_" + channel) of a face clip: weights as 0..1 amounts, the two
	// eye-in curves signed (out minus in); CurveCount curves (at most 51) of the face's first channels.
	static FZnGenControlRigClip FaceToControlRig(const FZnGenFaceClip& Face, int32 CurveCount = 51);

	// {"totalTime":..,"curves":[{"name","path","rotas":[{"x","y","z","w"}..]}..],"Hips":{"name","path","pos":[..]}}
	static std::string BodyToJson(const FZnGenBodyClip& Clip);
	// One frame object {"frameIndex":Frame+1,"pos":{"Hips":[x,y,z]},"rot":{Bone:[x,y,z,w],..}}.
	static std::string BodyFrameToJsonV2(const FZnGenBodyClip& Clip, int32 Frame);
	// A JSON array of frame objects in FrameOrder (0-based frames; empty means 0, 1, 2, ...).
	static std::string BodyToJsonV2(const FZnGenBodyClip& Clip, const std::vector<int32>& FrameOrder = {});

	// Array of frames, each an array of the 51 weights.
	static std::string FaceToJson(const FZnGenFaceClip& Clip);
	// One frame object {"frameIndex":Frame+1,"bs":[..51 weights..]}.
	static std::string FaceFrameToJsonV2(const FZnGenFaceClip& Clip, int32 Frame);
	static std::string FaceToJsonV2(const FZnGenFaceClip& Clip, const std::vector<int32>& FrameOrder = {});
	// {"curve_names":[..],"curve_data":[[..],..]}
	static std::string ControlRigToJson(const FZnGenControlRigClip& Clip);

	// A deterministic permutation of 0..Count-1 for out-of-order streams.
	static std::vector<int32> ShuffledFrameOrder(int32 Count, uint64 Seed);

	// The text form used for every number: a float printed with round-trip precision ("%.9g").
	static void AppendNumber(std::string& Out, double Value);
	// What a correct parser reads back from the text that AppendNumber writes for (float)Value.
	static double AsWritten(double Value);
};
