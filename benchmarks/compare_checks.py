#!/usr/bin/python3
"""compare_checks.py PROGRAMS [ROUNDS [CASE...]]: checks results files, and compares that with loading them.

PROGRAMS is the folder of check_file. Each check and each load is a process of its own; the file is in the page cache.
They take turns in each round, and the figure is the median of the ratios within the rounds.
"""

import pathlib
import random
import statistics
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent

CASES = [
    # name, nodes, fields, byte order, arrangement
    ("80 MB big-endian", 1_000_000, 10, ">", "ascending"),
    ("80 MB shuffled", 1_000_000, 10, "<", "shuffled"),
    ("640 MB", 2_000_000, 40, "<", "ascending"),
]


def run(programs, method, path):
    command = [str(programs / "check_file"), method, path]
    # On a virtual machine the host may have taken back free memory, and gives it anew at the first touch: that is paid
    # by a first run, which doesn't count.
    for _ in range(2):
        output = subprocess.run(command, check=True, capture_output=True).stdout
    seconds, growth = map(float, output.split())
    return seconds, growth


def compare(programs, rounds, case, folder):
    name, nodes, fields, order, arrangement = case
    path = str(pathlib.Path(folder) / "case.res")
    subprocess.run([sys.executable, str(HERE / "make_results.py"), str(nodes), str(fields), order, arrangement, path],
                   check=True)
    times = {"check": [], "load": []}
    growth = 0
    for _ in range(rounds):
        for method in random.sample(list(times), len(times)):  # whoever follows a slow one finds the machine colder
            seconds, grown = run(programs, method, path)
            times[method].append(seconds)
            if method == "check":
                growth = max(growth, grown)
    ratio = statistics.median(check / load for check, load in zip(times["check"], times["load"]))
    print(f"{name}: {nodes} nodes x {fields} fields, {rounds} rounds: "
          f"check {1000 * statistics.median(times['check']):.2f} ms, load {1000 * statistics.median(times['load']):.2f} "
          f"ms, a check takes {ratio:.2f} of a load (best against best {min(times['check']) / min(times['load']):.2f}) "
          f"and {growth / 1e6:.1f} MB", flush=True)


def main(programs, rounds="9", *wanted):
    with tempfile.TemporaryDirectory() as folder:
        for case in CASES:
            if not wanted or case[0] in wanted:
                compare(pathlib.Path(programs), int(rounds), case, folder)


main(*sys.argv[1:])
