#!/usr/bin/env bash
# Makes the archive of a version's sources with its checksum in build/archive, if all that a release needs is there and
# everything passes. It publishes nothing, and sets no tag.
#   scripts/release.sh VERSION
set -euo pipefail
cd "$(dirname "$0")/.."
version=${1:-}
if [[ $# -ne 1 || ! $version =~ ^[0-9]+(\.[0-9]+){3}$ ]]; then
    sed -n '2,4s/^# \{0,1\}//p' "$0" >&2
    exit 2
fi

refuse() {
    echo "release: $1" >&2
    exit 1
}

# $(…) of a tool that isn't there must not count as an answer.
[ -z "$(git status --porcelain)" ] || refuse "there are changes that aren't committed, or files that aren't known"

in_cmake=$(sed -n 's/^project(NereoFileIO VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
[ "$in_cmake" = "$version" ] || refuse "the version in CMakeLists.txt is $in_cmake"

in_debian=$(sed -n '1s/^nereofileio (\(.*\)) .*/\1/p' debian/changelog)
[ "$in_debian" = "$version" ] || refuse "the first version of debian/changelog is $in_debian"
! head -n 1 debian/changelog | grep -q UNRELEASED || refuse "debian/changelog says UNRELEASED of it"

grep -qE "^## ${version//./\\.} \([0-9]{4}-[0-9]{2}-[0-9]{2}\)\$" CHANGELOG.md ||
    refuse "CHANGELOG.md has no \"## $version (YYYY-MM-DD)\""
! grep -q '(not yet released)' CHANGELOG.md || refuse "CHANGELOG.md has a version that is not yet released"

for library in NereoFileIO NereoInspection NereoUtility; do
    [ -s "abi/lib$library.abi.xml" ] || refuse "abi/lib$library.abi.xml, the baseline of the interface, isn't there"
done

.ci/run || refuse ".ci/run fails"
scripts/symbols.py --check-all || refuse "debian/libnereofileio1.symbols isn't what the libraries export"
scripts/package.sh --twice || refuse "the packages can't be made, or not twice the same"
scripts/test-packages.sh || refuse "the packages don't work as they are installed"
[ -z "$(git status --porcelain)" ] || refuse "the tests have changed the sources"

# The same bytes, whoever makes it and when: files as they are committed, in the order of git, without an owner.
output=build/archive
name=NereoFileIO-$version
rm -rf "$output"
mkdir -p "$output"
git archive --prefix="$name/" HEAD | xz -9e --threads=1 >"$output/$name.tar.xz"
(cd "$output" && sha256sum "$name.tar.xz" >SHA256SUMS)
echo "release: $output/$name.tar.xz of commit $(git rev-parse HEAD)"
cat "$output/SHA256SUMS"
