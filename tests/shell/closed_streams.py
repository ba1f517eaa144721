# SPDX-License-Identifier: MIT
"""closed_streams.py

Every tool with a standard stream closed, or all of them, and those that write
files with every subset: what it prints never ends in an image or a recording, and
an answer that cannot be written is status 2.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

REFUSED = 2
STREAMS = (0, 1, 2)
SUBSETS = [[each for each in STREAMS if subset >> each & 1] for subset in range(1 << len(STREAMS))]
ONE_OR_ALL = [subset for subset in SUBSETS if len(subset) in (1, len(STREAMS))]

# An image begins with what is written once, where stray output would go first;
# the rest of its header says who looked.
CONSTANT, HEADER = 28, 4096
# Where an image tells who took its lock last and who has it open.
HOLDERS = slice(64, 4096)

SCENARIO = pathlib.Path(__file__).parents[1] / "scenarios/flood-mask"
FRAME = "ffffffffffff020000000001" + "0800" + "00" * 46
BATCH = "port set 2 admin off\nport show 2\n"
COMMANDS = [
    ["swctl", "port", "show"],
    ["swctl", "-j", "port", "show"],
    ["swctl", "port", "set", "3", "admin", "off"],
    ["swctl", "port", "set", "99", "admin", "off"],
    ["swctl", "-b", "batch"],
    ["swctl", "help"],
    ["swctl", "-h"],
    ["swctl", "-V"],
    ["swctl", "version"],
    ["vchipctl", "reset"],
    ["vchipctl", "dump"],
    ["vchipctl", "dump", "--block", "port"],
    ["vchipctl", "trace", "on"],
    ["vchipctl", "trace", "show"],
    ["vchipctl", "link", "up", "1-4"],
    ["vchipctl", "status"],
    ["vchipctl", "check"],
    ["vchipctl", "convert", "dump.json", "new.img"],
    ["vchipctl", "diff", "chip.img", "dump.json"],
    ["vchipctl", "medium", "25", "fibre"],
    ["vchipctl", "learn", "02:00:00:00:00:01", "--port", "3"],
    ["vchipctl", "mark", "02:00:00:00:00:02"],
    ["vchipctl", "rule-count", "1", "2", "128"],
    ["vchipctl", "time", "1"],
    ["vchipctl", "pair", "3", "A", "open"],
    ["vchipctl", "counter", "3", "1", "set", "7"],
    ["vchipctl", "storm", "3", "1"],
    ["vchipctl", "send", "1", FRAME],
    ["vchipctl", "explain", "1", FRAME],
    ["vchipctl", "play", "scenario"],
    ["vchipctl", "play", "no-such-folder"],
    ["vchipctl", "drops", "--all"],
    ["vchipctl", "queues"],
    ["vchipctl", "wires"],
    ["vchipctl", "wire", "1", "none"],
    ["vchipctl", "capture"],
    ["vchipctl", "extcap", "--extcap-interface", "swctl:chip.img:0:1", "--extcap-dlts"],
    ["vchipctl", "lab", "--ports", "99"],
    ["vchipctl", "help"],
    ["vchipctl", "--help"],
    ["vchipctl", "--version"],
    ["vchipctl", "no-such-command"],
    ["swctl-replay", "calls"],
    ["swctl-replay", "-j", "calls"],
    ["swctl-replay", "--help"],
    ["swctl-replay", "no-such-file"],
    ["swctl-faults", "--help"],
    ["swctl-faults", "--", "no-such-program"],
    ["swctl-faults", "--", "swctl", "port", "show", "3"],
]
PROBED_COMMANDS = [
    ["swctl", "port", "show", "1-4"],
    ["swctl", "-b", "batch"],
    ["swctl-replay", "calls"],
]
PROBES = [
    {"SWPROBE": "record:recording"},
    {"SWPROBE": "trace:recording"},
    {"SWPROBE": "trace"},
]


class Run:
    """One run of a command, and all that it left."""

    def __init__(self, directory, command, probe, closed):
        (directory / "chip.img").write_bytes(self.image)
        (directory / "new.img").unlink(missing_ok=True)
        for name in ("recording", "out", "err"):
            (directory / name).write_bytes(b"")
        environment = dict(os.environ, VCHIP_IMAGE="chip.img", **probe)
        with open(directory / "out", "wb") as out, open(directory / "err", "wb") as err:
            self.status = subprocess.run(
                command, cwd=directory, env=environment, stdin=subprocess.DEVNULL, stdout=out,
                stderr=err, check=False, preexec_fn=lambda: [os.close(each) for each in closed],
            ).returncode
        image = (directory / "chip.img").read_bytes()
        self.files = {"chip.img": image[:CONSTANT] + image[HEADER:],
                      "recording": (directory / "recording").read_bytes()}
        if (directory / "new.img").exists():
            self.files["new.img"] = (directory / "new.img").read_bytes()[HEADER:]
        self.out = (directory / "out").read_bytes()
        self.err = (directory / "err").read_bytes()


def differences(whole, run, closed):
    """What a run with closed streams has other than one with all open."""
    lost_answer = 1 in closed and whole.out != b""
    expected = REFUSED if lost_answer else whole.status
    if run.status != expected:
        yield f"status {run.status}, not {expected}"
    for name, content in whole.files.items():
        if run.files.get(name) != content:
            yield f"{name} is another"
    if 1 not in closed and run.out != whole.out:
        yield "the answer is another"
    if 2 not in closed and not run.err.startswith(whole.err):
        yield f"standard error is {run.err!r}"


def sweep(directory, command, probe):
    whole = Run(directory, command, probe, [])
    for closed in SUBSETS[1:] if probe else ONE_OR_ALL:
        run = Run(directory, command, probe, closed)
        for difference in differences(whole, run, closed):
            yield f"{' '.join(command)} {probe} without {closed}: {difference}"


def left_out():
    """The commands of vchipctl that are not among those above."""
    shown = subprocess.run(["vchipctl", "--help"], capture_output=True, text=True, check=True).stdout
    listed = re.search(r"^Subcommands:\n(.*?)\n\n", shown, re.DOTALL | re.MULTILINE)[1]
    swept = {command[1] for command in COMMANDS if command[0] == "vchipctl"}
    return set(re.findall(r"^  (\S+)", listed, re.MULTILINE)) - swept


def prepare(directory):
    """An image with something in it, a recording, a batch and a scenario."""
    shutil.copytree(SCENARIO, directory / "scenario")
    environment = dict(os.environ, VCHIP_IMAGE=str(directory / "chip.img"), SWPROBE="record:calls")
    (directory / "batch").write_text(BATCH)
    subprocess.run(["swctl", "-b", "batch"], cwd=directory, env=environment, check=True,
                   stdout=subprocess.DEVNULL)
    dump = subprocess.run(["vchipctl", "dump"], cwd=directory, env=environment, check=True,
                          stdout=subprocess.PIPE).stdout
    (directory / "dump.json").write_bytes(dump)
    Run.image = (directory / "chip.img").read_bytes()


def main():
    for name in ("SWPROBE", "SWPROBE_FAIL"):
        os.environ.pop(name, None)
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        prepare(directory)
        runs = [(command, {}) for command in COMMANDS]
        runs += [(command, probe) for command in PROBED_COMMANDS for probe in PROBES]
        problems = [f"vchipctl {command} is not tried" for command in left_out()]
        problems += [problem for run in runs for problem in sweep(directory, *run)]
    for problem in problems:
        print(problem, file=sys.stderr)
    print(f"{len(runs)} commands")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
