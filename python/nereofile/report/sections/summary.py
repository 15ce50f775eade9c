"""What a case is, and whether it is sound: the head of a page."""

from __future__ import annotations

import dataclasses
import re
from typing import List, Mapping, Optional, Sequence, Tuple

from .._context import Context
from ..case import GROUPS, CaseFile
from .conditions import BoundaryFile
from .results import ResultsOfCase
from .settings import SettingsFile, Value, configuration_defaults

MOST_TILES = 6


@dataclasses.dataclass(frozen=True)
class Tile:
    """A file at a glance; without a name one of a group that the case has no file of, or ``more`` files together."""

    group: str
    name: str = ""
    kind: str = ""
    size: int = 0
    errors: int = 0
    warnings: int = 0
    notes: int = 0
    verdict: str = "missing"
    more: int = 0


@dataclasses.dataclass(frozen=True)
class Run:
    """How far a run is: iterations, and of a transient one time. What isn't known is None."""

    iteration: int
    most_iterations: Optional[int]
    time: Optional[float]
    stop_time: Optional[float]

    @property
    def share(self) -> Optional[float]:
        """The part of the iterations that is done, at most 1."""
        if not self.most_iterations or self.most_iterations < 0 or self.iteration < 0:
            return None
        return min(1.0, self.iteration / self.most_iterations)


@dataclasses.dataclass(frozen=True)
class Summary:
    """The head of a page. ``verdict`` is "empty", "error", "warning" or "sound"."""

    job: str
    title: str
    versions: Tuple[str, ...]
    date: str
    verdict: str
    errors: int
    warnings: int
    notes: int
    run: Optional[Run]
    tiles: Tuple[Tile, ...]
    other_files: int
    left_out: int


def summary(
    context: Context,
    configurations: Sequence[SettingsFile],
    controls: Sequence[SettingsFile],
    boundaries: Sequence[BoundaryFile],
    found: ResultsOfCase,
) -> Summary:
    """The head of the page about a case."""
    case = context.case
    last = found.last.header if found.last else None
    settings = _merged(configurations)
    control = _merged(controls)
    jobs = [str(settings.get("JobPrefix") or ""), *(boundary.fact("job") for boundary in boundaries)]
    titles = [str(control.get("title") or ""), last.title if last else ""]
    return Summary(
        job=next((job for job in jobs if job), ""),
        title=next((title for title in titles if title), ""),
        versions=_versions(configurations, control, boundaries, found),
        date=last.date if last else "",
        verdict=_verdict(context),
        errors=case.count("error"),
        warnings=case.count("warning"),
        notes=case.count("note"),
        run=_run(settings, found),
        tiles=tuple(_tiles(case.files)),
        other_files=case.other_files,
        left_out=case.left_out,
    )


def _verdict(context: Context) -> str:
    case = context.case
    if not case.files:
        return "empty"
    return "error" if case.count("error") else "warning" if case.count("warning") else "sound"


def _merged(files: Sequence[SettingsFile]) -> Mapping[str, Value]:
    """The values of the files, the first of which counts; that of a setting is no default if a file has another."""
    values: "dict[str, Value]" = {}
    for file in reversed(files):
        values.update(file.values)
    for file in reversed(files):
        values.update({setting.address: setting.value for setting in file.changed})
    return values


def _versions(
    configurations: Sequence[SettingsFile],
    control: Mapping[str, Value],
    boundaries: Sequence[BoundaryFile],
    found: ResultsOfCase,
) -> Tuple[str, ...]:
    versions = [str(file.values.get("version") or "") for file in configurations]
    versions.append(str(control.get("header/1") or "").rpartition(" Ver ")[2])
    versions += [boundary.fact("version") for boundary in boundaries]
    versions += [snapshot.header.version for snapshot in found.snapshots if snapshot.header]
    return tuple(sorted({version for version in versions if re.fullmatch(r"[0-9]+(\.[0-9]+)+", version)}))


def _run(settings: Mapping[str, Value], found: ResultsOfCase) -> Optional[Run]:
    last = found.last.header if found.last else None
    if last is None:
        return None
    is_transient = settings.get("Transient") == 1
    most, stop = settings.get("MaxIter"), settings.get("StopTime")
    if stop == configuration_defaults()["StopTime"]:  # which no run comes to
        stop = None
    return Run(
        iteration=last.iteration,
        most_iterations=most if isinstance(most, int) else None,
        time=last.time if is_transient else None,
        stop_time=stop if is_transient and isinstance(stop, float) else None,
    )


def _tiles(files: Sequence[CaseFile]) -> List[Tile]:
    tiles = []
    for group in (*GROUPS, ""):
        own = [file for file in files if file.group == group]
        if not own and group:
            tiles.append(Tile(group))
        worst = sorted(own, key=lambda file: (-file.errors, -file.warnings, file.name))
        alone = set(worst if len(own) <= MOST_TILES else worst[: MOST_TILES - 1])
        tiles += [_tile(group, [file], file.name) for file in own if file in alone]
        if len(alone) < len(own):
            tiles.append(_tile(group, [file for file in own if file not in alone]))
    return tiles


def _tile(group: str, files: Sequence[CaseFile], name: str = "") -> Tile:
    errors, warnings = sum(file.errors for file in files), sum(file.warnings for file in files)
    return Tile(
        group=group,
        name=name,
        kind=files[0].kind if name else "",
        size=sum(file.size for file in files),
        errors=errors,
        warnings=warnings,
        notes=sum(file.notes for file in files),
        verdict="error" if errors else "warning" if warnings else "sound",
        more=0 if name else len(files),
    )
