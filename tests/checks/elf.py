# SPDX-License-Identifier: MIT
"""What the binutils say of a built library, for the checks in this folder."""
import re
import subprocess
import sys


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def defined(nm, library):
    """Dynamic symbols that the library defines: name -> (type letter, size)."""
    symbols = {}
    for line in run(nm, "-D", "-S", "--defined-only", library).splitlines():
        fields = line.split()
        if len(fields) == 4:
            symbols[fields[3].split("@")[0]] = (fields[2], int(fields[1], 16))
    return symbols


def undefined(nm, library):
    """Dynamic symbols that the library leaves to others."""
    output = run(nm, "-D", "--undefined-only", library)
    return {line.split()[-1].split("@")[0] for line in output.splitlines()}


def dynamic(readelf, library, tag):
    """The values of one tag of the dynamic section."""
    lines = run(readelf, "-d", "-W", library).splitlines()
    return [line.split(")", 1)[1].strip() for line in lines if f"({tag})" in line]


def needed(readelf, library):
    return [re.search(r"\[(.*)\]", value).group(1) for value in dynamic(readelf, library, "NEEDED")]


def finish(check, problems, found):
    """Prints the problems, or what was found to be in order, and exits."""
    for problem in problems:
        print(f"{check}: {problem}")
    if problems:
        sys.exit(1)
    print(f"{check}: {found}")
