"""The package installs with pip into an environment of its own that sees the system's packages."""

import importlib.util
import os
import pathlib
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).parents[2]
pytest.importorskip("setuptools")
pytest.importorskip("wheel")
pytest.importorskip("pip")


def test_pip_installs_it(tmp_path: pathlib.Path) -> None:
    environment = {name: value for name, value in os.environ.items() if name != "PYTHONPATH"}
    environment["PIP_DISABLE_PIP_VERSION_CHECK"] = "1"

    def run(*arguments: object) -> str:
        child = subprocess.run(
            [str(argument) for argument in arguments],
            cwd=tmp_path, env=environment, capture_output=True, text=True, check=False,
        )
        assert child.returncode == 0, child.stdout + child.stderr
        return child.stdout

    run(sys.executable, "-m", "venv", "--system-site-packages", "venv")
    python = tmp_path / "venv" / "bin" / "python"
    # From a copy, since setuptools leaves its folders in the sources.
    files = run("git", "-C", ROOT, "ls-files", "python", "pyproject.toml", "setup.py", "CMakeLists.txt", "README.md")
    for name in files.splitlines():
        target = tmp_path / "sources" / name
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes((ROOT / name).read_bytes())
    run(python, "-m", "pip", "install", "--no-build-isolation", "--no-deps", tmp_path / "sources")
    code = "import nereofile; print(nereofile.__file__, len(nereofile.read_results(r'%s')), nereofile.__version__)"
    shown = run(python, "-c", code % (ROOT / "samples" / "cavity.res"))
    assert str(tmp_path / "venv") in shown and shown.split()[1:] == ["5", "2024.0.0.0"]
    libraries = {path.name for path in (pathlib.Path(shown.split()[0]).parent).glob("*.so*")}
    assert {"libNereoFileIO.so.1", "libNereoInspection.so.1", "libNereoUtility.so.1"} < libraries
    assert "2024.0.0.0" in run(python, "-m", "pip", "show", "nereofile")
    if all(importlib.util.find_spec(name) for name in ("jinja2", "matplotlib", "babel")):
        page = run(python, "-m", "nereofile", "report", ROOT / "samples", "--language", "de", "-o", "-")
        assert "Lid-driven cavity" in page and "Befunde" in page
