# SPDX-License-Identifier: MIT
"""Frames that have left a board, and explanations of what becomes of one."""
from __future__ import annotations

import json
import os
import pathlib
import struct
from dataclasses import dataclass
from typing import Any, Iterator, Optional, Union

from .._numbers import ChipPort, Port

PCAP_NANOSECONDS, PCAP_ETHERNET, PCAP_LONGEST = 0xA1B23C4D, 1, 65535


@dataclass(frozen=True)
class Departure:
    """A frame that has left a port.

    Attributes:
        port: where it left
        frame: its bytes, without FCS
        came_by: the port by which it came in
        time: the chip's clock when it left, in nanoseconds
        reason: on port 0, the processor's, why it is there; else 0
    """

    port: Port
    frame: bytes
    came_by: Port
    time: int
    reason: int


class Capture:
    """The frames that leave while it is open, in the order in which they leave.

    `capture[2]` is the list of frames that have left port 2.
    """

    def __init__(self, port: Optional[Port] = None) -> None:
        self.departures: list[Departure] = []
        self._port, self._open = port, True

    def add(self, departure: Departure) -> None:
        if self._open and self._port in (None, departure.port):
            self.departures.append(departure)

    def __enter__(self) -> Capture:
        return self

    def __exit__(self, *_: object) -> None:
        self._open = False

    def __getitem__(self, port: Port) -> list[bytes]:
        return [each.frame for each in self.departures if each.port == port]

    def __iter__(self) -> Iterator[Departure]:
        return iter(self.departures)

    def __len__(self) -> int:
        return len(self.departures)

    @property
    def ports(self) -> set[Port]:
        """The ports that at least one frame has left."""
        return {each.port for each in self.departures}

    def save(self, path: Union[str, os.PathLike[str]]) -> None:
        """Writes a capture that Wireshark and tcpdump read, in the chip's time."""
        parts = [struct.pack("=IHHiIII", PCAP_NANOSECONDS, 2, 4, 0, 0, PCAP_LONGEST, PCAP_ETHERNET)]
        for each in self.departures:
            seconds, rest = divmod(each.time, 10**9)
            parts.append(struct.pack("=IIII", seconds, rest, len(each.frame), len(each.frame)))
            parts.append(each.frame)
        pathlib.Path(path).write_bytes(b"".join(parts))


@dataclass(frozen=True)
class Step:
    """What one step of the chip looked at and what came of it."""

    step: str
    decision: str
    why: str
    setting: Optional[str]

    def __str__(self) -> str:
        by = f"  [{self.setting}]" if self.setting else ""
        return f"{self.step:<9} {self.decision:<8} {self.why}{by}"


def port_of(word: Union[int, str]) -> Port:
    """A port as a document has it: a number on the box, or "p27"."""
    return word if isinstance(word, int) else ChipPort(int(word[1:]))


class Explanation:
    """What would become of a frame, and why. As text, a line for each step.

    Attributes:
        steps: those that looked at the frame
        out: port and bytes of what leaves at once
        dropped: why it was dropped, or None
    """

    def __init__(self, document: str) -> None:
        read: dict[str, Any] = json.loads(document)
        self.steps = [Step(**each) for each in read["steps"]]
        self.out = [(port_of(each["port"]), bytes.fromhex(each["bytes"])) for each in read["out"]]
        dropped = read["dropped"]
        self.dropped: Optional[str] = f"{dropped['step']}: {dropped['why']}" if dropped else None

    @property
    def ports(self) -> set[Port]:
        return {port for port, _ in self.out}

    def __str__(self) -> str:
        return "\n".join([*map(str, self.steps), f"leaves {shown_ports(self.ports)}"])


def shown_ports(ports: set[Port]) -> str:
    """"ports 1 and 3", "no port"."""
    words = [str(each) if isinstance(each, int) else f"p{each.number}"
             for each in sorted(ports, key=lambda each: (isinstance(each, ChipPort),
                                                         each.number if isinstance(each, ChipPort) else each))]
    if not words:
        return "no port"
    head = ", ".join(words[:-1])
    return f"port {words[0]}" if len(words) == 1 else f"ports {head} and {words[-1]}"
