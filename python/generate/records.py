# SPDX-License-Identifier: MIT
"""The Python of records and of enumerations."""
import re

import documents
from headers import Refusal
from meaning import BITMAP, SCALARS, VALUES
from names import class_name

HEAD = '''# SPDX-License-Identifier: MIT
# Made from the headers; changes here are lost.
"""{said}"""
from __future__ import annotations

'''
RECORDS = '''from . import _convert as _v
from ._convert import Address, Any, Port, PortSet, Ports, Record, Sequence
from ._numbers import ChipPort, box_port as _box_port, chip_port as _chip_port


'''


# A member that is a port or several, rather than a mask of ports or now a port, now
# something else.
PORT = re.compile(r"(destination )?chip ports?\b(?! or)")


class Field:
    """A member: its type, what it is at first, how it goes into C and comes back."""

    def __init__(self, record, member, records):
        self.name, self.text, self.kind, self.count = member.name, member.text, member.kind, member.count
        self.inner_size = member.inner
        self.record = record.name
        self.make(records)

    def make(self, records):
        name, kind, count = self.name, self.kind, self.count
        if kind == BITMAP:
            self.bitmap()
        elif kind in VALUES and count:
            self.says("Sequence[int]", f"(0,) * {count}",
                      f'for _at, _each in enumerate(self.{name}):\n            '
                      f'_v.put_counter("{name}", _each, into.{name}[_at])',
                      f"tuple(_v.counter(found.{name}[_at]) for _at in range({count}))")
        elif kind in VALUES:
            self.says("int", "0", f'_v.put_counter("{name}", self.{name}, into.{name})',
                      f"_v.counter(found.{name})")
        elif kind in records:
            self.inner(class_name(kind))
        elif kind not in SCALARS:
            raise Refusal(f"{self.record}: the type {kind} of {name} is not known")
        elif self.inner_size:
            self.table()
        elif count:
            self.several()
        else:
            self.single()

    def says(self, annotation, first, put, get):
        self.annotation, self.first, self.put, self.get = annotation, first, put, get

    def document(self):
        text = documents.plain(self.text)
        return documents.of_ports(text) if "Port" in self.annotation else text

    def bitmap(self):
        if "chip port" not in self.text and "interface" not in self.text:
            raise Refusal(f"{self.record}: {self.name} does not say which ports its bits are")
        of_chip = "chip port" in self.text
        self.says("Ports", "frozenset()",
                  f'_v.put_bitmap("{self.name}", self.{self.name}, into.{self.name}, {of_chip})',
                  f"_v.get_bitmap(found.{self.name}, {of_chip})")

    def inner(self, kind):
        if self.count:
            self.says(f"Sequence[{kind}]", "()",
                      f'_v.records("{self.name}", self.{self.name}, {kind}, {self.count}, into.{self.name})',
                      f"tuple({kind}._get(found.{self.name}[_at]) for _at in range({self.count}))")
        else:
            self.says(kind, f"{kind}()", f'into.{self.name} = _v.record("{self.name}", self.{self.name}, {kind})[0]',
                      f"{kind}._get(found.{self.name})")

    def table(self):
        if self.kind != "uint8_t":
            raise Refusal(f"{self.record}: {self.name} is a table of {self.kind}")
        self.says("Sequence[Address]", f"(bytes({self.inner_size}),) * {self.count}",
                  f'_v.put_rows("{self.name}", self.{self.name}, {self.count}, {self.inner_size}, into.{self.name})',
                  f"tuple(bytes(_each) for _each in found.{self.name})")

    def several(self):
        if PORT.match(self.text):
            self.says("Sequence[Port]", f"(ChipPort(0),) * {self.count}",
                      f'into.{self.name} = _v.numbers("{self.name}", [_chip_port("{self.name}", _each) '
                      f'for _each in self.{self.name}], "{self.kind}", {self.count})',
                      f"tuple(_box_port(_each) for _each in found.{self.name})")
        elif self.kind == "uint8_t":
            self.says("Address", f"bytes({self.count})",
                      f'into.{self.name} = _v.octets("{self.name}", self.{self.name}, {self.count})',
                      f"bytes(found.{self.name})")
        else:
            self.says("Sequence[int]", f"(0,) * {self.count}",
                      f'into.{self.name} = _v.numbers("{self.name}", self.{self.name}, "{self.kind}", {self.count})',
                      f"tuple(found.{self.name})")

    def single(self):
        if PORT.match(self.text):
            self.says("Port", "ChipPort(0)", f'into.{self.name} = _v.integer("{self.name}", '
                      f'_chip_port("{self.name}", self.{self.name}), "{self.kind}")',
                      f"_box_port(found.{self.name})")
        else:
            self.says("int", "0", f'into.{self.name} = _v.integer("{self.name}", self.{self.name}, "{self.kind}")',
                      f"int(found.{self.name})")


def record_class(record, records):
    fields = [Field(record, member, records) for member in record.members]
    name = class_name(record.name)
    text = documents.plain(record.text) or f"The record {record.name}."
    documented = [documents.fill(f"{each.name}: {each.document()}", "        ")
                  for each in fields if each.text]
    lines = [f"class {name}(Record):", documents.fill(f'"""{text}', "    ").rstrip()]
    lines += ["", "    Attributes:", *documented] if documented else []
    lines += ["", f"    C: `{record.name}`", '    """', ""]
    lines += [f"    __slots__ = ({', '.join(repr(each.name) for each in fields)},)",
              f'    C_NAME = "{record.name}"', ""]
    words = ", ".join(f"{each.name}: {each.annotation} = {each.first}" for each in fields)
    lines += [f"    def __init__(self, *, {words}) -> None:"]
    lines += [f"        self.{each.name}: {each.annotation} = {each.name}" for each in fields]
    lines += ["", "    def _put(self, into: Any) -> None:", *(f"        {each.put}" for each in fields)]
    lines += ["", "    @classmethod", f"    def _get(cls, found: Any) -> {name}:", "        return cls("]
    lines += [*(f"            {each.name}={each.get}," for each in fields), "        )", ""]
    return "\n".join(lines)


def records_module(records):
    kept = {each.name: each for each in records if not each.has_address
            and each.name not in VALUES and each.name != BITMAP}
    names = sorted(class_name(each) for each in kept)
    parts = [record_class(each, kept) for each in kept.values()]
    head = HEAD.format(said="Records of C as classes.") + RECORDS
    return head + "\n\n".join(parts) + f"\n\n__all__ = {names!r}\n"


def code_class(code, said):
    base = "Flags" if code.flags else "Code"
    text = documents.plain(f"{code.title}. {code.group.text}").strip()
    lines = [f"class {code.name}({base}):", documents.fill(f'"""{text}', "    ") + '"""', ""]
    for member, (name, value) in code.members.items():
        lines.append(f"    {member} = {value:#x}" if code.flags else f"    {member} = {value}")
        if said.get(name):
            lines.append(documents.fill(f'"""{documents.plain(said[name])}', "    ") + '"""')
    return "\n".join(lines)


def codes_module(codes, said):
    used = sorted(codes.used.values(), key=lambda each: each.name)
    head = HEAD.format(said="Enumerations: the constants that arguments and results are made of.")
    parts = [code_class(each, said) for each in used]
    names = [each.name for each in used]
    return f"{head}from ._convert import Code, Flags\n\n\n" + "\n\n\n".join(parts) + f"\n\n__all__ = {names!r}\n"
