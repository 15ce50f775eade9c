"""Questions about files of any kind."""

from __future__ import annotations

import os
from typing import Iterable, Iterator, Mapping, Optional, Sequence, Tuple, Union, overload

from . import _nereofile
from ._records import CheckedFile, Difference, EffectiveSetting, Finding, Item
from .errors import Cancelled, FileAccessError, FileError, MissingFileError
from .progress import Progress, following

PathLike = Union[str, "os.PathLike[str]"]


class Check(Sequence[CheckedFile]):
    """What was found in files: a CheckedFile for each, in their order. It is true when there is no error."""

    def __init__(self, files: Sequence[CheckedFile], json: str) -> None:
        self._files = tuple(files)
        self._json = json

    @overload
    def __getitem__(self, index: int) -> CheckedFile: ...

    @overload
    def __getitem__(self, index: slice) -> Sequence[CheckedFile]: ...

    def __getitem__(self, index: Union[int, slice]) -> Union[CheckedFile, Sequence[CheckedFile]]:
        return self._files[index]

    def __len__(self) -> int:
        return len(self._files)

    def __bool__(self) -> bool:
        return self.errors == 0

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Check):
            return NotImplemented
        return self._files == other._files

    __hash__ = None  # type: ignore[assignment]

    @property
    def errors(self) -> int:
        """How many errors there are in all files."""
        return sum(file.errors for file in self._files)

    @property
    def warnings(self) -> int:
        """How many warnings there are in all files."""
        return sum(file.warnings for file in self._files)

    @property
    def notes(self) -> int:
        """How many notes there are in all files."""
        return sum(file.notes for file in self._files)

    @property
    def findings(self) -> Tuple[Finding, ...]:
        """The findings of all files."""
        return tuple(finding for file in self._files for finding in file.findings)

    def to_json(self) -> str:
        """All of it as one JSON document."""
        return self._json

    def raise_for_errors(self) -> None:
        """Raises a FileError if there is an error."""
        errors = [finding for finding in self.findings if finding.severity == "error"]
        if errors:
            raise FileError("\n".join(str(finding) for finding in errors[:10]), self.findings)

    def __str__(self) -> str:
        return "\n".join(str(finding) for finding in self.findings)

    def __repr__(self) -> str:
        return f"<Check of {len(self)} files: {self.errors} errors, {self.warnings} warnings, {self.notes} notes>"

    def _repr_html_(self) -> str:
        from . import html

        return html.check(self)


def check(*paths: PathLike, kind: Optional[str] = None, case: bool = False) -> Check:
    """Finds what is wrong with files, all of it; it raises nothing for what is in them.

    Kinds are found by content unless ``kind`` says what the files are to be; ``case`` adds what differs between
    the files of one case.

    >>> result = check("cavity.ctl")
    >>> bool(result), result[0].kind
    (True, 'control')
    >>> result.findings[0].code
    'trailing-text'
    """
    files, json = _nereofile.check(list(paths), kind, case)
    return Check(files, json)


class Comparison(Sequence[Difference]):
    """What two files say differently, in the order of the files. As a text, a line for each."""

    def __init__(self, differences: Sequence[Difference], text: str, json: str) -> None:
        self._differences = tuple(differences)
        self._text = text
        self._json = json

    @overload
    def __getitem__(self, index: int) -> Difference: ...

    @overload
    def __getitem__(self, index: slice) -> Sequence[Difference]: ...

    def __getitem__(self, index: Union[int, slice]) -> Union[Difference, Sequence[Difference]]:
        return self._differences[index]

    def __len__(self) -> int:
        return len(self._differences)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Comparison):
            return NotImplemented
        return self._differences == other._differences

    __hash__ = None  # type: ignore[assignment]

    @property
    def same(self) -> bool:
        """Whether the files say the same."""
        return not self._differences

    def to_json(self) -> str:
        """All of it as one JSON document."""
        return self._json

    def __str__(self) -> str:
        return self._text

    def __repr__(self) -> str:
        return f"<Comparison: {len(self)} differences>"

    def _repr_html_(self) -> str:
        from . import html

        return html.comparison(self)


def diff(
    a: PathLike,
    b: PathLike,
    *,
    absolute: Optional[float] = None,
    relative: Optional[float] = None,
    peak: Optional[float] = None,
    fields: Iterable[str] = (),
    memory_limit: int = 0,
    progress: Progress = None,
) -> Comparison:
    """Compares what two files say, value by value, as loads read them.

    Numbers differ where ``|a - b|`` exceeds every tolerance that is given: ``absolute``, ``relative`` of the larger
    magnitude, ``peak`` of the field's peak. ``fields`` chooses among those of results; one that is in neither file
    is a KeyError. Values of results whose nodes come in other orders take at most ``memory_limit`` bytes, by default
    a quarter of the free memory. ``progress`` is as for ``read_results``. Files of kinds that can't be compared are a
    FileError.

    >>> diff("cavity.res", "cavity.res").same
    True
    >>> print(diff("solver.cfg", "solver.cfg"))
    <BLANKLINE>
    """
    names = list(fields)
    if isinstance(fields, str):
        raise TypeError("fields is a list of names")
    for tolerance in (absolute, relative, peak):
        if tolerance is not None and not tolerance >= 0:
            raise ValueError(f"a tolerance is at least 0, not {tolerance}")
    with following(progress) as follow:
        found = _nereofile.compare(a, b, absolute, relative, peak, names, memory_limit, follow)
    outcome, message, path, differences, text, json = found
    if outcome == "compared":
        return Comparison(differences, text, json)
    if outcome == "cannot-open":
        missing = not os.path.exists(path)
        raise (MissingFileError if missing else FileAccessError)(f"{path}: {message}", (), path)
    if outcome == "no-such-field":
        raise KeyError(message)
    if outcome == "over-limit":
        raise MemoryError(message)
    if outcome == "cancelled":
        raise Cancelled("the files weren't compared")
    raise FileError(f"{path}: {message}" if path else message, (), path or None)


def effective_settings(path: PathLike, command_line: Sequence[str] = ()) -> Tuple[EffectiveSetting, ...]:
    """The settings of a configuration as a solver has them after its command line, and where each comes from.

    The command line begins with the program and the prefix of the job; one that a solver doesn't take is a
    ValueError. A FileError where a load of the file ends early.

    >>> found = {setting.key: setting for setting in effective_settings("solver.cfg", ["solver", "job", "-MaxIter", "7"])}
    >>> found["MaxIter"].value, found["MaxIter"].origin, found["Width"].origin
    ('7', 'command-line', 'default')
    """
    if isinstance(command_line, str):
        raise TypeError("a command line is a list of texts")
    settings, error = _nereofile.effective_settings(path, list(command_line))
    if error:
        raise ValueError(error)
    return settings


def edit(path: PathLike, kind: Optional[str] = None) -> _nereofile.Edit:
    """Changes values of a configuration, control file or material database, and no other byte.

    A context manager, which saves at its end: whole or, if something is raised, not at all. A FileError where the
    file can't be opened, or is of another kind.

    >>> with edit("solver.cfg") as changes:
    ...     changes["MaxIter"] = 750
    >>> Configuration.load("solver.cfg", strict=False)["MaxIter"]
    750
    """
    return _nereofile.Edit(path, kind)


class Inspection(Mapping[str, Item]):
    """The values of a file by their addresses. ``entries`` has all of them in the order of the file."""

    def __init__(self, path: str, kind: str, entries: Sequence[Item]) -> None:
        self.path = path
        self.kind = kind
        self.entries = tuple(entries)
        self._by_address = {item.address: item for item in self.entries}  # of several, the last one counts

    def __getitem__(self, address: str) -> Item:
        return self._by_address[address]

    def __iter__(self) -> Iterator[str]:
        return iter(self._by_address)

    def __len__(self) -> int:
        return len(self._by_address)

    def __repr__(self) -> str:
        return f"<Inspection of {self.path}: {self.kind}, {len(self)} values>"

    def _repr_html_(self) -> str:
        from . import html

        return html.inspection(self)


def inspect(path: PathLike, kind: Optional[str] = None) -> Inspection:
    """What stands in a file, value by value, with the places of the values.

    A FileError where it can't be opened, or is of no known kind.

    >>> inspect("cavity.ctl")["relaxation/kU/under"].value
    0.4
    """
    found = _nereofile.outline(path, kind)
    if found is None:
        text = os.fspath(path)
        if not os.path.exists(text):
            raise MissingFileError(f"{text}: there is no such file", (), text)
        raise FileError(f"{text}: nothing tells what kind of file it is", (), text)
    kind_name, entries = found
    return Inspection(os.fspath(path), kind_name, entries)


def kind_of_file(path: PathLike) -> Optional[str]:
    """The kind of a file by its content, such as "control"; None when nothing tells.

    >>> kind_of_file("cavity.res")
    'results'
    """
    return _nereofile.kind_of_file(path) or None


def address_part(name: str) -> str:
    """A part of an address, from a name as a file has it.

    >>> address_part("Water/Ice")
    'Water%2FIce'
    """
    return _nereofile.address_part(name)
