// A decoded body clip as BVH motion capture text, the common interchange format for skeletal
// motion (Blender, MotionBuilder and most retargeting tools read it).
//
// HIERARCHY: the export skeleton (ZnExportSkeleton.h) with its rest offsets in centimetres in the
// export frame (Y up, facing +Z, left +X). The root has six channels, "Xposition Yposition
// Zposition Zrotation Xrotation Yrotation"; every other joint three, "Zrotation Xrotation
// Yrotation". MOTION: one line per frame at 30 frames per second ("Frame Time: 0.0333333"), the
// root's position in centimetres and every joint's rotation relative to its parent as Euler
// angles in degrees in the declared order (Rz * Rx * Ry), converted from the decoders' engine
// frame to the export frame.
//
// The records passed in are only read; nothing is kept between calls, so calls may run on any
// thread.
#pragma once

#include "CoreMinimal.h"
#include "ZnBodyData.h"
#include "ZnExportMotion.h"

#include <string>

class FZnBvhWriter
{
public:
	// The BVH text of a motion laid out by FZnExportMotion::FromBody.
	static std::string ToText(const FZnExportMotion& Motion);

	// Writes Body as BVH to Path (replacing the file as a whole: a failure leaves no partial
	// file). False with a one-line message, nothing written, when the body has no frames or the
	// file cannot be written. Bones the skeleton does not know are listed in OutUnknownBones
	// (when given) and left out.
	static bool WriteFile(const FZnBodyData& Body, const std::string& Path, std::string& OutError,
		std::vector<std::string>* OutUnknownBones = nullptr);
};
