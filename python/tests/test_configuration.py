"""The configuration as a mapping."""

import collections.abc
import copy
import pathlib
import pickle
from typing import Any, List

import pytest

import nereofile
from nereofile import Configuration, FileError


def test_a_new_one_has_the_defaults() -> None:
    configuration = Configuration()
    assert configuration["MaxIter"] == 10000 and configuration["AwsRegion"] == "us-east-1"
    assert configuration["StopTime"] == 1e20
    assert isinstance(configuration, collections.abc.MutableMapping)
    assert list(configuration) == sorted(configuration) and len(configuration) == len(list(configuration))
    assert configuration.version == nereofile.__version__ and configuration.path is None
    assert Configuration.DEFAULT_NAME == "NEREO2_default.xml"


def test_values_at_birth() -> None:
    assert Configuration({"MaxIter": 3}, Width=5) == Configuration(MaxIter=3, Width=5)
    with pytest.raises(KeyError):
        Configuration(maxiter=3)


def test_settings_keep_their_types() -> None:
    configuration = Configuration()
    configuration["StopTime"] = 3
    assert repr(configuration["StopTime"]) == "3.0"
    configuration["MaxIter"] = True
    assert repr(configuration["MaxIter"]) == "1"


def test_a_value_may_change_the_configuration() -> None:
    class Clearing:
        """A number that clears something when it is asked for."""

        def __init__(self, thing: Any) -> None:
            self._thing = thing

        def __index__(self) -> int:
            self._thing.clear()
            return 7

        __float__: Any = lambda self: float(self.__index__())

    configuration = Configuration()
    for key in ("MaxIter", "StopTime"):
        value: Any = Clearing(configuration)
        configuration[key] = value
        assert dict(configuration) == {key: 7}
    values: Any = {}
    values.update(Width=Clearing(values), Height=3)
    assert Configuration(values)["Width"] == 7 and values == {}


WRONG_VALUES = [
    ("MaxIter", "12abc", TypeError),
    ("MaxIter", 1.5, TypeError),
    ("MaxIter", None, TypeError),
    ("MaxIter", 2**31, ValueError),
    ("StopTime", "1", TypeError),
    ("JobPrefix", 1, TypeError),
    ("JobPrefix", b"a", TypeError),
    ("JobPrefix", "\ud800", ValueError),
    ("Maxiter", 1, KeyError),
    ("", 1, KeyError),
    (1, 1, TypeError),
]


@pytest.mark.parametrize("key, value, error", WRONG_VALUES)
def test_wrong_values(key: Any, value: Any, error: type) -> None:
    configuration = Configuration()
    with pytest.raises(error):
        configuration[key] = value
    assert configuration == Configuration()


def test_leaving_out_and_resetting() -> None:
    configuration = Configuration(MaxIter=5)
    del configuration["MaxIter"]
    assert "MaxIter" not in configuration and configuration.get("MaxIter") is None
    with pytest.raises(KeyError):
        configuration["MaxIter"]
    with pytest.raises(KeyError):
        del configuration["MaxIter"]
    with pytest.raises(TypeError):
        configuration["MaxIter"] = "a"
    assert "MaxIter" not in configuration
    configuration["MaxIter"] = 7
    assert configuration.pop("MaxIter") == 7
    configuration.reset("MaxIter")
    assert configuration["MaxIter"] == 10000
    with pytest.raises(KeyError):
        configuration.reset("nonsense")
    configuration.clear()
    assert len(configuration) == 0
    configuration.reset()
    assert configuration == Configuration()
    configuration.update(MaxIter=4)
    assert configuration.setdefault("MaxIter", 9) == 4 and dict(configuration)["MaxIter"] == 4


def test_texts_are_taken_as_a_file_has_them() -> None:
    configuration = Configuration()
    configuration.set_text("MaxIter", "12abc")
    configuration.set_text("StopTime", "1e400")
    assert configuration["MaxIter"] == 0 and configuration["StopTime"] == float("inf")
    assert configuration.text("ConvergenceCriteria") == "0.01"
    with pytest.raises(KeyError):
        configuration.set_text("nonsense", "1")


@pytest.mark.parametrize("name", ["a.xml", "a.cfg"])
def test_files(tmp_path: pathlib.Path, name: str) -> None:
    configuration = Configuration(MaxIter=5, JobPrefix="Wärme", StopTime=0.1 + 0.2)
    configuration.save(tmp_path / name)
    loaded = Configuration.load(str(tmp_path / name))
    assert loaded == configuration and loaded.path == tmp_path / name


def test_errors_of_files(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.cfg"
    path.write_text("Width 5\nnonsense 1\nMaxIter 5\n")
    with pytest.raises(FileError) as caught:
        Configuration.load(path)
    assert [finding.code for finding in caught.value.findings] == ["unknown-key"]
    loaded = Configuration.load(path, strict=False)
    assert (loaded["Width"], loaded["MaxIter"]) == (5, 10000)
    with pytest.raises(FileNotFoundError):
        Configuration.load(tmp_path / "missing.xml", strict=False)
    with pytest.raises(OSError):
        Configuration.load(tmp_path)
    for wrong in (1, None, b"a", "a\0b", "\ud800"):
        with pytest.raises((TypeError, ValueError)):
            Configuration.load(wrong)  # type: ignore[arg-type]


def test_the_content_of_another_suffix(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.cfg"
    Configuration().save(tmp_path / "a.xml")
    (tmp_path / "a.xml").rename(path)
    with pytest.raises(FileError, match="wrong-suffix"):
        Configuration.load(path)


def test_errors_of_saves(tmp_path: pathlib.Path) -> None:
    with pytest.raises(OSError):
        Configuration().save(tmp_path / "missing" / "a.xml")
    with pytest.raises(FileError, match="XML can't carry"):
        Configuration(JobPrefix="\x01").save(tmp_path / "a.xml")


def test_command_line() -> None:
    configuration = Configuration()
    configuration.take_command_line(["/opt/solver", "cavity", "-MaxIter", "500"])
    assert (configuration["JobPrefix"], configuration["ExePath"]) == ("cavity", "/opt")
    assert configuration["MaxIter"] == 500
    before = copy.copy(configuration)
    wrongs: List[List[str]] = [[], ["solver"], ["solver", "job", "-MaxIter"], ["solver", "job", "-Nonsense", "1"]]
    for wrong in wrongs:
        with pytest.raises(ValueError):
            configuration.take_command_line(wrong)
    assert configuration == before
    del configuration["ExePath"]
    with pytest.raises(KeyError):
        configuration.take_command_line(["solver", "job"])


def test_copies() -> None:
    configuration = Configuration(MaxIter=5)
    del configuration["Width"]
    for copied in (copy.copy(configuration), copy.deepcopy(configuration), pickle.loads(pickle.dumps(configuration))):
        assert copied == configuration
        copied["MaxIter"] = 6
        assert copied != configuration and configuration["MaxIter"] == 5
    other: object = 1
    assert configuration != other
    with pytest.raises(TypeError):
        hash(configuration)


def test_version() -> None:
    configuration = Configuration()
    configuration.version = "2023.1"
    assert configuration.version == "2023.1.0.0"
    for wrong in ("next", "1.2.3.4.5", "", "-1", "99999999999"):
        with pytest.raises(ValueError):
            configuration.version = wrong
