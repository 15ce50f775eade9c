#!/usr/bin/env bash
# Builds the library and runs its main job on the sample files.
#   scripts/demo.sh [FOLDER]   where to leave the written files, out/ by default
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target typical_run >/dev/null
build/release/examples/typical_run samples "${1:-out}"
