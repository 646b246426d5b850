// Reading clip files from disk with the module's decoders, telling the service's shapes apart and
// saying clearly when a file is no clip at all. Used by the zn commands that take clip files.
// Every function is thread-compatible; the version 2 decoders used here keep no shared state.
#pragma once

#include "CoreMinimal.h"
#include "ZnBodyData.h"
#include "ZnFaceData.h"

#include <string>
#include <vector>

enum class EZnClipError : uint8
{
	None,
	// The file cannot be read.
	Unreadable,
	// The text is not JSON, or not in the shape of the clip kind asked for.
	NotAClip,
	// A clip in the right shape, but without a single frame.
	Empty
};

struct FZnClipLoad
{
	EZnClipError Error = EZnClipError::None;
	// One line saying what is wrong with which file, without a program prefix.
	std::string Message;
	// The shape the text was read as: body "v1", "recommend" or "v2"; face "v1", "v2" or "rig".
	std::string Format;

	bool Ok() const { return Error == EZnClipError::None; }
};

class FZnClipFiles
{
public:
	// The whole file as bytes; false when it cannot be opened.
	static bool ReadText(const std::string& Path, std::string& OutText);

	// The shape of a text from its first structural characters, after an optional UTF-8
	// byte-order mark: a body starting with "{" is "v1" and with "[" is "v2"; a face array is "v2"
	// when its first element is an object ("[{") and "v1" otherwise; a face object is "rig" when
	// the text contains "curve_names" and "v2" otherwise; anything else is "v1".
	static std::string DetectFormat(const std::string& Text, bool bBody);

	// The bones a version 2 frame array carries: the members of the first frame's "rot" object, in
	// the file's order. Empty when the text is not such an array. (The frame decoder drops every
	// frame that lacks one of the bones it is asked for, so a fixed list would lose whole clips
	// made without twist or finger bones.)
	static std::vector<std::string> FrameArrayBoneNames(const std::string& Text);

	// Decodes a body file: Format "auto", "v1" (ParseJsonToBodydata), "recommend"
	// (ParseJsonToBodydataRecommend) or "v2" (ParseJsonToBodydataV2Response with the file's own
	// bones). A text that is not in the shape of that format is NotAClip; a clip without keys is
	// Empty. Out is written only on success.
	static FZnClipLoad LoadBody(const std::string& Path, const std::string& Format, FZnBodyData& Out);

	// Decodes a face file: Format "auto", "v1", "v2" or "rig", as LoadBody does.
	static FZnClipLoad LoadFace(const std::string& Path, const std::string& Format, FZnFaceData& Out);
};
