"""The pages show what the command really prints: their examples are run, in a copy of the samples.

NEREO_UPDATE_GOLDEN=1 writes what is printed now into the pages.
"""

import os
import pathlib
import re
import shutil
import subprocess
import unittest

from support import PROGRAM, SAMPLES, SOURCES, TIMEOUT, CommandTest

EXAMPLES = re.compile(r"(?<=```console\n).*?(?=```)", re.S)
COMMAND = re.compile(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", re.M)


class PagesTest(CommandTest):
    def printed(self, command):
        process = subprocess.run(
            ["bash", "-c", command],
            cwd=self.folder,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            env={**os.environ, "PATH": f"{pathlib.Path(PROGRAM).parent}:{os.environ['PATH']}"},
            timeout=TIMEOUT,
            check=False,
        )
        return process.stdout.decode()

    def replayed(self, example):
        """The example with what its commands print now."""
        self.assertEqual("".join(match[0] for match in COMMAND.finditer(example)), example)
        return COMMAND.sub(lambda match: f"$ {match[1]}\n{self.printed(match[1])}", example)

    def test_examples_are_true(self):
        for name in ("README.md", "docs/nereofile.md"):
            shutil.rmtree(self.folder)
            shutil.copytree(SAMPLES, self.folder)
            path = SOURCES / name
            page = path.read_text()
            self.assertRegex(page, EXAMPLES)
            now = EXAMPLES.sub(lambda match: self.replayed(match[0]), page)
            if os.environ.get("NEREO_UPDATE_GOLDEN"):
                path.write_text(now)
            self.assertEqual(now, path.read_text())


if __name__ == "__main__":
    unittest.main()
