#!/usr/bin/env bash
# Makes the reference of the public headers with all pages of the documentation, build/doxygen/html/index.html. Any warning
# of doxygen's is an error, and so is a row of a table or a class that isn't in it, and a link out of it.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh --developer
rm -rf build/doxygen
mkdir -p build
doxygen docs/doxygen/Doxyfile

missing=0
require() { # NAME: is described
    grep -q "<name>\(.*::\)\?$1</name>" build/doxygen/NereoFileIO.tag && return
    echo "docs: $1 isn't described" >&2
    missing=1
}
for name in $(sed -n 's/^[A-Z_]\+(\([A-Za-z0-9]\+\),.*/\1/p' include/*/*.def) \
            $(sed -n 's/^class [A-Z_]\+EXPORT \([A-Za-z0-9]\+\) .*/\1/p' include/*/*.h); do
    require "$name"
done
if grep -o 'href="[^":]*\.\(md\|h\|def\|cpp\|py\|ipynb\)[#"]' build/doxygen/html/*.html >&2; then
    echo "docs: these links lead out of the reference" >&2
    missing=1
fi
[ "$missing" -eq 0 ]
echo "docs: build/doxygen/html/index.html"
