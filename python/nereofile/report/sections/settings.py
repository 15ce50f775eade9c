"""The solver configuration and the control file: what differs from the defaults, and the rest."""

from __future__ import annotations

import dataclasses
import functools
import os
import tempfile
from typing import Callable, Dict, List, Mapping, Optional, Sequence, Tuple, Union

from .._context import Context
from ..._nereofile import Configuration, ControlFile
from ..._records import EffectiveSetting, Item
from ...checking import address_part, effective_settings, inspect
from ...errors import FileError

MOST_ROWS = 1000
MOST_KEPT = 100
MOST_LINES = 15

Value = Union[int, float, str, bool, None]

# The sections of a control file that are values with a meaning, by the first part of their addresses.
_PARTS = (
    "title",
    "header",
    "equation-selection",
    "units",
    "transient-data",
    "sequential-solver",
    "solution-control",
    "relaxation",
    "auto-convergence",
    "constants",
    "flags",
)
_MATERIALS = "property-settings"


@dataclasses.dataclass(frozen=True)
class Setting:
    """A value, its default if it has one, and where it comes from: the line of the file, or the defaults.

    ``spelling`` is how the file has it, where a load makes something else of that.
    """

    address: str
    value: Value
    default: Value
    has_default: bool
    line: Optional[int]
    spelling: Optional[str] = None

    @property
    def differs(self) -> bool:
        """Whether the value isn't the default."""
        return not self.has_default or self.value != self.default


@dataclasses.dataclass(frozen=True)
class Grid:
    """The settings of a part that has the same ones for each variable: a row for each, by the last part of the address."""

    columns: Tuple[str, ...]
    rows: Tuple[Tuple[str, Tuple[Optional[Setting], ...]], ...]


@dataclasses.dataclass(frozen=True)
class Part:
    """A part of a file: how many of its settings have their defaults, and those that are shown of them.

    A grid is of all settings of the part.
    """

    name: str
    count: int
    settings: Tuple[Setting, ...]
    grid: Optional[Grid] = None


@dataclasses.dataclass(frozen=True)
class KeptSection:
    """A section that stays as it is: its lines, or the first of them."""

    name: str
    line_count: int
    lines: Tuple[str, ...]


@dataclasses.dataclass(frozen=True)
class SettingsFile:
    """The settings of a file. ``problem`` says why they are not all that there is to say."""

    name: str
    problem: Optional[str]
    changed: Tuple[Setting, ...]
    changed_count: int
    rest: Tuple[Part, ...]
    kept: Tuple[KeptSection, ...] = ()
    kept_count: int = 0
    values: Mapping[str, Value] = dataclasses.field(default_factory=dict)

    @property
    def rest_count(self) -> int:
        """How many settings have their defaults."""
        return sum(part.count for part in self.rest)


def configurations(context: Context) -> Tuple[SettingsFile, ...]:
    """The solver configurations of a case."""
    return tuple(configuration(context, file.path, file.name) for file in context.case.described("configuration"))


def configuration(context: Context, path: str, name: str) -> SettingsFile:
    """A solver configuration, as a solver takes it from the file."""
    problem = None
    try:
        settings = [_effective(setting) for setting in effective_settings(path)]
        settings += _others(path, {setting.address for setting in settings})
    except (FileError, MemoryError) as error:
        problem = context.case.placed(str(error))
        settings = _others(path, set())
    return _file(name, problem, settings, _by_origin)


def controls(context: Context) -> Tuple[SettingsFile, ...]:
    """The control files of a case."""
    return tuple(control(context, file.path, file.name) for file in context.case.described("control"))


def control(context: Context, path: str, name: str) -> SettingsFile:
    """A control file, as it stands there. Its materials are none of its settings."""
    try:
        items = inspect(path, "control").entries
    except (FileError, MemoryError) as error:
        return _file(name, context.case.placed(str(error)), [], _by_part)
    settings: Dict[str, Setting] = {}
    kept: Dict[str, List[str]] = {}
    for item in items:
        part = item.address.partition("/")[0]
        if part in _PARTS:
            settings[item.address] = _control_setting(item)
        elif part != _MATERIALS:
            kept.setdefault(part, []).append(item.spelling)
    shown = dataclasses.replace(
        _file(name, None, list(settings.values()), _by_part),
        kept=tuple(KeptSection(_plain(part), len(kept[part]), tuple(kept[part][:MOST_LINES])) for part in list(kept)[:MOST_KEPT]),
        kept_count=len(kept),
    )
    return shown


@functools.lru_cache(maxsize=None)
def control_defaults() -> Mapping[str, Value]:
    """The values of a new control file, by address."""
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "default.ctl")
        file = ControlFile()
        file.save(path)
        values: Dict[str, Value] = {item.address: item.value for item in inspect(path, "control").entries}
    for variable, value in file.original_constants.items():
        values.setdefault(f"constants/{address_part(variable)}", value)
    values.pop("title", None)
    return values


@functools.lru_cache(maxsize=None)
def configuration_defaults() -> Mapping[str, Value]:
    """The values of a new configuration, by key."""
    configuration = Configuration()
    return {**configuration, "version": configuration.version}


def _effective(setting: EffectiveSetting) -> Setting:
    default = configuration_defaults().get(setting.key)
    value: Value = setting.value
    if isinstance(default, (int, float)):
        value = type(default)(float(setting.value))
    return Setting(setting.key, value, default, True, setting.line)


def _others(path: str, known: "set[str]") -> List[Setting]:
    """What a configuration says besides the settings that are known already."""
    try:
        items = inspect(path).entries
    except (FileError, MemoryError):
        return []
    defaults = configuration_defaults()
    latest = {item.address: item for item in items if item.address not in known}
    return [
        Setting(address, item.value, defaults.get(address), address in defaults, item.line, _other_spelling(item))
        for address, item in latest.items()
    ]


def _control_setting(item: Item) -> Setting:
    defaults = control_defaults()
    return Setting(
        address=item.address,
        value=item.value,
        default=defaults.get(item.address),
        has_default=item.address in defaults,
        line=item.line,
        spelling=_other_spelling(item),
    )


def _other_spelling(item: Item) -> Optional[str]:
    """How a value is spelled, where that reads as something else."""
    if isinstance(item.value, str) or item.value is None:
        return item.spelling if item.value is None else None
    try:
        return None if float(item.spelling) == float(item.value) else item.spelling
    except ValueError:
        return item.spelling


def _by_part(setting: Setting) -> str:
    return setting.address.partition("/")[0]


def _by_origin(_: Setting) -> str:
    return ""


def _file(name: str, problem: Optional[str], settings: Sequence[Setting], part_of: Callable[[Setting], str]) -> SettingsFile:
    changed = [setting for setting in settings if setting.differs]
    parts: Dict[str, List[Setting]] = {}
    for setting in settings:
        parts.setdefault(part_of(setting), []).append(setting)
    order = {part: place for place, part in enumerate(_PARTS)}
    return SettingsFile(
        name=name,
        problem=problem,
        changed=tuple(changed[:MOST_ROWS]),
        changed_count=len(changed),
        rest=tuple(
            _part(part, parts[part])
            for part in sorted(parts, key=lambda part: order.get(part, len(order)))
            if not all(setting.differs for setting in parts[part])
        ),
        values={setting.address: setting.value for setting in settings},
    )


def _part(name: str, settings: Sequence[Setting]) -> Part:
    rest = [setting for setting in settings if not setting.differs]
    return Part(name, len(rest), tuple(rest[:MOST_ROWS]), _grid(settings))


def _grid(settings: Sequence[Setting]) -> Optional[Grid]:
    """The settings as a grid, if their addresses are part/variable/what."""
    rows: Dict[str, Dict[str, Setting]] = {}
    for setting in settings:
        parts = setting.address.split("/")
        if len(parts) != 3:
            return None
        rows.setdefault(parts[1], {})[parts[2]] = setting
    columns = tuple(dict.fromkeys(what for row in rows.values() for what in row))
    return Grid(
        columns,
        tuple((variable, tuple(row.get(what) for what in columns)) for variable, row in list(rows.items())[:MOST_ROWS]),
    )


def _plain(part: str) -> str:
    """A part of an address as the file has it."""
    for written, plain in (("%2F", "/"), ("%23", "#"), ("%25", "%")):
        part = part.replace(written, plain)
    return part
