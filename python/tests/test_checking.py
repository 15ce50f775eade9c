"""Checks, outlines and kinds of files."""

import json
import pathlib
import pickle

import numpy as np
import pytest
from made_results import results_bytes, write_results

import nereofile
from nereofile import FileError, check, inspect


def test_check_says_what_is_wrong(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.cfg"
    path.write_text("MaxIter five\nWidth 10\n")
    result = check(path)
    assert len(result) == 1 and not result
    file = result[0]
    assert (file.file, file.kind, file.errors, file.warnings) == (str(path), "configuration-text", 1, 0)
    finding = file.findings[0]
    assert (finding.severity, finding.code, finding.effect) == ("error", "not-an-integer", "zero")
    assert (finding.line, finding.column, finding.offset, finding.address) == (1, 9, 8, "MaxIter")
    assert (finding.found, finding.expected, finding.more) == ("five", "a whole number", 0)
    assert str(finding).startswith(f"{path}:1:9: error: ") and str(finding).endswith("[not-an-integer] MaxIter")
    assert (result.errors, result.warnings, result.notes, result.findings) == (1, 0, 0, file.findings)
    with pytest.raises(FileError) as caught:
        result.raise_for_errors()
    assert caught.value.findings == (finding,)
    assert pickle.loads(pickle.dumps(caught.value)).findings == (finding,)
    assert pickle.loads(pickle.dumps(result)) == result


def test_json_is_the_document_of_the_library(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.cfg"
    path.write_text("MaxIter five\n")
    document = json.loads(check(path).to_json())
    assert document["errors"] == 1
    assert document["files"][0]["findings"][0]["code"] == "not-an-integer"


def test_clean_files(samples: pathlib.Path) -> None:
    assert check(samples / "solver.cfg", samples / "cavity.res", samples / "NEREO2_default.xml")
    check(samples / "cavity.res").raise_for_errors()


def test_a_case_is_compared(folder: pathlib.Path) -> None:
    nereofile.GeometryBoundary(job_name="other").save("a.gbi")
    nereofile.Configuration(JobPrefix="cavity").save("a.xml")
    codes = [finding.code for finding in check("a.xml", "a.gbi", case=True).findings]
    assert "job-differs" in codes
    assert "job-differs" not in [finding.code for finding in check("a.xml", "a.gbi").findings]


def test_kinds(samples: pathlib.Path, tmp_path: pathlib.Path) -> None:
    assert nereofile.kind_of_file(samples / "cavity.ctl") == "control"
    assert nereofile.kind_of_file(tmp_path / "missing") is None
    assert check(samples / "cavity.ctl", kind="results")[0].kind == "results"
    with pytest.raises(ValueError, match="no kind of file is called"):
        check(samples / "cavity.ctl", kind="control-file")


def test_a_missing_file_is_a_finding_of_check(tmp_path: pathlib.Path) -> None:
    assert [finding.code for finding in check(tmp_path / "missing").findings] == ["cannot-open"]


def test_inspect_gives_values_by_address(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.cfg"
    path.write_text("MaxIter 5\nWidth 1\nMaxIter  6\n")
    values = inspect(path)
    assert values.kind == "configuration-text" and list(values) == ["MaxIter", "Width"]
    item = values["MaxIter"]
    assert (item.type, item.value, item.spelling) == ("integer", 6, "6")
    assert (item.line, item.column, item.offset, item.length) == (3, 10, 27, 1)
    assert [entry.spelling for entry in values.entries] == ["5", "1", "6"]
    assert len(values) == 2 and "Height" not in values
    with pytest.raises(KeyError):
        values["Height"]


def test_inspect_of_what_it_does_not_know(tmp_path: pathlib.Path) -> None:
    with pytest.raises(FileNotFoundError):
        inspect(tmp_path / "missing")
    (tmp_path / "empty").write_bytes(b"")
    with pytest.raises(FileError, match="nothing tells"):
        inspect(tmp_path / "empty")


def test_effective_settings(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.cfg"
    path.write_text("MaxIter 5\nWidth 7\n")
    found = {setting.key: setting for setting in nereofile.effective_settings(path, ["solver", "job", "-MaxIter", "9"])}
    assert found["MaxIter"][1:3] == ("9", "command-line") and found["JobPrefix"][1:3] == ("job", "command-line")
    assert found["Width"] == ("Width", "7", "file", 2, 7, 16) and found["Height"].origin == "default"
    with pytest.raises(ValueError):
        nereofile.effective_settings(path, ["solver", "job", "-MaxIter"])
    path.write_text("nonsense 5\n")
    with pytest.raises(FileError, match="unknown-key"):
        nereofile.effective_settings(path)
    with pytest.raises(FileNotFoundError):
        nereofile.effective_settings(tmp_path / "missing.cfg")


def test_address_parts() -> None:
    assert nereofile.address_part("a/b%c#d") == "a%2Fb%25c%23d"


def test_names_and_codes() -> None:
    assert len(nereofile.field_variables) == 361 and len(nereofile.node_flags) == 14
    assert nereofile.field_variables["kP"] == 4 and nereofile.code_for_name("kSlipNode") == 20
    assert nereofile.name_for_code(27) == "kKXX" and nereofile.code_for_name("kCond") == 27
    assert nereofile.name_for_code(20, prefer_flag_name=True) == "kSlipNode"
    for name in ("", "kp", "nonsense"):
        with pytest.raises(KeyError):
            nereofile.code_for_name(name)
    for code in (-1, 362):
        with pytest.raises(ValueError):
            nereofile.name_for_code(code)
    with pytest.raises(TypeError):
        nereofile.field_variables["kP"] = 5  # type: ignore[index]


def test_vocabularies() -> None:
    assert nereofile.material_types["internal_fan"].display_name == "Internal Fan/Pump"
    assert nereofile.property_types["density"].code == 25
    assert nereofile.variation_types["EOS"].name == "equation_of_state"


def test_diff(tmp_path: pathlib.Path) -> None:
    a, b = tmp_path / "a.cfg", tmp_path / "b.xml"
    nereofile.Configuration(MaxIter=5).save(a)
    other = nereofile.Configuration(MaxIter=6)
    del other["Width"]
    other.save(b)
    found = nereofile.diff(a, b)
    assert [(d.address, d.a, d.b, d.field) for d in found] == [("MaxIter", "5", "6", None), ("Width", "10", None, None)]
    assert not found.same and str(found).splitlines() == ["MaxIter: 5 -> 6", "- Width: 10"]
    assert json.loads(found.to_json())["same"] is False
    assert nereofile.diff(a, a).same and len(nereofile.diff(a, a)) == 0
    assert pickle.loads(pickle.dumps(found)) == found


def test_diff_of_results(tmp_path: pathlib.Path) -> None:
    a = write_results(tmp_path / "a.res")
    b = tmp_path / "b.res"
    values = np.column_stack([np.arange(1.0, 11), -np.arange(1.0, 11)])
    values[4, 0] += 0.5
    b.write_bytes(results_bytes(values))
    (difference,) = nereofile.diff(a, b)
    assert difference.address == "kU" and difference.field is not None
    field = difference.field
    assert (field.count, field.largest, field.node, field.a, field.b, field.peak) == (1, 0.5, 5, 5.0, 5.5, 10.0)
    assert nereofile.diff(a, b, absolute=0.5).same
    assert nereofile.diff(a, b, fields=["kP"]).same
    assert not nereofile.diff(a, b, relative=0.01, peak=0.01).same
    told = []
    nereofile.diff(a, b, progress=lambda done, in_all: told.append(done))
    assert told


def test_diff_refuses(folder: pathlib.Path) -> None:
    with pytest.raises(FileNotFoundError):
        nereofile.diff("missing", "cavity.res")
    with pytest.raises(FileError):
        nereofile.diff("cavity.ctl", "cavity.res")
    with pytest.raises(KeyError):
        nereofile.diff("cavity.res", "cavity.res", fields=["kNull"])
    with pytest.raises(nereofile.Cancelled):
        nereofile.diff("cavity.res", "cavity.res", progress=lambda done, in_all: False)
    with pytest.raises(TypeError):
        nereofile.diff("cavity.res", "cavity.res", fields="kU")
    for wrong in (-1, float("nan")):
        with pytest.raises(ValueError):
            nereofile.diff("cavity.res", "cavity.res", absolute=wrong)
