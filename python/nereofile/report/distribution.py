"""How often the values of a field occur, of files of any size in bounded memory."""

from __future__ import annotations

import dataclasses
import math
from typing import Iterator, List, Sequence, Tuple

import numpy as np
import numpy.typing as npt

BINS = 40
MEMORY = 256 * 1024 * 1024

_CHUNK = 1 << 18

Values = npt.NDArray[np.float64]


@dataclasses.dataclass(frozen=True)
class Distribution:
    """How many values lie in each part of the range from ``first`` to ``last``, all parts of one width."""

    first: float
    last: float
    counts: Tuple[int, ...]

    @property
    def is_level(self) -> bool:
        """Whether all values are the same, or there are none."""
        return self.first == self.last


class Counter:
    """Counts values into the parts of a range. What isn't finite isn't counted."""

    def __init__(self, first: float, last: float, bins: int = BINS) -> None:
        self._first = first
        self._last = last
        self._bins = bins
        self._counts = np.zeros(bins, np.int64)

    def add(self, values: Values) -> None:
        """Counts more values, none of which is outside of the range."""
        width = self._last / 2 - self._first / 2  # a half of it, which doesn't overflow
        for start in range(0, len(values), _CHUNK):
            chunk = values[start : start + _CHUNK]
            chunk = chunk[np.isfinite(chunk)]
            if width > 0:
                share = (chunk / 2 - self._first / 2) / width
                places = np.clip((share * self._bins).astype(np.int64), 0, self._bins - 1)
                self._counts += np.bincount(places, minlength=self._bins)
            else:
                self._counts[self._bins // 2] += len(chunk)

    @property
    def distribution(self) -> Distribution:
        """What was counted."""
        return Distribution(self._first, self._last, tuple(int(number) for number in self._counts))


def batches(names: Sequence[str], node_count: int, arrays: int = 1) -> Iterator[Tuple[List[str], Tuple[int, int]]]:
    """Fields and nodes (the first and the last) that are loaded at a time, so that ``arrays`` of each fit."""
    if not names or node_count <= 0:
        return
    room = MEMORY // (8 * arrays)
    step = max(1, min(node_count, room))
    at_once = max(1, room // step)
    for start in range(0, len(names), at_once):
        for first in range(1, node_count + 1, step):
            yield list(names[start : start + at_once]), (first, min(node_count, first + step - 1))


def finite_range(low: float, high: float) -> Tuple[float, float]:
    """A range for counting, from extremes that may not be there."""
    return (low, high) if math.isfinite(low) and math.isfinite(high) else (0.0, 0.0)
