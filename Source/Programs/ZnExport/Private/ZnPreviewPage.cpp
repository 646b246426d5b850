#include "ZnPreviewPage.h"

#include "ZnExportFiles.h"
#include "ZnExportNumbers.h"

#include <nlohmann/json.hpp>
#include <openssl/evp.h>

#include <cstring>
#include <filesystem>
#include <system_error>

extern const char* const ZnPreviewTemplateText;

namespace
{
// Rotations to 1e-5 move a fingertip by well under a pixel; the page stays small.
constexpr int RotationDecimals = 5;
constexpr int PositionDecimals = 2;
constexpr int WeightDecimals = 3;

bool StartsWith(const TArray<uint8>& Bytes, size_t Offset, const char* Signature)
{
	const size_t Length = std::strlen(Signature);
	return static_cast<size_t>(Bytes.Num()) >= Offset + Length &&
		std::memcmp(Bytes.GetData() + Offset, Signature, Length) == 0;
}

std::string Base64(const TArray<uint8>& Bytes)
{
	std::string Out(4 * ((static_cast<size_t>(Bytes.Num()) + 2) / 3) + 1, '\0');
	const int Written =
		EVP_EncodeBlock(reinterpret_cast<unsigned char*>(Out.data()), Bytes.GetData(), static_cast<int>(Bytes.Num()));
	Out.resize(static_cast<size_t>(Written));
	return Out;
}

void AppendNumbers(std::string& Out, const std::vector<double>& Values, int Decimals)
{
	Out += '[';
	for (size_t Index = 0; Index < Values.size(); ++Index)
	{
		if (Index)
		{
			Out += ',';
		}
		ZnExportNumbers::AppendFixed(Out, Values[Index], Decimals);
	}
	Out += ']';
}

std::string BodyJson(const FZnExportMotion& Body)
{
	nlohmann::ordered_json Joints = nlohmann::ordered_json::array();
	for (const FZnExportJoint& Joint : Body.Joints)
	{
		nlohmann::ordered_json Entry;
		Entry["name"] = Joint.Name;
		Entry["parent"] = Joint.Parent;
		Entry["offset"] = {Joint.Offset.X, Joint.Offset.Y, Joint.Offset.Z};
		Entry["end"] = Joint.bHasEndSite ? nlohmann::ordered_json{Joint.EndSite.X, Joint.EndSite.Y, Joint.EndSite.Z}
										 : nlohmann::ordered_json();
		Joints.push_back(Entry);
	}
	std::vector<double> Rotations;
	Rotations.reserve(Body.Rotations.size() * 4);
	for (const FQuat& Q : Body.Rotations)
	{
		Rotations.insert(Rotations.end(), {Q.X, Q.Y, Q.Z, Q.W});
	}
	std::vector<double> Root;
	Root.reserve(Body.RootPositions.size() * 3);
	for (const FVector& P : Body.RootPositions)
	{
		Root.insert(Root.end(), {P.X, P.Y, P.Z});
	}
	std::string Out = "{\"frames\":" + std::to_string(Body.FrameCount) + ",\"joints\":" + Joints.dump() + ",\"rot\":";
	AppendNumbers(Out, Rotations, RotationDecimals);
	Out += ",\"root\":";
	AppendNumbers(Out, Root, PositionDecimals);
	return Out + "}";
}

std::string FaceJson(const FZnExportFace& Face)
{
	std::string Out = "{\"frames\":" + std::to_string(Face.FrameCount) +
		",\"channels\":" + nlohmann::ordered_json(Face.Names).dump() + ",\"weights\":";
	AppendNumbers(Out, std::vector<double>(Face.Weights.begin(), Face.Weights.end()), WeightDecimals);
	return Out + "}";
}

// JSON inside a script element: "</" would end the element, and U+2028 and U+2029 end lines in
// older script parsers.
std::string ForScriptElement(std::string Json)
{
	const std::pair<const char*, const char*> Replacements[] = {
		{"</", "<\\/"}, {"\xE2\x80\xA8", "\\u2028"}, {"\xE2\x80\xA9", "\\u2029"}};
	for (const auto& Replacement : Replacements)
	{
		const size_t Length = std::strlen(Replacement.first);
		for (size_t At = Json.find(Replacement.first); At != std::string::npos;
			 At = Json.find(Replacement.first, At + std::strlen(Replacement.second)))
		{
			Json.replace(At, Length, Replacement.second);
		}
	}
	return Json;
}
} // namespace

bool FZnPreviewPage::AudioMimeType(const TArray<uint8>& Audio, std::string& OutMimeType)
{
	const uint8* Bytes = Audio.GetData();
	const bool bMpegFrame = Audio.Num() >= 2 && Bytes[0] == 0xFF && (Bytes[1] & 0xE0) == 0xE0;
	if (StartsWith(Audio, 0, "RIFF") && StartsWith(Audio, 8, "WAVE"))
	{
		OutMimeType = "audio/wav";
	}
	else if (StartsWith(Audio, 0, "ID3") || bMpegFrame)
	{
		OutMimeType = "audio/mpeg";
	}
	else if (StartsWith(Audio, 0, "OggS"))
	{
		OutMimeType = "audio/ogg";
	}
	else if (StartsWith(Audio, 0, "fLaC"))
	{
		OutMimeType = "audio/flac";
	}
	else if (StartsWith(Audio, 4, "ftyp"))
	{
		OutMimeType = "audio/mp4";
	}
	else
	{
		return false;
	}
	return true;
}

std::string FZnPreviewPage::ToHtml(
	const FZnExportMotion* Body, const FZnExportFace* Face, const std::string& AudioDataUri, const std::string& Title)
{
	std::string Data = "{\"fps\":" + std::to_string(FZnClipClock::FramesPerSecond) + ",\"title\":" +
		nlohmann::ordered_json(Title).dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
	Data += ",\"body\":" + (Body ? BodyJson(*Body) : std::string("null"));
	Data += ",\"face\":" + (Face ? FaceJson(*Face) : std::string("null"));
	Data += ",\"audio\":" + (AudioDataUri.empty() ? std::string("null") : "\"" + AudioDataUri + "\"") + "}";

	std::string Page = ZnPreviewTemplateText;
	const char Placeholder[] = "/*ZN_DATA*/";
	const size_t At = Page.find(Placeholder);
	Page.replace(At, sizeof(Placeholder) - 1, ForScriptElement(Data));
	return Page;
}

bool FZnPreviewPage::Write(const FZnPreviewInput& Input, const std::string& Directory, std::string& OutError)
{
	if (!Input.Body && !Input.Face)
	{
		OutError = "a preview needs a body clip, a face clip or both";
		return false;
	}
	FZnExportMotion Body;
	if (Input.Body && !FZnExportMotion::FromBody(*Input.Body, Body, OutError))
	{
		return false;
	}
	FZnExportFace Face;
	if (Input.Face && !FZnExportFace::FromFace(*Input.Face, Face, OutError))
	{
		return false;
	}
	std::string AudioDataUri;
	if (Input.Audio.Num() > 0)
	{
		std::string MimeType;
		if (!AudioMimeType(Input.Audio, MimeType))
		{
			OutError = "the audio is not WAV, MP3, Ogg, FLAC or MP4 audio";
			return false;
		}
		AudioDataUri = "data:" + MimeType + ";base64," + Base64(Input.Audio);
	}
	std::error_code Error;
	std::filesystem::create_directories(Directory, Error);
	if (Error || !std::filesystem::is_directory(Directory))
	{
		OutError = "cannot create " + Directory + (Error ? ": " + Error.message() : ": not a folder");
		return false;
	}
	const std::string Html =
		ToHtml(Input.Body ? &Body : nullptr, Input.Face ? &Face : nullptr, AudioDataUri, Input.Title);
	return FZnExportFiles::WriteWhole((std::filesystem::path(Directory) / "index.html").string(), Html, OutError);
}
