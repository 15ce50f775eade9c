#!/usr/bin/env bash
# Compares what the libraries export with debian/libnereofileio1.symbols, from which packages that use them learn which
# version they need.
#   scripts/symbols.sh [FOLDER]            writes that file, from the libraries built in FOLDER, build/release by default.
#                                          What is listed keeps the version that has it first; look at what has gone.
#   scripts/symbols.sh --check [FOLDER]    fails where something has gone, or isn't listed
set -euo pipefail
cd "$(dirname "$0")/.."
package=libnereofileio1
symbols=debian/$package.symbols

is_check=
if [ "${1:-}" = --check ]; then
    is_check=yes
    shift
fi
build=${1:-build/release}
version=$(sed -n 's/^project(NereoFileIO VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
libraries=()
for name in FileIO Inspection Utility; do
    libraries+=("$build/$name/libNereo$name.so.1")
done

generate() { # FILE [OPTION...]
    dpkg-gensymbols -p"$package" -v"$version" "${libraries[@]/#/-e}" -O"$@"
}

if [ "$is_check" ]; then
    generate /dev/null -c4 -I"$symbols" && exit
    echo "symbols: scripts/symbols.sh lists what is new; what has gone needs a new SOVERSION" >&2
    exit 1
fi

# The version that a symbol of a library is listed with.
version_of() { # LIBRARY SYMBOL
    awk -v library="$1" -v symbol="$2" -v version="$version" '
        /^[^ *]/ { is_library = $1 == library }
        is_library && index($0, "\"" symbol "\" ") { version = $NF }
        END { print version }' "$symbols"
}

# Of each library: what a caller links with is named as C++ has it. What comes of templates and inline functions is
# exported as the compiler likes it; its absence breaks nobody, since a caller that needs it has it, too.
listed() { # LIBRARY
    local soname=${1##*/}
    printf '%s %s #MINVER#\n' "$soname" "$package"
    printf '* Build-Depends-Package: libnereofileio-dev\n'
    nm --dynamic --defined-only --format=posix "$1" | awk '
        !/^_Z(T[VT])?N?K?(5Nereo|3Clt)/ { next }
        { print ($2 ~ /[VWu]/ ? "c++|optional=inline" : "c++"), $1 }' | sort | c++filt | sort -u |
        while read -r tags name; do
            printf ' (%s)"%s@Base" %s\n' "$tags" "$name" "$(version_of "$soname" "$name@Base")"
        done
    printf ' (optional=template|regex)"^_Z(N?K?(S|9__gnu_cxx)|T[IS]|GR|GV|Z)[^@]*@Base$" %s\n' 2024.0.0.0
}

touch "$symbols"
for library in "${libraries[@]}"; do
    listed "$library"
done >"$symbols.new"
mv "$symbols.new" "$symbols"
