"""Nothing grows with repeated use."""

from __future__ import annotations

import copy
import gc
import pathlib
import pickle
import sys
from typing import Callable, Dict, List

import pytest

import nereofile


def fail(done: int, in_all: int) -> bool:
    raise LookupError


def load_a_bad_file() -> None:
    acts: List[Callable[[], object]] = [
        lambda: nereofile.read_results("bad.res"),
        lambda: nereofile.ControlFile.load("missing"),
    ]
    for act in acts:
        try:
            act()
        except nereofile.FileError:
            pass


def cancel() -> None:
    try:
        nereofile.read_results("cavity.res", progress=fail)
    except LookupError:
        pass


def materials() -> None:
    database = nereofile.MaterialDatabase.load("materials.xml", strict=False)
    for material in database:
        for prop in material.values():
            prop.points = [(1.0, 2.0)]
            prop.value += len(prop.points)
    database.clear()


def control() -> None:
    loaded = nereofile.ControlFile.load("cavity.ctl")
    loaded.flags.append(nereofile.Flag("a", 1))
    loaded.smoke.on = not loaded.smoke.on
    dict(loaded.constants)
    assert copy.copy(loaded) == pickle.loads(pickle.dumps(loaded))
    loaded.save("b.ctl")


USES: Dict[str, Callable[[], object]] = {
    "results": lambda: dict(nereofile.read_results("cavity.res", progress=lambda done, in_all: True)),
    "statistics": lambda: nereofile.statistics("cavity.res", damage=True),
    "check": lambda: nereofile.check("cavity.ctl", "cavity.res"),
    "inspect": lambda: nereofile.inspect("cavity.ctl"),
    "diff": lambda: nereofile.diff("cavity.res", "cavity-be.res"),
    "errors": load_a_bad_file,
    "cancelled": cancel,
    "materials": materials,
    "control": control,
    "configuration": lambda: nereofile.Configuration.load("solver.cfg", strict=False).save("b.xml"),
}


@pytest.mark.parametrize("name", sorted(USES))
def test_no_growth(folder: pathlib.Path, name: str) -> None:
    (folder / "bad.res").write_bytes(b"bad")

    rounds = 50
    growth = []
    for _ in range(20):
        before = sys.getallocatedblocks()
        for _ in range(rounds):
            USES[name]()
        gc.collect()
        growth.append(sys.getallocatedblocks() - before)
        if growth[-1] < rounds / 4:
            return
    # What Python keeps for later comes to rest; a leak takes at least a block in each round, for ever.
    raise AssertionError(f"{rounds} rounds each took these blocks: {growth}")
