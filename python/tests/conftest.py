"""What the tests share: the sample files, and made-up results files."""

import pathlib
import shutil

import pytest

SAMPLES = pathlib.Path(__file__).parents[2] / "samples"


@pytest.fixture
def samples() -> pathlib.Path:
    """The folder of the sample files."""
    return SAMPLES


@pytest.fixture
def folder(tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> pathlib.Path:
    """A working folder of its own, with copies of the samples."""
    for sample in SAMPLES.iterdir():
        shutil.copy(sample, tmp_path)
    monkeypatch.chdir(tmp_path)
    return tmp_path
