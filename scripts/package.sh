#!/usr/bin/env bash
# Makes the Debian packages of the last commit in a clean tree, and lets lintian look them over: its errors and warnings
# are errors here.
#   scripts/package.sh [FOLDER]           leaves the packages in FOLDER, build/packages by default
#   scripts/package.sh --twice [FOLDER]   makes them once more in another folder, in another locale, time zone and so on:
#                                         both must be the same, byte by byte
# The tests are left to scripts/test.sh; with DEB_BUILD_OPTIONS= (nothing) in the environment they are passed, too.
set -euo pipefail
cd "$(dirname "$0")/.."

is_twice=
if [ "${1:-}" = --twice ]; then
    is_twice=yes
    shift
fi
output=${1:-build/packages}

scripts/setup.sh --packager
export DEB_BUILD_OPTIONS=${DEB_BUILD_OPTIONS-nocheck}
[[ " $DEB_BUILD_OPTIONS " != *" nocheck "* ]] || export DEB_BUILD_PROFILES=nocheck
version=$(dpkg-parsechangelog -S Version)
commit=$(git rev-parse HEAD) # the same one for both

# The home of the user is another one for what is called in the build.
if [ "${CMAKE_CXX_COMPILER_LAUNCHER:-}" = ccache ]; then
    CCACHE_DIR=$(ccache --get-config cache_dir)
    export CCACHE_DIR
fi

build_in() { # FOLDER: the packages are in it, and the tree in tree/
    rm -rf "$1"
    mkdir -p "$1/tree"
    git archive "$commit" | tar -x -C "$1/tree"
    (cd "$1/tree" && dpkg-buildpackage --no-sign -jauto) >"$1/build.log" 2>&1 || {
        tail -n 40 "$1/build.log" >&2
        echo "package: all that was printed is in $1/build.log" >&2
        return 1
    }
}

first=build/package
build_in "$first"
changes=$first/nereofileio_${version}_$(dpkg --print-architecture).changes

# Who makes the packages of a version before its release means to.
unreleased=()
[ "$(dpkg-parsechangelog -S Distribution)" != UNRELEASED ] || unreleased=(--suppress-tags unreleased-changes)
as_root=()
[ "$(id -u)" -ne 0 ] || as_root=(--allow-root)
lintian "${as_root[@]}" "${unreleased[@]}" --fail-on error,warning "$changes"

if [ "$is_twice" ]; then
    second=$(mktemp -d)
    trap 'rm -rf "$second"' EXIT
    (
        umask 027
        unset CMAKE_CXX_COMPILER_LAUNCHER LANG LANGUAGE
        export LC_ALL=C TZ=Pacific/Chatham HOME=$second USER=nobody
        build_in "$second/another"
    )
    different=0
    for package in "$first"/*.deb; do
        cmp "$package" "$second/another/${package##*/}" || different=1
    done
    [ "$different" -eq 0 ] || exit 1
    echo "package: made twice, the packages are the same byte by byte"
fi

mkdir -p "$output"
rm -f "$output"/*nereofile*_*.deb "$output"/nereofileio_*
cp "$first"/*nereofile*_"$version"* "$output"
echo "package: $output"
