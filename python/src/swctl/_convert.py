# SPDX-License-Identifier: MIT
"""Arguments into C and back. Each checks its argument and names it; nothing has been
called by then.
"""
from __future__ import annotations

import ipaddress
from enum import IntEnum, IntFlag
from typing import Any, Callable, Iterable, Optional, Sequence, SupportsBytes, TypeVar, Union

from . import c
from ._cdef import ffi
from ._numbers import (ChipPort, Port, PortSet, box_port, chip_port, get_bitmap, put_bitmap)
from .errors import Refused

Frame = Union[bytes, bytearray, memoryview, SupportsBytes]
Address = Union[str, bytes, bytearray, ipaddress.IPv6Address]
Ports = Iterable[Port]
new = ffi.new
NULL = ffi.NULL

_ints: dict[str, tuple[int, int]] = {}
for _bits in (8, 16, 32, 64):
    _ints[f"int{_bits}_t"] = (-(1 << _bits - 1), (1 << _bits - 1) - 1)
    _ints[f"uint{_bits}_t"] = (0, (1 << _bits) - 1)


class Code(IntEnum):
    """Codes. A platform may answer one that has no name; it is called VALUE_n then."""

    @classmethod
    def _missing_(cls, value: object) -> Any:
        if not isinstance(value, int):
            return None
        member = int.__new__(cls, value)
        member._name_, member._value_ = f"VALUE_{value}", value
        return member


class Flags(IntFlag):
    """Codes that are combined with `|`."""


def integer(name: str, value: int, kind: str) -> int:
    if not isinstance(value, int):
        raise TypeError(f"{name}: expected an int, not {value!r}")
    low, high = _ints[kind]
    if not low <= value <= high:
        raise OverflowError(f"{name}: {int(value)} is outside {low} to {high}")
    return value


def switch(name: str, value: Union[bool, int]) -> int:
    if not isinstance(value, int) or value not in (0, 1):
        raise TypeError(f"{name}: expected True or False, not {value!r}")
    return int(value)


def text(name: str, value: str) -> bytes:
    if not isinstance(value, str):
        raise TypeError(f"{name}: expected a str, not {value!r}")
    if "\0" in value:
        raise ValueError(f"{name}: a text for C has no null character: {value!r}")
    return value.encode()


def text_or_none(name: str, value: Optional[str]) -> Any:
    return NULL if value is None else new("char[]", text(name, value))


def frame(name: str, value: Frame) -> bytes:
    """Bytes, or anything that bytes() takes: a packet of scapy, dpkt."""
    if isinstance(value, (bytes, bytearray, memoryview)):
        return bytes(value)
    if isinstance(value, (int, str)) or not hasattr(value, "__bytes__"):
        raise TypeError(f"{name}: expected bytes or something with bytes(), not {value!r}")
    return bytes(value)


def _bytes_of(name: str, value: Address, size: int) -> bytes:
    if isinstance(value, (bytes, bytearray)):
        return bytes(value)
    if size == 16 and isinstance(value, (str, ipaddress.IPv6Address)):
        return ipaddress.IPv6Address(value).packed
    if isinstance(value, str):
        try:
            return bytes.fromhex(value.replace(":", "").replace("-", ""))
        except ValueError as error:
            raise ValueError(f"{name}: {value!r} is no address such as 02:00:00:00:00:01") from error
    raise TypeError(f"{name}: expected {size} bytes or an address as text, not {value!r}")


def octets(name: str, value: Address, size: int) -> bytes:
    """So many bytes; six may be a MAC address as text, sixteen an IPv6 address."""
    found = _bytes_of(name, value, size)
    if len(found) != size:
        raise ValueError(f"{name}: expected {size} bytes, not {len(found)}: {value!r}")
    return found


def numbers(name: str, value: Sequence[int], kind: str, count: int) -> list[int]:
    if isinstance(value, (str, int)) or not hasattr(value, "__len__"):
        raise TypeError(f"{name}: expected {count} numbers, not {value!r}")
    if len(value) != count:
        raise ValueError(f"{name}: expected {count} numbers, not {len(value)}: {value!r}")
    return [integer(f"{name}[{index}]", each, kind) for index, each in enumerate(value)]


def bitmap(name: str, ports: Ports, of_chip: bool) -> Any:
    found = new("user_pbmp_t *")
    put_bitmap(name, ports, found, of_chip)
    return found


def counter(value: Any) -> int:
    return int(value.high) << 32 | int(value.low)


def put_counter(name: str, value: int, into: Any) -> None:
    into.high, into.low = divmod(integer(name, value, "uint64_t"), 1 << 32)


class Record:
    """A record of C. Its attributes are the members; two with the same ones are equal."""

    __slots__: tuple[str, ...] = ()
    C_NAME = ""

    def _put(self, into: Any) -> None:
        raise NotImplementedError

    @classmethod
    def _get(cls, found: Any) -> Any:
        raise NotImplementedError

    def _values(self) -> tuple[Any, ...]:
        return tuple(getattr(self, name) for name in self.__slots__)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, type(self)) and self._values() == other._values()

    def __repr__(self) -> str:
        words = ", ".join(f"{name}={getattr(self, name)!r}" for name in self.__slots__)
        return f"{type(self).__name__}({words})"


R = TypeVar("R", bound=Record)


def record(name: str, value: Record, kind: type[Record]) -> Any:
    if not isinstance(value, kind):
        raise TypeError(f"{name}: expected a {kind.__name__}, not {value!r}")
    found = new(f"{kind.C_NAME} *")
    value._put(found)
    return found


def records(name: str, value: Sequence[R], kind: type[R], count: int, into: Any) -> None:
    if len(value) > count:
        raise ValueError(f"{name}: there is room for {count}, not for {len(value)}")
    for index, each in enumerate(value):
        if not isinstance(each, kind):
            raise TypeError(f"{name}[{index}]: expected a {kind.__name__}, not {each!r}")
        each._put(into[index])


def put_rows(name: str, value: Sequence[Address], count: int, size: int, into: Any) -> None:
    if isinstance(value, (str, int)) or not hasattr(value, "__len__") or len(value) != count:
        raise ValueError(f"{name}: expected {count} rows of {size} bytes, not {value!r}")
    for index, each in enumerate(value):
        into[index] = octets(f"{name}[{index}]", each, size)


class Callback:
    """A Python function that C calls for each entry. What it raises ends the walk and
    is raised again after it.
    """

    def __init__(self, name: str, function: Callable[..., Optional[int]], declared: str,
                 kind: type[Record]) -> None:
        if not callable(function):
            raise TypeError(f"{name}: expected a function, not {function!r}")
        self.function, self.kind = function, kind
        self.error: Optional[BaseException] = None
        self.pointer = ffi.callback(declared, self.call)

    def call(self, unit: int, entry: Any, _: Any) -> int:
        if self.error is not None:
            return -1
        try:
            answer = self.function(unit, self.kind._get(entry))
            return 0 if answer is None else integer("the result of the callback", answer, "int32_t")
        except BaseException as error:  # pylint: disable=broad-except
            self.error = error
            return -1

    def finish(self) -> None:
        if self.error is not None:
            raise self.error


def said(value: Any) -> Optional[str]:
    """A text that C has answered."""
    return None if value == NULL else ffi.string(value).decode(errors="replace")


# What to do about a result of the virtual chip.
HINTS = {c.VCHIP_E_BUSY: "; `vchipctl status` says which one", c.VCHIP_E_IMAGE: "; VCHIP_IMAGE names it"}


def sentence_of(code: int) -> str:
    from ._load import libraries

    ask = libraries().of_platform("swctl_platform_result_text")
    found = said(ask(code)) if ask is not None else None
    if found is not None:
        return found + HINTS.get(code, "")
    if code == -1:
        return "the library does not offer this call, or could not do it"
    return "the platform has no sentence for this result"


def shown(value: Any) -> str:
    if isinstance(value, (bytes, bytearray)):
        return bytes(value).hex(":") or "(no bytes)"
    return repr(value) if not isinstance(value, int) else str(int(value))


def refused(code: int, name: str, arguments: dict[str, Any]) -> Refused:
    words = ", ".join(f"{key}={shown(value)}" for key, value in arguments.items())
    return Refused(code, sentence_of(code), f"{name}({words})")


__all__ = [
    "Address", "Any", "Callable", "Callback", "ChipPort", "Code", "Flags", "Frame", "NULL", "Optional",
    "Port", "PortSet", "Ports", "Record", "Sequence", "Union", "bitmap", "box_port", "c", "chip_port",
    "counter", "ffi", "frame", "get_bitmap", "integer", "new", "numbers", "octets", "put_bitmap",
    "put_counter", "put_rows", "record", "records", "refused", "said", "switch", "text", "text_or_none",
]
