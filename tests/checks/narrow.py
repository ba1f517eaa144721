# SPDX-License-Identifier: MIT
"""narrow.py SOURCE_DIR

tests/narrow/narrow.def lists every argument of which only the low bits count,
and says how many. Reads the public headers: a parameter with a type of less
than 32 bits, one whose text says "the low N bits", and a VLAN ID, a TPID or an
EtherType must be in the list, with that number of bits.
"""
import pathlib
import re
import sys

import elf

NARROW_TYPES = {"uint8_t": 8, "int8_t": 8, "uint16_t": 16, "int16_t": 16}
NUMBERS = re.compile(r"(\w+_)?vid|tpid|ethertype")
LOW_BITS = re.compile(r"low(?:est)?\s+(\d+)\s+bits")
# The kernel channel makes system calls, which the probe does not see; its own
# tests say which bits count (tests/kmsg).
OTHERS = {"kmsg.h"}


def listed(source):
    """(function, parameter) -> bits."""
    text = re.sub(r"//.*", "", (source / "tests/narrow/narrow.def").read_text())
    found = {}
    for function, parameter, bits in re.findall(r"NARROW(?:_SOME)?\((\w+),\s*(\w+),\s*(\d+)", text):
        if (function, parameter) in found:
            raise SystemExit(f"{function}, {parameter} is listed twice")
        found[function, parameter] = int(bits)
    return found


def declarations(path):
    """(comment, function, [parameter]) of each exported function."""
    text = path.read_text()
    for match in re.finditer(r"/\*\*((?:(?!\*/).)*)\*/\s*SWCTL_API\s+([^;]*);", text, re.DOTALL):
        call = re.match(r".*?(\w+)\s*\((.*)\)$", " ".join(match.group(2).split()))
        if call:
            yield match.group(1), call.group(1), [word.strip() for word in call.group(2).split(",")]


def text_of(comment, parameter):
    """What the comment says of a parameter, on one line."""
    match = re.search(rf"@param\s+{parameter}\b(.*?)(?=@param|@return|\Z)", comment, re.DOTALL)
    return " ".join(match.group(1).replace("*", " ").split()) if match else ""


def problem_with(comment, declared, has):
    """What is wrong with a parameter that the list gives `has` bits, or None."""
    kind, _, name = declared.rpartition(" ")
    said = LOW_BITS.search(text_of(comment, name))
    if has is None:
        if said or kind in NARROW_TYPES or NUMBERS.fullmatch(name):
            return "is not in narrow.def"
    elif said and has != int(said.group(1)):
        return f"has {said.group(1)} bits here, and {has} in narrow.def"
    elif has > NARROW_TYPES.get(kind, 32):
        return f"is a {kind}, and narrow.def says {has} bits"
    return None


def problems_of(path, known, seen):
    for comment, function, parameters in declarations(path):
        for declared in parameters:
            name = declared.rpartition(" ")[2]
            if "*" in declared or "..." in declared:
                continue
            seen.add((function, name))
            problem = problem_with(comment, declared, known.get((function, name)))
            if problem:
                yield f"{path.name}: {function}, {name} {problem}"


def main():
    source = pathlib.Path(sys.argv[1])
    known, seen, problems = listed(source), set(), []
    for path in sorted((source / "include/swctl").glob("*.h")):
        if path.name not in OTHERS:
            problems += problems_of(path, known, seen)
    problems += [f"narrow.def: there is no {name} of {function}"
                 for function, name in sorted(set(known) - seen)]
    elf.finish("narrow", problems, f"{len(known)} arguments of which only low bits count")


main()
