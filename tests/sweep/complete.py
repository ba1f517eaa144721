# SPDX-License-Identifier: MIT
"""complete.py LIBRARY PROGRAM SOURCE_DIR

Runs the sweep and sees that it left nothing out: every exported function that
can come to a call of the platform was swept, and the sweep has passed every
place in the library's code that makes such a call. Function and place are
found in the machine code, which has one call instruction for each call of the
source if the library is built without optimisation. The objdump is that of the
binutils, whatever the compiler: it names what a call through the linkage table
comes to.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

PLATFORM = re.compile(r"^((rtk|adp)_\w+|sys_trace_\w+|Log_logging_func)$")
FUNCTION = re.compile(r"^[0-9a-f]+ <(.+)>:$")
CALL = re.compile(r"^\s*[0-9a-f]+:\s+(?:call|jmp)\s+[0-9a-f]+ <([^+>]+)>$")
ADDRESS = re.compile(r"^\s*([0-9a-f]+):\s")


def exports(source_dir):
    names = set()
    for path in pathlib.Path(source_dir).glob("src/*/exports.txt"):
        names |= set(path.read_text().split())
    return names


def read_code(library, exported):
    """Who calls whom, and the places of calls: address behind it -> (function, call)."""
    output = subprocess.run(["objdump", "-d", "--no-show-raw-insn", library], check=True,
                            capture_output=True, text=True).stdout
    callees, places, function, waiting = {}, {}, None, None
    for line in output.splitlines():
        address = ADDRESS.match(line)
        if waiting and address:
            places[int(address.group(1), 16)] = waiting
        waiting = None
        head, call = FUNCTION.match(line), CALL.match(line)
        if head:
            function = head.group(1)
        elif call:
            callee = call.group(1).split("@")[0]
            callees.setdefault(function, set()).add(callee)
            if PLATFORM.match(callee) and callee not in exported:
                waiting = (function, callee)
    return callees, places


def reaches_platform(name, callees, exported, seen):
    if PLATFORM.match(name) and name not in exported:
        return True
    if name in seen:
        return False
    seen.add(name)
    return any(reaches_platform(callee, callees, exported, seen)
               for callee in callees.get(name, ()))


def main():
    library, program, source_dir = sys.argv[1:]
    with tempfile.TemporaryDirectory() as directory:
        listed = pathlib.Path(directory) / "swept"
        status = subprocess.run([program, str(listed)]).returncode
        lines = [line.split() for line in listed.read_text().splitlines()]
    swept = {word for kind, word in lines if kind == "function"}
    passed = {int(word, 16) for kind, word in lines if kind == "place"}
    exported = exports(source_dir)
    callees, places = read_code(library, exported)
    wanted = {name for name in exported if reaches_platform(name, callees, exported, set())}

    problems = [f"{name} calls the platform and is not swept" for name in sorted(wanted - swept)]
    problems += [f"{name} is swept and not exported" for name in sorted(swept - exported)]
    problems += [f"the call of {places[place][1]} in {places[place][0]} is not passed"
                 for place in sorted(set(places) - passed)]
    problems += [f"no call was found at {place:x}" for place in sorted(passed - set(places))]
    if not wanted or not places:
        problems.append("no calls found in the code")
    for problem in problems:
        print(f"complete: {problem}")
    print(f"complete: {len(wanted)} functions and {len(places)} call sites in the code, "
          f"{len(problems)} problems")
    sys.exit(1 if problems else status)


main()
