# SPDX-License-Identifier: MIT
"""A board over its shell, `swctl -j`: the one in this machine's reach, or one over ssh.

    >>> board = Ssh("root@192.0.2.1")
    >>> board("vlan", "show", 10)
    [{'vlan': 10, 'tagged': [26], 'untagged': [1, 2, 3, 4]}]

A test that asks in this way runs against a virtual chip and against a board alike.
"""
from __future__ import annotations

import json
import os
import pathlib
import shlex
import subprocess
from typing import Any, Optional, Sequence, Union

from .errors import RemoteError

Word = Union[str, int, "os.PathLike[str]"]


class Local:
    """`swctl` as a program of this machine.

    Args:
        swctl: the program
        environment: what it needs besides the environment of this process, such as
            `Board.environment`
        deadline: seconds that one command may take
    """

    def __init__(self, *, swctl: str = "swctl", environment: Optional[dict[str, str]] = None,
                 deadline: float = 30) -> None:
        self.swctl, self.environment, self.deadline = swctl, dict(environment or {}), deadline

    def __call__(self, *words: Word) -> Any:
        """Runs one command of the shell. What it prints, as JSON has it: [] for one
        that shows nothing. Raises `RemoteError` with what it says if it fails.
        """
        if not words:
            raise TypeError("expected the words of a command, such as \"vlan\", \"show\"")
        said = self.run([self.swctl, "-j", *map(str, words)])
        try:
            return json.loads(said) if said.strip() else None
        except json.JSONDecodeError as error:
            raise RemoteError(f"{self.shown(words)}: the answer is no JSON ({error}): {said[:200]!r}") from error

    def shown(self, words: Sequence[Word]) -> str:
        return " ".join([self.swctl, *map(str, words)])

    def command(self, words: Sequence[str], *, terminal: bool = False) -> list[str]:
        """The words that run a program on the board from this machine."""
        return list(words)

    def write(self, path: str, text: str) -> None:
        """Writes a file on the board."""
        pathlib.Path(path).write_text(text, encoding="utf-8")

    def run(self, words: Sequence[str], given: str = "") -> str:
        """Runs a program on the board. What it prints on standard output."""
        command = self.command(words)
        try:
            done = subprocess.run(command, input=given, capture_output=True, text=True, check=False,
                                  timeout=self.deadline, env={**os.environ, **self.environment})
        except FileNotFoundError:
            raise RemoteError(f"{command[0]} is not there: install it, or name it with its path") from None
        except subprocess.TimeoutExpired:
            raise RemoteError(f"{' '.join(command)} took longer than {self.deadline} seconds") from None
        if done.returncode != 0:
            why = done.stderr.strip() or done.stdout.strip() or "it says nothing"
            raise RemoteError(f"{' '.join(command)} ended with status {done.returncode}: {why}")
        return done.stdout


class Ssh(Local):
    """`swctl` on a board, over ssh. Keys and names are those of ssh_config(5); it asks for
    no password.

    Args:
        target: where to, such as "root@192.0.2.1"
        swctl: the program on the board
        ssh: the program that connects, with its options
    """

    def __init__(self, target: str, *, swctl: str = "swctl", ssh: Sequence[str] = ("ssh", "-o", "BatchMode=yes"),
                 deadline: float = 30) -> None:
        if not target or target.startswith("-"):
            raise ValueError(f"target: expected a host such as root@192.0.2.1, not {target!r}")
        super().__init__(swctl=swctl, deadline=deadline)
        self.target, self.ssh = target, list(ssh)

    def shown(self, words: Sequence[Word]) -> str:
        return f"{self.target}: {super().shown(words)}"

    def command(self, words: Sequence[str], *, terminal: bool = False) -> list[str]:
        """With a terminal, a program ends when the connection does."""
        return [*self.ssh, *["-tt"] * terminal, self.target, "--", shlex.join(words)]

    def write(self, path: str, text: str) -> None:
        self.run(["sh", "-c", f"cat >{shlex.quote(path)}"], given=text)
