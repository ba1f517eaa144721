# SPDX-License-Identifier: MIT
"""Every function, constant and variable by its C name, without conversions:
`c.user_port_link_status_get(0, 0, 3, status)` with `status = c.ffi.new("uint32_t *")`.

Ports are chip ports here, and results are numbers that nobody checks.
"""
from __future__ import annotations

from typing import Any

from ._cdef import ffi
from ._names import NAMES

__all__ = ["ffi"]


def __getattr__(name: str) -> Any:
    if name in NAMES["functions"]:
        from ._load import libraries

        value: Any = libraries().find(name)
    elif name in NAMES["variables"]:
        # Not kept: a variable has another value each time.
        raise AttributeError(f"{name} is a variable: read and set it at c.variables().{name}")
    else:
        value = _constant(name)
    globals()[name] = value
    return value


def _constant(name: str) -> int:
    try:
        return int(ffi.integer_const(name))
    except (AttributeError, ffi.error):
        raise AttributeError(f"no header declares {name}") from None


def variables() -> Any:
    """The library's variables as attributes, to read and to set."""
    from ._load import libraries

    return libraries().swctl
