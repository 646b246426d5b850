// What every benchmark program here does the same way: stopping on a wrong result instead of
// timing it, converting between UTF-8 and engine strings for its checks, running its repetitions
// interleaved, and keeping each benchmark's best time for the ratios it prints afterwards.
#pragma once

#include "CoreMinimal.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

// A benchmark that would time a wrong answer stops the program instead.
[[noreturn]] inline void ZnBenchFail(const std::string& Message)
{
	std::fprintf(stderr, "error: %s\n", Message.c_str());
	std::exit(1);
}

inline FString ZnBenchWiden(const std::string& Utf8)
{
	const FUTF8ToTCHAR Converted(Utf8.data(), int32(Utf8.size()));
	return FString(Converted.Length(), Converted.Get());
}

inline std::string ZnBenchNarrow(const FString& Text)
{
	const FTCHARToUTF8 Utf8(*Text, Text.Len());
	return std::string(Utf8.Get(), size_t(Utf8.Length()));
}

// Google Benchmark's initialisation with this project's defaults: five repetitions unless told
// otherwise (the ratios use the best of them), and the repetitions of all benchmarks in a random
// order, so that a contender and its baseline are measured over the same stretch of time and a
// busy spell of the machine falls on both alike. False when an argument was not understood.
inline bool ZnInitializeBenchmarks(int& argc, char**& argv)
{
	static std::string Repetitions = "--benchmark_repetitions=5";
	static std::string Interleaving = "--benchmark_enable_random_interleaving=true";
	static std::vector<char*> Arguments;
	Arguments.assign(argv, argv + argc);
	bool bRepetitionsGiven = false;
	bool bInterleavingGiven = false;
	for (int Index = 1; Index < argc; ++Index)
	{
		bRepetitionsGiven |= std::string(argv[Index]).rfind("--benchmark_repetitions", 0) == 0;
		bInterleavingGiven |= std::string(argv[Index]).rfind("--benchmark_enable_random_interleaving", 0) == 0;
	}
	if (!bRepetitionsGiven)
	{
		Arguments.push_back(Repetitions.data());
	}
	if (!bInterleavingGiven)
	{
		Arguments.push_back(Interleaving.data());
	}
	argc = int(Arguments.size());
	argv = Arguments.data();
	benchmark::Initialize(&argc, argv);
	return !benchmark::ReportUnrecognizedArguments(argc, argv);
}

// Which clock a program's ratios are read from: CPU time where the work is computation (on a
// shared machine the neighbours only ever add time, so the fastest run is the closest to the
// code's own cost), wall time where it is waiting on sockets and threads.
enum class EZnBenchClock
{
	Cpu,
	Wall
};

// Google Benchmark's console table, keeping each benchmark's best time per iteration over its
// repetitions, by function name.
class FZnBestTimeReporter : public benchmark::ConsoleReporter
{
public:
	explicit FZnBestTimeReporter(EZnBenchClock InClock)
		: Clock(InClock)
	{
	}

	std::map<std::string, double> SecondsPerIteration;

	void ReportRuns(const std::vector<Run>& Runs) override
	{
		for (const Run& R : Runs)
		{
			if (R.run_type == Run::RT_Iteration && !R.error_occurred && R.iterations > 0)
			{
				const double Accumulated =
					Clock == EZnBenchClock::Cpu ? R.cpu_accumulated_time : R.real_accumulated_time;
				const double Seconds = Accumulated / double(R.iterations);
				const auto Found = SecondsPerIteration.find(R.run_name.function_name);
				if (Found == SecondsPerIteration.end() || Seconds < Found->second)
				{
					SecondsPerIteration[R.run_name.function_name] = Seconds;
				}
			}
		}
		ConsoleReporter::ReportRuns(Runs);
	}

private:
	EZnBenchClock Clock;
};
