# SPDX-License-Identifier: MIT
"""The types of the module `c`, where every name is looked up when it is used."""
import keyword

import documents
from meaning import SCALARS

HEAD = '''# SPDX-License-Identifier: MIT
# Made from the headers; changes here are lost.
from typing import Any

ffi: Any

def variables() -> Any: ...

'''


def kind(declared):
    return "int" if declared in SCALARS else "Any"


def parameter(index, name, declared):
    name = f"_{index}" if keyword.iskeyword(name) else name
    return f"{name}: {kind(declared)}"


def function(each):
    words = [parameter(index, one.name, one.declared) for index, one in enumerate(each.parameters)]
    words += ["*arguments: Any"] * each.open
    result = "None" if each.result == "void" else kind(each.result)
    return f"def {each.name}({', '.join(words)}) -> {result}: ..."


def call(name, arguments):
    words = [parameter(index, argument, declared if direction == "val" else f"{declared} *")
             for index, (direction, declared, argument, *_) in enumerate(arguments)]
    return f"def {name}({', '.join(words)}) -> int: ..."


def constant(name, said):
    return f"{name}: int" + (f'\n"""{documents.plain(said)}"""' if said else "")


def text(interface):
    return "\n".join([
        HEAD, *(constant(name, interface.said.get(name)) for name in interface.constants), "",
        *(function(each) for each in interface.functions.values()),
        *(call(name, arguments) for name, (arguments, _) in interface.calls.items()),
    ]) + "\n"
