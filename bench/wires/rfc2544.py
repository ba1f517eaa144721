# SPDX-License-Identifier: MIT
"""RFC 2544: throughput (26.1), latency (26.2), frame loss rate (26.3) and back-to-back
frames (26.4), from one host to one other."""
import statistics

from tables import table
from trials import highest, make_known, show, trial

LINE = 1e9        # bits a second of the line that the theoretical rate is of
GAP = 20          # bytes of preamble and gap between frames
RESOLUTION = 0.01  # of the maximum rate
BURST_SECONDS = 2  # RFC 2544, 26.4: the longest burst that is tried
MISSING = "-"


def line_rate(size):
    return LINE / ((size + GAP) * 8)


def maximum_rate(size):
    make_known()
    return trial(size, seconds=0.3)["offered"]


def find_throughput(size, maximum, options):
    def passes(rate):
        make_known()
        result = trial(size, rate=rate, seconds=options.seconds)
        return result["offered"] if result["lost"] == 0 else None
    return highest(passes, maximum, RESOLUTION * maximum)[1] or 0


def throughput(maximum, options):
    show("RFC 2544, 26.1", "Throughput",
         "the highest rate at which frames received = frames sent")
    print("theoretical: 10^9 / ((frame size + 20) x 8), of a line of 1 Gbit/s")
    found = {size: find_throughput(size, maximum[size], options) for size in options.sizes}
    table([["frame size", "throughput", "Mbit/s", "theoretical", "maximum offered"]] +
          [[size, f"{rate:,.0f}", f"{rate * size * 8 / 1e6:,.0f}", f"{line_rate(size):,.0f}",
            f"{maximum[size]:,.0f}"] for size, rate in found.items()])
    return found


def latency_at(size, rate, options):
    """The mean of the trials' figures; None if no frame with a stamp came."""
    trials = []
    for _ in range(options.repeats):
        make_known()
        found = trial(size, rate=rate, seconds=options.seconds, stamps="h2").get("latency")
        if found:
            trials.append(found)
    if not trials:
        return None
    return {name: statistics.mean(each[name] for each in trials) for name in trials[0]}


def latency(rates, options):
    show("RFC 2544, 26.2; RFC 1242, 3.8", "Latency",
         "time of arrival - time of departure, at the throughput, microseconds")
    print("departure: before the sender's system call; arrival: the stamp of the receiver's kernel, "
          "of a frame every 2 ms")
    found = {size: latency_at(size, rate, options) for size, rate in rates.items() if rate}
    rows = [["frame size", "at rate", "least", "mean", "median", "99 %", "most"]]
    for size, rate in rates.items():
        figures = found.get(size)
        rows.append([size, f"{rate:,.0f}"] +
                    ([f"{figures[name]:.1f}" for name in ("least", "mean", "median", "p99", "most")]
                     if figures else [MISSING] * 5))
    table(rows)
    return {size: figures for size, figures in found.items() if figures}


def loss_of(size, maximum, options):
    """From the maximum rate down by tenths, until two trials in a row lose nothing."""
    found, clean = {}, 0
    for percent in range(100, 0, -10):
        make_known()
        result = trial(size, rate=maximum * percent / 100, seconds=options.seconds)
        found[percent] = result["lost"] / result["sent"] * 100
        clean = clean + 1 if result["lost"] == 0 else 0
        if clean == 2:
            break
    return found


def loss_rate(maximum, options):
    show("RFC 2544, 26.3", "Frame loss rate", "(frames sent - frames received) x 100 / frames sent")
    print("in steps of 10 % of the maximum offered rate, until two steps in a row lose nothing")
    found = {size: loss_of(size, maximum[size], options) for size in options.sizes}
    steps = range(100, 0, -10)
    table([["frame size"] + [f"{percent} %" for percent in steps]] +
          [[size] + [f"{losses[percent]:.2f}" if percent in losses else MISSING
                     for percent in steps] for size, losses in found.items()])
    return found


def longest_burst(size, most):
    def passes(frames):
        make_known()
        return frames if trial(size, frames=frames)["lost"] == 0 else None
    return highest(passes, most, 1)[0]


def back_to_back(maximum, options):
    show("RFC 2544, 26.4", "Back-to-back frames",
         "the longest burst at the maximum rate of which frames received = frames sent")
    print(f"the mean of the repeats, in frames and as burst / maximum rate; at most "
          f"{BURST_SECONDS} s")
    found, rows = {}, [["frame size", "mean", "least", "most", "ms"]]
    for size in options.sizes:
        most = int(maximum[size] * BURST_SECONDS)
        bursts = [longest_burst(size, most) for _ in range(options.repeats)]
        found[size] = statistics.mean(bursts)
        rows.append([size, f"{found[size]:,.0f}", f"{min(bursts):,}", f"{max(bursts):,}",
                     f"{found[size] / maximum[size] * 1e3:,.1f}"])
    table(rows)
    return found


TABLES = ("throughput", "latency", "loss", "burst")


def measure(_, options):
    """The tables that are wanted; the latency is that at the throughput."""
    wanted, found = options.tables, {}
    if not wanted.intersection(TABLES):
        return found
    maximum = {size: maximum_rate(size) for size in options.sizes}
    if wanted & {"throughput", "latency"}:
        rates = found["throughput"] = throughput(maximum, options)
        found["line"] = {size: line_rate(size) for size in range(64, 1519)}
    if "latency" in wanted:
        found["latency"] = latency(rates, options)
    if "loss" in wanted:
        found["loss"] = loss_rate(maximum, options)
    if "burst" in wanted:
        found["burst"] = back_to_back(maximum, options)
    return found
