#!/usr/bin/python3
"""compare_python.py PROGRAMS [ROUNDS [SERIES]]: the Python package against the C++ load and against NumPy.

PROGRAMS is the folder of load_results; the package is found by PYTHONPATH. Loads are processes of their own that take
turns, and figures are medians of the ratios within the rounds. Then the time of an import over that of NumPy's, two
loads on two threads, and the mean over a series of SERIES files (50 by default) with Dask on one and two processes.
"""

import os
import pathlib
import random
import statistics
import subprocess
import sys
import tempfile
import textwrap
import time

HERE = pathlib.Path(__file__).resolve().parent
CASES = [("80 MB", 1_000_000, 10), ("640 MB", 2_000_000, 40)]


def make(path, nodes, fields):
    command = [sys.executable, str(HERE / "make_results.py"), str(nodes), str(fields), "<", "ascending", str(path)]
    subprocess.run(command, check=True)


def output_of(*command):
    return subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True).stdout


def run(programs, method, path):
    """Seconds, growth and checksum of the second of two runs: the first one pays for what the host takes back."""
    command = {
        "C++": [programs / "load_results", "library", path],
        "python": [sys.executable, HERE / "load_results_python.py", path],
        "numpy": [sys.executable, HERE / "load_results_numpy.py", path],
    }[method]
    output_of(*command)
    return [float(number) for number in output_of(*command).split()]


def compare_loads(programs, rounds, name, nodes, fields, path):
    methods = ["C++", "python", "numpy"]
    times = {method: [] for method in methods}
    growth = 0
    for _ in range(rounds):
        checksums = {}
        for method in random.sample(methods, len(methods)):
            seconds, grown, checksums[method] = run(programs, method, path)
            times[method].append(seconds)
            if method == "python":
                growth = max(growth, grown)
        assert max(checksums.values()) - min(checksums.values()) < 1e-6 * max(1.0, abs(checksums["C++"]))
    to_library = statistics.median(own / other for own, other in zip(times["python"], times["C++"]))
    to_numpy = statistics.median(other / own for own, other in zip(times["python"], times["numpy"]))
    print(f"{name}: read_results takes {to_library:.2f} of the C++ load (best against best "
          f"{min(times['python']) / min(times['C++']):.2f}), is {to_numpy:.2f} times faster than NumPy's memmap, and takes "
          f"{(growth - 8 * nodes * fields) / 1e6:.1f} MB over the values", flush=True)


def compare_imports(rounds):
    code = "import numpy, time; t = time.perf_counter(); import nereofile; print(time.perf_counter() - t)"
    times = [float(output_of(sys.executable, "-c", code)) for _ in range(rounds)]
    print(f"import nereofile takes {1000 * statistics.median(times):.0f} ms over NumPy's", flush=True)


def compare_threads(rounds, path):
    code = textwrap.dedent("""
        import sys, threading, time, nereofile
        def load():
            for _ in range(6):  # of which the first one pays for what the host takes back
                nereofile.read_results(sys.argv[1])
        load()
        start = time.perf_counter(); load(); load(); alone = time.perf_counter() - start
        threads = [threading.Thread(target=load) for _ in range(2)]
        start = time.perf_counter()
        for thread in threads: thread.start()
        for thread in threads: thread.join()
        print(alone / (time.perf_counter() - start))
    """)
    rates = [float(output_of(sys.executable, "-c", code, path)) for _ in range(rounds)]
    print(f"two loads on two threads have {statistics.median(rates):.2f} times the rate of one", flush=True)


SERIES = """
import glob, resource, sys, time
import dask
from distributed import Client, LocalCluster
import nereofile
if __name__ == "__main__":
    # As docs/python.md says.
    dask.config.set({"distributed.scheduler.worker-saturation": float("inf"), "distributed.comm.compression": None})
    with LocalCluster(n_workers=int(sys.argv[2]), threads_per_worker=1, dashboard_address=None) as cluster, \\
            Client(cluster) as client:
        series = nereofile.open_series(sorted(glob.glob(sys.argv[1] + "/*.res")), dimension="iteration")
        series["kU"][:2].mean().compute()
        start = time.perf_counter()
        mean = series["kU"].mean("iteration").compute()
        seconds = time.perf_counter() - start
        peaks = client.run(lambda: __import__("resource").getrusage(__import__("resource").RUSAGE_SELF).ru_maxrss)
        print(seconds, 1024 * (sum(peaks.values()) + resource.getrusage(resource.RUSAGE_SELF).ru_maxrss))
"""


def compare_series(rounds, count, path, folder):
    series = pathlib.Path(folder) / "series"
    series.mkdir()
    data = bytearray(pathlib.Path(path).read_bytes())
    for i in range(count):
        data[310:314] = i.to_bytes(4, "little")  # the iteration
        (series / f"{i}.res").write_bytes(data)
    script = pathlib.Path(folder) / "series.py"
    script.write_text(SERIES)
    seconds = {1: [], 2: []}
    peaks = []
    for _ in range(rounds):
        for workers in random.sample([1, 2], 2):
            time_taken, peak = output_of(sys.executable, script, series, workers).split()
            seconds[workers].append(float(time_taken))
            peaks.append(float(peak))
    faster = statistics.median(one / two for one, two in zip(seconds[1], seconds[2]))
    print(f"the mean of a field over {count} files: two processes are {faster:.2f} times as fast as one (best against best "
          f"{min(seconds[1]) / min(seconds[2]):.2f}), and all take {max(peaks) / 1e6:.0f} MB at most", flush=True)


def main(programs, rounds="7", series="50"):
    os.environ.setdefault("PYTHONDONTWRITEBYTECODE", "1")
    with tempfile.TemporaryDirectory() as folder:
        for name, nodes, fields in CASES:
            path = pathlib.Path(folder) / f"{nodes}.res"
            make(path, nodes, fields)
            compare_loads(pathlib.Path(programs), int(rounds), name, nodes, fields, path)
        first = pathlib.Path(folder) / f"{CASES[0][1]}.res"
        compare_imports(int(rounds))
        compare_threads(int(rounds), first)
        compare_series(int(rounds), int(series), first, folder)


if __name__ == "__main__":
    main(*sys.argv[1:])
