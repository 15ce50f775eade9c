#!/usr/bin/env bash
# Passes all tests with counters in the libraries, and prints for each file which part of its lines and branches they
# run. Fails under 100 % of the lines or 95 % of the branches, and at a branch that coverage-exceptions.txt doesn't
# explain, or a line that it explains and isn't there.
#   scripts/coverage.sh
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/coverage

scripts/setup.sh --developer
cmake --preset coverage
cmake --build --preset coverage
find "$build" -name '*.gcda' -delete # counters of earlier runs, which the new ones would be added to
ctest --preset coverage --parallel "$(nproc)"

# The rows of the tables are data. What only an exception takes, as after each call that might throw, isn't counted, nor
# what only stands behind that, which gcov.py leaves out: those branches are the compiler's.
gcovr --gcov-executable "python3 -B '$PWD/scripts/gcov.py'" --root . \
    --filter FileIO/ --filter Inspection/ --filter Utility/ --filter include/ --exclude '.*\.def$' \
    --exclude-throw-branches --exclude-unreachable-branches \
    --json "$build/coverage.json" "$build/FileIO" "$build/Inspection" "$build/Utility" "$build/tests"
python3 scripts/coverage.py "$build/coverage.json" scripts/coverage-exceptions.txt
