"""The command ``python3 -m nereofile report``."""

from __future__ import annotations

import argparse
import errno
import os
import stat
import sys
import tempfile
from typing import Optional, Sequence

from ..checking import kind_of_file
from ..errors import FileError
from . import report
from .progress import Bar, Progress
from .texts import languages

WRITTEN = 0
NOT_WRITTEN = 2
STOPPED = 130  # as a shell says of a program that Ctrl-C has ended


def main(arguments: Optional[Sequence[str]] = None) -> int:
    """Writes the page, and gives the code that the program ends with."""
    options = _parser().parse_args(arguments)
    progress = Bar() if sys.stderr is not None and sys.stderr.isatty() else Progress()
    try:
        _require_place(options.output)
        page = report(
            options.folder,
            compare=options.compare,
            language=options.language,
            without=() if options.output == "-" else (options.output,),
            progress=progress,
        )
        _write(options.output, page)
    except (OSError, FileError, ImportError, ValueError, MemoryError) as error:
        progress.close()
        if sys.stderr is not None:  # or else it would go where the page goes
            print(f"nereofile report: {_reason(error)}", file=sys.stderr)
        return NOT_WRITTEN
    except KeyboardInterrupt:
        progress.close()
        return STOPPED
    progress.close()
    return WRITTEN


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(
        prog="python3 -m nereofile report",
        description="Writes one HTML page about the files of a run: what is wrong with them, and what they say.",
        epilog="The exit code is 0 where the page is written, whatever it says, and 2 where it can't be.",
    )
    parser.add_argument("folder", metavar="FOLDER", help="the folder with the files of the run")
    parser.add_argument(
        "-o", "--output", metavar="FILE", default="case.html", help="the page; - for the standard output (case.html)"
    )
    parser.add_argument("--compare", metavar="OTHER", help="a folder with another run: the page says what differs")
    parser.add_argument("--language", metavar="NAME", choices=languages(), default="en", help=", ".join(languages()))
    return parser


def _reason(error: Exception) -> str:
    if isinstance(error, OSError) and error.strerror:
        return f"{error.filename}: {error.strerror}" if error.filename else error.strerror
    return str(error) or type(error).__name__


def _require_place(path: str) -> None:
    """Raises what would keep a page from being written, before the files are read for it."""
    if path == "-":
        if sys.stdout is None:
            raise _error(errno.EBADF, "the standard output")
        return
    if not path or not os.path.isdir(os.path.dirname(os.path.realpath(path))):
        raise _error(errno.ENOENT, path)
    if os.path.isdir(path):
        raise _error(errno.EISDIR, path)
    if os.path.isfile(path):
        if not os.access(path, os.W_OK):
            raise _error(errno.EACCES, path)
        if kind_of_file(path) is not None:
            raise ValueError(f"{path}: a page doesn't take the place of a file of a case")


def _error(code: int, path: str) -> OSError:
    return OSError(code, os.strerror(code), path)


def _write(path: str, page: str) -> None:
    """Writes the page as a whole or not at all."""
    data = page.encode("utf-8")
    if path == "-":
        sys.stdout.buffer.write(data)
        sys.stdout.buffer.flush()
        return
    if os.path.exists(path) and not os.path.isfile(path):  # a pipe or a device, which nothing takes the place of
        with open(path, "wb") as out:
            out.write(data)
        return
    target = os.path.realpath(path)
    handle, temporary = tempfile.mkstemp(prefix=".nereo-", dir=os.path.dirname(target) or ".")
    try:
        with os.fdopen(handle, "wb") as out:
            out.write(data)
        os.chmod(temporary, _mode_for(target))
        os.replace(temporary, target)
    except BaseException:
        os.unlink(temporary)
        raise


def _mode_for(target: str) -> int:
    """The mode of the file that a page takes the place of, or that of a new one."""
    if os.path.exists(target):
        return stat.S_IMODE(os.stat(target).st_mode)
    mask = os.umask(0)
    os.umask(mask)
    return 0o666 & ~mask
