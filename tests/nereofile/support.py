"""Runs the command and keeps the tests short: what went in, what has to come out."""

import json
import os
import pathlib
import shutil
import signal
import struct
import subprocess
import tempfile
import typing
import unittest

import jsonschema

PROGRAM = os.environ["NEREO_COMMAND"]
SOURCES = pathlib.Path(__file__).resolve().parents[2]
SAMPLES = SOURCES / "samples"
SCHEMAS = SOURCES / "nereofile" / "schemas"
NOBODY = 65534
TIMEOUT = 60  # seconds, of which a sanitizer may need some

# The command leaves ignored what was ignored when it started, as it is where the tests run in the background.
for number in (signal.SIGINT, signal.SIGHUP):
    signal.signal(number, signal.SIG_DFL)


class Result(typing.NamedTuple):
    code: int
    out: str
    err: str


def schema(command):
    return json.loads((SCHEMAS / f"{command}.schema.json").read_text())


def start(*arguments, **options):
    options.setdefault("stdin", subprocess.DEVNULL)
    options.setdefault("stdout", subprocess.PIPE)
    options.setdefault("stderr", subprocess.PIPE)
    return subprocess.Popen([PROGRAM, *arguments], **options)


def little_endian_results(fields, nodes, *, order="<", title="Made up", records=None):
    """The bytes of a results file; of each field a list of values. Records are (node, values)."""
    names = list(fields)
    if records is None:
        records = [(node, [fields[name][node - 1] for name in names]) for node in range(1, nodes + 1)]

    def integers(*values):
        return struct.pack(f"{order}{len(values)}i", *values)

    head = bytes(4) if order == "<" else b"\0\0\0\1"
    head += integers(2024, 0, 0) + b"now".ljust(26, b"\0") + title.encode().ljust(256, b"\0")
    head += integers(nodes, nodes + 1, -1, 7, 1, 3, 2) + struct.pack(f"{order}2d", 1.5, 0.25)
    head += integers(-1, len(names)) + b"".join(name.encode().ljust(21, b"\0") for name in names) + integers(0)
    return head + b"".join(
        struct.pack(f"{order}i{len(values)}d", node, *values) for node, values in records
    )


class CommandTest(unittest.TestCase):
    """Each test has a folder of its own, in which the command runs."""

    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="nereofile-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def write(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def sample(self, name, as_name=None):
        shutil.copy(SAMPLES / name, self.folder / (as_name or name))

    def as_an_ordinary_user(self):
        """The options that run the command so, also where the tests are root's, who may do everything."""
        if os.geteuid() != 0:
            return {}
        self.folder.chmod(0o755)
        user = {"user": NOBODY, "group": NOBODY, "extra_groups": []}
        try:
            subprocess.run([PROGRAM, "--version"], stdout=subprocess.DEVNULL, check=True, **user)
        except (OSError, subprocess.CalledProcessError):
            self.skipTest("an ordinary user can't run the command here")
        return user

    def run_command(self, *arguments, input=None, environment=None, folder=None, **options):
        """Runs it, in the folder of the test or another one, and validates what it prints as JSON."""
        if input is None:
            options.setdefault("stdin", subprocess.DEVNULL)
        process = subprocess.run(
            [PROGRAM, *arguments],
            cwd=folder or self.folder,
            input=input,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            env={**os.environ, **(environment or {})},
            timeout=TIMEOUT,
            check=False,
            **options,
        )
        result = Result(process.returncode, process.stdout.decode(errors="replace"), process.stderr.decode(errors="replace"))
        if "--json" in arguments and result.out:
            jsonschema.Draft202012Validator(schema(arguments[0])).validate(json.loads(result.out))
        return result

    def expect(self, arguments, out="", err="", code=0, **options):
        """The command prints just this."""
        words = arguments.split() if isinstance(arguments, str) else arguments
        with self.subTest(arguments=arguments):
            result = self.run_command(*words, **options)
            self.assertEqual(result.out, out)
            self.assertEqual(result.err, err)
            self.assertEqual(result.code, code)

    def expect_refused(self, arguments, message, **options):
        """The command prints nothing but a message that contains this, and the exit code is 2."""
        words = arguments.split() if isinstance(arguments, str) else arguments
        with self.subTest(arguments=arguments):
            result = self.run_command(*words, **options)
            self.assertIn(message, result.err)
            self.assertRegex(result.err, r"\A(nereofile: [^\n]+\n)+\Z")
            self.assertEqual(result.out, "")
            self.assertEqual(result.code, 2)

    def json_of(self, *arguments, code=0, **options):
        result = self.run_command(*arguments, "--json", **options)
        self.assertEqual(result.code, code, result.err)
        return json.loads(result.out)
