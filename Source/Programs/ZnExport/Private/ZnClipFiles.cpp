#include "ZnClipFiles.h"

#include "ZnDM_BpFuncLib.h"
#include "ZnQuatCurve.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace
{
// Ordered, so a frame's bones come out in the file's order.
using FJson = nlohmann::ordered_json;

constexpr char ByteOrderMark[] = "\xEF\xBB\xBF";

FString ToFString(const std::string& Utf8)
{
	const FUTF8ToTCHAR Converted(Utf8.data(), static_cast<int32>(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

FJson ParseWithoutMark(const std::string& Text)
{
	const size_t Start = Text.compare(0, 3, ByteOrderMark) == 0 ? 3 : 0;
	return FJson::parse(Text.begin() + static_cast<std::ptrdiff_t>(Start), Text.end(), nullptr, false);
}

// Whether an array's first element (if any) passes Test: the service's clips are uniform, so the
// first element tells the shape.
template <typename TestType>
bool FirstElementIs(const FJson& Array, TestType Test)
{
	return Array.is_array() && (Array.empty() || Test(Array.front()));
}

// Why a text is not a clip of the given format, or "" when its shape fits.
std::string ShapeProblem(const FJson& Root, const std::string& Format, bool bBody)
{
	if (Root.is_discarded())
	{
		return "not JSON";
	}
	const auto ObjectWith = [](const char* Key)
	{ return [Key](const FJson& Value) { return Value.is_object() && Value.contains(Key); }; };
	if (bBody && (Format == "v1" || Format == "recommend"))
	{
		return Root.is_object() && Root.contains("curves") && Root["curves"].is_array()
			? ""
			: "no \"curves\" array in a JSON object";
	}
	if (bBody)
	{
		return FirstElementIs(Root, ObjectWith("rot")) ? "" : "not an array of frames with \"rot\"";
	}
	if (Format == "rig")
	{
		return Root.is_object() && Root.contains("curve_names") ? "" : "no \"curve_names\" in a JSON object";
	}
	if (Format == "v2")
	{
		return FirstElementIs(Root, ObjectWith("bs")) ? "" : "not an array of frames with \"bs\"";
	}
	return FirstElementIs(Root, [](const FJson& Value) { return Value.is_array(); }) ? ""
																					 : "not an array of weight arrays";
}

FZnClipLoad Failure(EZnClipError Error, const std::string& Message, const std::string& Format)
{
	FZnClipLoad Load;
	Load.Error = Error;
	Load.Message = Message;
	Load.Format = Format;
	return Load;
}

// Reads and checks a file's shape; fills Text, Root and Load.Format.
bool ReadClip(
	const std::string& Path, const std::string& Format, bool bBody, std::string& Text, FJson& Root, FZnClipLoad& Load)
{
	const char* Kind = bBody ? "body" : "face";
	if (!FZnClipFiles::ReadText(Path, Text))
	{
		Load = Failure(EZnClipError::Unreadable, "cannot read " + Path, Format);
		return false;
	}
	Load.Format = Format == "auto" ? FZnClipFiles::DetectFormat(Text, bBody) : Format;
	Root = ParseWithoutMark(Text);
	const std::string Problem = ShapeProblem(Root, Load.Format, bBody);
	if (!Problem.empty())
	{
		Load = Failure(EZnClipError::NotAClip,
			Path + " is not a " + Kind + " clip (format " + Load.Format + "): " + Problem, Load.Format);
		return false;
	}
	return true;
}
} // namespace

bool FZnClipFiles::ReadText(const std::string& Path, std::string& OutText)
{
	std::ifstream In(Path, std::ios::binary);
	if (!In)
	{
		return false;
	}
	std::string Text((std::istreambuf_iterator<char>(In)), std::istreambuf_iterator<char>());
	if (In.bad())
	{
		return false;
	}
	OutText = std::move(Text);
	return true;
}

// The first two structural characters tell the shapes apart: "{" a version 1 body or a
// control-rig object, "[[" a version 1 face, "[{" version 2 frames.
std::string FZnClipFiles::DetectFormat(const std::string& Text, bool bBody)
{
	size_t Index = Text.compare(0, 3, ByteOrderMark) == 0 ? 3 : 0;
	const auto NextSignificant = [&]()
	{
		while (Index < Text.size() &&
			(Text[Index] == ' ' || Text[Index] == '\t' || Text[Index] == '\r' || Text[Index] == '\n'))
		{
			++Index;
		}
		return Index < Text.size() ? Text[Index++] : '\0';
	};
	const char First = NextSignificant();
	if (First == '{')
	{
		return bBody ? "v1" : (Text.find("\"curve_names\"") != std::string::npos ? "rig" : "v2");
	}
	if (First == '[')
	{
		const char Second = NextSignificant();
		return Second == '{' || bBody ? "v2" : "v1";
	}
	return "v1";
}

std::vector<std::string> FZnClipFiles::FrameArrayBoneNames(const std::string& Text)
{
	std::vector<std::string> Names;
	const FJson Frames = ParseWithoutMark(Text);
	if (!Frames.is_array())
	{
		return Names;
	}
	for (const FJson& Frame : Frames)
	{
		const auto Rotations = Frame.is_object() ? Frame.find("rot") : Frame.end();
		if (Frame.is_object() && Rotations != Frame.end() && Rotations->is_object())
		{
			for (auto It = Rotations->begin(); It != Rotations->end(); ++It)
			{
				Names.push_back(It.key());
			}
			break;
		}
	}
	return Names;
}

FZnClipLoad FZnClipFiles::LoadBody(const std::string& Path, const std::string& Format, FZnBodyData& Out)
{
	std::string Text;
	FJson Root;
	FZnClipLoad Load;
	if (!ReadClip(Path, Format, true, Text, Root, Load))
	{
		return Load;
	}
	const FString Json = ToFString(Text);
	FZnBodyData Body;
	float TotalTime = 0.0f;
	if (Load.Format == "v2")
	{
		TArray<FString> Bones;
		for (const std::string& Bone : FrameArrayBoneNames(Text))
		{
			Bones.Add(ToFString(Bone));
		}
		UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(Json, Bones, Body, TotalTime);
	}
	else if (Load.Format == "recommend")
	{
		UZnDM_BpFuncLib::ParseJsonToBodydataRecommend(Json, Body, TotalTime);
	}
	else
	{
		UZnDM_BpFuncLib::ParseJsonToBodydata(Json, Body);
	}
	const bool bAnyBoneKey = std::any_of(
		Body.BoneCurves.begin(), Body.BoneCurves.end(), [](const FZnQuatCurve& Curve) { return Curve.Keys.Num() > 0; });
	const FVectorCurve& RootCurve = Body.RootPositionCurve;
	if (!bAnyBoneKey && RootCurve.FloatCurves[0].GetNumKeys() == 0)
	{
		return Failure(EZnClipError::Empty, Path + " holds an empty body clip (no frames)", Load.Format);
	}
	Out = std::move(Body);
	return Load;
}

FZnClipLoad FZnClipFiles::LoadFace(const std::string& Path, const std::string& Format, FZnFaceData& Out)
{
	std::string Text;
	FJson Root;
	FZnClipLoad Load;
	if (!ReadClip(Path, Format, false, Text, Root, Load))
	{
		return Load;
	}
	const FString Json = ToFString(Text);
	FZnFaceData Face;
	float TotalTime = 0.0f;
	if (Load.Format == "v2")
	{
		UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(Json, Face, TotalTime);
	}
	else if (Load.Format == "rig")
	{
		UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(Json, Face);
	}
	else
	{
		UZnDM_BpFuncLib::ParseJsonToFacedata(Json, Face);
	}
	// The frame decoders return their 51 or 52 curves even when not one frame fitted.
	const bool bAnyKey = std::any_of(Face.Curves.begin(), Face.Curves.end(),
		[](const FFloatCurve& Curve) { return Curve.FloatCurve.GetNumKeys() > 0; });
	if (!bAnyKey)
	{
		return Failure(EZnClipError::Empty, Path + " holds an empty face clip (no frames)", Load.Format);
	}
	Out = std::move(Face);
	return Load;
}
