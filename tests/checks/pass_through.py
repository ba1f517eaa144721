# SPDX-License-Identifier: MIT
"""pass_through.py OBJDUMP LIBRARY LIMIT SOURCE_DIR

A function that only passes a call on is register moves and one jump. Counts
the instructions of each function in tests/checks/pass_through.txt and holds
them against the limit. The direct call is one instruction of its own (call or
jalr), so the limit counts what is between the caller and the SDK. To see
for yourself:

    objdump -d --no-show-raw-insn libswctl.so | less +/user_port_loopback_set
"""
import pathlib
import re
import sys

import elf

JUMP = re.compile(r"^(jmp|jr)\b")
# Moves, constants, and on MIPS the global pointer and arguments on the stack.
MOVE = re.compile(r"^(endbr64|nop|mov\w*|xor|lea|lui|addiu|addu|lw|sw|move|li|andi)\b")


def functions(objdump, library):
    """name -> list of instructions, padding after the end left out."""
    bodies, name = {}, None
    for line in elf.run(objdump, "-d", "--no-show-raw-insn", library).splitlines():
        head = re.match(r"^[0-9a-f]+ <(.*)>:$", line)
        if head:
            name = head.group(1)
            bodies[name] = []
        elif name and ":\t" in line:
            bodies[name].append(line.split(":\t", 1)[1].strip())
    return bodies


def judged(body):
    """The instructions up to the jump, a MIPS delay slot included."""
    for index, instruction in enumerate(body):
        if JUMP.match(instruction):
            end = index + (2 if instruction.startswith("jr") else 1)
            return body[:end]
        if not MOVE.match(instruction):
            return None
    return None


def main():
    objdump, library, limit = sys.argv[1], sys.argv[2], int(sys.argv[3])
    names = (pathlib.Path(sys.argv[4]) / "tests/checks/pass_through.txt").read_text().split()
    bodies = functions(objdump, library)
    problems, counts = [], {}
    for name in names:
        body = judged(bodies.get(name, []))
        if body is None:
            problems.append(f"{name} is not register moves and one jump: {bodies.get(name)}")
        else:
            counts[name] = len(body)
            if len(body) > limit:
                problems.append(f"{name} has {len(body)} instructions, more than {limit}: {body}")
    found = ", ".join(f"{name} {count}" for name, count in counts.items())
    elf.finish("pass_through", problems, found)


main()
