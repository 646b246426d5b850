// A decoded face clip in the Live Link Face CSV layout that facial-capture tools and engines read.
//
// The header names "Timecode", "BlendShapeCount", the 52 blend shapes in the layout's own order
// (not alphabetical: JawRight before JawLeft, MouthRight before MouthLeft), then "HeadYaw",
// "HeadPitch", "HeadRoll" and the same three for the left and the right eye. Each row is one frame
// at 30 frames per second: the timecode HH:MM:SS:FF.mmm (FF the frame within the second, mmm the
// fraction of a frame, always 000 here), 61, the weights 0..1 mapped by name from the face clip's
// channels (TongueOut, which the face rig does not have, is 0), and the rotations in radians:
// the head's from a body clip when one is given and 0 otherwise, the eyes' always 0.
//
// The records passed in are only read; nothing is kept between calls, so calls may run on any
// thread.
#pragma once

#include "CoreMinimal.h"
#include "ZnBodyData.h"
#include "ZnExportMotion.h"
#include "ZnFaceData.h"

#include <string>
#include <vector>

class FZnFaceCsvWriter
{
public:
	// The 63 column names in order.
	static const std::vector<std::string>& Columns();

	// The CSV text of a face, with the head rotation from Body's frames when Body is given (a body
	// shorter than the face holds its last frame).
	static std::string ToText(const FZnExportFace& Face, const FZnExportMotion* Body);

	// The head's yaw, pitch and roll at a frame, radians: the rotation of the "Head" joint relative
	// to the world (the product of its chain from the root), split as Ry(yaw) * Rx(pitch) * Rz(roll)
	// in the export frame. Positive yaw turns the face towards the figure's left, positive pitch
	// tips it down, positive roll tilts the head towards the figure's right shoulder.
	static FVector HeadYawPitchRoll(const FZnExportMotion& Body, int32 Frame);

	// Writes Face (and the head of Body, when given) to Path, whole or not at all. False with a
	// one-line message when either clip has no frames or the file cannot be written.
	static bool WriteFile(
		const FZnFaceData& Face, const FZnBodyData* Body, const std::string& Path, std::string& OutError);
};
