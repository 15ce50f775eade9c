"""Changing values of a file and no other byte."""

from __future__ import annotations

import os
import pathlib
from typing import Any

import pytest

from nereofile import Configuration, FileError, edit


def test_only_the_values_change(folder: pathlib.Path) -> None:
    before = (folder / "cavity.ctl").read_bytes()
    with edit("cavity.ctl") as changes:
        assert changes["relaxation/kU/under"] == "0.4" and "relaxation/kU/under" in changes
        changes["relaxation/kU/under"] = 0.25
        assert [tuple(change) for change in changes.changes] == [("relaxation/kU/under", "0.4", "0.25")]
        assert (folder / "cavity.ctl").read_bytes() == before
    after = (folder / "cavity.ctl").read_bytes()
    assert after == before.replace(b"kU 0.4 0", b"kU 0.25 0")
    assert changes.original_bytes == before and changes.bytes == after
    assert (changes.kind, changes.path) == ("control", pathlib.Path("cavity.ctl"))


def test_an_exception_leaves_the_file_as_it_was(folder: pathlib.Path) -> None:
    before = (folder / "solver.cfg").read_bytes()
    with pytest.raises(ZeroDivisionError):
        with edit("solver.cfg") as changes:
            changes["MaxIter"] = 5
            1 / 0
    assert (folder / "solver.cfg").read_bytes() == before


def test_nothing_is_written_where_nothing_changes(folder: pathlib.Path) -> None:
    time = os.stat("solver.cfg").st_mtime_ns
    with edit("solver.cfg"):
        pass
    with edit("solver.cfg") as changes:
        with pytest.raises(ValueError):
            changes["MaxIter"] = "many"
    assert os.stat("solver.cfg").st_mtime_ns == time


def test_adding_and_removing(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.cfg"
    path.write_text("MaxIter 5\nWidth 10\n")
    with edit(path) as changes:
        changes["Height"] = 7
        del changes["Width"]
        assert "Width" not in changes
        with pytest.raises(KeyError):
            changes["Width"]
    assert sorted(path.read_text().split("\n")) == ["", "Height 7", "MaxIter 5"]
    changes.save(tmp_path / "b.cfg")
    assert Configuration.load(tmp_path / "b.cfg")["Height"] == 7


@pytest.mark.parametrize(
    "address, value, error",
    [
        ("nonsense", 1, KeyError),
        ("", 1, KeyError),
        ("MaxIter", "1.5", ValueError),
        ("MaxIter", 1.5, ValueError),
        ("MaxIter", 2**31, ValueError),
        ("MaxIter", None, TypeError),
        ("MaxIter", b"1", TypeError),
        ("JobPrefix", "two\nlines", ValueError),
        (1, 1, TypeError),
    ],
)
def test_what_is_refused(tmp_path: pathlib.Path, address: Any, value: Any, error: type) -> None:
    path = tmp_path / "a.cfg"
    path.write_text("MaxIter 5\n")
    changes = edit(path)
    with pytest.raises(error):
        changes[address] = value
    assert changes.changes == () and changes.bytes == b"MaxIter 5\n"


def test_files_that_cannot_be_edited(folder: pathlib.Path) -> None:
    for name in ("missing", "."):
        with pytest.raises(OSError):
            edit(name)
    with pytest.raises(FileError):
        edit("cavity.res")
    with pytest.raises(ValueError):
        edit("solver.cfg", kind="nonsense")
