# SPDX-License-Identifier: MIT
"""RFC 2889: forwarding rates (5.4, 5.6), address caching capacity (5.7), address learning
rate (5.8), and broadcast frames (5.10)."""
from tables import table
from trials import highest, make_known, show, trial

MOST_ADDRESSES = 32768
SLOW = 10000  # frames a second at which addresses are learned where the rate does not matter
SLOWEST, TRIES = 2500, 3
LOADS = range(10, 101, 10)
RESOLUTION = 0.02
SEED = 2889
SOME_ADDRESSES = 1000  # fewer than every table here holds


class LostFrames(Exception):
    """Too many to say what the switch has learned."""


def forwarding(_, options):
    show("RFC 2889, 5.4 and 5.6; RFC 2285, 3.6", "Forwarding rate",
         "frames received / duration of the trial")
    print("from one port to one: at the maximum offered load (FRMOL), and the maximum of all loads "
          "in steps\nof 10 % of it (MFR)")
    found, rows = {}, [["frame size", "MOL", "FRMOL", "MFR", "at a load of"]]
    for size in options.sizes:
        make_known()
        unpaced = trial(size, seconds=options.seconds)
        rates = {100: unpaced["received"]["h2"] / unpaced["seconds"]}
        for percent in LOADS[:-1]:
            result = trial(size, rate=unpaced["offered"] * percent / 100, seconds=options.seconds)
            rates[percent] = result["received"]["h2"] / result["seconds"]
        best = max(rates, key=rates.get)
        found[size] = {"offered": unpaced["offered"], "rates": rates}
        rows.append([size, f"{unpaced['offered']:,.0f}", f"{rates[100]:,.0f}",
                     f"{rates[best]:,.0f}", f"{best} %"])
    table(rows)
    return found


def flooded(switch, count, seed, rate):
    """How many of so many addresses, learned at a rate from the first host, the switch
    does not know: the second sends a frame to each, and the third monitors. None if
    learning frames, or those to the addresses, were lost."""
    switch.forget()
    make_known()
    learning = trial(kind="learn", frames=count, stations=count, seed=seed, rate=rate)
    if learning["lost"] != 0:
        return None
    asking = trial(kind="ask", back=1, frames=count, stations=count, seed=seed,
                   rate=min(rate, SLOW), count="h1,h3")
    return asking["received"]["h3"] if asking["received"]["h1"] == count else None


class Pace:
    """A rate at which nothing is lost: halved until that is so, and then kept."""

    def __init__(self):
        self.rate, self.tries = SLOW, TRIES

    def flooded(self, switch, count, seed):
        while self.rate >= SLOWEST:
            found = flooded(switch, count, seed, self.rate)
            if found is not None:
                return found
            self.tries -= 1
            if self.tries == 0:
                self.rate, self.tries = self.rate / 2, TRIES
        raise LostFrames


def capacity_of(switch, seed):
    pace = Pace()

    def passes(count):
        return count if pace.flooded(switch, count, seed) == 0 else None
    capacity = highest(passes, MOST_ADDRESSES, 16)[0]
    return capacity, MOST_ADDRESSES - pace.flooded(switch, MOST_ADDRESSES, seed)


def caching(switch, _):
    show("RFC 2889, 5.7", "Address caching capacity",
         "the most addresses that are learned with no frame to them flooded to the monitoring port")
    print(f"held: those of {MOST_ADDRESSES:,} addresses, learned in turn, to which a frame is not "
          "flooded")
    found, rows = {}, [["addresses", "capacity", "held"]]
    for name, seed in (("counting up", 0), ("at random", SEED)):
        try:
            found[name] = capacity, held = capacity_of(switch, seed)
            rows.append([name, ("at least " if capacity == MOST_ADDRESSES else "") +
                         f"{capacity:,}", f"{held:,}"])
        except LostFrames:
            rows.append([name, f"not measured: frames are lost at {SLOWEST:,}/s", "-"])
    table(rows)
    return found


def learning_rate(switch, _):
    show("RFC 2889, 5.8", "Address learning rate",
         "the highest rate of frames with new addresses after which none is flooded")
    offered = trial(kind="learn", frames=SOME_ADDRESSES, stations=SOME_ADDRESSES)["offered"]

    def passes(rate):
        return rate if flooded(switch, SOME_ADDRESSES, 0, rate) == 0 else None
    rate = highest(passes, offered, RESOLUTION * offered)[1]
    table([["addresses", "maximum offered", "learning rate"],
           [f"{SOME_ADDRESSES:,}", f"{offered:,.0f}", f"{rate:,.0f}" if rate else "0"]])
    return rate or 0


def broadcast(_, options):
    show("RFC 2889, 5.10", "Broadcast forwarding rate and latency",
         "the highest rate at which every other port receives every frame; latency as RFC 2544, "
         "26.2")
    found, rows = {}, [["frame size", "rate", "maximum offered", "least", "mean", "99 %", "most"]]
    for size in options.sizes:
        def offer(rate=None, size=size, **words):
            return trial(size, kind="broadcast", rate=rate, seconds=options.seconds, count="h2,h3",
                         **words)
        maximum = offer()["offered"]

        def passes(rate, offer=offer):
            result = offer(rate)
            return result["offered"] if result["lost"] == 0 else None
        rate = highest(passes, maximum, RESOLUTION * maximum)[1]
        times = offer(rate, stamps="h2,h3").get("latency") if rate else None
        found[size] = {"rate": rate or 0, "latency": times}
        rows.append([size, f"{rate or 0:,.0f}", f"{maximum:,.0f}"] +
                    ([f"{times[name]:.1f}" for name in ("least", "mean", "p99", "most")]
                     if times else ["-"] * 4))
    table(rows)
    return found


TABLES = {"forwarding": forwarding, "caching": caching, "learning": learning_rate,
          "broadcast": broadcast}


def measure(switch, options):
    return {name: make(switch, options) for name, make in TABLES.items() if name in options.tables}
