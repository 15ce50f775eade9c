#!/usr/bin/python3
"""coverage.py COUNTS EXCEPTIONS: which part of the lines and branches of each file the tests run.

COUNTS is what gcovr --json writes. Each entry of EXCEPTIONS explains the branches of one line that no test takes:

    FILE: NUMBER of "LINE"
        REASON

Fails under 100 % of the lines or 95 % of the branches, at branches without an explanation, and at explanations of
lines that aren't there.
"""

import json
import pathlib
import re
import sys

LEAST_LINES = 100.0
LEAST_BRANCHES = 95.0

ENTRY = re.compile(r'^(\S+): (\d+) of "(.*)"\n((?:    .*\n)+)', re.MULTILINE)


class Total:
    """How many lines or branches there are, and how many of them the tests run."""

    def __init__(self, counters=()):
        self.all = len(counters)
        self.run = sum(counter["count"] > 0 for counter in counters)

    def __iadd__(self, other):
        self.all += other.all
        self.run += other.run
        return self

    def percent(self):
        return 100.0 * self.run / self.all if self.all else 100.0

    def __str__(self):
        return f"{self.run:5} of {self.all:5} {self.percent():6.1f} %"


def read_exceptions(path):
    """The number of branches and the reason for each file and line."""
    text = pathlib.Path(path).read_text(encoding="utf-8")
    return {(file, line): (int(number), " ".join(reason.split())) for file, number, line, reason in ENTRY.findall(text)}


def explain(line, number, reason):
    """What is to be said of a line that isn't wholly run, and whether that is enough."""
    if line["count"] == 0:
        return "NOT RUN", False
    missed = sum(branch["count"] == 0 for branch in line["branches"])
    if missed > number:
        return f"{missed} NOT TAKEN, {number} EXPLAINED", False
    return f"{missed} not taken: {reason}", True


def main(counts_path, exceptions_path):
    exceptions = read_exceptions(exceptions_path)
    all_lines, all_branches = Total(), Total()
    unused = set(exceptions)
    missed = []
    all_explained = True

    print(f"{'':42} {'lines':>22}   {'branches':>22}")
    for file in json.loads(pathlib.Path(counts_path).read_text(encoding="utf-8"))["files"]:
        name = file["file"]
        source = pathlib.Path(name).read_text(encoding="utf-8").splitlines()
        lines = [line for line in file["lines"] if not line["gcovr/noncode"]]
        file_lines = Total(lines)
        file_branches = Total([branch for line in lines for branch in line["branches"]])
        print(f"{name:42} {file_lines}   {file_branches}")
        all_lines += file_lines
        all_branches += file_branches

        unused -= {(name, line.strip()) for line in source}
        for line in lines:
            if all(counter["count"] > 0 for counter in [line, *line["branches"]]):
                continue
            text = source[line["line_number"] - 1].strip()
            remark, is_explained = explain(line, *exceptions.get((name, text), (0, "")))
            missed.append(f"{name}:{line['line_number']}: {text}\n    {remark}")
            all_explained &= is_explained

    missed += [f"{name}: {text}\n    NO SUCH LINE" for name, text in sorted(unused)]
    all_explained &= not unused

    print(f"{'all':42} {all_lines}   {all_branches}", "", *missed, sep="\n")
    return all_lines.percent() >= LEAST_LINES and all_branches.percent() >= LEAST_BRANCHES and all_explained


if __name__ == "__main__":
    sys.exit(0 if main(*sys.argv[1:]) else 1)
