"""Results files as the page of their format describes them."""

from __future__ import annotations

import pathlib
from typing import Optional, Sequence

import numpy as np


def results_bytes(
    values: "np.ndarray[tuple[int, int], np.dtype[np.float64]]",
    names: Sequence[str] = ("kU", "kP"),
    order: str = "<",
    nodes: Optional[Sequence[int]] = None,
    node_count: Optional[int] = None,
    title: str = "made up",
    iteration: int = 7,
    time: float = 0.5,
) -> bytes:
    """A file with a row of values for each node."""
    node_count = len(values) if node_count is None else node_count

    def integers(*numbers: int) -> bytes:
        return np.array(numbers, order + "i4").tobytes()

    record = np.dtype([("node", order + "i4"), ("values", order + "f8", (len(names),))])
    records = np.zeros(len(values), record)
    records["node"] = np.arange(1, len(values) + 1) if nodes is None else nodes
    records["values"] = values
    return b"".join(
        [
            bytes(4) if order == "<" else b"\0\0\0\1",
            integers(2024, 0, 0),
            b"today".ljust(26, b"\0"),
            title.encode().ljust(256, b"\0"),
            integers(node_count, 5, -1, iteration, 1, 2, 1),
            np.array([time, 0.1], order + "f8").tobytes(),
            integers(-1, len(names)),
            *(name.encode().ljust(21, b"\0") for name in names),
            integers(0),
            records.tobytes(),
        ]
    )


def write_results(path: pathlib.Path, node_count: int = 10, **options: object) -> pathlib.Path:
    """A file of made-up values: that of node n is n in the first field, -n in the second."""
    nodes = np.arange(1, node_count + 1, dtype=float)
    path.write_bytes(results_bytes(np.column_stack([nodes, -nodes]), **options))  # type: ignore[arg-type]
    return path
