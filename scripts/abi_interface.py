"""Reads abidw's description of a library and writes what of it compiled programs see: abi_interface.py HEADERS

That are the functions and variables that the headers in the folder declare, with the types that these need. Of other types the
name and the size stay, and the private ones of the library itself, to which there are only pointers, have no size either. The
rest is megabytes, most of them of the standard library and of Qt, and differs with each version of these.
"""

import os
import pathlib
import re
import sys
import xml.etree.ElementTree

CLASSES = ("class-decl", "union-decl")
TYPES = (*CLASSES, "enum-decl")
REFERENCES = ("type-id", "naming-typedef-id", "def-of-decl-id")


class Headers:
    def __init__(self, folder):
        self.text = "\n".join(path.read_text() for path in sorted(pathlib.Path(folder).rglob("*.h")))
        self.namespaces = {name.split("::")[0] for name in re.findall(r"^namespace ([\w:]+)", self.text, re.M)}
        self.classes = set(re.findall(r"\b(?:class|struct)\s+(?:\w*EXPORT\s+)?(\w+)[^;{]*\{", self.text))

    def name(self, word):
        return re.search(rf"(?<!\w){re.escape(word)}(?!\w)", self.text)  # which may be operator==


def names_around(symbol):
    """The names of the namespaces, the classes and the function in a symbol, from the outside in."""
    names = []
    rest = re.sub("^_ZNK?", "", symbol)
    while length := re.match("[0-9]+", rest):
        rest = rest[length.end() :]
        names.append(rest[: int(length[0])])
        rest = rest[int(length[0]) :]
    return names


class Interface:
    def __init__(self, corpus, headers):
        self.corpus = corpus
        self.headers = headers
        self.parents = {child: parent for parent in corpus.iter() for child in parent}
        self.types = {}
        for element in corpus.iter():
            if "id" in element.attrib:
                self.types.setdefault(element.get("id"), []).append(element)
        self.needed = set()
        self.waiting = []

    def around(self, element):
        while (element := self.parents.get(element)) is not None:
            yield element

    def is_own(self, element):
        namespaces = [holder.get("name") for holder in self.around(element) if holder.tag == "namespace-decl"]
        return bool(namespaces) and namespaces[-1] in self.headers.namespaces

    def is_public(self, element):
        """Whether the element of the library stands in the headers, as far as its name tells."""
        classes = [holder.get("name") for holder in (element, *self.around(element)) if holder.tag in CLASSES]
        return self.headers.classes >= set(classes) if classes else self.headers.name(element.get("name"))

    def is_callable(self, member):
        function = member.find("function-decl")
        return "elf-symbol-id" in function.attrib or "vtable-offset" in member.attrib

    def parts(self, element):
        if element.tag in CLASSES and not (self.is_own(element) and self.is_public(element)):
            return []
        return [part for part in element if part.tag != "member-function" or self.is_callable(part)]

    def need(self, element):
        if element not in self.needed:
            self.needed.add(element)
            self.waiting.append(element)

    def follow(self):
        while self.waiting:
            element = self.waiting.pop()
            for part in self.parts(element):
                self.need(part)
            for name in REFERENCES:
                for type_ in self.types.get(element.get(name), []):
                    self.need(type_)
            for holder in self.around(element):
                if holder.tag in CLASSES:
                    self.need(holder)
                self.needed.add(holder)

    def is_member(self, symbol):
        """Whether a function of a public class has this name. abidw names no function for a few of them, such as overloads
        that differ in being const alone."""
        names = names_around(symbol.get("name"))
        is_own = not self.headers.namespaces.isdisjoint(names[:1])
        return is_own and symbol.get("binding") == "global-binding" and not self.headers.classes.isdisjoint(names)

    def need_symbols(self):
        names = {element.get("elf-symbol-id") for element in self.needed}
        names |= {symbol.get("name") for symbol in self.corpus.iter("elf-symbol") if self.is_member(symbol)}
        tables = "|".join(f"{len(name)}{name}" for name in self.headers.classes)
        for symbol in self.corpus.iter("elf-symbol"):
            same = {symbol.get("name"), *symbol.get("alias", "").split(",")} - {""}
            if names & same or re.match(rf"_ZT[VIS]N\w*?({tables})E$", symbol.get("name")):
                names |= same
        for symbol in self.corpus.iter("elf-symbol"):
            if symbol.get("name") in names:
                self.needed.update((symbol, *self.around(symbol)))

    def reduce(self):
        for element in self.corpus.iter():
            if "elf-symbol-id" in element.attrib and self.is_own(element) and self.is_public(element):
                self.need(element)
        self.follow()
        self.corpus.set("tracking-non-reachable-types", "yes")
        # A container's name doesn't lead to what is in it.
        for element in self.corpus.iter():
            is_defined = element.tag in TYPES and "is-declaration-only" not in element.attrib
            if is_defined and element not in self.needed and self.is_own(element) and self.is_public(element):
                element.set("is-non-reachable", "yes")
                self.need(element)
        self.follow()
        self.need_symbols()
        for element in list(self.corpus.iter()):
            for part in [part for part in element if part not in self.needed]:
                element.remove(part)
            if element.tag in CLASSES and not len(element):
                element.text = None
                if self.is_own(element) and not self.is_public(element):
                    element.attrib.pop("size-in-bits", None)
                    element.set("is-declaration-only", "yes")
            if element.tag == "abi-instr":
                element.attrib.pop("language", None)
                element.set("path", os.path.basename(element.get("path")))


def main(headers):
    tree = xml.etree.ElementTree.parse(sys.stdin)
    Interface(tree.getroot(), Headers(headers)).reduce()
    xml.etree.ElementTree.indent(tree, " ")
    tree.write(sys.stdout, encoding="unicode")
    print()


if __name__ == "__main__":
    main(sys.argv[1])
