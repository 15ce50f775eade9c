#!/usr/bin/python3
"""load_results_python.py FILE: as load_results, by the Python package; its folder stands in PYTHONPATH."""

import sys
import time

import nereofile


def memory(name):
    with open("/proc/self/status") as status:
        for line in status:
            if line.startswith(name):
                return int(line.split()[1]) * 1024


before = memory("VmRSS:")
start = time.perf_counter()
loaded = nereofile.read_results(sys.argv[1])
seconds = time.perf_counter() - start
growth = memory("VmHWM:") - before
print(f"{seconds:.6f} {growth} {sum(float(values[::97].sum()) for values in loaded.values()):.10g}")
