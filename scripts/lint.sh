#!/usr/bin/env bash
# Runs clang-tidy on the sources of the libraries, the command and the Python package, with what the preset asan-ubsan
# is built of.
#   scripts/lint.sh [COMMIT]   only what has changed since the commit, where there is one of that name
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh --developer
folder=build/asan-ubsan
[ -d "$folder" ] || cmake --preset asan-ubsan

mapfile -t sources < <(git ls-files FileIO/*.cpp Inspection/*.cpp Utility/*.cpp nereofile/*.cpp python/src/*.cpp)
if git rev-parse --quiet --verify "${1:-}^{commit}" >/dev/null; then
    mapfile -t changed < <(git diff --name-only --diff-filter=d "$1")
    chosen=()
    for file in "${changed[@]}"; do
        case "$file" in
            # A header is looked at with the first source that includes it.
            *.h) chosen+=("$(grep -l "^#include .*[/\"]${file##*/}[\">]" "${sources[@]}" | head -n 1 || true)") ;;
            *) chosen+=("$file") ;;
        esac
    done
    mapfile -t sources < <(printf '%s\n' "${chosen[@]}" | sort -u | grep -Fxf <(printf '%s\n' "${sources[@]}") || true)
fi
echo "lint: ${#sources[@]} sources"
[ "${#sources[@]}" -eq 0 ] || printf '%s\0' "${sources[@]}" | xargs -0 -P "$(nproc)" -n 4 clang-tidy -p "$folder" --quiet
