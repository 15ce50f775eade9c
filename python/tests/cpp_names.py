"""The public names of the classes in the C++ headers."""

from __future__ import annotations

import pathlib
import re
from typing import Dict, Iterator, Set, Tuple

INCLUDE = pathlib.Path(__file__).parents[2] / "include"


def _without_comments(text: str) -> str:
    text = re.sub(r"/\*.*?\*/|//[^\n]*", "", text, flags=re.S)
    return re.sub(r"^\s*#.*(?:\\\n.*)*$", "", text, flags=re.M)


def _blocks(text: str) -> Iterator[Tuple[str, str, str]]:
    """Kind, name and body of each class and struct, nested ones too."""
    for match in re.finditer(r"\b(class|struct)\s+(?:[A-Z]+_EXPORT\s+)?(\w+)\s*(?:final\s*)?(?::[^{;]*)?\{", text):
        depth, end = 1, match.end()
        while depth:
            depth += {"{": 1, "}": -1}.get(text[end], 0)
            end += 1
        yield match[1], match[2], text[match.end() : end - 1]


def _without_bodies(body: str) -> str:
    """Without what stands in braces, as of functions and initial values; a ; ends what had a body."""
    previous = ""
    while previous != body:
        previous = body
        body = re.sub(r"\{[^{}]*\}(?!\s*;)", ";", body)
        body = re.sub(r"\{[^{}]*\}", "", body)
    return body


def _members(kind: str, name: str, body: str) -> Iterator[str]:
    # What is nested counts by itself, but for enumerators, which count as members.
    for enumerators in re.findall(r"\benum\s+\w*\s*(?::\s*\w+\s*)?\{([^}]*)\}", body):
        for enumerator in enumerators.split(","):
            if enumerator.strip():
                yield re.split(r"\W", enumerator.strip())[0]
    body = re.sub(r"\benum\b[^;{]*\{[^}]*\}\s*;", "", body)
    public = kind == "struct"
    for part in re.split(r"\b(public|protected|private):", _without_bodies(body)):
        if part in ("public", "protected", "private"):
            public = part == "public"
            continue
        if not public:
            continue
        for statement in part.split(";"):
            statement = " ".join(statement.split())
            if not statement or statement.startswith(("friend", "using", "enum", "struct", "class", "template")):
                continue
            function = re.search(r"(operator\W+|~?\w+)\s*\(", statement)
            member = function[1].strip() if function else re.split(r"\s*=", statement)[0].split()[-1]
            if member.lstrip("~") != name and not member.startswith("operator"):
                yield member


def public_names() -> Dict[str, Set[str]]:
    """The names of the public members of each class, without constructors and operators."""
    names: Dict[str, Set[str]] = {}
    for header in sorted(INCLUDE.glob("Nereo*/*.h")):
        for kind, name, body in _blocks(_without_comments(header.read_text())):
            names.setdefault(name, set()).update(_members(kind, name, body))
    return names


def public_functions() -> Set[str]:
    """The functions that belong to no class."""
    found = set()
    for header in sorted(INCLUDE.glob("Nereo*/*.h")):
        text = _without_comments(header.read_text())
        found.update(re.findall(r"^NEREO\w+_EXPORT\s[\w:<>&\s]+?(\w+)\(", text, re.M))
    return found
