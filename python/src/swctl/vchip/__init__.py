# SPDX-License-Identifier: MIT
"""The virtual chip: a board in this process, or in an image that processes share.

`Board` is what a test needs; `controls` has the virtual chip's own functions.
"""
from ..errors import BoardError
from .board import Board
from .frames import Capture, Departure, Explanation, Step
from .sdk_calls import Call

__all__ = ["Board", "BoardError", "Call", "Capture", "Departure", "Explanation", "Step"]
