#!/usr/bin/env bash
# Fails when a library exports an instance of Qt's templates, or anything else that isn't its own or the standard
# library's: a caller's symbol of the same name replaces an exported one, and a caller's instances of the containers
# may lack the checks that the library's have.
#   tests/exported-symbols.sh NM LIBRARY...
set -euo pipefail
nm=$1
shift

# In mangled form: what belongs to Nereo, Clt and the standard library, and descriptions of types, which sanitizers
# add for types of functions too, as they add a marker for each global.
allowed='^(_Z(T[TV])?N?K?(5Nereo|3Clt|S[abdiost]|9__gnu_cxx)|_ZT[IS]|__odr_asan_gen_)'
# Inline members of Qt's own classes, no templates, which GCC exports with their class if it doesn't inline them.
inline_of_qt='^Q[A-Za-z]+::[^<]*$'

symbols=$("$nm" --dynamic --defined-only --format=posix "$@" | grep -v ':$' | cut -d ' ' -f 1)
grep -q '^_ZN5Nereo' <<<"$symbols" # there is something to look at
foreign=$(grep -Ev "$allowed" <<<"$symbols" | c++filt | grep -Ev "$inline_of_qt" || true)
if [ -n "$foreign" ]; then
    printf 'Exported, but not for callers:\n%s\n' "$foreign"
    exit 1
fi
