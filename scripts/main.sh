#!/usr/bin/env bash
# The main job: install what is missing, build the standalone tree and run `zn demo`: a sentence
# spoken, animated and brought back through the module's request objects and decoders.
# Extra arguments go to `zn` instead (e.g. `bash scripts/main.sh functions`).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake --preset default >/dev/null
cmake --build --preset default --target zn
if [ $# -eq 0 ]; then set -- demo; fi
exec build/default/Source/Programs/zn/zn "$@"
