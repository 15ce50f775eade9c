"""Two cases side by side."""

from __future__ import annotations

import dataclasses
import os
from typing import List, Optional, Sequence, Tuple

from .._context import Context
from ...checking import diff
from ...errors import FileError
from ..case import GROUPS, Case, CaseFile
from .results import Change, ResultsOfCase, compared, results

MOST_ROWS = 1000  # of the files of a group


@dataclasses.dataclass(frozen=True)
class ValueDifference:
    """An address that two files say differently; None on the side of one that doesn't say it."""

    address: str
    a: Optional[str]
    b: Optional[str]


@dataclasses.dataclass(frozen=True)
class FilePair:
    """Two files of a group, and what they say differently. One name is empty where a case lacks the file."""

    a: str
    b: str
    problem: Optional[str]
    count: int
    differences: Tuple[ValueDifference, ...]


@dataclasses.dataclass(frozen=True)
class GroupComparison:
    """The files of a group, pair by pair."""

    group: str
    pairs: Tuple[FilePair, ...]

    @property
    def count(self) -> int:
        """How many values differ."""
        return sum(pair.count for pair in self.pairs)


@dataclasses.dataclass(frozen=True)
class ComparisonOfCases:
    """What two cases say differently. ``change`` is about the last results of each."""

    a: str
    b: str
    groups: Tuple[GroupComparison, ...]
    change: Optional[Change]


def comparison(context: Context, own: ResultsOfCase) -> Optional[ComparisonOfCases]:
    """What differs between the case of a page and the other, if there is another."""
    if context.other is None:
        return None
    groups = [
        GroupComparison(group, _pairs(context, pairs_of(context.case, context.other, group)))
        for group in GROUPS
        if group != "results"
    ]
    return ComparisonOfCases(
        a=_name(context.case),
        b=_name(context.other),
        groups=tuple(group for group in groups if group.pairs),
        change=_change(context, own, results(dataclasses.replace(context, case=context.other, other=None))),
    )


def pairs_of(a: Case, b: Case, group: str) -> List[Tuple[Optional[CaseFile], Optional[CaseFile]]]:
    """The files of two cases that are compared: those of one name, then the others in their order."""
    left, right = a.described(group), b.described(group)
    by_name = {file.name: file for file in right}
    pairs: List[Tuple[Optional[CaseFile], Optional[CaseFile]]] = []
    pairs += [(file, by_name[file.name]) for file in left if file.name in by_name]
    names = {file.name for file in left} & set(by_name)
    left = [file for file in left if file.name not in names]
    right = [file for file in right if file.name not in names]
    for place in range(max(len(left), len(right))):
        pairs.append((left[place] if place < len(left) else None, right[place] if place < len(right) else None))
    return pairs


def _name(case: Case) -> str:
    return os.path.basename(os.path.realpath(case.folder))


def _pairs(context: Context, pairs: Sequence[Tuple[Optional[CaseFile], Optional[CaseFile]]]) -> Tuple[FilePair, ...]:
    return tuple(_pair(context, pair, MOST_ROWS // len(pairs)) for pair in pairs)


def _pair(context: Context, pair: Tuple[Optional[CaseFile], Optional[CaseFile]], most_rows: int) -> FilePair:
    a, b = pair
    if a is None or b is None:
        return FilePair(a.name if a else "", b.name if b else "", None, 0, ())
    try:
        found = diff(a.path, b.path)
    except (FileError, MemoryError) as error:
        message = context.case.placed(str(error))
        return FilePair(a.name, b.name, context.other.placed(message) if context.other else message, 0, ())
    rows = tuple(ValueDifference(d.address, d.a, d.b) for d in found[:most_rows])
    return FilePair(a.name, b.name, None, len(found), rows)


def _change(context: Context, own: ResultsOfCase, others: ResultsOfCase) -> Optional[Change]:
    if own.last is None or others.last is None:
        return None
    return compared(context, own.last, others.last)
