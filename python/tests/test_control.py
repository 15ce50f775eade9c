"""The control file and its parts."""

import collections.abc
import copy
import pathlib
import pickle
from typing import Any

import pytest

import nereofile
from nereofile import ControlFile, FileError, Flag, Material, Smoke, SolutionControl


def test_facts(tmp_path: pathlib.Path) -> None:
    control = ControlFile(title="Cavity")
    control.units, control.transient_form, control.number_of_time_steps = 2, 1, 30
    control.time_step_size, control.stop_time = 0.25, 7.5
    control.header_line2 = "by hand"
    control.equations = [1, 0, 1, 0, 1]
    control.equations[0] = 0
    control.save(tmp_path / "a.ctl")
    loaded = ControlFile.load(tmp_path / "a.ctl")
    assert (loaded.title, loaded.units, loaded.transient_form, loaded.number_of_time_steps) == ("Cavity", 2, 1, 30)
    assert (loaded.time_step_size, loaded.stop_time, loaded.header_line2) == (0.25, 7.5, "by hand")
    assert tuple(loaded.equations) == (0, 0, 1, 0, 1) and len(loaded.equations) == 5
    assert loaded == control and loaded.path == tmp_path / "a.ctl"
    assert repr(loaded) == "<ControlFile 'Cavity', 0 flags>"


def test_the_header_line_carries_the_version() -> None:
    control = ControlFile()
    control.header_line1 = "something Ver 2023.1.2.3"
    assert control.version == "2023.1.2.3"


def test_numbers_by_field_variable() -> None:
    control = ControlFile()
    assert control.under_relaxation["kU"] == control.under_relaxation[1] == 0.5
    control.under_relaxation["kU"] = 0.25
    control.inertial_relaxation[2] = 0.5
    control.constants.update(kGravY=-9.81)
    assert control.under_relaxation["kU"] == 0.25 and control.inertial_relaxation["kV"] == 0.5
    assert control.constants["kGravY"] == -9.81 and control.original_constants["kGravY"] == 0
    assert (len(control.under_relaxation), len(control.constants)) == (46, 328)
    assert list(control.under_relaxation)[:3] == ["kU", "kV", "kW"]
    assert isinstance(control.constants, collections.abc.Mapping)
    assert "kU" in control.constants and "nonsense" not in control.constants
    assert control.constants == control.constants and control.constants != control.original_constants
    assert pickle.loads(pickle.dumps(control.under_relaxation)) == dict(control.under_relaxation)


@pytest.mark.parametrize(
    "key, error",
    [("nonsense", KeyError), ("kNone", KeyError), ("kSlipNode", KeyError), (0, ValueError), (329, ValueError),
     (-1, ValueError), (2**70, ValueError), (1.0, TypeError), (None, TypeError)],
)
def test_wrong_keys(key: Any, error: type) -> None:
    constants = ControlFile().constants
    with pytest.raises(error):
        constants[key]
    with pytest.raises(error):
        constants[key] = 1.0


def test_original_constants_stay() -> None:
    with pytest.raises(TypeError, match="can't be changed"):
        ControlFile().original_constants["kU"] = 1.0


def test_records_are_changed_in_place_and_outlive_the_file() -> None:
    control = ControlFile()
    control.smoke.on = True
    control.sequential_solver.variable = "kT"
    control.solution_control["kU"].tolerance = 1e-3
    assert control.smoke.on and control.smoke == Smoke(on=True)
    assert control.solution_control[1] == SolutionControl(tolerance=1e-3)
    control.smoke = Smoke(number2=5.0)
    assert control.smoke.number2 == 5 and not control.smoke.on
    control.solution_control["kP"] = SolutionControl(integer1=3)
    record = control.solution_control["kP"]
    del control
    assert record.integer1 == 3
    assert repr(Smoke()) == "Smoke(on=False, number2=21000.0, number3=3.0, number4=0.05)"


@pytest.mark.parametrize(
    "act",
    [
        lambda: Smoke(nonsense=1),  # type: ignore[call-arg]
        lambda: setattr(Smoke(), "on", 1),
        lambda: setattr(Smoke(), "number2", "1"),
        lambda: Smoke(on="yes"),  # type: ignore[arg-type]
        lambda: setattr(SolutionControl(), "integer1", 1.5),
        lambda: setattr(SolutionControl(), "integer1", 2**40),
        lambda: setattr(ControlFile(), "equations", [1, 2]),
        lambda: ControlFile().equations[5],
        lambda: ControlFile().solution_control[25],
        lambda: ControlFile().solution_control["kT2"],
        lambda: ControlFile().under_relaxation[47],
        lambda: setattr(ControlFile(), "smoke", None),
        lambda: setattr(ControlFile(), "smoke", SolutionControl()),
        lambda: setattr(ControlFile(), "materials", []),
    ],
)
def test_wrong_values(act: Any) -> None:
    with pytest.raises((TypeError, ValueError, KeyError, IndexError, RuntimeError)):
        act()


def test_flags(tmp_path: pathlib.Path) -> None:
    control = ControlFile()
    control.flags.append(Flag("a", 1))
    control.flags.append(Flag("b", 0.001))
    control.flags.append(Flag("a", "x"))
    assert control.flags["a"].value == "1" and control.flags[2].value == "x" and control.flags.names() == ["a", "b", "a"]
    assert (control.flags["b"].value_as_float, control.flags["a"].value_as_int) == (0.001, 1)
    control.flags["b"].value = 5
    held = control.flags[0]
    del control.flags[0]
    held.name = "held"
    assert control.flags.names() == ["b", "a"] and held == Flag("held", "1")
    control.save(tmp_path / "a.ctl")
    assert ControlFile.load(tmp_path / "a.ctl").flags == control.flags
    with pytest.raises(KeyError):
        control.flags["nonsense"]
    with pytest.raises(IndexError):
        control.flags[2]
    with pytest.raises(TypeError):
        Flag("a", None)  # type: ignore[arg-type]
    with pytest.raises(ValueError):
        Flag("a", 2**40)


def test_materials_are_saved(tmp_path: pathlib.Path) -> None:
    control = ControlFile()
    control.materials.append(Material(name="Water", id=1))
    control.save(tmp_path / "a.ctl")
    assert "Water" in (tmp_path / "a.ctl").read_text()
    assert len(ControlFile.load(tmp_path / "a.ctl").materials) == 0


def test_a_wrong_number_of_flags_is_a_file_error(tmp_path: pathlib.Path) -> None:
    control = ControlFile()
    control.flags.append(Flag("a", 1))
    control.save(tmp_path / "a.ctl")
    text = (tmp_path / "a.ctl").read_text()
    cases: list[list[str]] = [[], ["a 1", "b 2", "c 3"], ["a 1"] * 12]
    for flags in cases:
        (tmp_path / "a.ctl").write_text(text.replace("\na 1", "".join("\n" + flag for flag in flags)))
        before = (tmp_path / "a.ctl").read_bytes()
        with pytest.raises(FileError, match="flag-count"):
            ControlFile.load(tmp_path / "a.ctl")
        loaded = ControlFile.load(tmp_path / "a.ctl", strict=False)
        assert [f"{flag.name} {flag.value}" for flag in loaded.flags] == flags
        assert (tmp_path / "a.ctl").read_bytes() == before and loaded.path == tmp_path / "a.ctl"
    (tmp_path / "a.ctl").write_bytes(text.replace("\na 1", "").encode("utf-16"))
    with pytest.raises(FileError, match="flag-count"):
        ControlFile.load(tmp_path / "a.ctl", strict=False)


def test_errors_of_files(tmp_path: pathlib.Path) -> None:
    ControlFile(title="Cavity").save(tmp_path / "a.ctl")
    text = (tmp_path / "a.ctl").read_text()
    (tmp_path / "a.ctl").write_text(text.replace("kU 0.5", "kU half"))
    with pytest.raises(FileError, match="relaxation/kU/under"):
        ControlFile.load(tmp_path / "a.ctl")
    assert ControlFile.load(tmp_path / "a.ctl", strict=False).under_relaxation["kU"] == 0


def test_copies() -> None:
    control = ControlFile(title="Cavity")
    control.flags.append(Flag("a", 1))
    control.materials.append(Material(name="Water"))
    control.smoke.on = True
    for copied in (copy.copy(control), copy.deepcopy(control), pickle.loads(pickle.dumps(control))):
        assert copied == control
        copied.flags[0].value = 2
        assert copied != control and control.flags[0].value == "1"
    assert pickle.loads(pickle.dumps(control.smoke)) == control.smoke
    assert pickle.loads(pickle.dumps(control.flags)) == control.flags
    other: object = nereofile.Configuration()
    assert control != other
