"""Figures of Matplotlib. Each function draws on ``axes``, or else on those of a new figure, and gives the axes."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Optional

import numpy as np

from .optional import require
from .vocabulary import property_types

if TYPE_CHECKING:
    import xarray
    from matplotlib.axes import Axes

    from ._nereofile import Property
    from .results import Results


def _axes(axes: Optional[Axes]) -> Axes:
    if axes is not None:
        return axes
    new: Axes = require("matplotlib.figure", "plot").Figure(layout="constrained").add_subplot()
    return new


def plot_property(prop: Property, axes: Optional[Axes] = None) -> Axes:
    """A property over its variable: its curve, or a level line where it is constant.

    >>> curve = Property("viscosity")
    >>> curve.variation_type, curve.independent_variable = "piecewise_linear", "kT"
    >>> curve.points = [(273.15, 0.00179), (293.15, 0.001)]
    >>> plot_property(curve).get_xlabel()
    'kT'
    """
    axes = _axes(axes)
    known = property_types.get(prop.type)
    axes.set_ylabel(known.display_name if known else "value")
    if prop.variation_type == "piecewise_linear":
        points = prop.points
        axes.plot(points[:, 0], points[:, 1], marker="o")
        axes.set_xlabel(prop.independent_variable or "")
    else:
        axes.axhline(prop.value)
        axes.set_xlabel(prop.variation_type)
    return axes


def plot_distribution(results: Results, field: str, bins: int = 50, axes: Optional[Axes] = None) -> Axes:
    """How often the values of a field occur. Values that aren't finite are left out.

    >>> plot_distribution(read_results("cavity.res"), "kU").get_xlabel()
    'kU'
    """
    values = results[field]
    axes = _axes(axes)
    axes.hist(values[np.isfinite(values)], bins=bins)
    axes.set_xlabel(field)
    axes.set_ylabel("nodes")
    return axes


def plot_differences(first: Results, second: Results, field: str, axes: Optional[Axes] = None) -> Axes:
    """What a field of the second results has over that of the first, node by node. A ValueError for other nodes.

    >>> results = read_results("cavity.res")
    >>> plot_differences(results, results, "kP").get_xlabel()
    'node'
    """
    if first.nodes != second.nodes:
        raise ValueError("the results are those of different nodes")
    difference = second[field] - first[field]
    axes = _axes(axes)
    axes.plot(np.arange(first.nodes.start, first.nodes.stop), difference, linewidth=0.8)
    axes.set_xlabel("node")
    axes.set_ylabel(f"difference of {field}")
    return axes


def plot_history(series: xarray.Dataset, field: str, node: Optional[int] = None, axes: Optional[Axes] = None) -> Axes:
    """A field of a series over its time or iteration: at a node, or the mean with the extremes.

    >>> series = open_series(["cavity.res"], fields=["kU"])
    >>> plot_history(series, "kU", node=4225).get_ylabel()
    'kU at node 4225'
    """
    values = series[field]
    over = str(values.dims[0])
    axes = _axes(axes)
    axes.set_xlabel(over)
    if node is not None:
        axes.plot(series[over], values.sel(node=node), marker="o")
        axes.set_ylabel(f"{field} at node {node}")
        return axes
    lines: Any = {"mean": values.mean("node"), "minimum": values.min("node"), "maximum": values.max("node")}
    for label, line in lines.items():
        axes.plot(series[over], line, marker="o", label=label)
    axes.set_ylabel(field)
    axes.legend()
    return axes
