# SPDX-License-Identifier: MIT
"""complete.py CODE PROGRAM SOURCE_DIR CALLS

Runs a sweep and sees that it left nothing out: every exported function that can
come to one of the calls (a regular expression) was swept, and the sweep has
passed every place that makes such a call in code that exported functions come
to. Functions and places are found in the machine code of the library, or of the
program that it is linked into; there is one call instruction for each call of
the source if that was built without optimisation. The objdump is that of the
binutils, whatever the compiler: it names what a call through the linkage table
comes to.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

FUNCTION = re.compile(r"^[0-9a-f]+ <(.+)>:$")
CALL = re.compile(r"^\s*[0-9a-f]+:\s+(?:call|jmp)\s+[0-9a-f]+ <([^+>]+)>$")
ADDRESS = re.compile(r"^\s*([0-9a-f]+):\s")


def exports(source_dir):
    names = set()
    for path in pathlib.Path(source_dir).glob("src/*/exports.txt"):
        names |= set(path.read_text().split())
    return names


def read_code(code):
    """Who calls whom, and the places of calls: address after it -> (caller, callee)."""
    output = subprocess.run(["objdump", "-d", "--no-show-raw-insn", code], check=True,
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
            waiting = (function, call.group(1).split("@")[0])
            callees.setdefault(function, set()).add(waiting[1])
    return callees, places


def reached_from(name, callees):
    """The function and all that it comes to."""
    reached, waiting = set(), [name]
    while waiting:
        function = waiting.pop()
        if function not in reached:
            reached.add(function)
            waiting += callees.get(function, ())
    return reached


def main():
    code, program, source_dir, pattern = sys.argv[1:]
    with tempfile.TemporaryDirectory() as directory:
        listed = pathlib.Path(directory) / "swept"
        status = subprocess.run([program, str(listed)]).returncode
        lines = [line.split() for line in listed.read_text().splitlines()]
    swept = {word for kind, word in lines if kind == "function"}
    passed = {int(word, 16) for kind, word in lines if kind == "place"}
    exported = exports(source_dir)
    callees, places = read_code(code)

    def is_wanted(callee):
        return re.fullmatch(pattern, callee) and callee not in exported

    reached = {name: reached_from(name, callees) for name in exported}
    wanted = {name for name in exported if any(map(is_wanted, reached[name]))}
    inside = set().union(*reached.values())
    places = {place: (caller, callee) for place, (caller, callee) in places.items()
              if caller in inside and is_wanted(callee)}

    problems = [f"{name} makes such calls and is not swept" for name in sorted(wanted - swept)]
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
