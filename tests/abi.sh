#!/usr/bin/env bash
# scripts/abi.sh tells what breaks compiled callers from what doesn't, of a small library with one change at a time.
#   tests/abi.sh SOURCES COMPILER
# Exits with 77 where the programs of abigail-tools are missing.
set -euo pipefail
abi=$1/scripts/abi.sh
compiler=$2

for program in abidw abidiff; do
    if ! command -v "$program" >/dev/null; then
        echo "abi: there is no $program"
        exit 77
    fi
done

folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
mkdir "$folder/include"
header=$folder/include/Mesh.h
source=$folder/Mesh.cpp
baseline=$folder/baseline.xml
wrong=0

write_library() {
    cat >"$header" <<'CPP'
#pragma once
#include <vector>
#define EXPORT __attribute__((visibility("default")))
namespace Mesh {
enum Shape : int { Triangle, Square };
struct Options {
    int count = 0;
    double size = 1;
};
struct Edge {
    int first = 0;
    int second = 0;
};
struct Private;
class EXPORT File {
public:
    virtual ~File();
    virtual bool load(const char* path);
    int nodes(const Options& options) const;
    Shape shape() const;
    std::vector<Edge> edges() const;
    Options& options();
    const Options& options() const;
private:
    Private* private_ = nullptr;
    Options options_;
};
EXPORT double area(const File& file);
EXPORT bool operator==(const Edge& left, const Edge& right);
}
CPP
    cat >"$source" <<'CPP'
#include "Mesh.h"
namespace Mesh {
struct Private { int nodes = 0; };
File::~File() { delete private_; }
bool File::load(const char*) { private_ = new Private; return true; }
int File::nodes(const Options& options) const { return options.count + private_->nodes; }
Shape File::shape() const { return Square; }
std::vector<Edge> File::edges() const { return {Edge()}; }
Options& File::options() { return options_; }
const Options& File::options() const { return options_; }
class EXPORT Reader {
public:
    int read(int count) const;
};
int Reader::read(int count) const { return count; }
double area(const File& file) { return file.nodes({}); }
bool operator==(const Edge& left, const Edge& right) { return left.first == right.first; }
}
CPP
}

compare() { # SONAME OPTION...
    "$compiler" -std=c++17 -g -O0 -fPIC -shared -fvisibility=hidden -Wl,-soname,"$1" -I"$folder/include" \
        "$source" -o "$folder/libMesh.so"
    "$abi" "$folder/libMesh.so" "$folder/include" "$baseline" "${@:2}" 2>&1
}

expect() { # CODE TEXT CHANGE SED_SCRIPT [SONAME [OPTION]]
    local code=0 said before
    write_library
    before=$(cat "$header" "$source")
    sed -i "$4" "$header" "$source"
    if [ -n "$4" ] && [ "$before" = "$(cat "$header" "$source")" ]; then
        echo "$3: nothing is changed"
        wrong=$((wrong + 1))
    fi
    said=$(compare "${5:-libMesh.so.1}" ${6:+"$6"}) || code=$?
    if [ "$code" -ne "$1" ] || [[ $said != *"$2"* ]]; then
        printf '%s: exit code %s instead of %s with "%s":\n%s\n\n' "$3" "$code" "$1" "$2" "$said"
        wrong=$((wrong + 1))
    fi
}

expect 1 "there is no $baseline" "no baseline" ""
expect 0 "" "the first baseline" "" libMesh.so.1 --update

same="libMesh.so is as before"
more="libMesh.so has more than before"
broken="put back what they need, or raise SOVERSION"

expect 0 "$same" "no change" ""
expect 0 "$same" "what no header says" 's/int nodes = 0; }/int nodes = 0; int edges = 0; }/'
expect 0 "$same" "an exported class that no header has" 's/read(int count)/read(double count, int)/'
expect 0 "$same" "what a source uses" 's/^#include "Mesh.h"/&\n#include <map>\nint uses() { return std::map<int, int>().empty(); }/'
expect 0 "$same" "a place in a source" 's/^namespace Mesh {/\n\nnamespace Mesh {/'

expect 0 "$more" "a function more" '/^EXPORT double area/aEXPORT inline double volume(const File\&) { return 0; }
s/^double area.*/&\ndouble (*used)(const File\&) = volume;/'
expect 0 "$more" "a member function more" 's/^    Shape shape() const;/&\n    int sides() const;/
s/^Shape File::shape.*/&\nint File::sides() const { return 0; }/'

expect 0 "$more" "a record more" 's/^struct Private;/struct Face { int edge = 0; };\n&/
s/^    Shape shape() const;/&\n    std::vector<Face> faces() const;/
s/^Shape File::shape.*/&\nstd::vector<Face> File::faces() const { return {Face()}; }/'
expect 0 "" "an enumerator more at the end" 's/Triangle, Square }/Triangle, Square, Circle }/'

expect 1 "$broken" "a function less" '/double area(/d'
expect 1 "$broken" "a member function less" '/Shape shape() const;/d; /^Shape File::shape/d'
expect 1 "$broken" "an overload less" '/const Options& options() const;/d; /^const Options& File::options/d'
expect 1 "$broken" "an operator less" '/bool operator==/d'
expect 1 "$broken" "another parameter" 's/double area(const File& file)/double area(File\& file)/'
expect 1 "$broken" "a field more in a record" 's/^    double size = 1;/&\n    double angle = 0;/'
expect 1 "$broken" "a field more in a record of a container" 's/^    int second = 0;/&\n    int third = 0;/'
expect 1 "$broken" "fields in another order" 's/^    int count = 0;/    double size = 1;/; t; s/^    double size = 1;/    int count = 0;/'
expect 1 "$broken" "another type of a field" 's/double size = 1;/float size = 1;/'
expect 1 "$broken" "a private field more" 's/Private\* private_ = nullptr;/&\n    int nodes_ = 0;/'
expect 1 "$broken" "a virtual function more" 's/    virtual bool load.*/    virtual bool save() { return false; }\n&/'
expect 1 "$broken" "an enumerator with another value" 's/enum Shape : int { Triangle,/enum Shape : int { Line, Triangle,/'

expect 1 "$broken" "no baseline for what breaks callers" '/double area(/d' "" --update
expect 0 "libMesh.so.2 in place of libMesh.so.1" "a new SOVERSION" '/double area(/d' libMesh.so.2 --update
expect 0 "$same" "the baseline of the new SOVERSION" '/double area(/d' libMesh.so.2

write_library
"$compiler" -std=c++17 -fPIC -shared -fvisibility=hidden -I"$folder/include" "$source" -o "$folder/libMesh.so"
if "$abi" "$folder/libMesh.so" "$folder/include" "$baseline" 2>/dev/null; then
    echo "a library without descriptions for debuggers passes"
    wrong=$((wrong + 1))
fi
echo "abi: $wrong wrong answers"
[ "$wrong" -eq 0 ]
