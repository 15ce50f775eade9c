#!/usr/bin/env bash
# Gives the readers what a fuzzer makes up, under the sanitizers. Fails when something is found, and says where.
#   scripts/fuzz.sh TARGET SECONDS   a target of fuzz/CMakeLists.txt, or all of them, two at a time
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t targets < <(sed -n 's/^nereo_add_fuzz_target(\([a-z_]*\).*/\1/p' fuzz/CMakeLists.txt)
target=${1:-}
seconds=${2:-}
if [[ ! " all ${targets[*]} " == *" $target "* || ! $seconds =~ ^[1-9][0-9]*$ ]]; then
    sed -n '2,3s/^# \{0,1\}//p' "$0" >&2
    echo "Targets: ${targets[*]}" >&2
    exit 2
fi
[ "$target" = all ] || targets=("$target")

scripts/setup.sh --developer
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -- --quiet

programs=build/fuzz/fuzz
work=build/fuzz/work # what has been learnt so far: it grows from run to run
# Faster by half. A replay has the whole story of each allocation.
export ASAN_OPTIONS=quarantine_size_mb=16:malloc_context_size=1

fuzz() {
    local name=$1 log=$work/$1.log dictionary=fuzz/dictionaries/$1.dict
    mkdir -p "$work/$name"
    local options=(-seed_inputs="@$programs/$name.seeds" -artifact_prefix="$work/$name-"
        -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2560 -max_len=16384 -print_final_stats=1)
    [ ! -f "$dictionary" ] || options+=(-dict="$dictionary")

    local finding=0
    nice "$programs/fuzz_$name" "$work/$name" "${options[@]}" >"$log" 2>&1 || finding=$?

    local runs speed edges
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
    edges=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -1)
    printf '%-18s %9s runs %6s/s %5s edges\n' "$name" "${runs:-?}" "${speed:-?}" "${edges:-?}"
    [ "$finding" -ne 0 ] || return 0

    local input
    input=$(sed -n 's/.*Test unit written to //p' "$log" | tail -1)
    grep -a -m 2 -E '^ASSERT|^FINDING|^==[0-9]+== ?ERROR|runtime error' "$log" || tail -n 20 "$log"
    echo "$name: found something; the input is ${input:-unknown}, all that was printed is in $log"
    echo "  again: $programs/fuzz_$name ${input:-INPUT}"
    return 1
}
export -f fuzz
export programs work seconds

printf '%s\n' "${targets[@]}" | xargs -P 2 -I TARGET bash -euo pipefail -c 'fuzz TARGET'
