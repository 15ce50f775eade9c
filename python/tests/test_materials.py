"""Materials, their properties, and databases."""

import copy
import pathlib
import pickle
from typing import Any, Callable, List

import numpy as np
import pytest

from nereofile import FileError, Material, MaterialDatabase, Property


def water() -> Material:
    material = Material("fluid", name="Water", id=1)
    material["density"] = 998.2
    material.ref_temperature = 293.15
    return material


def test_a_material_is_a_mapping_of_properties() -> None:
    material = water()
    assert (material.type, material.name, material.id, material.ref_temperature) == ("fluid", "Water", 1, 293.15)
    assert "density" in material and len(material) == len(list(material)) == len(material.keys())
    assert material["density"].value == 998.2 and material[25] == material["density"]
    assert material["density"].type == "density" and material["density"].code == 25
    assert (material.fluid_flag, Material('no_type').resist_flag, Material.INVALID_ID) == (1, 13, 0)
    with pytest.raises(KeyError):
        material["nonsense"]
    with pytest.raises(KeyError):
        material["torque"]
    with pytest.raises(ValueError):
        material[999]


def test_a_property_that_is_not_there_is_added() -> None:
    material = Material("internal_fan")
    assert len(material) == 0
    material.property("density").value = 1.5
    assert list(material) == ["density"] and material["density"].type == "" and material["density"].code is None
    material["density"] = Property("density", 2.5)
    assert material["density"].type == "density"
    with pytest.raises(KeyError):
        material.property("nonsense")
    with pytest.raises(ValueError, match="another place"):
        material["viscosity"] = Property("density")
    with pytest.raises(TypeError, match="str"):
        material["viscosity"] = "thick"  # type: ignore[assignment]


def test_properties_outlive_their_material() -> None:
    density = water()["density"]
    density.value = 5
    assert density.value == 5


def test_properties_vary() -> None:
    viscosity = Property("viscosity")
    assert (viscosity.variation_type, viscosity.independent_variable) == ("constant", None)
    viscosity.variation_type = "piecewise_linear"
    viscosity.independent_variable = "kT"
    viscosity.points = np.array([[273.0, 2.0], [293.0, 1.0]])
    viscosity.add_point(313, 0.5)
    assert viscosity.points.tolist() == [[273, 2], [293, 1], [313, 0.5]] and viscosity.points.dtype == np.float64
    viscosity.remove_point(-1)
    assert len(viscosity.points) == 2 and viscosity.independent_variable == "kT"
    assert viscosity.variation_code == 15
    viscosity.independent_variable = 4
    assert viscosity.independent_variable == "kP"
    with pytest.raises(ValueError, match="read-only"):
        viscosity.points[0, 0] = 1
    viscosity.clear_points()
    assert viscosity.points.shape == (0, 2)


WRONG = [
    (lambda p: setattr(p, "variation_type", "nonsense"), ValueError),
    (lambda p: setattr(p, "independent_variable", "nonsense"), KeyError),
    (lambda p: setattr(p, "independent_variable", 362), ValueError),
    (lambda p: setattr(p, "independent_variable", 0), ValueError),
    (lambda p: setattr(p, "points", [1, 2, 3]), ValueError),
    (lambda p: setattr(p, "points", [[1, 2, 3]]), ValueError),
    (lambda p: setattr(p, "points", "points"), Exception),
    (lambda p: p.remove_point(0), IndexError),
    (lambda p: setattr(p, "value", "1"), TypeError),
    (lambda p: Property("nonsense"), ValueError),
]


@pytest.mark.parametrize("act, error", WRONG)
def test_wrong_properties(act: Any, error: type) -> None:
    prop = Property("density")
    with pytest.raises(error):
        act(prop)
    assert prop == Property("density")


def test_a_database_is_a_sequence_with_names() -> None:
    ice = Material("solid", name="Ice")
    database = MaterialDatabase([water(), ice])
    assert len(database) == 2 and database.names() == ["Water", "Ice"]
    assert database["Ice"] is database[1] is database[-1] is ice
    assert "Ice" in database.names() and ice in database and "Steam" not in database.names()
    assert database[::-1] == [ice, database[0]] and list(reversed(database))[0] is ice
    names: Any = database  # a sequence of materials, which names find too
    assert "Ice" in names and "Steam" not in names and 3 not in names
    with pytest.raises(KeyError):
        database["Steam"]
    for index in (2, -3, 2**70):
        with pytest.raises((IndexError, TypeError)):
            database[index]
    with pytest.raises(TypeError):
        database.append(None)  # type: ignore[arg-type]


def test_a_database_is_changed_as_a_list() -> None:
    database = MaterialDatabase()
    database.append(water())
    database.insert(0, Material("solid", name="Ice"))
    database.extend([Material(name="Oil")])
    database += [Material(name="Air")]
    assert database.names() == ["Ice", "Water", "Oil", "Air"]
    assert database.index(database["Oil"]) == 2
    database[0] = Material("solid", name="Steel")
    database["Oil"] = Material(name="Fat")
    del database["Air"]
    assert database.pop().name == "Fat" and database.names() == ["Steel", "Water"]
    database.reverse()
    database.remove(database["Steel"])
    del database[0]
    assert len(database) == 0
    acts: List[Callable[[], object]] = [database.pop, lambda: database[0], lambda: database.__delitem__(0)]
    for act in acts:
        with pytest.raises(IndexError):
            act()


def test_a_material_is_the_one_that_was_put_in() -> None:
    material = water()
    database = MaterialDatabase([material])
    material["density"].value = 7
    database["Water"].name = "Sea"
    assert database["Sea"]["density"].value == 7 and material.name == "Sea"
    database.clear()
    assert material.name == "Sea"


def test_files(folder: pathlib.Path) -> None:
    database = MaterialDatabase([water(), Material("solid", name="Ice", id=2)])
    database.save("a.xml")
    loaded = MaterialDatabase.load(pathlib.Path("a.xml"))
    assert loaded == database and loaded.path == pathlib.Path("a.xml")
    assert len(MaterialDatabase.load("materials.xml", strict=False)) > 1
    assert MaterialDatabase(loaded) == loaded  # the version of a new one is that of the library


def test_errors_of_files(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.xml"
    path.write_text(
        '<material_database version="1.0.0.0"><material type="fluid"><name>Water</name>'
        '<property type="colour"/></material></material_database>'
    )
    with pytest.raises(FileError) as caught:
        MaterialDatabase.load(path)
    assert "error" in {finding.severity for finding in caught.value.findings}
    assert isinstance(MaterialDatabase.load(path, strict=False), MaterialDatabase)
    path.write_text("<material_database>")
    with pytest.raises(FileError, match="malformed-xml"):
        MaterialDatabase.load(path)


def test_copies() -> None:
    database = MaterialDatabase([water()])
    for copied in (copy.copy(database), copy.deepcopy(database), pickle.loads(pickle.dumps(database))):
        assert copied == database
        copied["Water"]["density"] = 1.0
        assert copied != database and copied["Water"] != database["Water"]
    assert pickle.loads(pickle.dumps(water()["density"])) == water()["density"]
    assert repr(water()) == "Material('fluid', name='Water', id=1)"
