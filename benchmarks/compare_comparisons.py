#!/usr/bin/python3
"""compare_comparisons.py PROGRAMS [ROUNDS [CASE...]]: compares pairs of files, and that with loading one of them.

PROGRAMS is the folder of check_file. Each comparison and each load is a process of its own; the files are in the page
cache. They take turns in each round, and the figure is the median of the ratios within the rounds. There is no load of
conditions: they are compared with a check.
"""

import pathlib
import random
import shutil
import statistics
import subprocess
import sys
import tempfile

import numpy

HERE = pathlib.Path(__file__).resolve().parent
HEADER = 350  # bytes, up to the names of the fields
NAME = 21


def make(script, *arguments):
    subprocess.run([sys.executable, str(HERE / script), *map(str, arguments)], check=True)


def results(nodes, fields, arrangement):
    def write(a, b):
        make("make_results.py", nodes, fields, "<", "ascending", a)
        if arrangement == "shuffled":
            make("make_results.py", nodes, fields, "<", "shuffled", b)
            return
        shutil.copy(a, b)
        record = numpy.dtype([("node", "<i4"), ("values", "<f8", fields)])
        records = numpy.memmap(b, record, "r+", HEADER + NAME * fields + 4)
        if arrangement == "one value":
            records["values"][nodes // 2, fields // 2] += 1
        elif arrangement == "all values":
            for begin in range(0, nodes, 100_000):
                records["values"][begin : begin + 100_000] *= 1 + 1e-9
        records.flush()
    return write


def copy_with_another_byte(a, b):  # files of the same bytes would be none to compare value by value
    shutil.copy(a, b)
    with open(b, "a", encoding="ascii") as file:
        file.write("\n")


def materials(count):
    def write(a, b):
        make("make_materials.py", count, 10, 20, a)
        copy_with_another_byte(a, b)
    return write


def conditions(count):
    def write(a, b):
        with open(a, "w", encoding="ascii") as file:
            file.write("job\nprogram\nVersion 2024.0.0.0\n\n*** Surface nodal boundary conditions\n")
            file.writelines(f"{i} kP {i * 0.001:g} 293.15 {1 / i:g} 0 -1\n" for i in range(1, count + 1))
            file.write("-1\n")
        copy_with_another_byte(a, b)
    return write


CASES = {
    # name: what writes the two files, what the comparison is measured against
    "640 MB, the same": (results(2_000_000, 40, "same"), "load"),
    "640 MB, one value": (results(2_000_000, 40, "one value"), "load"),
    "640 MB, all values": (results(2_000_000, 40, "all values"), "load"),
    "80 MB, shuffled": (results(1_000_000, 10, "shuffled"), "load"),
    "2,000 materials": (materials(2_000), "load"),
    "10,000 materials": (materials(10_000), "load"),
    "250,000 conditions": (conditions(250_000), "check"),
    "1,000,000 conditions": (conditions(1_000_000), "check"),
}


def run(programs, *arguments):
    command = [str(programs / "check_file"), *arguments]
    for _ in range(2):  # the first one pays for memory that the host gives anew, and doesn't count
        output = subprocess.run(command, check=True, capture_output=True).stdout
    return map(float, output.split())


def compare(programs, rounds, name, folder):
    write, other = CASES[name]
    a, b = (str(pathlib.Path(folder) / path) for path in ("a", "b"))
    write(a, b)
    methods = {"compare": (a, b), other: (a,)}
    times = {method: [] for method in methods}
    growth = 0
    for _ in range(rounds):
        for method in random.sample(list(methods), len(methods)):
            seconds, grown = run(programs, method, *methods[method])
            times[method].append(seconds)
            if method == "compare":
                growth = max(growth, grown)
    ratio = statistics.median(mine / its for mine, its in zip(times["compare"], times[other]))
    best = min(times["compare"]) / min(times[other])
    print(f"{name}: {rounds} rounds: comparison {1000 * statistics.median(times['compare']):.1f} ms, {other} "
          f"{1000 * statistics.median(times[other]):.1f} ms: {ratio:.2f} of it (best against best {best:.2f}), "
          f"{growth / 1e6:.1f} MB", flush=True)


def main(programs, rounds="9", *wanted):
    with tempfile.TemporaryDirectory() as folder:
        for name in wanted or CASES:
            compare(pathlib.Path(programs), int(rounds), name, folder)


main(*sys.argv[1:])
