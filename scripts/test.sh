#!/usr/bin/env bash
# Builds the library and passes all tests.
#   scripts/test.sh [PRESET]   release (the default), debug, clang, clang-numbers with the tests of what is calculated
#                              alone, asan-ubsan, tsan with those of threads, portable with those of what becomes text,
#                              or python-debug with those of the Python package, whose references are counted
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}

case "$preset" in
    release | debug | portable) scripts/setup.sh ;;
    *) scripts/setup.sh --developer ;;
esac
cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset" --parallel "$(nproc)"
