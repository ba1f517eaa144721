# SPDX-License-Identifier: MIT
"""size.py MACHINE BINUTILS_PREFIX LIBRARY [PROGRAM WORD...]

A line about the library's size: bytes of text, data and bss, of the stripped
file, of code for each exported function, the relocations made when it is
loaded, and what it needs. With a program (and an emulator in front), the time
of loading it too. Fails if the library is larger than what is promised.
"""
import os
import subprocess
import sys
import tempfile

import elf

CODE_OF_A_FUNCTION = 140
STRIPPED = 110 * 1024

HEADER = ["", "text", "data", "bss", "stripped", "a function", "relocations", "load us", "needs"]
FORM = "{:<8}{:>8}{:>8}{:>8}{:>10}{:>12}{:>13}{:>9}  {}"


def section(readelf, library, name):
    """The size of a section."""
    for line in elf.run(readelf, "-SW", library).splitlines():
        fields = line.replace("[ ", "[").split()
        if name in fields[1:2]:
            return int(fields[5], 16)
    return 0


def stripped_size(strip, library):
    with tempfile.NamedTemporaryFile() as copy:
        elf.run(strip, "-o", copy.name, library)
        return os.stat(copy.name).st_size


def relocations(readelf, library):
    """Those of the loader: listed, and on MIPS also the words of its table."""
    listed = [line for line in elf.run(readelf, "-rW", library).splitlines()
              if line[:8].isalnum() and " R_" in line and "R_MIPS_NONE" not in line]
    table = [value for tag in ("MIPS_LOCAL_GOTNO", "MIPS_SYMTABNO", "MIPS_GOTSYM")
             for value in elf.dynamic(readelf, library, tag)]
    if not table:
        return len(listed)
    local, symbols, first = (int(value, 0) for value in table)
    return len(listed) + local + symbols - first


def load_time(command, library):
    return subprocess.run([*command, library], check=True, capture_output=True,
                          text=True).stdout.strip() if command else "-"


def main():
    machine, prefix, library, *command = sys.argv[1:]
    text, data, bss = elf.run(f"{prefix}size", library).splitlines()[1].split()[:3]
    readelf = f"{prefix}readelf"
    functions = [name for name, (kind, _) in elf.defined(f"{prefix}nm", library).items()
                 if kind == "T"]
    code = section(readelf, library, ".text") / len(functions)
    stripped = stripped_size(f"{prefix}strip", library)
    print(FORM.format(*HEADER))
    print(FORM.format(machine, text, data, bss, stripped, f"{code:.0f}",
                      relocations(readelf, library), load_time(command, library),
                      " ".join(elf.needed(readelf, library))))
    problems = []
    if code > CODE_OF_A_FUNCTION:
        problems.append(f"{code:.0f} bytes of code a function, more than {CODE_OF_A_FUNCTION}")
    if stripped > STRIPPED:
        problems.append(f"{stripped} bytes when stripped, more than {STRIPPED}")
    elf.finish("size", problems, "within its limits")


if __name__ == "__main__":
    main()
