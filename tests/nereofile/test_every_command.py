"""What all commands have in common, whatever the file is called, and whatever it is."""

import os
import re
import shutil
import signal
import subprocess
import time
import unittest

from support import PROGRAM, SAMPLES, TIMEOUT, CommandTest, little_endian_results, start

CONTROL = """\
NEREO control file rev 06 NEREO Ver 2023.1.0.0
NEREO 2023 (release)
 *** Title
Cavity
 *** Relaxation
kP 0.3 0
 *** Flag section
1
cfl 0.75
"""
CONFIGURATION = "MaxIter 5\nStopTime 0.5\n"

# How each command is called about a file: an example of a control file, and one of a configuration for convert.
CALLS = {
    "info": ["info", "--", "{}"],
    "check": ["check", "--", "{}"],
    "diff": ["diff", "--", "{}", "{}"],
    "get": ["get", "--", "{}", "title"],
    "set": ["set", "--", "{}", "title", "New"],
    "unset": ["unset", "--", "{}", "flags/cfl"],
    "convert": ["convert", "--", "{}", "out.xml"],
}


def call(command, file):
    return [word.replace("{}", file) for word in CALLS[command]]


class FilesTest(CommandTest):
    def expect_answers(self, file, codes, message, **options):
        """Each command ends with its exit code, and says this of the file."""
        for command in CALLS:
            with self.subTest(command=command, file=file):
                before = sorted(self.folder.iterdir())
                result = self.run_command(*call(command, file), **options)
                self.assertEqual(result.code, codes.get(command, 2), result)
                if result.code == 0:
                    continue
                self.assertRegex(result.out + result.err, message)
                if command == "check":
                    self.assertEqual(result.err, "")
                    self.assertTrue(result.out.startswith(f"{file}: error: "), result.out)
                else:
                    self.assertEqual(result.out, "")
                    self.assertRegex(result.err, rf"\Anereofile: {re.escape(file)}: [^\n]+\n\Z")
                self.assertEqual(sorted(self.folder.iterdir()), before)

    def test_files_that_cannot_be_opened(self):
        self.write("a.cfg", CONFIGURATION)
        (self.folder / "loop").symlink_to("loop")
        (self.folder / "nothing").symlink_to("nowhere")
        for file, message in [
            ("nowhere.ctl", "No such file or directory"),
            ("nothing", "No such file or directory"),
            ("loop", "Too many levels of symbolic links"),
            ("a.cfg/b.cfg", "Not a directory"),
            ("no/where", "No such file or directory"),
        ]:
            self.expect_answers(file, {}, message)

    def test_a_file_without_permission(self):
        user = self.as_an_ordinary_user()
        self.write("secret.ctl", CONTROL).chmod(0)
        self.expect_answers("secret.ctl", {}, "Permission denied", **user)

    def test_a_folder(self):
        (self.folder / "run").mkdir()
        self.expect_answers("run", {"check": 0}, "(?i)is a directory|no file")

    def test_a_folder_that_may_not_be_read(self):
        user = self.as_an_ordinary_user()
        (self.folder / "run").mkdir(mode=0)
        self.assertEqual(self.run_command("check", "run", **user).code, 2)

    def test_files_of_no_kind(self):
        self.write("empty", "")
        self.write("letter.ctl", "Dear Sir\n")
        self.write("other.xml", "<other/>")
        for file in ("empty", "letter.ctl", "other.xml", "/dev/null"):
            self.expect_answers(file, {"check": 1}, "kind|only configurations")

    def test_names_of_any_letters(self):
        names = ["two words.ctl", " ", "Größe 65 × 65.ctl", "日本.ctl", "-minus.ctl", "--quiet", "-", "a\nb", "[a]*?", "~", "a" * 255]
        for name in names:
            for locale in ("C", "de_DE.UTF-8"):
                environment = {"LC_ALL": locale}
                for command in CALLS:
                    if name == "-" and command != "set":
                        continue  # which is standard input
                    with self.subTest(name=name, command=command, locale=locale):
                        self.write(name, CONFIGURATION if command == "convert" else CONTROL)
                        result = self.run_command(*call(command, name), environment=environment)
                        self.assertEqual((result.code, result.err), (0, ""))
                        if command == "info":
                            self.assertIn(": control", result.out)
                        (self.folder / name).unlink()
                        (self.folder / "out.xml").unlink(missing_ok=True)

    def test_content_tells_the_kind_whatever_the_name_is(self):
        kinds = {
            "NEREO2_default.xml": "configuration-xml",
            "solver.cfg": "configuration-text",
            "cavity.ctl": "control",
            "materials.xml": "materials",
            "cavity.res": "results",
        }
        self.write("cavity.gbi", (SAMPLES.parent / "tests" / "data" / "cavity.gbi").read_bytes())
        files = {name: (SAMPLES / name).read_bytes() for name in kinds} | {"cavity.gbi": (self.folder / "cavity.gbi").read_bytes()}
        kinds["cavity.gbi"] = "geometry-boundary"
        for name, content in files.items():
            for suffix in ("", ".res", ".ctl", ".gbi"):
                self.write("odd" + suffix, content)
                self.assertEqual(self.json_of("info", "odd" + suffix)["files"][0]["kind"], kinds[name], name + suffix)

    def test_two_kinds_mixed_up(self):
        names = ["NEREO2_default.xml", "cavity.ctl", "materials.xml", "cavity.res"]
        kinds = ["configuration-xml", "configuration-text", "control", "materials", "geometry-boundary", "results"]
        for name in names:
            self.sample(name)
            for kind in kinds:  # of which most aren't the file's
                for command in ("info", "check", "get"):
                    with self.subTest(command=command, name=name, kind=kind):
                        result = self.run_command(command, name, "--kind", kind)
                        self.assertIn(result.code, (0, 1, 2))
                        self.assertRegex(result.err, r"\A(nereofile: [^\n]*\n)*\Z")
                        if command == "check" and kinds.index(kind) != {"NEREO2_default.xml": 0, "cavity.ctl": 2, "materials.xml": 3, "cavity.res": 5}[name]:
                            self.assertEqual(result.code, 1)
            for other in names:
                if other != name:
                    self.sample(other)
                    self.expect_refused(["diff", name, other], "the files are of different kinds")

    def test_thousands_of_files(self):
        for i in range(2000):
            self.write(f"{i:04}.cfg", CONFIGURATION)
        self.write("0500.cfg", "MaxIter abc\n")
        names = [f"{i:04}.cfg" for i in range(2000)]
        self.assertEqual(len(self.json_of("info", *names)["files"]), 2000)
        self.assertEqual(self.run_command("check", *names, "--case").code, 1)


class OutputTest(CommandTest):
    """What is printed, and onto what."""

    # Each prints something, and has this exit code.
    PRINTING = {
        "info a.ctl": 0,
        "info a.res --stats": 0,
        "info a.res --json": 0,
        "check broken.cfg": 1,
        "check broken.cfg --json": 1,
        "diff a.res b.res": 1,
        "diff a.res b.res --json": 1,
        "get a.ctl": 0,
        "get a.ctl title": 0,
        "get a.ctl --json": 0,
        "get a.cfg --effective": 0,
        "set a.ctl title New --output -": 0,
        "set a.ctl title New --dry-run": 0,
        "unset a.ctl flags/cfl --dry-run": 0,
        "unset a.ctl flags/cfl --output -": 0,
        "convert a.cfg -": 0,
        "convert a.res -": 0,
        "codes kU": 0,
        "codes --json": 0,
        "--help": 0,
        "--version": 0,
        "diff --help": 0,
    }

    def setUp(self):
        super().setUp()
        self.write("a.ctl", CONTROL)
        self.write("a.cfg", CONFIGURATION)
        self.write("broken.cfg", "MaxIter abc\n")
        self.write("a.res", little_endian_results({"kU": [0.5, -1234567.25], "kP": [1e-7, 3.0]}, 2))
        self.write("b.res", little_endian_results({"kU": [0.5, -1234567.5], "kP": [1e-7, 3.0]}, 2))

    def contents(self):
        return {path.name: path.read_bytes() for path in self.folder.iterdir()}

    def test_goes_to_standard_output_alone(self):
        for arguments, code in self.PRINTING.items():
            with self.subTest(arguments=arguments):
                result = self.run_command(*arguments.split())
                self.assertEqual((result.code, result.err), (code, ""))
                self.assertTrue(result.out.endswith("\n"))
                self.assertNotIn("\033", result.out)

    def test_a_pipe_that_closes_ends_it_quietly(self):
        before = self.contents()
        for arguments in self.PRINTING:
            with self.subTest(arguments=arguments):
                read_end, write_end = os.pipe()
                os.close(read_end)
                process = start(*arguments.split(), cwd=self.folder, stdout=write_end)
                os.close(write_end)
                self.assertEqual((process.communicate(timeout=TIMEOUT)[1], process.returncode), (b"", 2))
        self.assertEqual(self.contents(), before)

    def test_a_pipe_that_closes_in_the_middle(self):
        self.write("many.cfg", "MaxIter abc\n" * 3000)
        self.write("many.res", little_endian_results({"kU": [0.1] * 100000}, 100000))
        for arguments in ("check many.cfg", "convert many.res -", "check many.cfg --json"):
            with self.subTest(arguments=arguments):
                process = start(*arguments.split(), cwd=self.folder)
                self.assertNotEqual(process.stdout.read(100), b"")
                process.stdout.close()
                self.assertEqual(process.stderr.read(), b"")
                process.stderr.close()
                self.assertEqual(process.wait(TIMEOUT), 2)

    def test_a_full_standard_output_is_said(self):
        before = self.contents()
        for arguments in self.PRINTING:
            with self.subTest(arguments=arguments), open("/dev/full", "wb") as full:
                process = start(*arguments.split(), cwd=self.folder, stdout=full)
                _, err = process.communicate(timeout=TIMEOUT)
                self.assertEqual(err, b"nereofile: standard output: No space left on device\n")
                self.assertEqual(process.returncode, 2)
        self.assertEqual(self.contents(), before)

    def test_nothing_depends_on_the_locale(self):
        for arguments in [*self.PRINTING, "get a.ctl titel", "diff a.res b.res --peak 0.5,5", "check nowhere", "nothing"]:
            results = {
                self.run_command(*arguments.split(), environment={"LC_ALL": locale, "LANGUAGE": "de"})
                for locale in ("C", "C.UTF-8", "de_DE.UTF-8", "none")
            }
            self.assertEqual(len(results), 1, arguments)

    def test_standard_error_may_be_closed(self):
        for arguments, code in [("info a.ctl", 0), ("get a.ctl nothing", 1), ("info nowhere", 2)]:
            process = start(*arguments.split(), cwd=self.folder, preexec_fn=lambda: os.close(2))
            process.communicate(timeout=TIMEOUT)
            self.assertEqual(process.returncode, code, arguments)


class DiskTest(CommandTest):
    """What is written, onto a disk that has no room for it."""

    WRITING = ["set a.ctl title New", "unset a.ctl flags/cfl", "set a.ctl title New --output b.ctl", "convert a.cfg b.xml", "convert a.res b.csv", "convert a.res b.npy"]

    def expect_the_old_files(self, run, message):
        for arguments in self.WRITING:
            for name, content in [
                ("a.ctl", CONTROL + "x" * 9000 + "\n"),
                ("a.cfg", CONFIGURATION),
                ("a.res", little_endian_results({"kU": [0.5] * 4000}, 4000)),
            ]:
                self.write(name, content)
            before = {path.name: path.read_bytes() for path in self.folder.iterdir()}
            with self.subTest(arguments=arguments):
                process = run(arguments.split())
                self.assertEqual(process.stdout, b"")
                self.assertEqual(process.returncode, 2, process.stderr)
                self.assertRegex(process.stderr.decode(), rf"\Anereofile: \w\.\w+: {message}[^\n]*\n\Z")
                self.assertEqual({path.name: path.read_bytes() for path in self.folder.iterdir()}, before)

    def test_a_limit_to_the_size_of_files(self):
        def run(arguments):
            return subprocess.run(
                ["bash", "-c", 'ulimit -f 0; exec "$0" "$@"', PROGRAM, *arguments],
                cwd=self.folder, capture_output=True, timeout=TIMEOUT, check=False,
            )

        self.expect_the_old_files(run, "finds no room on the disk")

    def test_a_full_disk(self):
        inner = ["unshare", "--map-root-user", "--mount", "bash", "-c"]
        small = "mount -t tmpfs -o size=128k none . && cd . && "
        if not shutil.which("unshare") or subprocess.run([*inner, small + "true"], cwd=self.folder, capture_output=True, check=False).returncode:
            self.skipTest("no disk can be made here")
        outer = self.folder
        self.folder = outer / "disk"
        self.folder.mkdir()

        def run(arguments):
            # The files are copied onto a disk of their own, which is then filled, and what is left there is copied back.
            script = """
                mkdir ../side; cp -a . ../side/old
                mount -t tmpfs -o size=128k none . && cd "$PWD" && cp -a ../side/old/. .
                dd if=/dev/zero of=filling bs=1k 2>/dev/null
                "$0" "$@"; code=$?
                rm filling; mkdir ../side/new; cp -a . ../side/new; exit $code
            """
            process = subprocess.run([*inner, script, PROGRAM, *arguments], cwd=self.folder, capture_output=True, timeout=TIMEOUT, check=False)
            shutil.rmtree(self.folder)
            (outer / "side" / "new").rename(self.folder)
            shutil.rmtree(outer / "side")
            return process

        self.expect_the_old_files(run, "finds no room on the disk")

    def test_a_folder_that_may_not_be_written(self):
        user = self.as_an_ordinary_user()

        def run(arguments):
            for path in self.folder.iterdir():
                path.chmod(0o444)
            self.folder.chmod(0o555)
            try:
                return subprocess.run([PROGRAM, *arguments], cwd=self.folder, capture_output=True, timeout=TIMEOUT, check=False, **user)
            finally:
                self.folder.chmod(0o755)
                for path in self.folder.iterdir():
                    path.chmod(0o644)

        self.expect_the_old_files(run, "(may not|can't) be written")


class InterruptionTest(CommandTest):
    def test_ctrl_c_at_any_time(self):
        nodes = 200000
        self.write("a.res", little_endian_results({"kU": [0.5] * nodes}, nodes))
        self.write("b.res", little_endian_results({"kU": [0.25] * nodes}, nodes))
        flags = "".join(f"flag{i} {i}\n" for i in range(20000))
        self.write("a.ctl", CONTROL.replace("\n1\n", "\n20001\n") + flags)
        before = {path.name: path.read_bytes() for path in self.folder.iterdir()}
        for arguments, code in [
            ("info a.res --stats", 0),
            ("check a.res b.res a.ctl", 0),
            ("diff a.res b.res", 1),
            ("get a.ctl", 0),
            ("set a.ctl title New --dry-run", 0),
            ("unset a.ctl flags/cfl --dry-run", 0),
            ("convert a.res -", 0),
            ("codes", 0),
        ]:
            for i in range(10):
                process = start(*arguments.split(), cwd=self.folder)
                time.sleep(i * 0.006)
                sent = time.monotonic()
                process.send_signal(signal.SIGINT)
                _, err = process.communicate(timeout=TIMEOUT)
                self.assertLess(time.monotonic() - sent, TIMEOUT / 2)
                # Before it has begun, the signal ends it as any program.
                self.assertIn((process.returncode, err), ((code, b""), (2, b""), (-signal.SIGINT, b"")), arguments)
        self.assertEqual({path.name: path.read_bytes() for path in self.folder.iterdir()}, before)


if __name__ == "__main__":
    unittest.main()
