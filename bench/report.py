#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the report of a run of the benchmarks.

Usage: report.py FOLDER DOCS

FOLDER has what the run left: pairs.txt (the ratio tables), steps.txt (a line for
each function of several steps) and instructions.json. Writes performance.md and
performance.svg into DOCS. Fails if a function of several steps costs more than
LIMIT times its own calls of the platform and is not among the named ones.
"""
import json
import pathlib
import re
import statistics
import subprocess
import sys

LIMIT = 1.05
# What these do beside calling the platform, and why that is not small.
BESIDES = {
    "user_mac_table_traverse": "prints every entry",
    "user_mac_table_show": "prints every entry",
    "user_mac_mcast_table_show": "prints every entry",
    "user_mac_violate_count_get_by_port": "reads a file",
    "user_mac_violate_del_by_port": "reads and writes a file",
    "User_port_cablediag": "prints what it found",
}

INTRODUCTION = """# What a call costs

`./dev bench` measures the library against the same calls of the platform made
directly, both sides in turn in one run; nothing here is an absolute figure of
one machine. It ends with status 1 when a limit is exceeded. `./dev bench docs`
also writes this page and its plot. Times are nanoseconds of the processor,
medians; a ratio is the median of the rounds' ratios.

"""


def read_pairs(folder):
    """Rows of a table: a name, min/median/max of both sides, the ratio."""
    form = re.compile(r"^(\S+)\s+[\d.]+\s+([\d.]+)\s+[\d.]+\s+[\d.]+\s+([\d.]+)\s+[\d.]+\s+([\d.]+)"
                      r"(?:\s+limit ([\d.]+))?")
    found = [form.match(line) for line in (folder / "pairs.txt").read_text().splitlines()]
    return [match.groups() for match in found if match]


def read_steps(folder):
    rows = []
    for line in (folder / "steps.txt").read_text().splitlines():
        name, steps, library, direct, ratio = line.split()
        rows.append((name, int(steps), float(library), float(direct), float(ratio)))
    return sorted(rows, key=lambda row: -row[4])


def table(header, rows):
    lines = ["| " + " | ".join(header) + " |",
             "|" + "|".join("---" if index == 0 else "---:" for index in range(len(header))) + "|"]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


def pairs_text(pairs):
    rows = [(f"`{name}`", library, direct, ratio, limit or "")
            for name, library, direct, ratio, limit in pairs]
    return ("## Pairs made by hand\n\n"
            "Against an SDK that does nothing, where a call takes about two nanoseconds and one\n"
            "more jump shows; and, for tables, walks and rules, against the virtual chip.\n\n"
            + table(["what", "library", "direct", "ratio", "limit"], rows) + "\n")


def steps_text(steps):
    rows = [(f"`{name}`", str(count), f"{library:.0f}", f"{direct:.0f}", f"{ratio:.2f}",
             BESIDES.get(name, "")) for name, count, library, direct, ratio in steps]
    within = sum(1 for row in steps if row[4] <= LIMIT)
    ratios = [row[4] for row in steps]
    return ("## Functions of several steps\n\n"
            "Every function that makes more than one call of the platform, against the same\n"
            "calls with the same arguments, taken from a recording of it, on a virtual chip that\n"
            "lies in an image, as programs share it.\n"
            f"{within} of {len(steps)} are within {LIMIT}; the median is "
            f"{statistics.median(ratios):.2f}.\n\n"
            "![Ratio of each function of several steps](performance.svg)\n\n"
            + table(["function", "calls", "library", "direct", "ratio", "besides"], rows) + "\n")


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
            "Counted by callgrind on x86-64, which no other load of the machine disturbs: one\n"
            "call of every exported function, the library's own instructions (and libc's on its\n"
            "behalf) apart from the platform's.\n\n"
            + table(["calls of the platform", "functions", "least", "median", "most"], kinds) + "\n"
            + table(["function", "calls", "library", "platform"], several) + "\n")


def plot(steps, docs):
    data = "\n".join(f'{index} {row[4]} "{row[0]}"' for index, row in enumerate(reversed(steps)))
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
    return [row for row in steps if row[4] > LIMIT and row[0] not in BESIDES]


def main():
    folder, docs = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    steps = read_steps(folder)
    rows = json.loads((folder / "instructions.json").read_text())
    (docs / "performance.md").write_text(
        INTRODUCTION + pairs_text(read_pairs(folder)) + steps_text(steps) + instructions_text(rows))
    plot(steps, docs)
    for name, _, _, _, ratio in beyond(steps):
        print(f"{name}: {ratio:.2f} times its own calls, more than {LIMIT}")
    return 1 if beyond(steps) else 0


if __name__ == "__main__":
    sys.exit(main())
