#!/usr/bin/python3
"""compare_results.py PROGRAMS [ROUNDS [CASE...]]: loads results files by the library and by what it is compared with.

PROGRAMS is the folder of load_results. Each load is a process of its own, so that it pays for fresh pages; the file is
in the page cache. The methods take turns in each round, and every figure is the median of the ratios within the
rounds: the library's time against that of a limit, or that of the other way against the library's. At last the ways in
which the library itself answers questions, against its load of everything.
"""

import pathlib
import random
import statistics
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent

CASES = [
    # name, nodes, fields, byte order, arrangement, methods
    ("6 MB", 100_000, 8, "<", "ascending", "limit tricks direct numpy"),
    ("80 MB", 1_000_000, 10, "<", "ascending", "limit tricks direct numpy"),
    ("80 MB big-endian", 1_000_000, 10, ">", "ascending", "limit tricks direct numpy"),
    ("80 MB shuffled", 1_000_000, 10, "<", "shuffled", "scatter direct numpy"),
    ("640 MB", 2_000_000, 40, "<", "ascending", "limit tricks direct numpy"),
]
LIMITS = {"limit", "tricks", "scatter"}
QUESTIONS = ["choice", "progress", "one", "statistics", "scan", "header"]


def run(programs, method, path):
    if method == "numpy":
        command = [sys.executable, str(HERE / "load_results_numpy.py"), path]
    else:
        command = [str(programs / "load_results"), method, path]
    # On a virtual machine the host may have taken back free memory, and gives it anew at the first touch: that is paid
    # by a first run, which doesn't count.
    for _ in range(2):
        output = subprocess.run(command, check=True, capture_output=True).stdout
    seconds, growth, checksum = map(float, output.split())
    return seconds, growth, checksum


def make_case(nodes, fields, order, arrangement, folder):
    path = str(pathlib.Path(folder) / "case.res")
    subprocess.run([sys.executable, str(HERE / "make_results.py"), str(nodes), str(fields), order, arrangement, path],
                   check=True)
    return path


def compare(programs, rounds, case, folder):
    name, nodes, fields, order, arrangement, methods = case
    path = make_case(nodes, fields, order, arrangement, folder)
    names = ["library"] + methods.split()
    times = {method: [] for method in names}
    growth = 0
    for _ in range(rounds):
        checksums = []
        for method in random.sample(names, len(names)):  # whoever follows a slow one finds the machine colder
            seconds, grown, checksum = run(programs, method, path)
            times[method].append(seconds)
            checksums.append(checksum)
            if method == "library":
                growth = max(growth, grown)
        if any(abs(checksum - checksums[0]) > 1e-6 * max(1.0, abs(checksums[0])) for checksum in checksums):
            raise SystemExit(f"{name}: the methods loaded different values: {checksums}")

    over = growth - 8 * nodes * fields
    print(f"{name}: {nodes} nodes x {fields} fields, {rounds} rounds", flush=True)
    print(f"  library   {1000 * statistics.median(times['library']):9.2f} ms, "
          f"peak memory {over / 1e6:.1f} MB over the values")
    for method in names[1:]:
        pairs = list(zip(times["library"], times[method]))
        ratios = [ours / theirs if method in LIMITS else theirs / ours for ours, theirs in pairs]
        best = min(times["library"]) / min(times[method])
        if method not in LIMITS:
            best = 1 / best
        meaning = "of its time" if method in LIMITS else "times faster than it"
        print(f"  {method:9} {1000 * statistics.median(times[method]):9.2f} ms, the library takes "
              if method in LIMITS else
              f"  {method:9} {1000 * statistics.median(times[method]):9.2f} ms, the library is ", end="")
        print(f"{statistics.median(ratios):.2f} {meaning} (best against best {best:.2f})", flush=True)


def compare_questions(programs, rounds, case, folder):
    name, nodes, fields, order, arrangement, _ = case
    path = make_case(nodes, fields, order, arrangement, folder)
    methods = ["library"] + QUESTIONS
    measured = {method: [] for method in methods}
    for _ in range(rounds):
        for method in random.sample(methods, len(methods)):
            seconds, grown, _ = run(programs, method, path)
            measured[method].append((seconds, grown))

    everything = [seconds for seconds, _ in measured["library"]]
    print(f"{name}, questions: {rounds} rounds", flush=True)
    for method in QUESTIONS:
        times = [seconds for seconds, _ in measured[method]]
        grown = max(grown for _, grown in measured[method])
        ratio = statistics.median(own / whole for own, whole in zip(times, everything))
        print(f"  {method:10} {1000 * statistics.median(times):9.2f} ms, {ratio:.3f} of a load of everything (best "
              f"against best {min(times) / min(everything):.3f}), memory {grown / 1e6:.1f} MB", flush=True)


def print_processor():
    fields = dict(line.split(":", 1) for line in
                  subprocess.run(["lscpu"], check=True, capture_output=True, text=True,
                                 env={"LC_ALL": "C", "PATH": "/usr/bin:/bin"}).stdout.splitlines() if ":" in line)
    names = ("Model name", "CPU family", "Model", "L1d cache", "L2 cache", "L3 cache")
    print("; ".join(f"{name}: {fields.get(name, '').strip()}" for name in names), flush=True)


def main(programs, rounds="9", *wanted):
    print_processor()
    with tempfile.TemporaryDirectory() as folder:
        for case in CASES:
            if not wanted or case[0] in wanted:
                compare(pathlib.Path(programs), int(rounds), case, folder)
                compare_questions(pathlib.Path(programs), int(rounds), case, folder)


main(*sys.argv[1:])
