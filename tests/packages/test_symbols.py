"""The symbols file says what callers may count on, and notices where that goes."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = SOURCES / "scripts" / "symbols.py"
BUILD = os.environ["NEREO_BUILD_FOLDER"]


class SymbolsTest(unittest.TestCase):
    def setUp(self):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="nereo-symbols-"))
        self.addCleanup(shutil.rmtree, folder)
        self.file = folder / "symbols"
        self.run_program()

    def run_program(self, *options, code=0):
        done = subprocess.run(
            [PROGRAM, *options, "--symbols", self.file, BUILD], capture_output=True, text=True, check=False
        )
        self.assertEqual(done.returncode == 0, code == 0, done.stderr)
        return done.stderr

    def listed(self, function):
        """The tags and the version that the first symbol with these letters is listed with."""
        return re.search(rf'^ \((.*?)\)".*{re.escape(function)}.*@Base" (\S+)$', self.file.read_text(), re.M).groups()

    def change(self, pattern, replacement):
        text, count = re.subn(pattern, replacement, self.file.read_text(), flags=re.M)
        self.assertTrue(count)
        self.file.write_text(text)

    def test_that_of_the_sources_misses_nothing_of_callers(self):
        self.file = SOURCES / "debian" / "libnereofileio1.symbols"
        self.run_program("--check")

    def test_callers_are_told_from_the_command(self):
        cases = (
            ("Nereo::Io::File::loadFrom(", "c++"),
            ("Nereo::Io::ControlFile::flag(int) const", "c++"),
            ("Nereo::Io::Material::operator=(", "c++"),
            ("Nereo::Inspection::check(", "c++"),
            ("Nereo::Util::toQString(", "c++"),
            ("Clt::MaterialType::Fluid", "c++"),
            ("Nereo::Io::ControlFileTextReader::read(", "c++|optional=private"),
            ("Nereo::Inspection::nearestName(", "c++|optional=private"),
            ("vtable for Nereo::Inspection::Listener", "c++|optional=inline"),
        )
        for function, tags in cases:
            with self.subTest(function=function):
                self.assertEqual(self.listed(function)[0], tags)

    def test_what_is_listed_keeps_its_version(self):
        self.change(r'^(.*File::loadFrom\(.*@Base") .*', r"\1 2023.1.2.3")
        self.run_program()
        self.assertEqual(self.listed("File::loadFrom(")[1], "2023.1.2.3")
        self.assertNotEqual(self.listed("File::saveTo(")[1], "2023.1.2.3")

    def test_what_has_gone_is_noticed_where_callers_may_use_it(self):
        self.run_program("--check-all")
        first = r"\A(.*\n.*\n)"
        self.change(first, r'\1 (c++|optional=private)"Nereo::Io::gone()@Base" 2024.0.0.0\n')
        self.run_program("--check")
        self.change(first, r'\1 (c++)"Nereo::Io::File::gone()@Base" 2024.0.0.0\n')
        self.assertIn("Nereo::Io::File::gone()", self.run_program("--check", code=1))

    def test_what_is_new_is_noticed_before_a_release(self):
        self.change(r"^.*File::loadFrom\(.*\n", "")
        self.run_program("--check")
        self.assertIn("loadFrom", self.run_program("--check-all", code=1))


if __name__ == "__main__":
    unittest.main()
