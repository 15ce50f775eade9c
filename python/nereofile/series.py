"""Many results files as one data set."""

from __future__ import annotations

import glob
import os
from typing import TYPE_CHECKING, Any, Iterable, List, Optional, Sequence, Union

import numpy as np
import numpy.typing as npt

from .errors import FileError, MissingFileError
from .results import PathLike, ResultsHeader, read_results, results_header

if TYPE_CHECKING:
    import xarray


def open_series(
    files: Union[str, Iterable[PathLike]],
    fields: Optional[Sequence[str]] = None,
    dimension: str = "time",
    fill: float = 0.0,
) -> xarray.Dataset:
    """The results of a run over time: an xarray.Dataset of the dimensions time (or iteration) and node.

    Nothing is loaded before it is computed: each file and field is a chunk of its own, so that Dask computes what
    is larger than the memory, on all cores or on a cluster. Needs xarray and Dask.

    :param files: a pattern such as ``run/*.res``, or paths. They are sorted by the dimension.
    :param fields: the names of the fields, by default all that every file has.
    :param dimension: "time" or "iteration".
    :param fill: stands for the values that a file lacks.

    >>> series = open_series(["cavity.res"], fields=["kP"], dimension="iteration")
    >>> series["kP"].dims, series["kP"].shape
    (('iteration', 'node'), (1, 4225))
    """
    from .optional import require

    if dimension not in ("time", "iteration"):
        raise ValueError(f"a series goes over time or iteration, not over {dimension!r}")
    xarray_module = require("xarray", "open_series")
    array = require("dask.array", "open_series")
    tokenize = require("dask.base", "open_series").tokenize

    def place(header: ResultsHeader) -> float:
        return header.time if dimension == "time" else header.iteration

    headers = sorted((results_header(path) for path in _paths_of(files)), key=place)
    node_count = headers[0].node_count
    for header in headers:
        if header.node_count != node_count:
            raise ValueError(
                f"{header.path} has {header.node_count} nodes and {headers[0].path} {node_count}: "
                "a series has one mesh"
            )
    paths = [header.path for header in headers]
    names = _common_fields(headers) if fields is None else list(fields)

    def stack(name: str) -> Any:
        # A task for each file and nothing else: Dask's own ways to stack arrays take two more.
        key = f"{name}-{tokenize(paths, name, fill)}"
        tasks = {(key, place, 0): (_load_row, path, name, fill) for place, path in enumerate(paths)}
        return array.Array(tasks, key, chunks=((1,) * len(paths), (node_count,)), dtype=np.float64)

    dataset: xarray.Dataset = xarray_module.Dataset(
        {name: ((dimension, "node"), stack(name)) for name in names},
        coords={
            dimension: [place(header) for header in headers],
            "node": np.arange(1, node_count + 1, dtype=np.int32),
        },
        attrs={"title": headers[0].title, "files": paths},
    )
    return dataset


def _paths_of(files: Union[str, Iterable[PathLike]]) -> List[str]:
    paths = sorted(glob.glob(files)) if isinstance(files, str) else [os.fspath(path) for path in files]
    if not paths:
        raise MissingFileError(f"no file matches {files!r}", (), str(files))
    return paths


def _common_fields(headers: Sequence[ResultsHeader]) -> List[str]:
    def names(header: ResultsHeader) -> List[str]:
        return [field.name for field in header.fields if field.is_used]

    others = [set(names(header)) for header in headers[1:]]
    common = [name for name in names(headers[0]) if all(name in other for other in others)]
    if not common:
        raise FileError("there is no field that all files have", (), headers[0].path)
    return common


def _load_row(path: str, name: str, fill: float) -> npt.NDArray[np.float64]:
    """The values of a field as the one row of a chunk."""
    return read_results(path, fields=[name], fill=fill)[name][np.newaxis]
