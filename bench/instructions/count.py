#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Counts the instructions of each function of the library with callgrind.

Usage: count.py PROGRAM LIBRARY [OUTPUT.json]

PROGRAM calls every function of LIBRARY once against the virtual chip and marks
each call. A function's own instructions are those of the library, and of libc
on its behalf; the platform's are those that the calls out of the library lead to.
"""
import collections
import json
import pathlib
import re
import subprocess
import sys
import tempfile

PLATFORM_CALL = re.compile(r"^(rtk|adp|sys|Log)_\w+$")


class Call:
    """What one call of an exported function cost."""

    def __init__(self):
        self.own = 0  # instructions
        self.platform = 0
        self.calls = collections.Counter()  # of the platform, by name

    def kind(self):
        steps = sum(self.calls.values())
        return "multi-step" if steps > 1 else "one call" if steps == 1 else "none"


def run_callgrind(program, folder):
    done = subprocess.run(
        ["valgrind", "--quiet", "--tool=callgrind", "--compress-strings=no",
         "--compress-pos=no", f"--callgrind-out-file={folder}/out", program],
        env={"LD_BIND_NOW": "1"}, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"count.py: callgrind ended with {done.returncode}:\n{done.stdout}{done.stderr}")


def name_of(text):
    found = re.search(r"^desc: Trigger: Client Request: (\w+)$", text, re.M)
    return found.group(1) if found else None


def is_libc(path):
    return pathlib.Path(path).name.startswith(("libc.so", "ld-linux"))


def measure(text, library):
    """Adds up one dump: a line of costs belongs to the last fn= above it, the
    line after calls= to what is called."""
    result = Call()
    place = called_place = called = None
    lines = iter(text.splitlines())
    for line in lines:
        key, _, value = line.partition("=")
        if key == "ob":
            place = called_place = value
        elif key == "fn":
            called_place = place
        elif key == "cob":
            called_place = value
        elif key == "cfn":
            called = value
        elif key == "calls":
            cost = int(next(lines).split()[1])
            if place == library and PLATFORM_CALL.match(called):
                result.calls[called] += int(value.split()[0])
            elif place == library and is_libc(called_place):
                result.own += cost
            called_place = place
        elif place == library and line[:1].isdigit():
            result.own += int(line.split()[1])
    return result


def summary_of(text):
    return int(re.search(r"^summary: (\d+)$", text, re.M).group(1))


def main():
    program, library = sys.argv[1:3]
    library = str(pathlib.Path(library).resolve())
    functions = {}
    with tempfile.TemporaryDirectory() as folder:
        run_callgrind(program, folder)
        for path in sorted(pathlib.Path(folder).glob("out.*")):
            text = path.read_text()
            name = name_of(text)
            if name is None:
                continue
            call = measure(text, library)
            call.platform = summary_of(text) - call.own
            functions[name] = call
    rows = [
        {"function": name, "kind": call.kind(), "library": call.own,
         "platform": call.platform if call.calls else 0,
         "calls": sum(call.calls.values())}
        for name, call in sorted(functions.items())
    ]
    json.dump(rows, open(sys.argv[3], "w") if len(sys.argv) > 3 else sys.stdout, indent=1)


if __name__ == "__main__":
    main()
