#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the report of a run of the benchmarks.

Usage: report.py FOLDER [DOCS]

FOLDER has what the run left: pairs.txt (the ratio tables), steps-image.txt and
steps-private.txt (a line for each function), probe.txt and instructions.json. Prints the page, or
writes performance.md and performance.svg into DOCS. Fails if a function of several steps costs more than
LIMIT times its own calls of the platform and is not among the named ones.
"""
import json
import pathlib
import re
import statistics
import subprocess
import sys

LIMIT = 1.05
# What the probe may add to a call, in nanoseconds: loaded and idle, recording.
IDLE_LIMIT, RECORDING_LIMIT = 5, 1000
# What these do beside calling the platform, and why that is not small.
BESIDES = {
    "user_mac_table_traverse": "prints every entry",
    "user_mac_table_show": "prints every entry",
    "user_mac_mcast_table_show": "prints every entry",
    "user_mac_violate_count_get_by_port": "reads a file",
    "user_mac_violate_del_by_port": "reads and writes a file",
    "User_port_cablediag": "prints what it found",
    "user_field_action_add": "puts an action into a record of 43 words",
}

BY_HAND = {
    "user_vlan_translate_add", "user_vlan_dtag_add", "user_vlan_mac_add", "user_vlan_ip4_add",
    "user_vlan_voice_oui_mac_add", "user_port_protocol_vlan_add",
}

# Makes no call once the slot that it gives back is free.
AT_REST = {"user_field_meter_burst_size_set_del"}

INTRODUCTION = """# What a call costs

`./dev bench` measures the library against the same calls of the platform made
directly, both sides in turn in one run; no figure here is meant as an absolute
one. It ends with status 1 if a limit is exceeded. `./dev bench docs` also writes
this page and its plot. Times are nanoseconds of CPU time, medians; a ratio is the
median of the ratios of all rounds.

"""


def read_pairs(folder):
    """Rows of a table: a name, min/median/max of both sides, the ratio."""
    form = re.compile(r"^(\S+)\s+[\d.]+\s+([\d.]+)\s+[\d.]+\s+[\d.]+\s+([\d.]+)\s+[\d.]+\s+([\d.]+)"
                      r"(?:\s+limit ([\d.]+))?")
    found = [form.match(line) for line in (folder / "pairs.txt").read_text().splitlines()]
    return [match.groups() for match in found if match]


class Steps:
    """A function's figures, in nanoseconds, on both kinds of chip."""

    def __init__(self, image, private):
        self.name, self.calls = image[0], int(image[1])
        self.through, self.direct, self.ratio = map(float, image[2:])
        self.private = float(private[4])


def read_steps(folder):
    """Those of the functions that make a call of the platform. The rules of the
    adapter are among the pairs instead: their record does not repeat."""
    sides = [[line.split() for line in (folder / f"steps-{chip}.txt").read_text().splitlines()]
             for chip in ("image", "private")]
    last = {image[0]: Steps(image, private) for image, private in zip(*sides)}
    return sorted((step for step in last.values() if step.name not in BY_HAND),
                  key=lambda step: -step.ratio)


def table(header, rows):
    lines = ["| " + " | ".join(header) + " |",
             "|" + "|".join("---" if index == 0 else "---:" for index in range(len(header))) + "|"]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


def pairs_text(pairs):
    rows = [(f"`{name}`", library, direct, ratio, limit or "")
            for name, library, direct, ratio, limit in pairs]
    return ("## Pairs made by hand\n\n"
            "With an SDK that does nothing: there a call takes about two nanoseconds, so one more\n"
            "jump is visible. Tables, walks and rules are measured with the virtual chip; for the\n"
            "rules of the adapter it is in an image, as below.\n\n"
            + table(["what", "library", "direct", "ratio", "limit"], rows) + "\n")


def steps_text(steps):
    rows = [(f"`{step.name}`", str(step.calls), f"{step.through:.0f}", f"{step.direct:.0f}",
             f"{step.ratio:.2f}", f"{step.private:.2f}", BESIDES.get(step.name, ""))
            for step in steps]
    plain = [step for step in steps if step.name not in BESIDES]
    return ("## Functions of several steps\n\n"
            "Every function that makes several calls of the platform, compared with the same calls\n"
            "with the same arguments, taken from a recording of it. The limit applies to a virtual\n"
            "chip in an image, as programs share it: there a call takes about a microsecond, as it\n"
            "may on a bus. The last ratio is for a chip in the memory of the process, where a call\n"
            "takes ten nanoseconds. \"calls\" counts the calls after many runs: a walk through an\n"
            "empty table is one. The direct side makes each call from prepared arguments through a\n"
            "pointer, which takes a nanosecond or two more than a call in the source.\n\n"
            f"{sum(1 for step in plain if step.ratio <= LIMIT)} of {len(plain)} are within "
            f"{LIMIT}, the median is {statistics.median(step.ratio for step in plain):.2f}. The\n"
            f"other {len(steps) - len(plain)} also print or use files.\n\n"
            "![Ratio of each function of several steps](performance.svg)\n\n"
            + table(["function", "calls", "library", "direct", "ratio", "alone", "besides"], rows)
            + "\n")


def read_probe(folder):
    """Call, and what it takes: without the probe, with it idle, recording."""
    rows = [line.split() for line in (folder / "probe.txt").read_text().splitlines()]
    return [(name, *map(float, times)) for name, *times in rows]


def probe_text(probe):
    rows = [(f"`{name}`", f"{without:.1f}", f"{idle - without:.1f}", f"{recording - without:.0f}")
            for name, without, idle, recording in probe]
    return ("## The probe\n\n"
            "What it adds to a call of an SDK that does nothing, in nanoseconds. A program that does\n"
            "not load it pays nothing: the library does not know it. Loaded and asked for nothing, it\n"
            f"may add {IDLE_LIMIT}; recording, {RECORDING_LIMIT}, most of which is the write to the "
            "file.\n\n"
            + table(["call", "without", "idle adds", "recording adds"], rows) + "\n")


def beyond_probe(probe):
    for name, without, idle, recording in probe:
        if idle - without > IDLE_LIMIT:
            yield f"{name}: the idle probe adds {idle - without:.1f} ns, more than {IDLE_LIMIT}"
        if recording - without > RECORDING_LIMIT:
            yield f"{name}: recording adds {recording - without:.0f} ns, more than {RECORDING_LIMIT}"


def instructions_text(rows):
    by_kind = {}
    for row in rows:
        by_kind.setdefault(row["kind"], []).append(row)
    kinds = [(kind, str(len(group)), str(min(row["library"] for row in group)),
              f"{statistics.median(row['library'] for row in group):.0f}",
              str(max(row["library"] for row in group)))
             for kind, group in sorted(by_kind.items())]
    several = [(f"`{row['function']}`", str(row["calls"]), str(row["library"]),
                str(row["platform"])) for row in rows if row["kind"] == "multi-step"]
    return ("## Instructions\n\n"
            "Counted by callgrind on x86-64, so other load on the machine does not matter: one\n"
            "call of every exported function, with the instructions of the library (and of libc\n"
            "for it) separate from those of the platform.\n\n"
            + table(["calls of the platform", "functions", "least", "median", "most"], kinds) + "\n"
            + table(["function", "calls", "library", "platform"], several) + "\n")


def plot(steps, docs):
    data = "\n".join(f'{index} {step.ratio} "{step.name}"' for index, step in enumerate(reversed(steps)))
    height = 60 + 13 * len(steps)
    script = f"""
set terminal svg size 800,{height} font "sans,9" background "white"
set output "{docs / 'performance.svg'}"
set title "Time of the library over that of its own calls"
set xrange [0.9:*]
set yrange [-1:{len(steps)}]
set grid x
unset key
set arrow from {LIMIT},-1 to {LIMIT},{len(steps)} nohead dashtype 2
$data << EOD
{data}
EOD
plot $data using 2:1:ytic(3) with points pointtype 7 pointsize 0.4 linecolor "#204a87"
"""
    subprocess.run(["gnuplot"], input=script, text=True, check=True)


def beyond(steps):
    return [step for step in steps if step.ratio > LIMIT and step.name not in BESIDES]


def main():
    folder = pathlib.Path(sys.argv[1])
    rows = json.loads((folder / "instructions.json").read_text())
    several = {row["function"] for row in rows if row["kind"] == "multi-step"}
    steps = [step for step in read_steps(folder) if step.name in several]
    probe = read_probe(folder)
    page = (INTRODUCTION + pairs_text(read_pairs(folder)) + steps_text(steps)
            + probe_text(probe) + instructions_text(rows))
    if len(sys.argv) > 2:
        docs = pathlib.Path(sys.argv[2])
        (docs / "performance.md").write_text(page)
        plot([step for step in steps if step.name not in BESIDES], docs)
    else:
        print(page)
    for step in beyond(steps):
        print(f"{step.name}: {step.ratio:.2f} times its own calls, more than {LIMIT}")
    slow = list(beyond_probe(probe))
    for line in slow:
        print(line)
    missing = several - BY_HAND - AT_REST - {step.name for step in steps}
    for name in sorted(missing):
        print(f"{name}: not timed")
    return 1 if missing or slow or beyond(steps) else 0


if __name__ == "__main__":
    sys.exit(main())
