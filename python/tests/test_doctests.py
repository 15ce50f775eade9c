"""The examples in the documentation of the package run, and whatever is public has documentation."""

from __future__ import annotations

import doctest
import inspect
import pathlib
from typing import Any, Iterator, Tuple

import pytest

import nereofile
import nereofile.plot

OPTIONAL = {"to_pandas": "pandas", "to_xarray": "xarray", "open_series": "dask", "plot_": "matplotlib"}


def documented() -> Iterator[Tuple[str, Any]]:
    """Everything public, with its name."""
    for name in nereofile.__all__:
        value = getattr(nereofile, name)
        if inspect.ismodule(value) or not callable(value):
            continue
        yield name, value
        if inspect.isclass(value):
            for member_name, member in vars(value).items():
                if not member_name.startswith("_") and getattr(member, "__doc__", None):
                    yield f"{name}.{member_name}", member


@pytest.mark.parametrize("name, value", documented(), ids=[name for name, _ in documented()])
def test_documentation(folder: pathlib.Path, name: str, value: Any) -> None:
    text = inspect.getdoc(value)
    assert text, f"{name} has no documentation"
    for part, module in OPTIONAL.items():
        if part in text:
            pytest.importorskip(module)
    test = doctest.DocTestParser().get_doctest(text, vars(nereofile).copy(), name, None, None)
    result = doctest.DocTestRunner(optionflags=doctest.NORMALIZE_WHITESPACE).run(test)
    assert result.failed == 0


def test_classes_and_functions_have_examples() -> None:
    main = ["Configuration", "ControlFile", "MaterialDatabase", "Material", "Property", "GeometryBoundary"]
    main += ["BoundaryCondition", "Flag", "read_results", "results_header", "statistics", "check", "inspect"]
    for name in main:
        assert ">>>" in (inspect.getdoc(getattr(nereofile, name)) or ""), name
