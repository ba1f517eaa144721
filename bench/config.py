#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What the configuration of a full chip costs: config.py BIN

With the swctl and vchipctl of a directory: showing, loading, and a load that finds no
change, each a process of its own on a chip in an image. The best of several rounds
counts; it is beside the most that it may be, in seconds.
"""
import os
import pathlib
import subprocess
import sys
import tempfile
import time

VLANS, ADDRESSES, RULES = 4094, 16384, 1536
ROUNDS = 5
SHOW_LIMIT, LOAD_LIMIT, SAME_LIMIT = 0.3, 1.0, 0.3


def full_configuration():
    yield f"vlan add 2-{VLANS} tagged 1-26"
    # One after the other they fill the buckets of the table evenly.
    for number in range(ADDRESSES):
        mac = f"02:00:00:00:{number >> 8:02x}:{number & 255:02x}"
        yield f"mac add {mac} vlan 1 port {number % 26 + 1}"
    for number in range(RULES):
        yield f"acl add {number} src-ip 10.{number >> 8}.{number & 255}.0/24 action drop enable"


class Board:
    def __init__(self, programs, directory):
        self.programs = programs
        self.directory = directory
        self.environment = {**os.environ, "VCHIP_IMAGE": str(directory / "chip.img"),
                            "SWCTL_STATE_DIRECTORY": str(directory / "state"), "VCHIP_LOG": "none"}

    def run(self, program, *words):
        done = subprocess.run([self.programs / program, *words], env=self.environment,
                              capture_output=True, text=True, check=False)
        if done.returncode != 0:
            sys.exit(f"{program} {' '.join(map(str, words))}: {done.stderr[-1000:]}")
        return done.stdout

    def time(self, *words, before=None):
        """Seconds of swctl, the best of the rounds; before() comes in front of each."""
        best = float("inf")
        for _ in range(ROUNDS):
            if before:
                before()
            start = time.monotonic()
            self.run("swctl", *words)
            best = min(best, time.monotonic() - start)
        return best


def report(what, seconds, limit):
    print(f"{what:<52} {seconds:9.3f} s          limit {limit:8.2f}"
          f"{'' if seconds <= limit else '  EXCEEDED'}", flush=True)
    return seconds <= limit


def main():
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        board = Board(pathlib.Path(sys.argv[1]).resolve(), directory)
        plan = directory / "plan"
        plan.write_text("\n".join(full_configuration()) + "\n")
        def empty():
            board.run("vchipctl", "reset")

        load = board.time("config", "load", plan, before=empty)
        shown = board.run("swctl", "config", "show")
        for words, count in (("mac add", ADDRESSES), ("acl add", RULES)):
            if shown.count(words) != count:
                sys.exit(f"{shown.count(words)} lines of {words!r} are not {count}")
        same = board.time("config", "load", plan)
        show = board.time("config", "show")
        print(f"{VLANS} VLANs, {ADDRESSES} addresses, {RULES} rules")
        results = [report("config show", show, SHOW_LIMIT),
                   report("config load on a chip as after power-on", load, LOAD_LIMIT),
                   report("config load that finds no change", same, SAME_LIMIT)]
    return 0 if all(results) else 1


sys.exit(main())
