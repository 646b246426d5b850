// zn export: a body clip as BVH and a face clip in the Live Link Face CSV layout, so service
// output can be opened in the tools animators already use (docs/exports.md).
#include "ZnCommand.h"

#include "ZnBvhWriter.h"
#include "ZnClipFiles.h"
#include "ZnExit.h"
#include "ZnExportFiles.h"
#include "ZnFaceCsvWriter.h"

#include <memory>
#include <string>

namespace
{
struct FZnExportOptions
{
	std::string Input;
	std::string Output;
	std::string Format = "auto";
	std::string BodyFile;
	std::string BodyFormat = "auto";
};

int RunBvh(const FZnExportOptions& Options, ZnCommandContext& Ctx)
{
	FZnBodyData Body;
	const FZnClipLoad Load = FZnClipFiles::LoadBody(Options.Input, Options.Format, Body);
	if (!Load.Ok())
	{
		ZnPrint(Ctx.Err, "zn export bvh: %s\n", Load.Message.c_str());
		return Load.Error == EZnClipError::Unreadable ? ZnExit::Usage : ZnExit::Failed;
	}
	std::string Error;
	FZnExportMotion Motion;
	if (!FZnExportMotion::FromBody(Body, Motion, Error) ||
		!FZnExportFiles::WriteWhole(Options.Output, FZnBvhWriter::ToText(Motion), Error))
	{
		ZnPrint(Ctx.Err, "zn export bvh: %s\n", Error.c_str());
		return ZnExit::Failed;
	}
	for (const std::string& Bone : Motion.UnknownBones)
	{
		ZnPrint(Ctx.Err, "zn export bvh: bone %s is not part of the service skeleton; left out\n", Bone.c_str());
	}
	ZnPrint(Ctx.Out, "wrote %s: %s body, %d frames, %d joints\n", Options.Output.c_str(), Load.Format.c_str(),
		Motion.FrameCount, static_cast<int>(Motion.Joints.size()));
	return ZnExit::Success;
}

int RunCsv(const FZnExportOptions& Options, ZnCommandContext& Ctx)
{
	FZnFaceData Face;
	const FZnClipLoad Load = FZnClipFiles::LoadFace(Options.Input, Options.Format, Face);
	if (!Load.Ok())
	{
		ZnPrint(Ctx.Err, "zn export csv: %s\n", Load.Message.c_str());
		return Load.Error == EZnClipError::Unreadable ? ZnExit::Usage : ZnExit::Failed;
	}
	if (Load.Format == "rig")
	{
		ZnPrint(
			Ctx.Err, "zn export csv: %s holds control-rig curves, not blend-shape weights\n", Options.Input.c_str());
		return ZnExit::Failed;
	}
	std::unique_ptr<FZnBodyData> Body;
	if (!Options.BodyFile.empty())
	{
		Body = std::make_unique<FZnBodyData>();
		const FZnClipLoad BodyLoad = FZnClipFiles::LoadBody(Options.BodyFile, Options.BodyFormat, *Body);
		if (!BodyLoad.Ok())
		{
			ZnPrint(Ctx.Err, "zn export csv: %s\n", BodyLoad.Message.c_str());
			return BodyLoad.Error == EZnClipError::Unreadable ? ZnExit::Usage : ZnExit::Failed;
		}
	}
	std::string Error;
	FZnExportFace Frames;
	FZnExportMotion Motion;
	if (!FZnExportFace::FromFace(Face, Frames, Error) || (Body && !FZnExportMotion::FromBody(*Body, Motion, Error)) ||
		!FZnExportFiles::WriteWhole(Options.Output, FZnFaceCsvWriter::ToText(Frames, Body ? &Motion : nullptr), Error))
	{
		ZnPrint(Ctx.Err, "zn export csv: %s\n", Error.c_str());
		return ZnExit::Failed;
	}
	ZnPrint(Ctx.Out, "wrote %s: %s face, %d frames%s\n", Options.Output.c_str(), Load.Format.c_str(), Frames.FrameCount,
		Body ? ", head from the body clip" : "");
	return ZnExit::Success;
}
} // namespace

static ZnCommandRegistrar ExportRegistrar("export",
	"Write a body clip as BVH or a face clip as Live Link Face CSV for tools outside the engine",
	[](CLI::App& Command, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		Command.require_subcommand(1);
		auto Bvh = std::make_shared<FZnExportOptions>();
		CLI::App* BvhCommand = Command.add_subcommand("bvh", "A body clip as BVH (30 fps, centimetres, Y up)");
		BvhCommand->add_option("body", Bvh->Input, "Body animation JSON file")->required();
		BvhCommand->add_option("-o,--output", Bvh->Output, "BVH file to write")->required();
		BvhCommand->add_option("--format", Bvh->Format, "auto, v1 (one object) or v2 (array of frames)")
			->transform(CLI::IsMember({"auto", "v1", "v2"}))
			->capture_default_str();

		auto Csv = std::make_shared<FZnExportOptions>();
		CLI::App* CsvCommand =
			Command.add_subcommand("csv", "A face clip in the Live Link Face CSV layout (30 fps, weights 0..1)");
		CsvCommand->add_option("face", Csv->Input, "Face animation JSON file")->required();
		CsvCommand->add_option("-o,--output", Csv->Output, "CSV file to write")->required();
		CsvCommand->add_option("--format", Csv->Format, "auto, v1 (array of frames) or v2 (frame objects)")
			->transform(CLI::IsMember({"auto", "v1", "v2"}))
			->capture_default_str();
		CsvCommand->add_option("--body", Csv->BodyFile, "Body animation JSON file: the head rotation columns");
		CsvCommand->add_option("--body-format", Csv->BodyFormat, "auto, v1 or v2")
			->transform(CLI::IsMember({"auto", "v1", "v2"}))
			->capture_default_str();

		return [BvhCommand, Bvh, Csv, &Ctx]() { return BvhCommand->parsed() ? RunBvh(*Bvh, Ctx) : RunCsv(*Csv, Ctx); };
	});
