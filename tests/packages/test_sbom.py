"""The list of what is linked is true, and one of SPDX."""

import json
import os
import pathlib
import shutil
import subprocess
import unittest

import jsonschema

FOLDER = pathlib.Path(__file__).resolve().parent
PROGRAM = FOLDER.parents[1] / "scripts" / "sbom.py"
BUILD = pathlib.Path(os.environ["NEREO_BUILD_FOLDER"])
LIBRARY = pathlib.Path(os.environ["NEREO_FILE_LIBRARY"]).resolve()


@unittest.skipUnless(shutil.which("dpkg-query"), "this is no Debian")
class SbomTest(unittest.TestCase):
    def made(self, *arguments, code=0, **environment):
        done = subprocess.run(
            [str(PROGRAM), *map(str, arguments)],
            env={**os.environ, **environment}, capture_output=True, text=True, check=False,
        )
        self.assertEqual(done.returncode, code, done.stderr)
        return done.stderr if code else done.stdout

    def document(self, *arguments, **environment):
        document = json.loads(self.made(*arguments, **environment))
        jsonschema.Draft202012Validator(json.loads((FOLDER / "spdx.schema.json").read_text())).validate(document)
        ids = [package["SPDXID"] for package in document["packages"]]
        self.assertEqual(len(set(ids)), len(ids))
        for relationship in document["relationships"]:
            for end in ("spdxElementId", "relatedSpdxElement"):
                self.assertIn(relationship[end], ["SPDXRef-DOCUMENT", *ids])
        return document

    def related(self, document, kind):
        """Packages and the comments, by the other end of the relationship."""
        return {
            (item["relatedSpdxElement"] if kind == "DYNAMIC_LINK" else item["spdxElementId"]): item["comment"]
            for item in document["relationships"] if item["relationshipType"] == kind
        }

    def test_what_is_linked_is_listed_with_its_version(self):
        document = self.document("libnereofileio1", "1.2", LIBRARY, "--own", "libnereofileio1", BUILD / "Utility")
        linked = self.related(document, "DYNAMIC_LINK")
        self.assertEqual(linked["SPDXRef-libqt5core5a"], "needs libQt5Core.so.5")
        self.assertEqual(linked["SPDXRef-libstdc--6"], "needs libstdc++.so.6")
        self.assertIn("libc.so.6", linked["SPDXRef-libc6"])
        qt, = (package for package in document["packages"] if package["name"] == "libqt5core5a")
        installed = subprocess.run(
            ["dpkg-query", "-W", "-f", "${Version} ${Architecture}", "libqt5core5a"], stdout=subprocess.PIPE, text=True, check=True
        ).stdout.split()
        self.assertEqual(qt["versionInfo"], installed[0])
        self.assertEqual(
            qt["externalRefs"][0]["referenceLocator"],
            f"pkg:deb/debian/libqt5core5a@{installed[0].replace('+', '%2B')}?arch={installed[1]}",
        )
        self.assertIn("qtbase-opensource-src", qt["sourceInfo"])

    def test_all_that_is_needed_is_accounted_for(self):
        document = self.document("p", "1.2", LIBRARY, "--own", "p", BUILD / "Utility")
        needed = subprocess.run(["objdump", "-p", LIBRARY], stdout=subprocess.PIPE, text=True, check=True).stdout
        names = {line.split()[1] for line in needed.splitlines() if line.split()[:1] == ["NEEDED"]}
        said = {name for comment in self.related(document, "DYNAMIC_LINK").values() for name in comment[6:].split(", ")}
        self.assertEqual(said, names)
        self.assertIn("libNereoUtility.so.1", said)

    def test_headers_are_listed_with_their_packages(self):
        if not shutil.which("ninja") or not (BUILD / "build.ninja").exists():
            self.skipTest("this isn't Ninja's build")
        arguments = ("libnereofileio1", "1.2", LIBRARY, "--own", "q", BUILD / "Utility", "--build", BUILD)
        document = self.document(*arguments, "NereoFileIO")
        compiled = self.related(document, "BUILD_DEPENDENCY_OF")
        self.assertEqual(compiled["SPDXRef-qtbase5-dev"], "its headers are compiled into NereoFileIO")
        self.assertNotIn("SPDXRef-libgtest-dev", compiled)
        self.assertIn("has compiled nothing of None", self.made(*arguments, "None", code=1))

    def test_the_same_build_has_the_same_list(self):
        arguments = ("p", "1.2", BUILD / "Utility", "--own", "q", BUILD / "Utility")
        first = self.made(*arguments, SOURCE_DATE_EPOCH="1700000000", TZ="UTC")
        self.assertEqual(first, self.made(*arguments, SOURCE_DATE_EPOCH="1700000000", TZ="Pacific/Chatham", LC_ALL="C"))
        self.assertEqual(json.loads(first)["creationInfo"]["created"], "2023-11-14T22:13:20Z")

    def test_what_it_cannot_tell_is_an_error(self):
        self.assertIn("nothing that could be linked", self.made("p", "1", FOLDER, code=1))
        self.assertIn("doesn't find libNereoUtility.so.1", self.made("p", "1", LIBRARY, code=1))


if __name__ == "__main__":
    unittest.main()
