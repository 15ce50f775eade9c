"""The scripts that make the site leave out no page, and see what is wrong in one."""

import contextlib
import io
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCES / "docs" / "site"))

import check_links  # noqa: E402
import make_pages  # noqa: E402

GOOD = {
    "index.html": '<a href="docs/page.html#there">page</a><a href="https://example.org/gone">elsewhere</a>'
    '<a href="docs/">folder</a><a id="top" href="#top">up</a><img src="data:image/png;base64,AA">',
    "docs/page.html": '<h1 id="there">Page</h1><a href="../index.html">back</a><link href="../style.css">',
    "docs/index.html": "<p>Folder</p>",
    "style.css": "body { background: url(data:image/png;base64,AA) }",
}


class CheckLinksTest(unittest.TestCase):
    def check(self, **changes):
        """The exit code for the good site with these pages instead, and what is printed."""
        with tempfile.TemporaryDirectory() as folder, contextlib.redirect_stdout(io.StringIO()) as printed:
            for name, content in {**GOOD, **changes}.items():
                path = pathlib.Path(folder) / name
                path.parent.mkdir(exist_ok=True)
                path.write_text(content)
            return check_links.main(pathlib.Path(folder)), printed.getvalue()

    def test_a_good_site_passes(self):
        code, printed = self.check()
        self.assertEqual((code, printed.splitlines()[-1]), (0, "3 pages, 5 links, 0 of them wrong"), printed)

    def test_what_is_wrong_is_told(self):
        for name, content, expected in [
            ("docs/page.html", '<h1 id="there">Page</h1><a href="gone.html">gone</a>', "docs/page.html: there is no gone.html"),
            ("docs/page.html", '<h1 id="here">Page</h1>', "index.html: there is no docs/page.html#there in that page"),
            ("more.html", '<a href="#gone">gone</a>', "more.html: there is no #gone in that page"),
            ("more.html", '<img src="gone.png">', "more.html: there is no gone.png"),
            ("more.html", '<script src="https://example.org/a.js">', "more.html: loads https://example.org/a.js"),
            ("more.html", '<link href="//example.org/a.css">', "more.html: loads //example.org/a.css"),
            ("style.css", "@import 'https://example.org/a.css'", "style.css: loads https://example.org/a.css"),
            ("style.css", "a { src: url(//example.org/a.woff) }", "style.css: loads //example.org/a.woff"),
        ]:
            with self.subTest(content=content):
                code, printed = self.check(**{name: content})
                self.assertEqual(code, 1)
                self.assertIn(expected, printed.splitlines())

    def test_a_site_without_links_is_none(self):
        with tempfile.TemporaryDirectory() as folder, contextlib.redirect_stdout(io.StringIO()):
            self.assertEqual(check_links.main(pathlib.Path(folder)), 1)


class NavigationTest(unittest.TestCase):
    def test_each_page_stands_in_it_once(self):
        names = [name for _, name in make_pages.sources()]
        self.assertIn("docs/formats/index", names)
        listed = re.findall(r"^[\w/-]+$", make_pages.navigation(names), re.M)
        self.assertEqual(sorted(listed), sorted(set(names) - {"index"}))

    def test_pages_without_a_place_come_last(self):
        self.assertRegex(make_pages.navigation(["index", "docs/python", "docs/new"]), r"(?s)docs/python.*More\n\ndocs/new\n")

    def test_places_without_a_page_are_left_out(self):
        self.assertNotIn("docs/gone", make_pages.navigation(["index", "docs/python"]))

    def test_all_pages_of_the_sources_are_on_the_site(self):
        tracked = subprocess.run(
            ["git", "ls-files", "*.md"], cwd=SOURCES, stdout=subprocess.PIPE, check=False
        ).stdout.decode().split()
        if not tracked:
            self.skipTest("these sources are no repository")
        self.assertLessEqual({SOURCES / path for path in tracked}, {path for path, _ in make_pages.sources()})


if __name__ == "__main__":
    unittest.main()
