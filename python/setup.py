# SPDX-License-Identifier: MIT
"""Adds to the package what is made from the headers of the tree around this folder."""
import pathlib
import re
import subprocess
import sys

from setuptools import setup
from setuptools.command.build_py import build_py

HERE = pathlib.Path(__file__).resolve().parent
HEADER = HERE.parent / "include/swctl/swctl.h"


def version():
    if not HEADER.exists():
        sys.exit(f"{HEADER} is not there: build in the folder python of the source tree of libswctl")
    return re.search(r'SWCTL_VERSION "(.*)"', HEADER.read_text())[1]


class BuildPy(build_py):
    def run(self):
        super().run()
        subprocess.run([sys.executable, str(HERE / "generate"), str(pathlib.Path(self.build_lib) / "swctl")],
                       check=True)


setup(version=version(), cmdclass={"build_py": BuildPy})
