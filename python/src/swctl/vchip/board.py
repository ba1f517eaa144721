# SPDX-License-Identifier: MIT
"""A board with a virtual chip."""
from __future__ import annotations

import json
import os
import threading
from typing import Any, Iterable, Optional, Union

from .. import _numbers, c
from .._convert import Frame, ffi, frame as frame_bytes, refused, said, text_or_none
from .._load import VCHIP, libraries
from .._numbers import Port, box_port, chip_port
from ..errors import BoardError
from .frames import Capture, Departure, Explanation, shown_ports
from .sdk_calls import Call, Calls, preload, rule_of

Path = Union[str, "os.PathLike[str]"]
IMAGE, WAIT = "VCHIP_IMAGE", "VCHIP_WAIT"
PATIENCE = "10"
NANOSECONDS = 10**9

_lock = threading.Lock()
_open_board: Optional[Board] = None


class Board:
    """A board in this process: a chip as after power-on, every cable pulled.

    With `image`, the chip is a file that other processes share, and stays as the file
    has it. A process has one board at a time; while it is open, everything of `swctl`
    goes to it.

    >>> with Board() as board:
    ...     board.link_up(1)
    """

    def __init__(self, image: Optional[Path] = None, *, unit: int = 0) -> None:
        if not 0 <= unit < c.VCHIP_UNITS:
            raise ValueError(f"unit: a board has units 0 to {c.VCHIP_UNITS - 1}, not {unit!r}")
        self.image = None if image is None else os.path.abspath(os.fspath(image))
        self.unit = unit
        self._state = "new"
        self._captures: list[Capture] = []
        self._before: Optional[str] = None
        self._calls: Calls

    def __enter__(self) -> Board:
        return self.open()

    def __exit__(self, *_: object) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<swctl.vchip.Board {self.image or 'private'}, {self._state}>"

    def open(self) -> Board:
        """Opens the chip. A `with` block does it."""
        global _open_board
        if self._state == "open":
            raise BoardError("this board is open already")
        if libraries().vchip is None:
            raise BoardError(f"a Board is a virtual chip, and SWCTL_PLATFORM names other libraries; "
                             f"unset it, and {VCHIP} is loaded")
        with _lock:
            if _open_board is not None:
                raise BoardError(f"{_open_board!r} is open in this process, and a process has one "
                                 "chip: close that board first")
            self._begin()
            _open_board, self._state = self, "open"
        return self

    def _begin(self) -> None:
        self._before = os.environ.get(IMAGE)
        self._set_image(self.image)
        c.vchip_close()
        why = self._opened()
        if why is not None:
            c.vchip_close()
            self._set_image(self._before)
            raise BoardError(f"{why}: name another file, or `vchipctl status` says who uses it")
        _numbers.load()
        self._calls = Calls()

    @staticmethod
    def _opened() -> Optional[str]:
        """Opens the chip, and says why not. A process that keeps the image's lock and does not
        go on is not waited for without end.
        """
        patient = WAIT not in os.environ
        os.environ.setdefault(WAIT, PATIENCE)
        try:
            return said(c.vchip_open())
        finally:
            if patient:
                del os.environ[WAIT]

    @staticmethod
    def _set_image(image: Optional[str]) -> None:
        """What the virtual chip of this process and of its children opens."""
        if image is None:
            os.environ.pop(IMAGE, None)
        else:
            os.environ[IMAGE] = image

    def close(self) -> None:
        """Gives the chip up: a private one is gone, an image stays. Closing twice does nothing."""
        global _open_board
        if self._state != "open":
            return
        self._calls.end()
        c.vchip_close()
        self._set_image(self._before)
        with _lock:
            _open_board, self._state = None, "closed"

    def _expect_open(self) -> None:
        if self._state != "open":
            raise BoardError("this board is closed: use it inside `with swctl.vchip.Board() as board:`, "
                             "or open() it")

    def _check(self, result: int, name: str, arguments: dict[str, Any]) -> int:
        if result < 0:
            raise refused(result, name, arguments)
        return result

    # What is outside of the board.

    def reset(self) -> None:
        """Puts the chip into the state after power-on. Every cable is pulled too."""
        self._expect_open()
        self._check(c.vchip_reset(), "vchip_reset", {})

    def link_up(self, *ports: Port, ability: Optional[int] = None, autonegotiation: bool = True) -> None:
        """Plugs a cable into each port. Whether the link comes up, the chip decides.

        Args:
            ports: the ports
            ability: what the other end advertises, `c.VCHIP_ABILITY_*`; the usual if not given
            autonegotiation: False for another end that is forced to the one mode in `ability`
        """
        self._expect_open()
        partner = ffi.new("vchip_partner_t *")
        partner.autonegotiation = int(autonegotiation)
        partner.ability = c.VCHIP_ABILITY_USUAL if ability is None else ability
        for number in [chip_port("port", each) for each in ports]:
            self._check(c.vchip_cable_plug(self.unit, number, partner), "vchip_cable_plug",
                        {"unit": self.unit, "port": number})

    def link_down(self, *ports: Port) -> None:
        """Pulls the cable out of each port."""
        self._expect_open()
        for number in [chip_port("port", each) for each in ports]:
            self._check(c.vchip_cable_pull(self.unit, number), "vchip_cable_pull",
                        {"unit": self.unit, "port": number})

    def advance(self, seconds: float) -> None:
        """Advances the chip's clock, which never runs by itself: entries age, queues drain."""
        self._expect_open()
        if isinstance(seconds, bool) or not isinstance(seconds, (int, float)) or not 0 <= seconds < 1e9:
            raise ValueError(f"seconds: expected 0 or more, not {seconds!r}")
        self._check(c.vchip_clock_advance(round(seconds * NANOSECONDS)), "vchip_clock_advance",
                    {"seconds": seconds})
        self._collect()

    # Frames.

    def send(self, frame: Frame, port: Port = 1) -> dict[Port, list[bytes]]:
        """A frame arrives at a port; what leaves at once comes back, by port.

        Args:
            frame: from the destination address on, without FCS; bytes or anything that
                `bytes()` takes
            port: where it arrives; at 0 it is the processor that sends
        """
        self._expect_open()
        content, number = frame_bytes("frame", frame), chip_port("port", port)
        self._check(c.vchip_frame_arrive(self.unit, number, content, len(content)),
                    "vchip_frame_arrive", {"unit": self.unit, "port": number, "bytes": content})
        left: dict[Port, list[bytes]] = {}
        for each in self._collect():
            left.setdefault(each.port, []).append(each.frame)
        return left

    def transmit(self, frame: Frame, port: Port) -> list[bytes]:
        """The processor sends a frame out of one port as it is; what left it comes back."""
        self._expect_open()
        content, number = frame_bytes("frame", frame), chip_port("port", port)
        self._check(c.vchip_frame_transmit(self.unit, number, content, len(content)),
                    "vchip_frame_transmit", {"unit": self.unit, "port": number, "bytes": content})
        return [each.frame for each in self._collect() if each.port == port]

    def capture(self, port: Optional[Port] = None) -> Capture:
        """Keeps what leaves from now on, at one port or at all, to the end of its `with` block."""
        self._expect_open()
        if port is not None:
            chip_port("port", port)
        capture = Capture(port)
        self._captures.append(capture)
        return capture

    def explain(self, frame: Frame, port: Port = 1) -> Explanation:
        """What would become of a frame that arrives now, and why. Changes nothing."""
        self._expect_open()
        content, number = frame_bytes("frame", frame), chip_port("port", port)
        document = self._document("vchip_explain_text",
                                  lambda into: c.vchip_explain_text(self.unit, number, content,
                                                                    len(content), into),
                                  {"unit": self.unit, "port": number, "bytes": content})
        return Explanation(document)

    def expect(self, frame: Frame, on: Iterable[Port], port: Port = 1) -> dict[Port, list[bytes]]:
        """Sends a frame, and raises an AssertionError that explains the frame's way unless
        it leaves at exactly the ports `on`. What left comes back, as from `send`.

        The processor, port 0, gets a copy of most of what is flooded. It counts only if
        `on` names it.
        """
        __tracebackhide__ = True
        if isinstance(on, (int, str, bytes)):
            raise TypeError(f"on: expected a collection of ports such as [2, 3], not {on!r}")
        wanted = set(on)
        for each in wanted:
            chip_port("on", each)
        explanation = self.explain(frame, port)
        left = self.send(frame, port)
        if {each for each in left if each != 0 or 0 in wanted} != wanted:
            raise AssertionError(f"the frame that came in at {shown_ports({port})} left by "
                                 f"{shown_ports(set(left))}, not {shown_ports(wanted)}:\n{explanation}")
        return left

    def _collect(self) -> list[Departure]:
        """Everything that has left, in order of time."""
        found = []
        ready = c.vchip_frames_ready(self.unit)
        for number in range(c.VCHIP_PORTS):
            while ready >> number & 1:
                departure = self._take(number)
                if departure is None:
                    break
                found.append(departure)
        found.sort(key=lambda each: each.time)
        for capture in self._captures:
            for each in found:
                capture.add(each)
        return found

    def _take(self, number: int) -> Optional[Departure]:
        frame, room = ffi.new("struct vchip_frame_t *"), ffi.new("uint8_t[]", c.VCHIP_FRAME_MAX)
        frame.bytes, frame.room = room, c.VCHIP_FRAME_MAX
        if self._check(c.vchip_frame_leave(self.unit, number, frame), "vchip_frame_leave", {}) == 0:
            return None
        return Departure(box_port(number), bytes(ffi.buffer(room, frame.length)),
                         box_port(frame.port_in), int(frame.time), int(frame.reason))

    # What the chip holds.

    def dump(self, block: Optional[str] = None) -> dict[str, Any]:
        """What the chip holds, as `vchipctl dump` shows it, with chip ports.

        Args:
            block: one block of this board's unit, such as "vlan"; None for the whole
                chip, with both units
        """
        self._expect_open()
        name = text_or_none("block", block)
        unit = -1 if block is None else self.unit
        document = self._document("vchip_dump_text", lambda into: c.vchip_dump_text(unit, name, into),
                                  {"unit": unit, "block": block})
        read: dict[str, Any] = json.loads(document)
        return read if block is None else self._block(read, block)

    def _block(self, document: dict[str, Any], block: str) -> dict[str, Any]:
        found: Optional[dict[str, Any]] = document["units"][self.unit].get(block, document.get(block))
        if found is None:
            known = json.loads(self._document("vchip_dump_text",
                                              lambda into: c.vchip_dump_text(self.unit, ffi.NULL, into), {}))
            names = [*(each for each in known["units"][self.unit] if each != "unit"), "platform", "rules"]
            raise ValueError(f"block: the chip has no {block!r}, only {', '.join(names)}")
        return found

    def _document(self, name: str, write: Any, arguments: dict[str, Any]) -> str:
        into = ffi.new("char **")
        result = write(into)
        document = said(into[0]) or ""
        if into[0] != ffi.NULL:
            c.vchip_text_free(into[0])
        self._check(result, name, arguments)
        return document

    # The SDK's calls.

    def calls(self, pattern: str = "*") -> list[Call]:
        """What the SDK and the adapter were asked since the board was opened or
        `forget_calls()`, by this process. `pattern` is a name such as "rtk_vlan_*".
        """
        self._expect_open()
        return self._calls.take(pattern)

    def forget_calls(self) -> None:
        """`calls()` begins again."""
        self._expect_open()
        self._calls.forget()

    def fail(self, name: str, nth: Optional[int] = None, result: int = -1, **conditions: int) -> None:
        """Lets a call of the SDK fail, until `mend()` or the end of the board.

        Args:
            name: the call, or a pattern such as "rtk_vlan_*"
            nth: which one from now on, 1 for the next; None for every one
            result: what it answers
            conditions: arguments that it must have, such as vid=10; ports are chip ports
        """
        self._expect_open()
        self._calls.add_rule(rule_of(name, nth, result, conditions))

    def mend(self) -> None:
        """No call is made to fail any more."""
        self._expect_open()
        self._calls.clear_rules()

    @property
    def environment(self) -> dict[str, str]:
        """What a program in another process needs to be on this board: VCHIP_IMAGE, and where
        the libraries are if SWCTL_LIBRARY_PATH says so here.
        """
        if self.image is None:
            raise BoardError("a private board is in this process alone: open it on an image, "
                             "Board(image=...), for programs in other processes")
        found = {IMAGE: self.image}
        folder = os.environ.get("SWCTL_LIBRARY_PATH")
        if folder:
            found["LD_LIBRARY_PATH"] = ":".join(filter(None, [folder, os.environ.get("LD_LIBRARY_PATH")]))
        return found

    @staticmethod
    def faults(name: str, nth: Optional[int] = None, result: int = -1, **conditions: int) -> dict[str, str]:
        """The environment in which the calls of a program fail as with `fail()`."""
        return {"LD_PRELOAD": preload(os.environ.get("LD_PRELOAD")),
                "SWPROBE_FAIL": rule_of(name, nth, result, conditions)}
