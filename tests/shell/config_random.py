# SPDX-License-Identifier: MIT
"""config_random.py SEED CONFIGURATIONS [each]

Makes random settings of every object, and prints the configuration. After a reset,
what was printed makes the chip as it was, and prints as the same text; so does
loading it over another random configuration. A second load makes no call that sets
anything. With "each", before that a file of each command alone, as somebody would write it: it is
loaded, or refused as no configuration, and what is then printed makes the chip as it is.
"""
import json
import os
import sys
import tempfile

from config_world import COMMANDS, R, ports, random_text, run, state

WORDS = ["uplink", "to the north", "", "#1", 'a "b" c', "back\\\\slash", "it's", "\u00fcber"]


def expect_same(what, one, other):
    if one[0] != other[0]:
        sys.exit(f"{what}: the text differs\n{one[0]}---\n{other[0]}")
    for block, content in one[1].items():
        if content != other[1][block]:
            sys.exit(f"{what}: {block} differs\n{one[0]}---\n{content}\n---\n{other[1][block]}")


def quoted(text):
    escaped = text.replace("\\", "\\\\").replace('"', '\\"')
    return f'"{escaped}"'


def expect_alone(command):
    run("vchipctl", "reset")
    if run("swctl", "-b", "-", text=command, status=None).returncode != 0:
        return
    run("vchipctl", "reset")
    loaded = run("swctl", "config", "load", "-", text=command, status=None)
    if loaded.returncode == 1 and loaded.stderr.startswith("stdin:1: "):
        return
    if loaded.returncode != 0:
        sys.exit(f"{command}: {loaded.stderr}")
    wanted = state()
    run("vchipctl", "reset")
    run("swctl", "-b", "-", text=wanted[0])
    expect_same(command, wanted, state())


COMMANDS.append(lambda: f"port set {ports()} description {quoted(R.choice(WORDS))}")
R.seed(int(sys.argv[1]))
with tempfile.TemporaryDirectory() as directory:
    os.chdir(directory)
    os.environ["VCHIP_IMAGE"] = directory + "/chip.img"
    os.environ["SWCTL_STATE_DIRECTORY"] = directory + "/state"
    for command in COMMANDS if "each" in sys.argv[3:] else []:
        expect_alone(command())
    for number in range(int(sys.argv[2])):
        run("vchipctl", "reset")
        run("swctl", "-force", "-b", "-", text=random_text(), status=None)
        wanted = state()
        run("vchipctl", "reset")
        run("swctl", "-b", "-", text=wanted[0])
        expect_same(f"{number}: batch", wanted, state())
        run("swctl", "-force", "-b", "-", text=random_text(), status=None)
        run("swctl", "config", "load", "-", text=wanted[0])
        expect_same(f"{number}: load", wanted, state())
        run("swctl", "config", "load", "-", text=wanted[0], SWPROBE="record:calls.ndjson")
        with open("calls.ndjson", encoding="utf-8") as recording:
            for line in recording:
                call = json.loads(line).get("call", "")
                if call.endswith(("_set", "_add", "_del", "_create", "_destroy", "_write")):
                    sys.exit(f"{number}: the second load called {call}")
print("config_random:", sys.argv[2], "configurations")
