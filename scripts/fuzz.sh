#!/usr/bin/env bash
# Builds the fuzz targets (preset "fuzz": clang, libFuzzer, AddressSanitizer and
# UndefinedBehaviorSanitizer) and runs each one for SECONDS seconds (default 60) on a seed corpus
# of generated clips. Corpora grow in build/fuzz/corpus/<Target>/ and are kept between runs.
# A crash stops that target; its input is copied to Tests/Fuzz/Regressions/<Target>/ so the
# ordinary test build replays it (FuzzRegressionTests) once the bug is fixed.
#
#   scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail

Root="$(cd "$(dirname "$0")/.." && pwd)"
Seconds="${1:-60}"
shift || true
Build="${ZN_FUZZ_BUILD_DIR:-$Root/build/fuzz}"
Jobs="${ZN_FUZZ_JOBS:-2}"

cmake -S "$Root" -B "$Build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	-DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DZN_BUILD_FUZZERS=ON -DZN_BUILD_TESTS=OFF >/dev/null
cmake --build "$Build" -j "$Jobs" --target fuzzers

if [ $# -gt 0 ]; then
	Targets=("$@")
else
	Targets=()
	for Source in "$Root"/Tests/Fuzz/*Fuzzer.cpp; do
		Targets+=("$(basename "$Source" .cpp)")
	done
fi

Corpus="$Build/corpus"
"$Build/Tests/Fuzz/ZnFuzzSeeds" "$Corpus"

export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"

Failed=0
for Target in "${Targets[@]}"; do
	mkdir -p "$Corpus/$Target" "$Build/artifacts/$Target"
	echo "== $Target: ${Seconds}s"
	if ! "$Build/Tests/Fuzz/$Target" -max_total_time="$Seconds" -max_len=65536 -timeout=10 -rss_limit_mb=2048 \
		-print_final_stats=1 -artifact_prefix="$Build/artifacts/$Target/" "$Corpus/$Target" \
		> "$Build/artifacts/$Target.log" 2>&1; then
		Failed=1
		echo "   FAILED, see $Build/artifacts/$Target.log"
		mkdir -p "$Root/Tests/Fuzz/Regressions/$Target"
		for Artifact in "$Build/artifacts/$Target"/*; do
			[ -f "$Artifact" ] && cp "$Artifact" "$Root/Tests/Fuzz/Regressions/$Target/"
		done
	fi
	grep -E "stat::number_of_executed_units|stat::peak_rss_mb" "$Build/artifacts/$Target.log" | sed 's/^/   /' || true
done
exit $Failed
