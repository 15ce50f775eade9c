"""What sphinx-build makes of the pages of make_pages.py; scripts/site.sh calls both."""

import ast
import os
import pathlib
import re
import sys

PACKAGE = pathlib.Path(os.environ["NEREO_PYTHON_PACKAGE"])
sys.path.insert(0, str(PACKAGE))

project = "NereoFileIO"
version = release = os.environ["NEREO_VERSION"]
root_doc = "index"
extensions = ["myst_parser", "sphinx.ext.autodoc"]
myst_heading_anchors = 4

toc_object_entries_show_parents = "hide"

html_theme = "furo"
html_title = f"{project} {version}"
html_static_path = ["static"]
html_css_files = ["site.css"]
html_copy_source = False
html_show_copyright = False
html_show_sphinx = False

autodoc_member_order = "groupwise"
autodoc_typehints = "none"


def with_short_texts_of_python(app, what, name, value, options, lines):
    """Methods that come from collections.abc bring texts that aren't in the form of these pages."""
    if lines and re.match(r" ?[A-Z]\.\w+\(", lines[0]):
        lines[:] = ["As in ``collections.abc``."]


def arguments(function):
    for argument in [*function.args.posonlyargs, *function.args.args, *function.args.kwonlyargs]:
        argument.annotation = None
    for rest in (function.args.vararg, function.args.kwarg):
        if rest:
            rest.annotation = None
    return "(" + re.sub(r"^self(, )?", "", ast.unparse(function.args)) + ")"


def stubs():
    """The arguments of the classes and methods that are written in C++, which don't know them: the stubs do."""
    found = {}
    for node in ast.parse((PACKAGE / "nereofile" / "_nereofile.pyi").read_text()).body:
        for part in node.body if isinstance(node, ast.ClassDef) else []:
            if isinstance(part, ast.FunctionDef):
                name = "" if part.name == "__init__" else f".{part.name}"
                found[f"nereofile.{node.name}{name}"] = arguments(part)
    return found


STUBS = stubs()


def with_arguments(app, what, name, value, options, signature, result):
    return (STUBS[name], None) if name in STUBS and what in ("class", "method") else None


def setup(app):
    app.connect("autodoc-process-signature", with_arguments)
    app.connect("autodoc-process-docstring", with_short_texts_of_python)
