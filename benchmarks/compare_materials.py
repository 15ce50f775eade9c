#!/usr/bin/python3
"""compare_materials.py PROGRAMS [ROUNDS [MATERIALS]]: a material database against the least that Qt's streams take.

PROGRAMS is the folder of material_database. A load is compared with a bare pass over the tokens of the same file, a save
with writing the same elements with texts that exist already. Each is a process of its own; they take turns in each
round, and every ratio is the median of those within the rounds.
"""

import pathlib
import random
import statistics
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
PAIRS = (("load", "scan"), ("save", "texts"))


def seconds(programs, method, path):
    output = subprocess.run([programs / "material_database", method, path], check=True, capture_output=True).stdout
    return float(output.split()[0])


def main(programs, rounds="7", materials="10000"):
    programs = pathlib.Path(programs)
    methods = [method for pair in PAIRS for method in pair]
    times = {method: [] for method in methods}
    with tempfile.TemporaryDirectory() as folder:
        path = str(pathlib.Path(folder) / "materials.xml")
        subprocess.run([HERE / "make_materials.py", materials, "10", "20", path], check=True)
        for _ in range(int(rounds)):
            for method in random.sample(methods, len(methods)):
                times[method].append(seconds(programs, method, path))
    print(f"{materials} materials x 10 properties x 20 points, {rounds} rounds")
    for ours, theirs in PAIRS:
        ratio = statistics.median(a / b for a, b in zip(times[ours], times[theirs]))
        best = min(times[ours]) / min(times[theirs])
        print(f"  {ours} {1000 * statistics.median(times[ours]):8.1f} ms, {theirs} "
              f"{1000 * statistics.median(times[theirs]):8.1f} ms: {ratio:.2f} of its time (best against best {best:.2f})")


main(*sys.argv[1:])
