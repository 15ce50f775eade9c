"""The page of a report: that it is sound whatever is in the files, and the same each time."""

from __future__ import annotations

import io
import math
import os
import pathlib
import pty
import re
import shutil
import subprocess
import sys
from typing import Any, Callable, List

import made_cases
import numpy as np
import pytest
from conftest import SAMPLES
from made_results import results_bytes

pytest.importorskip("jinja2")
pytest.importorskip("matplotlib")
from nereofile.report import case, command, report  # noqa: E402
from nereofile.report._context import Context  # noqa: E402
from nereofile.report.page import render  # noqa: E402
from nereofile.report.progress import Bar, Progress  # noqa: E402
from nereofile.report.texts import Language  # noqa: E402

CASES: "dict[str, Callable[[pathlib.Path], pathlib.Path]]" = {
    "whole": made_cases.whole_case,
    "hostile": made_cases.hostile_case,
    "damaged": made_cases.damaged_case,
    "long": lambda folder: made_cases.long_case(folder, 10_000_000),
    "empty": made_cases.empty_case,
}


class Page:
    """A page, and what is in it by a reader that forgives nothing."""

    def __init__(self, html: str) -> None:
        html5lib = pytest.importorskip("html5lib")
        self.html = html
        parser = html5lib.HTMLParser(tree=html5lib.getTreeBuilder("etree"), namespaceHTMLElements=False, strict=True)
        self.root: Any = parser.parse(html)

    def all(self, tag: str) -> List[Any]:
        """The elements of a name, those of SVG included."""
        return [one for one in self.root.iter() if isinstance(one.tag, str) and one.tag.rpartition("}")[2] == tag]

    @property
    def text(self) -> str:
        """All that is read."""
        return " ".join(" ".join(self.root.itertext()).split())


def check_soundness(page: Page) -> None:
    ids = [one.attrib["id"] for one in page.root.iter() if "id" in one.attrib]
    assert len(ids) == len(set(ids))
    for one in page.root.iter():
        for name, value in one.attrib.items():
            if name.rpartition("}")[2] in ("href", "src", "action", "data"):
                assert value == "data:," or (value[0] == "#" and value[1:] in ids), value
            assert not name.lower().startswith("on"), name
            assert "url(" not in value or re.fullmatch(r"url\(#[\w-]+\)", value), value
    assert len(page.all("script")) == 1 and len(page.all("style")) == 1
    assert not page.all("img") and not page.all("iframe") and not page.all("u") and not page.all("i")
    assert not re.search("[\x00-\x08\x0b\x0c\x0e-\x1f\x7f-\x9f\u202a-\u202e\ufffe\uffff]", page.html)
    levels = [int(one.tag[1]) for one in page.root.iter() if re.fullmatch("h[1-6]", str(one.tag))]
    assert levels[0] == 1 and levels.count(1) == 1
    assert all(after <= before + 1 for before, after in zip(levels, levels[1:])), levels
    for table in page.all("table"):
        assert table.find("caption") is not None
    for head in page.all("th"):
        assert head.attrib["scope"] in ("col", "row")
    for svg in page.all("svg"):
        assert svg.attrib.get("aria-hidden") == "true" or svg.attrib["aria-label"]


@pytest.mark.parametrize("name", CASES)
def test_a_page_is_sound(tmp_path: pathlib.Path, name: str) -> None:
    page = Page(report(CASES[name](tmp_path / "case")))
    check_soundness(page)
    assert len(page.html) < 1_000_000


@pytest.mark.parametrize("name", ["whole", "hostile"])
def test_a_page_of_two_cases_is_sound(tmp_path: pathlib.Path, name: str) -> None:
    other = made_cases.whole_case(tmp_path / "<b>other</b>")
    check_soundness(Page(report(CASES[name](tmp_path / "case"), compare=other)))


def test_a_page_stays_small_and_says_what_it_leaves_out(tmp_path: pathlib.Path) -> None:
    html = report(made_cases.swollen_case(tmp_path / "case"))
    assert len(html.encode()) < 10_000_000
    ids = re.findall(r' id="([^"]*)"', html)
    assert len(ids) == len(set(ids)) and set(re.findall(r' href="#([^"]*)"', html)) <= set(ids)
    for expected in [
        "2000 of 13\u202f750 are listed", "Of 25 files the first 20 are shown", "The first 100 of 261 are listed",
        "Of 13\u202f000 materials the 200", "The first 12\u202f000 of 13\u202f000", "Of 200 curves the first 60 are drawn",
        "The first 100\u202f000 of 110\u202f000", "Of 40 files the last 16 are shown", "The first 24 of 60 are drawn",
    ]:
        assert expected in html, expected


def test_all_sections_are_there(tmp_path: pathlib.Path) -> None:
    page = Page(report(made_cases.whole_case(tmp_path / "case")))
    leading = [one.attrib["href"] for one in page.all("a") if one.text == "Water"]
    assert leading == ["#material-2"] * 3  # of the control file, the table of materials, and the conditions
    titles = [str(one.text) for one in page.all("h2")]
    assert titles == ["Files", "Findings", "Configuration", "Control file", "Materials", "Conditions", "Results"]
    for expected in ["Channel with a step", "30 of 40", "Water", "kGravY", "History", "1–3, 7"]:
        assert expected in page.text, expected


@pytest.mark.parametrize("name, expected", [
    ("empty", ["There is no file of a case in this folder", "There are no results in this folder."]),
    ("damaged", ["There are errors", "noise-channel_10.res", "cut-short", "Not recognised"]),
    ("hostile", ["<script>alert('1')</script>", "<img src=x onerror=alert(1)>.ctl", "{{ 7 * 7 }} %s %(a)s"]),
    ("long", ["(10 000 000 characters)"]),
])
def test_what_a_page_says(tmp_path: pathlib.Path, name: str, expected: List[str]) -> None:
    text = Page(report(CASES[name](tmp_path / "case"))).text
    for part in expected:
        assert part in text, part


@pytest.mark.parametrize("language, said", [
    ("en", "kP can't be drawn: a file has no finite value of it, or one that is too large."),
    ("de", "kP lässt sich nicht zeichnen: eine Datei hat davon keinen endlichen Wert oder einen zu großen."),
])
@pytest.mark.parametrize("value", [math.nan, -math.inf, 1.1e300])
def test_a_history_that_cannot_be_drawn(tmp_path: pathlib.Path, value: float, language: str, said: str) -> None:
    if language != "en":
        pytest.importorskip("babel")
    for iteration in (10, 20):
        values = np.array([[1.0, value], [float(iteration), value]])
        (tmp_path / f"{iteration}.res").write_bytes(results_bytes(values, iteration=iteration))
    page = Page(report(tmp_path, language=language))
    check_soundness(page)
    [nothing] = [one for one in page.all("p") if one.attrib.get("class") == "nothing" and str(one.text).startswith("kP")]
    assert nothing.text == said
    assert [one.text[:2] for one in page.all("figcaption") if one.text[0] == "k"] == ["kU"]


def test_the_same_case_is_the_same_page(tmp_path: pathlib.Path) -> None:
    first = report(made_cases.whole_case(tmp_path / "one"))
    assert first == report(tmp_path / "one")
    shutil.copytree(tmp_path / "one", tmp_path / "elsewhere" / "two")
    assert first == report(tmp_path / "elsewhere" / "two")
    assert str(tmp_path) not in first


def test_the_surroundings_do_not_matter(tmp_path: pathlib.Path) -> None:
    folder = made_cases.whole_case(tmp_path / "one")
    (tmp_path / "matplotlibrc").write_text("lines.linewidth: 7\nfont.size: 20\naxes.grid.axis: x\n")
    pages = set()
    for surroundings in (
        {"PYTHONHASHSEED": "1"},
        {"PYTHONHASHSEED": "2", "TZ": "Asia/Tokyo", "LC_ALL": "de_DE.UTF-8", "SOURCE_DATE_EPOCH": "1"},
        {"MATPLOTLIBRC": str(tmp_path / "matplotlibrc")},
    ):
        run(["report", str(folder), "-o", str(tmp_path / "page.html")], **surroundings)
        pages.add((tmp_path / "page.html").read_bytes())
    assert len(pages) == 1


def run(arguments: List[str], **environment: str) -> "subprocess.CompletedProcess[str]":
    return subprocess.run(
        [sys.executable, "-m", "nereofile", *arguments],
        env={**os.environ, **environment}, capture_output=True, text=True, check=False,
    )


def test_the_command(tmp_path: pathlib.Path) -> None:
    out = tmp_path / "case.html"
    done = run(["report", str(SAMPLES), "-o", str(out)])
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "")
    page = Page(out.read_text())
    check_soundness(page)
    assert len(page.html.encode()) < 1_000_000
    assert run(["report", str(SAMPLES), "-o", "-"]).stdout == page.html


def test_a_page_in_the_folder_of_the_case_is_not_a_part_of_it(tmp_path: pathlib.Path) -> None:
    folder = made_cases.whole_case(tmp_path / "case")
    out = folder / "case.html"
    pages = set()
    for _ in range(2):
        assert run(["report", str(folder), "-o", str(out)]).returncode == 0
        pages.add(out.read_bytes())
    assert len(pages) == 1 and not list(folder.glob(".nereo*"))


@pytest.mark.parametrize("arguments, reason", [
    (["report", "nowhere"], "nowhere: No such file or directory"),
    (["report", "{samples}/solver.cfg"], "Not a directory"),
    (["report", "{samples}", "--compare", "nowhere"], "nowhere: No such file or directory"),
    (["report", "{samples}", "-o", "nowhere/case.html"], "No such file or directory"),
    (["report"], "FOLDER"),
    (["report", "{samples}", "--language", "xx"], "invalid choice"),
    (["else"], "usage"),
])
def test_no_page(tmp_path: pathlib.Path, arguments: List[str], reason: str) -> None:
    done = run([argument.format(samples=SAMPLES) for argument in arguments])
    assert done.returncode == 2
    assert reason in done.stderr and "Traceback" not in done.stderr
    assert done.stdout == ""


@pytest.mark.parametrize("name, reason", [
    ("kept.res", "a page doesn't take the place of a file of a case"),
    ("folder", "Is a directory"),
    ("", "No such file or directory"),
])
def test_what_a_page_takes_no_place_of(tmp_path: pathlib.Path, name: str, reason: str) -> None:
    made_cases.write_snapshot(tmp_path / "kept.res", 1)
    (tmp_path / "folder").mkdir()
    before = (tmp_path / "kept.res").read_bytes()
    done = run(["report", str(tmp_path), "-o", name and str(tmp_path / name)])
    assert (done.returncode, done.stdout) == (2, "") and reason in done.stderr and ".nereo" not in done.stderr
    assert (tmp_path / "kept.res").read_bytes() == before


def test_a_page_that_may_not_be_changed_stays(
    tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
) -> None:
    (tmp_path / "a.html").write_text("mine")
    monkeypatch.setattr(os, "access", lambda *_: False)  # root may change all
    assert command.main([str(tmp_path), "-o", str(tmp_path / "a.html")]) == 2
    assert "a.html: Permission denied" in capsys.readouterr().err
    assert (tmp_path / "a.html").read_text() == "mine"


def test_a_page_keeps_its_mode(tmp_path: pathlib.Path) -> None:
    page = tmp_path / "a.html"
    page.write_text("old")
    page.chmod(0o600)
    assert command.main([str(tmp_path), "-o", str(page)]) == 0
    assert page.read_text() != "old" and page.stat().st_mode & 0o777 == 0o600
    mask = os.umask(0o027)
    try:
        assert command.main([str(tmp_path), "-o", str(tmp_path / "new.html")]) == 0
    finally:
        os.umask(mask)
    assert (tmp_path / "new.html").stat().st_mode & 0o777 == 0o640


@pytest.mark.parametrize("closed, code, said", [("stdout", 2, "the standard output: Bad file descriptor"), ("stderr", 0, "")])
def test_a_stream_that_is_not_there(tmp_path: pathlib.Path, closed: str, code: int, said: str) -> None:
    program = "import sys; sys.{} = None; from nereofile.__main__ import main; sys.exit(main(sys.argv[1:]))".format(closed)
    done = subprocess.run(
        [sys.executable, "-c", program, "report", str(tmp_path), "-o", "-"], capture_output=True, text=True, check=False
    )
    assert done.returncode == code and said in done.stderr and "Traceback" not in done.stderr


def test_a_reader_that_has_gone(tmp_path: pathlib.Path) -> None:
    reader, writer = os.pipe()
    os.close(reader)
    done = subprocess.run(
        [sys.executable, "-m", "nereofile", "report", str(tmp_path), "-o", "-"],
        stdout=writer, stderr=subprocess.PIPE, text=True, check=False,
    )
    os.close(writer)
    assert (done.returncode, done.stderr) == (2, "nereofile report: Broken pipe\n")


def test_a_name_gives_no_commands_to_a_terminal(monkeypatch: pytest.MonkeyPatch) -> None:
    pytest.importorskip("tqdm")
    said = io.StringIO()
    monkeypatch.setattr(sys, "stderr", said)
    bar = Bar()
    bar.say("\x1b]0;title\x07.res")
    bar.close()
    assert "title" in said.getvalue() and "\x1b]" not in said.getvalue() and "\x07" not in said.getvalue()


@pytest.mark.parametrize("content, said", [
    ("MaxIter 5\n", "What was looked at is sound"), ("MaxIter 5\nMaxIter 6\n", "What was looked at loads, with warnings"),
    ("MaxIter five\n", "There are errors"),
])
def test_the_verdict_is_of_what_was_looked_at(
    tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch, content: str, said: str
) -> None:
    monkeypatch.setattr(case, "MOST_FILES", 1)
    for name in ("a.cfg", "b.cfg"):
        (tmp_path / name).write_text(content)
    text = Page(report(tmp_path)).text
    assert said in text and "1 more file isn't looked at." in text


def cut(path: pathlib.Path) -> None:
    path.write_bytes(path.read_bytes()[: path.stat().st_size // 2])


def grow(path: pathlib.Path) -> None:
    path.write_bytes(2 * path.read_bytes())


def become_folder(path: pathlib.Path) -> None:
    path.unlink()
    path.mkdir()


def become_another(path: pathlib.Path) -> None:
    others = sorted(SAMPLES.iterdir())
    path.write_bytes(others[len(path.name) % len(others)].read_bytes())


MISHAPS: "dict[str, Callable[[pathlib.Path], object]]" = {
    "deleted": pathlib.Path.unlink,
    "emptied": lambda path: path.write_bytes(b""),
    "full of other bytes": lambda path: path.write_bytes(bytes(range(256)) * 7),
    "cut": cut,
    "longer": grow,
    "a folder": become_folder,
    "another file": become_another,
}


class Mishap(Progress):
    """What happens to all files of a folder once something of the report is begun."""

    def __init__(self, folder: pathlib.Path, when: str, act: Callable[[pathlib.Path], object]) -> None:
        self._paths = sorted(folder.iterdir())
        self._when = when
        self._act = act

    def say(self, what: str) -> None:
        if what == self._when:
            while self._paths:
                self._act(self._paths.pop())


@pytest.mark.parametrize("when", ["check", "channel_10.res", "channel_30.res", "compare", "page"])
@pytest.mark.parametrize("mishap", MISHAPS)
def test_files_that_change_while_a_page_is_made(tmp_path: pathlib.Path, mishap: str, when: str) -> None:
    folder, other = made_cases.whole_case(tmp_path / "case"), made_cases.whole_case(tmp_path / "other")
    page = Page(report(folder, compare=other, progress=Mishap(folder, when, MISHAPS[mishap])))
    check_soundness(page)
    assert "channel_30.res" in page.text


@pytest.mark.parametrize("mishap", MISHAPS)
def test_files_that_change_after_they_were_checked(tmp_path: pathlib.Path, mishap: str) -> None:
    folder = made_cases.whole_case(tmp_path)
    found = case.read_case(str(folder))
    for path in sorted(folder.iterdir()):
        MISHAPS[mishap](path)
    page = Page(render(Context(found), Language()))
    check_soundness(page)
    assert "channel_30.res" in page.text


def test_help() -> None:
    for arguments in (["--help"], ["report", "--help"]):
        done = run(arguments)
        assert done.returncode == 0 and "report" in done.stdout


@pytest.mark.parametrize("hidden, language", [("jinja2", "en"), ("matplotlib", "en"), ("babel", "de")])
def test_without_a_library_it_says_which(tmp_path: pathlib.Path, hidden: str, language: str) -> None:
    code = f"import sys; sys.modules[{hidden!r}] = None; from nereofile.__main__ import main; sys.exit(main(sys.argv[1:]))"
    out = tmp_path / "case.html"
    done = subprocess.run(
        [sys.executable, "-c", code, "report", str(SAMPLES), "--language", language, "-o", str(out)],
        capture_output=True, text=True, check=False,
    )
    assert done.returncode == 2 and f"install python3-{hidden}, or {hidden} by pip" in done.stderr
    assert "Traceback" not in done.stderr and not out.exists()


def test_english_takes_no_babel() -> None:
    code = "import sys; sys.modules['babel'] = None; from nereofile.report import report; print(report(sys.argv[1])[:15])"
    done = subprocess.run([sys.executable, "-c", code, str(SAMPLES)], capture_output=True, text=True, check=False)
    assert done.stdout == "<!DOCTYPE html>\n", done.stderr


@pytest.mark.parametrize("hidden", ["", "tqdm"])
def test_progress_is_for_terminals(tmp_path: pathlib.Path, hidden: str) -> None:
    terminal, end = pty.openpty()
    code = f"import sys; sys.modules[{hidden!r}] = None; from nereofile.__main__ import main; sys.exit(main(sys.argv[1:]))"
    done = subprocess.run(
        [sys.executable, "-c", code, "report", str(made_cases.whole_case(tmp_path / "case")), "-o", "-"],
        stdout=subprocess.PIPE, stderr=end, check=False,
    )
    os.close(end)
    shown = os.read(terminal, 100_000).decode()
    os.close(terminal)
    assert done.returncode == 0 and done.stdout.startswith(b"<!DOCTYPE html>")
    assert "100 %" in shown or (not hidden and "page" in shown), shown


def test_a_page_in_german_is_sound(tmp_path: pathlib.Path) -> None:
    pytest.importorskip("babel")
    page = Page(report(made_cases.whole_case(tmp_path / "case"), language="de"))
    check_soundness(page)
    assert page.root.attrib["lang"] == "de"
    for expected in ["Befunde", "30 von 40", "9 Randbedingungen", "1 Randbedingung", "Verlauf"]:
        assert expected in page.text, expected


def test_each_text_is_translated(tmp_path: pathlib.Path) -> None:
    pytest.importorskip("babel")
    from report_texts import LOCALES, catalogue_of, texts_of_report

    texts = {message.id for message in texts_of_report() if message.id}
    assert len(texts) > 200
    for path in LOCALES.glob("*.po"):
        translated = {message.id: message.string for message in catalogue_of(path) if message.id}
        assert set(translated) == texts, path.name
        for text, translation in translated.items():
            forms = translation if isinstance(translation, tuple) else (translation,)
            originals = text if isinstance(text, tuple) else (text,)
            for form in forms:
                assert form, text
                assert set(re.findall(r"%\(\w+\)s", form)) == set(re.findall(r"%\(\w+\)s", originals[-1])), text


def test_no_other_language(tmp_path: pathlib.Path) -> None:
    for name in ("xx", "../de", ""):
        with pytest.raises(ValueError, match="there is no report in the language"):
            report(tmp_path, language=name)
