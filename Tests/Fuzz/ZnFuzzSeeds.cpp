// Writes the seed corpora of the fuzz targets (ZnFuzzSeedSet.h). Usage: ZnFuzzSeeds <corpus root>;
// creates <root>/<Target>/<seed name>.json, each file laid out as its target reads its input.
#include "ZnFuzzSeedSet.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

int main(int argc, char** argv)
{
	if (argc != 2)
	{
		std::fprintf(stderr, "usage: %s <corpus root>\n", argv[0]);
		return 2;
	}
	const std::filesystem::path Root = argv[1];
	for (const ZnFuzzSeedSet::FSeed& Seed : ZnFuzzSeedSet::Make())
	{
		const std::filesystem::path Folder = Root / Seed.Target;
		std::filesystem::create_directories(Folder);
		std::ofstream Out(Folder / (Seed.Name + ".json"), std::ios::binary);
		Out << Seed.Bytes;
		if (!Out)
		{
			std::fprintf(stderr, "cannot write %s\n", (Folder / (Seed.Name + ".json")).string().c_str());
			return 1;
		}
	}
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
