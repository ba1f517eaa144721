# SPDX-License-Identifier: MIT
"""What a program with type hints writes; a type checker reads this, nobody runs it."""
from typing import List

import swctl
from swctl import codes, records
from swctl.remote import Ssh
from swctl.vchip import Board, Departure


def use(board: Board) -> List[bytes]:
    board.link_up(1, swctl.ChipPort(2))
    status: codes.Link = swctl.port.link_status(3)
    entry: records.L2Addr = swctl.l2.mac_addr("02:00:00:00:00:01", 10)
    members, untagged = swctl.vlan.port(10)
    assert status and entry.vid and members and untagged
    departures: List[Departure] = list(board.capture())
    result: int = swctl.c.user_vlan_create(0, 0, swctl.c.USER_FRONT_INTERFACES)
    assert departures and result
    Ssh("root@192.0.2.1")("vlan", "show", 10)
    return board.send(b"", port=1)[2]
