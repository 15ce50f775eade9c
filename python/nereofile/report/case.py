"""The files of a case: which there are in a folder, and what a check says of them."""

from __future__ import annotations

import dataclasses
import os
import stat
from typing import Dict, List, Optional, Sequence, Tuple

from .._records import Finding
from ..checking import check, kind_of_file
from .progress import Progress

#: The kinds of files by what they are to people, in the order of a page.
GROUPS: Dict[str, Tuple[str, ...]] = {
    "configuration": ("configuration-xml", "configuration-text"),
    "control": ("control",),
    "materials": ("materials",),
    "conditions": ("geometry-boundary",),
    "results": ("results",),
}

MOST_FILES = 500

#: Of so many files of a group a page says what is in them; of results, of all.
MOST_DESCRIBED = 20

# By these names a file means to be one of a case, whatever is in it. An .xml may be of two kinds.
_SUFFIXES = {".cfg": "configuration", ".ctl": "control", ".gbi": "conditions", ".res": "results", ".xml": ""}
_SEVERITIES = ("error", "warning", "note")


@dataclasses.dataclass(frozen=True)
class CaseFile:
    """A file of a case. ``group`` is one of GROUPS, or empty where nothing tells what the file is."""

    name: str
    path: str
    group: str
    kind: str
    size: int
    findings: Tuple[Finding, ...]
    errors: int
    warnings: int
    notes: int

    @property
    def verdict(self) -> str:
        """The worst that was found: "error", "warning", or "sound"."""
        return "error" if self.errors else "warning" if self.warnings else "sound"


@dataclasses.dataclass(frozen=True)
class Case:
    """The files of a folder that belong to a run, by their names, and how many others there are."""

    folder: str
    files: Tuple[CaseFile, ...]
    other_files: int
    left_out: int

    def of(self, group: str) -> List[CaseFile]:
        """The files of a group."""
        return [file for file in self.files if file.group == group]

    def described(self, group: str) -> List[CaseFile]:
        """The files of a group that a page has room for."""
        files = self.of(group)
        return files if group == "results" else files[:MOST_DESCRIBED]

    def count(self, severity: str) -> int:
        """How many findings of a severity there are."""
        return sum(int(getattr(file, severity + "s")) for file in self.files)

    def placed(self, text: str) -> str:
        """A text about files, without the folder that all of them are in."""
        prefix = os.path.join(self.folder, "")
        return text if prefix == os.sep else text.replace(prefix, "")


def read_case(folder: str, without: Sequence[str] = (), progress: Optional[Progress] = None) -> Case:
    """Looks for files in a folder, not in folders in it, and checks them. A NotADirectoryError and the like if it can't.

    :param without: paths of files that don't count, such as that of the page.
    """
    folder = os.path.realpath(folder)  # the system's, for which a link may stand before a ..
    left_aside = {os.path.realpath(path) for path in without}
    names = sorted(name for name in os.listdir(folder) if _is_file(os.path.join(folder, name)))
    names = [name for name in names if os.path.realpath(os.path.join(folder, name)) not in left_aside]
    meant = [(name, kind) for name in names for kind in [_kind_of(os.path.join(folder, name))] if kind is not None]
    looked_at = meant[:MOST_FILES]
    files = _checked(folder, [one for one in looked_at if _is_text(folder + one[0])], progress or Progress())
    files += [_unnamed(folder, name) for name, _ in looked_at if not _is_text(folder + name)]
    return Case(
        folder=folder,
        files=tuple(sorted(files, key=lambda file: file.name)),
        other_files=len(names) - len(meant),
        left_out=len(meant) - len(looked_at),
    )


def group_of(kind: str, name: str = "") -> str:
    """The group of a kind, or else the one that a file of the name means to be in."""
    for group, kinds in GROUPS.items():
        if kind in kinds:
            return group
    return _SUFFIXES.get(os.path.splitext(name)[1].lower(), "")


def _is_file(path: str) -> bool:
    try:
        return stat.S_ISREG(os.stat(path).st_mode)
    except OSError:
        return False


def _kind_of(path: str) -> Optional[str]:
    """The kind of a file, empty where it only means to be one, None where it doesn't."""
    kind = kind_of_file(path) if _is_text(path) else None
    if kind is None and os.path.splitext(path)[1].lower() in _SUFFIXES:
        return ""
    return kind


def _checked(folder: str, meant: Sequence[Tuple[str, str]], progress: Progress) -> List[CaseFile]:
    if not meant:
        return []
    paths = [os.path.join(folder, name) for name, _ in meant]
    progress.say("check")
    found = check(*paths, case=True)
    return [
        CaseFile(
            name=name,
            path=path,
            group=group_of(kind, name),
            kind=kind,
            size=_size_of(path),
            findings=result.findings,
            errors=result.errors,
            warnings=result.warnings,
            notes=result.notes,
        )
        for (name, kind), path, result in zip(meant, paths, found)
    ]


def _is_text(name: str) -> bool:
    """Whether a name is UTF-8: the libraries open no other file."""
    return not any("\ud800" <= character <= "\udfff" for character in name)


def _unnamed(folder: str, name: str) -> CaseFile:
    message = "the name of the file isn't UTF-8"
    finding = Finding("error", "cannot-open", "fails", None, None, None, None, None, None, 0, message, message)
    path = os.path.join(folder, name)
    return CaseFile(name, path, "", "", _size_of(path), (finding,), 1, 0, 0)


def _size_of(path: str) -> int:
    try:
        return os.stat(path).st_size
    except OSError:
        return 0


def worst_first(severity: str) -> int:
    """The rank of a severity."""
    return _SEVERITIES.index(severity)
