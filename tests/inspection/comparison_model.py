#!/usr/bin/python3
"""comparison_model.py COMPARE_PAIRS: what the library says of pairs of results files, against a model in NumPy."""

import itertools
import json
import math
import pathlib
import subprocess
import sys
import tempfile

import numpy

NAMES = ["kU", "kV", "kW", "kP", "kT", "kKin", "kDiss", "strange", "odd"]
SPECIAL = [math.nan, math.inf, -math.inf, 0.0, -0.0, 5e-324, 1.7e308, -1.7e308, 1e-200, 1e200, 1e-300]


class File:
    """What a results file has: its nodes in their order, and an array for each field, by node."""

    def __init__(self, node_count, fields, order, byte_order, cut):
        self.node_count = node_count
        self.fields = fields
        self.order = order
        self.byte_order = byte_order
        self.cut = cut  # so many bytes of the last record are missing

    def write(self, path):
        order = self.byte_order

        def integers(*values):
            return numpy.array(values, order + "i4").tobytes()

        data = bytes(4) if order == "<" else b"\0\0\0\1"
        data += integers(2024, 1, 0) + b"now".ljust(26, b"\0") + b"Model".ljust(256, b"\0")
        data += integers(self.node_count, 7, -1, 4, 3, 2, 1)
        data += numpy.array([0.5, 0.25], order + "f8").tobytes() + integers(-1, len(self.fields))
        data += b"".join(name.encode().ljust(21, b"\0") for name in self.fields) + integers(0)
        records = numpy.zeros(len(self.order), [("node", order + "i4"), ("values", order + "f8", (len(self.fields),))])
        records["node"] = self.order
        for column, values in enumerate(self.fields.values()):
            records["values"][:, column] = values[self.order - 1]
        data += records.tobytes()
        path.write_bytes(data[: len(data) - self.cut])

    def loaded(self, name):
        """The values as a load has them."""
        values = numpy.zeros(self.node_count)
        values[self.order - 1] = self.fields[name][self.order - 1]
        size = 4 + 8 * len(self.fields)
        if self.cut:
            whole_values = (size - self.cut - 4) // 8 if self.cut <= size - 4 else 0
            if list(self.fields).index(name) >= whole_values:
                values[self.order[-1] - 1] = 0
        return values


def model(a, b, absolute, relative, peak_share):
    differences = {}
    nodes = min(a.node_count, b.node_count)
    for name in a.fields:
        if name not in b.fields:
            continue
        all_of_a = a.loaded(name)
        x, y = all_of_a[:nodes], b.loaded(name)[:nodes]
        finite = numpy.abs(all_of_a[numpy.isfinite(all_of_a)])
        peak = finite.max() if finite.size else 0.0
        same = (x == y) | (numpy.isnan(x) & numpy.isnan(y))
        both = numpy.isfinite(x) & numpy.isfinite(y)
        distance = numpy.where(same, 0.0, numpy.where(both, numpy.abs(x - y), numpy.inf))
        differ = ~same
        for tolerance, scale in ((absolute, 1.0), (relative, numpy.maximum(numpy.abs(x), numpy.abs(y))), (peak_share, peak)):
            if tolerance is not None:
                differ &= ~both | (distance > tolerance * scale)
        if not differ.any():
            continue
        largest = distance[differ].max()
        node = int(numpy.flatnonzero(differ & (distance == largest))[0])
        differences[name] = {
            "a": x[node], "b": y[node], "count": int(differ.sum()), "largest": largest, "node": node + 1,
            "peakShare": largest / peak if peak else math.inf,
            "rms": float(numpy.sqrt((distance.astype(numpy.longdouble) ** 2).sum() / nodes)),
        }
    return differences


def some_file(random, node_count, names):
    values = random.integers(-64, 64, (len(names), node_count)) / 16
    special = random.random(values.shape) < random.choice([0.0, 0.02, 0.3])
    values[special] = random.choice(SPECIAL, special.sum())
    order = numpy.arange(1, node_count + 1)
    if random.random() < 0.3:
        random.shuffle(order)
    return File(node_count, dict(zip(names, values)), order, random.choice(["<", ">"]), 0)


def changed(random, file):
    node_count = file.node_count
    fields = {name: values.copy() for name, values in file.fields.items()}
    for values in fields.values():
        count = random.choice([0, 0, 1, node_count // 2])
        nodes = random.integers(0, node_count, count)
        values[nodes] = random.choice(SPECIAL, count) if random.random() < 0.3 else random.integers(-64, 64, count) / 16
    order = file.order.copy()
    if random.random() < 0.3:
        random.shuffle(order)
    if random.random() < 0.2:
        fields["kScal1"] = fields.pop(random.choice(list(fields)))
    if random.random() < 0.3:
        names = list(fields)
        random.shuffle(names)
        fields = {name: fields[name] for name in names}
    if random.random() < 0.2:  # another number of nodes
        node_count = int(random.integers(1, 2 * node_count + 1))
        order = numpy.arange(1, node_count + 1)
        fields = {name: numpy.resize(values, node_count) for name, values in fields.items()}
    if random.random() < 0.2:  # one node without a record, and one with two
        order[random.integers(0, node_count)] = random.integers(1, node_count + 1)
    cut = int(random.integers(1, 8 * len(fields) + 1)) if random.random() < 0.2 else 0
    if cut and (order[:-1] == order[-1]).any():
        cut = 0  # the model says nothing of a cut record of a node with another one
    return File(node_count, fields, order, random.choice(["<", ">"]), cut)


def close(mine, its):
    if its is None:
        return not math.isfinite(mine)
    return mine == its or math.isclose(mine, its, rel_tol=1e-12)


def main(program):
    random = numpy.random.default_rng(20240918)
    tolerances = list(itertools.product([None, 0.0, 0.5, 4.0], [None, 0.25, 1e-3], [None, 0.125, 1e-6]))
    pairs = []
    with tempfile.TemporaryDirectory() as folder:
        words = []
        for number in range(600):
            node_count = int(random.choice([1, 2, 3, 17, 239, 240, 241, 1000]))
            names = list(random.choice(NAMES, int(random.integers(1, len(NAMES) + 1)), replace=False))
            a = some_file(random, node_count, names)
            b = changed(random, a)
            paths = [pathlib.Path(folder) / f"{number}{side}.res" for side in "ab"]
            for file, path in zip((a, b), paths):
                file.write(path)
            chosen = tolerances[number % len(tolerances)]
            limit = int(random.choice([0, 700_000]))
            words += [*map(str, paths), *("-" if t is None else repr(t) for t in chosen), str(limit)]
            pairs.append((a, b, chosen))
        output = subprocess.run([program], input=" ".join(words), text=True, check=True, capture_output=True).stdout

    found = 0
    for number, (a, b, chosen) in enumerate(pairs):
        size, rest = output.split("\n", 1)
        document, output = json.loads(rest[: int(size)]), rest[int(size):]
        expected = model(a, b, *chosen)
        differences = {d["address"]: d for d in document["differences"]}
        in_both = {name: d for name, d in differences.items() if "count" in d}
        in_one = set(differences) - set(in_both) - {"nodes"}
        assert document["same"] == (not differences), number
        assert ("nodes" in differences) == (a.node_count != b.node_count), number
        assert in_one == set(a.fields) ^ set(b.fields), (number, in_one)
        assert set(in_both) == set(expected), (number, in_both, expected)
        for name, difference in expected.items():
            found += 1
            for key, value in difference.items():
                assert close(value, in_both[name][key]), (number, name, key, value, in_both[name])
    assert found > 500, found
    print(f"{len(pairs)} pairs, {found} fields that differ")


numpy.seterr(all="ignore")
main(sys.argv[1])
