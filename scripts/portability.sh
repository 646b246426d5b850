#!/usr/bin/env bash
# Builds the standalone tree, programs and tests for the platforms beside the default one and runs
# the whole suite on each (docs/portability.md):
#   arm64   cross-built with Debian's aarch64 toolchain, every test run under qemu-user;
#   libcxx  clang with libc++ instead of libstdc++.
#
#   scripts/portability.sh [--build-only] [PRESET...]     (default: arm64 libcxx)
#
# --build-only builds without running the suites. With ZN_DEADLINE set (seconds since the epoch,
# as .ci/run sets it), a suite that would not finish by then, judged by ZN_SUITE_SECONDS_<PRESET>,
# runs only the tests of the code that differs between platforms (labels ZnUtilsTools*: the JSON
# readers, the decoders and their vector code) and says so. Prints each step's time.
set -euo pipefail
cd "$(dirname "$0")/.."

BuildOnly=0
if [ "${1:-}" = "--build-only" ]; then
	BuildOnly=1
	shift
fi
Presets=("$@")
[ ${#Presets[@]} -gt 0 ] || Presets=(arm64 libcxx)

bash scripts/install-deps.sh
export CMAKE_CXX_COMPILER_LAUNCHER="${CMAKE_CXX_COMPILER_LAUNCHER:-$(command -v ccache || true)}"
export CMAKE_C_COMPILER_LAUNCHER="${CMAKE_C_COMPILER_LAUNCHER:-$(command -v ccache || true)}"

# Whole-suite times measured on a 2-core machine (docs/portability.md), with some headroom.
ZN_SUITE_SECONDS_arm64="${ZN_SUITE_SECONDS_arm64:-1200}"
ZN_SUITE_SECONDS_libcxx="${ZN_SUITE_SECONDS_libcxx:-600}"

Step()
{
	local Name="$1"
	shift
	local Started=$SECONDS
	"$@"
	echo "== $Name: $((SECONDS - Started)) s"
}

# The configure step's own output is long and rarely of interest; its errors still show.
Quietly()
{
	"$@" >/dev/null
}

for Preset in "${Presets[@]}"; do
	Step "$Preset configure" Quietly cmake --preset "$Preset"
	Step "$Preset build" cmake --build --preset "$Preset"
	[ $BuildOnly -eq 0 ] || continue
	Needed="ZN_SUITE_SECONDS_$Preset"
	if [ -n "${ZN_DEADLINE:-}" ] && [ $(($(date +%s) + ${!Needed:-0})) -gt "$ZN_DEADLINE" ]; then
		echo "== $Preset: not enough time left for the whole suite; running the platform-dependent tests only"
		echo "   (the rest: bash scripts/portability.sh $Preset)"
		Step "$Preset tests (ZnUtilsTools)" ctest --preset "$Preset" -L '^ZnUtilsTools'
	else
		Step "$Preset tests" ctest --preset "$Preset"
	fi
done
