"""What the pages show runs, and so do the examples."""

from __future__ import annotations

import doctest
import pathlib
import re
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).parents[2]
NEEDED = {"docs/python.md": ("xarray", "dask", "matplotlib"), "docs/report.md": ("jinja2", "matplotlib")}


@pytest.mark.parametrize("page", ["docs/python.md", "docs/report.md", "README.md"])
def test_what_a_page_shows(folder: pathlib.Path, page: str) -> None:
    for module in NEEDED.get(page, ()):
        pytest.importorskip(module)
    blocks = re.findall(r"```pycon\n(.*?)```", (ROOT / page).read_text(), re.S)
    assert blocks
    test = doctest.DocTestParser().get_doctest("\n".join(blocks), {}, page, page, 0)
    assert doctest.DocTestRunner().run(test).failed == 0


def test_the_script(tmp_path: pathlib.Path) -> None:
    script = ROOT / "examples" / "python" / "look_at_results.py"
    child = subprocess.run(
        [sys.executable, str(script), str(ROOT / "samples"), str(tmp_path / "out")],
        capture_output=True, text=True, check=False,
    )
    assert child.returncode == 0, child.stderr
    assert child.stdout.splitlines()[0] == "Lid-driven cavity, Re 100, 65 x 65 nodes: 4225 nodes, iteration 6025"
    assert child.stdout.splitlines()[-2:] == ["largest speed 1", "3 files written, 0 errors"]
    assert sorted(path.name for path in (tmp_path / "out").iterdir()) == ["next.ctl", "next.gbi", "next.xml"]


def test_the_notebook(folder: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> None:
    nbformat = pytest.importorskip("nbformat")
    nbclient = pytest.importorskip("nbclient")
    kernelspec = pytest.importorskip("ipykernel.kernelspec")
    pytest.importorskip("matplotlib")
    kernelspec.write_kernel_spec(folder / "jupyter" / "kernels" / "python3")  # by the interpreter that runs the test
    monkeypatch.setenv("JUPYTER_PATH", str(folder / "jupyter"))
    notebook = nbformat.read(ROOT / "examples" / "python" / "results.ipynb", as_version=4)
    nbformat.validate(notebook)
    nbclient.NotebookClient(notebook, timeout=300, resources={"metadata": {"path": str(folder)}}).execute()
    shown = [output for cell in notebook.cells for output in cell.get("outputs", [])]
    assert any("text/html" in output.get("data", {}) for output in shown)
    assert any("image/png" in output.get("data", {}) for output in shown)
