# SPDX-License-Identifier: MIT
"""Switch control over the chip vendor's SDK, from Python.

A module for each family of functions takes plain values and gives plain values:

    >>> import swctl
    >>> with swctl.vchip.Board() as board:
    ...     board.link_up(3)
    ...     swctl.port.link_status(3)
    <Link.UP: 1>

Ports are the numbers on the box; `ChipPort(n)` is a port by the chip's number. `unit`
is 0 if it is not given. A negative result raises `Refused`. `swctl.c` has every function
and constant by its C name, without conversions.
"""
from __future__ import annotations

import importlib
from typing import TYPE_CHECKING, Any

from ._numbers import ChipPort, Port
from ._version import VERSION as __version__
from .errors import BoardError, LibraryNotFound, Refused, RemoteError, SwctlError

if TYPE_CHECKING:
    from . import (c, codes, field, frame, kmsg, l2, mcast, mirror_trunk, platform, port, qos,
                   records, remote, sdk, stp, vchip, vlan)

_MODULES = ["c", "codes", "field", "frame", "kmsg", "l2", "mcast", "mirror_trunk", "platform", "port",
            "qos", "records", "remote", "sdk", "stp", "vchip", "vlan"]

__all__ = ["BoardError", "ChipPort", "LibraryNotFound", "Port", "Refused", "RemoteError", "SwctlError",
           "__version__", *_MODULES]


def __getattr__(name: str) -> Any:
    if name in _MODULES:
        return importlib.import_module(f".{name}", __name__)
    raise AttributeError(f"swctl has no {name!r}; its modules are {', '.join(_MODULES)}")


def __dir__() -> list[str]:
    return sorted(__all__)
