"""Makes the pages of the site from those of the sources: make_pages.py FOLDER

Each README becomes the index of its folder, links to sources lead to the C++ reference, which is made by scripts/docs.sh, and
the first page gets a table of contents.
"""

import pathlib
import re
import sys
import xml.etree.ElementTree

SOURCES = pathlib.Path(__file__).resolve().parents[2]
DOXYGEN = SOURCES / "build" / "doxygen"

# The pages by what somebody wants to do.
NAVIGATION = {
    "Use it": [
        "docs/nereofile", "docs/report", "docs/python", "docs/editing", "docs/findings", "docs/troubleshooting", "samples/index",
    ],
    "Formats": ["docs/formats/index", "docs/formats/*"],
    "Reference": ["cpp-reference", "python-reference", "docs/versions", "CHANGELOG"],
    "How it is built": [
        "docs/architecture", "docs/performance", "docs/reliability", "SECURITY", "CONTRIBUTING", "docs/testing",
    ],
}


# The pages that the site alone has.
CPP_REFERENCE = """# C++

[The reference](reference/index.html) has the public headers with all that they say of their classes, functions and
enumerators, the tables, and the examples. Its search finds members too. What of it stays is on the page on
[versions](docs/versions.md).

The classes and records, in the namespaces `Nereo::Io` (NereoFileIO), `Nereo::Inspection` (NereoInspection), `Nereo::Util`
(NereoUtility) and `Clt`, the vocabularies of materials:

"""
PYTHON_REFERENCE = """# Python package

[The tour](docs/python.md) shows how it is used.

```{eval-rst}
.. automodule:: nereofile
   :members:
   :imported-members:
```
"""


def sources():
    """The pages of the sources, as (file, name on the site). What is built or written in them isn't theirs."""
    for path in sorted(SOURCES.rglob("*.md")):
        inside = path.relative_to(SOURCES)
        if inside.parts[0] not in ("build", "out", "debian") and not any(part.startswith(".") for part in inside.parts):
            yield path, re.sub(r"(^|/)README$", r"\1index", str(inside.with_suffix("")))


def navigation(names):
    """Tables of contents. A page that has no place of its own is in the last one."""
    left = sorted(set(names) - {"index"})
    groups = {}
    for title, patterns in NAVIGATION.items():
        groups[title] = []
        for pattern in patterns:
            found = [name for name in left if pathlib.PurePath(name).match(pattern)]
            groups[title] += found
            left = [name for name in left if name not in found]
    groups["More"] = left
    return "".join(
        "\n```{toctree}\n:hidden:\n:caption: %s\n\n%s\n```\n" % (title, "\n".join(found))
        for title, found in groups.items()
        if found
    )


def reference_of(path):
    """The page of the reference for a source, or None."""
    name = path.name.replace("_", "__").replace(".", "_8")
    pages = [f"{name}_source.html", f"{name}.html"]
    return next((page for page in pages if (DOXYGEN / "html" / page).exists()), None)


def classes():
    """The classes and records of the public headers, each with its page of the reference."""
    tags = xml.etree.ElementTree.parse(DOXYGEN / "NereoFileIO.tag")
    found = [tag for tag in tags.iter("compound") if tag.get("kind") in ("class", "struct")]
    for tag in sorted(found, key=lambda tag: tag.findtext("name")):
        yield f"- [`{tag.findtext('name')}`](reference/{tag.findtext('filename')})\n"


class Page:
    def __init__(self, name, text, links_from, folder):
        self.text = text
        self.links_from = links_from
        self.folder = folder
        self.to_root = "../" * name.count("/")
        self.target = folder / f"{name}.md"

    def write(self):
        # Code is no text with links.
        parts = re.split(r"(^```.*?^```$)", self.text, flags=re.M | re.S)
        parts[::2] = [re.sub(r"\[([^\]]*)\]\(([^()\s:]+)\)", self.link, part) for part in parts[::2]]
        self.target.parent.mkdir(parents=True, exist_ok=True)
        self.target.write_text("".join(parts))

    def link(self, match):
        words, target = match.groups()
        if target.startswith("reference/"):
            return self.html_link(words, target)
        if ".md" in target:
            # Where the words are a file's name, the title of its page is said instead.
            return f"[{'' if words.endswith('.md') else words}]({re.sub(r'README(?=[.]md)', 'index', target)})"
        source = (self.links_from / target).resolve()
        if not source.is_file():
            return match[0]
        if page := reference_of(source):
            return self.html_link(words, f"reference/{page}")
        # What the reference doesn't have is there to be downloaded.
        copy = self.folder / source.relative_to(SOURCES)
        copy.parent.mkdir(parents=True, exist_ok=True)
        copy.write_bytes(source.read_bytes())
        return match[0]

    def html_link(self, words, target):
        """To what is no page of the site's own."""
        words = re.sub(r"`([^`]*)`", r"<code>\1</code>", words)
        return f'<a class="reference" href="{self.to_root}{target}">{words}</a>'


def main(folder):
    pages = {name: Page(name, path.read_text(), path.parent, folder) for path, name in sources()}
    pages["cpp-reference"] = Page("cpp-reference", CPP_REFERENCE + "".join(classes()), SOURCES, folder)
    pages["python-reference"] = Page("python-reference", PYTHON_REFERENCE, SOURCES, folder)
    pages["index"].text += navigation(pages)
    for page in pages.values():
        page.write()


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
