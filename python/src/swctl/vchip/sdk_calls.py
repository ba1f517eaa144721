# SPDX-License-Identifier: MIT
"""What the SDK was asked, and rules that let it refuse: the probe."""
from __future__ import annotations

import json
import os
import re
from dataclasses import dataclass
from fnmatch import fnmatchcase
from typing import Any, Optional

from .. import c
from .._convert import ffi, said, text
from .._load import PROBE, libraries, places
from ..errors import LibraryNotFound


@dataclass(frozen=True)
class Call:
    """One call of the SDK or the adapter.

    Attributes:
        name: the call
        arguments: what was passed, by name
        outputs: what was written, by name
        result: what it answered; None for a function without a result
        made_up: whether the probe answered, and not the chip
        line: the call as one line of text
    """

    name: str
    arguments: dict[str, Any]
    outputs: dict[str, Any]
    result: Optional[int]
    made_up: bool
    line: str

    def __str__(self) -> str:
        return self.line


def call_of(document: str) -> Call:
    read = json.loads(document)
    given = {name: each["in"] if each else None for name, each in read["arguments"].items()
             if each is None or "in" in each}
    written = {name: each["out"] for name, each in read["arguments"].items() if each and "out" in each}
    return Call(read["call"], given, written, read.get("result"), read["made_up"], read["line"])


class Calls:
    """The calls of this process, kept from the time when it is made."""

    def __init__(self) -> None:
        self.there = libraries().probe is not None
        self._kept: list[Call] = []
        if self.there:
            c.swprobe_rules_clear()
            c.swprobe_calls_forget()

    def _expect_probe(self) -> None:
        if not self.there:
            raise LibraryNotFound(f"{PROBE} is not there, and calls cannot be seen or made to fail "
                                  "without it: install the package libswctl-probe1, or name the "
                                  "directory that holds it in SWCTL_LIBRARY_PATH")

    def take(self, pattern: str) -> list[Call]:
        self._expect_probe()
        found = c.swprobe_calls_take()
        lines = (said(found) or "").splitlines()
        c.swprobe_text_free(found)
        self._kept += [call_of(line) for line in lines]
        return [call for call in self._kept if fnmatchcase(call.name, pattern)]

    def forget(self) -> None:
        self._expect_probe()
        self._kept = []
        c.swprobe_calls_forget()

    def add_rule(self, rule: str) -> None:
        self._expect_probe()
        why = ffi.new("char **")
        if c.swprobe_rule_add(ffi.new("char[]", text("rule", rule)), why) < 0:
            sentence = said(why[0])
            c.swprobe_text_free(why[0])
            raise ValueError(f"{rule!r} is no rule: {sentence}")

    def clear_rules(self) -> None:
        if self.there:
            c.swprobe_rules_clear()

    def end(self) -> None:
        if self.there:
            c.swprobe_rules_clear()
            c.swprobe_calls_forget()


def rule_of(name: str, nth: Optional[int], result: int, conditions: dict[str, int]) -> str:
    """A rule as the probe reads it."""
    words = [name]
    if nth is not None:
        if isinstance(nth, bool) or not isinstance(nth, int) or nth < 1:
            raise ValueError(f"nth: expected 1 for the next call, 2 for the one after it, not {nth!r}")
        words += ["nth", str(nth)]
    for key, value in conditions.items():
        words += [key, str(int(value))]
    if isinstance(result, bool) or not isinstance(result, int) or not -(1 << 31) <= result < 0:
        raise ValueError(f"result: a failure is a negative number of 32 bits, not {result!r}")
    return " ".join([*words, "result", str(result)])


def probe_of_programs() -> str:
    """What LD_PRELOAD has to name."""
    found = [place for place in places(PROBE) if "/" in place and os.path.exists(place)]
    return found[0] if found else PROBE


def preload(others: Optional[str]) -> str:
    """The probe in front, after a sanitizer, which wants to be the first."""
    words = [word for word in (others or "").split(":") if word]
    first = [word for word in words if re.search(r"lib(clang_rt\.)?[a-z]*san", word)]
    return ":".join([*first, probe_of_programs(), *(word for word in words if word not in first)])
