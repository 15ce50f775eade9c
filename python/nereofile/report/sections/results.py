"""Results: the facts of each snapshot, what its fields are like, and how they change from one to the next."""

from __future__ import annotations

import dataclasses
import math
from typing import Dict, List, Mapping, Optional, Sequence, Tuple, Union

import numpy as np

from .._context import Context
from ..._records import FieldStatistics
from ...checking import diff
from ...errors import FileError
from ...results import ResultsHeader, read_results, results_header, statistics
from ..case import CaseFile
from ..distribution import Counter, Distribution, batches, finite_range

MOST_FIELDS = 1000
MOST_HISTORY_ROWS = 10_000

# A file may announce far more nodes than it has records of. It would take minutes to go through nodes that aren't there.
_MOST_NODES_OF_RECORD = 16
_FEW_NODES = 1 << 20

_PROBLEMS = (FileError, MemoryError, KeyError, ValueError, OverflowError)


@dataclasses.dataclass(frozen=True)
class Field:
    """What the values of a field are like. There is no distribution where the file doesn't load, or lacks most nodes."""

    statistics: FieldStatistics
    distribution: Optional[Distribution] = None


@dataclasses.dataclass(frozen=True)
class Snapshot:
    """A results file: what it says of itself, and its fields. ``problem`` says why that isn't all.

    Of a snapshot that isn't shown a page says only that it is there; of its fields there are no distributions.
    """

    name: str
    path: str
    problem: Optional[str]
    header: Optional[ResultsHeader] = None
    fields: Tuple[Field, ...] = ()
    is_shown: bool = True

    def field(self, name: str) -> Optional[FieldStatistics]:
        """The statistics of a field."""
        return next((field.statistics for field in self.fields if field.statistics.name == name), None)


@dataclasses.dataclass(frozen=True)
class FieldHistory:
    """A field from snapshot to snapshot."""

    name: str
    minimum: Tuple[float, ...]
    mean: Tuple[float, ...]
    maximum: Tuple[float, ...]


@dataclasses.dataclass(frozen=True)
class History:
    """The fields of several snapshots over "iteration" or "time"."""

    over: str
    places: Tuple[float, ...]
    fields: Tuple[FieldHistory, ...]

    @property
    def listed(self) -> Tuple[FieldHistory, ...]:
        """As many of them as a page has room for in numbers."""
        return self.fields[: max(1, MOST_HISTORY_ROWS // len(self.places))]


@dataclasses.dataclass(frozen=True)
class FieldChange:
    """How a field of one file differs from that of another; nothing of it where they are the same."""

    name: str
    count: int = 0
    largest: float = 0.0
    node: int = 0
    before: float = 0.0
    after: float = 0.0
    rms: float = 0.0
    peak_share: float = 0.0
    distribution: Optional[Distribution] = None

    @property
    def is_same(self) -> bool:
        """Whether it has the same value at all nodes."""
        return self.count == 0


@dataclasses.dataclass(frozen=True)
class Change:
    """What differs between two results files, field by field. ``lacking`` names fields that one of them lacks.

    ``problem`` says why they can't be compared, and ``nodes`` how many each has if it is that.
    """

    before: str
    after: str
    problem: Optional[str]
    nodes: Optional[Tuple[int, int]] = None
    fields: Tuple[FieldChange, ...] = ()
    lacking: Tuple[Tuple[str, str], ...] = ()


@dataclasses.dataclass(frozen=True)
class ResultsOfCase:
    """The snapshots of a case in the order of the run."""

    snapshots: Tuple[Snapshot, ...]
    history: Optional[History]
    change: Optional[Change]

    @property
    def last(self) -> Optional[Snapshot]:
        """The last snapshot that says something of itself."""
        return next((snapshot for snapshot in reversed(self.snapshots) if snapshot.header), None)


def results(context: Context) -> ResultsOfCase:
    """The results of a case."""
    files = context.case.of("results")
    context.progress.expect(2 * sum(file.size for file in files))
    snapshots = [
        _snapshot(context, file, header, is_shown) for file, header, is_shown in _in_order(context, files)
    ]
    sound = [snapshot for snapshot in snapshots if snapshot.fields]
    change = None
    if len(sound) > 1:
        change = compared(context, sound[-2], sound[-1])
    return ResultsOfCase(tuple(snapshots), history(sound), change)


def _in_order(
    context: Context, files: Sequence[CaseFile]
) -> List[Tuple[CaseFile, Union[ResultsHeader, str], bool]]:
    """The files in the order of the run, with the header or why there is none, and whether there is room for each."""
    rows = sorted(((file, _header(context, file)) for file in files), key=_moment)
    room = MOST_FIELDS
    shown: List[Tuple[CaseFile, Union[ResultsHeader, str], bool]] = []
    for file, header in reversed(rows):
        room -= 1 if isinstance(header, str) else len(header.fields)
        shown.append((file, header, room >= 0 or not shown))
    return shown[::-1]


def _header(context: Context, file: CaseFile) -> Union[ResultsHeader, str]:
    try:
        return results_header(file.path)
    except _PROBLEMS as error:
        return context.case.placed(str(error))


def moment_of(header: ResultsHeader) -> Tuple[float, int, int]:
    """When in a run a snapshot was made."""
    return (header.time if math.isfinite(header.time) else 0.0, header.iteration, header.time_step)


def history(snapshots: Sequence[Snapshot]) -> Optional[History]:
    """How the fields that all snapshots have went on; None where these are all of one moment."""
    times = [snapshot.header.time for snapshot in snapshots if snapshot.header]
    over = "time" if len(set(times)) > 1 and all(math.isfinite(time) for time in times) else "iteration"
    moments = [(float(getattr(snapshot.header, over)), snapshot) for snapshot in snapshots if snapshot.header]
    moments.sort(key=lambda moment: moment[0])
    places = tuple(place for place, _ in moments)
    if len(set(places)) < 2:
        return None
    by_name = [{field.statistics.name: field.statistics for field in reversed(one.fields)} for _, one in moments]
    fields = []
    for name in _names(snapshots[0]):
        rows = [found[name] for found in by_name if name in found]
        if len(rows) == len(by_name):
            fields.append(
                FieldHistory(
                    name,
                    tuple(row.minimum for row in rows),
                    tuple(row.mean for row in rows),
                    tuple(row.maximum for row in rows),
                )
            )
    return History(over, places, tuple(fields)) if fields else None


def compared(context: Context, before: Snapshot, after: Snapshot) -> Change:
    """What differs between two snapshots."""
    context.progress.say("compare")
    nodes = (_node_count(before), _node_count(after))
    if nodes[0] != nodes[1]:
        return Change(before.name, after.name, None, nodes)
    try:
        differences = diff(before.path, after.path)
    except _PROBLEMS as error:
        return Change(before.name, after.name, context.case.placed(str(error)))
    fields = {d.address: d.field for d in differences if d.field}
    names = [name for name in _names(before) if name in _names(after)]
    changes = []
    ranges: Dict[str, Tuple[float, float]] = {}
    for name in names:
        found = fields.get(name)
        if found is None:
            changes.append(FieldChange(name))
            continue
        changes.append(
            FieldChange(
                name, found.count, found.largest, found.node, found.a, found.b, found.rms, found.peak_share
            )
        )
        if math.isfinite(found.largest):
            ranges[name] = (-found.largest, found.largest)
    are_there = all(one.header and _has_its_nodes(one.header) for one in (before, after))
    distributions = _distributions_of_change(context, before, after, ranges) if are_there else {}
    return Change(
        before.name,
        after.name,
        None,
        None,
        tuple(dataclasses.replace(row, distribution=distributions.get(row.name)) for row in changes),
        tuple((name, before.name) for name in _names(after) if name not in names)
        + tuple((name, after.name) for name in _names(before) if name not in names),
    )


def _node_count(snapshot: Snapshot) -> int:
    return snapshot.header.node_count if snapshot.header else 0


def _names(snapshot: Snapshot) -> List[str]:
    return list(dict.fromkeys(field.statistics.name for field in snapshot.fields))


def _moment(row: Tuple[CaseFile, Union[ResultsHeader, str]]) -> Tuple[bool, Tuple[float, int, int], str]:
    file, header = row
    if isinstance(header, str) or not header.is_results_file:
        return False, (0.0, 0, 0), file.name
    return True, moment_of(header), file.name


def _snapshot(context: Context, file: CaseFile, header: Union[ResultsHeader, str], is_shown: bool) -> Snapshot:
    context.progress.say(file.name)
    if isinstance(header, str):
        return Snapshot(file.name, file.path, header, is_shown=is_shown)
    plain = header if header.is_results_file else None
    try:
        found = statistics(file.path, progress=context.progress.follower())
    except _PROBLEMS as error:
        return Snapshot(file.name, file.path, context.case.placed(str(error)), plain, is_shown=is_shown)
    distributions: Dict[str, Distribution] = {}
    problem = None
    try:
        if is_shown and _has_its_nodes(header):
            distributions = _distributions(context, file, header, found)
    except _PROBLEMS as error:
        problem = context.case.placed(str(error))
    fields = tuple(Field(row, distributions.get(row.name)) for row in found.fields)
    return Snapshot(file.name, file.path, problem, plain, fields, is_shown)


def _has_its_nodes(header: ResultsHeader) -> bool:
    """Whether there are records of a good part of the nodes that a file announces, or these are few."""
    return header.node_count <= max(_FEW_NODES, _MOST_NODES_OF_RECORD * header.whole_records)


def _distributions(
    context: Context, file: CaseFile, header: ResultsHeader, found: Mapping[str, FieldStatistics]
) -> Dict[str, Distribution]:
    names = list(dict.fromkeys(field.name for field in header.fields if field.is_used and field.name in found))
    counters = {name: Counter(*finite_range(found[name].minimum, found[name].maximum)) for name in names}
    for fields, nodes in batches(names, header.node_count):
        part = read_results(
            file.path, fields, nodes, fill=math.nan, strict=False, progress=context.progress.follower()
        )
        for name in fields:
            counters[name].add(part[name])
    return {name: counter.distribution for name, counter in counters.items() if found[name].count}


def _distributions_of_change(
    context: Context, before: Snapshot, after: Snapshot, ranges: Mapping[str, Tuple[float, float]]
) -> Dict[str, Distribution]:
    counters = {name: Counter(*limits) for name, limits in ranges.items()}
    node_count = _node_count(after)
    try:
        for fields, nodes in batches(list(ranges), node_count, arrays=3):
            first = read_results(before.path, fields, nodes, strict=False)
            second = read_results(after.path, fields, nodes, strict=False)
            for name in fields:
                with np.errstate(all="ignore"):
                    counters[name].add(second[name] - first[name])
    except _PROBLEMS:
        return {}
    return {name: counter.distribution for name, counter in counters.items()}
