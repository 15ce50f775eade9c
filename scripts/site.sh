#!/usr/bin/env bash
# Makes the site: README and pages, the reference of the headers, that of the Python package, with a search.
# build/site/index.html is its first page. A link that leads nowhere is an error, and so is what a page loads from elsewhere.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh --site
scripts/docs.sh
cmake --preset release >/dev/null
cmake --build --preset release --target nereofile_python >/dev/null

rm -rf build/site build/site-pages
/usr/bin/python3 docs/site/make_pages.py build/site-pages
export NEREO_PYTHON_PACKAGE=$PWD/build/release/python
NEREO_VERSION=$(sed -n 's/^project(NereoFileIO VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
export NEREO_VERSION
/usr/bin/python3 -m sphinx -q -W --keep-going -c docs/site -d build/site-doctrees build/site-pages build/site
cp -r build/doxygen/html build/site/reference
/usr/bin/python3 docs/site/check_links.py build/site
echo "site: build/site/index.html"
