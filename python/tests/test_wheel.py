"""The package installs with pip into an environment of its own that sees the system's packages."""

import importlib.util
import os
import pathlib
import subprocess
import sys
import tarfile

import pytest

ROOT = pathlib.Path(__file__).parents[2]
pytest.importorskip("setuptools")
pytest.importorskip("wheel")
pytest.importorskip("pip")


def run(folder: pathlib.Path, *arguments: object) -> str:
    environment = {name: value for name, value in os.environ.items() if name != "PYTHONPATH"}
    environment["PIP_DISABLE_PIP_VERSION_CHECK"] = "1"
    child = subprocess.run(
        [str(argument) for argument in arguments],
        cwd=folder, env=environment, capture_output=True, text=True, check=False,
    )
    assert child.returncode == 0, child.stdout + child.stderr
    return child.stdout


@pytest.fixture
def sources(tmp_path: pathlib.Path) -> pathlib.Path:
    """A copy, since setuptools leaves its folders in the sources."""
    for name in run(tmp_path, "git", "-C", ROOT, "ls-files", "-z").split("\0")[:-1]:
        target = tmp_path / "sources" / name
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes((ROOT / name).read_bytes())
    return tmp_path / "sources"


@pytest.fixture
def python(tmp_path: pathlib.Path) -> pathlib.Path:
    """The interpreter of a new environment."""
    run(tmp_path, sys.executable, "-m", "venv", "--system-site-packages", "venv")
    return tmp_path / "venv" / "bin" / "python"


def install(tmp_path: pathlib.Path, python: pathlib.Path, what: pathlib.Path) -> None:
    """Installs it and sees that the package works from where it was installed to."""
    run(tmp_path, python, "-m", "pip", "install", "--no-build-isolation", "--no-deps", what)
    code = "import nereofile; print(nereofile.__file__, len(nereofile.read_results(r'%s')), nereofile.__version__)"
    shown = run(tmp_path, python, "-c", code % (ROOT / "samples" / "cavity.res"))
    assert str(tmp_path / "venv") in shown and shown.split()[1:] == ["5", "2024.0.0.0"]
    libraries = {path.name for path in (pathlib.Path(shown.split()[0]).parent).glob("*.so*")}
    assert {"libNereoFileIO.so.1", "libNereoInspection.so.1", "libNereoUtility.so.1"} < libraries
    assert "2024.0.0.0" in run(tmp_path, python, "-m", "pip", "show", "nereofile")
    if all(importlib.util.find_spec(name) for name in ("jinja2", "matplotlib", "babel")):
        page = run(tmp_path, python, "-m", "nereofile", "report", ROOT / "samples", "--language", "de", "-o", "-")
        assert "Lid-driven cavity" in page and "Befunde" in page


def test_pip_installs_it(tmp_path: pathlib.Path, python: pathlib.Path, sources: pathlib.Path) -> None:
    install(tmp_path, python, sources)


def test_pip_installs_an_archive_of_the_sources(
    tmp_path: pathlib.Path, python: pathlib.Path, sources: pathlib.Path
) -> None:
    hook = "import setuptools.build_meta as hooks; print(hooks.build_sdist('..'))"
    archive = tmp_path / run(sources, python, "-c", hook).split()[-1]
    install(tmp_path, python, archive)

    # What CMake builds of is there: it asks for each source when it is configured.
    with tarfile.open(archive) as files:
        files.extractall(tmp_path)
    parts = [f"-DNEREO_BUILD_{part}=OFF" for part in ("TESTS", "EXAMPLES", "COMMAND")]
    unpacked = tmp_path / archive.name[: -len(".tar.gz")]
    options = ["-DNEREO_INSTALL=OFF", f"-DPython3_EXECUTABLE={sys.executable}"]
    run(tmp_path, "cmake", "-S", unpacked, "-B", "build", *options, *parts)
    for part in ("cmake", "FileIO", "include", "Inspection", "python/nereofile", "python/src", "Utility", "translations"):
        there = {path.relative_to(unpacked) for path in (unpacked / part).rglob("*")}
        assert {path.relative_to(sources) for path in (sources / part).rglob("*")} <= there
