"""A case on one page: an HTML file about the files in a folder. Needs Jinja2 and Matplotlib."""

from __future__ import annotations

import os
from typing import Optional, Sequence, Union

from ._context import Context
from .case import read_case
from .page import render
from .progress import Progress
from .texts import Language, languages

PathLike = Union[str, "os.PathLike[str]"]

__all__ = ["languages", "report"]


def report(
    folder: PathLike,
    *,
    compare: Optional[PathLike] = None,
    language: str = "en",
    without: Sequence[PathLike] = (),
    progress: Optional[Progress] = None,
) -> str:
    """The page about the files in a folder. The same files give the same page, wherever they are.

    :param compare: the folder of another case, for what differs between the two.
    :param language: one of ``languages()``.
    :param without: files that don't count, such as the page of the last time.

    It raises nothing for what is in the files; an OSError where there is no such folder.
    """
    following = progress or Progress()
    left_aside = [os.fspath(path) for path in without]
    texts = Language(language)
    case = read_case(os.fspath(folder), left_aside, following)
    other = None if compare is None else read_case(os.fspath(compare), left_aside, following)
    return render(Context(case, other, following), texts)
