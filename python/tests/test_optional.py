"""What is made with pandas, xarray, Dask, Matplotlib and tqdm, and what is said without them."""

from __future__ import annotations

import pathlib
import subprocess
import sys
import textwrap
from typing import Any

import numpy as np
import pytest
from made_results import write_results

import nereofile
from nereofile import Property, open_series, read_results


def test_pandas(tmp_path: pathlib.Path) -> None:
    pytest.importorskip("pandas")
    frame = read_results(write_results(tmp_path / "a.res"), nodes=(3, 5)).to_pandas()
    assert list(frame.columns) == ["kU", "kP"] and frame.index.name == "node"
    assert frame.loc[4, "kP"] == -4 and list(frame.index) == [3, 4, 5]


def test_xarray(tmp_path: pathlib.Path) -> None:
    pytest.importorskip("xarray")
    results = read_results(write_results(tmp_path / "a.res"))
    dataset = results.to_xarray()
    assert dict(dataset.sizes) == {"node": 10} and dataset.attrs["title"] == "made up"
    assert float(dataset["kU"].sel(node=7)) == 7
    assert np.shares_memory(dataset["kU"].values, results["kU"])


@pytest.fixture
def series_folder(tmp_path: pathlib.Path) -> pathlib.Path:
    """Five files, of which the names are in another order than the times."""
    pytest.importorskip("xarray")
    pytest.importorskip("dask")
    for i in range(5):
        write_results(tmp_path / f"{5 - i}.res", iteration=10 * i, time=0.25 * i)
    return tmp_path


def test_series(series_folder: pathlib.Path) -> None:
    series = open_series(str(series_folder / "*.res"))
    assert series["kU"].dims == ("time", "node") and series["kU"].shape == (5, 10)
    assert series["time"].values.tolist() == [0, 0.25, 0.5, 0.75, 1]
    assert series["kU"].chunks == ((1,) * 5, (10,))
    assert [pathlib.Path(path).name for path in series.attrs["files"]] == ["5.res", "4.res", "3.res", "2.res", "1.res"]
    assert float(series["kP"].mean().compute()) == -5.5
    over_iterations = open_series(sorted(series_folder.iterdir()), fields=["kP"], dimension="iteration")
    assert list(over_iterations) == ["kP"] and over_iterations["iteration"].values.tolist() == [0, 10, 20, 30, 40]


def test_a_series_loads_nothing_before_it_is_computed(series_folder: pathlib.Path) -> None:
    series = open_series(str(series_folder / "*.res"))
    for path in series_folder.iterdir():
        path.write_bytes(path.read_bytes()[:400])
    with pytest.raises(nereofile.FileError):
        series["kU"].mean().compute()


def test_a_series_is_a_task_for_each_file(series_folder: pathlib.Path) -> None:
    paths = sorted(series_folder.iterdir())

    def tasks(**options: Any) -> "set[Any]":
        return set(open_series(paths, **options)["kU"].data.__dask_graph__())

    assert len(tasks()) == len(paths)
    assert tasks() == tasks(fields=["kU"])  # what Dask has computed of it, it has of the other
    assert not tasks() & tasks(fill=1.0) and not tasks() & set(open_series(paths)["kP"].data.__dask_graph__())


def test_wrong_series(series_folder: pathlib.Path) -> None:
    with pytest.raises(FileNotFoundError):
        open_series(str(series_folder / "*.none"))
    with pytest.raises(ValueError, match="over time or iteration"):
        open_series(str(series_folder / "*.res"), dimension="space")
    write_results(series_folder / "other.res", node_count=3)
    with pytest.raises(ValueError, match="one mesh"):
        open_series(str(series_folder / "*.res"))


def test_a_series_on_two_processes(series_folder: pathlib.Path) -> None:
    pytest.importorskip("distributed")
    code = f"""
        from distributed import Client, LocalCluster
        import nereofile
        if __name__ == "__main__":
            with LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster, Client(cluster):
                series = nereofile.open_series({str(series_folder / "*.res")!r})
                print(series["kU"].mean("node").compute().values.tolist())
                print(series["kP"].mean("time").compute().values.tolist())
    """
    script = series_folder / "script.py"
    script.write_text(textwrap.dedent(code))
    child = subprocess.run([sys.executable, str(script)], capture_output=True, text=True, timeout=300, check=False)
    over_nodes, over_time = [5.5] * 5, [-float(node) for node in range(1, 11)]
    assert child.stdout.splitlines() == [str(over_nodes), str(over_time)], child.stderr


def test_plots(series_folder: pathlib.Path) -> None:
    pytest.importorskip("matplotlib")
    results = read_results(series_folder / "1.res")
    axes = nereofile.plot_distribution(results, "kU", bins=5)
    assert [patch.get_height() for patch in axes.patches] == [2] * 5 and axes.get_ylabel() == "nodes"

    curve = Property("viscosity")
    curve.variation_type, curve.independent_variable = "piecewise_linear", "kT"
    curve.points = [(273.0, 2.0), (293.0, 1.0)]
    axes = nereofile.plot_property(curve)
    assert axes.lines[0].get_xydata().tolist() == [[273, 2], [293, 1]]
    assert (axes.get_xlabel(), axes.get_ylabel()) == ("kT", "Viscosity")
    assert nereofile.plot_property(Property("density", 5.0)).lines[0].get_ydata() == [5, 5]

    axes = nereofile.plot_differences(results, read_results(series_folder / "2.res"), "kU")
    assert axes.lines[0].get_ydata().tolist() == [0] * 10
    with pytest.raises(ValueError, match="different nodes"):
        nereofile.plot_differences(results, read_results(series_folder / "2.res", nodes=(1, 5)), "kU")

    series = open_series(str(series_folder / "*.res"))
    axes = nereofile.plot_history(series, "kP", node=3)
    assert axes.lines[0].get_ydata().tolist() == [-3] * 5 and axes.get_xlabel() == "time"
    axes = nereofile.plot_history(series, "kP", axes=nereofile.plot_distribution(results, "kU"))
    assert [line.get_label() for line in axes.lines] == ["mean", "minimum", "maximum"]


@pytest.mark.parametrize(
    "act",
    [
        lambda path: read_results(path, progress=True),
        lambda path: nereofile.statistics(path, progress=True),
        lambda path: nereofile.diff(path, path, progress=True),
    ],
)
def test_a_bar_shows_progress(tmp_path: pathlib.Path, capsys: pytest.CaptureFixture[str], act: Any) -> None:
    pytest.importorskip("tqdm")
    path = write_results(tmp_path / "a.res")
    act(path)
    assert "100%" in capsys.readouterr().err


@pytest.mark.parametrize(
    "hidden, call",
    [
        ("pandas", "results.to_pandas()"),
        ("xarray", "results.to_xarray()"),
        ("xarray", "nereofile.open_series([path])"),
        ("dask", "nereofile.open_series([path])"),
        ("matplotlib", "nereofile.plot_distribution(results, 'kU')"),
        ("matplotlib", "nereofile.plot_property(nereofile.Property('density'))"),
        ("tqdm", "nereofile.read_results(path, progress=True)"),
    ],
)
def test_without_a_library_its_function_says_which(tmp_path: pathlib.Path, hidden: str, call: str) -> None:
    path = write_results(tmp_path / "a.res")
    code = f"""
        import sys
        for name in [{hidden!r}, {hidden!r} + ".array", {hidden!r} + ".figure"]:
            sys.modules[name] = None
        import nereofile
        path = {str(path)!r}
        results = nereofile.read_results(path)
        try:
            {call}
        except ImportError as error:
            print(error)
    """
    child = subprocess.run([sys.executable, "-c", textwrap.dedent(code)], capture_output=True, text=True, check=False)
    name = {"dask": "dask", "xarray": "xarray"}.get(hidden, hidden)
    if child.stdout == "" and hidden == "dask":
        pytest.skip("xarray isn't there")
    assert f"install python3-{name}, or {name} by pip" in child.stdout or "xarray" in child.stdout, child.stderr


def test_importing_takes_none_of_them() -> None:
    code = "import sys, nereofile; print([m for m in ('pandas', 'xarray', 'dask', 'matplotlib', 'tqdm') if m in sys.modules])"
    child = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True)
    assert child.stdout == "[]\n"


@pytest.mark.parametrize(
    "made, expected",
    [
        (lambda: read_results("cavity.res"), ["title", "Lid-driven cavity", "<td>kU</td>", "not finite"]),
        (lambda: nereofile.results_header("cavity.res"), ["bytes there", "<td>kU</td>"]),
        (lambda: nereofile.statistics("cavity.res"), ["at node", "<td>kP</td>"]),
        (lambda: nereofile.check("cavity.ctl"), ["trailing-text", "warning"]),
        (lambda: nereofile.inspect("cavity.ctl"), ["relaxation/kU/under"]),
        (lambda: nereofile.diff("cavity.res", "cavity-be.res"), ["address"]),
    ],
)
def test_html(folder: pathlib.Path, made: Any, expected: "list[str]") -> None:
    html = made()._repr_html_()
    assert html.count("<table>") == html.count("</table>") > 0
    for text in expected:
        assert text in html


def test_html_is_escaped_and_short(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", title="<script>alert(1)</script>")
    html = read_results(path)._repr_html_()
    assert "<script>" not in html and "&lt;script&gt;" in html
    (tmp_path / "a.cfg").write_text("MaxIter five\n" * 500)
    assert "more</td>" in nereofile.check(tmp_path / "a.cfg")._repr_html_()
