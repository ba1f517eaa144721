# SPDX-License-Identifier: MIT
"""walls_test.py

That walls.py can fail: it is run on small trees of one include each, and has to
let the allowed ones pass and to name the file of every other.
"""
import pathlib
import subprocess
import sys
import tempfile

import elf

HERE = pathlib.Path(__file__).parent

# file, what it includes, whether it may
CASES = [
    ("src/port/link.cpp", '"port/link.h"', True),
    ("src/port/link.cpp", '"frame/unit.h"', True),
    ("src/port/link.cpp", '"vlan/table.h"', False),
    ("src/port/link.cpp", "<swctl-vchip/vchip.h>", False),
    ("shell/main.cpp", "<swctl-probe/probe.h>", False),
    ("vchip/src/common/check.h", '"common/numbers.h"', True),
    ("vchip/src/common/check.h", '"image/header.h"', False),
    ("vchip/src/image/image.cpp", '"unit/state.h"', False),
    ("vchip/src/document/dump.cpp", '"vlan/vlan_block.h"', False),
    ("vchip/src/vlan/vlan_block.h", '"common/numbers.h"', True),
    ("vchip/src/vlan/vlan_block.cpp", '"vlan/vlan_block.h"', True),
    ("vchip/src/vlan/vlan_block.cpp", '"vlan/conversion_block.h"', False),
    ("vchip/src/vlan/vlan_block.cpp", '"stp/stp_block.h"', False),
    ("vchip/src/vlan/vlan_block.cpp", '"chip/chip.h"', False),
    ("vchip/src/vlan/vlan_block.cpp", '"../chip/chip.h"', False),
    ("vchip/src/vlan/vlan_block.cpp", '"document/dump.h"', False),
    ("vchip/src/vlan/vlan_block.cpp", "<swctl/platform/vlan_records.h>", True),
    ("vchip/src/vlan/vlan_block.cpp", "<swctl/platform/sdk.h>", False),
    ("vchip/src/vlan/vlan_block.h", "<swctl-vchip/vlan_view.h>", False),
    ("vchip/src/vlan/vlan_calls.cpp", "<swctl/platform/sdk.h>", True),
    ("vchip/src/vlan/vlan_view.cpp", "<swctl-vchip/vlan_view.h>", True),
    ("vchip/src/vlan/vlan_dump.cpp", '"document/dump.h"', True),
    ("vchip/src/vlan/vlan_dump.cpp", '"chip/viewing.h"', False),
    ("vchip/src/vlan/vlan_calls.cpp", '"chip/chip.h"', True),
    ("vchip/src/vlan/vlan_calls.cpp", '"stp/stp_block.h"', False),
    ("vchip/src/vlan/vlan_calls.cpp", '"pipeline/run.h"', False),
    ("vchip/src/vlan/range.h", '"vlan/vlan_block.h"', False),
    ("vchip/src/unit/blocks.h", '"vlan/vlan_block.h"', True),
    ("vchip/src/unit/state.h", '"chip/chip.h"', False),
    ("vchip/src/chip/chip.cpp", '"image/image.h"', True),
    ("vchip/src/chip/chip.cpp", '"pipeline/run.h"', False),
    ("vchip/src/pipeline/filter.cpp", '"vlan/vlan_block.h"', True),
    ("vchip/src/pipeline/filter.cpp", '"unit/state.h"', True),
    ("vchip/src/pipeline/filter.cpp", '"chip/chip.h"', False),
    ("vchip/src/pipeline/filter.cpp", '"image/file_lock.h"', False),
    ("vchip/src/pipeline/drops_block.h", '"vlan/vlan_block.h"', False),
    ("vchip/src/pipeline/door.cpp", '"chip/chip.h"', True),
    ("vchip/src/pipeline/explain.cpp", '"chip/viewing.h"', True),
    ("vchip/src/pipeline/run.cpp", '"chip/chip.h"', False),
    ("vchip/wire/panel.cpp", "<swctl-vchip/frame.h>", True),
    ("vchip/wire/panel.cpp", "<swctl/platform/sdk.h>", False),
    ("vchip/wire/panel.cpp", '"../src/chip/chip.h"', False),
    ("vchip/wire/panel.cpp", '"chip/chip.h"', False),
    ("vchip/ctl/wires_client.cpp", '"../wire/panel.h"', False),
    ("vchip/ctl/wires_client.cpp", '"os/descriptor.h"', True),
    ("vchip/wire/panel.cpp", '"os/descriptor.h"', True),
    ("vchip/src/image/image.cpp", '"os/high_descriptor.h"', True),
    ("vchip/src/pipeline/run.cpp", '"os/program.h"', False),
    ("probe/src/line_file.cpp", '"os/high_descriptor.h"', True),
    ("src/port/link.cpp", '"os/descriptor.h"', False),
    ("shell/main.cpp", '"os/program.h"', False),
    ("shell/output/json.cpp", '"os/json.h"', True),
    ("shell/output/json.cpp", "<nlohmann/json.hpp>", False),
    ("vchip/src/document/dump.cpp", '"os/json.h"', True),
    ("vchip/src/document/dump.h", "<nlohmann/json_fwd.hpp>", True),
    ("vchip/src/pipeline/explain.cpp", '"os/json.h"', True),
    ("vchip/src/pipeline/run.cpp", '"os/json.h"', False),
    ("vchip/ctl/main.cpp", "<CLI/CLI.hpp>", False),
    ("os/command_line.cpp", "<CLI/CLI.hpp>", True),
    ("faults/report.cpp", "<fmt/format.h>", False),
    ("os/program.cpp", '"os/descriptor.h"', True),
    ("os/program.cpp", '"image/header.h"', False),
    ("os/program.cpp", "<swctl-vchip/vchip.h>", False),
]


def write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)


def accepts(tree, file, target):
    """Whether walls.py accepts the include; every other answer has to name the line."""
    name = target.strip('"')
    if target.startswith('"') and ".." not in name:
        room = pathlib.Path(file).parts[0]
        room = room if not name.startswith("os/") else ""
        write(tree / room / ("src" if room == "vchip" else "") / name, "")
    write(tree / file, f"#include {target}\n")
    result = subprocess.run([sys.executable, HERE / "walls.py", tree], capture_output=True, text=True)
    if result.returncode != 0 and f"{file}:1:" not in result.stdout + result.stderr:
        sys.exit(f"walls_test: {file} {target}: failed for another reason:\n"
                 f"{result.stdout}{result.stderr}")
    return result.returncode == 0


def main():
    problems = []
    for file, target, allowed in CASES:
        with tempfile.TemporaryDirectory() as tree:
            if accepts(pathlib.Path(tree), file, target) != allowed:
                problems.append(f"{file} includes {target}: " +
                                ("refused" if allowed else "accepted"))
    elf.finish("walls_test", problems, f"{len(CASES)} includes judged as they should be")


main()
