// zn preview: a self-contained web page that shows a body clip as a moving skeleton, a face clip
// as a heat map and plays the sound in step (docs/exports.md).
#include "ZnCommand.h"

#include "ZnClipFiles.h"
#include "ZnExit.h"
#include "ZnPreviewPage.h"

#include <filesystem>
#include <memory>
#include <string>

namespace
{
struct FZnPreviewOptions
{
	std::string BodyFile;
	std::string FaceFile;
	std::string AudioFile;
	std::string BodyFormat = "auto";
	std::string FaceFormat = "auto";
	std::string Directory;
	std::string Title;
};

int RunPreview(const FZnPreviewOptions& Options, ZnCommandContext& Ctx)
{
	if (Options.BodyFile.empty() && Options.FaceFile.empty())
	{
		ZnPrint(Ctx.Err, "zn preview: give --body FILE, --face FILE or both\n");
		return ZnExit::Usage;
	}
	FZnBodyData Body;
	FZnFaceData Face;
	FZnPreviewInput Input;
	if (!Options.BodyFile.empty())
	{
		const FZnClipLoad Load = FZnClipFiles::LoadBody(Options.BodyFile, Options.BodyFormat, Body);
		if (!Load.Ok())
		{
			ZnPrint(Ctx.Err, "zn preview: %s\n", Load.Message.c_str());
			return Load.Error == EZnClipError::Unreadable ? ZnExit::Usage : ZnExit::Failed;
		}
		Input.Body = &Body;
	}
	if (!Options.FaceFile.empty())
	{
		const FZnClipLoad Load = FZnClipFiles::LoadFace(Options.FaceFile, Options.FaceFormat, Face);
		if (!Load.Ok())
		{
			ZnPrint(Ctx.Err, "zn preview: %s\n", Load.Message.c_str());
			return Load.Error == EZnClipError::Unreadable ? ZnExit::Usage : ZnExit::Failed;
		}
		Input.Face = &Face;
	}
	if (!Options.AudioFile.empty())
	{
		std::string Bytes;
		if (!FZnClipFiles::ReadText(Options.AudioFile, Bytes))
		{
			ZnPrint(Ctx.Err, "zn preview: cannot read %s\n", Options.AudioFile.c_str());
			return ZnExit::Usage;
		}
		Input.Audio.Append(reinterpret_cast<const uint8*>(Bytes.data()), static_cast<int32>(Bytes.size()));
	}
	Input.Title = !Options.Title.empty() ? Options.Title
										 : "Preview of " +
			std::filesystem::path(Options.BodyFile.empty() ? Options.FaceFile : Options.BodyFile).filename().string();
	std::string Error;
	if (!FZnPreviewPage::Write(Input, Options.Directory, Error))
	{
		ZnPrint(Ctx.Err, "zn preview: %s\n", Error.c_str());
		return ZnExit::Failed;
	}
	ZnPrint(Ctx.Out, "wrote %s\n", (std::filesystem::path(Options.Directory) / "index.html").string().c_str());
	return ZnExit::Success;
}
} // namespace

static ZnCommandRegistrar PreviewRegistrar("preview",
	"Write a self-contained web page that plays a body clip, a face clip and their sound together",
	[](CLI::App& Command, ZnCommandContext& Ctx) -> ZnCommandRun
	{
		auto Options = std::make_shared<FZnPreviewOptions>();
		Command.add_option("--body", Options->BodyFile, "Body animation JSON file");
		Command.add_option("--face", Options->FaceFile, "Face animation JSON file");
		Command.add_option("--audio", Options->AudioFile, "Speech audio (WAV, MP3, Ogg, FLAC or MP4 audio)");
		Command.add_option("--body-format", Options->BodyFormat, "auto, v1 or v2")
			->transform(CLI::IsMember({"auto", "v1", "v2"}))
			->capture_default_str();
		Command.add_option("--face-format", Options->FaceFormat, "auto, v1, v2 or rig")
			->transform(CLI::IsMember({"auto", "v1", "v2", "rig"}))
			->capture_default_str();
		Command.add_option("--title", Options->Title, "Heading of the page (default: the clip's file name)");
		Command.add_option("-o,--output", Options->Directory, "Folder to write index.html into (made if missing)")
			->required();
		return [Options, &Ctx]() { return RunPreview(*Options, Ctx); };
	});
