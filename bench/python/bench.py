# SPDX-License-Identifier: MIT
"""bench.py SITE LIBRARIES

What the Python package costs, against what it may cost: calls a second, the import,
a fresh board. SITE holds the package, LIBRARIES the shared libraries.
"""
import os
import statistics
import subprocess
import sys
import time

CALLS, ROUNDS = 20_000, 5
# What is measured -> unit, and the most or the least that it may be.
LEAST_CALLS, MOST_IMPORT, MOST_BOARD = 10_000, 80.0, 5.0


def best(measure):
    """The best of some rounds: what else the machine does only makes it worse."""
    return min(measure() for _ in range(ROUNDS))


def import_time():
    """Milliseconds of an interpreter with the import, without those of one without it."""
    def run(code):
        start = time.perf_counter()
        subprocess.run([sys.executable, "-c", code], check=True)
        return time.perf_counter() - start
    run("import swctl")
    return 1000 * (best(lambda: run("import swctl")) - best(lambda: run("pass")))


def call_time(swctl, call):
    """Seconds of one call on a board."""
    def run():
        with swctl.vchip.Board():
            start = time.perf_counter()
            for _ in range(CALLS):
                call()
            return (time.perf_counter() - start) / CALLS
    return best(run)


def board_time(swctl):
    """Milliseconds to open a board as after power-on and to close it."""
    def run():
        start = time.perf_counter()
        with swctl.vchip.Board():
            pass
        return time.perf_counter() - start
    run()
    return 1000 * statistics.median(run() for _ in range(200))


def main():
    os.environ.update(PYTHONPATH=sys.argv[1], SWCTL_LIBRARY_PATH=sys.argv[2])
    sys.path.insert(0, sys.argv[1])
    import swctl
    pair = {"port.link_status(3)": lambda: swctl.port.link_status(3),
            "vlan.port(1)": lambda: swctl.vlan.port(1),
            "port.loopback_set(3, True)": lambda: swctl.port.loopback_set(3, True)}
    good = True
    for name, call in pair.items():
        rate = 1 / call_time(swctl, call)
        good &= rate >= LEAST_CALLS
        print(f"{name:<32}{rate:12,.0f} calls a second, at least {LEAST_CALLS:,}")
    for name, found, most in (("import swctl", import_time(), MOST_IMPORT),
                              ("a fresh board", board_time(swctl), MOST_BOARD)):
        good &= found <= most
        print(f"{name:<32}{found:12.2f} ms, at most {most:g}")
    return 0 if good else 1


sys.exit(main())
