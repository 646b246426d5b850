// Decoding and sampling benchmarks. Each decoder runs side by side with a document-based
// reference decoder (the baseline) and a bare simdjson pass over the same text (the floor), on
// generated clips of 10 s at 30 fps. Before a contender is timed its output is compared with the
// reference's; a mismatch stops the program with an error instead of timing a wrong answer.
//
// Run: ZnDecodeBenchmarks [--benchmark_filter=...] ; the ratios and the peak memory figures are
// printed after Google Benchmark's table.
#include "ZnBenchmarkSupport.h"
#include "ZnCountingAllocator.h"
#include "ZnDomBaseline.h"
#include "ZnJsonFloor.h"
#include "ZnMotionGenerator.h"
#include "ZnRecordCompare.h"

#include "ZnBodyDataDecoder.h"
#include "ZnDM_BpFuncLib.h"
#include "ZnFaceDataDecoder.h"
#include "ZnQuatCurve.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace
{
constexpr int32 ClipFrames = 300; // 10 s at 30 fps

struct FZnClipText
{
	std::string Utf8;
	FString Wide;
	simdjson::padded_string Padded;
	int64 Items = 0;
	FZnJsonFloorResult FloorReference;
};

FZnClipText BodyClip;
FZnClipText FaceClip;
FZnBodyData BodyReference;
FZnFaceData FaceReference;

// What the floor must find: every number of the text, summed in document order by an independent parser.
void SumNumbers(const nlohmann::ordered_json& Value, FZnJsonFloorResult& Result)
{
	if (Value.is_number())
	{
		Result.Sum += Value.get<double>();
		++Result.Count;
	}
	else if (Value.is_array() || Value.is_object())
	{
		for (const nlohmann::ordered_json& Child : Value)
		{
			SumNumbers(Child, Result);
		}
	}
}

void PrepareClip(FZnClipText& Clip, std::string Utf8, int64 Items)
{
	Clip.Utf8 = std::move(Utf8);
	Clip.Wide = ZnBenchWiden(Clip.Utf8);
	Clip.Padded = simdjson::padded_string(Clip.Utf8);
	Clip.Items = Items;
	// Members in text order (ordered_json), so the sum adds in the same order as the floor.
	SumNumbers(nlohmann::ordered_json::parse(Clip.Utf8), Clip.FloorReference);
}

void PrepareClips()
{
	// The benchmark skeleton: 22 body bones and 30 finger bones, no twist bones.
	const FZnGenBodyClip Body = FZnMotionGenerator::GenerateBody({ClipFrames, 7, false, true});
	PrepareClip(BodyClip, FZnMotionGenerator::BodyToJson(Body), static_cast<int64>(Body.BoneNames.size()) * ClipFrames);
	const FZnGenFaceClip Face = FZnMotionGenerator::GenerateFace({ClipFrames, 7, false});
	PrepareClip(FaceClip, FZnMotionGenerator::FaceToJson(Face), static_cast<int64>(51) * ClipFrames);

	ZnDomBaseline::ParseJsonToBodydata(BodyClip.Wide, BodyReference);
	ZnDomBaseline::ParseJsonToFacedata(FaceClip.Wide, FaceReference);
	if (BodyReference.BoneNames.Num() != 52 || BodyReference.BoneFrames[0].Num() != ClipFrames)
	{
		ZnBenchFail("the reference body decoder did not produce 52 bones of 300 frames");
	}
	if (FaceReference.CurveFrames.Num() != 51 || FaceReference.CurveFrames[0].Num() != ClipFrames)
	{
		ZnBenchFail("the reference face decoder did not produce 51 curves of 300 frames");
	}
}

void CheckBody(benchmark::State& State, void (*Decode)(const FString&, FZnBodyData&))
{
	FZnBodyData Out;
	Decode(BodyClip.Wide, Out);
	std::string Why;
	if (!ZnRecordCompare::SameBody(Out, BodyReference, Why))
	{
		State.SkipWithError("result differs from the reference");
		ZnBenchFail("a decoder's body record differs from the reference: " + Why);
	}
}

void CheckFace(benchmark::State& State, void (*Decode)(const FString&, FZnFaceData&))
{
	FZnFaceData Out;
	Decode(FaceClip.Wide, Out);
	std::string Why;
	if (!ZnRecordCompare::SameFace(Out, FaceReference, Why))
	{
		State.SkipWithError("result differs from the reference");
		ZnBenchFail("a decoder's face record differs from the reference: " + Why);
	}
}

void SetThroughput(benchmark::State& State, const FZnClipText& Clip)
{
	State.SetBytesProcessed(static_cast<int64>(State.iterations()) * static_cast<int64>(Clip.Utf8.size()));
	State.SetItemsProcessed(static_cast<int64>(State.iterations()) * Clip.Items);
}

void OursBody(const FString& Text, FZnBodyData& Out)
{
	UZnDM_BpFuncLib::ParseJsonToBodydata(Text, Out);
}

void OursFace(const FString& Text, FZnFaceData& Out)
{
	UZnDM_BpFuncLib::ParseJsonToFacedata(Text, Out);
}

void BM_Body_Ours(benchmark::State& State)
{
	CheckBody(State, &OursBody);
	for (auto _ : State)
	{
		FZnBodyData Out;
		OursBody(BodyClip.Wide, Out);
		benchmark::DoNotOptimize(Out.BoneFrames.GetData());
	}
	SetThroughput(State, BodyClip);
}

// The same decoder entered with UTF-8 bytes: shows what the engine string's UTF-16 conversion costs.
void BM_Body_OursUtf8(benchmark::State& State)
{
	CheckBody(State,
		[](const FString&, FZnBodyData& Out)
		{ FZnBodyDataDecoder::DecodeUtf8(BodyClip.Utf8.data(), static_cast<int64>(BodyClip.Utf8.size()), Out, true); });
	for (auto _ : State)
	{
		FZnBodyData Out;
		FZnBodyDataDecoder::DecodeUtf8(BodyClip.Utf8.data(), static_cast<int64>(BodyClip.Utf8.size()), Out, true);
		benchmark::DoNotOptimize(Out.BoneFrames.GetData());
	}
	SetThroughput(State, BodyClip);
}

void BM_Body_DomBaseline(benchmark::State& State)
{
	CheckBody(State, &ZnDomBaseline::ParseJsonToBodydata);
	for (auto _ : State)
	{
		FZnBodyData Out;
		ZnDomBaseline::ParseJsonToBodydata(BodyClip.Wide, Out);
		benchmark::DoNotOptimize(Out.BoneFrames.GetData());
	}
	SetThroughput(State, BodyClip);
}

void Floor(benchmark::State& State, const FZnClipText& Clip)
{
	simdjson::ondemand::parser Parser;
	FZnJsonFloorResult Result;
	if (!ZnTouchEveryNumber(Parser, Clip.Padded, Result) || Result.Count != Clip.FloorReference.Count ||
		Result.Sum != Clip.FloorReference.Sum)
	{
		State.SkipWithError("floor result differs from the reference");
		ZnBenchFail("the floor did not read the same numbers as the reference parser");
	}
	for (auto _ : State)
	{
		ZnTouchEveryNumber(Parser, Clip.Padded, Result);
		benchmark::DoNotOptimize(Result.Sum);
	}
	SetThroughput(State, Clip);
}

void BM_Body_SimdjsonFloor(benchmark::State& State)
{
	Floor(State, BodyClip);
}

void BM_Face_Ours(benchmark::State& State)
{
	CheckFace(State, &OursFace);
	for (auto _ : State)
	{
		FZnFaceData Out;
		OursFace(FaceClip.Wide, Out);
		benchmark::DoNotOptimize(Out.CurveFrames.GetData());
	}
	SetThroughput(State, FaceClip);
}

void BM_Face_OursUtf8(benchmark::State& State)
{
	CheckFace(State,
		[](const FString&, FZnFaceData& Out)
		{ FZnFaceDataDecoder::DecodeUtf8(FaceClip.Utf8.data(), static_cast<int64>(FaceClip.Utf8.size()), Out, true); });
	for (auto _ : State)
	{
		FZnFaceData Out;
		FZnFaceDataDecoder::DecodeUtf8(FaceClip.Utf8.data(), static_cast<int64>(FaceClip.Utf8.size()), Out, true);
		benchmark::DoNotOptimize(Out.CurveFrames.GetData());
	}
	SetThroughput(State, FaceClip);
}

void BM_Face_DomBaseline(benchmark::State& State)
{
	CheckFace(State, &ZnDomBaseline::ParseJsonToFacedata);
	for (auto _ : State)
	{
		FZnFaceData Out;
		ZnDomBaseline::ParseJsonToFacedata(FaceClip.Wide, Out);
		benchmark::DoNotOptimize(Out.CurveFrames.GetData());
	}
	SetThroughput(State, FaceClip);
}

void BM_Face_SimdjsonFloor(benchmark::State& State)
{
	Floor(State, FaceClip);
}

// ---- Curve sampling ----

constexpr int32 CurveKeys = 300;
constexpr int32 SampleCount = 4096;

FZnQuatCurve SampledCurve;
std::vector<float> SampleTimes;

// The interpolation every sample ends in: normalised spherical interpolation along the shorter arc.
FQuat SlerpNormalised(const FQuat& A, const FQuat& B, double Alpha)
{
	const double RawCos = A.X * B.X + A.Y * B.Y + A.Z * B.Z + A.W * B.W;
	const double Cos = std::abs(RawCos);
	double S1, S2;
	if (Cos < 0.9999)
	{
		const double Omega = std::acos(Cos);
		const double InvSin = 1.0 / std::sin(Omega);
		S1 = std::sin((1.0 - Alpha) * Omega) * InvSin;
		S2 = std::sin(Alpha * Omega) * InvSin;
	}
	else
	{
		S1 = 1.0 - Alpha;
		S2 = Alpha;
	}
	if (RawCos < 0.0)
	{
		S2 = -S2;
	}
	FQuat R(S1 * A.X + S2 * B.X, S1 * A.Y + S2 * B.Y, S1 * A.Z + S2 * B.Z, S1 * A.W + S2 * B.W);
	const double SquareSum = R.X * R.X + R.Y * R.Y + R.Z * R.Z + R.W * R.W;
	if (SquareSum >= static_cast<double>(1e-8f))
	{
		const double Size = std::sqrt(SquareSum);
		return FQuat(R.X / Size, R.Y / Size, R.Z / Size, R.W / Size);
	}
	return FQuat(0.0, 0.0, 0.0, 1.0);
}

// An independent reading of the curve's sampling rules, used as the reference for Evaluate.
FQuat ReferenceHalfSearch(float InTime, const TArray<FZnQuatCurveKey>& Keys, int32 Lo, int32 Hi)
{
	constexpr float Tolerance = 0.0001f;
	if (std::abs(InTime - Keys[Lo].Time) <= Tolerance)
	{
		return Keys[Lo].Value;
	}
	if (std::abs(InTime - Keys[Hi].Time) <= Tolerance)
	{
		return Keys[Hi].Value;
	}
	if (Hi - Lo == 1)
	{
		const float Alpha = (InTime - Keys[Lo].Time) / (Keys[Hi].Time - Keys[Lo].Time);
		return SlerpNormalised(Keys[Lo].Value, Keys[Hi].Value, static_cast<double>(Alpha));
	}
	const int32 Mid = (Lo + Hi) / 2;
	return InTime >= Keys[Mid].Time ? ReferenceHalfSearch(InTime, Keys, Mid, Hi)
									: ReferenceHalfSearch(InTime, Keys, Lo, Mid);
}

void PrepareCurve()
{
	FZnBodyData Body;
	UZnDM_BpFuncLib::ParseJsonToBodydata(BodyClip.Wide, Body);
	// A hand bone: it moves the most, so few samples land on nearly parallel keys.
	SampledCurve = Body.BoneCurves[17];
	if (SampledCurve.Keys.Num() != CurveKeys)
	{
		ZnBenchFail("the sampled curve does not have 300 keys");
	}
	uint64 State = 12345;
	const float Last = SampledCurve.Keys[CurveKeys - 1].Time;
	for (int32 Index = 0; Index < SampleCount; ++Index)
	{
		State = State * 6364136223846793005ull + 1442695040888963407ull;
		SampleTimes.push_back(static_cast<float>(static_cast<double>(State >> 11) / 9007199254740992.0) * Last);
	}
}

void BM_QuatCurveEvaluate_Ours(benchmark::State& State)
{
	for (float Time : SampleTimes)
	{
		const FQuat Got = SampledCurve.Evaluate(Time, 0.0001f);
		const FQuat Want = ReferenceHalfSearch(Time, SampledCurve.Keys, 0, CurveKeys - 1);
		if (Got.X != Want.X || Got.Y != Want.Y || Got.Z != Want.Z || Got.W != Want.W)
		{
			State.SkipWithError("Evaluate differs from the reference");
			ZnBenchFail("Evaluate at " + std::to_string(Time) + " differs from the reference");
		}
	}
	for (auto _ : State)
	{
		double Sum = 0.0;
		for (float Time : SampleTimes)
		{
			Sum += SampledCurve.Evaluate(Time, 0.0001f).W;
		}
		benchmark::DoNotOptimize(Sum);
	}
	State.SetItemsProcessed(static_cast<int64>(State.iterations()) * SampleCount);
}

// The floor: the interpolation alone, between two fixed keys, at the same sample times.
void BM_QuatCurveEvaluate_TwoKeyFloor(benchmark::State& State)
{
	const FZnQuatCurveKey& A = SampledCurve.Keys[0];
	const FZnQuatCurveKey& B = SampledCurve.Keys[CurveKeys - 1];
	FZnQuatCurve TwoKeys;
	TwoKeys.Keys.Add(A);
	TwoKeys.Keys.Add(B);
	for (float Time : SampleTimes)
	{
		const float Alpha = (Time - A.Time) / (B.Time - A.Time);
		const FQuat Got = SlerpNormalised(A.Value, B.Value, Alpha);
		const FQuat Want = TwoKeys.Evaluate(Time, 0.0001f);
		if (std::abs(Time - A.Time) > 0.0001f && std::abs(Time - B.Time) > 0.0001f &&
			(Got.X != Want.X || Got.Y != Want.Y || Got.Z != Want.Z || Got.W != Want.W))
		{
			State.SkipWithError("two-key interpolation differs from Evaluate");
			ZnBenchFail("the two-key floor differs from Evaluate on the same two keys");
		}
	}
	for (auto _ : State)
	{
		double Sum = 0.0;
		for (float Time : SampleTimes)
		{
			const float Alpha = (Time - A.Time) / (B.Time - A.Time);
			Sum += SlerpNormalised(A.Value, B.Value, Alpha).W;
		}
		benchmark::DoNotOptimize(Sum);
	}
	State.SetItemsProcessed(static_cast<int64>(State.iterations()) * SampleCount);
}

// ---- Memory ----

struct FZnMemoryFigure
{
	size_t PeakExtra = 0;
	size_t Record = 0;
	size_t Retained = 0;
};

// Runs one decode on a fresh thread (so per-thread scratch buffers are created, and counted, as
// on first use) and reports the peak held during the call beyond the record it produced.
template <typename RecordType>
FZnMemoryFigure MeasureDecode(void (*Decode)(const FString&, RecordType&), const FString& Text)
{
	FZnMemoryFigure Figure;
	std::thread Worker(
		[&]()
		{
			RecordType* Out = new RecordType();
			const size_t Before = ZnCountingAllocator::LiveBytes();
			ZnCountingAllocator::ResetPeak();
			Decode(Text, *Out);
			const size_t Peak = ZnCountingAllocator::PeakBytes();
			const size_t After = ZnCountingAllocator::LiveBytes();
			// The record's own size: what a copy of it allocates.
			RecordType* Copy = new RecordType(*Out);
			const size_t WithCopy = ZnCountingAllocator::LiveBytes();
			Figure.Record = WithCopy - After - sizeof(RecordType);
			Figure.PeakExtra = Peak - Before > Figure.Record ? Peak - Before - Figure.Record : 0;
			Figure.Retained = After - Before > Figure.Record ? After - Before - Figure.Record : 0;
			delete Copy;
			delete Out;
		});
	Worker.join();
	return Figure;
}

std::map<std::string, FZnMemoryFigure> MemoryFigures;

void MeasureMemory()
{
	MemoryFigures["Body/Ours"] = MeasureDecode<FZnBodyData>(&OursBody, BodyClip.Wide);
	MemoryFigures["Body/DomBaseline"] = MeasureDecode<FZnBodyData>(&ZnDomBaseline::ParseJsonToBodydata, BodyClip.Wide);
	MemoryFigures["Face/Ours"] = MeasureDecode<FZnFaceData>(&OursFace, FaceClip.Wide);
	MemoryFigures["Face/DomBaseline"] = MeasureDecode<FZnFaceData>(&ZnDomBaseline::ParseJsonToFacedata, FaceClip.Wide);
}

// ---- Reporting ----

void PrintRatio(
	const FZnBestTimeReporter& Reporter, const char* Label, const char* Ours, const char* Other, const char* Meaning)
{
	const auto A = Reporter.SecondsPerIteration.find(Ours);
	const auto B = Reporter.SecondsPerIteration.find(Other);
	if (A != Reporter.SecondsPerIteration.end() && B != Reporter.SecondsPerIteration.end())
	{
		std::printf("%-34s %8.2f   (%s)\n", Label, B->second / A->second, Meaning);
	}
}

void PrintMemory(const char* Name, size_t TextBytes)
{
	const auto Found = MemoryFigures.find(Name);
	if (Found != MemoryFigures.end())
	{
		const FZnMemoryFigure& F = Found->second;
		std::printf("%-18s text %8zu B  record %9zu B  peak extra %9zu B = %5.2f x text  (kept after: %zu B)\n", Name,
			TextBytes, F.Record, F.PeakExtra, static_cast<double>(F.PeakExtra) / static_cast<double>(TextBytes),
			F.Retained);
	}
}
} // namespace

BENCHMARK(BM_Body_Ours)->Name("Body/Ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Body_OursUtf8)->Name("Body/OursUtf8")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Body_DomBaseline)->Name("Body/DomBaseline")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Body_SimdjsonFloor)->Name("Body/SimdjsonFloor")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Face_Ours)->Name("Face/Ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Face_OursUtf8)->Name("Face/OursUtf8")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Face_DomBaseline)->Name("Face/DomBaseline")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Face_SimdjsonFloor)->Name("Face/SimdjsonFloor")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_QuatCurveEvaluate_Ours)->Name("QuatCurveEvaluate/Ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_QuatCurveEvaluate_TwoKeyFloor)->Name("QuatCurveEvaluate/TwoKeyFloor")->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
	if (!ZnInitializeBenchmarks(argc, argv))
	{
		return 1;
	}
	PrepareClips();
	// Before anything else decodes, so first-use buffers are part of the figure.
	MeasureMemory();
	PrepareCurve();

	FZnBestTimeReporter Reporter(EZnBenchClock::Cpu);
	benchmark::RunSpecifiedBenchmarks(&Reporter);
	benchmark::Shutdown();

	std::printf("\nBody clip: 52 bones x %d frames, %zu bytes; face clip: 51 channels x %d frames, %zu bytes\n",
		ClipFrames, BodyClip.Utf8.size(), ClipFrames, FaceClip.Utf8.size());
	std::printf("\nThroughput ratios (higher is better for ours)\n");
	PrintRatio(Reporter, "Body ours / DOM baseline", "Body/Ours", "Body/DomBaseline", "target >= 10");
	PrintRatio(Reporter, "Body ours / simdjson floor", "Body/Ours", "Body/SimdjsonFloor", "target >= 0.4");
	PrintRatio(Reporter, "Body ours (UTF-8 entry) / floor", "Body/OursUtf8", "Body/SimdjsonFloor", "for information");
	PrintRatio(Reporter, "Face ours / DOM baseline", "Face/Ours", "Face/DomBaseline", "target >= 10");
	PrintRatio(Reporter, "Face ours / simdjson floor", "Face/Ours", "Face/SimdjsonFloor", "target >= 0.4");
	PrintRatio(Reporter, "Face ours (UTF-8 entry) / floor", "Face/OursUtf8", "Face/SimdjsonFloor", "for information");
	PrintRatio(Reporter, "Evaluate ours / two-key floor", "QuatCurveEvaluate/Ours", "QuatCurveEvaluate/TwoKeyFloor",
		"target >= 0.5, i.e. at most 2x the floor's time");
	std::printf("\nPeak memory while decoding, beyond the record produced (target <= 2 x text)\n");
	PrintMemory("Body/Ours", BodyClip.Utf8.size());
	PrintMemory("Body/DomBaseline", BodyClip.Utf8.size());
	PrintMemory("Face/Ours", FaceClip.Utf8.size());
	PrintMemory("Face/DomBaseline", FaceClip.Utf8.size());
	return 0;
}
