"""A release is made of what is whole, and of nothing else. What takes long is played by scripts that succeed or fail."""

import os
import pathlib
import shutil
import subprocess
import tarfile
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
VERSION = "2024.3.0.1"
FILES = {
    "CMakeLists.txt": f"project(NereoFileIO VERSION {VERSION} LANGUAGES CXX\n",
    "CHANGELOG.md": f"# Changelog\n\n## {VERSION} (2024-05-17)\n\n## 2024.2.0.0 (2024-02-01)\n",
    "debian/changelog": f"nereofileio ({VERSION}) bookworm; urgency=medium\n",
    "abi/libNereoFileIO.abi.xml": "<abi-corpus/>\n",
    "abi/libNereoInspection.abi.xml": "<abi-corpus/>\n",
    "abi/libNereoUtility.abi.xml": "<abi-corpus/>\n",
    ".gitignore": "/build/\n",
}
STEPS = {".ci/run": "", "scripts/symbols.py": "--check-all", "scripts/package.sh": "--twice", "scripts/test-packages.sh": ""}


@unittest.skipUnless(shutil.which("git"), "git isn't there")
class ReleaseTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="nereo-release-"))
        self.addCleanup(shutil.rmtree, self.folder)
        for name, content in FILES.items():
            self.write(name, content)
        for name, argument in STEPS.items():
            self.step(name, f'[ "$*" = "{argument}" ] && echo {name} >>build/steps')
        self.write("scripts/release.sh", (SOURCES / "scripts" / "release.sh").read_text(), mode=0o755)
        (self.folder / "build").mkdir()
        self.git("init", "--quiet")
        self.commit()

    def write(self, name, content, mode=0o644):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content)
        path.chmod(mode)

    def step(self, name, what):
        self.write(name, f"#!/bin/sh\n{what}\n", mode=0o755)

    def git(self, *arguments):
        who = {f"GIT_{role}_{what}": "a@b.invalid" for role in ("AUTHOR", "COMMITTER") for what in ("NAME", "EMAIL")}
        return subprocess.run(
            ["git", *arguments], cwd=self.folder, env={**os.environ, **who}, check=True, stdout=subprocess.PIPE, text=True
        ).stdout

    def commit(self):
        self.git("add", "--all")
        self.git("commit", "--quiet", "--allow-empty", "--message", "A change")

    def release(self, *arguments, **options):
        return subprocess.run(
            ["scripts/release.sh", *arguments], cwd=self.folder, capture_output=True, text=True, check=False, **options
        )

    def expect_refused(self, message, version=VERSION):
        done = self.release(version)
        self.assertEqual(done.returncode, 1, done.stdout + done.stderr)
        self.assertEqual(done.stderr, f"release: {message}\n")
        self.assertFalse((self.folder / "build" / "archive").exists())

    def steps(self):
        path = self.folder / "build" / "steps"
        return path.read_text().split() if path.exists() else []

    def test_it_takes_one_version(self):
        for arguments in ([], ["2024"], ["2024.3.0.1.5"], ["v2024.3.0.1"], [VERSION, "x"], ["--help"]):
            with self.subTest(arguments=arguments):
                done = self.release(*arguments)
                self.assertEqual(done.returncode, 2)
                self.assertIn("scripts/release.sh VERSION", done.stderr)

    def test_what_is_not_whole_is_refused_before_anything_runs(self):
        changelog = FILES["CHANGELOG.md"]
        cases = (
            # file             its content                                   what is said of it
            ("CMakeLists.txt", "project(NereoFileIO VERSION 2024.3.0.0 L\n", "the version in CMakeLists.txt is 2024.3.0.0"),
            ("debian/changelog", "nereofileio (2024.2.0.0) bookworm; urgency=low\n",
             "the first version of debian/changelog is 2024.2.0.0"),
            ("debian/changelog", f"nereofileio ({VERSION}) UNRELEASED; urgency=low\n", "debian/changelog says UNRELEASED of it"),
            ("CHANGELOG.md", changelog.replace(VERSION, "2024.3.0"), f'CHANGELOG.md has no "## {VERSION} (YYYY-MM-DD)"'),
            ("CHANGELOG.md", changelog.replace("2024-05-17", "not yet released"),
             f'CHANGELOG.md has no "## {VERSION} (YYYY-MM-DD)"'),
            ("CHANGELOG.md", changelog.replace(".", "x"), f'CHANGELOG.md has no "## {VERSION} (YYYY-MM-DD)"'),
            ("CHANGELOG.md", changelog + "## 2025.0.0.0 (not yet released)\n",
             "CHANGELOG.md has a version that is not yet released"),
            ("abi/libNereoFileIO.abi.xml", "", "abi/libNereoFileIO.abi.xml, the baseline of the interface, isn't there"),
            ("abi/libNereoUtility.abi.xml", "", "abi/libNereoUtility.abi.xml, the baseline of the interface, isn't there"),
        )
        for name, content, message in cases:
            with self.subTest(message=message, content=content):
                self.write(name, content)
                self.commit()
                self.expect_refused(message)
                self.assertEqual(self.steps(), [])
                self.write(name, FILES[name])
                self.commit()

    def test_what_is_not_committed_is_refused(self):
        message = "there are changes that aren't committed, or files that aren't known"
        self.write("new.cpp", "")
        self.expect_refused(message)
        (self.folder / "new.cpp").unlink()
        self.write("CHANGELOG.md", FILES["CHANGELOG.md"] + "\n")
        self.expect_refused(message)
        self.assertEqual(self.steps(), [])

    def test_what_fails_is_refused(self):
        cases = (
            (".ci/run", "exit 1", ".ci/run fails"),
            ("scripts/symbols.py", "exit 1", "debian/libnereofileio1.symbols isn't what the libraries export"),
            ("scripts/package.sh", "exit 1", "the packages can't be made, or not twice the same"),
            ("scripts/test-packages.sh", "exit 1", "the packages don't work as they are installed"),
            ("scripts/test-packages.sh", "touch new.cpp", "the tests have changed the sources"),
        )
        for name, what, message in cases:
            with self.subTest(message=message):
                good = (self.folder / name).read_text()
                self.step(name, what)
                self.commit()
                self.expect_refused(message)
                (self.folder / "new.cpp").unlink(missing_ok=True)
                self.write(name, good, mode=0o755)
                self.commit()

    def test_the_archive_is_the_same_whoever_makes_it(self):
        archive = self.folder / "build" / "archive" / f"NereoFileIO-{VERSION}.tar.xz"
        made = []
        for umask, environment in ((0o022, {"TZ": "UTC"}), (0o077, {"TZ": "Pacific/Chatham", "LC_ALL": "C", "XZ_OPT": "-1"})):
            done = self.release(VERSION, umask=umask, env={**os.environ, **environment})
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertIn(self.git("rev-parse", "HEAD").strip(), done.stdout)
            made.append(archive.read_bytes())
        self.assertEqual(made[0], made[1])
        self.assertEqual(self.steps(), [*STEPS, *STEPS])

        subprocess.run(["sha256sum", "--check", "--quiet", "SHA256SUMS"], cwd=archive.parent, check=True)
        with tarfile.open(archive) as content:
            files = {member.name for member in content if member.isfile()}
            program = content.getmember(f"NereoFileIO-{VERSION}/scripts/release.sh")
            self.assertEqual(program.mode & 0o111, 0o111)
        self.assertEqual(files, {f"NereoFileIO-{VERSION}/{name}" for name in self.git("ls-files").split()})
        self.assertEqual(self.git("tag"), "")


if __name__ == "__main__":
    unittest.main()
