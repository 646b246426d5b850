// Every fuzz target's body by its program name, for the tests that replay saved inputs and check
// the seeds in the ordinary test build. A target added to Tests/Fuzz needs its row here: the
// replay test fails on a regression folder without one.
#pragma once

#include "ZnFuzzTargets.h"
#include "ZnServiceFuzzTargets.h"

#include <functional>
#include <map>
#include <string>

namespace ZnFuzzTargetTable
{
/** Runs a target on one input; returns how much it decoded (0 for targets that do not count). */
using FTarget = std::function<int32(const uint8_t*, size_t)>;

inline const std::map<std::string, FTarget>& Targets()
{
	const auto Uncounted = [](void (*Target)(const uint8_t*, size_t))
	{
		return [Target](const uint8_t* Data, size_t Size)
		{
			Target(Data, Size);
			return int32(0);
		};
	};
	static const std::map<std::string, FTarget> Table = {
		{"BodyJsonFuzzer", &ZnFuzz::BodyJson},
		{"BodyJsonV2Fuzzer", &ZnFuzz::BodyJsonV2},
		{"FaceJsonFuzzer", &ZnFuzz::FaceJson},
		{"FaceJsonV2Fuzzer", &ZnFuzz::FaceJsonV2},
		{"JsonReaderFuzzer", &ZnFuzz::JsonReader},
		{"JsonWindowReaderFuzzer", &ZnFuzz::JsonWindowReader},
		{"TightNumbersFuzzer", &ZnFuzz::TightNumbers},
		{"ZnMotionResponseFuzzer", Uncounted(&ZnServiceFuzz::MotionResponse)},
		{"ZnSpeechResponseFuzzer", Uncounted(&ZnServiceFuzz::SpeechResponse)},
		{"ZnFormResponseFuzzer", Uncounted(&ZnServiceFuzz::FormResponse)},
		{"ZnDigestResponseFuzzer", Uncounted(&ZnServiceFuzz::DigestResponse)},
		{"ZnRequestBodyFuzzer", Uncounted(&ZnServiceFuzz::RequestBody)},
		{"ZnByteArrayOpsFuzzer", Uncounted(&ZnServiceFuzz::ByteArrayOps)},
	};
	return Table;
}
} // namespace ZnFuzzTargetTable
