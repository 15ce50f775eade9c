"""Loading results: the arrays, the facts, what goes wrong, and what goes on meanwhile."""

from __future__ import annotations

import copy
import gc
import os
import pathlib
import pickle
import threading
import time
from typing import Any, Callable, Dict, List, Tuple

import numpy as np
import pytest
from made_results import results_bytes, write_results

import nereofile
from nereofile import FileError, read_results, results_header, statistics


def test_fields_are_a_mapping_of_read_only_arrays(samples: pathlib.Path) -> None:
    results = read_results(samples / "cavity.res")
    assert list(results) == ["kU", "kV", "kW", "kP", "kT"]
    assert len(results) == 5 and "kU" in results and "kRho" not in results
    values = results["kU"]
    assert values.shape == (4225,) and values.dtype == np.float64 and values.flags.c_contiguous
    with pytest.raises(ValueError, match="read-only"):
        values[0] = 1.0
    with pytest.raises(ValueError):
        values.setflags(write=True)
    with pytest.raises(KeyError):
        results["kRho"]


@pytest.mark.parametrize("order", ["<", ">"])
def test_entry_n_minus_1_belongs_to_node_n(tmp_path: pathlib.Path, order: str) -> None:
    path = write_results(tmp_path / "a.res", nodes=[3, 1, 2, 10, 9, 8, 7, 6, 5, 4], order=order)
    assert read_results(path)["kU"].tolist() == [2, 3, 1, 10, 9, 8, 7, 6, 5, 4]


def test_facts(tmp_path: pathlib.Path) -> None:
    results = read_results(write_results(tmp_path / "a.res"))
    assert (results.title, results.date, results.version) == ("made up", "today", "2024.0.0.0")
    assert (results.node_count, results.element_count, results.nodes) == (10, 5, range(1, 11))
    assert (results.iteration, results.starting_iteration) == (7, 1)
    assert (results.time_step, results.starting_time_step) == (2, 1)
    assert (results.time, results.time_step_size) == (0.5, 0.1)
    assert results.codes == {"kU": 1, "kP": 4}
    assert results.path == str(tmp_path / "a.res") and results.is_whole
    assert results.facts.title == "made up"
    assert repr(results) == "<Results 'made up': 10 nodes, fields kU, kP>"


@pytest.mark.parametrize("fields", [["kP"], ("kP",), [4], iter(["kP"]), [np.int32(4)]])
def test_chosen_fields(tmp_path: pathlib.Path, fields: Any) -> None:
    results = read_results(write_results(tmp_path / "a.res"), fields=fields)
    assert list(results) == ["kP"] and results["kP"][0] == -1


@pytest.mark.parametrize("nodes, expected", [((3, 5), [3, 4, 5]), (range(3, 6), [3, 4, 5]), ((9, 99), [9, 10]), ((11, 12), [])])
def test_chosen_nodes(tmp_path: pathlib.Path, nodes: Any, expected: List[float]) -> None:
    results = read_results(write_results(tmp_path / "a.res"), nodes=nodes)
    assert results["kU"].tolist() == expected
    assert list(results.nodes) == expected
    assert results.node_count == 10


def test_a_name_is_the_one_in_the_file(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", names=["kCond", "kSlipNode"])  # kCond is kKXX for the table of codes
    assert list(read_results(path)) == ["kCond", "kSlipNode"]
    assert list(read_results(path, fields=["kKXX"])) == ["kCond"]


def test_an_unknown_field_is_left_out(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", names=["kU", "nonsense"])
    assert list(read_results(path)) == ["kU"]


def test_arrays_outlive_their_results_and_the_file(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", node_count=100_000)
    values = read_results(path)["kU"]
    part = values[10:20:2]
    del values
    path.unlink()
    gc.collect()
    assert part.tolist() == [11, 13, 15, 17, 19]


def test_asking_twice_gives_the_same_memory(tmp_path: pathlib.Path) -> None:
    results = read_results(write_results(tmp_path / "a.res"))
    assert np.shares_memory(results["kU"], results["kU"])
    assert np.shares_memory(copy.copy(results)["kU"], results["kU"])


def test_there_is_one_copy_of_the_values(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", node_count=2_000_000)

    def memory(name: str) -> int:
        lines = pathlib.Path("/proc/self/status").read_text().splitlines()
        return next(int(line.split()[1]) for line in lines if line.startswith(name)) * 1024

    read_results(path, nodes=(1, 10))
    pathlib.Path("/proc/self/clear_refs").write_text("5")  # the peak starts anew
    before = memory("VmRSS")
    results = read_results(path)
    assert memory("VmHWM") - before < sum(values.nbytes for values in results.values()) + 40_000_000


def test_missing_nodes_are_filled(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", node_count=4, nodes=[1, 2, 4, 4])
    assert read_results(path)["kU"].tolist() == [1, 2, 0, 4]
    values = read_results(path, fill=float("nan"))["kU"]
    assert np.isnan(values[2]) and values[1] == 2


def test_a_file_that_is_cut_short(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res")
    path.write_bytes(path.read_bytes()[:-50])
    with pytest.raises(FileError) as caught:
        read_results(path)
    assert [finding.code for finding in caught.value.findings] == ["cut-short"]
    assert caught.value.path == str(path) and str(path) in str(caught.value)
    results = read_results(path, strict=False, fill=-1)
    assert results["kU"].tolist() == [1, 2, 3, 4, 5, 6, 7, -1, -1, -1]
    assert not results.is_whole


# What makes a plain load stop the process, or no file of results.
@pytest.mark.parametrize(
    "content, code",
    [
        (results_bytes(np.zeros((2, 2)), names=["kU", "kU"]), "repeated-field"),
        (results_bytes(np.zeros((2, 2)), nodes=[1, 3]), "node-out-of-range"),
        (results_bytes(np.zeros((2, 2)), node_count=-1), "negative-count"),
        (results_bytes(np.zeros((2, 2)))[:306] + bytes(4), "bad-marker"),
        (b"", "cut-short"),
        (b"<xml/>", "cut-short"),
    ],
)
def test_contradictions_are_file_errors(tmp_path: pathlib.Path, content: bytes, code: str) -> None:
    path = tmp_path / "a.res"
    path.write_bytes(content)
    for strict in (True, False):
        with pytest.raises(FileError) as caught:
            read_results(path, strict=strict)
        assert code in [finding.code for finding in caught.value.findings]


def test_announcing_much_is_no_way_to_take_memory(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", node_count=4)
    data = bytearray(path.read_bytes())
    data[298:302] = (2**31 - 1).to_bytes(4, "little")
    path.write_bytes(data)
    with pytest.raises(FileError):
        read_results(path)
    data[298:302] = (100_000_000).to_bytes(4, "little")
    path.write_bytes(data)
    with pytest.raises(MemoryError, match="takes 1600"):
        read_results(path, strict=False, memory_limit=1_000_000)


@pytest.mark.parametrize(
    "name, kinds",
    [
        ("missing.res", (FileError, FileNotFoundError)),
        (".", (FileError, OSError)),
        ("pipe", (FileError, OSError)),
    ],
)
def test_files_that_cannot_be_opened(tmp_path: pathlib.Path, name: str, kinds: Tuple[type, ...]) -> None:
    os.mkfifo(tmp_path / "pipe")
    reads: List[Callable[[pathlib.Path], object]] = [read_results, results_header, statistics]
    for read in reads:
        for kind in kinds:
            with pytest.raises(kind):
                read(tmp_path / name)


WRONG_ARGUMENTS: List[Tuple[Dict[str, Any], type]] = [
    ({"fields": "kU"}, TypeError),
    ({"fields": ["kT"]}, KeyError),
    ({"fields": ["nonsense"]}, KeyError),
    ({"fields": [362]}, ValueError),
    ({"fields": [-1]}, ValueError),
    ({"fields": [2.5]}, AttributeError),
    ({"fields": []}, ValueError),
    ({"fields": 4}, TypeError),
    ({"nodes": (0, 3)}, ValueError),
    ({"nodes": (3, 2)}, ValueError),
    ({"nodes": (1, 2**40)}, ValueError),
    ({"nodes": (1, 2, 3)}, ValueError),
    ({"nodes": range(1, 10, 2)}, ValueError),
    ({"nodes": "12"}, AttributeError),
    ({"memory_limit": -1}, ValueError),
    ({"memory_limit": 2**80}, ValueError),
    ({"memory_limit": 100}, MemoryError),
    ({"fill": "0"}, TypeError),
    ({"progress": 3}, TypeError),
]


@pytest.mark.parametrize("arguments, error", WRONG_ARGUMENTS, ids=[str(row[0]) for row in WRONG_ARGUMENTS])
def test_wrong_arguments(tmp_path: pathlib.Path, arguments: Dict[str, Any], error: type) -> None:
    with pytest.raises(error):
        read_results(write_results(tmp_path / "a.res"), **arguments)


def test_progress_is_told_of_all_bytes(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res")
    told: List[Tuple[int, int]] = []
    read_results(path, progress=lambda done, in_all: told.append((done, in_all)))
    assert told[-1] == (path.stat().st_size, path.stat().st_size)


def test_progress_cancels_by_false(tmp_path: pathlib.Path) -> None:
    with pytest.raises(nereofile.Cancelled):
        read_results(write_results(tmp_path / "a.res"), progress=lambda done, in_all: False)
    with pytest.raises(nereofile.Cancelled):
        statistics(write_results(tmp_path / "a.res"), progress=lambda done, in_all: False)


@pytest.mark.parametrize("read", [read_results, statistics])
def test_what_progress_raises_comes_out(tmp_path: pathlib.Path, read: Callable[..., object]) -> None:
    def fail(done: int, in_all: int) -> bool:
        raise LookupError("enough")

    with pytest.raises(LookupError, match="enough"):
        read(write_results(tmp_path / "a.res"), progress=fail)


def test_other_threads_run_during_a_load(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", node_count=3_000_000)
    loading = threading.Event()
    loaded = threading.Event()
    seen: List[bool] = []

    def watch() -> None:
        loading.wait()
        while not loaded.is_set():
            seen.append(True)
            time.sleep(0)

    watcher = threading.Thread(target=watch)
    watcher.start()
    loading.set()
    read_results(path)
    count = len(seen)
    loaded.set()
    watcher.join()
    assert count > 10


def test_equality_pickle_and_copy(tmp_path: pathlib.Path) -> None:
    results = read_results(write_results(tmp_path / "a.res"))
    assert results == read_results(write_results(tmp_path / "b.res"))
    assert results != read_results(write_results(tmp_path / "b.res", title="other"))
    assert results != {}
    for copied in (pickle.loads(pickle.dumps(results)), copy.deepcopy(results), copy.copy(results)):
        assert copied == results
        assert not copied["kU"].flags.writeable
    with pytest.raises(TypeError):
        hash(results)


def test_header(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", names=["kU", "nonsense"], order=">")
    header = results_header(path)
    assert header.byte_order == "big" and header.field_count == 2
    assert [(f.name, f.code, f.is_used) for f in header.fields] == [("kU", 1, True), ("nonsense", None, False)]
    assert header.bytes_there == header.bytes_announced == path.stat().st_size
    assert (header.record_size, header.records_offset) == (20, 396)
    assert (header.records_announced, header.whole_records) == (10, 10)
    assert header.problems == () and header.is_results_file and header.holds_known_field
    path.write_bytes(path.read_bytes()[:-1])
    assert [problem.kind for problem in results_header(path).problems] == ["counts-past-file"]
    assert pickle.loads(pickle.dumps(header)) == header


def test_statistics(tmp_path: pathlib.Path) -> None:
    values = np.array([[1.0, 5.0], [np.nan, 7.0], [-3.0, 6.0]])
    path = tmp_path / "a.res"
    path.write_bytes(results_bytes(values))
    found = statistics(path, damage=True)
    assert list(found) == ["kU", "kP"]
    field = found["kU"]
    assert (field.minimum, field.minimum_node, field.maximum, field.maximum_node) == (-3, 3, 1, 1)
    assert (field.count, field.mean, field.not_finite, field.first_not_finite_node) == (2, -1, 1, 2)
    assert found.damage is not None and found.damage.missing_nodes == 0
    assert statistics(path).damage is None
    assert found.header.node_count == 3


def test_statistics_of_damage(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "a.res", node_count=4, nodes=[1, 1, 9, 4])
    damage = statistics(path, damage=True).damage
    assert damage is not None
    assert (damage.missing_nodes, damage.first_missing_node) == (2, 2)
    assert (damage.repeated_records, damage.first_repeated_node) == (1, 1)
    assert (damage.records_out_of_range, damage.first_node_out_of_range) == (1, 9)
