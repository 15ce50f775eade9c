"""The geometry and boundary file and its conditions."""

import copy
import pathlib
import pickle
from typing import Any

import pytest

from nereofile import BoundaryCondition, CoordinateSystem, GeometryBoundary, Material, Units, check, inspect


def test_a_file_is_written(tmp_path: pathlib.Path) -> None:
    file = GeometryBoundary(job_name="cavity", coordinate_system="RTZ", units=Units.INCH)
    file.conditions.append(BoundaryCondition("kU", value=1.5, entity_id=3, extra_values=[2, 3]))
    file.conditions.append(BoundaryCondition("kVolumeRate", time_curve_id=2))
    file.materials.append(Material(name="Water", id=1))
    assert file.path is None
    file.save(tmp_path / "a.gbi")
    assert file.path == tmp_path / "a.gbi"
    values = inspect(tmp_path / "a.gbi")
    assert values["job"].value == "cavity" and values["properties/1/name"].value == "Water"
    assert values["conditions/1/value"].value == 1.5 and values["conditions/1/extra/2"].value == 3
    assert check(tmp_path / "a.gbi")


def test_enumerators() -> None:
    file = GeometryBoundary()
    assert (file.coordinate_system, file.units) == (CoordinateSystem.XYZ, Units.METER)
    file.coordinate_system = "XY"
    file.units = 1
    assert (file.coordinate_system, file.units) == (CoordinateSystem.XY, Units.CENTIMETER)
    assert pickle.loads(pickle.dumps(Units.FEET)) is Units.FEET
    wrong: Any
    for wrong in ("meter", 6, -1, 2**70):
        with pytest.raises(ValueError):
            file.units = wrong
    with pytest.raises(TypeError):
        file.units = None  # type: ignore[assignment]


def test_conditions() -> None:
    condition = BoundaryCondition(1)
    assert (condition.name, condition.code, condition.value, condition.entity_id) == ("kU", 1, 0, 0)
    assert (condition.time_curve_id, condition.time_curve_flag, condition.extra_values) == (-1, 0, ())
    condition.time_curve_id = 2
    condition.extra_values = [1.0, 2.0]
    condition.add_extra_value(3)
    condition.set_extra_value(0, 5)
    condition.remove_extra_value(-2)
    assert condition.extra_values == (5, 3) and condition.time_curve_flag == -1
    condition.clear_extra_values()
    assert condition.extra_values == ()
    assert BoundaryCondition("kVolumeRate").name == "kKXX"  # as files have the code of both
    assert BoundaryCondition("kU", 1.5) == BoundaryCondition(1, 1.5) != BoundaryCondition(1)


@pytest.mark.parametrize(
    "act, error",
    [
        (lambda: BoundaryCondition("nonsense"), KeyError),
        (lambda: BoundaryCondition(362), ValueError),
        (lambda: BoundaryCondition(-1), ValueError),
        (lambda: BoundaryCondition(None), TypeError),  # type: ignore[arg-type]
        (lambda: BoundaryCondition(1).set_extra_value(0, 1.0), IndexError),
        (lambda: BoundaryCondition(1).remove_extra_value(-1), IndexError),
        (lambda: BoundaryCondition(1, "1"), TypeError),  # type: ignore[arg-type]
        (lambda: BoundaryCondition(1, extra_values=3), TypeError),  # type: ignore[arg-type]
        (lambda: setattr(BoundaryCondition(1), "entity_id", 2**31), TypeError),
        (lambda: GeometryBoundary().conditions.append(Material()), TypeError),  # type: ignore[arg-type]
        (lambda: GeometryBoundary().conditions[0], IndexError),
    ],
)
def test_wrong_values(act: Any, error: type) -> None:
    with pytest.raises(error):
        act()


def test_copies() -> None:
    file = GeometryBoundary(job_name="cavity")
    file.conditions.append(BoundaryCondition("kU", extra_values=[1.0]))
    file.materials.append(Material(name="Water"))
    for copied in (copy.copy(file), copy.deepcopy(file), pickle.loads(pickle.dumps(file))):
        assert copied == file
        copied.conditions[0].value = 5
        assert copied != file and file.conditions[0].value == 0
    assert pickle.loads(pickle.dumps(file.conditions)) == file.conditions
