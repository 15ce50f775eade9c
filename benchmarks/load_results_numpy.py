#!/usr/bin/python3
"""load_results_numpy.py FILE: as load_results, by a structured memmap and one contiguous copy a field."""

import sys
import time

import numpy


def memory(name):
    with open("/proc/self/status") as status:
        for line in status:
            if line.startswith(name):
                return int(line.split()[1]) * 1024


def load(path):
    header = numpy.fromfile(path, dtype="u1", count=350).tobytes()
    order = "<" if header[:4] == bytes(4) else ">"
    node_count = int(numpy.frombuffer(header, order + "i4", 1, 298)[0])
    field_count = int(numpy.frombuffer(header, order + "i4", 1, 346)[0])
    record = numpy.dtype([("node", order + "i4")] + [(f"f{i}", order + "f8") for i in range(field_count)])
    records = numpy.memmap(path, record, "r", 354 + 21 * field_count, (node_count,))
    node = records["node"].astype("i8") - 1
    in_order = bool((numpy.diff(node) == 1).all()) and node[0] == 0
    fields = []
    for i in range(field_count):
        if in_order:
            values = records[f"f{i}"].astype("f8")
        else:
            values = numpy.zeros(node_count)
            values[node] = records[f"f{i}"]
        fields.append(values)
    return fields


before = memory("VmRSS:")
start = time.perf_counter()
loaded = load(sys.argv[1])
seconds = time.perf_counter() - start
growth = memory("VmHWM:") - before
print(f"{seconds:.6f} {growth} {sum(float(values[::97].sum()) for values in loaded):.10g}")
