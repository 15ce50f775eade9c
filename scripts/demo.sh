#!/usr/bin/env bash
# Builds the library, runs its main job on the sample files, and asks the command about what was written.
#   scripts/demo.sh [FOLDER]   where to leave the written files, out/ by default
set -euo pipefail
cd "$(dirname "$0")/.."
out=${1:-out}

scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target typical_run nereofile nereofile_python >/dev/null
build/release/examples/typical_run samples "$out"

# Shows a command and runs it. To find an error or a difference is what it is here for.
try() {
    printf '\n$ nereofile %s\n' "$*"
    "$nereofile" "$@" || [ $? -eq 1 ]
}

mkdir -p "$out"
out=$(cd "$out" && pwd)
nereofile=$PWD/build/release/nereofile/nereofile
copies=$(mktemp -d)
trap 'rm -r "$copies"' EXIT
cp "$out"/* "$copies"
cd "$copies"
try info cavity.ctl
sed 's/^kP 0.3 0$/kP O.3 0/' cavity.ctl >broken.ctl
try check broken.ctl
cp cavity.ctl mine.ctl
try set mine.ctl relaxation/kP/under 0.25
try diff cavity.ctl mine.ctl

printf '\nIn Python:\n'
PYTHONPATH="$OLDPWD/build/release/python" /usr/bin/python3 - "$OLDPWD/samples/cavity.res" <<'END'
import sys, nereofile
results = nereofile.read_results(sys.argv[1])
print(results)
print("largest kU", results["kU"].max(), "at node", results["kU"].argmax() + 1)
print(nereofile.diff("cavity.ctl", "mine.ctl"))
END

run=$copies/run
mkdir "$run"
cp "$out"/*.cfg "$out"/*.ctl "$out"/*.gbi "$out"/*.xml "$OLDPWD/samples/cavity.res" "$run"
PYTHONPATH="$OLDPWD/build/release/python" /usr/bin/python3 -m nereofile report "$run" -o "$out/case.html"
printf '\nA page about the case is in %s: open it in a browser.\n' "$out/case.html"
