#include "ZnServiceBodies.h"

#include "ZnMotionContentSource.h"

#include <fast_float/fast_float.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace
{
using FJson = nlohmann::json;

// Member lookups that remember the first thing wrong, so a reader can run all its lookups and
// check once.
class FBodyReader
{
public:
	bool Parse(const std::string& Body)
	{
		Root = FJson::parse(Body, nullptr, false);
		if (Root.is_discarded())
		{
			Error = "the body is not valid JSON";
			return false;
		}
		if (!Root.is_object())
		{
			Error = "the body is not a JSON object";
			return false;
		}
		return true;
	}

	// Root[Name] or Root[Group][Name]; null when absent. A group that is not an object is an error.
	const FJson* Find(const char* Group, const char* Name)
	{
		const FJson* Holder = &Root;
		if (Group)
		{
			const auto It = Root.find(Group);
			if (It == Root.end() || It->is_null())
			{
				return nullptr;
			}
			if (!It->is_object())
			{
				Fail(std::string("\"") + Group + "\" must be an object");
				return nullptr;
			}
			Holder = &*It;
		}
		const auto It = Holder->find(Name);
		return It == Holder->end() ? nullptr : &*It;
	}

	std::string String(const char* Group, const char* Name, bool bRequired, const std::string& Default = "")
	{
		const FJson* Value = Find(Group, Name);
		if (!Value)
		{
			if (bRequired)
			{
				Fail("\"" + PathOf(Group, Name) + "\" is missing");
			}
			return Default;
		}
		if (!Value->is_string())
		{
			Fail("\"" + PathOf(Group, Name) + "\" must be a string");
			return Default;
		}
		return Value->get<std::string>();
	}

	// A number (or, with bStringToo, a string holding a decimal number), truncated toward zero.
	int64_t Integer(const char* Group, const char* Name, int64_t Default, bool bStringToo = false)
	{
		const FJson* Value = Find(Group, Name);
		if (!Value)
		{
			return Default;
		}
		double Number = 0.0;
		if (Value->is_number())
		{
			Number = Value->get<double>();
		}
		else if (bStringToo && Value->is_string())
		{
			const std::string Text = Value->get<std::string>();
			const char* End = Text.data() + Text.size();
			// Not std::from_chars: libc++ before 20 cannot read floating point with it.
			const auto Result = fast_float::from_chars(Text.data(), End, Number);
			if (Text.empty() || Result.ec != std::errc() || Result.ptr != End)
			{
				Fail("\"" + PathOf(Group, Name) + "\" must hold a number, not \"" + Text + "\"");
				return Default;
			}
		}
		else
		{
			Fail("\"" + PathOf(Group, Name) + "\" must be a number");
			return Default;
		}
		if (!std::isfinite(Number) || std::fabs(Number) > 9.0e15)
		{
			Fail("\"" + PathOf(Group, Name) + "\" is out of range");
			return Default;
		}
		return int64_t(std::trunc(Number));
	}

	int32_t Percent(const char* Group, const char* Name, bool bStringToo = false)
	{
		return int32_t(std::clamp<int64_t>(Integer(Group, Name, 50, bStringToo), 0, 100));
	}

	void Shapes(FZnSpeechRequest& Out)
	{
		const int64_t FaceType = Integer("face_config", "face_type", 1);
		Out.FaceShape = FaceType == 2 ? EZnFaceShape::V2 : FaceType == 3 ? EZnFaceShape::ControlRig : EZnFaceShape::V1;
		Out.BodyShape = Integer("body_config", "body_motion", 0) == 2 ? EZnBodyShape::V2 : EZnBodyShape::V1;

		const std::string Face = String(nullptr, "face_shape", false, "-");
		if (Face == "v1" || Face == "v2" || Face == "control_rig")
		{
			Out.FaceShape = Face == "v1" ? EZnFaceShape::V1
				: Face == "v2"			 ? EZnFaceShape::V2
										 : EZnFaceShape::ControlRig;
		}
		else if (Face != "-")
		{
			Fail("\"face_shape\" must be \"v1\", \"v2\" or \"control_rig\"");
		}
		const std::string Body = String(nullptr, "body_shape", false, "-");
		if (Body == "v1" || Body == "v2")
		{
			Out.BodyShape = Body == "v1" ? EZnBodyShape::V1 : EZnBodyShape::V2;
		}
		else if (Body != "-")
		{
			Fail("\"body_shape\" must be \"v1\" or \"v2\"");
		}
	}

	void CheckSaid(const std::string& Name, const std::string& Text)
	{
		const int32_t Words = FZnMotionContentSource::CountWords(Text);
		if (Words == 0)
		{
			Fail("\"" + Name + "\" has no words to say");
		}
		else if (Words > FZnServiceBodies::MostWords)
		{
			Fail("\"" + Name + "\" has " + std::to_string(Words) + " words; at most " +
				std::to_string(FZnServiceBodies::MostWords) + " are said in one request");
		}
	}

	void Fail(const std::string& Message)
	{
		if (Error.empty())
		{
			Error = Message;
		}
	}

	bool Finish(std::string& OutError) const
	{
		OutError = Error;
		return Error.empty();
	}

	FJson Root;
	std::string Error;

private:
	static std::string PathOf(const char* Group, const char* Name)
	{
		return Group ? std::string(Group) + "." + Name : std::string(Name);
	}
};

// The prosody members of "tts_config", shared by text broadcast and answer collection.
void ReadTtsConfig(FBodyReader& Reader, FZnSpeechRequest& Out)
{
	Out.VoiceName = Reader.String("tts_config", "tts_voice_name", false);
	Out.Speed = Reader.Percent("tts_config", "tts_speed");
	Out.Volume = Reader.Percent("tts_config", "tts_volume");
	Out.Pitch = Reader.Percent("tts_config", "tts_fm");
}
} // namespace

uint64_t FZnServiceBodies::SeedOf(const std::string& Text)
{
	// FNV-1a: stable across runs and machines, unlike std::hash.
	uint64_t Hash = 1469598103934665603ull;
	for (unsigned char C : Text)
	{
		Hash = (Hash ^ C) * 1099511628211ull;
	}
	return Hash | 1;
}

namespace
{
// The readers of bodies with a text to say: TextMember is that text; Fill reads the rest.
template <typename FillType>
bool ReadSaid(const std::string& Body, const char* TextMember, FZnSpeechRequest& Out, std::string& Error, FillType Fill)
{
	FBodyReader Reader;
	if (!Reader.Parse(Body))
	{
		return Reader.Finish(Error);
	}
	FZnSpeechRequest Request;
	Request.Text = Reader.String(nullptr, TextMember, true);
	Fill(Reader, Request);
	Reader.Shapes(Request);
	if (Reader.Error.empty())
	{
		Reader.CheckSaid(TextMember, Request.Text);
	}
	Request.Seed = FZnServiceBodies::SeedOf(Request.Text);
	if (!Reader.Finish(Error))
	{
		return false;
	}
	Out = std::move(Request);
	return true;
}
} // namespace

bool FZnServiceBodies::ReadTextBroadcast(const std::string& Body, FZnSpeechRequest& Out, std::string& Error)
{
	return ReadSaid(Body, "draft_content", Out, Error,
		[](FBodyReader& Reader, FZnSpeechRequest& Request)
		{
			ReadTtsConfig(Reader, Request);
			Request.Gender = Reader.String("face_config", "gender", false);
		});
}

bool FZnServiceBodies::ReadAnswerCollect(const std::string& Body, FZnSpeechRequest& Out, std::string& Error)
{
	return ReadSaid(Body, "text", Out, Error,
		[](FBodyReader& Reader, FZnSpeechRequest& Request)
		{
			Reader.String(nullptr, "audio_format", false);
			ReadTtsConfig(Reader, Request);
			Request.Gender = Reader.String("face_config", "face_gender", false);
		});
}

bool FZnServiceBodies::ReadVoiceBroadcast(
	const std::string& Body, std::string& AudioUrl, FZnSpeechRequest& Out, std::string& Error)
{
	FBodyReader Reader;
	if (!Reader.Parse(Body))
	{
		return Reader.Finish(Error);
	}
	FZnSpeechRequest Request;
	const std::string Url = Reader.String(nullptr, "audio_url", true);
	Reader.String(nullptr, "audio_format", false);
	Request.Gender = Reader.String("face_config", "face_gender", false);
	Reader.Shapes(Request);
	if (Reader.Error.empty() && Url.empty())
	{
		Reader.Fail("\"audio_url\" is empty");
	}
	Request.Seed = SeedOf(Url);
	if (!Reader.Finish(Error))
	{
		return false;
	}
	AudioUrl = Url;
	Out = std::move(Request);
	return true;
}

bool FZnServiceBodies::ReadSpeech(const std::string& Body, FZnSpeechRequest& Out, std::string& Error)
{
	return ReadSaid(Body, "text", Out, Error,
		[](FBodyReader& Reader, FZnSpeechRequest& Request)
		{
			Request.VoiceName = Reader.String(nullptr, "voiceName", false);
			Request.Speed = Reader.Percent(nullptr, "speed", true);
			Request.Volume = Reader.Percent(nullptr, "volume", true);
			Request.Pitch = Reader.Percent(nullptr, "pitch", true);
			Request.Gender = Reader.String(nullptr, "gender", false);
			Reader.Integer(nullptr, "tag", 0);
		});
}
