# SPDX-License-Identifier: MIT
"""calls.py FILE.def

Doxygen's filter for the lists of platform calls: writes each call as a
prototype, with the comment above it. What the words of a list mean
is read from calls_begin.h.
"""
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "include"))
import declarations

POINTERS = {"val": "{} {}", "out": "{} *{}", "upd": "{} *{}", "ref": "const {} *{}"}


def parameter(argument, known):
    """`OUT(link)` as `uint32_t *link`."""
    direction, kind, name = declarations.list_argument(argument, known)[:3]
    return POINTERS[direction].format(kind, name)


def prototype(call, known):
    name, *arguments = declarations.split(call)
    return f"int32_t {name}({', '.join(parameter(each, known) for each in arguments)});"


def main():
    path = pathlib.Path(sys.argv[1])
    known = declarations.list_words((path.parent.parent / "calls_begin.h").read_text())
    licence, head, *parts = declarations.LIST_PART.findall(path.read_text())
    del licence
    print(f"/** @file\n * @brief {re.sub(r'Words:.*', '', head[0], flags=re.DOTALL).strip()} */")
    said = ""
    for comment, call in parts:
        said = comment or said
        if call:
            print(f"/**{said}*/" if said else "", prototype(call, known))


main()
