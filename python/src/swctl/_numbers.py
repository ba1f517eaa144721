# SPDX-License-Identifier: MIT
"""Ports: the numbers on the box, which this package takes and gives, and the chip's."""
from __future__ import annotations

from typing import Any, Iterable, Iterator, Union

from . import c
from ._load import libraries

BITMAP_PORTS = 256


class ChipPort:
    """A port by the chip's number, for one that has no number on the box, or where the
    board's numbering is not wanted.
    """

    __slots__ = ("number",)

    def __init__(self, number: int) -> None:
        if isinstance(number, bool) or not isinstance(number, int):
            raise TypeError(f"a chip port is a number, not {number!r}")
        self.number = number

    def __eq__(self, other: object) -> bool:
        return isinstance(other, ChipPort) and other.number == self.number

    def __hash__(self) -> int:
        return hash((ChipPort, self.number))

    def __repr__(self) -> str:
        return f"ChipPort({self.number})"


Port = Union[int, ChipPort]
PortSet = frozenset[Port]

_chip: dict[int, int] = {}
_box: dict[int, int] = {}


def load() -> None:
    """Asks the adapter once. The board's numbering does not change."""
    if _chip:
        return
    convert = libraries().of_platform("adp_intf_2_phy_id")
    for interface in range(c.USER_FRONT_INTERFACES + 1):
        port = convert(interface)
        if port >= 0 and port not in _box:
            _chip[interface] = port
            _box[port] = interface


def chip_port(name: str, port: Port) -> int:
    """The chip's number of a port."""
    if isinstance(port, ChipPort):
        return port.number
    if isinstance(port, bool) or not isinstance(port, int):
        raise TypeError(f"{name}: expected the number of a port, not {port!r}")
    if not _chip:
        load()
    if port not in _chip:
        raise ValueError(f"{name}: there is no port {port}: ports are 1 to "
                         f"{c.USER_FRONT_INTERFACES}, and 0 is the processor's; ChipPort({port}) "
                         "would be a number of the chip")
    return _chip[port]


def box_port(port: int) -> Port:
    """The number on the box, or the chip port where it has none."""
    if not _chip:
        load()
    return _box[port] if port in _box else ChipPort(port)


def put_bitmap(name: str, ports: Iterable[Port], bitmap: Any, of_chip: bool) -> None:
    """Sets the bits of a bitmap, which is all zeros."""
    if isinstance(ports, (str, bytes, int)):
        raise TypeError(f"{name}: expected a collection of ports such as [1, 2], not {ports!r}")
    for port in ports:
        number = chip_port(name, port) if of_chip else _interface(name, port)
        if not 0 <= number < BITMAP_PORTS:
            raise ValueError(f"{name}: {port!r} is in no bitmap, which has {BITMAP_PORTS} ports")
        bitmap.word[number // 32] |= 1 << number % 32


def _interface(name: str, port: Port) -> int:
    if isinstance(port, ChipPort):
        found = box_port(port.number)
        if isinstance(found, ChipPort):
            raise ValueError(f"{name}: {port!r} has no number on the box, and only those fit here")
        return found
    if isinstance(port, bool) or not isinstance(port, int):
        raise TypeError(f"{name}: expected the number of a port, not {port!r}")
    return port


def _bits(bitmap: Any) -> Iterator[int]:
    for index, word in enumerate(bitmap.word):
        while word:
            lowest = word & -word
            yield 32 * index + lowest.bit_length() - 1
            word ^= lowest


def get_bitmap(bitmap: Any, of_chip: bool) -> PortSet:
    return frozenset(map(box_port, _bits(bitmap)) if of_chip else _bits(bitmap))
