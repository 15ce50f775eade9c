"""Uses of every class and function of the package, to be repeated. They work in a folder with the samples."""

from __future__ import annotations

import copy
import pathlib
import pickle
from typing import Any, Callable, Dict, Iterable, List, Type

import numpy as np

import nereofile
from nereofile import (
    AutoConvergence,
    AutoYPlus,
    BoundaryCondition,
    BoundaryConditions,
    Configuration,
    ControlFile,
    FileError,
    Flag,
    Flags,
    GeometryBoundary,
    Inflation,
    Material,
    MaterialDatabase,
    Property,
    SequentialSolver,
    Smoke,
    SolutionControl,
    ThermalComfort,
)


def look_at(thing: Any) -> Any:
    """Asks for all that it tells without arguments, of itself and of its items."""
    for name in dir(type(thing)):
        if not name.startswith("_"):
            getattr(thing, name)
    repr(thing), str(thing), thing == thing, thing != 1
    if hasattr(thing, "_repr_html_"):
        thing._repr_html_()
    if hasattr(thing, "__len__"):
        assert len(list(thing)) == len(thing)
    return thing


def copied(thing: Any) -> Any:
    """It, after a look at it and at its copies."""
    assert look_at(thing) == copy.copy(thing) == copy.deepcopy(thing) == pickle.loads(pickle.dumps(thing))
    return thing


def raised(error: Type[BaseException], *acts: Callable[[], object]) -> None:
    for act in acts:
        try:
            act()
        except error as found:
            str(found), repr(found)
        else:
            raise AssertionError("nothing is raised")


def use_list(made: Any, items: List[Any]) -> None:
    """All that a list does."""
    made.extend([*items, *items])
    made[0:2] = reversed(made)
    made[::2] = made[::-2]
    made.insert(1, items[0])
    made[1] = made.pop()
    made.reverse()
    made.remove(items[0])
    assert items[1] in made and made.count(items[1]) and made.index(items[1]) >= 0
    copied(made)
    del made[0], made[1:]
    raised(IndexError, lambda: made[99], lambda: made.pop(99))
    raised(TypeError, lambda: made.append(None), lambda: made.__setitem__(slice(0, 1), [None]), lambda: made[made:2])
    raised(ValueError, lambda: made.__setitem__(slice(0, 1, 2), []), lambda: made[::0])
    made.clear()


def use_record(make: Callable[..., Any], **fields: Any) -> None:
    record = copied(make())
    for name, value in fields.items():
        setattr(record, name, value)
    assert record == make(**fields)
    raised(TypeError, lambda: make(nonsense=1), lambda: make(1), lambda: setattr(record, next(iter(fields)), None))


def use_configuration() -> None:
    made = copied(Configuration({"MaxIter": 5}, Width=7))
    made.save("b.xml")
    assert Configuration.load("b.xml") == made
    Configuration.load("solver.cfg", strict=False).save("b.cfg")
    made.take_command_line(["solver", "job", "-MaxIter", "6"])
    made.set_text("MaxIter", made.text("MaxIter"))
    made["StopTime"], made["JobPrefix"] = 3, "job"
    made.version = made.version
    del made["MaxIter"]
    made.reset("MaxIter")
    made.update({"Width": made.pop("Width")})
    raised(KeyError, lambda: made["nonsense"], lambda: made.__setitem__("nonsense", 1), lambda: made.reset("nonsense"))
    raised(TypeError, lambda: made.__setitem__("MaxIter", "a"), lambda: made.__setitem__("StopTime", None))
    raised(ValueError, lambda: made.__setitem__("MaxIter", 2**40), lambda: made.take_command_line([]))
    raised(FileError, lambda: Configuration.load("missing"), lambda: made.save("missing/a.xml"))
    made.reset()
    made.clear()


def use_property() -> None:
    made = Property("viscosity", 1.5)
    made.variation_type, made.independent_variable = "piecewise_linear", "kT"
    made.points = np.array([[273.0, 2.0], [293.0, 1.0]])
    made.points = [(1.0, 2.0)]
    made.add_point(2.0, 3.0)
    made.remove_point(0)
    made.value += len(copied(made).points)
    made.independent_variable = None
    made.clear_points()
    raised(ValueError, lambda: Property("nonsense"), lambda: setattr(made, "points", [1.0]))
    raised(IndexError, lambda: made.remove_point(7))
    raised(TypeError, lambda: setattr(made, "points", "text"), lambda: setattr(made, "value", None))


def use_material() -> None:
    made = copied(Material("fluid", name="Water", id=1))
    made["density"] = 998.2
    made["density"] = Property("density", 5.0)
    made.property("torque").value = 3
    made.name, made.id, made.environment_type = "Ice", 2, 1
    for name in ("ref_pressure", "ref_temperature", "ref_compressibility", "vapor_pressure", "gas_constant",
                 "diffusion_coefficient"):
        setattr(made, name, 1.0)
    for prop in made.values():
        prop.value = 1.0
    assert made.get("nonsense") is None and "density" in made and made.items()
    raised(KeyError, lambda: made["nonsense"])
    raised(TypeError, lambda: made.__setitem__("density", "thick"))
    raised(ValueError, lambda: made.__setitem__("viscosity", Property("density")), lambda: made[999])


def use_database() -> None:
    made = MaterialDatabase.load("materials.xml", strict=False)
    made.version = made.version
    made.save("b.xml")
    assert made[0].name in made and made[made.names()[0]] is made[0]
    made[made[0].name] = made[0]
    del made[made[0].name]
    raised(KeyError, lambda: made["nonsense"])
    raised(FileError, lambda: MaterialDatabase.load("missing"), lambda: MaterialDatabase.load("cavity.res"))
    use_list(made, [Material(name="Water"), Material("solid", name="Ice")])


def use_flag() -> None:
    made = copied(Flag("a", 1))
    made.name = "b"
    for value in (1, 0.5, "text"):
        made.value = value
    raised(TypeError, lambda: setattr(made, "value", None))
    raised(ValueError, lambda: setattr(made, "value", 2**40))


def use_flags() -> None:
    flags = ControlFile().flags
    flags.append(Flag("a"))
    assert flags.names() == ["a"] and "a" in flags
    flags["a"] = Flag("b")
    del flags["b"]
    raised(KeyError, lambda: flags["nonsense"])
    use_list(flags, [Flag("a", 1), Flag("b", 2)])


def use_condition() -> None:
    made = copied(BoundaryCondition("kU", 1.5, 3, 2, [1.0, 2.0]))
    made.value, made.entity_id, made.time_curve_id, made.extra_values = 1, 2, 3, (4, 5)
    made.add_extra_value(3)
    made.set_extra_value(0, 5)
    made.remove_extra_value(-2)
    made.clear_extra_values()
    raised(KeyError, lambda: BoundaryCondition("nonsense"))
    raised(ValueError, lambda: BoundaryCondition(362))
    raised(IndexError, lambda: made.remove_extra_value(3), lambda: made.set_extra_value(3, 1.0))


def use_geometry() -> None:
    made = GeometryBoundary("cavity", "RTZ", nereofile.Units.INCH)
    made.conditions.append(BoundaryCondition("kU"))
    made.materials = MaterialDatabase([Material(name="Water")])
    made.job_name, made.product_line, made.version = "job", "product", copied(made).version
    made.coordinate_system, made.units = "XY", 1
    made.save("b.gbi")
    raised(ValueError, lambda: setattr(made, "units", "meter"), lambda: setattr(made, "units", 9))


def use_control() -> None:
    made = ControlFile.load("cavity.ctl")
    made.flags.append(Flag("a", 1))
    made.smoke.on = not made.smoke.on
    for name in dir(type(made)):
        value = getattr(made, name)
        if not name.startswith("_") and isinstance(value, (bool, int, float, str)):
            setattr(made, name, value)
    for name in ("sequential_solver", "auto_convergence", "inflation", "auto_y_plus", "smoke", "thermal_comfort"):
        setattr(made, name, copied(getattr(made, name)))
    made.materials = MaterialDatabase([Material(name="Water")])
    copied(made).save("b.ctl")
    (pathlib.Path("c.ctl")).write_text(pathlib.Path("b.ctl").read_text().replace("\na 1", ""))
    raised(FileError, lambda: ControlFile.load("missing"), lambda: ControlFile.load("c.ctl"))
    assert len(ControlFile.load("c.ctl", strict=False).flags) == len(made.flags) - 1


def use_coded_numbers() -> None:
    control = ControlFile()
    for numbers in (control.constants, control.under_relaxation, control.inertial_relaxation):
        numbers["kU"] = numbers[1] + 1
        numbers.update({"kP": 2.0}, kT=3.0)
        assert dict(look_at(numbers)) == pickle.loads(pickle.dumps(numbers))
        raised(KeyError, lambda: numbers["nonsense"])
        raised(ValueError, lambda: numbers[0], lambda: numbers[999])
        raised(TypeError, lambda: numbers.get(None), lambda: numbers.update({"kP": None}))  # type: ignore
    raised(TypeError, lambda: control.original_constants.__setitem__("kU", 1.0))


def use_solved_variables() -> None:
    solved = ControlFile().solution_control
    solved["kU"].tolerance = 1e-3
    solved["kP"] = SolutionControl(integer1=3)
    assert dict(look_at(solved)) == pickle.loads(pickle.dumps(solved))
    raised(KeyError, lambda: solved["nonsense"])
    raised(ValueError, lambda: solved[25])


def use_equations() -> None:
    control = ControlFile()
    control.equations = [1, 2, 3, 4, 5]
    look_at(control.equations)[0] = 7
    control.equations[1:3] = control.equations[::-1][:2]
    assert tuple(control.equations) == pickle.loads(pickle.dumps(control.equations))
    raised(IndexError, lambda: control.equations[5])
    raised(ValueError, lambda: control.equations.__setitem__(slice(0, 2), [1]))


def use_edit() -> None:
    with nereofile.edit("solver.cfg") as changes:
        changes["MaxIter"] = 7 if changes["MaxIter"] == "6" else 6
        look_at(changes)
        raised(KeyError, lambda: changes["nonsense"])
        raised(ValueError, lambda: changes.__setitem__("MaxIter", "many"))
    changes.save("b.cfg")
    raised(FileError, lambda: nereofile.edit("missing"), lambda: nereofile.edit("cavity.res"))


def stop(done: int, in_all: int) -> bool:
    raise LookupError


def use_results() -> None:
    results = nereofile.read_results("cavity.res", progress=lambda done, in_all: True)
    look_at(results)
    assert copied(results)["kU"].base is not None
    part = nereofile.read_results(pathlib.Path("cavity.res"), ["kP", 1], (66, 130), 10**8, 1.0)
    assert (part["kP"] + part["kU"]).size == 65
    pathlib.Path("bad.res").write_bytes(b"bad")
    raised(FileError, lambda: nereofile.read_results("bad.res"), lambda: nereofile.read_results("missing"))
    raised(KeyError, lambda: nereofile.read_results("cavity.res", ["kT2"]))
    raised(MemoryError, lambda: nereofile.read_results("cavity.res", memory_limit=1))
    raised(LookupError, lambda: nereofile.read_results("cavity.res", progress=stop))
    raised(nereofile.Cancelled, lambda: nereofile.read_results("cavity.res", progress=lambda *_: False))


def use_statistics() -> None:
    look_at(nereofile.statistics("cavity.res", damage=True, progress=lambda done, in_all: None))
    raised(FileError, lambda: nereofile.statistics("solver.cfg"))


def use_check() -> None:
    found = look_at(nereofile.check("cavity.ctl", "cavity.res", "missing"))
    assert look_at(nereofile.check("cavity.ctl", case=True, kind="control")).findings and found.to_json()
    raised(FileError, found.raise_for_errors)
    raised(ValueError, lambda: nereofile.check("cavity.ctl", kind="nonsense"))
    raised(TypeError, lambda: nereofile.check(1))  # type: ignore[arg-type]


def use_diff() -> None:
    look_at(nereofile.diff("cavity.res", "cavity-be.res", relative=1e-3, fields=["kU"], progress=lambda *_: True))
    made = ControlFile(title="Another")
    made.save("b.ctl")
    assert look_at(nereofile.diff("cavity.ctl", "b.ctl")).to_json()
    raised(FileError, lambda: nereofile.diff("cavity.ctl", "cavity.res"), lambda: nereofile.diff("missing", "b.ctl"))
    raised(KeyError, lambda: nereofile.diff("cavity.res", "cavity.res", fields=["nonsense"]))
    raised(LookupError, lambda: nereofile.diff("cavity.res", "cavity-be.res", progress=stop))


def use_inspect() -> None:
    values = look_at(nereofile.inspect("cavity.ctl"))
    assert values["title"].spelling and nereofile.inspect("cavity.res", kind="results").entries
    raised(FileError, lambda: nereofile.inspect("missing"))


def use_names() -> None:
    assert nereofile.name_for_code(nereofile.code_for_name("kP"), prefer_flag_name=True) == "kP"
    raised(KeyError, lambda: nereofile.code_for_name("nonsense"))
    raised(ValueError, lambda: nereofile.name_for_code(362))
    raised(TypeError, lambda: nereofile.name_for_code("a"))  # type: ignore[arg-type]


#: By the public name that each is about.
USES: Dict[str, Callable[[], object]] = {
    "AutoConvergence": lambda: use_record(AutoConvergence, time_average_slope=1.0),
    "AutoYPlus": lambda: use_record(AutoYPlus, integer1=2, number5=1.0),
    "BoundaryCondition": use_condition,
    "BoundaryConditions": lambda: use_list(BoundaryConditions(), [BoundaryCondition("kU"), BoundaryCondition("kP")]),
    "Check": use_check,
    "CodedNumbers": use_coded_numbers,
    "Comparison": use_diff,
    "Configuration": use_configuration,
    "ControlFile": use_control,
    "CoordinateSystem": lambda: copied(nereofile.CoordinateSystem["XY"]),
    "Edit": use_edit,
    "Equations": use_equations,
    "Facts": lambda: copied(nereofile.read_results("cavity.res").facts),
    "Flag": use_flag,
    "Flags": use_flags,
    "GeometryBoundary": use_geometry,
    "Inflation": lambda: use_record(Inflation, switch1=True, integer4=2, number6=1.0),
    "Inspection": use_inspect,
    "Material": use_material,
    "MaterialDatabase": use_database,
    "Property": use_property,
    "Results": use_results,
    "ResultsHeader": lambda: copied(nereofile.results_header("cavity.res")),
    "SequentialSolver": lambda: use_record(SequentialSolver, integer1=3, variable="kT", tolerance=0.5),
    "Smoke": lambda: use_record(Smoke, on=True, number2=1.0),
    "SolutionControl": lambda: use_record(SolutionControl, integer1=3, tolerance=0.5),
    "SolvedVariables": use_solved_variables,
    "Statistics": use_statistics,
    "ThermalComfort": lambda: use_record(ThermalComfort, on=True, number2=1.0),
    "Units": lambda: copied(nereofile.Units.INCH),
    "address_part": lambda: nereofile.address_part("Water/Ice"),
    "check": use_check,
    "code_for_name": use_names,
    "diff": use_diff,
    "edit": use_edit,
    "effective_settings": lambda: nereofile.effective_settings("solver.cfg", ["solver", "job", "-MaxIter", "7"]),
    "inspect": use_inspect,
    "kind_of_file": lambda: [nereofile.kind_of_file(path) for path in ("cavity.res", "missing")],
    "name_for_code": use_names,
    "read_results": use_results,
    "results_header": lambda: raised(FileError, lambda: nereofile.results_header("missing")),
    "statistics": use_statistics,
}

#: Functions that only hand plain arrays to other libraries, which keep what they like.
OTHERS_LIBRARIES = ("open_series", "plot_differences", "plot_distribution", "plot_history", "plot_property")


def public_callables() -> Iterable[str]:
    """The public names that need a use: what isn't a plain record, which functions give, or an exception."""
    for name in nereofile.__all__:
        value = getattr(nereofile, name)
        is_exception = isinstance(value, type) and issubclass(value, Exception)
        if callable(value) and not is_exception and value.__module__ != "nereofile._records":
            yield name
