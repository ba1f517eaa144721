# SPDX-License-Identifier: MIT
"""headers.py CC CXX SOURCE_DIR

Every public header of the library compiles on its own as C99 and as C++11,
pedantically, and its functions are documented. The guide to the virtual chip
says of each of its headers, and of each view, what it is for.
"""
import pathlib
import re
import subprocess
import sys

import elf

WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only"]


def compile_alone(compiler, language, standard, source, header):
    return subprocess.run(
        [compiler, f"-std={standard}", *WARNINGS, f"-I{source}/include", "-x", language, "-"],
        input=f"#include <{header}>\n", capture_output=True, text=True, check=False)


def undocumented(path):
    """Declarations that no comment block precedes, one by one or as a group."""
    text = path.read_text()
    # A group "@{ ... @}" is documented by its head.
    text = re.sub(r"/\*\*(?:(?!\*/).)*@\{\s*\*/.*?/\*\* @\} \*/", "", text, flags=re.DOTALL)
    for match in re.finditer(r"^SWCTL_API[^;]*?(\w+)\s*(\(|\[|;)", text, flags=re.MULTILINE):
        if not text[:match.start()].rstrip().endswith("*/"):
            yield match.group(1)


def missing_in_guide(source):
    """Headers of the virtual chip, and functions of its views, that the guide does not name."""
    guide = (source / "docs/virtual-chip.md").read_text()
    section = guide.partition("## Which header to open\n")[2].partition("\n## ")[0]
    for path in sorted((source / "vchip/include/swctl-vchip").glob("*.h")):
        names = [path.name]
        if path.name.endswith("_view.h"):
            names += [f"{name}()" for name in re.findall(r"^SWCTL_API [^;]*?(\w+)\(",
                                                         path.read_text(), flags=re.MULTILINE)]
        yield from (name for name in names if f"`{name}`" not in section)


def main():
    cc, cxx, source = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    words = {"calls_begin.h", "calls_end.h"}
    problems, count = [], 0
    for path in sorted((source / "include/swctl").rglob("*.h")):
        if path.name in words:
            continue
        count += 1
        header = path.relative_to(source / "include")
        for compiler, language, standard in ((cc, "c", "c99"), (cxx, "c++", "c++11")):
            done = compile_alone(compiler, language, standard, source, header)
            if done.returncode != 0:
                problems.append(f"{header} as {standard}:\n{done.stderr}")
        problems += [f"{header}: {name} is not documented" for name in undocumented(path)]
    problems += [f"docs/virtual-chip.md: no word of {name}" for name in missing_in_guide(source)]
    elf.finish("headers", problems, f"{count} headers as C99 and C++11")


main()
