#!/usr/bin/python3
"""gcov.py ARGUMENT...: runs gcov, and leaves out of what it writes the branches that are never come to.

What leads to such a branch counts by itself: a line that isn't run, or a branch that isn't taken. Only to what the
compiler adds for an expression that throws, which destroys what it has made so far, nothing leads but an exception.
gcovr can't tell these branches from those that are come to and not taken.
"""

import pathlib
import re
import subprocess
import sys

NEVER_COME_TO = re.compile(r"^branch +\d+ never executed.*\n", re.MULTILINE)
WRITTEN = re.compile(r"^Creating '(.*)'$", re.MULTILINE)

result = subprocess.run(["gcov", *sys.argv[1:]], stdout=subprocess.PIPE, text=True, check=False)
for name in WRITTEN.findall(result.stdout):
    file = pathlib.Path(name)
    file.write_bytes(NEVER_COME_TO.sub("", file.read_bytes().decode("latin-1")).encode("latin-1"))
print(result.stdout, end="")
sys.exit(result.returncode)
