// The seed inputs of the fuzz targets: short generated clips in every shape each target reads,
// plus a few hand-made texts. ZnFuzzSeeds writes them as corpora; FuzzSeedTests checks that each
// one decodes to a non-empty record through its own target, so a seed the target rejects at
// once (a wrong mode byte, a shape the decoder does not read) fails a test instead of quietly
// wasting the fuzzer's time.
#pragma once

#include "ZnFuzzInput.h"
#include "ZnMotionGenerator.h"

#include <string>
#include <vector>

namespace ZnFuzzSeedSet
{
struct FSeed
{
	std::string Target;
	std::string Name;
	/** The whole input, laid out as the target reads it (ZnFuzzInput). */
	std::string Bytes;
};

inline std::vector<FSeed> Make()
{
	std::vector<FSeed> Seeds;
	const auto Add = [&Seeds](const std::string& Target, const std::string& Name, const std::string& Text,
						 uint8_t WindowBytes = 0) {
		Seeds.push_back({Target, Name, ZnFuzzInput::Encode(Target, Text, ZnFuzzInput::Utf8Text, WindowBytes)});
	};

	for (int32 Frames : {1, 3})
	{
		for (uint64 Seed : {1ull, 2ull})
		{
			const std::string Tag = std::to_string(Frames) + "_" + std::to_string(Seed);
			// Bodies without fingers keep the seeds small.
			const FZnGenBodyClip Body = FZnMotionGenerator::GenerateBody({Frames, Seed, Seed == 2, false});
			Add("BodyJsonFuzzer", "seed_" + Tag, FZnMotionGenerator::BodyToJson(Body));
			Add("BodyJsonV2Fuzzer", "seed_" + Tag,
				FZnMotionGenerator::BodyToJsonV2(Body, FZnMotionGenerator::ShuffledFrameOrder(Frames, Seed)));
			Add("BodyJsonV2Fuzzer", "seed_frame_" + Tag, FZnMotionGenerator::BodyFrameToJsonV2(Body, 0));
			const FZnGenFaceClip Face = FZnMotionGenerator::GenerateFace({Frames, Seed, Seed == 2});
			const std::string FaceText = FZnMotionGenerator::FaceToJson(Face);
			Add("FaceJsonFuzzer", "seed_" + Tag, FaceText);
			Add("FaceJsonV2Fuzzer", "seed_" + Tag, FZnMotionGenerator::FaceToJsonV2(Face));
			Add("FaceJsonV2Fuzzer", "seed_frame_" + Tag, FZnMotionGenerator::FaceFrameToJsonV2(Face, 0));
			Add("FaceJsonV2Fuzzer", "seed_rig_" + Tag,
				FZnMotionGenerator::ControlRigToJson(FZnMotionGenerator::GenerateControlRig({Frames, Seed, false}, 8)));
			Add("JsonReaderFuzzer", "seed_body_" + Tag, FZnMotionGenerator::BodyToJson(Body));
			Add("JsonReaderFuzzer", "seed_face_" + Tag, FZnMotionGenerator::FaceToJsonV2(Face));
			// Small windows cut the text often.
			Add("JsonWindowReaderFuzzer", "seed_body_" + Tag, FZnMotionGenerator::BodyToJson(Body), 7);
			Add("JsonWindowReaderFuzzer", "seed_face_" + Tag, FaceText, 3);
			// A face clip's first frame is a tight number array as producers write them.
			Add("TightNumbersFuzzer", "seed_" + Tag, FaceText.substr(1, FaceText.find(']')));
		}
	}
	// The reader also sees the service's other texts; a few hand-made shapes cover escapes and literals.
	Add("JsonReaderFuzzer", "seed_misc_1",
		R"({"code":0,"msg":"ok \u00e9\ud83d\ude00 \"q\"","data":{"url":"http://x/y","list":[true,false,null,-1.5e3,18446744073709551615]}})");
	Add("JsonReaderFuzzer", "seed_misc_2", R"([[],{},"",0,-0,1E-400])");
	Add("TightNumbersFuzzer", "seed_misc_1",
		"[0,-0,12.5,-0.0303169899,4.1980682e-05,1234567.123456789,9007199254740992]");
	Add("JsonWindowReaderFuzzer", "seed_misc_1", R"({"a\"":[1,[2,{"b":"],"}]],"c":{"d":[3]},"e":[],"f":"x"})", 1);
	return Seeds;
}
} // namespace ZnFuzzSeedSet
