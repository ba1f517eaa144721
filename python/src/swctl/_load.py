# SPDX-License-Identifier: MIT
"""Loads the probe, the platform and the library, in the order in which each call
finds the next one: the library asks the probe, which asks the platform.
"""
from __future__ import annotations

import os
import sys
import threading
from typing import Any

from ._cdef import ffi
from .errors import LibraryNotFound

PROBE, VCHIP, LIBRARY = "libswctl-probe.so.1", "libswctl-vchip.so.1", "libswctl.so.1"
PACKAGES = {PROBE: "libswctl-probe1", VCHIP: "libswctl-vchip1", LIBRARY: "libswctl1"}

_lock = threading.Lock()
_found: Libraries | None = None


class Libraries:
    """The libraries of this process. `probe` and `vchip` may be absent."""

    def __init__(self) -> None:
        self.probe = _open_if_there(PROBE)
        self.platform = [_open(name) for name in _platform()]
        self.vchip = None if os.environ.get("SWCTL_PLATFORM") else self.platform[0]
        self.swctl = _open(LIBRARY)
        self.all = ffi.dlopen(None, ffi.RTLD_GLOBAL)

    def find(self, name: str) -> Any:
        """A function or variable: the library's own, or the first one of all."""
        for place in (self.swctl, self.all):
            try:
                return getattr(place, name)
            except (AttributeError, ffi.error):
                continue
        raise LibraryNotFound(f"{name}() is in no library that is loaded: {self.names()}. "
                              "A platform need not have every function that reads settings back; "
                              "a function of the virtual chip or the probe needs their packages.")

    def names(self) -> str:
        return ", ".join([*([PROBE] if self.probe else []), *_platform(), LIBRARY])

    def of_platform(self, name: str) -> Any:
        """A function of the platform, past the probe; None if there is none."""
        for place in self.platform:
            try:
                return getattr(place, name)
            except (AttributeError, ffi.error):
                continue
        return None


def libraries() -> Libraries:
    """Loads the libraries on the first call."""
    global _found
    with _lock:
        if _found is None:
            _found = Libraries()
        return _found


def _platform() -> list[str]:
    """What implements the SDK: the virtual chip, or what SWCTL_PLATFORM names."""
    return [name for name in os.environ.get("SWCTL_PLATFORM", "").split(":") if name] or [VCHIP]


def places(name: str) -> list[str]:
    """Where a library is looked for: a directory that is named, the loader's own, the
    prefix of this interpreter.
    """
    named = os.environ.get("SWCTL_LIBRARY_PATH")
    if "/" in name:
        return [name]
    if named:
        return [os.path.join(named, name)]
    prefixes = dict.fromkeys([sys.prefix, "/usr/local"])
    beside = [os.path.join(prefix, "lib", name) for prefix in prefixes]
    return [name, *(path for path in beside if os.path.exists(path))]


def _open(name: str) -> Any:
    problems = []
    for place in places(name):
        try:
            return ffi.dlopen(place, ffi.RTLD_NOW | ffi.RTLD_GLOBAL)
        except OSError as error:
            problems.append(str(error))
    package = f"install the package {PACKAGES[name]}, or " if name in PACKAGES else ""
    raise LibraryNotFound(f"{name} cannot be loaded: {package}name the directory that holds it in "
                          f"SWCTL_LIBRARY_PATH ({'; '.join(problems)})")


def _open_if_there(name: str) -> Any:
    try:
        return _open(name)
    except LibraryNotFound:
        return None
