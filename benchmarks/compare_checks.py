#!/usr/bin/python3
"""compare_checks.py PROGRAMS [ROUNDS [CASE...]]: checks files of all kinds, and compares that with loading them.

PROGRAMS is the folder of check_file. Each check and each load is a process of its own; the file is in the page cache.
They take turns in each round, and the figure is the median of the ratios within the rounds. A geometry and boundary file,
which nothing loads, is compared with its save. CASE is the beginning of the names of cases.
"""

import pathlib
import random
import statistics
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
SAMPLES = HERE.parent / "samples"


class Case:
    """A file, how it is made, and how often it is loaded in one measurement."""

    def __init__(self, name, suffix, *maker, times=1):
        self.name = name
        self.suffix = suffix
        self.maker = [str(word) for word in maker]
        self.times = times

    def make(self, programs, path):
        command = [self.maker[0], *self.maker[1:], path]
        if command[0].endswith(".py"):
            command.insert(0, sys.executable)
        elif not command[0].startswith("/"):
            command[0] = str(programs / command[0])
        subprocess.run(command, check=True, capture_output=True)

    def load(self, programs, path):
        if self.maker[0] == "save_conditions":
            return [str(programs / self.maker[0]), *self.maker[1:], path]
        return [str(programs / "check_file"), "load", path, str(self.times)]

    def check(self, programs, path):
        return [str(programs / "check_file"), "check", path, str(self.times)]


def results(name, *arguments):
    return Case(name, "res", HERE / "make_results.py", *arguments)


def text(name, suffix, what, count):
    return Case(name, suffix, HERE / "make_texts.py", what, count)


def sample(name, file):
    return Case(name, pathlib.Path(file).suffix[1:], "/bin/cp", SAMPLES / file, times=2000)


CASES = [
    # nodes, fields, byte order, arrangement
    results("results, 80 MB big-endian", 1_000_000, 10, ">", "ascending"),
    results("results, 80 MB shuffled", 1_000_000, 10, "<", "shuffled"),
    results("results, 640 MB", 2_000_000, 40, "<", "ascending"),
    sample("configuration XML, the sample", "NEREO2_default.xml"),
    text("configuration XML, 400,000 settings", "xml", "settings_xml", 200_000),
    sample("configuration text, the sample", "solver.cfg"),
    text("configuration text, 1,000,000 settings", "cfg", "settings_text", 500_000),
    text("configuration text, 20,000,000 empty lines", "cfg", "empty_lines", 20_000_000),
    text("configuration text, 400,000 settings with 50 empty lines before each", "cfg", "scattered_settings", 400_000),
    sample("control file, the sample", "cavity.ctl"),
    text("control file, 500,000 flags", "ctl", "flags", 500_000),
    text("control file, 1,000,000 constants", "ctl", "constants", 500_000),
    text("control file, 2,000 materials", "ctl", "materials", 2000),
    text("control file, 20,000,000 empty lines", "ctl", "blank_lines", 10_000_000),
    text("control file, 500,000 unknown sections", "ctl", "unknown_sections", 500_000),
    text("control file, 1,000,000 lines of an unknown section", "ctl", "unknown_lines", 1_000_000),
    sample("material database, the sample", "materials.xml"),
    # materials, properties, points
    Case("material database, 2,000 materials", "xml", HERE / "make_materials.py", 2000, 10, 20),
    Case("geometry and boundary file, 1,000,000 conditions", "gbi", "save_conditions", "library", 1_000_000),
]


def run(command):
    # On a virtual machine the host may have taken back free memory, and gives it anew at the first touch: that is paid
    # by a first run, which doesn't count.
    for _ in range(2):
        output = subprocess.run(command, check=True, capture_output=True).stdout
    seconds, growth = map(float, output.split()[:2])
    return seconds, growth


def compare(programs, rounds, case, folder):
    path = str(pathlib.Path(folder) / f"case.{case.suffix}")
    case.make(programs, path)
    size = pathlib.Path(path).stat().st_size
    commands = {"check": case.check(programs, path), "load": case.load(programs, path)}
    times = {method: [] for method in commands}
    growth = 0
    for _ in range(rounds):
        for method in random.sample(list(times), len(times)):  # whoever follows a slow one finds the machine colder
            seconds, grown = run(commands[method])
            times[method].append(seconds / case.times)
            if method == "check":
                growth = max(growth, grown)
    ratio = statistics.median(check / load for check, load in zip(times["check"], times["load"]))
    print(f"{case.name}, {size / 1e6:.3g} MB, {rounds} rounds: check {1000 * statistics.median(times['check']):.3g} ms, "
          f"load {1000 * statistics.median(times['load']):.3g} ms, a check takes {ratio:.2f} of a load (best against "
          f"best {min(times['check']) / min(times['load']):.2f}) and {growth / 1e6:.1f} MB", flush=True)
    pathlib.Path(path).unlink()


def main(programs, rounds="9", *wanted):
    with tempfile.TemporaryDirectory() as folder:
        for case in CASES:
            if not wanted or case.name.startswith(wanted):
                compare(pathlib.Path(programs).resolve(), int(rounds), case, folder)


main(*sys.argv[1:])
