// zn sample: decodes a body and/or face file with the module's decoders and
// prints the pose at the given times: every bone's rotation from its curve's
// Evaluate, the root position, and every face curve's value, so a person can
// see what a character does at any moment of a clip.
#include "ZnCommand.h"
#include "ZnHost.h"

#include "ZnClipFiles.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnExportMotion.h"
#include "ZnHuman_Skeleton.h"
#include "ZnQuatCurve.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace
{
struct FZnSampleOptions
{
	std::string BodyFile;
	std::string FaceFile;
	std::string BodyFormat = "auto";
	std::string FaceFormat = "auto";
	std::vector<double> Times;
	std::vector<std::string> Bones;
	bool bJson = false;
};

FString ToFString(const std::string& Utf8)
{
	const FUTF8ToTCHAR Converted(Utf8.data(), static_cast<int32>(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

std::string ToUtf8(const FString& Text)
{
	const FTCHARToUTF8 Converted(*Text, Text.Len());
	return std::string(Converted.Get(), static_cast<size_t>(Converted.Length()));
}

struct FZnSampledBody
{
	std::string Format;
	FZnBodyData Data;
	// The bones to print (indices into Data), in the order --bones names them or else all of them.
	std::vector<int32> Printed;
};

struct FZnSampledFace
{
	std::string Format;
	FZnFaceData Data;
	std::vector<std::string> Names;
};

bool SameBoneName(const std::string& A, const std::string& B)
{
	// Bone names compare without regard to case, as the frame decoder compares them.
	return A.size() == B.size() &&
		std::equal(A.begin(), A.end(), B.begin(),
			[](char X, char Y)
			{
				const auto Lower = [](char C) { return C >= 'A' && C <= 'Z' ? char(C - 'A' + 'a') : C; };
				return Lower(X) == Lower(Y);
			});
}

// ZnExit::Usage when the file cannot be read, ZnExit::Failed when it decodes to nothing usable.
int DecodeBody(const FZnSampleOptions& Options, FZnSampledBody& Out, ZnCommandContext& Ctx)
{
	std::string Text;
	std::string Error;
	if (!ZnHost::ReadInputFile(Options.BodyFile, Text, Error))
	{
		ZnPrint(Ctx.Err, "zn sample: %s\n", Error.c_str());
		return ZnExit::Usage;
	}
	Out.Format = Options.BodyFormat == "auto" ? FZnClipFiles::DetectFormat(Text, true) : Options.BodyFormat;
	const FString Json = ToFString(Text);
	float TotalTime = 0.0f;
	if (Out.Format == "v2")
	{
		TArray<FString> Bones;
		const std::vector<std::string> FileBones = FZnClipFiles::FrameArrayBoneNames(Text);
		if (!FileBones.empty())
		{
			for (const std::string& Bone : FileBones)
			{
				Bones.Add(ToFString(Bone));
			}
		}
		else if (Options.Bones.empty())
		{
			const ZnHuman_Skeleton Skeleton;
			for (const FString& Bone : Skeleton.DMBodyBonesWithTwist)
			{
				Bones.Add(Bone);
			}
			for (const FString& Bone : Skeleton.DMFingerBones)
			{
				Bones.Add(Bone);
			}
		}
		else
		{
			for (const std::string& Bone : Options.Bones)
			{
				Bones.Add(ToFString(Bone));
			}
		}
		UZnDM_BpFuncLib::ParseJsonToBodydataV2Response(Json, Bones, Out.Data, TotalTime);
	}
	else if (Out.Format == "recommend")
	{
		UZnDM_BpFuncLib::ParseJsonToBodydataRecommend(Json, Out.Data, TotalTime);
	}
	else
	{
		UZnDM_BpFuncLib::ParseJsonToBodydata(Json, Out.Data);
	}
	if (Out.Data.BoneNames.Num() == 0)
	{
		ZnPrint(
			Ctx.Err, "zn sample: no bones decoded from %s (format %s)\n", Options.BodyFile.c_str(), Out.Format.c_str());
		return ZnExit::Failed;
	}
	const bool bAnyBoneKey = std::any_of(Out.Data.BoneCurves.begin(), Out.Data.BoneCurves.end(),
		[](const FZnQuatCurve& Curve) { return Curve.Keys.Num() > 0; });
	if (!bAnyBoneKey && Out.Data.RootPositionCurve.GetNumKeys() == 0)
	{
		ZnPrint(
			Ctx.Err, "zn sample: no keys decoded from %s (format %s)\n", Options.BodyFile.c_str(), Out.Format.c_str());
		return ZnExit::Failed;
	}
	const int32 BoneCount = std::min(Out.Data.BoneNames.Num(), Out.Data.BoneCurves.Num());
	for (const std::string& Wanted : Options.Bones)
	{
		int32 Found = INDEX_NONE;
		for (int32 Bone = 0; Bone < BoneCount && Found == INDEX_NONE; ++Bone)
		{
			Found = SameBoneName(ToUtf8(Out.Data.BoneNames[Bone]), Wanted) ? Bone : INDEX_NONE;
		}
		if (Found == INDEX_NONE)
		{
			ZnPrint(Ctx.Err, "zn sample: no bone %s in %s\n", Wanted.c_str(), Options.BodyFile.c_str());
			return ZnExit::Failed;
		}
		if (std::find(Out.Printed.begin(), Out.Printed.end(), Found) == Out.Printed.end())
		{
			Out.Printed.push_back(Found);
		}
	}
	if (Options.Bones.empty())
	{
		for (int32 Bone = 0; Bone < BoneCount; ++Bone)
		{
			Out.Printed.push_back(Bone);
		}
	}
	return ZnExit::Success;
}

// ZnExit::Usage when the file cannot be read, ZnExit::Failed when it decodes to nothing usable.
int DecodeFace(const FZnSampleOptions& Options, FZnSampledFace& Out, ZnCommandContext& Ctx)
{
	std::string Text;
	std::string Error;
	if (!ZnHost::ReadInputFile(Options.FaceFile, Text, Error))
	{
		ZnPrint(Ctx.Err, "zn sample: %s\n", Error.c_str());
		return ZnExit::Usage;
	}
	Out.Format = Options.FaceFormat == "auto" ? FZnClipFiles::DetectFormat(Text, false) : Options.FaceFormat;
	const FString Json = ToFString(Text);
	float TotalTime = 0.0f;
	if (Out.Format == "v2")
	{
		UZnDM_BpFuncLib::ParseJsonToFacedataV2Response(Json, Out.Data, TotalTime);
	}
	else if (Out.Format == "rig")
	{
		UZnDM_BpFuncLib::ParseJsonToFaceControlRigData(Json, Out.Data);
	}
	else
	{
		UZnDM_BpFuncLib::ParseJsonToFacedata(Json, Out.Data);
	}
	// Version 2 records carry no names; their channels are the face rig's in the usual order.
	Out.Names = FZnExportFace::ChannelNames(Out.Data);
	if (Out.Data.Curves.Num() == 0)
	{
		ZnPrint(Ctx.Err, "zn sample: no curves decoded from %s (format %s)\n", Options.FaceFile.c_str(),
			Out.Format.c_str());
		return ZnExit::Failed;
	}
	// The frame decoders give their 51 or 52 curves even when not one frame fitted (a body file,
	// or a face file read in the other shape); sampling those would show a neutral face.
	const bool bAnyKey = std::any_of(Out.Data.Curves.begin(), Out.Data.Curves.end(),
		[](const FFloatCurve& Curve) { return Curve.FloatCurve.GetNumKeys() > 0; });
	if (!bAnyKey)
	{
		ZnPrint(
			Ctx.Err, "zn sample: no keys decoded from %s (format %s)\n", Options.FaceFile.c_str(), Out.Format.c_str());
		return ZnExit::Failed;
	}
	return ZnExit::Success;
}

// Ordered, so bones and curves keep the decoders' order as in the text form.
nlohmann::ordered_json SampleAsJson(const FZnSampledBody* Body, const FZnSampledFace* Face, float Time)
{
	nlohmann::ordered_json Pose = nlohmann::ordered_json::object();
	Pose["time"] = Time;
	if (Body)
	{
		const FVectorCurve& Root = Body->Data.RootPositionCurve;
		Pose["root"] = {Root.FloatCurves[0].Eval(Time), Root.FloatCurves[1].Eval(Time), Root.FloatCurves[2].Eval(Time)};
		nlohmann::ordered_json Bones = nlohmann::ordered_json::object();
		for (const int32 Bone : Body->Printed)
		{
			const FQuat Q = Body->Data.BoneCurves[Bone].Evaluate(Time, 0.0001f);
			Bones[ToUtf8(Body->Data.BoneNames[Bone])] = {Q.X, Q.Y, Q.Z, Q.W};
		}
		Pose["bones"] = Bones;
	}
	if (Face)
	{
		nlohmann::ordered_json Curves = nlohmann::ordered_json::object();
		for (int32 Curve = 0; Curve < Face->Data.Curves.Num(); ++Curve)
		{
			Curves[Face->Names[static_cast<size_t>(Curve)]] = Face->Data.Curves[Curve].FloatCurve.Eval(Time);
		}
		Pose["face"] = Curves;
	}
	return Pose;
}

void PrintSample(const FZnSampledBody* Body, const FZnSampledFace* Face, float Time, ZnCommandContext& Ctx)
{
	ZnPrint(Ctx.Out, "time %.4f s\n", Time);
	if (Body)
	{
		const FVectorCurve& Root = Body->Data.RootPositionCurve;
		ZnPrint(Ctx.Out, "  root position (cm)  %10.4f %10.4f %10.4f\n", Root.FloatCurves[0].Eval(Time),
			Root.FloatCurves[1].Eval(Time), Root.FloatCurves[2].Eval(Time));
		ZnPrint(Ctx.Out, "  %-20s %10s %10s %10s %10s\n", "bone", "X", "Y", "Z", "W");
		for (const int32 Bone : Body->Printed)
		{
			const FQuat Q = Body->Data.BoneCurves[Bone].Evaluate(Time, 0.0001f);
			ZnPrint(Ctx.Out, "  %-20s %10.6f %10.6f %10.6f %10.6f\n", ToUtf8(Body->Data.BoneNames[Bone]).c_str(), Q.X,
				Q.Y, Q.Z, Q.W);
		}
	}
	if (Face)
	{
		ZnPrint(Ctx.Out, "  %-20s %10s\n", "face curve", "value");
		for (int32 Curve = 0; Curve < Face->Data.Curves.Num(); ++Curve)
		{
			ZnPrint(Ctx.Out, "  %-20s %10.6f\n", Face->Names[static_cast<size_t>(Curve)].c_str(),
				Face->Data.Curves[Curve].FloatCurve.Eval(Time));
		}
	}
}

int RunSample(const FZnSampleOptions& Options, ZnCommandContext& Ctx)
{
	if (Options.BodyFile.empty() && Options.FaceFile.empty())
	{
		ZnPrint(Ctx.Err, "zn sample: give --body FILE, --face FILE or both\n");
		return ZnExit::Usage;
	}
	if (!Options.Bones.empty() && Options.BodyFile.empty())
	{
		ZnPrint(Ctx.Err, "zn sample: --bones needs --body FILE\n");
		return ZnExit::Usage;
	}
	std::unique_ptr<FZnSampledBody> Body;
	std::unique_ptr<FZnSampledFace> Face;
	if (!Options.BodyFile.empty())
	{
		Body = std::make_unique<FZnSampledBody>();
		if (const int Status = DecodeBody(Options, *Body, Ctx); Status != ZnExit::Success)
		{
			return Status;
		}
	}
	if (!Options.FaceFile.empty())
	{
		Face = std::make_unique<FZnSampledFace>();
		if (const int Status = DecodeFace(Options, *Face, Ctx); Status != ZnExit::Success)
		{
			return Status;
		}
	}
	if (Options.bJson)
	{
		nlohmann::ordered_json Samples = nlohmann::ordered_json::array();
		for (double Time : Options.Times)
		{
			Samples.push_back(SampleAsJson(Body.get(), Face.get(), static_cast<float>(Time)));
		}
		Ctx.Out << Samples.dump(1, '\t') << "\n";
		return ZnExit::Success;
	}
	if (Body)
	{
		ZnPrint(Ctx.Out, "body %s: %s, %d bones, totalTime %g s\n", Options.BodyFile.c_str(), Body->Format.c_str(),
			Body->Data.BoneNames.Num(), Body->Data.totalTime);
	}
	if (Face)
	{
		ZnPrint(Ctx.Out, "face %s: %s, %d curves, totalTime %g s\n", Options.FaceFile.c_str(), Face->Format.c_str(),
			Face->Data.Curves.Num(), Face->Data.totalTime);
	}
	for (double Time : Options.Times)
	{
		PrintSample(Body.get(), Face.get(), static_cast<float>(Time), Ctx);
	}
	return ZnExit::Success;
}
} // namespace

static ZnCommandRegistrar SampleRegistrar("sample",
	"Decode a body and/or face file and print the pose (bone rotations, root "
	"position, face curves) at given times",
	[](CLI::App& Command, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		// Validators go through transform(): the engine's check() macro would
		// swallow a call named check.
		auto Options = std::make_shared<FZnSampleOptions>();
		Command.add_option("--body", Options->BodyFile, "Body animation JSON file")->transform(CLI::ExistingFile);
		Command.add_option("--face", Options->FaceFile, "Face animation JSON file")->transform(CLI::ExistingFile);
		Command
			.add_option("--body-format", Options->BodyFormat,
				"auto, v1 (ParseJsonToBodydata), recommend "
				"(ParseJsonToBodydataRecommend) or v2 (frame array)")
			->transform(CLI::IsMember({"auto", "v1", "recommend", "v2"}))
			->capture_default_str();
		Command
			.add_option("--face-format", Options->FaceFormat,
				"auto, v1 (array of frames), v2 (frame objects) or rig "
				"(control-rig curves)")
			->transform(CLI::IsMember({"auto", "v1", "v2", "rig"}))
			->capture_default_str();
		// A curve cannot be sampled at a time that is not a number, infinities (and numbers too large
		// for a float) are no time of a clip, and the option parser would read an empty word as 0.
		Command.add_option("-t,--time", Options->Times, "Time in seconds; repeat for several")
			->required()
			->transform(ZnNumberOption(
				"a finite number of seconds", -std::numeric_limits<float>::max(), std::numeric_limits<float>::max()));
		Command
			.add_option("--bones", Options->Bones,
				"Only these bones (comma-separated, any letter case; default: every bone of the file)")
			->delimiter(',');
		Command.add_flag("--json", Options->bJson, "Print the samples as JSON");
		return [Options, &Ctx]() { return RunSample(*Options, Ctx); };
	});
