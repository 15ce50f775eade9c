#!/usr/bin/env python3
"""Compares what the libraries export with debian/libnereofileio1.symbols, by which packages know which version they need.

    scripts/symbols.py [FOLDER]               writes that file, from the libraries built in FOLDER, build/release by default.
                                              What is listed keeps the version that has it first; look at what has gone.
    scripts/symbols.py --check [FOLDER]       fails where something has gone that callers may use
    scripts/symbols.py --check-all [FOLDER]   also where something isn't listed; Debian's tools take the version that they
                                              build for the first one that has it
"""

from __future__ import annotations

import argparse
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
PACKAGE = "libnereofileio1"
SYMBOLS = ROOT / "debian" / f"{PACKAGE}.symbols"
FIRST_VERSION = "2024.0.0.0"


def output_of(*command: str, text: str = "") -> str:
    return subprocess.run(command, cwd=ROOT, input=text, stdout=subprocess.PIPE, text=True, check=True).stdout


def version() -> str:
    found = re.search(r"project\(NereoFileIO VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())
    assert found
    return found[1]


def libraries(build: pathlib.Path) -> list[pathlib.Path]:
    return [build / name / f"libNereo{name}.so.1" for name in ("FileIO", "Inspection", "Utility")]


class Headers:
    """What the public headers name."""

    def __init__(self) -> None:
        text = "\n".join(path.read_text() for path in sorted((ROOT / "include").rglob("*.[hd]*")))
        self.words = set(re.findall(r"\w+", text))
        self.namespaces = {name for names in re.findall(r"^namespace ([\w:]+)", text, re.M) for name in names.split("::")}
        self.classes = set(re.findall(r"\b(?:class|struct)\s+(?:\w*EXPORT\s+)?(\w+)[^;{]*\{", text))

    def are_of(self, symbol: str) -> bool:
        """Whether callers may use it."""
        name = re.match(r"(?:vtable for |VTT for )?((?:\w+::)*)~?(\w+)", symbol)
        assert name, symbol
        classes = [part for part in name[1].split("::") if part and part not in self.namespaces]
        return name[2] in self.words and self.classes.issuperset(classes)


def listed(library: pathlib.Path, headers: Headers, versions: dict[tuple[str, str], str]) -> list[str]:
    """The lines of a library. What is exported for the command and the Python package alone may go, since they depend on the
    very version. What comes of templates and inline functions is exported as the compiler likes it; a caller that needs it
    has it, too."""
    exported = output_of("nm", "--dynamic", "--defined-only", "--format=posix", str(library))
    symbols = re.findall(r"^(_Z(?:T[VT])?N?K?(?:5Nereo|3Clt)\S*) (\w)", exported, re.M)
    names = output_of("c++filt", text="\n".join(mangled for mangled, _ in symbols)).splitlines()
    rows = set()
    for (_, kind), name in zip(symbols, names):
        tag = "optional=inline" if kind in "VWu" else "" if headers.are_of(name) else "optional=private"
        rows.add((name, "|".join(filter(None, ("c++", tag)))))
    return [
        f"{library.name} {PACKAGE} #MINVER#",
        "* Build-Depends-Package: libnereofileio-dev",
        *(f' ({tags})"{name}@Base" {versions.get((library.name, name), version())}' for name, tags in sorted(rows)),
        f' (optional=template|regex)"^_Z(N?K?(S|9__gnu_cxx)|T[IS]|GR|GV|Z)[^@]*@Base$" {FIRST_VERSION}',
    ]


def listed_versions(symbols: pathlib.Path) -> dict[tuple[str, str], str]:
    """Of the library and the symbol."""
    versions, library = {}, ""
    for line in symbols.read_text().splitlines() if symbols.exists() else []:
        if not line.startswith((" ", "*")):
            library = line.split()[0]
        elif found := re.match(r' \(.*?\)"(.*)@Base" (\S+)$', line):
            versions[library, found[1]] = found[2]
    return versions


def write(build: pathlib.Path, symbols: pathlib.Path) -> None:
    headers, versions = Headers(), listed_versions(symbols)
    lines = [line for library in libraries(build) for line in listed(library, headers, versions)]
    symbols.write_text("\n".join(lines) + "\n")


def check(build: pathlib.Path, symbols: pathlib.Path, strictness: str) -> int:
    # What has come with a version may go before that is released, as far as Debian's tool knows: it gets a later one.
    later = f"{version()}.1"
    command = ["dpkg-gensymbols", f"-p{PACKAGE}", f"-v{later}", strictness, f"-I{symbols}", "-O/dev/null"]
    command += [f"-e{library}" for library in libraries(build)]
    done = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    if done.returncode:
        print(done.stdout, file=sys.stderr)
        print("symbols: scripts/symbols.py lists what is new; what has gone needs a new SOVERSION", file=sys.stderr)
    return done.returncode


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_const", const="-c1", dest="strictness")
    parser.add_argument("--check-all", action="store_const", const="-c4", dest="strictness")
    parser.add_argument("--symbols", metavar="FILE", type=pathlib.Path, default=SYMBOLS, help="in place of that of debian/")
    parser.add_argument("folder", metavar="FOLDER", nargs="?", type=pathlib.Path, default=ROOT / "build" / "release")
    arguments = parser.parse_args()
    build = arguments.folder.resolve()
    if arguments.strictness:
        return check(build, arguments.symbols.resolve(), arguments.strictness)
    write(build, arguments.symbols)
    return 0


sys.exit(main())
