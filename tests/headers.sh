#!/usr/bin/env bash
# Fails where a public header doesn't compile by itself, with warnings that the library isn't compiled with, too, and where
# a caller has switched Qt's conveniences off. By newer standards than the library's they are compiled together: what a
# header lacks is missing by any. Exits with 77 where the compiler is missing or doesn't know the standard.
#   tests/headers.sh COMPILER STANDARD HEADERS MADE_HEADERS QT_FOLDER...
set -euo pipefail
compiler=$1
standard=$2
headers=$3
made=$4
shift 4

if ! "$compiler" -std="$standard" -fsyntax-only -x c++ /dev/null 2>/dev/null; then
    echo "headers: there is no $compiler for $standard"
    exit 77
fi

options=(-std="$standard" -fsyntax-only -fPIC -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast -Werror
    -DQT_NO_CAST_FROM_ASCII -DQT_NO_CAST_TO_ASCII -DQT_NO_KEYWORDS -I"$headers" -I"$made")
for folder in "$@"; do
    options+=(-isystem "$folder")
done

includes() {
    printf '#include <%s>\n' "$@"
}

mapfile -t all < <(cd "$headers" && printf '%s\n' */*.h)
if [ "$standard" != c++17 ]; then
    includes "${all[@]}" | "$compiler" "${options[@]}" -x c++ -
    exit
fi

failed=0
for header in "${all[@]}"; do
    includes "$header" | "$compiler" "${options[@]}" -x c++ - || failed=$((failed + 1))
done
echo "${#all[@]} headers, $failed of them wrong"
[ "$failed" -eq 0 ]
