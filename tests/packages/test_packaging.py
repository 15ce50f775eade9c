"""What debian/ says agrees with the rest of the sources, as far as it shows without building packages."""

import os
import pathlib
import re
import shutil
import subprocess
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
DEBIAN = SOURCES / "debian"


def output_of(*command):
    return subprocess.run(command, cwd=SOURCES, stdout=subprocess.PIPE, text=True, check=True).stdout


def paragraphs(path):
    """The paragraphs of a file of fields, each a mapping of these."""
    text = re.sub("^#.*\n", "", path.read_text(), flags=re.M)
    return [
        {name: value.strip() for name, value in re.findall(r"^(\S+?):((?:.*\n)(?:[ \t].*\n?)*)", paragraph + "\n", re.M)}
        for paragraph in re.split(r"\n\n+", text.strip())
    ]


@unittest.skipUnless(shutil.which("dpkg-parsechangelog"), "dpkg-dev isn't there")
class PackagingTest(unittest.TestCase):
    def test_the_version_is_that_of_the_project(self):
        in_cmake = re.search(r"project\(NereoFileIO VERSION (\S+)", (SOURCES / "CMakeLists.txt").read_text())[1]
        self.assertEqual(output_of("dpkg-parsechangelog", "-S", "Version").strip(), in_cmake)

    def test_one_maintainer(self):
        self.assertEqual(
            output_of("dpkg-parsechangelog", "-S", "Maintainer").strip(), paragraphs(DEBIAN / "control")[0]["Maintainer"]
        )

    def test_debian_reads_the_control_file(self):
        script = r"""
            use Dpkg::Control::Info; use Dpkg::Deps;
            my $info = Dpkg::Control::Info->new('debian/control');
            for my $paragraph ($info->get_source, $info->get_packages) {
                my $name = $paragraph->{Package} // $paragraph->{Source};
                for my $field (qw(Build-Depends Build-Depends-Indep Pre-Depends Depends Recommends Suggests)) {
                    my $value = $paragraph->{$field} // next;
                    $value =~ s/\$\{binary:Version\}/1/g;
                    $value =~ s/\$\{[^}]*\},?//g;
                    defined deps_parse($value, build_dep => $field =~ /^Build/ ? 1 : 0) or die "$name: $field\n";
                }
                print "$name\n";
            }"""
        names = output_of("perl", "-e", script).split()
        self.assertEqual(
            names,
            ["nereofileio", "libnereofileio1", "libnereofileio-dev", "nereofile", "python3-nereofile", "libnereofileio-doc"],
        )

    def test_the_library_package_has_the_number_of_the_interface(self):
        so_version = re.search(r"SOVERSION (\d+)", (SOURCES / "cmake" / "NereoLibrary.cmake").read_text())[1]
        self.assertTrue((DEBIAN / f"libnereofileio{so_version}.symbols").exists())

    def test_each_override_has_a_reason(self):
        for path in DEBIAN.glob("**/*lintian-overrides"):
            is_explained = False
            for line in path.read_text().splitlines():
                with self.subTest(path=path.name, line=line):
                    self.assertTrue(line.startswith("#") or is_explained)
                    is_explained = line.startswith("#") or (is_explained and bool(line))

    def test_the_tests_of_the_packages_are_there(self):
        for test in paragraphs(DEBIAN / "tests" / "control"):
            path = DEBIAN / "tests" / test["Tests"]
            with self.subTest(path=path.name):
                self.assertTrue(os.access(path, os.X_OK))
                subprocess.run(["bash", "-n", str(path)], check=True)

    def test_make_reads_the_rules(self):
        printed = output_of("make", "--dry-run", "--file", "debian/rules", "override_dh_auto_configure")
        self.assertIn("-DCMAKE_BUILD_TYPE=RelWithDebInfo", printed)


if __name__ == "__main__":
    unittest.main()
