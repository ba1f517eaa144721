# SPDX-License-Identifier: MIT
"""What the pytest fixtures are made of: a program under test, and its faults."""
from __future__ import annotations

import json
import os
import pathlib
import re
import signal
import subprocess
import time
from typing import Any, Callable, Optional, Sequence, Union

from .vchip.sdk_calls import preload

Wanted = Union[str, "re.Pattern[str]", Callable[[], object]]
POLL = 0.005
PATIENCE_AT_END = 5.0
# Calls whose result says something: those of the SDK and of the adapter.
FAILING = "[ra][td][kp]_*"
MANY = 500


class Daemon:
    """A program that runs while a test does, and what it prints.

    Attributes:
        name: the first of its words
        process: the process
    """

    def __init__(self, words: Sequence[str], log: pathlib.Path, environment: dict[str, str],
                 command: Optional[Sequence[str]] = None) -> None:
        self.name, self._log = os.path.basename(words[0]), log
        self._signalled = False
        with open(log, "wb") as output:
            try:
                self.process = subprocess.Popen(command or words, stdin=subprocess.DEVNULL, stdout=output,
                                                stderr=subprocess.STDOUT, env={**os.environ, **environment})
            except OSError as error:
                raise FileNotFoundError(f"{words[0]}: {error.strerror}; name the program with its "
                                        "path, or put its directory into PATH") from None

    @property
    def log(self) -> str:
        """All that it has printed so far, on standard output and standard error."""
        return self._log.read_text(errors="replace")

    def wait_for(self, wanted: Wanted, deadline: float = 10.0) -> None:
        """Waits until its log has a text or matches a pattern, or a function answers true."""
        __tracebackhide__ = True
        end = time.monotonic() + deadline
        while True:
            ended = self.process.poll() is not None
            if self._holds(wanted):
                return
            if ended:
                raise AssertionError(f"{self.name} ended with status {self.process.returncode} before "
                                     f"{shown(wanted)}; it printed:\n{self.log}")
            if time.monotonic() > end:
                raise AssertionError(f"{self.name} has not come to {shown(wanted)} in {deadline} "
                                     f"seconds; it printed:\n{self.log}")
            time.sleep(POLL)

    def _holds(self, wanted: Wanted) -> bool:
        if isinstance(wanted, str):
            return wanted in self.log
        if isinstance(wanted, re.Pattern):
            return wanted.search(self.log) is not None
        return bool(wanted())

    def signal(self, number: int) -> None:
        """Sends it a signal."""
        self._signalled = True
        self.process.send_signal(number)

    @property
    def crash(self) -> Optional[str]:
        """The signal that has ended it, if the test has sent none."""
        status = self.process.poll()
        return signal.Signals(-status).name if status is not None and status < 0 and not self._signalled else None

    def wait(self, deadline: float = 10.0) -> int:
        """Waits until it ends by itself, and answers its status."""
        __tracebackhide__ = True
        try:
            return self.process.wait(deadline)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"{self.name} has not ended in {deadline} seconds; it printed:\n"
                                 f"{self.log}") from None

    def end(self) -> int:
        """Ends it with SIGTERM, and with SIGKILL if that does not help."""
        if self.process.poll() is None:
            self.signal(signal.SIGTERM)
            try:
                self.process.wait(PATIENCE_AT_END)
            except subprocess.TimeoutExpired:
                self.process.kill()
        return self.process.wait()


def shown(wanted: Wanted) -> str:
    if isinstance(wanted, str):
        return repr(wanted)
    return f"/{wanted.pattern}/" if isinstance(wanted, re.Pattern) else f"{wanted!r}"


class FailEach:
    """What `fail_each` gives to a test.

    Attributes:
        call: the call that fails in this run, as a line of text; None in the first run,
            in which all is well
        nth: its number among the calls of the test
    """

    def __init__(self, only: str = FAILING, result: int = -1, most: Optional[int] = None) -> None:
        self.only, self.result, self.most = only, result, most
        self.call: Optional[str] = None
        self.nth = 0

    def problem(self, calls: int) -> Optional[str]:
        """Why so many calls cannot fail in turn."""
        if calls == 0:
            return (f"fail_each: the test has made no call that fits {self.only!r}, "
                    "so there is nothing to fail")
        if self.most is None and calls > MANY:
            return (f"fail_each: the test has made {calls} calls, and would run as often: choose some with "
                    "@pytest.mark.fail_each(only=\"rtk_vlan_*\"), or say most=")
        return None

    @property
    def rule(self) -> str:
        return f"{self.only} nth {self.nth} result {self.result}"

    def environment(self, recording: pathlib.Path) -> dict[str, str]:
        """For a program: its calls are recorded in the first run, and one fails in the others."""
        planned = {"SWPROBE_FAIL": self.rule} if self.nth else {"SWPROBE": f"record:{recording}"}
        return {"LD_PRELOAD": preload(os.environ.get("LD_PRELOAD")), **planned}


def recorded_calls(recording: pathlib.Path) -> list[dict[str, Any]]:
    """The calls in a recording; its last line may be cut off."""
    found = []
    for line in recording.read_text().splitlines() if recording.exists() else []:
        try:
            read = json.loads(line)
        except json.JSONDecodeError:
            continue
        if "call" in read:
            found.append(read)
    return found
