"""Repeated use of the package takes no references that it doesn't give back, and no memory.

The debug interpreter, where the suite runs by it, counts all references, also those to objects that nothing else tells
of. NumPy is one for the ordinary interpreter there and doesn't count, so that what makes arrays is left to the counts
that each object has, which any interpreter tells.
"""

from __future__ import annotations

import array
import gc
import pathlib
import sys
from typing import Any, Callable, Dict, Iterable, List

import numpy as np
import pytest
from uses import OTHERS_LIBRARIES, USES, public_callables

ROUNDS = 20
MOST_TRIES = 12
WITH_ARRAYS = {"Facts", "Property", "Results", "read_results"}
total_of_references: Any = getattr(sys, "gettotalrefcount", None)


def test_everything_is_used() -> None:
    assert set(USES) | set(OTHERS_LIBRARIES) == set(public_callables())


def all_objects() -> Dict[int, Any]:
    """What the garbage collector knows, and what that refers to: numbers, texts, None ..."""
    known = gc.get_objects()
    found = {id(thing): thing for thing in known}
    for thing in known:
        for other in gc.get_referents(thing):
            found[id(other)] = other
    return found


class Counts:
    """The references to all objects. Numbers are kept in arrays, since they would be references too."""

    def __init__(self) -> None:
        gc.collect()
        found = all_objects()
        self._ids = array.array("Q", found)
        self._counts = array.array("q", map(sys.getrefcount, found.values()))

    def growth_since(self, before: Counts, least: int) -> "set[int]":
        """Which objects have so many references more."""
        old = dict(zip(before._ids, before._counts))
        return {thing for thing, count in zip(self._ids, self._counts) if count - old.get(thing, count) >= least}


def repeat(uses: Iterable[Callable[[], object]]) -> None:
    for use in uses:
        for _ in range(ROUNDS):
            use()
    gc.collect()


def objects_that_grow(uses: Iterable[Callable[[], object]]) -> List[str]:
    """Those that get at least one reference more in each use, time after time."""
    uses = list(uses)
    repeat(uses)
    growing = set(all_objects())
    for _ in range(3):  # since what is new may come to lie where something else was
        before = Counts()
        repeat(uses)
        growing &= Counts().growth_since(before, ROUNDS)
        if not growing:
            return []
    return [repr(thing)[:200] for address, thing in all_objects().items() if address in growing]


def test_no_object_gets_more_references(folder: pathlib.Path) -> None:
    if objects_that_grow(USES.values()):
        culprits = {name: objects_that_grow([use]) for name, use in USES.items()}
        raise AssertionError({name: grown for name, grown in culprits.items() if grown})


def test_a_reference_that_is_kept_is_found() -> None:
    kept: List[object] = []
    thing = ("kept",)
    assert objects_that_grow([lambda: kept.append(thing)])
    assert not objects_that_grow([lambda: None, lambda: kept.clear()])


def test_what_arrays_refer_to_is_watched() -> None:
    known = all_objects()
    for thing in (np.dtype(np.float64), np.dtype(np.int32), np.ndarray):
        assert id(thing) in known, thing


def comes_to_rest(count: Callable[[], int], use: Callable[[], object]) -> None:
    growth = []
    for _ in range(MOST_TRIES):
        before = count()
        repeat([use])
        growth.append(count() - before)
        if growth[-1] < ROUNDS / 4:
            return
    # What Python keeps for later comes to rest; a leak takes at least one in each round, for ever.
    raise AssertionError(f"{ROUNDS} rounds each took so many: {growth}")


@pytest.mark.parametrize("name", sorted(USES))
def test_no_memory_is_kept(folder: pathlib.Path, name: str) -> None:
    comes_to_rest(sys.getallocatedblocks, USES[name])


@pytest.mark.skipif(total_of_references is None, reason="needs the debug interpreter")
@pytest.mark.parametrize("name", sorted(set(USES) - WITH_ARRAYS))
def test_no_reference_is_kept(folder: pathlib.Path, name: str) -> None:
    comes_to_rest(total_of_references, USES[name])
