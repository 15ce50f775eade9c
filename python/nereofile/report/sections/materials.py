"""Materials: of the databases, of the control files and of the geometry and boundary files."""

from __future__ import annotations

import dataclasses
from typing import Any, Dict, Iterable, List, Mapping, Optional, Sequence, Tuple

from .._context import Context
from ..._nereofile import Material, MaterialDatabase
from ..._records import Item
from ...checking import inspect
from ...errors import FileError
from ...vocabulary import material_types, property_types, variation_types
from .conditions import BoundaryFile
from .settings import _plain

MOST_POINTS = 100
MOST_POINTS_OF_CURVE = 60
MOST_LISTED_POINTS = 20_000
MOST_SHOWN = 200
MOST_ROWS = 12_000
MOST_COLUMNS = 4

_REFERENCES = (
    "ref_pressure",
    "ref_temperature",
    "ref_compressibility",
    "vapor_pressure",
    "gas_constant",
    "diffusion_coefficient",
)

Point = Tuple[float, float]


@dataclasses.dataclass(frozen=True)
class PropertyOfMaterial:
    """A property: a value, or a curve over a variable.

    ``curve`` is as much of it as a drawing needs, ``points`` the first MOST_POINTS where the page lists them.
    """

    name: str
    display_name: str
    variation: str
    value: Optional[float]
    variable: str
    point_count: int
    points: Tuple[Point, ...]
    curve: Tuple[Point, ...]
    is_constant: bool


@dataclasses.dataclass(frozen=True)
class MaterialInFile:
    """A material, by the file that has it. ``users`` names the files of the case that use it."""

    file: str
    place: int
    name: str
    type: str
    id: int
    references: Tuple[Tuple[str, float], ...]
    properties: Tuple[PropertyOfMaterial, ...]
    users: Tuple[str, ...] = ()
    is_shown: bool = False

    def property(self, name: str) -> Optional[PropertyOfMaterial]:
        """The property of a name."""
        return next((prop for prop in self.properties if prop.name == name), None)


@dataclasses.dataclass(frozen=True)
class MaterialFile:
    """The materials of a file. ``columns`` are the properties that most of them say something of."""

    name: str
    problem: Optional[str]
    count: int
    columns: Tuple[Tuple[str, str], ...]
    materials: Tuple[MaterialInFile, ...]
    is_database: bool = True


@dataclasses.dataclass(frozen=True)
class Materials:
    """The materials of a case, file by file. ``shown_count`` of them are there with all that they have."""

    files: Tuple[MaterialFile, ...]
    count: int
    shown_count: int

    @property
    def curve_count(self) -> int:
        """How many curves there are to draw."""
        shown = (material for file in self.files for material in file.materials if material.is_shown)
        return sum(1 for material in shown for prop in material.properties if prop.point_count > 1)

    def used_by(self, file: str) -> List[MaterialInFile]:
        """The materials that a file uses, where the page shows them."""
        return [row for one in self.files for row in one.materials if row.is_shown and file in row.users]

    def place_of(self, name: str, id: int) -> Optional[MaterialInFile]:
        """The material that a file means by a name and a number, where the page shows it."""
        shown = [material for file in self.files for material in file.materials if material.is_shown]
        named = [material for material in shown if material.name == name]
        return next((material for material in named if material.id == id), named[0] if named else None)


def materials(context: Context, boundaries: Sequence[BoundaryFile]) -> Materials:
    """The materials of a case. Those of control files count where no database has one of the name."""
    databases = context.case.described("materials")
    files = [_database(context, file.path, file.name) for file in databases]
    named = {material.name for file in files for material in file.materials}
    users: Dict[str, List[str]] = {}
    for file in context.case.described("control"):
        found = _of_control(file.path, file.name)
        for material in found.materials:
            users.setdefault(material.name, []).append(file.name)
        own = tuple(material for material in found.materials if material.name not in named)
        if own:
            files.append(dataclasses.replace(found, count=len(own), materials=own, is_database=False))
    for boundary in boundaries:
        for used in boundary.materials:
            users.setdefault(used.name, []).append(boundary.name)
    return _with_places(files, users)


def _with_places(files: Sequence[MaterialFile], users: Mapping[str, Sequence[str]]) -> Materials:
    """All materials numbered, those in use and the first of the others shown with all that they have."""
    all_materials = [material for file in files for material in file.materials]
    by_use = sorted(range(len(all_materials)), key=lambda i: all_materials[i].name not in users)
    shown = set(by_use[:MOST_SHOWN])
    place = 0
    room = MOST_LISTED_POINTS
    placed = []
    for file in files:
        rows = []
        for material in file.materials:
            names = tuple(dict.fromkeys(users.get(material.name, ())))
            properties = []
            for prop in material.properties:
                listed = prop.points if place in shown and len(prop.points) <= room else ()
                room -= len(listed)
                properties.append(prop if listed == prop.points else dataclasses.replace(prop, points=listed))
            rows.append(
                dataclasses.replace(
                    material, place=place + 1, users=names, is_shown=place in shown, properties=tuple(properties)
                )
            )
            place += 1
        placed.append(dataclasses.replace(file, materials=tuple(rows), columns=_columns(rows)))
    return Materials(tuple(placed), sum(file.count for file in files), len(shown))


def _columns(rows: Iterable[MaterialInFile]) -> Tuple[Tuple[str, str], ...]:
    counts: Dict[str, int] = {}
    names: Dict[str, str] = {}
    for material in rows:
        for prop in material.properties:
            if prop.value == 0:  # as a new material has it
                continue
            counts[prop.name] = counts.get(prop.name, 0) + 1
            names[prop.name] = prop.display_name
    frequent = sorted(counts, key=lambda name: -counts[name])[:MOST_COLUMNS]
    return tuple((name, names[name]) for name in frequent)


def _database(context: Context, path: str, name: str) -> MaterialFile:
    try:
        database = MaterialDatabase.load(path, strict=False)
    except (FileError, MemoryError) as error:
        return MaterialFile(name, context.case.placed(str(error)), 0, (), ())
    most = MOST_ROWS // len(context.case.described("materials"))
    rows = tuple(_material(name, database[i]) for i in range(min(len(database), most)))
    return MaterialFile(name, None, len(database), (), rows)


def _material(file: str, material: Material) -> MaterialInFile:
    known = material_types.get(material.type)
    references = [(name, float(getattr(material, name))) for name in _REFERENCES]
    return MaterialInFile(
        file=file,
        place=0,
        name=material.name,
        type=known.display_name if known else material.type,
        id=material.id,
        references=tuple((name, value) for name, value in references if value != 0),
        properties=tuple(_property(material[name]) for name in material),
    )


def _property(prop: Any) -> PropertyOfMaterial:
    known = property_types.get(prop.type)
    variation = variation_types.get(prop.variation_type)
    has_curve = variation == variation_types["piecewise_linear"]
    has_value = prop.variation_type == "" or variation in (variation_types["constant"], variation_types["equation_of_state"])
    points = prop.points if has_curve else ()
    return PropertyOfMaterial(
        name=prop.type,
        display_name=known.display_name if known else prop.type,
        variation=variation.display_name if variation else prop.variation_type,
        value=prop.value if has_value else None,
        variable=prop.independent_variable or "",
        point_count=len(points),
        points=_pairs(points[:MOST_POINTS]),
        curve=_pairs(_thinned(points)),
        is_constant=prop.variation_type in ("constant", ""),
    )


def _pairs(points: Iterable[Any]) -> Tuple[Point, ...]:
    return tuple((float(x), float(y)) for x, y in points)


def _thinned(points: Any) -> List[Any]:
    """Some of the points, the first and the last among them."""
    if len(points) <= MOST_POINTS_OF_CURVE:
        return list(points)
    step = (len(points) - 1) / (MOST_POINTS_OF_CURVE - 1)
    return [points[round(i * step)] for i in range(MOST_POINTS_OF_CURVE)]


def _of_control(path: str, name: str) -> MaterialFile:
    """The materials that stand in a control file, by their addresses."""
    try:
        items = inspect(path, "control").entries
    except (FileError, MemoryError):
        return MaterialFile(name, None, 0, (), ())
    by_material: Dict[str, Dict[str, Item]] = {}
    for item in items:
        section, _, rest = item.address.partition("/")
        if section == "property-settings":
            material, _, value = rest.partition("/")
            by_material.setdefault(material, {})[value] = item
    rows = tuple(_written_material(name, part, values) for part, values in list(by_material.items())[:MOST_ROWS])
    return MaterialFile(name, None, len(by_material), (), rows)


def _written_material(file: str, part: str, values: Mapping[str, Item]) -> MaterialInFile:
    def number(address: str) -> Optional[float]:
        value = values[address].value if address in values else None
        return float(value) if isinstance(value, (int, float)) else None

    properties = []
    for address in values:
        variable, _, what = address.partition("/")
        if what != "variation":
            continue
        points = _written_points(variable, values)
        value = number(f"{variable}/value")
        properties.append(
            PropertyOfMaterial(
                name=variable,
                display_name=variable,
                variation=_variation_by_code(number(address)),
                value=value if not points else None,
                variable=str(values[f"{variable}/independent_variable"].value) if points else "",
                point_count=len(points),
                points=points[:MOST_POINTS],
                curve=_pairs(_thinned(points)),
                is_constant=number(address) == variation_types["constant"].code,
            )
        )
    named = values.get("name")
    return MaterialInFile(
        file=file,
        place=0,
        name=str(named.value) if named and named.value is not None else _plain(part.partition("#")[0]),
        type="Fluid" if number("fluid") else "",
        id=int(number("id") or 0),
        references=tuple((name, value) for name in _REFERENCES for value in [number(name)] if value),
        properties=tuple(properties),
    )


def _written_points(variable: str, values: Mapping[str, Item]) -> Tuple[Point, ...]:
    points: List[Point] = []
    while f"{variable}/points/{len(points) + 1}/x" in values and f"{variable}/points/{len(points) + 1}/y" in values:
        x = values[f"{variable}/points/{len(points) + 1}/x"].value
        y = values[f"{variable}/points/{len(points) + 1}/y"].value
        points.append((float(x or 0), float(y or 0)))
    return tuple(points)


def _variation_by_code(code: Optional[float]) -> str:
    return next((known.display_name for known in variation_types.values() if known.code == code), "")
