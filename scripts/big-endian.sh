#!/usr/bin/env bash
# Passes the tests as on a big-endian machine: builds for s390x with Debian's cross compiler and runs in an emulator.
# The libraries for that machine are unpacked in build/s390x-root; only the compiler and the emulator are installed.
#   scripts/big-endian.sh
set -euo pipefail
cd "$(dirname "$0")/.."

root=build/s390x-root

# Leaves the packages named, with all that they depend on, in the folder $1, as apt would choose them on such a machine
# on which nothing is installed. apt keeps its books in the folder too, not in those of this machine.
download_packages() {
    local apt_dir=$1
    shift
    mkdir -p "$apt_dir/lists/partial" "$apt_dir/archives/partial"
    : >"$apt_dir/status"
    local apt=(
        apt-get -q -y
        -o APT::Architecture=s390x -o APT::Architectures::=s390x
        -o Dir::State="$apt_dir" -o Dir::State::status="$apt_dir/status" -o Dir::Cache="$apt_dir"
        -o APT::Sandbox::User="$(id -un)"
    )
    "${apt[@]}" update
    "${apt[@]}" install --download-only --no-install-recommends "$@"
}

unpack_root() {
    local apt_dir unpacked
    apt_dir=$PWD/$root-apt
    unpacked=$root-unpacked
    rm -rf "$apt_dir" "$unpacked"
    mkdir -p "$unpacked"
    download_packages "$apt_dir" qtbase5-dev libgtest-dev libgmock-dev
    for package in "$apt_dir"/archives/*.deb; do
        dpkg-deb --extract "$package" "$unpacked"
    done
    rm -rf "$apt_dir"
    mv "$unpacked" "$root" # whole, or not at all
}

scripts/setup.sh --big-endian
[ -d "$root" ] || unpack_root
cmake --preset big-endian
cmake --build --preset big-endian
ctest --preset big-endian --parallel "$(nproc)"

# The emulator can't run the tests of the example, which start it themselves: it must write the same files as here.
written=build/big-endian/written
rm -rf "$written"
scripts/demo.sh "$written/here" >/dev/null
qemu-s390x -L "$root" build/big-endian/examples/typical_run samples "$written/there" >/dev/null
diff -r "$written/here" "$written/there"
