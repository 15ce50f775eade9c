#!/usr/bin/env bash
# Tries the packages in a new Debian 12 of their own, made by mmdebstrap; this system stays as it is. They are installed
# from their folder, pass the tests of debian/tests, do the steps of the demo alone, and leave nothing when they are
# removed. As root, since a system is to be made.
#   scripts/test-packages.sh [FOLDER]   the folder that scripts/package.sh has made, build/packages by default
set -euo pipefail
cd "$(dirname "$0")/.."
packages=$(realpath "${1:-build/packages}")
# What is mounted in the new system is seen by nobody else, and gone with this script.
[ -n "${NEREO_OWN_MOUNTS:-}" ] || NEREO_OWN_MOUNTS=yes exec unshare --mount scripts/test-packages.sh "$packages"
scripts/setup.sh --packager
unset CMAKE_CXX_COMPILER_LAUNCHER # nobody has a cache of compilers in the new system

work=$(mktemp -d)
root=$work/root
chmod 755 "$work" # apt's own user goes through it
clean_up() {
    for mounted in dev/shm dev/pts sys proc; do
        umount -l "$root/$mounted" 2>/dev/null || true
    done
    rm -rf --one-file-system "$work"
}
trap clean_up EXIT
log=$work/log

echo "test-packages: a new Debian 12"
mmdebstrap --quiet --variant=apt --include=ca-certificates bookworm "$root" >"$log" 2>&1 || { tail -n 30 "$log"; exit 1; }
mount -t proc proc "$root/proc"
mount -t sysfs sysfs "$root/sys"
mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"
mount -t tmpfs tmpfs "$root/dev/shm"
mkdir "$root/packages"
cp "$packages"/*.deb "$root/packages"
rm -f "$root"/packages/*-dbgsym_*.deb

inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }

# All that is there, but for what the package manager writes down.
files() {
    inside find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /packages \
        -o -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/cache -o -path /var/log \) -prune -o -print | sort
}

demo() {
    inside bash -euo pipefail -c '
        nereofile() { printf "\n$ nereofile %s\n" "$*"; command nereofile "$@" || [ $? -eq 1 ]; }
        installed=/usr/share/doc/libnereofileio-dev
        cd "$(mktemp -d)"
        export HOME=$PWD # Matplotlib keeps a list of fonts there
        cmake -S $installed/examples -B examples >/dev/null
        cmake --build examples --target typical_run >/dev/null
        examples/typical_run $installed/samples out
        cd out
        nereofile info cavity.ctl
        sed "s/^kP 0.3 0$/kP O.3 0/" cavity.ctl >broken.ctl
        nereofile check broken.ctl | tee found
        grep -q not-a-number found
        cp cavity.ctl mine.ctl
        nereofile set mine.ctl relaxation/kP/under 0.25
        nereofile diff cavity.ctl mine.ctl
        python3 -c "
import nereofile
results = nereofile.read_results(\"$installed/samples/cavity.res\")
print(results)
assert results[\"kU\"].max() == 1
print(nereofile.diff(\"cavity.ctl\", \"mine.ctl\"))"
        cp $installed/samples/cavity.res .
        python3 -m nereofile report . -o case.html
        grep -q "<html" case.html'
}

echo "test-packages: installed from a folder, the demo, removed"
{
    inside apt-get update
    # What the packages are used with stays when they go.
    inside apt-get install -y --no-install-recommends cmake g++ make qtbase5-dev python3-jinja2 python3-matplotlib python3-numpy
    inside apt-get clean
} >"$log" 2>&1 || { tail -n 30 "$log"; exit 1; }
files >"$work/before"
inside sh -c 'apt-get install -y --no-install-recommends /packages/*.deb' >"$log" 2>&1 || { tail -n 30 "$log"; exit 1; }
demo >"$log" 2>&1 || { cat "$log"; exit 1; }
mapfile -t names < <(for package in "$packages"/*.deb; do dpkg-deb -f "$package" Package; done | grep -v -- '-dbgsym$')
inside apt-get purge -y --autoremove "${names[@]}" >"$log" 2>&1 || { tail -n 30 "$log"; exit 1; }
files >"$work/after"
diff "$work/before" "$work/after" || { echo "test-packages: this is left of ${names[*]}" >&2; exit 1; }

echo "test-packages: debian/tests"
mkdir "$work/tree" # the sources that the packages are made of, and their tests
tar -xf "$packages"/nereofileio_*.tar.xz -C "$work/tree" --strip-components=1
results=build/package-tests # of each test what it printed, and the whole log
rm -rf "$results"
if ! autopkgtest --output-dir "$results" --no-built-binaries "$root"/packages/*.deb "$work/tree" -- chroot "$root" >"$log" 2>&1; then
    tail -n 30 "$log"
    for failed in $(awk '$2 == "FAIL" { print $1 }' "$results/summary"); do
        echo "test-packages: $failed says"
        tail -n 100 "$results/$failed"-std*
    done
    echo "test-packages: all that was printed is in $results" >&2
    exit 1
fi
cat "$results/summary"
echo "test-packages: passed"
