"""Nothing that Python code does with the package stops the interpreter.

Every callable and every attribute of it is given wrong types, indices and codes in a child process, which has to live
to its end, and each call that can't be right has to raise an exception.
"""

from __future__ import annotations

import pathlib
import subprocess
import sys
import textwrap

import pytest

CHILD = r'''
import faulthandler, itertools, os, sys, tempfile
faulthandler.enable()
os.chdir(tempfile.mkdtemp())
import nereofile
from nereofile import _nereofile

class Hostile:
    """Fails wherever it is asked something."""
    def __index__(self): raise LookupError("index")
    def __float__(self): raise LookupError("float")
    def __fspath__(self): raise LookupError("fspath")
    def __len__(self): raise LookupError("len")
    def __iter__(self): raise LookupError("iter")
    def __eq__(self, other): raise LookupError("eq")
    __hash__ = None

values = [
    None, True, 0, -1, 1, 5, 24, 25, 46, 47, 328, 329, 361, 362, 2**31 - 1, 2**31, -2**31, 2**63, -2**70, 0.5,
    float("nan"), float("inf"), "", "a", "kU", "kNone", "kSlipNode", "nonsense", "density", "a\0b", "\ud800", b"a",
    (), (1,), [None], {}, {"a": 1}, {1: 2}, object(), Hostile(), slice(None), slice(0, 5, 0), Ellipsis, int, len,
    nereofile.Flag("a", 1), nereofile.Material(), nereofile.Property("density"), nereofile.BoundaryCondition("kU"),
    nereofile.Smoke(), nereofile.MaterialDatabase([nereofile.Material()]), nereofile.ControlFile().flags,
]
calls = failures = 0

def attempt(act, *arguments, **keywords):
    global calls, failures
    calls += 1
    try:
        return act(*arguments, **keywords)
    except (Exception, GeneratorExit):
        failures += 1

def instances(cls):
    """An object of the class, if it makes one without arguments; and one whose __init__ never ran."""
    made = attempt(cls)
    if made is not None:
        yield made
    raw = attempt(cls.__new__, cls)
    if raw is not None:
        yield raw

SKIPPED = {"__class__", "__init_subclass__", "__subclasshook__", "__getattribute__", "__dir__", "__weakref__", "__dict__"}

def torture(instance, cls):
    for name in sorted(dir(cls)):
        if name in SKIPPED:
            continue
        member = attempt(getattr, instance, name)
        if callable(member):
            attempt(member)
            for value in values:
                attempt(member, value)
                attempt(getattr(cls, name), value)
            for first, second in itertools.product(values[::3], values[::4]):
                attempt(member, first, second)
        if not name.startswith("__"):
            for value in values:
                attempt(setattr, instance, name, value)
            attempt(delattr, instance, name)
    for act in (repr, str, bool, len, list, hash, iter, dir, lambda x: x == x, lambda x: x != x, lambda x: x < x):
        attempt(act, instance)

classes = [value for module in (nereofile, _nereofile) for value in vars(module).values() if isinstance(value, type)]
classes = [cls for cls in dict.fromkeys(classes) if cls.__module__.startswith("nereofile")]
assert len(classes) > 25, classes
for cls in classes:
    for value in values:
        attempt(cls, value)
        attempt(cls, value, value, value)
    for instance in instances(cls):
        torture(instance, cls)
    for other in classes:  # methods of one class on objects of another
        for instance in instances(other):
            for name in ("__len__", "__iter__", "__repr__", "__eq__", "__reduce__", "save", "names", "text", "copy"):
                method = getattr(cls, name, None)
                if method is not None:
                    attempt(method, instance)
                    attempt(method, instance, instance)

control = nereofile.ControlFile()
for view in (control.flags, control.constants, control.original_constants, control.under_relaxation,
             control.solution_control, control.equations, control.smoke, nereofile.GeometryBoundary().conditions):
    torture(view, type(view))

# What takes any object at all, or as many as there are.
TAKE_ANYTHING = {"get", "pop", "setdefault", "count", "__contains__", "__eq__", "__ne__", "__exit__"}
accepted = []

def refuse(where, act):
    """No number of objects that mean nothing is taken, but for none where there are no arguments."""
    for count in range(1, 8):
        try:
            act(*[object() for _ in range(count)])
        except Exception:
            continue
        accepted.append((where, count))

for cls in classes:
    # Records hold what they are given.
    is_plain = issubclass(cls, (tuple, int, Exception)) or hasattr(cls, "__dataclass_fields__")
    for name, member in vars(cls).items():
        own = callable(member) or isinstance(member, (staticmethod, classmethod))
        if own and name not in TAKE_ANYTHING | {"__new__"} and not is_plain:
            for instance in instances(cls):
                refuse(f"{cls.__name__}.{name}", getattr(instance, name) if name != "__init__" else cls)
        elif isinstance(member, property) and member.fset:
            for instance in instances(cls):
                refuse(f"{cls.__name__}.{name} =", lambda *values: setattr(instance, name, values[0]))
for name, function in vars(nereofile).items():
    if callable(function) and not isinstance(function, type) and function.__module__.startswith("nereofile"):
        refuse(name, function)
assert accepted == [], accepted

for module in (nereofile, _nereofile):
    for name, function in vars(module).items():
        if callable(function) and not isinstance(function, type):
            attempt(function)
            for value in values:
                attempt(function, value)
            for first, second in itertools.product(values[::2], values[::3]):
                attempt(function, first, second)
for arguments in itertools.product(values[::9], repeat=4):
    attempt(_nereofile.scan_results, *arguments)
for arguments in itertools.product(values[::13], repeat=6):
    attempt(_nereofile.load_results, "missing", *arguments)
print(f"survived {calls} calls, {failures} of which raised")
assert failures > calls / 2
'''


def run_child(code: str) -> "subprocess.CompletedProcess[str]":
    return subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, timeout=900, check=False)


def test_every_method_with_wrong_arguments() -> None:
    child = run_child(CHILD)
    assert child.returncode == 0, (child.stdout + child.stderr)[-4000:]
    assert child.stdout.startswith("survived ")


# What C++ would answer by stopping the process or by undefined behaviour.
STOPPERS = [
    "Material()['nonsense']",
    "Material().property('nonsense')",
    "Property('nonsense')",
    "Property('density').remove_point(0)",
    "MaterialDatabase()[0]",
    "MaterialDatabase()['Water']",
    "MaterialDatabase().pop()",
    "BoundaryCondition(362)",
    "BoundaryCondition(1).set_extra_value(0, 1.0)",
    "ControlFile().constants[0]",
    "ControlFile().constants[329]",
    "ControlFile().under_relaxation[47]",
    "ControlFile().solution_control[25]",
    "ControlFile().equations[5]",
    "ControlFile().flags[0]",
    "name_for_code(362)",
    "Configuration()['nonsense']",
    "GeometryBoundary(units=9)",
    "Configuration.__new__(Configuration).clear()",
    "Material.__new__(Material).name",
    "type(Configuration()).__base__()",
    "type(Configuration)('Other', (object,), {})()",
    "Configuration()._from_state(None)",
    "Configuration.clear(None)",
    "Flag.value.__get__(None)(3)",
    "Material._from_state(())",
    "Configuration._from_state(('1', ((1, 2),)))",
    "ControlFile._from_state(((),) * 9)",
]


@pytest.mark.parametrize("statement", STOPPERS)
def test_what_would_stop_the_process_is_an_exception(statement: str) -> None:
    code = f"""
        from nereofile import *
        from nereofile import _nereofile
        try:
            {statement}
        except Exception as error:
            print(type(error).__name__)
    """
    child = run_child(textwrap.dedent(code))
    assert child.returncode == 0 and child.stdout.strip(), child.stderr


def test_files_that_stop_a_load(tmp_path: pathlib.Path) -> None:
    code = f"""
        import nereofile, pathlib
        path = pathlib.Path({str(tmp_path / "a.ctl")!r})
        control = nereofile.ControlFile()
        control.flags.append(nereofile.Flag("a", 1))
        control.save(path)
        path.write_text(path.read_text().replace("a 1", ""))
        try:
            nereofile.ControlFile.load(path)
        except nereofile.FileError as error:
            print([finding.code for finding in error.findings])
        print(nereofile.ControlFile.load(path, strict=False).flags)
    """
    child = run_child(textwrap.dedent(code))
    assert child.returncode == 0, child.stderr
    assert "flag-count" in child.stdout and "<Flags: 0>" in child.stdout
