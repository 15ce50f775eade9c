"""The sections of a page: what each is made from, and the template that shows it."""

from __future__ import annotations

import dataclasses
from typing import Any, Callable, Dict, Optional, Tuple

from .._context import Context
from . import comparison, conditions, findings, materials, results, settings, summary


class Made(Dict[str, Any]):
    """The data of the sections by their names, each made when it is asked for first."""

    def __init__(self, context: Context) -> None:
        super().__init__()
        self.context = context

    def __missing__(self, name: str) -> Any:
        self[name] = next(section for section in SECTIONS if section.name == name).make(self)
        return self[name]


@dataclasses.dataclass(frozen=True)
class Section:
    """A section: its name, which is its anchor and that of its template, its title, and what makes its data.

    A section without data isn't shown.
    """

    name: str
    title: str
    make: Callable[[Made], Optional[Any]]


def _(text: str) -> str:
    """Marks a text for translation."""
    return text


#: All sections in the order of a page.
SECTIONS: Tuple[Section, ...] = (
    Section("findings", _("Findings"), lambda made: findings.findings(made.context)),
    Section("configuration", _("Configuration"), lambda made: settings.configurations(made.context)),
    Section("control", _("Control file"), lambda made: settings.controls(made.context)),
    Section("materials", _("Materials"), lambda made: materials.materials(made.context, made["conditions"])),
    Section("conditions", _("Conditions"), lambda made: conditions.boundaries(made.context)),
    Section("results", _("Results"), lambda made: results.results(made.context)),
    Section("comparison", _("Comparison"), lambda made: comparison.comparison(made.context, made["results"])),
)


def make_all(context: Context) -> Made:
    """The data of all sections, and that of the head of the page as "summary"."""
    made = Made(context)
    for section in SECTIONS:
        made[section.name]
    made["summary"] = summary.summary(
        context, made["configuration"], made["control"], made["conditions"], made["results"]
    )
    return made
