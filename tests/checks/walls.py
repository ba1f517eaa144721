# SPDX-License-Identifier: MIT
"""walls.py SOURCE_DIR

Who may include whom. Every include of the tree is held against the rules of
its room; one that no rule allows is a breach.
"""
import pathlib
import re
import sys

import elf

PLATFORM = r"<swctl/(platform/.*|types\.h)>"
SYSTEM = r"<[^/>]+>|<(sys|net|netinet|arpa|linux|libmnl|benchmark|gtest|gmock|nlohmann|CLI|fmt|editline|valgrind)/.*>"

# Room -> what its files may include. {self} is the folder below the room.
RULES = {
    "include": [SYSTEM, r"<swctl/.*>"],
    "src": [SYSTEM, r"<swctl/.*>", r'"frame/.*"', r'"{self}/.*"'],
    "vchip": [SYSTEM, PLATFORM, r"<swctl-vchip/.*>", r'".*"'],
    "probe": [SYSTEM, PLATFORM, r"<swctl-probe/.*>", r'".*"'],
    "replay": [SYSTEM, PLATFORM, r"<swctl-probe/.*>", r'".*"'],
    "shell": [SYSTEM, r"<swctl/.*>", r'".*"'],
    "bench": [SYSTEM, r"<swctl(-vchip|-probe)?/.*>", r'".*"'],
    "kernel": [SYSTEM, r"<swctl/.*>", r'".*"'],
    "examples": [SYSTEM, r"<swctl/.*>"],
    "tests": [SYSTEM, r"<swctl(-vchip|-probe)?/.*>", r'".*"'],
    "fuzz": [SYSTEM, r"<swctl(-vchip|-probe)?/.*>", r'".*"'],
}
# They look into every room.
INSIDERS = {"tests", "fuzz"}
SUFFIXES = {".h", ".c", ".cpp", ".def"}


def breaches(source, room, rules, path):
    inside = path.relative_to(source / room).parts
    allowed = [rule.replace("{self}", inside[0]) for rule in rules]
    for number, line in enumerate(path.read_text().splitlines(), 1):
        include = re.match(r'\s*#\s*include\s+(<[^>]*>|"[^"]*")', line)
        if not include:
            continue
        target = include.group(1)
        place = f"{path.relative_to(source)}:{number}"
        if not any(re.fullmatch(rule, target) for rule in allowed):
            yield f"{place}: {room} may not include {target}"
        elif target.startswith('"') and room not in INSIDERS and not is_own(source, room, path, target):
            yield f"{place}: {target} is not a file of {room}"


def is_own(source, room, path, target):
    """A quoted include must be found inside its own room."""
    name = target.strip('"')
    return any((base / name).is_file() and (base / name).resolve().is_relative_to(source / room)
               for base in (path.parent, source / room, source / room / "src"))


def main():
    source = pathlib.Path(sys.argv[1]).resolve()
    problems, files = [], 0
    for room, rules in RULES.items():
        for path in sorted((source / room).rglob("*")):
            if path.suffix in SUFFIXES:
                files += 1
                problems += breaches(source, room, rules, path)
    elf.finish("walls", problems, f"{files} files keep to their rooms")


main()
