"""Materials, flags and conditions are sequences that behave as a list of Python does."""

from __future__ import annotations

import gc
import itertools
import sys
from typing import Any, Callable, List, Optional

import pytest

from nereofile import BoundaryCondition, BoundaryConditions, ControlFile, Flag, Flags, Material, MaterialDatabase

ITEMS: "dict[Any, Callable[[int], Any]]" = {
    MaterialDatabase: lambda number: Material(name=str(number)),
    Flags: lambda number: Flag(str(number)),
    BoundaryConditions: lambda number: BoundaryCondition("kU", entity_id=number),
}
sequences = pytest.mark.parametrize("cls", ITEMS)
COUNT = 5
LIMITS: List[Optional[int]] = [None, -sys.maxsize - 1, -6, -5, -3, -1, 0, 1, 2, 4, 5, 6, sys.maxsize]
STEPS: List[Optional[int]] = [None, 1, 2, 3, sys.maxsize, -1, -2, -5, -sys.maxsize]
SLICES = [slice(*limits) for limits in itertools.product(LIMITS, LIMITS, STEPS)]


def items_of(cls: Any, first: int, count: int) -> List[Any]:
    return [ITEMS[cls](number) for number in range(first, first + count)]


def what_becomes_of(sequence: Any, act: Callable[[Any], object]) -> "tuple[object, List[int]]":
    """The exception of an act, if any, and which items are there then."""
    error = None
    try:
        act(sequence)
    except (IndexError, TypeError, ValueError) as raised:
        error = type(raised)
    return error, [id(item) for item in sequence]


@sequences
def test_slices_give_lists(cls: Any) -> None:
    items = items_of(cls, 0, COUNT)
    sequence = cls(items)
    for places in SLICES:
        assert list(map(id, sequence[places])) == list(map(id, items[places])), places


@sequences
def test_slices_are_replaced_as_in_a_list(cls: Any) -> None:
    items, others = items_of(cls, 0, COUNT), items_of(cls, COUNT, COUNT + 1)
    for places, count in itertools.product(SLICES, (0, 1, 2, 5, 6)):

        def replace(sequence: Any) -> None:
            sequence[places] = others[:count]

        assert what_becomes_of(cls(items), replace) == what_becomes_of(list(items), replace), (places, count)


@sequences
def test_slices_are_removed_as_from_a_list(cls: Any) -> None:
    items = items_of(cls, 0, COUNT)
    for places in SLICES:

        def remove(sequence: Any) -> None:
            del sequence[places]

        assert what_becomes_of(cls(items), remove) == what_becomes_of(list(items), remove), places


ACTS: "List[Callable[[Any, List[Any]], object]]" = [
    lambda sequence, others: sequence.extend(others),
    lambda sequence, others: sequence.extend(sequence),
    lambda sequence, others: sequence.__iadd__(others),
    lambda sequence, others: sequence.insert(-100, others[0]),
    lambda sequence, others: sequence.insert(100, others[0]),
    lambda sequence, others: sequence.insert(-1, others[0]),
    lambda sequence, others: sequence.reverse(),
    lambda sequence, others: sequence.clear(),
    lambda sequence, others: sequence.pop(),
    lambda sequence, others: sequence.pop(-2),
    lambda sequence, others: sequence.pop(9),
    lambda sequence, others: sequence.remove(sequence[1]),
    lambda sequence, others: sequence.remove(others[0]),
    lambda sequence, others: sequence.append(sequence[0]),
    lambda sequence, others: sequence.__setitem__(slice(None), reversed(sequence)),
    lambda sequence, others: sequence.__setitem__(slice(1, 1), sequence),
    lambda sequence, others: sequence.__setitem__(slice(0, 2), (item for item in others)),
    lambda sequence, others: sequence.__setitem__(slice(0, 2), None),
    lambda sequence, others: sequence.__setitem__(slice(0, 2, 0), []),
    lambda sequence, others: sequence.__delitem__(slice("a")),
    lambda sequence, others: sequence.__getitem__(slice(None, 2.5)),
]


@sequences
@pytest.mark.parametrize("number", range(len(ACTS)))
def test_methods_do_what_those_of_a_list_do(cls: Any, number: int) -> None:
    items, others = items_of(cls, 0, COUNT), items_of(cls, COUNT, 3)

    def act(sequence: Any) -> object:
        return ACTS[number](sequence, others)

    assert what_becomes_of(cls(items), act) == what_becomes_of(list(items), act)


@sequences
def test_any_iterable_makes_one(cls: Any) -> None:
    items = items_of(cls, 0, COUNT)
    assert cls(iter(items)) == cls(tuple(items)) == cls(cls(items)) and len(cls()) == 0
    with pytest.raises(TypeError):
        cls(5)
    with pytest.raises(TypeError, match="has to be a .*, not int"):
        cls([*items, 5])


@sequences
def test_a_replacement_that_fails_changes_nothing(cls: Any) -> None:
    items = items_of(cls, 0, COUNT)
    sequence = cls(items)

    def failing() -> Any:
        yield items[0]
        raise LookupError

    with pytest.raises(LookupError):
        sequence[1:3] = failing()
    wrong: List[Any] = [[items[0], None], [Ellipsis], "ab", [cls()], [object.__new__(object)]]
    for others in wrong:
        with pytest.raises(TypeError):
            sequence[1:3] = others
    assert list(map(id, sequence)) == list(map(id, items))


@sequences
def test_the_sequence_changes_meanwhile(cls: Any) -> None:
    sequence = cls()
    items = items_of(cls, 0, COUNT)

    class Clearing:
        def __index__(self) -> int:
            sequence.clear()
            return 0

    def clearing() -> Any:
        sequence.clear()
        yield items[0]

    def act_on(act: Callable[[], object]) -> List[Any]:
        sequence[:] = items
        act()
        return list(sequence)

    places = slice(Clearing(), 4)
    assert act_on(lambda: sequence[places]) == []
    assert act_on(lambda: sequence.__delitem__(places)) == []
    assert act_on(lambda: sequence.__setitem__(places, items[:1])) == items[:1]
    assert act_on(lambda: sequence.__setitem__(slice(1, 3), clearing())) == items[:1]
    with pytest.raises(IndexError):
        act_on(lambda: sequence[Clearing()])


@sequences
def test_the_sequence_changes_while_garbage_is_collected(cls: Any) -> None:
    items = items_of(cls, 0, 50)
    sequence = cls()

    class Clearing:
        def __init__(self) -> None:
            self.me = self

        def __del__(self) -> None:
            sequence.clear()

    thresholds = gc.get_threshold()
    for objects in range(1, 80):
        sequence[:] = items
        gc.collect()
        Clearing()
        gc.set_threshold(objects)
        try:
            assert sequence.__reduce__()
        finally:
            gc.set_threshold(*thresholds)


def test_equations_keep_their_number() -> None:
    equations = ControlFile().equations
    equations[1:4] = [7, 8, 9]
    assert equations[1:4] == [7, 8, 9] and equations[::-2] == [equations[4], 8, equations[0]]
    equations[::-2] = (1, 2, 3)
    assert list(equations) == [3, 7, 2, 9, 1]
    for places, values in [(slice(1, 4), [1, 2]), (slice(0, 0), [1]), (slice(None), [1] * 6)]:
        with pytest.raises(ValueError, match="to slice of size"):
            equations[places] = values
    wrong: List[Any] = [5, ["a"], [2**31], [0.5] * 3, None]
    for value in wrong:
        with pytest.raises(TypeError):
            equations[1:4] = value
    with pytest.raises(AttributeError):
        del equations[0]  # type: ignore[attr-defined]
    assert list(equations) == [3, 7, 2, 9, 1]


def test_a_list_of_a_file_is_replaced_in_place() -> None:
    control = ControlFile()
    control.flags[:] = [Flag("b", 2), Flag("a", 1)]
    control.flags[:] = sorted(control.flags, key=lambda flag: flag.name)
    assert control.flags.names() == ["a", "b"]
    del control.flags[:]
    assert len(control.flags) == 0
