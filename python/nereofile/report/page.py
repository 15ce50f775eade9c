"""A case as one HTML page."""

from __future__ import annotations

import base64
import hashlib
import os
import pathlib
from typing import Any, Dict

from ..optional import require
from . import drawing
from ._context import Context
from .case import GROUPS, Case
from .charts import Charts
from .sections import SECTIONS, make_all
from .texts import Language, brief, count, number, percent, size

_TEMPLATES = pathlib.Path(__file__).parent / "templates"


def render(context: Context, language: Language) -> str:
    """The page about a case: no other file belongs to it, and nothing is asked of any network."""
    made = make_all(context)
    context.progress.say("page")
    script = (_TEMPLATES / "script.js").read_text(encoding="utf-8")
    return str(
        _environment(language)
        .get_template("page.html.j2")
        .render(
            made=made,
            summary=made["summary"],
            sections=[section for section in SECTIONS if made[section.name] is not None],
            anchors=_anchors(context.case, {one.name for one in made["results"].snapshots if not one.is_shown}),
            case=context.case,
            charts=Charts(),
            drawing=drawing,
            style=(_TEMPLATES / "style.css").read_text(encoding="utf-8"),
            script=script,
            script_hash=base64.b64encode(hashlib.sha256(script.encode()).digest()).decode(),
            language=language.name,
        )
    )


def _anchors(case: Case, hidden: "set[str]") -> Dict[str, str]:
    """What leads to a file, if the page says what is in it."""
    described = {file.name for group in GROUPS for file in case.described(group)} - hidden
    places = enumerate((file.name for file in case.files), start=1)
    return {name: f"file-{place}" for place, name in places if name in described}


def _environment(language: Language) -> Any:
    jinja2 = require("jinja2", "a report")
    markup = require("markupsafe", "a report").Markup
    environment = jinja2.Environment(
        loader=jinja2.FileSystemLoader(os.fspath(_TEMPLATES)),
        autoescape=True,
        trim_blocks=True,
        lstrip_blocks=True,
        undefined=jinja2.StrictUndefined,
        finalize=language.shown,
    )
    filters: Dict[str, Any] = {"brief": brief, "count": count, "number": number, "percent": percent, "size": size, "markup": markup}
    environment.filters.update(filters)
    environment.globals.update(_=language.gettext, ngettext=language.ngettext)
    return environment
