# SPDX-License-Identifier: MIT
"""Fixtures of pytest: `board`, `board_image`, `daemon`, `fail_each` and `switch`."""
from __future__ import annotations

import os
import pathlib
from fnmatch import fnmatchcase
from typing import Any, Callable, Generator, Iterator, Optional, Sequence, Union

import pytest
from _pytest.runner import runtestprotocol

from . import remote
from .errors import Refused
from .testing import Daemon, FailEach, Wanted, recorded_calls
from .vchip import Board

DAEMONS = pytest.StashKey["list[Daemon]"]()
CALLS = "calls.ndjson"
FAULTS = pytest.StashKey["Faults"]()


def pytest_addoption(parser: pytest.Parser) -> None:
    group = parser.getgroup("swctl", "boards")
    group.addoption("--swctl-board", metavar="TARGET", default=None,
                    help="a real board that ssh reaches, such as root@192.0.2.1: the fixtures switch and "
                         "daemon use it in place of a virtual chip")
    group.addoption("--swctl-ssh", metavar="COMMAND", default="ssh -o BatchMode=yes",
                    help="the program that connects to it, with its options")


def pytest_configure(config: pytest.Config) -> None:
    config.addinivalue_line("markers", "fail_each(only, result, most): which calls the fixture "
                                       "fail_each lets fail, with what result, and how many of them")


@pytest.fixture
def board() -> Iterator[Board]:
    """A board in this process, as after power-on."""
    with Board() as opened:
        yield opened


@pytest.fixture
def board_image(tmp_path: pathlib.Path) -> Iterator[Board]:
    """A board on an image of its own. Programs that the test starts are on it too."""
    with Board(tmp_path / "chip.img") as opened:
        yield opened


@pytest.fixture
def switch(request: pytest.FixtureRequest) -> remote.Local:
    """The shell of a board, `swctl -j`: a virtual one, or that of --swctl-board."""
    target = request.config.getoption("--swctl-board")
    if target is not None:
        return remote.Ssh(target, ssh=request.config.getoption("--swctl-ssh").split())
    return remote.Local(environment=request.getfixturevalue("board_image").environment)


Start = Callable[..., Daemon]


@pytest.fixture
def daemon(request: pytest.FixtureRequest, tmp_path: pathlib.Path) -> Iterator[Start]:
    """Starts programs, and ends them after the test. If the test fails, their logs are shown.

    `daemon("linkwatch", "plan", wait_for="the plan is set")` starts one and waits until it
    has printed that. `wait_for` may be a compiled pattern or a function too; `deadline` is
    in seconds; `environment` is added to that of the test. A program that is ended by a
    signal that the test has not sent makes an error of it.
    """
    started = request.node.stash.setdefault(DAEMONS, [])
    faults = request.node.stash.get(FAULTS, None)

    def start(*words: Union[str, "os.PathLike[str]"], wait_for: Optional[Wanted] = None, deadline: float = 10.0,
              environment: Optional[dict[str, str]] = None) -> Daemon:
        __tracebackhide__ = True
        given = [os.fspath(word) for word in words]
        if not given:
            raise TypeError("daemon: expected the program and its arguments")
        one = Daemon(given, tmp_path / f"daemon{len(started)}.log",
                     {**environment_of(request, faults, tmp_path, len(started)), **(environment or {})},
                     command_of(request, given))
        started.append(one)
        if wait_for is not None:
            one.wait_for(wait_for, deadline)
        return one

    yield start
    for one in started:
        one.end()
    crashed = [f"{one.name} was ended by {one.crash}" for one in started if one.crash]
    if crashed:
        pytest.fail("; ".join(crashed), pytrace=False)


def environment_of(request: pytest.FixtureRequest, faults: Optional[Faults], folder: pathlib.Path,
                   number: int) -> dict[str, str]:
    """A program is on the image of the test, if it has one; the first one is made to fail."""
    found: dict[str, str] = {}
    if "board_image" in request.fixturenames:
        found.update(request.getfixturevalue("board_image").environment)
    if faults is not None and number == 0:
        found.update(faults.each.environment(folder / CALLS))
    return found


def command_of(request: pytest.FixtureRequest, words: Sequence[str]) -> Sequence[str]:
    if request.config.getoption("--swctl-board") is None:
        return words
    return request.getfixturevalue("switch").command(words, terminal=True)  # type: ignore[no-any-return]


class Faults:
    """The runs of one test with `fail_each`."""

    def __init__(self, each: FailEach) -> None:
        self.each = each
        self.calls: list[str] = []
        self.of_program = False

    def begin(self, item: pytest.Function) -> None:
        """Right before the body of the test."""
        board = board_of(item)
        board.forget_calls()
        if self.each.nth and not self.of_program:
            board.fail(self.each.only, nth=self.each.nth, result=self.each.result)

    def end(self, item: pytest.Function) -> None:
        """Right after it."""
        board = board_of(item)
        board.mend()
        if self.each.nth:
            return
        recording = self.recording(item)
        self.of_program = recording is not None
        if recording is not None:
            self.calls = [shown(call) for call in recorded_calls(recording)
                          if fnmatchcase(call["call"], self.each.only)]
        else:
            self.calls = [call.line for call in board.calls(self.each.only)]

    @staticmethod
    def recording(item: pytest.Function) -> Optional[pathlib.Path]:
        """That of the first program that the test has started."""
        folder = item.funcargs.get("tmp_path")
        started = item.stash.get(DAEMONS, no_daemons())
        if not started or not isinstance(folder, pathlib.Path):
            return None
        return folder / CALLS


def board_of(item: pytest.Function) -> Board:
    board = item.funcargs.get("board") or item.funcargs.get("board_image")
    if not isinstance(board, Board):
        raise pytest.UsageError(f"{item.name}: fail_each needs board or board_image in the test")
    return board


def shown(call: dict[str, Any]) -> str:
    words = [f"{name}={value['in']}" for name, value in call["arguments"].items() if value and "in" in value]
    return f"{call['call']}({', '.join(words)})"


@pytest.fixture
def fail_each(request: pytest.FixtureRequest) -> FailEach:
    """Runs the test once as it is, and once more for every call of the SDK that it made,
    with that call failing: the calls of the first `daemon`, or the test's own if it
    starts none.

    A run in which the test ends with `Refused` by that failure passes: the failure came
    out. `fail_each.call` says which call fails, None in the first run.
    """
    return request.node.stash[FAULTS].each  # type: ignore[no-any-return]


@pytest.hookimpl(tryfirst=True)  # type: ignore[misc]
def pytest_runtest_protocol(item: pytest.Item, nextitem: Optional[pytest.Item]) -> Optional[bool]:
    if not isinstance(item, pytest.Function) or "fail_each" not in item.fixturenames:
        return None
    marker = item.get_closest_marker("fail_each")
    faults = item.stash[FAULTS] = Faults(FailEach(**(marker.kwargs if marker else {})))
    item.ihook.pytest_runtest_logstart(nodeid=item.nodeid, location=item.location)
    reports = runtestprotocol(item, nextitem=nextitem, log=True)
    if all(report.passed for report in reports):
        run_with_faults(item, nextitem, faults)
    item.ihook.pytest_runtest_logfinish(nodeid=item.nodeid, location=item.location)
    return True


def no_daemons() -> list[Daemon]:
    return []


def run_with_faults(item: pytest.Function, nextitem: Optional[pytest.Item], faults: Faults) -> None:
    problem = faults.each.problem(len(faults.calls))
    if problem is not None:
        item.ihook.pytest_runtest_logreport(report=pytest.TestReport(
            item.nodeid, item.location, {}, "failed", problem, "call"))
        return
    for number, call in enumerate(faults.calls[:faults.each.most], 1):
        faults.each.nth, faults.each.call = number, call
        item.stash[DAEMONS] = no_daemons()
        item._initrequest()
        for report in runtestprotocol(item, nextitem=nextitem, log=False):
            path, line, name = report.location
            report.location = (path, line, f"{name}[call {number} fails: {call}]")
            if report.failed:
                report.sections.append(("the call that failed", f"call {number}: {call}"))
            item.ihook.pytest_runtest_logreport(report=report)


@pytest.hookimpl(hookwrapper=True)  # type: ignore[misc]
def pytest_runtest_call(item: pytest.Item) -> Generator[None, Any, None]:
    faults = item.stash.get(FAULTS, None)
    if faults is None or not isinstance(item, pytest.Function):
        yield
        return
    faults.begin(item)
    yield
    faults.end(item)


@pytest.hookimpl(hookwrapper=True)  # type: ignore[misc]
def pytest_runtest_makereport(item: pytest.Item, call: pytest.CallInfo[None]) -> Generator[None, Any, None]:
    outcome = yield
    report: pytest.TestReport = outcome.get_result()
    faults = item.stash.get(FAULTS, None)
    error = call.excinfo.value if call.excinfo is not None else None
    if (faults is not None and faults.each.nth and call.when == "call" and isinstance(error, Refused)
            and error.code == faults.each.result):
        report.outcome, report.longrepr = "passed", None
    if report.failed:
        report.sections += [(f"log of {one.name}", one.log) for one in item.stash.get(DAEMONS, [])]
