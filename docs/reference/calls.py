# SPDX-License-Identifier: MIT
"""calls.py FILE.def

Doxygen's filter for the lists of platform calls: writes each call as a
prototype, with the comment above it. What the words of a list mean
is read from calls_begin.h.
"""
import pathlib
import re
import sys

POINTERS = {"val": "{} {}", "out": "{} *{}", "upd": "{} *{}", "ref": "const {} *{}"}
# A comment, or a call up to the parenthesis that ends it at the end of a line.
PART = re.compile(r"/\*(.*?)\*/|SWCTL_CALL\((.*?)\)$", re.DOTALL | re.MULTILINE)


def split(text):
    """The parts between the commas outside parentheses."""
    parts, depth = [""], 0
    for character in text:
        depth += (character == "(") - (character == ")")
        if character == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += character
    return [part.strip() for part in parts if part.strip()]


def words(header):
    """Each word of the lists: its parameters, and the tuple it stands for."""
    found = re.findall(r"^#define ([A-Z0-9_]+)(?:\((.*?)\))? (\(.*\)|[A-Z0-9]+\(\w+\))$", header,
                       flags=re.MULTILINE)
    return {name: (split(parameters), text) for name, parameters, text in found}


def parameter(argument, known):
    """`OUT(link)` as `uint32_t *link`."""
    name, given = re.fullmatch(r"(\w+)(?:\((.*)\))?", argument, flags=re.DOTALL).groups()
    formals, text = known[name]
    actual = dict(zip(formals, split(given or "")))
    text = re.sub(r"\w+", lambda word: actual.get(word[0], word[0]), text)
    if not text.startswith("("):
        return parameter(text, known)
    direction, kind, name = split(text[1:-1])[:3]
    return POINTERS[direction].format(kind, name)


def prototype(call, known):
    name, *arguments = split(call)
    return f"int32_t {name}({', '.join(parameter(each, known) for each in arguments)});"


def main():
    path = pathlib.Path(sys.argv[1])
    known = words((path.parent.parent / "calls_begin.h").read_text())
    licence, head, *parts = PART.findall(path.read_text())
    del licence
    print(f"/** @file\n * @brief {re.sub(r'Words:.*', '', head[0], flags=re.DOTALL).strip()} */")
    said = ""
    for comment, call in parts:
        said = comment or said
        if call:
            print(f"/**{said}*/" if said else "", prototype(call, known))


main()
