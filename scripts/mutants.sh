#!/usr/bin/env bash
# Changes readers, writers and values in small ways, one at a time, and fails when their tests notice less than 95 % of the
# changes. Those that make no difference, as mutants-accepted.txt explains, aren't counted.
#   scripts/mutants.sh [COUNT] [SEED] [FILE...]   how many changes, 100 by default, which, 1 by default, and of which files
set -euo pipefail
cd "$(dirname "$0")/.."
count=${1:-100}
seed=${2:-1}
workers=2
folder=build/mutants

scripts/setup.sh --developer
configure() {
    cmake -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=g++ -DCMAKE_CXX_FLAGS_RELEASE=-O1 "$@" >/dev/null
}

configure -S . -B "$folder/tests"
read -ra programs < <(python3 -B scripts/mutants.py --programs "${@:3}")
cmake --build "$folder/tests" --target "${programs[@]}"
for worker in $(seq "$workers"); do
    copy=$folder/$worker
    mkdir -p "$copy"
    rm -rf "$copy"/{FileIO,Inspection,Utility,include}
    cp -r CMakeLists.txt cmake translations FileIO Inspection Utility include "$copy" # with a new time, which builds them anew
    configure -S "$copy" -B "$copy/build" -DNEREO_BUILD_{TESTS,EXAMPLES,PYTHON,COMMAND}=OFF
done
python3 -B scripts/mutants.py "$workers" "$count" "$seed" "${@:3}"
