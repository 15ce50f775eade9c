"""Texts and numbers as a page shows them, in the language that it is in."""

from __future__ import annotations

import gettext
import math
import pathlib
import re
from typing import Any, Dict, Tuple, Union

from ..optional import require

LONGEST = 240
_THIN_SPACE = "\u202f"
_LANGUAGES = pathlib.Path(__file__).parent.parent / "locale"

# What HTML and SVG can't have: control characters, halves of surrogate pairs and what Unicode keeps for no character;
# and what turns the direction of the text behind it.
_NO_CHARACTERS = "".join(f"{chr(plane << 16 | 0xFFFE)}{chr(plane << 16 | 0xFFFF)}" for plane in range(17))
_UNFIT = re.compile(
    "[\x00-\x08\x0b\x0c\x0e-\x1f\x7f-\x9f\ud800-\udfff\ufdd0-\ufdef\u202a-\u202e\u2066-\u2069" + _NO_CHARACTERS + "]"
)


def fit(text: str) -> str:
    """A text of a file, without the characters that no page can have."""
    return _UNFIT.sub("\ufffd", text).replace("\r", " ")


def shortened(text: str, longest: int = LONGEST) -> Tuple[str, int]:
    """What is shown of a text, and how long it is if that isn't all of it, or else 0."""
    if len(text) <= longest:
        return fit(text), 0
    return fit(text[: longest - 20]) + "…", len(text)


def brief(text: str, longest: int = 60) -> str:
    """A short form of a text, for where there is room for little."""
    return shortened(" ".join(text[: 4 * longest].split()), longest)[0]


def count(number: int) -> str:
    """A whole number, in groups of three digits from 10 000 on."""
    return str(number) if abs(number) < 10_000 else f"{number:,}".replace(",", _THIN_SPACE)


def number(value: float) -> str:
    """A number with as many digits as people read; all of those that a whole one has."""
    if math.isnan(value):
        return "NaN"
    if math.isinf(value):
        return "∞" if value > 0 else "-∞"
    return f"{value:.6g}"


def percent(share: float) -> str:
    """A share in percent."""
    shown = f"{100 * share:.3g}" if math.isfinite(share) else number(share)
    return f"{shown}{_THIN_SPACE}%"


def size(bytes_there: int) -> str:
    """A number of bytes."""
    amount = float(bytes_there)
    for unit in ("B", "kB", "MB", "GB"):
        if amount < 1000 or unit == "GB":
            break
        amount /= 1000
    return f"{amount:.0f}{_THIN_SPACE}{unit}" if unit == "B" or amount >= 100 else f"{amount:.1f}{_THIN_SPACE}{unit}"


class Language:
    """The texts of the page in one language: English, or what a catalogue beside the package has. Needs Jinja2."""

    def __init__(self, name: str = "en") -> None:
        self.name = name
        self._markup: Any = require("markupsafe", "a report").Markup
        self._texts: Dict[str, Any] = {}
        self._plural: Any = None
        if name != "en":
            self._load(name)

    def gettext(self, text: str, **values: object) -> Any:
        """The text, as markup, with values in place of their names."""
        return self._filled(self._texts.get(text) or text, values)

    def ngettext(self, one: str, many: str, number_of: int, **values: object) -> Any:
        """The text for that many; ``%(count)s`` in it is the number."""
        forms: Tuple[str, ...] = self._texts.get(one) or (one, many)
        index = self._plural(number_of) if self._texts.get(one) else int(number_of != 1)
        return self._filled(forms[index], {"count": number_of, **values})

    def shown(self, value: object) -> Any:
        """What a page shows of a value: markup as it is, numbers in short, texts fit and shortened."""
        if isinstance(value, self._markup):
            return value
        if value is None:
            return ""
        if isinstance(value, float):
            return number(value)
        if isinstance(value, int):
            return count(value)
        text, length = shortened(str(value))
        if not length:
            return text
        return self._markup('{} <span class="cut">({})</span>').format(
            text, self.ngettext("%(count)s character", "%(count)s characters", length)
        )

    def _filled(self, text: str, values: Dict[str, object]) -> Any:
        markup = self._markup(text)
        return markup % {name: self.shown(value) for name, value in values.items()} if values else markup

    def _load(self, name: str) -> None:
        path = _LANGUAGES / f"{name}.po"
        if not re.fullmatch("[a-z]{2,3}", name) or not path.exists():
            raise ValueError(f"there is no report in the language {name!r}, but in {', '.join(languages())}")
        with path.open("rb") as file:
            catalogue = require("babel.messages.pofile", f"a report in {name}").read_po(file, locale=name)
        for message in catalogue:
            if message.id:
                key = message.id[0] if isinstance(message.id, tuple) else message.id
                translated: Union[str, Tuple[str, ...]] = message.string
                if all(translated if isinstance(translated, tuple) else (translated,)):
                    self._texts[key] = translated
        self._plural = gettext.c2py(catalogue.plural_expr)  # type: ignore[attr-defined]


def languages() -> Tuple[str, ...]:
    """The languages that a report can be in."""
    return ("en", *sorted(path.stem for path in _LANGUAGES.glob("*.po")))
