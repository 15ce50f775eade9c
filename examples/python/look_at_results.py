"""Looks at the results of a run, and prepares the next one: look_at_results.py SAMPLES OUTPUT

SAMPLES is the folder of the sample files, OUTPUT the one for what is written.
"""

from __future__ import annotations

import pathlib
import sys

import numpy as np

import nereofile


def describe(path: pathlib.Path) -> None:
    """Prints what a results file holds, without loading its values."""
    header = nereofile.results_header(path)
    print(f"{header.title}: {header.node_count} nodes, iteration {header.iteration}")
    for name, field in nereofile.statistics(path).items():
        print(f"  {name:4} {field.minimum:10.4g} at node {field.minimum_node:5} to {field.maximum:10.4g}")


def speed(path: pathlib.Path) -> float:
    """The largest speed in a results file."""
    results = nereofile.read_results(path, fields=["kU", "kV", "kW"])
    return float(np.sqrt(results["kU"] ** 2 + results["kV"] ** 2 + results["kW"] ** 2).max())


def prepare(samples: pathlib.Path, output: pathlib.Path) -> None:
    """Writes the files of a run that starts from those of the samples, and checks them."""
    control = nereofile.ControlFile.load(samples / "cavity.ctl")
    control.under_relaxation["kU"] = 0.3
    control.materials.append(nereofile.MaterialDatabase.load(samples / "materials.xml", strict=False)[0])
    control.save(output / "next.ctl")

    boundary = nereofile.GeometryBoundary(job_name="next")
    boundary.conditions.append(nereofile.BoundaryCondition("kU", value=1.0, entity_id=4))
    boundary.save(output / "next.gbi")

    nereofile.Configuration(JobPrefix="next", MaxIter=500).save(output / "next.xml")
    found = nereofile.check(*sorted(output.glob("next.*")), case=True)
    print(f"{len(found)} files written, {found.errors} errors")


def main(samples: pathlib.Path, output: pathlib.Path) -> None:
    """Does all of it."""
    output.mkdir(parents=True, exist_ok=True)
    describe(samples / "cavity.res")
    print(f"largest speed {speed(samples / 'cavity.res'):.3g}")
    prepare(samples, output)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
