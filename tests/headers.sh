#!/usr/bin/env bash
# Fails where a public header doesn't compile by itself, with warnings that the library isn't compiled with, too, and where
# a caller has switched Qt's conveniences off. Exits with 77 where the compiler is missing or doesn't know the standard.
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

count=0
failed=0
while read -r header; do
    count=$((count + 1))
    "$compiler" "${options[@]}" -x c++ - <<<"#include <$header>" || failed=$((failed + 1))
done < <(cd "$headers" && printf '%s\n' */*.h)
echo "$count headers, $failed of them wrong"
[ "$count" -gt 0 ] && [ "$failed" -eq 0 ]
