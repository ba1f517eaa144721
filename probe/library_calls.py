# SPDX-License-Identifier: MIT
"""library_calls.py HEADERS OUTPUT SHAPES...

Writes the list of libswctl's functions that the probe wraps: from
the declarations in the public headers, and from what their texts say about
each address.

    SWCTL_LIBRARY_RECORD(type, field, ...)                 (member, form); not for the records
                                                           that the files SHAPES describe
    SWCTL_LIBRARY_CALL(result, name, tail, argument, ...)  (direction, declared, element,
                                                            name, count, form)

direction, count and form are those of swctl/platform/calls_begin.h. An address
of memory whose size nobody tells is a value. `tail` is TAIL_OPEN for a function
that ends in an ellipsis, which it does not read, and TAIL_NONE otherwise.
"""
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "include"))
from declarations import (COMMENT, POINTER_TYPE, RECORD, count_of, functions_in, is_written, told)

HEXADECIMAL = {"mac", "mask", "netmask", "address", "ability", "flags", "tpid", "ethertype", "word"}
# Bytes that are numbers.
DECIMAL = {"ports", "queues"}
SCALARS = {f"{sign}int{bits}_t" for sign in ("", "u") for bits in (8, 16, 32, 64)}
# Members that hold nothing.
EMPTY = re.compile(r"(reserved|unused|padding)\d*$")


class Headers:
    def __init__(self, folder):
        self.functions, self.records, self.known, self.pointers = {}, {}, set(), set()
        for path in sorted(folder.glob("*.h")):
            text = path.read_text()
            self.functions.update(functions_in(text))
            self.records.update(self.records_in(text))
            self.pointers.update(POINTER_TYPE.findall(text))
        for path in sorted(folder.glob("platform/*.h")):
            self.known.update(match["name"] for match in RECORD.finditer(path.read_text()))

    @staticmethod
    def records_in(text):
        for match in RECORD.finditer(re.sub(COMMENT, " ", text, flags=re.DOTALL)):
            members = re.findall(r"(\w+)\s+(\w+)(\[\w+\])?\s*;", match["body"])
            yield match["name"], [(kind, name, bool(array)) for kind, name, array in members]


def form_of(name, element, many):
    is_bytes = many and element == "uint8_t" and name not in DECIMAL
    return "hex" if is_bytes or name in HEXADECIMAL else "dec"


class Lister:
    """Writes calls and, once, the records that they need."""

    def __init__(self, headers, described):
        self.headers, self.described, self.used = headers, described, set()

    def use(self, record):
        if record in self.headers.records and record not in self.described:
            self.used.add(record)

    def is_data(self, kind):
        return kind in SCALARS or kind in self.headers.records or kind in self.headers.known

    def value(self, parameter):
        if parameter.declared in self.headers.pointers:
            return self.address(parameter)
        self.use(parameter.declared)
        form = form_of(parameter.name, parameter.declared, False)
        return ("val", parameter.declared, parameter.declared, parameter.name, 1, form)

    @staticmethod
    def address(parameter):
        return ("val", parameter.declared, parameter.declared, parameter.name, 1, "hex")

    def there(self, function, parameter):
        """The argument of an address: what is there, or itself."""
        text = told(self.headers.functions, function, parameter.name)
        element = parameter.element
        if element == "char":
            return ("ref", parameter.declared, "char", parameter.name, 1, "text")
        if text.startswith("ignored"):
            return self.address(parameter)
        count = count_of(function, text)
        if element == "void":
            named = re.match(r"(?:the [^,]*, )?an? (?:::)?(\w+)", text)
            if named and self.is_data(named[1]):
                self.use(named[1])
                return ("ref", parameter.declared, named[1], parameter.name, 1, "dec")
            if not (parameter.constant and count):
                return self.address(parameter)
            element = "uint8_t"
        if not self.is_data(element) or text.startswith("array"):
            return self.address(parameter)
        if element == "uint8_t" and count is None:
            return self.address(parameter)
        self.use(element)
        direction = "ref" if parameter.constant else "out" if is_written(text) else "upd"
        many = count not in (None, 1)
        return (direction, parameter.declared, element, parameter.name, count or 1,
                form_of(parameter.name, element, many))

    def argument(self, function, parameter):
        if parameter.pointee is None:
            return self.value(parameter)
        return self.there(function, parameter)

    def call(self, function):
        tail = "TAIL_OPEN" if function.open else "TAIL_NONE"
        arguments = [self.argument(function, each) for each in function.parameters]
        texts = ["(" + ", ".join(str(word) for word in each) + ")" for each in arguments]
        return f"SWCTL_LIBRARY_CALL({', '.join([function.result, function.name, tail, *texts])})"

    def fields(self, record, prefix=""):
        for kind, name, array in self.headers.records[record]:
            if EMPTY.match(name):
                continue
            if kind in self.headers.records:
                yield from self.fields(kind, f"{prefix}{name}.")
            else:
                yield f"({prefix}{name}, {form_of(name, kind, array)})"

    def record(self, name):
        return f"SWCTL_LIBRARY_RECORD({', '.join([name, *self.fields(name)])})"


def main():
    folder, output, *shapes = (pathlib.Path(word) for word in sys.argv[1:])
    headers = Headers(folder)
    lister = Lister(headers, {name for path in shapes
                              for name in re.findall(r"struct Shape<(\w+)>", path.read_text())})
    calls = [lister.call(function) for function in headers.functions.values()]
    records = [lister.record(name) for name in sorted(lister.used)]
    lines = ["/* Made from the headers by library_calls.py. */",
             "#ifdef SWCTL_LIBRARY_RECORD", *records, "#endif",
             "#ifdef SWCTL_LIBRARY_CALL", *calls, "#endif"]
    output.write_text("\n".join(lines) + "\n")
    return 0


sys.exit(main())
