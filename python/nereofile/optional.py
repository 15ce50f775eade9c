"""Libraries that the package can do without."""

from __future__ import annotations

import importlib
from typing import Any

_PACKAGES = {
    "pandas": "python3-pandas",
    "xarray": "python3-xarray",
    "dask.array": "python3-dask",
    "dask.base": "python3-dask",
    "matplotlib": "python3-matplotlib",
    "matplotlib.figure": "python3-matplotlib",
    "matplotlib.style.core": "python3-matplotlib",
    "jinja2": "python3-jinja2",
    "markupsafe": "python3-markupsafe",
    "babel.messages.pofile": "python3-babel",
    "tqdm": "python3-tqdm",
}


def require(module: str, what: str) -> Any:
    """The module; where it isn't there, an ImportError that says what needs it, and what to install."""
    try:
        return importlib.import_module(module)
    except ImportError as error:
        name = module.partition(".")[0]
        raise ImportError(
            f"{what} needs {name}: install {_PACKAGES[module]}, or {name} by pip", name=name
        ) from error
