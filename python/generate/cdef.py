# SPDX-License-Identifier: MIT
"""What cffi has to know: constants, records, functions and variables in C."""
import re

import declarations
from headers import CALLBACK

POINTERS = {"val": "{} {}", "out": "{} *{}", "upd": "{} *{}", "ref": "const {} *{}"}


def member(each):
    sizes = "".join(f"[{size}]" for size in (each.count, each.inner) if size is not None)
    return f"  {each.kind} {each.name}{sizes};"


def record(each):
    lines = [f"struct {each.name} {{", *map(member, each.members), "};"]
    return "\n".join([*lines, f"typedef struct {each.name} {each.name};"])


def sorted_records(records):
    """Each after the records that it holds."""
    done = {}

    def add(each):
        for inner in each.members:
            if inner.kind in records and inner.kind not in done:
                add(records[inner.kind])
        done.setdefault(each.name, each)

    for each in records.values():
        add(each)
    return done.values()


def prototype(function):
    words = [f"{each.declared} {each.name}" for each in function.parameters]
    return f"{function.result} {function.name}({', '.join([*words, *['...'] * function.open]) or 'void'});"


def call(name, arguments):
    words = [POINTERS[direction].format(kind, argument) for direction, kind, argument, *_ in arguments]
    return f"int32_t {name}({', '.join(words)});"


def callbacks(header):
    for match in CALLBACK.finditer(header.text):
        yield re.sub(declarations.COMMENT, "", match[0], flags=re.DOTALL).strip()


def variable(each, constants):
    size = (each["size"] or "").strip("[]")
    count = f"[{size if size.isdigit() else constants[size]}]" if size else ""
    return f"extern {each['kind']} {each['name']}{count};"


def text(interface):
    """The declarations of the whole interface."""
    headers = interface.headers.values()
    return "\n".join([
        *(f"#define {name} {value}" for name, value in interface.constants.items()),
        *(record(each) for each in sorted_records(interface.records)),
        *(each for header in headers for each in callbacks(header)),
        *(prototype(each) for each in interface.functions.values()),
        *(call(name, arguments) for name, (arguments, _) in interface.calls.items()),
        *(variable(each, interface.constants) for header in headers for each in header.variables),
    ]) + "\n"
