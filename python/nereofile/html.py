"""What a notebook shows of the objects of the package."""

from __future__ import annotations

import dataclasses
from html import escape
from typing import TYPE_CHECKING, Iterable, Sequence

import numpy as np

if TYPE_CHECKING:
    from .checking import Check, Comparison, Inspection
    from .results import Facts, Results, ResultsHeader, Statistics

_MOST_ROWS = 60


def table(heads: Sequence[str], rows: Iterable[Sequence[object]]) -> str:
    """A table; numbers are shortened, all else is escaped."""
    all_rows = list(rows)
    parts = ["<table><thead><tr>", *(f"<th>{escape(head)}</th>" for head in heads), "</tr></thead><tbody>"]
    for row in all_rows[:_MOST_ROWS]:
        parts += ["<tr>", *(f"<td>{_cell(value)}</td>" for value in row), "</tr>"]
    if len(all_rows) > _MOST_ROWS:
        parts.append(f'<tr><td colspan="{len(heads)}">and {len(all_rows) - _MOST_ROWS} more</td></tr>')
    return "".join([*parts, "</tbody></table>"])


def _cell(value: object) -> str:
    if value is None:
        return ""
    return escape(f"{value:.6g}" if isinstance(value, float) else str(value))


def _facts(facts: Facts) -> str:
    names = [field.name for field in dataclasses.fields(facts)]
    plain = [(name, getattr(facts, name)) for name in names if name not in ("fields", "problems")]
    return table(("fact", "value"), [(name.replace("_", " "), value) for name, value in plain])


def results(loaded: Results) -> str:
    """The facts, and what the finite values of each field are like."""
    rows = []
    for name, values in loaded.items():
        finite = values[np.isfinite(values)]
        numbers = (finite.min(), finite.max(), finite.mean()) if finite.size else (None, None, None)
        rows.append((name, *(None if number is None else float(number) for number in numbers), values.size - finite.size))
    return _facts(loaded.facts) + table(("field", "minimum", "maximum", "mean", "not finite"), rows)


def header(facts: ResultsHeader) -> str:
    """The facts and the fields."""
    rows = [(field.name, field.code) for field in facts.fields]
    return _facts(facts) + table(("field", "code"), rows)


def statistics(found: Statistics) -> str:
    """The facts and the statistics of each field."""
    heads = ("field", "minimum", "at node", "maximum", "at node", "mean", "not finite")
    rows = [
        (f.name, f.minimum, f.minimum_node, f.maximum, f.maximum_node, f.mean, f.not_finite) for f in found.fields
    ]
    return _facts(found.header) + table(heads, rows)


def check(found: Check) -> str:
    """The findings, file by file."""
    rows = [
        (file.file, finding.severity, finding.code, finding.address, finding.message)
        for file in found
        for finding in file.findings
    ]
    return table(("file", "severity", "code", "address", "message"), rows)


def comparison(found: Comparison) -> str:
    """The differences."""
    rows = [(difference.address, difference.a, difference.b) for difference in found]
    return table(("address", "a", "b"), rows)


def inspection(values: Inspection) -> str:
    """The values by their addresses."""
    rows = [(address, item.spelling) for address, item in values.items()]
    return f"<p>{escape(values.path)}: {escape(values.kind)}</p>" + table(("address", "value"), rows)
