# SPDX-License-Identifier: MIT
"""vchipd and the kernel's bridge by turns, so that other work on the machine meets both:
the same sender with a processor to itself, before both, and for vchipd another one."""
import os
import statistics

from switches import Bridge, Urgent
from tables import table

ROUNDS, ROUND_SECONDS = 7, 0.5
PLACES = sorted(os.sched_getaffinity(0))
RATE = 1_000_000  # frames a second, of 60 bytes


def alone(place):
    """Words in front of a program that gives its processor to nothing else."""
    return ("taskset", "-c", str(place), "chrt", "-f", "1")


class AloneBridge(Bridge):
    """The bridge works where its sender does."""

    sender = alone(PLACES[0])


class AloneVchipd(Urgent):
    name = "vchipd"
    sender = alone(PLACES[0])
    options = alone(PLACES[-1])


def measure(kind, size, rate=0):
    with kind() as switch:
        return switch.measure(size, rate, ROUND_SECONDS)


def by_turns():
    missing = Urgent.missing or ("it takes two processors" if len(PLACES) < 2 else None)
    if missing:
        print(f"by turns: not measured: {missing}\n")
        return
    rows = [["bytes", "bridge, received/s", "vchipd, received/s", "lost", "times the bridge: least",
             "median", "most", "us/frame"]]
    for size in (60, 1514):
        rounds = [(measure(AloneBridge, size), measure(AloneVchipd, size)) for _ in range(ROUNDS)]
        times = [chip["rate"] / bridge["rate"] for bridge, chip in rounds]
        lost = statistics.median(chip["lost"] / ROUND_SECONDS / chip["offered"]
                                 for _, chip in rounds)
        used = [chip["busy"] / max(chip["rate"] * ROUND_SECONDS, 1) for _, chip in rounds]
        rows.append([size, *(f"{statistics.median(each['rate'] for each in side):,.0f}"
                             for side in zip(*rounds)), f"{lost:.2%}",
                     *(f"{each:.2f}" for each in (min(times), statistics.median(times),
                                                  max(times))),
                     f"{statistics.median(used) * 1e6:.2f}"])
    print(f"by turns, {ROUNDS} rounds of {ROUND_SECONDS} s, each program with a real-time priority "
          "and a processor: medians")
    table(rows)
    for kind in (AloneBridge, AloneVchipd):
        rounds = [measure(kind, 60, RATE) for _ in range(ROUNDS)]
        without = sum(each["lost"] == 0 for each in rounds)
        print(f"{kind.name}, {RATE:,} frames of 60 bytes a second offered, "
              f"{statistics.median(each['offered'] for each in rounds):,.0f} sent: "
              f"{without} of {ROUNDS} rounds without loss, "
              f"median {statistics.median(each['lost'] for each in rounds):,.0f} frames lost")
    print()
