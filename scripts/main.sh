#!/usr/bin/env bash
# The main job: install what is missing, build the standalone tree and show the script surface.
# Extra arguments go to `zn` (default: `functions`), e.g. `bash scripts/main.sh call Sha1 appid=a secret=b`.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake --preset default >/dev/null
cmake --build --preset default --target zn
if [ $# -eq 0 ]; then set -- functions; fi
exec build/default/Source/Programs/zn/zn "$@"
