# SPDX-License-Identifier: MIT
"""RFC 2889: throughput of several ports (5.1, 5.2), forwarding rates (5.4, 5.6), address
caching capacity (5.7), address learning rate (5.8), and broadcast frames (5.10)."""
from tables import table
from trials import highest, make_known, show, trial

MOST_ADDRESSES = 32768
SLOW = 10000  # frames a second at which addresses are learned where the rate does not matter
SLOWEST = 1000
PART, TRIES = 1024, 5  # addresses at a time, and how often at a rate
LOADS = range(10, 101, 10)
RESOLUTION = 0.02
SEED = 2889
HOSTS = "h1,h2,h3"
SOME_ADDRESSES = 1000  # fewer than every table here holds


MESHES = {"5.1, fully meshed": ("h1,h2,h3", "h1,h2,h3"),
          "5.2, one to many": ("h1", "h2,h3"),
          "5.2, many to one": ("h2,h3", "h1")}


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


class Stations:
    """Addresses that the first host has, as many as wanted, counting up or at random. They
    are sent from, and sent to, a part at a time and slowly, and a part of which a frame was
    lost again: what is lost before the switch says nothing of its table."""

    def __init__(self, seed):
        self.seed, self.rate = seed, SLOW

    def each_part(self, total, **words):
        for first in range(0, total, PART):
            some = min(PART, total - first)
            yield self.without_loss(first=first, frames=some, stations=some, seed=self.seed, **words)

    def without_loss(self, **words):
        while self.rate >= SLOWEST:
            for _ in range(TRIES):
                result = trial(rate=self.rate, **words)
                if result["received"][words["count"].split(",")[0]] == result["sent"]:
                    return result
            self.rate /= 2
        raise LostFrames

    def learn(self, count):
        for _ in self.each_part(count, kind="learn", count="h2"):
            pass

    def flooded(self, count):
        """To how many of them frames are flooded: the second host sends, and the third
        monitors."""
        return sum(each["received"]["h3"]
                   for each in self.each_part(count, kind="ask", back=1, count="h1,h3"))


def flooded(switch, stations, count):
    switch.forget()
    make_known()
    stations.learn(count)
    return stations.flooded(count)


def capacity_of(switch, seed):
    stations = Stations(seed)

    def passes(count):
        return count if flooded(switch, stations, count) == 0 else None
    capacity = highest(passes, MOST_ADDRESSES, 16)[0]
    return capacity, MOST_ADDRESSES - flooded(switch, stations, MOST_ADDRESSES)


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
    def learn(rate):
        return trial(kind="learn", frames=SOME_ADDRESSES, stations=SOME_ADDRESSES, rate=rate)
    offered = learn(None)["offered"]

    def passes(rate):
        switch.forget()
        make_known()
        result = learn(rate)
        try:
            unknown = result["lost"] or Stations(0).flooded(SOME_ADDRESSES)
        except LostFrames:
            return None
        return result["offered"] if unknown == 0 else None
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


def meshed(_, options):
    show("RFC 2889, 5.1 and 5.2", "Throughput, frame loss and forwarding rate of several ports",
         "(frames sent - received) / sent at the maximum offered load, and the highest rate without "
         "loss")
    print("one sender serves all ports by turns, in bursts of 64 frames; rates are of all together")
    found, rows = {}, [["trial", "frame size", "MOL", "FRMOL", "lost", "throughput"]]
    for name, (sources, targets) in MESHES.items():
        for size in sorted({options.sizes[0], options.sizes[-1]}):
            def offer(rate=None, size=size, sources=sources, targets=targets, **words):
                words = {"seconds": options.seconds, **words}
                result = trial(size, rate=rate, count=targets, to=targets, **{"from": sources},
                               **words)
                result["all"] = sum(result["received"].values())
                return result

            def passes(rate, offer=offer):
                result = offer(rate)
                return result["offered"] if result["all"] == result["sent"] else None
            learn_all()
            unpaced = offer()
            rate = highest(passes, unpaced["offered"], RESOLUTION * unpaced["offered"])[1]
            found[name, size] = rate or 0
            rows.append([name, size, f"{unpaced['offered']:,.0f}",
                         f"{unpaced['all'] / unpaced['seconds']:,.0f}",
                         f"{1 - unpaced['all'] / unpaced['sent']:.1%}", f"{rate or 0:,.0f}"])
    table(rows)
    return found


def learn_all():
    """Each host sends to the others, so that no frame of a mesh is flooded."""
    trial(to=HOSTS, frames=300, rate=SLOW, count="h1", **{"from": HOSTS})


TABLES = {"meshed": meshed, "forwarding": forwarding, "caching": caching, "learning": learning_rate,
          "broadcast": broadcast}


def measure(switch, options):
    return {name: make(switch, options) for name, make in TABLES.items() if name in options.tables}
