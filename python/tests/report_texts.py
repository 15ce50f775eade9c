"""The texts of a report and their translations.

    python3 python/tests/report_texts.py   brings python/nereofile/locale/*.po up to date, where texts are then to be added
"""

from __future__ import annotations

import io
import pathlib
from typing import Any, Tuple, Union

from babel.messages import Catalog, extract, pofile
from jinja2.ext import babel_extract

PACKAGE = pathlib.Path(__file__).parents[1] / "nereofile"
LOCALES = PACKAGE / "locale"

_HEADER = b"""# What a report says in another language. python/tests/report_texts.py brings the texts up to date.
msgid ""
msgstr ""
"Content-Type: text/plain; charset=utf-8\\n"
"Plural-Forms: %s\\n"

"""

_KEYWORDS: "dict[str, Any]" = {"_": None, "ngettext": (1, 2)}


def texts_of_report() -> Any:
    """A catalogue of all texts, by where they are."""
    catalogue = Catalog(fuzzy=False)
    for path in sorted((PACKAGE / "report").rglob("*")):
        method = {".j2": babel_extract, ".py": "python"}.get(path.suffix)
        if method is None:
            continue
        for _line, message, _comments, _context in extract.extract(
            method, io.BytesIO(path.read_bytes()), keywords=_KEYWORDS, options={"trimmed": "true"}
        ):
            text: Union[str, Tuple[str, ...]] = message
            catalogue.add(text, locations=[(path.relative_to(PACKAGE).as_posix(), None)])
    return catalogue


def catalogue_of(path: pathlib.Path) -> Any:
    """What a file has."""
    with path.open("rb") as file:
        return pofile.read_po(file, locale=path.stem)


def main() -> None:
    """Adds new texts to the files and takes out those that are gone."""
    for path in sorted(LOCALES.glob("*.po")):
        catalogue = catalogue_of(path)
        catalogue.update(texts_of_report(), no_fuzzy_matching=True)
        catalogue.obsolete.clear()
        with path.open("wb") as out:
            out.write(_HEADER % catalogue.plural_forms.encode())
            pofile.write_po(out, catalogue, omit_header=True, sort_output=True, width=110)


if __name__ == "__main__":
    main()
