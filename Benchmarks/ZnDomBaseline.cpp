#include "ZnDomBaseline.h"

#include "ZnHuman_Skeleton.h"
#include "ZnQuatCurve.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace
{
using FJson = nlohmann::json;

const FJson& Member(const FJson& Object, const char* Name)
{
	static const FJson Missing;
	if (!Object.is_object())
	{
		return Missing;
	}
	const auto Found = Object.find(Name);
	return Found == Object.end() ? Missing : *Found;
}

// The engine's accessors: a missing or mistyped member reads 0, "" or an empty array.
double NumberOf(const FJson& Object, const char* Name)
{
	const FJson& Value = Member(Object, Name);
	return Value.is_number() ? Value.get<double>() : 0.0;
}

FString StringOf(const FJson& Object, const char* Name)
{
	const FJson& Value = Member(Object, Name);
	if (!Value.is_string())
	{
		return FString();
	}
	const std::string& Utf8 = Value.get_ref<const std::string&>();
	const FUTF8ToTCHAR Converted(Utf8.data(), static_cast<int32>(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

const FJson& ArrayOf(const FJson& Object, const char* Name)
{
	static const FJson Empty = FJson::array();
	const FJson& Value = Member(Object, Name);
	return Value.is_array() ? Value : Empty;
}

FJson ParseDocument(const FString& Text)
{
	const TCHAR* Begin = *Text;
	// The engine's reader works on the wide text itself; so does this one (UTF-16 input adapter).
	return FJson::parse(Begin, Begin + Text.Len(), nullptr, false);
}

FQuat ServiceRotation(float X, float Y, float Z, float W)
{
	FQuat Q(Z, X, Y, W);
	const double SquareSum = Q.X * Q.X + Q.Y * Q.Y + Q.Z * Q.Z + Q.W * Q.W;
	if (SquareSum >= static_cast<double>(1e-8f))
	{
		const double Size = std::sqrt(SquareSum);
		Q.X /= Size;
		Q.Y /= Size;
		Q.Z /= Size;
		Q.W /= Size;
	}
	else
	{
		Q = FQuat(0.0, 0.0, 0.0, 1.0);
	}
	return Q;
}
} // namespace

void ZnDomBaseline::ParseJsonToBodydata(const FString& JsonStr, FZnBodyData& BodyData)
{
	if (JsonStr.IsEmpty())
	{
		return;
	}
	const FJson Root = ParseDocument(JsonStr);
	if (Root.is_discarded() || !Root.is_object())
	{
		return;
	}
	FZnBodyData Record;
	Record.totalTime = static_cast<float>(NumberOf(Root, "totalTime"));
	for (const FJson& Bone : ArrayOf(Root, "curves"))
	{
		if (!Bone.is_object())
		{
			return;
		}
		const FString Name = StringOf(Bone, "name");
		StringOf(Bone, "path");
		FZnQuatCurve Curve;
		TArray<FQuat> Frames;
		int32 Frame = 0;
		for (const FJson& Rotation : ArrayOf(Bone, "rotas"))
		{
			if (!Rotation.is_object())
			{
				return;
			}
			const FQuat Q = ServiceRotation(static_cast<float>(NumberOf(Rotation, "x")),
				static_cast<float>(NumberOf(Rotation, "y")), static_cast<float>(NumberOf(Rotation, "z")),
				static_cast<float>(NumberOf(Rotation, "w")));
			Frames.Add(Q);
			Curve.UpdateOrAddKey(static_cast<float>(Frame * 0.03333333333333333), Q, 0.0001f);
			++Frame;
		}
		Record.BoneNames.Add(Name);
		Record.BoneFrames.Add(Frames);
		Record.BoneCurves.Add(Curve);
	}
	const FJson& Hips = Member(Root, "Hips");
	if (!Hips.is_object())
	{
		return;
	}
	StringOf(Hips, "name");
	StringOf(Hips, "path");
	int32 Frame = 0;
	for (const FJson& Position : ArrayOf(Hips, "pos"))
	{
		if (!Position.is_object())
		{
			return;
		}
		const float X = static_cast<float>(NumberOf(Position, "x"));
		const float Y = static_cast<float>(NumberOf(Position, "y"));
		const float Z = static_cast<float>(NumberOf(Position, "z"));
		const FVector P(Z * 100.0f, X * 100.0f, Y * 100.0f);
		if (Frame == 0)
		{
			Record.RootStartPosition = P;
		}
		Record.RootPositionCurve.UpdateOrAddKey(P, static_cast<float>(Frame * 0.03333333333333333));
		++Frame;
	}
	BodyData = Record;
}

void ZnDomBaseline::ParseJsonToFacedata(const FString& JsonStr, FZnFaceData& FaceData)
{
	constexpr int32 ChannelCount = 51;
	if (JsonStr.IsEmpty())
	{
		return;
	}
	const FJson Root = ParseDocument(JsonStr);
	if (Root.is_discarded() || !Root.is_array())
	{
		return;
	}
	FZnFaceData Record;
	Record.totalTime = static_cast<float>(static_cast<double>(Root.size()) * (1.0 / 30.0));
	const ZnHuman_Skeleton Names;
	for (const FString& Name : Names.FaceCurveNames)
	{
		Record.CurveNames.Add(Name);
	}
	Record.CurveFrames.SetNum(ChannelCount);
	Record.Curves.SetNum(ChannelCount);
	int32 FrameIndex = 0;
	for (const FJson& Frame : Root)
	{
		const float Time = static_cast<float>(static_cast<double>(FrameIndex) * (1.0 / 30.0));
		++FrameIndex;
		if (!Frame.is_array())
		{
			continue;
		}
		int32 Channel = 0;
		for (const FJson& Weight : Frame)
		{
			if (Channel >= ChannelCount)
			{
				break;
			}
			float W = static_cast<float>(Weight.is_number() ? Weight.get<double>() : 0.0) * 0.01f;
			if (!(W >= 0.0f))
			{
				W = 0.0f;
			}
			else if (W >= 1.0f)
			{
				W = 1.0f;
			}
			Record.CurveFrames[Channel].Add(W);
			Record.Curves[Channel].UpdateOrAddKey(W, Time);
			++Channel;
		}
	}
	FaceData.id = Record.id;
	FaceData.totalTime = Record.totalTime;
	FaceData.CurveNames = Record.CurveNames;
	FaceData.CurveFrames = Record.CurveFrames;
	FaceData.Curves = Record.Curves;
}
