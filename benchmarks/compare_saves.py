#!/usr/bin/python3
"""compare_saves.py PROGRAMS [ROUNDS]: saves boundary conditions by the library and by what it is compared with.

PROGRAMS is the folder of save_conditions. Each save is a process of its own. The methods take turns in each round, and
every figure is the median of the ratios within the rounds.
"""

import pathlib
import statistics
import subprocess
import sys
import tempfile

COUNTS = [100_000, 1_000_000]
METHODS = ["library", "printf", "stream"]


def main(programs, rounds="7"):
    program = str(pathlib.Path(programs) / "save_conditions")
    with tempfile.TemporaryDirectory() as folder:
        for count in COUNTS:
            times = {method: [] for method in METHODS}
            growth = 0
            for _ in range(int(rounds)):
                for method in METHODS:
                    command = [program, method, str(count), folder + "/conditions.gbi"]
                    output = subprocess.run(command, check=True, capture_output=True).stdout.split()
                    times[method].append(float(output[0]))
                    if method == "library":
                        growth = max(growth, float(output[1]))
            print(f"{count} conditions, {rounds} rounds")
            print(f"  library {1000 * statistics.median(times['library']):8.1f} ms, "
                  f"peak memory {growth / 1e6:.1f} MB over the model")
            for method in METHODS[1:]:
                ratio = statistics.median(ours / theirs for ours, theirs in zip(times["library"], times[method]))
                print(f"  {method:7} {1000 * statistics.median(times[method]):8.1f} ms, "
                      f"the library takes {ratio:.2f} of its time")


main(*sys.argv[1:])
