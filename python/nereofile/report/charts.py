"""Figures of Matplotlib as SVG for a page: in its colours, with its letters, and the same bytes each time."""

from __future__ import annotations

import io
import re
import xml.etree.ElementTree as ElementTree
from typing import Any, Callable, Dict, Optional, Sequence, Tuple

from ..optional import require
from .distribution import Distribution
from .sections.results import FieldHistory
from .texts import brief

#: The most figures of a page, of each sort: one takes some hundredths of a second, and ten kilobytes.
MOST_CURVES = 60
MOST_HISTORIES = 24
MOST_DISTRIBUTIONS = 48

# Where the axes are in a figure, in parts of it. Finding the best place would take as long as drawing does.
_PLACE = (0.15, 0.2, 0.83, 0.74)

# Colours that stand for those of the style sheet, which differ by day and by night.
_COLOURS = {
    "#000001": "var(--ink)",
    "#000002": "var(--muted)",
    "#000003": "var(--line)",
    "#000004": "var(--accent)",
    "#000005": "var(--accent-soft)",
}
_INK, _MUTED, _LINE, _ACCENT, _SOFT = _COLOURS

_STYLE: Dict[str, Any] = {
    "svg.fonttype": "none",
    "svg.hashsalt": "nereofile",
    "text.parse_math": False,
    "font.size": 9.0,
    "text.color": _MUTED,
    "axes.edgecolor": _LINE,
    "axes.labelcolor": _MUTED,
    "axes.facecolor": "none",
    "axes.spines.top": False,
    "axes.spines.right": False,
    "axes.grid": True,
    "axes.axisbelow": True,
    "axes.unicode_minus": False,
    "axes.formatter.useoffset": False,
    "axes.formatter.use_mathtext": False,
    "grid.color": _LINE,
    "grid.linewidth": 0.6,
    "xtick.color": _LINE,
    "ytick.color": _LINE,
    "xtick.labelcolor": _MUTED,
    "ytick.labelcolor": _MUTED,
    "figure.facecolor": "none",
    "savefig.facecolor": "none",
    "path.simplify": True,
}
_FONT = re.compile(r"font: (?:[a-z]+ )*([0-9.]+)px [^;]*")
_LARGEST = 1e300  # what is larger overflows in the reckoning of axes


class Charts:
    """Draws the figures of one page, as many as it has room for; None stands for one that isn't drawn."""

    most_curves = MOST_CURVES

    def __init__(self) -> None:
        self._matplotlib = require("matplotlib", "a report")
        self._figure = require("matplotlib.figure", "a report").Figure
        # The defaults of Matplotlib, whatever somebody has set for other figures.
        kept = require("matplotlib.style.core", "a report").STYLE_BLACKLIST
        defaults = self._matplotlib.rcParamsDefault
        self._style = {**{name: defaults[name] for name in sorted(set(defaults) - set(kept))}, **_STYLE}
        self._counts: Dict[str, int] = {}

    def curve(self, points: Sequence[Tuple[float, float]], x_name: str, y_name: str) -> Optional[str]:
        """A curve with its points, or some of them."""
        if not self._has_room("curve", MOST_CURVES):
            return None
        return self._draw("curve", lambda axes: _curve(axes, points, x_name, y_name), f"{y_name}, {x_name}", points)

    def history(self, places: Sequence[float], field: FieldHistory, over: str) -> Optional[str]:
        """The mean of a field over iterations or time, in the band between its extremes."""
        if not self._has_room("history", MOST_HISTORIES):
            return None
        values = [*zip(places, field.minimum), *zip(places, field.maximum)]
        return self._draw(
            "history", lambda axes: _history(axes, places, field, over), f"{field.name}, {over}", values
        )

    def distribution(self, distribution: Distribution, name: str, counted: str) -> Optional[str]:
        """How often values occur."""
        if not self._has_room("distribution", MOST_DISTRIBUTIONS):
            return None
        ends = [(distribution.first, 0.0), (distribution.last, 0.0)]
        return self._draw(
            "distribution", lambda axes: _bars(axes, distribution, name, counted), name, ends
        )

    def _has_room(self, sort: str, most: int) -> bool:
        return self._counts.get(sort, 0) < most

    def _draw(
        self, sort: str, draw: Callable[[Any], None], label: str, values: Sequence[Tuple[float, float]]
    ) -> Optional[str]:
        """The figure; None where there is nothing that axes can have."""
        numbers = [abs(number) for point in values for number in point]
        if len(values) < 2 or not all(number < _LARGEST for number in numbers):
            return None
        self._counts[sort] = self._counts.get(sort, 0) + 1
        with self._matplotlib.rc_context(self._style):
            figure = self._figure(figsize=(4.6, 2.3))
            axes = figure.add_axes(_PLACE)
            axes.tick_params(length=0)
            draw(axes)
            for axis in (axes.xaxis, axes.yaxis):
                axis.get_offset_text().set_color(_MUTED)
            out = io.BytesIO()
            figure.savefig(out, format="svg", metadata={"Date": None, "Creator": None, "Format": None, "Type": None})
        return inline_svg(out.getvalue(), f"{sort}-{self._counts[sort]}-", brief(label))


def _curve(axes: Any, points: Sequence[Tuple[float, float]], x_name: str, y_name: str) -> None:
    axes.plot(*zip(*points), color=_ACCENT, linewidth=1.5, marker="o", markersize=3.5)
    axes.set_xlabel(brief(x_name))
    axes.set_ylabel(brief(y_name))


def _history(axes: Any, places: Sequence[float], field: FieldHistory, over: str) -> None:
    axes.fill_between(places, field.minimum, field.maximum, color=_SOFT, linewidth=0)
    axes.plot(places, field.mean, color=_ACCENT, linewidth=1.5, marker="o", markersize=3)
    axes.locator_params(axis="x", nbins=6, integer=all(place == int(place) for place in places))
    axes.set_xlabel(over)
    axes.set_ylabel(brief(field.name))


def _bars(axes: Any, distribution: Distribution, name: str, counted: str) -> None:
    bins = len(distribution.counts)
    width = (distribution.last - distribution.first) / bins
    places = [distribution.first + (i + 0.5) * width for i in range(bins)]
    axes.bar(places, distribution.counts, width=0.9 * width, color=_ACCENT, linewidth=0)
    axes.set_xlabel(brief(name))
    axes.set_ylabel(counted)


def inline_svg(svg: bytes, prefix: str, label: str) -> str:
    """An SVG as a part of a page: ids with the prefix, colours and letters by the page, and a label."""
    root = ElementTree.fromstring(svg)
    for parent in list(root.iter()):
        for child in list(parent):
            if _local(child.tag) in ("metadata", "style"):
                parent.remove(child)
    for element in root.iter():
        element.tag = _local(element.tag)
        for name, value in list(element.attrib.items()):
            del element.attrib[name]
            element.set(_local(name), _own(_local(name), value, prefix))
    for name in ("width", "height", "version"):
        root.attrib.pop(name, None)
    root.set("class", "figure")
    root.set("role", "img")
    root.set("aria-label", label)
    return ElementTree.tostring(root, encoding="unicode")


def _local(name: str) -> str:
    return name.rpartition("}")[2]


def _own(name: str, value: str, prefix: str) -> str:
    if name == "id":
        return prefix + value
    if name == "href":
        return value.replace("#", "#" + prefix)
    if name == "style":
        for colour, own in _COLOURS.items():
            value = value.replace(colour, own)
        return _FONT.sub(r"font-size: \1px", value)
    return value.replace("url(#", "url(#" + prefix)

