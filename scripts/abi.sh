#!/usr/bin/env bash
# Compares the public interface of the libraries, as compiled, with that of abi/, and shows what came in addition. What changed
# incompatibly is an error, unless the library has a new SOVERSION.
#   scripts/abi.sh             the libraries of build/release, which it builds, with abi/<library>.abi.xml
#   scripts/abi.sh --update    makes their interface the one that later ones are compared with: before a release
#   scripts/abi.sh LIBRARY HEADERS BASELINE [--update]   one library that was compiled with -g, for the tests
set -euo pipefail
cd "$(dirname "$0")/.."

# What the headers in the folder $2 say, as the library $1 has it. It depends neither on paths nor on places in sources.
describe() {
    abidw --exported-interfaces-only --no-show-locs --no-comp-dir-path --no-corpus-path --no-elf-needed \
        --no-write-default-sizes --no-parameter-names --type-id-style hash "$1" | python3 scripts/abi_interface.py "$2"
}

soname() { sed -n 's/.* soname="\([^"]*\)".*/\1/p' "$1" | head -n 1; }

check() ( # LIBRARY HEADERS BASELINE [--update]
    current=$(mktemp)
    trap 'rm "$current"' EXIT
    describe "$1" "$2" >"$current"
    if ! grep -q '<class-decl ' "$current"; then
        echo "abi: $1 tells nothing of its interface; it has to be compiled with -g" >&2
        exit 1
    fi
    name=${1##*/}
    if [ ! -e "$3" ]; then
        echo "abi: there is no $3"
        [ "${4:-}" = --update ]
    elif [ "$(soname "$3")" != "$(soname "$current")" ]; then
        echo "abi: $name is $(soname "$current") in place of $(soname "$3"), for which callers are compiled anew"
    elif said=$(abidiff --non-reachable-types --no-show-locs "$3" "$current"); then
        echo "abi: $name is as before"
    elif echo "$said" && grep -qE '\b[1-9][0-9]* (removed|changed)' <<<"${said,,}"; then
        echo "abi: $name doesn't fit programs that were compiled for it before: put back what they need, or raise SOVERSION" >&2
        exit 1
    else
        grep -qE '\b[1-9][0-9]* added' <<<"${said,,}"
        echo "abi: $name has more than before"
    fi
    [ "${4:-}" != --update ] || cat "$current" >"$3"
)

case "${1:-}" in
    "" | --update)
        scripts/setup.sh --developer
        if [ "$(uname -m)" != x86_64 ]; then
            echo "abi: what is in abi/ is the interface on x86-64"
            exit 0
        fi
        cmake --preset release >/dev/null
        cmake --build --preset release --target NereoUtility NereoFileIO NereoInspection >/dev/null
        for folder in Utility FileIO Inspection; do
            check "build/release/$folder/libNereo$folder.so" "include/Nereo$folder" "abi/libNereo$folder.abi.xml" "$@"
        done
        ;;
    -*)
        sed -n '2,6s/^# \{0,1\}//p' "$0" >&2
        exit 2
        ;;
    *) check "$@" ;;
esac
