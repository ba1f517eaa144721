# SPDX-License-Identifier: MIT
"""The Python of a family of functions."""
import documents
from meaning import PLAIN_RESULTS
from names import class_name, function_names

HEAD = '''# SPDX-License-Identifier: MIT
# Made from {source}; changes here are lost.
"""{said}"""
from __future__ import annotations

from typing import NamedTuple

from {up} import _convert as _v
from {up}_convert import (Address, Any, Callable, Frame, NULL, Optional, Port, PortSet, Ports, Sequence, Union)
from {up}_numbers import box_port as _box_port, chip_port as _chip_port
from {up}codes import *
from {up}records import *

_c = _v.c

'''


class Writer:
    """Writes functions, and keeps which names they need."""

    def __init__(self, codes):
        self.codes = codes

    def annotation(self, each):
        """The type of an argument, or of what comes back."""
        given = each.way in ("in", "both")
        if each.kind == "int":
            return each.code.name if each.code and not given else "int"
        if each.kind == "record":
            return class_name(each.element)
        if each.kind == "bytes":
            return ("Frame" if each.count is None else "Address") if given else "bytes"
        if each.kind == "array":
            return "Sequence[int]" if given else "tuple[int, ...]"
        if each.kind == "text":
            return "Optional[str]" if "null" in each.text else "str"
        if each.kind in ("chip_ports", "interfaces"):
            return "Ports" if given else "PortSet"
        return {"port": "Port", "switch": "bool", "counter": "int", "address": "Any",
                "callback": f"Callable[[int, {each.entry}], Optional[int]]"}[each.kind]

    def parameters(self, takes):
        first = [each for each in takes if not self.is_optional(each)]
        later = [each for each in takes if self.is_optional(each)]
        words = [f"{each.name}: {self.annotation(each)}" for each in first]
        words += ["*"] * bool(later) + [f"{each.name}: {self.annotation(each)} = 0" for each in later]
        return ", ".join(words)

    @staticmethod
    def is_optional(each):
        return each.name == "unit" or (each.kind == "int" and each.text.startswith("ignored"))

    def passed(self, each):
        """The line that makes an argument, and the word that is passed."""
        word, name = f"_{each.name}", f'"{each.name}"'
        if each.way == "size":
            sized = each.size_of.name
            return f'{word} = _v.integer("bytes of {sized}", len(_{sized}), "{each.element}")', word
        if each.way == "fixed":
            return None, "NULL" if each.kind == "address" else "0"
        if each.way == "data":
            return None, "NULL"
        if each.way == "out":
            size = f"[{each.count}]" if each.kind in ("bytes", "array") else ""
            return f'{word} = _v.new("{each.element}{size or " *"}")', word
        return self.given(each, word, name)

    def given(self, each, word, name):
        value = each.name
        if each.kind == "address":
            return None, f"NULL if {value} is None else {value}"
        if each.kind == "callback":
            return f'{word} = _v.Callback({name}, {value}, "{each.declared}", {each.entry})', f"{word}.pointer"
        if each.kind == "text":
            call = "text_or_none" if "null" in each.text else "text"
            return f"{word} = _v.{call}({name}, {value})", word
        if each.kind in ("chip_ports", "interfaces"):
            line = f'{word} = _v.bitmap({name}, {value}, {each.kind == "chip_ports"})'
            return line, word if each.by_address else f"{word}[0]"
        if each.kind == "record":
            line = f"{word} = _v.record({name}, {value}, {class_name(each.element)})"
            return line, word if each.by_address else f"{word}[0]"
        return self.plain(each, word, name, value)

    def plain(self, each, word, name, value):
        if each.kind == "bytes" and each.count is None:
            return f"{word} = _v.frame({name}, {value})", word
        if each.kind == "bytes":
            return f"{word} = _v.octets({name}, {value}, {each.count})", word
        if each.kind == "array":
            return (f'{word} = _v.new("{each.element}[]", _v.numbers({name}, {value}, "{each.element}", '
                    f"{each.count}))"), word
        made = {"int": f'_v.integer({name}, {value}, "{each.element}")',
                "switch": f"_v.switch({name}, {value})",
                "port": f'_v.integer({name}, _chip_port({name}, {value}), "{each.element}")'}[each.kind]
        if each.by_address:
            made = f'_v.new("{each.element} *", {made})'
        return f"{word} = {made}", word

    def answer(self, each):
        """The expression of a value that comes back."""
        word = f"_{each.name}"
        if each.kind in ("int", "switch", "port"):
            value = f"{word}[0]"
            if each.code:
                return f"{each.code.name}({value})"
            return {"int": f"int({value})", "switch": f"bool({value})", "port": f"_box_port({value})"}[each.kind]
        if each.kind == "bytes":
            return f"bytes({word})"
        if each.kind == "array":
            return f"tuple({word})"
        if each.kind == "record":
            return f"{class_name(each.element)}._get({word})"
        if each.kind == "counter":
            return f"_v.counter({word})"
        return f'_v.get_bitmap({word}, {each.kind == "chip_ports"})'

    def function(self, name, call):
        takes = call.of_way("in", "both")
        gives = call.of_way("out", "both")
        self.prepare(call)
        lines = [f"def {name}({self.parameters(takes)}) -> {self.result(name, call, gives)}:",
                 documents.docstring(call, takes, gives)]
        words = []
        for each in sorted(call.arguments, key=lambda each: each.way == "size"):
            line, _ = self.passed(each)
            lines += [f"    {line}"] * bool(line)
        words = [self.passed(each)[1] for each in call.arguments]
        kept = "" if call.result == "void" else "_result = "
        lines.append(f"    {kept}_c.{call.name}({', '.join(words)})")
        lines += [f"    _{each.name}.finish()" for each in takes if each.kind == "callback"]
        return "\n".join([*lines, *self.end(name, call, takes, gives)]) + "\n"

    def prepare(self, call):
        for each in call.arguments:
            if each.kind == "int" and each.way in ("in", "out", "both"):
                each.code = self.codes.of(each.text)

    def result(self, name, call, gives):
        if len(gives) > 1:
            return self.tuple_name(name)
        if gives:
            return self.annotation_out(gives[0])
        if call.result in ("uint8_t *", "char *"):
            return "Any"
        return {"const char *": "Optional[str]", "void": "None"}.get(call.result, "int")

    def annotation_out(self, each):
        way, each.way = each.way, "out"
        text = self.annotation(each)
        each.way = way
        return text

    @staticmethod
    def tuple_name(name):
        return class_name(name) + "Result"

    @staticmethod
    def member(each):
        """A tuple has methods of its own."""
        return f"{each.name}_" if each.name in ("count", "index") else each.name

    def tuple(self, name, gives):
        lines = [f"class {self.tuple_name(name)}(NamedTuple):",
                 f'    """What {name}() gives."""', ""]
        return "\n".join([*lines, *(f"    {self.member(each)}: {self.annotation_out(each)}" for each in gives)]) + "\n"

    def end(self, name, call, takes, gives):
        if call.result == "int32_t" and not PLAIN_RESULTS.match(documents.result_text(call.comment)):
            given = ", ".join(f'"{each.name}": {each.name}' for each in takes
                              if each.kind not in ("callback", "address"))
            yield "    if _result < 0:"
            yield f'        raise _v.refused(_result, "{call.name}", {{{given}}})'
        if len(gives) > 1:
            yield f"    return {self.tuple_name(name)}({', '.join(self.answer(each) for each in gives)})"
        elif gives:
            yield f"    return {self.answer(gives[0])}"
        elif call.result == "const char *":
            yield "    return _v.said(_result)"
        elif call.result in ("uint8_t *", "char *"):
            yield "    return _result"
        elif call.result != "void":
            yield "    return int(_result)"

    def module(self, family, source, said, calls):
        names = function_names(family, [call.name for call in calls])
        up = ".." if family == "controls" else "."
        parts = [HEAD.format(source=source, said=documents.plain(said), up=up)]
        public = []
        for call in calls:
            name, gives = names[call.name], call.of_way("out", "both")
            text = self.function(name, call)
            if len(gives) > 1:
                parts.append(self.tuple(name, gives))
                public.append(self.tuple_name(name))
            parts.append(text)
            public.append(name)
        parts.append(f"__all__ = {sorted(public)!r}\n")
        return "\n\n\n".join(part.rstrip("\n") for part in parts) + "\n"

