# SPDX-License-Identifier: MIT
"""other_shells.py fish|zsh SOURCE_DIR

Completion in the shells fish and zsh themselves: what the TAB key offers.
"""
import os
import pathlib
import pty
import re
import select
import subprocess
import sys
import tempfile
import time

SHELL, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2]).resolve()
FOLDERS = [SOURCE / "shell/completion", SOURCE / "vchip/completion"]
PATIENCE = 60.0
PROMPT = "READY> "


class Fish:
    """Each word of the answer with what fish shows beside it."""

    def __init__(self, directory):
        self.directory = directory
        self.files = [each for folder in FOLDERS for each in sorted(folder.glob("*.fish"))]

    def complete(self, line):
        sources = "; ".join(f"source '{each}'" for each in self.files)
        done = subprocess.run(["fish", "--no-config", "-c", f"{sources}; complete -C $argv[1]", line],
                              capture_output=True, text=True, cwd=self.directory, check=True,
                              timeout=PATIENCE, env=dict(os.environ, HOME=str(self.directory)))
        if done.stderr:
            raise AssertionError(f"fish: {line!r}: {done.stderr}")
        return done.stdout


class Zsh:
    """What appears on the screen after a TAB."""

    def __init__(self, directory):
        environment = dict(os.environ, TERM="dumb", HOME=str(directory), COLUMNS="200", LINES="60")
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            os.chdir(directory)
            os.execvpe("zsh", ["zsh", "-f", "-i"], environment)
        folders = " ".join(str(each) for each in FOLDERS)
        # An empty line ends with two of the prompt; the echo of this one has none.
        self.write(f"fpath=({folders} $fpath); autoload -Uz compinit; compinit -u -D;"
                   " unsetopt zle_bracketed_paste 2>/dev/null; PS1=READY'> '\n")
        self.wait_for("\n.*" + PROMPT)

    def write(self, keys):
        os.write(self.terminal, keys.encode())

    def wait_for(self, pattern):
        seen, deadline = "", time.monotonic() + PATIENCE
        while not re.search(pattern, seen, re.S):
            if not select.select([self.terminal], [], [], deadline - time.monotonic())[0]:
                raise AssertionError(f"zsh: {pattern!r} did not appear in {seen!r}")
            seen += os.read(self.terminal, 4096).decode(errors="replace")
        return seen

    def complete(self, line):
        """The line after TAB, and what is listed below it.

        What is typed after TAB appears once TAB has been worked on.
        """
        self.write(line + "\t#END#")
        shown = self.wait_for("#END#")
        self.write("\x15\n")
        self.wait_for(PROMPT)
        return re.sub(r"\x1b\[[0-9;?]*[A-Za-z]|[\r\b]", "", shown)


# A line, what must be offered, and what must not.
WANTED = [
    ("swctl po", ["port"], ["vlan"]),
    ("swctl port s", ["show", "Show the state of ports", "stats"], ["cable"]),
    ("swctl port set 1-4 d", ["duplex", "dtag"], ["loopback"]),
    ("swctl -j port set 3 speed 10", ["1000", "10000"], []),
    ("swctl mac add 02:00:00:00:00:01 st", ["static"], ["dynamic"]),
    ("swctl --p", ["--pretty"], ["--json"]),
    ("swctl -b fra", ["frames.txt"], []),
    ("vchipctl d", ["dump", "Print what the chip holds", "drops"], ["reset"]),
    ("vchipctl link ", ["up", "Plug in cables", "down"], ["reset"]),
    ("vchipctl --image chip.img drops c", ["clear"], ["show"]),
    ("vchipctl send 1 --p", ["--pcap"], ["--drain"]),
    ("vchipctl play fra", ["frames.txt"], []),
    ("vchipctl ch", ["check"], ["drops"]),
    ("vchipctl qu", ["queues"], []),
    ("swctl-replay --k", ["--keep-going"], ["--json"]),
    ("swctl-replay fra", ["frames.txt"], []),
    ("swctl-faults --ju", ["--junit"], ["--only"]),
]


def main():
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        (directory / "frames.txt").touch()
        shell = {"fish": Fish, "zsh": Zsh}[SHELL](directory)
        for line, offered, others in WANTED:
            shown = shell.complete(line)
            missing = [each for each in offered if each not in shown]
            wrong = [each for each in others if each in shown]
            if missing or wrong:
                raise AssertionError(f"{SHELL}: {line!r}: missing {missing}, wrong {wrong}: {shown!r}")
            print(f"{SHELL}: {line!r} is completed")


main()
