"""Fails where a link of a site leads nowhere, or a page asks another site for something: check_links.py FOLDER

Links to other sites are left out: they are asked for nothing as long as nobody follows them.
"""

import html.parser
import pathlib
import re
import sys
import urllib.parse

# Attributes whose address a browser loads by itself.
LOADED = {"script": "src", "img": "src", "iframe": "src", "embed": "src", "source": "src", "object": "data", "link": "href"}


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.names, self.links, self.loaded = set(), [], []
        self.feed(path.read_text(errors="replace"))

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.names.update(values[key] for key in ("id", "name") if values.get(key))
        if tag in ("a", "area") and values.get("href"):
            self.links.append(values["href"])
        elif values.get(LOADED.get(tag)):
            self.loaded.append(values[LOADED[tag]])


def is_elsewhere(address):
    return bool(urllib.parse.urlsplit(address).netloc)


def main(folder):
    pages = {path.resolve(): Page(path) for path in sorted(folder.rglob("*.html"))}
    problems, count = [], 0
    for path, page in pages.items():
        shown = path.relative_to(folder.resolve())
        for address in page.links + page.loaded:
            parts = urllib.parse.urlsplit(address)
            if parts.netloc or parts.scheme in ("mailto", "data", "javascript"):
                continue
            count += 1
            target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
            if target.is_dir():
                target /= "index.html"
            name = urllib.parse.unquote(parts.fragment)
            if not target.exists():
                problems.append(f"{shown}: there is no {address}")
            elif name and target in pages and name not in pages[target].names:
                problems.append(f"{shown}: there is no {address} in that page")
        problems += [f"{shown}: loads {address}" for address in page.loaded if is_elsewhere(address)]
    for path in folder.rglob("*.css"):
        addresses = re.findall(r"""(?:url\(\s*|@import\s+)["']?([^"')\s]+)""", path.read_text(errors="replace"))
        problems += [f"{path.relative_to(folder)}: loads {address}" for address in addresses if is_elsewhere(address)]
    print("\n".join(problems))
    print(f"{len(pages)} pages, {count} links, {len(problems)} of them wrong")
    return 1 if problems or not count else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
