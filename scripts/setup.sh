#!/usr/bin/env bash
# Installs what is missing from Debian's packages, as root or with sudo, and does nothing where all is there.
#   scripts/setup.sh                   what building, the demo and the tests need
#   scripts/setup.sh --developer       also what the other scripts, .ci/run and the benchmarks need
#   scripts/setup.sh --packager        also what scripts/package.sh and scripts/test-packages.sh need
#   scripts/setup.sh --site            also what scripts/site.sh needs
#   scripts/setup.sh --other-machines  also what scripts/other-machines.sh needs: cross compilers and emulators
set -euo pipefail

packages=(
    g++ cmake ninja-build pkg-config
    qtbase5-dev            # Qt 5 Core
    qttools5-dev           # CMake's functions for translations
    qttools5-dev-tools     # lrelease and lupdate
    libcli11-dev           # options of the command
    libgtest-dev libgmock-dev
    python3-jsonschema     # the tests of the command, with Python 3
    strace                 # which files it reads
    libxml2-utils          # xmllint, by which they try the XML Schemas
    dpkg-dev               # those of the packages
    locales                # the source of the tests' locale with a comma
    pybind11-dev python3-dev python3-numpy # the Python package
    python3-pytest python3-hypothesis
    python3-jinja2 python3-matplotlib # the report of a case
)
developer_packages=(
    clang                  # Clang 14
    libclang-rt-14-dev     # its sanitizers and libFuzzer
    clang-format clang-tidy
    gcovr                  # coverage
    libbenchmark-dev
    doxygen                # the reference of the public headers
    abigail-tools          # the interface that compiled programs see
    mypy                   # the types of the Python package, and what it can do without
    python3-pandas python3-xarray python3-dask python3-distributed python3-tqdm
    python3-html5lib chromium chromium-driver python3-selenium # the tests of the report
    python3-babel          # its translations
    python3-nbformat python3-nbclient python3-ipykernel
    python3-dbg            # the interpreter that counts references
    python3-pip python3-venv python3-setuptools python3-wheel
)
packager_packages=(
    build-essential debhelper dh-python fakeroot lintian
    doxygen python3-setuptools
    mmdebstrap autopkgtest # a system of its own to try the packages in
)
site_packages=(
    doxygen
    python3-sphinx python3-myst-parser # pages in Markdown
    furo                   # how they look
)
other_machines_packages=(
    g++-s390x-linux-gnu g++-aarch64-linux-gnu g++-i686-linux-gnu
    g++-mingw-w64-x86-64   # for Windows
    qemu-user
)

case "${1:-}" in
    "") ;;
    --developer)
        packages+=("${developer_packages[@]}")
        command -v npm >/dev/null || packages+=(npm) # for axe-core; Node.js from elsewhere has its own
        ;;
    --packager) packages+=("${packager_packages[@]}") ;;
    --site) packages+=("${site_packages[@]}") ;;
    --other-machines) packages+=("${other_machines_packages[@]}") ;;
    *)
        sed -n '2,7s/^# \{0,1\}//p' "$0" >&2
        exit 2
        ;;
esac

is_installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

missing=()
for package in "${packages[@]}"; do
    is_installed "$package" || missing+=("$package")
done
if [ "${#missing[@]}" -eq 0 ]; then
    echo "setup: all ${#packages[@]} packages are installed"
    exit 0
fi

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
