"""Saves are whole or not at all; one that may be lost with the power is told by a warning."""

from __future__ import annotations

import os
import pathlib
import subprocess
import sys
import textwrap
from typing import Any, Callable

import pytest

from nereofile import Configuration, ControlFile, FileAccessError, FileError, GeometryBoundary, MaterialDatabase, MissingFileError

# Preloaded, it makes a system on which folders can't be forced to the disk.
NO_FORCED_FOLDERS = r"""
    #include <errno.h>
    #include <sys/stat.h>
    #include <sys/syscall.h>
    #include <unistd.h>

    int fsync(int file)
    {
        struct stat status;
        if (fstat(file, &status) == 0 && S_ISDIR(status.st_mode)) {
            errno = EIO;
            return -1;
        }
        return (int)syscall(SYS_fsync, file);
    }
"""

SAVES = """
    import warnings
    from nereofile import *

    def edited(path):
        Configuration(MaxIter=2).save("edited.cfg")
        with warnings.catch_warnings():
            warnings.simplefilter("error")  # nothing has to be told of a reader
            changes = edit("edited.cfg")
        with changes:
            changes["MaxIter"] = 3
        changes.save(path)

    saves = [
        lambda path: Configuration(MaxIter=2).save(path), lambda path: MaterialDatabase().save(path),
        lambda path: ControlFile().save(path), lambda path: GeometryBoundary().save(path), edited,
    ]
"""


def run(folder: pathlib.Path, code: str) -> str:
    """What the code prints where folders can't be forced."""
    source, library = folder / "unforced.c", folder / "unforced.so"
    source.write_text(NO_FORCED_FOLDERS)
    environment = dict(os.environ)
    others = environment.pop("LD_PRELOAD", "")
    subprocess.run(["c++", "-x", "c", "-shared", "-fPIC", "-o", str(library), str(source)], env=environment, check=True)
    environment["LD_PRELOAD"] = " ".join([others, str(library)]).strip()
    child = subprocess.run(
        [sys.executable, "-c", textwrap.dedent(SAVES) + textwrap.dedent(code)],
        cwd=folder, env=environment, capture_output=True, text=True, check=False,
    )
    assert child.returncode == 0, child.stdout + child.stderr
    return child.stdout


def test_a_save_that_is_not_forced_is_a_warning(tmp_path: pathlib.Path) -> None:
    shown = run(tmp_path, """
        for number, save in enumerate(saves):
            with warnings.catch_warnings(record=True) as caught:
                warnings.simplefilter("always")
                save(f"{number}.out")
            print(*[(w.category.__name__, w.filename, str(w.message)) for w in caught], sep="; ")
    """).splitlines()
    reason = "is saved, but may be lost in a power failure: its folder can't be forced to the disk (Input/output error)"
    for number in range(4):
        assert shown[number] == str(("SaveWarning", "<string>", f"{number}.out {reason}"))
        assert (tmp_path / f"{number}.out").stat().st_size > 0
    assert [eval(part)[2].split()[0] for part in shown[4].split("; ")] == ["edited.cfg"] * 2 + ["4.out"]
    assert (tmp_path / "4.out").read_bytes() == (tmp_path / "edited.cfg").read_bytes()


def test_warnings_may_be_errors(tmp_path: pathlib.Path) -> None:
    shown = run(tmp_path, """
        warnings.simplefilter("error", SaveWarning)
        for number, save in enumerate(saves):
            try:
                save(f"{number}.out")
            except SaveWarning as warning:
                print(type(warning).__name__)
    """)
    assert shown.split() == ["SaveWarning"] * 5
    assert sorted(path.name for path in tmp_path.glob("*.out")) == [f"{number}.out" for number in range(4)]


def test_a_save_that_is_forced_warns_of_nothing(tmp_path: pathlib.Path, recwarn: pytest.WarningsRecorder) -> None:
    Configuration().save(tmp_path / "a.cfg")
    assert not recwarn


SAVERS: "list[Callable[[Any], None]]" = [
    lambda path: Configuration().save(path),
    lambda path: ControlFile().save(path),
    lambda path: MaterialDatabase().save(path),
    lambda path: GeometryBoundary().save(path),
]


@pytest.mark.parametrize("save", SAVERS)
def test_files_that_cannot_be_saved(tmp_path: pathlib.Path, save: "Callable[[Any], None]") -> None:
    with pytest.raises(MissingFileError, match="isn't saved: no file can be made there"):
        save(tmp_path / "missing" / "a.out")
    with pytest.raises(FileAccessError, match="it isn't a regular file"):
        save(tmp_path)
    with pytest.raises(FileError) as raised:
        save(tmp_path / ("a" * 300))
    assert isinstance(raised.value, OSError) and raised.value.path == str(tmp_path / ("a" * 300))
    assert list(tmp_path.iterdir()) == []
