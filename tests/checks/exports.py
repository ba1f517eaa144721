# SPDX-License-Identifier: MIT
"""exports.py NM LIBRARY SOURCE_DIR

Compares the checked-in export lists, the public headers and the built library,
each with each: a name that is in one must be in all three. Then sees
that the program that calls every function leaves none out. What is not built
yet is in src/pending.txt; a name of the interface is exported or pending,
never both, and none gets lost.
"""
import pathlib
import re
import sys

import elf

# Functions of the whole interface.
INTERFACE = 409


def listed(source):
    """The export lists: function names, and objects with their sizes."""
    functions, objects = set(), {}
    for path in sorted(source.glob("src/*/exports.txt")):
        for line in path.read_text().splitlines():
            words = line.split("#")[0].split()
            if not words:
                continue
            if words[0] == "object":
                objects[words[1]] = int(words[2])
            elif words[0] in functions:
                raise SystemExit(f"{path}: {words[0]} is listed twice")
            else:
                functions.add(words[0])
    return functions, objects


def pending(source):
    """The names that are still to be built."""
    lines = (source / "src/pending.txt").read_text().splitlines()
    return [word for line in lines for word in line.split("#")[0].split()]


def interface_problems(exported, waiting):
    for name in sorted({name for name in waiting if waiting.count(name) > 1}):
        yield f"{name} is pending twice"
    for name in sorted(exported & set(waiting)):
        yield f"{name} is built and still pending"
    count = len(exported | set(waiting))
    if count != INTERFACE:
        yield f"the interface has {INTERFACE} functions; {count} are exported or pending"


def declared(source):
    """What the public headers declare, the platform's side left out."""
    functions, objects = set(), set()
    for path in sorted((source / "include/swctl").rglob("*.h")):
        if path.parent.name == "platform":
            continue
        text = re.sub(r"/\*.*?\*/", "", path.read_text(), flags=re.DOTALL)
        for declaration in re.findall(r"^SWCTL_API\s+([^;]*);", text, flags=re.MULTILINE):
            function = re.match(r"[\w\s*]*?(\w+)\s*\(", declaration)
            if function:
                functions.add(function.group(1))
            else:
                objects.add(re.search(r"(\w+)\s*(\[\w+\])?$", declaration).group(1))
    return functions, objects


def differences(left_name, left, right_name, right):
    for name in sorted(left - right):
        yield f"{name} is in {left_name} and not in {right_name}"
    for name in sorted(right - left):
        yield f"{name} is in {right_name} and not in {left_name}"


def main():
    nm, library, source = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    functions, objects = listed(source)
    header_functions, header_objects = declared(source)
    built = elf.defined(nm, library)
    built_functions = {name for name, (kind, _) in built.items() if kind == "T"}
    built_objects = {name: size for name, (kind, size) in built.items() if kind != "T"}

    problems = list(differences("the export list", functions, "the headers", header_functions))
    problems += differences("the export list", functions, "the library", built_functions)
    problems += differences("the export list", set(objects), "the headers", header_objects)
    problems += differences("the export list", set(objects), "the library", set(built_objects))
    for name in sorted(set(objects) & set(built_objects)):
        if objects[name] != built_objects[name]:
            problems.append(f"{name} has {built_objects[name]} bytes, not {objects[name]}")

    program = "".join(path.read_text() for path in sorted((source / "tests/c99").glob("*.c")))
    called = set(re.findall(r"\bCALL(?:_FOR\([^,]+, |\()(\w+),", program))
    problems += differences("the export list", functions, "tests/c99", called)

    waiting = pending(source)
    problems += interface_problems(functions, waiting)
    elf.finish("exports", problems, f"{len(functions)} functions, {len(objects)} objects, "
               f"{len(waiting)} functions pending")


main()
