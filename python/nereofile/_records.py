"""Plain records: what is said of files, their values and fields."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, NamedTuple, Optional, Tuple, Union


class Finding(NamedTuple):
    """Something that is wrong with a file, or worth knowing.

    Lines and columns count from 1, offsets from 0; what doesn't apply is None. ``effect`` says what becomes of
    the place when the file is loaded; ``more`` how many further findings of the code were only counted.
    """

    severity: str
    code: str
    effect: str
    line: Optional[int]
    column: Optional[int]
    offset: Optional[int]
    address: Optional[str]
    found: Optional[str]
    expected: Optional[str]
    more: int
    message: str
    line_of_text: str

    def __str__(self) -> str:
        return self.line_of_text


class CheckedFile(NamedTuple):
    """A file, its kind (None when it is of none), and what was found in it, in the order of the file."""

    file: str
    kind: Optional[str]
    findings: Tuple[Finding, ...]
    errors: int
    warnings: int
    notes: int


class Item(NamedTuple):
    """One value of a file as it stands there: what a load makes of it, and how it is spelled."""

    address: str
    type: str
    value: Union[int, float, str, bool, None]
    spelling: str
    line: Optional[int]
    column: Optional[int]
    offset: Optional[int]
    length: int


@dataclass(frozen=True)
class FieldDifference:
    """How far the values of a field differ that two files have, node by node.

    ``count`` nodes differ, most of all ``node``, where the values are ``a`` and ``b``; ``rms`` is over all nodes.
    """

    count: int
    largest: float
    node: int
    a: float
    b: float
    peak: float
    peak_share: float
    rms: float


class Difference(NamedTuple):
    """Something that two files say differently; None on the side of a file that doesn't say it."""

    address: str
    a: Optional[str]
    b: Optional[str]
    field: Optional[FieldDifference]


class ValueChange(NamedTuple):
    """What an address had in a file and what it has now, as texts; None where it wasn't or isn't there."""

    address: str
    before: Optional[str]
    after: Optional[str]


class EffectiveSetting(NamedTuple):
    """A setting as a solver will have it: ``origin`` is "default", "file" or "command-line".

    The place is that of the value in the file, if it comes from there.
    """

    key: str
    value: str
    origin: str
    line: Optional[int]
    column: Optional[int]
    offset: Optional[int]


class HeaderField(NamedTuple):
    """A field that a results file names: ``code`` is None where the name is unknown, ``offset`` that of the name."""

    name: str
    code: Optional[int]
    column: int
    offset: int
    is_whole: bool
    is_used: bool
    is_repeat: bool


class Problem(NamedTuple):
    """What is wrong with a results file as far as its header tells, and where, in bytes."""

    kind: str
    offset: int


@dataclass(frozen=True)
class FieldStatistics:
    """What the values of one field are like. Values that aren't finite only count as such.

    Where there is no finite value, the numbers are NaN and the nodes 0.
    """

    name: str
    code: Optional[int]
    count: int
    minimum: float
    maximum: float
    mean: float
    root_mean_square: float
    minimum_node: int
    maximum_node: int
    not_finite: int
    first_not_finite_node: int
    first_not_finite_offset: int


class Damage(NamedTuple):
    """What is wrong with the nodes of a results file. Nodes are 0, offsets -1 where there is none."""

    missing_nodes: int
    first_missing_node: int
    repeated_records: int
    first_repeated_node: int
    first_repeated_offset: int
    records_out_of_range: int
    first_node_out_of_range: int
    first_out_of_range_offset: int


@dataclass(frozen=True)
class MaterialType:
    """A kind of material: its name in files and on screen, and its place in the table."""

    name: str
    display_name: str
    index: int
    is_flow_component: bool


@dataclass(frozen=True)
class PropertyType:
    """A kind of property: ``code`` is its field variable (361 without one), ``unit_category`` -1 without a unit."""

    name: str
    display_name: str
    index: int
    code: int
    unit_category: int


@dataclass(frozen=True)
class VariationType:
    """A way in which a property varies: ``code`` is the solver's, ``older_name`` the one in older files, if any."""

    name: str
    display_name: str
    index: int
    code: int
    older_name: str


def restore(cls: Any, state: tuple[Any, ...]) -> Any:
    """An object of the state that it was pickled as."""
    return cls._from_state(state)
