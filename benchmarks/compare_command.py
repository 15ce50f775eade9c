#!/usr/bin/python3
"""compare_command.py PROGRAMS [ROUNDS [CASE...]]: runs nereofile, and compares that with loading the file.

PROGRAMS is the folder of nereofile and check_file, or the build folder above them. Each run is a process of its own, from
its start to its end; the load is what check_file takes for that. The files are in the page cache. All take turns in each
round, and the figures are the best of the rounds and the median of the ratios within them. Nothing loads conditions: they
are compared with their save by the library. CASE is the beginning of the names of cases.
"""

import pathlib
import random
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
LAST_VALUE = b"\0\0\0\0\0\0\x04\x40"  # 2.5

COMMANDS = {
    "info": ["info", "a"],
    "info --stats": ["info", "--stats", "a"],
    "check": ["check", "a"],
    "diff, the same": ["diff", "a", "same"],
    "diff, another value": ["diff", "a", "other"],
    "diff": ["diff", "a", "other"],
    "convert": ["convert", "--force", "a", "a.csv"],
}
OF_RESULTS = ["info", "info --stats", "check", "diff, the same", "diff, another value"]
OF_TEXTS = ["info", "check", "diff"]


def script(name, *arguments):
    return lambda programs, path: [sys.executable, HERE / name, *arguments, path]


def conditions(count):
    return lambda programs, path: [programs["save_conditions"], "library", count, path]


CASES = {
    # name: what writes the file, what the command does with it
    "results of 640 MB": (script("make_results.py", 2_000_000, 40, "<", "ascending"), OF_RESULTS),
    "results of 80 MB": (script("make_results.py", 1_000_000, 10, "<", "ascending"), ["convert"]),
    "database of 10,000 materials": (script("make_materials.py", 10_000, 10, 20), OF_TEXTS),
    "control file with 10,000 materials": (script("make_texts.py", "materials", 10_000), OF_TEXTS),
    "1,000,000 conditions": (conditions(1_000_000), OF_TEXTS),
}


def seconds_of(command, folder):
    start = time.perf_counter()
    subprocess.run(list(map(str, command)), cwd=folder, stdout=subprocess.DEVNULL, check=False)
    return time.perf_counter() - start


def seconds_of_load(programs, make, folder):
    if make[0] == programs["save_conditions"]:
        command = [*make[:-1], "saved"]
    else:
        command = [programs["check_file"], "load", "a"]
    output = subprocess.run(list(map(str, command)), cwd=folder, check=True, capture_output=True).stdout
    return float(output.split()[0])


def write(programs, maker, folder):
    make = maker(programs, folder / "a")
    subprocess.run(list(map(str, make)), check=True, capture_output=True)
    shutil.copy(folder / "a", folder / "same")
    shutil.copy(folder / "a", folder / "other")
    with open(folder / "other", "r+b") as other:
        if other.read(4) in (b"\0\0\0\0", b"\0\0\0\1"):  # results
            other.seek(-len(LAST_VALUE), 2)
            other.write(LAST_VALUE)
        else:  # files of the same bytes would be none to compare value by value
            other.seek(0, 2)
            other.write(b"\n")
    return make


def measure_start(programs, rounds):
    times = [seconds_of([programs["nereofile"], "--version"], None) for _ in range(10 * rounds)]
    print(f"--version: {1000 * min(times):.1f} ms, median {1000 * statistics.median(times):.1f} ms", flush=True)


def measure(programs, rounds, name, folder):
    maker, commands = CASES[name]
    make = write(programs, maker, folder)
    methods = {command: lambda c=command: seconds_of([programs["nereofile"], *COMMANDS[c]], folder) for command in commands}
    methods["load"] = lambda: seconds_of_load(programs, make, folder)
    times = {method: [] for method in methods}
    for _ in range(rounds):
        for method in random.sample(list(methods), len(methods)):
            methods[method]()  # pays for memory that the host gives anew, and doesn't count
            times[method].append(methods[method]())
    load = times["load"]
    print(f"{name}, {(folder / 'a').stat().st_size / 1e6:.3g} MB: load {1000 * min(load):.3g} ms", flush=True)
    for command in commands:
        ratio = statistics.median(mine / its for mine, its in zip(times[command], load))
        best = min(times[command])
        text = f"  {command}: {1000 * best:.3g} ms, {ratio:.2f} of a load (best against best {best / min(load):.2f})"
        if command == "convert":
            text += f", {(folder / 'a.csv').stat().st_size / 1e6 / best:.0f} MB of text a second"
        print(text, flush=True)


def find(programs):
    """The programs by their names."""
    found = {}
    for name in ("nereofile", "check_file", "save_conditions"):
        places = [programs / name, programs / "nereofile" / name, programs / "benchmarks" / name]
        found[name] = next(place for place in places if place.is_file())
    return found


def main(programs, rounds="5", *wanted):
    programs = find(pathlib.Path(programs).resolve())
    if not wanted:
        measure_start(programs, int(rounds))
    for name in CASES:
        if not wanted or name.startswith(wanted):
            with tempfile.TemporaryDirectory() as folder:
                measure(programs, int(rounds), name, pathlib.Path(folder))


main(*sys.argv[1:])
