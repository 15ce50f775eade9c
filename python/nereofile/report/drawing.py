"""Small drawings, as what an SVG path is made of: many of them have to fit on a page."""

from __future__ import annotations

import math
from typing import List, Sequence, Tuple

from .distribution import Distribution

WIDTH = 120
HEIGHT = 32
_MARGIN = 2
_MOST_POINTS = 60


def line(points: Sequence[Tuple[float, float]]) -> str:
    """A curve through points; empty where there is nothing to draw."""
    thinned = _thinned([point for point in points if math.isfinite(point[0]) and math.isfinite(point[1])])
    if len(thinned) < 2:
        return ""
    xs = _scaled([x for x, _ in thinned], _MARGIN, WIDTH - _MARGIN)
    ys = _scaled([y for _, y in thinned], HEIGHT - _MARGIN, _MARGIN)
    return "M" + "L".join(f"{_short(x)} {_short(y)}" for x, y in zip(xs, ys))


def bars(distribution: Distribution) -> str:
    """The outline of a histogram. A part that has a value is never too low to be seen."""
    most = max(distribution.counts, default=0)
    if most == 0:
        return ""
    width = WIDTH / len(distribution.counts)
    parts = [f"M0 {HEIGHT}"]
    for place, number in enumerate(distribution.counts):
        height = max(1.0, (HEIGHT - 1) * number / most) if number else 0.0
        parts.append(f"V{_short(HEIGHT - height)}H{_short((place + 1) * width)}")
    return "".join(parts) + f"V{HEIGHT}Z"


def _thinned(points: List[Tuple[float, float]]) -> List[Tuple[float, float]]:
    if len(points) <= _MOST_POINTS:
        return points
    step = (len(points) - 1) / (_MOST_POINTS - 1)
    return [points[round(i * step)] for i in range(_MOST_POINTS)]


def _scaled(values: Sequence[float], first: float, last: float) -> List[float]:
    low, high = min(values), max(values)
    half = high / 2 - low / 2  # a half of it, which doesn't overflow
    if half == 0:
        return [(first + last) / 2] * len(values)
    return [first + (last - first) * ((value / 2 - low / 2) / half) for value in values]


def _short(value: float) -> str:
    return f"{value:.1f}".rstrip("0").rstrip(".")
