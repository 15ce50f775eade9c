#!/usr/bin/env python3
"""Lists what programs and libraries are linked with, as an SPDX 2.3 document in JSON, on a Debian system.

    scripts/sbom.py [OPTION...] PACKAGE VERSION PATH...

PACKAGE holds what is in the PATHs: ELF files, and folders that are searched for such. A library that one of them needs
is listed with the Debian package that it comes from, its version and its source.

    --own PACKAGE PATH   what is needed of the libraries in PATH is of PACKAGE, which has the same VERSION
    --build FOLDER NAME  also lists whose headers the target NAME of the CMake build in FOLDER has compiled in
"""

from __future__ import annotations

import argparse
import datetime
import json
import os
import pathlib
import re
import subprocess
import sys
import typing
import urllib.parse


class DebianPackage(typing.NamedTuple):
    name: str
    version: str
    architecture: str
    source: str
    source_version: str


def output_of(*command: str) -> str:
    environment = {**os.environ, "LC_ALL": "C"}
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True, env=environment).stdout


# What is linked.


def elf_files(paths: typing.Iterable[pathlib.Path]) -> list[pathlib.Path]:
    files = [file for path in paths for file in (sorted(path.rglob("*")) if path.is_dir() else [path])]
    return [file for file in files if file.is_file() and not file.is_symlink() and file.open("rb").read(4) == b"\x7fELF"]


def dynamic_entries(file: pathlib.Path, kind: str) -> set[str]:
    return set(re.findall(rf"\({kind}\).*\[(.*)\]", output_of("readelf", "--dynamic", "--wide", str(file))))


def needed_by(files: typing.Iterable[pathlib.Path]) -> set[str]:
    return {name for file in files for name in dynamic_entries(file, "NEEDED")}


def sonames_of(files: typing.Iterable[pathlib.Path]) -> set[str]:
    return {name for file in files for name in dynamic_entries(file, "SONAME")}


def paths_of(libraries: set[str]) -> set[str]:
    """Where the dynamic linker finds them."""
    cache = output_of("/sbin/ldconfig", "-p")
    found = dict(reversed(re.findall(r"^\t(\S+) \(.*\) => (.*)$", cache, re.M)))  # the first of a name counts
    missing = libraries - found.keys()
    if missing:
        sys.exit(f"sbom: the dynamic linker doesn't find {', '.join(sorted(missing))}")
    return {found[name] for name in libraries}


def headers_of(build: pathlib.Path, target: str) -> set[str]:
    """The headers of the system that the target's sources include."""
    headers, is_of_target = set(), False
    for line in output_of("ninja", "-C", str(build), "-t", "deps").splitlines():
        if not line.startswith(" "):
            is_of_target = f"CMakeFiles/{target}.dir/" in line
        elif is_of_target and line.strip().startswith("/usr/"):
            headers.add(os.path.normpath(line.strip()))
    if not headers:
        sys.exit(f"sbom: {build} has compiled nothing of {target}")
    return headers


# Where it comes from.


def packages_with(paths: set[str]) -> list[DebianPackage]:
    """The installed packages that the files belong to, in the order of their names."""
    names_of = {path: {path, os.path.realpath(path)} for path in paths}
    for known in names_of.values():  # some are listed as they were before /lib became a link to /usr/lib
        known |= {re.sub("^/usr/lib", "/lib", name) for name in known}
    listed, names = set(), set()
    searched = subprocess.run(
        ["dpkg-query", "--search", *sorted(set().union(*names_of.values()))],
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False, env={**os.environ, "LC_ALL": "C"},
    )
    for line in searched.stdout.splitlines():
        packages, path = line.rsplit(": ", 1)
        if not packages.startswith("diversion by "):
            listed.add(path)
            names |= set(packages.split(", "))
    unknown = {path for path, known in names_of.items() if not known & listed}
    if unknown:
        sys.exit(f"sbom: no package has {', '.join(sorted(unknown))}")
    fields = "${Package} ${Version} ${Architecture} ${source:Package} ${source:Version}\\n"
    lines = output_of("dpkg-query", "--show", "--showformat", fields, *sorted(names)).splitlines()
    return sorted(DebianPackage(*line.split()) for line in lines)


# The document.


def spdx_id(name: str) -> str:
    return "SPDXRef-" + re.sub("[^A-Za-z0-9.-]", "-", name)


def described(package: DebianPackage) -> dict[str, typing.Any]:
    version = urllib.parse.quote(package.version, safe="")
    locator = f"pkg:deb/debian/{package.name}@{version}?arch={package.architecture}"
    return {
        "SPDXID": spdx_id(package.name),
        "name": package.name,
        "versionInfo": package.version,
        "sourceInfo": f"built from the Debian source package {package.source} {package.source_version}",
        **unknown_things(),
        "externalRefs": [
            {"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl", "referenceLocator": locator}
        ],
    }


def own(name: str, version: str) -> dict[str, typing.Any]:
    return {"SPDXID": spdx_id(name), "name": name, "versionInfo": version, **unknown_things()}


def unknown_things() -> dict[str, typing.Any]:
    return {
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": "NOASSERTION",
        "copyrightText": "NOASSERTION",
    }


def time_of_build() -> str:
    """The same for each build of the same sources, where the environment says when these were changed."""
    seconds = os.environ.get("SOURCE_DATE_EPOCH")
    utc = datetime.timezone.utc
    time = datetime.datetime.fromtimestamp(int(seconds), utc) if seconds else datetime.datetime.now(utc)
    return time.strftime("%Y-%m-%dT%H:%M:%SZ")


def document(arguments: argparse.Namespace) -> dict[str, typing.Any]:
    files = elf_files(arguments.paths)
    if not files:
        sys.exit("sbom: there is nothing that could be linked")
    needed = needed_by(files) - sonames_of(files)
    packages = [own(arguments.package, arguments.version)]
    relationships = []

    def relate(one: str, relation: str, other: str, comment: str) -> None:
        relationships.append(
            {"spdxElementId": one, "relationshipType": relation, "relatedSpdxElement": other, "comment": comment}
        )

    this = spdx_id(arguments.package)
    for package, path in arguments.own:
        of_package = needed & sonames_of(elf_files([pathlib.Path(path)]))
        if of_package:
            packages.append(own(package, arguments.version))
            relate(this, "DYNAMIC_LINK", spdx_id(package), "needs " + ", ".join(sorted(of_package)))
            needed -= of_package

    libraries_of: dict[DebianPackage, list[str]] = {}
    for library in sorted(needed):
        for package in packages_with(paths_of({library})):
            libraries_of.setdefault(package, []).append(library)
    for package, libraries in sorted(libraries_of.items()):
        packages.append(described(package))
        relate(this, "DYNAMIC_LINK", spdx_id(package.name), "needs " + ", ".join(libraries))

    targets_with: dict[DebianPackage, list[str]] = {}
    for folder, target in arguments.build:
        for package in packages_with(headers_of(pathlib.Path(folder), target)):
            targets_with.setdefault(package, []).append(target)
    for package, targets in sorted(targets_with.items()):
        packages.append(described(package))
        into = "its headers are compiled into " + ", ".join(targets)
        relate(spdx_id(package.name), "BUILD_DEPENDENCY_OF", this, into)

    name = f"{arguments.package}-{arguments.version}"
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": name,
        "documentNamespace": f"https://nereofileio.invalid/spdx/{name}-{output_of('dpkg', '--print-architecture').strip()}",
        "creationInfo": {"created": time_of_build(), "creators": ["Tool: sbom.py"]},
        "documentDescribes": [this],
        "packages": list({package["SPDXID"]: package for package in packages}.values()),
        "relationships": [
            {"spdxElementId": "SPDXRef-DOCUMENT", "relationshipType": "DESCRIBES", "relatedSpdxElement": this},
            *relationships,
        ],
    }


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("package", metavar="PACKAGE")
    parser.add_argument("version", metavar="VERSION")
    parser.add_argument("paths", metavar="PATH", nargs="+", type=pathlib.Path)
    parser.add_argument("--own", nargs=2, action="append", default=[], metavar=("PACKAGE", "PATH"))
    parser.add_argument("--build", nargs=2, action="append", default=[], metavar=("FOLDER", "NAME"))
    json.dump(document(parser.parse_args()), sys.stdout, indent=2)
    print()


main()
