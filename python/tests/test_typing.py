"""The package, its tests and examples are clean of findings of mypy's strictest check, and the stubs say what is there."""

import os
import pathlib
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).parents[2]
pytest.importorskip("mypy")


def run(*arguments: str) -> None:
    child = subprocess.run([sys.executable, "-m", *arguments], cwd=ROOT, capture_output=True, text=True, check=False)
    assert child.returncode == 0, child.stdout + child.stderr


def test_package_tests_and_examples(tmp_path: pathlib.Path) -> None:
    cache = pathlib.Path(os.environ.get("NEREO_BUILD_FOLDER", tmp_path)) / "python" / "mypy"
    run("mypy", f"--cache-dir={cache}", "python/nereofile", "python/tests", "examples/python")


def test_stubs() -> None:
    run("mypy.stubtest", "nereofile._nereofile", "--mypy-config-file", str(ROOT / "pyproject.toml"),
        "--allowlist", str(pathlib.Path(__file__).parent / "stubtest-allowed.txt"), "--ignore-unused-allowlist")


def test_the_installed_package_has_types() -> None:
    import nereofile

    assert (pathlib.Path(os.path.dirname(nereofile.__file__)) / "py.typed").exists()
