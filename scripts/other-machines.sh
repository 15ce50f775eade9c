#!/usr/bin/env bash
# Passes the tests as on other machines: builds for each with Debian's cross compiler and runs what was built, in an
# emulator where this machine can't. For Windows the sources of the libraries are only compiled, without their code.
#   scripts/other-machines.sh [MACHINE...]   s390x, arm64, i386, windows; all of them if none is named
# The libraries for a machine are unpacked in build/<machine>-root; only compilers and emulators are installed.
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A emulators=([s390x]=qemu-s390x [arm64]=qemu-aarch64 [i386]=qemu-i386)

# Leaves the packages named, with all that they depend on, in the folder $2, as apt would choose them on a machine $1
# on which nothing is installed. apt keeps its books in the folder too, not in those of this machine. Lists that can't
# be had just now leave their packages out; that all packages are there is what the installation checks.
download_packages() {
    local machine=$1 apt_dir=$2
    shift 2
    mkdir -p "$apt_dir/lists/partial" "$apt_dir/archives/partial"
    : >"$apt_dir/status"
    local apt=(
        apt-get -q -y
        -o APT::Architecture="$machine" -o APT::Architectures::="$machine"
        -o Dir::State="$apt_dir" -o Dir::State::status="$apt_dir/status" -o Dir::Cache="$apt_dir"
        -o APT::Sandbox::User="$(id -un)"
    )
    "${apt[@]}" update || true
    "${apt[@]}" install --download-only --no-install-recommends "$@"
}

unpack_root() {
    local machine=$1 root=$PWD/build/$1-root
    local apt_dir=$root-apt unpacked=$root-unpacked
    rm -rf "$apt_dir" "$unpacked"
    mkdir -p "$unpacked"
    download_packages "$machine" "$apt_dir" qtbase5-dev libgtest-dev libgmock-dev
    for package in "$apt_dir"/archives/*.deb; do
        dpkg-deb --extract "$package" "$unpacked"
    done
    rm -rf "$apt_dir"
    mv "$unpacked" "$root" # whole, or not at all
}

pass_tests() {
    local machine=$1 root=build/$1-root
    [ -d "$root" ] || unpack_root "$machine"
    cmake --preset "$machine"
    cmake --build --preset "$machine"
    ctest --preset "$machine" --parallel "$(nproc)"

    # An emulator can't run the tests of the example, which start it themselves: it must write the same files as here.
    local written=build/$machine/written
    rm -rf "$written"
    scripts/demo.sh "$written/here" >/dev/null
    "${emulators[$machine]}" -L "$root" "build/$machine/examples/typical_run" samples "$written/there" >/dev/null
    diff -r "$written/here" "$written/there"
}

# The headers that CMake makes, as it makes them for Windows.
make_windows_headers() {
    local project=build/windows
    mkdir -p "$project"
    : >"$project/empty.cpp"
    cat >"$project/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.16)
project(WindowsHeaders LANGUAGES CXX)
include(GenerateExportHeader)
foreach(library NereoUtility NereoFileIO NereoInspection)
    add_library(${library} SHARED empty.cpp)
    generate_export_header(${library} EXPORT_FILE_NAME "${PROJECT_BINARY_DIR}/include/${library}/Export.h")
endforeach()
END
    cmake -S "$project" -B "$project" -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_CXX_COMPILER=x86_64-w64-mingw32-g++
}

# Checks the sources of the library $1 in the folder $2. Qt's headers are those of this machine, and behind those of
# Windows itself, which define names of their own.
check_syntax() {
    local library=$1 folder=$2 qt source
    qt=$(pkg-config --cflags Qt5Core)
    for source in "$folder"/*.cpp; do
        # shellcheck disable=SC2086 # the flags are several words
        x86_64-w64-mingw32-g++ -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Werror \
            -include windows.h ${qt//-I/-isystem } -I. -Iinclude -Ibuild/windows/include \
            -D"${library}_EXPORTS" -DQT_FORCE_ASSERTS -DQT_DISABLE_DEPRECATED_BEFORE=0x050F00 \
            -DNEREO_VERSION_NUMBERS=0,0,0,0 -DNEREO_BRANCH='""' "$source"
    done
    echo "windows: the sources in $folder are clean"
}

check_windows() {
    make_windows_headers
    check_syntax NereoUtility Utility
    check_syntax NereoFileIO FileIO
    check_syntax NereoInspection Inspection
}

machines=("$@")
[ $# -gt 0 ] || machines=(s390x arm64 i386 windows)
for machine in "${machines[@]}"; do
    if [ "$machine" != windows ] && [ -z "${emulators[$machine]:-}" ]; then
        sed -n '2,5s/^# \{0,1\}//p' "$0" >&2
        exit 2
    fi
done

scripts/setup.sh --other-machines
for machine in "${machines[@]}"; do
    if [ "$machine" = windows ]; then
        check_windows
    else
        pass_tests "$machine"
    fi
    echo "other-machines: $machine passed"
done
