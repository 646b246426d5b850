#!/usr/bin/env bash
# Builds the standalone tree, programs and tests for the platforms beside the default one and runs
# the whole suite on each (docs/portability.md):
#   arm64   cross-built with Debian's aarch64 toolchain, every test run under qemu-user;
#   libcxx  clang with libc++ instead of libstdc++.
#
#   scripts/portability.sh [--build-only] [PRESET...]     (default: arm64 libcxx)
#
# --build-only builds without running the suites. Prints each step's time, so the figures in
# docs/portability.md can be checked on any machine.
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

Step()
{
	local Name="$1"
	shift
	local Started=$SECONDS
	"$@"
	echo "== $Name: $((SECONDS - Started)) s"
}

for Preset in "${Presets[@]}"; do
	Step "$Preset configure" cmake --preset "$Preset" >/dev/null
	Step "$Preset build" cmake --build --preset "$Preset"
	if [ $BuildOnly -eq 0 ]; then
		Step "$Preset tests" ctest --preset "$Preset"
	fi
done
