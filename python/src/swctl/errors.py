# SPDX-License-Identifier: MIT
"""What this package raises. Arguments of a wrong type or outside their range raise
`TypeError`, `ValueError` or `OverflowError`, before anything is called.
"""
from __future__ import annotations


class SwctlError(Exception):
    """All errors of this package."""


class LibraryNotFound(SwctlError):
    """A shared library is not there, or lacks a function."""


class BoardError(SwctlError):
    """A board cannot be opened or used: it is closed, its image is in use, no image."""


class RemoteError(SwctlError):
    """`swctl` on a board has failed, or could not be reached."""


class Refused(SwctlError):
    """A call has answered a negative result.

    Attributes:
        code: the result
        sentence: what it means, from the platform, or that it has no sentence
        call: the call as text, such as `user_vlan_create(unit=0, vid=5000)`
    """

    def __init__(self, code: int, sentence: str, call: str) -> None:
        super().__init__(code, sentence, call)
        self.code, self.sentence, self.call = code, sentence, call

    def __str__(self) -> str:
        return f"{self.call}: {self.sentence} (result {self.code})"
