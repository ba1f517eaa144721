# SPDX-License-Identifier: MIT
"""walls.py SOURCE_DIR

Who may include whom. Every include of the tree is held against the rules of
its room, and inside the virtual chip against those of its floor; one that no
rule allows is a breach.
"""
import pathlib
import re
import sys

import elf

PLATFORM = r"<swctl/(platform/.*|types\.h)>"
SYSTEM = r"<[^/>]+>|<(sys|net|netinet|arpa|linux|libmnl|benchmark|gtest|gmock|editline|valgrind)/.*>"
# Templates by the thousand: what wants them includes the file of os/ that compiles them once.
HEAVY = r"<(nlohmann|CLI|fmt)/.*>"

# What the programs, the virtual chip and the probe share.
OS = r'"os/[^/]*"'

# Room -> what its files may include. {self} is the folder below the room.
RULES = {
    "include": [SYSTEM, r"<swctl/.*>"],
    "src": [SYSTEM, r"<swctl/.*>", r'"frame/.*"', r'"{self}/.*"'],
    "os": [SYSTEM, HEAVY, OS],
    "vchip": [SYSTEM, PLATFORM, r"<swctl-vchip/.*>", r'"(?!.*\bwire/).*"', r"<nlohmann/json_fwd\.hpp>"],
    # vchipd has the chip's public headers and nothing else of it.
    "vchip/wire": [SYSTEM, r"<swctl-vchip/.*>", OS, r'"[^/]*"'],
    "probe": [SYSTEM, PLATFORM, r"<swctl/swctl\.h>", r"<swctl-probe/.*>", r'".*"'],
    "replay": [SYSTEM, PLATFORM, r"<swctl-probe/.*>", r'".*"'],
    "faults": [SYSTEM, PLATFORM, r"<swctl-probe/.*>", r'".*"'],
    "shell": [SYSTEM, r"<swctl/.*>", r'".*"'],
    "bench": [SYSTEM, r"<swctl(-vchip|-probe)?/.*>", r'".*"'],
    "kernel": [SYSTEM, r"<swctl(-vchip)?/.*>", r'".*"'],
    "examples": [SYSTEM, r"<swctl/.*>"],
    "tests": [SYSTEM, r"<swctl(-vchip|-probe)?/.*>", r'".*"'],
    "fuzz": [SYSTEM, r"<swctl(-vchip|-probe)?/.*>", r'".*"'],
}
# They keep to themselves, and to what is public; the shell prints JSON.
CLOSED = {"include", "src", "shell", "bench", "kernel", "examples"}
DOORS = {("shell", '"os/json.h"')}
# They look into every room.
INSIDERS = {"tests", "fuzz"}
SUFFIXES = {".h", ".c", ".cpp", ".def"}

# The floors of the virtual chip, from the ground up: files below vchip/src ->
# the files there that they may include. The first line that a file's name fits
# holds. {self} is the file's folder, {stem} its name without the suffix. Only
# VISITORS implement calls and views, and include their public headers.
COMMON = r"common/.*"
VISITORS = r"chip/.*|.*_(calls|control|view)\.cpp|pipeline/(door|carried|explain|losses)\..*"
FOR_VISITORS = r"<swctl/platform/(sdk|adapter|log)\.h>|<swctl-vchip/(.*view|memory|explain|image)\.h>"
FLOORS = [
    # What an image is, how a document is written, what everybody knows.
    (r"common/.*", [COMMON]),
    (r"image/.*", [COMMON, r"image/.*", r"os/high_descriptor\.h"]),
    (r"document/.*", [COMMON, r"document/.*", r"os/json\.h"]),
    # The unit, which is made of the blocks, and the lock on it.
    (r"unit/.*", [COMMON, r"unit/.*", r"image/header\.h", r".*_block\.h"]),
    (r"chip/.*", [COMMON, r"chip/.*", r"unit/.*", r"image/.*", r"document/.*", r"os/high_descriptor\.h"]),
    # What visits a block: calls and controls, views.
    (r".*_(calls|control|view)\.cpp", [COMMON, r"{self}/.*", r"chip/.*"]),
    # A block, the state of one part of the hardware, and its picture.
    (r".*_(dump|check)\.cpp", [COMMON, r"{self}/.*", r"document/.*"]),
    (r".*_block\.(h|cpp)", [COMMON, r"{self}/(?!.*_block\.h).*", r"{self}/{stem}\.h"]),
    (r"pipeline/explain\.cpp", [COMMON, r"(?!image/|document/|os/).*", r"os/json\.h"]),
    # The way of a frame. Its door, the frames that are carried, explain and
    # who hears of losses take the lock; no step does.
    (r"pipeline/(door|carried|explain|losses)\.(h|cpp)", [COMMON, r"(?!image/|document/|os/).*"]),
    (r"pipeline/.*", [COMMON, r"(?!image/|document/|chip/|os/).*"]),
    # What blocks and visitors of one folder share.
    (r".*", [COMMON, r"{self}/(?!.*_block\.h).*"]),
]
FLOOR_ROOT = pathlib.PurePath("vchip/src")


def includes(path):
    for number, line in enumerate(path.read_text().splitlines(), 1):
        include = re.match(r'\s*#\s*include\s+(<[^>]*>|"[^"]*")', line)
        if include:
            yield number, include.group(1)


def breaches(source, room, rules, path):
    inside = path.relative_to(source / room).parts
    allowed = [rule.replace("{self}", inside[0]) for rule in rules]
    for number, target in includes(path):
        place = f"{path.relative_to(source)}:{number}"
        if not any(re.fullmatch(rule, target) for rule in allowed):
            yield f"{place}: {room} may not include {target}"
        elif target.startswith('"') and room not in INSIDERS and not is_own(source, room, path, target):
            yield f"{place}: {target} is not a file of {room}"


def is_own(source, room, path, target):
    """A quoted include must be found inside its own room, or be one of the room that is shared."""
    if re.fullmatch(OS, target):
        is_open = room not in CLOSED or (room, target) in DOORS
        return is_open and (source / target.strip('"')).is_file()
    name = target.strip('"')
    return any((base / name).is_file() and (base / name).resolve().is_relative_to(source / room)
               for base in (path.parent, source / room, source / room / "src"))


def floor_breaches(source, path):
    own = path.relative_to(source / FLOOR_ROOT)
    allowed = next(rules for files, rules in FLOORS if re.fullmatch(files, own.as_posix()))
    allowed = [rule.replace("{self}", own.parts[0]).replace("{stem}", own.stem) for rule in allowed]
    visits = re.fullmatch(VISITORS, own.as_posix())
    for number, target in includes(path):
        name = target.strip('"')
        quoted = target.startswith('"') and not any(re.fullmatch(rule, name) for rule in allowed)
        if quoted or (not visits and re.fullmatch(FOR_VISITORS, target)):
            yield f"{path.relative_to(source)}:{number}: its floor may not include {target}"


def main():
    source = pathlib.Path(sys.argv[1]).resolve()
    problems, files = [], 0
    for room, rules in RULES.items():
        for path in sorted((source / room).rglob("*")):
            if path.suffix in SUFFIXES:
                files += 1
                problems += breaches(source, room, rules, path)
                if path.is_relative_to(source / FLOOR_ROOT):
                    problems += floor_breaches(source, path)
    elf.finish("walls", problems, f"{files} files keep to their rooms")


main()
