"""What is told of the progress of long operations."""

from __future__ import annotations

from typing import Any, Callable, Optional, Union

Progress = Union[None, bool, Callable[[int, int], Optional[bool]]]


class following:
    """The callable that a progress stands for, while something is going on."""

    def __init__(self, progress: Progress) -> None:
        if progress is not None and progress is not True and progress is not False and not callable(progress):
            raise TypeError("progress is a callable, or True for a bar")
        self._progress = progress
        self._bar: Any = None

    def __enter__(self) -> Optional[Callable[[int, int], Optional[bool]]]:
        if self._progress is True:
            from .optional import require

            self._bar = require("tqdm", "progress=True").tqdm(unit="B", unit_scale=True)
            return self._advance
        return self._progress or None

    def __exit__(self, *error: object) -> None:
        if self._bar is not None:
            self._bar.close()

    def _advance(self, done: int, in_all: int) -> Optional[bool]:
        self._bar.total = in_all
        self._bar.update(done - self._bar.n)
        return None
