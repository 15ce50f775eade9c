"""Whatever a class can hold comes back from a copy, from a pickle, and from a file where its format carries it; and
whatever bytes stand in a file, loading it ends with an object or an exception.
"""

from __future__ import annotations

import copy
import pathlib
import pickle
import tempfile
from typing import Any, Callable, List

import pytest

pytest.importorskip("hypothesis")

import numpy as np  # noqa: E402
from hypothesis import HealthCheck, given, settings  # noqa: E402
from hypothesis import strategies as st  # noqa: E402
from made_results import results_bytes  # noqa: E402

import nereofile  # noqa: E402
from nereofile import (  # noqa: E402
    BoundaryCondition,
    Configuration,
    ControlFile,
    Flag,
    GeometryBoundary,
    Material,
    MaterialDatabase,
    Property,
)

settings.register_profile(
    "brief", deadline=None, max_examples=60, derandomize=True, database=None, suppress_health_check=list(HealthCheck)
)
settings.load_profile("brief")

SAMPLES = pathlib.Path(__file__).parents[2] / "samples"
# The codes of the constants that are records in files.
RECORDS = {nereofile.field_variables[name] for name in ("kInflate", "kAutoYP", "kSmokeOn", "kThComfOn")}
integers = st.integers(-(2**31), 2**31 - 1)
numbers = st.floats(allow_nan=False)
short_numbers = st.integers(-99999, 99999).map(float)  # which six digits carry
any_text = st.text(st.characters(blacklist_categories=["Cs"]), max_size=20)
plain_text = st.text(st.characters(whitelist_categories=["Lu", "Ll", "Nd"], max_codepoint=0x24F), min_size=1, max_size=12)
all_types = st.sampled_from(sorted(nereofile.material_types))
variables = st.sampled_from(sorted(nereofile.field_variables))


@st.composite
def properties(draw: Callable[..., Any]) -> Property:
    made = Property(draw(st.sampled_from(sorted(nereofile.property_types))), draw(numbers))
    made.variation_type = draw(st.sampled_from(sorted(nereofile.variation_types)))
    made.independent_variable = draw(st.none() | variables)
    made.points = draw(st.lists(st.tuples(numbers, numbers), max_size=4))
    return made


@st.composite
def materials(
    draw: Callable[..., Any], texts: Any = any_text, values: Any = numbers, types: Any = all_types
) -> Material:
    made = Material(draw(types), name=draw(texts), id=draw(integers))
    made.ref_pressure, made.gas_constant = draw(values), draw(values)
    for key in list(made):
        made[key] = draw(values)
    return made


@st.composite
def configurations(draw: Callable[..., Any], texts: Any = any_text) -> Configuration:
    made = Configuration()
    by_type = {int: integers, float: numbers, str: texts}
    for key in draw(st.lists(st.sampled_from(sorted(made)), max_size=8)):
        made[key] = draw(by_type[type(Configuration()[key])])
    return made


@st.composite
def conditions(draw: Callable[..., Any]) -> BoundaryCondition:
    return BoundaryCondition(
        draw(st.integers(0, 361)), draw(numbers), draw(integers), draw(integers), draw(st.lists(numbers, max_size=3))
    )


def fields_of(make: Callable[[], Any], values: Any, texts: Any) -> Any:
    """Records whose fields have values of their types."""
    by_type = {bool: st.booleans(), int: integers, float: values, str: texts}
    default = make()
    names = [name for name in dir(make) if not name.startswith("_")]
    return st.fixed_dictionaries({name: by_type[type(getattr(default, name))] for name in names}).map(
        lambda fields: make(**fields)
    )


# By the names that a control file has them under.
RECORD_TYPES: "dict[str, Callable[..., Any]]" = {
    "sequential_solver": nereofile.SequentialSolver, "auto_convergence": nereofile.AutoConvergence,
    "inflation": nereofile.Inflation, "auto_y_plus": nereofile.AutoYPlus, "smoke": nereofile.Smoke,
    "thermal_comfort": nereofile.ThermalComfort,
}
records = st.one_of(
    fields_of(nereofile.SolutionControl, numbers, any_text),
    *(fields_of(make, numbers, any_text) for make in RECORD_TYPES.values()),
)


@st.composite
def controls(draw: Callable[..., Any], texts: Any = any_text, values: Any = numbers) -> ControlFile:
    made = ControlFile(title=draw(texts))
    made.units, made.time_step_size = draw(integers), draw(values)
    made.equations = draw(st.lists(integers, min_size=5, max_size=5))
    for key in draw(st.lists(st.integers(223, 328).filter(lambda code: code not in RECORDS), max_size=4)):
        made.constants[key] = draw(values)
    for key in draw(st.lists(st.integers(1, 15), max_size=4)):
        made.under_relaxation[key] = draw(values)
        made.solution_control[key].integer1 = draw(integers)
    for name in draw(st.lists(st.sampled_from(sorted(RECORD_TYPES)), unique=True)):
        setattr(made, name, draw(fields_of(RECORD_TYPES[name], values, texts)))
    made.stop_time, made.transient_form, made.number_of_time_steps = draw(values), draw(integers), draw(integers)
    made.auto_conv_on, made.auto_stop_on = draw(st.booleans()), draw(st.booleans())
    for name, value in draw(st.lists(st.tuples(texts, texts), max_size=3)):
        made.flags.append(Flag(name, value))
    return made


@st.composite
def geometries(draw: Callable[..., Any]) -> GeometryBoundary:
    made = GeometryBoundary(
        draw(any_text), draw(st.sampled_from(list(nereofile.CoordinateSystem))), draw(st.sampled_from(list(nereofile.Units)))
    )
    made.conditions.extend(draw(st.lists(conditions(), max_size=3)))
    made.materials.extend(draw(st.lists(materials(), max_size=2)))
    return made


databases = st.lists(materials(), max_size=3).map(MaterialDatabase)
flags = st.builds(Flag, any_text, any_text | integers | numbers)


lists = st.lists(flags).map(nereofile.Flags) | st.lists(conditions()).map(nereofile.BoundaryConditions)


@given(
    st.one_of(
        properties(), materials(), databases, configurations(), conditions(), controls(), geometries(), flags, records, lists
    )
)
def test_copies_and_pickles(made: Any) -> None:
    assert copy.copy(made) == copy.deepcopy(made) == pickle.loads(pickle.dumps(made)) == made
    assert repr(made)


def saved(made: Any, name: str) -> pathlib.Path:
    path = pathlib.Path(tempfile.mkdtemp()) / name
    made.save(path)
    return path


@pytest.mark.parametrize("name", ["a.xml", "a.cfg"])
def test_configuration_files(name: str) -> None:
    @given(configurations(texts=plain_text))
    def check(made: Configuration) -> None:
        assert Configuration.load(saved(made, name)) == made

    check()


@given(st.lists(materials(plain_text, short_numbers, types=st.just("fluid")), max_size=3).map(MaterialDatabase))
def test_material_files(made: MaterialDatabase) -> None:
    loaded = MaterialDatabase.load(saved(made, "a.xml"))
    assert [material.name for material in loaded] == [material.name for material in made]
    assert loaded == made


@given(controls(texts=plain_text, values=short_numbers))
def test_control_files(made: ControlFile) -> None:
    loaded = ControlFile.load(saved(made, "a.ctl"))
    loaded.auto_conv_on, loaded.auto_stop_on = made.auto_conv_on, made.auto_stop_on  # which a load leaves as they were
    loaded.auto_convergence = made.auto_convergence
    assert loaded == made


@given(geometries())
def test_geometry_files_are_written(made: GeometryBoundary) -> None:
    assert saved(made, "a.gbi").stat().st_size > 0


@given(
    st.lists(st.lists(st.floats(width=64), min_size=2, max_size=2), min_size=1, max_size=6),
    st.sampled_from("<>"),
    st.randoms(use_true_random=False),
)
def test_results(rows: List[List[float]], order: str, random: Any) -> None:
    nodes = list(range(1, len(rows) + 1))
    random.shuffle(nodes)
    path = pathlib.Path(tempfile.mkdtemp()) / "a.res"
    values = np.array(rows, dtype=float)
    path.write_bytes(results_bytes(values, order=order, nodes=nodes))
    loaded = nereofile.read_results(path)
    for column, name in enumerate(("kU", "kP")):
        expected = np.empty(len(rows))
        expected[np.array(nodes) - 1] = values[:, column]
        np.testing.assert_array_equal(loaded[name], expected)
    for copied in (copy.copy(loaded), copy.deepcopy(loaded), pickle.loads(pickle.dumps(loaded))):
        assert copied.facts == loaded.facts and copied.nodes == loaded.nodes and not copied["kU"].flags.writeable
        np.testing.assert_array_equal(copied["kP"], loaded["kP"])


LOADS: "dict[str, List[Callable[[pathlib.Path], object]]]" = {
    "cavity.ctl": [lambda path: ControlFile.load(path, strict=False), ControlFile.load],
    "materials.xml": [lambda path: MaterialDatabase.load(path, strict=False), MaterialDatabase.load],
    "solver.cfg": [lambda path: Configuration.load(path, strict=False), Configuration.load],
    "NEREO2_default.xml": [lambda path: Configuration.load(path, strict=False), Configuration.load],
    "cavity.res": [
        nereofile.results_header,
        lambda path: nereofile.statistics(path, damage=True),
        lambda path: nereofile.read_results(path, strict=False, memory_limit=50_000_000),
    ],
}


@pytest.mark.parametrize("name", sorted(LOADS))
def test_damaged_files(name: str) -> None:
    whole = (SAMPLES / name).read_bytes()[:8000]

    @given(st.lists(st.tuples(st.integers(0, len(whole) - 1), st.binary(max_size=6), st.integers(0, 6)), max_size=4),
           st.none() | st.integers(0, len(whole)))
    def load(changes: "list[tuple[int, bytes, int]]", end: Any) -> None:
        data = whole[:end]
        for place, inserted, removed in changes:
            data = data[:place] + inserted + data[place + removed :]
        path = pathlib.Path(tempfile.mkdtemp()) / name
        path.write_bytes(data)
        found = nereofile.check(path)
        for read in LOADS[name]:
            try:
                read(path)
            except (nereofile.FileError, MemoryError):
                pass
        assert repr(found) and nereofile.diff(path, path).same if found[0].kind else True

    load()
