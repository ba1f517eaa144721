# SPDX-License-Identifier: MIT
"""stack.py CXX SOURCE_DIR

The walk over the address table runs on small stacks. Adds up the frames of the
deepest path through a walk, with a delete callback that logs, and holds them
against the limit. The two text buffers of the operation trace are apart.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

import elf

LIMIT = 1024
TRACE_BUFFERS = 2 * 256
FILES = ["l2/walk.cpp", "l2/delete.cpp", "l2/remove.cpp", "frame/static_mac.cpp"]
# From the entry point down; what the compiler inlines is in its caller's frame.
PATH = ["user_l2_addr_delete_static_by_mac_port", "rtk_l2_traverse",
        "del_static_mac_by_mac_port_callback", "remove_matching", "remove_entry", "note_static_mac",
        "trace"]


def frames(compiler, source):
    """function -> bytes of its frame, of every function in FILES."""
    found = {}
    with tempfile.TemporaryDirectory() as folder:
        for name in FILES:
            stem = pathlib.Path(folder) / pathlib.Path(name).stem
            subprocess.run([compiler, "-std=c++20", "-O2", "-fPIC", "-fno-exceptions", "-fno-rtti",
                            "-fstack-usage", f"-I{source}/include", f"-I{source}/src", "-c",
                            f"{source}/src/{name}", "-o", f"{stem}.o"], check=True)
            for line in stem.with_suffix(".su").read_text().splitlines():
                place, size, kind = line.split("\t")
                if kind not in ("static", "dynamic,bounded"):
                    raise SystemExit(f"a frame without a bound: {line}")
                function = re.search(r"(\w+)\(", place) or re.search(r"(\w+)$", place)
                found[function.group(1)] = max(int(size), found.get(function.group(1), 0))
    return found


def main():
    compiler, source = sys.argv[1], pathlib.Path(sys.argv[2])
    sizes = frames(compiler, source)
    problems = [f"{name} is not among the functions compiled" for name in
                ("rtk_l2_traverse", "del_static_mac_by_mac_port_callback", "note_static_mac")
                if name not in sizes]
    path = [(name, sizes[name]) for name in PATH if name in sizes]
    total = sum(size for _, size in path) - TRACE_BUFFERS
    if total >= LIMIT:
        problems.append(f"{total} bytes, not under {LIMIT}: {path}")
    elf.finish("stack", problems, f"a walk takes {total} bytes beside the trace buffers")


main()
