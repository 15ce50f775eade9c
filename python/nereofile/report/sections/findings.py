"""What a check says of the files of a case, worst first."""

from __future__ import annotations

import dataclasses
from typing import List, Optional, Tuple

from .._context import Context
from ..._records import Finding
from ..case import worst_first

MOST_LISTED = 2000
PAGE = 250


@dataclasses.dataclass(frozen=True)
class FindingInFile:
    """A finding, with the name of the file and the place in it. ``more`` further ones of the code aren't listed."""

    severity: str
    file: str
    place: str
    address: str
    message: str
    effect: str
    code: str
    more: int


@dataclasses.dataclass(frozen=True)
class Findings:
    """The findings of a case. ``count`` of them there are, the worst of which are listed."""

    errors: int
    warnings: int
    notes: int
    files: Tuple[str, ...]
    listed: Tuple[FindingInFile, ...]

    @property
    def count(self) -> int:
        """How many there are."""
        return self.errors + self.warnings + self.notes

    @property
    def pages(self) -> List[Tuple[FindingInFile, ...]]:
        """What is listed, a page each."""
        return [self.listed[start : start + PAGE] for start in range(0, len(self.listed), PAGE)]

    def of(self, severity: str) -> int:
        """How many there are of a severity."""
        return int(getattr(self, severity + "s"))


def findings(context: Context) -> Findings:
    """The findings of all files, errors first, in the order of the files."""
    case = context.case
    rows = [(file.name, finding) for file in case.files for finding in file.findings]
    rows.sort(key=lambda row: worst_first(row[1].severity))
    return Findings(
        errors=case.count("error"),
        warnings=case.count("warning"),
        notes=case.count("note"),
        files=tuple(file.name for file in case.files if file.findings),
        listed=tuple(_row(context, name, finding) for name, finding in rows[:MOST_LISTED]),
    )


def _row(context: Context, file: str, finding: Finding) -> FindingInFile:
    return FindingInFile(
        severity=finding.severity,
        file=file,
        place=place_of(finding.line, finding.column, finding.offset),
        address=finding.address or "",
        message=context.case.placed(finding.message),
        effect=finding.effect,
        code=finding.code,
        more=finding.more,
    )


def place_of(line: Optional[int], column: Optional[int], offset: Optional[int]) -> str:
    """A place as the lines of a check have it: 4:12, or @306 in a binary file."""
    if line is not None:
        return f"{line}:{column}" if column is not None else str(line)
    return f"@{offset}" if offset is not None else ""
