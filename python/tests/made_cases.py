"""Cases for the tests of reports: folders with the files of a run."""

from __future__ import annotations

import math
import pathlib
import shutil

import numpy as np
from conftest import SAMPLES
from made_results import results_bytes

import nereofile

HOSTILE = "<script>alert('1')</script>\"&amp; ${x}$ \\frac <!-- --> </style> ]]> \u202eevil {{ 7 * 7 }} %s %(a)s"


def whole_case(folder: pathlib.Path) -> pathlib.Path:
    """A case with a file of each kind, and three snapshots."""
    folder.mkdir(parents=True, exist_ok=True)
    nereofile.Configuration(JobPrefix="channel", MaxIter=40).save(folder / "channel.xml")
    shutil.copy(SAMPLES / "materials.xml", folder)
    water = nereofile.MaterialDatabase.load(SAMPLES / "materials.xml", strict=False)["Water"]

    control = nereofile.ControlFile(title="Channel with a step")
    control.under_relaxation["kU"] = 0.25
    control.constants["kGravY"] = -9.81
    control.materials.append(water)
    control.save(folder / "channel.ctl")

    boundary = nereofile.GeometryBoundary("channel")
    boundary.materials.append(water)
    for entity in (1, 2, 3, 7):
        boundary.conditions.append(nereofile.BoundaryCondition("kU", float(entity), entity))
        boundary.conditions.append(nereofile.BoundaryCondition("kV", 0.0, entity))
    boundary.conditions.append(nereofile.BoundaryCondition("kP", 2.5, 9, 4, (1.0, 2.0)))
    boundary.save(folder / "channel.gbi")
    for iteration in (10, 20, 30):
        write_snapshot(folder / f"channel_{iteration}.res", iteration)
    return folder


def write_snapshot(path: pathlib.Path, iteration: int, node_count: int = 101, time: float = 0.0) -> None:
    """A wave in kU that grows with the iteration, and a level kP."""
    nodes = np.arange(node_count, dtype=float)
    wave = np.round(np.sin(nodes * (2 * math.pi / 100)) * iteration, 6)
    content = results_bytes(np.column_stack([wave, np.full(node_count, 5.0)]), iteration=iteration, time=time)
    path.write_bytes(content)


def material_with_curve(name: str) -> nereofile.Material:
    """A fluid whose viscosity depends on the temperature."""
    material = nereofile.Material("fluid", name=name, id=1)
    curve = material["viscosity"]
    curve.variation_type, curve.independent_variable, curve.points = "piecewise_linear", "kT", [(1, 2), (3, 4)]
    return material


def empty_case(folder: pathlib.Path) -> pathlib.Path:
    """No file at all."""
    folder.mkdir(parents=True)
    return folder


def hostile_case(folder: pathlib.Path) -> pathlib.Path:
    """Texts that try to be markup, in each place where a text can stand."""
    folder.mkdir(parents=True, exist_ok=True)
    name = "<img src=x onerror=alert(1)>.ctl"
    configuration = nereofile.Configuration(JobPrefix=HOSTILE, AnalyzePath=HOSTILE)
    configuration.save(folder / "a'b\"c.xml")
    control = nereofile.ControlFile(title=HOSTILE)
    control.flags.append(nereofile.Flag("<b>flag</b>", "&lt;i&gt;"))
    control.save(folder / name)
    with (folder / name).open("a") as out:
        out.write(" *** <u>Own</u> Section\n<script>alert(2)</script>\n")
    material = material_with_curve(HOSTILE)
    nereofile.MaterialDatabase([material]).save(folder / "materials.xml")
    boundary = nereofile.GeometryBoundary(HOSTILE)
    boundary.materials.append(material)
    boundary.conditions.append(nereofile.BoundaryCondition("kU", math.nan, -1))
    boundary.save(folder / "x.gbi")
    lines = (folder / "x.gbi").read_text().replace("-1 kU nan", "-1 <i>kU</i>$x$ 1")
    (folder / "x.gbi").write_text(lines)
    fields = np.array([[math.nan, 1e308], [math.inf, -1e308], [1.0, 0.0]])
    content = results_bytes(fields, names=["kU", "<i>$k$</i>"], title="<script>alert(3)</script>\x01\x07")
    (folder / "$a$_1.res").write_bytes(content)
    (folder / "$a$_2.res").write_bytes(results_bytes(fields * 0.5, names=["kU", "kP"], iteration=9))
    return folder


def damaged_case(folder: pathlib.Path) -> pathlib.Path:
    """Every kind of file, each cut off, empty or full of other bytes."""
    whole_case(folder)
    for path in sorted(folder.iterdir()):
        data = path.read_bytes()
        path.write_bytes(data[: len(data) // 2])
        (folder / ("empty-" + path.name)).write_bytes(b"")
        (folder / ("noise-" + path.name)).write_bytes(bytes(range(256)) * 7)
    return folder


def long_case(folder: pathlib.Path, length: int) -> pathlib.Path:
    """A text of that length in each kind of file that has room for it."""
    folder.mkdir(parents=True, exist_ok=True)
    text = "long <b> & " * (length // 11 + 1)
    nereofile.Configuration(AnalyzePath=text, JobPrefix=text).save(folder / "a.xml")
    control = nereofile.ControlFile(title=text)
    control.flags.append(nereofile.Flag("f" * length, "v" * length))
    control.save(folder / "a.ctl")
    material = material_with_curve(text)
    nereofile.MaterialDatabase([material]).save(folder / "materials.xml")
    boundary = nereofile.GeometryBoundary(text)
    boundary.materials.append(material)
    boundary.save(folder / "a.gbi")
    (folder / "b.cfg").write_text("MaxIter 5\n" + "N" * length + " 1\n")
    return folder


def swollen_case(folder: pathlib.Path) -> pathlib.Path:
    """Much of everything that a page has to leave out at some point."""
    folder.mkdir(parents=True, exist_ok=True)
    for number in range(25):
        (folder / f"{number}.cfg").write_text("MaxIter five\n" * 150)
        control = nereofile.ControlFile(title="t")
        control.save(folder / f"{number}.ctl")
        with (folder / f"{number}.ctl").open("a") as out:
            out.writelines(f" *** Section {i}\n" + "line of it\n" * 25 for i in range(250))
    materials = []
    for number in range(13_000):
        material = nereofile.Material("fluid", name=f"Material {number}", id=number + 1)
        if number < 300:
            curve = material["viscosity"]
            curve.variation_type, curve.independent_variable = "piecewise_linear", "kT"
            curve.points = np.column_stack([np.arange(300.0), np.arange(300.0)])
        materials.append(material)
    nereofile.MaterialDatabase(materials).save(folder / "materials.xml")
    boundary = nereofile.GeometryBoundary("job")
    codes = list(nereofile.field_variables.values())[:361]
    for number in range(110_000):
        boundary.conditions.append(nereofile.BoundaryCondition(codes[number % 361], 1 / (number + 1), number))
    boundary.save(folder / "a.gbi")
    names = list(nereofile.field_variables)[1:61]
    for number in range(40):
        content = results_bytes(np.random.default_rng(number).normal(size=(50, 60)), names=names, iteration=number)
        (folder / f"{number:02}.res").write_bytes(content)
    return folder
