# SPDX-License-Identifier: MIT
"""generate OUTPUT_DIR

Writes the modules of the package that are made from the public headers into
OUTPUT_DIR, which holds the others already.
"""
import contextlib
import pathlib
import re
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parents[1] / "include")]
import cffi

import cdef
import codes as codes_of
import records
import stub
from headers import Interface, Refusal
from meaning import Reader
from modules import Writer

# Its text is a format of printf(), whose arguments only C knows; `c` has it.
BY_NAME_ONLY = {"Log_logging_func"}
FAMILIES = ["field", "frame", "kmsg", "l2", "mcast", "mirror_trunk", "port", "qos", "stp", "vlan"]


def family_of(name):
    """The module of a header."""
    folder, file = name.split("/", 1)
    if folder == "swctl-vchip":
        return "controls"
    if folder == "swctl-probe":
        return None
    if file.startswith("platform/"):
        return "platform"
    return next((family for family in FAMILIES if re.match(rf"{family}(_|\.h)", file)), None)


def calls_by_family(interface, reader):
    found = {}
    for name, header in interface.headers.items():
        for function in header.functions.values():
            family = family_of(name)
            if function.name in BY_NAME_ONLY or family is None:
                continue
            try:
                found.setdefault(family, []).append(reader.function(function))
            except Refusal as refusal:
                raise Refusal(f"{name}: {refusal}") from refusal
    found["sdk"] = [reader.listed(name, arguments, f"/** {said} */")
                    for name, (arguments, said) in interface.calls.items()]
    return found


def entries_of_callbacks(interface, calls):
    """The record that each callback is called with."""
    from names import class_name

    declared = {name: parameters for header in interface.headers.values()
                for name, parameters in header.callbacks.items()}
    for call in calls:
        for each in call.arguments:
            if each.kind == "callback":
                each.entry = class_name(re.search(r"(\w+) \*entry", declared[each.declared])[1])


def head_of(interface, family):
    if family == "sdk":
        return "include/swctl/platform/calls", ("The calls of the chip vendor's SDK and of the board's adapter, "
                                                "for a test that asks the chip itself. Ports are chip ports.")
    if family == "controls":
        return "vchip/include", "The virtual chip's own functions: what happens to it from outside."
    if family == "platform":
        return "include/swctl/platform", ("Reading settings that the SDK only writes, and the platform's log. "
                                          "A platform may lack any of these.")
    header = interface.headers[f"swctl/{family}.h"]
    return f"include/swctl/{family}*.h", header.said


def write(output, name, text):
    path = output / name
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def names_module(interface):
    functions = sorted([*interface.functions, *interface.calls])
    variables = sorted(each["name"] for header in interface.headers.values() for each in header.variables)
    return ("# SPDX-License-Identifier: MIT\n# Made from the headers; changes here are lost.\n"
            f"NAMES: dict[str, frozenset[str]] = {{\n    'functions': frozenset({functions!r}),\n"
            f"    'variables': frozenset({variables!r}),\n}}\n")


def generate(output):
    interface = Interface()
    reader, codes = Reader(interface), codes_of.Codes(interface)
    writer = Writer(codes)
    for family, calls in calls_by_family(interface, reader).items():
        entries_of_callbacks(interface, calls)
        source, said = head_of(interface, family)
        path = "vchip/controls.py" if family == "controls" else f"{family}.py"
        write(output, path, writer.module(family, source, said, calls))
    write(output, "records.py", records.records_module(list(cdef.sorted_records(interface.records))))
    write(output, "codes.py", records.codes_module(codes, interface.said))
    write(output, "_names.py", names_module(interface))
    write(output, "_version.py", f'VERSION = "{interface.texts["SWCTL_VERSION"]}"\n')
    write(output, "c.pyi", stub.text(interface))
    write(output, "_cdef.pyi", "from typing import Any\n\nffi: Any\n")
    builder = cffi.FFI()
    builder.cdef(cdef.text(interface))
    builder.set_source("swctl._cdef", None)
    with contextlib.redirect_stdout(None):
        builder.emit_python_code(str(output / "_cdef.py"))


if __name__ == "__main__":
    try:
        generate(pathlib.Path(sys.argv[1]))
    except Refusal as problem:
        sys.exit(f"generate: {problem}")
