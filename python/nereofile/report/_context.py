"""What sections are made from."""

from __future__ import annotations

import dataclasses
from typing import Optional

from .case import Case
from .progress import Progress


@dataclasses.dataclass(frozen=True)
class Context:
    """The case that a page is about, the one that it is compared with if there is one, and who follows."""

    case: Case
    other: Optional[Case] = None
    progress: Progress = dataclasses.field(default_factory=Progress)
