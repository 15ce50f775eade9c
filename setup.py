"""Makes the Python package, whose module and libraries CMake builds.

NEREO_BUILD_FOLDER names the folder of a CMake build to take them from; without it there is a new one.
"""

import os
import pathlib
import re
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).parent.resolve()
VERSION = re.search(r"project\(NereoFileIO VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())[1]


class CMakeBuild(build_ext):
    """Lets CMake build the module, and puts it with its libraries into the package."""

    def build_extension(self, extension: Extension) -> None:
        package = pathlib.Path(self.get_ext_fullpath(extension.name)).parent.resolve()
        folder = os.environ.get("NEREO_BUILD_FOLDER") or self._build(pathlib.Path(self.build_temp).resolve())
        subprocess.run(
            ["cmake", "--install", str(folder), "--component", "nereofile_python", "--prefix", str(package.parent)],
            check=True,
        )

    @staticmethod
    def _build(folder: pathlib.Path) -> pathlib.Path:
        options = ["TESTS=OFF", "EXAMPLES=OFF", "COMMAND=OFF", "PYTHON=ON"]
        subprocess.run(
            ["cmake", "-S", str(ROOT), "-B", str(folder), "-DNEREO_INSTALL=OFF", "-DCMAKE_BUILD_TYPE=Release"]
            + [f"-DNEREO_BUILD_{option}" for option in options]
            + [f"-DPython3_EXECUTABLE={sys.executable}"],
            check=True,
        )
        subprocess.run(
            ["cmake", "--build", str(folder), "--target", "nereofile_module", "--parallel", str(os.cpu_count() or 1)],
            check=True,
        )
        return folder


setup(version=VERSION, ext_modules=[Extension("nereofile._nereofile", [])], cmdclass={"build_ext": CMakeBuild})
