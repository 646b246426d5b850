#!/usr/bin/env bash
# Install what is missing, build everything and run the whole test suite with ctest.
# `bash scripts/test.sh asan` does the same under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-default}"
bash scripts/install-deps.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset"
