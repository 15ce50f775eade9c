"""What is raised where a file is wrong."""

from __future__ import annotations

import errno
import os
import stat
import warnings
from typing import TYPE_CHECKING, Sequence

if TYPE_CHECKING:
    from ._records import Finding

_MOST_LINES = 10


class FileError(Exception):
    """A file has errors, or can't be read or written.

    ``path`` names the file, ``findings`` is what was found in it: all, in the order of the file.
    """

    def __init__(self, message: str, findings: Sequence[Finding] = (), path: str | None = None) -> None:
        super().__init__(message, tuple(findings), path)
        self.message = message
        self.findings: tuple[Finding, ...] = tuple(findings)
        self.path = path

    def __str__(self) -> str:
        return self.message


class MissingFileError(FileError, FileNotFoundError):
    """There is no such file. It is a FileNotFoundError, too."""


class FileAccessError(FileError, OSError):
    """The file can't be opened or saved, or isn't a regular one. It is an OSError, too."""


class Cancelled(Exception):
    """The progress function said False."""


class SaveWarning(UserWarning):
    """A file is saved, but may be lost with the power: the system doesn't force its folder to the disk."""


def file_error(path: str, findings: Sequence[Finding]) -> FileError:
    """The exception of a file in which these were found."""
    if any(finding.code == "cannot-open" for finding in findings):
        message = "; ".join(f.message for f in findings if f.code == "cannot-open")
        kind = FileAccessError if os.path.exists(path) else MissingFileError
        return kind(f"{path}: {message}", findings, path)
    errors = [finding for finding in findings if finding.severity == "error"]
    lines = [finding.line_of_text for finding in errors[:_MOST_LINES]]
    if len(errors) > _MOST_LINES:
        lines.append(f"and {len(errors) - _MOST_LINES} more")
    return FileError("\n".join(lines) or f"{path} can't be loaded", findings, path)


_SAVE_MESSAGES = {
    "cannot-create": "no file can be made there",
    "no-permission": "it may not be written",
    "no-regular-file": "it isn't a regular file",
    "disk-full": "the disk is full",
    "write-failed": "the disk doesn't take it",
    "cannot-replace": "the old file can't be replaced",
    "content-refused": "a text has characters that XML can't carry",
    "no-writer": "it can't be written",
}


def save_error(path: str, status: str, reason: str) -> FileError:
    """The exception of a file that couldn't be saved, and is what it was."""
    message = f"{path} isn't saved: {_SAVE_MESSAGES[status]}" + (f" ({reason})" if reason else "")
    if status == "content-refused":
        return FileError(message, (), path)
    if status == "cannot-create" and not os.path.isdir(os.path.dirname(path) or "."):
        return MissingFileError(message, (), path)
    return FileAccessError(message, (), path)


def warn_not_forced(path: str, reason: str) -> None:
    """Warns, at the line that saves, of a file that is saved but may be lost."""
    message = f"{path} is saved, but may be lost in a power failure: its folder can't be forced to the disk"
    warnings.warn(f"{message} ({reason})" if reason else message, SaveWarning, stacklevel=2)


def require_regular_file(path: str) -> None:
    """Raises what says why there is no regular file at the path."""
    try:
        mode = os.stat(path).st_mode
    except FileNotFoundError:
        raise MissingFileError(f"{path}: {os.strerror(errno.ENOENT)}", (), path) from None
    except OSError as error:
        raise FileAccessError(f"{path}: {error.strerror}", (), path) from None
    if not stat.S_ISREG(mode):
        raise FileAccessError(f"{path} isn't a regular file", (), path)
