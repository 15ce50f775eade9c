"""What a report makes of a case, before it is a page."""

from __future__ import annotations

import math
import os
import pathlib
import types
from typing import Any, List, Sequence, Tuple

import made_cases
import numpy as np
import pytest
from made_results import results_bytes, write_results

import nereofile
from nereofile.report import drawing, texts
from nereofile.report._context import Context
from nereofile.report.case import MOST_FILES, read_case
from nereofile.report.distribution import Counter, Distribution, batches
from nereofile.report.sections import conditions, findings, materials, results, settings
from nereofile.report.sections.comparison import comparison, pairs_of
from nereofile.report.sections.summary import Summary, summary


def context_of(folder: pathlib.Path) -> Context:
    return Context(read_case(str(folder)))


def head_of(folder: pathlib.Path) -> Summary:
    context = context_of(folder)
    return summary(
        context,
        settings.configurations(context),
        settings.controls(context),
        conditions.boundaries(context),
        results.results(context),
    )


# The files of a case.


def test_files_are_sorted_into_groups_by_what_is_in_them(tmp_path: pathlib.Path) -> None:
    made_cases.whole_case(tmp_path)
    os.rename(tmp_path / "channel.gbi", tmp_path / "other.txt")
    (tmp_path / "notes.md").write_text("# Notes\n")
    (tmp_path / "broken.res").write_bytes(b"")
    (tmp_path / "folder.res").mkdir()
    case = read_case(str(tmp_path))
    assert [(file.name, file.group) for file in case.files] == [
        ("broken.res", "results"),
        ("channel.ctl", "control"),
        ("channel.xml", "configuration"),
        ("channel_10.res", "results"),
        ("channel_20.res", "results"),
        ("channel_30.res", "results"),
        ("materials.xml", "materials"),
        ("other.txt", "conditions"),
    ]
    assert (case.other_files, case.left_out) == (1, 0)
    assert [file.verdict for file in case.files] == ["error"] + ["sound"] * 5 + ["warning", "sound"]


def test_a_folder_is_taken_out_of_messages_and_nothing_else(
    tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.chdir(tmp_path)
    (tmp_path / "a.cfg").write_text("MaxIter ../x\n")
    context = Context(read_case("."))
    [row] = findings.findings(context).listed
    assert "../x" in row.message
    assert context.case.placed(f"{tmp_path}/a.cfg:1:1") == "a.cfg:1:1"


def test_a_pipe_is_not_waited_for(tmp_path: pathlib.Path) -> None:
    os.mkfifo(tmp_path / "a.res")
    (tmp_path / "b.res").symlink_to("nowhere")
    assert read_case(str(tmp_path)).files == ()


def test_a_name_that_is_no_text(tmp_path: pathlib.Path) -> None:
    with open(os.fsencode(tmp_path) + b"/\xff\xfe.cfg", "w") as file:
        file.write("MaxIter 5\n")
    [found] = read_case(str(tmp_path)).files
    assert (texts.fit(found.name), found.errors, found.findings[0].code) == ("\ufffd\ufffd.cfg", 1, "cannot-open")


def test_a_folder_of_many_files_is_looked_at_in_part(tmp_path: pathlib.Path) -> None:
    for number in range(MOST_FILES + 3):
        (tmp_path / f"{number:04}.cfg").write_text("MaxIter 5\n")
    case = read_case(str(tmp_path))
    assert (len(case.files), case.left_out) == (MOST_FILES, 3)


def test_a_folder_is_found_as_the_system_finds_it(tmp_path: pathlib.Path) -> None:
    made_cases.whole_case(tmp_path / "runs" / "one")
    (tmp_path / "runs" / "two").mkdir()
    (tmp_path / "link").symlink_to(tmp_path / "runs" / "two")
    assert len(read_case(f"{tmp_path}/link/../one").files) == 7


# Texts and numbers.


@pytest.mark.parametrize("text, shown", [
    ("plain", "plain"),
    ("a\0b\x1bc\x7fd\x85", "a\ufffdb\ufffdc\ufffdd\ufffd"),
    ("line\r\nend\t", "line \nend\t"),
    ("\ud800\udfff\ufffe\ufdd0\U0001ffff", "\ufffd" * 5),
    ("\u202eright to left\u2066", "\ufffdright to left\ufffd"),
    ("Größe 65 × 65 😀", "Größe 65 × 65 😀"),
])
def test_what_no_page_can_have_is_replaced(text: str, shown: str) -> None:
    assert texts.fit(text) == shown


def test_a_long_text_is_shortened_and_its_length_said() -> None:
    assert texts.shortened("x" * 240) == ("x" * 240, 0)
    assert texts.shortened("x" * 241) == ("x" * 220 + "…", 241)
    shown = texts.Language().shown("<" * 10_000_000)
    assert shown == "&lt;" * 220 + '… <span class="cut">(10\u202f000\u202f000 characters)</span>'
    assert texts.brief("a  b\n" * 100) == "a b " * 10 + "…"


@pytest.mark.parametrize("value, shown", [
    (0.0, "0"), (1.0, "1"), (-9.81, "-9.81"), (1 / 3, "0.333333"), (1e20, "1e+20"), (math.nan, "NaN"),
    (math.inf, "∞"), (-math.inf, "-∞"), (5, "5"), (9999, "9999"), (10000, "10\u202f000"), (-1234567, "-1\u202f234\u202f567"),
])
def test_numbers(value: float, shown: str) -> None:
    assert texts.Language().shown(value) == shown


@pytest.mark.parametrize("amount, shown", [
    (0, "0 B"), (999, "999 B"), (1000, "1.0 kB"), (186359, "186 kB"), (80_000_000, "80.0 MB"), (2 * 10**12, "2000 GB"),
])
def test_sizes(amount: int, shown: str) -> None:
    assert texts.size(amount).replace("\u202f", " ") == shown


@pytest.mark.parametrize("share, shown", [(0.5, "50"), (1 / 3, "33.3"), (0.0, "0"), (math.inf, "∞"), (math.nan, "NaN")])
def test_shares(share: float, shown: str) -> None:
    assert texts.percent(share) == shown + "\u202f%"


# Settings.


def test_settings_that_differ_from_their_defaults_come_with_these(tmp_path: pathlib.Path) -> None:
    (tmp_path / "a.cfg").write_text("MaxIter 500\nWidth 10\nStopTime 12.5\n")
    [file] = settings.configurations(context_of(tmp_path))
    shown = [(row.address, row.value, row.default, row.line) for row in file.changed]
    assert shown == [("MaxIter", 500, 10000, 1), ("StopTime", 12.5, 1e20, 3)]
    assert file.rest_count == 44 and file.problem is None
    width = next(row for part in file.rest for row in part.settings if row.address == "Width")
    assert (width.value, width.line) == (10, 2)


def test_a_configuration_that_ends_early_says_so_and_what_stands_in_it(tmp_path: pathlib.Path) -> None:
    (tmp_path / "a.cfg").write_text("MaxIter 500\nNoSuchKey 1\nWidth 3\n")
    [file] = settings.configurations(context_of(tmp_path))
    assert file.problem is not None and "a.cfg:2:1" in file.problem and str(tmp_path) not in file.problem
    assert [(row.address, row.value) for row in file.changed] == [("MaxIter", 500), ("Width", 3)]


def test_a_value_that_is_spelled_as_no_number(tmp_path: pathlib.Path) -> None:
    (tmp_path / "a.ctl").write_text("NEREO control file rev 07 NEREO Ver 2024.0.0.0\nx\n *** Relaxation\nkU O.4 0\n")
    [file] = settings.controls(context_of(tmp_path))
    [row] = [row for row in file.changed if row.address == "relaxation/kU/under"]
    assert (row.value, row.default, row.spelling, row.line) == (0, 0.5, "O.4", 4)


def test_control_settings_differ_by_address_and_other_sections_are_kept(tmp_path: pathlib.Path) -> None:
    made_cases.whole_case(tmp_path)
    with (tmp_path / "channel.ctl").open("a") as out:
        out.write(" *** My/Own Section\none\ntwo\n")
    [file] = settings.controls(context_of(tmp_path))
    changed = {row.address: (row.value, row.default) for row in file.changed}
    assert changed["relaxation/kU/under"] == (0.25, 0.5)
    assert changed["constants/kGravY"] == (-9.81, 0)
    assert changed["title"] == ("Channel with a step", None)
    assert not any(address.startswith("property-settings") for address in changed)
    [relaxation] = [part for part in file.rest if part.name == "relaxation"]
    assert relaxation.grid is not None and relaxation.grid.columns == ("under", "inertial")
    variable, values = relaxation.grid.rows[0]
    assert (variable, [setting.value for setting in values if setting]) == ("kU", [0.25, 0])
    assert next(part for part in file.rest if part.name == "constants").grid is None
    assert [part.name for part in file.rest][:3] == ["header", "equation-selection", "units"]
    assert [(kept.name, kept.lines) for kept in file.kept if "Own" in kept.name] == [("My/Own Section", ("one", "two"))]


# Materials.


def test_materials_with_their_curves_and_who_uses_them(tmp_path: pathlib.Path) -> None:
    context = context_of(made_cases.whole_case(tmp_path))
    found = materials.materials(context, conditions.boundaries(context))
    [file] = found.files
    assert (file.name, file.count, found.shown_count) == ("materials.xml", 5, 5)
    assert [(row.name, row.type, row.id) for row in file.materials][:2] == [("Air", "Fluid", 1), ("Water", "Fluid", 2)]
    water = file.materials[1]
    assert water.users == ("channel.ctl", "channel.gbi") and file.materials[0].users == ()
    viscosity = water.property("viscosity")
    assert viscosity is not None
    assert (viscosity.variable, viscosity.point_count, viscosity.points[1]) == ("kT", 4, (293.15, 0.0010016))
    assert found.place_of("Water", 2) == water and found.place_of("Water", 9) == water
    assert found.place_of("None", 1) is None
    assert found.used_by("channel.ctl") == [water] and found.used_by("channel.xml") == []


def test_materials_of_a_control_file_that_no_database_has(tmp_path: pathlib.Path) -> None:
    made_cases.whole_case(tmp_path)
    (tmp_path / "materials.xml").unlink()
    [file] = materials.materials(context_of(tmp_path), ()).files
    assert (file.name, [row.name for row in file.materials]) == ("channel.ctl", ["Water"])
    viscosity = file.materials[0].property("kVisc")
    assert viscosity is not None and viscosity.variable == "kT"
    assert viscosity.points[0] == (273.15, 0.0017914)
    density = file.materials[0].property("kRho")
    assert density is not None and (density.value, density.variation) == (998.21, "Constant")


def test_many_materials_are_all_listed_and_those_in_use_shown(tmp_path: pathlib.Path) -> None:
    database = nereofile.MaterialDatabase([nereofile.Material("fluid", name=f"m{i}", id=i) for i in range(1, 1001)])
    database.save(tmp_path / "m.xml")
    boundary = nereofile.GeometryBoundary("job")
    boundary.materials.append(nereofile.Material("fluid", name="m900", id=900))
    boundary.save(tmp_path / "m.gbi")
    context = context_of(tmp_path)
    found = materials.materials(context, conditions.boundaries(context))
    assert (found.count, found.shown_count) == (1000, materials.MOST_SHOWN)
    shown = [row.name for row in found.files[0].materials if row.is_shown]
    assert shown[0] == "m1" and shown[-1] == "m900" and len(shown) == materials.MOST_SHOWN


# Conditions.


@pytest.mark.parametrize("numbers, text", [
    ([], ""), ([5], "5"), ([3, 1, 2], "1–3"), ([1, 2, 2, 4, 6, 7], "1–2, 4, 6–7"), ([-2, -1, 0], "-2–0"),
    (list(range(0, 2000, 2)), ", ".join(str(n) for n in range(0, 62, 2)) + ", …"),
])
def test_ranges(numbers: List[int], text: str) -> None:
    assert conditions.ranges(numbers) == text


def test_conditions_by_quantity_and_by_entity(tmp_path: pathlib.Path) -> None:
    [file] = conditions.boundaries(context_of(made_cases.whole_case(tmp_path)))
    assert (file.count, file.entity_count, file.fact("job")) == (9, 5, "channel")
    rows = [(q.name, q.count, q.entity_count, q.minimum, q.maximum, q.with_extra, q.with_time_curve) for q in file.quantities]
    assert rows == [("kU", 4, 4, 1, 7, 0, 0), ("kV", 4, 4, 0, 0, 0, 0), ("kP", 1, 1, 2.5, 2.5, 1, 1)]
    assert file.quantities[2].listed == (conditions.Condition(9, "kP", 2.5, (1.0, 2.0), 4),)
    groups = [(group.entities, group.entity_count, group.quantities, group.count) for group in file.groups]
    assert groups == [("1–3, 7", 4, (("kU", 1), ("kV", 1)), 8), ("9", 1, (("kP", 1),), 1)]
    assert file.materials == (conditions.UsedMaterial(2, "Water", 1, 0),)


def test_many_conditions_come_in_pages(tmp_path: pathlib.Path) -> None:
    boundary = nereofile.GeometryBoundary("job")
    for entity in range(1201):
        boundary.conditions.append(nereofile.BoundaryCondition("kT", 1.0, 1201 - entity))
    boundary.save(tmp_path / "a.gbi")
    [file] = conditions.boundaries(context_of(tmp_path))
    assert [(len(page), page[0].entity) for page in file.quantities[0].pages] == [(500, 1), (500, 501), (201, 1001)]


# Results.


def counted(values: Sequence[float], first: float, last: float, bins: int) -> Tuple[int, ...]:
    counter = Counter(first, last, bins)
    counter.add(np.array(values))
    return counter.distribution.counts


@pytest.mark.parametrize("values, first, last, counts", [
    ([0, 1, 2, 3, 4], 0, 4, (1, 1, 1, 2)),
    ([0, 0, 4, math.nan, math.inf], 0, 4, (2, 0, 0, 1)),
    ([5, 5, 5], 5, 5, (0, 0, 3, 0)),
    ([], 0, 0, (0, 0, 0, 0)),
    ([-1.7e308, 0, 1.7e308], -1.7e308, 1.7e308, (1, 0, 1, 1)),
])
def test_distributions(values: List[float], first: float, last: float, counts: Tuple[int, ...]) -> None:
    assert counted(values, first, last, 4) == counts


def test_a_distribution_is_that_of_numpy() -> None:
    values = np.random.default_rng(3).normal(size=600_000)
    expected, _ = np.histogram(values, 40, (values.min(), values.max()))
    found = np.array(counted(list(values), float(values.min()), float(values.max()), 40))
    assert found.sum() == 600_000 and np.abs(found - expected).max() <= 2  # values on a border


def test_fields_are_loaded_in_parts_that_fit(monkeypatch: pytest.MonkeyPatch) -> None:
    from nereofile.report import distribution

    monkeypatch.setattr(distribution, "MEMORY", 8 * 100)
    assert list(batches(["a", "b", "c"], 50)) == [(["a", "b"], (1, 50)), (["c"], (1, 50))]
    assert list(batches(["a", "b"], 250)) == [
        (["a"], (1, 100)), (["a"], (101, 200)), (["a"], (201, 250)),
        (["b"], (1, 100)), (["b"], (101, 200)), (["b"], (201, 250)),
    ]
    assert list(batches(["a"], 60, arrays=2)) == [(["a"], (1, 50)), (["a"], (51, 60))]
    assert list(batches([], 50)) == [] and list(batches(["a"], 0)) == []


def test_results_in_the_order_of_the_run(tmp_path: pathlib.Path) -> None:
    for place, iteration in enumerate((30, 10, 20)):
        made_cases.write_snapshot(tmp_path / f"{place}.res", iteration)
    found = results.results(context_of(tmp_path))
    assert [snapshot.name for snapshot in found.snapshots] == ["1.res", "2.res", "0.res"]
    assert found.last == found.snapshots[2]
    [wave, level] = found.snapshots[2].fields
    assert (wave.statistics.maximum, wave.statistics.maximum_node, wave.statistics.not_finite) == (30, 26, 0)
    assert wave.distribution is not None and sum(wave.distribution.counts) == 101
    assert level.distribution is not None and level.distribution.is_level
    assert found.history is not None
    assert (found.history.over, found.history.places) == ("iteration", (10, 20, 30))
    assert [field.name for field in found.history.fields] == ["kU", "kP"]
    assert found.history.fields[0].maximum == (10, 20, 30)


def test_iterations_count_before_time_steps(tmp_path: pathlib.Path) -> None:
    for name, iteration, step in (("a", 20, 0), ("b", 10, 5), ("c", 30, 1)):
        made_cases.write_snapshot(tmp_path / f"{name}.res", iteration)
        content = bytearray((tmp_path / f"{name}.res").read_bytes())
        content[318:322] = step.to_bytes(4, "little")
        (tmp_path / f"{name}.res").write_bytes(content)
    found = results.results(context_of(tmp_path))
    assert [snapshot.name for snapshot in found.snapshots] == ["b.res", "a.res", "c.res"]
    assert found.history is not None and found.history.places == (10, 20, 30)


def test_a_transient_run_goes_over_time(tmp_path: pathlib.Path) -> None:
    for time in (0.5, 0.25):
        made_cases.write_snapshot(tmp_path / f"{time}.res", 5, time=time)
    found = results.results(context_of(tmp_path)).history
    assert found is not None and (found.over, found.places) == ("time", (0.25, 0.5))


def test_the_change_is_that_of_the_last_two(tmp_path: pathlib.Path) -> None:
    change = results.results(context_of(made_cases.whole_case(tmp_path))).change
    assert change is not None and (change.before, change.after) == ("channel_20.res", "channel_30.res")
    wave, level = change.fields
    assert (wave.largest, wave.node, wave.before, wave.after) == (10, 26, 20, 30)
    assert wave.distribution is not None and (wave.distribution.first, wave.distribution.last) == (-10, 10)
    assert sum(wave.distribution.counts) == 101
    assert level.is_same and level.distribution is None


def test_results_of_other_meshes_have_no_change(tmp_path: pathlib.Path) -> None:
    made_cases.write_snapshot(tmp_path / "a.res", 1, node_count=5)
    made_cases.write_snapshot(tmp_path / "b.res", 2, node_count=6)
    change = results.results(context_of(tmp_path)).change
    assert change is not None and change.nodes == (5, 6)


def test_values_that_are_not_finite(tmp_path: pathlib.Path) -> None:
    values = np.array([[math.nan, math.nan], [2.0, math.nan], [3.0, math.inf]])
    (tmp_path / "a.res").write_bytes(results_bytes(values))
    one, none = results.results(context_of(tmp_path)).snapshots[0].fields
    assert (one.statistics.not_finite, one.statistics.first_not_finite_node) == (1, 1)
    assert one.distribution is not None and sum(one.distribution.counts) == 2
    assert none.statistics.not_finite == 3


def test_damaged_results_say_so_and_show_what_there_is(tmp_path: pathlib.Path) -> None:
    path = write_results(tmp_path / "cut.res")
    path.write_bytes(path.read_bytes()[:-50])
    write_results(tmp_path / "wild.res", nodes=[1, 2, 3, 4, 5, 6, 7, 8, 9, 11])
    (tmp_path / "empty.res").write_bytes(b"")
    found = {snapshot.name: snapshot for snapshot in results.results(context_of(tmp_path)).snapshots}
    assert found["empty.res"].header is None and found["empty.res"].problem is not None
    assert found["cut.res"].fields[0].statistics.maximum == 7
    assert found["wild.res"].problem is not None and "node 11" in found["wild.res"].problem


def test_nodes_that_are_announced_and_not_there_are_not_waited_for(tmp_path: pathlib.Path) -> None:
    values = np.arange(6.0).reshape(3, 2)
    for name, share in (("a.res", 1.0), ("b.res", 2.0)):
        (tmp_path / name).write_bytes(results_bytes(values * share, node_count=250_000_000))
    found = results.results(context_of(tmp_path))
    for snapshot in found.snapshots:
        assert [field.distribution for field in snapshot.fields] == [None, None]
    assert found.change is not None and (found.change.problem, found.change.fields[1].largest) == (None, 5)
    assert [field.distribution for field in found.change.fields] == [None, None]


@pytest.mark.parametrize("node_count, whole_records, is_enough", [
    (10, 10, True), (1 << 20, 0, True), (32 << 20, 2 << 20, True), ((32 << 20) + 1, 2 << 20, False), (-5, 0, True),
])
def test_which_results_have_their_nodes(node_count: int, whole_records: int, is_enough: bool) -> None:
    header: Any = types.SimpleNamespace(node_count=node_count, whole_records=whole_records)
    assert results._has_its_nodes(header) is is_enough


def test_times_that_are_not_finite_are_no_history(tmp_path: pathlib.Path) -> None:
    for iteration, time in ((10, math.nan), (20, math.inf), (30, 0.5), (40, -math.inf)):
        made_cases.write_snapshot(tmp_path / f"{iteration}.res", iteration, time=time)
    found = results.results(context_of(tmp_path)).history
    assert found is not None and (found.over, found.places) == ("iteration", (10, 20, 30, 40))
    assert found.fields[0].maximum == (10, 20, 30, 40)


def test_a_long_history_is_listed_in_part() -> None:
    field = results.FieldHistory("kU", (), (), ())
    assert len(results.History("time", (0.0,) * 500, (field,) * 300).listed) == 20
    assert len(results.History("time", (0.0,) * 20_000, (field,) * 3).listed) == 1
    assert len(results.History("time", (0.0,) * 20, (field,) * 300).listed) == 300


# Small drawings.


@pytest.mark.parametrize("points, path", [
    ([], ""), ([(1.0, 2.0)], ""), ([(0.0, 0.0), (1.0, 1.0)], "M2 30L118 2"), ([(0.0, 5.0), (1.0, 5.0)], "M2 16L118 16"),
    ([(0.0, 0.0), (math.nan, 1.0), (1.0, math.inf), (2.0, 1.0)], "M2 30L118 2"),
    ([(-1.7e308, 0.0), (1.7e308, 1.0)], "M2 30L118 2"),
])
def test_lines(points: List[Tuple[float, float]], path: str) -> None:
    assert drawing.line(points) == path


def test_a_line_has_few_points() -> None:
    assert drawing.line([(float(i), float(i * i)) for i in range(100_000)]).count("L") == 59


def test_bars() -> None:
    assert drawing.bars(Distribution(0, 4, (0, 1, 1000, 500))) == "M0 32V32H30V31H60V1H90V16.5H120V32Z"
    assert drawing.bars(Distribution(0, 0, (0, 0))) == ""


# Findings, the head, and comparisons.


def test_findings_worst_first_in_the_order_of_the_files(tmp_path: pathlib.Path) -> None:
    (tmp_path / "b.cfg").write_text("MaxIter 5\nNoSuchKey 1\n")
    (tmp_path / "a.ctl").write_text("NEREO control file rev 07 NEREO Ver 2024.0.0.0\nx\n *** Relaxation\nkU 1 2 3\n")
    (tmp_path / "c.res").write_bytes(b"x")
    found = findings.findings(context_of(tmp_path))
    severities = [row.severity for row in found.listed]
    assert severities == sorted(severities, key=["error", "warning", "note"].index)
    assert found.files == ("a.ctl", "b.cfg", "c.res") and found.count == len(found.listed)
    first = found.listed[0]
    assert (first.file, first.place, first.code, first.effect) == ("b.cfg", "2:1", "unknown-key", "throws")


@pytest.mark.parametrize("place, text", [((4, 12, 100), "4:12"), ((4, None, None), "4"), ((None, None, 306), "@306"),
                                         ((None, None, None), "")])
def test_places(place: Any, text: str) -> None:
    assert findings.place_of(*place) == text


def test_only_the_worst_of_many_findings_are_listed(tmp_path: pathlib.Path) -> None:
    for name in ("a", "b", "c"):
        (tmp_path / f"{name}.cfg").write_text("MaxIter five\n" * 900)
    found = findings.findings(context_of(tmp_path))
    assert len(found.listed) == findings.MOST_LISTED and found.errors == 2700
    assert [len(page) for page in found.pages] == [findings.PAGE] * 8


def test_the_head_of_a_case(tmp_path: pathlib.Path) -> None:
    head = head_of(made_cases.whole_case(tmp_path))
    assert (head.job, head.title, head.versions) == ("channel", "Channel with a step", ("2024.0.0.0",))
    assert head.date == "today"
    assert head.run is not None and (head.run.iteration, head.run.most_iterations, head.run.share) == (30, 40, 0.75)
    assert head.verdict == "warning"
    assert [tile.name for tile in head.tiles] == [
        "channel.xml", "channel.ctl", "materials.xml", "channel.gbi", "channel_10.res", "channel_20.res", "channel_30.res",
    ]


def test_how_far_a_transient_run_is(tmp_path: pathlib.Path) -> None:
    made_cases.write_snapshot(tmp_path / "a.res", 5, time=0.5)
    (tmp_path / "a.cfg").write_text("MaxIter 3\nTransient 1\n")
    nereofile.Configuration(MaxIter=10).save(tmp_path / "b.xml")
    run = head_of(tmp_path).run
    assert run is not None and (run.most_iterations, run.share, run.time, run.stop_time) == (3, 1, 0.5, None)
    (tmp_path / "a.cfg").write_text("Transient 1\nStopTime 2\n")
    run = head_of(tmp_path).run
    assert run is not None and (run.most_iterations, run.share, run.stop_time) == (10, 0.5, 2)


def test_the_head_of_an_empty_folder(tmp_path: pathlib.Path) -> None:
    head = head_of(tmp_path)
    assert (head.verdict, head.run, head.title) == ("empty", None, "")
    assert [tile.verdict for tile in head.tiles] == ["missing"] * 5


def test_two_cases(tmp_path: pathlib.Path) -> None:
    a, b = made_cases.whole_case(tmp_path / "a"), made_cases.whole_case(tmp_path / "b")
    nereofile.Configuration(JobPrefix="channel", MaxIter=50).save(b / "channel.xml")
    (b / "channel.gbi").unlink()
    made_cases.write_snapshot(b / "channel_30.res", 31)
    context = Context(read_case(str(a)), read_case(str(b)))
    found = comparison(context, results.results(context))
    assert found is not None and (found.a, found.b) == ("a", "b")
    groups = {group.group: group for group in found.groups}
    [pair] = groups["configuration"].pairs
    assert [(row.address, row.a, row.b) for row in pair.differences] == [("MaxIter", "40", "50")]
    assert groups["materials"].count == groups["control"].count == 0
    assert (groups["conditions"].pairs[0].a, groups["conditions"].pairs[0].b) == ("channel.gbi", "")
    assert found.change is not None and found.change.fields[0].largest == pytest.approx(1)


def test_files_are_compared_by_name_and_then_in_order(tmp_path: pathlib.Path) -> None:
    for name, files in (("a", ("1.cfg", "2.cfg", "3.cfg")), ("b", ("2.cfg", "4.cfg"))):
        (tmp_path / name).mkdir()
        for file in files:
            (tmp_path / name / file).write_text("MaxIter 5\n")
    pairs = pairs_of(read_case(str(tmp_path / "a")), read_case(str(tmp_path / "b")), "configuration")
    names = [(a.name if a else "", b.name if b else "") for a, b in pairs]
    assert names == [("2.cfg", "2.cfg"), ("1.cfg", "4.cfg"), ("3.cfg", "")]


def test_many_files_of_a_group_share_a_tile(tmp_path: pathlib.Path) -> None:
    for number in range(20):
        made_cases.write_snapshot(tmp_path / f"{number:02}.res", number)
    (tmp_path / "07.res").write_bytes(b"")
    tiles = [tile for tile in head_of(tmp_path).tiles if tile.group == "results"]
    assert [(tile.name, tile.more, tile.verdict) for tile in tiles] == [
        ("00.res", 0, "sound"), ("01.res", 0, "sound"), ("02.res", 0, "sound"), ("03.res", 0, "sound"),
        ("07.res", 0, "error"), ("", 15, "sound"),
    ]
