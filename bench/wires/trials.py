# SPDX-License-Identifier: MIT
"""Trials: frames offered to a switch in a known way, and what came of them."""
import json

from switches import PROGRAMS, run

FCS = 4  # bytes that a frame size counts and that veth does not carry


def trial(size=64, **words):
    """What trial.cpp prints; frames of the size go from the first host to the second."""
    if words.get("rate") is None:
        words.pop("rate", None)
    words = {"from": "h2" if words.get("back") else "h1", "bytes": size - FCS,
             "count": "h2", **words}
    result = json.loads(run(PROGRAMS / "swctl_wire_trial",
                            *(f"{name}={value}" for name, value in words.items())))
    received = list(result["received"].values())
    result["lost"] = max(result["sent"] - min(received), 0) if received else 0
    result["offered"] = result["sent"] / result["seconds"]
    return result


def make_known():
    """The second host sends, so that no frame to it is flooded."""
    trial(back=1, frames=1, count="h1")


def highest(passes, high, resolution):
    """The highest value that passes, by bisection to the resolution or to 2 % of the value,
    and what `passes` says of it, which is None for one that does not pass; 0 and None if
    none does."""
    low, found = 0, passes(high)
    if found is not None:
        return high, found
    while high - low > max(resolution, low / 50):
        middle = (low + high) / 2 if isinstance(resolution, float) else (low + high) // 2
        result = passes(middle)
        if result is None:
            high = middle
        else:
            low, found = middle, result
    return low, found


def show(section, name, formula):
    print(f"{name} ({section})\n{formula}")
