"""Results of a solver run as NumPy arrays."""

from __future__ import annotations

import dataclasses
import os
from typing import TYPE_CHECKING, Any, Dict, Iterable, Iterator, List, Mapping, Optional, Tuple, Union

import numpy as np
import numpy.typing as npt

from . import _nereofile
from ._records import Damage, FieldStatistics, HeaderField, Problem
from .errors import Cancelled, FileError, require_regular_file
from .progress import Progress, following
from .vocabulary import field_variables, name_for_code, node_flags

if TYPE_CHECKING:
    import pandas
    import xarray

PathLike = Union[str, "os.PathLike[str]"]
Values = npt.NDArray[np.float64]

_LAST_NODE = 2**31 - 1


@dataclasses.dataclass(frozen=True)
class Facts:
    """What a results file says of the run.

    ``iteration``, ``time_step`` and ``time`` are those of the snapshot, the starting ones the first of the run.
    """

    path: str
    version: str
    date: str
    title: str
    node_count: int
    element_count: int
    iteration: int
    starting_iteration: int
    time_step: int
    starting_time_step: int
    time: float
    time_step_size: float


@dataclasses.dataclass(frozen=True)
class ResultsHeader(Facts):
    """What a results file says of itself without its values, and how much of it is there.

    ``bytes_announced`` is -1 where the counts can't be read. ``problems`` is what is wrong as far as header and
    size tell.
    """

    byte_order: str
    field_count: int
    fields: Tuple[HeaderField, ...]
    bytes_there: int
    bytes_announced: int
    record_size: int
    records_offset: int
    records_announced: int
    whole_records: int
    is_results_file: bool
    holds_known_field: bool
    problems: Tuple[Problem, ...]

    def _repr_html_(self) -> str:
        from . import html

        return html.header(self)


class Results(Mapping[str, Values]):
    """One snapshot of a solver run: a mapping from field name to a read-only float64 array of shape (N,).

    Entry n - 1 belongs to node n, or where nodes were chosen, entry i to ``nodes[i]``. The values are as the solver
    wrote them, in its units. The facts of the file are attributes: ``title``, ``time``, ``node_count`` ...
    """

    def __init__(self, facts: Facts, nodes: range, arrays: Mapping[str, Values], is_whole: bool) -> None:
        self._facts = facts
        self._arrays: Dict[str, Values] = dict(arrays)
        self.nodes = nodes
        self.is_whole = is_whole

    def __getitem__(self, name: str) -> Values:
        return self._arrays[name]

    def __iter__(self) -> Iterator[str]:
        return iter(self._arrays)

    def __len__(self) -> int:
        return len(self._arrays)

    @property
    def facts(self) -> Facts:
        """All facts of the file."""
        return self._facts

    @property
    def path(self) -> str:
        """The path of the file, as it was given."""
        return self._facts.path

    @property
    def version(self) -> str:
        """The version of the content, four numbers."""
        return self._facts.version

    @property
    def date(self) -> str:
        """Date and time of the snapshot in the solver's words."""
        return self._facts.date

    @property
    def title(self) -> str:
        """The title of the run."""
        return self._facts.title

    @property
    def node_count(self) -> int:
        """The number of nodes in the file, of which ``nodes`` were loaded."""
        return self._facts.node_count

    @property
    def element_count(self) -> int:
        """The number of elements of the mesh."""
        return self._facts.element_count

    @property
    def iteration(self) -> int:
        """The iteration of the snapshot."""
        return self._facts.iteration

    @property
    def starting_iteration(self) -> int:
        """The first iteration of the run."""
        return self._facts.starting_iteration

    @property
    def time_step(self) -> int:
        """The time step of the snapshot."""
        return self._facts.time_step

    @property
    def starting_time_step(self) -> int:
        """The first time step of the run."""
        return self._facts.starting_time_step

    @property
    def time(self) -> float:
        """The physical time of the snapshot."""
        return self._facts.time

    @property
    def time_step_size(self) -> float:
        """The size of a time step."""
        return self._facts.time_step_size

    @property
    def codes(self) -> Dict[str, int]:
        """The codes of the fields, by name."""
        return {name: _nereofile.code_for_name(name) for name in self._arrays}

    def __eq__(self, other: object) -> bool:
        """Whether facts and values are the same; a NaN equals nothing. The path takes no part."""
        if not isinstance(other, Results):
            return NotImplemented
        return (
            dataclasses.replace(self._facts, path="") == dataclasses.replace(other._facts, path="")
            and self.nodes == other.nodes
            and list(self) == list(other)
            and all(np.array_equal(self[name], other[name]) for name in self)
        )

    __hash__ = None  # type: ignore[assignment]

    def __repr__(self) -> str:
        return f"<Results {self.title!r}: {len(self.nodes)} nodes, fields {', '.join(self) or 'none'}>"

    def __setstate__(self, state: Dict[str, Any]) -> None:
        self.__dict__.update(state)
        for values in self._arrays.values():
            values.setflags(write=False)  # which pickling doesn't keep

    def to_pandas(self) -> pandas.DataFrame:
        """A DataFrame with a column for each field and the node numbers as index. Needs pandas.

        >>> read_results("cavity.res").to_pandas().loc[4225, "kU"]
        1.0
        """
        from .optional import require

        frame: pandas.DataFrame = require("pandas", "to_pandas").DataFrame(
            dict(self._arrays), index=self._node_index(), copy=False
        )
        frame.index.name = "node"
        return frame

    def to_xarray(self) -> xarray.Dataset:
        """A Dataset with a variable for each field over the dimension node. Needs xarray.

        >>> read_results("cavity.res").to_xarray().sizes["node"]
        4225
        """
        from .optional import require

        dataset: xarray.Dataset = require("xarray", "to_xarray").Dataset(
            {name: ("node", values) for name, values in self._arrays.items()},
            coords={"node": self._node_index()},
            attrs=dataclasses.asdict(self._facts),
        )
        return dataset

    def _node_index(self) -> npt.NDArray[np.int32]:
        return np.arange(self.nodes.start, self.nodes.stop, dtype=np.int32)

    def _repr_html_(self) -> str:
        from . import html

        return html.results(self)


class Statistics(Mapping[str, FieldStatistics]):
    """What the values of each field of a results file are like, by name, and what is wrong with its nodes.

    ``fields`` has all of them in the order of the file, also those that share a name.
    """

    def __init__(self, header: ResultsHeader, fields: Tuple[FieldStatistics, ...], damage: Optional[Damage]) -> None:
        self.header = header
        self.fields = fields
        self.damage = damage
        self._by_name: Dict[str, FieldStatistics] = {}
        for field in fields:
            self._by_name.setdefault(field.name, field)

    def __getitem__(self, name: str) -> FieldStatistics:
        return self._by_name[name]

    def __iter__(self) -> Iterator[str]:
        return iter(self._by_name)

    def __len__(self) -> int:
        return len(self._by_name)

    def __repr__(self) -> str:
        return f"<Statistics of {self.header.path}: {len(self.fields)} fields>"

    def _repr_html_(self) -> str:
        from . import html

        return html.statistics(self)


def read_results(
    path: PathLike,
    fields: Optional[Iterable[Union[str, int]]] = None,
    nodes: Union[None, range, Tuple[int, int]] = None,
    memory_limit: Optional[int] = None,
    fill: float = 0.0,
    progress: Progress = None,
    *,
    strict: bool = True,
) -> Results:
    """Loads a results file: a mapping from field name to a read-only float64 array of shape (N,).

    :param fields: names or codes of the fields to load, all by default. One that the file lacks is a KeyError.
    :param nodes: the first and the last node to load, both included, or a range of them; all by default.
    :param memory_limit: the most bytes that the load may take, a MemoryError beyond; by default what the machine has.
    :param fill: stands for the values that the file lacks.
    :param progress: is called with the bytes done and those in all, and cancels by False; or True for a bar by tqdm.
    :param strict: whether a file that is cut short is an error. Otherwise what is there is loaded.

    A file with errors raises a FileError with the findings. Other threads go on while the file is loaded.

    >>> results = read_results("cavity.res")
    >>> results["kU"].shape, results["kU"].dtype, results.iteration
    ((4225,), dtype('float64'), 6025)
    >>> float(results["kU"][4224])  # that of node 4225
    1.0
    >>> read_results("cavity.res", fields=["kP"], nodes=(1, 65))["kP"].shape
    (65,)
    """
    path = os.fspath(path)
    header = results_header(path)
    if not header.is_results_file or (strict and _is_cut_short(header)):
        _nereofile.raise_file_error(path)
    codes = _codes_of(header, fields)
    first, last = _first_and_last(nodes)
    limit = _memory_of_machine() if memory_limit is None else _limit_of(memory_limit)

    with following(progress) as follow:
        result, facts, by_code = _nereofile.load_results(path, codes, first, last, limit, fill, follow)
    _raise_for_outcome(path, result, limit, strict)
    wanted = set(codes)
    arrays: Dict[str, Values] = {}
    for field in header.fields:
        if field.is_used and field.code in by_code and (not wanted or field.code in wanted):
            arrays[field.name] = by_code[field.code]
    there = range(first, max(first, min(last, max(header.node_count, 0)) + 1))
    facts["node_count"] = header.node_count
    return Results(Facts(path=path, **facts), there, arrays, result["outcome"] == "loaded")


def results_header(path: PathLike) -> ResultsHeader:
    """What a results file says of itself, without its values: in well under a millisecond, whatever its size.

    It raises nothing for what is in the file: see ``problems``, and ``check`` for all that is wrong.

    >>> header = results_header("cavity.res")
    >>> header.node_count, [field.name for field in header.fields]
    (4225, ['kU', 'kV', 'kW', 'kP', 'kT'])
    """
    path = os.fspath(path)
    require_regular_file(path)
    header = _nereofile.read_header(path)
    if header is None:
        _nereofile.raise_file_error(path)
        raise FileError(f"{path} can't be opened", (), path)
    return ResultsHeader(path=path, **header)


def statistics(path: PathLike, *, damage: bool = False, progress: Progress = None) -> Statistics:
    """Extremes, means and counts of each field of a results file, in one pass and memory that doesn't grow with it.

    :param damage: whether to look at the nodes as well: which have no record, or several.
    :param progress: as for ``read_results``.

    >>> found = statistics("cavity.res")["kU"]
    >>> found.maximum, found.not_finite
    (1.0, 0)
    """
    path = os.fspath(path)
    require_regular_file(path)
    with following(progress) as follow:
        result, header, fields, found = _nereofile.scan_results(path, True, damage, follow)
    _raise_for_outcome(path, result, 0, strict=False)
    return Statistics(ResultsHeader(path=path, **header), fields, found if damage else None)


def _is_cut_short(header: ResultsHeader) -> bool:
    return any(problem.kind in ("too-short", "counts-past-file") for problem in header.problems)


def _codes_of(header: ResultsHeader, fields: Optional[Iterable[Union[str, int]]]) -> List[int]:
    if fields is None:
        return []
    if isinstance(fields, (str, bytes)):
        raise TypeError("fields is a list of names or codes")
    there = {field.code for field in header.fields if field.is_used}
    codes = []
    for field in fields:
        if isinstance(field, str):
            code = field_variables.get(field, node_flags.get(field)) or _alias(field)
        else:
            code = field.__index__()
            name_for_code(code)
        if code not in there:
            raise KeyError(field)
        codes.append(code)
    if not codes:
        raise ValueError("no field was chosen")
    return codes


def _alias(name: str) -> int:
    return _nereofile.code_for_name(name)


def _first_and_last(nodes: Union[None, range, Tuple[int, int]]) -> Tuple[int, int]:
    if nodes is None:
        return 1, _LAST_NODE
    if isinstance(nodes, range):
        if nodes.step != 1:
            raise ValueError("nodes are loaded without gaps")
        first, last = nodes.start, nodes.stop - 1
    else:
        first, last = (node.__index__() for node in nodes)
    if not 1 <= first <= last <= _LAST_NODE:
        raise ValueError(f"nodes go from 1 up to {_LAST_NODE}, not from {first} to {last}")
    return first, last


def _limit_of(memory_limit: int) -> int:
    limit = memory_limit.__index__()
    if not 0 <= limit < 2**63:
        raise ValueError("a limit of memory is a number of bytes")
    return limit


def _memory_of_machine() -> int:
    return os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE")


def _raise_for_outcome(path: str, result: Dict[str, Any], limit: int, strict: bool) -> None:
    outcome = result["outcome"]
    if outcome == "loaded" or (outcome == "cut-short" and not strict):
        return
    if outcome == "cancelled":
        raise Cancelled(f"{path} wasn't loaded")
    if outcome == "over-limit" and result["problem"] != "too-many-nodes":
        raise MemoryError(f"{path} takes {result['memory_needed']} bytes, more than the {limit} that it may")
    _nereofile.raise_file_error(path)
