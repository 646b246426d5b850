// Writes seed corpora for the fuzz targets: short generated clips in every shape each target
// reads. Usage: ZnFuzzSeeds <corpus root>; creates <root>/<Target>/seed_*.json. Each file starts
// with the mode byte the targets expect ("u": UTF-8 text).
#include "ZnMotionGenerator.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace
{
void Write(const std::filesystem::path& Folder, const std::string& Name, const std::string& Text)
{
	std::filesystem::create_directories(Folder);
	std::ofstream Out(Folder / (Name + ".json"), std::ios::binary);
	// 'u' has its lowest bit clear: the targets read the rest as UTF-8.
	Out << 'u' << Text;
}
} // namespace

int main(int argc, char** argv)
{
	if (argc != 2)
	{
		std::fprintf(stderr, "usage: %s <corpus root>\n", argv[0]);
		return 2;
	}
	const std::filesystem::path Root = argv[1];
	for (int32 Frames : {0, 1, 3})
	{
		for (uint64 Seed : {1ull, 2ull})
		{
			const std::string Tag = std::to_string(Frames) + "_" + std::to_string(Seed);
			// Bodies without fingers keep the seeds small.
			const FZnGenBodyClip Body = FZnMotionGenerator::GenerateBody({Frames, Seed, Seed == 2, false});
			Write(Root / "BodyJsonFuzzer", "seed_" + Tag, FZnMotionGenerator::BodyToJson(Body));
			Write(Root / "BodyJsonV2Fuzzer", "seed_" + Tag,
				FZnMotionGenerator::BodyToJsonV2(Body, FZnMotionGenerator::ShuffledFrameOrder(Frames, Seed)));
			if (Frames > 0)
			{
				Write(Root / "BodyJsonV2Fuzzer", "seed_frame_" + Tag, FZnMotionGenerator::BodyFrameToJsonV2(Body, 0));
			}
			const FZnGenFaceClip Face = FZnMotionGenerator::GenerateFace({Frames, Seed, Seed == 2});
			Write(Root / "FaceJsonFuzzer", "seed_" + Tag, FZnMotionGenerator::FaceToJson(Face));
			Write(Root / "FaceJsonV2Fuzzer", "seed_" + Tag, FZnMotionGenerator::FaceToJsonV2(Face));
			if (Frames > 0)
			{
				Write(Root / "FaceJsonV2Fuzzer", "seed_frame_" + Tag, FZnMotionGenerator::FaceFrameToJsonV2(Face, 0));
			}
			Write(Root / "FaceJsonV2Fuzzer", "seed_rig_" + Tag,
				FZnMotionGenerator::ControlRigToJson(FZnMotionGenerator::GenerateControlRig({Frames, Seed, false}, 8)));
			Write(Root / "JsonReaderFuzzer", "seed_body_" + Tag, FZnMotionGenerator::BodyToJson(Body));
			// The window reader's inputs start with the window size: small ones cut often.
			Write(Root / "JsonWindowReaderFuzzer", "seed_body_" + Tag,
				std::string("\x07\x00", 2) + FZnMotionGenerator::BodyToJson(Body));
			Write(Root / "JsonWindowReaderFuzzer", "seed_face_" + Tag,
				std::string("\x03\x00", 2) + FZnMotionGenerator::FaceToJson(Face));
			Write(Root / "JsonReaderFuzzer", "seed_face_" + Tag, FZnMotionGenerator::FaceToJsonV2(Face));
			// A face clip's first frame is a tight number array as producers write them.
			const std::string FaceText = FZnMotionGenerator::FaceToJson(Face);
			if (Frames > 0)
			{
				Write(Root / "TightNumbersFuzzer", "seed_" + Tag, FaceText.substr(1, FaceText.find(']')));
			}
		}
	}
	// The reader also sees the service's other texts; a few hand-made shapes cover escapes and literals.
	Write(Root / "JsonReaderFuzzer", "seed_misc_1",
		R"({"code":0,"msg":"ok \u00e9\ud83d\ude00 \"q\"","data":{"url":"http://x/y","list":[true,false,null,-1.5e3,18446744073709551615]}})");
	Write(Root / "JsonReaderFuzzer", "seed_misc_2", R"([[],{},"",0,-0,1E-400])");
	Write(Root / "TightNumbersFuzzer", "seed_misc_1",
		"[0,-0,12.5,-0.0303169899,4.1980682e-05,1234567.123456789,9007199254740992]");
	Write(Root / "JsonWindowReaderFuzzer", "seed_misc_1",
		std::string("\x01\x00", 2) + R"({"a\"":[1,[2,{"b":"],"}]],"c":{"d":[3]},"e":[],"f":"x"})");
	// The local service's requests: a route byte, a flag byte, then query or name, 0x01, body.
	const std::filesystem::path Service = Root / "ZnLocalServiceFuzzer";
	const auto Request =
		[&Service](const std::string& Name, char Route, char Flags, const std::string& Head, const std::string& Body)
	{
		std::filesystem::create_directories(Service);
		std::ofstream(Service / (Name + ".bin"), std::ios::binary) << Route << Flags << Head << '\x01' << Body;
	};
	Request("token", 0, 2, "appid=demo&secret=demo-secret&timestamp=1700000000000&sign=", "");
	Request("token_post", 7, 0, "appid=demo&secret=x&timestamp=17&sign=abc", "");
	Request("text", 1, 1, "",
		R"({"draft_content": "hello there", "compress": false, "tts_config": {"tts_voice_name": "aixia", "tts_speed": 50,)"
		R"( "tts_volume": 50, "tts_fm": 50}, "face_config": {"face_type": 2, "gender": "male"},)"
		R"( "body_config": {"body_motion": 2, "body_head_x_rot": 0, "body_compress": false}})");
	Request("voice", 2, 1, "",
		R"({"audio_url": "http://127.0.0.1:9/files/seed.wav", "audio_format": "wav", "is_cache": 0,)"
		R"( "face_config": {"face_type": 3}, "body_config": {"body_fixed_hips": true}})");
	Request("answer", 3, 1, "", R"({"text": "what is it?", "face_shape": "v2", "body_shape": "v1"})");
	Request("speech", 4, 0, "",
		R"({"text": "a b", "voiceName": "v", "speed": "50", "volume": "50", "pitch": "50", "gender": "f", "tag": 1})");
	Request("file", 5, 0, "seed.wav", "");
	Request("path", 6, 0, "/files/../x", "");
	return 0;
}
