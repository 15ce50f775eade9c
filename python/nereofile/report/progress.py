"""How far a report is, for people at a terminal."""

from __future__ import annotations

import importlib
import sys
from typing import Any, Callable, Optional

from .texts import brief


class Progress:
    """Says nothing. It is told what is begun, and how many bytes of the results are read."""

    def say(self, what: str) -> None:
        """Something is begun."""

    def expect(self, amount: int) -> None:
        """That many bytes will be read, more than was said before."""

    def advance(self, amount: int) -> None:
        """That many more bytes are read."""

    def close(self) -> None:
        """It is over."""

    def follower(self) -> Callable[[int, int], Optional[bool]]:
        """What one operation tells of its bytes."""
        before = 0

        def follow(done: int, _: int) -> Optional[bool]:
            nonlocal before
            self.advance(done - before)
            before = done
            return None

        return follow


class Bar(Progress):
    """A bar by tqdm where that is there, or else a line, on the error stream."""

    def __init__(self) -> None:
        self._total = 0
        self._done = 0
        self._percent = -1
        self._bar: Any = None
        try:
            self._bar = importlib.import_module("tqdm").tqdm(
                desc="report", unit="B", unit_scale=True, leave=False, file=sys.stderr, total=0
            )
        except ImportError:
            pass

    def say(self, what: str) -> None:
        if self._bar is not None:
            self._bar.set_description(brief(what))  # a name may have what a terminal takes for commands

    def expect(self, amount: int) -> None:
        self._total += amount
        if self._bar is not None:
            self._bar.total = self._total
            self._bar.refresh()

    def advance(self, amount: int) -> None:
        self._done += amount
        if self._bar is not None:
            self._bar.update(amount)
        elif self._total and 100 * self._done // self._total != self._percent:
            self._percent = min(100, 100 * self._done // self._total)
            sys.stderr.write(f"\rresults: {self._percent} %")
            sys.stderr.flush()

    def close(self) -> None:
        if self._bar is not None:
            self._bar.close()
        elif self._percent >= 0:
            sys.stderr.write("\r\033[K")
            sys.stderr.flush()
