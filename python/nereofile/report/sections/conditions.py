"""Boundary conditions: what there is of each quantity, and which entities have the same ones."""

from __future__ import annotations

import dataclasses
import math
from typing import Dict, Iterable, Iterator, List, Optional, Sequence, Tuple

from .._context import Context
from ..._records import Item
from ...checking import inspect
from ...errors import FileError

MOST_LISTED = 100_000
MOST_GROUPS = 500
MOST_QUANTITIES = 400
PAGE = 500


@dataclasses.dataclass
class Condition:
    """A condition on a surface or node set."""

    entity: int = 0
    name: str = ""
    value: Optional[float] = None
    extra: Tuple[float, ...] = ()
    time_curve: int = 0


@dataclasses.dataclass(frozen=True)
class UsedMaterial:
    """A material that a geometry and boundary file names."""

    id: int
    name: str
    fluid: int
    resistance: int


@dataclasses.dataclass(frozen=True)
class Quantity:
    """The conditions of one quantity, by entity. ``listed`` are as many of them as a page has room for."""

    name: str
    count: int
    entity_count: int
    minimum: Optional[float]
    maximum: Optional[float]
    with_extra: int
    with_time_curve: int
    listed: Tuple[Condition, ...]

    @property
    def pages(self) -> List[Tuple[Condition, ...]]:
        """What is listed, a page each."""
        return [self.listed[start : start + PAGE] for start in range(0, len(self.listed), PAGE)]


@dataclasses.dataclass(frozen=True)
class EntityGroup:
    """Entities that have conditions on the same quantities, as ranges of their numbers."""

    entities: str
    entity_count: int
    quantities: Tuple[Tuple[str, int], ...]
    count: int


@dataclasses.dataclass(frozen=True)
class BoundaryFile:
    """A geometry and boundary file: its head, the materials that it names, and its conditions."""

    name: str
    problem: Optional[str]
    facts: Tuple[Tuple[str, str], ...] = ()
    materials: Tuple[UsedMaterial, ...] = ()
    count: int = 0
    entity_count: int = 0
    listed_count: int = 0
    quantities: Tuple[Quantity, ...] = ()
    quantity_count: int = 0
    groups: Tuple[EntityGroup, ...] = ()
    group_count: int = 0

    def fact(self, name: str) -> str:
        """A value of the head, or an empty text."""
        return dict(self.facts).get(name, "")


def boundaries(context: Context) -> Tuple[BoundaryFile, ...]:
    """The geometry and boundary files of a case."""
    files = context.case.described("conditions")
    return tuple(boundary(context, file.path, file.name, MOST_LISTED // len(files)) for file in files)


def boundary(context: Context, path: str, name: str, most_listed: int = MOST_LISTED) -> BoundaryFile:
    """A geometry and boundary file."""
    try:
        items = inspect(path, "geometry-boundary").entries
    except (FileError, MemoryError) as error:
        return BoundaryFile(name, context.case.placed(str(error)))
    conditions = list(_conditions(items))
    groups = _groups(conditions)
    quantities = _quantities(conditions, most_listed)
    return BoundaryFile(
        name=name,
        problem=None,
        facts=tuple((item.address, str(item.value)) for item in items if "/" not in item.address),
        materials=tuple(_materials(items)),
        count=len(conditions),
        entity_count=len({condition.entity for condition in conditions}),
        listed_count=sum(len(quantity.listed) for quantity in quantities),
        quantities=quantities,
        quantity_count=len({condition.name for condition in conditions}),
        groups=tuple(groups[:MOST_GROUPS]),
        group_count=len(groups),
    )


def ranges(numbers: Iterable[int], longest: int = 120) -> str:
    """Numbers as a text: "1–3, 7". One that gets too long ends in an ellipsis."""
    parts: List[str] = []
    length = 0
    for first, last in _runs(sorted(set(numbers))):
        part = str(first) if first == last else f"{first}–{last}"
        length += len(part) + 2
        if length > longest:
            return ", ".join([*parts, "…"])
        parts.append(part)
    return ", ".join(parts)


def _runs(numbers: Sequence[int]) -> Iterator[Tuple[int, int]]:
    start = 0
    for place in range(1, len(numbers) + 1):
        if place == len(numbers) or numbers[place] != numbers[place - 1] + 1:
            yield numbers[start], numbers[place - 1]
            start = place


def _number(item: Item) -> float:
    return float(item.value) if isinstance(item.value, (int, float)) else 0.0


def _records(items: Iterable[Item], of: str) -> Iterator[List[Tuple[str, Item]]]:
    """The items of each record of a list, such as conditions/1, with what is behind its number."""
    prefix = of + "/"
    place = ""
    record: List[Tuple[str, Item]] = []
    for item in items:
        if not item.address.startswith(prefix):
            continue
        number, _, what = item.address[len(prefix) :].partition("/")
        if number != place and record:
            yield record
            record = []
        place = number
        record.append((what, item))
    if record:
        yield record


def _conditions(items: Iterable[Item]) -> Iterator[Condition]:
    for record in _records(items, "conditions"):
        condition = Condition()
        extra = []
        for what, item in record:
            if what == "entity":
                condition.entity = int(_number(item))
            elif what == "name":
                condition.name = str(item.value)
            elif what == "value":
                condition.value = _number(item)
            elif what.startswith("extra/"):
                extra.append(_number(item))
            elif what == "time-curve":
                condition.time_curve = int(_number(item))
        condition.extra = tuple(extra)
        yield condition


def _materials(items: Iterable[Item]) -> Iterator[UsedMaterial]:
    for record in _records(items, "properties"):
        values = dict(record)
        name = values["name"].value if "name" in values else ""
        numbers = [int(_number(values[key])) if key in values else 0 for key in ("id", "fluid", "resistance")]
        yield UsedMaterial(numbers[0], str(name), numbers[1], numbers[2])


def _quantities(conditions: Iterable[Condition], room: int) -> Tuple[Quantity, ...]:
    by_name: Dict[str, List[Condition]] = {}
    for condition in conditions:
        by_name.setdefault(condition.name, []).append(condition)
    quantities = []
    for name in sorted(by_name, key=lambda name: (-len(by_name[name]), name))[:MOST_QUANTITIES]:
        own = sorted(by_name[name], key=lambda condition: condition.entity)
        values = [c.value for c in own if c.value is not None and math.isfinite(c.value)]
        quantities.append(
            Quantity(
                name=name,
                count=len(own),
                entity_count=len({condition.entity for condition in own}),
                minimum=min(values, default=None),
                maximum=max(values, default=None),
                with_extra=sum(1 for condition in own if condition.extra),
                with_time_curve=sum(1 for condition in own if condition.time_curve > 0),
                listed=tuple(own[:room]),
            )
        )
        room -= len(quantities[-1].listed)
    return tuple(quantities)


def _groups(conditions: Iterable[Condition]) -> List[EntityGroup]:
    by_entity: Dict[int, Dict[str, int]] = {}
    for condition in conditions:
        names = by_entity.setdefault(condition.entity, {})
        names[condition.name] = names.get(condition.name, 0) + 1
    by_names: Dict[Tuple[Tuple[str, int], ...], List[int]] = {}
    for entity, names in by_entity.items():
        by_names.setdefault(tuple(sorted(names.items())), []).append(entity)
    groups = [
        EntityGroup(
            entities=ranges(entities),
            entity_count=len(entities),
            quantities=names,
            count=len(entities) * sum(number for _, number in names),
        )
        for names, entities in by_names.items()
    ]
    return sorted(groups, key=lambda group: (-group.entity_count, group.quantities, group.entities))
