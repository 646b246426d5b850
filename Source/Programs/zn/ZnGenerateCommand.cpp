// zn generate: writes a generated clip (body, face or control-rig curves) in
// one of the service's JSON shapes, for trying the decoders, the local service
// and the sample command without network access. Same options, same bytes.
#include "ZnCommand.h"
#include "ZnMotionGenerator.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace
{
struct FZnGenerateOptions
{
	std::string Kind = "body";
	std::string Format = "v1";
	std::string Output;
	double Seconds = 10.0;
	uint64 Seed = 1;
	bool bNoTwist = false;
	bool bNoFingers = false;
	bool bOvershoot = false;
	bool bShuffle = false;
	int32 RigCurves = 51;
};

bool WriteFile(const std::filesystem::path& Path, const std::string& Text, ZnCommandContext& Ctx)
{
	std::ofstream Out(Path, std::ios::binary | std::ios::trunc);
	Out.write(Text.data(), static_cast<std::streamsize>(Text.size()));
	Out.close();
	if (!Out)
	{
		ZnPrint(Ctx.Err, "zn generate: cannot write %s\n", Path.string().c_str());
		return false;
	}
	return true;
}

// Whether Name is "frame_<digits>.json" with a frame number above Frames.
bool IsFrameFileBeyond(const std::string& Name, int32 Frames)
{
	static constexpr size_t PrefixLength = 6; // "frame_"
	static constexpr size_t SuffixLength = 5; // ".json"
	if (Name.size() <= PrefixLength + SuffixLength || Name.compare(0, PrefixLength, "frame_") != 0 ||
		Name.compare(Name.size() - SuffixLength, SuffixLength, ".json") != 0)
	{
		return false;
	}
	const char* const First = Name.data() + PrefixLength;
	const char* const Last = Name.data() + Name.size() - SuffixLength;
	if (!std::all_of(First, Last, [](char C) { return C >= '0' && C <= '9'; }))
	{
		return false;
	}
	uint64 Number = 0;
	const auto Parsed = std::from_chars(First, Last, Number);
	return Parsed.ec == std::errc::result_out_of_range || Number > static_cast<uint64>(Frames);
}

// One file per frame, named after the frame number (1-based, like the texts'
// frameIndex).
template <typename ClipType>
int WriteFrames(const FZnGenerateOptions& Options, ZnCommandContext& Ctx, const ClipType& Clip, int32 Frames,
	std::string (*FrameToJson)(const ClipType&, int32))
{
	const std::filesystem::path Folder = Options.Output;
	std::error_code Error;
	std::filesystem::create_directories(Folder, Error);
	if (Error)
	{
		ZnPrint(Ctx.Err, "zn generate: cannot create %s: %s\n", Folder.string().c_str(), Error.message().c_str());
		return ZnExit::Failed;
	}
	for (int32 Frame = 0; Frame < Frames; ++Frame)
	{
		char Name[32];
		std::snprintf(Name, sizeof(Name), "frame_%05d.json", Frame + 1);
		if (!WriteFile(Folder / Name, FrameToJson(Clip, Frame), Ctx))
		{
			return ZnExit::Failed;
		}
	}
	// Frames of an earlier, longer clip in the same folder would be read as part of this one;
	// files that are not frames are left alone.
	std::vector<std::filesystem::path> Stale;
	for (std::filesystem::directory_iterator It(Folder, Error), End; !Error && It != End; It.increment(Error))
	{
		if (IsFrameFileBeyond(It->path().filename().string(), Frames))
		{
			Stale.push_back(It->path());
		}
	}
	for (const std::filesystem::path& Path : Stale)
	{
		std::error_code Ignored;
		std::filesystem::remove(Path, Ignored);
	}
	ZnPrint(Ctx.Out, "wrote %d frame files to %s\n", Frames, Folder.string().c_str());
	return ZnExit::Success;
}

int RunGenerate(const FZnGenerateOptions& Options, ZnCommandContext& Ctx)
{
	const int32 Frames = static_cast<int32>(std::lround(Options.Seconds * 30.0));
	const std::vector<int32> Order =
		Options.bShuffle ? FZnMotionGenerator::ShuffledFrameOrder(Frames, Options.Seed) : std::vector<int32>();
	std::string Text;
	if (Options.Kind == "body")
	{
		const FZnGenBodyClip Clip =
			FZnMotionGenerator::GenerateBody({Frames, Options.Seed, !Options.bNoTwist, !Options.bNoFingers});
		if (Options.Format == "v2-frames")
		{
			return WriteFrames<FZnGenBodyClip>(Options, Ctx, Clip, Frames, &FZnMotionGenerator::BodyFrameToJsonV2);
		}
		Text = Options.Format == "v2" ? FZnMotionGenerator::BodyToJsonV2(Clip, Order)
									  : FZnMotionGenerator::BodyToJson(Clip);
	}
	else if (Options.Kind == "face")
	{
		const FZnGenFaceClip Clip = FZnMotionGenerator::GenerateFace({Frames, Options.Seed, Options.bOvershoot});
		if (Options.Format == "v2-frames")
		{
			return WriteFrames<FZnGenFaceClip>(Options, Ctx, Clip, Frames, &FZnMotionGenerator::FaceFrameToJsonV2);
		}
		Text = Options.Format == "v2" ? FZnMotionGenerator::FaceToJsonV2(Clip, Order)
									  : FZnMotionGenerator::FaceToJson(Clip);
	}
	else
	{
		Text = FZnMotionGenerator::ControlRigToJson(
			FZnMotionGenerator::GenerateControlRig({Frames, Options.Seed, Options.bOvershoot}, Options.RigCurves));
	}
	if (!WriteFile(Options.Output, Text, Ctx))
	{
		return ZnExit::Failed;
	}
	ZnPrint(Ctx.Out, "wrote %s: %s %s, %d frames, %zu bytes\n", Options.Output.c_str(), Options.Kind.c_str(),
		Options.Kind == "rig" ? "curves" : Options.Format.c_str(), Frames, Text.size());
	return ZnExit::Success;
}
} // namespace

static ZnCommandRegistrar GenerateRegistrar("generate",
	"Write a generated body, face or control-rig clip (30 fps) to a file",
	[](CLI::App& Command, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		// Validators go through transform(): the engine's check() macro would
		// swallow a call named check.
		auto Options = std::make_shared<FZnGenerateOptions>();
		Command.add_option("--kind", Options->Kind, "What to generate: body, face or rig (control-rig curves)")
			->transform(CLI::IsMember({"body", "face", "rig"}))
			->capture_default_str();
		Command
			.add_option("--format", Options->Format,
				"Body and face shape: v1 (the original files), v2 (one "
				"array of frame objects) or v2-frames (one "
				"file per frame in the OUTPUT folder); ignored for rig")
			->transform(CLI::IsMember({"v1", "v2", "v2-frames"}))
			->capture_default_str();
		Command.add_option("--seconds", Options->Seconds, "Length in seconds (30 frames each)")
			->transform(ZnNumberOption("a number of seconds from 0 to 3600", 0.0, 3600.0))
			->capture_default_str();
		// Plain decimal only: the number parser would otherwise read "-1" and anything past 2^64-1
		// as 2^64-1, and "010" as octal, so a different seed would quietly give another seed's clip.
		Command.add_option("--seed", Options->Seed, "Seed; the same seed gives the same clip")
			->transform(CLI::Validator(
				[](std::string& Text)
				{
					uint64 Value = 0;
					const char* const End = Text.data() + Text.size();
					const auto Parsed = std::from_chars(Text.data(), End, Value);
					const bool bDigitsOnly = !Text.empty() &&
						std::all_of(Text.begin(), Text.end(), [](char C) { return C >= '0' && C <= '9'; });
					if (!bDigitsOnly || Parsed.ec != std::errc() || Parsed.ptr != End)
					{
						return "must be a whole decimal number from 0 to 18446744073709551615, not '" + Text + "'";
					}
					Text = std::to_string(Value);
					return std::string();
				},
				"UINT"))
			->capture_default_str();
		Command.add_option("-o,--output", Options->Output, "File to write (a folder for v2-frames)")->required();
		Command.add_flag("--no-twist", Options->bNoTwist, "Body: leave out the fore-arm twist bones (52 bones)");
		Command.add_flag("--no-fingers", Options->bNoFingers, "Body: leave out the 30 finger bones");
		Command.add_flag("--overshoot", Options->bOvershoot, "Face: add a few weights below 0 and above 100 percent");
		Command.add_flag(
			"--shuffle", Options->bShuffle, "v2: write the frames out of order (each keeps its own frameIndex)");
		Command.add_option("--rig-curves", Options->RigCurves, "Rig: number of curves (1 to 51)")
			->transform(ZnNumberOption("a whole number from 1 to 51", 1.0, 51.0, true))
			->capture_default_str();
		return [Options, &Ctx]() { return RunGenerate(*Options, Ctx); };
	});
